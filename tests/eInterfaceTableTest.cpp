#include "eInterfaceTable.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "recordedInterface.hpp"

#include <boost/make_shared.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;

static EIPAddress Address(char const* text)
{
    return EIPAddress(std::string(text));
}

static EInterfaceItem Interface(char const* ipv4, char const* ipv6 = nullptr)
{
    EInterfaceItem item;
    item.GetIPv4AddressItem().SetAddress(Address(ipv4));
    if (ipv6) {
        EIPv6AddressItem address;
        address.SetAddress(Address(ipv6));
        item.AddIPv6AddressItem(address);
    }
    return item;
}

static void ExpectDefaultSettings(EInterfaceTable const& table)
{
    EXPECT_EQ(0u, table.GetVPIMaskMode());
    EXPECT_EQ(0u, table.GetDHCPv4RequestRate());
    EXPECT_EQ(0u, table.GetDHCPv6RequestRate());
    EXPECT_EQ(100u, table.GetDHCPv4MaxOutstandingRequests());
    EXPECT_EQ(100u, table.GetDHCPv6MaxOutstandingRequests());
    EXPECT_EQ(500u, table.GetFCoERequestRate());
    EXPECT_EQ(5u, table.GetFCoERetryCount());
    EXPECT_EQ(2000u, table.GetFCoERetryInterval());
    EXPECT_EQ(1, table.GetFIPVersion());
    EXPECT_FALSE(table.IsTargetLLAddrOptionEnabled());
    EXPECT_FALSE(table.IsFcfMacEnabled());
    EXPECT_EQ(1000u, table.GetFcfMacCollectionTime());
    EXPECT_FALSE(table.IsPMacInFpmaEnabled());
    EXPECT_FALSE(table.IsVlanIdEnabled());
    EXPECT_FALSE(table.IsAutoNeighborDiscoveryEnabled());
    EXPECT_FALSE(table.IsAutoArpEnabled());
}

TEST(EInterfaceTable, StartsWithTheDefaultsAndThePortGiven)
{
    EXPECT_EQ(0u, EInterfaceTable().GetPortId());
    EInterfaceTable const table(42);
    EXPECT_EQ(42u, table.GetPortId());
    ExpectDefaultSettings(table);
    EXPECT_EQ(0u, table.GetCount());
    EXPECT_EQ(nullptr, table.GetHooksPtr());
    EXPECT_EQ("", table.GetHooksName());
    EXPECT_EQ(&table, table.GetParent());
}

TEST(EInterfaceTable, NamesItselfOnceForTheLifeOfTheProcess)
{
    EXPECT_EQ("InterfaceTable", EInterfaceTable::StaticGetTableName().GetName());
    EXPECT_EQ(&EInterfaceTable::StaticGetTableName(), &EInterfaceTable(1).GetTableName());
}

