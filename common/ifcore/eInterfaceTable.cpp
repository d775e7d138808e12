#include "eInterfaceTable.hpp"

#include "eAddressFamily.hpp"
#include "eArchiveLayout.hpp"
#include "eGreTunnel.hpp"
#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "eRecord.hpp"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <utility>

EInterfaceTable::EInterfaceTable(unsigned int portId) : EInterfaceItemList(this)
{
    m_values.portId = portId;
}

EInterfaceTable::EInterfaceTable(EInterfaceTable const& other)
    : EInterfaceItemList(other, this), m_values(other.m_values)
{
}

EInterfaceTable::~EInterfaceTable() = default;

void EInterfaceTable::Copy(EInterfaceTable const& other)
{
    EInterfaceTable replacement(other);
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingInterfaceTable, std::move(replacement));
}

void EInterfaceTable::Empty()
{
    EInterfaceTable replacement(m_values.portId);
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingInterfaceTable, std::move(replacement));
}

void EInterfaceTable::Swap(EInterfaceTable& other)
{
    EInterfaceItemList::Swap(other);
    std::swap(m_values, other.m_values);
}

eHal::ETableName const& EInterfaceTable::StaticGetTableName()
{
    static eHal::ETableName const name("InterfaceTable");
    return name;
}

// Settings of the port

void EInterfaceTable::SetVPIMaskMode(eVPIMaskMode mode)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingVpiMaskMode, m_values.vpiMaskMode, mode);
}

void EInterfaceTable::SetDHCPv4RequestRate(unsigned int rate)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDHCPv4RequestRate, m_values.dhcpv4RequestRate, rate);
}

void EInterfaceTable::SetDHCPv6RequestRate(unsigned int rate)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDHCPv6RequestRate, m_values.dhcpv6RequestRate, rate);
}

void EInterfaceTable::SetDHCPv4MaxOutstandingRequests(unsigned int count)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDHCPv4MaxOutstandingRequests,
                   m_values.dhcpv4MaxOutstandingRequests, count);
}

void EInterfaceTable::SetDHCPv6MaxOutstandingRequests(unsigned int count)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDHCPv6MaxOutstandingRequests,
                   m_values.dhcpv6MaxOutstandingRequests, count);
}

void EInterfaceTable::SetFCoERequestRate(unsigned int rate)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoERequestRate, m_values.fcoeRequestRate, rate);
}

void EInterfaceTable::SetFCoERetryCount(unsigned int count)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoERetryCount, m_values.fcoeRetryCount, count);
}

void EInterfaceTable::SetFCoERetryInterval(unsigned int interval)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoERetryInterval, m_values.fcoeRetryInterval, interval);
}

void EInterfaceTable::SetFIPVersion(short version)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFIPVersion, m_values.fipVersion, version);
}

void EInterfaceTable::SetTargetLLAddrOptionEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingTargetLLAddrOptionEnabled, m_values.targetLLAddrOptionEnabled,
                   enabled);
}

void EInterfaceTable::SetFcfMacEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoECollectFcfMacListEnabled, m_values.fcfMacEnabled, enabled);
}

void EInterfaceTable::SetFcfMacCollectionTime(unsigned int time)
{
    // Stored before it is announced, on purpose: the only setter of the table that does so.
    m_values.fcfMacCollectionTime = time == 0 ? 1000 : std::min(time, 90000u);
    GetHooks().SettingFCoECollectFcfMacListTimer(*this, m_values.fcfMacCollectionTime);
}

void EInterfaceTable::SetPMacInFpmaEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEProposedMacInFpmaEnabled, m_values.pMacInFpmaEnabled,
                   enabled);
}

void EInterfaceTable::SetVlanIdEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEVlanNameIdInVlanRequest, m_values.vlanIdEnabled, enabled);
}

// Interfaces

unsigned int EInterfaceTable::AddInterfaceItem(EInterfaceItem const& item)
{
    unsigned int const id = AddItem(item);
    if (id != 0) GetHooks().AddingInterfaceItem(*GetItem(id));
    return id;
}

