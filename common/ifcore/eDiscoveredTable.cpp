#include "eDiscoveredTable.hpp"

#include "eArchiveLayout.hpp"
#include "eComponentId.hpp"
#include "eDiscoveredOperation.hpp"
#include "eDiscoveredRecord.hpp"
#include "eProcessWide.hpp"
#include "eRecord.hpp"

EDiscoveredTable::EDiscoveredTable() : m_infos(this) {}

EDiscoveredTable::EDiscoveredTable(EDiscoveredTable const& other)
    : m_infos(other.m_infos, this), m_defaultMacIfId(other.m_defaultMacIfId),
      m_defaultMacNbrId(other.m_defaultMacNbrId) // on purpose without the MAC itself
{
    KeepInfosAnew();
}

void EDiscoveredTable::Copy(EDiscoveredTable const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDiscoveredTable, EDiscoveredTable(other));
}

void EDiscoveredTable::Empty()
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDiscoveredTable, EDiscoveredTable());
}

void EDiscoveredTable::Swap(EDiscoveredTable& other)
{
    std::swap(m_defaultMacIfId, other.m_defaultMacIfId);
    std::swap(m_defaultMacNbrId, other.m_defaultMacNbrId);
    m_defaultMac.Swap(other.m_defaultMac);
    m_infos.Swap(other.m_infos);
    std::swap(m_addressed, other.m_addressed);
    KeepInfos();
    other.KeepInfos();
}

EDiscoveredTableHooks& EDiscoveredTable::GetHooks() const
{
    static EProcessWide<EIgnoreDiscoveredTableHooks> const ignoring;
    return hooks ? *hooks : ignoring.Get();
}

eHal::EProtocolName const& EDiscoveredTable::StaticGetProtocolName()
{
    static eHal::EProtocolName const name("DiscoveredTable");
    return name;
}

// ---- Infos ----------------------------------------------------------------------------------------------------------

void EDiscoveredTable::AddInfo(EDiscoveredInfo const& info)
{
    unsigned int const id = info.GetLocalId(); // the info may be the one that it replaces
    m_infos.AddItem(id, info);
    EDiscoveredInfo* const stored = GetInfo(id);
    if (stored) {
        Keep(id, *stored);
        stored->TellOfAddresses();
        GetHooks().AddingInfo(*stored);
    }
    if (m_defaultMacIfId == id)
        FindDefaultMAC();
    else if (!HasDefaultMAC())
        FindDefaultMACIncremental(stored);
}

void EDiscoveredTable::RemoveInfo(unsigned int id)
{
    if (EDiscoveredInfo const* const info = GetInfo(id)) GetHooks().RemovingInfo(*info);
    m_infos.RemoveItem(id);
    SetHasAddress(id, false);
    if (m_defaultMacIfId == id) FindDefaultMAC();
}

void EDiscoveredTable::SetInfo(unsigned int id, EDiscoveredInfo const& info)
{
    m_infos.SetItem(id, info);
    if (!HasDefaultMAC() || m_defaultMacIfId == id) FindDefaultMAC();
}

EDiscoveredInfo const* EDiscoveredTable::FindInfoByIP(EIPAddress const& address) const
{
    for (auto position = m_infos.begin(); position != m_infos.end(); ++position) {
        EDiscoveredInfo const* const info = m_infos.GetItem(position);
        if (info && info->HasAddress(address)) return info;
    }
    return nullptr;
}

// ---- Component ids --------------------------------------------------------------------------------------------------

void EDiscoveredTable::GetComponentId(EComponentId& id) const
{
    id.Empty();
}

template <class Table> static auto InfoOf(Table& table, EComponentId const& id) -> decltype(table.GetInfo(0U))
{
    return id.GetIdSize() == 0 ? nullptr : table.GetInfo(id[0]);
}

template <class Table> static auto NeighborOf(Table& table, EComponentId const& id) -> decltype(table.GetNeighbor(id))
{
    if (id.GetIdSize() < 2) return nullptr;
    auto* const info = InfoOf(table, id);
    return info ? info->GetNeighbor(id[1]) : nullptr;
}

EDiscoveredInfo const* EDiscoveredTable::GetInfo(EComponentId const& id) const
{
    return InfoOf(*this, id);
}

