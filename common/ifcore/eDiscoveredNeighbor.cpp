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
    return ElementAt(m_values.addresses, position);
}

bool EDiscoveredNeighbor::HasAddress(EIPAddress const& address) const
{
    return Contains(m_values.addresses, address);
}

void EDiscoveredNeighbor::AddAddress(EIPAddress const& address)
{
    EIPAddress const added(address); // it may be one of those that move now
    EDiscoveredInfo::Index entry;
    if (m_parent) entry[added.GetAsString()] = m_values.localId;
    MakeRoomForOne(m_values.addresses);
    GetHooks().AddingNeighborAddress(*this, added);
    m_values.addresses.push_back(added); // on purpose without asking whether it is there
    if (m_parent) EDiscoveredInfo::PutInto(Changeable(*m_parent).m_neighborsByIp, entry);
}

void EDiscoveredNeighbor::RemoveAddress(EIPAddress const& address)
{
    if (!HasAddress(address)) return;
    EIPAddress const removed(address); // it may be the one that goes
    std::string const text = removed.GetAsString();
    GetHooks().RemovingNeighborAddress(*this, removed);
    RemoveFirst(m_values.addresses, removed);
    if (m_parent) Changeable(*m_parent).m_neighborsByIp.erase(text); // on purpose by the text alone, whose ever it is
}

template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Each(v.localId);
    archive.Each(v.mac);
    archive.Each(AsVector(v.addresses));
    archive.Each(v.isRouter);
}

void EDiscoveredNeighbor::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EUnversionedWriter(archive), m_values);
}

void EDiscoveredNeighbor::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EUnversionedReader(archive), m_values);
}
