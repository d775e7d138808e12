#pragma once

#include "eIPAddress.hpp"
#include "eVLAN.hpp"
#include "ifcore/eInterfaceTable.hpp"
#include "ifcore/eInterfaceTableHooks.hpp"

#include <map>

/// Learns from Rebuild and from interfaces as they are added.
class MINIMAL_HOST_API EIPLookupInterfaceTableHooks : public EIgnoreInterfaceTableHooks {
public:
    unsigned int GetInterfaceId(EIPAddress const& address) const
    {
        auto const found = m_ids.find(address);
        return found == m_ids.end() ? 0 : found->second;
    }
    unsigned int GetInterfaceIdFromVlan(EIPAddress const& address, EVLAN const&) const
    {
        return GetInterfaceId(address);
    }
    void Rebuild(EInterfaceTable const& table)
    {
        m_ids.clear();
        for (auto position = table.begin(); position != table.end(); ++position) Learn(*table.GetItem(position));
    }
    void AddingInterfaceItem(EInterfaceItem const& item) override { Learn(item); }

private:
    void Learn(EInterfaceItem const& item)
    {
        m_ids.emplace(item.GetIPv4AddressItem().GetAddress(), item.GetLocalId());
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto position = list.begin(); position != list.end(); ++position)
            m_ids.emplace(list.GetItem(position)->GetAddress(), item.GetLocalId());
    }

    std::map<EIPAddress, unsigned int> m_ids;
};
