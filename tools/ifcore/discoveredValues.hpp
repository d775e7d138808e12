#pragma once

#include "values.hpp"

#include <string>
#include <vector>

/// The values of the records of a discovered table by name: what is shown, traced and compared. Lists and texts are the
/// library's own where it has them.
namespace ifcoreTool {

struct NamedValue {
    std::string name; ///< Parts joined by dots.
    Json value;
    char const* unit = "";
    bool isCounter = false; ///< Of ids; says nothing about one record alone.
};
using NamedValues = std::vector<NamedValue>;

// What a record holds itself, without its id and the records that it owns.
NamedValues ValuesOf(EDiscoveredTable const& table);
NamedValues ValuesOf(EDiscoveredInfo const& info);
NamedValues ValuesOf(EDiscoveredNeighbor const& neighbor);
NamedValues ValuesOf(EDHCPDiscoveredInfo const& info);
NamedValues ValuesOf(EDHCPv6DiscoveredInfo const& info);
NamedValues ValuesOf(EFCoEDiscoveredInfo const& info);
NamedValues ValuesOf(EPTPDiscoveredInfo const& info);
NamedValues ValuesOf(EDCBXDiscoveredInfo const& info);

/// Calls \p visit with the name and the getter of each record that an info owns one of.
template <class Visitor> void ForEachProtocol(Visitor&& visit)
{
    visit(
        "dhcp", [](EDiscoveredInfo const& info) -> auto const& { return info.GetDHCPInfo(); });
    visit(
        "dhcpv6", [](EDiscoveredInfo const& info) -> auto const& { return info.GetDHCPv6Info(); });
    visit(
        "fcoe", [](EDiscoveredInfo const& info) -> auto const& { return info.GetFCoEInfo(); });
    visit(
        "ptp", [](EDiscoveredInfo const& info) -> auto const& { return info.GetPTPInfo(); });
    visit(
        "dcbx", [](EDiscoveredInfo const& info) -> auto const& { return info.GetDCBXInfo(); });
}

/// Whether a protocol record has a value that a new one does not have.
template <class Record> bool HasLearnt(Record const& record)
{
    NamedValues const values = ValuesOf(record);
    NamedValues const defaults = ValuesOf(Record());
    for (std::size_t i = 0; i < values.size(); ++i)
        if (values[i].value != defaults[i].value) return true;
    return false;
}

std::vector<unsigned int> InfoIds(EDiscoveredTable const& table);   ///< Ascending.
std::vector<unsigned int> NeighborIds(EDiscoveredInfo const& info); ///< Ascending.
std::string ValueText(Json const& value);                           ///< For people; "-" for nothing.

/// One value that changes; null where there is no record to have it.
struct NamedChange {
    std::string name;
    Json before;
    Json after;
};
using NamedChanges = std::vector<NamedChange>;

// How one record differs from another, owned records included. Without one of the two (null), everything that the other
// has. What differs in values that have no name is told under the name of the record, with two nulls.
NamedChanges Differences(EDiscoveredTable const* before, EDiscoveredTable const* after);
NamedChanges Differences(EDiscoveredInfo const* before, EDiscoveredInfo const* after);
NamedChanges Differences(EDiscoveredNeighbor const* before, EDiscoveredNeighbor const* after);
NamedChanges Differences(EDHCPDiscoveredInfo const* before, EDHCPDiscoveredInfo const* after);
NamedChanges Differences(EDHCPv6DiscoveredInfo const* before, EDHCPv6DiscoveredInfo const* after);
NamedChanges Differences(EFCoEDiscoveredInfo const* before, EFCoEDiscoveredInfo const* after);
NamedChanges Differences(EPTPDiscoveredInfo const* before, EPTPDiscoveredInfo const* after);
NamedChanges Differences(EDCBXDiscoveredInfo const* before, EDCBXDiscoveredInfo const* after);

std::string ChangeText(NamedChange const& change); ///< "up: no -> yes"

} // namespace ifcoreTool
