#include "kernelFollower.hpp"

#include "kernelValues.hpp"

namespace ifcoreTool {

// ---- Links ----------------------------------------------------------------------------------------------------------

KernelFollower::Link* KernelFollower::Find(int linkIndex)
{
    auto const found = m_links.find(linkIndex);
    return found == m_links.end() ? nullptr : &found->second;
}

void KernelFollower::SetLink(KernelLink const& link, LinkRows const& rows)
{
    auto const [position, isNew] = m_links.try_emplace(link.index);
    Link& known = position->second;
    if (isNew) {
        auto const row = rows.first.find(link.index);
        known.id = row != rows.first.end() ? row->second : m_ids.Next();
        m_names[known.id] = link.name; // for those who are told of it
        EDiscoveredInfo info;
        info.SetLocalId(known.id);
        info.SetInterfaceUp(link.running);
        m_table.AddInfo(info);
    }
    m_names[known.id] = link.name;
    m_table.GetInfo(known.id)->SetInterfaceUp(link.running);
}

void KernelFollower::On(KernelLinkGone const& event)
{
    auto const found = m_links.find(event.linkIndex);
    if (found == m_links.end()) return;
    m_table.RemoveInfo(found->second.id);
    m_gone.push_back(found->second.id);
    m_links.erase(found);
}

void KernelFollower::RemoveLinksBut(std::vector<KernelLink> const& links)
{
    std::set<int> present;
    for (KernelLink const& link : links) present.insert(link.index);
    std::vector<int> gone;
    for (auto const& entry : m_links)
        if (present.count(entry.first) == 0) gone.push_back(entry.first);
    for (int index : gone) On(KernelLinkGone{index});
}

std::string KernelFollower::GetLinkName(unsigned int interfaceId) const
{
    auto const found = m_names.find(interfaceId);
    return found == m_names.end() ? "" : found->second;
}

void KernelFollower::ForgetNames()
{
    for (unsigned int id : m_gone) m_names.erase(id);
    m_gone.clear();
}

// ---- Addresses ------------------------------------------------------------------------------------------------------

void KernelFollower::AddAddress(Link& link, KernelAddress const& address)
{
    link.addresses.insert(KeyOf(address));
    m_table.GetInfo(link.id)->AddAddress(AsAddress(address.address)); // nothing when it is there already
}

void KernelFollower::RemoveAddress(Link& link, AddressKey const& key)
{
    KernelIP const address = std::get<0>(key);
    if (link.addresses.erase(key) == 0) return;
    auto const other = link.addresses.lower_bound({address, 0, KernelIP()});
    if (other != link.addresses.end() && std::get<0>(*other) == address) return;
    m_table.GetInfo(link.id)->RemoveAddress(AsAddress(address));
}

void KernelFollower::On(KernelAddress const& address)
{
    if (Link* const link = Find(address.linkIndex)) AddAddress(*link, address);
}

void KernelFollower::On(KernelAddressGone const& event)
{
    if (Link* const link = Find(event.address.linkIndex)) RemoveAddress(*link, KeyOf(event.address));
}

void KernelFollower::ReadAddresses(Link& link, std::vector<KernelAddress const*> const& addresses)
{
    std::set<AddressKey> gone = link.addresses;
    for (KernelAddress const* address : addresses) gone.erase(KeyOf(*address));
    for (AddressKey const& key : gone) RemoveAddress(link, key);
    for (KernelAddress const* address : addresses) AddAddress(link, *address);
}

// ---- Neighbours -----------------------------------------------------------------------------------------------------

void KernelFollower::SetIsRouter(Link const& link, Neighbor const& neighbor)
{
    EDiscoveredNeighbor* const stored = m_table.GetInfo(link.id)->GetNeighbor(neighbor.id);
    if (stored) stored->SetIsRouter(neighbor.routers != 0);
}

void KernelFollower::AddEntry(Link& link, KernelIP const& address, Entry const& entry)
{
    link.entries.emplace(address, entry);
    Neighbor& neighbor = link.neighbors[entry.mac];
    if (entry.isRouter) ++neighbor.routers;
    EDiscoveredInfo& info = *m_table.GetInfo(link.id);
    if (++neighbor.addresses == 1) {
        EDiscoveredNeighbor added;
        added.SetMac(AsMac(entry.mac));
        added.SetIsRouter(entry.isRouter);
        // Before the neighbour is added, so that the table's default MAC is that of one with an address.
        added.AddAddress(AsAddress(address));
        neighbor.id = info.AddNeighbor(added);
    } else if (EDiscoveredNeighbor* const stored = info.GetNeighbor(neighbor.id)) {
        stored->AddAddress(AsAddress(address));
        SetIsRouter(link, neighbor);
    }
}

void KernelFollower::RemoveEntry(Link& link, KernelIP const& address)
{
    auto const found = link.entries.find(address);
    if (found == link.entries.end()) return;
    auto const owner = link.neighbors.find(found->second.mac);
    Neighbor& neighbor = owner->second;
    if (found->second.isRouter) --neighbor.routers;
    link.entries.erase(found);
    EDiscoveredInfo& info = *m_table.GetInfo(link.id);
    if (--neighbor.addresses == 0) {
        info.RemoveNeighbor(neighbor.id);
        link.neighbors.erase(owner);
    } else if (EDiscoveredNeighbor* const stored = info.GetNeighbor(neighbor.id)) {
        stored->RemoveAddress(AsAddress(address));
        SetIsRouter(link, neighbor);
    }
}

void KernelFollower::SetEntry(Link& link, KernelIP const& address, Entry const& entry)
{
    auto const found = link.entries.find(address);
    if (found == link.entries.end()) {
        AddEntry(link, address, entry);
    } else if (found->second.mac != entry.mac) {
        // In this order: the table finds a neighbour by the address that was added last.
        RemoveEntry(link, address);
        AddEntry(link, address, entry);
    } else if (found->second.isRouter != entry.isRouter) {
        found->second.isRouter = entry.isRouter;
        Neighbor& neighbor = link.neighbors[entry.mac];
        entry.isRouter ? ++neighbor.routers : --neighbor.routers;
        SetIsRouter(link, neighbor);
    }
}

void KernelFollower::On(KernelNeighbor const& neighbor)
{
    if (Link* const link = Find(neighbor.linkIndex))
        SetEntry(*link, neighbor.address, {neighbor.mac, neighbor.isRouter});
}

void KernelFollower::On(KernelNeighborGone const& event)
{
    if (Link* const link = Find(event.linkIndex)) RemoveEntry(*link, event.address);
}

void KernelFollower::ReadNeighbors(Link& link, std::vector<KernelNeighbor const*> const& neighbors)
{
    std::map<KernelIP, KernelNeighbor const*> told; // the last of each address
    for (KernelNeighbor const* neighbor : neighbors) told[neighbor->address] = neighbor;
    std::vector<KernelIP> gone;
    for (auto const& entry : link.entries)
        if (told.count(entry.first) == 0) gone.push_back(entry.first);
    for (KernelIP const& address : gone) RemoveEntry(link, address);
    for (KernelNeighbor const* neighbor : neighbors) On(*told[neighbor->address]);
}

// ---- Both -----------------------------------------------------------------------------------------------------------

template <class Told> static std::unordered_map<int, std::vector<Told const*>> ByLink(std::vector<Told> const& all)
{
    std::unordered_map<int, std::vector<Told const*>> result;
    for (Told const& told : all) result[told.linkIndex].push_back(&told);
    return result;
}

void KernelFollower::Read(KernelSnapshot const& snapshot, LinkRows const& rows)
{
    ForgetNames();
    m_ids.SkipPast(rows.next - 1);
    auto addresses = ByLink(snapshot.addresses);
    auto neighbors = ByLink(snapshot.neighbors);
    RemoveLinksBut(snapshot.links);
    for (KernelLink const& link : snapshot.links) {
        SetLink(link, rows);
        Link& known = m_links.at(link.index);
        ReadAddresses(known, addresses[link.index]);
        ReadNeighbors(known, neighbors[link.index]);
    }
}

void KernelFollower::Follow(KernelEvent const& event)
{
    ForgetNames();
    std::visit([this](auto const& told) { On(told); }, event);
}

} // namespace ifcoreTool
