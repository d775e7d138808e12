#include "discoveredView.hpp"

#include "discoveredValues.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;

namespace {

/// Interface 2 with nothing; interface 5 with addresses, two neighbours and everything that protocols learn.
EDiscoveredTable Sample()
{
    EDiscoveredTable table;
    EDiscoveredInfo empty;
    empty.SetLocalId(2);
    table.AddInfo(empty);
    EDiscoveredInfo info;
    info.SetLocalId(5);
    info.SetInterfaceUp(true);
    info.AddAddress(EIPAddress("192.0.2.1"));
    info.AddAddress(EIPAddress("2001:db8::1"));
    EDiscoveredNeighbor router;
    router.SetMac(EMACAddress("02:00:00:00:00:07"));
    router.AddAddress(EIPAddress("192.0.2.7"));
    router.AddAddress(EIPAddress("fe80::7"));
    info.AddNeighbor(router);
    EDiscoveredNeighbor host;
    host.SetMac(EMACAddress("02:00:00:00:00:08"));
    host.SetIsRouter(false);
    info.AddNeighbor(host);
    EDHCPDiscoveredInfo dhcp;
    EIPAddress address("192.0.2.100");
    EIPAddress gateway("192.0.2.254");
    dhcp.SetValid(true);
    dhcp.SetDiscoveredIP(address);
    dhcp.SetDiscoveredPrefixLength(24);
    dhcp.SetDiscoveredGatewayIP(gateway);
    dhcp.SetLeaseTimer(3600);
    dhcp.SetInterfaceLocalId(5);
    EDHCPTLV option;
    option.SetType(12);
    dhcp.SetDiscoveredCustomTLVs({option});
    info.SetDHCPInfo(dhcp);
    EDHCPv6DiscoveredInfo dhcpv6;
    dhcpv6.SetIARenewTime(10);
    dhcpv6.SetDiscoveredAddresses({EIPAddress("2001:db8::100")});
    info.SetDHCPv6Info(dhcpv6);
    EFCoEDiscoveredInfo fcoe;
    fcoe.SetValid(true);
    fcoe.SetDiscoveredStatus("PLOGI_COMPLETE");
    fcoe.SetDiscoveredStatusReason("none");
    fcoe.SetDiscoveredSourceId(0x01b669);
    fcoe.SetDiscoveredDestMAC(EMACAddress("0e:fc:00:01:b6:69"));
    fcoe.SetDiscoveredVlanPriority(3);
    fcoe.SetDiscoveredDBit(1);
    fcoe.SetDiscoveredFcfMap("0e.fc.00");
    fcoe.SetDiscoveredFKAPeriod(8000);
    info.SetFCoEInfo(fcoe);
    info.SetPTPInfo(Read<EPTPDiscoveredInfo>("EPTPDiscoveredInfo.v1.hex"));
    EDCBXDiscoveredInfo dcbx;
    dcbx.SetLocalAndPeerLLDPInfoList({{"Port", "eth0", "one\ntwo\n"}});
    dcbx.SetOperAndPeerDCBXInfoList({{"PFC", "on", "off", true}});
    info.SetDCBXInfo(dcbx);
    table.AddInfo(info);
    return table;
}

/// Two tables that are equal to the last bit: a second sample would have other instance keys.
struct EqualTables {
    EDiscoveredTable first = Sample();
    EDiscoveredTable second;
    EqualTables()
    {
        first.FindDefaultMAC();
        ReadInto(second, Written(first));
    }
};

std::string Printed(EDiscoveredInfo const& info)
{
    std::ostringstream out;
    PrintInfo(out, info);
    return out.str();
}

} // namespace

TEST(DiscoveredView, TheOverviewHasALineAnInterfaceAndTheDefaultMac)
{
    EDiscoveredTable table = Sample();
    table.FindDefaultMAC();
    std::ostringstream out;
    PrintOverview(out, table);
    EXPECT_EQ("ID  STATE  NEIGHBORS  PROTOCOLS                  ADDRESSES\n"
              "2   down   0          -                          -\n"
              "5   up     2          dhcp,dhcpv6,fcoe,ptp,dcbx  192.0.2.1,2001:db8::1\n"
              "default MAC 02:00:00:00:00:07 of interface 5 neighbor 1\n",
              out.str());
    std::ostringstream empty;
    PrintOverview(empty, EDiscoveredTable());
    EXPECT_EQ("ID  STATE  NEIGHBORS  PROTOCOLS  ADDRESSES\n", empty.str());
}

