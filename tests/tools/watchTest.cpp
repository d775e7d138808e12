#include "discoveredValues.hpp"
#include "tableFile.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ifcoreTool;
using toolTest::Background;
using toolTest::Result;
using toolTest::RunIfcore;

namespace {

/// What the kernel and a discovered table both tell of a link, in one form.
struct LinkState {
    bool up = false;
    std::set<std::string> addresses;
    std::map<std::string, std::set<std::string>> neighbors; // by MAC
    std::set<std::string> routers;                          // MACs
    bool operator==(LinkState const& other) const
    {
        return up == other.up && addresses == other.addresses && neighbors == other.neighbors &&
               routers == other.routers;
    }
};

std::ostream& operator<<(std::ostream& out, LinkState const& state)
{
    out << (state.up ? "up" : "down");
    for (std::string const& address : state.addresses) out << " " << address;
    for (auto const& [mac, addresses] : state.neighbors) {
        out << "\n  " << mac << (state.routers.count(mac) != 0 ? " router" : "");
        for (std::string const& address : addresses) out << " " << address;
    }
    return out;
}

using State = std::map<std::string, LinkState>; // by name

bool Contains(Json const& list, char const* text)
{
    return std::find(list.begin(), list.end(), text) != list.end();
}

/// What `ip` tells.
State StateOf(toolTest::TestNamespace const& space)
{
    State state;
    for (Json const& link : Json::parse(toolTest::Run({"ip", "-n", space.GetName(), "-j", "addr"}).out)) {
        LinkState& told = state[link["ifname"]];
        told.up = Contains(link["flags"], "UP") && !Contains(link["flags"], "NO-CARRIER");
        for (Json const& address : link["addr_info"]) told.addresses.insert(address["local"].get<std::string>());
    }
    for (Json const& neighbor : Json::parse(toolTest::Run({"ip", "-n", space.GetName(), "-j", "neigh"}).out)) {
        if (!neighbor.contains("lladdr") || Contains(neighbor["state"], "FAILED")) continue;
        LinkState& told = state[neighbor["dev"]];
        std::string const mac = neighbor["lladdr"];
        told.neighbors[mac].insert(neighbor["dst"].get<std::string>());
        if (neighbor.contains("router")) told.routers.insert(mac);
    }
    return state;
}

/// What a file holds of the links with these names, by interface id.
State StateOf(std::string const& file, std::map<unsigned int, std::string> const& names)
{
    EDiscoveredTable table;
    LoadTable(file, table);
    State state;
    for (unsigned int id : InfoIds(table)) {
        EDiscoveredInfo const& info = *table.GetInfo(id);
        LinkState& told = state[names.count(id) != 0 ? names.at(id) : "unknown " + std::to_string(id)];
        told.up = info.IsInterfaceUp();
        for (unsigned int i = 0; i < info.GetAddressCount(); ++i)
            told.addresses.insert(info.GetAddressAt(i)->GetAsString());
        for (unsigned int neighborId : NeighborIds(info)) {
            EDiscoveredNeighbor const& neighbor = *info.GetNeighbor(neighborId);
            std::string const mac = neighbor.GetMac().GetAsString();
            for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
                EXPECT_TRUE(told.neighbors[mac].insert(address->GetAsString()).second);
            if (neighbor.IsRouter()) told.routers.insert(mac);
        }
    }
    return state;
}

/// The names of the interfaces, from what `watch --json` wrote.
std::map<unsigned int, std::string> NamesIn(std::string const& lines)
{
    std::map<unsigned int, std::string> names;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        Json const call = Json::parse(line);
        if (call["link"].is_string()) names[call["interface"]] = call["link"];
    }
    return names;
}

