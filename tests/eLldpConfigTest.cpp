#include "eLldpConfig.hpp"

#include "recordCases.hpp"

#include <climits>

using Setter = SetterCase<ELLDPConfig>;
using Record = ELLDPConfig const&;
using InTable = RecordInTable<ELLDPConfig>;

static EMACAddress const kChassisMac("02:00:5e:10:00:01");
static EMACAddress const kPortMac("02:00:5e:10:00:02");

static ELLDPConfig::LLDPChassisId Chassis(EMACAddress const& mac, std::string const& name, unsigned int subType)
{
    ELLDPConfig::LLDPChassisId id;
    id.mac = mac;
    id.interfaceName = name;
    id.subType = static_cast<ELLDPConfig::eChassisIdSubTypes>(subType);
    return id;
}

static ELLDPConfig::LLDPPortId Port(EMACAddress const& mac, std::string const& name, unsigned int subType)
{
    ELLDPConfig::LLDPPortId id;
    id.mac = mac;
    id.interfaceName = name;
    id.subType = static_cast<ELLDPConfig::ePortIdSubTypes>(subType);
    return id;
}

/// "02:00:5e:10:00:01 abc 7"
template <class Id> static std::string TextOfId(Id const& id)
{
    return TextOf(id.mac) + " " + id.interfaceName + " " + TextOf(id.subType);
}
static std::string ChassisText(Record record)
{
    return TextOfId(record.GetChassisId());
}
static std::string PortText(Record record)
{
    return TextOfId(record.GetPortId());
}
/// "hold time, tx interval, time to live": what the two setters that recompute work on.
static std::string TimesText(Record record)
{
    return TextOf(record.GetHoldTime()) + " " + TextOf(record.GetTxInterval()) + " " + TextOf(record.GetTimeToLive());
}

/// Every announcing setter once, with a value that a fresh record does not have.
static std::vector<Setter> Setters()
{
    return {
        {"SettingLLDPChassisId", "record", [](auto& r) { r.SetChassisId(Chassis(kChassisMac, "abc", 7)); }, ChassisText,
         "00:00:00:00:00:00  4", "02:00:5e:10:00:01 abc 7"},
        {"SettingLLDPPortId", "record", [](auto& r) { r.SetPortId(Port(kPortMac, "eth9", 3)); }, PortText,
         "00:00:00:00:00:00  5", "02:00:5e:10:00:02 eth9 3"},
        {"SettingLLDPFastInitEnabled", "false", [](auto& r) { r.SetFastInitEnabled(false); },
         [](Record r) { return TextOf(r.IsFastInitEnabled()); }, "true", "false"},
        {"SettingLLDPHoldTime", "10", [](auto& r) { r.SetHoldTime(10); }, TimesText, "4 30 120", "10 30 300"},
        {"SettingLLDPTxInterval", "60", [](auto& r) { r.SetTxInterval(60); }, TimesText, "4 30 120", "4 60 240"},
        {"SettingLLDPTxDelay", "65535", [](auto& r) { r.SetTxDelay(65535); },
         [](Record r) { return TextOf(r.GetTxDelay()); }, "2", "65535"},
    };
}

/// What the archives of the oldest version hold; the time to live is the default, unlike what the two others give.
static ELLDPConfig SampleOldest()
{
    ELLDPConfig record;
    record.SetChassisId(Chassis(kChassisMac, "abc", 7));
    record.SetPortId(Port(kPortMac, "eth9", 3));
    record.SetHoldTime(10);
    record.SetTxInterval(300);
    record.SetTxDelay(5);
    record.SetFastInitEnabled(false);
    record.SetTimeToLive(120);
    return record;
}

static ELLDPConfig SampleWithTimeToLive()
{
    ELLDPConfig record = SampleOldest();
    record.SetTimeToLive(255);
    return record;
}

static ELLDPConfig SampleNewest()
{
    ELLDPConfig record = SampleWithTimeToLive();
    record.SetPeerStatus(-1);
    return record;
}

