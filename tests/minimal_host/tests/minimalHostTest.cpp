#include <ifcore/ifcore.hpp>

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultiComponentId.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

// The library against a host that offers only what is asked of one: the roads through all of it that touch the host.

namespace {

enum Action : unsigned int { SET = 2, ENABLE = 3, DISABLE = 4, ADD = 5, REMOVE = 6, EDIT = 7 };

/// Notes the interfaces that come and go and the gateways that change, with the old one.
struct Notes : EIgnoreInterfaceTableHooks {
    std::string text;

    void AddingInterfaceItem(EInterfaceItem const& item) override { text += "+" + item.GetName() + " "; }
    void RemovingInterfaceItem(EInterfaceItem const& item) override { text += "-" + item.GetName() + " "; }
    void SettingIPv4Gateway(EIPv4AddressItem const& item, EIPAddress const& gateway) override
    {
        text += item.GetGateway().GetAsString() + ">" + gateway.GetAsString() + " ";
    }
    void EnablingInterfaceItem(EInterfaceItem const& item) override { text += "on " + item.GetName() + " "; }
};

} // namespace

template <class... Value> static EBlob DataOf(Value const&... values)
{
    EArchive archive;
    static_cast<void>((archive << ... << values));
    return archive.GetAsEBlob();
}
static EMultiComponentId Target(std::vector<unsigned int> const& levels, std::vector<unsigned int> const& leaves = {})
{
    EMultiComponentId id{EComponentId(levels)};
    id.SetLeaves(leaves);
    return id;
}
static bool Execute(EInterfaceTable& table, ESingleCommand const& command)
{
    return table.ExecuteCommand(command, static_cast<EComponentId*>(nullptr));
}

static EInterfaceItem Sample(std::string const& name, std::string const& address)
{
    EInterfaceItem item;
    item.SetName(name);
    item.SetMacAddress(EMACAddress("02:00:00:00:00:01"));
    item.SetEUID(EUID(0x0102030405060708));
    EVLANIPAddressTableItemProperties vlans(1, true);
    vlans.SetVlanTag(0xB00A, 0);
    item.SetVLANItem(vlans);
    EIPv4AddressItem ipv4;
    ipv4.SetAddress(EIPAddress(address));
    ipv4.SetEnabled(true);
    item.SetIPv4AddressItem(ipv4);
    EIPv6AddressItem ipv6;
    ipv6.SetAddress(EIPAddress("2001:db8::1"));
    item.AddIPv6AddressItem(ipv6);
    return item;
}

TEST(MinimalHost, CommandsAddEditEnableAndRemoveUnderTheEyesOfAnObserver)
{
    EInterfaceTable table(7);
    auto const notes = boost::make_shared<Notes>();
    table.SetHooks("notes", notes);

    EMultiComponentId added;
    EXPECT_TRUE(
        table.ExecuteCommand(ESingleCommand(ADD, Target({7, 1}), {}, DataOf(Sample("eth0", "10.0.0.5"))), &added));
    EXPECT_TRUE(Target({7, 1}, {1}) == added);
    EXPECT_TRUE(Execute(table, ESingleCommand(EDIT, Target({7, 1, 1, 6}), {1}, DataOf(EIPAddress("10.0.0.1")))));
    EXPECT_TRUE(Execute(table, ESingleCommand(ENABLE, Target({7, 1, 1}))));
    EXPECT_FALSE(Execute(table, ESingleCommand(EDIT, Target({8, 1, 1, 6}), {1}, DataOf(EIPAddress("10.0.0.2")))));
    EXPECT_TRUE(table.GetInterfaceItem(1)->IsEnabled());
    EXPECT_EQ("10.0.0.1", table.GetInterfaceItem(1)->GetIPv4AddressItem().GetGateway().GetAsString());
    EXPECT_TRUE(Execute(table, ESingleCommand(SET, Target({7, 1, 1}, {6}), {}, DataOf(EIPv4AddressItem()))));
    EXPECT_FALSE(table.GetInterfaceItem(1)->GetIPv4AddressItem().IsEnabled());
    EXPECT_TRUE(Execute(table, ESingleCommand(REMOVE, Target({7, 1}, {1, 2}))));
    EXPECT_EQ(0U, table.size());
    EXPECT_EQ("+eth0 0.0.0.0>10.0.0.1 on eth0 -eth0 ", notes->text);
}

