#include "ePTPConfig.hpp"

#include "recordCases.hpp"

#include <climits>

using Setter = SetterCase<EPTPConfig>;
using Record = EPTPConfig const&;
using InTable = RecordInTable<EPTPConfig>;

/// The text of one field, through its getter.
template <auto getter> static std::string TextOfField(Record record)
{
    return TextOf((record.*getter)());
}

/// Every setter once, with an acceptable value that a fresh record does not have.
static std::vector<Setter> Setters()
{
    return {
        {"SettingPTPClockId", "00:11:22:ff:fe:33:44:55", [](auto& r) { r.SetClockId(EUID(0x001122fffe334455)); },
         TextOfField<&EPTPConfig::GetClockId>, "00:00:00:00:00:00:00:00", "00:11:22:ff:fe:33:44:55"},
        {"SettingPTPPortNumber", "65535", [](auto& r) { r.SetPortNumber(65535); },
         TextOfField<&EPTPConfig::GetPortNumber>, "0", "65535"},
        {"SettingPTPClockClass", "248", [](auto& r) { r.SetClockClass(248); }, TextOfField<&EPTPConfig::GetClockClass>,
         "0", "248"},
        {"SettingPTPClockAccuracy", "254", [](auto& r) { r.SetClockAccuracy(254); },
         TextOfField<&EPTPConfig::GetClockAccuracy>, "32", "254"},
        {"SettingPTPPriority1", "128", [](auto& r) { r.SetPriority1(128); }, TextOfField<&EPTPConfig::GetPriority1>,
         "0", "128"},
        {"SettingPTPPriority2", "255", [](auto& r) { r.SetPriority2(255); }, TextOfField<&EPTPConfig::GetPriority2>,
         "0", "255"},
        {"SettingPTPDomainNumber", "127", [](auto& r) { r.SetDomainNumber(127); },
         TextOfField<&EPTPConfig::GetDomainNumber>, "0", "127"},
        {"SettingPTPLogAnnounceInterval", "-3", [](auto& r) { r.SetLogAnnounceInterval(-3); },
         TextOfField<&EPTPConfig::GetLogAnnounceInterval>, "0", "-3"},
        {"SettingPTPLogSyncInterval", "-4", [](auto& r) { r.SetLogSyncInterval(-4); },
         TextOfField<&EPTPConfig::GetLogSyncInterval>, "0", "-4"},
        {"SettingPTPLogDelayRequestInterval", "5", [](auto& r) { r.SetLogDelayRequestInterval(5); },
         TextOfField<&EPTPConfig::GetLogDelayRequestInterval>, "0", "5"},
        {"SettingPTPAnnounceReceiptTimeout", "255", [](auto& r) { r.SetAnnounceReceiptTimeout(255); },
         TextOfField<&EPTPConfig::GetAnnounceReceiptTimeout>, "4", "255"},
        {"SettingPTPDelayMechanism", "2", [](auto& r) { r.SetDelayMechanism(2); },
         TextOfField<&EPTPConfig::GetDelayMechanism>, "1", "2"},
        {"SettingPTPClockIsMaster", "true", [](auto& r) { r.SetClockIsMaster(true); },
         TextOfField<&EPTPConfig::GetClockIsMaster>, "false", "true"},
        {"SettingPTPStartOffset", "-9223372036854775808", [](auto& r) { r.SetStartOffset(LONG_MIN); },
         TextOfField<&EPTPConfig::GetStartOffset>, "0", "-9223372036854775808"},
        {"SettingPTPPercentageBadTimestamp", "100", [](auto& r) { r.SetPercentageBadTimestamp(100); },
         TextOfField<&EPTPConfig::GetPercentageBadTimestamp>, "0", "100"},
        {"SettingPTPTimestampError", "9223372036854775807", [](auto& r) { r.SetTimestampError(LONG_MAX); },
         TextOfField<&EPTPConfig::GetTimestampError>, "0", "9223372036854775807"},
        {"SettingPTPPercentageBadCrc", "1", [](auto& r) { r.SetPercentageBadCrc(1); },
         TextOfField<&EPTPConfig::GetPercentageBadCrc>, "0", "1"},
        {"SettingPTPPercentageDropFollowUpMessages", "2", [](auto& r) { r.SetPercentageDropFollowUpMessages(2); },
         TextOfField<&EPTPConfig::GetPercentageDropFollowUpMessages>, "0", "2"},
        {"SettingPTPPercentageDropDelayResponseMessages", "3",
         [](auto& r) { r.SetPercentageDropDelayResponseMessages(3); },
         TextOfField<&EPTPConfig::GetPercentageDropDelayResponseMessages>, "0", "3"},
    };
}

