#include "eIPv4AddressItem.hpp"

#include "recordCases.hpp"
#include "recordedInterface.hpp"

static EIPv4AddressItem SampleV1()
{
    EIPv4AddressItem item;
    item.SetAddress(EIPAddress("10.0.0.5"));
    item.SetGateway(EIPAddress("10.0.0.1"));
    item.SetMaskLength(16);
    return item;
}
static EIPv4AddressItem SampleV2()
{
    EIPv4AddressItem item = SampleV1();
    item.SetEnabled(true);
    return item;
}
static EIPv4AddressItem SampleV3()
{
    EIPv4AddressItem item = SampleV2();
    item.SetMSS(1460);
    return item;
}

/// "enabled address gateway mask-length MSS"
static std::string Summary(EIPv4AddressItem const& item)
{
    return TextOf(item.IsEnabled()) + " " + item.GetAddress().GetAsString() + " " + item.GetGateway().GetAsString() +
           " " + TextOf(item.GetMaskLength()) + " " + TextOf(item.GetMSS());
}

namespace {

/// A table's interface with a sample address and two VLANs, the outer one of priority 5, CFI 1 and id 10.
struct SampleInTable : RecordedInterface {
    EIPv4AddressItem& item;

    SampleInTable() : item(interface.GetIPv4AddressItem())
    {
        EVLANIPAddressTableItemProperties vlans(2, true);
        vlans.SetVlanTag(0xB00A, 0);
        vlans.SetVlanTag(100, 1);
        interface.SetVLANItem(vlans);
        item = SampleV3();
        recorder->Clear();
    }
};

} // namespace

TEST(EIPv4AddressItem, StartsDisabledWithoutAddress)
{
    EIPv4AddressItem const item;
    EXPECT_EQ("false 0.0.0.0 0.0.0.0 24 0", Summary(item));
    EXPECT_EQ(17U, item.GetAddress().GetFamily());
    EXPECT_EQ(17U, item.GetGateway().GetFamily());
    EXPECT_EQ(nullptr, item.GetParent());
}

TEST(EIPv4AddressItem, SetMSSClampsInto28To65495ButKeeps0AndIsSilent)
{
    struct {
        unsigned int given;
        bool accepted;
        unsigned int stored;
    } const cases[] = {{0, true, 0},         {1, false, 28},        {27, false, 28},       {28, true, 28},
                       {65495, true, 65495}, {65496, false, 65495}, {70000, false, 65495}, {0xFFFFFFFF, false, 65495}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        SampleInTable sample;
        EXPECT_EQ(c.accepted, sample.item.SetMSS(c.given));
        EXPECT_EQ(c.stored, sample.item.GetMSS());
        EXPECT_TRUE(sample.recorder->calls.empty());
    }
}

TEST(EIPv4AddressItem, SetMaskLengthAnnouncesAndStoresAtMost32)
{
    struct {
        unsigned int given;
        unsigned int stored;
    } const cases[] = {{0, 0}, {24, 24}, {32, 32}, {33, 32}, {40, 32}, {0xFFFFFFFF, 32}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        SampleInTable sample;
        sample.item.SetMaskLength(c.given);
        EXPECT_EQ(c.stored, sample.item.GetMaskLength());
        ASSERT_EQ(1U, sample.recorder->calls.size());
        EXPECT_EQ(std::to_string(c.stored), sample.recorder->calls[0].values);
    }
}

