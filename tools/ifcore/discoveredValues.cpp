#include "discoveredValues.hpp"

#include "eArchive.hpp"

#include <set>

namespace ifcoreTool {

namespace {

Json AddressesOf(EDiscoveredInfo const& info)
{
    Json list = Json::array();
    for (unsigned int i = 0; i < info.GetAddressCount(); ++i) list.push_back(ToJson(*info.GetAddressAt(i)));
    return list;
}

template <class Map> unsigned int NextId(Map const& map)
{
    EUniqueIDGenerator ids = map.GetIdGenerator();
    return ids.Next();
}

template <class Map> std::vector<unsigned int> IdsOf(Map const& map)
{
    std::vector<unsigned int> ids;
    for (auto position = map.begin(); position != map.end(); ++position) ids.push_back(position->first);
    return ids;
}

/// Null, and what is empty.
bool IsNothing(Json const& value)
{
    return value.is_null() || ((value.is_array() || value.is_string()) && (value.empty() || value == ""));
}

template <class Record> bool SameBytes(Record const& a, Record const& b)
{
    EArchive first;
    first << a;
    EArchive second;
    second << b;
    return first.GetAsEBlob() == second.GetAsEBlob();
}

template <class Record>
void CompareValues(std::string const& prefix, Record const* before, Record const* after, NamedChanges& changes)
{
    // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): one of them at least is there
    NamedValues const names = ValuesOf(before ? *before : *after);
    NamedValues const old = before ? names : NamedValues(names.size());
    NamedValues const fresh = after ? ValuesOf(*after) : NamedValues(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (names[i].isCounter && !(before && after)) continue;
        if (old[i].value != fresh[i].value && !(IsNothing(old[i].value) && IsNothing(fresh[i].value)))
            changes.push_back({prefix + names[i].name, old[i].value, fresh[i].value});
    }
}

/// A protocol record is always there: of an info that is not, it is one with the defaults.
template <class Record>
void CompareProtocol(std::string const& name, Record const* before, Record const* after, NamedChanges& changes)
{
    Record const defaults;
    std::size_t const told = changes.size();
    CompareValues(name + ".", before ? before : &defaults, after ? after : &defaults, changes);
    if (changes.size() == told && before && after && !SameBytes(*before, *after)) changes.push_back({name, {}, {}});
}

/// One after the other, what two owners have under their ids; null where one has nothing.
template <class Owner, class GetIds, class Get, class Compare>
void CompareOwned(Owner const* before, Owner const* after, GetIds getIds, Get get, Compare compare)
{
    std::set<unsigned int> ids;
    for (Owner const* owner : {before, after})
        if (owner)
            for (unsigned int id : getIds(*owner)) ids.insert(id);
    for (unsigned int id : ids) compare(id, before ? get(*before, id) : nullptr, after ? get(*after, id) : nullptr);
}

template <class Record>
void ComparePresence(std::string const& prefix, Record const* before, Record const* after, NamedChanges& changes)
{
    if (!before != !after) changes.push_back({prefix + "present", before != nullptr, after != nullptr});
}

void CompareInfos(std::string const& prefix, EDiscoveredInfo const* before, EDiscoveredInfo const* after,
                  NamedChanges& changes)
{
    CompareValues(prefix, before, after, changes);
    CompareOwned(
        before, after, NeighborIds, [](EDiscoveredInfo const& info, unsigned int id) { return info.GetNeighbor(id); },
        [&](unsigned int id, EDiscoveredNeighbor const* was, EDiscoveredNeighbor const* is) {
            std::string const name = prefix + "neighbor." + std::to_string(id) + ".";
            ComparePresence(name, was, is, changes);
            CompareValues(name, was, is, changes);
        });
    ForEachProtocol([&](std::string const& name, auto get) {
        CompareProtocol(prefix + name, before ? &get(*before) : nullptr, after ? &get(*after) : nullptr, changes);
    });
}

template <class Record> NamedChanges ProtocolDifferences(char const* name, Record const* before, Record const* after)
{
    NamedChanges changes;
    CompareProtocol(name, before, after, changes);
    return changes;
}

} // namespace

NamedValues ValuesOf(EDiscoveredTable const& table)
{
    return {{"default-mac.interface", ToJson(table.GetDefaultMACIfId())},
            {"default-mac.neighbor", ToJson(table.GetDefaultMACNbrId())},
            {"default-mac.mac", ToJson(table.GetDefaultMAC())},
            {"next-id", ToJson(NextId(table.GetInfos())), "", true}};
}

NamedValues ValuesOf(EDiscoveredInfo const& info)
{
    return {{"up", ToJson(info.IsInterfaceUp())},
            {"addresses", AddressesOf(info)},
            {"next-neighbor-id", ToJson(NextId(info.GetNeighbors())), "", true}};
}

NamedValues ValuesOf(EDiscoveredNeighbor const& neighbor)
{
    return {{"mac", ToJson(neighbor.GetMac())},
            {"router", ToJson(neighbor.IsRouter())},
            {"addresses", ToJson(EDiscoveredNeighbor::Addresses(neighbor.AddressBegin(), neighbor.AddressEnd()))}};
}

NamedValues ValuesOf(EDHCPDiscoveredInfo const& info)
{
    return {{"valid", ToJson(info.IsValid())},
            {"address", ToJson(info.GetDiscoveredIP())},
            {"prefix-length", ToJson(info.GetDiscoveredPrefixLength()), "bits"},
            {"gateway", ToJson(info.GetDiscoveredGatewayIP())},
            {"lease-time", ToJson(info.GetLeaseTimer()), "s"},
            {"interface-id", ToJson(info.GetInterfaceLocalId())},
            {"options", ToJson(info.GetDiscoveredCustomTLVs())}};
}

NamedValues ValuesOf(EDHCPv6DiscoveredInfo const& info)
{
    return {{"valid", ToJson(info.IsValid())},
            {"addresses", ToJson(info.GetDiscoveredAddresses())},
            {"renew-time", ToJson(info.GetIARenewTime()), "s"},
            {"rebind-time", ToJson(info.GetIARebindTime()), "s"},
            {"options", ToJson(info.GetDiscoveredCustomTLVs())}};
}

NamedValues ValuesOf(EFCoEDiscoveredInfo const& info)
{
    return {{"valid", ToJson(info.IsValid())},
            {"status", info.GetStateString()},
            {"status-reason", info.GetDiscoveredStatusReason()},
            {"source-id", info.GetDiscoveredSourceIdAsString()},
            {"destination-mac", ToJson(info.GetDiscoveredDestMAC())},
            {"vlan-priority", ToJson(info.GetDiscoveredVlanPriority())},
            {"d-bit", ToJson(info.GetDiscoveredDBit())},
            {"fcf-map", info.GetDiscoveredFcfMap()},
            {"fka-period", ToJson(info.GetDiscoveredFKAPeriod())}};
}

NamedValues ValuesOf(EPTPDiscoveredInfo const& info)
{
    return {{"state", info.GetDiscoveredStateAsString()},
            {"time-stamp", info.GetTimeStampAsString()},
            {"clock-offset-from-master", info.GetClockOffsetFromMasterAsString()}};
}

NamedValues ValuesOf(EDCBXDiscoveredInfo const& info)
{
    Json lldp = Json::array();
    for (auto const& row : info.GetLocalAndPeerLLDPInfoList())
        lldp.push_back({{"name", row.name}, {"local", row.local}, {"peer", row.peer}});
    Json dcbx = Json::array();
    for (auto const& row : info.GetOperAndPeerDCBXInfoList())
        dcbx.push_back({{"name", row.name}, {"operating", row.oper}, {"peer", row.peer}, {"mismatch", row.mismatch}});
    return {{"operating", info.GetOperatingDCBXConfigAsString()},
            {"peer", info.GetPeerDCBXConfigAsString()},
            {"mismatches", info.GetMismatchFeaturesAsString()},
            {"peer-lldp", info.GetPeerLLDPConfigAsString()},
            {"lldp-comparison", lldp},
            {"dcbx-comparison", dcbx}};
}

std::vector<unsigned int> InfoIds(EDiscoveredTable const& table)
{
    return IdsOf(table.GetInfos());
}

std::vector<unsigned int> NeighborIds(EDiscoveredInfo const& info)
{
    return IdsOf(info.GetNeighbors());
}

std::string ValueText(Json const& value)
{
    if (IsNothing(value)) return "-";
    if (!value.is_array() || !value.front().is_string()) return DisplayPlain(value);
    std::string text;
    for (Json const& element : value) text += (text.empty() ? "" : ",") + element.get<std::string>();
    return text;
}

NamedChanges Differences(EDiscoveredTable const* before, EDiscoveredTable const* after)
{
    NamedChanges changes;
    CompareValues("", before, after, changes);
    CompareOwned(
        before, after, InfoIds, [](EDiscoveredTable const& table, unsigned int id) { return table.GetInfo(id); },
        [&](unsigned int id, EDiscoveredInfo const* was, EDiscoveredInfo const* is) {
            std::string const name = "interface." + std::to_string(id) + ".";
            ComparePresence(name, was, is, changes);
            CompareInfos(name, was, is, changes);
        });
    return changes;
}

NamedChanges Differences(EDiscoveredInfo const* before, EDiscoveredInfo const* after)
{
    NamedChanges changes;
    CompareInfos("", before, after, changes);
    return changes;
}

NamedChanges Differences(EDiscoveredNeighbor const* before, EDiscoveredNeighbor const* after)
{
    NamedChanges changes;
    CompareValues("", before, after, changes);
    return changes;
}

NamedChanges Differences(EDHCPDiscoveredInfo const* before, EDHCPDiscoveredInfo const* after)
{
    return ProtocolDifferences("dhcp", before, after);
}

NamedChanges Differences(EDHCPv6DiscoveredInfo const* before, EDHCPv6DiscoveredInfo const* after)
{
    return ProtocolDifferences("dhcpv6", before, after);
}

NamedChanges Differences(EFCoEDiscoveredInfo const* before, EFCoEDiscoveredInfo const* after)
{
    return ProtocolDifferences("fcoe", before, after);
}

NamedChanges Differences(EPTPDiscoveredInfo const* before, EPTPDiscoveredInfo const* after)
{
    return ProtocolDifferences("ptp", before, after);
}

NamedChanges Differences(EDCBXDiscoveredInfo const* before, EDCBXDiscoveredInfo const* after)
{
    return ProtocolDifferences("dcbx", before, after);
}

std::string ChangeText(NamedChange const& change)
{
    if (change.before.is_null() && change.after.is_null()) return change.name + ": differs in what has no name";
    return change.name + ": " + ValueText(change.before) + " -> " + ValueText(change.after);
}

} // namespace ifcoreTool
