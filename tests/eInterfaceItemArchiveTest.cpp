// The archive of an interface.
#include "eInterfaceItem.hpp"

#include "golden.hpp"
#include "interfaceSamples.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

static std::string const kFile = "x86_64/common/ifcore/eInterfaceItem.cpp";

TEST(EInterfaceItemArchive, WritesVersion16)
{
    EXPECT_EQ(Golden("EInterfaceItem.defaults.v16.hex"), Written(EInterfaceItem()));
    EInterfaceItem sample;
    FillSample(sample);
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(sample));
}

TEST(EInterfaceItemArchive, WithoutPerTypeDataOnlyTheClosingTagIsWrittenAndNothingIsCreatedOnReading)
{
    auto const item = Read<EInterfaceItem>("EInterfaceItem.defaults.v16.hex");
    EXPECT_EQ(kFreshSummary, Summary(item));
    EXPECT_EQ(0, CountOnDemand(item));
    EXPECT_EQ(Golden("EInterfaceItem.defaults.v16.hex"), Written(item));
}

TEST(EInterfaceItemArchive, EthernetStandsBeforeGreWhicheverWasCreatedFirst)
{
    EInterfaceItem item;
    item.SetGreSourceIp({7, 1, 2});
    item.SetGreDestIp(EIPAddress("192.0.2.9"));
    item.SetGreUseChecksum(true);
    item.SetGreUseKey(true);
    item.SetGreInKey(0xCAFE0001);
    item.SetGreOutKey(256);
    item.SetMacAddress(EMACAddress("02:00:5e:10:00:05"));
    item.SetVLANItem(SampleVLANs());
    item.SetMTU(9000);
    item.SetOverrideAutogenEuid(true);
    EXPECT_EQ(Golden("EInterfaceItem.ethernetAndGre.v16.hex"), Written(item));

    auto const read = Read<EInterfaceItem>("EInterfaceItem.ethernetAndGre.v16.hex");
    EXPECT_EQ("off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; "
              "ethernet 02:00:5e:10:00:05 on[45066 100] 9000 override; atm -; ppp -; "
              "gre 7.1.2 192.0.2.9 true false true 3405643777 256; routed -",
              Summary(read));
    ExpectHoldsItsRecords(read);
}

/// What a version with per-type data brings: the golden files of the protocol records in it, null for one that the
/// version does not have, and the switches.
struct VersionCase {
    unsigned int version;
    char const* lldp;
    char const* dcbx;
    char const* ptp;
    char const* npiv;
    char const* fcoe;
    char const* dhcpv6;
    char const* dhcp;
    char const* switches; // LLDP, DCBX, PTP, FCoE, DHCPv6, DHCP
};

static std::string Switches(EInterfaceItem const& item)
{
    std::string text;
    for (bool const on : {item.IsLLDPEnabled(), item.IsDCBXEnabled(), item.IsPTPEnabled(), item.IsFCoEEnabled(),
                          item.IsDHCPv6Enabled(), item.IsDHCPEnabled()})
        text += on ? '1' : '0';
    return text;
}

template <class Record> static void ExpectRecord(char const* golden, Record const& record)
{
    EXPECT_EQ(Written(golden ? Read<Record>(golden) : Record()), Written(record)) << (golden ? golden : "defaults");
}
template <class Record> static void ExpectOptional(char const* golden, Record const* record)
{
    ASSERT_EQ(golden != nullptr, record != nullptr) << (golden ? golden : "none");
    if (record) ExpectRecord(golden, *record);
}

