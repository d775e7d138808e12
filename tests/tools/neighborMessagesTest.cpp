#include "netlinkMessages.hpp"

#include "kernelValues.hpp"
#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <libmnl/libmnl.h>

#include <cstring>
#include <functional>

using namespace ifcoreTool;

namespace {

void ForEachMessage(char const* name, std::function<void(nlmsghdr const&)> const& visit)
{
    std::vector<unsigned char> const bytes = toolTest::GoldenBytes(std::string("netlink/") + name);
    int remaining = static_cast<int>(bytes.size());
    auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
    for (; mnl_nlmsg_ok(message, remaining); message = mnl_nlmsg_next(message, &remaining)) visit(*message);
    EXPECT_EQ(0, remaining) << "not a whole number of messages";
}

std::string Text(KernelIP const& address)
{
    return AsAddress(address).GetAsString();
}

/// What an event tells, in one line.
struct Told {
    std::string operator()(KernelLink const& link) const
    {
        return "link " + std::to_string(link.index) + " " + link.name + (link.up ? " up" : " down") +
               (link.running ? " running" : "");
    }
    std::string operator()(KernelLinkGone const& gone) const { return "gone: link " + std::to_string(gone.linkIndex); }
    std::string operator()(KernelAddress const& address) const
    {
        return "address " + Text(address.address) + "/" + std::to_string(address.prefixLength) + " peer " +
               Text(address.peer) + " of " + std::to_string(address.linkIndex);
    }
    std::string operator()(KernelAddressGone const& gone) const { return "gone: " + (*this)(gone.address); }
    std::string operator()(KernelNeighbor const& neighbor) const
    {
        return "neighbor " + Text(neighbor.address) + " " + AsMac(neighbor.mac).GetAsString() +
               (neighbor.isRouter ? " router" : "") + " of " + std::to_string(neighbor.linkIndex);
    }
    std::string operator()(KernelNeighborGone const& gone) const
    {
        return "gone: neighbor " + Text(gone.address) + " of " + std::to_string(gone.linkIndex);
    }
};

} // namespace

TEST(NeighborMessages, ADumpHasTheNeighborsWithAMacToWhichPacketsAreSent)
{
    KernelSnapshot snapshot;
    ForEachMessage("neighbors.hex", [&](nlmsghdr const& message) { ParseNetlinkMessage(message, snapshot); });
    std::vector<std::string> told;
    for (KernelNeighbor const& neighbor : snapshot.neighbors) told.push_back(Told()(neighbor));
    EXPECT_EQ((std::vector<std::string>{
                  "neighbor 192.0.2.7 02:00:00:00:00:07 of 2", "neighbor 192.0.2.8 02:00:00:00:00:08 of 2",
                  "neighbor 192.0.2.9 02:00:00:00:00:09 of 2", "neighbor 192.0.2.10 02:00:00:00:00:0a of 2",
                  "neighbor 192.0.2.11 02:00:00:00:00:0b of 2", "neighbor 2001:db8::7 02:00:00:00:00:07 router of 3"}),
              told);
}

TEST(NeighborMessages, AnEventIsWhatIsNowOrWhatIsNoMore)
{
    std::vector<std::string> told;
    ForEachMessage("changes.hex", [&](nlmsghdr const& message) {
        if (auto const event = ParseNetlinkEvent(message)) told.push_back(std::visit(Told(), *event));
    });
    EXPECT_EQ((std::vector<std::string>{"link 4 lan0 up running", "link 4 lan0 up", "link 4 lan0 down", "gone: link 4",
                                        "address 192.0.2.1/24 peer 192.0.2.1 of 4",
                                        "address 192.0.2.1/32 peer 192.0.2.9 of 4",
                                        "gone: address 192.0.2.1/32 peer 192.0.2.9 of 4",
                                        "neighbor 2001:db8::7 02:00:00:00:00:07 router of 4",
                                        "gone: neighbor 2001:db8::7 of 4", "gone: neighbor 2001:db8::7 of 4"}),
              told);
}

TEST(NeighborMessages, ANeighborWithoutAUsableMacIsNoMore)
{
    unsigned int gone = 0;
    unsigned int passedOver = 0;
    ForEachMessage("neighbors.hex", [&](nlmsghdr const& message) {
        auto const event = ParseNetlinkEvent(message);
        if (!event)
            ++passedOver;
        else if (std::holds_alternative<KernelNeighborGone>(*event))
            ++gone;
    });
    EXPECT_EQ(5u, gone);       // incomplete, failed, without resolution, of 20 bytes, of none
    EXPECT_EQ(3u, passedOver); // the proxy's, the bridge's, without an address
}

TEST(NeighborMessages, EveryShortenedMessageIsReadOrRefusedInsideOfItsBytes)
{
    unsigned int refused = 0;
    for (char const* name : {"neighbors.hex", "changes.hex"})
        ForEachMessage(name, [&](nlmsghdr const& message) {
            for (unsigned int length = sizeof(nlmsghdr); length < message.nlmsg_len; ++length) {
                std::vector<unsigned char> copy(length); // of its own: what reaches behind it is found
                std::memcpy(copy.data(), &message, length);
                std::memcpy(copy.data(), &length, sizeof length);
                try {
                    ParseNetlinkEvent(*reinterpret_cast<nlmsghdr const*>(copy.data()));
                } catch (ToolError const& error) {
                    EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
                    EXPECT_NE(std::string::npos, std::string(error.what()).find("the kernel sent a message"));
                    ++refused;
                }
            }
        });
    EXPECT_LT(0u, refused);
}
