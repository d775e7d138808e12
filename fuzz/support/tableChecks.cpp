#include "tableChecks.hpp"

#include "archives.hpp"
#include "require.hpp"

void FillWithTwoInterfaces(EInterfaceTable& table)
{
    EInterfaceItem item;
    item.GetIPv4AddressItem().SetAddress(EIPAddress("192.0.2.1"));
    EIPv6AddressItem ipv6;
    ipv6.SetAddress(EIPAddress("2001:db8::1"));
    item.AddIPv6AddressItem(ipv6);
    item.EnsureEthernet();
    table.AddInterfaceItem(item);
    item.EnsureNPIV();
    item.EnsurePTP();
    item.EnsureDCBX();
    item.EnsureLLDP();
    table.AddInterfaceItem(item);
}

namespace {

template <class Record>
using Getter = Record const* (EInterfaceTable::*)(EComponentId const&, EComponentId::MatchingTypes) const;

template <class Record>
void CheckFound(EInterfaceTable const& table, Record const& record, EComponentId const& id, Getter<Record> get)
{
    Require((table.*get)(id, EComponentId::MATCH_EXACT) == &record, "a record is found under its own path");
}

template <class Record> void CheckParent(Record const& record, EInterfaceItem const& item)
{
    Require(record.GetParent() == &item, "a record's parent is its owner");
}

/// A record with a fixed leaf; null when the interface has none.
template <class Record>
void CheckRecord(EInterfaceTable const& table, EInterfaceItem const& item, Record const* record, Getter<Record> get)
{
    if (!record) return;
    CheckParent(*record, item);
    EComponentId id;
    record->GetID(id);
    CheckFound(table, *record, id, get);
}

void CheckRecords(EInterfaceTable const& table, EInterfaceItem const& item)
{
    CheckParent(item.GetIPv4AddressItem(), item);
    CheckRecord(table, item, &item.GetDHCPProperties(), &EInterfaceTable::GetDHCPProperties);
    CheckRecord(table, item, &item.GetDHCPv6Properties(), &EInterfaceTable::GetDHCPv6Properties);
    CheckRecord(table, item, &item.GetFCoEConfig(), &EInterfaceTable::GetFCoEConfig);
    CheckRecord(table, item, item.GetNPIVConfigReadOnly(), &EInterfaceTable::GetNPIVConfig);
    CheckRecord(table, item, item.GetPTPConfigReadOnly(), &EInterfaceTable::GetPTPConfig);
    CheckRecord(table, item, item.GetDCBXConfigReadOnly(), &EInterfaceTable::GetDCBXConfig);
    CheckRecord(table, item, item.GetLLDPConfigReadOnly(), &EInterfaceTable::GetLLDPConfig);
    EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
    for (auto position = list.begin(); position != list.end(); ++position) {
        EIPv6AddressItem const& ipv6 = *list.GetItem(position);
        CheckParent(ipv6, item);
        EComponentId id;
        item.GetID(id);
        id += 1;
        id += position->first;
        CheckFound(table, ipv6, id, &EInterfaceTable::GetIPv6AddressItem);
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

void CheckInterface(EInterfaceTable const& table, EInterfaceItem const& item)
{
    Require(item.GetParent() == &table, "an interface's parent is its table");
    EComponentId id;
    item.GetID(id);
    CheckFound(table, item, id, &EInterfaceTable::GetInterfaceItem);
    CheckRecords(table, item);
    Require(item.GetLayerName() != nullptr, "an interface has a layer name");
    Render(item);
}

std::size_t const kMostLookups = 256; // interfaces, since a scan of all for each would take the square of their number

/// Asks two tables of equal contents for an address.
void CheckLookup(EInterfaceTable const& table, EInterfaceTable const& scanned, EIPAddress const& address)
{
    EInterfaceItem const* const found = table.FindInterfaceByIP(address);
    EInterfaceItem const* const expected = scanned.FindInterfaceByIP(address);
    Require((found ? found->GetLocalId() : 0) == (expected ? expected->GetLocalId() : 0),
            "an observer finds what a scan finds");
}

} // namespace

void CheckTable(EInterfaceTable const& table)
{
    EInterfaceTable const scanned(table); // has no observer
    std::size_t lookups = 0;
    for (auto position = table.begin(); position != table.end(); ++position) {
        EInterfaceItem const& item = *table.GetItem(position);
        Require(item.GetLocalId() == position->first, "an interface knows the id it is kept under");
        CheckInterface(table, item);
        if (++lookups > kMostLookups) continue;
        CheckLookup(table, scanned, item.GetIPv4AddressItem().GetAddress());
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto ipv6 = list.begin(); ipv6 != list.end(); ++ipv6)
            CheckLookup(table, scanned, list.GetItem(ipv6)->GetAddress());
    }
    Require(Written(scanned) == Written(table), "a copy writes the same bytes");
}
