#include "eFCoEConfig.hpp"

#include "fibreChannelRecords.hpp"

#include <limits>

static char const kFile[] = "x86_64/common/ifcore/eFCoEConfig.cpp";

static EFCoEConfig& FCoEOf(EInterfaceItem& interface)
{
    return interface.GetFCoEConfig();
}

/// Gives the record the fields of the golden files up to this version; lists get the elements appended.
static void ApplySample(EFCoEConfig& record, unsigned int version)
{
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetB2BRxSize(2048);
    record.SetNsRegistrationEnabled(true);
    record.SetPLOGIEnabled(false);
    record.SetDestNodeId(0xFFFFFC);
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
    std::vector<EPLOGIDestination> destinations = record.GetPLOGIDestinations();
    destinations.push_back(SamplePLOGIDestination());
    destinations.push_back(EPLOGIDestination());
    record.SetPLOGIDestinations(destinations);
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
    other.SetSrcPortWWN(EUID(71));
    other.SetSrcNodeWWN(EUID(72));
    other.SetB2BRxSize(73);
    other.SetSCREnabled(true);
    other.SetNsRegistrationEnabled(true);
    other.SetPLOGIEnabled(true);
    other.SetDestNodeId(74);
    other.SetSrcOUI(75);
    other.SetResetFIPDiscoveryNumberOfRetries(76);
    other.SetVlanDiscoveryEnabled(true);
    other.SetVlanDiscoveryUntagged(false);
    other.SetKeepAliveEnabled(false);
    other.SetVnPortKeepAliveEnabled(false);
    other.SetMaxFCoESize(77);
    other.SetAddressMode(EFCoEConfig::ADDRESS_MODE_SERVER_PROVIDED);
    other.SetVendorID(EUID(78));
    other.SetVendorSpecificTLVs({Tlv(79, Bytes("79"))});
    ENSRegOption option;
    option.SetOptions(80);
    other.SetNSRegOption(option);
    EPLOGIDestination destination;
    destination.SetDestNodeId(81);
    other.SetPLOGIDestinations({destination});
    EFCNSQuery query;
    query.SetCommand(82);
    other.SetFCNSQuery(query);
    other.SetPRLIEnable(true);
    other.SetAutoPLOGIEnable(true);
    other.SetNSQueryEnable(true);
    other.SetFCSCROption(static_cast<EFCoEConfig::eSCROptions>(83));
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

#define SHOWS(getter) [](EFCoEConfig const& record) { return TextOf(record.getter()); }
#define SETS(call) [](EFCoEConfig& record) { record.call; }

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
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        ExpectAnnounced<EFCoEConfig>(field, FCoEOf, field.set);
    }
}

TEST(EFCoEConfig, EditsSetOneFieldEach)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.subId);
        ExpectAnnounced<EFCoEConfig>(field, FCoEOf, [&field](EFCoEConfig& record) {
            EXPECT_TRUE(Edit(record, {field.subId, 99}, Bytes(field.data))); // the second sub-id does not count
        });
    }
}

TEST(EFCoEConfig, SettersStoreWithoutAParentToo)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        EFCoEConfig record;
        field.set(record);
        EXPECT_EQ(field.after, field.shown(record));
    }
}

TEST(EFCoEConfig, IsComparedInAllItsFields)
{
    for (Field const& field : kFields) {
        SCOPED_TRACE(field.operation);
        EFCoEConfig changed;
        EXPECT_FALSE(changed != EFCoEConfig());
        field.set(changed);
        EXPECT_TRUE(changed != EFCoEConfig());
        EXPECT_TRUE(EFCoEConfig() != changed);
    }
    EFCoEConfig changed;
    ASSERT_TRUE(Edit(changed, {24}, Bytes("01")));
    EXPECT_TRUE(changed != EFCoEConfig());

    RecordedInterface recorded;
    EXPECT_FALSE(recorded.interface.GetFCoEConfig() != EFCoEConfig()); // the parent is not compared
}

TEST(EFCoEConfig, ListsAreComparedElementByElement)
{
    EFCoEConfig one = Sample();
    EFCoEConfig other = Sample();
    EXPECT_FALSE(one != other);
    other.SetVendorSpecificTLVs({Tlv(13, Bytes("AB CD")), Tlv(254, Bytes("00"))});
    EXPECT_TRUE(one != other);
    other = one;
    other.SetPLOGIDestinations({SamplePLOGIDestination(), SamplePLOGIDestination()});
    EXPECT_TRUE(one != other);
    other.SetPLOGIDestinations({EPLOGIDestination(), SamplePLOGIDestination()});
    EXPECT_TRUE(one != other);
}

