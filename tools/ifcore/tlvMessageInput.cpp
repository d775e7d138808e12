#include "tlvMessageInput.hpp"

#include "tlvWalk.hpp"
#include "toolError.hpp"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace ifcoreTool {

constexpr std::size_t kBufferSize = 65536;

static FileDescriptor Opened(std::string const& path)
{
    if (path != "-") return OpenToRead(path);
    FileDescriptor input(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    if (!input.IsOpen()) throw SystemRefused("reading standard input", errno);
    return input;
}

TlvMessageInput::TlvMessageInput(std::string const& path, std::size_t most)
    : m_name(path == "-" ? "standard input" : path), m_file(Opened(path)), m_most(most), m_buffer(kBufferSize)
{
}

bool TlvMessageInput::Next()
{
    m_offset += m_tlv.size();
    m_tlv.clear();
    ReadUpTo(kTlvHeaderSize);
    if (m_tlv.size() < kTlvHeaderSize) return false;
    std::size_t const size = kTlvHeaderSize + TlvU32(m_tlv.data() + 4);
    // What is there decides, and not what the length says: of a cut TLV as much is read as of any other.
    ReadUpTo(std::min(size, m_most + 1));
    if (m_tlv.size() > m_most)
        throw BadInput(m_name + ": byte " + std::to_string(m_offset) + ": a TLV of " + std::to_string(size) +
                       " bytes is larger than " + std::to_string(m_most) + " bytes");
    return true;
}

/// Takes bytes until there are \p count, or the message ends. Memory grows with what is there.
void TlvMessageInput::ReadUpTo(std::size_t count)
{
    while (m_tlv.size() < count) {
        if (m_begin == m_end) {
            m_begin = 0;
            m_end = ReadSome(m_file, m_buffer.data(), m_buffer.size(), m_name);
            if (m_end == 0) return;
        }
        std::size_t const taken = std::min(count - m_tlv.size(), m_end - m_begin);
        auto const first = m_buffer.begin() + static_cast<std::ptrdiff_t>(m_begin);
        m_tlv.insert(m_tlv.end(), first, first + static_cast<std::ptrdiff_t>(taken));
        m_begin += taken;
    }
}

} // namespace ifcoreTool