bool EInterfaceTable::SetInterfaceItem(unsigned int id, EInterfaceItem const& item)
{
    return SetItem(id, item); // announced by the item's assignment
}

bool EInterfaceTable::RemoveInterfaceItem(unsigned int id)
{
    EInterfaceItem const* const item = GetItem(id);
    if (!item) return false;
    GetHooks().RemovingInterfaceItem(*item);
    return RemoveItem(id);
}

/// The first item in ascending order of the ids that is accepted; null without one.
template <class Accept> static EInterfaceItem const* FirstItem(EInterfaceItemList const& items, Accept const& accept)
{
    for (auto position = items.begin(); position != items.end(); ++position) {
        EInterfaceItem const* const item = items.GetItem(position);
        if (accept(*item)) return item;
    }
    return nullptr;
}

void EInterfaceTable::GetAllIPs(std::list<EIPAddress>& addresses) const
{
    for (auto position = begin(); position != end(); ++position) {
        EInterfaceItem const& item = *GetItem(position);
        if (item.GetIPv4AddressItem().IsEnabled()) addresses.push_back(item.GetIPv4AddressItem().GetAddress());
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto ipv6 = list.begin(); ipv6 != list.end(); ++ipv6)
            addresses.push_back(list.GetItem(ipv6)->GetAddress());
    }
}

EInterfaceItem const* EInterfaceTable::GetFirstIPv4Interface() const
{
    return FirstItem(
        *this, [](EInterfaceItem const& item) { return item.IsEnabled() && item.GetIPv4AddressItem().IsEnabled(); });
}

EInterfaceItem const* EInterfaceTable::GetFirstIPv6Interface() const
{
    return FirstItem(*this, [](EInterfaceItem const& item) {
        return item.IsEnabled() && item.GetIPv6AddressItemList().GetCount() > 0;
    });
}

EInterfaceItem const* EInterfaceTable::GetFirstDHCPv4Interface() const
{
    return FirstItem(*this, [](EInterfaceItem const& item) { return item.IsEnabled() && item.IsDHCPEnabled(); });
}

EInterfaceItem const* EInterfaceTable::GetFirstDHCPv6Interface() const
{
    return FirstItem(*this, [](EInterfaceItem const& item) { return item.IsEnabled() && item.IsDHCPv6Enabled(); });
}

static bool HasAddress(EInterfaceItem const& item, EIPAddress const& address)
{
    if (address.GetFamily() == kIPv4Family) return item.GetIPv4AddressItem().GetAddress() == address;
    return item.FindIPv6AddressItem(address) != nullptr;
}

EInterfaceItem const* EInterfaceTable::FindInterfaceByIP(EIPAddress const& address) const
{
    return FindInterfaceByIPAndVlan(address, nullptr);
}

EInterfaceItem const* EInterfaceTable::FindInterfaceByIPAndVlan(EIPAddress const& address, EVLAN const* vlan) const
{
    static constexpr std::string_view kName = "IP_LOOKUP_HOOKS";
    // The table, or its set, holds the observer all the time. One more counted use would cost as much as the question,
    // and all threads that read would write to one counter.
    EInterfaceTableHooks const* const named =
        m_hooksName == kName ? m_hooks.get() : FindInterfaceTableHooks(kName.data()).get();
    if (auto const* const lookup = dynamic_cast<EIPLookupInterfaceTableHooks const*>(named)) {
        unsigned int const id = vlan ? lookup->GetInterfaceIdFromVlan(address, *vlan) : lookup->GetInterfaceId(address);
        EInterfaceItem const* const item = GetItem(id);
        return item && HasAddress(*item, address) ? item : nullptr; // final: no scan follows
    }
    return FirstItem(*this, [&address](EInterfaceItem const& item) { return HasAddress(item, address); });
}

EInterfaceItem const* EInterfaceTable::FindConnectedInterfaceByIP(EIPAddress const& address) const
{
    return FirstItem(*this, [&address](EInterfaceItem const& item) {
        return item.GetType() != INTERFACE_TYPE_GRE && HasAddress(item, address);
    });
}

