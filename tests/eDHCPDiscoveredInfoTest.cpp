#include "eDHCPDiscoveredInfo.hpp"

#include "discoveredRecords.hpp"
#include "recordCases.hpp"

using V4 = EDHCPDiscoveredInfo;
using V6 = EDHCPv6DiscoveredInfo;

static std::string Addresses(std::list<EIPAddress> const& addresses)
{
    std::string text;
    for (EIPAddress const& address : addresses) text += (text.empty() ? "" : " ") + address.GetAsString();
    return text;
}

/// "valid ip/prefix length gateway lease timer interface local id [options]"
static std::string TextOfRecord(V4 const& record)
{
    return TextOf(record.IsValid()) + " " + TextOf(record.GetDiscoveredIP()) + "/" +
           TextOf(record.GetDiscoveredPrefixLength()) + " " + TextOf(record.GetDiscoveredGatewayIP()) + " " +
           TextOf(record.GetLeaseTimer()) + " " + TextOf(record.GetInterfaceLocalId()) + " [" +
           TextOfTlvs(record.GetDiscoveredCustomTLVs()) + "]";
}
/// "valid renew time rebind time [addresses] [options]"
static std::string TextOfRecord(V6 const& record)
{
    return TextOf(record.IsValid()) + " " + TextOf(record.GetIARenewTime()) + " " + TextOf(record.GetIARebindTime()) +
           " [" + Addresses(record.GetDiscoveredAddresses()) + "] [" + TextOfTlvs(record.GetDiscoveredCustomTLVs()) +
           "]";
}

/// What the golden files hold, made with the setters.
static V4 SampleV4()
{
    V4 record;
    EIPAddress address("192.0.2.5");
    EIPAddress gateway("192.0.2.254");
    record.SetDiscoveredIP(address);
    record.SetDiscoveredPrefixLength(24);
    record.SetDiscoveredGatewayIP(gateway);
    record.SetLeaseTimer(86400);
    record.SetDiscoveredCustomTLVs({Tlv(51, Bytes("00 01 51 80")), Tlv(3, ""), Tlv(51, Bytes("AB CD"))});
    record.SetInterfaceLocalId(300);
    record.SetValid(true);
    return record;
}
static V6 SampleV6()
{
    V6 record;
    record.SetIARenewTime(1800);
    record.SetIARebindTime(2880);
    record.SetValid(true);
    record.SetDiscoveredCustomTLVs({Tlv(23, Bytes("07")), Tlv(1, "")});
    record.SetDiscoveredAddresses({EIPAddress("2001:db8::2"), EIPAddress("2001:db8::1"), EIPAddress("2001:db8::2")});
    return record;
}

template <class Record> struct Change {
    std::function<void(Record&)> make;
    char const* text; // of a record in which nothing else was changed
};

TEST(EDHCPDiscoveredInfo, EachSetterStoresExactlyItsField)
{
    EXPECT_EQ("false 0.0.0.0/0 0.0.0.0 0 0 []", TextOfRecord(V4()));
    EIPAddress address("2001:db8::5");
    Change<V4> const changes[] = {
        {[&](V4& r) { r.SetDiscoveredIP(address); }, "false 2001:db8::5/0 0.0.0.0 0 0 []"},
        {[](V4& r) { r.SetDiscoveredPrefixLength(0xFFFFFFFF); }, "false 0.0.0.0/4294967295 0.0.0.0 0 0 []"},
        {[&](V4& r) { r.SetDiscoveredGatewayIP(address); }, "false 0.0.0.0/0 2001:db8::5 0 0 []"},
        {[](V4& r) { r.SetLeaseTimer(0xFFFFFFFF); }, "false 0.0.0.0/0 0.0.0.0 4294967295 0 []"},
        {[](V4& r) {
             r.SetDiscoveredCustomTLVs({Tlv(2, ""), Tlv(1, "")});
         },
         "false 0.0.0.0/0 0.0.0.0 0 0 [2= 1=]"},
        {[](V4& r) { r.GetDiscoveredCustomTLVs().push_back(Tlv(3, "")); }, "false 0.0.0.0/0 0.0.0.0 0 0 [3=]"},
        {[](V4& r) { r.SetInterfaceLocalId(0xFFFFFFFF); }, "false 0.0.0.0/0 0.0.0.0 0 4294967295 []"},
        {[](V4& r) { r.SetValid(true); }, "true 0.0.0.0/0 0.0.0.0 0 0 []"},
    };
    for (auto const& change : changes) {
        V4 record;
        change.make(record);
        EXPECT_EQ(change.text, TextOfRecord(record));
    }
}

TEST(EDHCPv6DiscoveredInfo, EachSetterStoresExactlyItsField)
{
    EXPECT_EQ("false 0 0 [] []", TextOfRecord(V6()));
    EIPAddress const address("2001:db8::5");
    Change<V6> const changes[] = {
        {[](V6& r) { r.SetIARenewTime(0xFFFFFFFF); }, "false 4294967295 0 [] []"},
        {[](V6& r) { r.SetIARebindTime(0xFFFFFFFF); }, "false 0 4294967295 [] []"},
        {[](V6& r) { r.SetValid(true); }, "true 0 0 [] []"},
        {[](V6& r) {
             r.SetDiscoveredCustomTLVs({Tlv(2, ""), Tlv(1, "")});
         },
         "false 0 0 [] [2= 1=]"},
        {[](V6& r) { r.GetDiscoveredCustomTLVs().push_back(Tlv(3, "")); }, "false 0 0 [] [3=]"},
        {[&](V6& r) {
             r.SetDiscoveredAddresses({address, address});
         },
         "false 0 0 [2001:db8::5 2001:db8::5] []"},
        {[&](V6& r) { r.GetDiscoveredAddresses().push_back(address); }, "false 0 0 [2001:db8::5] []"},
    };
    for (auto const& change : changes) {
        V6 record;
        change.make(record);
        EXPECT_EQ(change.text, TextOfRecord(record));
    }
}

