#include "eDiscoveredTable.hpp"

#include "discoveredRecorder.hpp"

#include "eComponentId.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using Calls = std::vector<std::string>;

static EDiscoveredNeighbor const kSilent = Neighbor("02:00:00:00:00:01");                  // without an address
static EDiscoveredNeighbor const kAddressed = Neighbor("02:00:00:00:00:02", {"10.0.0.2"}); // with one
static EDiscoveredNeighbor const kOther = Neighbor("02:00:00:00:00:03", {"10.0.0.3"});

static void Add(EDiscoveredTable& table, std::vector<EDiscoveredInfo> const& infos)
{
    for (EDiscoveredInfo const& info : infos) table.AddInfo(info);
}

/// "5.2 02:00:00:00:00:02": interface, neighbour and MAC.
static std::string DefaultMac(EDiscoveredTable const& table)
{
    return std::to_string(table.GetDefaultMACIfId()) + "." + std::to_string(table.GetDefaultMACNbrId()) + " " +
           table.GetDefaultMAC().GetAsString();
}
static char const* const kNoDefault = "0.0 00:00:00:00:00:00";

/// Every info points at the table, and every record at its info.
static void ExpectAdopted(EDiscoveredTable const& table)
{
    EDiscoveredInfoList const& infos = table.GetInfos();
    EXPECT_EQ(&table, infos.GetParent());
    for (auto position = infos.begin(); position != infos.end(); ++position) {
        EDiscoveredInfo const& info = *infos.GetItem(position);
        EXPECT_EQ(&table, info.GetParent());
        EXPECT_EQ(&info, info.GetNeighbors().GetParent());
        EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
        for (auto neighbor = neighbors.begin(); neighbor != neighbors.end(); ++neighbor)
            EXPECT_EQ(&info, neighbors.GetItem(neighbor)->GetParent());
        EXPECT_EQ(&info, info.GetDHCPInfo().GetParent());
        EXPECT_EQ(&info, info.GetDCBXInfo().GetParent());
    }
}

// ---- Look-ups -------------------------------------------------------------------------------------------------------

TEST(EDiscoveredTable, ANewOneIsEmptyWithoutADefaultMACAndWithoutAnObserver)
{
    EDiscoveredTable table;
    EXPECT_EQ(0U, table.GetInfos().size());
    EXPECT_EQ(&table, table.GetInfos().GetParent());
    EXPECT_EQ(nullptr, table.hooks);
    EXPECT_FALSE(table.HasDefaultMAC());
    EXPECT_EQ(kNoDefault, DefaultMac(table));
    EXPECT_EQ(nullptr, table.GetInfo(0U));
    EXPECT_EQ(nullptr, table.FindInfoByIP(EIPAddress()));
    table.SetDefaultMAC(0, 3, MAC("02:00:00:00:00:03"));
    table.FindDefaultMAC();
    EXPECT_EQ(kNoDefault, DefaultMac(table));
}

TEST(EDiscoveredTable, TheProtocolNameIsOneObjectForTheProcess)
{
    EXPECT_EQ("DiscoveredTable", EDiscoveredTable::StaticGetProtocolName().GetName());
    EXPECT_EQ(&EDiscoveredTable::StaticGetProtocolName(), &EDiscoveredTable::StaticGetProtocolName());
    EXPECT_EQ(&EDiscoveredTable::StaticGetProtocolName(), &EDiscoveredTable().GetProtocolName());
}

TEST(EDiscoveredTable, TheTableIsTheRootOfComponentIds)
{
    EComponentId id{9, 9};
    EDiscoveredTable().GetComponentId(id);
    EXPECT_EQ(EComponentId(), id);
}

