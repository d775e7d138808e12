#include "eInterfaceTable.hpp"
#include "golden.hpp"
#include "recordedInterface.hpp"

#include <boost/make_shared.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static std::string GoldenTable(unsigned int version)
{
    return Golden("EInterfaceTable.v" + std::to_string(version) + ".hex");
}

static void ExpectGoldenInterface(EInterfaceTable const& table)
{
    ASSERT_EQ(1u, table.GetCount());
    EInterfaceItem const* const item = table.GetInterfaceItem(5);
    ASSERT_NE(nullptr, item);
    EXPECT_EQ(&table, item->GetParent());
    EXPECT_EQ(&table.GetHooks(), &item->GetHooks());
    EXPECT_TRUE(item->IsEnabled());
    EXPECT_EQ("a", item->GetName());
    EXPECT_EQ("02:00:00:00:00:01", item->GetMacAddress().GetAsString());
    EXPECT_EQ("10.0.0.1", item->GetIPv4AddressItem().GetAddress().GetAsString());
}

TEST(EInterfaceTableArchive, ReadsEveryVersionAndLeavesNewerSettingsAtTheirDefaults)
{
    for (unsigned int version = 1; version <= 14; ++version) {
        SCOPED_TRACE(version);
        EInterfaceTable table(7);
        table.SetFCoERetryCount(77); // gone with the emptying
        ReadInto(table, GoldenTable(version));
        ExpectGoldenInterface(table);
        EXPECT_EQ(version >= 14, table.IsAutoNeighborDiscoveryEnabled());
        EXPECT_FALSE(table.IsAutoArpEnabled());
        EXPECT_EQ(version >= 13 ? 42u : 7u, table.GetPortId());
        EXPECT_EQ(version >= 12, table.IsFcfMacEnabled());
        EXPECT_EQ(version >= 12 ? 2000u : 1000u, table.GetFcfMacCollectionTime());
        EXPECT_EQ(version >= 11, table.IsPMacInFpmaEnabled());
        EXPECT_FALSE(table.IsVlanIdEnabled());
        EXPECT_EQ(version >= 10, table.IsTargetLLAddrOptionEnabled());
        EXPECT_EQ(version >= 9 ? -2 : 1, table.GetFIPVersion());
        EXPECT_EQ(version >= 8 ? 3000u : 2000u, table.GetFCoERetryInterval());
        EXPECT_EQ(version >= 7 ? 9u : 5u, table.GetFCoERetryCount());
        EXPECT_EQ(version >= 6 ? 600u : 500u, table.GetFCoERequestRate());
        EXPECT_EQ(version >= 3 ? 101u : 100u, table.GetDHCPv4MaxOutstandingRequests());
        EXPECT_EQ(version >= 3 ? 102u : 100u, table.GetDHCPv6MaxOutstandingRequests());
        EXPECT_EQ(version >= 3 ? 11u : 0u, table.GetDHCPv4RequestRate());
        EXPECT_EQ(version >= 3 ? 12u : 0u, table.GetDHCPv6RequestRate());
        EXPECT_EQ(version >= 2 ? 3u : 0u, table.GetVPIMaskMode());
        EXPECT_EQ(6u, table.AddInterfaceItem(EInterfaceItem())) << "the generator travels with the interfaces";
    }
}

TEST(EInterfaceTableArchive, WritesTheNewestVersion)
{
    EInterfaceTable table;
    ReadInto(table, GoldenTable(14));
    std::string const interface = Written(*table.GetInterfaceItem(5));
    std::string const settings = Golden("EInterfaceTable.noInterfaces.v14.hex");
    EXPECT_EQ(settings.substr(0, settings.size() - 1) + Bytes("01") + interface, Written(table));
    table.RemoveInterfaceItem(5);
    EXPECT_EQ(settings, Written(table));
}

TEST(EInterfaceTableArchive, TheTunnelsOfVersion3AreThrownAway)
{
    EInterfaceTable with(7);
    ReadInto(with, GoldenTable(3));
    EInterfaceTable without(7);
    ReadInto(without, GoldenTable(4));
    EXPECT_EQ(Written(without), Written(with));
}

TEST(EInterfaceTableArchive, AVPIMaskModeOf32BitsIsReadAsItWasWritten)
{
    EInterfaceTable table;
    table.SetVPIMaskMode(static_cast<EInterfaceTable::eVPIMaskMode>(0xfffffffeu));
    EInterfaceTable reread;
    ReadInto(reread, Written(table));
    EXPECT_EQ(0xfffffffeu, reread.GetVPIMaskMode());
}

