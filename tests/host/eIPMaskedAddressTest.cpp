#include "eIPMaskedAddress.hpp"

#include <gtest/gtest.h>

TEST(EIPMaskedAddress, ClearsTheBitsBehindThePrefix)
{
    struct {
        char const* address;
        unsigned int prefix;
        char const* network;
    } const cases[] = {{"10.1.2.3", 0, "0.0.0.0"},
                       {"255.255.255.255", 1, "128.0.0.0"},
                       {"255.255.255.255", 7, "254.0.0.0"},
                       {"255.255.255.255", 8, "255.0.0.0"},
                       {"255.255.255.255", 9, "255.128.0.0"},
                       {"10.1.9.9", 16, "10.1.0.0"},
                       {"10.1.9.9", 24, "10.1.9.0"},
                       {"10.1.9.9", 31, "10.1.9.8"},
                       {"10.1.9.9", 32, "10.1.9.9"},
                       {"10.1.9.9", 33, "10.1.9.9"},
                       {"10.1.9.9", 0xFFFFFFFF, "10.1.9.9"},
                       {"2001:db8::ffff:1", 0, "::"},
                       {"2001:db8::ffff:1", 32, "2001:db8::"},
                       {"2001:db8::ffff:1", 100, "2001:db8::f000:0"},
                       {"2001:db8::ffff:1", 127, "2001:db8::ffff:0"},
                       {"2001:db8::ffff:1", 128, "2001:db8::ffff:1"},
                       {"2001:db8::ffff:1", 129, "2001:db8::ffff:1"},
                       {"2001:db8::ffff:1", 0xFFFFFFFF, "2001:db8::ffff:1"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.address << "/" << c.prefix);
        EIPMaskedAddress masked(EIPAddress{std::string(c.address)});
        masked.SetMaskPrefixNumber(c.prefix);
        EXPECT_EQ(c.prefix, masked.GetMaskPrefixNumber());
        EXPECT_EQ(c.network, masked.GetNetworkAddress().GetAsString());
        EXPECT_EQ(c.address, masked.GetAsString());
    }
}

TEST(EIPMaskedAddress, StartsAsIPv4UnderAMaskOfOnes)
{
    EIPMaskedAddress masked;
    EXPECT_EQ(17U, masked.GetFamily());
    EXPECT_EQ("0.0.0.0", masked.GetNetworkAddress().GetAsString());
    EIPAddress const address("2001:db8::1");
    masked.SetAddress(address.GetBytes(), address.GetFamily());
    EXPECT_TRUE(address == masked.GetNetworkAddress());
}

TEST(EIPMaskedAddress, AppliesThePrefixByTheFamilyOfTheMoment)
{
    EIPAddress const address("2001:db8:ffff::1");
    EIPMaskedAddress masked;
    masked.SetMaskPrefixNumber(33); // more than the IPv4 address has that it still is
    masked.SetAddress(address.GetBytes(), address.GetFamily());
    EXPECT_EQ("2001:db8:8000::", masked.GetNetworkAddress().GetAsString());
}