namespace {

struct ESettingCase {
    char const* operation; // null: not announced
    void (*set)(EInterfaceTable&);
    long (*get)(EInterfaceTable const&);
    long before;
    long after;
    long whenCalled;
};

#define SETTING(operation, Setter, Getter, before, given, after, whenCalled)                                           \
    {                                                                                                                  \
        operation, [](EInterfaceTable& table) { table.Setter(given); },                                                \
            [](EInterfaceTable const& table) { return static_cast<long>(table.Getter()); }, before, after, whenCalled  \
    }
#define OLD(operation, Setter, Getter, before, after) SETTING(operation, Setter, Getter, before, after, after, before)

ESettingCase const kSettings[] = {
    SETTING("SettingVpiMaskMode", SetVPIMaskMode, GetVPIMaskMode, 0, static_cast<EInterfaceTable::eVPIMaskMode>(7), 7,
            0),
    OLD("SettingDHCPv4RequestRate", SetDHCPv4RequestRate, GetDHCPv4RequestRate, 0, 11),
    OLD("SettingDHCPv6RequestRate", SetDHCPv6RequestRate, GetDHCPv6RequestRate, 0, 12),
    OLD("SettingDHCPv4MaxOutstandingRequests", SetDHCPv4MaxOutstandingRequests, GetDHCPv4MaxOutstandingRequests, 100,
        13),
    OLD("SettingDHCPv6MaxOutstandingRequests", SetDHCPv6MaxOutstandingRequests, GetDHCPv6MaxOutstandingRequests, 100,
        14),
    OLD("SettingFCoERequestRate", SetFCoERequestRate, GetFCoERequestRate, 500, 15),
    OLD("SettingFCoERetryCount", SetFCoERetryCount, GetFCoERetryCount, 5, 16),
    OLD("SettingFCoERetryInterval", SetFCoERetryInterval, GetFCoERetryInterval, 2000, 17),
    OLD("SettingFIPVersion", SetFIPVersion, GetFIPVersion, 1, -2),
    OLD("SettingFCoECollectFcfMacListEnabled", SetFcfMacEnabled, IsFcfMacEnabled, 0, 1),
    OLD("SettingFCoEProposedMacInFpmaEnabled", SetPMacInFpmaEnabled, IsPMacInFpmaEnabled, 0, 1),
    OLD("SettingFCoEVlanNameIdInVlanRequest", SetVlanIdEnabled, IsVlanIdEnabled, 0, 1),
    OLD("SettingTargetLLAddrOptionEnabled", SetTargetLLAddrOptionEnabled, IsTargetLLAddrOptionEnabled, 0, 1),
    // Clamped, and stored before it is announced.
    SETTING("SettingFCoECollectFcfMacListTimer", SetFcfMacCollectionTime, GetFcfMacCollectionTime, 1000, 5, 5, 5),
    SETTING("SettingFCoECollectFcfMacListTimer", SetFcfMacCollectionTime, GetFcfMacCollectionTime, 1000, 0, 1000, 1000),
    SETTING("SettingFCoECollectFcfMacListTimer", SetFcfMacCollectionTime, GetFcfMacCollectionTime, 1000, 90000, 90000,
            90000),
    SETTING("SettingFCoECollectFcfMacListTimer", SetFcfMacCollectionTime, GetFcfMacCollectionTime, 1000, 90001, 90000,
            90000),
    // Not announced.
    OLD(nullptr, SetPortId, GetPortId, 7, 8),
    OLD(nullptr, SetAutoNeighborDiscoveryEnabled, IsAutoNeighborDiscoveryEnabled, 0, 1),
    OLD(nullptr, SetAutoArpEnabled, IsAutoArpEnabled, 0, 1),
};

} // namespace

TEST(EInterfaceTable, SettersAnnounceOnceAndStoreAfterwardsButForTheCollectionTime)
{
    for (ESettingCase const& c : kSettings) {
        SCOPED_TRACE(c.operation ? c.operation : "not announced");
        EInterfaceTable table(7);
        auto const recorder = boost::make_shared<Recorder>();
        table.SetHooks("recorder", recorder);
        long seen = -1;
        recorder->whenCalled = [&] { seen = c.get(table); };
        EXPECT_EQ(c.before, c.get(table));
        c.set(table);
        EXPECT_EQ(c.after, c.get(table));
        if (!c.operation) {
            EXPECT_THAT(recorder->calls, IsEmpty());
            continue;
        }
        ASSERT_THAT(recorder->Operations(), ElementsAre(c.operation));
        EXPECT_EQ(&table, recorder->calls[0].record);
        EXPECT_EQ(c.whenCalled, seen);
        EXPECT_EQ(c.after == 1 && c.before == 0 ? "true" : std::to_string(c.after), recorder->calls[0].values);
    }
}

