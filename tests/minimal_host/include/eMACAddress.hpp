#pragma once

#include "eBlob.hpp"

#include <array>
#include <string>

class MINIMAL_HOST_API EMACAddress {
public:
    EMACAddress() = default;
    explicit EMACAddress(std::string const& text);

    void Empty() { m_bytes = {}; }
    void Swap(EMACAddress& other) { m_bytes.swap(other.m_bytes); }
    EBlob GetMACAddress() const { return EBlob(m_bytes.data(), 6); }
    void SetMACAddress(EBlob const& bytes);
    std::string GetAsString() const;
    bool operator==(EMACAddress const& other) const { return m_bytes == other.m_bytes; }
    bool operator!=(EMACAddress const& other) const { return m_bytes != other.m_bytes; }

private:
    std::array<unsigned char, 6> m_bytes = {};
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EMACAddress const& address);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EMACAddress& address);
