#include "eNPIVConfig.hpp"

#include "fibreChannelRecords.hpp"

#include <limits>

static char const kFile[] = "x86_64/common/ifcore/eFCoEConfig.cpp";

static ENPIVConfig& NPIVOf(EInterfaceItem& interface)
{
    return interface.GetNPIVConfig();
}

/// Gives the record the fields of the golden files up to this version; lists get the elements appended.
static void ApplySample(ENPIVConfig& record, unsigned int version)
{
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetB2BRxSize(2048);
    record.SetNsRegistrationEnabled(true);
    record.SetVnPortKeepAliveEnabled(false);
    record.SetPLOGIEnabled(true);
    record.SetDestNodeId(0xFFFFFC);
    record.SetConnectedViaId(EComponentId{7, 1, 258});
    if (version < 2) return;
    record.SetNSRegOption(SampleNSRegOption());
    std::vector<EPLOGIDestination> destinations = record.GetPLOGIDestinations();
    destinations.push_back(SamplePLOGIDestination());
    destinations.push_back(EPLOGIDestination());
    record.SetPLOGIDestinations(destinations);
    if (version < 3) return;
    record.SetSCREnabled(true);
    if (version < 4) return;
    record.SetPRLIEnable(false);
    record.SetAutoPLOGIEnable(true);
    record.SetFCNSQuery(SampleFCNSQuery());
    record.SetNSQueryEnable(true);
    record.SetFCSCROption(static_cast<ENPIVConfig::eSCROptions>(3));
}

static ENPIVConfig Sample(unsigned int version = 4)
{
    ENPIVConfig sample;
    ApplySample(sample, version);
    return sample;
}

/// Differs from the default in every field.
static ENPIVConfig Other()
{
    ENPIVConfig other;
    other.SetSrcPortWWN(EUID(71));
    other.SetSrcNodeWWN(EUID(72));
    other.SetB2BRxSize(73);
    other.SetSCREnabled(true);
    other.SetNsRegistrationEnabled(true);
    other.SetVnPortKeepAliveEnabled(false);
    other.SetPLOGIEnabled(true);
    other.SetDestNodeId(74);
    other.SetConnectedViaId(EComponentId{75});
    ENSRegOption option;
    option.SetOptions(76);
    other.SetNSRegOption(option);
    EPLOGIDestination destination;
    destination.SetDestNodeId(77);
    other.SetPLOGIDestinations({destination});
    EFCNSQuery query;
    query.SetCommand(78);
    other.SetFCNSQuery(query);
    other.SetPRLIEnable(true);
    other.SetAutoPLOGIEnable(true);
    other.SetNSQueryEnable(true);
    other.SetFCSCROption(static_cast<ENPIVConfig::eSCROptions>(79));
    return other;
}

/// A record read from an archive of version 1, with the NPIV word as it is given.
static ENPIVConfig WithWord(std::string const& npivWord)
{
    ENPIVConfig record;
    ReadInto(record, Bytes("01 00 00 F9 08 40 " + npivWord + " 00 FA 01 B6 69 00"));
    return record;
}

using Field = FieldCase<ENPIVConfig>;

#define SHOWS(getter) [](ENPIVConfig const& record) { return TextOf(record.getter()); }
#define SETS(call) [](ENPIVConfig& record) { record.call; }

