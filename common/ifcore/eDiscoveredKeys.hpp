#pragma once

#include "eBlob.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"
#include "ifcoreExport.hpp"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <tuple>

// MACs and addresses as keys of indexes: of a fixed size, and quick to compare. They stand for the texts: two values
// have the same key exactly when they have the same text.

/// The upper bits depend on all bits of both words.
inline std::uint64_t Mixed(std::uint64_t first, std::uint64_t second)
{
    std::uint64_t mixed = (first ^ first >> 32) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ mixed >> 29 ^ second) * 0xBF58476D1CE4E5B9U;
    return (mixed ^ mixed >> 32) * 0x94D049BB133111EBU;
}

struct EDiscoveredMacKey {
    std::uint64_t bytes = 0;

    explicit EDiscoveredMacKey(EMACAddress const& mac)
    {
        // Not copied as one piece: such a load waits until all bytes have been stored one by one.
        EBlob const blob = mac.GetMACAddress();
        unsigned char const* const data = blob.GetData();
        std::size_t const size = std::min<std::size_t>(blob.GetSize(), sizeof bytes);
        for (std::size_t i = 0; i < size; ++i) bytes = bytes << 8 | data[i];
    }
    std::uint64_t GetHash() const { return Mixed(bytes, 0); }
    bool operator<(EDiscoveredMacKey const& other) const { return bytes < other.bytes; }
};

struct EDiscoveredIpKey {
    std::uint64_t low;
    std::uint64_t high;
    unsigned int family;

    explicit EDiscoveredIpKey(EIPAddress const& address) : family(address.GetFamily())
    {
        std::memcpy(&high, address.GetBytes(), sizeof high);
        std::memcpy(&low, address.GetBytes() + sizeof high, sizeof low);
    }
    std::uint64_t GetHash() const { return Mixed(high, low ^ family); }
    bool operator<(EDiscoveredIpKey const& other) const
    {
        return std::tie(high, low, family) < std::tie(other.high, other.low, other.family);
    }
};
