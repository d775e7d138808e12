#include "eMACAddress.hpp"

#include "eHexText.hpp"

#include <algorithm>
#include <stdexcept>

EMACAddress::EMACAddress(std::string const& text)
{
    if (!ParseHexBytes(text, m_bytes.data(), m_bytes.size()))
        throw std::invalid_argument("not a MAC address: \"" + text + '"');
}

void EMACAddress::SetMACAddress(EBlob const& bytes)
{
    m_bytes = {};
    std::copy_n(bytes.GetData(), std::min<std::size_t>(bytes.GetSize(), m_bytes.size()), m_bytes.begin());
}

std::string EMACAddress::GetAsString() const
{
    return FormatHexBytes(m_bytes.data(), m_bytes.size(), ":");
}

EArchive& operator<<(EArchive& archive, EMACAddress const& address)
{
    return archive.WriteBytes(address.m_bytes.data(), address.m_bytes.size());
}

EArchive& operator>>(EArchive& archive, EMACAddress& address)
{
    if (unsigned char const* bytes = archive.ReadBytes(address.m_bytes.size()))
        std::copy_n(bytes, address.m_bytes.size(), address.m_bytes.begin());
    else
        address.Empty();
    return archive;
}