std::size_t Count(std::string const& text, std::string const& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

/// A namespace with the connected links left and right, both up, without addresses that come by themselves.
class Watch : public testing::Test {
protected:
    Watch()
    {
        space.Ip({"link add left address 02:00:00:00:01:01 type veth peer name right address 02:00:00:00:01:02",
                  "link set left addrgenmode none", "link set right addrgenmode none", "link set left up",
                  "link set right up"});
    }
    std::vector<std::string> Command(std::vector<std::string> const& more = {}) const
    {
        // The sanitizer keeps freed memory for a while, which looks like growth.
        std::vector<std::string> words{
            "env", "ASAN_OPTIONS=quarantine_size_mb=1", IFCORE_PROGRAM, "watch", "--netns", space.GetName(), "--record",
            stream};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    /// The recorded stream, applied to a new file.
    std::string Replayed() const
    {
        Result const result = RunIfcore({"discovered", "apply", folder / "replayed.ifc", stream});
        EXPECT_EQ(0, result.status) << result.err;
        return folder / "replayed.ifc";
    }
    /// One command of `ip` for each of ten thousand addresses.
    void ForTenThousand(std::string const& begin, std::string const& end) const
    {
        std::ostringstream lines;
        for (int i = 0; i < 10000; ++i) {
            char mac[32];
            std::snprintf(mac, sizeof mac, "02:00:00:01:%02x:%02x", i / 256, i % 256);
            lines << begin << " 10." << i / 2500 << "." << i / 250 % 10 << "." << i % 250 + 1;
            if (end.find("lladdr") != std::string::npos) lines << " lladdr " << mac;
            lines << " dev left\n";
        }
        toolTest::WriteFile(folder / "batch", lines.str());
        Result const result = toolTest::Run({"ip", "-n", space.GetName(), "-batch", folder / "batch"});
        ASSERT_EQ(0, result.status) << result.err;
    }
    void AddTenThousand() const { ForTenThousand("neigh add", "lladdr"); }
    void RemoveTenThousand() const { ForTenThousand("neigh del", ""); }

    toolTest::TestNamespace const space;
    toolTest::ScratchFolder const folder;
    std::string const stream = folder / "s.ifc";
};

/// Kilobytes by which memory may differ that holds the same: a sanitizer's allocator does not use freed memory again at
/// once.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kTolerance = 8 * 1024;
#else
constexpr long kTolerance = 512;
#endif

/// Kilobytes of memory that a process has.
long MemoryOf(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.find("VmRSS:") == 0) return std::stol(line.substr(6));
    return 0;
}

} // namespace

TEST_F(Watch, TheTableIsWhatTheKernelTellsAfterEachChange)
{
    space.Ip({"addr add 192.0.2.1/24 dev left", "neigh add 192.0.2.7 lladdr 02:00:00:00:00:07 dev left"});
    Background watch(Command({"--json"}));
    ASSERT_TRUE(watch.WaitForOut("02:00:00:00:00:07"));
    space.Ip({"neigh add 2001:db8::7 lladdr 02:00:00:00:00:07 router dev left",
              "neigh add 192.0.2.8 lladdr 02:00:00:00:00:08 dev left nud stale",
              "neigh add 192.0.2.9 lladdr 02:00:00:00:00:09 dev left nud reachable",
              "neigh add 192.0.2.10 lladdr 02:00:00:00:00:0a dev right",
              "neigh add 192.0.2.11 lladdr 02:00:00:00:00:0b dev right nud noarp",
              "neigh add proxy 192.0.2.12 dev left",
              "neigh replace 192.0.2.8 lladdr 02:00:00:00:00:09 dev left",
              "neigh change 192.0.2.9 dev left nud failed",
              "addr add 192.0.2.1/25 dev left",
              "addr add 192.0.2.2/24 dev left",
              "addr del 192.0.2.1/24 dev left",
              "addr add 2001:db8::1/64 dev left nodad",
              "addr add 198.51.100.1 peer 198.51.100.2 dev right",
              "link add index 77 gone type veth peer name stays",
              "addr add 203.0.113.1/24 dev gone",
              "neigh add 203.0.113.7 lladdr 02:00:00:00:00:07 dev gone",
              "link delete gone",
              "link add index 77 again type veth peer name other",
              "link set other name renamed",
              "link set again addrgenmode none",
              "link set renamed addrgenmode none",
              "link set again up",
              "link set renamed up",
              "addr add 203.0.113.1/24 dev again",
              "neigh add 203.0.113.8 lladdr 02:00:00:00:00:08 dev again",
              "link set lo up"});
    State const told = StateOf(space);
    watch.Signal(SIGTERM); // what the kernel told before is still followed
    Result const result = watch.Wait();
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("", result.err);
    std::map<unsigned int, std::string> const names = NamesIn(result.out);
    EXPECT_EQ(told, StateOf(Replayed(), names));
    EXPECT_EQ(5u, told.size());
    EXPECT_EQ((std::set<std::string>{"2001:db8::7", "192.0.2.7"}), told.at("left").neighbors.at("02:00:00:00:00:07"));

    // The same recording makes the same table of any other.
    Result const imported = RunIfcore(
        {"import", "--netns", space.GetName(), "-o", folder / "port.ifc", "--discovered", folder / "other.ifc"});
    EXPECT_EQ(0, imported.status) << imported.err;
    EXPECT_EQ(0, RunIfcore({"discovered", "apply", folder / "other.ifc", stream}).status);
    EXPECT_EQ(0, RunIfcore({"discovered", "diff", folder / "other.ifc", folder / "replayed.ifc"}).status);
}

