#include "hostTestSupport.hpp"

#include "eIPAddress.hpp"

#include <stdexcept>
#include <type_traits>

static std::string HexOf(EIPAddress const& address)
{
    return EBlob(address.GetBytes(), 16).GetHexString();
}

TEST(EIPAddress, TheDefaultIsIPv4Zero)
{
    EIPAddress const address;
    EXPECT_EQ(17U, address.GetFamily());
    EXPECT_EQ("00000000000000000000000000000000", HexOf(address));
    EXPECT_TRUE(address.IsZero());
    EXPECT_EQ("0.0.0.0", address.GetAsString());
}

TEST(EIPAddress, IsPolymorphicAndMovesWithoutThrowing)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<EIPAddress>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<EIPAddress>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<EIPAddress>);
}

TEST(EIPAddress, ReadsDottedQuads)
{
    struct {
        char const* text;
        char const* bytes;
    } const cases[] = {{"0.0.0.0", "00000000"}, {"10.1.2.3", "0a010203"}, {"255.255.255.255", "ffffffff"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EIPAddress const address{std::string(c.text)};
        EXPECT_EQ(17U, address.GetFamily());
        EXPECT_EQ(c.bytes + std::string(24, '0'), HexOf(address));
        EXPECT_EQ(c.text, address.GetAsString());
    }
}

TEST(EIPAddress, WritesIPv6AsRFC5952SaysWhateverFormItWasReadFrom)
{
    struct {
        char const* text;
        char const* canonical;
        char const* bytes;
    } const cases[] = {
        {"::", "::", "00000000000000000000000000000000"},
        {"0:0:0:0:0:0:0:0", "::", "00000000000000000000000000000000"},
        {"::1", "::1", "00000000000000000000000000000001"},
        {"1::", "1::", "00010000000000000000000000000000"},
        {"2001:DB8::00aB", "2001:db8::ab", "20010db80000000000000000000000ab"},
        {"2001:0db8:0:0:1:0:0:1", "2001:db8::1:0:0:1",
         "20010db8000000000001000000000001"}, // the first of two equal runs
        {"2001:db8:0:1:1:1:1:1", "2001:db8:0:1:1:1:1:1", "20010db8000000010001000100010001"}, // one group stays
        {"2001:db8::1:1:1:1:1", "2001:db8:0:1:1:1:1:1", "20010db8000000010001000100010001"},
        {"2001:0:0:1:0:0:0:1", "2001:0:0:1::1", "20010000000000010000000000000001"}, // the longest run
        {"1:0:0:2:3:4:0:0", "1::2:3:4:0:0", "00010000000000020003000400000000"},
        {"1:2:3:4:5:6:0:0", "1:2:3:4:5:6::", "00010002000300040005000600000000"},
        {"0:0:3:4:5:6:7:8", "::3:4:5:6:7:8", "00000000000300040005000600070008"},
        {"1:2:3:4:5:6:7::", "1:2:3:4:5:6:7:0", "00010002000300040005000600070000"},
        {"::2:3:4:5:6:7:8", "0:2:3:4:5:6:7:8", "00000002000300040005000600070008"},
        {"::ffff:192.0.2.1", "::ffff:192.0.2.1", "00000000000000000000ffffc0000201"},
        {"::FFFF:c000:0201", "::ffff:192.0.2.1", "00000000000000000000ffffc0000201"},
        {"::192.0.2.1", "::c000:201", "000000000000000000000000c0000201"}, // not known to hold an IPv4 address
        {"64:ff9b::192.0.2.33", "64:ff9b::c000:221", "0064ff9b0000000000000000c0000221"},
        {"1:2:3:4:5:6:7.8.9.10", "1:2:3:4:5:6:708:90a", "0001000200030004000500060708090a"},
        {"::ffff:0:0", "::ffff:0.0.0.0", "00000000000000000000ffff00000000"},
        {"fe80::1:ffff:0:0", "fe80::1:ffff:0:0", "fe800000000000000001ffff00000000"},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff",
         "ffffffffffffffffffffffffffffffff"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EIPAddress const address{std::string(c.text)};
        EXPECT_EQ(18U, address.GetFamily());
        EXPECT_EQ(c.bytes, HexOf(address));
        EXPECT_EQ(c.canonical, address.GetAsString());
        EXPECT_TRUE(address == EIPAddress(address.GetAsString()));
    }
}

TEST(EIPAddress, RefusesWhatIsNoAddress)
{
    std::string const texts[] = {"",
                                 " ",
                                 "1.2.3",
                                 "1.2.3.4.5",
                                 "256.1.1.1",
                                 "1.2.3.",
                                 "1..2.3",
                                 "01.2.3.4",
                                 " 1.2.3.4",
                                 "1.2.3.4 ",
                                 "1.2.3.4/24",
                                 "a",
                                 ":",
                                 ":::",
                                 "1::2::3",
                                 "12345::",
                                 "1:2:3:4:5:6:7",
                                 "1:2:3:4:5:6:7:8:9",
                                 "::g",
                                 ":1",
                                 "1:",
                                 "fe80::1%eth0",
                                 "fe80::1%1",
                                 "::1.2.3",
                                 "1.2.3.4::",
                                 "1:2:3:4:5:6:7:1.2.3.4",
                                 "1:2:3:4::5:6:7:8",
                                 std::string("1.2.3.4\0", 8)};
    for (std::string const& text : texts) {
        SCOPED_TRACE(text);
        EXPECT_THROW(EIPAddress{text}, std::invalid_argument);
    }
}

TEST(EIPAddress, SetAddressTakesTheFamilysBytesAndFillsWithZeros)
{
    unsigned char const bytes[20] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    struct {
        unsigned int count;
        unsigned int family;
        char const* result;
    } const cases[] = {{0, 17, "00000000000000000000000000000000"},  {1, 17, "01000000000000000000000000000000"},
                       {4, 17, "01020304000000000000000000000000"},  {16, 17, "01020304000000000000000000000000"},
                       {0, 18, "00000000000000000000000000000000"},  {4, 18, "01020304000000000000000000000000"},
                       {16, 18, "0102030405060708090a0b0c0d0e0f10"}, {20, 18, "0102030405060708090a0b0c0d0e0f10"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.count << " " << c.family);
        EIPAddress address("ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
        address.SetAddress(bytes, c.count, c.family);
        EXPECT_EQ(c.family, address.GetFamily());
        EXPECT_EQ(c.result, HexOf(address));
    }
    EIPAddress address;
    address.SetAddress(bytes, 18);
    EXPECT_EQ("0102030405060708090a0b0c0d0e0f10", HexOf(address));
    address.SetAddress(address.GetBytes(), 17); // its own bytes
    EXPECT_EQ("1.2.3.4", address.GetAsString());
    EXPECT_EQ("01020304000000000000000000000000", HexOf(address));
    address.SetAddress(nullptr, 16, 18);
    EXPECT_EQ("::", address.GetAsString());
}

TEST(EIPAddress, SetAddressRefusesOtherFamiliesAndChangesNothing)
{
    unsigned char const bytes[16] = {9};
    EIPAddress address("10.1.2.3");
    for (unsigned int family : {0U, 1U, 2U, 16U, 19U, 0xFFFFFFFFU}) {
        EXPECT_THROW(address.SetAddress(bytes, family), std::invalid_argument) << family;
        EXPECT_THROW(address.SetAddress(bytes, 4, family), std::invalid_argument) << family;
    }
    EXPECT_EQ("10.1.2.3", address.GetAsString());
}

TEST(EIPAddress, EqualityAndOrderLookAtFamilyAndBytes)
{
    EIPAddress const ascending[] = {EIPAddress("0.0.0.0"), EIPAddress("1.2.3.4"), EIPAddress("200.0.0.0"),
                                    EIPAddress("::"),      EIPAddress("::1"),     EIPAddress("102:304::")};
    for (EIPAddress const& left : ascending) {
        for (EIPAddress const& right : ascending) {
            SCOPED_TRACE(left.GetAsString() + " " + right.GetAsString());
            EXPECT_EQ(&left == &right, left == right);
            EXPECT_EQ(&left != &right, left != right);
            EXPECT_EQ(&left < &right, left < right);
        }
    }
}

TEST(EIPAddress, IsZeroLooksAtTheBytesAlone)
{
    EXPECT_TRUE(EIPAddress("::").IsZero());
    EXPECT_FALSE(EIPAddress("0.0.0.1").IsZero());
    EXPECT_FALSE(EIPAddress("::1").IsZero());
    EXPECT_FALSE(EIPAddress("8000::").IsZero());
}

TEST(EIPAddress, SwapExchangesFamilyAndBytes)
{
    EIPAddress one("10.0.0.1");
    EIPAddress two("fe80::1");
    one.Swap(two);
    EXPECT_EQ("fe80::1", one.GetAsString());
    EXPECT_EQ("10.0.0.1", two.GetAsString());
    one.Swap(one);
    EXPECT_EQ("fe80::1", one.GetAsString());
}

TEST(EIPAddressArchive, IsTheFamilyAndItsBytes)
{
    struct {
        char const* text;
        char const* bytes;
    } const cases[] = {{"0.0.0.0", "1100000000"},
                       {"10.1.2.255", "110a0102ff"},
                       {"::", "1200000000000000000000000000000000"},
                       {"2001:db8::f8ff", "1220010db800000000000000000000f8ff"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EIPAddress const address{std::string(c.text)};
        EXPECT_EQ(c.bytes, Written(address));
        EXPECT_TRUE(address == Read<EIPAddress>(c.bytes));
        ExpectRefusedWhenTruncated(c.bytes, EIPAddress("9.9.9.9"));
        EArchive storing;
        EIPAddress read("9.9.9.9");
        storing >> read;
        EXPECT_TRUE(EIPAddress() == read);
    }
}

TEST(EIPAddressArchive, RefusesOtherFamiliesBeforeTheBytes)
{
    struct {
        char const* bytes;
        char const* message;
    } const cases[] = {{"00", "archive offset 0: wanted address family 17 or 18, found 0"},
                       {"1000000000", "archive offset 0: wanted address family 17 or 18, found 16"},
                       {"1300000000", "archive offset 0: wanted address family 17 or 18, found 19"},
                       {"f9011100000000", "archive offset 0: wanted address family 17 or 18, found 273"},
                       {"11000000", "archive offset 1: wanted 4 bytes, found 3"},
                       {"12000000", "archive offset 1: wanted 16 bytes, found 3"}};
    for (auto const& c : cases) {
        EIPAddress address("9.9.9.9");
        EXPECT_EQ(c.message, ReadError(c.bytes, address));
        EXPECT_EQ("9.9.9.9", address.GetAsString());
    }
}
