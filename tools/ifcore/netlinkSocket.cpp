#include "netlinkSocket.hpp"

#include "toolError.hpp"

#include <libmnl/libmnl.h>

#include <algorithm>
#include <cerrno>

#include <linux/netlink.h>
#include <sys/socket.h>

namespace ifcoreTool {

static constexpr int kLargestReceiveBuffer = 64 * 1024 * 1024; // bytes

NetlinkSocket::NetlinkSocket(unsigned int groups) : m_socket(mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC))
{
    if (!m_socket) throw SystemRefused("opening a netlink socket", errno);
    if (mnl_socket_bind(m_socket, groups, MNL_SOCKET_AUTOPID) >= 0) return;
    int const error = errno;
    mnl_socket_close(m_socket);
    throw SystemRefused("binding a netlink socket", error);
}

NetlinkSocket::~NetlinkSocket()
{
    mnl_socket_close(m_socket);
}

int NetlinkSocket::GetDescriptor() const
{
    return mnl_socket_get_fd(m_socket);
}

int NetlinkSocket::Send(void const* message, std::size_t size)
{
    return mnl_socket_sendto(m_socket, message, size) < 0 ? errno : 0;
}

int NetlinkSocket::Receive(std::vector<char>& buffer, std::size_t& size, int flags)
{
    ssize_t const waiting = recv(GetDescriptor(), nullptr, 0, flags | MSG_PEEK | MSG_TRUNC);
    if (waiting < 0) return errno;
    if (buffer.size() < static_cast<std::size_t>(waiting)) buffer.resize(static_cast<std::size_t>(waiting));
    ssize_t const received = mnl_socket_recvfrom(m_socket, buffer.data(), buffer.size());
    if (received < 0) return errno;
    size = static_cast<std::size_t>(received);
    return 0;
}

void NetlinkSocket::SetReceiveBufferSize(int bytes)
{
    m_receiveBufferSize = bytes;
    // The forced form passes the system's limit and is for the privileged only.
    if (setsockopt(GetDescriptor(), SOL_SOCKET, SO_RCVBUFFORCE, &bytes, sizeof bytes) == 0) return;
    if (setsockopt(GetDescriptor(), SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes) != 0)
        throw SystemRefused("setting the size of a netlink queue", errno);
}

void NetlinkSocket::Restart()
{
    // Emptied in place: a new socket could stand in another namespace than the first.
    char rest[1];
    while (recv(GetDescriptor(), rest, sizeof rest, MSG_DONTWAIT | MSG_TRUNC) >= 0 || errno == ENOBUFS ||
           errno == EINTR) {}
    int const current = m_receiveBufferSize != 0 ? m_receiveBufferSize : 128 * 1024;
    SetReceiveBufferSize(std::min(current * 2, kLargestReceiveBuffer));
}

} // namespace ifcoreTool