/// Every setter that corrects, with a value that it must correct: the corrected one is announced and stored.
static std::vector<Setter> CorrectingSetters()
{
    std::vector<Setter> cases = {
        {"SettingPTPLogSyncInterval", "-5", [](auto& r) { r.SetLogSyncInterval(-7); },
         TextOfField<&EPTPConfig::GetLogSyncInterval>, "0", "-5"},
        {"SettingPTPLogSyncInterval", "26", [](auto& r) { r.SetLogSyncInterval(27); },
         TextOfField<&EPTPConfig::GetLogSyncInterval>, "0", "26"},
        {"SettingPTPLogAnnounceInterval", "-5", [](auto& r) { r.SetLogAnnounceInterval(-128); },
         TextOfField<&EPTPConfig::GetLogAnnounceInterval>, "0", "-5"},
        {"SettingPTPLogAnnounceInterval", "26", [](auto& r) { r.SetLogAnnounceInterval(127); },
         TextOfField<&EPTPConfig::GetLogAnnounceInterval>, "0", "26"},
        {"SettingPTPLogDelayRequestInterval", "-5", [](auto& r) { r.SetLogDelayRequestInterval(-6); },
         TextOfField<&EPTPConfig::GetLogDelayRequestInterval>, "0", "-5"},
        {"SettingPTPLogDelayRequestInterval", "22", [](auto& r) { r.SetLogDelayRequestInterval(25); },
         TextOfField<&EPTPConfig::GetLogDelayRequestInterval>, "0", "22"},
        {"SettingPTPPercentageBadTimestamp", "100", [](auto& r) { r.SetPercentageBadTimestamp(101); },
         TextOfField<&EPTPConfig::GetPercentageBadTimestamp>, "0", "100"},
        {"SettingPTPPercentageBadCrc", "100", [](auto& r) { r.SetPercentageBadCrc(150); },
         TextOfField<&EPTPConfig::GetPercentageBadCrc>, "0", "100"},
        {"SettingPTPPercentageDropFollowUpMessages", "100", [](auto& r) { r.SetPercentageDropFollowUpMessages(255); },
         TextOfField<&EPTPConfig::GetPercentageDropFollowUpMessages>, "0", "100"},
        {"SettingPTPPercentageDropDelayResponseMessages", "100",
         [](auto& r) { r.SetPercentageDropDelayResponseMessages(200); },
         TextOfField<&EPTPConfig::GetPercentageDropDelayResponseMessages>, "0", "100"},
    };
    return cases;
}

/// The spare fields as EPTPConfig.v3.hex holds them. Those that are left out have their defaults there.
static RawEdit const kSampleSpares[] = {
    {20, "01"},
    {21, "01"},
    {22, "02"},
    {23, "03"},
    {24, "04"},
    {25, "05"},
    {26, "06"},
    {27, "07"},
    {28, "f8 f8"},
    {30, "f8 f9"},
    {31, "f9 01 00"},
    {32, "fb ff ff ff fe"},
    {33, "07"},
    {34, "fc 01 00 00 00 00"},
    {36, "ff ff ff ff ff ff ff ff fd"},
    {37, "ff 88 77 66 55 44 33 22 11"},
    {38, "01 61"},
    {40, "05 74 68 69 72 64"},
};

static EPTPConfig SampleV1()
{
    EPTPConfig record;
    record.SetClockId(EUID(0x001122fffe334455));
    record.SetPortNumber(319);
    record.SetClockClass(248);
    record.SetDomainNumber(127);
    record.SetLogAnnounceInterval(3);
    record.SetLogSyncInterval(-5);
    record.SetLogDelayRequestInterval(22);
    record.SetAnnounceReceiptTimeout(10);
    record.SetDelayMechanism(2);
    record.SetClockIsMaster(true);
    return record;
}

