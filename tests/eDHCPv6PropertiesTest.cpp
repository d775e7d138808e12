#include "eDHCPv6Properties.hpp"

#include "recordCases.hpp"

using Setter = SetterCase<EDHCPv6Properties>;
using Record = EDHCPv6Properties const&;
using InTable = RecordInTable<EDHCPv6Properties>;

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
    ExpectEachAnnouncedThenStored<InTable>(Setters());
}

TEST(EDHCPv6Properties, EverySetterWorksWithoutAParentAndEveryFieldIsCompared)
{
    for (Setter const& c : Setters()) ExpectStoredAndCompared(c);
}

TEST(EDHCPv6Properties, AnnouncesAValueThatIsThereAlready)
{
    InTable in;
    in.record.SetIAId(0);
    EXPECT_EQ(Heard("SettingDhcpv6IAId"), in.recorder->Operations());
}

TEST(EDHCPv6Properties, ComparesTheTlvsOneByOneInTheirOrder)
{
    EDHCPv6Properties record;
    record.SetDhcpv6CustomTLVs(SampleTlvs());
    ExpectEachChangeCompared<EDHCPv6Properties>(record,
                                                {
                                                    [](auto& r) { r.SetDhcpv6CustomTLVs({}); },
                                                    [](auto& r) { r.SetDhcpv6CustomTLVs({Tlv(16, Bytes("07"))}); },
                                                    [](auto& r) {
                                                        r.SetDhcpv6CustomTLVs({Tlv(17, ""), Tlv(16, Bytes("07"))});
                                                    },
                                                    [](auto& r) {
                                                        r.SetDhcpv6CustomTLVs({Tlv(16, Bytes("08")), Tlv(17, "")});
                                                    },
                                                });
}

TEST(EDHCPv6Properties, DoesNotCompareTheParent)
{
    ExpectParentNotCompared<EDHCPv6Properties>();
}

TEST(EDHCPv6Properties, IsLeaf26OfItsInterface)
{
    ExpectLeaf<EDHCPv6Properties>(26);
}

TEST(EDHCPv6Properties, SetsItsParentSilentlyAndCopyConstructionTakesIt)
{
    RecordedInterface recorded;
    ExpectParentSetSilently<EDHCPv6Properties>(*recorded.recorder, recorded.interface,
                                               [](auto& r) { r.SetRenewTime(1); });
}

TEST(EDHCPv6Properties, TheNewTlvsAreShownToTheObserver)
{
    InTable in;
    EXPECT_EQ("16=07 17=", ShownToTheObserver<std::list<EDHCPTLV>>(
                               *in.recorder, [&] { in.record.SetDhcpv6CustomTLVs(SampleTlvs()); }, TextOfTlvs));
}

TEST(EDHCPv6Properties, CopyingAndEmptyingAreOneChangeOfTheWholeRecord)
{
    EDHCPv6Properties before;
    before.SetIAId(5);
    ExpectCopyIsOneChange("SettingDhcpv6Properties", before, SampleV2());
    ExpectEmptyIsOneChange("SettingDhcpv6Properties", before);
}

TEST(EDHCPv6Properties, AssigningARecordToItselfDoesNothingButCopyAnnounces)
{
    ExpectCopiedToItself(SampleV2(), "", "SettingDhcpv6Properties");
}

TEST(EDHCPv6Properties, SwapExchangesAllButTheParentsAndAnnouncesNothing)
{
    InTable in;
    ExpectSwapped(*in.recorder, in.record, SampleV2());
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
    std::string const bytes = Bytes("01 00 01 00  03  01 3d 00 00  01 3e 00 01 aa  01 3f");
    EXPECT_EQ("61= 62=aa", TlvText(ReadAsFarAsPossible<EDHCPv6Properties>(bytes)));
}

TEST(EDHCPv6PropertiesArchive, AnnouncesNothingAndKeepsTheParent)
{
    InTable in;
    ExpectReadSilently(*in.recorder, in.record, Golden("EDHCPv6Properties.v2.hex"));
    EXPECT_FALSE(in.record != SampleV2());
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
    InTable in(SampleV2());
    for (auto const& c : cases) ExpectEdited(*in.recorder, in.record, c);
}

TEST(EDHCPv6PropertiesEdit, HoldsMoreThan255Tlvs)
{
    EDHCPv6Properties record;
    ExpectHolds300<EDHCPv6Properties>(record, 4, "01 07 00 00",
                                      [](Record r) { return TextOf(r.GetDHCPv6CustomTLVs()); });
}

TEST(EDHCPv6PropertiesEdit, RefusesAllOthersAndReadsNothing)
{
    InTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {7}, {8}, {0xffffffff}, {0, 3}});
}

TEST(EDHCPv6PropertiesEdit, ReadsNoWiderNumberAndNoHalfAList)
{
    InTable in(SampleV2());
    ExpectEachTooWide(
        *in.recorder, in.record,
        {{1, "fc 01 00 00 00 00"}, {2, "fc 01 00 00 00 00"}, {3, "fc 01 00 00 00 00"}, {4, "02  01 0c 00 00  01 0d"}});
}