TEST(EIPv4AddressItem, EveryChangeIsAnnouncedOnceWhileTheOldValueStands)
{
    std::string const vlans = "on[45066 100]";
    struct {
        char const* name;
        void (*change)(EIPv4AddressItem&);
        std::string operation;
        std::string values;
        std::string after;
    } const cases[] = {
        {"SetAddress", [](EIPv4AddressItem& item) { item.SetAddress(EIPAddress("10.9.9.9")); }, "SettingIPv4Address",
         "10.9.9.9, " + vlans + ", 5.1.10", "true 10.9.9.9 10.0.0.1 16 1460"},
        {"SetGateway", [](EIPv4AddressItem& item) { item.SetGateway(EIPAddress("10.0.0.254")); }, "SettingIPv4Gateway",
         "10.0.0.254", "true 10.0.0.5 10.0.0.254 16 1460"},
        {"SetGateway to the same", [](EIPv4AddressItem& item) { item.SetGateway(item.GetGateway()); },
         "SettingIPv4Gateway", "10.0.0.1", "true 10.0.0.5 10.0.0.1 16 1460"},
        {"SetMaskLength", [](EIPv4AddressItem& item) { item.SetMaskLength(8); }, "SettingIPv4MaskLength", "8",
         "true 10.0.0.5 10.0.0.1 8 1460"},
        {"SetEnabled", [](EIPv4AddressItem& item) { item.SetEnabled(false); }, "DisablingIPv4AddressItem", vlans,
         "false 10.0.0.5 10.0.0.1 16 1460"},
        {"Copy", [](EIPv4AddressItem& item) { item.Copy(SampleV1()); }, "SettingIPv4AddressItem",
         "record, " + vlans + ", " + vlans, "false 10.0.0.5 10.0.0.1 16 0"},
        {"operator=", [](EIPv4AddressItem& item) { item = SampleV2(); }, "SettingIPv4AddressItem",
         "record, " + vlans + ", " + vlans, "true 10.0.0.5 10.0.0.1 16 0"},
        {"operator= of itself", [](EIPv4AddressItem& item) { item.Copy(item); }, "SettingIPv4AddressItem",
         "record, " + vlans + ", " + vlans, "true 10.0.0.5 10.0.0.1 16 1460"},
        {"Empty", [](EIPv4AddressItem& item) { item.Empty(); }, "SettingIPv4AddressItem",
         "record, " + vlans + ", off[]", "false 0.0.0.0 0.0.0.0 24 0"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        SampleInTable sample;
        std::string seen;
        sample.recorder->whenCalled = [&] { seen = Summary(sample.item); };
        c.change(sample.item);
        ASSERT_EQ(1U, sample.recorder->calls.size());
        EXPECT_EQ(c.operation, sample.recorder->calls[0].operation);
        EXPECT_EQ(&sample.item, sample.recorder->calls[0].record);
        EXPECT_EQ(c.values, sample.recorder->calls[0].values);
        EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 1460", seen);
        EXPECT_EQ(c.after, Summary(sample.item));
        EXPECT_EQ(&sample.interface, sample.item.GetParent());
    }
}

namespace {

/// Keeps what the observer was given as the record that will replace the current one.
struct ReplacementReader : EIgnoreInterfaceTableHooks {
    std::string replacement;

    void SettingIPv4AddressItem(EIPv4AddressItem const&, EIPv4AddressItem const& next,
                                EVLANIPAddressTableItemProperties const&,
                                EVLANIPAddressTableItemProperties const&) override
    {
        replacement = Summary(next);
    }
};

} // namespace

TEST(EIPv4AddressItem, AReplacementIsShownToTheObserver)
{
    SampleInTable sample;
    auto const reader = boost::make_shared<ReplacementReader>();
    sample.table.SetHooks("reader", reader);
    sample.item = SampleV1();
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", reader->replacement);
    sample.item.Empty();
    EXPECT_EQ("false 0.0.0.0 0.0.0.0 24 0", reader->replacement);
}

TEST(EIPv4AddressItem, SetEnabledIsAnnouncedOnARealChangeOnly)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen += " " + TextOf(sample.item.IsEnabled()); };
    for (bool const enabled : {true, false, false, true, true}) sample.item.SetEnabled(enabled);
    ASSERT_EQ((std::vector<std::string>{"DisablingIPv4AddressItem", "EnablingIPv4AddressItem"}),
              sample.recorder->Operations());
    EXPECT_EQ("on[45066 100]", sample.recorder->calls[1].values);
    EXPECT_EQ(" true false", seen); // the old values
    EXPECT_TRUE(sample.item.IsEnabled());
}

