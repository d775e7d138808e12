#include "tableRules.hpp"

#include "eDiscoveredTable.hpp"
#include "eInterfaceTable.hpp"

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <cstddef>

namespace {

/// Keeps the first rule that is broken.
class Rules {
public:
    void Require(bool condition, char const* rule)
    {
        if (!condition && !m_broken) m_broken = rule;
    }
    char const* Broken() const { return m_broken; }

private:
    char const* m_broken = nullptr;
};

template <class Table> EBlob BytesOf(Table const& table)
{
    EArchive archive;
    archive << table;
    return archive.GetAsEBlob();
}

// ---- Interfaces -----------------------------------------------------------------------------------------------------

template <class Record>
using Getter = Record const* (EInterfaceTable::*)(EComponentId const&, EComponentId::MatchingTypes) const;

template <class Record>
void CheckFound(Rules& rules, EInterfaceTable const& table, Record const& record, EComponentId const& id,
                Getter<Record> get)
{
    rules.Require((table.*get)(id, EComponentId::MATCH_EXACT) == &record, "a record is found under its own path");
}

template <class Record, class Owner> void CheckParent(Rules& rules, Record const& record, Owner const& owner)
{
    rules.Require(record.GetParent() == &owner, "a record's parent is its owner");
}

template <class Record> void CheckParentOfAny(Rules& rules, Record const* record, EInterfaceItem const& item)
{
    if (record) CheckParent(rules, *record, item);
}

/// A record with a fixed leaf; null when the interface has none.
template <class Record>
void CheckRecord(Rules& rules, EInterfaceTable const& table, EInterfaceItem const& item, Record const* record,
                 Getter<Record> get)
{
    if (!record) return;
    CheckParent(rules, *record, item);
    EComponentId id;
    record->GetID(id);
    CheckFound(rules, table, *record, id, get);
}

void CheckRecords(Rules& rules, EInterfaceTable const& table, EInterfaceItem const& item)
{
    CheckParent(rules, item.GetIPv4AddressItem(), item);
    CheckRecord(rules, table, item, &item.GetDHCPProperties(), &EInterfaceTable::GetDHCPProperties);
    CheckRecord(rules, table, item, &item.GetDHCPv6Properties(), &EInterfaceTable::GetDHCPv6Properties);
    CheckRecord(rules, table, item, &item.GetFCoEConfig(), &EInterfaceTable::GetFCoEConfig);
    CheckRecord(rules, table, item, item.GetNPIVConfigReadOnly(), &EInterfaceTable::GetNPIVConfig);
    CheckRecord(rules, table, item, item.GetPTPConfigReadOnly(), &EInterfaceTable::GetPTPConfig);
    CheckRecord(rules, table, item, item.GetDCBXConfigReadOnly(), &EInterfaceTable::GetDCBXConfig);
    CheckRecord(rules, table, item, item.GetLLDPConfigReadOnly(), &EInterfaceTable::GetLLDPConfig);
    CheckParentOfAny(rules, item.GetEthernetData(), item);
    CheckParentOfAny(rules, item.GetAtmData(), item);
    CheckParentOfAny(rules, item.GetPppData(), item);
    CheckParentOfAny(rules, item.GetGreData(), item);
    CheckParentOfAny(rules, item.GetRoutedData(), item);
    EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
    CheckParent(rules, list, item);
    for (auto position = list.begin(); position != list.end(); ++position) {
        EIPv6AddressItem const& ipv6 = *list.GetItem(position);
        CheckParent(rules, ipv6, item);
        rules.Require(list.GetItem(position->first) == &ipv6, "an address is found under its id");
        EComponentId id;
        item.GetID(id);
        id += 1;
        id += position->first;
        CheckFound(rules, table, ipv6, id, &EInterfaceTable::GetIPv6AddressItem);
    }
}

void Render(EInterfaceItem const& item)
{
    EFCoEConfig const& fcoe = item.GetFCoEConfig();
    fcoe.GetAddressModeAsString();
    fcoe.GetVendorIDAsString();
    fcoe.GetDestNodeIdAsString();
    if (EPTPConfig const* const ptp = item.GetPTPConfigReadOnly()) {
        ptp->GetClockAccuracyAsString();
        ptp->GetLogSyncIntervalAsString();
        ptp->GetStartOffsetAsString();
        ptp->GetTimestampErrorAsString();
    }
    if (ELLDPConfig const* const lldp = item.GetLLDPConfigReadOnly()) lldp->GetConfigAsString();
    if (EDCBXConfig const* const dcbx = item.GetDCBXConfigReadOnly()) {
        dcbx->GetOUIAsString();
        for (EDCBXFeatureTlv const& feature : dcbx->GetFeatureTlvs()) dcbx->GetFeatureTlvAsString(feature);
    }
}

void CheckInterface(Rules& rules, EInterfaceTable const& table, EInterfaceItem const& item)
{
    CheckParent(rules, item, table);
    EComponentId id;
    item.GetID(id);
    CheckFound(rules, table, item, id, &EInterfaceTable::GetInterfaceItem);
    CheckRecords(rules, table, item);
    rules.Require(item.GetLayerName() != nullptr, "an interface has a layer name");
    Render(item);
}

std::size_t const kMostLookups = 256; // interfaces, since a scan of all for each would take the square of their number

/// Asks two tables of equal contents for an address.
void CheckLookup(Rules& rules, EInterfaceTable const& table, EInterfaceTable const& scanned, EIPAddress const& address)
{
    EInterfaceItem const* const found = table.FindInterfaceByIP(address);
    EInterfaceItem const* const expected = scanned.FindInterfaceByIP(address);
    rules.Require((found ? found->GetLocalId() : 0) == (expected ? expected->GetLocalId() : 0),
                  "an observer finds what a scan finds");
}

// ---- Discovered -----------------------------------------------------------------------------------------------------

void CheckNeighbor(Rules& rules, EDiscoveredTable const& table, EDiscoveredInfo const& info, unsigned int id,
                   EDiscoveredNeighbor const& neighbor)
{
    CheckParent(rules, neighbor, info);
    rules.Require(neighbor.GetLocalId() == id, "a neighbour knows the id it is kept under");
    rules.Require(info.GetNeighbor(id) == &neighbor, "a neighbour is found under its id");
    EComponentId path;
    neighbor.GetComponentId(path);
    rules.Require(table.GetNeighbor(path) == &neighbor, "a neighbour is found under its path");
}

void CheckInfo(Rules& rules, EDiscoveredTable const& table, unsigned int id, EDiscoveredInfo const& info)
{
    CheckParent(rules, info, table);
    rules.Require(info.GetLocalId() == id, "an info knows the id it is kept under");
    rules.Require(table.GetInfo(id) == &info, "an info is found under its id");
    EComponentId path;
    info.GetComponentId(path);
    rules.Require(table.GetInfo(path) == &info, "an info is found under its path");
    CheckParent(rules, info.GetDHCPInfo(), info);
    CheckParent(rules, info.GetDHCPv6Info(), info);
    CheckParent(rules, info.GetFCoEInfo(), info);
    CheckParent(rules, info.GetPTPInfo(), info);
    CheckParent(rules, info.GetDCBXInfo(), info);
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position)
        CheckNeighbor(rules, table, info, position->first, *neighbors.GetItem(position));
}

} // namespace

