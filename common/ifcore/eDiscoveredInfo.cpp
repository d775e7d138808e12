#include "eDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eComponentId.hpp"
#include "eDiscoveredRecord.hpp"
#include "eDiscoveredTable.hpp"
#include "eRecord.hpp"

#include <algorithm>

EDiscoveredInfo::EDiscoveredInfo() : m_neighbors(this)
{
    AdoptRecords();
}

EDiscoveredInfo::EDiscoveredInfo(EDiscoveredInfo const& other)
    : m_localId(other.m_localId), m_interfaceUp(other.m_interfaceUp), m_addresses(other.m_addresses),
      m_neighbors(other.m_neighbors, this), m_neighborsByMac(other.m_neighborsByMac),
      m_neighborsByIp(other.m_neighborsByIp), m_removedUpTo(other.m_removedUpTo), m_dhcp(other.m_dhcp),
      m_dhcpv6(other.m_dhcpv6), m_fcoe(other.m_fcoe), m_ptp(other.m_ptp), m_dcbx(other.m_dcbx)
{
    AdoptRecords();
    KeepNeighborsAnew();
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
    std::swap(m_addresses, other.m_addresses);
    std::swap(m_neighborsByMac, other.m_neighborsByMac);
    std::swap(m_neighborsByIp, other.m_neighborsByIp);
    std::swap(m_removedUpTo, other.m_removedUpTo);
    m_neighbors.Swap(other.m_neighbors);
    std::swap(m_addressed, other.m_addressed);
    for (EDiscoveredInfo* const info : {this, &other}) {
        info->KeepNeighbors();
        info->TellOfAddresses();
    }
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
    return ElementAt(m_addresses.Get(), position);
}

bool EDiscoveredInfo::HasAddress(EIPAddress const& address) const
{
    return m_addresses.Has(address);
}

void EDiscoveredInfo::AddAddress(EIPAddress const& address)
{
    m_addresses.IndexIfLong();
    if (HasAddress(address)) return;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be in the list, which moves
    EIPAddress const added(address);
    m_addresses.MakeRoomForOne();
    GetHooks().AddingAddress(*this, added);
    m_addresses.Add(added);
}

void EDiscoveredInfo::RemoveAddress(EIPAddress const& address)
{
    m_addresses.IndexIfLong();
    if (!HasAddress(address)) return;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be the one that goes
    EIPAddress const removed(address);
    GetHooks().RemovingAddress(*this, removed);
    m_addresses.RemoveFirst(removed);
}

// ---- Neighbours -----------------------------------------------------------------------------------------------------

/// Entries of the two indexes of an info, made before they are needed or taken out: putting them in cannot fail.
struct EDiscoveredInfo::Entries {
    MacIndex::Entries byMac;
    IpIndex::Entries byIp;

    /// Those that name a neighbour of this content by this id.
    Entries(EDiscoveredNeighbor const& neighbor, unsigned int id)
    {
        byMac[EDiscoveredMacKey(neighbor.GetMac())] = id;
        for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
            byIp[EDiscoveredIpKey(*address)] = id;
    }
    /// Only the keys count; what was there under them becomes of these. On purpose by the MAC and the addresses alone:
    /// entries that name another neighbour by now go too.
    void TakeOut(EDiscoveredInfo& info) noexcept
    {
        auto const takeOut = [](auto& index, auto& keys) {
            for (auto key = keys.begin(); key != keys.end();) {
                auto const here = key++;
                auto node = index.Take(here->first);
                keys.erase(here);
                if (node) keys.insert(std::move(node));
            }
        };
        takeOut(info.m_neighborsByMac, byMac);
        takeOut(info.m_neighborsByIp, byIp);
    }
};

void EDiscoveredInfo::PutIn(Entries& entries) noexcept
{
    PutIn(m_neighborsByMac, entries.byMac);
    PutIn(m_neighborsByIp, entries.byIp);
}