static EPTPConfig SampleV2()
{
    EPTPConfig record = SampleV1();
    record.SetClockAccuracy(0x21);
    record.SetPriority1(128);
    record.SetPriority2(255);
    record.SetStartOffset(-5);
    record.SetPercentageBadTimestamp(10);
    record.SetTimestampError(1000);
    record.SetPercentageBadCrc(20);
    record.SetPercentageDropFollowUpMessages(30);
    record.SetPercentageDropDelayResponseMessages(40);
    return record;
}

static EPTPConfig SampleV3()
{
    EPTPConfig record = SampleV2();
    for (RawEdit const& spare : kSampleSpares) EXPECT_TRUE(Edit(record, {spare.subId}, Bytes(spare.hex)));
    return record;
}

TEST(EPTPConfig, StartsAsAnEndToEndSlaveWithoutFaults)
{
    EPTPConfig const record;
    EXPECT_EQ(nullptr, record.GetParent());
    EXPECT_FALSE(record.GetClockId() != EUID());
    EXPECT_EQ(0, record.GetPortNumber());
    EXPECT_EQ(0, record.GetClockClass());
    EXPECT_EQ(0x20, record.GetClockAccuracy());
    EXPECT_EQ(0, record.GetPriority1());
    EXPECT_EQ(0, record.GetPriority2());
    EXPECT_EQ(0, record.GetDomainNumber());
    EXPECT_EQ(0, record.GetLogAnnounceInterval());
    EXPECT_EQ(0, record.GetLogSyncInterval());
    EXPECT_EQ(0, record.GetLogDelayRequestInterval());
    EXPECT_EQ(4, record.GetAnnounceReceiptTimeout());
    EXPECT_EQ(1, record.GetDelayMechanism());
    EXPECT_FALSE(record.GetClockIsMaster());
    EXPECT_EQ(0, record.GetStartOffset());
    EXPECT_EQ(0, record.GetPercentageBadTimestamp());
    EXPECT_EQ(0, record.GetTimestampError());
    EXPECT_EQ(0, record.GetPercentageBadCrc());
    EXPECT_EQ(0, record.GetPercentageDropFollowUpMessages());
    EXPECT_EQ(0, record.GetPercentageDropDelayResponseMessages());
}

TEST(EPTPConfig, EverySetterAnnouncesOnceAndThenStores)
{
    ExpectEachAnnouncedThenStored<InTable>(Setters());
}

TEST(EPTPConfig, ACorrectedValueIsAnnouncedAndStored)
{
    ExpectEachAnnouncedThenStored<InTable>(CorrectingSetters());
}

TEST(EPTPConfig, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(EPTPConfig, ComparesEverySpareField)
{
    for (unsigned int subId = 20; subId <= 40; ++subId) {
        SCOPED_TRACE(subId);
        EPTPConfig record;
        EXPECT_TRUE(Edit(record, {subId}, Bytes(subId < 38 ? "01" : "01 61")));
        EXPECT_TRUE(record != EPTPConfig());
        EPTPConfig const copy(record);
        EXPECT_FALSE(copy != record);
    }
}

TEST(EPTPConfig, AnnouncesAValueThatIsThereAlready)
{
    InTable in;
    in.record.SetPriority1(0);
    EXPECT_EQ(Heard("SettingPTPPriority1"), in.recorder->Operations());
}

TEST(EPTPConfigValidation, MovesIntervalsToTheNearestBound)
{
    struct {
        bool (*validate)(signed char&);
        signed char given;
        bool accepted;
        signed char corrected;
    } const cases[] = {
        {EPTPConfig::ValidateLogAnnounceInterval, -128, false, -5},
        {EPTPConfig::ValidateLogAnnounceInterval, -6, false, -5},
        {EPTPConfig::ValidateLogAnnounceInterval, -5, true, -5},
        {EPTPConfig::ValidateLogAnnounceInterval, 0, true, 0},
        {EPTPConfig::ValidateLogAnnounceInterval, 26, true, 26},
        {EPTPConfig::ValidateLogAnnounceInterval, 27, false, 26},
        {EPTPConfig::ValidateLogAnnounceInterval, 127, false, 26},
        {EPTPConfig::ValidateLogSyncInterval, -128, false, -5},
        {EPTPConfig::ValidateLogSyncInterval, -6, false, -5},
        {EPTPConfig::ValidateLogSyncInterval, -5, true, -5},
        {EPTPConfig::ValidateLogSyncInterval, 26, true, 26},
        {EPTPConfig::ValidateLogSyncInterval, 27, false, 26},
        {EPTPConfig::ValidateLogSyncInterval, 127, false, 26},
        {EPTPConfig::ValidateLogDelayRequestInterval, -128, false, -5},
        {EPTPConfig::ValidateLogDelayRequestInterval, -6, false, -5},
        {EPTPConfig::ValidateLogDelayRequestInterval, -5, true, -5},
        {EPTPConfig::ValidateLogDelayRequestInterval, 22, true, 22},
        {EPTPConfig::ValidateLogDelayRequestInterval, 23, false, 22},
        {EPTPConfig::ValidateLogDelayRequestInterval, 127, false, 22},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::to_string(&c - cases));
        signed char value = c.given;
        EXPECT_EQ(c.accepted, c.validate(value));
        EXPECT_EQ(c.corrected, value);
    }
}