TEST(EFCoEConfig, EditedListsHoldWhatWasRead)
{
    EFCoEConfig record = Other();
    ASSERT_TRUE(Edit(record, {16}, Bytes("02 01 07 00 01 AB 01 08 05 00"))); // a filler of 5 is dropped
    ASSERT_EQ(2u, record.GetVendorSpecificTLVs().size());
    EXPECT_FALSE(record.GetVendorSpecificTLVs().front() != Tlv(7, Bytes("AB")));
    EXPECT_FALSE(record.GetVendorSpecificTLVs().back() != Tlv(8, ""));
    ASSERT_TRUE(
        Edit(record, {18}, Bytes("01 FB 12 29 20 08 01 FB FF FF FF FE FA 01 02 03 FF 50 01 43 80 11 22 33 44")));
    ASSERT_EQ(1u, record.GetPLOGIDestinations().size());
    EXPECT_FALSE(record.GetPLOGIDestinations()[0] != SamplePLOGIDestination());
    ASSERT_TRUE(Edit(record, {16}, Bytes("00")));
    EXPECT_TRUE(record.GetVendorSpecificTLVs().empty());
    ASSERT_TRUE(Edit(record, {18}, Bytes("00")));
    EXPECT_TRUE(record.GetPLOGIDestinations().empty());
}

TEST(EFCoEConfig, Edit24IsStoredAndNobodyIsTold)
{
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    recorded.recorder->Clear();
    EXPECT_TRUE(Edit(record, {24}, Bytes("FB DE AD BE EF")));
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_TRUE(record != EFCoEConfig());
    // The sixth value of the archive.
    EXPECT_NE(std::string::npos, Written(record).find(Bytes("00 02 FB DE AD BE EF 01 03 00")));
}

TEST(EFCoEConfig, RefusesOtherEditsAndReadsNothing)
{
    RecordedInterface recorded;
    EFCoEConfig& record = FCoEOf(recorded.interface);
    for (std::vector<unsigned int> const& subIds :
         {std::vector<unsigned int>{}, {0}, {28}, {0, 1}, {std::numeric_limits<unsigned int>::max()}})
        ExpectRefused(*recorded.recorder, record, subIds);
}

TEST(EFCoEConfig, AnEditWhoseValueIsTooWideChangesNothing)
{
    struct {
        unsigned int subId;
        char const* hex;
    } const cases[] = {{4, "02"},
                       {5, "02"},
                       {6, "02"},
                       {9, "02"},
                       {10, "02"},
                       {11, "02"},
                       {12, "02"},
                       {19, "02"},
                       {20, "02"},
                       {22, "02"},
                       {25, "02"},
                       {26, "02"},
                       {13, "FA 01 00 00"},
                       {27, "FA 01 00 00"},
                       {3, "FC 01 00 00 00 00"},
                       {7, "FC 01 00 00 00 00"},
                       {8, "FC 01 00 00 00 00"},
                       {14, "FC 01 00 00 00 00"},
                       {23, "FC 01 00 00 00 00"},
                       {24, "FC 01 00 00 00 00"}};
    RecordedInterface recorded;
    for (auto const& c : cases) ExpectTooWide(*recorded.recorder, FCoEOf(recorded.interface), c.subId, c.hex);
}

TEST(EFCoEConfig, ListsHoldMoreThan255Elements)
{
    std::string tlvs = Bytes("F9 01 2C");
    std::string destinations = Bytes("F9 01 2C");
    for (int i = 0; i < 300; ++i) {
        tlvs += Bytes("01 07 00 00");
        destinations += Bytes("FB 12 29 20 08 01 00 00 00");
    }
    EFCoEConfig record;
    EXPECT_TRUE(Edit(record, {16}, tlvs));
    EXPECT_TRUE(Edit(record, {18}, destinations));
    EXPECT_EQ(300u, record.GetVendorSpecificTLVs().size());
    EXPECT_EQ(300u, record.GetPLOGIDestinations().size());
    EXPECT_NE(std::string::npos, Written(record).find(tlvs));
    EXPECT_NE(std::string::npos, Written(record).find(destinations));
    EFCoEConfig read;
    ReadInto(read, Written(record));
    EXPECT_FALSE(read != record);
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
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    record.SetResetFIPDiscoveryEnabled(true);
    record.SetResetFIPDiscoveryNumberOfRetries(-7);
    recorded.recorder->Clear();
    recorded.recorder->whenCalled = [&record] { EXPECT_FALSE(record.IsFIPEnabled()); };
    record.SetFIPEnabled(false);
    EXPECT_EQ(std::vector<std::string>{"SettingFCoEFIPEnabled"}, recorded.recorder->Operations());
    EXPECT_TRUE(record.IsResetFIPDiscoveryEnabled());
    EXPECT_EQ(-7, record.GetResetFIPDiscoveryNumberOfRetries());
}

namespace {

/// Remembers which record it was told of, which will replace it and what both held then.
class WholeRecordObserver : public EIgnoreInterfaceTableHooks {
public:
    void SettingFCoEConfig(EFCoEConfig const& record, EFCoEConfig const& replacement) override
    {
        ++calls;
        given = &record;
        replacedBy = &replacement;
        oldSize = record.GetB2BRxSize();
        newSize = replacement.GetB2BRxSize();
    }
    unsigned int calls = 0;
    EFCoEConfig const* given = nullptr;
    EFCoEConfig const* replacedBy = nullptr;
    unsigned int oldSize = 0;
    unsigned int newSize = 0;
};

} // namespace