TEST(EInterfaceTable, EmptyKeepsPortAndObserverAndTellsItOnce)
{
    RecordedInterface fixture;
    fixture.table.SetFIPVersion(2);
    fixture.recorder->Clear();
    std::size_t countSeen = 0;
    fixture.recorder->whenCalled = [&] { countSeen = fixture.table.GetCount(); };
    fixture.table.Empty();
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceTable"));
    EXPECT_EQ(1u, countSeen) << "told before the change";
    EXPECT_EQ(7u, fixture.table.GetPortId());
    EXPECT_EQ(fixture.recorder, fixture.table.GetHooksPtr());
    EXPECT_EQ("recorder", fixture.table.GetHooksName());
    EXPECT_EQ(0u, fixture.table.GetCount());
    ExpectDefaultSettings(fixture.table);
    EXPECT_EQ(1u, fixture.table.AddInterfaceItem(EInterfaceItem())) << "the generator is that of a fresh table";
}

TEST(EInterfaceTable, AssignmentTakesItemsSettingsAndPortAndKeepsTheObserver)
{
    EInterfaceTable other(9);
    other.SetFIPVersion(3);
    other.AddInterfaceItem(Interface("10.0.0.1", "2001:db8::1"));
    other.AddInterfaceItem(Interface("10.0.0.2"));
    RecordedInterface fixture;
    fixture.table = other;
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceTable"));
    EXPECT_EQ(fixture.recorder, fixture.table.GetHooksPtr());
    EXPECT_EQ(9u, fixture.table.GetPortId());
    EXPECT_EQ(3, fixture.table.GetFIPVersion());
    ASSERT_EQ(2u, fixture.table.GetCount());
    EXPECT_EQ(&fixture.table, fixture.table.GetInterfaceItem(1)->GetParent());
    EXPECT_EQ(&other, other.GetInterfaceItem(1)->GetParent());
    EXPECT_EQ(2u, other.GetCount());
    EXPECT_EQ(3u, fixture.table.AddInterfaceItem(EInterfaceItem())) << "the generator comes along";
}

TEST(EInterfaceTable, AssignmentToItselfChangesNothingButIsTold)
{
    RecordedInterface fixture;
    EInterfaceTable const& same = fixture.table;
    fixture.table = same;
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceTable"));
    EXPECT_EQ(1u, fixture.table.GetCount());
}

namespace {

/// Looks at both tables of an announcement.
class EReplacementObserver : public EIgnoreInterfaceTableHooks {
public:
    std::vector<std::size_t> seen; // current port, current count, new port, new count

    void SettingInterfaceTable(EInterfaceTable const& current, EInterfaceTable const& replacement) override
    {
        EXPECT_EQ(nullptr, replacement.GetHooksPtr());
        seen = {current.GetPortId(), current.GetCount(), replacement.GetPortId(), replacement.GetCount()};
    }
};

} // namespace

TEST(EInterfaceTable, AReplacementIsAnnouncedWithTheNewContents)
{
    EInterfaceTable other(9);
    other.AddInterfaceItem(EInterfaceItem());
    EInterfaceTable table(7);
    auto const observer = boost::make_shared<EReplacementObserver>();
    table.SetHooks("observer", observer);
    table.Copy(other);
    EXPECT_THAT(observer->seen, ElementsAre(7u, 0u, 9u, 1u));
    table.Empty();
    EXPECT_THAT(observer->seen, ElementsAre(9u, 1u, 9u, 0u));
}

TEST(EInterfaceTable, CopiesStartWithoutAnObserver)
{
    RecordedInterface fixture;
    EInterfaceTable copy(fixture.table);
    EXPECT_EQ(nullptr, copy.GetHooksPtr());
    EXPECT_EQ("", copy.GetHooksName());
    EXPECT_EQ(7u, copy.GetPortId());
    ASSERT_NE(nullptr, copy.GetInterfaceItem(1));
    EXPECT_EQ(&copy, copy.GetInterfaceItem(1)->GetParent());
    copy.GetInterfaceItem(1)->SetName("copy");
    copy.AddInterfaceItem(EInterfaceItem());
    EXPECT_EQ("", fixture.interface.GetName());
    EXPECT_EQ(1u, fixture.table.GetCount());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTable, SwapExchangesContentsAndPortButNotObservers)
{
    RecordedInterface fixture;
    EInterfaceTable other(9);
    auto const otherRecorder = boost::make_shared<Recorder>();
    other.SetHooks("other", otherRecorder);
    fixture.table.Swap(other);
    EXPECT_EQ(9u, fixture.table.GetPortId());
    EXPECT_EQ(7u, other.GetPortId());
    EXPECT_EQ(0u, fixture.table.GetCount());
    ASSERT_EQ(1u, other.GetCount());
    EXPECT_EQ(&other, other.GetInterfaceItem(1)->GetParent());
    EXPECT_EQ(fixture.recorder, fixture.table.GetHooksPtr());
    EXPECT_EQ(otherRecorder, other.GetHooksPtr());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_THAT(otherRecorder->calls, IsEmpty());
}