static std::vector<Field> const kFields = {
    {1, "FF 21 00 00 1B 32 00 00 01", SETS(SetSrcPortWWN(EUID(0x2100001B32000001))), SHOWS(GetSrcPortWWN),
     "00:00:00:00:00:00:00:00", "21:00:00:1b:32:00:00:01", "SettingNPIVSrcPortWWN", "21:00:00:1b:32:00:00:01"},
    {2, "FF 20 00 00 1B 32 00 00 01", SETS(SetSrcNodeWWN(EUID(0x2000001B32000001))), SHOWS(GetSrcNodeWWN),
     "00:00:00:00:00:00:00:00", "20:00:00:1b:32:00:00:01", "SettingNPIVSrcNodeWWN", "20:00:00:1b:32:00:00:01"},
    {3, "FB FF FF FF FF", SETS(SetB2BRxSize(0xFFFFFFFF)), SHOWS(GetB2BRxSize), "2112", "4294967295",
     "SettingNPIVB2BRxSize", "4294967295"},
    {4, "01", SETS(SetSCREnabled(true)), SHOWS(IsSCREnabled), "false", "true", "SettingNPIVSCREnabled", "true"},
    {5, "01", SETS(SetNsRegistrationEnabled(true)), SHOWS(IsNSRegistrationEnabled), "false", "true",
     "SettingNPIVNSRegistrationEnabled", "true", Field::NEW_VALUE},
    {6, "01", SETS(SetPLOGIEnabled(true)), SHOWS(IsPLOGIEnabled), "false", "true", "SettingNPIVPLOGIEnabled", "true"},
    {7, "FB FF FF FF FC", SETS(SetDestNodeId(0xFFFFFFFC)), SHOWS(GetDestNodeId), "112233", "4294967292",
     "SettingNPIVDestNodeId", "4294967292"},
    // on purpose: the observer is given the interface
    {8, "03 07 01 05", SETS(SetConnectedViaId(EComponentId{7, 1, 5})), SHOWS(GetConnectedViaId), "", "7.1.5",
     "SettingNPIVConnectedViaId", "7.1.5", Field::OLD_VALUE, Field::INTERFACE},
    {9, "FB 12 17 20 09 01 78 F9 01 02 02 70 41 05 6E 6F 64 65 42", SETS(SetNSRegOption(SampleNSRegOption())),
     [](ENPIVConfig const& record) { return record.GetNSRegOption().GetRsnnNnName(); }, "", "nodeB",
     "SettingNPIVNSRegOption", "record"},
    {10, "02 FB 12 29 20 08 01 00 00 00 FB 12 29 20 08 00 01 05 09",
     SETS(SetPLOGIDestinations({EPLOGIDestination(), SamplePLOGIDestination()})), SHOWS(GetPLOGIDestinations), "[0]",
     "[2]", "SettingNPIVPLOGIDestinations", "[2]"},
    {11, "01", SETS(SetPRLIEnable(true)), SHOWS(IsPRLIEnabled), "false", "true", "SettingNPIVPRLIEnabled", "true"},
    {12, "01", SETS(SetAutoPLOGIEnable(true)), SHOWS(IsAutoPLOGIEnabled), "false", "true",
     "SettingNPIVAutoPLOGIEnabled", "true"},
    {13, "FB 12 29 20 08 01 F9 01 12 FB FF FF FF FD 05 30 61 20 30 62", SETS(SetFCNSQuery(SampleFCNSQuery())),
     [](ENPIVConfig const& record) { return record.GetFCNSQuery().GetRequestObjectValue(); }, " ", "0a 0b",
     "SettingNPIVNSQueryOption", "record"},
    {14, "01", SETS(SetNSQueryEnable(true)), SHOWS(IsNSQueryEnabled), "false", "true", "SettingNPIVNSQueryEnabled",
     "true"},
    {15, "FB FF FF FF FF", SETS(SetFCSCROption(static_cast<ENPIVConfig::eSCROptions>(0xFFFFFFFF))),
     SHOWS(GetFCSCROption), "2", "4294967295", "SettingNPIVSCROption", "4294967295"},
    {16, "00", SETS(SetVnPortKeepAliveEnabled(false)), SHOWS(IsVnPortKeepAliveEnabled), "true", "false",
     "SettingNpIVVnPortKeepAliveEnabled", "false", Field::NEW_VALUE},
};

TEST(ENPIVConfig, SettersAnnounceOnceAndOnlyPackedFieldsAreStoredBefore)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        ExpectAnnounced<ENPIVConfig>(field, NPIVOf, field.set);
    }
}

