#pragma once

#include "kernelFollower.hpp"
#include "netlinkEvents.hpp"
#include "netlinkReader.hpp"

#include "eBlob.hpp"
#include "ifcore/ifcore.hpp"

#include <boost/shared_ptr.hpp>

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace ifcoreTool {

/// Follows the kernel. Each of its events becomes a message of a change stream, and the message, applied, changes the
/// watched table. The first message empties the table, so that the stream of all messages makes the same table of any
/// other one.
class DiscoveredWatcher {
public:
    /// Both live longer. \p events have been coming since before the first dump is asked for; \p dumps are of the same
    /// network namespace.
    DiscoveredWatcher(NetlinkSource& dumps, NetlinkEvents& events);

    /// Whoever keeps the messages: gets each before it is applied.
    std::function<void(EBlob const& message)> onMessage;
    /// The watched table, for an observer.
    EDiscoveredTable& GetTable() { return m_watched; }
    std::string GetLinkName(unsigned int interfaceId) const { return m_follower.GetLinkName(interfaceId); }

    /// Reads what there is, then follows until the end is asked for. \p out is flushed whenever something may have been
    /// written to it. When messages of the kernel were lost, everything is read again, and \p warnings get a line.
    /// Throws ToolError: the system's refusal, also when \p out cannot be written.
    void Run(std::ostream& out, std::ostream& warnings);

private:
    unsigned long ReadAll(bool isFirst);
    void Follow(std::vector<char> const& buffer, std::size_t size);
    unsigned long Pass();

    NetlinkSource& m_dumps;   // not owned
    NetlinkEvents& m_events;  // not owned
    EDiscoveredTable m_model; // what the kernel tells, ahead of the watched table by one message
    boost::shared_ptr<EDiscoveredChangeWriter> m_writer;
    KernelFollower m_follower;
    EDiscoveredTable m_watched;
};

} // namespace ifcoreTool