TEST(DiscoveredView, AnInterfaceIsShownWithTheLibrarysOwnTexts)
{
    EDiscoveredTable const table = Sample();
    EPTPDiscoveredInfo const& ptp = table.GetInfo(5)->GetPTPInfo();
    EDCBXDiscoveredInfo const& dcbx = table.GetInfo(5)->GetDCBXInfo();
    EXPECT_EQ("interface 5\n"
              "up                                  yes\n"
              "addresses                           192.0.2.1,2001:db8::1\n"
              "next-neighbor-id                    3\n"
              "neighbor.1.mac                      02:00:00:00:00:07\n"
              "neighbor.1.router                   yes\n"
              "neighbor.1.addresses                192.0.2.7,fe80::7\n"
              "neighbor.2.mac                      02:00:00:00:00:08\n"
              "neighbor.2.router                   no\n"
              "neighbor.2.addresses                -\n"
              "dhcp.valid                          yes\n"
              "dhcp.address                        192.0.2.100\n"
              "dhcp.prefix-length                  24 bits\n"
              "dhcp.gateway                        192.0.2.254\n"
              "dhcp.lease-time                     3600 s\n"
              "dhcp.interface-id                   5\n"
              "dhcp.options                        [{\"type\":12,\"value\":\"\"}]\n"
              "dhcpv6.valid                        no\n"
              "dhcpv6.addresses                    2001:db8::100\n"
              "dhcpv6.renew-time                   10 s\n"
              "dhcpv6.rebind-time                  0 s\n"
              "dhcpv6.options                      -\n"
              "fcoe.valid                          yes\n"
              "fcoe.status                         PLOGI_COMPLETE\n"
              "fcoe.status-reason                  none\n"
              "fcoe.source-id                      01.b6.69\n"
              "fcoe.destination-mac                0e:fc:00:01:b6:69\n"
              "fcoe.vlan-priority                  3\n"
              "fcoe.d-bit                          1\n"
              "fcoe.fcf-map                        0e.fc.00\n"
              "fcoe.fka-period                     8000\n"
              "ptp.state                           SLAVE\n"
              "ptp.time-stamp                      " +
                  ptp.GetTimeStampAsString() +
                  "\n"
                  "ptp.clock-offset-from-master        " +
                  ptp.GetClockOffsetFromMasterAsString() +
                  "\n"
                  "dcbx.operating                      None\n"
                  "dcbx.peer                           None\n"
                  "dcbx.mismatches                     -\n"
                  "dcbx.peer-lldp                      " +
                  dcbx.GetPeerLLDPConfigAsString() +
                  "\n"
                  "dcbx.lldp-comparison.Port.local     eth0\n"
                  "dcbx.lldp-comparison.Port.peer      one\n"
                  "                                    two\n"
                  "dcbx.dcbx-comparison.PFC.operating  on\n"
                  "dcbx.dcbx-comparison.PFC.peer       off\n"
                  "dcbx.dcbx-comparison.PFC.mismatch   yes\n",
              Printed(*table.GetInfo(5)));
}

TEST(DiscoveredView, ProtocolsThatLearntNothingAreLeftOut)
{
    EXPECT_EQ("interface 2\n"
              "up                no\n"
              "addresses         -\n"
              "next-neighbor-id  1\n",
              Printed(*Sample().GetInfo(2)));
}

TEST(DiscoveredView, ConfigurationsOfDcbxAreShownLineByLine)
{
    EDiscoveredInfo info;
    info.SetDCBXInfo(Read<EDCBXDiscoveredInfo>("EDCBXDiscoveredInfo.v10390129.hex"));
    std::istringstream expected(info.GetDCBXInfo().GetOperatingDCBXConfigAsString());
    std::string const shown = Printed(info);
    unsigned int lines = 0;
    for (std::string line; std::getline(expected, line); ++lines)
        EXPECT_NE(std::string::npos, shown.find("  " + line + "\n")) << line << "\n" << shown;
    EXPECT_LT(0u, lines);
}