EDiscoveredInfo* EDiscoveredTable::GetInfo(EComponentId const& id)
{
    return InfoOf(*this, id);
}

EDiscoveredNeighbor const* EDiscoveredTable::GetNeighbor(EComponentId const& id) const
{
    return NeighborOf(*this, id);
}

EDiscoveredNeighbor* EDiscoveredTable::GetNeighbor(EComponentId const& id)
{
    return NeighborOf(*this, id);
}

// ---- Default MAC ----------------------------------------------------------------------------------------------------

void EDiscoveredTable::SetDefaultMAC(unsigned int interfaceId, unsigned int neighborId, EMACAddress const& mac)
{
    m_defaultMacIfId = interfaceId;
    m_defaultMacNbrId = neighborId;
    m_defaultMac = mac;
}

void EDiscoveredTable::FindDefaultMAC()
{
    EDiscoveredInfo const* const lowest = LowestWithAddress(
        m_infos, m_addressed, [](EDiscoveredInfo const& info) { return info.LowestWithAddress() != nullptr; });
    if (!FindDefaultMACIncremental(lowest)) SetDefaultMAC(0, 0, EMACAddress());
}

bool EDiscoveredTable::FindDefaultMACIncremental(EDiscoveredInfo const* info)
{
    EDiscoveredNeighbor const* const neighbor = info ? info->LowestWithAddress() : nullptr;
    if (!neighbor) return false;
    SetDefaultMAC(info->GetLocalId(), neighbor->GetLocalId(), neighbor->GetMac());
    return true;
}

void EDiscoveredTable::Keep(unsigned int id, EDiscoveredInfo& info) noexcept
{
    info.m_place = {this, id};
}

void EDiscoveredTable::KeepInfos() noexcept
{
    for (auto position = m_infos.begin(); position != m_infos.end(); ++position)
        if (EDiscoveredInfo* const info = m_infos.GetItem(position)) Keep(position->first, *info);
}

void EDiscoveredTable::KeepInfosAnew() noexcept
{
    KeepInfos();
    m_addressed.Clear();
    for (auto position = m_infos.begin(); position != m_infos.end(); ++position)
        if (EDiscoveredInfo* const info = m_infos.GetItem(position)) info->TellOfAddresses();
}

// ---- Archive --------------------------------------------------------------------------------------------------------

struct EDiscoveredTable::Layout {
    template <class Archive, class Table> static void Fields(Archive archive, Table& table)
    {
        archive.Each(table.m_infos);
        archive.Each(table.m_defaultMacIfId);
        archive.Each(table.m_defaultMacNbrId);
        archive.Each(table.m_defaultMac);
    }
};

void EDiscoveredTable::SerializeOut(EArchive& archive) const
{
    Layout::Fields(EUnversionedWriter(archive), *this);
}

void EDiscoveredTable::SerializeIn(EArchive& archive)
{
    try {
        Layout::Fields(EUnversionedReader(archive), *this);
    } catch (...) { // the infos read before are there
        KeepInfosAnew();
        throw;
    }
    KeepInfosAnew();
}

// ---- Change stream --------------------------------------------------------------------------------------------------

template <class Value> static Value ReadValue(EArchive& archive)
{
    Value value{};
    archive >> value;
    return value;
}

/// Null when there is no such interface.
static EDiscoveredInfo* ReadInterfaceLocator(EDiscoveredTable& table, EArchive& archive)
{
    return table.GetInfo(ReadValue<unsigned int>(archive));
}

/// Null when there is no such interface or no such neighbour of it.
static EDiscoveredNeighbor* ReadNeighborLocator(EDiscoveredTable& table, EArchive& archive)
{
    EDiscoveredInfo* const info = ReadInterfaceLocator(table, archive);
    unsigned int const id = ReadValue<unsigned int>(archive);
    return info ? info->GetNeighbor(id) : nullptr;
}

static void ReplaceTable(EDiscoveredTable& table, EArchive& archive)
{
    EDiscoveredTable replacement;
    archive >> replacement;
    table.Copy(replacement); // on purpose loses the default MAC, as every copy does
}

static void AddInfo(EDiscoveredTable& table, EArchive& archive)
{
    table.AddInfo(ReadValue<EDiscoveredInfo>(archive));
}

