#include "eInterfaceTable.hpp"
#include "eMultiComponentId.hpp"
#include "eSingleCommand.hpp"
#include "golden.hpp"
#include "hostActions.hpp"
#include "recordedInterface.hpp"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

EMultiComponentId Target(std::initializer_list<unsigned int> path, std::vector<unsigned int> const& leaves = {})
{
    EMultiComponentId id{EComponentId(path)};
    id.SetLeaves(leaves);
    return id;
}

template <class... Value> EBlob Data(Value const&... value)
{
    EArchive archive;
    ((void)(archive << value), ...);
    return archive.GetAsEBlob();
}

bool Execute(EInterfaceTable& table, ESingleCommand const& command)
{
    return table.ExecuteCommand(command, static_cast<EComponentId*>(nullptr));
}

bool Edit(EInterfaceTable& table, std::initializer_list<unsigned int> path, std::vector<unsigned int> const& subId,
          EBlob const& data)
{
    return Execute(table, ESingleCommand(EDIT, Target(path), subId, data));
}

EIPAddress Address(char const* text)
{
    return EIPAddress(std::string(text));
}

EInterfaceItem Named(char const* name)
{
    EInterfaceItem item;
    item.SetName(name);
    return item;
}

/// Everything the table holds, as bytes.
std::string Image(EInterfaceTable const& table)
{
    return Written(table);
}

/// Data that ends the process when it is read as any record: what must not be read is not.
EBlob Poison()
{
    return Data(0x7fffffff);
}

} // namespace

// The road of one edit: command, path, record, observer, stored value, archive.
TEST(EInterfaceTableCommands, OneEditTravelsFromTheCommandToTheObserverAndTheArchive)
{
    RecordedInterface fixture;
    while (fixture.table.GetCount() < 5) fixture.table.AddInterfaceItem(EInterfaceItem());
    fixture.recorder->Clear();
    EIPv4AddressItem& ipv4 = fixture.table.GetInterfaceItem(5)->GetIPv4AddressItem();
    std::string oldGateway;
    fixture.recorder->whenCalled = [&] { oldGateway = ipv4.GetGateway().GetAsString(); };

    EXPECT_TRUE(Edit(fixture.table, {7, 1, 5, 6}, {1}, Data(Address("10.0.0.1"))));

    ASSERT_THAT(fixture.recorder->Operations(), ElementsAre("SettingIPv4Gateway"));
    EXPECT_EQ(&ipv4, fixture.recorder->calls[0].record);
    EXPECT_EQ("10.0.0.1", fixture.recorder->calls[0].values);
    EXPECT_EQ("0.0.0.0", oldGateway) << "told before the change";
    EXPECT_EQ("10.0.0.1", ipv4.GetGateway().GetAsString());
    EInterfaceTable reread;
    ReadInto(reread, Image(fixture.table));
    EXPECT_EQ("10.0.0.1", reread.GetInterfaceItem(5)->GetIPv4AddressItem().GetGateway().GetAsString());
}

// To the table itself

TEST(EInterfaceTableCommands, SetToTheTableReplacesItWholeAndTellsOnce)
{
    EInterfaceTable other(9);
    other.AddInterfaceItem(Named("other"));
    other.SetFIPVersion(5);
    RecordedInterface fixture;
    std::size_t countSeen = 0;
    fixture.recorder->whenCalled = [&] { countSeen = fixture.table.GetCount(); };
    fixture.table.AddItem();
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7}), {}, Data(other))));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceTable"));
    EXPECT_EQ(2u, countSeen);
    EXPECT_EQ(9u, fixture.table.GetPortId());
    EXPECT_EQ(5, fixture.table.GetFIPVersion());
    ASSERT_EQ(1u, fixture.table.GetCount());
    EXPECT_EQ("other", fixture.table.GetInterfaceItem(1)->GetName());
    EXPECT_EQ(&fixture.table, fixture.table.GetInterfaceItem(1)->GetParent());
    EXPECT_EQ(fixture.recorder, fixture.table.GetHooksPtr());
}

