#include "eFCoEDiscoveredInfo.hpp"

#include "discoveredRecords.hpp"
#include "recordCases.hpp"

#include <type_traits>

using FCoE = EFCoEDiscoveredInfo;

static_assert(std::is_same_v<std::string, decltype(std::declval<FCoE&>().GetDiscoveredStatusReason())>);
static_assert(std::is_same_v<std::string const&, decltype(std::declval<FCoE const&>().GetDiscoveredStatusReason())>);
static_assert(!std::is_polymorphic_v<FCoE>);

static char const kFile[] = "x86_64/common/ifcore/eFCoEDiscoveredInfo.cpp";

static FCoE::PLOGIDestination Login(bool valid, unsigned int destinationId)
{
    FCoE::PLOGIDestination login;
    login.valid = valid;
    login.destinationId = destinationId;
    return login;
}

/// "valid source id status reason|destination MAC|VLAN priority D bit FCF map|FKA period"
static std::string TextOfRecord(FCoE const& record)
{
    return TextOf(record.IsValid()) + " " + record.GetDiscoveredSourceIdAsString() + " " + record.GetStateString() +
           " " + record.GetDiscoveredStatusReason() + "|" + TextOf(record.GetDiscoveredDestMAC()) + "|" +
           TextOf(record.GetDiscoveredVlanPriority()) + " " + TextOf(record.GetDiscoveredDBit()) + " " +
           record.GetDiscoveredFcfMap() + "|" + TextOf(record.GetDiscoveredFKAPeriod());
}

TEST(EFCoEDiscoveredInfo, EachSetterStoresExactlyItsField)
{
    EXPECT_EQ("false 00.00.00 Unknown |00:00:00:00:00:00|0 0 |0", TextOfRecord(FCoE()));
    struct {
        std::function<void(FCoE&)> set;
        char const* text;
    } const cases[] = {
        {[](FCoE& r) { r.SetDiscoveredSourceId(0x01B669); }, "false 01.b6.69 Unknown |00:00:00:00:00:00|0 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredStatus(FCoE::FLOGI_FAILED); },
         "false 00.00.00 FLOGI_FAILED |00:00:00:00:00:00|0 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredStatus("SCR_COMPLETE"); },
         "false 00.00.00 SCR_COMPLETE |00:00:00:00:00:00|0 0 |0"},
        {[](FCoE& r) { r.SetValid(true); }, "true 00.00.00 Unknown |00:00:00:00:00:00|0 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredStatusReason("busy"); }, "false 00.00.00 Unknown busy|00:00:00:00:00:00|0 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredDestMAC(EMACAddress("02:00:5e:10:00:01")); },
         "false 00.00.00 Unknown |02:00:5e:10:00:01|0 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredVlanPriority(0xFFFFFFFF); },
         "false 00.00.00 Unknown |00:00:00:00:00:00|4294967295 0 |0"},
        {[](FCoE& r) { r.SetDiscoveredDBit(0xFFFFFFFF); }, "false 00.00.00 Unknown |00:00:00:00:00:00|0 4294967295 |0"},
        {[](FCoE& r) { r.SetDiscoveredFcfMap("0e.fc.01"); },
         "false 00.00.00 Unknown |00:00:00:00:00:00|0 0 0e.fc.01|0"},
        {[](FCoE& r) { r.SetDiscoveredFKAPeriod(0xFFFFFFFF); },
         "false 00.00.00 Unknown |00:00:00:00:00:00|0 0 |4294967295"},
    };
    for (auto const& c : cases) {
        FCoE record;
        c.set(record);
        EXPECT_EQ(c.text, TextOfRecord(record));
    }
}

TEST(EFCoEDiscoveredInfo, TheReasonOfAChangeableRecordIsACopy)
{
    FCoE record;
    record.SetDiscoveredStatusReason("busy");
    record.GetDiscoveredStatusReason() += " line";
    EXPECT_EQ("busy", record.GetDiscoveredStatusReason());
}

