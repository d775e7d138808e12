#include "progress.hpp"

#include <iostream>

#include <unistd.h>

namespace ifcoreTool {

constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kInterval{100};

Progress::Progress(std::string const& what, std::size_t steps)
    : m_what(what), m_steps(steps), m_isTerminal(isatty(STDERR_FILENO) == 1), m_next(Clock::now() + kPatience)
{
}

Progress::~Progress()
{
    if (m_isShown) std::cerr << "\r\033[K" << std::flush;
}

void Progress::Step()
{
    ++m_done;
    if (!m_isTerminal || Clock::now() < m_next) return;
    m_next = Clock::now() + kInterval;
    m_isShown = true;
    std::cerr << "\r\033[K" << m_what << " " << m_done << " of " << m_steps << std::flush;
}

} // namespace ifcoreTool