TEST(EInterfaceTableCommands, SetToTheTableFromAnOldArchiveKeepsThePort)
{
    RecordedInterface fixture;
    EInterfaceTable const empty;
    EArchive archive;
    archive << 1; // version
    empty.EInterfaceItemList::SerializeOut(archive);
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7}), {}, archive.GetAsEBlob())));
    EXPECT_EQ(7u, fixture.table.GetPortId());
    EXPECT_EQ(0u, fixture.table.GetCount());
}

TEST(EInterfaceTableCommands, ABrokenTableInASetCommandLeavesTheTableAsItWas)
{
    RecordedInterface fixture;
    std::string const before = Image(fixture.table);
    for (std::size_t size = 1; size < before.size(); ++size) {
        ESingleCommand const command(SET, Target({7}), {}, BlobOf(before.substr(0, size)));
        EXPECT_THROW(Execute(fixture.table, command), EArchiveError) << size;
    }
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_EQ(before, Image(fixture.table));
}

TEST(EInterfaceTableCommands, TableEditsReadTheirTypeAndCallTheSetter)
{
    struct {
        unsigned int subId;
        EBlob data;
        char const* operation; // null: not announced
        long (*get)(EInterfaceTable const&);
        long expected;
    } const cases[] = {
        {2, Data(3u), "SettingVpiMaskMode", [](auto& t) -> long { return t.GetVPIMaskMode(); }, 3},
        {4, Data(4u), "SettingDHCPv4RequestRate", [](auto& t) -> long { return t.GetDHCPv4RequestRate(); }, 4},
        {5, Data(5u), "SettingDHCPv6RequestRate", [](auto& t) -> long { return t.GetDHCPv6RequestRate(); }, 5},
        {6, Data(6u), "SettingDHCPv4MaxOutstandingRequests",
         [](auto& t) -> long { return t.GetDHCPv4MaxOutstandingRequests(); }, 6},
        {7, Data(7u), "SettingDHCPv6MaxOutstandingRequests",
         [](auto& t) -> long { return t.GetDHCPv6MaxOutstandingRequests(); }, 7},
        {8, Data(8u), "SettingFCoERequestRate", [](auto& t) -> long { return t.GetFCoERequestRate(); }, 8},
        {9, Data(9u), "SettingFCoERetryCount", [](auto& t) -> long { return t.GetFCoERetryCount(); }, 9},
        {10, Data(10u), "SettingFCoERetryInterval", [](auto& t) -> long { return t.GetFCoERetryInterval(); }, 10},
        {11, Data(static_cast<short>(-11)), "SettingFIPVersion", [](auto& t) -> long { return t.GetFIPVersion(); },
         -11},
        {12, Data(true), "SettingTargetLLAddrOptionEnabled",
         [](auto& t) -> long { return t.IsTargetLLAddrOptionEnabled(); }, 1},
        {13, Data(true), "SettingFCoECollectFcfMacListEnabled", [](auto& t) -> long { return t.IsFcfMacEnabled(); }, 1},
        {14, Data(90001u), "SettingFCoECollectFcfMacListTimer",
         [](auto& t) -> long { return t.GetFcfMacCollectionTime(); }, 90000},
        {15, Data(true), "SettingFCoEProposedMacInFpmaEnabled", [](auto& t) -> long { return t.IsPMacInFpmaEnabled(); },
         1},
        {16, Data(true), "SettingFCoEVlanNameIdInVlanRequest", [](auto& t) -> long { return t.IsVlanIdEnabled(); }, 1},
        {17, Data(true), nullptr, [](auto& t) -> long { return t.IsAutoNeighborDiscoveryEnabled(); }, 1},
        {18, Data(true), nullptr, [](auto& t) -> long { return t.IsAutoArpEnabled(); }, 1},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.subId);
        RecordedInterface fixture;
        EXPECT_TRUE(Edit(fixture.table, {7}, {c.subId, 99}, c.data)) << "only the first sub-id counts";
        EXPECT_EQ(c.expected, c.get(fixture.table));
        if (c.operation)
            EXPECT_THAT(fixture.recorder->Operations(), ElementsAre(c.operation));
        else
            EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    }
}

TEST(EInterfaceTableCommands, TableEdit3ReplacesTheIdGenerator)
{
    RecordedInterface fixture;
    EUniqueIDGenerator generator;
    generator.SkipPast(40);
    EXPECT_TRUE(Edit(fixture.table, {7}, {3}, Data(generator)));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_EQ(41u, fixture.table.AddInterfaceItem(EInterfaceItem()));
}

