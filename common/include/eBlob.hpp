#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <string>

/// A buffer of bytes that owns them. Offsets and counts are clamped to what exists.
class IFHOST_API EBlob {
public:
    EBlob() = default;
    /// Copies \p count bytes; without \p bytes they are zero.
    EBlob(void const* bytes, unsigned int count);

    /// Null only when the blob is empty.
    unsigned char const* GetData() const { return reinterpret_cast<unsigned char const*>(m_bytes.data()); }
    unsigned int GetSize() const { return static_cast<unsigned int>(m_bytes.size()); }
    bool operator==(EBlob const& other) const { return m_bytes == other.m_bytes; }
    bool operator!=(EBlob const& other) const { return m_bytes != other.m_bytes; }
    void Swap(EBlob& other) noexcept { m_bytes.swap(other.m_bytes); }
    /// With \p keep the bytes up to \p size stay and what is new is zero; without, all bytes are zero.
    void SetSize(unsigned int size, bool keep);
    void Memset(unsigned char value, unsigned int offset, unsigned int count);
    /// Makes \p out a copy of the range; \p out may be this blob.
    void GetAt(EBlob& out, unsigned int offset, unsigned int count) const;
    void RemoveLeadingBytes(unsigned int count);
    /// Two lower-case digits a byte, nothing between them.
    std::string GetHexString() const;
    /// Takes the hexadecimal digits of \p text, from an optional `0x` on, up to the first character that is neither a
    /// digit nor one of ":", ".", "-" and white space, which are skipped wherever they stand. Of an odd number of
    /// digits the first is a byte of its own. False when such a character ended the text early; the bytes before it are
    /// kept.
    bool SetHexString(std::string const& text);

private:
    std::string m_bytes; // which holds up to 15, such as an address, without an allocation
};

/// The size as `unsigned long`, then the bytes.
IFHOST_API EArchive& operator<<(EArchive& archive, EBlob const& blob);
/// On an error the blob keeps what it held.
IFHOST_API EArchive& operator>>(EArchive& archive, EBlob& blob);