TEST(ENPIVConfig, EditsSetOneFieldEach)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.subId);
        ExpectAnnounced<ENPIVConfig>(field, NPIVOf, [&field](ENPIVConfig& record) {
            EXPECT_TRUE(Edit(record, {field.subId, 99}, Bytes(field.data))); // the second sub-id does not count
        });
    }
}

TEST(ENPIVConfig, SettersStoreWithoutAParentToo) // the connected-via id silently
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        ENPIVConfig record;
        field.set(record);
        EXPECT_EQ(field.after, field.shown(record));
    }
}

TEST(ENPIVConfig, IsComparedInAllItsFields)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        ENPIVConfig changed;
        EXPECT_FALSE(changed != ENPIVConfig());
        field.set(changed);
        EXPECT_TRUE(changed != ENPIVConfig());
        EXPECT_TRUE(ENPIVConfig() != changed);
    }
    RecordedInterface recorded;
    EXPECT_FALSE(recorded.interface.GetNPIVConfig() != ENPIVConfig()); // the parent is not compared

    ENPIVConfig one = Sample();
    one.SetPLOGIDestinations({SamplePLOGIDestination(), SamplePLOGIDestination()});
    EXPECT_TRUE(one != Sample());
    one.SetPLOGIDestinations({EPLOGIDestination(), SamplePLOGIDestination()});
    EXPECT_TRUE(one != Sample());
    one.SetPLOGIDestinations(Sample().GetPLOGIDestinations());
    EXPECT_FALSE(one != Sample());
}

TEST(ENPIVConfig, EditedDestinationsAreThoseThatWereRead)
{
    ENPIVConfig record = Other();
    ASSERT_TRUE(
        Edit(record, {10}, Bytes("01 FB 12 29 20 08 01 FB FF FF FF FE FA 01 02 03 FF 50 01 43 80 11 22 33 44")));
    ASSERT_EQ(1u, record.GetPLOGIDestinations().size());
    EXPECT_FALSE(record.GetPLOGIDestinations()[0] != SamplePLOGIDestination());
    ASSERT_TRUE(Edit(record, {10}, Bytes("00")));
    EXPECT_TRUE(record.GetPLOGIDestinations().empty());
}

TEST(ENPIVConfig, RefusesOtherEditsAndReadsNothing)
{
    RecordedInterface recorded;
    ENPIVConfig& record = NPIVOf(recorded.interface);
    for (std::vector<unsigned int> const& subIds :
         {std::vector<unsigned int>{}, {0}, {17}, {24}, {0, 1}, {std::numeric_limits<unsigned int>::max()}})
        ExpectRefused(*recorded.recorder, record, subIds);
}

TEST(ENPIVConfig, AnEditWhoseValueIsTooWideChangesNothing)
{
    struct {
        unsigned int subId;
        char const* hex;
    } const cases[] = {{4, "02"},
                       {5, "02"},
                       {6, "02"},
                       {11, "02"},
                       {12, "02"},
                       {14, "02"},
                       {16, "02"},
                       {3, "FC 01 00 00 00 00"},
                       {7, "FC 01 00 00 00 00"},
                       {15, "FC 01 00 00 00 00"}};
    RecordedInterface recorded;
    for (auto const& c : cases) ExpectTooWide(*recorded.recorder, NPIVOf(recorded.interface), c.subId, c.hex);
}

TEST(ENPIVConfig, HoldsMoreThan255Destinations)
{
    std::string destinations = Bytes("F9 01 2C");
    for (int i = 0; i < 300; ++i) destinations += Bytes("FB 12 29 20 08 01 00 00 00");
    ENPIVConfig record;
    EXPECT_TRUE(Edit(record, {10}, destinations));
    EXPECT_EQ(300u, record.GetPLOGIDestinations().size());
    EXPECT_NE(std::string::npos, Written(record).find(destinations));
    ENPIVConfig read;
    ReadInto(read, Written(record));
    EXPECT_FALSE(read != record);
}