TEST(EPTPConfigValidation, LimitsPercentagesTo100)
{
    struct {
        unsigned char given;
        bool accepted;
        unsigned char corrected;
    } const cases[] = {{0, true, 0}, {99, true, 99}, {100, true, 100}, {101, false, 100}, {255, false, 100}};
    for (auto const validate :
         {EPTPConfig::ValidatePercentageBadTimestamp, EPTPConfig::ValidatePercentageBadCrc,
          EPTPConfig::ValidatePercentageDropFollowUpMessages, EPTPConfig::ValidatePercentageDropDelayResponseMessages})
        for (auto const& c : cases) {
            SCOPED_TRACE(std::to_string(c.given));
            unsigned char value = c.given;
            EXPECT_EQ(c.accepted, validate(value));
            EXPECT_EQ(c.corrected, value);
        }
}

TEST(EPTPConfigValidation, KeepsTheAnnounceReceiptTimeoutWithin32Bits)
{
    // Limit of the timeout: 4294967295 / (50 * 2^interval), truncated.
    struct {
        signed char logAnnounceInterval;
        unsigned char given;
        bool accepted;
        unsigned char corrected;
    } const cases[] = {
        {-128, 255, true, 255}, {-5, 255, true, 255},  {0, 0, true, 0},       {0, 255, true, 255}, {18, 255, true, 255},
        {19, 163, true, 163},   {19, 164, false, 163}, {19, 255, false, 163}, {25, 2, true, 2},    {25, 3, false, 2},
        {26, 0, true, 0},       {26, 1, true, 1},      {26, 4, false, 1},     {27, 0, true, 0},    {27, 1, false, 0},
        {127, 0, true, 0},      {127, 255, false, 0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::to_string(c.logAnnounceInterval) + " " + std::to_string(c.given));
        unsigned char value = c.given;
        EXPECT_EQ(c.accepted, EPTPConfig::ValidateAnnounceReceiptTimeout(value, c.logAnnounceInterval));
        EXPECT_EQ(c.corrected, value);
    }
}

TEST(EPTPConfigValidation, TakesTheRecordsOwnAnnounceInterval)
{
    EPTPConfig record;
    unsigned char value = 255;
    EXPECT_TRUE(record.ValidateAnnounceReceiptTimeout(value));
    EXPECT_EQ(255, value);
    record.SetLogAnnounceInterval(19);
    EXPECT_FALSE(record.ValidateAnnounceReceiptTimeout(value));
    EXPECT_EQ(163, value);
    EXPECT_EQ(4, record.GetAnnounceReceiptTimeout());
}

TEST(EPTPConfig, CorrectsTheAnnounceReceiptTimeoutByTheCurrentAnnounceInterval)
{
    struct {
        signed char logAnnounceInterval;
        unsigned char given;
        unsigned char stored;
    } const cases[] = {{26, 4, 1}, {0, 255, 255}, {-5, 255, 255}, {25, 3, 2}};
    for (auto const& c : cases) {
        SCOPED_TRACE(std::to_string(c.logAnnounceInterval));
        InTable in;
        in.record.SetLogAnnounceInterval(c.logAnnounceInterval);
        in.recorder->Clear();
        in.record.SetAnnounceReceiptTimeout(c.given);
        EXPECT_EQ(c.stored, in.record.GetAnnounceReceiptTimeout());
        ASSERT_EQ(1u, in.recorder->calls.size());
        EXPECT_EQ(std::to_string(c.stored), in.recorder->calls[0].values);
    }
}

