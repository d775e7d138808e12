#include "eIPv4AddressItem.hpp"

#include "recordCases.hpp"

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
static char const kSampleText[] = "true 10.0.0.5 10.0.0.1 16 1460";
static char const kDefaultText[] = "false 0.0.0.0 0.0.0.0 24 0";

namespace {

/// A table's interface with a sample address and two VLANs, the outer one of priority 5, CFI 1 and id 10.
struct SampleInTable : RecordInTable<EIPv4AddressItem> {
    SampleInTable()
    {
        EVLANIPAddressTableItemProperties vlans(2, true);
        vlans.SetVlanTag(0xB00A, 0);
        vlans.SetVlanTag(100, 1);
        interface.SetVLANItem(vlans);
        record = SampleV3();
        recorder->Clear();
    }
};

} // namespace

TEST(EIPv4AddressItem, StartsDisabledWithoutAddress)
{
    EIPv4AddressItem const item;
    EXPECT_EQ(kDefaultText, Summary(item));
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
        EXPECT_EQ(c.accepted, sample.record.SetMSS(c.given));
        EXPECT_EQ(c.stored, sample.record.GetMSS());
        EXPECT_TRUE(sample.recorder->calls.empty());
    }
}

TEST(EIPv4AddressItem, SetMaskLengthAnnouncesAndStoresAtMost32)
{
    ExpectCorrected<SampleInTable>(&EIPv4AddressItem::SetMaskLength, &EIPv4AddressItem::GetMaskLength,
                                   {{0, 0}, {24, 24}, {32, 32}, {33, 32}, {40, 32}, {0xFFFFFFFF, 32}});
}

/// A change of the sample, as all of it is shown.
static SetterCase<EIPv4AddressItem> Change(char const* operation, std::string const& announced, char const* after,
                                           void (*change)(EIPv4AddressItem&))
{
    return {operation, announced, change, Summary, kSampleText, after};
}

TEST(EIPv4AddressItem, EveryChangeIsAnnouncedOnceWhileTheOldValueStands)
{
    std::string const vlans = "on[45066 100]";
    std::string const replaced = "record, " + vlans + ", " + vlans;
    std::vector<SetterCase<EIPv4AddressItem>> const changes = {
        Change("SettingIPv4Address", "10.9.9.9, " + vlans + ", 5.1.10", "true 10.9.9.9 10.0.0.1 16 1460",
               [](auto& item) { item.SetAddress(EIPAddress("10.9.9.9")); }),
        Change("SettingIPv4Gateway", "10.0.0.254", "true 10.0.0.5 10.0.0.254 16 1460",
               [](auto& item) { item.SetGateway(EIPAddress("10.0.0.254")); }),
        Change("SettingIPv4Gateway", "10.0.0.1", kSampleText, [](auto& item) { item.SetGateway(item.GetGateway()); }),
        Change("SettingIPv4MaskLength", "8", "true 10.0.0.5 10.0.0.1 8 1460",
               [](auto& item) { item.SetMaskLength(8); }),
        Change("DisablingIPv4AddressItem", vlans, "false 10.0.0.5 10.0.0.1 16 1460",
               [](auto& item) { item.SetEnabled(false); }),
        Change("SettingIPv4AddressItem", replaced, "false 10.0.0.5 10.0.0.1 16 0",
               [](auto& item) { item.Copy(SampleV1()); }),
        Change("SettingIPv4AddressItem", replaced, "true 10.0.0.5 10.0.0.1 16 0",
               [](auto& item) { item = SampleV2(); }),
        Change("SettingIPv4AddressItem", replaced, kSampleText, [](auto& item) { item.Copy(item); }),
        Change("SettingIPv4AddressItem", "record, " + vlans + ", off[]", kDefaultText,
               [](auto& item) { item.Empty(); }),
    };
    ExpectEachAnnouncedThenStored<SampleInTable>(changes);
}

TEST(EIPv4AddressItem, AReplacementIsShownToTheObserver)
{
    SampleInTable in;
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", ShownToTheObserver<EIPv4AddressItem>(
                                                  *in.recorder, [&] { in.record = SampleV1(); }, Summary));
    EXPECT_EQ(kDefaultText, ShownToTheObserver<EIPv4AddressItem>(
                                *in.recorder, [&] { in.record.Empty(); }, Summary));
}

TEST(EIPv4AddressItem, SetEnabledIsAnnouncedOnARealChangeOnly)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen += " " + TextOf(sample.record.IsEnabled()); };
    for (bool const enabled : {true, false, false, true, true}) sample.record.SetEnabled(enabled);
    ASSERT_EQ((std::vector<std::string>{"DisablingIPv4AddressItem", "EnablingIPv4AddressItem"}),
              sample.recorder->Operations());
    EXPECT_EQ("on[45066 100]", sample.recorder->calls[1].values);
    EXPECT_EQ(" true false", seen); // the old values
    EXPECT_TRUE(sample.record.IsEnabled());
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
        sample.record.SetAddress(EIPAddress("10.9.9.9"));
        ASSERT_EQ(1U, sample.recorder->calls.size());
        EXPECT_EQ(c.values, sample.recorder->calls[0].values);
    }
}

