#include "eFCoEConfig.hpp"

#include "fibreChannelRecords.hpp"

#include <limits>

static char const kFile[] = "x86_64/common/ifcore/eFCoEConfig.cpp";

/// Gives the record the fields of the golden files up to this version; lists get the elements appended.
static void ApplySample(EFCoEConfig& record, unsigned int version)
{
    SetSampleLogin(record);
    record.SetPLOGIEnabled(false);
    if (version < 2) return;
    record.SetSrcOUI(0x0EFC01);
    if (version < 3) return;
    record.SetFIPEnabled(false);
    record.SetResetFIPDiscoveryEnabled(true);
    record.SetResetFIPDiscoveryNumberOfRetries(-2);
    record.SetVlanDiscoveryEnabled(true);
    record.SetMaxFCoESize(2180);
    record.SetAddressMode(EFCoEConfig::ADDRESS_MODE_BOTH);
    record.SetVendorID(EUID(0x1234));
    std::list<EDHCPTLV> tlvs = record.GetVendorSpecificTLVs();
    tlvs.push_back(Tlv(13, Bytes("AB CD")));
    tlvs.push_back(Tlv(254, ""));
    record.SetVendorSpecificTLVs(tlvs);
    if (version < 4) return;
    record.SetNSRegOption(SampleNSRegOption());
    AppendSampleDestinations(record);
    if (version < 5) return;
    record.SetKeepAliveEnabled(false);
    record.SetVnPortKeepAliveEnabled(true);
    record.SetSCREnabled(true);
    if (version < 6) return;
    record.SetVlanDiscoveryUntagged(false);
    if (version < 7) return;
    record.SetPRLIEnable(true);
    record.SetAutoPLOGIEnable(false);
    record.SetFCNSQuery(SampleFCNSQuery());
    record.SetNSQueryEnable(true);
    record.SetFCSCROption(static_cast<EFCoEConfig::eSCROptions>(3));
    EXPECT_TRUE(Edit(record, {24}, Bytes("F9 CA FE")));
}

static EFCoEConfig Sample(unsigned int version = 7)
{
    EFCoEConfig sample;
    ApplySample(sample, version);
    return sample;
}

/// Differs from the sample and from the default in every field.
static EFCoEConfig Other()
{
    EFCoEConfig other;
    SetOtherLogin(other);
    other.SetSrcOUI(81);
    other.SetResetFIPDiscoveryNumberOfRetries(82);
    other.SetVlanDiscoveryEnabled(true);
    other.SetVlanDiscoveryUntagged(false);
    other.SetKeepAliveEnabled(false);
    other.SetMaxFCoESize(83);
    other.SetAddressMode(EFCoEConfig::ADDRESS_MODE_SERVER_PROVIDED);
    other.SetVendorID(EUID(84));
    other.SetVendorSpecificTLVs({Tlv(85, Bytes("79"))});
    EXPECT_TRUE(Edit(other, {24}, Bytes("54")));
    return other;
}

/// A record read from an archive of version 5, with the two packed words as they are given.
static EFCoEConfig WithWords(std::string const& keepAliveWord, std::string const& fipWord)
{
    EFCoEConfig record;
    ReadInto(record, Bytes("05 " + keepAliveWord + " 00 FB 12 17 20 09 00 05 00 00 00 " + fipWord +
                           " 00 F9 08 6E 00 00 00 FA 0E FC 00 00 00 F9 08 40 00 00 FA 01 B6 69"));
    return record;
}

using Field = FieldCase<EFCoEConfig>;
using InTable = RecordInTable<EFCoEConfig>;

