#include <ifcore/ifcore.hpp>

#include "eGlobalMessage.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

// The discovered table and the messages of the hardware-abstraction layer with a host of its own encoding.

template <class... Value> static EBlob BytesOf(Value const&... values)
{
    EArchive archive;
    static_cast<void>((archive << ... << values));
    return archive.GetAsEBlob();
}

static void Load(EArchive& archive, EBlob const& bytes)
{
    archive.SetFromEBlob(bytes, true);
    archive.SetMode(2);
}

/// A neighbour of the table's first interface, and that it is up.
static void FillTable(EDiscoveredTable& table)
{
    EDiscoveredInfo info;
    info.SetLocalId(5);
    table.AddInfo(info);
    EDiscoveredInfo& stored = *table.GetInfo(5);
    stored.SetInterfaceUp(true);
    stored.AddAddress(EIPAddress("10.0.0.5"));
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress("02:00:00:00:00:01"));
    neighbor.AddAddress(EIPAddress("2001:db8::1"));
    neighbor.SetIsRouter(false);
    stored.AddNeighbor(neighbor);

    EDHCPDiscoveredInfo dhcp;
    dhcp.SetLeaseTimer(3600);
    stored.SetDHCPInfo(dhcp);
    EFCoEDiscoveredInfo fcoe;
    fcoe.SetPLOGIDestinationMap({{{9, 0}, {true, 7}}});
    fcoe.SetDiscoveredStatus("PRLI_FAILED");
    stored.SetFCoEInfo(fcoe);
    EPTPDiscoveredInfo ptp;
    ptp.SetDiscoveredState("SLAVE");
    stored.SetPTPInfo(ptp);
    EDCBXDiscoveredInfo dcbx;
    dcbx.GetOperDCBXCfg().AddFeatureTlv(EDCBXFeatureTlv(3, 0));
    dcbx.UpdateOperAndPeerInfoList();
    stored.SetDCBXInfo(dcbx);
}

/// That the table is as FillTable leaves it.
static void ExpectFilled(EDiscoveredTable& table)
{
    EDiscoveredInfo const* const info = table.GetInfo(5);
    ASSERT_TRUE(info);
    EXPECT_EQ(&table, info->GetParent());
    EXPECT_TRUE(info->IsInterfaceUp());
    EXPECT_EQ(info, table.FindInfoByIP(EIPAddress("10.0.0.5")));
    EDiscoveredNeighbor const* const neighbor = info->FindNeighborByIP(EIPAddress("2001:db8::1"));
    ASSERT_TRUE(neighbor);
    EXPECT_EQ(neighbor, info->FindNeighborByMAC(EMACAddress("02:00:00:00:00:01")));
    EXPECT_EQ(neighbor, table.GetNeighbor(EComponentId({5, neighbor->GetLocalId()})));
    EXPECT_FALSE(neighbor->IsRouter());
    EXPECT_EQ(5U, table.GetDefaultMACIfId());
    EXPECT_EQ("02:00:00:00:00:01", table.GetDefaultMAC().GetAsString());
    EXPECT_EQ(3600U, info->GetDHCPInfo().GetLeaseTimer());
    EXPECT_TRUE(info->GetFCoEInfo().IsValidDiscoveredPLOGIDid(9));
    EXPECT_EQ("PRLI_FAILED", info->GetFCoEInfo().GetStateString());
    EXPECT_EQ("SLAVE", info->GetPTPInfo().GetDiscoveredStateAsString());
    ASSERT_EQ(2U, info->GetDCBXInfo().GetOperAndPeerDCBXInfoList().size());
    EXPECT_EQ("PFC", info->GetDCBXInfo().GetOperAndPeerDCBXInfoList()[1].name);
}

TEST(MinimalHostDiscovered, ATableWithEveryRecordComesBackFromItsArchive)
{
    EDiscoveredTable table;
    FillTable(table);
    ExpectFilled(table);
    EBlob const bytes = BytesOf(table);
    EArchive archive;
    Load(archive, bytes);
    EDiscoveredTable copy;
    archive >> copy;
    EXPECT_TRUE(archive.AtEnd());
    ExpectFilled(copy);
    EXPECT_TRUE(bytes == BytesOf(copy));
}

TEST(MinimalHostDiscovered, AChangeStreamMakesASecondTableLikeTheFirst)
{
    EDiscoveredTable table;
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    table.hooks = writer;
    FillTable(table);

    // As it travels: in a message of the layer, from which its reader takes it.
    boost::shared_ptr<EBlob> update;
    eHal::CreateNeighborDiscoveryUpdate(update, writer->TakeMessage());
    EArchive envelope;
    Load(envelope, *update);
    unsigned int type = 0;
    EBlob wrapped;
    envelope >> type;
    envelope >> wrapped;
    EXPECT_EQ(2U, type);
    EArchive message;
    Load(message, wrapped);
    std::string name;
    unsigned int objectType = 0;
    EBlob stream;
    message >> name;
    message >> type;
    message >> objectType;
    message >> stream;
    EXPECT_EQ("DiscoveredTable", name);
    EXPECT_EQ(5U, type);
    EXPECT_EQ(5U, objectType);

    EDiscoveredTable second;
    EArchive changes;
    Load(changes, stream);
    ApplyDiscoveredTableMessage(second, changes);
    EXPECT_TRUE(changes.AtEnd());
    ExpectFilled(second);
    EXPECT_TRUE(BytesOf(table) == BytesOf(second));
}

TEST(MinimalHostDiscovered, MessagesOfTheLayerAreReadBack)
{
    EGlobalMessage request;
    eHal::CreateArpRequestMessage(request, 3, EIPAddress("10.0.0.1"));
    unsigned int number = 0;
    EIPAddress first;
    EIPAddress second;
    EXPECT_TRUE(eHal::UnwrapArpRequestMessage(request, number, first));
    EXPECT_EQ(3U, number);
    EXPECT_EQ("10.0.0.1", first.GetAsString());
    eHal::CreatePingRequestMessage(request, 4, EIPAddress("10.0.0.2"), EIPAddress("10.0.0.3"));
    EXPECT_FALSE(eHal::UnwrapArpRequestMessage(request, number, first));
    EXPECT_TRUE(eHal::UnwrapPingRequestMessage(request, number, first, second));
    EXPECT_EQ(4U, number);
    EXPECT_EQ("10.0.0.3", second.GetAsString());

    eHal::EOutgoingGlobalMessage reply;
    eHal::CreatePingReplyMessage(reply, first, second, 5);
    EXPECT_TRUE(eHal::UnwrapPingReplyMessage(reply, second, first, number));
    EXPECT_EQ("10.0.0.2", second.GetAsString());
    EXPECT_EQ(5U, number);
    EXPECT_TRUE(eHal::OnSameNetwork(first, second, 24));
    EXPECT_FALSE(eHal::OnSameNetwork(first, second, 32));
    EXPECT_TRUE(eHal::OnSameNetwork(EIPAddress("2001:db8::1"), EIPAddress("2001:db8:4000::1"), 33));
    EXPECT_FALSE(eHal::OnSameNetwork(EIPAddress("2001:db8::1"), EIPAddress("2001:db8:8000::1"), 33));
}
