#pragma once

#include "eIPAddress.hpp"
#include "ifhostExport.hpp"
#include "tlvIds.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <endian.h>
#include <string>
#include <vector>

class EComponentId;

/// Messages of nested TLVs: a 32-bit id, a 32-bit length in bytes and that many bytes of value, integers big-endian.
namespace Protocol {

typedef std::vector<char> EBytes; ///< A message, or as much of it as has been built.

/// An open TLV at the end of a message: what is appended while it lives is its value.
/// Its constructor and Done() are the library's.
class TLVBuilder {
public:
    IFHOST_API TLVBuilder(EBytes& out, TLVIds::TLVId const& id);
    /// Closes the TLV, also on the way of an exception.
    ~TLVBuilder()
    {
        try {
            Done();
        } catch (...) { // there is no room for the length in a message that was cut meanwhile
        }
    }
    TLVBuilder(TLVBuilder const&) = delete;
    TLVBuilder& operator=(TLVBuilder const&) = delete;

    /// Closes the TLV: fills its length in, once, and clears the first 4 bytes of its value.
    IFHOST_API void Done();

    /// The names of this host's ids by their numbers; that of number 0 is "".
    static IFHOST_API std::vector<char const*>& known_tlv_table();

private:
    EBytes& m_buffer;
    unsigned int m_valueStart; // offset in the buffer
    bool m_done;
};

/// An id and a length as they stand in a message.
inline unsigned long TLVHeader(TLVIds::TLVId const& id, std::size_t length)
{
    return htobe64(static_cast<unsigned long>(id.GetIndex()) << 32 | static_cast<unsigned int>(length));
}

// Flat functions have the insertions compiled into them: of one at the end, of constant size, a comparison and the copy
// are left. A resize before would cost several times as much.

/// Appends the id alone, 4 bytes.
[[gnu::flatten]] inline void TLVAppendId(EBytes& out, TLVIds::TLVId const& id)
{
    unsigned int const number = htobe32(id.GetIndex());
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    out.insert(out.end(), bytes, bytes + sizeof bytes);
}

/// \name Append one TLV, whole or, when memory fails, not at all
///@{
/// Plain bytes; null ones when \p count is 0.
[[gnu::flatten]] inline void TLVAppendBytes(EBytes& out, TLVIds::TLVId const& id, char const* bytes, std::size_t count)
{
    unsigned long const header = TLVHeader(id, count);
    char headerBytes[sizeof header];
    std::memcpy(headerBytes, &header, sizeof header);
    std::size_t const needed = out.size() + sizeof header + count; // for both, so that the second cannot fail
    if (needed > out.capacity()) out.reserve(std::max(2 * out.capacity(), needed));
    out.insert(out.end(), headerBytes, headerBytes + sizeof headerBytes);
    if (count > 0) out.insert(out.end(), bytes, bytes + count);
}
[[gnu::flatten]] inline void AppendUnsignedIntTLV(EBytes& out, TLVIds::TLVId const& id, unsigned int value)
{
    unsigned long const header = TLVHeader(id, sizeof value);
    value = htobe32(value);
    char bytes[sizeof header + sizeof value];
    std::memcpy(bytes, &header, sizeof header);
    std::memcpy(bytes + sizeof header, &value, sizeof value);
    out.insert(out.end(), bytes, bytes + sizeof bytes);
}
inline void AppendIntTLV(EBytes& out, TLVIds::TLVId const& id, int value) ///< 4 bytes.
{
    AppendUnsignedIntTLV(out, id, static_cast<unsigned int>(value));
}
inline void AppendStringTLV(EBytes& out, TLVIds::TLVId const& id, std::string const& value) ///< No terminator.
{
    TLVAppendBytes(out, id, value.data(), value.size());
}
inline void AppendIPTLV(EBytes& out, TLVIds::TLVId const& id, EIPAddress const& value) ///< 4 or 16 bytes.
{
    auto const* const bytes = reinterpret_cast<char const*>(value.GetBytes());
    TLVAppendBytes(out, id, bytes, value.GetFamily() == EIPAddress::kIPv4 ? 4 : 16);
}
IFHOST_API void AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value); ///< 4 a level.
///@}

} // namespace Protocol