TEST(EInterfaceTableCommands, TableEditsOfUnknownSubIdsReadNothing)
{
    RecordedInterface fixture;
    for (unsigned int const subId : {0u, 1u, 19u, 20u, 0xffffffffu}) {
        SCOPED_TRACE(subId);
        EArchive archive;
        Load(archive, Bytes("05"));
        std::vector<unsigned int> const range(1, subId);
        EXPECT_FALSE(fixture.table.ProcessEdit(range.begin(), range.end(), archive));
        EXPECT_FALSE(archive.AtEnd());
        EXPECT_FALSE(Edit(fixture.table, {7}, {subId}, Data(1u)));
    }
    EXPECT_FALSE(Edit(fixture.table, {7}, {}, Data(1u)));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTableCommands, OnlySetAndEditAreForTheTableItself)
{
    RecordedInterface fixture;
    for (unsigned int const action : std::vector<unsigned int>{0, 1, ENABLE, DISABLE, ADD, REMOVE, 8, 0xffffffff}) {
        SCOPED_TRACE(action);
        ESingleCommand const command(action, Target({7}), {2}, Poison());
        EXPECT_FALSE(fixture.table.ExecuteTopLevelCommand(command));
        EXPECT_FALSE(Execute(fixture.table, command));
    }
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(SET, Target({8}), {}, Poison()))) << "another table";
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(SET, Target({7}, {1}), {}, Poison()))) << "leaves: not itself";
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(SET, EMultiComponentId(), {}, Poison()))) << "no id at all";
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

// Set

TEST(EInterfaceTableCommands, SetToTheInterfaceListReplacesTheFirstLeafAlone)
{
    RecordedInterface fixture;
    fixture.table.AddItem();
    fixture.table.AddItem();
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7, 1}, {2, 1, 3}), {}, Data(Named("new")))));
    EXPECT_EQ("", fixture.table.GetInterfaceItem(1)->GetName());
    EXPECT_EQ("new", fixture.table.GetInterfaceItem(2)->GetName());
    EXPECT_EQ("", fixture.table.GetInterfaceItem(3)->GetName());
    EXPECT_EQ(2u, fixture.table.GetInterfaceItem(2)->GetLocalId());
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingInterfaceItem"));
}

TEST(EInterfaceTableCommands, SetToTheIPv6ListReplacesTheFirstLeafAlone)
{
    RecordedInterface fixture;
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.recorder->Clear();
    EIPv6AddressItem item;
    item.SetAddress(Address("2001:db8::5"));
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7, 1, 1, 1}, {2, 1}), {}, Data(item))));
    EXPECT_EQ("::", fixture.interface.GetIPv6AddressItem(1)->GetAddress().GetAsString());
    EXPECT_EQ("2001:db8::5", fixture.interface.GetIPv6AddressItem(2)->GetAddress().GetAsString());
    EXPECT_EQ(2u, fixture.interface.GetIPv6AddressItem(2)->GetLocalId());
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingIPv6AddressItem"));
}

TEST(EInterfaceTableCommands, SetOfAFixedLeafReadsTheClassOfTheFirstLeaf)
{
    EIPv4AddressItem ipv4;
    ipv4.SetMaskLength(9);
    EDHCPProperties dhcp;
    dhcp.SetRetryCount(9);
    EDHCPv6Properties dhcpv6;
    dhcpv6.SetIAId(9);
    EFCoEConfig fcoe;
    fcoe.SetB2BRxSize(9);
    ENPIVConfig npiv;
    npiv.SetB2BRxSize(9);
    struct {
        unsigned int leaf;
        EBlob data;
        char const* operation;
        unsigned int (*get)(EInterfaceItem const&);
    } const cases[] = {
        {6, Data(ipv4), "SettingIPv4AddressItem", [](auto& i) { return i.GetIPv4AddressItem().GetMaskLength(); }},
        {24, Data(dhcp), "SettingDhcpProperties", [](auto& i) { return i.GetDHCPProperties().GetRetryCount(); }},
        {26, Data(dhcpv6), "SettingDhcpv6Properties", [](auto& i) { return i.GetDHCPv6Properties().GetIAId(); }},
        {31, Data(fcoe), "SettingFCoEConfig", [](auto& i) { return i.GetFCoEConfig().GetB2BRxSize(); }},
        {32, Data(npiv), "SettingNPIVConfig", [](auto& i) { return i.GetNPIVB2BRxSize(); }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.leaf);
        RecordedInterface fixture;
        EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7, 1, 1}, {c.leaf, 7}), {}, c.data)));
        EXPECT_EQ(9u, c.get(fixture.interface));
        EXPECT_THAT(fixture.recorder->Operations(), ElementsAre(c.operation));
    }
}

