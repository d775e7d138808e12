#include "eDcbxDiscoveredInfo.hpp"

#include <gtest/gtest.h>

#include <string>

/// Made before every other object of the process, those of the library included, which this program contains.
struct MadeFirst {
    std::string names;
    std::string rows;

    MadeFirst()
    {
        for (int const type : {1, 2, 3, 4, 5, 6})
            names += EDCBXDiscoveredInfo::GetDCBXInfoName(static_cast<unsigned char>(type), 0, 2) + ";";
        EDCBXDiscoveredInfo const info;
        for (auto const& row : info.GetLocalAndPeerLLDPInfoList()) rows += row.name + ";";
    }
};
static MadeFirst const s_madeFirst __attribute__((init_priority(101)));

TEST(EDCBXDiscoveredInfoStart, TheNamesDoNotDependOnTheOrderInWhichObjectsAreMade)
{
    EXPECT_EQ("Control;Priority Group;PFC;FCoE;iSCSI;Custom:6,0;", s_madeFirst.names);
    EXPECT_EQ("LLDP-Chassis Id;LLDP-Port Id;LLDP-Time To Live;", s_madeFirst.rows);
}