TEST(EFCoEDiscoveredInfo, EveryStatusHasItsTextAndEveryTextItsStatus)
{
    struct {
        FCoE::eStatus status;
        char const* text;
    } const cases[] = {
        {FCoE::STATUS_UNKNOWN, "Unknown"},
        {FCoE::FLOGI_COMPLETE, "FLOGI_COMPLETE"},
        {FCoE::FLOGI_FAILED, "FLOGI_FAILED"},
        {FCoE::PLOGI_COMPLETE, "PLOGI_COMPLETE"},
        {FCoE::PLOGI_FAILED, "PLOGI_FAILED"},
        {FCoE::SCR_COMPLETE, "SCR_COMPLETE"},
        {FCoE::SCR_FAILED, "SCR_FAILED"},
        {FCoE::FDISC_COMPLETE, "FDISC_COMPLETE"},
        {FCoE::FDISC_FAILED, "FDISC_FAILED"},
        {FCoE::NS_REGISTRATION_COMPLETE, "NS_REGISTRATION_COMPLETE"},
        {FCoE::NS_REGISTRATION_FAILED, "NS_REGISTRATION_FAILED"},
        {FCoE::DISCOVERY_SOLICITATION_COMPLETE, "DISCOVERY_SOLICITATION_COMPLETE"},
        {FCoE::DISCOVERY_SOLICITATION_FAILED, "DISCOVERY_SOLICITATION_FAILED"},
        {FCoE::VLAN_DISCOVERY_COMPLETE, "VLAN_DISCOVERY_COMPLETE"},
        {FCoE::VLAN_DISCOVERY_FAILED, "VLAN_DISCOVERY_FAILED"},
        {FCoE::PRLI_COMPLETE, "PRLI_COMPLETE"},
        {FCoE::PRLI_FAILED, "PRLI_FAILED"},
        {FCoE::NS_QUERY_COMPLETE, "NS_QUERY_COMPLETE"},
        {FCoE::NS_QUERY_FAILED, "NS_QUERY_FAILED"},
        {FCoE::PLOGI_REQUEST_SENT, "PLOGI_REQUEST_SENT"},
    };
    unsigned int value = 0;
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(value++, c.status);
        EXPECT_EQ(c.text, FCoE::GetStateString(c.status));
        EXPECT_EQ(c.status, FCoE::GetStateEnum(c.text));
        FCoE record;
        record.SetDiscoveredStatus(c.text);
        EXPECT_EQ(c.status, record.GetDiscoveredStatus());
        EXPECT_EQ(c.text, record.GetStateString());
    }
    EXPECT_EQ(20U, value);
}

TEST(EFCoEDiscoveredInfo, AStatusWithoutANameIsHeldAndShownAsUnknown)
{
    for (unsigned int const value : {20U, 21U, 0xFFFFFFFFU}) {
        auto const status = static_cast<FCoE::eStatus>(value);
        EXPECT_EQ("Unknown", FCoE::GetStateString(status));
        FCoE record;
        record.SetDiscoveredStatus(status);
        EXPECT_EQ(value, record.GetDiscoveredStatus());
        EXPECT_EQ("Unknown", record.GetStateString());
    }
}

TEST(EFCoEDiscoveredInfo, AnyOtherTextIsStatus0)
{
    for (char const* text : {"", "flogi_complete", "Flogi_Complete", "FLOGI_COMPLETE ", " FLOGI_COMPLETE", "FLOGI",
                             "FLOGI_COMPLETE_", "1", "unknown"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FCoE::STATUS_UNKNOWN, FCoE::GetStateEnum(text));
        FCoE record;
        record.SetDiscoveredStatus(FCoE::PRLI_FAILED);
        record.SetDiscoveredStatus(text);
        EXPECT_EQ(FCoE::STATUS_UNKNOWN, record.GetDiscoveredStatus());
    }
    EXPECT_EQ(FCoE::STATUS_UNKNOWN, FCoE::GetStateEnum(std::string("FLOGI_COMPLETE\0", 15)));
}

TEST(EFCoEDiscoveredInfo, AnAddressIdentifierIsItsLow3BytesAndAWwpnAll8)
{
    struct {
        unsigned int id;
        char const* text;
    } const ids[] = {{0, "00.00.00"}, {0x01B669, "01.b6.69"}, {0xFF010203, "01.02.03"}, {0xFFFFFFFF, "ff.ff.ff"}};
    FCoE record;
    for (auto const& c : ids) {
        record.SetDiscoveredSourceId(c.id);
        EXPECT_EQ(c.text, record.GetDiscoveredSourceIdAsString());
        std::string text = "to be replaced";
        FCoE().GetDestinationIdAsString(c.id, text);
        EXPECT_EQ(c.text, text);
    }
    struct {
        unsigned long wwpn;
        char const* text;
    } const wwpns[] = {{0, "00 00 00 00 00 00 00 00"},
                       {0x5001438011223344, "50 01 43 80 11 22 33 44"},
                       {0xFFFFFFFFFFFFFFFF, "ff ff ff ff ff ff ff ff"}};
    for (auto const& c : wwpns) {
        std::string text = "to be replaced";
        record.GetWwpnAsString(c.wwpn, text);
        EXPECT_EQ(c.text, text);
    }
}

