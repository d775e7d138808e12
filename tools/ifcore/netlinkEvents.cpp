#include "netlinkEvents.hpp"

#include <cerrno>

#include <linux/rtnetlink.h>
#include <poll.h>
#include <sys/socket.h>

namespace ifcoreTool {

static constexpr unsigned int kGroups = RTMGRP_LINK | RTMGRP_NEIGH | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
/// Bytes: room for a burst of ten thousand neighbours, each some hundred bytes and the kernel's own overhead.
static constexpr int kReceiveBuffer = 16 * 1024 * 1024;
/// Changes that come without a pause must not put the end off for ever.
static constexpr std::chrono::seconds kFarewell{1};

KernelNetlinkEvents::KernelNetlinkEvents(EndSignals& signals) : m_signals(signals), m_socket(kGroups)
{
    m_socket.SetReceiveBufferSize(kReceiveBuffer);
}

int KernelNetlinkEvents::Receive(std::vector<char>& buffer, std::size_t& size)
{
    for (;;) {
        if (!m_isEnding && m_signals.HasCome()) {
            m_isEnding = true;
            m_lastMoment = Clock::now() + kFarewell;
        }
        pollfd waiting[] = {{m_socket.GetDescriptor(), POLLIN, 0}, {m_signals.GetDescriptor(), POLLIN, 0}};
        if (poll(waiting, 2, m_isEnding ? 0 : -1) < 0) {
            if (errno == EINTR) continue;
            return errno;
        }
        if (m_isEnding && Clock::now() >= m_lastMoment) return ECANCELED;
        int const error = m_socket.Receive(buffer, size, MSG_DONTWAIT);
        if (error == EAGAIN && m_isEnding) return ECANCELED;
        if (error != EAGAIN && error != EINTR) return error;
    }
}

} // namespace ifcoreTool
