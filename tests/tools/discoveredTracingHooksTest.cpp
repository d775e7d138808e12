#include "discoveredTracingHooks.hpp"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

using namespace ifcoreTool;

namespace {

/// A table with interface 3 and its neighbour 1, and what its observer wrote since the last question.
class Traced {
public:
    EDiscoveredTable table;
    std::set<std::string> operations;

    Traced()
    {
        EDiscoveredInfo info;
        info.SetLocalId(3);
        table.AddInfo(info);
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(EMACAddress("02:00:00:00:00:07"));
        Info().AddNeighbor(neighbor);
        table.hooks = MakeDiscoveredTracingHooks([this](DiscoveredCall const& call) {
            operations.insert(call.operation);
            PrintCall(m_text, call, "");
            PrintCallJson(m_json, call, call.interfaceId != 0 ? "lan0" : "");
        });
    }
    EDiscoveredInfo& Info() { return *table.GetInfo(3); }
    EDiscoveredNeighbor& Neighbor() { return *Info().GetNeighbor(1); }
    std::string Take() { return Take(m_text); }
    std::string TakeJson() { return Take(m_json); }

private:
    static std::string Take(std::ostringstream& out)
    {
        std::string const text = out.str();
        out.str("");
        return text;
    }
    std::ostringstream m_text;
    std::ostringstream m_json;
};

} // namespace

TEST(DiscoveredTracingHooks, EveryOperationIsOneLineWithWhatItChanges)
{
    Traced t;
    t.Info().SetInterfaceUp(true);
    t.Info().SetInterfaceUp(false);
    t.Info().AddAddress(EIPAddress("192.0.2.1"));
    t.Info().RemoveAddress(EIPAddress("192.0.2.1"));
    t.Neighbor().SetIsRouter(false);
    t.Neighbor().SetIsRouter(true);
    t.Neighbor().SetMac(EMACAddress("02:00:00:00:00:08"));
    t.Neighbor().AddAddress(EIPAddress("2001:db8::7"));
    t.Neighbor().RemoveAddress(EIPAddress("2001:db8::7"));
    EXPECT_EQ("InterfaceWentUp  interface 3  up: no -> yes\n"
              "InterfaceWentDown  interface 3  up: yes -> no\n"
              "AddingAddress  interface 3  address: - -> 192.0.2.1\n"
              "RemovingAddress  interface 3  address: 192.0.2.1 -> -\n"
              "NeighborBecameHost  interface 3 neighbor 1  router: yes -> no\n"
              "NeighborBecameRouter  interface 3 neighbor 1  router: no -> yes\n"
              "NeighborMacChanging  interface 3 neighbor 1  mac: 02:00:00:00:00:07 -> 02:00:00:00:00:08\n"
              "AddingNeighborAddress  interface 3 neighbor 1  address: - -> 2001:db8::7\n"
              "RemovingNeighborAddress  interface 3 neighbor 1  address: 2001:db8::7 -> -\n",
              t.Take());

    EDHCPDiscoveredInfo dhcp;
    dhcp.SetLeaseTimer(60);
    t.Info().SetDHCPInfo(dhcp);
    EDHCPv6DiscoveredInfo dhcpv6;
    dhcpv6.SetDiscoveredAddresses({EIPAddress("2001:db8::1"), EIPAddress("2001:db8::2")});
    t.Info().SetDHCPv6Info(dhcpv6);
    EFCoEDiscoveredInfo fcoe;
    fcoe.SetDiscoveredStatus(EFCoEDiscoveredInfo::FLOGI_COMPLETE);
    t.Info().SetFCoEInfo(fcoe);
    EPTPDiscoveredInfo ptp;
    ptp.SetDiscoveredState("SLAVE");
    t.Info().SetPTPInfo(ptp);
    EDCBXDiscoveredInfo dcbx;
    dcbx.SetLocalAndPeerLLDPInfoList({});
    t.Info().SetDCBXInfo(dcbx);
    std::string const protocols = t.Take();
    EXPECT_EQ(0u, protocols.find("SettingDHCPDiscoveredInfo  interface 3  dhcp.lease-time: 0 -> 60\n"
                                 "SettingDHCPv6DiscoveredInfo  interface 3  dhcpv6.addresses: - -> "
                                 "2001:db8::1,2001:db8::2\n"
                                 "SettingFCoEDiscoveredInfo  interface 3  fcoe.status: Unknown -> FLOGI_COMPLETE\n"
                                 "SettingPTPDiscoveredInfo  interface 3  ptp.state: UNKNOWN -> SLAVE\n"
                                 "SettingDCBXDiscoveredInfo  interface 3  dcbx.lldp-comparison: [{"))
        << protocols;

    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress("02:00:00:00:00:09"));
    neighbor.AddAddress(EIPAddress("192.0.2.9"));
    t.Info().AddNeighbor(neighbor);
    t.Info().SetNeighbor(1, neighbor);
    t.Info().RemoveNeighbor(2);
    EDiscoveredInfo info;
    info.SetLocalId(4);
    info.SetInterfaceUp(true);
    info.AddNeighbor(neighbor);
    t.table.AddInfo(info);
    t.table.SetInfo(4, EDiscoveredInfo());
    t.table.RemoveInfo(4);
    t.table.RemoveInfo(3);
    t.Take(); // the protocol records of interface 3
    t.table.AddInfo(info);
    t.Take();
    t.table.Empty();
    EXPECT_EQ("SettingDiscoveredTable  table  default-mac.interface: 4 -> 0, default-mac.neighbor: 1 -> 0, "
              "default-mac.mac: 02:00:00:00:00:09 -> 00:00:00:00:00:00, next-id: 5 -> 1, interface.4.present: yes -> "
              "no, interface.4.up: yes -> -, interface.4.neighbor.1.present: yes -> no, interface.4.neighbor.1.mac: "
              "02:00:00:00:00:09 -> -, interface.4.neighbor.1.router: yes -> -, interface.4.neighbor.1.addresses: "
              "192.0.2.9 -> -\n",
              t.Take());

    std::set<std::string> const all{
#define EHOOK(operation, ...) #operation,
#include "ifcore/eDiscoveredTableHooks.def"
    };
    EXPECT_EQ(all, t.operations);
}

