#include "hostTestSupport.hpp"

#include "eMACAddress.hpp"

#include <stdexcept>

TEST(EMACAddress, TheDefaultIsZero)
{
    EXPECT_EQ("00:00:00:00:00:00", EMACAddress().GetAsString());
    EXPECT_EQ("000000000000", EMACAddress().GetMACAddress().GetHexString());
}

TEST(EMACAddress, ReadsGroupsJoinedByColonsOrByHyphens)
{
    struct {
        char const* text;
        char const* canonical;
    } const cases[] = {{"aa:bb:cc:dd:ee:ff", "aa:bb:cc:dd:ee:ff"},
                       {"AA-bB-0c-dD-EE-01", "aa:bb:0c:dd:ee:01"},
                       {"0:1:2:a:B:10", "00:01:02:0a:0b:10"}};
    for (auto const& c : cases) EXPECT_EQ(c.canonical, EMACAddress(std::string(c.text)).GetAsString());
}

TEST(EMACAddress, RefusesOtherText)
{
    std::string const texts[] = {"",
                                 "aa",
                                 "aabbccddeeff",
                                 "aa:bb:cc:dd:ee",
                                 "aa:bb:cc:dd:ee:",
                                 "aa:bb:cc:dd:ee:ff:",
                                 "aa:bb:cc:dd:ee:ff:00",
                                 "aa:bb-cc:dd:ee:ff",
                                 "aa.bb.cc.dd.ee.ff",
                                 "aaa:bb:cc:dd:ee:f",
                                 "aa::cc:dd:ee:ff",
                                 ":aa:bb:cc:dd:ee",
                                 "aa:bb:cc:dd:ee:fg",
                                 " aa:bb:cc:dd:ee:ff",
                                 "aa:bb:cc:dd:ee:ff ",
                                 std::string("aa:bb:cc:dd:ee:ff\0", 18)};
    for (std::string const& text : texts) {
        SCOPED_TRACE(text);
        EXPECT_THROW(EMACAddress{text}, std::invalid_argument);
    }
}

TEST(EMACAddress, SetMACAddressTakesTheFirst6BytesAndFillsWithZeros)
{
    struct {
        char const* bytes;
        char const* result;
    } const cases[] = {{"", "00:00:00:00:00:00"},
                       {"0a", "0a:00:00:00:00:00"},
                       {"0102030405", "01:02:03:04:05:00"},
                       {"010203040506", "01:02:03:04:05:06"},
                       {"0102030405060708", "01:02:03:04:05:06"}};
    for (auto const& c : cases) {
        EMACAddress address("ff:ff:ff:ff:ff:ff");
        address.SetMACAddress(BytesOf(c.bytes));
        EXPECT_EQ(c.result, address.GetAsString());
    }
}

TEST(EMACAddress, EmptySwapAndEquality)
{
    EMACAddress one("00:00:00:00:00:01");
    EMACAddress two("00:00:00:00:00:02");
    EXPECT_TRUE(one != two);
    EXPECT_FALSE(one == two);
    one.Swap(two);
    EXPECT_EQ("00:00:00:00:00:02", one.GetAsString());
    EXPECT_EQ("00:00:00:00:00:01", two.GetAsString());
    one.Empty();
    EXPECT_TRUE(one == EMACAddress());
    EXPECT_FALSE(one != EMACAddress());
}

TEST(EMACAddressArchive, Is6Bytes)
{
    EMACAddress const address("f8:00:01:02:03:ff");
    EXPECT_EQ("f800010203ff", Written(address));
    EXPECT_TRUE(address == Read<EMACAddress>("f800010203ff"));
    EXPECT_EQ("archive offset 0: wanted 6 bytes, found 5", ReadError<EMACAddress>("f800010203"));
    ExpectRefusedWhenTruncated("f800010203ff", address);
    EArchive storing;
    EMACAddress read = address;
    storing >> read;
    EXPECT_TRUE(EMACAddress() == read);
}
