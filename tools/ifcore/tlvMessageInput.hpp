#pragma once

#include "fileDescriptor.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace ifcoreTool {

/// A message from a file, or from standard input when that is named "-": one TLV of its outermost level after the
/// other, so that a message may be larger than memory.
class TlvMessageInput {
public:
    /// \p most: bytes of one TLV, those of its id and length included; the library reads no larger ones. Throws
    /// ToolError.
    explicit TlvMessageInput(std::string const& path, std::size_t most = std::numeric_limits<int>::max());

    /// Takes the next TLV, or of a last one that is cut what is there. False at the end; then GetTlv() is what remains,
    /// too little for a TLV. Throws ToolError: the system's refusal, or a larger TLV.
    bool Next();

    std::vector<unsigned char> const& GetTlv() const { return m_tlv; }
    std::uint64_t GetOffset() const { return m_offset; }  ///< Of that, in the message.
    std::string const& GetName() const { return m_name; } ///< Of the message, for people.

private:
    void ReadUpTo(std::size_t count);

    std::string m_name;
    FileDescriptor m_file;
    std::size_t m_most;
    std::vector<unsigned char> m_tlv;
    std::uint64_t m_offset = 0;
    std::vector<unsigned char> m_buffer; // what has been read of the file
    std::size_t m_begin = 0;             // of what is not used yet
    std::size_t m_end = 0;
};

} // namespace ifcoreTool