TEST(EInterfaceTableCommands, SetOfAFixedLeafTakesAnyPathThatBeginsWithTheInterface)
{
    EIPv4AddressItem ipv4;
    ipv4.SetMaskLength(9);
    EMultiComponentId const targets[] = {Target({7, 1, 1}, {6}), Target({7, 1, 1, 6}, {6}), Target({7, 1, 1, 24}, {6}),
                                         Target({7, 1, 1, 1}, {6}), Target({7, 1, 1, 9, 9}, {6})};
    for (EMultiComponentId const& target : targets) {
        SCOPED_TRACE(TextOf(target.GetId()));
        RecordedInterface fixture;
        EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, target, {}, Data(ipv4))));
        EXPECT_EQ(9u, fixture.interface.GetIPv4AddressItem().GetMaskLength());
        EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingIPv4AddressItem"));
    }
}

TEST(EInterfaceTableCommands, SetToTheIPv6ListIsOfItsItemThoughTheIdIsAFixedLeafToo)
{
    RecordedInterface fixture;
    while (fixture.interface.GetIPv6AddressItemList().GetCount() < 6)
        fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.recorder->Clear();
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(SET, Target({7, 1, 1, 1}, {6}), {}, Data(EIPv6AddressItem()))));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("SettingIPv6AddressItem"));
}

TEST(EInterfaceTableCommands, SetWithoutATargetReadsNothing)
{
    RecordedInterface fixture;
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.recorder->Clear();
    EMultiComponentId const targets[] = {Target({7, 1}),
                                         Target({7, 1}, {9, 1}),
                                         Target({8, 1}, {1}),
                                         Target({7, 2}, {1}),
                                         Target({7, 1, 1, 1}),
                                         Target({7, 1, 1, 1}, {9}),
                                         Target({7, 1, 9, 1}, {1}),
                                         Target({8, 1, 1, 1}, {1}),
                                         Target({7, 1, 1, 2}, {1}),
                                         Target({7, 1, 1, 1, 1}, {1}),
                                         Target({7, 1, 1}),
                                         Target({7, 1, 9}, {6}),
                                         Target({8, 1, 1}, {6}),
                                         Target({7, 1, 1}, {7, 6}),
                                         Target({7, 1, 1}, {34}),
                                         Target({7, 1, 1}, {36}),
                                         Target({7, 1, 1}, {38}),
                                         Target({7, 1, 1, 6}),
                                         Target({7, 1, 1, 6}, {7}),
                                         Target({7, 1, 9, 6}, {6}),
                                         Target({7, 2, 1, 6}, {6}),
                                         Target({8, 1, 1, 6}, {6}),
                                         Target({7, 1}, {6}),
                                         EMultiComponentId()};
    std::string const before = Image(fixture.table);
    for (EMultiComponentId const& target : targets)
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(SET, target, {}, Poison()))) << TextOf(target.GetId());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_EQ(before, Image(fixture.table));
}

// Enable and disable

TEST(EInterfaceTableCommands, EnableAndDisableAnInterface)
{
    RecordedInterface fixture;
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(ENABLE, Target({7, 1, 1}, {6}))));
    EXPECT_TRUE(fixture.interface.IsEnabled());
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(ENABLE, Target({7, 1, 1})))) << "unchanged is true as well";
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(DISABLE, Target({7, 1, 1}))));
    EXPECT_FALSE(fixture.interface.IsEnabled());
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("EnablingInterfaceItem", "DisablingInterfaceItem"));
}