TEST(EInterfaceItemArchive, ReadsVersions7To16)
{
    char const* const lldp = "ELLDPConfig.v0127200B.hex";
    char const* const dcbx = "EDCBXConfig.v0128200A.hex";
    char const* const dhcpv6 = "EDHCPv6Properties.v2.hex";
    char const* const dhcp = "EDHCPProperties.v3.hex";
    VersionCase const cases[] = {
        {7, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "000000"},
        {8, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, "EDHCPProperties.v1.hex", "000001"},
        {9, nullptr, nullptr, nullptr, nullptr, nullptr, "EDHCPv6Properties.v1.hex", "EDHCPProperties.v2.hex",
         "000010"},
        {10, nullptr, nullptr, nullptr, nullptr, nullptr, dhcpv6, dhcp, "000001"},
        {11, nullptr, nullptr, nullptr, nullptr, nullptr, dhcpv6, dhcp, "000011"},
        {12, nullptr, nullptr, nullptr, nullptr, "EFCoEConfig.v1.hex", dhcpv6, dhcp, "000111"},
        {13, nullptr, nullptr, nullptr, "ENPIVConfig.v1.hex", "EFCoEConfig.v2.hex", dhcpv6, dhcp, "000111"},
        {14, nullptr, nullptr, "EPTPConfig.v1.hex", "ENPIVConfig.v3.hex", "EFCoEConfig.v6.hex", dhcpv6, dhcp, "001111"},
        {15, nullptr, dcbx, "EPTPConfig.v2.hex", "ENPIVConfig.v4.hex", "EFCoEConfig.v7.hex", dhcpv6, dhcp, "010111"},
        {16, lldp, dcbx, "EPTPConfig.v3.hex", "ENPIVConfig.v4.hex", "EFCoEConfig.v7.hex", dhcpv6, dhcp, "111111"},
    };
    for (VersionCase const& c : cases) {
        SCOPED_TRACE(c.version);
        EInterfaceItem item;
        FillSample(item); // emptied first: nothing of it stays
        item.SetIPv6Gateway(EIPAddress("2001:db8::77"));
        item.SetVcatCircuitId(77);
        ReadInto(item, Golden("EInterfaceItem.v" + std::to_string(c.version) + ".hex"));
        EXPECT_EQ(kSampleSummary, Summary(item));
        EXPECT_EQ(c.switches, Switches(item));
        EXPECT_EQ(c.version >= 11 ? "2001:db8::1" : "::", item.GetIPv6Gateway().GetAsString());
        EXPECT_EQ(c.version >= 10 ? 700U : 0U, item.GetVcatCircuitId());
        ExpectRecord("EIPv4AddressItem.v3.hex", item.GetIPv4AddressItem());
        ASSERT_EQ(2U, item.GetIPv6AddressItemList().GetCount());
        ASSERT_NE(nullptr, item.GetIPv6AddressItem(3));
        EXPECT_EQ("fe80::3", item.GetIPv6AddressItem(3)->GetAddress().GetAsString());
        ASSERT_NE(nullptr, item.GetIPv6AddressItem(9));
        ExpectRecord("EIPv6AddressItem.v1.hex", *item.GetIPv6AddressItem(9));
        ExpectRecord(c.dhcp, item.GetDHCPProperties());
        ExpectRecord(c.dhcpv6, item.GetDHCPv6Properties());
        ExpectRecord(c.fcoe, item.GetFCoEConfig());
        ExpectOptional(c.npiv, item.GetNPIVConfigReadOnly());
        ExpectOptional(c.ptp, item.GetPTPConfigReadOnly());
        ExpectOptional(c.dcbx, item.GetDCBXConfigReadOnly());
        ExpectOptional(c.lldp, item.GetLLDPConfigReadOnly());
        ExpectHoldsItsRecords(item);
        EXPECT_EQ(10U, item.AddIPv6AddressItem(EIPv6AddressItem())); // the generator came along
    }
}

