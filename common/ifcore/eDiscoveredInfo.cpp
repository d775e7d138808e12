#include "eDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eComponentId.hpp"
#include "eDiscoveredRecord.hpp"
#include "eDiscoveredTable.hpp"
#include "eRecord.hpp"

EDiscoveredInfo::EDiscoveredInfo() : m_neighbors(this)
{
    AdoptRecords();
}

EDiscoveredInfo::EDiscoveredInfo(EDiscoveredInfo const& other)
    : m_localId(other.m_localId), m_interfaceUp(other.m_interfaceUp), m_addresses(other.m_addresses),
      m_neighbors(other.m_neighbors, this), m_neighborsByMac(other.m_neighborsByMac),
      m_neighborsByIp(other.m_neighborsByIp), m_dhcp(other.m_dhcp), m_dhcpv6(other.m_dhcpv6), m_fcoe(other.m_fcoe),
      m_ptp(other.m_ptp), m_dcbx(other.m_dcbx)
{
    AdoptRecords();
}

void EDiscoveredInfo::AdoptRecords()
{
    m_dhcp.SetParent(this);
    m_dhcpv6.SetParent(this);
    m_fcoe.SetParent(this);
    m_ptp.SetParent(this);
    m_dcbx.SetParent(this);
}

void EDiscoveredInfo::Copy(EDiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingInfo, EDiscoveredInfo(other));
}

void EDiscoveredInfo::Empty()
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingInfo, EDiscoveredInfo());
}

void EDiscoveredInfo::Swap(EDiscoveredInfo& other)
{
    std::swap(m_localId, other.m_localId); // on purpose: a container gives its items their ids back
    std::swap(m_interfaceUp, other.m_interfaceUp);
    m_addresses.swap(other.m_addresses);
    m_neighborsByMac.swap(other.m_neighborsByMac);
    m_neighborsByIp.swap(other.m_neighborsByIp);
    m_neighbors.Swap(other.m_neighbors);
    m_dhcp.Swap(other.m_dhcp);
    m_dhcpv6.Swap(other.m_dhcpv6);
    m_fcoe.Swap(other.m_fcoe);
    m_ptp.Swap(other.m_ptp);
    m_dcbx.Swap(other.m_dcbx);
}

void EDiscoveredInfo::GetComponentId(EComponentId& id) const
{
    if (!m_parent) return; // on purpose not emptied
    m_parent->GetComponentId(id);
    id += m_localId;
}

EDiscoveredTableHooks& EDiscoveredInfo::GetHooks() const
{
    return HooksThrough<EDiscoveredInfo>(m_parent);
}

void EDiscoveredInfo::SetInterfaceUp(bool up)
{
    if (m_interfaceUp && !up) GetHooks().InterfaceWentDown(*this);
    if (!m_interfaceUp && up) GetHooks().InterfaceWentUp(*this);
    m_interfaceUp = up;
}

EIPAddress const* EDiscoveredInfo::GetAddressAt(unsigned int position) const
{
    return ElementAt(m_addresses, position);
}

bool EDiscoveredInfo::HasAddress(EIPAddress const& address) const
{
    return Contains(m_addresses, address);
}

void EDiscoveredInfo::AddAddress(EIPAddress const& address)
{
    if (HasAddress(address)) return;
    EIPAddress const added(address);
    MakeRoomForOne(m_addresses);
    GetHooks().AddingAddress(*this, added);
    m_addresses.push_back(added);
}

void EDiscoveredInfo::RemoveAddress(EIPAddress const& address)
{
    if (!HasAddress(address)) return;
    EIPAddress const removed(address); // it may be the one that goes
    GetHooks().RemovingAddress(*this, removed);
    RemoveFirst(m_addresses, removed);
}

// ---- Neighbours -----------------------------------------------------------------------------------------------------

/// Entries of the two indexes of an info, made before they are needed or taken out: putting them in cannot fail.
struct EDiscoveredInfo::Entries {
    Index byMac;
    Index byIp;

    /// Those that name a neighbour of this content by this id.
    Entries(EDiscoveredNeighbor const& neighbor, unsigned int id)
    {
        byMac[neighbor.GetMac().GetAsString()] = id;
        for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
            byIp[address->GetAsString()] = id;
    }
};

/// What is there under the same text is overwritten: the last neighbour wins.
void EDiscoveredInfo::PutInto(Index& index, Index& entries)
{
    while (!entries.empty()) {
        auto put = index.insert(entries.extract(entries.begin()));
        if (!put.inserted) put.position->second = put.node.mapped();
    }
}

void EDiscoveredInfo::AddNeighborToMap(EDiscoveredNeighbor const* neighbor)
{
    if (!neighbor) return;
    Entries entries(*neighbor, neighbor->GetLocalId());
    PutInto(m_neighborsByMac, entries.byMac);
    PutInto(m_neighborsByIp, entries.byIp);
}

/// On purpose by the texts alone: entries that name another neighbour by now go too.
EDiscoveredInfo::Entries EDiscoveredInfo::TakenOut(EDiscoveredNeighbor const& neighbor)
{
    Entries taken(neighbor, 0); // for its texts
    auto const takeOut = [](Index& index, Index& texts) {
        for (auto text = texts.begin(); text != texts.end();) {
            auto const here = text++;
            auto node = index.extract(here->first);
            texts.erase(here);
            if (node) texts.insert(std::move(node));
        }
    };
    takeOut(m_neighborsByMac, taken.byMac);
    takeOut(m_neighborsByIp, taken.byIp);
    return taken;
}