TEST(EIPv4AddressItem, SetAddressTellsTheOutermostVLANOnlyWhenVLANsAreEnabled)
{
    struct {
        EVLANIPAddressTableItemProperties vlans;
        char const* values;
    } cases[] = {
        {EVLANIPAddressTableItemProperties(), "10.9.9.9, off[], 0.0.0"},
        {EVLANIPAddressTableItemProperties(1, false), "10.9.9.9, off[45066], 0.0.0"},
        {EVLANIPAddressTableItemProperties(1, true), "10.9.9.9, on[45066], 5.1.10"},
        {EVLANIPAddressTableItemProperties(0, true), "10.9.9.9, on[], 0.0.0"},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.values);
        SampleInTable sample;
        c.vlans.SetVlanTag(0xB00A, 0);
        sample.interface.SetVLANItem(c.vlans);
        sample.recorder->Clear();
        sample.item.SetAddress(EIPAddress("10.9.9.9"));
        ASSERT_EQ(1U, sample.recorder->calls.size());
        EXPECT_EQ(c.values, sample.recorder->calls[0].values);
    }
}

TEST(EIPv4AddressItem, WithoutAParentEverythingChangesUnheard)
{
    EIPv4AddressItem item = SampleV3();
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&item.GetHooks()));
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 1460", Summary(item));
    item.SetEnabled(false);
    item.Empty();
    EXPECT_EQ("false 0.0.0.0 0.0.0.0 24 0", Summary(item));
}

TEST(EIPv4AddressItem, SetsItsParentSilently)
{
    SampleInTable sample;
    ExpectParentSetSilently<EIPv4AddressItem>(*sample.recorder, sample.interface, [](auto& r) { r.SetMaskLength(8); });
}

TEST(EIPv4AddressItem, CopyConstructionTakesTheParentAndSwapLeavesIt)
{
    SampleInTable sample;
    EIPv4AddressItem copy(sample.item);
    EXPECT_EQ(&sample.interface, copy.GetParent());
    EXPECT_FALSE(copy != sample.item);

    EIPv4AddressItem other;
    other.Swap(sample.item);
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ(&sample.interface, sample.item.GetParent());
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 1460", Summary(other));
    EXPECT_EQ("false 0.0.0.0 0.0.0.0 24 0", Summary(sample.item));
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EIPv4AddressItem, DiffersByEveryFieldButNotByTheParent)
{
    void (*const changes[])(EIPv4AddressItem&) = {
        [](EIPv4AddressItem& item) { item.SetEnabled(false); },
        [](EIPv4AddressItem& item) { item.SetAddress(EIPAddress("10.0.0.6")); },
        [](EIPv4AddressItem& item) { item.SetGateway(EIPAddress("10.0.0.2")); },
        [](EIPv4AddressItem& item) { item.SetMaskLength(17); },
        [](EIPv4AddressItem& item) { item.SetMSS(1461); },
    };
    EIPv4AddressItem const sample = SampleV3();
    for (auto const& change : changes) {
        EIPv4AddressItem changed = sample;
        EXPECT_FALSE(changed != sample);
        change(changed);
        EXPECT_TRUE(changed != sample);
        EXPECT_TRUE(sample != changed);
    }
    SampleInTable inTable;
    EXPECT_FALSE(inTable.item != sample);
}

