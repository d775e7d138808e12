#include "archives.hpp"

#include "tlvMessages.hpp"

void ExpectLinked(EInterfaceTable const& table)
{
    ExpectConsistent(table);
}

void ExpectLinked(EDiscoveredInfo const& info)
{
    EXPECT_EQ(&info, info.GetDHCPInfo().GetParent());
    EXPECT_EQ(&info, info.GetDHCPv6Info().GetParent());
    EXPECT_EQ(&info, info.GetFCoEInfo().GetParent());
    EXPECT_EQ(&info, info.GetPTPInfo().GetParent());
    EXPECT_EQ(&info, info.GetDCBXInfo().GetParent());
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position) {
        EDiscoveredNeighbor const& neighbor = *neighbors.GetItem(position);
        EXPECT_EQ(&info, neighbor.GetParent());
        EXPECT_EQ(position->first, neighbor.GetLocalId());
        // Nobody may be found, as reading failed before the look-ups were made; else one that is there.
        if (EDiscoveredNeighbor const* const found = info.FindNeighborByMAC(neighbor.GetMac())) {
            EXPECT_EQ(found, info.GetNeighbor(found->GetLocalId()));
        }
    }
}

void ExpectLinked(EDiscoveredTable const& table)
{
    EDiscoveredInfoList const& infos = table.GetInfos();
    for (auto position = infos.begin(); position != infos.end(); ++position) {
        EDiscoveredInfo const& info = *infos.GetItem(position);
        EXPECT_EQ(&table, info.GetParent());
        EXPECT_EQ(position->first, info.GetLocalId());
        ExpectLinked(info);
    }
}