TEST(EDiscoveredTable, InfosAndNeighborsAreFoundByComponentIdAndFurtherLevelsIgnored)
{
    EDiscoveredTable table;
    Add(table, {Info(5, {kSilent, kAddressed}), Info(7)});
    EDiscoveredTable const& constant = table;
    EDiscoveredInfo* const info = table.GetInfo(5);
    EDiscoveredNeighbor* const neighbor = info->GetNeighbor(2);
    struct {
        EComponentId id;
        EDiscoveredInfo* info;
        EDiscoveredNeighbor* neighbor;
    } const cases[] = {
        {{}, nullptr, nullptr},      {{5}, info, nullptr},    {{5, 2}, info, neighbor},   {{5, 3}, info, nullptr},
        {{5, 2, 9}, info, neighbor}, {{6}, nullptr, nullptr}, {{6, 2}, nullptr, nullptr},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.info, table.GetInfo(c.id));
        EXPECT_EQ(c.info, constant.GetInfo(c.id));
        EXPECT_EQ(c.neighbor, table.GetNeighbor(c.id));
        EXPECT_EQ(c.neighbor, constant.GetNeighbor(c.id));
    }
    EComponentId own;
    neighbor->GetComponentId(own);
    EXPECT_EQ(neighbor, table.GetNeighbor(own));
    info->GetComponentId(own);
    EXPECT_EQ(info, table.GetInfo(own));
    EXPECT_EQ(info, constant.GetInfo(5));
}

TEST(EDiscoveredTable, FindInfoByIPTakesTheLowestIdAndDoesNotSearchNeighbors)
{
    EDiscoveredTable table;
    Add(table, {Info(7), Info(5, {kAddressed}), Info(6)});
    table.GetInfo(7)->AddAddress(IP("10.0.0.9"));
    table.GetInfo(6)->AddAddress(IP("10.0.0.8"));
    table.GetInfo(6)->AddAddress(IP("10.0.0.9"));
    EXPECT_EQ(table.GetInfo(6), table.FindInfoByIP(IP("10.0.0.9")));
    EXPECT_EQ(table.GetInfo(6), table.FindInfoByIP(IP("10.0.0.8")));
    EXPECT_EQ(nullptr, table.FindInfoByIP(IP("10.0.0.2"))); // a neighbour's
    table.RemoveInfo(6);
    EXPECT_EQ(table.GetInfo(7), table.FindInfoByIP(IP("10.0.0.9")));
    EXPECT_EQ(nullptr, table.FindInfoByIP(IP("::")));
}

// ---- Infos ----------------------------------------------------------------------------------------------------------

TEST(EDiscoveredTable, AddInfoTellsOfTheStoredCopyBeforeTheDefaultMACIsLookedFor)
{
    EDiscoveredTable table;
    auto const recorder = boost::make_shared<DiscoveredRecorder>();
    table.hooks = recorder;
    EDiscoveredInfo const source = Info(5, {kAddressed});
    recorder->whenCalled = [&] {
        EXPECT_EQ(table.GetInfo(5), recorder->calls.back().record);
        EXPECT_NE(&source, recorder->calls.back().record);
        EXPECT_FALSE(table.HasDefaultMAC());
    };
    table.AddInfo(source);
    EXPECT_EQ(Calls{"AddingInfo(5 down [1 02:00:00:00:00:02 router 10.0.0.2])"}, recorder->TakeCalls());
    EXPECT_EQ("5.1 02:00:00:00:00:02", DefaultMac(table));
    ExpectAdopted(table);
}

TEST(EDiscoveredTable, AddInfoUnderAUsedIdReplacesWhatIsThereAndTellsOfTheNewOneAlone)
{
    RecordedInfo in;
    in.info.AddNeighbor(kSilent);
    in.recorder->Clear();
    in.table.AddInfo(Info(5, {kAddressed}));
    EXPECT_EQ(Calls{"AddingInfo(5 down [1 02:00:00:00:00:02 router 10.0.0.2])"}, in.recorder->TakeCalls());
    EXPECT_EQ("(5 down [1 02:00:00:00:00:02 router 10.0.0.2]) default 5.1 02:00:00:00:00:02", TextOf(in.table));
}

TEST(EDiscoveredTable, AddInfoMayBeGivenTheStoredRecord)
{
    RecordedInfo in;
    in.info.AddNeighbor(kAddressed);
    in.info.SetInterfaceUp(true);
    in.recorder->Clear();
    in.table.AddInfo(in.info);
    EXPECT_EQ(Calls{"AddingInfo(5 up [1 02:00:00:00:00:02 router 10.0.0.2])"}, in.recorder->TakeCalls());
    EXPECT_EQ("(5 up [1 02:00:00:00:00:02 router 10.0.0.2]) default 5.1 02:00:00:00:00:02", TextOf(in.table));
    ExpectAdopted(in.table);
}

