#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <array>
#include <cstring>
#include <string>
#include <utility>

/// An IPv4 or IPv6 address. The default is IPv4 0.0.0.0.
class IFHOST_API EIPAddress {
public:
    static constexpr unsigned int kIPv4 = 17; ///< Family code.
    static constexpr unsigned int kIPv6 = 18; ///< Family code.

    EIPAddress() = default;
    /// A dotted quad or any text form of RFC 4291 without a zone; anything else throws std::invalid_argument.
    explicit EIPAddress(std::string const& text);
    EIPAddress(EIPAddress const&) = default;
    EIPAddress(EIPAddress&&) noexcept = default;
    EIPAddress& operator=(EIPAddress const&) = default;
    EIPAddress& operator=(EIPAddress&&) noexcept = default;
    virtual ~EIPAddress() = default;

    /// \p bytes: 4 or 16 in network order, as the family says; null stands for zeros.
    /// A family other than 17 and 18 throws std::invalid_argument and changes nothing.
    void SetAddress(unsigned char const* bytes, unsigned int family) { SetAddress(bytes, 16, family); }
    /// The same from \p count bytes: missing ones are zero, those beyond the family's size are ignored.
    void SetAddress(unsigned char const* bytes, unsigned int count, unsigned int family);

    unsigned int GetFamily() const { return m_family; }
    /// 16 bytes in network order; of an IPv4 address the first 4, the rest are zero.
    unsigned char const* GetBytes() const { return m_bytes.data(); }
    bool IsZero() const { return m_bytes == std::array<unsigned char, 16>{}; }
    /// A dotted quad, or the form of RFC 5952.
    std::string GetAsString() const;
    void Swap(EIPAddress& other) noexcept
    {
        std::swap(m_family, other.m_family);
        m_bytes.swap(other.m_bytes);
    }

    bool operator==(EIPAddress const& other) const { return m_family == other.m_family && m_bytes == other.m_bytes; }
    bool operator!=(EIPAddress const& other) const { return !(*this == other); }
    /// By family, then by bytes.
    bool operator<(EIPAddress const& other) const
    {
        return m_family != other.m_family ? m_family < other.m_family : m_bytes < other.m_bytes;
    }

private:
    friend EArchive& operator<<(EArchive& archive, EIPAddress const& address);
    friend EArchive& operator>>(EArchive& archive, EIPAddress& address);
    /// Step by step: of an archive that ends soon, or holds no address.
    [[gnu::cold, gnu::noinline]] void ReadLast(EArchive& archive);

    unsigned int m_family = kIPv4;
    std::array<unsigned char, 16> m_bytes = {};
};

/// The family, then 4 or 16 bytes.
inline EArchive& operator<<(EArchive& archive, EIPAddress const& address)
{
    // Both families take one byte in an archive. Constant sizes need no call, and one look says that there is room for
    // either.
    if (unsigned char* const bytes = archive.RoomFor(1 + 16)) {
        bytes[0] = static_cast<unsigned char>(address.m_family);
        if (address.m_family == EIPAddress::kIPv4) {
            std::memcpy(bytes + 1, address.m_bytes.data(), 4);
            archive.AppendTo(bytes + 1 + 4);
        } else {
            std::memcpy(bytes + 1, address.m_bytes.data(), 16);
            archive.AppendTo(bytes + 1 + 16);
        }
    }
    return archive;
}
/// A family other than 17 and 18 is an error; on an error the address keeps what it held.
inline EArchive& operator>>(EArchive& archive, EIPAddress& address)
{
    // Mostly more follows than either family takes: one look says that all is there.
    unsigned char const* const bytes = archive.PeekBytes(1 + 16);
    if (bytes && bytes[0] == EIPAddress::kIPv4) {
        address.m_family = EIPAddress::kIPv4;
        address.m_bytes = {};
        std::memcpy(address.m_bytes.data(), bytes + 1, 4);
        archive.SkipTo(bytes + 1 + 4);
    } else if (bytes && bytes[0] == EIPAddress::kIPv6) {
        address.m_family = EIPAddress::kIPv6;
        std::memcpy(address.m_bytes.data(), bytes + 1, 16);
        archive.SkipTo(bytes + 1 + 16);
    } else if (archive.IsStoring()) {
        address = EIPAddress();
    } else {
        address.ReadLast(archive);
    }
    return archive;
}