TEST(EInterfaceItemArchive, ReadsTheFlatVersions1To6)
{
    std::string const ethernet = "; ethernet 02:00:5e:10:00:05 on[24676] ";
    std::string const start = "on 5 \"eth5\" type 0 euid 02:00:5e:ff:fe:10:00:05" + ethernet;
    std::string const atm = "; atm 7 1 8 35";
    std::string const end = "; ppp 21 4660; gre -; routed -";
    struct {
        char const* golden;
        std::string summary;
    } const cases[] = {
        {"EInterfaceItem.v1.hex", start + "1500 override; atm -" + end},
        {"EInterfaceItem.v2.hex", start + "1500 override; atm -" + end},
        {"EInterfaceItem.v3.hex", start + "1500 override" + atm + end},
        {"EInterfaceItem.v4.hex", start + "1500 override" + atm + end},
        {"EInterfaceItem.v5.hex", start + "1500 override" + atm + end},
        {"EInterfaceItem.v6.hex", start + "9000 override" + atm + end},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        EInterfaceItem item;
        FillSample(item); // emptied first: nothing of it stays
        ReadInto(item, Golden(c.golden));
        EXPECT_EQ(c.summary, Summary(item));
        ExpectRecord("EIPv4AddressItem.v2.hex", item.GetIPv4AddressItem());
        ASSERT_EQ(1U, item.GetIPv6AddressItemList().GetCount());
        ASSERT_NE(nullptr, item.GetIPv6AddressItem(9));
        ExpectRecord("EIPv6AddressItem.v1.hex", *item.GetIPv6AddressItem(9));
        EXPECT_EQ("000000", Switches(item));
        EXPECT_EQ(0U, item.GetVcatCircuitId());
        EXPECT_EQ("::", item.GetIPv6Gateway().GetAsString());
        ExpectRecord<EDHCPProperties>(nullptr, item.GetDHCPProperties());
        ExpectRecord<EDHCPv6Properties>(nullptr, item.GetDHCPv6Properties());
        ExpectRecord<EFCoEConfig>(nullptr, item.GetFCoEConfig());
        EXPECT_EQ(3 - (item.GetAtmData() == nullptr), CountOnDemand(item)); // Ethernet, PPP and perhaps ATM
        ExpectHoldsItsRecords(item);
        EXPECT_EQ(16, Written(item)[0]); // only ever written as the newest version
    }
}

TEST(EInterfaceItemArchive, AFlatVersionSetsOnlyWhatDiffersButAlwaysTheMacAddress)
{
    RecordedInterface in;
    ReadInto(in.interface, Golden("EInterfaceItem.defaults.v6.hex"));
    EXPECT_EQ((std::vector<std::string>{"SettingInterfaceItem", "SettingInterfaceMac", "SettingIPv4AddressItem"}),
              in.recorder->Operations());
    EXPECT_EQ("off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; ethernet 00:00:00:00:00:00 off[] 1500; atm -; ppp -; "
              "gre -; routed -",
              Summary(in.interface));
}

TEST(EInterfaceItemArchive, OneDifferentValueOfAFlatVersionSetsTheWholeGroup)
{
    // Version 3: four ATM values and the name; then up to the PPP handle and session; override, name and VLANs.
    std::string const addresses = "00 00 00 00 00 00 00 00 00 01 11 00 00 00 00 11 00 00 00 00 18 01 00 00 ";
    struct {
        char const* atm;
        char const* ppp;
        char const* summary;
    } const cases[] = {
        {"00 00 00 00", "00 00", "; atm -; ppp -"},        {"07 00 00 00", "00 00", "; atm 7 0 0 0; ppp -"},
        {"00 01 00 00", "00 00", "; atm 0 1 0 0; ppp -"},  {"00 00 08 00", "00 00", "; atm 0 0 8 0; ppp -"},
        {"00 00 00 23", "00 00", "; atm 0 0 0 35; ppp -"}, {"00 00 00 00", "15 00", "; atm -; ppp 21 0"},
        {"00 00 00 00", "00 16", "; atm -; ppp 0 22"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.summary);
        RecordedInterface in;
        std::string const name = "00 ";
        ReadInto(in.interface,
                 Bytes("03 " + std::string(c.atm) + " " + name + addresses + c.ppp + " 00 " + name + "00 00"));
        EXPECT_EQ("off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; ethernet 00:00:00:00:00:00 off[] 1500" +
                      std::string(c.summary) + "; gre -; routed -",
                  Summary(in.interface));
        bool const atm = in.interface.GetAtmData() != nullptr;
        bool const ppp = in.interface.GetPppData() != nullptr;
        EXPECT_EQ(3U + (atm ? 4U : 0U) + (ppp ? 2U : 0U), in.recorder->calls.size());
    }
}

