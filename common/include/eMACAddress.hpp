#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"
#include "ifhostExport.hpp"

#include <array>
#include <string>

/// A MAC address of 6 bytes (EUI-48), by default all zero.
class IFHOST_API EMACAddress {
public:
    EMACAddress() = default;
    /// Six groups of one or two hexadecimal digits with ":" or with "-" between them; anything else throws
    /// std::invalid_argument.
    explicit EMACAddress(std::string const& text);

    void Empty() { m_bytes = {}; }
    void Swap(EMACAddress& other) noexcept { m_bytes.swap(other.m_bytes); }
    EBlob GetMACAddress() const { return EBlob(m_bytes.data(), static_cast<unsigned int>(m_bytes.size())); }
    /// Takes the first 6 bytes; missing ones are zero.
    void SetMACAddress(EBlob const& bytes);
    /// "aa:bb:cc:dd:ee:ff".
    std::string GetAsString() const;
    bool operator==(EMACAddress const& other) const { return m_bytes == other.m_bytes; }
    bool operator!=(EMACAddress const& other) const { return m_bytes != other.m_bytes; }

private:
    friend IFHOST_API EArchive& operator<<(EArchive& archive, EMACAddress const& address);
    friend IFHOST_API EArchive& operator>>(EArchive& archive, EMACAddress& address);

    std::array<unsigned char, 6> m_bytes = {};
};

/// 6 bytes.
IFHOST_API EArchive& operator<<(EArchive& archive, EMACAddress const& address);
/// On an error the address keeps what it held.
IFHOST_API EArchive& operator>>(EArchive& archive, EMACAddress& address);
