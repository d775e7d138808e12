#include "tableImporter.hpp"

#include "netlinkMessages.hpp"
#include "tableView.hpp"
#include "toolTestSupport.hpp"
#include "tracingHooks.hpp"

#include <gtest/gtest.h>

#include <libmnl/libmnl.h>

#include <sstream>

#include <arpa/inet.h>

using namespace ifcoreTool;

namespace {

void Parse(char const* name, KernelSnapshot& snapshot)
{
    std::vector<unsigned char> const bytes = toolTest::GoldenBytes(std::string("netlink/") + name);
    int remaining = static_cast<int>(bytes.size());
    auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
    for (; mnl_nlmsg_ok(message, remaining); message = mnl_nlmsg_next(message, &remaining))
        ParseNetlinkMessage(*message, snapshot);
}

KernelIP IP(char const* text)
{
    KernelIP address;
    address.isIPv6 = std::string(text).find(':') != std::string::npos;
    EXPECT_EQ(1, inet_pton(address.isIPv6 ? AF_INET6 : AF_INET, text, address.bytes.data())) << text;
    return address;
}

KernelLink Link(int index, char const* name)
{
    KernelLink link;
    link.index = index;
    link.name = name;
    link.hardwareAddress = {2, 0, 0, 0, 0, static_cast<unsigned char>(index)};
    link.mtu = 1500;
    link.up = true;
    return link;
}

KernelLink VlanLink(int index, char const* name, int lower, unsigned short id)
{
    KernelLink link = Link(index, name);
    link.kind = "vlan";
    link.lowerIndex = lower;
    link.vlan = KernelVlan{id, 0x8100};
    return link;
}

std::string Overview(KernelSnapshot const& snapshot, EInterfaceTable& table)
{
    ImportSnapshot(snapshot, table);
    std::ostringstream out;
    PrintOverview(out, table);
    return "\n" + out.str();
}

std::string Overview(KernelSnapshot const& snapshot)
{
    EInterfaceTable table;
    return Overview(snapshot, table);
}

} // namespace

TEST(TableImporter, AVlanStackHasTheTagNearestToTheHardwareFirstAndTheHardwaresMac)
{
    KernelSnapshot snapshot;
    Parse("vlanLinks.hex", snapshot);
    EXPECT_EQ(R"(
ID  NAME        TYPE      STATE  MTU   MAC                VLAN   IPV4  GATEWAY  IPV6
1   eth0        ethernet  on     9000  02:00:00:00:00:01  none   -     -        -
2   eth0.100    ethernet  on     1500  02:00:00:00:00:01  100    -     -        -
3   eth0.100.7  ethernet  on     1500  02:00:00:00:00:01  100,7  -     -        -
4   far.9       ethernet  on     1500  02:00:00:00:00:07  9      -     -        -
)",
              Overview(snapshot));
}

TEST(TableImporter, VlanLinksThatGoInACircleEnd)
{
    KernelSnapshot snapshot;
    snapshot.links = {VlanLink(1, "a", 2, 11), VlanLink(2, "b", 1, 12)};
    EInterfaceTable table;
    ImportSnapshot(snapshot, table);
    EXPECT_EQ(2u, table.size());
}

TEST(TableImporter, AFurtherIPv4AddressIsARowOfItsOwnWithTheSameMacAndVlans)
{
    KernelSnapshot snapshot;
    snapshot.links = {Link(1, "eth0"), VlanLink(2, "eth0.5", 1, 5)};
    snapshot.addresses = {{2, IP("192.0.2.1"), 24},   {2, IP("198.51.100.1"), 25}, {2, IP("203.0.113.1"), 32},
                          {2, IP("2001:db8::1"), 64}, {1, IP("fe80::1"), 64},      {2, IP("2001:db8::2"), 128},
                          {9, IP("192.0.2.77"), 24}};
    EXPECT_EQ(R"(
ID  NAME    TYPE      STATE  MTU   MAC                VLAN  IPV4             GATEWAY  IPV6
1   eth0    ethernet  on     1500  02:00:00:00:00:01  none  -                -        fe80::1/64
2   eth0.5  ethernet  on     1500  02:00:00:00:00:01  5     192.0.2.1/24     -        2001:db8::1/64,2001:db8::2/128
3   eth0.5  ethernet  on     1500  02:00:00:00:00:01  5     198.51.100.1/25  -        -
4   eth0.5  ethernet  on     1500  02:00:00:00:00:01  5     203.0.113.1/32   -        -
)",
              Overview(snapshot));
}