TEST(DiscoveredTracingHooks, ARecordThatAppearsVanishesOrIsReplacedIsToldWithItsValues)
{
    Traced t;
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress("02:00:00:00:00:09"));
    neighbor.AddAddress(EIPAddress("192.0.2.9"));
    neighbor.AddAddress(EIPAddress("192.0.2.10"));
    t.Info().AddNeighbor(neighbor);
    neighbor.RemoveAddress(EIPAddress("192.0.2.9"));
    t.Info().SetNeighbor(2, neighbor);
    t.Info().RemoveNeighbor(2);
    EXPECT_EQ("AddingNeighbor  interface 3 neighbor 2  mac: - -> 02:00:00:00:00:09, router: - -> yes, "
              "addresses: - -> 192.0.2.9,192.0.2.10\n"
              "SettingNeighbor  interface 3 neighbor 2  addresses: 192.0.2.9,192.0.2.10 -> 192.0.2.10\n"
              "RemovingNeighbor  interface 3 neighbor 2  mac: 02:00:00:00:00:09 -> -, router: yes -> -, "
              "addresses: 192.0.2.10 -> -\n",
              t.Take());
    EDiscoveredInfo info;
    info.AddAddress(EIPAddress("::1"));
    t.table.SetInfo(3, info);
    EXPECT_EQ("SettingInfo  interface 3  addresses: - -> ::1, next-neighbor-id: 3 -> 1, neighbor.1.present: yes -> no, "
              "neighbor.1.mac: 02:00:00:00:00:07 -> -, neighbor.1.router: yes -> -\n",
              t.Take());
}

TEST(DiscoveredTracingHooks, JsonHasTheSameMembersAlways)
{
    Traced t;
    t.Info().SetInterfaceUp(true);
    t.Neighbor().AddAddress(EIPAddress("2001:db8::7"));
    EXPECT_EQ(R"({"operation":"InterfaceWentUp","interface":3,"link":"lan0","neighbor":null,)"
              R"("changes":[{"name":"up","old":false,"new":true}]})"
              "\n"
              R"({"operation":"AddingNeighborAddress","interface":3,"link":"lan0","neighbor":1,)"
              R"("changes":[{"name":"address","old":null,"new":"2001:db8::7"}]})"
              "\n",
              t.TakeJson());
    EDiscoveredTable().Swap(t.table);
    t.table.Empty();
    EXPECT_EQ(R"({"operation":"SettingDiscoveredTable","interface":null,"link":null,"neighbor":null,"changes":[]})"
              "\n",
              t.TakeJson());
}

TEST(DiscoveredTracingHooks, ControlCharactersOfALinksNameDoNotReachTheTerminal)
{
    std::ostringstream out;
    PrintCall(out, {"InterfaceWentUp", 1, 0, {}}, "a\033b");
    EXPECT_EQ("InterfaceWentUp  interface 1 (a?b)\n", out.str());
}
