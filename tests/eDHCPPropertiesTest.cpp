#include "eDHCPProperties.hpp"

#include "recordCases.hpp"

using Setter = SetterCase<EDHCPProperties>;
using Record = EDHCPProperties const&;
using InTable = RecordInTable<EDHCPProperties>;

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
    ExpectEachAnnouncedThenStored<InTable>(Setters());
}

TEST(EDHCPProperties, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(EDHCPProperties, AnnouncesAValueThatIsThereAlready)
{
    InTable in;
    in.record.SetReleaseTimer(0);
    EXPECT_EQ(Heard("SettingDhcpReleaseTimer"), in.recorder->Operations());
}

TEST(EDHCPProperties, TurnsARetryCountOf0Into1BeforeItIsAnnounced)
{
    ExpectCorrected<InTable>(&EDHCPProperties::SetRetryCount, &EDHCPProperties::GetRetryCount,
                             {{0, 1}, {1, 1}, {2, 2}, {0xffffffff, 0xffffffff}});
}

TEST(EDHCPProperties, ComparesTheTlvsOneByOneInTheirOrder)
{
    EDHCPProperties record;
    record.SetDhcpCustomTLVs(SampleTlvs());
    ExpectEachChangeCompared<EDHCPProperties>(record,
                                              {
                                                  [](auto& r) { r.SetDhcpCustomTLVs({}); },
                                                  [](auto& r) { r.SetDhcpCustomTLVs({Tlv(61, Bytes("01 aa"))}); },
                                                  [](auto& r) {
                                                      r.SetDhcpCustomTLVs({Tlv(254, ""), Tlv(61, Bytes("01 aa"))});
                                                  },
                                                  [](auto& r) {
                                                      r.SetDhcpCustomTLVs({Tlv(61, Bytes("01 ab")), Tlv(254, "")});
                                                  },
                                              });
}

TEST(EDHCPProperties, DoesNotCompareTheParent)
{
    ExpectParentNotCompared<EDHCPProperties>();
}

TEST(EDHCPProperties, IsLeaf24OfItsInterface)
{
    ExpectLeaf<EDHCPProperties>(24);
}

TEST(EDHCPProperties, SetsItsParentSilently)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<EDHCPProperties>(*recorded.recorder, recorded.interface,
                                             [](auto& r) { r.SetReleaseTimer(1); });
}

TEST(EDHCPProperties, CopyConstructionTakesTheParentAndAnnouncesNothing)
{
    InTable const in(SampleV3());
    ExpectCopyConstructed(*in.recorder, in.record);
}

TEST(EDHCPProperties, TheNewTlvsAreShownToTheObserver)
{
    InTable in;
    EXPECT_EQ("61=01aa 254=", ShownToTheObserver<std::list<EDHCPTLV>>(
                                  *in.recorder, [&] { in.record.SetDhcpCustomTLVs(SampleTlvs()); }, TextOfTlvs));
}

TEST(EDHCPProperties, CopyingAndEmptyingAreOneChangeOfTheWholeRecord)
{
    EDHCPProperties before;
    before.SetDHCPVendorId("before");
    ExpectCopyIsOneChange("SettingDhcpProperties", before, SampleV3());
    ExpectEmptyIsOneChange("SettingDhcpProperties", before);
}

TEST(EDHCPProperties, AssigningARecordToItselfDoesNothingButCopyAnnounces)
{
    ExpectCopiedToItself(SampleV3(), "", "SettingDhcpProperties");
}

TEST(EDHCPProperties, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, SampleV3());
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
    std::string const bytes = Bytes("01 00 11 00 00 00 00 00 00  03  01 3d 00 00  01 3e 00 01 aa  01 3f");
    EXPECT_EQ("61= 62=aa", TlvText(ReadAsFarAsPossible<EDHCPProperties>(bytes)));
}

TEST(EDHCPPropertiesArchive, ReadsPastTheSettersAndAnnouncesNothing)
{
    InTable in;
    ExpectReadSilently(*in.recorder, in.record,
                       Bytes("03 00 11 00 00 00 00 11 00 00 00 00 00 11 00 00 00 00 00 00 00"));
    EXPECT_EQ(0u, in.record.GetRetryCount());
    EXPECT_EQ(EIPAddress("0.0.0.0"), in.record.GetDHCPRelayDestination());
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
    InTable in(SampleV3());
    for (auto const& c : cases) ExpectEdited(*in.recorder, in.record, c);
}

TEST(EDHCPPropertiesEdit, HoldsMoreThan255Tlvs)
{
    EDHCPProperties record;
    ExpectHolds300<EDHCPProperties>(record, 5, "01 07 00 00", [](Record r) { return TextOf(r.GetDHCPCustomTLVs()); });
}

TEST(EDHCPPropertiesEdit, RefusesAllOthersAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {9}, {10}, {0xffffffff}, {0, 3}});
}

TEST(EDHCPPropertiesEdit, ReadsNoWiderNumberAndNoHalfAList)
{
    InTable in(SampleV3());
    ExpectEachTooWide(*in.recorder, in.record,
                      {{3, "fc 01 00 00 00 00"}, {8, "fc 01 00 00 00 00"}, {5, "02  01 0c 00 00  01 0d"}});
}
