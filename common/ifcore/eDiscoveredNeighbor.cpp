#include "eDiscoveredNeighbor.hpp"

#include "eArchiveLayout.hpp"
#include "eComponentId.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredRecord.hpp"
#include "eRecord.hpp"

EDiscoveredNeighbor::EDiscoveredNeighbor(EDiscoveredNeighbor const& other) : m_values(other.m_values) {}

void EDiscoveredNeighbor::Copy(EDiscoveredNeighbor const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingNeighbor, EDiscoveredNeighbor(other));
}

void EDiscoveredNeighbor::Empty()
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingNeighbor, EDiscoveredNeighbor());
}

void EDiscoveredNeighbor::Swap(EDiscoveredNeighbor& other)
{
    std::swap(m_values, other.m_values); // the ids too, on purpose: a container gives its items their ids back
    TellOfAddresses();
    other.TellOfAddresses();
}

void EDiscoveredNeighbor::TellOfAddresses() noexcept
{
    if (m_place.owner) m_place.owner->SetHasAddress(m_place.id, GetAddressCount() != 0);
}

void EDiscoveredNeighbor::GetComponentId(EComponentId& id) const
{
    if (!m_parent) return; // on purpose not emptied
    m_parent->GetComponentId(id);
    id += m_values.localId;
}

EDiscoveredTableHooks& EDiscoveredNeighbor::GetHooks() const
{
    return HooksThrough<EDiscoveredNeighbor>(m_parent);
}

void EDiscoveredNeighbor::SetMac(EMACAddress const& mac)
{
    NotifyAndStore(*this, &EDiscoveredTableHooks::NeighborMacChanging, m_values.mac, mac);
}

void EDiscoveredNeighbor::SetIsRouter(bool isRouter)
{
    if (isRouter && !m_values.isRouter) GetHooks().NeighborBecameRouter(*this);
    if (!isRouter && m_values.isRouter) GetHooks().NeighborBecameHost(*this);
    m_values.isRouter = isRouter;
}

EIPAddress const* EDiscoveredNeighbor::GetAddressAt(unsigned int position) const
{
    return ElementAt(m_values.addresses.Get(), position);
}

bool EDiscoveredNeighbor::HasAddress(EIPAddress const& address) const
{
    return m_values.addresses.Has(address);
}

void EDiscoveredNeighbor::AddAddress(EIPAddress const& address)
{
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be in the list, which moves
    EIPAddress const added(address);
    EDiscoveredInfo::IpIndex::Entries entry;
    if (m_parent) entry[EDiscoveredIpKey(added)] = m_values.localId;
    m_values.addresses.MakeRoomForOne();
    GetHooks().AddingNeighborAddress(*this, added);
    m_values.addresses.Add(added); // on purpose without asking whether it is there
    if (GetAddressCount() == 1) TellOfAddresses();
    if (m_parent) {
        EDiscoveredInfo& owner = Changeable(*m_parent);
        owner.PutIn(owner.m_neighborsByIp, entry);
    }
}

void EDiscoveredNeighbor::RemoveAddress(EIPAddress const& address)
{
    m_values.addresses.IndexIfLong();
    if (!HasAddress(address)) return;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): it may be the one that goes
    EIPAddress const removed(address);
    GetHooks().RemovingNeighborAddress(*this, removed);
    m_values.addresses.RemoveFirst(removed);
    if (GetAddressCount() == 0) TellOfAddresses();
    if (m_parent) // on purpose by the address alone, whose ever it is
        Changeable(*m_parent).m_neighborsByIp.Take(EDiscoveredIpKey(removed));
}

template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Each(v.localId);
    archive.Each(v.mac);
    archive.Each(AsVector(InArchive(v.addresses)));
    archive.Each(v.isRouter);
}

void EDiscoveredNeighbor::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EUnversionedWriter(archive), m_values);
}

void EDiscoveredNeighbor::SerializeIn(EArchive& archive)
{
    try {
        ArchiveLayout(EUnversionedReader(archive), m_values);
    } catch (...) { // some of its addresses may have been read
        TellOfAddresses();
        throw;
    }
    TellOfAddresses();
}
