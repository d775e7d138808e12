#include "eIPv6AddressItem.hpp"

#include "recordCases.hpp"

static EIPv6AddressItem Sample()
{
    EIPv6AddressItem item;
    item.SetLocalId(9);
    item.SetMaskLength(112);
    item.SetAddress(EIPAddress("2001:db8::5"));
    return item;
}

/// "local-id mask-length address"
static std::string Summary(EIPv6AddressItem const& item)
{
    return TextOf(item.GetLocalId()) + " " + TextOf(item.GetMaskLength()) + " " + item.GetAddress().GetAsString();
}
static char const kSampleText[] = "9 112 2001:db8::5";
static char const kInTableText[] = "1 112 2001:db8::5";
static char const kDefaultText[] = "0 64 ::";

namespace {

/// The sample in the list of a table's interface, where its local id is 1.
struct SampleInTable : RecordedInterface {
    EIPv6AddressItem& record;

    SampleInTable() : record(*interface.GetIPv6AddressItem(interface.AddIPv6AddressItem(Sample())))
    {
        recorder->Clear();
    }
};

} // namespace

TEST(EIPv6AddressItem, StartsWithAPrefixOf64AndNoAddress)
{
    EIPv6AddressItem const item;
    EXPECT_EQ(kDefaultText, Summary(item));
    EXPECT_EQ(18U, item.GetAddress().GetFamily());
    EXPECT_TRUE(item.GetAddress().IsZero());
    EXPECT_EQ(nullptr, item.GetParent());
}

TEST(EIPv6AddressItem, SetMaskLengthAnnouncesAndStoresAtMost128)
{
    ExpectCorrected<SampleInTable>(&EIPv6AddressItem::SetMaskLength, &EIPv6AddressItem::GetMaskLength,
                                   {{0, 0}, {64, 64}, {128, 128}, {129, 128}, {200, 128}, {0xFFFFFFFF, 128}});
}

/// A change of the sample in the table, as all of it is shown.
static SetterCase<EIPv6AddressItem> Change(char const* operation, char const* announced, char const* after,
                                           void (*change)(EIPv6AddressItem&))
{
    return {operation, announced, change, Summary, kInTableText, after};
}

TEST(EIPv6AddressItem, EveryChangeIsAnnouncedOnceWhileTheOldValueStands)
{
    std::vector<SetterCase<EIPv6AddressItem>> const changes = {
        Change("SettingIPv6Address", "fe80::1", "1 112 fe80::1",
               [](auto& item) { item.SetAddress(EIPAddress("fe80::1")); }),
        Change("SettingIPv6Address", "2001:db8::5", kInTableText,
               [](auto& item) { item.SetAddress(item.GetAddress()); }),
        Change("SettingIPv6MaskLength", "48", "1 48 2001:db8::5", [](auto& item) { item.SetMaskLength(48); }),
        Change("SettingIPv6AddressItem", "record", kSampleText,
               [](auto& item) { item.Copy(Sample()); }), // on purpose: the other's local id
        Change("SettingIPv6AddressItem", "record", kDefaultText, [](auto& item) { item = EIPv6AddressItem(); }),
        Change("SettingIPv6AddressItem", "record", kInTableText, [](auto& item) { item.Copy(item); }),
        Change("SettingIPv6AddressItem", "record", kDefaultText, [](auto& item) { item.Empty(); }),
    };
    ExpectEachAnnouncedThenStored<SampleInTable>(changes);
}

TEST(EIPv6AddressItem, AReplacementIsShownToTheObserver)
{
    SampleInTable in;
    EXPECT_EQ(kSampleText, ShownToTheObserver<EIPv6AddressItem>(
                               *in.recorder, [&] { in.record = Sample(); }, Summary));
    EXPECT_EQ(kDefaultText, ShownToTheObserver<EIPv6AddressItem>(
                                *in.recorder, [&] { in.record.Empty(); }, Summary));
}

TEST(EIPv6AddressItem, WithoutAParentEverythingChangesUnheard)
{
    EIPv6AddressItem item = Sample();
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&item.GetHooks()));
    EXPECT_EQ(kSampleText, Summary(item));
    item.Empty();
    EXPECT_EQ(kDefaultText, Summary(item));
}

