#include "eIPAddress.hpp"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <cstring>
#include <stdexcept>

static unsigned int AddressSize(unsigned int family) // bytes
{
    return family == EIPAddress::kIPv4 ? 4 : 16;
}

EIPAddress::EIPAddress(std::string const& text)
{
    unsigned char bytes[16];
    bool const plain = text.find('\0') == std::string::npos; // inet_pton would stop there
    if (plain && inet_pton(AF_INET, text.c_str(), bytes) == 1)
        SetAddress(bytes, kIPv4);
    else if (plain && inet_pton(AF_INET6, text.c_str(), bytes) == 1)
        SetAddress(bytes, kIPv6);
    else
        throw std::invalid_argument("not an IP address: \"" + text + '"');
}

void EIPAddress::SetAddress(unsigned char const* bytes, unsigned int count, unsigned int family)
{
    if (family != kIPv4 && family != kIPv6) throw std::invalid_argument("address family " + std::to_string(family));
    std::array<unsigned char, 16> address = {}; // bytes may be this address's own
    std::size_t const size = bytes ? std::min(count, AddressSize(family)) : 0;
    if (size == 16) // a constant size is copied without a call, and whole addresses are what mostly comes
        std::memcpy(address.data(), bytes, 16);
    else if (size == 4)
        std::memcpy(address.data(), bytes, 4);
    else
        std::copy_n(bytes, size, address.begin());
    m_bytes = address;
    m_family = family;
}

static std::string DottedQuad(unsigned char const* bytes)
{
    char text[sizeof "255.255.255.255"];
    std::snprintf(text, sizeof text, "%u.%u.%u.%u", bytes[0], bytes[1], bytes[2], bytes[3]);
    return text;
}

static unsigned int Group(unsigned char const* bytes, std::size_t index)
{
    return static_cast<unsigned int>(bytes[2 * index] << 8 | bytes[2 * index + 1]);
}

std::string EIPAddress::GetAsString() const
{
    if (m_family == kIPv4) return DottedQuad(GetBytes());

    // RFC 5952 section 5: only the IPv4-mapped prefix is known to hold an IPv4 address.
    static unsigned char const kMapped[12] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    if (std::equal(std::begin(kMapped), std::end(kMapped), m_bytes.begin()))
        return "::ffff:" + DottedQuad(GetBytes() + sizeof kMapped);

    unsigned int best = 8;      // where the first of the longest runs of zero groups starts
    unsigned int bestCount = 1; // RFC 5952 section 4.2.2: a single zero group is not shortened
    for (unsigned int start = 0; start < 8; ++start) {
        unsigned int count = 0;
        while (start + count < 8 && Group(GetBytes(), start + count) == 0) ++count;
        if (count > bestCount) {
            best = start;
            bestCount = count;
        }
    }

    std::string text;
    for (unsigned int i = 0; i < 8;) {
        if (i == best) {
            text += "::";
            i += bestCount;
            continue;
        }
        if (!text.empty() && text.back() != ':') text += ':';
        char group[sizeof "ffff"];
        std::snprintf(group, sizeof group, "%x", Group(GetBytes(), i));
        text += group;
        ++i;
    }
    return text;
}

void EIPAddress::ReadLast(EArchive& archive)
{
    std::size_t const start = archive.GetOffset();
    unsigned int family = 0;
    archive >> family;
    if (family != kIPv4 && family != kIPv6) archive.Fail(start, "address family 17 or 18", std::to_string(family));
    unsigned int const size = AddressSize(family);
    SetAddress(archive.ReadBytes(size), size, family);
}