TEST(EDHCPDiscoveredInfo, AddressesAreCopiedFromWhatIsGiven)
{
    V4 record;
    EIPAddress address("192.0.2.5");
    record.SetDiscoveredIP(address);
    record.SetDiscoveredGatewayIP(address);
    address = EIPAddress("192.0.2.6");
    EXPECT_EQ("192.0.2.5", record.GetDiscoveredIP().GetAsString());
    EXPECT_EQ("192.0.2.5", record.GetDiscoveredGatewayIP().GetAsString());
}

TEST(EDHCPDiscoveredInfo, ContentsMoveWithoutTheParent)
{
    ExpectContentsMoveWithoutTheParent(SampleV4());
    ExpectContentsMoveWithoutTheParent(SampleV6());
}

TEST(EDHCPDiscoveredInfo, TheObserverIsThatOfTheTable)
{
    ExpectObserverOfTheTable<V4>(&EDiscoveredInfo::GetDHCPInfo);
    ExpectObserverOfTheTable<V6>(&EDiscoveredInfo::GetDHCPv6Info);
}

TEST(EDHCPDiscoveredInfoArchive, WritesAndReadsTheBytesOfTheLayout)
{
    EXPECT_EQ(Golden("EDHCPDiscoveredInfo.hex"), Written(SampleV4()));
    EXPECT_EQ(TextOfRecord(SampleV4()), TextOfRecord(Read<V4>("EDHCPDiscoveredInfo.hex")));
    EXPECT_EQ(Golden("EDHCPDiscoveredInfo.defaults.hex"), Written(V4()));
    EXPECT_EQ(TextOfRecord(V4()), TextOfRecord(Read<V4>("EDHCPDiscoveredInfo.defaults.hex")));
}

TEST(EDHCPv6DiscoveredInfoArchive, WritesAndReadsTheBytesOfTheLayout)
{
    EXPECT_EQ(Golden("EDHCPv6DiscoveredInfo.hex"), Written(SampleV6()));
    EXPECT_EQ(TextOfRecord(SampleV6()), TextOfRecord(Read<V6>("EDHCPv6DiscoveredInfo.hex")));
    EXPECT_EQ(Golden("EDHCPv6DiscoveredInfo.defaults.hex"), Written(V6()));
    EXPECT_EQ(TextOfRecord(V6()), TextOfRecord(Read<V6>("EDHCPv6DiscoveredInfo.defaults.hex")));
}

TEST(EDHCPDiscoveredInfoArchive, ReadingAnnouncesNothing)
{
    ExpectReadUnheard<V4>(&EDiscoveredInfo::GetDHCPInfo, "EDHCPDiscoveredInfo.hex");
    ExpectReadUnheard<V6>(&EDiscoveredInfo::GetDHCPv6Info, "EDHCPv6DiscoveredInfo.hex");
}

TEST(EDHCPDiscoveredInfoArchive, ReadingReplacesFieldsButAppendsToTheLists)
{
    V4 v4 = SampleV4();
    ReadInto(v4, Bytes("00 11 0A 00 00 01 08 11 00 00 00 00 07 09 01 01 04 00 00"));
    EXPECT_EQ("false 10.0.0.1/8 0.0.0.0 7 9 [51=00015180 3= 51=abcd 4=]", TextOfRecord(v4));
    V6 v6 = SampleV6();
    ReadInto(v6, Bytes("00 05 06 01 11 0A 00 00 01 01 01 04 00 00"));
    EXPECT_EQ("false 5 6 [2001:db8::2 2001:db8::1 2001:db8::2 10.0.0.1] [23=07 1= 4=]", TextOfRecord(v6));

    V6 twice;
    ReadInto(twice, Golden("EDHCPv6DiscoveredInfo.hex"));
    ReadInto(twice, Golden("EDHCPv6DiscoveredInfo.hex"));
    EXPECT_EQ(6U, twice.GetDiscoveredAddresses().size());
    EXPECT_EQ(4U, twice.GetDiscoveredCustomTLVs().size());
}

TEST(EDHCPDiscoveredInfoArchive, ABodyThatEndsTooEarlyKeepsWhatWasRead)
{
    V4 const v4 = ReadAsFarAsPossible<V4>(
        Bytes("01 11 C0 00 02 05 18 11 C0 00 02 FE 3C F9 01 2C FB FF FF FF FF 01 33 00 00 01 03"));
    EXPECT_EQ("true 192.0.2.5/24 192.0.2.254 60 300 [51=]", TextOfRecord(v4));
    V6 const v6 = ReadAsFarAsPossible<V6>(Bytes("01 05 06 FB FF FF FF FF 11 0A 00 00 01 11 0A 00"));
    EXPECT_EQ("true 5 6 [10.0.0.1] []", TextOfRecord(v6));
}

TEST(EDHCPDiscoveredInfoArchive, CountsHave32Bits)
{
    ReadAsFarAsPossible<V4>(Bytes("01 11 00 00 00 00 00 11 00 00 00 00 00 00 FC 01 00 00 00 00"));
    V6 const v6 = ReadAsFarAsPossible<V6>(Bytes("01 05 06 FC 01 00 00 00 00"));
    EXPECT_EQ("true 5 6 [] []", TextOfRecord(v6));
}
