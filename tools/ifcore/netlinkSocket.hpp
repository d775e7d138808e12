#pragma once

#include <cstddef>
#include <vector>

struct mnl_socket;

namespace ifcoreTool {

/// A socket of the kernel's rtnetlink in the network namespace of the calling thread at the moment of construction.
/// Sending and receiving return 0 or an errno value.
class NetlinkSocket {
public:
    /// A member of \p groups (RTMGRP_... joined by "or") from the first moment on. Throws ToolError when the system
    /// gives no socket.
    explicit NetlinkSocket(unsigned int groups);
    ~NetlinkSocket();
    NetlinkSocket(NetlinkSocket const&) = delete;
    NetlinkSocket& operator=(NetlinkSocket const&) = delete;

    int GetDescriptor() const;
    int Send(void const* message, std::size_t size);
    /// One datagram into \p buffer, which is enlarged when the datagram needs it. \p flags are those of recv(); with
    /// MSG_DONTWAIT it is EAGAIN when there is none. ENOBUFS says that datagrams were lost.
    int Receive(std::vector<char>& buffer, std::size_t& size, int flags);
    /// Forgets what is queued and makes the queue larger when that can be done.
    void Restart();
    /// Bytes that the kernel may queue for this socket; the kernel has a least value of its own, and one that only the
    /// privileged may pass. Throws ToolError.
    void SetReceiveBufferSize(int bytes);

private:
    mnl_socket* m_socket;        // owned
    int m_receiveBufferSize = 0; // bytes; 0: the system's own choice
};

} // namespace ifcoreTool
