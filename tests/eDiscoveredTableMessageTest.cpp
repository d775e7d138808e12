#include "eDiscoveredTable.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using Calls = std::vector<std::string>;

// The operations of change streams: bytes written by hand, as they stand in the archive.

namespace {

struct Operation {
    char const* name;
    char const* hex;    // the continuation flag, the code, and the operands up to the record
    char const* golden; // the record, null for none
    Calls announced;    // when applied to the sample
    std::string infos;  // of the table afterwards, with the default MAC; empty: as before
};

/// The table that every operation is applied to, and its observer.
struct Sample {
    EDiscoveredTable table;
    boost::shared_ptr<DiscoveredRecorder> recorder = boost::make_shared<DiscoveredRecorder>();

    Sample()
    {
        EDiscoveredInfo info =
            Info(5, {Neighbor("02:00:00:00:00:01", {"10.0.0.1"}), Neighbor("02:00:00:00:00:02", {}, false)});
        info.AddAddress(IP("10.0.0.9"));
        table.AddInfo(info);
        table.AddInfo(Info(7));
        table.hooks = recorder;
    }
};

} // namespace

static char const* const kBefore =
    "(5 down 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host]) (7 down) "
    "default 5.1 02:00:00:00:00:01";

static std::string const kEnd = Bytes("00");
static std::string const kGoodOperation = Bytes("01 04 07 01"); // interface 7 goes up
static char const* const kGoodCall = "InterfaceWentUp(7 down)";

static std::string BytesOf(Operation const& operation)
{
    return Bytes(operation.hex) + (operation.golden ? Golden(operation.golden) : "");
}

/// Applies one message, which must be read to its end.
static void Apply(EDiscoveredTable& table, std::string const& message)
{
    EArchive archive;
    Load(archive, message);
    ApplyDiscoveredTableMessage(table, archive);
    EXPECT_TRUE(archive.AtEnd());
}

static char const* const kFive = "5 down 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host]";
static char const* const kGoldenInfo = "5 up 2001:db8::9 10.0.0.9 [3 02:00:00:00:00:03 router 10.0.0.3] "
                                       "[7 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7]";