TEST_F(Watch, AnImportTellsTheSameUnderTheSameIds)
{
    space.Ip({"addr add 192.0.2.1/24 dev right", "addr add 192.0.2.2/24 dev right",
              "neigh add 192.0.2.7 lladdr 02:00:00:00:00:07 dev left",
              "neigh add 2001:db8::7 lladdr 02:00:00:00:00:07 router dev left"});
    std::string const file = folder / "d.ifc";
    Result const imported =
        RunIfcore({"import", "--netns", space.GetName(), "-o", folder / "port.ifc", "--discovered", file});
    ASSERT_EQ(0, imported.status) << imported.err;
    EInterfaceTable interfaces;
    LoadTable(folder / "port.ifc", interfaces);
    std::map<unsigned int, std::string> names;
    EDiscoveredTable table;
    LoadTable(file, table);
    for (unsigned int id : InfoIds(table)) names[id] = interfaces.GetInterfaceItem(id)->GetName();
    EXPECT_EQ(StateOf(space), StateOf(file, names));
    ASSERT_EQ(3u, names.size());
    for (auto const& [id, name] : names)
        EXPECT_TRUE(id == 1 || interfaces.GetInterfaceItem(id - 1)->GetName() != name) << "not its first row";

    Background watch(Command());
    ASSERT_TRUE(watch.WaitForOut("02:00:00:00:00:07"));
    watch.Signal(SIGINT);
    EXPECT_EQ(0, watch.Wait().status);
    EXPECT_EQ("", RunIfcore({"discovered", "diff", file, Replayed()}).out);
}

TEST_F(Watch, EndsOnASignalWithTheRecordingWhole)
{
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
        SCOPED_TRACE(signal);
        toolTest::WriteFile(stream, "what was there before");
        Background watch(Command());
        ASSERT_TRUE(watch.WaitForOut("(left)"));
        EXPECT_EQ("what was there before", toolTest::FileText(stream));
        space.Ip({"neigh replace 192.0.2.7 lladdr 02:00:00:00:00:07 dev left"});
        watch.Signal(signal);
        Result const result = watch.Wait();
        EXPECT_EQ(0, result.status);
        EXPECT_EQ("", result.err);
        EXPECT_EQ((std::vector<std::string>{"s.ifc"}), folder.GetNames());
        EXPECT_NE(std::string::npos, RunIfcore({"show", Replayed(), "3"}).out.find("02:00:00:00:00:07"));
        unlink((folder / "replayed.ifc").c_str());
    }
}

TEST_F(Watch, AReaderThatGoesAwayEndsItWithTheRecordingWhole)
{
    std::string line;
    for (std::string const& word : Command()) line += word + " ";
    Background pipe({"sh", "-c", line + "| head -1"});
    ASSERT_TRUE(pipe.WaitForOut("SettingDiscoveredTable"));
    for (int i = 0; i < 600 && folder.GetNames() != std::vector<std::string>{"s.ifc"}; ++i) {
        space.Ip({i % 2 == 0 ? "link set left down" : "link set left up"});
        usleep(50000);
    }
    Result const result = pipe.Wait();
    EXPECT_EQ("ifcore: writing standard output failed\n", result.err);
    EXPECT_EQ(0, RunIfcore({"show", Replayed()}).status);
}