TEST(EIPv4AddressItem, WithoutAParentEverythingChangesUnheard)
{
    EIPv4AddressItem item = SampleV3();
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&item.GetHooks()));
    EXPECT_EQ(kSampleText, Summary(item));
    item.SetEnabled(false);
    item.Empty();
    EXPECT_EQ(kDefaultText, Summary(item));
}

TEST(EIPv4AddressItem, SetsItsParentSilently)
{
    SampleInTable sample;
    ExpectParentSetSilently<EIPv4AddressItem>(*sample.recorder, sample.interface, [](auto& r) { r.SetMaskLength(8); });
}

TEST(EIPv4AddressItem, CopyConstructionTakesTheParentAndSwapLeavesIt)
{
    SampleInTable in;
    ExpectCopyConstructed(*in.recorder, in.record);
    ExpectSwapped(*in.recorder, in.record, EIPv4AddressItem());
    EXPECT_EQ(kDefaultText, Summary(in.record));
}

TEST(EIPv4AddressItem, DiffersByEveryFieldButNotByTheParent)
{
    ExpectEachChangeCompared(SampleV3(), {
                                             [](auto& item) { item.SetEnabled(false); },
                                             [](auto& item) { item.SetAddress(EIPAddress("10.0.0.6")); },
                                             [](auto& item) { item.SetGateway(EIPAddress("10.0.0.2")); },
                                             [](auto& item) { item.SetMaskLength(17); },
                                             [](auto& item) { item.SetMSS(1461); },
                                         });
    EXPECT_FALSE(SampleInTable().record != SampleV3());
    ExpectParentNotCompared<EIPv4AddressItem>();
}

TEST(EIPv4AddressItemEdit, TheFirstSubIdPicksTheFieldAndItsSetter)
{
    std::vector<EditCase<EIPv4AddressItem>> const cases = {
        {1, "11 0A 00 00 FE", "SettingIPv4Gateway", "10.0.0.254", Summary, "true 10.0.0.5 10.0.0.254 16 1460", {}},
        {1, "11 0A 00 00 FE", "SettingIPv4Gateway", "10.0.0.254", Summary, "true 10.0.0.5 10.0.0.254 16 1460", {9, 9}},
        {2, "08", "SettingIPv4MaskLength", "8", Summary, "true 10.0.0.5 10.0.0.1 8 1460", {}},
        {2, "28", "SettingIPv4MaskLength", "32", Summary, "true 10.0.0.5 10.0.0.1 32 1460", {}}, // 40
        {3,
         "11 0A 09 09 09",
         "SettingIPv4Address",
         "10.9.9.9, on[45066 100], 5.1.10",
         Summary,
         "true 10.9.9.9 10.0.0.1 16 1460",
         {}},
        {4, "40", "", "", Summary, "true 10.0.0.5 10.0.0.1 16 64", {}},
        {4, "01", "", "", Summary, "true 10.0.0.5 10.0.0.1 16 28", {}}, // clamped, and done all the same
    };
    ExpectEachEdited<SampleInTable>(cases);
}

TEST(EIPv4AddressItemEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    SampleInTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {5}, {6, 1}, {0xFFFFFFFF}});
    EXPECT_EQ(kSampleText, Summary(in.record));
}

TEST(EIPv4AddressItemEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable in;
    ExpectEachTooWide(*in.recorder, in.record, {{2, "FC 01 00 00 00 00"}, {4, "FC 01 00 00 00 00"}}); // 33 bits
}

TEST(EIPv4AddressItemArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    EXPECT_EQ(Golden("EIPv4AddressItem.v3.hex"), Written(SampleV3()));
    EXPECT_EQ(kSampleText, Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex")));
    EXPECT_EQ("true 10.0.0.5 10.0.0.1 16 0", Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v2.hex")));
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", Summary(Read<EIPv4AddressItem>("EIPv4AddressItem.v1.hex")));
}

TEST(EIPv4AddressItemArchive, ReadingEmptiesFirstWhichIsAllThatIsAnnounced)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen = Summary(sample.record); };
    ReadInto(sample.record, Golden("EIPv4AddressItem.v1.hex"));
    EXPECT_EQ(kSampleText, seen);
    EXPECT_EQ("false 10.0.0.5 10.0.0.1 16 0", Summary(sample.record));
    ASSERT_EQ(1U, sample.recorder->calls.size());
    EXPECT_EQ("SettingIPv4AddressItem", sample.recorder->calls[0].operation);
    EXPECT_EQ("record, on[45066 100], off[]", sample.recorder->calls[0].values);
    EXPECT_EQ(&sample.interface, sample.record.GetParent());
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