TEST(EInterfaceTableArchive, ReadingIntoALiveTableTellsOfTheEmptyingAlone)
{
    RecordedInterface fixture;
    ReadInto(fixture.table, GoldenTable(14));
    // A new interface becomes part of the table when it has been read.
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceTable"));
    EXPECT_EQ(fixture.recorder, fixture.table.GetHooksPtr());
    ExpectGoldenInterface(fixture.table);
}

TEST(EInterfaceTableArchiveDeathTest, RefusesVersionsOutside1To14)
{
    for (char const* version : {"00", "0f", "fb ff ff ff ff"})
        ExpectArchiveError<EInterfaceTable>(version, "x86_64/common/ifcore/eInterfaceTable.cpp", 202,
                                            "EInterfaceTable::SerializeIn");
}

// Old unconnected interfaces

namespace {

/// An archive of an old version: the head of it, then the interfaces as the container writes them.
struct EOldTable {
    EInterfaceTable interfaces;

    unsigned int Add(EInterfaceTypeEnum type, char const* ipv4, char const* gateway, char const* ipv6 = nullptr)
    {
        EInterfaceItem item;
        item.SetType(type);
        item.GetIPv4AddressItem().SetAddress(EIPAddress(std::string(ipv4)));
        item.GetIPv4AddressItem().SetGateway(EIPAddress(std::string(gateway)));
        if (ipv6) {
            EIPv6AddressItem address;
            address.SetAddress(EIPAddress(std::string(ipv6)));
            item.AddIPv6AddressItem(address);
        }
        return interfaces.AddInterfaceItem(item);
    }
    std::string Bytes(int version) const ///< Of versions 4 and 5, which have the same fields
    {
        EArchive archive;
        archive << version;
        for (unsigned int const setting : {100u, 100u, 0u, 0u}) archive << setting; // DHCP limits and rates
        archive << 0;                                                               // VPI mask mode
        interfaces.EInterfaceItemList::SerializeOut(archive);
        return BytesOf(archive.GetAsEBlob());
    }
};

} // namespace