TEST(MinimalHost, ATableWithEveryKindOfRecordComesBackFromItsArchive)
{
    EInterfaceTable table(7);
    table.SetFIPVersion(-2);
    EInterfaceItem& item = *table.GetInterfaceItem(table.AddInterfaceItem(Sample("eth0", "10.0.0.5")));
    item.SetVPI(3);
    item.SetPPPSession(4);
    item.SetGreSourceIp(EComponentId({7, 1, 1}));
    item.SetConnectedViaId(EComponentId({7, 1, 2}));
    item.SetPTPEnabled(true);
    item.SetDCBXEnabled(true);
    item.SetLLDPEnabled(true);
    item.EnsureNPIV();
    table.AddInterfaceItem(Sample("eth1", "10.0.0.6"));

    EArchive archive;
    archive << table;
    EBlob const bytes = archive.GetAsEBlob();
    archive.SetFromEBlob(bytes, true);
    archive.SetMode(2);
    EInterfaceTable copy;
    archive >> copy;
    EXPECT_TRUE(archive.AtEnd());
    EXPECT_EQ(7U, copy.GetPortId());
    EXPECT_EQ(-2, copy.GetFIPVersion());
    ASSERT_EQ(2U, copy.size());
    EInterfaceItem const& read = *copy.GetInterfaceItem(1);
    EXPECT_EQ("eth0", read.GetName());
    EXPECT_EQ("02:00:00:00:00:01", read.GetMacAddress().GetAsString());
    EXPECT_EQ("01:02:03:04:05:06:07:08", read.GetEUID().GetAsString());
    EXPECT_EQ(0xB00AU, read.GetVLANItem().GetVlanTag(0));
    EXPECT_EQ("2001:db8::1", read.GetIPv6AddressItem(1)->GetAddress().GetAsString());
    EXPECT_EQ(3U, read.GetVPI());
    EXPECT_TRUE(EComponentId({7, 1, 2}) == read.GetConnectedViaId());
    EXPECT_TRUE(read.GetNPIVConfigReadOnly() && read.GetPTPConfigReadOnly());
    EXPECT_TRUE(read.GetDCBXConfigReadOnly() && read.GetLLDPConfigReadOnly());
    EXPECT_EQ(&read, read.GetDCBXConfigReadOnly()->GetParent());
    EXPECT_EQ(&copy, read.GetParent());

    EArchive again;
    again << copy;
    EXPECT_TRUE(bytes == again.GetAsEBlob());
    EXPECT_EQ(3U, copy.AddInterfaceItem(EInterfaceItem()));
}

TEST(MinimalHost, ForceValidTrimsTheHexadecimalTextOfTheHost)
{
    struct {
        int object;
        char const* given;
        char const* stored;
    } const cases[] = {{1, "0A 0B 0C 0D", "0b 0c 0d"}, {0, "0A", ""}, {1, " 0A0B0C ", " 0A0B0C "}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        EFCNSQuery query;
        query.SetRequestObject(c.object);
        query.SetRequestObjectValue(c.given);
        query.ForceValid();
        EXPECT_EQ(c.stored, query.GetRequestObjectValue());
    }
}

TEST(MinimalHost, SeveralObserversHearEveryChange)
{
    EInterfaceTable table(7);
    auto const one = boost::make_shared<Notes>();
    auto const two = boost::make_shared<Notes>();
    table.AddInterfaceTableHooks("one", one);
    table.AddInterfaceTableHooks("two", two);
    EXPECT_EQ("multi", table.GetHooksName());
    EXPECT_EQ(one, table.FindInterfaceTableHooks("one"));
    table.AddInterfaceItem(Sample("eth0", "10.0.0.5"));
    table.RemoveInterfaceTableHooks("one");
    table.RemoveInterfaceItem(1);
    EXPECT_EQ("+eth0 ", one->text);
    EXPECT_EQ("+eth0 -eth0 ", two->text);
}

TEST(MinimalHost, TheLookupObserverAnswersForTheTable)
{
    EInterfaceTable table(7);
    table.AddInterfaceItem(Sample("eth0", "10.0.0.5"));
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(EIPAddress("10.0.0.5")));

    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    lookup->Rebuild(table);
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup);
    table.AddInterfaceItem(Sample("eth1", "10.0.0.6"));
    EVLAN vlan;
    vlan.SetVLANID(10);
    EXPECT_EQ(table.GetInterfaceItem(2), table.FindInterfaceByIPAndVlan(EIPAddress("10.0.0.6"), &vlan));
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(EIPAddress("2001:db8::1")));
    table.GetInterfaceItem(2)->GetIPv4AddressItem().SetAddress(EIPAddress("10.0.0.7")); // which this lookup misses
    EXPECT_EQ(nullptr, table.FindInterfaceByIP(EIPAddress("10.0.0.7")));                // on purpose: final
    EXPECT_EQ(nullptr, table.FindInterfaceByIP(EIPAddress("10.0.0.6")));
}

TEST(MinimalHostDeathTest, AnUnknownArchiveVersionEndsTheProcess)
{
    auto const read = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO); // which is what a death test compares
        EArchive archive;
        archive.SetFromEBlob(DataOf(4U), true);
        archive.SetMode(2);
        EIPv4AddressItem item;
        archive >> item;
    };
    EXPECT_EXIT(read(), testing::ExitedWithCode(1),
                testing::Eq("*** Exception in FILE x86_64/common/ifcore/eIPv4AddressItem.cpp, LINE 78:\n"
                            "EIPv4AddressItem::SerializeIn - EArchive::SerializeError()\n"));
}