TEST(EPTPConfig, DoesNotCorrectTheTimeoutWhenTheIntervalGrows)
{
    EPTPConfig record;
    record.SetAnnounceReceiptTimeout(255);
    record.SetLogAnnounceInterval(26);
    EXPECT_EQ(255, record.GetAnnounceReceiptTimeout());
}

TEST(EPTPConfigText, CallsEveryDelayMechanismBut1PeerToPeer)
{
    struct {
        unsigned char mechanism;
        char const* text;
    } const cases[] = {{0, "P2P"}, {1, "E2E"}, {2, "P2P"}, {255, "P2P"}};
    for (auto const& c : cases) {
        EPTPConfig record;
        record.SetDelayMechanism(c.mechanism);
        EXPECT_EQ(c.text, record.GetDelayMechanismAsString());
    }
}

TEST(EPTPConfigText, ShowsPlainDecimalNumbers)
{
    EPTPConfig record;
    record.SetPortNumber(65535);
    record.SetClockClass(65); // not "A"
    record.SetClockAccuracy(254);
    record.SetPriority1(128);
    record.SetPriority2(7);
    record.SetDomainNumber(10);
    record.SetLogAnnounceInterval(-5);
    record.SetLogSyncInterval(-1);
    record.SetLogDelayRequestInterval(22);
    record.SetAnnounceReceiptTimeout(255);
    record.SetPercentageBadTimestamp(48);
    record.SetPercentageBadCrc(100);
    record.SetPercentageDropFollowUpMessages(1);
    record.SetPercentageDropDelayResponseMessages(9);
    record.SetStartOffset(LONG_MIN);
    record.SetTimestampError(LONG_MAX);
    struct {
        std::string (EPTPConfig::*render)() const;
        char const* text;
        char const* ofADefault;
    } const cases[] = {
        {&EPTPConfig::GetPortNumberAsString, "65535", "0"},
        {&EPTPConfig::GetClockClassAsString, "65", "0"},
        {&EPTPConfig::GetClockAccuracyAsString, "254", "32"},
        {&EPTPConfig::GetPriority1AsString, "128", "0"},
        {&EPTPConfig::GetPriority2AsString, "7", "0"},
        {&EPTPConfig::GetDomainNumberAsString, "10", "0"},
        {&EPTPConfig::GetLogAnnounceIntervalAsString, "-5", "0"},
        {&EPTPConfig::GetLogSyncIntervalAsString, "-1", "0"},
        {&EPTPConfig::GetLogDelayRequestIntervalAsString, "22", "0"},
        {&EPTPConfig::GetAnnounceReceiptTimeoutAsString, "255", "4"},
        {&EPTPConfig::GetPercentageBadTimestampAsString, "48", "0"},
        {&EPTPConfig::GetPercentageBadCrcAsString, "100", "0"},
        {&EPTPConfig::GetPercentageDropFollowUpMessagesAsString, "1", "0"},
        {&EPTPConfig::GetPercentageDropDelayResponseMessagesAsString, "9", "0"},
        {&EPTPConfig::GetStartOffsetAsString, "-9223372036854775808", "0"},
        {&EPTPConfig::GetTimestampErrorAsString, "9223372036854775807", "0"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.text, (record.*c.render)());
        EXPECT_EQ(c.ofADefault, (EPTPConfig().*c.render)());
    }
}

TEST(EPTPConfig, DoesNotCompareTheParent)
{
    ExpectParentNotCompared<EPTPConfig>();
}

TEST(EPTPConfig, IsLeaf34OfItsInterface)
{
    ExpectLeaf<EPTPConfig>(34);
}

TEST(EPTPConfig, SetsItsParentSilentlyAndCopyConstructionTakesIt)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<EPTPConfig>(*recorded.recorder, recorded.interface, [](auto& r) { r.SetPriority1(1); });
}

TEST(EPTPConfig, CopyingAndEmptyingAreOneChangeOfTheWholeRecord)
{
    EPTPConfig before;
    before.SetPriority2(9);
    ExpectCopyIsOneChange("SettingPTPConfig", before, SampleV3());
    ExpectEmptyIsOneChange("SettingPTPConfig", before);
}

TEST(EPTPConfig, AssigningARecordToItselfDoesNothingButCopyAnnounces)
{
    ExpectCopiedToItself(SampleV3(), "", "SettingPTPConfig");
}

TEST(EPTPConfig, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, SampleV3());
}

