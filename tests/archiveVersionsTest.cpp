// Every record that has an archive has golden files: of the version that it writes, which is the newest. That these
// files never change is checked by scripts/check-archives.
#include <ifcore/ifcore.hpp>

#include "golden.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

struct ArchivedRecord {
    char const* name;
    std::function<std::string()> written;                       // a fresh one
    std::function<std::string(std::string const&)> readWritten; // one that is read from these bytes
};

} // namespace

/// Fresh records are made from the arguments.
template <class Record, class... Argument> static ArchivedRecord Archived(char const* name, Argument... argument)
{
    auto const fresh = [argument...] { return Record(argument...); };
    return {name, [fresh] { return Written(fresh()); },
            [fresh](std::string const& bytes) {
                Record record = fresh();
                ReadInto(record, bytes);
                return Written(record);
            }};
}

/// Those that begin with their version.
static std::vector<ArchivedRecord> const kVersioned = {
    Archived<EInterfaceTable>("EInterfaceTable"),
    Archived<EInterfaceItem>("EInterfaceItem"),
    Archived<EInterfaceData_Ethernet>("EInterfaceData_Ethernet"),
    Archived<EInterfaceData_Atm>("EInterfaceData_Atm"),
    Archived<EInterfaceData_Ppp>("EInterfaceData_Ppp"),
    Archived<EInterfaceData_Gre>("EInterfaceData_Gre"),
    Archived<EInterfaceData_Routed>("EInterfaceData_Routed"),
    Archived<EIPv4AddressItem>("EIPv4AddressItem"),
    Archived<EIPv6AddressItem>("EIPv6AddressItem"),
    Archived<EObsoleteGreTunnel>("EObsoleteGreTunnel"),
    Archived<EDHCPTLV>("EDHCPTLV"),
    Archived<EDHCPProperties>("EDHCPProperties"),
    Archived<EDHCPv6Properties>("EDHCPv6Properties"),
    Archived<EFCoEConfig>("EFCoEConfig"),
    Archived<ENPIVConfig>("ENPIVConfig"),
    Archived<ENSRegOption>("ENSRegOption"),
    Archived<EPLOGIDestination>("EPLOGIDestination"),
    Archived<EFCNSQuery>("EFCNSQuery"),
    Archived<EPTPConfig>("EPTPConfig"),
    Archived<ELLDPConfig>("ELLDPConfig"),
    Archived<EDCBXConfig>("EDCBXConfig"),
    Archived<EDCBXControlTlv>("EDCBXControlTlv"),
    Archived<EDCBXFeatureTlv>("EDCBXFeatureTlv"),
    Archived<EDCBXFeatureTlvHeader, unsigned char, unsigned char>("EDCBXFeatureTlvHeader", 2, 0),
    Archived<EFCoEDiscoveredInfo>("EFCoEDiscoveredInfo"),
    Archived<EPTPClockStats>("EPTPClockStats"),
    Archived<EPTPDiscoveredInfo>("EPTPDiscoveredInfo"),
    Archived<EDCBXDiscoveredInfo>("EDCBXDiscoveredInfo"),
};
/// Those whose layout can never change.
static std::vector<ArchivedRecord> const kUnversioned = {
    Archived<EDHCPDiscoveredInfo>("EDHCPDiscoveredInfo"), Archived<EDHCPv6DiscoveredInfo>("EDHCPv6DiscoveredInfo"),
    Archived<EDiscoveredNeighbor>("EDiscoveredNeighbor"), Archived<EDiscoveredInfo>("EDiscoveredInfo"),
    Archived<EDiscoveredTable>("EDiscoveredTable"),       Archived<ELLDPConfig::LLDPChassisId>("LLDPChassisId"),
    Archived<ELLDPConfig::LLDPPortId>("LLDPPortId"),
};
/// Rows of EDCBXDiscoveredInfo, whose golden files hold them.
static std::vector<std::string> const kRows = {"LocalAndPeerLLDPInfo", "OperAndPeerDCBXInfo"};

static std::filesystem::path const kGoldenFolder = IFCORE_GOLDEN_DIR;

/// The classes that declare SerializeOut in the library's headers.
static std::set<std::string> ClassesWithArchive()
{
    std::regex const opening(R"(^( *)(?:class|struct) (?:IFCORE_API )?(\w+).*\{$)");
    std::regex const writing(R"(^( *)void SerializeOut\(EArchive& archive\) const.*)");
    std::set<std::string> classes;
    for (auto const& entry : std::filesystem::directory_iterator(kGoldenFolder / "../../common/ifcore")) {
        if (entry.path().extension() != ".hpp") continue;
        std::ifstream header(entry.path());
        std::vector<std::string> open; // by depth
        for (std::string line; std::getline(header, line);) {
            std::smatch match;
            if (std::regex_match(line, match, opening)) {
                open.resize(static_cast<std::size_t>(match[1].length()) / 4);
                open.push_back(match[2]);
            } else if (std::regex_match(line, match, writing)) {
                classes.insert(open.at(static_cast<std::size_t>(match[1].length()) / 4 - 1));
            }
        }
    }
    return classes;
}

/// By the golden files "<record>.v<version>.hex"; 0 without one. Date-like versions are written with 8 hexadecimal
/// digits.
static unsigned long NewestGoldenVersion(std::string const& record)
{
    std::regex const versioned(record + R"(\.v([0-9A-F]+)\.hex)");
    unsigned long newest = 0;
    for (auto const& entry : std::filesystem::directory_iterator(kGoldenFolder)) {
        std::string const name = entry.path().filename();
        std::smatch match;
        if (!std::regex_match(name, match, versioned)) continue;
        newest = std::max(newest, std::stoul(match[1], nullptr, match[1].length() == 8 ? 16 : 10));
    }
    return newest;
}

static std::string GoldenName(std::string const& record, unsigned long version)
{
    char digits[32];
    std::snprintf(digits, sizeof digits, version > 0xFFFF ? "%08lX" : "%lu", version);
    return record + ".v" + digits + ".hex";
}

/// The other golden files of the table hold an interface of an old version.
static std::string NameOfWritten(std::string const& record)
{
    return record == "EInterfaceTable" ? "EInterfaceTable.noInterfaces" : record;
}

TEST(ArchiveVersions, EveryRecordWithAnArchiveIsChecked)
{
    std::set<std::string> checked(kRows.begin(), kRows.end());
    for (ArchivedRecord const& record : kVersioned) checked.insert(record.name);
    for (ArchivedRecord const& record : kUnversioned) checked.insert(record.name);
    EXPECT_EQ(ClassesWithArchive(), checked);
}

TEST(ArchiveVersions, TheNewestGoldenFileIsOfTheVersionThatIsWrittenAndHoldsWhatIsWritten)
{
    for (ArchivedRecord const& record : kVersioned) {
        SCOPED_TRACE(record.name);
        EArchive archive;
        Load(archive, record.written());
        unsigned long version = 0;
        archive >> version;
        ASSERT_EQ(version, NewestGoldenVersion(record.name));
        std::string const golden = Golden(GoldenName(NameOfWritten(record.name), version));
        EXPECT_EQ(golden, record.readWritten(golden));
    }
}

TEST(ArchiveVersions, RecordsWithoutVersionHaveOneGoldenFileThatHoldsWhatIsWritten)
{
    for (ArchivedRecord const& record : kUnversioned) {
        SCOPED_TRACE(record.name);
        EXPECT_EQ(0U, NewestGoldenVersion(record.name));
        std::string const golden = Golden(record.name + std::string(".hex"));
        EXPECT_EQ(golden, record.readWritten(golden));
    }
}
