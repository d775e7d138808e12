#include "eFormatUtils.hpp"

#include "eHexText.hpp"

#include <algorithm>
#include <endian.h>

std::string EFormatUtils::GetEDWORDAsFormattedString(unsigned int value, unsigned int bytes,
                                                     std::string const& separator)
{
    return GetInt64AsFormattedString(value, std::min<unsigned int>(bytes, sizeof value), separator);
}

std::string EFormatUtils::GetInt64AsFormattedString(unsigned long value, unsigned int bytes,
                                                    std::string const& separator)
{
    unsigned long const bigEndian = htobe64(value);
    std::size_t const count = std::min<std::size_t>(bytes, sizeof value);
    return FormatHexBytes(reinterpret_cast<unsigned char const*>(&bigEndian + 1) - count, count, separator);
}
