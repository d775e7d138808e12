#include "eUID.hpp"

#include "eFormatUtils.hpp"
#include "eHexText.hpp"

#include <endian.h>
#include <stdexcept>

EUID::EUID(std::string const& text)
{
    unsigned char bytes[sizeof m_id];
    if (!ParseHexBytes(text, bytes, sizeof bytes))
        throw std::invalid_argument("not a 64-bit identifier: \"" + text + '"');
    std::memcpy(&m_id, bytes, sizeof m_id);
    m_id = be64toh(m_id);
}

std::string EUID::GetAsString() const
{
    return EFormatUtils::GetInt64AsFormattedString(m_id, sizeof m_id, ":");
}
