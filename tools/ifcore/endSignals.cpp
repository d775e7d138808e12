#include "endSignals.hpp"

#include "toolError.hpp"

#include <cerrno>

#include <sys/signalfd.h>

namespace ifcoreTool {

EndSignals::EndSignals()
{
    sigset_t ending;
    sigemptyset(&ending);
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&ending, signal);
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

} // namespace ifcoreTool