TEST(ELLDPConfig, StartsWithAMacChassisAnInterfaceNamePortAnd120Seconds)
{
    ELLDPConfig const record;
    EXPECT_EQ(nullptr, record.GetParent());
    EXPECT_EQ("00:00:00:00:00:00  4", ChassisText(record));
    EXPECT_EQ("00:00:00:00:00:00  5", PortText(record));
    EXPECT_EQ(4, record.GetHoldTime());
    EXPECT_EQ(30, record.GetTxInterval());
    EXPECT_EQ(2, record.GetTxDelay());
    EXPECT_TRUE(record.IsFastInitEnabled());
    EXPECT_EQ(120, record.GetTimeToLive());
    EXPECT_EQ(0, record.GetPeerStatus());
}

TEST(ELLDPConfig, EverySetterAnnouncesOnceAndThenStores)
{
    ExpectEachAnnouncedThenStored<InTable>(Setters());
}

TEST(ELLDPConfig, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(ELLDPConfig, AnnouncesAValueThatIsThereAlready)
{
    InTable in;
    in.record.SetTxDelay(2);
    EXPECT_EQ(Heard("SettingLLDPTxDelay"), in.recorder->Operations());
}

TEST(ELLDPConfig, SilentSettersChangeExactlyTheirPart)
{
    struct {
        char const* name;
        std::function<void(ELLDPConfig&)> set;
        char const* chassis;
        char const* port;
        char const* peerStatusAndTimeToLive;
    } const cases[] = {
        {"chassis MAC", [](auto& r) { r.SetChassisIdMac(kPortMac); }, "02:00:5e:10:00:02 abc 7",
         "02:00:5e:10:00:02 eth9 3", "-1 255"},
        {"chassis name", [](auto& r) { r.SetChassisIdInterfaceName("x"); }, "02:00:5e:10:00:01 x 7",
         "02:00:5e:10:00:02 eth9 3", "-1 255"},
        {"chassis subtype", [](auto& r) { r.SetChassisIdSubType(ELLDPConfig::CHASSIS_ID_NETWORK_ADDRESS); },
         "02:00:5e:10:00:01 abc 5", "02:00:5e:10:00:02 eth9 3", "-1 255"},
        {"port MAC", [](auto& r) { r.SetPortIdMac(kChassisMac); }, "02:00:5e:10:00:01 abc 7",
         "02:00:5e:10:00:01 eth9 3", "-1 255"},
        {"port name", [](auto& r) { r.SetPortIdInterfaceName("y"); }, "02:00:5e:10:00:01 abc 7",
         "02:00:5e:10:00:02 y 3", "-1 255"},
        {"port subtype", [](auto& r) { r.SetPortIdSubType(ELLDPConfig::PORT_ID_LOCALLY_ASSIGNED); },
         "02:00:5e:10:00:01 abc 7", "02:00:5e:10:00:02 eth9 7", "-1 255"},
        {"time to live", [](auto& r) { r.SetTimeToLive(7); }, "02:00:5e:10:00:01 abc 7", "02:00:5e:10:00:02 eth9 3",
         "-1 7"},
        {"peer status", [](auto& r) { r.SetPeerStatus(1); }, "02:00:5e:10:00:01 abc 7", "02:00:5e:10:00:02 eth9 3",
         "1 255"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        InTable in(SampleNewest());
        ELLDPConfig const& record = in.record;
        c.set(in.record);
        EXPECT_EQ(c.chassis, ChassisText(record));
        EXPECT_EQ(c.port, PortText(record));
        EXPECT_EQ(c.peerStatusAndTimeToLive, TextOf(record.GetPeerStatus()) + " " + TextOf(record.GetTimeToLive()));
        EXPECT_TRUE(record != SampleNewest());
        EXPECT_TRUE(in.recorder->calls.empty());
    }
}

TEST(ELLDPConfig, AnswersThePartsOfTheIds)
{
    ELLDPConfig const record = SampleOldest();
    EXPECT_FALSE(record.GetChassisIdMac() != kChassisMac);
    EXPECT_EQ("abc", record.GetChassisIdInterfaceName());
    EXPECT_EQ(ELLDPConfig::CHASSIS_ID_LOCALLY_ASSIGNED, record.GetChassisIdSubType());
    EXPECT_FALSE(record.GetPortIdMac() != kPortMac);
    EXPECT_EQ("eth9", record.GetPortIdInterfaceName());
    EXPECT_EQ(ELLDPConfig::PORT_ID_MAC_ADDRESS, record.GetPortIdSubType());
}

TEST(ELLDPConfig, ComputesTheTimeToLiveFromHoldTimeAndTxIntervalUpTo65535)
{
    struct {
        unsigned short holdTime;
        unsigned short txInterval;
        unsigned short timeToLive;
    } const cases[] = {{10, 30, 300},     {4, 65535, 65535}, {65535, 65535, 65535}, {0, 30, 0},
                       {65535, 0, 0},     {1, 65535, 65535}, {257, 255, 65535},     {256, 256, 65535},
                       {5, 13107, 65535}, {2, 32767, 65534}};
    for (auto const& c : cases) {
        SCOPED_TRACE(std::to_string(c.holdTime) + " " + std::to_string(c.txInterval));
        ELLDPConfig holdTimeFirst;
        holdTimeFirst.SetHoldTime(c.holdTime);
        holdTimeFirst.SetTxInterval(c.txInterval);
        EXPECT_EQ(c.timeToLive, holdTimeFirst.GetTimeToLive());
        ELLDPConfig txIntervalFirst;
        txIntervalFirst.SetTxInterval(c.txInterval);
        txIntervalFirst.SetHoldTime(c.holdTime);
        EXPECT_EQ(c.timeToLive, txIntervalFirst.GetTimeToLive());
    }
}

TEST(ELLDPConfig, RecomputesATimeToLiveThatWasSet)
{
    ELLDPConfig record;
    record.SetTimeToLive(1);
    record.SetTxDelay(9);
    EXPECT_EQ(1, record.GetTimeToLive());
    record.SetHoldTime(4);
    EXPECT_EQ(120, record.GetTimeToLive());
}

TEST(ELLDPConfig, ClampsATimeToLiveAndReturnsWhatItStored)
{
    struct {
        int given;
        int stored;
    } const cases[] = {{0, 0},         {1, 1},           {65535, 65535}, {65536, 65535},
                       {70000, 65535}, {INT_MAX, 65535}, {-1, 0},        {INT_MIN, 0}};
    for (auto const& c : cases) {
        ELLDPConfig record;
        EXPECT_EQ(c.stored, record.SetTimeToLive(c.given));
        EXPECT_EQ(c.stored, record.GetTimeToLive());
    }
}

TEST(ELLDPConfig, ComparesEveryPartOfAnId)
{
    ELLDPConfig::LLDPChassisId const chassis = Chassis(kChassisMac, "abc", 7);
    EXPECT_FALSE(chassis != Chassis(kChassisMac, "abc", 7));
    EXPECT_TRUE(chassis != Chassis(kPortMac, "abc", 7));
    EXPECT_TRUE(chassis != Chassis(kChassisMac, "abd", 7));
    EXPECT_TRUE(chassis != Chassis(kChassisMac, "abc", 0x107));
    ELLDPConfig::LLDPPortId const port = Port(kPortMac, "eth9", 3);
    EXPECT_FALSE(port != Port(kPortMac, "eth9", 3));
    EXPECT_TRUE(port != Port(kChassisMac, "eth9", 3));
    EXPECT_TRUE(port != Port(kPortMac, "eth8", 3));
    EXPECT_TRUE(port != Port(kPortMac, "eth9", 4));
}

TEST(ELLDPConfigText, ShowsTheIdsByStatusAndSubType)
{
    struct {
        int peerStatus;
        unsigned int chassisType;
        unsigned int portType;
        char const* chassis;
        char const* port;
    } const cases[] = {
        {0, 4, 5, " Sub type = 4 Value = 02:00:5e:10:00:01", " Sub type = 5 Value = eth9"},
        {0, 7, 3, " Sub type = 7 Value = abc", " Sub type = 3 Value = 02:00:5e:10:00:02"},
        {0, 3, 4, " Sub type = 3 Value = abc", " Sub type = 4 Value = eth9"},
        {0, 0xffffffff, 0x103, " Sub type = 4294967295 Value = abc", " Sub type = 259 Value = eth9"},
        {1, 4, 3, " Waiting for LLDP response.", " Waiting for LLDP response."},
        {2, 4, 3, " Peer has shutdown.", " Peer has shutdown."},
        {-1, 7, 5, " Peer has shutdown.", " Peer has shutdown."},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.chassis);
        ELLDPConfig record;
        record.SetChassisId(Chassis(kChassisMac, "abc", c.chassisType));
        record.SetPortId(Port(kPortMac, "eth9", c.portType));
        record.SetPeerStatus(c.peerStatus);
        EXPECT_EQ(c.chassis, record.GetChassisIdAsString());
        EXPECT_EQ(c.port, record.GetPortIdAsString());
        EXPECT_EQ(std::string("Chassis ID TLV: ") + c.chassis + " Port ID TLV: " + c.port + " TTL TLV: 120",
                  record.GetConfigAsString());
    }
}

TEST(ELLDPConfigText, ShowsADefaultRecordOnOneLine)
{
    EXPECT_EQ("Chassis ID TLV:  Sub type = 4 Value = 00:00:00:00:00:00"
              " Port ID TLV:  Sub type = 5 Value =  TTL TLV: 120",
              ELLDPConfig().GetConfigAsString());
}

TEST(ELLDPConfig, DoesNotCompareTheParent)
{
    ExpectParentNotCompared<ELLDPConfig>();
}

TEST(ELLDPConfig, IsLeaf38OfItsInterface)
{
    ExpectLeaf<ELLDPConfig>(38);
}

TEST(ELLDPConfig, SetsItsParentSilentlyAndCopyConstructionTakesIt)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<ELLDPConfig>(*recorded.recorder, recorded.interface, [](auto& r) { r.SetTxDelay(1); });
}