TEST_F(Watch, AReaderThatDoesNotReadCannotKeepItFromEnding)
{
    std::string const pipe = folder / "pipe";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    int const reader = open(pipe.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_LE(0, reader);
    std::string line = "exec";
    for (std::string const& word : Command()) line += " " + word;
    Background watch({"sh", "-c", line + " > " + pipe});
    pollfd readable{reader, POLLIN, 0};
    ASSERT_EQ(1, poll(&readable, 1, 60000));
    AddTenThousand(); // more lines than a pipe holds
    watch.Signal(SIGTERM);
    Result const result = watch.Wait();
    close(reader);
    EXPECT_EQ(4, result.status);
    EXPECT_EQ("ifcore: writing standard output failed\n", result.err);
    EXPECT_EQ(0, RunIfcore({"show", Replayed()}).status);
}

TEST_F(Watch, TenThousandNeighborsInABurstAreFollowedWithoutLossAndLeaveNothingBehind)
{
    Background watch(Command());
    ASSERT_TRUE(watch.WaitForOut("(left)"));
    long afterTwo = 0;
    for (int round = 1; round <= 4; ++round) {
        SCOPED_TRACE(round);
        std::size_t const before = watch.GetOut().size();
        AddTenThousand();
        ASSERT_TRUE(watch.WaitForOut("neighbor " + std::to_string(10000 * round) + " "));
        RemoveTenThousand();
        ASSERT_TRUE(
            watch.WaitForOut("RemovingNeighbor  interface 3 (left) neighbor " + std::to_string(10000 * round) + " "));
        std::string const lines = watch.GetOut().substr(before);
        EXPECT_EQ(10000u, Count(lines, "AddingNeighbor  "));
        EXPECT_EQ(10000u, Count(lines, "RemovingNeighbor  "));
        if (round == 2) afterTwo = MemoryOf(watch.GetId());
    }
    long const afterFour = MemoryOf(watch.GetId());
    RecordProperty("KilobytesAfterTwoRounds", static_cast<int>(afterTwo));
    RecordProperty("KilobytesAfterFourRounds", static_cast<int>(afterFour));
    EXPECT_LT(0, afterTwo);
    EXPECT_LE(afterFour, afterTwo + kTolerance);
    AddTenThousand();
    State const told = StateOf(space);
    ASSERT_TRUE(watch.WaitForOut("neighbor 50000 ")); // the signal alone would give it a second
    watch.Signal(SIGTERM);
    Result const result = watch.Wait();
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("", result.err); // nothing was lost
    EXPECT_EQ(10000u, told.at("left").neighbors.size());
    EXPECT_EQ(told, StateOf(Replayed(), {{1, "lo"}, {2, "right"}, {3, "left"}}));
}

TEST_F(Watch, WhatIsLostWhileItCannotReadIsReadAgain)
{
    Background watch(Command());
    ASSERT_TRUE(watch.WaitForOut("(left)"));
    watch.Signal(SIGSTOP);
    for (int round = 0; round < 3; ++round) { // more than its queue holds
        AddTenThousand();
        RemoveTenThousand();
    }
    AddTenThousand();
    space.Ip({"neigh add 192.0.2.7 lladdr 02:00:00:00:00:07 dev left"});
    watch.Signal(SIGCONT);
    ASSERT_TRUE(watch.WaitForOut("192.0.2.7"));
    State const told = StateOf(space);
    watch.Signal(SIGTERM);
    Result const result = watch.Wait();
    EXPECT_EQ(0, result.status);
    EXPECT_EQ("ifcore: messages of the kernel were lost: everything was read again, 10001 changes\n", result.err);
    EXPECT_EQ(told, StateOf(Replayed(), {{1, "lo"}, {2, "right"}, {3, "left"}}));
}

TEST_F(Watch, AnUnknownNamespaceIsBadInputAndLeavesNoRecording)
{
    Result const result = RunIfcore({"watch", "--netns", "ifcore-no-such", "--record", stream});
    EXPECT_EQ(3, result.status);
    EXPECT_EQ("ifcore: there is no network namespace 'ifcore-no-such'\n", result.err);
    EXPECT_EQ(std::vector<std::string>{}, folder.GetNames());
}

TEST_F(Watch, ARecordingThatCannotBeWrittenIsTheSystemsRefusal)
{
    std::string const missing = folder / "none";
    Result const result = RunIfcore({"watch", "--netns", space.GetName(), "--record", missing + "/s.ifc"});
    EXPECT_EQ(4, result.status);
    EXPECT_EQ("ifcore: writing " + missing + "/s.ifc: No such file or directory\n", result.err);
}
