#include "eDiscoveredInfo.hpp"

#include "discoveredRecorder.hpp"
#include "discoveredRecords.hpp"
#include "fullDiscoveredInfo.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

using Calls = std::vector<std::string>;

static char const* const kGoldenText = "5 up 2001:db8::9 10.0.0.9 [3 02:00:00:00:00:03 router 10.0.0.3] "
                                       "[7 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7]";

TEST(EDiscoveredInfoArchive, WritesAndReadsTheGoldenBytes)
{
    EDiscoveredInfo info = Info(5);
    info.SetInterfaceUp(true);
    info.AddAddress(IP("2001:db8::9"));
    info.AddAddress(IP("10.0.0.9"));
    for (unsigned int id = 1; id <= 10; ++id) {
        info.AddNeighbor(id == 3 ? Neighbor("02:00:00:00:00:03", {"10.0.0.3"})
                                 : Neighbor("02:00:00:00:00:07", {"10.0.0.7", "2001:db8::7"}, false));
        if (id != 3 && id != 7) info.RemoveNeighbor(id);
    }
    EXPECT_EQ(kGoldenText, TextOf(info));
    EXPECT_EQ(Golden("EDiscoveredInfo.hex"), Written(info));
    EXPECT_EQ(Golden("EDiscoveredInfo.defaults.hex"), Written(EDiscoveredInfo()));

    EDiscoveredInfo read = Read<EDiscoveredInfo>("EDiscoveredInfo.hex");
    EXPECT_EQ(kGoldenText, TextOf(read));
    EXPECT_EQ(11U, read.AddNeighbor(EDiscoveredNeighbor())); // the generator travels along
    EXPECT_EQ("0 down", TextOf(Read<EDiscoveredInfo>("EDiscoveredInfo.defaults.hex")));
}

TEST(EDiscoveredInfoArchive, CarriesEveryProtocolRecord)
{
    EDiscoveredInfo read;
    ReadInto(read, Written(FullInfo()));
    EXPECT_EQ(kFullText, TextOf(read));
    EXPECT_EQ(kFullProtocols, ProtocolText(read));
}

TEST(EDiscoveredInfoArchive, ReadingReplacesListsTellsNobodyAndKeepsTheParent)
{
    RecordedInfo in;
    in.info.AddAddress(IP("10.0.0.8"));
    in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"}));
    in.recorder->Clear();
    ReadInto(in.info, Golden("EDiscoveredInfo.hex"));
    EXPECT_EQ(kGoldenText, TextOf(in.info));
    EXPECT_EQ(&in.table, in.info.GetParent());
    ExpectAdopted(in.info);
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ(kMacs[0], in.table.GetDefaultMAC().GetAsString()); // the table's affair
    EXPECT_EQ(0U, ByMac(in.info, kMacs[0]) + ByIp(in.info, "10.0.0.1"));
}

TEST(EDiscoveredInfoArchive, ReadingAppendsToTheOptionsAndAddressesOfTheDHCPRecords)
{
    EDiscoveredInfo info;
    info.GetDHCPInfo().SetDiscoveredCustomTLVs({EDHCPTLV()});
    info.GetDHCPv6Info().SetDiscoveredAddresses({IP("2001:db8::1")});
    std::string const bytes = Written(info);
    ReadInto(info, bytes);
    EXPECT_EQ(2U, info.GetDHCPInfo().GetDiscoveredCustomTLVs().size());
    EXPECT_EQ(2U, info.GetDHCPv6Info().GetDiscoveredAddresses().size());
}

TEST(EDiscoveredInfoArchive, WhatWasReadIsFoundByEveryMacAndAddress)
{
    EDiscoveredInfo const info = Read<EDiscoveredInfo>("EDiscoveredInfo.hex");
    EXPECT_EQ(3U, ByMac(info, "02:00:00:00:00:03"));
    EXPECT_EQ(7U, ByMac(info, "02:00:00:00:00:07"));
    EXPECT_EQ(3U, ByIp(info, "10.0.0.3"));
    EXPECT_EQ(7U, ByIp(info, "10.0.0.7"));
    EXPECT_EQ(7U, ByIp(info, "2001:db8::7"));
}

