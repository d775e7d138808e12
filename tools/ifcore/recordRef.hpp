#pragma once

#include "ifcore/ifcore.hpp"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace ifcoreTool {

/// One record of a table, not owned.
using RecordRef =
    std::variant<EInterfaceTable const*, EInterfaceItem const*, EIPv4AddressItem const*, EIPv6AddressItem const*,
                 EDHCPProperties const*, EDHCPv6Properties const*, EFCoEConfig const*, ENPIVConfig const*,
                 EPTPConfig const*, EDCBXConfig const*, ELLDPConfig const*>;

/// The numbers are the positions in RecordRef.
enum class RecordKind : unsigned int { table, interface, ipv4, ipv6, dhcp, dhcpv6, fcoe, npiv, ptp, dcbx, lldp };

inline RecordKind KindOf(RecordRef const& record)
{
    return static_cast<RecordKind>(record.index());
}

struct RecordShape {
    RecordKind kind;
    char const* prefix; ///< In front of the names of its fields; empty for the interface itself.
    unsigned int leaf;  ///< Under the interface; 0 for table and interface, the list number for an IPv6 address.
    bool isOptional;    ///< Absent until it is first edited, which therefore goes through the interface.
};

RecordShape const& ShapeOf(RecordKind kind);

/// The kinds that an interface owns one of, by leaf.
inline constexpr RecordKind kOwnedKinds[] = {RecordKind::ipv4, RecordKind::dhcp, RecordKind::dhcpv6, RecordKind::fcoe,
                                             RecordKind::npiv, RecordKind::ptp,  RecordKind::dcbx,   RecordKind::lldp};

/// The record of that kind of an interface (itself included); of an optional one that is absent, one with the defaults.
RecordRef OwnedRecord(EInterfaceItem const& item, RecordKind kind);
bool HasRecord(EInterfaceItem const& item, RecordKind kind);

/// The interface that a record is or belongs to; null for a table and for what stands free.
EInterfaceItem const* InterfaceOf(RecordRef const& record);

/// Ids of the interfaces of a table, ascending.
std::vector<unsigned int> InterfaceIds(EInterfaceTable const& table);
/// Ids of the IPv6 addresses of an interface, ascending.
std::vector<unsigned int> IPv6AddressIds(EInterfaceItem const& item);

} // namespace ifcoreTool