TEST(EInterfaceTableArchive, Version4TurnsInterfacesBehindAnotherIntoUnconnectedOnes)
{
    EOldTable old;
    struct {
        EInterfaceTypeEnum type;
        char const* address;
        char const* gateway;
        char const* ipv6;
        EInterfaceTypeEnum expectedType;
        unsigned int expectedVia; // 0: none
    } const cases[] = {
        {INTERFACE_TYPE_GRE, "10.0.0.1", "10.0.0.1", nullptr, INTERFACE_TYPE_GRE, 0},      // GRE is left alone
        {INTERFACE_TYPE_ATM, "10.0.0.1", "0.0.0.0", "2001:db8::1", INTERFACE_TYPE_ATM, 0}, // no gateway
        {INTERFACE_TYPE_ETHERNET, "10.0.1.1", "10.0.0.1", nullptr, INTERFACE_TYPE_UNCONNECTED,
         2}, // not via the GRE one
        {INTERFACE_TYPE_NPIV, "10.0.2.1", "10.0.1.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 3},
        {INTERFACE_TYPE_ETHERNET, "10.0.3.1", "10.9.9.9", nullptr, INTERFACE_TYPE_ETHERNET, 0}, // nobody's
        {INTERFACE_TYPE_UNCONNECTED, "10.0.4.1", "10.0.0.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 0},
        {INTERFACE_TYPE_ETHERNET, "10.0.5.1", "10.0.5.1", nullptr, INTERFACE_TYPE_ETHERNET, 0}, // its own gateway
        {INTERFACE_TYPE_ETHERNET, "10.0.6.1", "2001:db8::1", nullptr, INTERFACE_TYPE_UNCONNECTED, 2},
        {INTERFACE_TYPE_ETHERNET, "10.0.7.1", "10.0.0.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 2},
        {INTERFACE_TYPE_ETHERNET, "10.0.8.1", "10.0.10.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 11}, // a later one
        {INTERFACE_TYPE_ETHERNET, "10.0.10.1", "10.0.4.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 6},
        {INTERFACE_TYPE_ETHERNET, "10.0.1.1", "10.0.1.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 3}, // its own, but later
        {INTERFACE_TYPE_ETHERNET, "10.0.1.1", "2001:db8::1", "2001:db8::1", INTERFACE_TYPE_UNCONNECTED, 2},
        {INTERFACE_TYPE_ETHERNET, "10.0.13.1", "2001:db8::2", "2001:db8::2", INTERFACE_TYPE_ETHERNET, 0},
        {INTERFACE_TYPE_ETHERNET, "10.0.14.1", "10.0.14.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 16}, // also another's
        {INTERFACE_TYPE_ETHERNET, "10.0.14.1", "10.0.14.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 15},
        {INTERFACE_TYPE_ETHERNET, "10.0.14.1", "10.0.14.1", nullptr, INTERFACE_TYPE_UNCONNECTED, 15},
    };
    for (auto const& c : cases) old.Add(c.type, c.address, c.gateway, c.ipv6);

    EInterfaceTable table(7);
    ReadInto(table, old.Bytes(4));
    EInterfaceTable asRead(7);
    ReadInto(asRead, old.Bytes(5));
    unsigned int id = 0;
    for (auto const& c : cases) {
        SCOPED_TRACE(++id);
        EInterfaceItem const& item = *table.GetInterfaceItem(id);
        EXPECT_EQ(c.expectedType, item.GetType());
        EXPECT_EQ(c.expectedVia ? EComponentId({7, 1, c.expectedVia}) : EComponentId(), item.GetConnectedViaId());
        EXPECT_EQ(c.expectedVia != 0, item.GetRoutedData() != nullptr);
        EXPECT_EQ(c.type, asRead.GetInterfaceItem(id)->GetType());
        EXPECT_EQ(nullptr, asRead.GetInterfaceItem(id)->GetRoutedData());
    }
}

TEST(EInterfaceTableArchive, TheConversionTakesAnInterfaceOfId0ForAnInterface)
{
    EOldTable old;
    old.interfaces.AddItem(0, EInterfaceItem());
    old.Add(INTERFACE_TYPE_ETHERNET, "10.0.1.1", "10.0.0.1"); // nobody's
    EInterfaceTable table(7);
    ReadInto(table, old.Bytes(4));
    EXPECT_EQ(INTERFACE_TYPE_ETHERNET, table.GetInterfaceItem(1)->GetType());

    old.interfaces.GetInterfaceItem(0u)->GetIPv4AddressItem().SetAddress(EIPAddress(std::string("10.0.0.1")));
    ReadInto(table, old.Bytes(4));
    EXPECT_EQ(INTERFACE_TYPE_UNCONNECTED, table.GetInterfaceItem(1)->GetType());
    EXPECT_EQ(EComponentId({7, 1, 0}), table.GetInterfaceItem(1)->GetConnectedViaId());
}

TEST(EInterfaceTableArchive, TheConversionIsAnnouncedByItsSetters)
{
    EOldTable old;
    old.Add(INTERFACE_TYPE_ETHERNET, "10.0.0.1", "0.0.0.0");
    old.Add(INTERFACE_TYPE_ETHERNET, "10.0.1.1", "10.0.0.1");
    EInterfaceTable table(7);
    auto const recorder = boost::make_shared<Recorder>();
    table.SetHooks("recorder", recorder);
    ReadInto(table, old.Bytes(4));
    EXPECT_THAT(recorder->Operations(),
                ElementsAre("SettingInterfaceTable", "SettingInterfaceType", "SettingInterfaceConnectedViaId"));
}

TEST(EInterfaceTableArchive, TheConversionChoosesAsFindConnectedInterfaceByIPWouldButNotItself)
{
    EOldTable old;
    for (unsigned int i = 0; i < 60; ++i) {
        std::string const address = "10.0.0." + std::to_string(i * 7 % 20);
        std::string const gateway =
            i % 3 ? "10.0.0." + std::to_string(i * 11 % 25) : "2001:db8::" + std::to_string(i % 9);
        std::string const ipv6 = "2001:db8::" + std::to_string(i % 13);
        old.Add(static_cast<EInterfaceTypeEnum>(i % 7), address.c_str(), gateway.c_str(),
                i % 2 ? ipv6.c_str() : nullptr);
    }
    EInterfaceTable table;
    ReadInto(table, old.Bytes(4));
    for (unsigned int id = 1; id <= 60; ++id) {
        SCOPED_TRACE(id);
        EInterfaceItem const& before = *old.interfaces.GetInterfaceItem(id);
        EIPAddress const& gateway = before.GetIPv4AddressItem().GetGateway();
        EInterfaceTable others(old.interfaces);
        others.RemoveInterfaceItem(id);
        EInterfaceItem const* via = others.FindConnectedInterfaceByIP(gateway);
        if (before.GetType() == INTERFACE_TYPE_GRE || before.GetType() == INTERFACE_TYPE_UNCONNECTED) via = nullptr;
        EInterfaceItem const& after = *table.GetInterfaceItem(id);
        EXPECT_EQ(via ? INTERFACE_TYPE_UNCONNECTED : before.GetType(), after.GetType());
        EXPECT_EQ(via ? EComponentId({0, 1, via->GetLocalId()}) : EComponentId(), after.GetConnectedViaId());
    }
}