TEST(EFCoEDiscoveredInfo, ALoginIsFoundUnderExactlyItsKeyAndLookingAddsNone)
{
    FCoE record;
    record.SetPLOGIDestinationMap({
        {{5, 0x2000}, Login(true, 10)}, // by neither look-up
        {{6, 0}, Login(true, 11)},
        {{0, 0x3000}, Login(true, 12)},
        {{7, 0}, Login(false, 13)},
        {{0xFFFFFFFF, 0}, Login(true, 14)},
        {{0, 0xFFFFFFFFFFFFFFFF}, Login(true, 15)},
    });
    std::string const before = Written(record);
    struct {
        unsigned int id;
        bool valid;
        unsigned int found;
    } const byId[] = {{0, false, 0},  {5, false, 0}, {6, true, 11},
                      {7, false, 13}, {8, false, 0}, {0xFFFFFFFF, true, 14}};
    for (auto const& c : byId) {
        SCOPED_TRACE(c.id);
        EXPECT_EQ(c.valid, record.IsValidDiscoveredPLOGIDid(c.id));
        EXPECT_EQ(c.found, record.GetDiscoveredPLOGIDid(c.id));
    }
    struct {
        unsigned long wwpn;
        bool valid;
        unsigned int found;
    } const byWwpn[] = {{0, false, 0},      {6, false, 0},      {0x2000, false, 0},
                        {0x3000, true, 12}, {0x3001, false, 0}, {0xFFFFFFFFFFFFFFFF, true, 15}};
    for (auto const& c : byWwpn) {
        SCOPED_TRACE(c.wwpn);
        EXPECT_EQ(c.valid, record.IsValidDiscoveredPLOGIDid(EUID(c.wwpn)));
        EXPECT_EQ(c.found, record.GetDiscoveredPLOGIDid(EUID(c.wwpn)));
    }
    EXPECT_EQ(before, Written(record));

    record.SetPLOGIDestinationMap({{{0, 0}, Login(true, 16)}}); // replaces them all
    EXPECT_FALSE(record.IsValidDiscoveredPLOGIDid(6));
    EXPECT_EQ(16U, record.GetDiscoveredPLOGIDid(0));
    EXPECT_EQ(16U, record.GetDiscoveredPLOGIDid(EUID(0)));
}

TEST(EFCoEDiscoveredInfo, ContentsMoveWithoutTheParent)
{
    ExpectContentsMoveWithoutTheParent(Read<FCoE>("EFCoEDiscoveredInfo.v1110143C.hex"));
}

TEST(EFCoEDiscoveredInfo, TheObserverIsThatOfTheTable)
{
    ExpectObserverOfTheTable<FCoE>(&EDiscoveredInfo::GetFCoEInfo);
}

// ---- Archive --------------------------------------------------------------------------------------------------------

TEST(EFCoEDiscoveredInfoArchive, WritesTheNewestVersion)
{
    EXPECT_EQ(Golden("EFCoEDiscoveredInfo.defaults.v1110143C.hex"), Written(FCoE()));
    EXPECT_EQ(Golden("EFCoEDiscoveredInfo.v1110143C.hex"), Written(Read<FCoE>("EFCoEDiscoveredInfo.v1110143C.hex")));
}

TEST(EFCoEDiscoveredInfoArchive, HoldsWhatTheSettersWereGiven)
{
    FCoE const read = Read<FCoE>("EFCoEDiscoveredInfo.v1110143C.hex");
    EXPECT_EQ("true 01.b6.69 PRLI_COMPLETE busy|02:00:5e:10:00:01|3 1 0e.fc.01|8000", TextOfRecord(read));
    EXPECT_EQ(0x010203U, read.GetDiscoveredPLOGIDid(EUID(0x5001438011223344)));
    EXPECT_EQ(9U, read.GetDiscoveredPLOGIDid(5U));

    FCoE record = Read<FCoE>("EFCoEDiscoveredInfo.v11101438.hex"); // with the fields that have no setter
    record.SetDiscoveredFKAPeriod(8000);
    record.SetDiscoveredDBit(1);
    record.SetDiscoveredFcfMap("0e.fc.01");
    record.SetDiscoveredVlanPriority(3);
    record.SetPLOGIDestinationMap(
        {{{5, 7}, Login(true, 10)}, {{5, 0}, Login(false, 9)}, {{0, 0x5001438011223344}, Login(true, 0x010203)}});
    EXPECT_EQ(Golden("EFCoEDiscoveredInfo.v1110143C.hex"), Written(record));
}

