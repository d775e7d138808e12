#pragma once

#include "kernelSnapshot.hpp"
#include "netlinkSocket.hpp"

namespace ifcoreTool {

/// Where requests for a dump go and the answering datagrams come from. Failures return an errno value.
class NetlinkSource {
public:
    virtual ~NetlinkSource() = default;

    /// Asks for a dump of \p type (RTM_GETLINK, RTM_GETADDR, RTM_GETNEIGH, RTM_GETROUTE) for one address family;
    /// 0 or an errno value.
    virtual int Request(unsigned short type, unsigned char family, unsigned int sequence) = 0;

    /// One datagram into \p buffer, which is enlarged when the datagram needs it; 0 or an errno value. ENOBUFS says
    /// that datagrams were lost.
    virtual int Receive(std::vector<char>& buffer, std::size_t& size) = 0;

    /// What is still queued is forgotten, and the queue made larger when that can be done.
    virtual void Restart() = 0;
};

/// The kernel's rtnetlink in the network namespace of the calling thread at the moment of construction, which throws
/// ToolError when the system gives no socket.
class KernelNetlinkSource : public NetlinkSource {
public:
    int Request(unsigned short type, unsigned char family, unsigned int sequence) override;
    int Receive(std::vector<char>& buffer, std::size_t& size) override { return m_socket.Receive(buffer, size, 0); }
    void Restart() override { m_socket.Restart(); }

    void SetReceiveBufferSize(int bytes) { m_socket.SetReceiveBufferSize(bytes); }

private:
    NetlinkSocket m_socket{0}; // of no group
};

/// Links, addresses, default gateways and neighbours. Lost datagrams and a dump that the kernel calls inconsistent are
/// met by reading everything again, at most \p attempts times in all; then, and on any other failure, throws ToolError
/// with the status of a refusing system.
KernelSnapshot ReadKernelSnapshot(NetlinkSource& source, unsigned int attempts = 20);

} // namespace ifcoreTool