TEST(ENPIVConfig, PackedFieldsLeaveTheOtherBitsOfTheirWord)
{
    // Bits that nothing here knows are kept as they came.
    ENPIVConfig const unknownBits = WithWord("FB FF FF FF FC");
    EXPECT_FALSE(unknownBits.IsNSRegistrationEnabled());
    EXPECT_FALSE(unknownBits.IsVnPortKeepAliveEnabled());

    struct {
        std::function<void(ENPIVConfig&)> set;
        char const* npivWord;
    } const cases[] = {
        {SETS(SetNsRegistrationEnabled(true)), "FB FF FF FF FD"},
        {SETS(SetNsRegistrationEnabled(false)), "FB FF FF FF FC"},
        {SETS(SetVnPortKeepAliveEnabled(true)), "FB FF FF FF FE"},
        {SETS(SetVnPortKeepAliveEnabled(false)), "FB FF FF FF FC"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.npivWord);
        ENPIVConfig record = unknownBits;
        c.set(record);
        EXPECT_FALSE(record != WithWord(c.npivWord));
        EXPECT_NE(std::string::npos, Written(record).find(Bytes(c.npivWord)));
    }
    // Unknown bits alone make a difference.
    EXPECT_TRUE(WithWord("06") != ENPIVConfig());
    EXPECT_FALSE(WithWord("02") != ENPIVConfig());
}

namespace {

/// Remembers which record it was told of, which will replace it and what both held then.
class WholeRecordObserver : public EIgnoreInterfaceTableHooks {
public:
    void SettingNPIVConfig(ENPIVConfig const& record, ENPIVConfig const& replacement) override
    {
        ++calls;
        given = &record;
        replacedBy = &replacement;
        oldSize = record.GetB2BRxSize();
        newSize = replacement.GetB2BRxSize();
    }
    unsigned int calls = 0;
    ENPIVConfig const* given = nullptr;
    ENPIVConfig const* replacedBy = nullptr;
    unsigned int oldSize = 0;
    unsigned int newSize = 0;
};

} // namespace

TEST(ENPIVConfig, CopyAndAssignmentAnnounceACopyOnceAndKeepTheParent)
{
    for (bool const assign : {false, true}) {
        SCOPED_TRACE(assign);
        RecordedInterface recorded;
        ENPIVConfig& record = recorded.interface.GetNPIVConfig();
        auto const observer = boost::make_shared<WholeRecordObserver>();
        recorded.table.SetHooks("whole", observer);
        ENPIVConfig const source = Sample();
        if (assign)
            record = source;
        else
            record.Copy(source);
        EXPECT_EQ(1u, observer->calls);
        EXPECT_EQ(&record, observer->given);
        EXPECT_NE(&source, observer->replacedBy);
        EXPECT_EQ(2112u, observer->oldSize);
        EXPECT_EQ(2048u, observer->newSize);
        EXPECT_FALSE(record != source);
        EXPECT_EQ(&recorded.interface, record.GetParent());
    }
}

