#include "netlinkReader.hpp"

#include "networkNamespace.hpp"
#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <deque>

#include <linux/rtnetlink.h>
#include <sys/socket.h>

using namespace ifcoreTool;

namespace {

/// Plays one of the kernel's answers a dump; the last one again and again.
class RecordedSource : public NetlinkSource {
public:
    enum class Answer { complete, interrupted, lost, overrun, refused, refusedAtTheEnd, interruptedCall, stale };

    std::deque<Answer> answers;
    unsigned int restarts = 0;
    unsigned int requests = 0;
    unsigned char refusedFamily = AF_UNSPEC;
    int refusedWith = EPERM;

    int Request(unsigned short type, unsigned char family, unsigned int sequence) override
    {
        ++requests;
        m_queue.clear();
        m_family = family;
        Answer answer = answers.front();
        if (answers.size() > 1) answers.pop_front();
        if (answer == Answer::refused && refusedFamily != AF_UNSPEC && family != refusedFamily)
            answer = Answer::complete;
        if (answer == Answer::interruptedCall) m_queue.push_back({EINTR, {}});
        if (answer == Answer::lost) m_queue.push_back({ENOBUFS, {}});
        if (answer == Answer::stale) m_queue.push_back({0, Message(NLMSG_DONE, 0, sequence - 1, 0)});
        if (answer == Answer::overrun) m_queue.push_back({0, Message(NLMSG_OVERRUN, 0, sequence, 0)});
        if (answer == Answer::refused) m_queue.push_back({0, Message(NLMSG_ERROR, 0, sequence, -refusedWith)});
        if (type == RTM_GETLINK) m_queue.push_back({0, Links(sequence)});
        unsigned short const flags = answer == Answer::interrupted ? NLM_F_DUMP_INTR : 0;
        int const ending = answer == Answer::refusedAtTheEnd ? -EIO : 0;
        m_queue.push_back({0, Message(NLMSG_DONE, flags, sequence, ending)});
        return 0;
    }
    int Receive(std::vector<char>& buffer, std::size_t& size) override
    {
        if (m_queue.empty()) return ENOTCONN;
        auto const [error, bytes] = m_queue.front();
        m_queue.pop_front();
        buffer = bytes;
        size = bytes.size();
        return error;
    }
    void Restart() override { ++restarts; }

private:
    static std::vector<char> Message(unsigned int type, unsigned short flags, unsigned int sequence, int result)
    {
        nlmsghdr header{};
        header.nlmsg_len = sizeof header + sizeof result;
        header.nlmsg_type = static_cast<unsigned short>(type);
        header.nlmsg_flags = flags;
        header.nlmsg_seq = sequence;
        std::vector<char> bytes(header.nlmsg_len);
        std::memcpy(bytes.data(), &header, sizeof header);
        std::memcpy(bytes.data() + sizeof header, &result, sizeof result);
        return bytes;
    }
    static std::vector<char> Links(unsigned int sequence)
    {
        std::vector<unsigned char> const golden = toolTest::GoldenBytes("netlink/vlanLinks.hex");
        std::vector<char> bytes(golden.begin(), golden.end());
        for (std::size_t at = 0; at < bytes.size();) {
            std::memcpy(bytes.data() + at + offsetof(nlmsghdr, nlmsg_seq), &sequence, sizeof sequence);
            unsigned int length = 0;
            std::memcpy(&length, bytes.data() + at, sizeof length);
            at += NLMSG_ALIGN(length);
        }
        return bytes;
    }

    std::deque<std::pair<int, std::vector<char>>> m_queue;
    unsigned char m_family = 0;
};

using Answer = RecordedSource::Answer;

/// Links; addresses and routes of both families; neighbours of both, twice.
constexpr unsigned int kDumps = 9;

KernelLink const* FindLink(KernelSnapshot const& snapshot, std::string const& name)
{
    for (KernelLink const& link : snapshot.links)
        if (link.name == name) return &link;
    return nullptr;
}

} // namespace

TEST(NetlinkReader, LostInterruptedAndOverrunDumpsAreReadAgainAsAWhole)
{
    for (Answer trouble : {Answer::lost, Answer::interrupted, Answer::overrun}) {
        SCOPED_TRACE(static_cast<int>(trouble));
        for (unsigned int position = 0; position < kDumps; ++position) {
            RecordedSource source;
            source.answers.assign(position, Answer::complete);
            source.answers.push_back(trouble);
            source.answers.push_back(Answer::complete);
            KernelSnapshot const snapshot = ReadKernelSnapshot(source);
            EXPECT_EQ(4u, snapshot.links.size()); // nothing of the first reading is left
            EXPECT_EQ(1u, source.restarts);
            EXPECT_EQ(position + 1 + kDumps, source.requests);
        }
    }
}

TEST(NetlinkReader, GivesUpWhenEveryReadingIsDisturbed)
{
    RecordedSource source;
    source.answers = {Answer::lost};
    try {
        ReadKernelSnapshot(source, 3);
        FAIL();
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
        EXPECT_STREQ("reading the kernel's interfaces: they changed during each of 3 readings", error.what());
    }
    EXPECT_EQ(3u, source.requests);
    EXPECT_EQ(2u, source.restarts);
}

TEST(NetlinkReader, AnInterruptedCallAndAnAnswerToAnOlderRequestChangeNothing)
{
    for (Answer harmless : {Answer::interruptedCall, Answer::stale}) {
        RecordedSource source;
        source.answers = {harmless};
        EXPECT_EQ(4u, ReadKernelSnapshot(source).links.size());
        EXPECT_EQ(0u, source.restarts);
    }
}