TEST(EFCoEDiscoveredInfoArchive, ReadingAnnouncesNothing)
{
    ExpectReadUnheard<FCoE>(&EDiscoveredInfo::GetFCoEInfo, "EFCoEDiscoveredInfo.v1110143C.hex");
}

/// What another record holds in every field, by the version that brought it; newest first.
static struct {
    unsigned int since;
    char const* hex;
} const kOther[] = {
    {0x1110143C, "65"},
    {0x1110143B, "66 01 67"},
    {0x1110143A, "68"},
    {0x11101439, "01 69 6A 6B 00"},
    {0x11101438, "02 6C 6D"},
    {0x11101437, "02 00 5E 10 00 6E 6F 70 71 72"},
    {0x11101436, "00 73 74 01 75 02 00 5E 10 00 76"},
};
static std::string const kNewest = "FB 11 10 14 3C";

TEST(EFCoEDiscoveredInfoArchive, FieldsThatAVersionDoesNotCarryStay)
{
    struct {
        unsigned int version;
        char const* archive;
        char const* fields;
    } const cases[] = {
        {0x11101436, "EFCoEDiscoveredInfo.v11101436.hex", "EFCoEDiscoveredInfo.fromValid.hex"},
        {0x11101437, "EFCoEDiscoveredInfo.v11101437.hex", "EFCoEDiscoveredInfo.fromSecondMac.hex"},
        {0x11101438, "EFCoEDiscoveredInfo.v11101438.hex", "EFCoEDiscoveredInfo.fromShortList.hex"},
        {0x11101439, "EFCoEDiscoveredInfo.v11101439.hex", "EFCoEDiscoveredInfo.fromLogins.hex"},
        {0x1110143A, "EFCoEDiscoveredInfo.v1110143A.hex", "EFCoEDiscoveredInfo.fromVlanPriority.hex"},
        {0x1110143B, "EFCoEDiscoveredInfo.v1110143B.hex", "EFCoEDiscoveredInfo.fromDBit.hex"},
    };
    std::string other = Bytes(kNewest);
    for (auto const& row : kOther) other += Bytes(row.hex);
    for (auto const& c : cases) {
        SCOPED_TRACE(c.archive);
        FCoE record;
        ReadInto(record, other);
        EDiscoveredInfo const owner;
        record.SetParent(&owner);
        ReadInto(record, Golden(c.archive));
        std::string expected = Bytes(kNewest);
        for (auto const& row : kOther)
            if (row.since > c.version) expected += Bytes(row.hex);
        EXPECT_EQ(expected + Golden(c.fields), Written(record));
        EXPECT_EQ(&owner, record.GetParent());
    }
}

/// A record with other logins read from an archive with these.
static FCoE WithLogins(std::string const& hex)
{
    FCoE record;
    record.SetPLOGIDestinationMap({{{6, 0}, Login(true, 11)}});
    ReadInto(record, Bytes("FB 11 10 14 39 " + hex) + Golden("EFCoEDiscoveredInfo.fromShortList.hex"));
    return record;
}
/// What such a record writes.
static std::string WrittenWithLogins(std::string const& hex)
{
    return Bytes("FB 11 10 14 3C 00 00 00 00 " + hex) + Golden("EFCoEDiscoveredInfo.fromShortList.hex");
}

TEST(EFCoEDiscoveredInfoArchive, LoginsAreReplacedAndACountOf0OrLessHoldsNone)
{
    for (char const* count : {"00", "FB FF FF FF FF", "FB 80 00 00 00"}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(WrittenWithLogins("00"), Written(WithLogins(count)));
    }
    EXPECT_EQ(WrittenWithLogins("01 05 07 0A 01"), Written(WithLogins("01 05 07 0A 01")));
}

