#include "tableView.hpp"

#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;
using toolTest::GoldenText;

namespace {

/// Two Ethernet interfaces and a tunnel, with what the overview shows and one record of each optional kind.
EInterfaceTable Sample()
{
    EInterfaceTable table(4);
    EInterfaceItem lan;
    lan.SetEnabled(true);
    lan.SetName("lan0");
    lan.SetMTU(9000);
    lan.SetMacAddress(EMACAddress("02:00:00:00:00:01"));
    EVLANIPAddressTableItemProperties vlans(2, true);
    vlans.SetVLANID(100, 0);
    vlans.SetUserPriority(3, 0);
    vlans.SetVLANID(200, 1);
    lan.SetVLANItem(vlans);
    lan.GetIPv4AddressItem().SetEnabled(true);
    lan.GetIPv4AddressItem().SetAddress(EIPAddress("192.0.2.1"));
    lan.GetIPv4AddressItem().SetGateway(EIPAddress("192.0.2.254"));
    EIPv6AddressItem address;
    address.SetAddress(EIPAddress("2001:db8::1"));
    lan.AddIPv6AddressItem(address);
    address.SetAddress(EIPAddress("fe80::1"));
    address.SetMaskLength(10);
    lan.AddIPv6AddressItem(address);
    table.AddInterfaceItem(lan);

    EInterfaceItem tunnel;
    tunnel.SetName("tun\tnel");
    tunnel.SetType(INTERFACE_TYPE_GRE);
    tunnel.SetGreSourceIp(EComponentId{4, 1, 1});
    tunnel.SetGreDestIp(EIPAddress("198.51.100.1"));
    table.AddInterfaceItem(tunnel);

    EInterfaceItem full;
    full.SetVPI(5);
    full.SetPPPSession(6);
    full.SetConnectedViaId(EComponentId{4, 1, 1});
    full.GetNPIVConfig().SetPLOGIEnabled(true);
    full.GetPTPConfig().SetDomainNumber(7);
    full.GetDCBXConfig().SetOUI(0x010203);
    full.GetLLDPConfig().SetHoldTime(10);
    table.AddInterfaceItem(full);
    return table;
}

std::string Interface(unsigned int id)
{
    EInterfaceTable const table = Sample();
    std::ostringstream out;
    PrintInterface(out, *table.GetInterfaceItem(id));
    return out.str();
}

/// The paths of all members of a JSON text, those of list elements without their positions.
void CollectMembers(Json const& json, std::string const& path, std::vector<std::string>& members)
{
    if (json.is_object())
        for (auto const& member : json.items()) CollectMembers(member.value(), path + "." + member.key(), members);
    else
        members.push_back(path);
}

} // namespace

TEST(TableView, TheOverviewHasOneAlignedLineAnInterface)
{
    std::ostringstream out;
    PrintOverview(out, Sample());
    EXPECT_EQ(GoldenText("program/overview.txt"), out.str());
    std::ostringstream empty;
    PrintOverview(empty, EInterfaceTable());
    EXPECT_EQ("ID  NAME  TYPE  STATE  MTU  MAC  VLAN  IPV4  GATEWAY  IPV6\n", empty.str());
}

TEST(TableView, AnInterfaceIsShownWithEveryFieldOfTheRecordsThatItHas)
{
    EXPECT_EQ(GoldenText("program/interface.txt"), Interface(1));
    EXPECT_EQ(GoldenText("program/fullInterface.txt"), Interface(3));
}

TEST(TableView, TheTablesOwnSettingsHaveTheirUnits)
{
    std::ostringstream out;
    PrintTableSettings(out, Sample());
    EXPECT_EQ(GoldenText("program/settings.txt"), out.str());
}

TEST(TableView, TheListOfFieldsHasTypesAndUnits)
{
    std::ostringstream out;
    PrintFields(out);
    EXPECT_EQ(GoldenText("program/fields.txt"), out.str());
}

TEST(TableView, JsonHasOneShape)
{
    EInterfaceTable const table = Sample();
    EXPECT_EQ(GoldenText("program/table.json"), TableJson(table, {1, 2, 3}).dump(2) + "\n");
    Json const json = TableJson(table, {1, 2, 3});
    std::vector<std::string> first;
    CollectMembers(json["interfaces"][0], "", first);
    for (std::size_t i = 1; i < 3; ++i) {
        std::vector<std::string> members;
        CollectMembers(json["interfaces"][i], "", members);
        EXPECT_EQ(first, members) << "interface " << i + 1;
    }
    EXPECT_TRUE(TableJson(table, {})["interfaces"].is_array());
    EXPECT_EQ(1u, TableJson(table, {2})["interfaces"].size());
}
