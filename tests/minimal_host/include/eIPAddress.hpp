#pragma once

#include "eArchive.hpp"

#include <array>
#include <string>

class MINIMAL_HOST_API EIPAddress {
public:
    EIPAddress() = default;
    explicit EIPAddress(std::string const& text);
    EIPAddress(EIPAddress const&) = default;
    EIPAddress& operator=(EIPAddress const&) = default;
    virtual ~EIPAddress() = default;

    void SetAddress(unsigned char const* bytes, unsigned int family)
    {
        SetAddress(bytes, family == 17 ? 4 : 16, family);
    }
    void SetAddress(unsigned char const* bytes, unsigned int count, unsigned int family);
    unsigned int GetFamily() const { return m_family; }
    unsigned char const* GetBytes() const { return m_bytes.data(); }
    bool IsZero() const { return m_bytes == std::array<unsigned char, 16>(); }
    std::string GetAsString() const;
    void Swap(EIPAddress& other);
    bool operator==(EIPAddress const& other) const { return m_family == other.m_family && m_bytes == other.m_bytes; }
    bool operator!=(EIPAddress const& other) const { return !(*this == other); }
    bool operator<(EIPAddress const& other) const
    {
        return m_family != other.m_family ? m_family < other.m_family : m_bytes < other.m_bytes;
    }

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EIPAddress const& address);
    friend MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EIPAddress& address);

    unsigned int m_family = 17;
    std::array<unsigned char, 16> m_bytes = {};
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EIPAddress const& address);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EIPAddress& address);