TEST(EInterfaceTable, SwapWithItselfChangesNothing)
{
    RecordedInterface fixture;
    EInterfaceTable& same = fixture.table;
    fixture.interface.SetName("a");
    fixture.recorder->Clear();
    fixture.table.Swap(same);
    EXPECT_EQ(7u, fixture.table.GetPortId());
    EXPECT_EQ(&fixture.interface, fixture.table.GetInterfaceItem(1));
    EXPECT_EQ("a", fixture.interface.GetName());
    EXPECT_EQ(&fixture.table, fixture.interface.GetParent());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

// Interfaces

TEST(EInterfaceTable, AddInterfaceItemStoresFirstSoThatTheObserverReadsIdAndParent)
{
    RecordedInterface fixture;
    EInterfaceItem item;
    item.SetLocalId(99);
    item.SetName("new");
    void const* stored = nullptr;
    fixture.recorder->whenCalled = [&] { stored = fixture.table.GetInterfaceItem(2); };
    EXPECT_EQ(2u, fixture.table.AddInterfaceItem(item));
    ASSERT_THAT(fixture.recorder->Operations(), ElementsAre("AddingInterfaceItem"));
    EXPECT_NE(nullptr, stored);
    EXPECT_EQ(stored, fixture.recorder->calls[0].record);
    EXPECT_EQ(2u, fixture.table.GetInterfaceItem(2)->GetLocalId());
    EXPECT_EQ("new", fixture.table.GetInterfaceItem(2)->GetName());
}

TEST(EInterfaceTable, AddInterfaceItemTellsNothingWhenTheIdsAreUsedUp)
{
    RecordedInterface fixture;
    fixture.table.AddItem(0, EInterfaceItem()); // an explicit id may be 0
    fixture.table.AddItem(0xffffffff, EInterfaceItem());
    EXPECT_EQ(0u, fixture.table.AddInterfaceItem(EInterfaceItem()));
    EXPECT_EQ(3u, fixture.table.GetCount());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTable, TakesItsOwnInterfacesAsArguments)
{
    RecordedInterface fixture;
    fixture.interface = Interface("10.0.0.1", "2001:db8::1");
    fixture.interface.SetLocalId(1);
    EXPECT_EQ(2u, fixture.table.AddInterfaceItem(fixture.interface));
    EXPECT_TRUE(fixture.table.SetInterfaceItem(1, fixture.interface));
    for (unsigned int const id : {1u, 2u}) {
        SCOPED_TRACE(id);
        EInterfaceItem const& item = *fixture.table.GetInterfaceItem(id);
        EXPECT_EQ(id, item.GetLocalId());
        EXPECT_EQ(&fixture.table, item.GetParent());
        EXPECT_EQ("10.0.0.1", item.GetIPv4AddressItem().GetAddress().GetAsString());
        ASSERT_NE(nullptr, item.GetIPv6AddressItem(1));
        EXPECT_EQ(&item, item.GetIPv6AddressItem(1)->GetParent());
    }
}

TEST(EInterfaceTable, SetInterfaceItemKeepsTheSlotsIdAndTellsOnce)
{
    RecordedInterface fixture;
    EInterfaceItem item;
    item.SetLocalId(99);
    item.SetName("replacement");
    EXPECT_FALSE(fixture.table.SetInterfaceItem(5, item));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_TRUE(fixture.table.SetInterfaceItem(1, item));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceItem"));
    EXPECT_EQ(1u, fixture.interface.GetLocalId());
    EXPECT_EQ(&fixture.table, fixture.interface.GetParent());
    EXPECT_EQ("replacement", fixture.interface.GetName());
}

TEST(EInterfaceTable, RemoveInterfaceItemTellsWhileItIsStillThere)
{
    RecordedInterface fixture;
    bool there = false;
    fixture.recorder->whenCalled = [&] { there = fixture.table.GetInterfaceItem(1) != nullptr; };
    EXPECT_FALSE(fixture.table.RemoveInterfaceItem(2));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_TRUE(fixture.table.RemoveInterfaceItem(1));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("RemovingInterfaceItem"));
    EXPECT_TRUE(there);
    EXPECT_EQ(nullptr, fixture.table.GetInterfaceItem(1));
    EXPECT_EQ(2u, fixture.table.AddInterfaceItem(EInterfaceItem())) << "a freed id is never handed out again";
}