TEST(EDiscoveredTable, RemoveInfoTellsWhileItIsStillThere)
{
    RecordedInfo in;
    in.info.AddNeighbor(kAddressed);
    in.recorder->Clear();
    in.recorder->whenCalled = [&] {
        EXPECT_EQ(in.table.GetInfo(5), in.recorder->calls.back().record);
        EXPECT_TRUE(in.table.HasDefaultMAC());
    };
    in.table.RemoveInfo(5);
    EXPECT_EQ(Calls{"RemovingInfo(5 down [1 02:00:00:00:00:02 router 10.0.0.2])"}, in.recorder->TakeCalls());
    EXPECT_EQ("default 0.0 00:00:00:00:00:00", TextOf(in.table));
    in.table.RemoveInfo(5);
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
}

TEST(EDiscoveredTable, SetInfoAnnouncesTheReplacementAndKeepsIdAndParentWhateverIsGiven)
{
    RecordedInfo in;
    EDiscoveredInfo source = Info(9, {kAddressed});
    source.SetInterfaceUp(true);
    in.recorder->whenCalled = [&] {
        EXPECT_EQ(&in.info, in.recorder->calls.back().record);
        EXPECT_FALSE(in.table.HasDefaultMAC());
    };
    in.table.SetInfo(5, source);
    EXPECT_EQ(Calls{"SettingInfo(5 down: 9 up [1 02:00:00:00:00:02 router 10.0.0.2])"}, in.recorder->TakeCalls());
    EXPECT_EQ("(5 up [1 02:00:00:00:00:02 router 10.0.0.2]) default 5.1 02:00:00:00:00:02", TextOf(in.table));
    EXPECT_EQ(&in.info, in.table.GetInfo(5)); // the same object
    ExpectAdopted(in.table);

    in.recorder->whenCalled = nullptr;
    in.table.SetInfo(5, in.info); // itself
    EXPECT_EQ(Calls{"SettingInfo(5 up [1 02:00:00:00:00:02 router 10.0.0.2]: "
                    "5 up [1 02:00:00:00:00:02 router 10.0.0.2])"},
              in.recorder->TakeCalls());
    EXPECT_EQ("(5 up [1 02:00:00:00:00:02 router 10.0.0.2]) default 5.1 02:00:00:00:00:02", TextOf(in.table));
}

TEST(EDiscoveredTable, SetInfoOfAnUnknownIdAddsNothing)
{
    RecordedInfo in;
    in.table.SetInfo(9, Info(9, {kAddressed}));
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ("(5 down) default 0.0 00:00:00:00:00:00", TextOf(in.table));
}

// ---- Default MAC ----------------------------------------------------------------------------------------------------

namespace {

struct DefaultMacCase {
    char const* name;
    std::vector<EDiscoveredInfo> infos; // added in this order
    std::function<void(EDiscoveredTable&)> change;
    char const* before;
    char const* after;
};

} // namespace

static void ExpectDefaultMacs(std::vector<DefaultMacCase> const& cases)
{
    for (DefaultMacCase const& c : cases) {
        SCOPED_TRACE(c.name);
        EDiscoveredTable table;
        Add(table, c.infos);
        EXPECT_EQ(c.before, DefaultMac(table));
        c.change(table);
        EXPECT_EQ(c.after, DefaultMac(table));
        EXPECT_EQ(table.GetDefaultMACIfId() != 0, table.HasDefaultMAC());
    }
}

static char const* const kAddressedOf5 = "5.1 02:00:00:00:00:02";
static char const* const kAddressedOf7 = "7.1 02:00:00:00:00:02";
static char const* const kOtherOf5 = "5.1 02:00:00:00:00:03";
static char const* const kOtherOf7 = "7.1 02:00:00:00:00:03";