// Observers

EInterfaceTableHooks& EInterfaceTable::GetHooks() const
{
    return m_hooks ? *m_hooks : IgnoringHooks();
}

static char const* NameOrEmpty(char const* name)
{
    return name ? name : "";
}

void EInterfaceTable::SetHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks)
{
    m_hooksName = NameOrEmpty(name);
    m_hooks.swap(hooks);
}

void EInterfaceTable::AddInterfaceTableHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks)
{
    if (m_hooksName == NameOrEmpty(name) || !m_hooks) {
        SetHooks(name, std::move(hooks));
    } else if (auto* const several = dynamic_cast<EMultipleInterfaceTableHooks*>(m_hooks.get())) {
        several->AddHooks(NameOrEmpty(name), std::move(hooks));
    } else {
        auto const set = boost::make_shared<EMultipleInterfaceTableHooks>();
        set->AddHooks(NameOrEmpty(name), std::move(hooks));
        set->AddHooks(m_hooksName.c_str(), m_hooks);
        SetHooks("multi", set);
    }
}

void EInterfaceTable::RemoveInterfaceTableHooks(char const* name)
{
    if (m_hooksName == NameOrEmpty(name))
        SetHooks("", boost::shared_ptr<EInterfaceTableHooks>());
    else if (auto* const several = dynamic_cast<EMultipleInterfaceTableHooks*>(m_hooks.get()))
        several->RemoveHooks(NameOrEmpty(name));
}

boost::shared_ptr<EInterfaceTableHooks> EInterfaceTable::FindInterfaceTableHooks(char const* name) const
{
    if (m_hooksName == NameOrEmpty(name)) return m_hooks;
    if (auto const* const several = dynamic_cast<EMultipleInterfaceTableHooks const*>(m_hooks.get()))
        return several->FindHooks(NameOrEmpty(name));
    return boost::shared_ptr<EInterfaceTableHooks>();
}

// Archive

static EArchiveSite const kSite = {"x86_64/common/ifcore/eInterfaceTable.cpp", 202, "EInterfaceTable::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(14, v.autoNeighborDiscoveryEnabled);
    archive.Since(14, v.autoArpEnabled);
    archive.Since(13, v.portId);
    archive.Since(12, v.fcfMacEnabled);
    archive.Since(12, v.fcfMacCollectionTime);
    archive.Since(11, v.pMacInFpmaEnabled);
    archive.Since(11, v.vlanIdEnabled);
    archive.Since(10, v.targetLLAddrOptionEnabled);
    archive.Since(9, v.fipVersion);
    archive.Since(8, v.fcoeRetryInterval);
    archive.Since(7, v.fcoeRetryCount);
    archive.Since(6, v.fcoeRequestRate);
    archive.Since(3, v.dhcpv4MaxOutstandingRequests);
    archive.Since(3, v.dhcpv6MaxOutstandingRequests);
    archive.Since(3, v.dhcpv4RequestRate);
    archive.Since(3, v.dhcpv6RequestRate);
    archive.OnlyIn(3, EUniqueIDMap<EObsoleteGreTunnel, EInterfaceTable const*>()); // thrown away
    archive.Since(2, As<int, unsigned int>(v.vpiMaskMode));
} // the interfaces follow in every version

void EInterfaceTable::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 14), m_values);
    EInterfaceItemList::SerializeOut(archive);
}

void EInterfaceTable::SerializeIn(EArchive& archive)
{
    Empty();
    EArchiveReader const reader(archive, {1, 14}, kSite);
    ArchiveLayout(reader, m_values);
    EInterfaceItemList::SerializeIn(archive);
    if (reader.Version() <= 4) ConvertOldStyleUnconnectedConfigs();
}

