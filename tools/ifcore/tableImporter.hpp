#pragma once

#include "kernelSnapshot.hpp"

#include "ifcore/ifcore.hpp"

#include <unordered_map>

namespace ifcoreTool {

/// Where an import has put the links.
struct LinkRows {
    std::unordered_map<int, unsigned int> first; ///< By link index, the id of the first row of a link.
    unsigned int next = 1;                       ///< The id of the next row, which there is not yet.
};

/// Brings what the kernel told into \p table, as host commands only: each row is added and then edited field by field,
/// so that an observer hears of all of it.
///
/// A link is one row, in the order of the snapshot: GRE links of type 4, all others of type 0. Its further IPv4
/// addresses are rows of their own behind it, alike but for the address. The VLAN stack of a VLAN link has the
/// outermost tag, that of the VLAN link nearest to the hardware, at level 0; the MAC address is that of the link at
/// the bottom. The IPv4 gateway (of several the one with the lowest metric) stands in the rows whose network holds it,
/// or in the first row when none does; IPv6 addresses and gateway stand in the first row. The source of a tunnel is
/// the row that holds its local address; without such a row it stays empty.
/// Addresses and gateways of links that are not in the snapshot are passed over.
LinkRows ImportSnapshot(KernelSnapshot const& snapshot, EInterfaceTable& table);

} // namespace ifcoreTool