char const* BrokenRule(EInterfaceTable const& table)
{
    Rules rules;
    EInterfaceTable const scanned(table); // has no observer
    std::size_t lookups = 0;
    CheckParent(rules, table.GetInterfaceItemList(), table);
    for (auto position = table.begin(); position != table.end(); ++position) {
        EInterfaceItem const& item = *table.GetItem(position);
        rules.Require(item.GetLocalId() == position->first, "an interface knows the id it is kept under");
        rules.Require(table.GetInterfaceItem(position->first) == &item, "an interface is found under its id");
        CheckInterface(rules, table, item);
        if (++lookups > kMostLookups) continue;
        CheckLookup(rules, table, scanned, item.GetIPv4AddressItem().GetAddress());
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto ipv6 = list.begin(); ipv6 != list.end(); ++ipv6)
            CheckLookup(rules, table, scanned, list.GetItem(ipv6)->GetAddress());
    }
    rules.Require(BytesOf(scanned) == BytesOf(table), "a copy writes the same bytes");
    return rules.Broken();
}

char const* BrokenRule(EDiscoveredTable const& table)
{
    Rules rules;
    EDiscoveredInfoList const& infos = table.GetInfos();
    for (auto position = infos.begin(); position != infos.end(); ++position)
        CheckInfo(rules, table, position->first, *infos.GetItem(position));
    return rules.Broken();
}