static std::vector<Field> const kFields = {
    {1, "FF 21 00 00 1B 32 00 00 01", SETS(SetSrcPortWWN(EUID(0x2100001B32000001))), SHOWS(GetSrcPortWWN),
     "00:00:00:00:00:00:00:00", "21:00:00:1b:32:00:00:01", "SettingFCoESrcPortWWN", "21:00:00:1b:32:00:00:01"},
    {2, "FF 20 00 00 1B 32 00 00 01", SETS(SetSrcNodeWWN(EUID(0x2000001B32000001))), SHOWS(GetSrcNodeWWN),
     "00:00:00:00:00:00:00:00", "20:00:00:1b:32:00:00:01", "SettingFCoESrcNodeWWN", "20:00:00:1b:32:00:00:01"},
    {3, "FB FF FF FF FF", SETS(SetB2BRxSize(0xFFFFFFFF)), SHOWS(GetB2BRxSize), "2112", "4294967295",
     "SettingFCoEB2BRxSize", "4294967295"},
    {4, "01", SETS(SetSCREnabled(true)), SHOWS(IsSCREnabled), "false", "true", "SettingFCoESCREnabled", "true"},
    {5, "01", SETS(SetNsRegistrationEnabled(true)), SHOWS(IsNSRegistrationEnabled), "false", "true",
     "SettingFCoENSRegistrationEnabled", "true"},
    {6, "01", SETS(SetPLOGIEnabled(true)), SHOWS(IsPLOGIEnabled), "false", "true", "SettingFCoEPLOGIEnabled", "true"},
    {7, "FB FF FF FF FC", SETS(SetDestNodeId(0xFFFFFFFC)), SHOWS(GetDestNodeId), "112233", "4294967292",
     "SettingFCoEDestNodeId", "4294967292"},
    {8, "00", SETS(SetSrcOUI(0)), SHOWS(GetSrcOUI), "982016", "0", "SettingFCoESrcOUI", "0"},
    {9, "00", SETS(SetFIPEnabled(false)), SHOWS(IsFIPEnabled), "true", "false", "SettingFCoEFIPEnabled", "false",
     Field::NEW_VALUE},
    {10, "01", SETS(SetVlanDiscoveryEnabled(true)), SHOWS(IsVlanDiscoveryEnabled), "false", "true",
     "SettingFCoEVlanDiscoveryEnabled", "true"},
    {11, "00", SETS(SetVlanDiscoveryUntagged(false)), SHOWS(IsVlanDiscoveryUntagged), "true", "false",
     "SettingFCoEVlanDiscoveryUntagged", "false"},
    {12, "00", SETS(SetKeepAliveEnabled(false)), SHOWS(IsKeepAliveEnabled), "true", "false",
     "SettingFIPKeepAliveEnabled", "false", Field::NEW_VALUE},
    {13, "F9 FF FF", SETS(SetMaxFCoESize(0xFFFF)), SHOWS(GetMaxFCoESize), "2158", "65535", "SettingFCoEMaxSize",
     "65535"},
    {14, "02", SETS(SetAddressMode(EFCoEConfig::ADDRESS_MODE_BOTH)), SHOWS(GetAddressMode), "0", "2",
     "SettingFCoEAddressMode", "2"},
    {15, "05", SETS(SetVendorID(EUID(5))), SHOWS(GetVendorID), "00:00:00:00:00:00:00:00", "00:00:00:00:00:00:00:05",
     "SettingFCoEVendorID", "00:00:00:00:00:00:00:05"},
    {16, "02 01 07 00 00 01 08 00 00", SETS(SetVendorSpecificTLVs({Tlv(7, ""), Tlv(8, "")})),
     SHOWS(GetVendorSpecificTLVs), "[0]", "[2]", "SettingFCoEVendorSpecificTLVs", "[2]"},
    {17, "FB 12 17 20 09 01 78 F9 01 02 02 70 41 05 6E 6F 64 65 42", SETS(SetNSRegOption(SampleNSRegOption())),
     [](EFCoEConfig const& record) { return record.GetNSRegOption().GetRsnnNnName(); }, "", "nodeB",
     "SettingFCoENSRegOption", "record"},
    {18, "02 FB 12 29 20 08 01 00 00 00 FB 12 29 20 08 00 01 05 09",
     SETS(SetPLOGIDestinations({EPLOGIDestination(), SamplePLOGIDestination()})), SHOWS(GetPLOGIDestinations), "[0]",
     "[2]", "SettingFCoEPLOGIDestinations", "[2]"},
    {19, "01", SETS(SetPRLIEnable(true)), SHOWS(IsPRLIEnabled), "false", "true", "SettingPRLIEnabled", "true"},
    {20, "01", SETS(SetAutoPLOGIEnable(true)), SHOWS(IsAutoPLOGIEnabled), "false", "true", "SettingAutoPLOGIEnabled",
     "true"},
    {21, "FB 12 29 20 08 01 F9 01 12 FB FF FF FF FD 05 30 61 20 30 62", SETS(SetFCNSQuery(SampleFCNSQuery())),
     [](EFCoEConfig const& record) { return record.GetFCNSQuery().GetRequestObjectValue(); }, " ", "0a 0b",
     "SettingFCNSQueryOption", "record"},
    {22, "01", SETS(SetNSQueryEnable(true)), SHOWS(IsNSQueryEnabled), "false", "true", "SettingNSQueryEnabled", "true"},
    {23, "FB FF FF FF FF", SETS(SetFCSCROption(static_cast<EFCoEConfig::eSCROptions>(0xFFFFFFFF))),
     SHOWS(GetFCSCROption), "2", "4294967295", "SettingFCSCROption", "4294967295"},
    {25, "00", SETS(SetVnPortKeepAliveEnabled(false)), SHOWS(IsVnPortKeepAliveEnabled), "true", "false",
     "SettingVnPortKeepAliveEnabled", "false", Field::NEW_VALUE},
    {26, "01", SETS(SetResetFIPDiscoveryEnabled(true)), SHOWS(IsResetFIPDiscoveryEnabled), "false", "true",
     "SettingResetFIPDiscoveryEnabled", "true", Field::NEW_VALUE},
    {27, "F9 FF FE", SETS(SetResetFIPDiscoveryNumberOfRetries(-2)), SHOWS(GetResetFIPDiscoveryNumberOfRetries), "3",
     "-2", "SettingResetFIPDiscoveryNumberOfRetries", "-2", Field::NEW_VALUE},
};

