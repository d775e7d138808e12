#include "netlinkReader.hpp"

#include "netlinkMessages.hpp"
#include "toolError.hpp"

#include <libmnl/libmnl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace ifcoreTool {

namespace {

constexpr int kLargestReceiveBuffer = 64 * 1024 * 1024; // bytes

enum class DumpResult { complete, inconsistent };

struct DumpStep {
    unsigned short type;
    unsigned char family;
    char const* what;
};

constexpr DumpStep kSteps[] = {
    {RTM_GETLINK, AF_UNSPEC, "links"},         {RTM_GETADDR, AF_INET, "IPv4 addresses"},
    {RTM_GETADDR, AF_INET6, "IPv6 addresses"}, {RTM_GETROUTE, AF_INET, "IPv4 routes"},
    {RTM_GETROUTE, AF_INET6, "IPv6 routes"},
};

/// Error number of an NLMSG_ERROR or NLMSG_DONE message; 0 when it has none.
int EndingError(nlmsghdr const& message)
{
    int error = 0;
    if (mnl_nlmsg_get_payload_len(&message) >= sizeof error)
        std::memcpy(&error, mnl_nlmsg_get_payload(&message), sizeof error);
    return error < 0 ? -error : error;
}

/// A kernel built without IPv6 refuses its dumps; there is nothing to read then.
bool IsMissingFamily(DumpStep const& step, int error)
{
    return step.family == AF_INET6 && (error == EOPNOTSUPP || error == EAFNOSUPPORT);
}

DumpResult ReadDump(NetlinkSource& source, DumpStep const& step, unsigned int sequence, KernelSnapshot& snapshot)
{
    std::string const what = std::string("reading the kernel's ") + step.what;
    if (int const error = source.Request(step.type, step.family, sequence)) throw SystemRefused(what, error);
    std::vector<char> buffer(static_cast<std::size_t>(MNL_SOCKET_BUFFER_SIZE));
    bool inconsistent = false;
    for (;;) {
        std::size_t size = 0;
        int const error = source.Receive(buffer, size);
        if (error == EINTR) continue;
        if (error == ENOBUFS) return DumpResult::inconsistent;
        if (error != 0) throw SystemRefused(what, error);
        int remaining = static_cast<int>(size);
        auto const* message = reinterpret_cast<nlmsghdr const*>(buffer.data());
        for (; mnl_nlmsg_ok(message, remaining); message = mnl_nlmsg_next(message, &remaining)) {
            if (message->nlmsg_seq != sequence) continue; // an answer to a dump that was given up
            if ((message->nlmsg_flags & NLM_F_DUMP_INTR) != 0) inconsistent = true;
            if (message->nlmsg_type == NLMSG_OVERRUN) return DumpResult::inconsistent;
            if (message->nlmsg_type == NLMSG_ERROR || message->nlmsg_type == NLMSG_DONE) {
                int const ending = EndingError(*message);
                if (ending != 0 && !IsMissingFamily(step, ending)) throw SystemRefused(what, ending);
                return inconsistent ? DumpResult::inconsistent : DumpResult::complete;
            }
            ParseNetlinkMessage(*message, snapshot);
        }
    }
}

DumpResult ReadAll(NetlinkSource& source, unsigned int& sequence, KernelSnapshot& snapshot)
{
    for (DumpStep const& step : kSteps)
        if (ReadDump(source, step, ++sequence, snapshot) != DumpResult::complete) return DumpResult::inconsistent;
    return DumpResult::complete;
}

} // namespace

KernelNetlinkSource::KernelNetlinkSource()
{
    Open();
}

KernelNetlinkSource::~KernelNetlinkSource()
{
    if (m_socket) mnl_socket_close(m_socket);
}

void KernelNetlinkSource::Open()
{
    m_socket = mnl_socket_open2(NETLINK_ROUTE, SOCK_CLOEXEC);
    if (!m_socket) throw SystemRefused("opening a netlink socket", errno);
    if (mnl_socket_bind(m_socket, 0, MNL_SOCKET_AUTOPID) < 0) {
        int const error = errno;
        mnl_socket_close(m_socket);
        m_socket = nullptr;
        throw SystemRefused("binding a netlink socket", error);
    }
}

int KernelNetlinkSource::Request(unsigned short type, unsigned char family, unsigned int sequence)
{
    alignas(nlmsghdr) char buffer[256] = {};
    nlmsghdr* message = mnl_nlmsg_put_header(buffer);
    message->nlmsg_type = type;
    message->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    message->nlmsg_seq = sequence;
    // The family is the first byte of each of the three headers; the kernel wants the whole of its own one.
    std::size_t const size = type == RTM_GETLINK   ? sizeof(ifinfomsg)
                             : type == RTM_GETADDR ? sizeof(ifaddrmsg)
                                                   : sizeof(rtmsg);
    *static_cast<unsigned char*>(mnl_nlmsg_put_extra_header(message, size)) = family;
    return mnl_socket_sendto(m_socket, message, message->nlmsg_len) < 0 ? errno : 0;
}

int KernelNetlinkSource::Receive(std::vector<char>& buffer, std::size_t& size)
{
    ssize_t const waiting = recv(mnl_socket_get_fd(m_socket), nullptr, 0, MSG_PEEK | MSG_TRUNC);
    if (waiting < 0) return errno;
    if (buffer.size() < static_cast<std::size_t>(waiting)) buffer.resize(static_cast<std::size_t>(waiting));
    ssize_t const received = mnl_socket_recvfrom(m_socket, buffer.data(), buffer.size());
    if (received < 0) return errno;
    size = static_cast<std::size_t>(received);
    return 0;
}

void KernelNetlinkSource::SetReceiveBufferSize(int bytes)
{
    m_receiveBufferSize = bytes;
    int const descriptor = mnl_socket_get_fd(m_socket);
    // The forced form passes the system's limit and is for the privileged only.
    if (setsockopt(descriptor, SOL_SOCKET, SO_RCVBUFFORCE, &bytes, sizeof bytes) == 0) return;
    if (setsockopt(descriptor, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes) != 0)
        throw SystemRefused("setting the size of a netlink queue", errno);
}

void KernelNetlinkSource::Restart()
{
    // Emptied in place: a new socket could stand in another namespace than the first.
    std::vector<char> rest(static_cast<std::size_t>(MNL_SOCKET_BUFFER_SIZE));
    int const descriptor = mnl_socket_get_fd(m_socket);
    while (recv(descriptor, rest.data(), rest.size(), MSG_DONTWAIT) >= 0 || errno == ENOBUFS || errno == EINTR) {}
    int const current = m_receiveBufferSize != 0 ? m_receiveBufferSize : 128 * 1024;
    SetReceiveBufferSize(std::min(current * 2, kLargestReceiveBuffer));
}

KernelSnapshot ReadKernelSnapshot(NetlinkSource& source, unsigned int attempts)
{
    unsigned int sequence = 0;
    for (unsigned int attempt = 0; attempt < attempts; ++attempt) {
        if (attempt != 0) source.Restart();
        KernelSnapshot snapshot;
        if (ReadAll(source, sequence, snapshot) == DumpResult::complete) return snapshot;
    }
    throw ToolError(ExitCode::systemRefused, "reading the kernel's interfaces: they changed during each of " +
                                                 std::to_string(attempts) + " readings");
}

} // namespace ifcoreTool