TEST(EPTPConfigArchive, WritesVersion3)
{
    EXPECT_EQ(Golden("EPTPConfig.v3.hex"), Written(SampleV3()));
}

TEST(EPTPConfigArchive, ReadsVersions1To3)
{
    EXPECT_FALSE(Read<EPTPConfig>("EPTPConfig.v3.hex") != SampleV3());
    EXPECT_FALSE(Read<EPTPConfig>("EPTPConfig.v2.hex") != SampleV2());
    EXPECT_FALSE(Read<EPTPConfig>("EPTPConfig.v1.hex") != SampleV1());
    EXPECT_EQ(0x20, Read<EPTPConfig>("EPTPConfig.v1.hex").GetClockAccuracy());
}

TEST(EPTPConfigArchive, KeepsTheGroupsThatTheVersionDoesNotCarry)
{
    EPTPConfig record = SampleV3();
    record.SetClockAccuracy(77);
    record.SetPortNumber(1);
    ReadInto(record, Golden("EPTPConfig.v1.hex"));
    EXPECT_EQ(77, record.GetClockAccuracy());
    record.SetClockAccuracy(0x21);
    EXPECT_FALSE(record != SampleV3());
    record.SetPriority1(1);
    ReadInto(record, Golden("EPTPConfig.v2.hex"));
    EXPECT_FALSE(record != SampleV3());
}

TEST(EPTPConfigArchive, TakesValuesOutOfRangeAsTheyStandAndAnnouncesNothing)
{
    InTable in;
    EPTPConfig const& record = in.record;
    ExpectReadSilently(*in.recorder, in.record, Golden("EPTPConfig.outOfRange.v2.hex"));
    EXPECT_EQ(200, record.GetPercentageBadTimestamp());
    EXPECT_EQ(101, record.GetPercentageBadCrc());
    EXPECT_EQ(255, record.GetPercentageDropFollowUpMessages());
    EXPECT_EQ(254, record.GetPercentageDropDelayResponseMessages());
    EXPECT_EQ(-128, record.GetLogAnnounceInterval());
    EXPECT_EQ(127, record.GetLogSyncInterval());
    EXPECT_EQ(23, record.GetLogDelayRequestInterval());
    EXPECT_EQ(255, record.GetAnnounceReceiptTimeout());
}

TEST(EPTPConfigArchive, RefusesVersions0And4)
{
    for (char const* version : {"00", "04", "fb ff ff ff ff"})
        ExpectArchiveError<EPTPConfig>(version, "x86_64/common/ifcore/ePTPConfig.cpp", 354, "EPTPConfig::SerializeIn");
}

TEST(EPTPConfigEdit, EverySubIdWithASetterUsesIt)
{
    EditCase<EPTPConfig> const cases[] = {
        {1, "05", "SettingPTPClockId", "00:00:00:00:00:00:00:05", TextOfField<&EPTPConfig::GetClockId>,
         "00:00:00:00:00:00:00:05"},
        {2, "f9 ff ff", "SettingPTPPortNumber", "65535", TextOfField<&EPTPConfig::GetPortNumber>, "65535"},
        {3, "f8 f8", "SettingPTPClockClass", "248", TextOfField<&EPTPConfig::GetClockClass>, "248"},
        {4, "22", "SettingPTPClockAccuracy", "34", TextOfField<&EPTPConfig::GetClockAccuracy>, "34"},
        {5, "05", "SettingPTPPriority1", "5", TextOfField<&EPTPConfig::GetPriority1>, "5"},
        {6, "06", "SettingPTPPriority2", "6", TextOfField<&EPTPConfig::GetPriority2>, "6"},
        {7, "07", "SettingPTPDomainNumber", "7", TextOfField<&EPTPConfig::GetDomainNumber>, "7"},
        {8, "f8 fe", "SettingPTPLogAnnounceInterval", "-2", TextOfField<&EPTPConfig::GetLogAnnounceInterval>, "-2"},
        {9, "f8 f9", "SettingPTPLogSyncInterval", "-5", TextOfField<&EPTPConfig::GetLogSyncInterval>, "-5"}, // -7
        {10, "19", "SettingPTPLogDelayRequestInterval", "22", TextOfField<&EPTPConfig::GetLogDelayRequestInterval>,
         "22"}, // 25
        {11, "08", "SettingPTPAnnounceReceiptTimeout", "8", TextOfField<&EPTPConfig::GetAnnounceReceiptTimeout>, "8"},
        {13, "01", "SettingPTPClockIsMaster", "true", TextOfField<&EPTPConfig::GetClockIsMaster>, "true"},
        {14, "ff ff ff ff ff ff ff ff ff", "SettingPTPStartOffset", "-1", TextOfField<&EPTPConfig::GetStartOffset>,
         "-1"},
        {15, "64", "SettingPTPPercentageBadTimestamp", "100", TextOfField<&EPTPConfig::GetPercentageBadTimestamp>,
         "100"},
        {16, "ff 80 00 00 00 00 00 00 00", "SettingPTPTimestampError", "-9223372036854775808",
         TextOfField<&EPTPConfig::GetTimestampError>, "-9223372036854775808"},
        {17, "65", "SettingPTPPercentageBadCrc", "100", TextOfField<&EPTPConfig::GetPercentageBadCrc>, "100"}, // 101
        {18, "12", "SettingPTPPercentageDropFollowUpMessages", "18",
         TextOfField<&EPTPConfig::GetPercentageDropFollowUpMessages>, "18"},
        {19, "13", "SettingPTPPercentageDropDelayResponseMessages", "19",
         TextOfField<&EPTPConfig::GetPercentageDropDelayResponseMessages>, "19"},
    };
    InTable in;
    for (auto const& c : cases) ExpectEdited(*in.recorder, in.record, c);
}