TEST(ENPIVConfig, CopyingItselfIsAnnouncedLikeAnyCopy)
{
    RecordedInterface recorded;
    ENPIVConfig& record = recorded.interface.GetNPIVConfig();
    record = Sample();
    recorded.recorder->Clear();
    ENPIVConfig const& itself = record;
    record.Copy(itself);
    EXPECT_EQ(std::vector<std::string>{"SettingNPIVConfig"}, recorded.recorder->Operations());
    EXPECT_FALSE(record != Sample());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(ENPIVConfig, EmptyAnnouncesTheDefaultsOnceAndKeepsTheParent)
{
    RecordedInterface recorded;
    ENPIVConfig& record = recorded.interface.GetNPIVConfig();
    record = Sample();
    auto const observer = boost::make_shared<WholeRecordObserver>();
    recorded.table.SetHooks("whole", observer);
    record.Empty();
    EXPECT_EQ(1u, observer->calls);
    EXPECT_EQ(&record, observer->given);
    EXPECT_EQ(2048u, observer->oldSize);
    EXPECT_EQ(2112u, observer->newSize);
    EXPECT_FALSE(record != ENPIVConfig());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(ENPIVConfig, SwapIsSilentAndLeavesTheParents)
{
    RecordedInterface recorded;
    ENPIVConfig& record = recorded.interface.GetNPIVConfig();
    ENPIVConfig other = Sample();
    recorded.recorder->Clear();
    record.Swap(other);
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(record != Sample());
    EXPECT_FALSE(other != ENPIVConfig());
    EXPECT_EQ(&recorded.interface, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
}

TEST(ENPIVConfig, CopyConstructionTakesTheParentToo)
{
    RecordedInterface recorded;
    ENPIVConfig const copy(recorded.interface.GetNPIVConfig());
    EXPECT_EQ(&recorded.interface, copy.GetParent());
}

TEST(ENPIVConfig, IsLeaf32OfItsInterface)
{
    RecordedInterface recorded;
    EComponentId id{99};
    recorded.interface.GetNPIVConfig().GetID(id);
    EXPECT_EQ((EComponentId{7, 1, 1, 32}), id);
    ENPIVConfig().GetID(id);
    EXPECT_EQ(EComponentId{32}, id);
    EXPECT_EQ(32u, ENPIVConfig().GetLocalId());
}

TEST(ENPIVConfig, ShowsNamesAsEightBytesAndItsDestinationAsThree)
{
    ENPIVConfig record;
    EXPECT_EQ("00:00:00:00:00:00:00:00", record.GetSrcPortWWNAsString());
    EXPECT_EQ("01.b6.69", record.GetDestNodeIdAsString());
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetDestNodeId(0xAAFFFFFC);
    EXPECT_EQ("21:00:00:1b:32:00:00:01", record.GetSrcPortWWNAsString());
    EXPECT_EQ("20:00:00:1b:32:00:00:02", record.GetSrcNodeWWNAsString());
    EXPECT_EQ("ff.ff.fc", record.GetDestNodeIdAsString());
}

TEST(ENPIVConfigArchive, WritesTheNewestVersion)
{
    EXPECT_EQ(Golden("ENPIVConfig.v4.hex"), Written(Sample()));
    EXPECT_EQ(Golden("ENPIVConfig.defaults.v4.hex"), Written(ENPIVConfig()));
}

TEST(ENPIVConfigArchive, ReadsAllVersionsAndKeepsWhatTheyDoNotCarry)
{
    for (unsigned int version = 1; version <= 4; ++version) {
        SCOPED_TRACE(version);
        std::string const bytes = Golden("ENPIVConfig.v" + std::to_string(version) + ".hex");
        ENPIVConfig fresh;
        ReadInto(fresh, bytes);
        EXPECT_FALSE(fresh != Sample(version));

        ENPIVConfig used = Other();
        ENPIVConfig expected = Other();
        ReadInto(used, bytes);
        ApplySample(expected, version); // the destinations appended to what was there
        EXPECT_FALSE(used != expected);
        EXPECT_EQ(version < 2 ? 1u : 3u, used.GetPLOGIDestinations().size());
    }
    EXPECT_FALSE(Read<ENPIVConfig>("ENPIVConfig.defaults.v4.hex") != ENPIVConfig());
}

TEST(ENPIVConfigArchive, ReadingAnnouncesNothing)
{
    RecordedInterface recorded;
    ENPIVConfig& record = recorded.interface.GetNPIVConfig();
    recorded.recorder->Clear();
    ReadInto(record, Golden("ENPIVConfig.v4.hex"));
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(record != Sample());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(ENPIVConfigArchiveDeathTest, RefusesVersion0AndThoseAbove4)
{
    for (char const* version : {"00", "05", "FB FF FF FF FF"})
        ExpectArchiveError<ENPIVConfig>(version, kFile, 1217, "ENPIVConfig::SerializeIn");
}
