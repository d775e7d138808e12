#include "eDHCPv6Properties.hpp"

#include "recordCases.hpp"
#include "recordedInterface.hpp"

using Setter = SetterCase<EDHCPv6Properties>;
using Record = EDHCPv6Properties const&;

static std::list<EDHCPTLV> SampleTlvs()
{
    return {Tlv(16, Bytes("07")), Tlv(17, "")};
}

static std::string TlvText(Record record)
{
    return TextOfTlvs(record.GetDHCPv6CustomTLVs());
}

static EDHCPv6Properties::eIAType Type(int value)
{
    return static_cast<EDHCPv6Properties::eIAType>(value);
}

/// Every setter once, with a value that a fresh record does not have.
static std::vector<Setter> Setters()
{
    return {
        {"SettingDhcpv6IAId", "3735928559", [](auto& r) { r.SetIAId(0xdeadbeef); },
         [](Record r) { return TextOf(r.GetIAId()); }, "0", "3735928559"},
        {"SettingDhcpv6IAType", "-2", [](auto& r) { r.SetIAType(Type(-2)); },
         [](Record r) { return TextOf(r.GetIAType()); }, "1", "-2"},
        {"SettingDhcpv6RenewTime", "900", [](auto& r) { r.SetRenewTime(900); },
         [](Record r) { return TextOf(r.GetRenewTime()); }, "0", "900"},
        {"SettingDhcpv6TLVs", "[2]", [](auto& r) { r.SetDhcpv6CustomTLVs(SampleTlvs()); }, TlvText, "", "16=07 17="},
        {"SettingDhcpv6RelayLinkAddress", "2001:db8::1",
         [](auto& r) { r.SetDHCPv6RelayLinkAddress(EIPAddress("2001:db8::1")); },
         [](Record r) { return TextOf(r.GetDHCPv6RelayLinkAddress()); }, "0.0.0.0", "2001:db8::1"},
        {"SettingDhcpv6RelayDestination", "2001:db8::2",
         [](auto& r) { r.SetDHCPv6RelayDestination(EIPAddress("2001:db8::2")); },
         [](Record r) { return TextOf(r.GetDHCPv6RelayDestination()); }, "ff05::1:3", "2001:db8::2"},
    };
}

static EDHCPv6Properties SampleV1()
{
    EDHCPv6Properties record;
    record.SetIAId(0xdeadbeef);
    record.SetIAType(Type(-2));
    record.SetRenewTime(900);
    record.SetDhcpv6CustomTLVs(SampleTlvs());
    return record;
}

static EDHCPv6Properties SampleV2()
{
    EDHCPv6Properties record = SampleV1();
    record.SetDHCPv6RelayLinkAddress(EIPAddress("2001:db8::1"));
    record.SetDHCPv6RelayDestination(EIPAddress("2001:db8::2"));
    return record;
}

TEST(EDHCPv6Properties, StartsWithAnIPv4LinkAddressAndTheSitesServers)
{
    EDHCPv6Properties const record;
    EXPECT_EQ(nullptr, record.GetParent());
    EXPECT_EQ(0u, record.GetIAId());
    EXPECT_EQ(1, record.GetIAType());
    EXPECT_EQ(EDHCPv6Properties::IA_TYPE_DEFAULT, record.GetIAType());
    EXPECT_EQ(0u, record.GetRenewTime());
    EXPECT_TRUE(record.GetDHCPv6CustomTLVs().empty());
    EXPECT_EQ(17u, record.GetDHCPv6RelayLinkAddress().GetFamily());
    EXPECT_TRUE(record.GetDHCPv6RelayLinkAddress().IsZero());
    EXPECT_EQ(18u, record.GetDHCPv6RelayDestination().GetFamily());
    EXPECT_EQ(EIPAddress("ff05::1:3"), record.GetDHCPv6RelayDestination());
}

