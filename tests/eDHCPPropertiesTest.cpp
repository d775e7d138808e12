#include "eDHCPProperties.hpp"

#include "recordCases.hpp"
#include "recordedInterface.hpp"

using Setter = SetterCase<EDHCPProperties>;
using Record = EDHCPProperties const&;

static std::list<EDHCPTLV> SampleTlvs()
{
    return {Tlv(61, Bytes("01 aa")), Tlv(254, "")};
}

static std::string TlvText(Record record)
{
    return TextOfTlvs(record.GetDHCPCustomTLVs());
}

/// Every setter once, with a value that a fresh record does not have.
static std::vector<Setter> Setters()
{
    return {
        {"SettingDhcpClientId", "client-1", [](auto& r) { r.SetDHCPClientId("client-1"); },
         [](Record r) { return r.GetDHCPClientId(); }, "", "client-1"},
        {"SettingDhcpServerId", "10.0.0.1", [](auto& r) { r.SetDHCPServerId(EIPAddress("10.0.0.1")); },
         [](Record r) { return TextOf(r.GetDHCPServerId()); }, "0.0.0.0", "10.0.0.1"},
        {"SettingDhcpVendorClassId", "Acme!", [](auto& r) { r.SetDHCPVendorId("Acme!"); },
         [](Record r) { return r.GetDHCPVendorId(); }, "", "Acme!"},
        {"SettingDhcpReleaseTimer", "3600", [](auto& r) { r.SetReleaseTimer(3600); },
         [](Record r) { return TextOf(r.GetReleaseTimer()); }, "0", "3600"},
        {"SettingDhcpTLVs", "[2]", [](auto& r) { r.SetDhcpCustomTLVs(SampleTlvs()); }, TlvText, "", "61=01aa 254="},
        {"SettingDhcpRelayAgentIP", "192.0.2.5", [](auto& r) { r.SetDHCPRelayAgentIP(EIPAddress("192.0.2.5")); },
         [](Record r) { return TextOf(r.GetDHCPRelayAgentIP()); }, "0.0.0.0", "192.0.2.5"},
        {"SettingDhcpRelayDestination", "203.0.113.9",
         [](auto& r) { r.SetDHCPRelayDestination(EIPAddress("203.0.113.9")); },
         [](Record r) { return TextOf(r.GetDHCPRelayDestination()); }, "255.255.255.255", "203.0.113.9"},
        {"SettingDhcpRetryCount", "7", [](auto& r) { r.SetRetryCount(7); },
         [](Record r) { return TextOf(r.GetRetryCount()); }, "4", "7"},
    };
}

static EDHCPProperties SampleV1()
{
    EDHCPProperties record;
    record.SetDHCPClientId("client-1");
    record.SetDHCPServerId(EIPAddress("10.0.0.1"));
    record.SetDHCPVendorId("Acme!");
    record.SetReleaseTimer(3600);
    record.SetDhcpCustomTLVs(SampleTlvs());
    return record;
}

static EDHCPProperties SampleV2()
{
    EDHCPProperties record = SampleV1();
    record.SetDHCPRelayAgentIP(EIPAddress("192.0.2.5"));
    record.SetDHCPRelayDestination(EIPAddress("203.0.113.9"));
    return record;
}

static EDHCPProperties SampleV3()
{
    EDHCPProperties record = SampleV2();
    record.SetRetryCount(7);
    return record;
}

TEST(EDHCPProperties, StartsWithIPv4AddressesAndFourRetries)
{
    EDHCPProperties const record;
    EXPECT_EQ(nullptr, record.GetParent());
    EXPECT_EQ("", record.GetDHCPClientId());
    EXPECT_EQ(EIPAddress("0.0.0.0"), record.GetDHCPServerId());
    EXPECT_EQ("", record.GetDHCPVendorId());
    EXPECT_EQ(0u, record.GetReleaseTimer());
    EXPECT_TRUE(record.GetDHCPCustomTLVs().empty());
    EXPECT_EQ(EIPAddress("0.0.0.0"), record.GetDHCPRelayAgentIP());
    EXPECT_EQ(EIPAddress("255.255.255.255"), record.GetDHCPRelayDestination());
    EXPECT_EQ(17u, record.GetDHCPRelayDestination().GetFamily());
    EXPECT_EQ(4u, record.GetRetryCount());
}

