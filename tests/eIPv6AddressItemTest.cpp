#include "eIPv6AddressItem.hpp"

#include "recordCases.hpp"
#include "recordedInterface.hpp"

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

namespace {

/// The sample in the list of a table's interface, where its local id is 1.
struct SampleInTable : RecordedInterface {
    EIPv6AddressItem& item;

    SampleInTable() : item(*interface.GetIPv6AddressItem(interface.AddIPv6AddressItem(Sample()))) { recorder->Clear(); }
};

} // namespace

TEST(EIPv6AddressItem, StartsWithAPrefixOf64AndNoAddress)
{
    EIPv6AddressItem const item;
    EXPECT_EQ("0 64 ::", Summary(item));
    EXPECT_EQ(18U, item.GetAddress().GetFamily());
    EXPECT_TRUE(item.GetAddress().IsZero());
    EXPECT_EQ(nullptr, item.GetParent());
}

TEST(EIPv6AddressItem, SetMaskLengthAnnouncesAndStoresAtMost128)
{
    struct {
        unsigned int given;
        unsigned int stored;
    } const cases[] = {{0, 0}, {64, 64}, {128, 128}, {129, 128}, {200, 128}, {0xFFFFFFFF, 128}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        SampleInTable sample;
        sample.item.SetMaskLength(c.given);
        EXPECT_EQ(c.stored, sample.item.GetMaskLength());
        ASSERT_EQ(1U, sample.recorder->calls.size());
        EXPECT_EQ(std::to_string(c.stored), sample.recorder->calls[0].values);
    }
}

TEST(EIPv6AddressItem, EveryChangeIsAnnouncedOnceWhileTheOldValueStands)
{
    struct {
        char const* name;
        void (*change)(EIPv6AddressItem&);
        char const* operation;
        char const* values;
        char const* after;
    } const cases[] = {
        {"SetAddress", [](EIPv6AddressItem& item) { item.SetAddress(EIPAddress("fe80::1")); }, "SettingIPv6Address",
         "fe80::1", "1 112 fe80::1"},
        {"SetAddress to the same", [](EIPv6AddressItem& item) { item.SetAddress(item.GetAddress()); },
         "SettingIPv6Address", "2001:db8::5", "1 112 2001:db8::5"},
        {"SetMaskLength", [](EIPv6AddressItem& item) { item.SetMaskLength(48); }, "SettingIPv6MaskLength", "48",
         "1 48 2001:db8::5"},
        {"Copy", [](EIPv6AddressItem& item) { item.Copy(Sample()); }, "SettingIPv6AddressItem", "record",
         "9 112 2001:db8::5"}, // on purpose: the other's local id
        {"operator=", [](EIPv6AddressItem& item) { item = EIPv6AddressItem(); }, "SettingIPv6AddressItem", "record",
         "0 64 ::"},
        {"operator= of itself", [](EIPv6AddressItem& item) { item.Copy(item); }, "SettingIPv6AddressItem", "record",
         "1 112 2001:db8::5"},
        {"Empty", [](EIPv6AddressItem& item) { item.Empty(); }, "SettingIPv6AddressItem", "record", "0 64 ::"},
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
        EXPECT_EQ("1 112 2001:db8::5", seen);
        EXPECT_EQ(c.after, Summary(sample.item));
        EXPECT_EQ(&sample.interface, sample.item.GetParent());
    }
}

namespace {

/// Keeps what the observer was given as the record that will replace the current one.
struct ReplacementReader : EIgnoreInterfaceTableHooks {
    std::string replacement;

    void SettingIPv6AddressItem(EIPv6AddressItem const&, EIPv6AddressItem const& next) override
    {
        replacement = Summary(next);
    }
};

} // namespace

TEST(EIPv6AddressItem, AReplacementIsShownToTheObserver)
{
    SampleInTable sample;
    auto const reader = boost::make_shared<ReplacementReader>();
    sample.table.SetHooks("reader", reader);
    sample.item = Sample();
    EXPECT_EQ("9 112 2001:db8::5", reader->replacement);
    sample.item.Empty();
    EXPECT_EQ("0 64 ::", reader->replacement);
}

TEST(EIPv6AddressItem, WithoutAParentEverythingChangesUnheard)
{
    EIPv6AddressItem item = Sample();
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&item.GetHooks()));
    EXPECT_EQ("9 112 2001:db8::5", Summary(item));
    item.Empty();
    EXPECT_EQ("0 64 ::", Summary(item));
}

