#include "discoveredChecks.hpp"

#include "archives.hpp"
#include "require.hpp"
#include "tableRules.hpp"

#include <map>
#include <string>

void FillWithTwoInfos(EDiscoveredTable& table)
{
    EDiscoveredInfo info;
    info.SetLocalId(5);
    info.AddAddress(EIPAddress("192.0.2.9"));
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress("02:00:5e:10:00:01"));
    neighbor.AddAddress(EIPAddress("192.0.2.1"));
    neighbor.AddAddress(EIPAddress("2001:db8::1"));
    info.AddNeighbor(neighbor);
    neighbor = EDiscoveredNeighbor();
    neighbor.SetMac(EMACAddress("02:00:5e:10:00:02"));
    neighbor.SetIsRouter(false);
    info.AddNeighbor(neighbor);
    table.AddInfo(info);
    info = EDiscoveredInfo();
    info.SetLocalId(7);
    table.AddInfo(info);
}

namespace {

/// Calls \p visit with the key and the item of each item of a container.
template <class List, class Visit> void ForEach(List const& list, Visit visit)
{
    for (auto position = list.begin(); position != list.end(); ++position)
        visit(position->first, *list.GetItem(position));
}

/// On purpose a look-up may find nobody, or somebody else.
void CheckFindsNeighbors(EDiscoveredInfo const& info, EDiscoveredNeighbor const& neighbor)
{
    EDiscoveredNeighbor const* const byMac = info.FindNeighborByMAC(neighbor.GetMac());
    Require(!byMac || info.GetNeighbor(byMac->GetLocalId()) == byMac, "what is found by a MAC is a neighbour");
    for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address) {
        EDiscoveredNeighbor const* const found = info.FindNeighborByIP(*address);
        Require(!found || info.GetNeighbor(found->GetLocalId()) == found, "what is found by an address is a neighbour");
    }
}

/// Each of the infos' own addresses is found in the first info that has it.
void CheckLookups(EDiscoveredTable const& table)
{
    std::size_t most = 256; // since a scan of all for each would take the square of their number
    std::map<std::string, EDiscoveredInfo const*> first;
    ForEach(table.GetInfos(), [&](unsigned int, EDiscoveredInfo const& info) {
        for (unsigned int i = 0; i < info.GetAddressCount() && most > 0; ++i, --most) {
            EIPAddress const& address = *info.GetAddressAt(i);
            Require(info.HasAddress(address), "an info has its addresses");
            Require(table.FindInfoByIP(address) == first.emplace(address.GetAsString(), &info).first->second,
                    "the first info that has an address is found by it");
        }
    });
}

bool IsDefault(EDiscoveredTable const& table, unsigned int info, unsigned int neighbor, EMACAddress const& mac)
{
    return table.GetDefaultMACIfId() == info && table.GetDefaultMACNbrId() == neighbor && table.GetDefaultMAC() == mac;
}

/// FindDefaultMAC takes what a scan finds.
void CheckDefaultMAC(EDiscoveredTable const& table)
{
    EDiscoveredTable copy(table);
    copy.FindDefaultMAC();
    bool isFound = false;
    ForEach(table.GetInfos(), [&](unsigned int infoId, EDiscoveredInfo const& info) {
        ForEach(info.GetNeighbors(), [&](unsigned int id, EDiscoveredNeighbor const& neighbor) {
            if (isFound || neighbor.GetAddressCount() == 0) return;
            isFound = true;
            Require(IsDefault(copy, infoId, id, neighbor.GetMac()), "the first neighbour with an address is found");
        });
    });
    Require(isFound || IsDefault(copy, 0, 0, EMACAddress()), "without one there is no default MAC");
}

void CheckIndexes(EDiscoveredInfo const& info)
{
    std::map<std::string, EDiscoveredNeighbor const*> byMac;
    std::map<std::string, EDiscoveredNeighbor const*> byAddress;
    ForEach(info.GetNeighbors(), [&](unsigned int, EDiscoveredNeighbor const& neighbor) {
        byMac[neighbor.GetMac().GetAsString()] = &neighbor;
        for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
            byAddress[address->GetAsString()] = &neighbor;
    });
    ForEach(info.GetNeighbors(), [&](unsigned int, EDiscoveredNeighbor const& neighbor) {
        EMACAddress const& mac = neighbor.GetMac();
        Require(info.FindNeighborByMAC(mac) == byMac[mac.GetAsString()], "the last neighbour with a MAC is found");
        for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
            Require(info.FindNeighborByIP(*address) == byAddress[address->GetAsString()],
                    "the last neighbour with an address is found");
    });
}

} // namespace

void CheckTable(EDiscoveredTable const& table)
{
    char const* const broken = BrokenRule(table);
    Require(!broken, broken);
    ForEach(table.GetInfos(), [](unsigned int, EDiscoveredInfo const& info) {
        ForEach(info.GetNeighbors(),
                [&](unsigned int, EDiscoveredNeighbor const& neighbor) { CheckFindsNeighbors(info, neighbor); });
    });
    CheckLookups(table);
    CheckDefaultMAC(table);
    EDiscoveredTable copy(table);
    copy.SetDefaultMAC(table.GetDefaultMACIfId(), table.GetDefaultMACNbrId(), table.GetDefaultMAC());
    Require(Written(copy) == Written(table), "a copy writes the same bytes");
}

void CheckReadTable(EDiscoveredTable const& table)
{
    CheckTable(table);
    ForEach(table.GetInfos(), [](unsigned int, EDiscoveredInfo const& info) { CheckIndexes(info); });
}