static void RemoveInfo(EDiscoveredTable& table, EArchive& archive)
{
    table.RemoveInfo(ReadValue<unsigned int>(archive));
}

static void SetInfo(EDiscoveredTable& table, EArchive& archive)
{
    unsigned int const id = ReadValue<unsigned int>(archive);
    table.SetInfo(id, ReadValue<EDiscoveredInfo>(archive));
}

static void SetNeighbor(EDiscoveredTable& table, EArchive& archive)
{
    EDiscoveredInfo* const info = ReadInterfaceLocator(table, archive);
    unsigned int const id = ReadValue<unsigned int>(archive);
    auto const neighbor = ReadValue<EDiscoveredNeighbor>(archive);
    if (info) info->SetNeighbor(id, neighbor);
}

/// A locator and a value for a member function of what it locates; without a target the value is read and dropped.
template <class Value, auto apply> static void OnInfo(EDiscoveredTable& table, EArchive& archive)
{
    EDiscoveredInfo* const info = ReadInterfaceLocator(table, archive);
    auto const value = ReadValue<Value>(archive);
    if (info) (info->*apply)(value);
}

template <class Value, auto apply> static void OnNeighbor(EDiscoveredTable& table, EArchive& archive)
{
    EDiscoveredNeighbor* const neighbor = ReadNeighborLocator(table, archive);
    auto const value = ReadValue<Value>(archive);
    if (neighbor) (neighbor->*apply)(value);
}

using Operation = void (*)(EDiscoveredTable&, EArchive&);

/// Null for an unknown code.
static Operation OperationOf(unsigned int code)
{
    switch (code) {
    case REPLACE_TABLE: return ReplaceTable;
    case ADD_INFO: return AddInfo;
    case REMOVE_INFO: return RemoveInfo;
    case SET_INFO: return SetInfo;
    case SET_INTERFACE_UP: return OnInfo<bool, &EDiscoveredInfo::SetInterfaceUp>;
    case ADD_ADDRESS: return OnInfo<EIPAddress, &EDiscoveredInfo::AddAddress>;
    case REMOVE_ADDRESS: return OnInfo<EIPAddress, &EDiscoveredInfo::RemoveAddress>;
    case ADD_NEIGHBOR: return OnInfo<EDiscoveredNeighbor, &EDiscoveredInfo::AddNeighbor>;
    case REMOVE_NEIGHBOR: return OnInfo<unsigned int, &EDiscoveredInfo::RemoveNeighbor>;
    case SET_NEIGHBOR: return SetNeighbor;
    case SET_NEIGHBOR_IS_ROUTER: return OnNeighbor<bool, &EDiscoveredNeighbor::SetIsRouter>;
    case SET_NEIGHBOR_MAC: return OnNeighbor<EMACAddress, &EDiscoveredNeighbor::SetMac>;
    case ADD_NEIGHBOR_ADDRESS: return OnNeighbor<EIPAddress, &EDiscoveredNeighbor::AddAddress>;
    case REMOVE_NEIGHBOR_ADDRESS: return OnNeighbor<EIPAddress, &EDiscoveredNeighbor::RemoveAddress>;
    case SET_DHCP_INFO: return OnInfo<EDHCPDiscoveredInfo, &EDiscoveredInfo::SetDHCPInfo>;
    case SET_DHCPV6_INFO: return OnInfo<EDHCPv6DiscoveredInfo, &EDiscoveredInfo::SetDHCPv6Info>;
    case SET_FCOE_INFO: return OnInfo<EFCoEDiscoveredInfo, &EDiscoveredInfo::SetFCoEInfo>;
    case SET_PTP_INFO: return OnInfo<EPTPDiscoveredInfo, &EDiscoveredInfo::SetPTPInfo>;
    case SET_DCBX_INFO: return OnInfo<EDCBXDiscoveredInfo, &EDiscoveredInfo::SetDCBXInfo>;
    default: return nullptr;
    }
}

void ApplyDiscoveredTableMessage(EDiscoveredTable& table, EArchive& archive)
{
    while (ReadValue<bool>(archive)) {
        Operation const operation = OperationOf(ReadValue<unsigned int>(archive));
        if (operation) operation(table, archive);
    }
}