void EDiscoveredInfo::CleanNeighborMap(EDiscoveredNeighbor const* neighbor)
{
    if (neighbor) TakenOut(*neighbor);
}

unsigned int EDiscoveredInfo::AddNeighbor(EDiscoveredNeighbor const& neighbor)
{
    unsigned int const id = m_neighbors.AddItem(neighbor);
    if (id == 0) return 0; // the ids are used up; one that an archive brought may have 0
    if (EDiscoveredNeighbor const* const stored = GetNeighbor(id)) {
        GetHooks().AddingNeighbor(*stored);
        AddNeighborToMap(stored);
        if (m_parent && !m_parent->HasDefaultMAC())
            Changeable(*m_parent).SetDefaultMAC(m_localId, id, stored->GetMac()); // on purpose without an address too
    }
    return id;
}

static bool IsDefaultMAC(EDiscoveredTable const* table, unsigned int interfaceId, unsigned int neighborId)
{
    return table && table->GetDefaultMACIfId() == interfaceId && table->GetDefaultMACNbrId() == neighborId;
}

void EDiscoveredInfo::SetNeighbor(unsigned int id, EDiscoveredNeighbor const& neighbor)
{
    EDiscoveredNeighbor const* const stored = GetNeighbor(id);
    if (!stored) return;
    Entries entries(neighbor, stored->GetLocalId()); // which the container gives back
    Entries replaced = TakenOut(*stored);
    try {
        m_neighbors.SetItem(id, neighbor);
    } catch (...) { // the neighbour is what it was
        PutInto(m_neighborsByMac, replaced.byMac);
        PutInto(m_neighborsByIp, replaced.byIp);
        throw;
    }
    PutInto(m_neighborsByMac, entries.byMac);
    PutInto(m_neighborsByIp, entries.byIp);
    if (IsDefaultMAC(m_parent, m_localId, id)) Changeable(*m_parent).SetDefaultMAC(m_localId, id, stored->GetMac());
}

void EDiscoveredInfo::RemoveNeighbor(unsigned int id)
{
    if (EDiscoveredNeighbor const* const neighbor = GetNeighbor(id)) {
        GetHooks().RemovingNeighbor(*neighbor);
        CleanNeighborMap(neighbor);
    }
    m_neighbors.RemoveItem(id);
    if (IsDefaultMAC(m_parent, m_localId, id)) Changeable(*m_parent).FindDefaultMAC();
}

/// The neighbour that an index names under this text; null when there is none, or none of that id any more.
template <class Info, class Index> static auto FindNeighbor(Info& info, Index const& index, std::string const& text)
{
    auto const found = index.find(text);
    return found == index.end() ? nullptr : info.GetNeighbor(found->second);
}

EDiscoveredNeighbor const* EDiscoveredInfo::FindNeighborByMAC(EMACAddress const& mac) const
{
    return FindNeighbor(*this, m_neighborsByMac, mac.GetAsString());
}

EDiscoveredNeighbor* EDiscoveredInfo::FindNeighborByMAC(EMACAddress const& mac)
{
    return FindNeighbor(*this, m_neighborsByMac, mac.GetAsString());
}

EDiscoveredNeighbor const* EDiscoveredInfo::FindNeighborByIP(EIPAddress const& address) const
{
    return FindNeighbor(*this, m_neighborsByIp, address.GetAsString());
}

EDiscoveredNeighbor* EDiscoveredInfo::FindNeighborByIP(EIPAddress const& address)
{
    return FindNeighbor(*this, m_neighborsByIp, address.GetAsString());
}

// ---- Archive --------------------------------------------------------------------------------------------------------

/// The layout, in three parts: before the second a reader forgets the old neighbours, behind it it indexes the new.
struct EDiscoveredInfo::Layout {
    template <class Archive, class Info> static void Addresses(Archive archive, Info& info)
    {
        archive.Each(info.m_localId);
        archive.Each(info.m_interfaceUp);
        archive.Each(AsVector(info.m_addresses));
    }
    template <class Archive, class Info> static void Neighbors(Archive archive, Info& info)
    {
        archive.Each(info.m_neighbors);
        archive.Each(info.m_dhcp);
        archive.Each(info.m_dhcpv6);
    }
    template <class Archive, class Info> static void Engines(Archive archive, Info& info)
    {
        archive.Each(info.m_fcoe);
        archive.Each(info.m_ptp);
        archive.Each(info.m_dcbx);
    }
};

void EDiscoveredInfo::SerializeOut(EArchive& archive) const
{
    Layout::Addresses(EUnversionedWriter(archive), *this);
    Layout::Neighbors(EUnversionedWriter(archive), *this);
    Layout::Engines(EUnversionedWriter(archive), *this);
}

void EDiscoveredInfo::SerializeIn(EArchive& archive)
{
    Layout::Addresses(EUnversionedReader(archive), *this);
    m_neighborsByMac.clear(); // before the neighbours that they name, should reading those fail
    m_neighborsByIp.clear();
    Layout::Neighbors(EUnversionedReader(archive), *this);
    for (auto position = m_neighbors.begin(); position != m_neighbors.end(); ++position)
        AddNeighborToMap(m_neighbors.GetItem(position));
    Layout::Engines(EUnversionedReader(archive), *this);
}
