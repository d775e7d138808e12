#include "discoveredWatcher.hpp"

#include "netlinkMessages.hpp"
#include "toolError.hpp"

#include "eArchive.hpp"

#include <boost/make_shared.hpp>
#include <libmnl/libmnl.h>

#include <cerrno>
#include <ostream>

namespace ifcoreTool {

DiscoveredWatcher::DiscoveredWatcher(NetlinkSource& dumps, NetlinkEvents& events)
    : m_dumps(dumps), m_events(events), m_writer(boost::make_shared<EDiscoveredChangeWriter>()), m_follower(m_model)
{
    m_model.hooks = m_writer;
}

/// The changes so far as one message, on to the watched table; their number.
unsigned long DiscoveredWatcher::Pass()
{
    unsigned long const changes = m_writer->GetChangeCount();
    if (changes == 0) return 0;
    EBlob const message = m_writer->TakeMessage();
    if (onMessage) onMessage(message);
    EArchive archive;
    archive.SetFromEBlob(message, true);
    archive.SetMode(2);
    ApplyDiscoveredTableMessage(m_watched, archive);
    return changes;
}

/// The number of changes that it took.
unsigned long DiscoveredWatcher::ReadAll(bool isFirst)
{
    KernelSnapshot const snapshot = ReadKernelSnapshot(m_dumps);
    LinkRows rows;
    if (isFirst) {
        EInterfaceTable imported; // only for its ids
        rows = ImportSnapshot(snapshot, imported);
        m_model.Empty();
    }
    m_follower.Read(snapshot, rows);
    return Pass();
}

void DiscoveredWatcher::Follow(std::vector<char> const& buffer, std::size_t size)
{
    int remaining = static_cast<int>(size);
    auto const* message = reinterpret_cast<nlmsghdr const*>(buffer.data());
    for (; IsWhole(message, remaining); message = mnl_nlmsg_next(message, &remaining)) {
        auto const event = ParseNetlinkEvent(*message);
        if (!event) continue;
        m_follower.Follow(*event);
        Pass();
    }
}

void DiscoveredWatcher::Run(std::ostream& out, std::ostream& warnings)
{
    ReadAll(true);
    std::vector<char> buffer(static_cast<std::size_t>(MNL_SOCKET_BUFFER_SIZE));
    for (;;) {
        if (!out.flush()) throw ToolError(ExitCode::systemRefused, "writing standard output failed");
        std::size_t size = 0;
        int const error = m_events.Receive(buffer, size);
        if (error == ECANCELED) return;
        if (error == ENOBUFS) {
            // What is still queued is older than what is read now, and would undo it.
            m_events.Restart();
            unsigned long const changes = ReadAll(false);
            out.flush();
            warnings << "ifcore: messages of the kernel were lost: everything was read again, " << changes
                     << " changes\n"
                     << std::flush;
        } else if (error != 0) {
            throw SystemRefused("following the kernel's changes", error);
        } else {
            Follow(buffer, size);
        }
    }
}

} // namespace ifcoreTool