TEST(EInterfaceTableCommands, EnableAndDisableAnIPv4Record)
{
    RecordedInterface fixture;
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(ENABLE, Target({7, 1, 1, 6}))));
    EXPECT_TRUE(fixture.interface.GetIPv4AddressItem().IsEnabled());
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(DISABLE, Target({7, 1, 1, 6}))));
    EXPECT_FALSE(fixture.interface.GetIPv4AddressItem().IsEnabled());
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("EnablingIPv4AddressItem", "DisablingIPv4AddressItem"));
}

TEST(EInterfaceTableCommands, EnableOfAnythingElseIsRefused)
{
    RecordedInterface fixture;
    for (EMultiComponentId const& target :
         {Target({7, 1}, {1}), Target({7, 1, 2}), Target({8, 1, 1}), Target({7, 1, 1, 24}), Target({7, 1, 1, 6, 1}),
          Target({7, 1, 1, 1}), EMultiComponentId()})
        for (unsigned int const action : std::vector<unsigned int>{ENABLE, DISABLE})
            EXPECT_FALSE(Execute(fixture.table, ESingleCommand(action, target))) << TextOf(target.GetId());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

// Add

TEST(EInterfaceTableCommands, AddOfAnInterfaceNamesTheListAndTheNewLeaf)
{
    RecordedInterface fixture;
    ESingleCommand const command(ADD, Target({7, 1}), {}, Data(Named("new")));
    EComponentId list;
    EXPECT_TRUE(fixture.table.ExecuteCommand(command, &list));
    EXPECT_EQ(EComponentId({7, 1}), list);
    EMultiComponentId added;
    EXPECT_TRUE(fixture.table.ExecuteCommand(command, &added));
    EXPECT_EQ(Target({7, 1}, {3}), added);
    EXPECT_EQ("new", fixture.table.GetInterfaceItem(3)->GetName());
    EXPECT_TRUE(Execute(fixture.table, command));
    EXPECT_TRUE(fixture.table.ExecuteCommand(command, static_cast<EMultiComponentId*>(nullptr)));
    EXPECT_EQ(5u, fixture.table.GetCount());
    EXPECT_EQ(std::vector<std::string>(4, "AddingInterfaceItem"), fixture.recorder->Operations());
}

TEST(EInterfaceTableCommands, AddOfAnIPv6AddressNamesTheListAndTheNewLeaf)
{
    RecordedInterface fixture;
    EIPv6AddressItem item;
    item.SetAddress(Address("2001:db8::5"));
    item.SetLocalId(77);
    ESingleCommand const command(ADD, Target({7, 1, 1, 1}), {}, Data(item));
    EMultiComponentId added;
    EXPECT_TRUE(fixture.table.ExecuteCommand(command, &added));
    EXPECT_EQ(Target({7, 1, 1, 1}, {1}), added);
    EComponentId list;
    EXPECT_TRUE(fixture.table.ExecuteCommand(command, &list));
    EXPECT_EQ(EComponentId({7, 1, 1, 1}), list);
    EXPECT_EQ("2001:db8::5", fixture.interface.GetIPv6AddressItem(2)->GetAddress().GetAsString());
    EXPECT_EQ(std::vector<std::string>(2, "AddingIPv6AddressItem"), fixture.recorder->Operations());
}

TEST(EInterfaceTableCommands, AddToNoListReadsNothingAndLeavesTheArgumentAlone)
{
    RecordedInterface fixture;
    std::string const before = Image(fixture.table);
    for (EMultiComponentId const& target :
         {Target({7}), Target({7, 2}), Target({8, 1}), Target({7, 1, 1}), Target({7, 1, 1, 2}), Target({7, 1, 9, 1}),
          Target({8, 1, 1, 1}), Target({7, 1, 1, 1, 1}), EMultiComponentId()}) {
        SCOPED_TRACE(TextOf(target.GetId()));
        ESingleCommand const command(ADD, target, {}, Poison());
        EComponentId list{99};
        EXPECT_FALSE(fixture.table.ExecuteCommand(command, &list));
        EXPECT_EQ(EComponentId({99}), list);
        EMultiComponentId added = Target({99}, {98});
        EXPECT_FALSE(fixture.table.ExecuteCommand(command, &added));
        EXPECT_EQ(Target({99}, {98}), added);
    }
    EXPECT_EQ(before, Image(fixture.table));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTableCommands, OtherActionsLeaveTheAddedIdAlone)
{
    RecordedInterface fixture;
    EComponentId list{99};
    EXPECT_TRUE(fixture.table.ExecuteCommand(ESingleCommand(ENABLE, Target({7, 1, 1})), &list));
    EXPECT_EQ(EComponentId({99}), list);
    EMultiComponentId added = Target({99}, {98});
    EXPECT_TRUE(fixture.table.ExecuteCommand(ESingleCommand(DISABLE, Target({7, 1, 1})), &added));
    EXPECT_EQ(Target({99}, {98}), added);
}

TEST(EInterfaceTableCommands, AddFailsWhenTheIdsAreUsedUp)
{
    RecordedInterface fixture;
    fixture.table.AddItem(0xffffffffu);
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(ADD, Target({7, 1}), {}, Data(Named("new")))));
    EXPECT_EQ(2u, fixture.table.GetCount());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

