#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace ifcoreTool {

/// Counts steps of one piece of work on standard error, when that is a terminal and the work takes more than a second.
/// The line is wiped out at the end.
class Progress {
public:
    using Clock = std::chrono::steady_clock;
    using Now = Clock::time_point (*)(); ///< Where the time comes from.

    /// \p steps: null when their number is not known before the end.
    Progress(std::string const& what, std::optional<std::size_t> steps, Now now = Clock::now);
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    void Step();

private:
    std::string m_what;
    std::optional<std::size_t> m_steps;
    std::size_t m_done = 0;
    Now m_now;
    bool m_isTerminal;
    bool m_isShown = false;
    Clock::time_point m_next;
};

} // namespace ifcoreTool
