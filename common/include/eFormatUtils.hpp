#pragma once

#include "ifhostExport.hpp"

#include <string>

/// Numbers as lower-case hexadecimal bytes of two digits with a separator between them, most significant byte first.
class IFHOST_API EFormatUtils {
public:
    /// The low \p bytes bytes; more than 4 stand for 4.
    static std::string GetEDWORDAsFormattedString(unsigned int value, unsigned int bytes, std::string const& separator);
    /// The low \p bytes bytes; more than 8 stand for 8.
    static std::string GetInt64AsFormattedString(unsigned long value, unsigned int bytes, std::string const& separator);
};
