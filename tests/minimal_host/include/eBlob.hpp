#pragma once

#include "eArchive.hpp"

#include <string>

class MINIMAL_HOST_API EBlob {
public:
    EBlob() = default;
    EBlob(void const* bytes, unsigned int count);

    unsigned char const* GetData() const { return reinterpret_cast<unsigned char const*>(m_bytes.data()); }
    unsigned int GetSize() const { return static_cast<unsigned int>(m_bytes.size()); }
    bool operator==(EBlob const& other) const { return m_bytes == other.m_bytes; }
    bool operator!=(EBlob const& other) const { return m_bytes != other.m_bytes; }
    void Swap(EBlob& other) { m_bytes.swap(other.m_bytes); }
    void SetSize(unsigned int size, bool keep);
    void Memset(unsigned char value, unsigned int offset, unsigned int count);
    void GetAt(EBlob& out, unsigned int offset, unsigned int count) const;
    void RemoveLeadingBytes(unsigned int count);
    std::string GetHexString() const;
    bool SetHexString(std::string const& text);

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EBlob const& blob);
    friend MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EBlob& blob);

    std::string m_bytes;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EBlob const& blob);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EBlob& blob);