TEST(EInterfaceTable, PlainContainerOperationsTellNothing)
{
    RecordedInterface fixture;
    EInterfaceItemList& list = fixture.table.GetInterfaceItemList();
    EXPECT_EQ(&fixture.table, &list);
    EXPECT_EQ(2u, list.AddItem());
    EXPECT_TRUE(list.RemoveItem(2));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTable, GetAllIPsAppendsEnabledIPv4AndEveryIPv6InTheOrderOfIds)
{
    EInterfaceTable table;
    EInterfaceItem first = Interface("10.0.0.1", "2001:db8::1");
    EIPv6AddressItem another;
    another.SetAddress(Address("2001:db8::2"));
    first.AddIPv6AddressItem(another);
    table.AddInterfaceItem(first); // its IPv4 record is disabled
    EInterfaceItem second = Interface("10.0.0.2");
    second.GetIPv4AddressItem().SetEnabled(true);
    table.AddInterfaceItem(second); // the interface itself is not enabled
    std::list<EIPAddress> addresses(1, Address("192.0.2.1"));
    table.GetAllIPs(addresses);
    std::vector<std::string> texts;
    for (EIPAddress const& address : addresses) texts.push_back(address.GetAsString());
    EXPECT_THAT(texts, ElementsAre("192.0.2.1", "2001:db8::1", "2001:db8::2", "10.0.0.2"));
}

TEST(EInterfaceTable, GetFirstInterfaceOfEachKindWantsItEnabled)
{
    EInterfaceTable table;
    EXPECT_EQ(nullptr, table.GetFirstIPv4Interface());
    EXPECT_EQ(nullptr, table.GetFirstIPv6Interface());
    EXPECT_EQ(nullptr, table.GetFirstDHCPv4Interface());
    EXPECT_EQ(nullptr, table.GetFirstDHCPv6Interface());
    EInterfaceItem item = Interface("10.0.0.1", "2001:db8::1");
    item.GetIPv4AddressItem().SetEnabled(true);
    item.SetDHCPEnabled(true);
    item.SetDHCPv6Enabled(true);
    table.AddInterfaceItem(item); // disabled: passed over
    EInterfaceItem bare;
    bare.SetEnabled(true);
    table.AddInterfaceItem(bare);
    EXPECT_EQ(nullptr, table.GetFirstIPv4Interface());
    item.SetEnabled(true);
    EInterfaceItem const* const expected = table.GetInterfaceItem(table.AddInterfaceItem(item));
    table.AddInterfaceItem(item);
    EXPECT_EQ(expected, table.GetFirstIPv4Interface());
    EXPECT_EQ(expected, table.GetFirstIPv6Interface());
    EXPECT_EQ(expected, table.GetFirstDHCPv4Interface());
    EXPECT_EQ(expected, table.GetFirstDHCPv6Interface());
}

// Lookups

