#include "eDiscoveredTable.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

static char const* const kGoldenText =
    "(5 up 2001:db8::9 10.0.0.9 [3 02:00:00:00:00:03 router 10.0.0.3] [7 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7]) "
    "(7 down [1 02:00:00:00:00:71 host]) default 5.3 02:00:00:00:00:03";

TEST(EDiscoveredTableArchive, WritesAndReadsTheGoldenBytes)
{
    EDiscoveredTable table;
    table.AddInfo(Read<EDiscoveredInfo>("EDiscoveredInfo.hex"));
    table.AddInfo(Info(7, {Neighbor("02:00:00:00:00:71", {}, false)}));
    EXPECT_EQ(kGoldenText, TextOf(table));
    EXPECT_EQ(Golden("EDiscoveredTable.hex"), Written(table));
    EXPECT_EQ(Golden("EDiscoveredTable.defaults.hex"), Written(EDiscoveredTable()));

    EDiscoveredTable read;
    ReadInto(read, Golden("EDiscoveredTable.hex"));
    EXPECT_EQ(kGoldenText, TextOf(read));
    EXPECT_EQ(Golden("EDiscoveredTable.hex"), Written(read)); // the generators too
    ReadInto(read, Golden("EDiscoveredTable.defaults.hex"));
    EXPECT_EQ("default 0.0 00:00:00:00:00:00", TextOf(read));
}

TEST(EDiscoveredTableArchive, ReadingReplacesTheContentsTellsNobodyAndKeepsTheObserver)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    in.table.AddInfo(Info(9));
    in.recorder->Clear();
    ReadInto(in.table, Golden("EDiscoveredTable.hex"));
    EXPECT_EQ(kGoldenText, TextOf(in.table));
    EXPECT_TRUE(in.recorder->calls.empty());
    EXPECT_EQ(in.recorder, in.table.hooks);
    EDiscoveredInfo const& info = *in.table.GetInfo(5);
    EXPECT_EQ(&in.table, info.GetParent());
    EXPECT_EQ(&info, info.GetNeighbor(3)->GetParent());
    EXPECT_EQ(&info, info.GetPTPInfo().GetParent());
    EXPECT_EQ(info.GetNeighbor(7), info.FindNeighborByIP(IP("2001:db8::7")));
    EXPECT_EQ(in.recorder.get(), &info.GetNeighbor(3)->GetHooks());
}

TEST(EDiscoveredTableArchive, TheDefaultMACIsTakenAsItIsStored)
{
    std::string bytes = Golden("EDiscoveredTable.hex");
    bytes.replace(bytes.size() - 8, 8, Bytes("63 58 02 00 00 00 00 99")); // of nobody that is there
    EDiscoveredTable table;
    ReadInto(table, bytes);
    EXPECT_EQ(99U, table.GetDefaultMACIfId());
    EXPECT_EQ(88U, table.GetDefaultMACNbrId());
    EXPECT_EQ("02:00:00:00:00:99", table.GetDefaultMAC().GetAsString());
    EXPECT_EQ(bytes, Written(table));
}

TEST(EDiscoveredTableArchive, EveryCutIsAnArchiveErrorAndLeavesAUsableTable)
{
    std::string const bytes = Golden("EDiscoveredTable.hex");
    std::size_t const firstInfo = 2 + Golden("EDiscoveredInfo.hex").size();
    std::size_t const bothInfos = bytes.size() - 8;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        RecordedInfo in;
        in.info.AddNeighbor(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
        in.recorder->Clear();
        EArchive archive;
        Load(archive, bytes.substr(0, size));
        EXPECT_THROW(archive >> in.table, EArchiveError);
        EXPECT_TRUE(in.recorder->calls.empty());
        // The infos that were read as a whole are there.
        EXPECT_EQ(size < firstInfo ? 0U : size < bothInfos ? 1U : 2U, in.table.GetInfos().size());
        EXPECT_EQ(size >= firstInfo, in.table.GetInfo(5) != nullptr);
        if (EDiscoveredInfo* const info = in.table.GetInfo(5)) {
            EXPECT_EQ(&in.table, info->GetParent());
            EXPECT_EQ(info->GetNeighbor(3), info->FindNeighborByIP(IP("10.0.0.3")));
        }
        // And the default MAC is what it was, as far as it was not read.
        EXPECT_EQ("02:00:00:00:00:01", in.table.GetDefaultMAC().GetAsString());
        EXPECT_EQ(5U, in.table.GetDefaultMACIfId());
        EXPECT_EQ(size < bytes.size() - 6 ? 1U : 3U, in.table.GetDefaultMACNbrId());

        in.table.AddInfo(Info(4, {Neighbor("02:00:00:00:00:04", {"10.0.0.4"})}));
        in.table.FindDefaultMAC();
        EXPECT_EQ("02:00:00:00:00:04", in.table.GetDefaultMAC().GetAsString());
    }
}

TEST(EDiscoveredTableArchive, ReadingFromAnArchiveThatIsWrittenEmptiesIt)
{
    EDiscoveredTable table;
    ReadInto(table, Golden("EDiscoveredTable.hex"));
    EArchive archive;
    archive >> table;
    EXPECT_EQ("default 0.0 00:00:00:00:00:00", TextOf(table));
}

TEST(EDiscoveredTableArchiveDeathTest, AnUnknownVersionInsideEndsTheProcess)
{
    std::string bytes = Golden("EDiscoveredTable.hex");
    std::string const version = Bytes("FB 11 10 14 3C"); // of the first FCoE record
    bytes.replace(bytes.find(version), version.size(), Bytes("FB 11 10 14 3D"));
    ChildResult const result = RunInChild([&bytes] {
        EDiscoveredTable table;
        ReadInto(table, bytes);
    });
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ(
        FatalArchiveMessage("x86_64/common/ifcore/eFCoEDiscoveredInfo.cpp", 210, "EFCoEDiscoveredInfo::SerializeIn"),
        result.output);
}