TEST(ELLDPConfig, ANewIdIsShownToTheObserver)
{
    using ChassisId = ELLDPConfig::LLDPChassisId;
    using PortId = ELLDPConfig::LLDPPortId;
    InTable in;
    EXPECT_EQ("02:00:5e:10:00:01 abc 7",
              ShownToTheObserver<ChassisId>(
                  *in.recorder, [&] { in.record.SetChassisId(Chassis(kChassisMac, "abc", 7)); }, TextOfId<ChassisId>));
    EXPECT_EQ("02:00:5e:10:00:02 eth9 3",
              ShownToTheObserver<PortId>(
                  *in.recorder, [&] { in.record.SetPortId(Port(kPortMac, "eth9", 3)); }, TextOfId<PortId>));
}

TEST(ELLDPConfig, CopyingAndEmptyingAnnounceNothingAndKeepTheParent)
{
    ELLDPConfig before;
    before.SetTxDelay(77);
    ExpectCopyIsOneChange("", before, SampleNewest());
    ExpectEmptyIsOneChange("", before);
    ExpectCopiedToItself(before, "", "");
}

TEST(ELLDPConfig, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, SampleNewest());
}

TEST(ELLDPConfigArchive, WritesTheNewestVersion)
{
    EXPECT_EQ(Golden("ELLDPConfig.v0127200B.hex"), Written(SampleNewest()));
    EXPECT_EQ(Golden("ELLDPConfig.defaults.v0127200B.hex"), Written(ELLDPConfig()));
}