TEST(EFCoEConfig, SettersAnnounceOnceAndOnlyPackedFieldsAreStoredBefore)
{
    ExpectSettersAnnounce(kFields);
}

TEST(EFCoEConfig, EditsSetOneFieldEach)
{
    ExpectEditsAnnounce(kFields);
}

TEST(EFCoEConfig, SettersStoreWithoutAParentToo)
{
    ExpectSettersStoreWithoutAParent(kFields);
}

TEST(EFCoEConfig, IsComparedInAllItsFields)
{
    ExpectFieldsCompared(kFields);
    ExpectEachChangeCompared<EFCoEConfig>({}, {[](auto& record) { ASSERT_TRUE(Edit(record, {24}, Bytes("01"))); }});
    ExpectParentNotCompared<EFCoEConfig>();
}

TEST(EFCoEConfig, ListsAreComparedElementByElement)
{
    ExpectEachChangeCompared<EFCoEConfig>(
        Sample(), {SETS(SetVendorSpecificTLVs({Tlv(13, Bytes("AB CD")), Tlv(254, Bytes("00"))}))});
    ExpectDestinationsCompared(Sample());
}

TEST(EFCoEConfig, EditedListsHoldWhatWasRead)
{
    EFCoEConfig record = Other();
    ASSERT_TRUE(Edit(record, {16}, Bytes("02 01 07 00 01 AB 01 08 05 00"))); // a filler of 5 is dropped
    ASSERT_EQ(2u, record.GetVendorSpecificTLVs().size());
    EXPECT_FALSE(record.GetVendorSpecificTLVs().front() != Tlv(7, Bytes("AB")));
    EXPECT_FALSE(record.GetVendorSpecificTLVs().back() != Tlv(8, ""));
    ASSERT_TRUE(Edit(record, {16}, Bytes("00")));
    EXPECT_TRUE(record.GetVendorSpecificTLVs().empty());
    ExpectDestinationsEdited(Other(), 18);
}

TEST(EFCoEConfig, Edit24IsStoredAndNobodyIsTold)
{
    InTable in;
    EXPECT_TRUE(Edit(in.record, {24}, Bytes("FB DE AD BE EF")));
    EXPECT_TRUE(in.recorder->calls.empty());
    EXPECT_TRUE(in.record != EFCoEConfig());
    // The sixth value of the archive.
    EXPECT_NE(std::string::npos, Written(in.record).find(Bytes("00 02 FB DE AD BE EF 01 03 00")));
}

TEST(EFCoEConfig, RefusesOtherEditsAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {28}, {0, 1}, {std::numeric_limits<unsigned int>::max()}});
}

TEST(EFCoEConfig, AnEditWhoseValueIsTooWideChangesNothing)
{
    std::vector<RawEdit> edits = {{13, "FA 01 00 00"}, {27, "FA 01 00 00"}};
    for (unsigned int const subId : {4u, 5u, 6u, 9u, 10u, 11u, 12u, 19u, 20u, 22u, 25u, 26u})
        edits.push_back({subId, "02"});
    for (unsigned int const subId : {3u, 7u, 8u, 14u, 23u, 24u}) edits.push_back({subId, "FC 01 00 00 00 00"});
    InTable in;
    ExpectEachTooWide(*in.recorder, in.record, edits);
}

TEST(EFCoEConfig, ListsHoldMoreThan255Elements)
{
    EFCoEConfig record;
    ExpectHolds300<EFCoEConfig>(record, 16, "01 07 00 00", SHOWS(GetVendorSpecificTLVs));
    ExpectHolds300<EFCoEConfig>(record, 18, "FB 12 29 20 08 01 00 00 00", SHOWS(GetPLOGIDestinations));
    EXPECT_EQ(300u, record.GetVendorSpecificTLVs().size());
}