TEST(DiscoveredView, JsonHasTheSameMembersWhateverTheInterfaceHolds)
{
    EDiscoveredTable table = Sample();
    table.FindDefaultMAC();
    Json const json = TableJson(table, InfoIds(table));
    EXPECT_EQ(
        Json::parse(R"({"default-mac": {"interface": 5, "neighbor": 1, "mac": "02:00:00:00:00:07"}, "next-id": 6})"),
        json["table"]);
    ASSERT_EQ(2u, json["infos"].size());
    Json const& empty = json["infos"][0];
    Json const& full = json["infos"][1];
    EXPECT_EQ(5, full["id"]);
    EXPECT_EQ(
        Json::parse(R"([{"id": 1, "mac": "02:00:00:00:00:07", "router": true, "addresses": ["192.0.2.7", "fe80::7"]},
                              {"id": 2, "mac": "02:00:00:00:00:08", "router": false, "addresses": []}])"),
        full["neighbors"]);
    EXPECT_EQ(Json::parse(R"([{"name": "PFC", "operating": "on", "peer": "off", "mismatch": true}])"),
              full["dcbx"]["dcbx-comparison"]);
    ASSERT_EQ(full.size(), empty.size());
    for (auto const& member : full.items()) {
        ASSERT_TRUE(empty.contains(member.key())) << member.key();
        if (!member.value().is_object()) continue;
        for (auto const& inner : member.value().items())
            EXPECT_TRUE(empty[member.key()].contains(inner.key())) << member.key() << "." << inner.key();
    }
}

TEST(DiscoveredValues, EqualTablesHaveNoDifferences)
{
    EqualTables const tables;
    EXPECT_TRUE(Differences(&tables.first, &tables.second).empty());
    EDiscoveredTable const copy(tables.first); // on purpose without the default MAC
    NamedChanges const changes = Differences(&tables.first, &copy);
    ASSERT_EQ(1u, changes.size());
    EXPECT_EQ("default-mac.mac: 02:00:00:00:00:07 -> 00:00:00:00:00:00", ChangeText(changes[0]));
}

TEST(DiscoveredValues, EachDifferenceHasTheNameOfTheValue)
{
    EqualTables tables;
    EDiscoveredTable const& before = tables.first;
    EDiscoveredTable& after = tables.second;
    EDiscoveredInfo& info = *after.GetInfo(5);
    info.SetInterfaceUp(false);
    info.AddAddress(EIPAddress("192.0.2.2"));
    info.GetNeighbor(2)->SetIsRouter(true);
    info.RemoveNeighbor(1);
    info.GetDHCPInfo().SetLeaseTimer(1);
    info.GetFCoEInfo().SetDiscoveredStatus(EFCoEDiscoveredInfo::FLOGI_FAILED);
    after.RemoveInfo(2);
    std::string text;
    for (NamedChange const& change : Differences(&before, &after)) text += ChangeText(change) + "\n";
    EXPECT_EQ("default-mac.interface: 5 -> 0\n"
              "default-mac.neighbor: 1 -> 0\n"
              "default-mac.mac: 02:00:00:00:00:07 -> 00:00:00:00:00:00\n"
              "interface.2.present: yes -> no\n"
              "interface.2.up: no -> -\n"
              "interface.5.up: yes -> no\n"
              "interface.5.addresses: 192.0.2.1,2001:db8::1 -> 192.0.2.1,2001:db8::1,192.0.2.2\n"
              "interface.5.neighbor.1.present: yes -> no\n"
              "interface.5.neighbor.1.mac: 02:00:00:00:00:07 -> -\n"
              "interface.5.neighbor.1.router: yes -> -\n"
              "interface.5.neighbor.1.addresses: 192.0.2.7,fe80::7 -> -\n"
              "interface.5.neighbor.2.router: no -> yes\n"
              "interface.5.dhcp.lease-time: 3600 -> 1\n"
              "interface.5.fcoe.status: PLOGI_COMPLETE -> FLOGI_FAILED\n",
              text);
}

TEST(DiscoveredValues, WhatHasNoNameIsADifferenceAllTheSame)
{
    EqualTables tables;
    EDiscoveredTable const& before = tables.first;
    EDiscoveredTable& after = tables.second;
    after.GetInfo(5)->GetFCoEInfo().SetPLOGIDestinationMap({{{1, 0}, {true, 2}}});
    std::string text;
    for (NamedChange const& change : Differences(&before, &after)) text += ChangeText(change) + "\n";
    EXPECT_EQ("interface.5.fcoe: differs in what has no name\n", text);
}