TEST(EDiscoveredTable, AddInfoAndTheDefaultMAC)
{
    ExpectDefaultMacs({
        {"the first neighbour with an address becomes the default",
         {},
         [](auto& table) {
             table.AddInfo(Info(5, {kSilent, kAddressed, kOther}));
         },
         kNoDefault,
         "5.2 02:00:00:00:00:02"},
        {"neighbours without an address do not",
         {},
         [](auto& table) { table.AddInfo(Info(5, {kSilent})); },
         kNoDefault,
         kNoDefault},
        {"an existing default stays when a lower interface is added",
         {Info(7, {kAddressed})},
         [](auto& table) { table.AddInfo(Info(5, {kOther})); },
         kAddressedOf7,
         kAddressedOf7},
        {"replacing the interface of the default looks for it again, in this interface",
         {Info(7, {kAddressed})},
         [](auto& table) { table.AddInfo(Info(7, {kOther})); },
         kAddressedOf7,
         kOtherOf7},
        {"and in all others, the lowest first",
         {Info(7, {kAddressed}), Info(5, {kOther})},
         [](auto& table) { table.AddInfo(Info(7, {kAddressed})); },
         kAddressedOf7,
         kOtherOf5},
        {"without a default only the added interface is searched",
         {Info(5, {kSilent})},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
             table.AddInfo(Info(7, {kSilent}));
         },
         kNoDefault,
         kNoDefault},
        {"but an interface of id 0 is that of no default: all are searched",
         {Info(5, {kSilent})},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
             table.AddInfo(Info(0));
         },
         kNoDefault,
         "5.1 02:00:00:00:00:01"},
        {"a neighbour of interface 0 is taken, and counts as none",
         {},
         [](auto& table) { table.AddInfo(Info(0, {kAddressed})); },
         kNoDefault,
         "0.1 02:00:00:00:00:02"},
    });
}

TEST(EDiscoveredTable, RemoveInfoAndTheDefaultMAC)
{
    ExpectDefaultMacs({
        {"it moves to the next interface with an addressed neighbour",
         {Info(5, {kAddressed}), Info(6, {kSilent}), Info(7, {kOther})},
         [](auto& table) { table.RemoveInfo(5); },
         kAddressedOf5,
         kOtherOf7},
        {"or to none",
         {Info(5, {kAddressed}), Info(7, {kSilent})},
         [](auto& table) { table.RemoveInfo(5); },
         kAddressedOf5,
         kNoDefault},
        {"another interface does not matter",
         {Info(7, {kAddressed}), Info(5, {kOther}), Info(6)},
         [](auto& table) {
             table.RemoveInfo(6);
             table.RemoveInfo(9);
         },
         kAddressedOf7,
         kAddressedOf7},
        {"an interface that is said to have it need not be there",
         {Info(5, {kAddressed})},
         [](auto& table) {
             table.SetDefaultMAC(9, 1, MAC("02:00:00:00:00:99"));
             table.RemoveInfo(9);
         },
         kAddressedOf5,
         kAddressedOf5},
        {"removing interface 0 looks for one when there is none",
         {Info(5, {kSilent})},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
             table.RemoveInfo(0);
         },
         kNoDefault,
         "5.1 02:00:00:00:00:01"},
    });
}

TEST(EDiscoveredTable, SetInfoAndTheDefaultMAC)
{
    ExpectDefaultMacs({
        {"setting its interface looks for it again everywhere",
         {Info(7, {kAddressed}), Info(5, {kOther})},
         [](auto& table) { table.SetInfo(7, Info(7, {kAddressed})); },
         kAddressedOf7,
         kOtherOf5},
        {"setting another leaves it",
         {Info(7, {kAddressed}), Info(5)},
         [](auto& table) { table.SetInfo(5, Info(5, {kOther})); },
         kAddressedOf7,
         kAddressedOf7},
        {"without a default every interface is searched",
         {Info(5, {kSilent}), Info(7)},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
             table.SetInfo(7, Info(7, {kOther}));
         },
         kNoDefault,
         "5.1 02:00:00:00:00:01"},
        {"and so for an interface that is not there",
         {Info(5, {kSilent})},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
             table.SetInfo(9, Info(9));
         },
         kNoDefault,
         "5.1 02:00:00:00:00:01"},
        {"it goes when nobody has an address any more",
         {Info(5, {kAddressed})},
         [](auto& table) { table.SetInfo(5, Info(5, {kSilent})); },
         kAddressedOf5,
         kNoDefault},
    });
}