TEST(EInterfaceItemArchive, ReadingALiveInterfaceAnnouncesTheEmptyingOnly)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.recorder->Clear();
    std::string const before = Written(in.interface);
    std::vector<std::string> inTheCalls;
    in.recorder->whenCalled = [&] { inTheCalls.push_back(Written(in.interface)); };
    ReadInto(in.interface, Golden("EInterfaceItem.v16.hex"));
    // The IPv4 record empties itself too, since it can be read alone.
    EXPECT_EQ((std::vector<std::string>{"SettingInterfaceItem", "SettingIPv4AddressItem"}), in.recorder->Operations());
    EXPECT_EQ(&in.interface, in.recorder->calls[0].record);
    EXPECT_EQ(&in.interface.GetIPv4AddressItem(), in.recorder->calls[1].record);
    EXPECT_EQ(before, inTheCalls[0]);
    EXPECT_EQ(kSampleSummary, Summary(in.interface));
    EXPECT_EQ(5U, in.interface.GetLocalId()); // on purpose that of the archive, although the table keeps it under 1
    EXPECT_EQ(&in.table, in.interface.GetParent());
    ExpectHoldsItsRecords(in.interface);
}

TEST(EInterfaceItemArchive, ReadingAFlatVersionIntoALiveInterfaceAnnouncesWhatGoesThroughSetters)
{
    RecordedInterface in;
    ReadInto(in.interface, Golden("EInterfaceItem.v6.hex"));
    std::string told;
    for (auto const& call : in.recorder->calls) told += call.operation + "(" + call.values + ")\n";
    EXPECT_EQ("SettingInterfaceItem(record)\n"
              "SettingInterfaceMTU(9000)\n"
              "SettingInterfaceATMEncapsulation(7)\n"
              "SettingInterfaceATMMode(1)\n"
              "SettingInterfaceVPI(8)\n"
              "SettingInterfaceVCI(35)\n"
              "SettingInterfaceMac(02:00:5e:10:00:05)\n"
              "SettingIPv4AddressItem(record, off[], off[])\n"
              "SettingInterfacePPPHandle(21)\n"
              "SettingInterfacePPPSession(4660)\n"
              "SettingInterfaceVlan(on[24676])\n",
              told);
}

TEST(EInterfaceItemArchive, AnUnexpectedTagOfAProtocolRecordMeansThatThereIsNone)
{
    // Of a fresh interface: version, then switch and tag of LLDP, DCBX and PTP, and the closing tag of NPIV.
    std::string const fresh = Golden("EInterfaceItem.defaults.v16.hex");
    for (std::size_t const offset : {2U, 4U, 6U, 7U}) {
        for (int const tag : {1, 5, 6, 7, 8, 9, 10, 99}) {
            bool const expected = tag == (offset == 2 ? 9 : offset == 4 ? 8 : offset == 6 ? 7 : 6);
            if (expected) continue;
            SCOPED_TRACE(std::to_string(offset) + ": " + std::to_string(tag));
            std::string bytes = fresh;
            bytes[offset] = static_cast<char>(tag);
            EInterfaceItem item;
            ReadInto(item, bytes);
            EXPECT_EQ(0, CountOnDemand(item));
            EXPECT_EQ(fresh, Written(item));
        }
    }
}

TEST(EInterfaceItemArchive, ANegativeTagOfAProtocolRecordMeansThatThereIsNone)
{
    std::string const fresh = Golden("EInterfaceItem.defaults.v16.hex");
    for (std::size_t const offset : {2U, 4U, 6U, 7U}) {
        SCOPED_TRACE(offset);
        EInterfaceItem item;
        ReadInto(item, fresh.substr(0, offset) + Bytes("FB FF FF FF FF") + fresh.substr(offset + 1));
        EXPECT_EQ(fresh, Written(item));
    }
}

TEST(EInterfaceItemArchive, NPIVIsClosedByATagWithAndWithoutTheRecord)
{
    EInterfaceItem item;
    item.EnsureNPIV();
    std::string const fresh = Golden("EInterfaceItem.defaults.v16.hex");
    std::string const withNPIV =
        fresh.substr(0, 7) + "\x06" + Golden("ENPIVConfig.defaults.v4.hex") + std::string(1, '\0') + fresh.substr(8);
    EXPECT_EQ(withNPIV, Written(item));
    EInterfaceItem read;
    ReadInto(read, withNPIV);
    EXPECT_EQ(1, CountOnDemand(read));
    EXPECT_NE(nullptr, read.GetNPIVConfigReadOnly());

    std::string otherClosing = withNPIV;
    otherClosing[withNPIV.size() - fresh.size() + 7] = 6; // passed over, whatever it is: there is one record at most
    ReadInto(read, otherClosing);
    EXPECT_EQ(withNPIV, Written(read));
}