/// Each code with a target.
static std::vector<Operation> const& WithTarget()
{
    static std::string const five(kFive);
    static std::string const golden(kGoldenInfo);
    static std::vector<Operation> const operations = {
        {"0: the whole table, which loses its default MAC",
         "01 00",
         "EDiscoveredTable.hex",
         {"SettingDiscoveredTable(" + std::string(kBefore) + ": (" + golden +
          ") (7 down [1 02:00:00:00:00:71 host]) default 5.3 00:00:00:00:00:00)"},
         "(" + golden + ") (7 down [1 02:00:00:00:00:71 host]) default 5.3 00:00:00:00:00:00"},
        {"1: AddInfo",
         "01 01",
         "EDiscoveredInfo.hex",
         {"AddingInfo(" + golden + ")"},
         "(" + golden + ") (7 down) default 5.3 02:00:00:00:00:03"},
        {"2: RemoveInfo",
         "01 02 05",
         nullptr,
         {"RemovingInfo(" + five + ")"},
         "(7 down) default 0.0 00:00:00:00:00:00"},
        {"3: SetInfo, which keeps its id",
         "01 03 05",
         "EDiscoveredInfo.defaults.hex",
         {"SettingInfo(" + five + ": 0 down)"},
         "(5 down) (7 down) default 0.0 00:00:00:00:00:00"},
        {"4: SetInterfaceUp",
         "01 04 05 01",
         nullptr,
         {"InterfaceWentUp(" + five + ")"},
         "(5 up 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"5: AddAddress",
         "01 05 05  12 20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 09",
         nullptr,
         {"AddingAddress(" + five + ": 2001:db8::9)"},
         "(5 down 10.0.0.9 2001:db8::9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"6: RemoveAddress",
         "01 06 05  11 0A 00 00 09",
         nullptr,
         {"RemovingAddress(" + five + ": 10.0.0.9)"},
         "(5 down [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"7: AddNeighbor, under a fresh id",
         "01 07 05",
         "EDiscoveredNeighbor.hex",
         {"AddingNeighbor(3 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host] "
         "[3 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7]) (7 down) default 5.1 02:00:00:00:00:01"},
        {"8: RemoveNeighbor",
         "01 08 05 01",
         nullptr,
         {"RemovingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1)"},
         "(5 down 10.0.0.9 [2 02:00:00:00:00:02 host]) (7 down) default 0.0 00:00:00:00:00:00"},
        {"9: SetNeighbor, which keeps its id, and the default MAC follows",
         "01 09 05 01",
         "EDiscoveredNeighbor.hex",
         {"SettingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1: 7 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:07"},
        {"10: SetIsRouter",
         "01 0A 05 02 01",
         nullptr,
         {"NeighborBecameRouter(2 02:00:00:00:00:02 host)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 router]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"11: SetMac",
         "01 0B 05 01  02 00 00 00 00 99",
         nullptr,
         {"NeighborMacChanging(1 02:00:00:00:00:01 router 10.0.0.1: 02:00:00:00:00:99)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:99 router 10.0.0.1] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"12: AddAddress of a neighbour",
         "01 0C 05 02  11 0A 00 00 02",
         nullptr,
         {"AddingNeighborAddress(2 02:00:00:00:00:02 host: 10.0.0.2)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 host 10.0.0.2]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"13: RemoveAddress of a neighbour",
         "01 0D 05 01  11 0A 00 00 01",
         nullptr,
         {"RemovingNeighborAddress(1 02:00:00:00:00:01 router 10.0.0.1: 10.0.0.1)"},
         "(5 down 10.0.0.9 [1 02:00:00:00:00:01 router] [2 02:00:00:00:00:02 host]) (7 down) "
         "default 5.1 02:00:00:00:00:01"},
        {"14: SetDHCPInfo", "01 0E 05", "EDHCPDiscoveredInfo.hex", {"SettingDHCPDiscoveredInfo(record: record)"}, ""},
        {"15: SetDHCPv6Info",
         "01 0F 05",
         "EDHCPv6DiscoveredInfo.hex",
         {"SettingDHCPv6DiscoveredInfo(record: record)"},
         ""},
        {"16: SetFCoEInfo",
         "01 10 05",
         "EFCoEDiscoveredInfo.v1110143C.hex",
         {"SettingFCoEDiscoveredInfo(record: record)"},
         ""},
        {"17: SetPTPInfo", "01 11 05", "EPTPDiscoveredInfo.v1.hex", {"SettingPTPDiscoveredInfo(record: record)"}, ""},
        {"18: SetDCBXInfo",
         "01 12 05",
         "EDCBXDiscoveredInfo.v10390129.hex",
         {"SettingDCBXDiscoveredInfo(record: record)"},
         ""},
    };
    return operations;
}

/// Each code that has a target, without it: no such interface, or no such neighbour of it; and unknown codes.
static std::vector<Operation> const& WithoutTarget()
{
    static std::vector<Operation> const operations = {
        {"2", "01 02 06", nullptr, {}, ""},
        {"3", "01 03 06", "EDiscoveredInfo.hex", {}, ""},
        {"4", "01 04 06 01", nullptr, {}, ""},
        {"5", "01 05 06  11 0A 00 00 09", nullptr, {}, ""},
        {"6", "01 06 06  11 0A 00 00 09", nullptr, {}, ""},
        {"6, no such address", "01 06 05  11 0A 00 00 08", nullptr, {}, ""},
        {"7", "01 07 06", "EDiscoveredNeighbor.hex", {}, ""},
        {"8", "01 08 06 01", nullptr, {}, ""},
        {"8, no such neighbour", "01 08 05 09", nullptr, {}, ""},
        {"9", "01 09 06 01", "EDiscoveredNeighbor.hex", {}, ""},
        {"9, no such neighbour", "01 09 05 09", "EDiscoveredNeighbor.hex", {}, ""},
        {"10", "01 0A 06 01 00", nullptr, {}, ""},
        {"10, no such neighbour", "01 0A 05 09 00", nullptr, {}, ""},
        {"11", "01 0B 06 01  02 00 00 00 00 99", nullptr, {}, ""},
        {"11, no such neighbour", "01 0B 05 09  02 00 00 00 00 99", nullptr, {}, ""},
        {"12", "01 0C 06 01  11 0A 00 00 02", nullptr, {}, ""},
        {"12, no such neighbour", "01 0C 05 09  11 0A 00 00 02", nullptr, {}, ""},
        {"13", "01 0D 06 01  11 0A 00 00 01", nullptr, {}, ""},
        {"13, no such neighbour", "01 0D 05 09  11 0A 00 00 01", nullptr, {}, ""},
        {"13, no such address", "01 0D 05 02  11 0A 00 00 01", nullptr, {}, ""},
        {"14", "01 0E 06", "EDHCPDiscoveredInfo.hex", {}, ""},
        {"15", "01 0F 06", "EDHCPv6DiscoveredInfo.hex", {}, ""},
        {"16", "01 10 06", "EFCoEDiscoveredInfo.v1110143C.hex", {}, ""},
        {"17", "01 11 06", "EPTPDiscoveredInfo.v1.hex", {}, ""},
        {"18", "01 12 06", "EDCBXDiscoveredInfo.v10390129.hex", {}, ""},
        {"unknown 19", "01 13", nullptr, {}, ""},
        {"unknown 20", "01 14", nullptr, {}, ""},
        {"unknown 255", "01 F8 FF", nullptr, {}, ""},
        {"unknown, the largest", "01 FB FF FF FF FF", nullptr, {}, ""},
    };
    return operations;
}

TEST(EDiscoveredTableMessage, AnEmptyStreamDoesNothing)
{
    Sample sample;
    Apply(sample.table, kEnd);
    EXPECT_EQ(kBefore, TextOf(sample.table));
    EXPECT_EQ(Calls{}, sample.recorder->TakeCalls());
}

TEST(EDiscoveredTableMessage, EveryCodeDoesItsOperationOnItsTarget)
{
    ASSERT_EQ(19U, WithTarget().size());
    for (Operation const& operation : WithTarget()) {
        SCOPED_TRACE(operation.name);
        Sample sample;
        ASSERT_EQ(kBefore, TextOf(sample.table));
        Apply(sample.table, BytesOf(operation) + kEnd);
        EXPECT_EQ(operation.announced, sample.recorder->TakeCalls());
        EXPECT_EQ(operation.infos.empty() ? kBefore : operation.infos, TextOf(sample.table));
        if (operation.infos.empty()) { // a protocol record, which the text does not show
            EXPECT_NE(std::string::npos, Written(*sample.table.GetInfo(5)).find(Golden(operation.golden)));
        }
    }
}

TEST(EDiscoveredTableMessage, AfterEveryCodeTheNextOperationIsAppliedNormally)
{
    for (Operation const& operation : WithTarget()) {
        SCOPED_TRACE(operation.name);
        Sample sample;
        Apply(sample.table, BytesOf(operation) + kGoodOperation + kEnd);
        EXPECT_TRUE(sample.table.GetInfo(7)->IsInterfaceUp());
        EXPECT_EQ("InterfaceWentUp", sample.recorder->Operations().back());
    }
}

TEST(EDiscoveredTableMessage, WithoutATargetTheOperandsAreDroppedAndTheNextOperationIsAppliedNormally)
{
    Sample expected;
    Apply(expected.table, kGoodOperation + kEnd);
    for (Operation const& operation : WithoutTarget()) {
        SCOPED_TRACE(operation.name);
        Sample sample;
        Apply(sample.table, BytesOf(operation) + kGoodOperation + kEnd);
        EXPECT_EQ(Calls{kGoodCall}, sample.recorder->TakeCalls());
        EXPECT_EQ(Written(expected.table), Written(sample.table));
    }
}

TEST(EDiscoveredTableMessage, TheTableOfCode0KeepsTheTwoIdsButLosesTheDefaultMAC)
{
    EDiscoveredTable source;
    source.AddInfo(Info(5, {Neighbor("02:00:00:00:00:01", {"10.0.0.1"})}));
    ASSERT_EQ("02:00:00:00:00:01", source.GetDefaultMAC().GetAsString());
    EDiscoveredTable table;
    Apply(table, Bytes("01 00") + Written(source) + kEnd);
    EXPECT_TRUE(table.HasDefaultMAC());
    EXPECT_EQ(5U, table.GetDefaultMACIfId());
    EXPECT_EQ(1U, table.GetDefaultMACNbrId());
    EXPECT_EQ(EMACAddress(), table.GetDefaultMAC());
    // Until one of the operations that look for it.
    Apply(table, Bytes("01 03 05") + Written(*source.GetInfo(5)) + kEnd);
    EXPECT_EQ("02:00:00:00:00:01", table.GetDefaultMAC().GetAsString());
}

TEST(EDiscoveredTableMessage, SetInfoWithoutATargetLooksForADefaultMACWhenThereIsNone)
{
    EDiscoveredTable table;
    table.AddInfo(Info(5, {Neighbor("02:00:00:00:00:01")}));
    Apply(table, Bytes("01 0C 05 01  11 0A 00 00 01") + kEnd); // an address: does not look for one
    EXPECT_FALSE(table.HasDefaultMAC());
    Apply(table, Bytes("01 03 06") + Golden("EDiscoveredInfo.defaults.hex") + kEnd);
    EXPECT_EQ("02:00:00:00:00:01", table.GetDefaultMAC().GetAsString());
}

TEST(EDiscoveredTableMessage, NothingBehindTheClosingFalseIsRead)
{
    Sample sample;
    EArchive archive;
    Load(archive, kGoodOperation + kEnd + Bytes("01 04 07 00") + kEnd);
    ApplyDiscoveredTableMessage(sample.table, archive);
    EXPECT_TRUE(sample.table.GetInfo(7)->IsInterfaceUp());
    EXPECT_FALSE(archive.AtEnd());
    ApplyDiscoveredTableMessage(sample.table, archive);
    EXPECT_FALSE(sample.table.GetInfo(7)->IsInterfaceUp());
    EXPECT_TRUE(archive.AtEnd());
}

TEST(EDiscoveredTableMessage, WithoutTheClosingFalseItIsAnArchiveErrorAndWhatWasAppliedStays)
{
    Sample sample;
    EArchive archive;
    Load(archive, kGoodOperation);
    EXPECT_THROW(ApplyDiscoveredTableMessage(sample.table, archive), EArchiveError);
    EXPECT_EQ(Calls{kGoodCall}, sample.recorder->TakeCalls());
    EXPECT_TRUE(sample.table.GetInfo(7)->IsInterfaceUp());
}

TEST(EDiscoveredTableMessage, AValueThatDoesNotFitIsAnArchiveErrorAndWhatWasAppliedStays)
{
    for (char const* const hex : {
             "02",                     // no bool
             "01 FC 01 00 00 00 00",   // a code of more than 32 bits
             "01 04 05 02",            // no bool
             "01 05 05 13 0A 00 00 01" // an unknown family
         }) {
        SCOPED_TRACE(hex);
        Sample sample;
        EArchive archive;
        Load(archive, kGoodOperation + Bytes(hex) + kEnd);
        EXPECT_THROW(ApplyDiscoveredTableMessage(sample.table, archive), EArchiveError);
        EXPECT_EQ(Calls{kGoodCall}, sample.recorder->TakeCalls());
        EXPECT_EQ(std::string(kBefore).replace(std::string(kBefore).find("7 down"), 6, "7 up"), TextOf(sample.table));
    }
}

TEST(EDiscoveredTableMessage, EveryPrefixOfALongStreamAppliesTheOperationsThatItHoldsWhole)
{
    // From 18 to 0: the later ones take away what the others need.
    std::vector<Operation> const operations(WithTarget().rbegin(), WithTarget().rend());
    Sample whole;
    std::string stream;
    std::vector<std::size_t> ends;
    std::vector<std::string> after = {Written(whole.table)}; // the table after so many operations
    std::vector<std::size_t> calls = {0};
    for (Operation const& operation : operations) {
        stream += BytesOf(operation);
        Apply(whole.table, BytesOf(operation) + kEnd);
        ends.push_back(stream.size());
        after.push_back(Written(whole.table));
        calls.push_back(whole.recorder->calls.size());
    }
    ASSERT_EQ(19U, calls.back());

    std::size_t applied = 0;
    for (std::size_t size = 0; size <= stream.size(); ++size) {
        while (applied < ends.size() && ends[applied] <= size) ++applied;
        Sample sample;
        EArchive archive;
        Load(archive, stream.substr(0, size));
        EXPECT_THROW(ApplyDiscoveredTableMessage(sample.table, archive), EArchiveError) << size;
        ASSERT_EQ(calls[applied], sample.recorder->calls.size()) << size;
        ASSERT_EQ(after[applied], Written(sample.table)) << size;
    }
    EXPECT_EQ(operations.size(), applied);
    Sample sample;
    Apply(sample.table, stream + kEnd);
    EXPECT_EQ(after.back(), Written(sample.table));
}

TEST(EDiscoveredTableMessageDeathTest, AnUnknownVersionInARecordEndsTheProcess)
{
    ChildResult const result = RunInChild([] {
        EDiscoveredTable table;
        Apply(table, Bytes("01 11 06 02")); // read even without a target
    });
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ(
        FatalArchiveMessage("x86_64/common/ifcore/ePTPDiscoveredInfo.cpp", 158, "EPTPDiscoveredInfo::SerializeIn"),
        result.output);
}