TEST(EFCoEConfig, CopyAndAssignmentAnnounceTheSourceOnceAndKeepTheParent)
{
    for (bool const assign : {false, true}) {
        SCOPED_TRACE(assign);
        RecordedInterface recorded;
        auto const observer = boost::make_shared<WholeRecordObserver>();
        recorded.table.SetHooks("whole", observer);
        EFCoEConfig& record = recorded.interface.GetFCoEConfig();
        EFCoEConfig const source = Sample();
        if (assign)
            record = source;
        else
            record.Copy(source);
        EXPECT_EQ(1u, observer->calls);
        EXPECT_EQ(&record, observer->given);
        EXPECT_EQ(&source, observer->replacedBy);
        EXPECT_EQ(2112u, observer->oldSize);
        EXPECT_EQ(2048u, observer->newSize);
        EXPECT_FALSE(record != source);
        EXPECT_EQ(&recorded.interface, record.GetParent());
    }
}

TEST(EFCoEConfig, CopyingItselfDoesNothing)
{
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    record = Sample();
    recorded.recorder->Clear();
    EFCoEConfig const& itself = record;
    record.Copy(itself);
    record = itself;
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(record != Sample());
}

TEST(EFCoEConfig, EmptyAnnouncesTheDefaultsOnceAndKeepsTheParent)
{
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    record = Sample();
    auto const observer = boost::make_shared<WholeRecordObserver>();
    recorded.table.SetHooks("whole", observer);
    record.Empty();
    EXPECT_EQ(1u, observer->calls);
    EXPECT_EQ(&record, observer->given);
    EXPECT_EQ(2048u, observer->oldSize);
    EXPECT_EQ(2112u, observer->newSize);
    EXPECT_FALSE(record != EFCoEConfig());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(EFCoEConfig, SwapIsSilentAndLeavesTheParents)
{
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    EFCoEConfig other = Sample();
    recorded.recorder->Clear();
    record.Swap(other);
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(record != Sample());
    EXPECT_FALSE(other != EFCoEConfig());
    EXPECT_EQ(&recorded.interface, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
}

TEST(EFCoEConfig, CopyConstructionTakesTheParentToo)
{
    RecordedInterface recorded;
    EFCoEConfig const copy(recorded.interface.GetFCoEConfig());
    EXPECT_EQ(&recorded.interface, copy.GetParent());
}

TEST(EFCoEConfig, IsLeaf31OfItsInterface)
{
    RecordedInterface recorded;
    EComponentId id{99};
    recorded.interface.GetFCoEConfig().GetID(id);
    EXPECT_EQ((EComponentId{7, 1, 1, 31}), id);
    EFCoEConfig().GetID(id);
    EXPECT_EQ(EComponentId{31}, id);
    EXPECT_EQ(31u, EFCoEConfig().GetLocalId());
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
    EFCoEConfig record;
    EXPECT_EQ("00:00:00:00:00:00:00:00", record.GetSrcPortWWNAsString());
    EXPECT_EQ("01.b6.69", record.GetDestNodeIdAsString());
    EXPECT_EQ("0e.fc.00", record.GetSrcOUIAsString());
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetVendorID(EUID(0xFEDCBA9876543210));
    record.SetDestNodeId(0xAAFFFFFC);
    record.SetSrcOUI(0xAA001122);
    EXPECT_EQ("21:00:00:1b:32:00:00:01", record.GetSrcPortWWNAsString());
    EXPECT_EQ("20:00:00:1b:32:00:00:02", record.GetSrcNodeWWNAsString());
    EXPECT_EQ("fe:dc:ba:98:76:54:32:10", record.GetVendorIDAsString());
    EXPECT_EQ("ff.ff.fc", record.GetDestNodeIdAsString());
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
        std::string const bytes = Golden("EFCoEConfig.v" + std::to_string(version) + ".hex");
        EFCoEConfig fresh;
        ReadInto(fresh, bytes);
        EXPECT_FALSE(fresh != Sample(version));

        EFCoEConfig used = Other();
        EFCoEConfig expected = Other();
        ReadInto(used, bytes);
        ApplySample(expected, version); // the lists appended to what was there
        EXPECT_FALSE(used != expected);
        EXPECT_EQ(version < 3 ? 1u : 3u, used.GetVendorSpecificTLVs().size());
        EXPECT_EQ(version < 4 ? 1u : 3u, used.GetPLOGIDestinations().size());
    }
    EXPECT_FALSE(Read<EFCoEConfig>("EFCoEConfig.defaults.v7.hex") != EFCoEConfig());
}

TEST(EFCoEConfigArchive, ReadingAnnouncesNothing)
{
    RecordedInterface recorded;
    EFCoEConfig& record = recorded.interface.GetFCoEConfig();
    recorded.recorder->Clear();
    ReadInto(record, Golden("EFCoEConfig.v7.hex"));
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(record != Sample());
    EXPECT_EQ(&recorded.interface, record.GetParent());
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