TEST(EFCoEDiscoveredInfoArchive, OfTwoLoginsUnderOneKeyTheLaterWinsAndTheOrderIsThatOfTheKeys)
{
    EXPECT_EQ(WrittenWithLogins("03 02 09 0C 01 05 07 0B 00 05 08 0D 01"),
              Written(WithLogins("04 05 07 0A 01 05 08 0D 01 02 09 0C 01 05 07 0B 00")));
}

TEST(EFCoEDiscoveredInfoArchive, LoginsThatEndTooEarlyAreAnErrorAndKeepWhatWasRead)
{
    struct {
        char const* hex;
        unsigned int found; // under (5, 0)
    } const cases[] = {
        {"FC 01 00 00 00 00", 0}, // a count that is no `int`
        {"FB 7F FF FF FF", 0},
        {"02 05 00 0A 01 06", 10},
        {"02 05 00 0A 01 06 00 0B 02", 10}, // no bool
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.hex);
        FCoE record;
        record.SetPLOGIDestinationMap({{{6, 0}, Login(true, 11)}});
        EArchive archive;
        Load(archive, Bytes(std::string("FB 11 10 14 39 ") + c.hex));
        EXPECT_THROW(archive >> record, EArchiveError);
        EXPECT_EQ(c.found, record.GetDiscoveredPLOGIDid(5));
        EXPECT_EQ(0U, record.GetDiscoveredPLOGIDid(6));
    }
}

TEST(EFCoEDiscoveredInfoArchive, ThreeHundredLoginsComeBack)
{
    FCoE::PLOGIDestinationMap logins;
    for (unsigned int id = 1; id <= 300; ++id) logins[{id, 0}] = Login(true, 1000 + id);
    FCoE record;
    record.SetPLOGIDestinationMap(logins);
    EXPECT_EQ(Bytes("FB 11 10 14 3C 00 00 00 00 F9 01 2C 01 00 F9 03 E9 01"), Written(record).substr(0, 18));
    FCoE read;
    ReadInto(read, Written(record));
    EXPECT_EQ(1300U, read.GetDiscoveredPLOGIDid(300U));
    EXPECT_EQ(Written(record), Written(read));
}

TEST(EFCoEDiscoveredInfoArchive, TheShortListIsReplacedAndItsValuesHave16Bits)
{
    FCoE record = Read<FCoE>("EFCoEDiscoveredInfo.v1110143C.hex");
    ReadInto(record, Bytes("FB 11 10 14 38 01 07") + Golden("EFCoEDiscoveredInfo.fromSecondMac.hex"));
    EXPECT_NE(std::string::npos,
              Written(record).find(Bytes("01 07") + Golden("EFCoEDiscoveredInfo.fromSecondMac.hex")));
    ReadAsFarAsPossible<FCoE>(Bytes("FB 11 10 14 38 01 FA 01 00 00"));
    ReadAsFarAsPossible<FCoE>(Bytes("FB 11 10 14 38 FC 01 00 00 00 00"));
}

TEST(EFCoEDiscoveredInfoArchive, AStatusWithoutANameIsKept)
{
    FCoE record;
    ReadInto(record, Bytes("FB 11 10 14 36 01 00 FB FF FF FF FE 00 00 00 00 00 00 00"));
    EXPECT_EQ(0xFFFFFFFEU, record.GetDiscoveredStatus());
    EXPECT_NE(std::string::npos, Written(record).find(Bytes("01 00 FB FF FF FF FE")));
}

TEST(EFCoEDiscoveredInfoArchiveDeathTest, RefusesOtherVersions)
{
    for (char const* version : {"00", "FB 11 10 14 35", "FB 11 10 14 3D", "FB FF FF FF FF"})
        ExpectArchiveError<FCoE>(version, kFile, 210, "EFCoEDiscoveredInfo::SerializeIn");
}

TEST(EFCoEDiscoveredInfoArchiveDeathTest, AnArchiveOfTheWrongDirectionEndsTheProcess)
{
    ExpectListRefusesToBeWritten<FCoE>();
    ChildResult const reading = RunInChild([] {
        EArchive archive;
        FCoE record;
        archive >> record; // whose version is then 0
    });
    EXPECT_EQ(1, reading.exitStatus);
    EXPECT_EQ(FatalArchiveMessage(kFile, 210, "EFCoEDiscoveredInfo::SerializeIn"), reading.output);
}