TEST(NetlinkReader, ARefusalIsReportedWithTheSystemsText)
{
    struct {
        Answer answer;
        char const* message;
    } const cases[] = {{Answer::refused, "reading the kernel's links: Operation not permitted"},
                       {Answer::refusedAtTheEnd, "reading the kernel's links: Input/output error"}};
    for (auto const& c : cases) {
        RecordedSource source;
        source.answers = {c.answer};
        try {
            ReadKernelSnapshot(source);
            FAIL();
        } catch (ToolError const& error) {
            EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
            EXPECT_STREQ(c.message, error.what());
        }
    }
}

TEST(NetlinkReader, AKernelWithoutIPv6HasNothingToReadThere)
{
    RecordedSource source;
    source.answers = {Answer::refused};
    source.refusedFamily = AF_INET6;
    source.refusedWith = EOPNOTSUPP;
    EXPECT_EQ(4u, ReadKernelSnapshot(source).links.size());
    EXPECT_EQ(kDumps, source.requests);
}

TEST(NetlinkReader, ReadsANamespaceAsIpMadeIt)
{
    toolTest::TestNamespace const space;
    space.Ip({"link set lo up", "link add left type veth peer name right", "link set left mtu 1400",
              "link set left address 02:00:00:00:00:11", "link set left up", "link set right up",
              "addr add 192.0.2.1/24 dev left", "addr add 192.0.2.9/25 dev left",
              "addr add 2001:db8::1/64 dev left nodad", "route add default via 192.0.2.254 dev left",
              "-6 route add default via 2001:db8::fe dev left"});
    NetworkNamespace const inside(space.GetName());
    KernelNetlinkSource source;
    KernelSnapshot const snapshot = ReadKernelSnapshot(source);
    KernelLink const* left = FindLink(snapshot, "left");
    ASSERT_NE(nullptr, left);
    EXPECT_EQ(1400u, left->mtu);
    EXPECT_EQ("veth", left->kind);
    EXPECT_TRUE(left->up);
    EXPECT_EQ((std::vector<unsigned char>{2, 0, 0, 0, 0, 0x11}), left->hardwareAddress);
    std::vector<unsigned int> prefixes;
    for (KernelAddress const& address : snapshot.addresses)
        if (address.linkIndex == left->index && !address.address.isIPv6) prefixes.push_back(address.prefixLength);
    EXPECT_EQ((std::vector<unsigned int>{24, 25}), prefixes);
    ASSERT_EQ(2u, snapshot.gateways.size());
    EXPECT_EQ(left->index, snapshot.gateways[0].linkIndex);
    EXPECT_EQ(254, snapshot.gateways[0].gateway.bytes[3]);
    EXPECT_TRUE(snapshot.gateways[1].gateway.isIPv6);
    EXPECT_EQ(0xfe, snapshot.gateways[1].gateway.bytes[15]);
}

TEST(NetlinkReader, ReadsMoreLinksThanASmallQueueHolds)
{
    toolTest::TestNamespace const space;
    std::vector<std::string> lines;
    for (int i = 0; i < 60; ++i)
        lines.push_back("link add a" + std::to_string(i) + " type veth peer name b" + std::to_string(i));
    space.Ip(lines);
    NetworkNamespace const inside(space.GetName());
    KernelNetlinkSource source;
    source.SetReceiveBufferSize(1);
    EXPECT_EQ(121u, ReadKernelSnapshot(source).links.size());
}

TEST(NetlinkReader, ALinkOfAKindThatThisKernelHasIsReadAsThatKind)
{
    toolTest::TestNamespace const space;
    space.Ip({"link add left type veth peer name right"});
    struct {
        char const* line;
        char const* name;
        char const* kind;
    } const cases[] = {{"link add br type bridge", "br", "bridge"},
                       {"link add link left name left.7 type vlan id 7", "left.7", "vlan"},
                       {"link add link left name left.8 type vlan proto 802.1ad id 8", "left.8", "vlan"},
                       {"link add tun type gre local 192.0.2.1 remote 192.0.2.2 key 5", "tun", "gre"},
                       {"link add tap type gretap local 192.0.2.1 remote 192.0.2.3", "tap", "gretap"},
                       {"link add tun6 type ip6gre local 2001:db8::1 remote 2001:db8::2", "tun6", "ip6gre"}};
    NetworkNamespace const inside(space.GetName());
    for (auto const& c : cases) {
        SCOPED_TRACE(c.line);
        bool const permitted = space.Permits(c.line);
        KernelNetlinkSource source;
        KernelSnapshot const snapshot = ReadKernelSnapshot(source);
        KernelLink const* link = FindLink(snapshot, c.name);
        ASSERT_EQ(permitted, link != nullptr); // on a kernel without that kind there is nothing to be read
        if (!link) continue;
        EXPECT_EQ(c.kind, link->kind);
        EXPECT_EQ(link->kind == "vlan", link->vlan.has_value());
        EXPECT_EQ(link->kind.find("gre") != std::string::npos, link->gre.has_value());
        if (link->vlan) {
            EXPECT_EQ(FindLink(snapshot, "left")->index, link->lowerIndex);
        }
        if (link->name == "tun") {
            EXPECT_EQ(5u, link->gre->inKey);
        }
    }
}