TEST(EPTPConfigEdit, CorrectsTheTimeoutByTheRecordsAnnounceInterval)
{
    EPTPConfig record;
    EXPECT_TRUE(Edit(record, {8}, Bytes("1a")));
    EXPECT_TRUE(Edit(record, {11}, Bytes("04")));
    EXPECT_EQ(1, record.GetAnnounceReceiptTimeout());
}

TEST(EPTPConfigEdit, StoresTheSpareFieldsUnannounced)
{
    // Each edit must change exactly the golden file's value of its own field.
    InTable in(SampleV2());
    EPTPConfig& record = in.record;
    for (RawEdit const& spare : kSampleSpares) {
        SCOPED_TRACE(spare.subId);
        EPTPConfig const before(record);
        EXPECT_TRUE(Edit(record, {spare.subId, 99}, Bytes(spare.hex)));
        EXPECT_TRUE(record != before);
    }
    EXPECT_TRUE(in.recorder->calls.empty());
    EXPECT_EQ(Golden("EPTPConfig.v3.hex"), Written(record));

    for (RawEdit const& spare : {RawEdit{29, "1d"}, RawEdit{35, "23"}, RawEdit{39, "02 33 39"}})
        EXPECT_TRUE(Edit(record, {spare.subId}, Bytes(spare.hex)));
    std::string expected = Golden("EPTPConfig.v3.hex");
    expected.replace(expected.find(Bytes("00 f8 f9 f9 01 00")), 1, Bytes("1d"));             // word 0
    expected.replace(expected.find(Bytes("00 ff ff ff ff ff ff ff ff fd")), 1, Bytes("23")); // long word 2
    expected.replace(expected.find(Bytes("00 05 74 68 69 72 64")), 1, Bytes("02 33 39"));    // string 1
    EXPECT_EQ(expected, Written(record));
    EXPECT_TRUE(in.recorder->calls.empty());
}

TEST(EPTPConfigEdit, RefusesTheDelayMechanismAndAllOthersAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {12}, {41}, {42}, {0xffffffff}, {12, 5}});
}

TEST(EPTPConfigEdit, ReadsNoWiderNumberThanTheField)
{
    std::vector<RawEdit> cases = {{2, "fa 01 00 00"}, {13, "02"}, {20, "02"}};
    for (unsigned int const subId :
         {3u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 11u, 15u, 17u, 18u, 19u, 21u, 22u, 23u, 24u, 25u, 26u, 27u, 28u})
        cases.push_back({subId, "f9 01 00"});
    for (unsigned int const subId : {29u, 30u, 31u, 32u}) cases.push_back({subId, "fc 01 00 00 00 00"});
    for (unsigned int const subId : {38u, 39u, 40u}) cases.push_back({subId, "05 61"}); // shorter than it says
    InTable in;
    ExpectEachTooWide(*in.recorder, in.record, cases);
}
