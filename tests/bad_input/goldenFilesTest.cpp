// Every golden archive and message, made bad in all ways and read.
#include "archives.hpp"
#include "commands.hpp"
#include "messages.hpp"

#include "eDcbxConfig.hpp"
#include "eFCoECompanions.hpp"
#include "ePTPDiscoveredInfo.hpp"

#include "golden.hpp"

#include <gtest/gtest.h>

#include <fnmatch.h>

#include <cctype>
#include <fstream>
#include <ostream>
#include <sstream>
#include <vector>

namespace {

struct FeatureHeader : EDCBXFeatureTlvHeader {
    FeatureHeader() : EDCBXFeatureTlvHeader(0, 0) {}
};

/// How the golden files of some names are read.
struct Row {
    char const* pattern; // as in a shell
    char const* what;
    void (*check)(std::string const& good);
};
void PrintTo(Row const& row, std::ostream* out)
{
    *out << row.pattern << " as " << row.what;
}

/// A file may be in several rows. All names but those of the program's folders.
Row const kRows[] = {
    {"EDCBXConfig.*", "Archive", CheckArchive<EDCBXConfig>},
    {"EDCBXControlTlv.*", "Archive", CheckArchive<EDCBXControlTlv>},
    {"EDCBXDiscoveredInfo.*", "Archive", CheckArchive<EDCBXDiscoveredInfo>},
    {"EDCBXFeatureTlv.*", "Archive", CheckArchive<EDCBXFeatureTlv>},
    {"EDCBXFeatureTlvHeader.*", "Archive", CheckArchive<FeatureHeader>},
    {"EDHCPDiscoveredInfo.*", "Archive", CheckArchive<EDHCPDiscoveredInfo>},
    {"EDHCPProperties.*", "Archive", CheckArchive<EDHCPProperties>},
    {"EDHCPProperties.*", "Set", CheckLeafSet<24>},
    {"EDHCPTLV.*", "Archive", CheckArchive<EDHCPTLV>},
    {"EDHCPv6DiscoveredInfo.*", "Archive", CheckArchive<EDHCPv6DiscoveredInfo>},
    {"EDHCPv6Properties.*", "Archive", CheckArchive<EDHCPv6Properties>},
    {"EDHCPv6Properties.*", "Set", CheckLeafSet<26>},
    {"EDiscoveredInfo.hex", "Archive", CheckArchive<EDiscoveredInfo>},
    {"EDiscoveredInfo.defaults.hex", "Archive", CheckArchive<EDiscoveredInfo>},
    {"EDiscoveredNeighbor.*", "Archive", CheckArchive<EDiscoveredNeighbor>},
    {"EDiscoveredTable.*", "Archive", CheckArchive<EDiscoveredTable>},
    {"EDiscoveredTableMessage.*", "ChangeStream", CheckChangeStream},
    {"EFCNSQuery.*", "Archive", CheckArchive<EFCNSQuery>},
    {"EFCoEConfig.*", "Archive", CheckArchive<EFCoEConfig>},
    {"EFCoEConfig.*", "Set", CheckLeafSet<31>},
    {"EFCoEDiscoveredInfo.*v1*", "Archive", CheckArchive<EFCoEDiscoveredInfo>},
    {"EIPv4AddressItem.*", "Archive", CheckArchive<EIPv4AddressItem>},
    {"EIPv4AddressItem.*", "Set", CheckLeafSet<6>},
    {"EIPv6AddressItem.*", "Archive", CheckArchive<EIPv6AddressItem>},
    {"EIPv6AddressItem.*", "Add", CheckIPv6Add},
    {"EIPv6AddressItem.*", "Set", CheckIPv6Set},
    {"EInterfaceData_Atm.*", "Archive", CheckArchive<EInterfaceData_Atm>},
    {"EInterfaceData_Ethernet.*", "Archive", CheckArchive<EInterfaceData_Ethernet>},
    {"EInterfaceData_Gre.*", "Archive", CheckArchive<EInterfaceData_Gre>},
    {"EInterfaceData_Ppp.*", "Archive", CheckArchive<EInterfaceData_Ppp>},
    {"EInterfaceData_Routed.*", "Archive", CheckArchive<EInterfaceData_Routed>},
    {"EInterfaceItem.v?.hex", "Archive", CheckArchive<EInterfaceItem>},
    {"EInterfaceItem.v1[0-5].hex", "Archive", CheckArchive<EInterfaceItem>},
    {"EInterfaceItem.v16.hex", "Archive", CheckArchive<EInterfaceItem>},
    {"EInterfaceItem.defaults.v*", "Archive", CheckArchive<EInterfaceItem>},
    {"EInterfaceItem.ethernetAndGre.*", "Archive", CheckArchive<EInterfaceItem>},
    {"EInterfaceItem.v1.hex", "Add", CheckInterfaceAdd},
    {"EInterfaceItem.v?.hex", "Set", CheckInterfaceSet},
    {"EInterfaceItem.v16.hex", "Set", CheckInterfaceSet},
    {"EInterfaceItem.defaults.v*", "Set", CheckInterfaceSet},
    {"EInterfaceTable.*", "Archive", CheckArchive<EInterfaceTable>},
    {"EInterfaceTable.*", "Set", CheckTableSet},
    {"ELLDPConfig.*", "Archive", CheckArchive<ELLDPConfig>},
    {"ENPIVConfig.*", "Archive", CheckArchive<ENPIVConfig>},
    {"ENPIVConfig.*", "Set", CheckLeafSet<32>},
    {"ENSRegOption.*", "Archive", CheckArchive<ENSRegOption>},
    {"EObsoleteGreTunnel.*", "Archive", CheckArchive<EObsoleteGreTunnel>},
    {"EPLOGIDestination.*", "Archive", CheckArchive<EPLOGIDestination>},
    {"EPTPClockStats.*v?.hex", "Archive", CheckArchive<EPTPClockStats>},
    {"EPTPConfig.*", "Archive", CheckArchive<EPTPConfig>},
    {"EPTPDiscoveredInfo.*", "Archive", CheckArchive<EPTPDiscoveredInfo>},
    {"LLDPChassisId.hex", "Archive", CheckArchive<ELLDPConfig::LLDPChassisId>},
    {"LLDPPortId.hex", "Archive", CheckArchive<ELLDPConfig::LLDPPortId>},
    {"TLV.wholeTable.hex", "ListLevel", CheckListLevel},
    {"TLV.Add.interface.hex", "ListLevel", CheckListLevel},
    {"TLV.Edit.interface.[a-g]*", "ListLevel", CheckListLevel},
    {"TLV.Edit.interface.[h-z]*", "ListLevel", CheckListLevel},
    {"TLV.levelInterface.hex", "InterfaceLevel", CheckInterfaceLevel},
    {"TLV.interface.*", "InterfaceLevel", CheckInterfaceLevel},
    {"TLV.IFD_*", "InterfaceLevel", CheckInterfaceLevel},
    {"TLV.levelVLAN.hex", "InsideVLAN", CheckInnerLevel<Inside::VLAN>},
    {"TLV.DHCP_CustomTLVList.hex", "InsideDHCP", CheckInnerLevel<Inside::DHCP>},
    {"TLV.levelIPv4.hex", "InsideIPv4", CheckInnerLevel<Inside::IPv4>},
    {"TLV.levelIPv6List.hex", "InsideIPv6List", CheckInnerLevel<Inside::IPv6List>},
    {"TLV.Add.ipv6.hex", "InsideIPv6List", CheckInnerLevel<Inside::IPv6List>},
    {"TLV.levelATMEncapsulation.hex", "InsideATMEncapsulation", CheckInnerLevel<Inside::ATMEncapsulation>},
};

/// Files that are no record of their own: others name them by a line "@<name>" and are read with all of their bytes.
char const* const kParts[] = {
    "EDiscoveredInfo.recordDefaults.hex",
    "EFCoEDiscoveredInfo.from*.hex",
    "EInterfaceItem.flat*.hex",
    "EInterfaceItem.from*.hex",
    "EInterfaceItem.toPerTypeData.defaults.*",
    "EPTPClockStats.fromClockIdentity.hex",
};

bool Matches(char const* pattern, std::string const& name)
{
    return fnmatch(pattern, name.c_str(), 0) == 0;
}

bool IsPart(std::string const& name)
{
    for (char const* const pattern : kParts)
        if (Matches(pattern, name)) return true;
    return false;
}

bool IsNamedByAnother(std::string const& name)
{
    for (std::string const& other : GoldenNames("")) {
        std::ifstream file(IFCORE_GOLDEN_DIR "/" + other);
        std::string word;
        while (file >> word)
            if (word == "@" + name) return true;
    }
    return false;
}

class BadInputOf : public testing::TestWithParam<Row> {};

} // namespace

TEST(BadInput, IsMadeOfEveryGoldenFile)
{
    std::vector<std::string> const names = GoldenNames("");
    ASSERT_FALSE(names.empty());
    for (std::string const& name : names) {
        SCOPED_TRACE(name);
        bool taken = IsPart(name) && IsNamedByAnother(name);
        for (Row const& row : kRows) taken = taken || Matches(row.pattern, name);
        EXPECT_TRUE(taken) << "no row tells how it is read";
    }
}

TEST_P(BadInputOf, IsRefusedOrReadAndLeavesEverythingWhole)
{
    int files = 0;
    for (std::string const& name : GoldenNames("")) {
        if (!Matches(GetParam().pattern, name)) continue;
        ++files;
        SCOPED_TRACE(name);
        GetParam().check(Golden(name));
        if (HasFailure()) return;
    }
    EXPECT_LT(0, files) << "the row is for nothing";
}

INSTANTIATE_TEST_SUITE_P(, BadInputOf, testing::ValuesIn(kRows), [](auto const& row) {
    std::string name;
    for (char const c : std::string(row.param.pattern) + row.param.what)
        if (std::isalnum(static_cast<unsigned char>(c))) name += c;
    return name;
});
