#include "netlinkMessages.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <libmnl/libmnl.h>

#include <cstring>

#include <arpa/inet.h>
#include <linux/rtnetlink.h>

using namespace ifcoreTool;

namespace {

KernelSnapshot ParseAll(std::vector<unsigned char> const& bytes)
{
    KernelSnapshot snapshot;
    int remaining = static_cast<int>(bytes.size());
    auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
    for (; mnl_nlmsg_ok(message, remaining); message = mnl_nlmsg_next(message, &remaining))
        ParseNetlinkMessage(*message, snapshot);
    EXPECT_EQ(0, remaining) << "not a whole number of messages";
    return snapshot;
}

KernelSnapshot Parse(char const* name)
{
    return ParseAll(toolTest::GoldenBytes(std::string("netlink/") + name));
}

std::string Text(KernelIP const& address)
{
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(address.isIPv6 ? AF_INET6 : AF_INET, address.bytes.data(), text, sizeof text);
}

} // namespace

TEST(NetlinkMessages, AVethPairAsRecordedIsTwoLinksThatNameEachOther)
{
    KernelSnapshot const snapshot = Parse("vethLinks.hex");
    ASSERT_EQ(3u, snapshot.links.size());
    KernelLink const& loopback = snapshot.links[0];
    EXPECT_EQ("lo", loopback.name);
    EXPECT_EQ(1, loopback.index);
    EXPECT_EQ(772, loopback.hardwareType);
    EXPECT_EQ(65536u, loopback.mtu);
    EXPECT_FALSE(loopback.up);
    EXPECT_EQ("", loopback.kind);
    EXPECT_EQ(std::vector<unsigned char>(6, 0), loopback.hardwareAddress);
    EXPECT_FALSE(loopback.lowerIndex);
    KernelLink const& right = snapshot.links[1];
    KernelLink const& left = snapshot.links[2];
    EXPECT_EQ("right", right.name);
    EXPECT_EQ("left", left.name);
    EXPECT_EQ("veth", left.kind);
    EXPECT_EQ(1, left.hardwareType);
    EXPECT_EQ(1500u, left.mtu);
    EXPECT_TRUE(left.up);
    EXPECT_FALSE(right.up);
    EXPECT_EQ(right.index, left.lowerIndex);
    EXPECT_EQ(left.index, right.lowerIndex);
    EXPECT_EQ(6u, left.hardwareAddress.size());
    EXPECT_FALSE(left.vlan);
    EXPECT_FALSE(left.gre);
}

TEST(NetlinkMessages, AVlanLinkHasItsTagAndItsLowerLink)
{
    KernelSnapshot const snapshot = Parse("vlanLinks.hex");
    struct {
        char const* name;
        int lower;
        int id;
        int protocol;
    } const cases[] = {{"eth0.100", 2, 100, 0x88a8}, {"eth0.100.7", 5, 7, 0x8100}, {"far.9", 0, 9, 0x8100}};
    ASSERT_EQ(4u, snapshot.links.size());
    EXPECT_FALSE(snapshot.links[0].vlan);
    for (std::size_t i = 0; i < 3; ++i) {
        KernelLink const& link = snapshot.links[i + 1];
        SCOPED_TRACE(link.name);
        EXPECT_EQ(cases[i].name, link.name);
        EXPECT_EQ("vlan", link.kind);
        ASSERT_TRUE(link.vlan);
        EXPECT_EQ(cases[i].id, link.vlan->id);
        EXPECT_EQ(cases[i].protocol, link.vlan->protocol);
        EXPECT_EQ(cases[i].lower, link.lowerIndex.value_or(0)); // 0: in another namespace
    }
}