// Remove

TEST(EInterfaceTableCommands, RemoveOfInterfacesRemovesThoseThatExist)
{
    RecordedInterface fixture;
    fixture.table.AddItem();
    fixture.table.AddItem();
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(REMOVE, Target({7, 1}, {9, 3, 1, 1}))));
    EXPECT_EQ(1u, fixture.table.GetCount());
    EXPECT_NE(nullptr, fixture.table.GetInterfaceItem(2));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("RemovingInterfaceItem", "RemovingInterfaceItem"));
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(REMOVE, Target({7, 1}, {9, 1}))));
    EXPECT_FALSE(Execute(fixture.table, ESingleCommand(REMOVE, Target({7, 1}))));
}

TEST(EInterfaceTableCommands, RemoveOfIPv6AddressesRemovesThoseThatExist)
{
    RecordedInterface fixture;
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.recorder->Clear();
    EXPECT_TRUE(Execute(fixture.table, ESingleCommand(REMOVE, Target({7, 1, 1, 1}, {9, 2}))));
    EXPECT_NE(nullptr, fixture.interface.GetIPv6AddressItem(1));
    EXPECT_EQ(nullptr, fixture.interface.GetIPv6AddressItem(2));
    EXPECT_THAT(fixture.recorder->Operations(), ElementsAre("RemovingIPv6AddressItem"));
}

TEST(EInterfaceTableCommands, RemoveUnderAnotherPathIsRefused)
{
    RecordedInterface fixture;
    fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
    fixture.recorder->Clear();
    for (EMultiComponentId const& target :
         {Target({8, 1}, {1}), Target({7, 2}, {1}), Target({7}, {1}), Target({7, 1, 1}, {1}), Target({7, 1, 1, 6}, {1}),
          Target({7, 1, 2, 1}, {1}), Target({8, 1, 1, 1}, {1}), Target({7, 1, 1, 1, 1}, {1}), EMultiComponentId()})
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(REMOVE, target))) << TextOf(target.GetId());
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
    EXPECT_EQ(1u, fixture.interface.GetIPv6AddressItemList().GetCount());
}

// Edit

