#include "recordRef.hpp"

namespace ifcoreTool {

namespace {

constexpr RecordShape kShapes[] = {
    {RecordKind::table, "table.", 0, false}, {RecordKind::interface, "", 0, false},
    {RecordKind::ipv4, "ipv4.", 6, false},   {RecordKind::ipv6, "ipv6.", 1, false},
    {RecordKind::dhcp, "dhcp.", 24, false},  {RecordKind::dhcpv6, "dhcpv6.", 26, false},
    {RecordKind::fcoe, "fcoe.", 31, false},  {RecordKind::npiv, "npiv.", 32, true},
    {RecordKind::ptp, "ptp.", 34, true},     {RecordKind::dcbx, "dcbx.", 36, true},
    {RecordKind::lldp, "lldp.", 38, true},
};

template <class Record> Record const* OrDefault(Record const* record)
{
    static Record const kDefault;
    return record ? record : &kDefault;
}

struct Owner {
    EInterfaceItem const* operator()(EInterfaceTable const*) const { return nullptr; }
    EInterfaceItem const* operator()(EInterfaceItem const* item) const { return item; }
    template <class Record> EInterfaceItem const* operator()(Record const* record) const { return record->GetParent(); }
};

template <class Map> std::vector<unsigned int> IdsOf(Map const& map)
{
    std::vector<unsigned int> ids;
    for (auto position = map.begin(); position != map.end(); ++position) ids.push_back(map.GetID(position));
    return ids;
}

} // namespace

RecordShape const& ShapeOf(RecordKind kind)
{
    return kShapes[static_cast<unsigned int>(kind)];
}

RecordRef OwnedRecord(EInterfaceItem const& item, RecordKind kind)
{
    switch (kind) {
    case RecordKind::ipv4: return &item.GetIPv4AddressItem();
    case RecordKind::dhcp: return &item.GetDHCPProperties();
    case RecordKind::dhcpv6: return &item.GetDHCPv6Properties();
    case RecordKind::fcoe: return &item.GetFCoEConfig();
    case RecordKind::npiv: return OrDefault(item.GetNPIVConfigReadOnly());
    case RecordKind::ptp: return OrDefault(item.GetPTPConfigReadOnly());
    case RecordKind::dcbx: return OrDefault(item.GetDCBXConfigReadOnly());
    case RecordKind::lldp: return OrDefault(item.GetLLDPConfigReadOnly());
    default: return &item;
    }
}

bool HasRecord(EInterfaceItem const& item, RecordKind kind)
{
    switch (kind) {
    case RecordKind::npiv: return item.GetNPIVConfigReadOnly() != nullptr;
    case RecordKind::ptp: return item.GetPTPConfigReadOnly() != nullptr;
    case RecordKind::dcbx: return item.GetDCBXConfigReadOnly() != nullptr;
    case RecordKind::lldp: return item.GetLLDPConfigReadOnly() != nullptr;
    default: return true;
    }
}

EInterfaceItem const* InterfaceOf(RecordRef const& record)
{
    return std::visit(Owner{}, record);
}

std::vector<unsigned int> InterfaceIds(EInterfaceTable const& table)
{
    return IdsOf(table);
}

std::vector<unsigned int> IPv6AddressIds(EInterfaceItem const& item)
{
    return IdsOf(item.GetIPv6AddressItemList());
}

} // namespace ifcoreTool