TEST(EDHCPv6Properties, EverySetterAnnouncesOnceAndThenStores)
{
    for (Setter const& c : Setters()) {
        RecordedInterface recorded;
        ExpectAnnouncedThenStored(*recorded.recorder, recorded.interface.GetDHCPv6Properties(), c);
    }
}

TEST(EDHCPv6Properties, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(EDHCPv6Properties, AnnouncesAValueThatIsThereAlready)
{
    RecordedInterface recorded;
    recorded.interface.GetDHCPv6Properties().SetIAId(0);
    EXPECT_EQ(std::vector<std::string>{"SettingDhcpv6IAId"}, recorded.recorder->Operations());
}

TEST(EDHCPv6Properties, ComparesTheTlvsOneByOneInTheirOrder)
{
    EDHCPv6Properties record;
    record.SetDhcpv6CustomTLVs(SampleTlvs());
    std::list<EDHCPTLV> const others[] = {
        {}, {Tlv(16, Bytes("07"))}, {Tlv(17, ""), Tlv(16, Bytes("07"))}, {Tlv(16, Bytes("08")), Tlv(17, "")}};
    for (std::list<EDHCPTLV> const& tlvs : others) {
        SCOPED_TRACE(TextOfTlvs(tlvs));
        EDHCPv6Properties other;
        other.SetDhcpv6CustomTLVs(tlvs);
        EXPECT_TRUE(record != other);
    }
}

TEST(EDHCPv6Properties, DoesNotCompareTheParent)
{
    RecordedInterface recorded;
    EXPECT_FALSE(recorded.interface.GetDHCPv6Properties() != EDHCPv6Properties());
}

TEST(EDHCPv6Properties, IsLeaf26OfItsInterface)
{
    RecordedInterface recorded;
    EComponentId id{9, 9};
    recorded.interface.GetDHCPv6Properties().GetID(id);
    EXPECT_EQ("7.1.1.26", TextOf(id));
    EDHCPv6Properties().GetID(id);
    EXPECT_EQ("26", TextOf(id));
    EXPECT_EQ(26u, EDHCPv6Properties().GetLocalId());
}

TEST(EDHCPv6Properties, SetsItsParentSilentlyAndCopyConstructionTakesIt)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<EDHCPv6Properties>(*recorded.recorder, recorded.interface,
                                               [](auto& r) { r.SetRenewTime(1); });
}

namespace {
/// Keeps the records and lists that it is told of, so that they can be looked at later.
class ValueKeepingHooks : public EIgnoreInterfaceTableHooks {
public:
    std::vector<EDHCPv6Properties> current;
    std::vector<EDHCPv6Properties> next;
    std::string tlvs; // of the last list that was announced
    void SettingDhcpv6Properties(EDHCPv6Properties const& now, EDHCPv6Properties const& replacement) override
    {
        current.push_back(now);
        next.push_back(replacement);
    }
    void SettingDhcpv6TLVs(EDHCPv6Properties const&, std::list<EDHCPTLV> const& announced) override
    {
        tlvs = TextOfTlvs(announced);
    }
};
} // namespace

TEST(EDHCPv6Properties, TheNewTlvsAreShownToTheObserver)
{
    RecordedInterface recorded;
    auto const hooks = boost::make_shared<ValueKeepingHooks>();
    recorded.table.SetHooks("tlvs", hooks);
    recorded.interface.GetDHCPv6Properties().SetDhcpv6CustomTLVs(SampleTlvs());
    EXPECT_EQ("16=07 17=", hooks->tlvs);
}

