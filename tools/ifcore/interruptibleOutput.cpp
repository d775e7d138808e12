#include "interruptibleOutput.hpp"

#include <algorithm>
#include <cerrno>
#include <climits>

#include <poll.h>
#include <unistd.h>

namespace ifcoreTool {

static constexpr std::size_t kMostKept = 65536; // bytes
static constexpr int kPatience = 1000;          // milliseconds, once a signal has come

/// Until PIPE_BUF bytes can be written without waiting. False when that is given up.
bool InterruptibleOutput::WaitForReader()
{
    pollfd waiting[] = {{m_descriptor, POLLOUT, 0}, {m_signals.GetDescriptor(), POLLIN, 0}};
    for (;;) {
        bool const isEnding = m_signals.HasCome();
        int const ready = poll(waiting, 2, isEnding ? kPatience : -1);
        if (ready < 0 && errno != EINTR) return false;
        if (ready > 0 && waiting[0].revents != 0) return true;
        if (isEnding && ready == 0) return false;
    }
}

int InterruptibleOutput::sync()
{
    std::size_t done = 0;
    while (done < m_text.size() && WaitForReader()) {
        ssize_t const count =
            write(m_descriptor, m_text.data() + done, std::min<std::size_t>(m_text.size() - done, PIPE_BUF));
        if (count < 0 && errno != EINTR && errno != EAGAIN) break;
        if (count > 0) done += static_cast<std::size_t>(count);
    }
    bool const isWritten = done == m_text.size();
    m_text.clear(); // also when it failed: nothing more can be written then
    return isWritten ? 0 : -1;
}

std::streamsize InterruptibleOutput::xsputn(char const* text, std::streamsize count)
{
    m_text.append(text, static_cast<std::size_t>(count));
    return m_text.size() >= kMostKept && sync() != 0 ? 0 : count;
}

InterruptibleOutput::int_type InterruptibleOutput::overflow(int_type character)
{
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    char const one = traits_type::to_char_type(character);
    return xsputn(&one, 1) == 1 ? character : traits_type::eof();
}

} // namespace ifcoreTool