namespace {

/// Addresses that differ in their last byte only are neighbours in the table too: they mostly come in order, and what
/// the last one touched is in the cache then.
struct EAddressHash {
    std::size_t operator()(EIPAddress const& address) const
    {
        unsigned char const* const bytes = address.GetBytes();
        std::size_t const last = address.GetFamily() == kIPv4Family ? 3 : 15;
        return std::hash<std::string_view>()({reinterpret_cast<char const*>(bytes), last}) + bytes[last];
    }
};

/// Whether an old interface is an unconnected one if its gateway is another's address.
bool IsCandidate(EInterfaceItem const& item)
{
    return item.GetType() != INTERFACE_TYPE_GRE && item.GetType() != INTERFACE_TYPE_UNCONNECTED &&
           !item.GetIPv4AddressItem().GetGateway().IsZero();
}

/// Which interface FindConnectedInterfaceByIP would find if the one that asks were not there, for many questions to one
/// table; and who has to ask.
class EConnectedInterfaces {
public:
    explicit EConnectedInterfaces(EInterfaceItemList const& items)
    {
        m_ids.reserve(items.size());
        bool askedForIPv6 = false;
        for (auto position = items.begin(); position != items.end(); ++position) {
            EInterfaceItem const& item = *items.GetItem(position);
            EIPv4AddressItem const& ipv4 = item.GetIPv4AddressItem();
            askedForIPv6 |= ipv4.GetGateway().GetFamily() != kIPv4Family;
            if (item.GetType() != INTERFACE_TYPE_GRE && ipv4.GetAddress().GetFamily() == kIPv4Family)
                Add(ipv4.GetAddress(), position->first);
            if (IsCandidate(item)) m_candidates.push_back(position->first);
        }
        if (askedForIPv6) AddIPv6Addresses(items); // hardly ever
    }
    std::vector<unsigned int> const& GetCandidates() const { return m_candidates; } ///< Ascending ids.
    /// The id of the first interface but \p asking that has the address; null without one.
    unsigned int const* Find(EIPAddress const& address, unsigned int asking) const
    {
        auto const found = m_ids.find(address);
        if (found == m_ids.end()) return nullptr;
        auto const& [first, second] = found->second;
        if (first != asking) return &first;
        return second != asking ? &second : nullptr;
    }

private:
    /// The first two interfaces that have an address, by their ids; of one alone, twice its id.
    using Holders = std::pair<unsigned int, unsigned int>;

    void Add(EIPAddress const& address, unsigned int id) // ids come in ascending order
    {
        Holders& holders = m_ids.try_emplace(address, id, id).first->second;
        if (holders.second == holders.first) holders.second = id;
    }
    void AddIPv6Addresses(EInterfaceItemList const& items)
    {
        for (auto position = items.begin(); position != items.end(); ++position) {
            EInterfaceItem const& item = *items.GetItem(position);
            if (item.GetType() == INTERFACE_TYPE_GRE) continue;
            EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
            for (auto ipv6 = list.begin(); ipv6 != list.end(); ++ipv6) {
                EIPAddress const& address = list.GetItem(ipv6)->GetAddress();
                if (address.GetFamily() != kIPv4Family) Add(address, position->first);
            }
        }
    }

    std::pmr::monotonic_buffer_resource m_memory; // given back at once, not entry by entry
    std::pmr::unordered_map<EIPAddress, Holders, EAddressHash> m_ids{&m_memory};
    std::vector<unsigned int> m_candidates;
};

} // namespace

void EInterfaceTable::ConvertOldStyleUnconnectedConfigs()
{
    EConnectedInterfaces const connected(*this);
    EComponentId viaPath;
    for (unsigned int const id : connected.GetCandidates()) { // by id: a walk would wait for one after the other
        EInterfaceItem* const item = GetItem(id);
        if (!item || !IsCandidate(*item)) continue; // an observer has changed it meanwhile
        // On purpose not via itself, even where it is the first to have the address.
        unsigned int const* const viaId = connected.Find(item->GetIPv4AddressItem().GetGateway(), id);
        EInterfaceItem const* const via = viaId ? GetItem(*viaId) : nullptr;
        if (!via) continue;
        via->GetID(viaPath);
        item->SetType(INTERFACE_TYPE_UNCONNECTED);
        item->SetConnectedViaId(viaPath);
    }
}
