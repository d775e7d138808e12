#include "netlinkReader.hpp"

#include "netlinkMessages.hpp"
#include "toolError.hpp"

#include <libmnl/libmnl.h>

#include <cerrno>
#include <cstring>

#include <linux/neighbour.h>
#include <linux/rtnetlink.h>

namespace ifcoreTool {

namespace {

enum class DumpResult { complete, inconsistent };

struct DumpStep {
    unsigned short type;
    unsigned char family;
    char const* what;
};

constexpr DumpStep kSteps[] = {
    {RTM_GETLINK, AF_UNSPEC, "links"},
    {RTM_GETADDR, AF_INET, "IPv4 addresses"},
    {RTM_GETADDR, AF_INET6, "IPv6 addresses"},
    {RTM_GETROUTE, AF_INET, "IPv4 routes"},
    {RTM_GETROUTE, AF_INET6, "IPv6 routes"},
    // Twice, on purpose: the kernel does not say when its table of neighbours grows during a dump, and passes over
    // some.
    {RTM_GETNEIGH, AF_INET, "IPv4 neighbours"},
    {RTM_GETNEIGH, AF_INET6, "IPv6 neighbours"},
    {RTM_GETNEIGH, AF_INET, "IPv4 neighbours"},
    {RTM_GETNEIGH, AF_INET6, "IPv6 neighbours"},
};

/// The kernel wants the whole header of the type of message; the family is the first byte of each.
std::size_t HeaderSize(unsigned short type)
{
    switch (type) {
    case RTM_GETLINK: return sizeof(ifinfomsg);
    case RTM_GETADDR: return sizeof(ifaddrmsg);
    case RTM_GETNEIGH: return sizeof(ndmsg);
    default: return sizeof(rtmsg);
    }
}

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
        for (; IsWhole(message, remaining); message = mnl_nlmsg_next(message, &remaining)) {
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

int KernelNetlinkSource::Request(unsigned short type, unsigned char family, unsigned int sequence)
{
    alignas(nlmsghdr) char buffer[256] = {};
    nlmsghdr* message = mnl_nlmsg_put_header(buffer);
    message->nlmsg_type = type;
    message->nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    message->nlmsg_seq = sequence;
    *static_cast<unsigned char*>(mnl_nlmsg_put_extra_header(message, HeaderSize(type))) = family;
    return m_socket.Send(message, message->nlmsg_len);
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