TEST(EFCoEConfig, PackedFieldsLeaveTheOtherBitsOfTheirWord)
{
    // FIP word 0x7FFEFFFC with a keep-alive word of 0xFFFFFFFC: bits that nothing here knows are kept as they came.
    EFCoEConfig const unknownBits = WithWords("FB FF FF FF FC", "FB 7F FE FF FC");
    EXPECT_FALSE(unknownBits.IsFIPEnabled());
    EXPECT_FALSE(unknownBits.IsResetFIPDiscoveryEnabled());
    EXPECT_EQ(0x7FFE, unknownBits.GetResetFIPDiscoveryNumberOfRetries());
    EXPECT_FALSE(unknownBits.IsKeepAliveEnabled());
    EXPECT_FALSE(unknownBits.IsVnPortKeepAliveEnabled());

    struct {
        std::function<void(EFCoEConfig&)> set;
        char const* keepAliveWord;
        char const* fipWord;
    } const cases[] = {
        {SETS(SetFIPEnabled(true)), "FB FF FF FF FC", "FB 7F FE FF FD"},
        {SETS(SetFIPEnabled(false)), "FB FF FF FF FC", "FB 7F FE FF FC"},
        {SETS(SetResetFIPDiscoveryEnabled(true)), "FB FF FF FF FC", "FB 7F FE FF FE"},
        {SETS(SetResetFIPDiscoveryEnabled(false)), "FB FF FF FF FC", "FB 7F FE FF FC"},
        {SETS(SetResetFIPDiscoveryNumberOfRetries(0)), "FB FF FF FF FC", "F9 FF FC"},
        {SETS(SetResetFIPDiscoveryNumberOfRetries(-1)), "FB FF FF FF FC", "FB FF FF FF FC"},
        {SETS(SetResetFIPDiscoveryNumberOfRetries(-32768)), "FB FF FF FF FC", "FB 80 00 FF FC"},
        {SETS(SetResetFIPDiscoveryNumberOfRetries(32767)), "FB FF FF FF FC", "FB 7F FF FF FC"},
        {SETS(SetKeepAliveEnabled(true)), "FB FF FF FF FD", "FB 7F FE FF FC"},
        {SETS(SetKeepAliveEnabled(false)), "FB FF FF FF FC", "FB 7F FE FF FC"},
        {SETS(SetVnPortKeepAliveEnabled(true)), "FB FF FF FF FE", "FB 7F FE FF FC"},
        {SETS(SetVnPortKeepAliveEnabled(false)), "FB FF FF FF FC", "FB 7F FE FF FC"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.keepAliveWord << ", " << c.fipWord);
        EFCoEConfig record = unknownBits;
        c.set(record);
        EXPECT_FALSE(record != WithWords(c.keepAliveWord, c.fipWord));
        EXPECT_EQ(Written(WithWords(c.keepAliveWord, c.fipWord)), Written(record));
        EXPECT_NE(std::string::npos, Written(record).find(Bytes(c.keepAliveWord)));
        EXPECT_NE(std::string::npos, Written(record).find(Bytes(c.fipWord)));
    }
    // Unknown bits alone make a difference.
    EXPECT_TRUE(WithWords("03", "FA 03 00 05") != EFCoEConfig());
    EXPECT_TRUE(WithWords("07", "FA 03 00 01") != EFCoEConfig());
    EXPECT_FALSE(WithWords("03", "FA 03 00 01") != EFCoEConfig());
}

TEST(EFCoEConfig, DisablingFIPLeavesResetAndRetriesAndItsObserverSeesItDone)
{
    InTable in;
    EFCoEConfig& record = in.record;
    record.SetResetFIPDiscoveryEnabled(true);
    record.SetResetFIPDiscoveryNumberOfRetries(-7);
    in.recorder->Clear();
    in.recorder->whenCalled = [&record] { EXPECT_FALSE(record.IsFIPEnabled()); };
    record.SetFIPEnabled(false);
    EXPECT_EQ(std::vector<std::string>{"SettingFCoEFIPEnabled"}, in.recorder->Operations());
    EXPECT_TRUE(record.IsResetFIPDiscoveryEnabled());
    EXPECT_EQ(-7, record.GetResetFIPDiscoveryNumberOfRetries());
}

TEST(EFCoEConfig, CopyAndAssignmentAnnounceTheSourceOnceAndKeepTheParent)
{
    // on purpose: the source itself is announced
    ExpectCopyIsOneChange("SettingFCoEConfig", Other(), Sample(), Replacement::SOURCE);
}