TEST(EInterfaceTable, FindInterfaceByIPTakesTheFirstOfAnyType)
{
    EInterfaceTable table;
    EInterfaceItem gre = Interface("10.0.0.1", "2001:db8::1");
    gre.SetType(INTERFACE_TYPE_GRE);
    table.AddInterfaceItem(gre);
    table.AddInterfaceItem(Interface("10.0.0.1", "2001:db8::1"));
    EVLAN vlan;
    vlan.SetVLANID(100);
    for (char const* address : {"10.0.0.1", "2001:db8::1"}) {
        SCOPED_TRACE(address);
        EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address(address)));
        EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIPAndVlan(Address(address), &vlan)); // not consulted
        EXPECT_EQ(table.GetInterfaceItem(2), table.FindConnectedInterfaceByIP(Address(address)));      // no GRE
    }
    for (char const* address : {"10.0.0.2", "2001:db8::2", "::"}) {
        SCOPED_TRACE(address);
        EXPECT_EQ(nullptr, table.FindInterfaceByIP(Address(address)));
        EXPECT_EQ(nullptr, table.FindConnectedInterfaceByIP(Address(address)));
    }
}

TEST(EInterfaceTable, TheLookupObserversAnswerIsFinal)
{
    EInterfaceTable stranger(8); // what the observer believes in
    stranger.AddItem(5, Interface("10.0.0.1"));
    stranger.AddItem(1, Interface("10.0.0.9"));
    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    lookup->Rebuild(stranger);
    EInterfaceTable table(7);
    table.AddInterfaceItem(Interface("10.0.0.1"));

    table.SetHooks("other name", lookup);
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1"))) << "not asked: scanned";
    table.SetHooks("IP_LOOKUP_HOOKS", lookup);
    EXPECT_EQ(nullptr, table.FindInterfaceByIP(Address("10.0.0.1"))) << "it names the missing id 5: no scan follows";
    EXPECT_EQ(nullptr, table.FindInterfaceByIP(Address("10.0.0.9"))) << "it names 1, which has another address";
    lookup->Rebuild(table);
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1")));

    table.SetHooks("IP_LOOKUP_HOOKS", boost::make_shared<Recorder>());
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1"))) << "the name alone is nothing";
}

TEST(EInterfaceTable, TheLookupObserversAnswerIsVerifiedForIPv6Too)
{
    EInterfaceTable stranger(8); // what the observer believes in
    stranger.AddItem(1, Interface("10.0.0.1", "2001:db8::9"));
    stranger.AddItem(2, Interface("10.0.0.2", "2001:db8::2"));
    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    lookup->Rebuild(stranger);
    EInterfaceTable table(7);
    table.AddInterfaceItem(Interface("10.0.0.1", "2001:db8::1"));
    table.AddInterfaceItem(Interface("10.0.0.2", "2001:db8::2"));
    table.AddInterfaceItem(Interface("10.0.0.3", "2001:db8::9"));
    table.SetHooks("IP_LOOKUP_HOOKS", lookup);
    EVLAN const untagged;
    for (EVLAN const* const vlan : {static_cast<EVLAN const*>(nullptr), &untagged}) {
        EXPECT_EQ(table.GetInterfaceItem(2), table.FindInterfaceByIPAndVlan(Address("2001:db8::2"), vlan));
        EXPECT_EQ(nullptr, table.FindInterfaceByIPAndVlan(Address("2001:db8::9"), vlan)) << "it names 1, not 3";
        EXPECT_EQ(nullptr, table.FindInterfaceByIPAndVlan(Address("2001:db8::1"), vlan)) << "it names none";
    }
}

TEST(EInterfaceTable, TheLookupObserverIsFoundInsideASet)
{
    EInterfaceTable table(7);
    table.AddInterfaceTableHooks("recorder", boost::make_shared<Recorder>());
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
    table.AddItem(1, Interface("10.0.0.1")); // not announced: the index does not know it
    EXPECT_EQ(nullptr, table.FindInterfaceByIP(Address("10.0.0.1")));
    EXPECT_EQ(2u, table.AddInterfaceItem(Interface("10.0.0.2"))); // announced
    EXPECT_EQ(table.GetInterfaceItem(2), table.FindInterfaceByIP(Address("10.0.0.2")));
}

// Observers

