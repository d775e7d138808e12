#include "eNPIVConfig.hpp"

#include "fibreChannelRecords.hpp"

#include <limits>

static char const kFile[] = "x86_64/common/ifcore/eFCoEConfig.cpp";

/// Gives the record the fields of the golden files up to this version; lists get the elements appended.
static void ApplySample(ENPIVConfig& record, unsigned int version)
{
    SetSampleLogin(record);
    record.SetVnPortKeepAliveEnabled(false);
    record.SetPLOGIEnabled(true);
    record.SetConnectedViaId(EComponentId{7, 1, 258});
    if (version < 2) return;
    record.SetNSRegOption(SampleNSRegOption());
    AppendSampleDestinations(record);
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
    SetOtherLogin(other);
    other.SetConnectedViaId(EComponentId{81});
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
using InTable = RecordInTable<ENPIVConfig>;

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
    ExpectSettersAnnounce(kFields);
}

TEST(ENPIVConfig, EditsSetOneFieldEach)
{
    ExpectEditsAnnounce(kFields);
}

TEST(ENPIVConfig, SettersStoreWithoutAParentToo) // the connected-via id silently
{
    ExpectSettersStoreWithoutAParent(kFields);
}

TEST(ENPIVConfig, IsComparedInAllItsFields)
{
    ExpectFieldsCompared(kFields);
    ExpectParentNotCompared<ENPIVConfig>();
    ExpectDestinationsCompared(Sample());
}

TEST(ENPIVConfig, EditedDestinationsAreThoseThatWereRead)
{
    ExpectDestinationsEdited(Other(), 10);
}

TEST(ENPIVConfig, RefusesOtherEditsAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record,
                      {{}, {0}, {17}, {24}, {0, 1}, {std::numeric_limits<unsigned int>::max()}});
}

TEST(ENPIVConfig, AnEditWhoseValueIsTooWideChangesNothing)
{
    std::vector<RawEdit> edits;
    for (unsigned int const subId : {4u, 5u, 6u, 11u, 12u, 14u, 16u}) edits.push_back({subId, "02"});
    for (unsigned int const subId : {3u, 7u, 15u}) edits.push_back({subId, "FC 01 00 00 00 00"});
    InTable in;
    ExpectEachTooWide(*in.recorder, in.record, edits);
}

TEST(ENPIVConfig, HoldsMoreThan255Destinations)
{
    ENPIVConfig record;
    ExpectHolds300<ENPIVConfig>(record, 10, "FB 12 29 20 08 01 00 00 00", SHOWS(GetPLOGIDestinations));
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

TEST(ENPIVConfig, CopyAndAssignmentAnnounceACopyOnceAndKeepTheParent)
{
    ExpectCopyIsOneChange("SettingNPIVConfig", Other(), Sample());
}

TEST(ENPIVConfig, CopyingItselfIsAnnouncedLikeAnyCopy)
{
    ExpectCopiedToItself(Sample(), "SettingNPIVConfig", "SettingNPIVConfig");
}

TEST(ENPIVConfig, EmptyAnnouncesTheDefaultsOnceAndKeepsTheParent)
{
    ExpectEmptyIsOneChange("SettingNPIVConfig", Sample());
}

TEST(ENPIVConfig, SwapIsSilentAndLeavesTheParents)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, Sample());
}

TEST(ENPIVConfig, CopyConstructionTakesTheParentToo)
{
    InTable const in(Sample());
    ExpectCopyConstructed(*in.recorder, in.record);
    ExpectParentSetSilently<ENPIVConfig>(*in.recorder, in.interface, SETS(SetB2BRxSize(1)));
}

TEST(ENPIVConfig, IsLeaf32OfItsInterface)
{
    ExpectLeaf<ENPIVConfig>(32);
}

TEST(ENPIVConfig, ShowsNamesAsEightBytesAndItsDestinationAsThree)
{
    ExpectNamesShown<ENPIVConfig>();
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
        ENPIVConfig const used = ReadVersion("ENPIVConfig", version, Other(), ApplySample);
        EXPECT_EQ(version < 2 ? 1u : 3u, used.GetPLOGIDestinations().size());
    }
    EXPECT_FALSE(Read<ENPIVConfig>("ENPIVConfig.defaults.v4.hex") != ENPIVConfig());
}

TEST(ENPIVConfigArchive, ReadingAnnouncesNothing)
{
    InTable in;
    ExpectReadSilently(*in.recorder, in.record, Golden("ENPIVConfig.v4.hex"));
    EXPECT_FALSE(in.record != Sample());
}

TEST(ENPIVConfigArchiveDeathTest, RefusesVersion0AndThoseAbove4)
{
    for (char const* version : {"00", "05", "FB FF FF FF FF"})
        ExpectArchiveError<ENPIVConfig>(version, kFile, 1217, "ENPIVConfig::SerializeIn");
}