TEST(EIPv6AddressItem, SetLocalIdIsNotAnnounced)
{
    SampleInTable sample;
    sample.item.SetLocalId(4);
    EXPECT_EQ(4U, sample.item.GetLocalId());
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EIPv6AddressItem, SetsItsParentSilently)
{
    SampleInTable sample;
    ExpectParentSetSilently<EIPv6AddressItem>(*sample.recorder, sample.interface, [](auto& r) { r.SetMaskLength(8); });
}

TEST(EIPv6AddressItem, CopyConstructionTakesTheParentAndSwapLeavesItButTakesTheLocalId)
{
    SampleInTable sample;
    EIPv6AddressItem copy(sample.item);
    EXPECT_EQ(&sample.interface, copy.GetParent());
    EXPECT_FALSE(copy != sample.item);

    EIPv6AddressItem other;
    other.Swap(sample.item);
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ(&sample.interface, sample.item.GetParent());
    EXPECT_EQ("1 112 2001:db8::5", Summary(other));
    EXPECT_EQ("0 64 ::", Summary(sample.item));
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EIPv6AddressItem, DiffersByEveryFieldAndTheLocalIdButNotByTheParent)
{
    void (*const changes[])(EIPv6AddressItem&) = {
        [](EIPv6AddressItem& item) { item.SetLocalId(8); },
        [](EIPv6AddressItem& item) { item.SetMaskLength(111); },
        [](EIPv6AddressItem& item) { item.SetAddress(EIPAddress("2001:db8::6")); },
    };
    for (auto const& change : changes) {
        EIPv6AddressItem changed = Sample();
        EXPECT_FALSE(changed != Sample());
        change(changed);
        EXPECT_TRUE(changed != Sample());
        EXPECT_TRUE(Sample() != changed);
    }
    SampleInTable inTable;
    EIPv6AddressItem sample = Sample();
    sample.SetLocalId(1);
    EXPECT_FALSE(inTable.item != sample);
}

TEST(EIPv6AddressItemEdit, TheFirstSubIdPicksTheFieldAndItsSetter)
{
    struct {
        std::vector<unsigned int> subId;
        char const* data;
        char const* operation;
        char const* after;
    } const cases[] = {
        {{1}, "12 FE 80 00 00 00 00 00 00 00 00 00 00 00 00 00 01", "SettingIPv6Address", "1 112 fe80::1"},
        {{2}, "30", "SettingIPv6MaskLength", "1 48 2001:db8::5"},
        {{2, 1}, "C8", "SettingIPv6MaskLength", "1 128 2001:db8::5"}, // 200
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.after);
        SampleInTable sample;
        EArchive archive;
        Load(archive, Bytes(c.data));
        EXPECT_TRUE(sample.item.ProcessEdit(c.subId.begin(), c.subId.end(), archive));
        EXPECT_TRUE(archive.AtEnd());
        EXPECT_EQ(c.after, Summary(sample.item));
        EXPECT_EQ(std::vector<std::string>{c.operation}, sample.recorder->Operations());
    }
}

TEST(EIPv6AddressItemEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    for (std::vector<unsigned int> const& subId : std::vector<std::vector<unsigned int>>{{}, {0}, {3}, {0xFFFFFFFF}}) {
        SampleInTable sample;
        EArchive archive;
        Load(archive, Bytes("30"));
        EXPECT_FALSE(sample.item.ProcessEdit(subId.begin(), subId.end(), archive));
        EXPECT_EQ(0U, archive.GetOffset());
        EXPECT_EQ("1 112 2001:db8::5", Summary(sample.item));
        EXPECT_TRUE(sample.recorder->calls.empty());
    }
}

TEST(EIPv6AddressItemEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable sample;
    ExpectTooWide(*sample.recorder, sample.item, 2, "FC 01 00 00 00 00"); // 33 bits
}

TEST(EIPv6AddressItemArchive, WritesAndReadsVersion1)
{
    EXPECT_EQ(Golden("EIPv6AddressItem.v1.hex"), Written(Sample()));
    EXPECT_EQ("9 112 2001:db8::5", Summary(Read<EIPv6AddressItem>("EIPv6AddressItem.v1.hex")));
}

TEST(EIPv6AddressItemArchive, ReadingEmptiesFirstWhichIsAllThatIsAnnounced)
{
    SampleInTable sample;
    std::string seen;
    sample.recorder->whenCalled = [&] { seen = Summary(sample.item); };
    ReadInto(sample.item, Golden("EIPv6AddressItem.v1.hex"));
    EXPECT_EQ("9 112 2001:db8::5", Summary(sample.item));
    EXPECT_EQ(std::vector<std::string>{"SettingIPv6AddressItem"}, sample.recorder->Operations());
    EXPECT_EQ("1 112 2001:db8::5", seen);
    EXPECT_EQ(&sample.interface, sample.item.GetParent());
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