TEST(EDiscoveredTable, NeighborsAndTheDefaultMAC)
{
    ExpectDefaultMacs({
        {"without a default a new neighbour becomes it, on purpose without an address too",
         {Info(5)},
         [](auto& table) { table.GetInfo(5)->AddNeighbor(kSilent); },
         kNoDefault,
         "5.1 02:00:00:00:00:01"},
        {"with one it stays",
         {Info(7, {kAddressed}), Info(5)},
         [](auto& table) { table.GetInfo(5)->AddNeighbor(kOther); },
         kAddressedOf7,
         kAddressedOf7},
        {"a new neighbour of interface 0 takes it and counts as none: the next takes it again",
         {Info(0), Info(5)},
         [](auto& table) {
             table.GetInfo(0U)->AddNeighbor(kSilent);
             EXPECT_EQ("0.1 02:00:00:00:00:01", DefaultMac(table));
             table.GetInfo(5)->AddNeighbor(kOther);
         },
         kNoDefault,
         kOtherOf5},
        {"setting it takes its new MAC, even without an address",
         {Info(5, {kAddressed, kOther})},
         [](auto& table) { table.GetInfo(5)->SetNeighbor(1, kSilent); },
         kAddressedOf5,
         "5.1 02:00:00:00:00:01"},
        {"setting another leaves it",
         {Info(5, {kSilent, kAddressed}), Info(7, {kOther, kOther})},
         [](auto& table) {
             table.GetInfo(5)->SetNeighbor(1, kOther);
             table.GetInfo(7)->SetNeighbor(2, kSilent); // of the same id in another interface
         },
         "5.2 02:00:00:00:00:02",
         "5.2 02:00:00:00:00:02"},
        {"removing it looks for the next, the lowest interface first",
         {Info(7, {kAddressed, kAddressed}), Info(5, {kOther})},
         [](auto& table) { table.GetInfo(7)->RemoveNeighbor(1); },
         kAddressedOf7,
         kOtherOf5},
        {"with an address",
         {Info(5, {kAddressed, kSilent})},
         [](auto& table) { table.GetInfo(5)->RemoveNeighbor(1); },
         kAddressedOf5,
         kNoDefault},
        {"removing another leaves it",
         {Info(7, {kAddressed}), Info(5, {kOther})},
         [](auto& table) { table.GetInfo(5)->RemoveNeighbor(1); },
         kAddressedOf7,
         kAddressedOf7},
        {"one that is said to be it need not be there",
         {Info(5, {kAddressed})},
         [](auto& table) {
             table.SetDefaultMAC(5, 9, EMACAddress());
             table.GetInfo(5)->RemoveNeighbor(9);
         },
         kAddressedOf5,
         kAddressedOf5},
    });
}

TEST(EDiscoveredTable, NothingElseMovesTheDefaultMAC)
{
    ExpectDefaultMacs({
        {"its addresses",
         {Info(5, {kAddressed, kOther})},
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->RemoveAddress(IP("10.0.0.2")); },
         kAddressedOf5,
         kAddressedOf5},
        {"a lower neighbour's addresses",
         {Info(5, {kSilent, kAddressed})},
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1")); },
         "5.2 02:00:00:00:00:02",
         "5.2 02:00:00:00:00:02"},
        {"the first address of all",
         {Info(5, {kSilent})},
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1")); },
         kNoDefault,
         kNoDefault},
        {"its MAC",
         {Info(5, {kAddressed})},
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->SetMac(MAC("02:00:00:00:00:09")); },
         kAddressedOf5,
         kAddressedOf5},
        {"its own replacement and that of its interface, when they are not set through their owners",
         {Info(5, {kAddressed})},
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->Copy(kOther);
             table.GetInfo(5)->Copy(Info(5, {kOther}));
             table.GetInfo(5)->Empty();
         },
         kAddressedOf5,
         kAddressedOf5},
        {"the interface's state and its own addresses",
         {Info(5, {kAddressed}), Info(3)},
         [](auto& table) {
             table.GetInfo(5)->SetInterfaceUp(false);
             table.GetInfo(3)->AddAddress(IP("10.0.0.9"));
         },
         kAddressedOf5,
         kAddressedOf5},
    });
}

