#include "tracingHooks.hpp"

#include "hostCommands.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;

namespace {

/// A table 3 with one interface 1, and what its observer wrote since the last question.
class Traced {
public:
    EInterfaceTable table{3};
    Traced()
    {
        table.SetHooks("trace", MakeTracingHooks(m_out));
        ExecuteAdd(table, AddInterfaceCommand(table, EInterfaceItem()), "");
        Take();
    }
    EInterfaceItem& Item() { return *table.GetInterfaceItem(1); }
    std::string Take()
    {
        std::string const text = m_out.str();
        m_out.str("");
        return text;
    }

private:
    std::ostringstream m_out;
};

} // namespace

TEST(TracingHooks, AFieldIsWrittenWithOldAndNewValue)
{
    Traced traced;
    traced.Item().SetName("lan0");
    traced.Item().SetType(INTERFACE_TYPE_GRE);
    traced.table.SetFCoERetryCount(9);
    traced.Item().GetDHCPProperties().SetRetryCount(0);
    traced.Item().GetFCoEConfig().SetSrcOUI(0xabc);
    traced.Item().GetPTPConfig().SetStartOffset(-5);
    EXPECT_EQ("SettingInterfaceName  interface 1  name: - -> lan0\n"
              "SettingInterfaceType  interface 1  type: ethernet -> gre\n"
              "SettingFCoERetryCount  table 3  table.fcoe.retry-count: 5 -> 9\n"
              "SettingDhcpRetryCount  interface 1  dhcp.retry-count: 4 -> 1\n"
              "SettingFCoESrcOUI  interface 1  fcoe.fc-map: 0x0efc00 -> 0x000abc\n"
              "SettingPTPStartOffset  interface 1  ptp.start-offset: 0 -> -5\n",
              traced.Take());
}

TEST(TracingHooks, WhatIsAnnouncedAfterTheStoreHasNoOldValue)
{
    Traced traced;
    traced.Item().GetFCoEConfig().SetFIPEnabled(false);
    traced.table.SetFcfMacCollectionTime(90001);
    EXPECT_EQ(
        "SettingFCoEFIPEnabled  interface 1  fcoe.fip: no (stored already)\n"
        "SettingFCoECollectFcfMacListTimer  table 3  table.fcoe.fcf-mac-collection-time: 90000 (stored already)\n",
        traced.Take());
}

TEST(TracingHooks, SwitchesAddingAndRemoving)
{
    Traced traced;
    traced.Item().SetEnabled(true);
    traced.Item().SetEnabled(false);
    traced.Item().GetIPv4AddressItem().SetEnabled(true);
    traced.Item().SetPTPEnabled(true);
    EIPv6AddressItem address;
    address.SetAddress(EIPAddress("2001:db8::1"));
    traced.Item().AddIPv6AddressItem(address);
    traced.Item().RemoveIPv6AddressItem(1);
    traced.table.RemoveInterfaceItem(1);
    EXPECT_EQ("EnablingInterfaceItem  interface 1  enabled: no -> yes\n"
              "DisablingInterfaceItem  interface 1  enabled: yes -> no\n"
              "EnablingIPv4AddressItem  interface 1  ipv4.enabled: no -> yes\n"
              "EnablingPTPItem  interface 1  ptp.enabled: no -> yes\n"
              "AddingIPv6AddressItem  interface 1  ipv6.1.address: 2001:db8::1/64\n"
              "RemovingIPv6AddressItem  interface 1  ipv6.1.address: 2001:db8::1/64\n"
              "RemovingInterfaceItem  interface 1\n",
              traced.Take());
}

TEST(TracingHooks, AWholeRecordIsWrittenAsTheFieldsThatChange)
{
    Traced traced;
    EIPv4AddressItem address;
    address.SetGateway(EIPAddress("192.0.2.1"));
    address.SetMSS(1400);
    traced.Item().SetIPv4AddressItem(address);
    EXPECT_EQ("SettingIPv4AddressItem  interface 1\n"
              "    ipv4.gateway: 0.0.0.0 -> 192.0.2.1\n"
              "    ipv4.mss: 0 -> 1400\n",
              traced.Take());
    EInterfaceItem item;
    item.SetName("new");
    item.GetDHCPProperties().SetReleaseTimer(9);
    traced.table.SetInterfaceItem(1, item);
    EXPECT_EQ("SettingInterfaceItem  interface 1\n"
              "    name: - -> new\n"
              "    ipv4.gateway: 192.0.2.1 -> 0.0.0.0\n"
              "    ipv4.mss: 1400 -> 0\n"
              "    dhcp.release-timer: 0 -> 9\n",
              traced.Take());
    traced.table.Empty();
    EXPECT_EQ("SettingInterfaceTable  table 3\n"
              "    table.next-id: 2 -> 1\n"
              "    interfaces: 1 -> 0\n",
              traced.Take());
}

TEST(TracingHooks, TheCarrierOfAVirtualPortIsAnnouncedWithItsInterface)
{
    Traced traced;
    traced.Item().GetNPIVConfig().SetConnectedViaId(EComponentId{3, 1, 1});
    EXPECT_EQ("SettingNPIVConnectedViaId  interface 1  npiv.connected-via: none -> 3/1/1\n", traced.Take());
}

TEST(TracingHooks, ControlCharactersOfANameDoNotReachTheTerminal)
{
    Traced traced;
    traced.Item().SetName("a\033[2Jb\nc");
    EXPECT_EQ("SettingInterfaceName  interface 1  name: - -> a?[2Jb?c\n", traced.Take());
}

TEST(TracingHooks, AnOperationThatNoFieldHasIsWrittenWithItsValue)
{
    std::ostringstream out;
    auto const hooks = MakeTracingHooks(out);
    EIPv4AddressItem const address;
    hooks->SettingIPv4MSS(address, 1400);
    EXPECT_EQ("SettingIPv4MSS  no interface  1400\n", out.str());
}
