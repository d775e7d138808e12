#pragma once

#include "fileDescriptor.hpp"

#include <csignal>

namespace ifcoreTool {

/// As long as this lives, SIGINT, SIGTERM and SIGHUP do not end the process but can be asked for, and writing to a pipe
/// that nobody reads fails instead of ending it. For processes of one thread.
class EndSignals {
public:
    EndSignals(); ///< Throws ToolError when the system refuses.
    ~EndSignals();
    EndSignals(EndSignals const&) = delete;
    EndSignals& operator=(EndSignals const&) = delete;

    int GetDescriptor() const { return m_signals.Get(); } ///< Can be read when one has come and nobody has asked yet.
    bool HasCome();                                       ///< Whether one has ever come.

private:
    sigset_t m_previousMask;
    struct sigaction m_previousPipe;
    FileDescriptor m_signals;
    bool m_hasCome = false;
};

/// As long as this lives, SIGINT, SIGTERM and SIGHUP wait, unless somebody else holds or ignores them; then they do
/// what they always do. For processes of one thread, and for work that asks from time to time.
class HeldSignals {
public:
    HeldSignals();
    ~HeldSignals(); ///< Does not return from one that came and ends the process.
    HeldSignals(HeldSignals const&) = delete;
    HeldSignals& operator=(HeldSignals const&) = delete;

    bool HasCome() const; ///< Whether one of those that are held here waits.

private:
    sigset_t m_held;
};

} // namespace ifcoreTool