TEST(EDiscoveredTable, FindDefaultMACIncrementalSearchesOneInfoAndChangesNothingWithoutSuccess)
{
    EDiscoveredTable table;
    Add(table, {Info(5, {kAddressed})});
    EDiscoveredInfo const silent = Info(7, {kSilent});
    EXPECT_FALSE(table.FindDefaultMACIncremental(nullptr));
    EXPECT_FALSE(table.FindDefaultMACIncremental(&silent));
    EXPECT_EQ(kAddressedOf5, DefaultMac(table));
    EDiscoveredInfo const found = Info(9, {kSilent, kOther, kAddressed}); // need not be the table's
    EXPECT_TRUE(table.FindDefaultMACIncremental(&found));
    EXPECT_EQ("9.2 02:00:00:00:00:03", DefaultMac(table));
    table.FindDefaultMAC();
    EXPECT_EQ(kAddressedOf5, DefaultMac(table));
}

TEST(EDiscoveredTable, SetDefaultMACTakesAnythingAndTheInterfaceAloneTellsWhetherThereIsOne)
{
    EDiscoveredTable table;
    table.SetDefaultMAC(9, 0, EMACAddress());
    EXPECT_TRUE(table.HasDefaultMAC());
    EXPECT_EQ("9.0 00:00:00:00:00:00", DefaultMac(table));
    table.SetDefaultMAC(0, 8, MAC("02:00:00:00:00:08"));
    EXPECT_FALSE(table.HasDefaultMAC());
    EXPECT_EQ("0.8 02:00:00:00:00:08", DefaultMac(table));
    table.SetDefaultMAC(1, 2, table.GetDefaultMAC()); // its own
    EXPECT_EQ("1.2 02:00:00:00:00:08", DefaultMac(table));
}

// ---- Whole tables ---------------------------------------------------------------------------------------------------

static char const* const kTwoInfos = "(5 down [1 02:00:00:00:00:02 router 10.0.0.2]) (7 down) ";

TEST(EDiscoveredTable, ACopyHasTheInfosAndTheTwoIdsButNeitherTheDefaultMACNorTheObserver)
{
    EDiscoveredTable source;
    Add(source, {Info(5, {kAddressed}), Info(7)});
    source.hooks = boost::make_shared<DiscoveredRecorder>();
    EDiscoveredTable copy(source);
    EXPECT_EQ(kTwoInfos + std::string("default 5.1 00:00:00:00:00:00"), TextOf(copy)); // on purpose
    EXPECT_TRUE(copy.HasDefaultMAC());
    EXPECT_EQ(nullptr, copy.hooks);
    ExpectAdopted(copy);
    ExpectAdopted(source);
    EXPECT_EQ(kTwoInfos + std::string("default 5.1 02:00:00:00:00:02"), TextOf(source));
    copy.RemoveInfo(5);
    EXPECT_NE(nullptr, source.GetInfo(5));
}

