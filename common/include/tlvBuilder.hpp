#pragma once

#include "ifhostExport.hpp"
#include "tlvIds.hpp"

#include <string>
#include <vector>

class EComponentId;
class EIPAddress;

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

/// Appends the id alone, 4 bytes.
IFHOST_API void TLVAppendId(EBytes& out, TLVIds::TLVId const& id);

/// \name Append one TLV, whole or, when memory fails, not at all
///@{
IFHOST_API void AppendIntTLV(EBytes& out, TLVIds::TLVId const& id, int value); ///< 4 bytes.
IFHOST_API void AppendUnsignedIntTLV(EBytes& out, TLVIds::TLVId const& id, unsigned int value);
IFHOST_API void AppendStringTLV(EBytes& out, TLVIds::TLVId const& id, std::string const& value);  ///< No terminator.
IFHOST_API void AppendIPTLV(EBytes& out, TLVIds::TLVId const& id, EIPAddress const& value);       ///< 4 or 16 bytes.
IFHOST_API void AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value); ///< 4 a level.
///@}

} // namespace Protocol