TEST(EInterfaceTableCommands, EditReachesEveryKindOfRecord)
{
    struct {
        std::vector<unsigned int> path;
        std::vector<unsigned int> subId;
        EBlob data;
        char const* operation;
    } const cases[] = {
        {{7, 1, 1}, {15}, Data(9000u), "SettingInterfaceMTU"},
        {{7, 1, 1}, {6, 2}, Data(20u), "SettingIPv4MaskLength"},
        {{7, 1, 1, 6}, {2}, Data(20u), "SettingIPv4MaskLength"},
        {{7, 1, 1, 24}, {8}, Data(3u), "SettingDhcpRetryCount"},
        {{7, 1, 1, 26}, {1}, Data(3u), "SettingDhcpv6IAId"},
        {{7, 1, 1, 1, 1}, {2}, Data(48u), "SettingIPv6MaskLength"},
        {{7, 1, 1, 31}, {3}, Data(2048u), "SettingFCoEB2BRxSize"},
        {{7, 1, 1, 32}, {3}, Data(2048u), "SettingNPIVB2BRxSize"},
        {{7, 1, 1, 34}, {2}, Data(static_cast<unsigned short>(4)), "SettingPTPPortNumber"},
        {{7, 1, 1, 36}, {2}, Data(0x1b21u), "SettingDCBXOUI"},
        {{7, 1, 1, 38}, {3}, Data(static_cast<unsigned short>(4)), "SettingLLDPHoldTime"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.operation);
        RecordedInterface fixture;
        fixture.interface.AddIPv6AddressItem(EIPv6AddressItem());
        fixture.interface.EnsureNPIV();
        fixture.interface.EnsurePTP();
        fixture.interface.EnsureDCBX();
        fixture.interface.EnsureLLDP();
        fixture.recorder->Clear();
        EMultiComponentId const target{EComponentId(c.path)};
        EXPECT_TRUE(Execute(fixture.table, ESingleCommand(EDIT, target, c.subId, c.data)));
        EXPECT_THAT(fixture.recorder->Operations(), ElementsAre(c.operation));
        EMultiComponentId withLeaves = target;
        withLeaves.SetLeaves({3, 4});
        EXPECT_TRUE(Execute(fixture.table, ESingleCommand(EDIT, withLeaves, c.subId, c.data))) << "leaves are ignored";
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(EDIT, target, {}, c.data)));
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(EDIT, target, {0}, c.data)));
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(EDIT, target, {99}, c.data)));
    }
}

TEST(EInterfaceTableCommands, EditOfAMissingRecordIsRefusedAndCreatesNone)
{
    RecordedInterface fixture;
    std::string const before = Image(fixture.table);
    for (auto const& path : std::vector<std::vector<unsigned int>>{{7, 1, 2},
                                                                   {7, 1, 2, 6},
                                                                   {8, 1, 1},
                                                                   {7, 1},
                                                                   {7, 1, 1, 1},
                                                                   {7, 1, 1, 1, 1},
                                                                   {7, 1, 1, 32},
                                                                   {7, 1, 1, 34},
                                                                   {7, 1, 1, 36},
                                                                   {7, 1, 1, 38},
                                                                   {7, 1, 1, 6, 1},
                                                                   {7, 1, 1, 5},
                                                                   {}}) {
        EComponentId const id(path);
        for (unsigned int subId = 0; subId < 45; ++subId)
            EXPECT_FALSE(Execute(fixture.table, ESingleCommand(EDIT, EMultiComponentId(id), {subId}, Poison())))
                << TextOf(id) << " " << subId;
    }
    EXPECT_EQ(before, Image(fixture.table));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTableCommands, EditWithDataTooShortChangesNothing)
{
    RecordedInterface fixture;
    std::string const before = Image(fixture.table);
    EXPECT_THROW(Edit(fixture.table, {7, 1, 1, 6}, {1}, BlobOf(Bytes("11 0a 00"))), EArchiveError);
    EXPECT_THROW(Edit(fixture.table, {7, 1, 1}, {14}, BlobOf(Bytes("05 61"))), EArchiveError);
    EXPECT_THROW(Edit(fixture.table, {7}, {4}, EBlob()), EArchiveError);
    EXPECT_EQ(before, Image(fixture.table));
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTableCommands, UnknownActionsAreRefused)
{
    RecordedInterface fixture;
    for (unsigned int const action : {0u, 1u, 8u, 0xffffffffu})
        EXPECT_FALSE(Execute(fixture.table, ESingleCommand(action, Target({7, 1}, {1}), {2}, Poison()))) << action;
    EXPECT_THAT(fixture.recorder->calls, IsEmpty());
}

TEST(EInterfaceTableCommands, WithoutAnObserverEveryCommandWorks)
{
    EInterfaceTable table(7);
    EXPECT_TRUE(Execute(table, ESingleCommand(ADD, Target({7, 1}), {}, Data(Named("a")))));
    EXPECT_TRUE(Execute(table, ESingleCommand(ENABLE, Target({7, 1, 1}))));
    EXPECT_TRUE(Edit(table, {7, 1, 1}, {14}, Data(std::string("b"))));
    EXPECT_EQ("b", table.GetInterfaceItem(1)->GetName());
    EXPECT_TRUE(Execute(table, ESingleCommand(REMOVE, Target({7, 1}, {1}))));
    EXPECT_EQ(0u, table.GetCount());
}
