// Every golden file that the program alone reads, made bad in all ways and read.
#include "archiveFile.hpp"
#include "netlinkMessages.hpp"
#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "badInput.hpp"
#include "golden.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <libmnl/libmnl.h>

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

using namespace ifcoreTool;

namespace {

constexpr char const* kArchiveFile = "program/archiveFile.hex";

/// Where a file with this content is first found wrong: magic, size, version, kind, length, checksum.
std::size_t FirstWrongOffset(std::string const& good, std::string const& bad)
{
    auto const differs = [&](std::size_t offset, std::size_t count) {
        return bad.compare(offset, count, good, offset, std::min(count, bad.size() - offset)) != 0;
    };
    if (bad.empty() || differs(0, 8)) return 0;
    if (bad.size() < 28) return bad.size();
    if (differs(8, 4)) return 8;
    if (differs(12, 4)) return 12;
    std::size_t length = 0;
    for (std::size_t i = 16; i < 24; ++i) length = length << 8 | static_cast<unsigned char>(bad[i]);
    return length != bad.size() - 28 ? 16 : bad.size() - 4;
}

/// What was read, a text each, by vectors of the snapshot.
std::array<std::vector<std::string>, 4> TextsOf(KernelSnapshot const& snapshot)
{
    std::array<std::vector<std::string>, 4> texts;
    auto const add = [&](std::size_t list, auto const&... values) {
        std::ostringstream text;
        ((text << values << ' '), ...);
        texts[list].push_back(text.str());
    };
    auto const bytes = [](auto const& range) { return std::string(range.begin(), range.end()); };
    for (KernelLink const& link : snapshot.links)
        add(0, link.index, link.name, link.kind, link.hardwareType, bytes(link.hardwareAddress), link.mtu, link.up,
            link.running, link.lowerIndex.value_or(-1), link.vlan ? link.vlan->id : -1, link.gre.has_value());
    for (KernelAddress const& address : snapshot.addresses)
        add(1, address.linkIndex, bytes(address.address.bytes), address.prefixLength, bytes(address.peer.bytes));
    for (KernelGateway const& gateway : snapshot.gateways)
        add(2, gateway.linkIndex, bytes(gateway.gateway.bytes), gateway.metric);
    for (KernelNeighbor const& neighbor : snapshot.neighbors)
        add(3, neighbor.linkIndex, bytes(neighbor.address.bytes), bytes(neighbor.mac), neighbor.isRouter);
    return texts;
}

/// Reads the messages that are whole, each as part of a dump and as a change, and counts those that are refused.
KernelSnapshot ReadMessages(std::string const& input, unsigned int& refused)
{
    std::vector<unsigned char> const bytes(input.begin(), input.end()); // of its own: what reaches behind it is found
    KernelSnapshot snapshot;
    int remaining = static_cast<int>(bytes.size());
    auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
    for (; IsWhole(message, remaining); message = mnl_nlmsg_next(message, &remaining)) {
        auto const read = [&](auto const& parse) {
            try {
                parse();
            } catch (ToolError const& error) {
                EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
                EXPECT_THAT(error.what(), testing::HasSubstr("the kernel sent a message"));
                ++refused;
            }
        };
        read([&] { ParseNetlinkEvent(*message); });
        read([&] { ParseNetlinkMessage(*message, snapshot); });
    }
    return snapshot;
}

/// The messages of a golden file, each with its padding.
std::vector<std::string> MessagesOf(std::string const& file)
{
    std::vector<std::string> messages;
    std::vector<unsigned char> const bytes(file.begin(), file.end());
    int remaining = static_cast<int>(bytes.size());
    auto const* message = reinterpret_cast<nlmsghdr const*>(bytes.data());
    while (IsWhole(message, remaining)) {
        std::size_t const start = bytes.size() - static_cast<std::size_t>(remaining);
        message = mnl_nlmsg_next(message, &remaining);
        messages.push_back(file.substr(start, bytes.size() - static_cast<std::size_t>(remaining) - start));
    }
    return messages;
}

} // namespace

TEST(BadGoldenFiles, AreMadeOfEachOfTheProgram)
{
    EXPECT_THAT(GoldenNames("program/"), testing::ElementsAre(kArchiveFile)) << "no test reads the others";
}

TEST(BadGoldenFiles, AnArchiveFileIsRefusedWithTheOffsetAtWhichItIsFirstWrong)
{
    toolTest::ScratchFolder const folder;
    std::string const path = folder / "t";
    std::string const good = Golden(kArchiveFile);
    std::size_t const inputs = ForEachBadInput(good, Numbers::archive, [&](::BadInput const& bad) {
        SCOPED_TRACE(testing::Message() << "offset " << bad.offset << (bad.isCut ? ", cut" : ""));
        toolTest::WriteFile(path, bad.bytes);
        try {
            ReadArchiveFile(path, ArchiveKind::interfaceTable);
            ADD_FAILURE() << "read";
        } catch (ToolError const& error) {
            EXPECT_EQ(ExitCode::badInput, error.GetCode());
            std::size_t const offset = FirstWrongOffset(good, bad.bytes);
            EXPECT_THAT(error.what(), testing::StartsWith(path + ": offset " + std::to_string(offset) + ": "));
        }
    });
    EXPECT_LT(good.size() * 10, inputs);
}

TEST(BadGoldenFiles, ACommandThatWouldChangeABadFileLeavesItAsItIs)
{
    toolTest::ScratchFolder const folder;
    std::string const path = folder / "t";
    std::string const good = Golden(kArchiveFile);
    for (std::size_t size = 0; size < good.size(); ++size) {
        SCOPED_TRACE(size);
        std::string const bad = good.substr(0, size);
        toolTest::WriteFile(path, bad);
        toolTest::Result const result = toolTest::RunIfcore({"edit", path, "1", "mtu", "1"});
        EXPECT_EQ(static_cast<int>(ExitCode::badInput), result.status);
        EXPECT_EQ("", result.out);
        std::string const offset = std::to_string(FirstWrongOffset(good, bad));
        EXPECT_THAT(result.err, testing::HasSubstr(path + ": offset " + offset + ": "));
        EXPECT_EQ(bad, toolTest::FileText(path));
        EXPECT_THAT(folder.GetNames(), testing::ElementsAre("t"));
    }
}

TEST(BadGoldenFiles, NetlinkMessagesAreReadOrRefusedAndThoseBeforeStay)
{
    std::vector<std::string> const names = GoldenNames("netlink/");
    EXPECT_LE(7u, names.size());
    for (std::string const& name : names) {
        SCOPED_TRACE(name);
        unsigned int all = 0;
        unsigned int refused = 0; // of one message's forms
        for (std::string const& good : MessagesOf(Golden(name))) {
            auto const before = TextsOf(ReadMessages(good, refused));
            ASSERT_EQ(0u, std::exchange(refused, 0u));
            ForEachBadInput(good, Numbers::four, [&](::BadInput const& bad) {
                auto const after = TextsOf(ReadMessages(good + bad.bytes, refused));
                for (std::size_t list = 0; list < before.size(); ++list) {
                    ASSERT_LE(before[list].size(), after[list].size());
                    EXPECT_TRUE(std::equal(before[list].begin(), before[list].end(), after[list].begin()));
                }
            });
            all += std::exchange(refused, 0u);
        }
        EXPECT_LT(0u, all);
    }
}