TEST(ELLDPConfigArchive, ReadsAllThreeVersions)
{
    EXPECT_FALSE(Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex") != SampleNewest());
    EXPECT_FALSE(Read<ELLDPConfig>("ELLDPConfig.v0127200A.hex") != SampleWithTimeToLive());
    EXPECT_FALSE(Read<ELLDPConfig>("ELLDPConfig.v01272009.hex") != SampleOldest());
}

TEST(ELLDPConfigArchive, KeepsWhatTheVersionDoesNotCarryAndRecomputesNothing)
{
    struct {
        char const* golden;
        int timeToLive;
        int peerStatus;
    } const cases[] = {{"ELLDPConfig.v0127200B.hex", 255, -1},
                       {"ELLDPConfig.v0127200A.hex", 255, 9},
                       {"ELLDPConfig.v01272009.hex", 33, 9}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        InTable in;
        in.record.SetTimeToLive(33);
        in.record.SetPeerStatus(9);
        ExpectReadSilently(*in.recorder, in.record, Golden(c.golden));
        EXPECT_EQ(c.timeToLive, in.record.GetTimeToLive());
        EXPECT_EQ(c.peerStatus, in.record.GetPeerStatus());
        EXPECT_EQ(300, in.record.GetTxInterval());
    }
}

TEST(ELLDPConfigArchive, NarrowsTheSubTypesOfIdsTo8Bits)
{
    EXPECT_EQ(Golden("LLDPChassisId.hex"), Written(Chassis(kChassisMac, "abc", 0x1ff)));
    EXPECT_EQ(Golden("LLDPPortId.hex"), Written(Port(kPortMac, "eth9", 0x302)));
    EXPECT_FALSE(Read<ELLDPConfig::LLDPChassisId>("LLDPChassisId.hex") != Chassis(kChassisMac, "abc", 0xff));
    EXPECT_FALSE(Read<ELLDPConfig::LLDPPortId>("LLDPPortId.hex") != Port(kPortMac, "eth9", 2));
}

TEST(ELLDPConfigArchive, RefusesTheVersionsBeforeAndAfter)
{
    for (char const* version : {"00", "01", "fb 01 27 20 08", "fb 01 27 20 0c", "fb ff ff ff ff"})
        ExpectArchiveError<ELLDPConfig>(version, "x86_64/common/ifcore/eLldpConfig.cpp", 166,
                                        "ELLDPConfig::SerializeIn");
}

TEST(ELLDPConfigEdit, EverySubIdSetsItsField)
{
    EditCase<ELLDPConfig> const cases[] = {
        {1, "02 00 5e 10 00 01  01 6e  f8 ff", "SettingLLDPChassisId", "record", ChassisText,
         "02:00:5e:10:00:01 n 255"},
        {2, "02 00 5e 10 00 02  01 6d  02", "SettingLLDPPortId", "record", PortText, "02:00:5e:10:00:02 m 2"},
        {3, "06", "SettingLLDPHoldTime", "6", TimesText, "6 30 180"},
        {4, "f9 ff ff", "SettingLLDPTxInterval", "65535", TimesText, "6 65535 65535"},
        {5, "09", "SettingLLDPTxDelay", "9", [](Record r) { return TextOf(r.GetTxDelay()); }, "9"},
        {6, "00", "SettingLLDPFastInitEnabled", "false", [](Record r) { return TextOf(r.IsFastInitEnabled()); },
         "false"},
    };
    InTable in;
    for (auto const& c : cases) ExpectEdited(*in.recorder, in.record, c);
}

TEST(ELLDPConfigEdit, RefusesAllOthersAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {7}, {8}, {0xffffffff}, {0, 3}});
}

TEST(ELLDPConfigEdit, ReadsNoWiderNumberAndNoHalfAnId)
{
    InTable in;
    ExpectEachTooWide(*in.recorder, in.record,
                      {{1, "02 00 5e 10 00 01  01 6e  f9 01 00"},
                       {2, "02 00 5e 10 00 02  01 6d"},
                       {3, "fa 01 00 00"},
                       {4, "fa 01 00 00"},
                       {5, "fa 01 00 00"},
                       {6, "02"}});
}