TEST(EIPv6AddressItem, SetLocalIdIsNotAnnounced)
{
    SampleInTable sample;
    sample.record.SetLocalId(4);
    EXPECT_EQ(4U, sample.record.GetLocalId());
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EIPv6AddressItem, SetsItsParentSilently)
{
    SampleInTable sample;
    ExpectParentSetSilently<EIPv6AddressItem>(*sample.recorder, sample.interface, [](auto& r) { r.SetMaskLength(8); });
}

TEST(EIPv6AddressItem, CopyConstructionTakesTheParentAndSwapLeavesItButTakesTheLocalId)
{
    SampleInTable in;
    ExpectCopyConstructed(*in.recorder, in.record);
    ExpectSwapped(*in.recorder, in.record, EIPv6AddressItem());
    EXPECT_EQ(kDefaultText, Summary(in.record));
}

TEST(EIPv6AddressItem, DiffersByEveryFieldAndTheLocalIdButNotByTheParent)
{
    ExpectEachChangeCompared(Sample(), {
                                           [](auto& item) { item.SetLocalId(8); },
                                           [](auto& item) { item.SetMaskLength(111); },
                                           [](auto& item) { item.SetAddress(EIPAddress("2001:db8::6")); },
                                       });
    EIPv6AddressItem sample = Sample();
    sample.SetLocalId(1);
    EXPECT_FALSE(SampleInTable().record != sample);
}

TEST(EIPv6AddressItemEdit, TheFirstSubIdPicksTheFieldAndItsSetter)
{
    std::vector<EditCase<EIPv6AddressItem>> const cases = {
        {1,
         "12 FE 80 00 00 00 00 00 00 00 00 00 00 00 00 00 01",
         "SettingIPv6Address",
         "fe80::1",
         Summary,
         "1 112 fe80::1",
         {}},
        {2, "30", "SettingIPv6MaskLength", "48", Summary, "1 48 2001:db8::5", {}},
        {2, "C8", "SettingIPv6MaskLength", "128", Summary, "1 128 2001:db8::5", {1}}, // 200
    };
    ExpectEachEdited<SampleInTable>(cases);
}

TEST(EIPv6AddressItemEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    SampleInTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {3}, {0xFFFFFFFF}});
    EXPECT_EQ(kInTableText, Summary(in.record));
}

TEST(EIPv6AddressItemEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable sample;
    ExpectTooWide(*sample.recorder, sample.record, 2, "FC 01 00 00 00 00"); // 33 bits
}

TEST(EIPv6AddressItemArchive, WritesAndReadsVersion1)
{
    EXPECT_EQ(Golden("EIPv6AddressItem.v1.hex"), Written(Sample()));
    EXPECT_EQ(kSampleText, Summary(Read<EIPv6AddressItem>("EIPv6AddressItem.v1.hex")));
}

TEST(EIPv6AddressItemArchive, ReadingEmptiesFirstWhichIsAllThatIsAnnounced)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen = Summary(sample.record); };
    ReadInto(sample.record, Golden("EIPv6AddressItem.v1.hex"));
    EXPECT_EQ(kSampleText, Summary(sample.record));
    EXPECT_EQ(std::vector<std::string>{"SettingIPv6AddressItem"}, sample.recorder->Operations());
    EXPECT_EQ(kInTableText, seen);
    EXPECT_EQ(&sample.interface, sample.record.GetParent());
}

TEST(EIPv6AddressItemArchive, ReadingClampsNothing)
{
    EIPv6AddressItem item;
    ReadInto(item, Bytes("01 00 FB FF FF FF FF 11 0A 00 00 01"));
    EXPECT_EQ("0 4294967295 10.0.0.1", Summary(item)); // an IPv4 address too is taken as it is
}

TEST(EIPv6AddressItemArchive, RefusesVersions0And2)
{
    for (char const* version : {"00", "02", "FB FF FF FF FF"})
        ExpectArchiveError<EIPv6AddressItem>(version, "x86_64/common/ifcore/eIPv6AddressItem.cpp", 58,
                                             "EIPv6AddressItem::SerializeIn");
}
