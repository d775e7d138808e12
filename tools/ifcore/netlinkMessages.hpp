#pragma once

#include "kernelSnapshot.hpp"

#include <optional>

struct nlmsghdr;

namespace ifcoreTool {

/// Whether a message that begins with \p remaining bytes left ends within them. Unlike mnl_nlmsg_ok it also refuses
/// lengths of 2^31 and more.
bool IsWhole(nlmsghdr const* message, int remaining);

/// Adds what one rtnetlink message (RTM_NEWLINK, RTM_NEWADDR, RTM_NEWNEIGH, RTM_NEWROUTE) tells to \p snapshot.
/// Other types, bridge ports, neighbours without a usable MAC address (6 bytes, in a state in which packets are sent to
/// it), routes that are no default route of the main table and unknown attributes are passed over.
/// \p message is whole: nlmsg_len bytes can be read, aligned to 4. A message that contradicts itself (attribute
/// shorter than its value, name missing) throws ToolError with the status of a refusing system.
void ParseNetlinkMessage(nlmsghdr const& message, KernelSnapshot& snapshot);

/// The change of which a message tells (RTM_NEWLINK, RTM_DELLINK and so on for ADDR and NEIGH); none when it is passed
/// over. The same holds for \p message and its errors.
std::optional<KernelEvent> ParseNetlinkEvent(nlmsghdr const& message);

} // namespace ifcoreTool