TEST(NetlinkMessages, AGreLinkHasItsEndsKeysAndFlags)
{
    KernelSnapshot const snapshot = Parse("greLinks.hex");
    ASSERT_EQ(5u, snapshot.links.size());
    struct {
        char const* name;
        char const* kind;
        char const* local;
        char const* remote;
        unsigned int inKey, outKey;
        bool key, sequence, checksum, up;
        std::size_t hardwareAddressSize;
    } const cases[] = {{"gre1", "gre", "192.0.2.1", "198.51.100.1", 5, 6, true, true, false, true, 4},
                       {"gretap1", "gretap", "192.0.2.1", "198.51.100.2", 0, 0, false, false, true, true, 6},
                       {"ip6gre1", "ip6gre", "2001:db8::1", "2001:db8::2", 0, 0, false, false, false, false, 16},
                       {"gre0", "gre", "0.0.0.0", "0.0.0.0", 0, 0, false, false, false, false, 4}};
    for (std::size_t i = 0; i < 4; ++i) {
        auto const& c = cases[i];
        KernelLink const& link = snapshot.links[i + 1];
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.name, link.name);
        EXPECT_EQ(c.kind, link.kind);
        ASSERT_TRUE(link.gre);
        EXPECT_EQ(c.local, Text(link.gre->local));
        EXPECT_EQ(c.remote, Text(link.gre->remote));
        EXPECT_EQ(c.inKey, link.gre->inKey);
        EXPECT_EQ(c.outKey, link.gre->outKey);
        EXPECT_EQ(c.key, link.gre->Uses(KernelGre::kKey));
        EXPECT_EQ(c.sequence, link.gre->Uses(KernelGre::kSequence));
        EXPECT_EQ(c.checksum, link.gre->Uses(KernelGre::kChecksum));
        EXPECT_EQ(c.up, link.up);
        EXPECT_EQ(c.hardwareAddressSize, link.hardwareAddress.size());
        EXPECT_FALSE(link.lowerIndex);
    }
}

TEST(NetlinkMessages, AnAddressIsTheOwnEndOfItsLink)
{
    KernelSnapshot const snapshot = Parse("addresses.hex");
    struct {
        int link;
        char const* address;
        unsigned int prefix;
    } const cases[] = {{2, "192.0.2.1", 24}, {2, "198.51.100.9", 25}, {3, "203.0.113.1", 32}, {2, "2001:db8::1", 64}};
    ASSERT_EQ(4u, snapshot.addresses.size());
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(cases[i].address);
        EXPECT_EQ(cases[i].link, snapshot.addresses[i].linkIndex);
        EXPECT_EQ(cases[i].address, Text(snapshot.addresses[i].address));
        EXPECT_EQ(cases[i].prefix, snapshot.addresses[i].prefixLength);
    }
}

TEST(NetlinkMessages, OnlyDefaultRoutesOfTheMainTableGiveGateways)
{
    KernelSnapshot const snapshot = Parse("routes.hex");
    struct {
        int link;
        char const* gateway;
        unsigned int metric;
    } const cases[] = {{2, "192.0.2.254", 100},
                       {2, "192.0.2.253", 50},
                       {2, "fe80::1", 1024},
                       {4, "203.0.113.254", 0},
                       {5, "203.0.113.253", 0}};
    ASSERT_EQ(5u, snapshot.gateways.size());
    for (std::size_t i = 0; i < 5; ++i) {
        SCOPED_TRACE(cases[i].gateway);
        EXPECT_EQ(cases[i].link, snapshot.gateways[i].linkIndex);
        EXPECT_EQ(cases[i].gateway, Text(snapshot.gateways[i].gateway));
        EXPECT_EQ(cases[i].metric, snapshot.gateways[i].metric);
    }
}

TEST(NetlinkMessages, EveryShortenedMessageIsReadOrRefusedInsideOfItsBytes)
{
    for (char const* name : {"vlanLinks.hex", "greLinks.hex", "addresses.hex", "routes.hex"}) {
        SCOPED_TRACE(name);
        std::vector<unsigned char> const bytes = toolTest::GoldenBytes(std::string("netlink/") + name);
        int remaining = static_cast<int>(bytes.size());
        auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
        unsigned int refused = 0;
        for (; mnl_nlmsg_ok(message, remaining); message = mnl_nlmsg_next(message, &remaining)) {
            for (unsigned int length = sizeof(nlmsghdr); length < message->nlmsg_len; ++length) {
                std::vector<unsigned char> copy(length); // of its own: what reaches behind it is found
                std::memcpy(copy.data(), message, length);
                std::memcpy(copy.data(), &length, sizeof length);
                KernelSnapshot snapshot;
                try {
                    ParseNetlinkMessage(*reinterpret_cast<nlmsghdr const*>(copy.data()), snapshot);
                } catch (ToolError const& error) {
                    EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
                    EXPECT_NE(std::string::npos, std::string(error.what()).find("the kernel sent a message"));
                    ++refused;
                }
            }
        }
        EXPECT_LT(0u, refused);
    }
}

TEST(NetlinkMessages, OtherTypesArePassedOver)
{
    std::vector<unsigned char> bytes = toolTest::GoldenBytes("netlink/addresses.hex");
    unsigned short const type = RTM_DELADDR;
    std::memcpy(bytes.data() + 4, &type, sizeof type);
    EXPECT_EQ(3u, ParseAll(bytes).addresses.size());
}
