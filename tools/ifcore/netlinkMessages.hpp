#pragma once

#include "kernelSnapshot.hpp"

struct nlmsghdr;

namespace ifcoreTool {

/// Adds what one rtnetlink message (RTM_NEWLINK, RTM_NEWADDR, RTM_NEWROUTE) tells to \p snapshot.
/// Other types, routes that are no default route of the main table and unknown attributes are passed over.
/// \p message is whole: nlmsg_len bytes can be read, aligned to 4. A message that contradicts itself (attribute
/// shorter than its value, name missing) throws ToolError with the status of a refusing system.
void ParseNetlinkMessage(nlmsghdr const& message, KernelSnapshot& snapshot);

} // namespace ifcoreTool