TEST(EDHCPProperties, EverySetterAnnouncesOnceAndThenStores)
{
    for (Setter const& c : Setters()) {
        RecordedInterface recorded;
        ExpectAnnouncedThenStored(*recorded.recorder, recorded.interface.GetDHCPProperties(), c);
    }
}

TEST(EDHCPProperties, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(EDHCPProperties, AnnouncesAValueThatIsThereAlready)
{
    RecordedInterface recorded;
    recorded.interface.GetDHCPProperties().SetReleaseTimer(0);
    EXPECT_EQ(std::vector<std::string>{"SettingDhcpReleaseTimer"}, recorded.recorder->Operations());
}

TEST(EDHCPProperties, TurnsARetryCountOf0Into1BeforeItIsAnnounced)
{
    struct {
        unsigned int given;
        unsigned int stored;
    } const cases[] = {{0, 1}, {1, 1}, {2, 2}, {0xffffffff, 0xffffffff}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        RecordedInterface recorded;
        recorded.interface.GetDHCPProperties().SetRetryCount(c.given);
        EXPECT_EQ(c.stored, recorded.interface.GetDHCPProperties().GetRetryCount());
        ASSERT_EQ(1u, recorded.recorder->calls.size());
        EXPECT_EQ(std::to_string(c.stored), recorded.recorder->calls[0].values);
    }
}

TEST(EDHCPProperties, ComparesTheTlvsOneByOneInTheirOrder)
{
    EDHCPProperties record;
    record.SetDhcpCustomTLVs(SampleTlvs());
    std::list<EDHCPTLV> const others[] = {{},
                                          {Tlv(61, Bytes("01 aa"))},
                                          {Tlv(254, ""), Tlv(61, Bytes("01 aa"))},
                                          {Tlv(61, Bytes("01 ab")), Tlv(254, "")}};
    for (std::list<EDHCPTLV> const& tlvs : others) {
        SCOPED_TRACE(TextOfTlvs(tlvs));
        EDHCPProperties other;
        other.SetDhcpCustomTLVs(tlvs);
        EXPECT_TRUE(record != other);
    }
}

TEST(EDHCPProperties, DoesNotCompareTheParent)
{
    RecordedInterface recorded;
    EXPECT_FALSE(recorded.interface.GetDHCPProperties() != EDHCPProperties());
}

TEST(EDHCPProperties, IsLeaf24OfItsInterface)
{
    RecordedInterface recorded;
    EComponentId id{9, 9};
    recorded.interface.GetDHCPProperties().GetID(id);
    EXPECT_EQ("7.1.1.24", TextOf(id));
    EDHCPProperties().GetID(id);
    EXPECT_EQ("24", TextOf(id));
    EXPECT_EQ(24u, EDHCPProperties().GetLocalId());
}

TEST(EDHCPProperties, SetsItsParentSilently)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<EDHCPProperties>(*recorded.recorder, recorded.interface,
                                             [](auto& r) { r.SetReleaseTimer(1); });
}

TEST(EDHCPProperties, CopyConstructionTakesTheParentAndAnnouncesNothing)
{
    RecordedInterface recorded;
    EDHCPProperties const copy(recorded.interface.GetDHCPProperties());
    EXPECT_EQ(&recorded.interface, copy.GetParent());
    EXPECT_TRUE(recorded.recorder->calls.empty());
}

namespace {
/// Keeps the records and lists that it is told of, so that they can be looked at later.
class ValueKeepingHooks : public EIgnoreInterfaceTableHooks {
public:
    std::vector<EDHCPProperties> current;
    std::vector<EDHCPProperties> next;
    std::string tlvs; // of the last list that was announced
    void SettingDhcpProperties(EDHCPProperties const& now, EDHCPProperties const& replacement) override
    {
        current.push_back(now);
        next.push_back(replacement);
    }
    void SettingDhcpTLVs(EDHCPProperties const&, std::list<EDHCPTLV> const& announced) override
    {
        tlvs = TextOfTlvs(announced);
    }
};
} // namespace

TEST(EDHCPProperties, TheNewTlvsAreShownToTheObserver)
{
    RecordedInterface recorded;
    auto const hooks = boost::make_shared<ValueKeepingHooks>();
    recorded.table.SetHooks("tlvs", hooks);
    recorded.interface.GetDHCPProperties().SetDhcpCustomTLVs(SampleTlvs());
    EXPECT_EQ("61=01aa 254=", hooks->tlvs);
}