TEST(TableImporter, AGatewayStandsWhereItsNetworkIsAndTheLowestMetricCounts)
{
    KernelSnapshot snapshot;
    snapshot.links = {Link(1, "a"), Link(2, "b"), Link(3, "c")};
    snapshot.addresses = {{1, IP("192.0.2.1"), 24}, {1, IP("198.51.100.1"), 25}, {2, IP("203.0.113.1"), 32}};
    snapshot.gateways = {{1, IP("198.51.100.99"), 50}, {1, IP("192.0.2.254"), 100}, {2, IP("203.0.113.254"), 0},
                         {3, IP("192.0.2.253"), 0},    {3, IP("fe80::2"), 20},      {3, IP("fe80::1"), 10},
                         {9, IP("192.0.2.1"), 0}};
    EInterfaceTable table;
    EXPECT_EQ(R"(
ID  NAME  TYPE      STATE  MTU   MAC                VLAN  IPV4             GATEWAY        IPV6
1   a     ethernet  on     1500  02:00:00:00:00:01  none  192.0.2.1/24     -              -
2   a     ethernet  on     1500  02:00:00:00:00:01  none  198.51.100.1/25  198.51.100.99  -
3   b     ethernet  on     1500  02:00:00:00:00:02  none  203.0.113.1/32   203.0.113.254  -
4   c     ethernet  on     1500  02:00:00:00:00:03  none  -                192.0.2.253    -
)",
              Overview(snapshot, table));
    EXPECT_EQ("fe80::1", table.GetInterfaceItem(4)->GetIPv6Gateway().GetAsString());
    EXPECT_TRUE(table.GetInterfaceItem(1)->GetIPv6Gateway().IsZero());
}

TEST(TableImporter, ATunnelStartsFromTheRowThatHoldsItsLocalAddress)
{
    KernelSnapshot snapshot;
    Parse("greLinks.hex", snapshot);
    snapshot.addresses = {{8, IP("10.0.0.1"), 30}, {2, IP("192.0.2.77"), 24}, {2, IP("192.0.2.1"), 24}};
    EInterfaceTable table(7);
    ImportSnapshot(snapshot, table);
    ASSERT_EQ(6u, table.size()); // eth0 twice
    EInterfaceItem const& gre = *table.GetInterfaceItem(3);
    EXPECT_EQ("gre1", gre.GetName());
    EXPECT_EQ(INTERFACE_TYPE_GRE, gre.GetType());
    EXPECT_TRUE(gre.IsEnabled());
    EXPECT_EQ(1476u, gre.GetMTU());
    EXPECT_EQ(EMACAddress(), gre.GetMacAddress()); // its 4-byte hardware address is none
    EXPECT_EQ((EComponentId{7, 1, 2}), gre.GetGreSourceIp());
    EXPECT_EQ("198.51.100.1", gre.GetGreDestIp().GetAsString());
    EXPECT_EQ(5u, gre.GetGreInKey());
    EXPECT_EQ(6u, gre.GetGreOutKey());
    EXPECT_TRUE(gre.GetGreUseKey());
    EXPECT_TRUE(gre.GetGreUseSequence());
    EXPECT_FALSE(gre.GetGreUseChecksum());
    EXPECT_EQ("10.0.0.1", gre.GetIPv4AddressItem().GetAddress().GetAsString());
    EInterfaceItem const& gretap = *table.GetInterfaceItem(4);
    EXPECT_EQ(INTERFACE_TYPE_GRE, gretap.GetType());
    EXPECT_EQ("02:00:00:00:00:09", gretap.GetMacAddress().GetAsString());
    EXPECT_TRUE(gretap.GetGreUseChecksum());
    EXPECT_FALSE(gretap.GetGreUseKey());
    EXPECT_EQ((EComponentId{7, 1, 2}), gretap.GetGreSourceIp());
    EInterfaceItem const& overIPv6 = *table.GetInterfaceItem(5);
    EXPECT_EQ("2001:db8::2", overIPv6.GetGreDestIp().GetAsString());
    EXPECT_EQ(EComponentId(), overIPv6.GetGreSourceIp()); // nobody holds 2001:db8::1
    EXPECT_FALSE(overIPv6.IsEnabled());
    EXPECT_EQ(EComponentId(), table.GetInterfaceItem(6)->GetGreSourceIp()); // local 0.0.0.0 is no address
}

TEST(TableImporter, EverythingReachesTheObserver)
{
    KernelSnapshot snapshot;
    snapshot.links = {VlanLink(1, "eth0.5", 0, 5)};
    snapshot.addresses = {{1, IP("192.0.2.1"), 25}, {1, IP("2001:db8::1"), 64}};
    snapshot.gateways = {{1, IP("192.0.2.99"), 0}, {1, IP("fe80::1"), 0}};
    EInterfaceTable table(3);
    std::ostringstream trace;
    table.SetHooks("trace", MakeTracingHooks(trace));
    ImportSnapshot(snapshot, table);
    EXPECT_EQ(R"(AddingInterfaceItem  interface 1
SettingInterfaceName  interface 1  name: - -> eth0.5
SettingInterfaceType  interface 1  type: ethernet -> ethernet
SettingInterfaceMTU  interface 1  mtu: 1500 -> 1500
SettingInterfaceMac  interface 1  mac: 00:00:00:00:00:00 -> 02:00:00:00:00:01
SettingInterfaceVlan  interface 1  vlan: none -> 5
EnablingInterfaceItem  interface 1  enabled: no -> yes
SettingIPv4Address  interface 1  ipv4.address: 0.0.0.0 -> 192.0.2.1
SettingIPv4MaskLength  interface 1  ipv4.prefix-length: 24 -> 25
EnablingIPv4AddressItem  interface 1  ipv4.enabled: no -> yes
SettingIPv4Gateway  interface 1  ipv4.gateway: 0.0.0.0 -> 192.0.2.99
AddingIPv6AddressItem  interface 1  ipv6.1.address: 2001:db8::1/64
SettingIPv6Gateway  interface 1  ipv6.gateway: :: -> fe80::1
)",
              trace.str());
}