TEST(EDHCPv6Properties, CopyingAndEmptyingAreOneChangeOfTheWholeRecord)
{
    struct {
        char const* name;
        std::function<void(EDHCPv6Properties&)> change;
        EDHCPv6Properties result;
    } const cases[] = {
        {"Copy", [](auto& r) { r.Copy(SampleV2()); }, SampleV2()},
        {"operator=", [](auto& r) { r = SampleV2(); }, SampleV2()},
        {"Empty", [](auto& r) { r.Empty(); }, EDHCPv6Properties()},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        RecordedInterface recorded;
        EDHCPv6Properties& record = recorded.interface.GetDHCPv6Properties();
        record.SetIAId(5);
        EDHCPv6Properties const before(record);

        recorded.recorder->Clear();
        c.change(record);
        EXPECT_EQ(std::vector<std::string>{"SettingDhcpv6Properties"}, recorded.recorder->Operations());

        record = before;
        auto const hooks = boost::make_shared<ValueKeepingHooks>();
        recorded.table.SetHooks("whole", hooks);
        c.change(record);
        ASSERT_EQ(1u, hooks->next.size());
        EXPECT_FALSE(hooks->current[0] != before);
        EXPECT_FALSE(hooks->next[0] != c.result);
        EXPECT_FALSE(record != c.result);
        EXPECT_EQ(&recorded.interface, record.GetParent());
    }
}

TEST(EDHCPv6Properties, AssigningARecordToItselfDoesNothingButCopyAnnounces)
{
    RecordedInterface recorded;
    EDHCPv6Properties& record = recorded.interface.GetDHCPv6Properties();
    record = SampleV2();
    recorded.recorder->Clear();
    EDHCPv6Properties const& itself = record;
    record = itself;
    EXPECT_TRUE(recorded.recorder->calls.empty());
    record.Copy(itself);
    EXPECT_EQ(std::vector<std::string>{"SettingDhcpv6Properties"}, recorded.recorder->Operations());
    EXPECT_FALSE(record != SampleV2());
}

