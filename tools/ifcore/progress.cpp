#include "progress.hpp"

#include <iostream>

#include <unistd.h>

namespace ifcoreTool {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kInterval{100};

Progress::Progress(std::string const& what, std::optional<std::size_t> steps, Now now)
    : m_what(what), m_steps(steps), m_now(now), m_isTerminal(isatty(STDERR_FILENO) == 1), m_next(now() + kPatience)
{
}

Progress::~Progress()
{
    if (m_isShown) std::cerr << "\r\033[K" << std::flush;
}

void Progress::Step()
{
    ++m_done;
    if (!m_isTerminal || m_now() < m_next) return;
    m_next = m_now() + kInterval;
    m_isShown = true;
    // One write: standard error is not buffered.
    std::string const end = m_steps ? " of " + std::to_string(*m_steps) : "";
    std::cerr << "\r\033[K" + m_what + " " + std::to_string(m_done) + end << std::flush;
}

} // namespace ifcoreTool
