#pragma once

#include "endSignals.hpp"
#include "netlinkSocket.hpp"

#include <chrono>
#include <cstddef>
#include <vector>

namespace ifcoreTool {

/// Where the kernel's messages about changes come from, until somebody asks for an end.
class NetlinkEvents {
public:
    virtual ~NetlinkEvents() = default;

    /// Waits for one datagram, which goes into \p buffer; that is enlarged when the datagram needs it. 0 or an errno
    /// value: ENOBUFS says that datagrams were lost, ECANCELED that the end was asked for and that all which the kernel
    /// had told by then has been received.
    virtual int Receive(std::vector<char>& buffer, std::size_t& size) = 0;

    /// What is still queued is forgotten, and the queue made larger when that can be done.
    virtual void Restart() = 0;
};

/// The kernel's changes of links, addresses and neighbours in the network namespace of the calling thread at the moment
/// of construction, which throws ToolError when the system gives no socket. The end is one of \p signals, which live
/// longer.
class KernelNetlinkEvents : public NetlinkEvents {
public:
    explicit KernelNetlinkEvents(EndSignals& signals);

    int Receive(std::vector<char>& buffer, std::size_t& size) override;
    void Restart() override { m_socket.Restart(); }

    void SetReceiveBufferSize(int bytes) { m_socket.SetReceiveBufferSize(bytes); }

private:
    using Clock = std::chrono::steady_clock;

    EndSignals& m_signals;
    NetlinkSocket m_socket;
    bool m_isEnding = false;
    Clock::time_point m_lastMoment; // once it is ending: of receiving, whatever is queued
};

} // namespace ifcoreTool