void EDiscoveredInfo::AddNeighborToMap(EDiscoveredNeighbor const* neighbor)
{
    if (!neighbor) return;
    Entries entries(*neighbor, neighbor->GetLocalId());
    PutIn(entries);
}

EDiscoveredInfo::Entries EDiscoveredInfo::TakenOut(EDiscoveredNeighbor const& neighbor)
{
    Entries taken(neighbor, 0);
    taken.TakeOut(*this);
    return taken;
}

/// Whether both have the same MAC and the same addresses.
static bool AreIndexedAlike(EDiscoveredNeighbor const& one, EDiscoveredNeighbor const& other)
{
    return one.GetMac() == other.GetMac() &&
           std::equal(one.AddressBegin(), one.AddressEnd(), other.AddressBegin(), other.AddressEnd());
}

static bool IsDefaultMAC(EDiscoveredTable const* table, unsigned int interfaceId, unsigned int neighborId)
{
    return table && table->GetDefaultMACIfId() == interfaceId && table->GetDefaultMACNbrId() == neighborId;
}

unsigned int EDiscoveredInfo::AddNeighbor(EDiscoveredNeighbor const& neighbor)
{
    EUniqueIDGenerator const before(m_neighbors.GetIdGenerator());
    unsigned int const id = m_neighbors.AddItem(neighbor);
    if (id == 0) return 0; // the ids are used up; one that an archive brought may have 0
    EDiscoveredNeighbor* const stored = GetNeighbor(id);
    if (!stored) return id;
    Keep(id, *stored);
    stored->TellOfAddresses();
    bool announced = false;
    try {
        Entries entries(*stored, id); // before the announcement, behind which nothing may fail
        EDiscoveredNeighbor const told(*stored);
        announced = true;
        GetHooks().AddingNeighbor(*stored);
        if (AreIndexedAlike(*stored, told))
            PutIn(entries);
        else
            AddNeighborToMap(stored); // the observer has changed it
    } catch (...) {
        // What is not indexed is not there.
        m_neighbors.RemoveItem(id);
        SetHasAddress(id, false);
        if (IsDefaultMAC(m_parent, m_localId, id)) Changeable(*m_parent).FindDefaultMAC();
        if (!announced) m_neighbors.SetIdGenerator(before); // no id is used up of which nobody was told
        throw;
    }
    if (m_parent && !m_parent->HasDefaultMAC())
        Changeable(*m_parent).SetDefaultMAC(m_localId, id, stored->GetMac()); // on purpose without an address too
    return id;
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
        PutIn(replaced);
        throw;
    }
    PutIn(entries);
    if (IsDefaultMAC(m_parent, m_localId, id)) Changeable(*m_parent).SetDefaultMAC(m_localId, id, stored->GetMac());
}

void EDiscoveredInfo::RemoveNeighbor(unsigned int id)
{
    if (EDiscoveredNeighbor const* const neighbor = GetNeighbor(id)) {
        EMACAddress const told(neighbor->GetMac());
        EDiscoveredMacKey mac(told); // as in AddNeighbor
        GetHooks().RemovingNeighbor(*neighbor);
        if (!(neighbor->GetMac() == told)) mac = EDiscoveredMacKey(neighbor->GetMac());
        // On purpose by the MAC and the addresses alone: entries that name another neighbour by now go too.
        m_neighborsByMac.Take(mac);
        for (auto address = neighbor->AddressBegin(); address != neighbor->AddressEnd(); ++address)
            m_neighborsByIp.Take(EDiscoveredIpKey(*address));
    }
    if (m_neighbors.RemoveItem(id)) m_removedUpTo = std::max(m_removedUpTo, id);
    SetHasAddress(id, false);
    if (IsDefaultMAC(m_parent, m_localId, id)) Changeable(*m_parent).FindDefaultMAC();
}