TEST(EIPv4AddressItemEdit, TheFirstSubIdPicksTheFieldAndItsSetter)
{
    struct {
        std::vector<unsigned int> subId;
        char const* data;
        char const* operation; // empty: silent
        char const* after;
    } const cases[] = {
        {{1}, "11 0A 00 00 FE", "SettingIPv4Gateway", "true 10.0.0.5 10.0.0.254 16 1460"},
        {{1, 9, 9}, "11 0A 00 00 FE", "SettingIPv4Gateway", "true 10.0.0.5 10.0.0.254 16 1460"},
        {{2}, "08", "SettingIPv4MaskLength", "true 10.0.0.5 10.0.0.1 8 1460"},
        {{2}, "28", "SettingIPv4MaskLength", "true 10.0.0.5 10.0.0.1 32 1460"}, // 40
        {{3}, "11 0A 09 09 09", "SettingIPv4Address", "true 10.9.9.9 10.0.0.1 16 1460"},
        {{4}, "40", "", "true 10.0.0.5 10.0.0.1 16 64"},
        {{4}, "01", "", "true 10.0.0.5 10.0.0.1 16 28"}, // clamped, and done all the same
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.after);
        SampleInTable sample;
        EArchive archive;
        Load(archive, Bytes(c.data));
        EXPECT_TRUE(sample.item.ProcessEdit(c.subId.begin(), c.subId.end(), archive));
        EXPECT_TRUE(archive.AtEnd());
        EXPECT_EQ(c.after, Summary(sample.item));
        std::vector<std::string> heard;
        if (*c.operation) heard.push_back(c.operation);
        EXPECT_EQ(heard, sample.recorder->Operations());
    }
}

TEST(EIPv4AddressItemEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    for (std::vector<unsigned int> const& subId :
         std::vector<std::vector<unsigned int>>{{}, {0}, {5}, {6, 1}, {0xFFFFFFFF}}) {
        SampleInTable sample;
        EArchive archive;
        Load(archive, Bytes("11 0A 00 00 FE"));
        EXPECT_FALSE(sample.item.ProcessEdit(subId.begin(), subId.end(), archive));
        EXPECT_EQ(0U, archive.GetOffset());
        EXPECT_FALSE(sample.item != SampleV3());
        EXPECT_TRUE(sample.recorder->calls.empty());
    }
}

TEST(EIPv4AddressItemEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable sample;
    for (unsigned int const subId : {2U, 4U})
        ExpectTooWide(*sample.recorder, sample.item, subId, "FC 01 00 00 00 00"); // 33 bits
}

TEST(EIPv4AddressItemArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    EXPECT_EQ(Golden("EIPv4AddressItem.v3.hex"), Written(SampleV3()));
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 1460", Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex")));
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 0", Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v2.hex")));
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v1.hex")));
}

TEST(EIPv4AddressItemArchive, ReadingEmptiesFirstWhichIsAllThatIsAnnounced)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen = Summary(sample.item); };
    ReadInto(sample.item, Golden("EIPv4AddressItem.v1.hex"));
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 1460", seen);
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", Summary(sample.item));
    ASSERT_EQ(1U, sample.recorder->calls.size());
    EXPECT_EQ("SettingIPv4AddressItem", sample.recorder->calls[0].operation);
    EXPECT_EQ("record, on[45066 100], off[]", sample.recorder->calls[0].values);
    EXPECT_EQ(&sample.interface, sample.item.GetParent());
}

TEST(EIPv4AddressItemArchive, ReadingClampsNothing)
{
    EIPv4AddressItem item;
    ReadInto(item, Bytes("03 FB FF FF FF FF 00 11 00 00 00 00 11 00 00 00 00 F8 FA"));
    EXPECT_EQ("false 0.0.0.0 0.0.0.0 250 4294967295", Summary(item));
}

TEST(EIPv4AddressItemArchive, RefusesVersions0And4)
{
    for (char const* version : {"00", "04", "FB FF FF FF FF"})
        ExpectArchiveError<EIPv4AddressItem>(version, "x86_64/common/ifcore/eIPv4AddressItem.cpp", 78,
                                             "EIPv4AddressItem::SerializeIn");
}
