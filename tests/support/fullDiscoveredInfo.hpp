#pragma once

#include "discoveredRecorder.hpp"

#include "eDiscoveredInfo.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// An info with something in each of its parts, and what tests ask of infos.

inline std::vector<char const*> const kMacs = {"02:00:00:00:00:01", "02:00:00:00:00:02", "02:00:00:00:00:03"};

/// Every record that the info holds points at it.
inline void ExpectAdopted(EDiscoveredInfo const& info)
{
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    EXPECT_EQ(&info, neighbors.GetParent());
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position)
        EXPECT_EQ(&info, neighbors.GetItem(position)->GetParent());
    EXPECT_EQ(&info, info.GetDHCPInfo().GetParent());
    EXPECT_EQ(&info, info.GetDHCPv6Info().GetParent());
    EXPECT_EQ(&info, info.GetFCoEInfo().GetParent());
    EXPECT_EQ(&info, info.GetPTPInfo().GetParent());
    EXPECT_EQ(&info, info.GetDCBXInfo().GetParent());
}

/// The id of the neighbour that is found; 0 when there is none.
inline unsigned int ByMac(EDiscoveredInfo const& info, char const* mac)
{
    EDiscoveredNeighbor const* const found = info.FindNeighborByMAC(MAC(mac));
    return found ? found->GetLocalId() : 0;
}
inline unsigned int ByIp(EDiscoveredInfo const& info, char const* address)
{
    EDiscoveredNeighbor const* const found = info.FindNeighborByIP(IP(address));
    return found ? found->GetLocalId() : 0;
}

/// An info of id 7 with something in each of its parts.
inline EDiscoveredInfo FullInfo()
{
    EDiscoveredInfo info = Info(7, {Neighbor(kMacs[0], {"10.0.0.1"}), Neighbor(kMacs[1], {"10.0.0.2"}, false)});
    info.SetInterfaceUp(true);
    info.AddAddress(IP("10.0.0.9"));
    info.AddAddress(IP("2001:db8::9"));
    info.GetDHCPInfo().SetLeaseTimer(11);
    info.GetDHCPv6Info().SetIARenewTime(12);
    info.GetFCoEInfo().SetDiscoveredSourceId(13);
    info.GetPTPInfo().SetDiscoveredState("SLAVE");
    info.GetDCBXInfo().ClearOperAndPeerInfoList();
    info.GetDCBXInfo().SetLocalAndPeerLLDPInfoList({});
    return info;
}
inline char const* const kFullText = "7 up 10.0.0.9 2001:db8::9 [1 02:00:00:00:00:01 router 10.0.0.1] "
                                     "[2 02:00:00:00:00:02 host 10.0.0.2]";

/// What FullInfo() put into the protocol records.
inline std::string ProtocolText(EDiscoveredInfo const& info)
{
    return std::to_string(info.GetDHCPInfo().GetLeaseTimer()) + " " +
           std::to_string(info.GetDHCPv6Info().GetIARenewTime()) + " " +
           std::to_string(info.GetFCoEInfo().GetDiscoveredSourceId()) + " " +
           info.GetPTPInfo().GetDiscoveredStateAsString() + " " +
           std::to_string(info.GetDCBXInfo().GetLocalAndPeerLLDPInfoList().size());
}
inline char const* const kFullProtocols = "11 12 13 SLAVE 0";
inline char const* const kNoProtocols = "0 0 0 UNKNOWN 3";