/// The neighbour that an index names under this key; null when there is none, or none of that id any more.
template <class Info, class Key>
static auto FindNeighbor(Info& info, EDiscoveredIndex<Key> const& index, Key const& key)
{
    unsigned int const* const id = index.Find(key);
    return id ? info.GetNeighbor(*id) : nullptr;
}

EDiscoveredNeighbor const* EDiscoveredInfo::FindNeighborByMAC(EMACAddress const& mac) const
{
    return FindNeighbor(*this, m_neighborsByMac, EDiscoveredMacKey(mac));
}

EDiscoveredNeighbor* EDiscoveredInfo::FindNeighborByMAC(EMACAddress const& mac)
{
    return FindNeighbor(*this, m_neighborsByMac, EDiscoveredMacKey(mac));
}

EDiscoveredNeighbor const* EDiscoveredInfo::FindNeighborByIP(EIPAddress const& address) const
{
    return FindNeighbor(*this, m_neighborsByIp, EDiscoveredIpKey(address));
}

EDiscoveredNeighbor* EDiscoveredInfo::FindNeighborByIP(EIPAddress const& address)
{
    return FindNeighbor(*this, m_neighborsByIp, EDiscoveredIpKey(address));
}

// ---- Which neighbours have addresses --------------------------------------------------------------------------------

void EDiscoveredInfo::Keep(unsigned int id, EDiscoveredNeighbor& neighbor) noexcept
{
    neighbor.m_place = {this, id};
}

void EDiscoveredInfo::KeepNeighbors() noexcept
{
    for (auto position = m_neighbors.begin(); position != m_neighbors.end(); ++position)
        if (EDiscoveredNeighbor* const neighbor = m_neighbors.GetItem(position)) Keep(position->first, *neighbor);
}

void EDiscoveredInfo::KeepNeighborsAnew() noexcept
{
    m_addressed.Clear();
    for (auto position = m_neighbors.begin(); position != m_neighbors.end(); ++position) {
        EDiscoveredNeighbor* const neighbor = m_neighbors.GetItem(position);
        if (!neighbor) continue;
        Keep(position->first, *neighbor);
        if (neighbor->GetAddressCount() != 0) m_addressed.Set(position->first, true);
    }
    TellOfAddresses();
}

void EDiscoveredInfo::SetHasAddress(unsigned int neighborId, bool hasAddress) noexcept
{
    m_addressed.Set(neighborId, hasAddress);
    TellOfAddresses();
}

void EDiscoveredInfo::TellOfAddresses() noexcept
{
    if (m_place.owner) m_place.owner->SetHasAddress(m_place.id, LowestWithAddress() != nullptr);
}

EDiscoveredNeighbor const* EDiscoveredInfo::LowestWithAddress() const
{
    return ::LowestWithAddress(m_neighbors, m_addressed,
                               [](EDiscoveredNeighbor const& neighbor) { return neighbor.GetAddressCount() != 0; });
}

// ---- Archive --------------------------------------------------------------------------------------------------------

/// The layout, in three parts: before the second a reader forgets the old neighbours, behind it it indexes the new.
struct EDiscoveredInfo::Layout {
    template <class Archive, class Info> static void Addresses(Archive archive, Info& info)
    {
        archive.Each(info.m_localId);
        archive.Each(info.m_interfaceUp);
        archive.Each(AsVector(InArchive(info.m_addresses)));
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
    m_neighborsByMac.Clear(); // before the neighbours that they name, should reading those fail
    m_neighborsByIp.Clear();
    m_removedUpTo = 0; // the archive brings other ids
    try {
        Layout::Neighbors(EUnversionedReader(archive), *this);
    } catch (...) { // those read before are there
        KeepNeighborsAnew();
        throw;
    }
    KeepNeighborsAnew();
    for (auto position = m_neighbors.begin(); position != m_neighbors.end(); ++position)
        AddNeighborToMap(m_neighbors.GetItem(position));
    Layout::Engines(EUnversionedReader(archive), *this);
}
