#include "endSignals.hpp"

#include "toolError.hpp"

#include <cerrno>

#include <sys/signalfd.h>

namespace ifcoreTool {

static constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP};

EndSignals::EndSignals()
{
    sigset_t ending;
    sigemptyset(&ending);
    for (int signal : kEnding) sigaddset(&ending, signal);
    m_signals = FileDescriptor(signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!m_signals.IsOpen()) throw SystemRefused("waiting for signals", errno);
    sigprocmask(SIG_BLOCK, &ending, &m_previousMask);
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGPIPE, &ignored, &m_previousPipe);
}

EndSignals::~EndSignals()
{
    sigaction(SIGPIPE, &m_previousPipe, nullptr);
    sigprocmask(SIG_SETMASK, &m_previousMask, nullptr);
}

bool EndSignals::HasCome()
{
    signalfd_siginfo signal;
    if (read(m_signals.Get(), &signal, sizeof signal) == static_cast<ssize_t>(sizeof signal)) m_hasCome = true;
    return m_hasCome;
}

HeldSignals::HeldSignals()
{
    sigset_t blocked;
    sigprocmask(SIG_SETMASK, nullptr, &blocked);
    sigemptyset(&m_held);
    for (int signal : kEnding) {
        struct sigaction action;
        sigaction(signal, nullptr, &action);
        // Held, an ignored signal would seem to have come.
        if (action.sa_handler != SIG_IGN && sigismember(&blocked, signal) == 0) sigaddset(&m_held, signal);
    }
    sigprocmask(SIG_BLOCK, &m_held, nullptr);
}

HeldSignals::~HeldSignals()
{
    sigprocmask(SIG_UNBLOCK, &m_held, nullptr);
}

bool HeldSignals::HasCome() const
{
    sigset_t waiting;
    sigpending(&waiting);
    for (int signal : kEnding)
        if (sigismember(&m_held, signal) == 1 && sigismember(&waiting, signal) == 1) return true;
    return false;
}

} // namespace ifcoreTool