TEST(EDHCPv6Properties, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    RecordedInterface recorded;
    EDHCPv6Properties& record = recorded.interface.GetDHCPv6Properties();
    EDHCPv6Properties other = SampleV2();
    record.Swap(other);
    EXPECT_FALSE(record != SampleV2());
    EXPECT_FALSE(other != EDHCPv6Properties());
    EXPECT_EQ(&recorded.interface, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_TRUE(recorded.recorder->calls.empty());
}

TEST(EDHCPv6PropertiesArchive, WritesVersion2)
{
    EXPECT_EQ(Golden("EDHCPv6Properties.v2.hex"), Written(SampleV2()));
    EXPECT_EQ(Golden("EDHCPv6Properties.defaults.v2.hex"), Written(EDHCPv6Properties()));
}

TEST(EDHCPv6PropertiesArchive, ReadsVersions1And2)
{
    EXPECT_FALSE(Read<EDHCPv6Properties>("EDHCPv6Properties.v2.hex") != SampleV2());
    EXPECT_FALSE(Read<EDHCPv6Properties>("EDHCPv6Properties.v1.hex") != SampleV1());
    EXPECT_EQ(EIPAddress("ff05::1:3"), Read<EDHCPv6Properties>("EDHCPv6Properties.v1.hex").GetDHCPv6RelayDestination());
}

TEST(EDHCPv6PropertiesArchive, KeepsTheRelayAddressesThatVersion1DoesNotCarry)
{
    EDHCPv6Properties record;
    record.SetDHCPv6RelayLinkAddress(EIPAddress("fe80::1"));
    record.SetDHCPv6RelayDestination(EIPAddress("fe80::2"));
    ReadInto(record, Golden("EDHCPv6Properties.v1.hex"));
    EXPECT_EQ(EIPAddress("fe80::1"), record.GetDHCPv6RelayLinkAddress());
    EXPECT_EQ(EIPAddress("fe80::2"), record.GetDHCPv6RelayDestination());
    EXPECT_EQ(900u, record.GetRenewTime());
}

TEST(EDHCPv6PropertiesArchive, AppendsTheTlvsItReads)
{
    EDHCPv6Properties record;
    ReadInto(record, Golden("EDHCPv6Properties.v1.hex"));
    ReadInto(record, Golden("EDHCPv6Properties.v2.hex"));
    EXPECT_EQ("16=07 17= 16=07 17=", TlvText(record));
}

TEST(EDHCPv6PropertiesArchive, KeepsTheTlvsReadBeforeAFailure)
{
    EArchive archive;
    Load(archive, Bytes("01 00 01 00  03  01 3d 00 00  01 3e 00 01 aa  01 3f"));
    EDHCPv6Properties record;
    EXPECT_THROW(archive >> record, EArchiveError);
    EXPECT_EQ("61= 62=aa", TlvText(record));
}

TEST(EDHCPv6PropertiesArchive, AnnouncesNothingAndKeepsTheParent)
{
    RecordedInterface recorded;
    EDHCPv6Properties& record = recorded.interface.GetDHCPv6Properties();
    ReadInto(record, Golden("EDHCPv6Properties.v2.hex"));
    EXPECT_FALSE(record != SampleV2());
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(EDHCPv6PropertiesArchive, RefusesVersions0And3)
{
    for (char const* version : {"00", "03", "fb ff ff ff ff"})
        ExpectArchiveError<EDHCPv6Properties>(version, "x86_64/common/ifcore/eDHCPv6Properties.cpp", 193,
                                              "EDHCPv6Properties::SerializeIn");
}

TEST(EDHCPv6PropertiesEdit, EverySubIdSetsItsField)
{
    EditCase<EDHCPv6Properties> const cases[] = {
        {1, "fb ff ff ff ff", "SettingDhcpv6IAId", "4294967295", [](Record r) { return TextOf(r.GetIAId()); },
         "4294967295"},
        {2, "03", "SettingDhcpv6IAType", "3", [](Record r) { return TextOf(r.GetIAType()); }, "3"},
        {2, "fb ff ff ff ff", "SettingDhcpv6IAType", "-1", [](Record r) { return TextOf(r.GetIAType()); }, "-1"},
        {3, "f9 02 58", "SettingDhcpv6RenewTime", "600", [](Record r) { return TextOf(r.GetRenewTime()); }, "600"},
        {4, "02  01 0c 05 01 61  01 0d 00 00", "SettingDhcpv6TLVs", "[2]", TlvText, "12=61 13="},
        {5, "12 fe 80 00 00 00 00 00 00 00 00 00 00 00 00 00 01", "SettingDhcpv6RelayLinkAddress", "fe80::1",
         [](Record r) { return TextOf(r.GetDHCPv6RelayLinkAddress()); }, "fe80::1"},
        {6, "12 fe 80 00 00 00 00 00 00 00 00 00 00 00 00 00 02", "SettingDhcpv6RelayDestination", "fe80::2",
         [](Record r) { return TextOf(r.GetDHCPv6RelayDestination()); }, "fe80::2"},
    };
    RecordedInterface recorded;
    recorded.interface.GetDHCPv6Properties() = SampleV2();
    for (auto const& c : cases) ExpectEdited(*recorded.recorder, recorded.interface.GetDHCPv6Properties(), c);
}

TEST(EDHCPv6PropertiesEdit, RefusesAllOthersAndReadsNothing)
{
    RecordedInterface recorded;
    for (std::vector<unsigned int> const& subId :
         std::vector<std::vector<unsigned int>>{{}, {0}, {7}, {8}, {0xffffffff}, {0, 3}})
        ExpectRefused(*recorded.recorder, recorded.interface.GetDHCPv6Properties(), subId);
}

TEST(EDHCPv6PropertiesEdit, ReadsNoWiderNumberAndNoHalfAList)
{
    RecordedInterface recorded;
    recorded.interface.GetDHCPv6Properties() = SampleV2();
    struct {
        unsigned int subId;
        char const* hex;
    } const cases[] = {
        {1, "fc 01 00 00 00 00"}, {2, "fc 01 00 00 00 00"}, {3, "fc 01 00 00 00 00"}, {4, "02  01 0c 00 00  01 0d"}};
    for (auto const& c : cases)
        ExpectTooWide(*recorded.recorder, recorded.interface.GetDHCPv6Properties(), c.subId, c.hex);
}