TEST(EFCoEConfig, CopyingTakesWhatTheSourceHoldsWhenItHasBeenAnnounced)
{
    InTable in;
    EFCoEConfig source = Other();
    in.recorder->whenCalled = [&] { source = Sample(); };
    in.record = source;
    EXPECT_FALSE(in.record != Sample());
    EXPECT_EQ(&in.interface, in.record.GetParent());
    EXPECT_EQ(std::vector<std::string>{"SettingFCoEConfig"}, in.recorder->Operations());
}

TEST(EFCoEConfig, CopyingItselfDoesNothing)
{
    ExpectCopiedToItself(Sample(), "", "");
}

TEST(EFCoEConfig, EmptyAnnouncesTheDefaultsOnceAndKeepsTheParent)
{
    ExpectEmptyIsOneChange("SettingFCoEConfig", Sample());
}

TEST(EFCoEConfig, SwapIsSilentAndLeavesTheParents)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, Sample());
}

TEST(EFCoEConfig, CopyConstructionTakesTheParentToo)
{
    InTable const in(Sample());
    ExpectCopyConstructed(*in.recorder, in.record);
    ExpectParentSetSilently<EFCoEConfig>(*in.recorder, in.interface, SETS(SetB2BRxSize(1)));
}

TEST(EFCoEConfig, IsLeaf31OfItsInterface)
{
    ExpectLeaf<EFCoEConfig>(31);
}

TEST(EFCoEConfig, ShowsItsAddressModeByNameAndAnUnknownOneAsNothing)
{
    struct {
        unsigned int mode;
        char const* text;
    } const cases[] = {{0, "fabric-provided"}, {1, "server-provided"}, {2, "both"}, {3, ""}, {0xFFFFFFFF, ""}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.mode);
        EFCoEConfig record;
        record.SetAddressMode(static_cast<EFCoEConfig::eAddressModes>(c.mode));
        EXPECT_EQ(c.mode, record.GetAddressMode());
        EXPECT_EQ(c.text, record.GetAddressModeAsString());
    }
}

TEST(EFCoEConfig, ShowsNamesAsEightBytesAndIdsAsThree)
{
    ExpectNamesShown<EFCoEConfig>();
    EFCoEConfig record;
    EXPECT_EQ("0e.fc.00", record.GetSrcOUIAsString());
    record.SetVendorID(EUID(0xFEDCBA9876543210));
    record.SetSrcOUI(0xAA001122);
    EXPECT_EQ("fe:dc:ba:98:76:54:32:10", record.GetVendorIDAsString());
    EXPECT_EQ("00.11.22", record.GetSrcOUIAsString());
}

TEST(EFCoEConfigArchive, WritesTheNewestVersion)
{
    EXPECT_EQ(Golden("EFCoEConfig.v7.hex"), Written(Sample()));
    EXPECT_EQ(Golden("EFCoEConfig.defaults.v7.hex"), Written(EFCoEConfig()));
}

TEST(EFCoEConfigArchive, ReadsAllVersionsAndKeepsWhatTheyDoNotCarry)
{
    for (unsigned int version = 1; version <= 7; ++version) {
        SCOPED_TRACE(version);
        EFCoEConfig const used = ReadVersion("EFCoEConfig", version, Other(), ApplySample);
        EXPECT_EQ(version < 3 ? 1u : 3u, used.GetVendorSpecificTLVs().size());
        EXPECT_EQ(version < 4 ? 1u : 3u, used.GetPLOGIDestinations().size());
    }
    EXPECT_FALSE(Read<EFCoEConfig>("EFCoEConfig.defaults.v7.hex") != EFCoEConfig());
}

TEST(EFCoEConfigArchive, ReadingAnnouncesNothing)
{
    InTable in;
    ExpectReadSilently(*in.recorder, in.record, Golden("EFCoEConfig.v7.hex"));
    EXPECT_FALSE(in.record != Sample());
}

TEST(EFCoEConfigArchiveDeathTest, RefusesVersion0AndThoseAbove7)
{
    for (char const* version : {"00", "08", "FB FF FF FF FF"})
        ExpectArchiveError<EFCoEConfig>(version, kFile, 367, "EFCoEConfig::SerializeIn");
}

TEST(EFCoEConfigArchiveDeathTest, RefusesAnOptionRecordOfAnUnknownVersionWithinIt)
{
    ExpectArchiveError<EFCoEConfig>("04 FB 12 17 20 0A", kFile, 1698, "EFCoEConfig::SerializeIn");
}