TEST(EInterfaceTable, GetHooksNeverFails)
{
    EInterfaceTable first;
    EInterfaceTable second;
    EXPECT_EQ(&first.GetHooks(), &second.GetHooks()) << "one for the process";
    first.SetFIPVersion(4);
    EXPECT_EQ(4, first.GetFIPVersion());
}

TEST(EInterfaceTable, ANullNameIsTheEmptyName)
{
    EInterfaceTable table;
    auto const recorder = boost::make_shared<Recorder>();
    table.SetHooks(nullptr, recorder);
    EXPECT_EQ("", table.GetHooksName());
    EXPECT_EQ(recorder, table.FindInterfaceTableHooks(nullptr));
    EXPECT_EQ(recorder, table.FindInterfaceTableHooks(""));
    table.RemoveInterfaceTableHooks(nullptr);
    EXPECT_EQ(nullptr, table.GetHooksPtr());
}

TEST(EInterfaceTable, AddingUnderTheCurrentNameReplaces)
{
    EInterfaceTable table;
    auto const first = boost::make_shared<Recorder>();
    auto const second = boost::make_shared<Recorder>();
    table.AddInterfaceTableHooks("a", first);
    table.AddInterfaceTableHooks("a", second);
    EXPECT_EQ(second, table.GetHooksPtr());
    EXPECT_EQ("a", table.GetHooksName());
    EXPECT_EQ(1, first.use_count()) << "the old one is released";
}

TEST(EInterfaceTable, ASecondNameMakesTheSetMulti)
{
    EInterfaceTable table;
    auto const first = boost::make_shared<Recorder>();
    auto const second = boost::make_shared<Recorder>();
    auto const third = boost::make_shared<Recorder>();
    table.AddInterfaceTableHooks("a", first);
    table.AddInterfaceTableHooks("b", second);
    EXPECT_EQ("multi", table.GetHooksName());
    ASSERT_NE(nullptr, boost::dynamic_pointer_cast<EMultipleInterfaceTableHooks>(table.GetHooksPtr()));
    table.AddInterfaceTableHooks("c", third);
    EXPECT_EQ(first, table.FindInterfaceTableHooks("a"));
    EXPECT_EQ(second, table.FindInterfaceTableHooks("b"));
    EXPECT_EQ(third, table.FindInterfaceTableHooks("c"));
    EXPECT_EQ(nullptr, table.FindInterfaceTableHooks("d"));
    EXPECT_EQ(table.GetHooksPtr(), table.FindInterfaceTableHooks("multi"));
    table.SetFIPVersion(2);
    for (auto const& recorder : {first, second, third})
        EXPECT_THAT(recorder->Operations(), ElementsAre("SettingFIPVersion"));

    table.RemoveInterfaceTableHooks("b");
    EXPECT_EQ(nullptr, table.FindInterfaceTableHooks("b"));
    EXPECT_EQ("multi", table.GetHooksName()) << "the set stays installed";
    table.SetFIPVersion(3);
    EXPECT_EQ(1u, second->calls.size());
    EXPECT_EQ(2u, third->calls.size());
    table.RemoveInterfaceTableHooks("multi");
    EXPECT_EQ(nullptr, table.GetHooksPtr());
    EXPECT_EQ("", table.GetHooksName());
}

TEST(EInterfaceTable, TheSetTellsTheNewObserverBeforeTheOneThatWasInstalled)
{
    EInterfaceTable table;
    std::string told;
    auto const first = boost::make_shared<Recorder>();
    auto const second = boost::make_shared<Recorder>();
    first->whenCalled = [&] { told += 'a'; };
    second->whenCalled = [&] { told += 'b'; };
    table.AddInterfaceTableHooks("a", first);
    table.AddInterfaceTableHooks("b", second);
    table.SetFIPVersion(2);
    EXPECT_EQ("ba", told); // on purpose: in the order of adding to the set
}