TEST(EDHCPProperties, CopyingAndEmptyingAreOneChangeOfTheWholeRecord)
{
    struct {
        char const* name;
        std::function<void(EDHCPProperties&)> change;
        EDHCPProperties result;
    } const cases[] = {
        {"Copy", [](auto& r) { r.Copy(SampleV3()); }, SampleV3()},
        {"operator=", [](auto& r) { r = SampleV3(); }, SampleV3()},
        {"Empty", [](auto& r) { r.Empty(); }, EDHCPProperties()},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        RecordedInterface recorded;
        EDHCPProperties& record = recorded.interface.GetDHCPProperties();
        record.SetDHCPVendorId("before");
        EDHCPProperties const before(record);

        recorded.recorder->Clear();
        c.change(record);
        EXPECT_EQ(std::vector<std::string>{"SettingDhcpProperties"}, recorded.recorder->Operations());

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

TEST(EDHCPProperties, AssigningARecordToItselfDoesNothingButCopyAnnounces)
{
    RecordedInterface recorded;
    EDHCPProperties& record = recorded.interface.GetDHCPProperties();
    record = SampleV3();
    recorded.recorder->Clear();
    EDHCPProperties const& itself = record;
    record = itself;
    EXPECT_TRUE(recorded.recorder->calls.empty());
    record.Copy(itself);
    EXPECT_EQ(std::vector<std::string>{"SettingDhcpProperties"}, recorded.recorder->Operations());
    EXPECT_FALSE(record != SampleV3());
}

TEST(EDHCPProperties, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    RecordedInterface recorded;
    EDHCPProperties& record = recorded.interface.GetDHCPProperties();
    EDHCPProperties other = SampleV3();
    record.Swap(other);
    EXPECT_FALSE(record != SampleV3());
    EXPECT_FALSE(other != EDHCPProperties());
    EXPECT_EQ(&recorded.interface, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_TRUE(recorded.recorder->calls.empty());
}

TEST(EDHCPPropertiesArchive, WritesVersion3)
{
    EXPECT_EQ(Golden("EDHCPProperties.v3.hex"), Written(SampleV3()));
    EXPECT_EQ(Golden("EDHCPProperties.defaults.v3.hex"), Written(EDHCPProperties()));
}

TEST(EDHCPPropertiesArchive, ReadsVersions1To3)
{
    EXPECT_FALSE(Read<EDHCPProperties>("EDHCPProperties.v3.hex") != SampleV3());
    EXPECT_FALSE(Read<EDHCPProperties>("EDHCPProperties.v2.hex") != SampleV2());
    EXPECT_FALSE(Read<EDHCPProperties>("EDHCPProperties.v1.hex") != SampleV1());
}

TEST(EDHCPPropertiesArchive, KeepsWhatTheVersionDoesNotCarry)
{
    struct {
        char const* golden;
        char const* relayAgent;
        char const* relayDestination;
    } const cases[] = {{"EDHCPProperties.v2.hex", "192.0.2.5", "203.0.113.9"},
                       {"EDHCPProperties.v1.hex", "10.1.1.1", "10.2.2.2"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        EDHCPProperties record;
        record.SetRetryCount(99);
        record.SetDHCPRelayAgentIP(EIPAddress("10.1.1.1"));
        record.SetDHCPRelayDestination(EIPAddress("10.2.2.2"));
        record.SetDHCPClientId("replaced");
        ReadInto(record, Golden(c.golden));
        EXPECT_EQ(99u, record.GetRetryCount());
        EXPECT_EQ(EIPAddress(c.relayAgent), record.GetDHCPRelayAgentIP());
        EXPECT_EQ(EIPAddress(c.relayDestination), record.GetDHCPRelayDestination());
        EXPECT_EQ("client-1", record.GetDHCPClientId());
    }
}

TEST(EDHCPPropertiesArchive, AppendsTheTlvsItReads)
{
    EDHCPProperties record;
    ReadInto(record, Golden("EDHCPProperties.v3.hex"));
    ReadInto(record, Golden("EDHCPProperties.v3.hex"));
    EXPECT_EQ("61=01aa 254= 61=01aa 254=", TlvText(record));
}

TEST(EDHCPPropertiesArchive, KeepsTheTlvsReadBeforeAFailure)
{
    EArchive archive;
    Load(archive, Bytes("01 00 11 00 00 00 00 00 00  03  01 3d 00 00  01 3e 00 01 aa  01 3f"));
    EDHCPProperties record;
    EXPECT_THROW(archive >> record, EArchiveError);
    EXPECT_EQ("61= 62=aa", TlvText(record));
}

TEST(EDHCPPropertiesArchive, ReadsPastTheSettersAndAnnouncesNothing)
{
    RecordedInterface recorded;
    EDHCPProperties& record = recorded.interface.GetDHCPProperties();
    ReadInto(record, Bytes("03 00 11 00 00 00 00 11 00 00 00 00 00 11 00 00 00 00 00 00 00"));
    EXPECT_EQ(0u, record.GetRetryCount());
    EXPECT_EQ(EIPAddress("0.0.0.0"), record.GetDHCPRelayDestination());
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_EQ(&recorded.interface, record.GetParent());
}

TEST(EDHCPPropertiesArchive, RefusesVersions0And4)
{
    for (char const* version : {"00", "04", "fb ff ff ff ff"})
        ExpectArchiveError<EDHCPProperties>(version, "x86_64/common/ifcore/eDHCPProperties.cpp", 203,
                                            "EDHCPProperties::SerializeIn");
}

TEST(EDHCPPropertiesEdit, EverySubIdSetsItsField)
{
    EditCase<EDHCPProperties> const cases[] = {
        {1, "02 68 69", "SettingDhcpClientId", "hi", [](Record r) { return r.GetDHCPClientId(); }, "hi"},
        {2, "11 0a 00 00 02", "SettingDhcpServerId", "10.0.0.2", [](Record r) { return TextOf(r.GetDHCPServerId()); },
         "10.0.0.2"},
        {3, "fb ff ff ff ff", "SettingDhcpReleaseTimer", "4294967295",
         [](Record r) { return TextOf(r.GetReleaseTimer()); }, "4294967295"},
        {4, "01 76", "SettingDhcpVendorClassId", "v", [](Record r) { return r.GetDHCPVendorId(); }, "v"},
        {5, "02  01 0c 05 01 61  01 0d 00 00", "SettingDhcpTLVs", "[2]", TlvText, "12=61 13="},
        {6, "11 0a 00 00 03", "SettingDhcpRelayAgentIP", "10.0.0.3",
         [](Record r) { return TextOf(r.GetDHCPRelayAgentIP()); }, "10.0.0.3"},
        {7, "11 0a 00 00 04", "SettingDhcpRelayDestination", "10.0.0.4",
         [](Record r) { return TextOf(r.GetDHCPRelayDestination()); }, "10.0.0.4"},
        {8, "09", "SettingDhcpRetryCount", "9", [](Record r) { return TextOf(r.GetRetryCount()); }, "9"},
        {8, "00", "SettingDhcpRetryCount", "1", [](Record r) { return TextOf(r.GetRetryCount()); }, "1"},
    };
    RecordedInterface recorded;
    recorded.interface.GetDHCPProperties() = SampleV3();
    for (auto const& c : cases) ExpectEdited(*recorded.recorder, recorded.interface.GetDHCPProperties(), c);
}

TEST(EDHCPPropertiesEdit, RefusesAllOthersAndReadsNothing)
{
    RecordedInterface recorded;
    for (std::vector<unsigned int> const& subId :
         std::vector<std::vector<unsigned int>>{{}, {0}, {9}, {10}, {0xffffffff}, {0, 3}})
        ExpectRefused(*recorded.recorder, recorded.interface.GetDHCPProperties(), subId);
}

TEST(EDHCPPropertiesEdit, ReadsNoWiderNumberAndNoHalfAList)
{
    RecordedInterface recorded;
    recorded.interface.GetDHCPProperties() = SampleV3();
    struct {
        unsigned int subId;
        char const* hex;
    } const cases[] = {{3, "fc 01 00 00 00 00"}, {8, "fc 01 00 00 00 00"}, {5, "02  01 0c 00 00  01 0d"}};
    for (auto const& c : cases)
        ExpectTooWide(*recorded.recorder, recorded.interface.GetDHCPProperties(), c.subId, c.hex);
}