TEST(EDiscoveredInfoArchive, ReadingIndexesInAscendingOrderAndForgetsOldTexts)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0], {"10.0.0.1"}), Neighbor(kMacs[0], {"10.0.0.1"})});
    info.SetNeighbor(1, Neighbor(kMacs[0], {"10.0.0.1"}));
    EXPECT_EQ(1U, ByMac(info, kMacs[0])); // indexed last
    info.GetNeighbor(2)->SetMac(MAC(kMacs[1]));
    info.GetNeighbor(2)->SetMac(MAC(kMacs[0]));
    std::string const bytes = Written(info);
    ReadInto(info, bytes);
    EXPECT_EQ(2U, ByMac(info, kMacs[0])); // the highest id
    EXPECT_EQ(2U, ByIp(info, "10.0.0.1"));

    info.GetNeighbor(1)->SetMac(MAC(kMacs[2]));
    ReadInto(info, Written(info));
    EXPECT_EQ(1U, ByMac(info, kMacs[2]));
    EXPECT_EQ(2U, ByMac(info, kMacs[0]));
}

/// Whatever is found by a MAC or address of these is a neighbour that the info holds, under the id it is kept by.
static void ExpectConsistent(EDiscoveredInfo& info)
{
    ExpectAdopted(info);
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position)
        EXPECT_EQ(position->first, neighbors.GetItem(position)->GetLocalId());
    for (char const* const mac : {kMacs[0], kMacs[1], "02:00:00:00:00:03", "02:00:00:00:00:07"})
        if (EDiscoveredNeighbor const* const found = info.FindNeighborByMAC(MAC(mac))) {
            EXPECT_EQ(mac, found->GetMac().GetAsString());
            EXPECT_EQ(found, info.GetNeighbor(found->GetLocalId()));
        }
    for (char const* const address : {"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.7", "2001:db8::7"})
        if (EDiscoveredNeighbor const* const found = info.FindNeighborByIP(IP(address))) {
            EXPECT_TRUE(found->HasAddress(IP(address)));
            EXPECT_EQ(found, info.GetNeighbor(found->GetLocalId()));
        }
}

TEST(EDiscoveredInfoArchive, EveryCutIsAnArchiveErrorAndLeavesAnInfoThatNamesNoWrongNeighbor)
{
    std::string const bytes = Golden("EDiscoveredInfo.hex");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        RecordedInfo in;
        for (std::size_t i = 0; i < 8; ++i)
            in.info.AddNeighbor(Neighbor(kMacs[i % 2], {i % 2 ? "10.0.0.1" : "10.0.0.2"}));
        in.recorder->Clear();
        EArchive archive;
        Load(archive, bytes.substr(0, size));
        EXPECT_THROW(archive >> in.info, EArchiveError);
        EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
        ExpectConsistent(in.info);
        // It goes on being used.
        unsigned int const id = in.info.AddNeighbor(Neighbor("02:00:00:00:00:99", {"10.0.0.99"}));
        EXPECT_EQ(id, ByMac(in.info, "02:00:00:00:00:99"));
        in.info.RemoveNeighbor(id);
        ReadInto(in.info, Golden("EDiscoveredInfo.defaults.hex"));
        EXPECT_EQ("0 down", TextOf(in.info));
    }
}

TEST(EDiscoveredInfoArchive, AFailureBeforeTheNeighborsLeavesThemFoundAsBefore)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0], {"10.0.0.1"})});
    for (std::size_t size = 0; size < 3 + 17 + 5; ++size) { // id, up, the two addresses
        EArchive archive;
        Load(archive, Golden("EDiscoveredInfo.hex").substr(0, size));
        EXPECT_THROW(archive >> info, EArchiveError);
        EXPECT_EQ(1U, ByMac(info, kMacs[0])) << size;
        EXPECT_EQ(1U, ByIp(info, "10.0.0.1")) << size;
    }
}

TEST(EDiscoveredInfoArchiveDeathTest, TheAddressListRefusesTheWrongDirection)
{
    ExpectListRefusesToBeWritten<EDiscoveredInfo>();
    ExpectListRefusesToBeRead([](EArchive& archive) {
        EDiscoveredInfo info;
        archive >> info;
    });
}