TEST(EInterfaceItemArchive, ASwitchMayBeOnWithoutARecordAndCreatesItWhenItIsTurnedOff)
{
    std::string bytes = Golden("EInterfaceItem.defaults.v16.hex");
    for (std::size_t const offset : {1U, 3U, 5U}) bytes[offset] = 1;
    RecordedInterface in;
    ReadInto(in.interface, bytes);
    EXPECT_EQ("111000", Switches(in.interface));
    EXPECT_EQ(0, CountOnDemand(in.interface));
    in.recorder->Clear();
    in.interface.SetLLDPEnabled(false);
    in.interface.SetDCBXEnabled(false);
    in.interface.SetPTPEnabled(false);
    EXPECT_EQ((std::vector<std::string>{"DisablingLLDPItem", "DisablingDCBXItem", "DisablingPTPItem"}),
              in.recorder->Operations());
    EXPECT_EQ("000000", Switches(in.interface));
    EXPECT_EQ(3, CountOnDemand(in.interface));
}

TEST(EInterfaceItemArchive, PerTypeDataIsReadInAnyOrder)
{
    EInterfaceItem item;
    ReadInto(item, Bytes("07 05 01 03 07 01 03 03 01 15 16 01 01 00 00 00 00 00 00 00 00 44 01 00") +
                       Golden("EInterfaceItem.fromEnabled.defaults.hex"));
    EXPECT_EQ("off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; ethernet 00:00:00:00:00:00 off[] 68; atm -; ppp 21 22; "
              "gre -; routed 7.1.3",
              Summary(item));
}

TEST(EInterfaceItemArchive, OfPerTypeDataThatComesTwiceTheLastHolds)
{
    EInterfaceItem item;
    ReadInto(item, Bytes("07 03 01 15 16 03 01 17 18 00") + Golden("EInterfaceItem.fromEnabled.defaults.hex"));
    EXPECT_EQ("off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; ethernet -; atm -; ppp 23 24; gre -; routed -",
              Summary(item));
}

TEST(EInterfaceItemArchive, KeepsAnyTypeAndEncapsulation)
{
    EInterfaceItem item;
    item.SetType(static_cast<EInterfaceTypeEnum>(-1));
    item.SetEncapsulation(static_cast<eAtmEncapsulationMode>(0xFFFFFFFF));
    EInterfaceItem read;
    std::string const bytes = Written(item);
    EXPECT_EQ(Bytes("FB FF FF FF FF"), bytes.substr(bytes.size() - 5));
    ReadInto(read, bytes);
    EXPECT_EQ(-1, read.GetType());
    EXPECT_EQ(0xFFFFFFFF, read.GetEncapsulation());
}

TEST(EInterfaceItemArchive, RefusesVersions0And17)
{
    for (char const* version : {"00", "11", "FB FF FF FF FF"})
        ExpectArchiveError<EInterfaceItem>(version, kFile, 518, "EInterfaceItem::SerializeIn");
}

TEST(EInterfaceItemArchive, RefusesAnUnknownTagOfPerTypeData)
{
    for (char const* bytes : {"07 06", "07 FB FF FF FF FF", "07 09", "07 03 01 15 16 06"})
        ExpectArchiveError<EInterfaceItem>(bytes, kFile, 409, "EInterfaceItem::SerializeIn");
}

TEST(EInterfaceItemArchive, RefusesABadVersionOfPerTypeDataUnderTheNameOfTheData)
{
    struct {
        char const* bytes;
        int line;
        char const* function;
    } const cases[] = {
        {"07 01 00", 1041, "EInterfaceData_Ethernet::SerializeIn"},
        {"07 01 02", 1041, "EInterfaceData_Ethernet::SerializeIn"},
        {"07 02 02", 1092, "EInterfaceData_Atm::SerializeIn"},
        {"07 03 02", 1143, "EInterfaceData_Ppp::SerializeIn"},
        {"07 04 02", 1194, "EInterfaceData_Gre::SerializeIn"},
        {"07 05 02", 1245, "EInterfaceData_Routed::SerializeIn"},
    };
    for (auto const& c : cases) ExpectArchiveError<EInterfaceItem>(c.bytes, kFile, c.line, c.function);
}