TEST(EInterfaceTable, ItsOwnNameMayBeTheArgument)
{
    EInterfaceTable table;
    auto const recorder = boost::make_shared<Recorder>();
    table.SetHooks("an observer with a name that is longer than a short string", recorder);
    table.SetHooks(table.GetHooksName().c_str(), recorder);
    EXPECT_EQ("an observer with a name that is longer than a short string", table.GetHooksName());
    table.RemoveInterfaceTableHooks(table.GetHooksName().c_str());
    EXPECT_EQ("", table.GetHooksName());
}

TEST(EInterfaceTable, RemovingAnUnknownNameDoesNothing)
{
    EInterfaceTable table;
    auto const recorder = boost::make_shared<Recorder>();
    table.SetHooks("a", recorder);
    table.RemoveInterfaceTableHooks("b");
    EXPECT_EQ(recorder, table.GetHooksPtr());
    EXPECT_EQ("a", table.GetHooksName());
    EXPECT_EQ(nullptr, table.FindInterfaceTableHooks("b"));
}

TEST(EInterfaceTable, AnObserverMayChangeTheTableFromInsideACall)
{
    RecordedInterface fixture;
    bool inside = false;
    auto const once = [&](auto const& change) {
        fixture.recorder->whenCalled = [&inside, change] {
            if (!std::exchange(inside, true)) change();
        };
        inside = false;
    };
    once([&] { fixture.table.SetFIPVersion(5); });
    fixture.table.SetFIPVersion(4);
    EXPECT_EQ(4, fixture.table.GetFIPVersion()) << "the outer value is stored last";

    once([&] { fixture.table.RemoveInterfaceItem(1); });
    EXPECT_EQ(2u, fixture.table.AddInterfaceItem(EInterfaceItem()));
    EXPECT_EQ(nullptr, fixture.table.GetInterfaceItem(1));
    EXPECT_NE(nullptr, fixture.table.GetInterfaceItem(2));

    once([&] { fixture.table.AddInterfaceItem(EInterfaceItem()); });
    fixture.table.Empty();
    EXPECT_EQ(0u, fixture.table.GetCount()) << "what was added meanwhile is replaced as well";

    once([&] { fixture.table.RemoveInterfaceTableHooks("recorder"); });
    fixture.table.SetFIPVersion(6);
    EXPECT_EQ(6, fixture.table.GetFIPVersion());
    EXPECT_EQ(nullptr, fixture.table.GetHooksPtr());
}

TEST(EInterfaceTable, AnExceptionOfTheObserverPreventsTheChangeItWasToldOf)
{
    RecordedInterface fixture;
    fixture.recorder->whenCalled = [] { throw std::runtime_error("no"); };
    EInterfaceTable other(9);
    EXPECT_THROW(fixture.table.SetFIPVersion(2), std::runtime_error);
    EXPECT_THROW(fixture.table = other, std::runtime_error);
    EXPECT_THROW(fixture.table.Empty(), std::runtime_error);
    EXPECT_THROW(fixture.table.SetInterfaceItem(1, Interface("10.0.0.1")), std::runtime_error);
    EXPECT_THROW(fixture.table.RemoveInterfaceItem(1), std::runtime_error);
    EXPECT_EQ(1, fixture.table.GetFIPVersion());
    EXPECT_EQ(7u, fixture.table.GetPortId());
    ASSERT_EQ(&fixture.interface, fixture.table.GetInterfaceItem(1));
    EXPECT_EQ("0.0.0.0", fixture.interface.GetIPv4AddressItem().GetAddress().GetAsString());
    EXPECT_THROW(fixture.table.AddInterfaceItem(EInterfaceItem()), std::runtime_error);
    EXPECT_NE(nullptr, fixture.table.GetInterfaceItem(2)) << "it was stored before the announcement";
}

TEST(EInterfaceTable, DestructionReleasesTheObserverAndTellsItNothing)
{
    auto const recorder = boost::make_shared<Recorder>();
    {
        EInterfaceTable table;
        table.AddInterfaceItem(EInterfaceItem());
        table.SetHooks("a", recorder);
    }
    EXPECT_EQ(1, recorder.use_count());
    EXPECT_THAT(recorder->calls, IsEmpty());
}
