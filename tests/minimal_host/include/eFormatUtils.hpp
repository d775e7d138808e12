#pragma once

#include "eArchive.hpp"

#include <string>

class MINIMAL_HOST_API EFormatUtils {
public:
    static std::string GetEDWORDAsFormattedString(unsigned int value, unsigned int bytes, std::string const& separator);
    static std::string GetInt64AsFormattedString(unsigned long value, unsigned int bytes, std::string const& separator);
};