TEST(EDiscoveredTable, CopyAndEmptyAreAnnouncedOnceWithTheReplacementAndKeepTheObserver)
{
    EDiscoveredTable source;
    Add(source, {Info(5, {kAddressed}), Info(7)});
    source.hooks = boost::make_shared<DiscoveredRecorder>();
    std::string const copied = kTwoInfos + std::string("default 5.1 00:00:00:00:00:00");
    std::string const before = "(3 down [1 02:00:00:00:00:03 router 10.0.0.3]) default 3.1 02:00:00:00:00:03";
    struct {
        char const* name;
        std::function<void(EDiscoveredTable&)> change;
        std::string after;
    } const cases[] = {
        {"Copy", [&](auto& table) { table.Copy(source); }, copied},
        {"operator=", [&](auto& table) { table = source; }, copied},
        {"Empty", [](auto& table) { table.Empty(); }, "default 0.0 00:00:00:00:00:00"},
        {"itself", [](auto& table) { table.Copy(table); },
         "(3 down [1 02:00:00:00:00:03 router 10.0.0.3]) default 3.1 00:00:00:00:00:00"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EDiscoveredTable table;
        Add(table, {Info(3, {kOther})});
        auto const recorder = boost::make_shared<DiscoveredRecorder>();
        table.hooks = recorder;
        recorder->whenCalled = [&] {
            EDiscoveredTable const& replacement = recorder->Argument<EDiscoveredTable>(0);
            EXPECT_NE(&source, &replacement);
            EXPECT_EQ(nullptr, replacement.hooks);
            ExpectAdopted(replacement);
        };
        c.change(table);
        ASSERT_EQ(1U, recorder->calls.size());
        EXPECT_EQ(&table, recorder->calls[0].record);
        EXPECT_EQ(Calls{"SettingDiscoveredTable(" + before + ": " + c.after + ")"}, recorder->TakeCalls());
        EXPECT_EQ(c.after, TextOf(table));
        EXPECT_EQ(recorder, table.hooks);
        ExpectAdopted(table);
    }
    EXPECT_TRUE(static_cast<DiscoveredRecorder&>(*source.hooks).calls.empty());
    ExpectAdopted(source);
}

TEST(EDiscoveredTable, SwapExchangesContentsAndDefaultMACButNotTheObserversAndTellsNobody)
{
    EDiscoveredTable one;
    EDiscoveredTable two;
    Add(one, {Info(5, {kAddressed}), Info(7)});
    Add(two, {Info(3, {kOther})});
    auto const recorder = boost::make_shared<DiscoveredRecorder>();
    one.hooks = recorder;
    one.Swap(two);
    EXPECT_EQ("(3 down [1 02:00:00:00:00:03 router 10.0.0.3]) default 3.1 02:00:00:00:00:03", TextOf(one));
    EXPECT_EQ(kTwoInfos + std::string("default 5.1 02:00:00:00:00:02"), TextOf(two));
    EXPECT_EQ(recorder, one.hooks);
    EXPECT_EQ(nullptr, two.hooks);
    EXPECT_TRUE(recorder->calls.empty());
    ExpectAdopted(one);
    ExpectAdopted(two);
    two.Swap(two);
    EXPECT_EQ(kTwoInfos + std::string("default 5.1 02:00:00:00:00:02"), TextOf(two));
    ExpectAdopted(two);
}

TEST(EDiscoveredTable, AssignedAndSwappedTablesOutliveTheirSource)
{
    auto source = std::make_unique<EDiscoveredTable>();
    Add(*source, {Info(5, {kAddressed}), Info(7)});
    source->hooks = boost::make_shared<DiscoveredRecorder>();
    EDiscoveredTable constructed(*source);
    EDiscoveredTable assigned;
    assigned = *source;
    EDiscoveredTable swapped;
    swapped.Swap(*source);
    source.reset();
    for (EDiscoveredTable* const table : {&constructed, &assigned, &swapped}) {
        ExpectAdopted(*table);
        table->GetInfo(7)->SetInterfaceUp(true);
        table->GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.9"));
        table->GetInfo(5)->RemoveNeighbor(1);
        EXPECT_EQ("(5 down) (7 up) default 0.0 00:00:00:00:00:00", TextOf(*table));
    }
}

TEST(EDiscoveredTable, WithoutAnObserverEveryOperationIsAccepted)
{
    EDiscoveredTable table;
    Add(table, {Info(5, {kAddressed})});
    table.SetInfo(5, Info(5, {kSilent, kOther}));
    EDiscoveredInfo& info = *table.GetInfo(5);
    info.SetInterfaceUp(true);
    info.AddAddress(IP("10.0.0.9"));
    info.RemoveAddress(IP("10.0.0.9"));
    info.AddNeighbor(kAddressed);
    info.SetNeighbor(3, kOther);
    info.RemoveNeighbor(2);
    info.GetNeighbor(1)->SetIsRouter(false);
    info.GetNeighbor(1)->SetMac(MAC("02:00:00:00:00:09"));
    info.GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
    info.SetDHCPInfo(EDHCPDiscoveredInfo());
    info.SetDCBXInfo(EDCBXDiscoveredInfo());
    EXPECT_EQ("(5 up [1 02:00:00:00:00:09 host 10.0.0.1] [3 02:00:00:00:00:03 router 10.0.0.3]) "
              "default 5.3 02:00:00:00:00:03",
              TextOf(table));
    table.RemoveInfo(5);
    table.Empty();
    EXPECT_EQ("default 0.0 00:00:00:00:00:00", TextOf(table));
}
