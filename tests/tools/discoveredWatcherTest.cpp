#include "discoveredWatcher.hpp"

#include "discoveredTracingHooks.hpp"
#include "fakeKernel.hpp"
#include "golden.hpp"
#include "toolError.hpp"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace ifcoreTool;
using toolTest::FakeKernel;

namespace {

/// A watcher on a kernel, what it printed, and a table to which its messages are applied too.
class Watched {
public:
    FakeKernel kernel;
    DiscoveredWatcher watcher{kernel, kernel};
    EDiscoveredTable replayed;
    unsigned int messages = 0;
    std::ostringstream out;
    std::ostringstream warnings;

    Watched()
    {
        watcher.GetTable().hooks = MakeDiscoveredTracingHooks(
            [this](DiscoveredCall const& call) { PrintCall(out, call, watcher.GetLinkName(call.interfaceId)); });
        watcher.onMessage = [this](EBlob const& message) {
            ++messages;
            EArchive archive;
            archive.SetFromEBlob(message, true);
            archive.SetMode(2);
            ApplyDiscoveredTableMessage(replayed, archive);
            EXPECT_TRUE(archive.AtEnd());
        };
    }
    void Run()
    {
        watcher.Run(out, warnings);
        EXPECT_EQ(Written(watcher.GetTable()), Written(replayed));
    }
    std::string Take()
    {
        std::string const text = out.str();
        out.str("");
        return text;
    }
};

/// What a table holds by its ids; neighbours by MAC, since their ids tell in which order they came.
std::string Content(EDiscoveredTable const& table)
{
    std::ostringstream text;
    for (unsigned int id : InfoIds(table)) {
        EDiscoveredInfo const& info = *table.GetInfo(id);
        text << id << (info.IsInterfaceUp() ? " up" : " down");
        std::set<std::string> addresses;
        for (unsigned int i = 0; i < info.GetAddressCount(); ++i) addresses.insert(info.GetAddressAt(i)->GetAsString());
        for (std::string const& address : addresses) text << " " << address;
        std::set<std::string> neighbors;
        for (unsigned int neighborId : NeighborIds(info)) {
            EDiscoveredNeighbor const& neighbor = *info.GetNeighbor(neighborId);
            std::set<std::string> own;
            for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address) {
                own.insert(address->GetAsString());
                EXPECT_EQ(&neighbor, info.FindNeighborByIP(*address));
            }
            EXPECT_EQ(neighbor.GetAddressCount(), own.size());
            EXPECT_EQ(&neighbor, info.FindNeighborByMAC(neighbor.GetMac()));
            std::string line = "  " + neighbor.GetMac().GetAsString() + (neighbor.IsRouter() ? " router" : "");
            for (std::string const& address : own) line += " " + address;
            neighbors.insert(line);
        }
        for (std::string const& neighbor : neighbors) text << "\n" << neighbor;
        text << "\n";
    }
    return text.str();
}

} // namespace

TEST(DiscoveredWatcher, TheFirstMessageMakesTheTableOfAnyOtherOne)
{
    Watched w;
    w.kernel.SetLink(1, "lo", true);
    w.kernel.AddAddress(1, "127.0.0.1", 8);
    w.kernel.SetLink(2, "lan0", false);
    w.kernel.SetNeighbor(2, "192.0.2.7", "02:00:00:00:00:07");
    w.kernel.Restart(); // as if all that had been before the socket was there
    EDiscoveredInfo old;
    old.SetLocalId(9);
    w.replayed.AddInfo(old);
    w.Run();
    EXPECT_EQ("SettingDiscoveredTable  table\n"
              "AddingInfo  interface 1 (lo)  up: - -> yes\n"
              "AddingAddress  interface 1 (lo)  address: - -> 127.0.0.1\n"
              "AddingInfo  interface 2 (lan0)  up: - -> no\n"
              "AddingNeighbor  interface 2 (lan0) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> no, "
              "addresses: - -> 192.0.2.7\n",
              w.out.str());
    EXPECT_EQ(1u, w.messages);
    EXPECT_EQ("", w.warnings.str());
}

TEST(DiscoveredWatcher, AnEventThatChangesSomethingIsAMessage)
{
    Watched w;
    w.kernel.SetLink(2, "lan0", true);
    w.kernel.WhenFollowed([&] {
        w.Take();
        w.messages = 0;
        w.kernel.SetLink(2, "lan0", false);
        w.kernel.SetLink(2, "lan0", false);
        w.kernel.SetNeighbor(2, "2001:db8::7", "02:00:00:00:00:07", true);
        w.kernel.SetLink(3, "wan0", true);
        w.kernel.AddAddress(3, "192.0.2.1");
        w.kernel.FailNeighbor(2, "2001:db8::7");
        w.kernel.RemoveNeighbor(2, "2001:db8::7");
        w.kernel.RemoveLink(2);
    });
    w.Run();
    EXPECT_EQ("InterfaceWentDown  interface 1 (lan0)  up: yes -> no\n"
              "AddingNeighbor  interface 1 (lan0) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> yes, "
              "addresses: - -> 2001:db8::7\n"
              "AddingInfo  interface 2 (wan0)  up: - -> yes\n"
              "AddingAddress  interface 2 (wan0)  address: - -> 192.0.2.1\n"
              "RemovingNeighbor  interface 1 (lan0) neighbor 1  mac: 02:00:00:00:00:07 -> -, router: yes -> -, "
              "addresses: 2001:db8::7 -> -\n"
              "RemovingInfo  interface 1 (lan0)  up: no -> -\n",
              w.Take());
    EXPECT_EQ(6u, w.messages);
    EXPECT_FALSE(w.watcher.GetTable().HasDefaultMAC());
}

TEST(DiscoveredWatcher, WhatHappensDuringTheFirstReadingIsNotMissedAndNotTakenTwice)
{
    Watched w;
    w.kernel.SetLink(2, "lan0", true);
    w.kernel.AtNextDump([&] {
        w.kernel.SetNeighbor(2, "192.0.2.7", "02:00:00:00:00:07"); // told by the dump and by its event
        w.kernel.SetLink(3, "wan0", true);
        w.kernel.SetLink(4, "gone", true); // is over before the dump
        w.kernel.RemoveLink(4);
    });
    w.Run();
    EXPECT_EQ("1 up\n  02:00:00:00:00:07 192.0.2.7\n2 up\n", Content(w.watcher.GetTable()));
}

TEST(DiscoveredWatcher, LostMessagesAreMetByReadingEverythingAgain)
{
    Watched w;
    w.kernel.SetLink(2, "lan0", true);
    w.kernel.SetNeighbor(2, "192.0.2.7", "02:00:00:00:00:07");
    w.kernel.WhenFollowed([&] {
        w.Take();
        w.messages = 0;
        w.kernel.SetNeighbor(2, "192.0.2.8", "02:00:00:00:00:08"); // queued, and older than what is read
        w.kernel.LoseFromHereOn();
        w.kernel.RemoveNeighbor(2, "192.0.2.8");
        w.kernel.RemoveNeighbor(2, "192.0.2.7");
        w.kernel.SetLink(5, "wan0", true);
    });
    w.kernel.WhenFollowed([&] { w.kernel.SetLink(5, "wan0", false); });
    w.Run();
    EXPECT_EQ("RemovingNeighbor  interface 1 (lan0) neighbor 1  mac: 02:00:00:00:00:07 -> -, router: no -> -, "
              "addresses: 192.0.2.7 -> -\n"
              "AddingInfo  interface 2 (wan0)  up: - -> yes\n"
              "InterfaceWentDown  interface 2 (wan0)  up: yes -> no\n",
              w.Take());
    EXPECT_EQ(2u, w.messages);
    EXPECT_EQ(1u, w.kernel.restarts);
    EXPECT_EQ("ifcore: messages of the kernel were lost: everything was read again, 2 changes\n", w.warnings.str());
}

TEST(DiscoveredWatcher, WhateverHappensAndIsLostTheTableIsThatOfTheKernelInTheEnd)
{
    for (unsigned int seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const below = [&](unsigned int limit) { return static_cast<int>(random() % limit); };
        Watched w;
        std::set<int> links;
        auto const change = [&] {
            int const link = 1 + below(3);
            std::string const last = std::to_string(1 + below(5));
            std::string const address = (below(2) != 0 ? "192.0.2." : "2001:db8::") + last;
            std::string const mac = "02:00:00:00:00:0" + std::to_string(1 + below(3));
            if (below(8) == 0 && links.count(link) != 0) {
                w.kernel.RemoveLink(link);
                links.erase(link);
                return;
            }
            if (links.insert(link).second || below(4) == 0) w.kernel.SetLink(link, "l", below(2) != 0);
            switch (below(6)) {
            case 0: w.kernel.AddAddress(link, address, static_cast<unsigned char>(24 + below(2))); break;
            case 1: w.kernel.RemoveAddress(link, address, static_cast<unsigned char>(24 + below(2))); break;
            case 2: w.kernel.RemoveNeighbor(link, address); break;
            case 3: w.kernel.FailNeighbor(link, address); break;
            default: w.kernel.SetNeighbor(link, address, mac, below(3) == 0); break;
            }
        };
        auto const burst = [&] {
            for (int i = below(30); i > 0; --i) {
                if (below(20) == 0) w.kernel.LoseFromHereOn();
                change();
            }
        };
        burst();
        for (int i = 0; i < 10; ++i) w.kernel.WhenFollowed(burst);
        for (int i = 0; i < 5; ++i) w.kernel.AtNextDump(burst);
        w.Run();

        w.kernel.DropDumpActions();
        KernelSnapshot const last = ReadKernelSnapshot(w.kernel);
        EDiscoveredTable expected;
        KernelFollower(expected).Read(last);
        std::multiset<std::string> wanted;
        std::multiset<std::string> found;
        auto const collect = [](EDiscoveredTable const& table, std::multiset<std::string>& infos) {
            for (unsigned int id : InfoIds(table)) {
                EDiscoveredInfo info(*table.GetInfo(id));
                info.SetLocalId(1);
                EDiscoveredTable alone;
                alone.AddInfo(info);
                infos.insert(Content(alone));
            }
        };
        collect(expected, wanted);
        collect(w.watcher.GetTable(), found);
        EXPECT_EQ(wanted, found);
    }
}

TEST(DiscoveredWatcher, AFailingSourceAndAFailingOutputEndIt)
{
    class Refusing : public NetlinkEvents {
    public:
        int Receive(std::vector<char>&, std::size_t&) override { return EIO; }
        void Restart() override {}
    } refusing;
    FakeKernel kernel;
    DiscoveredWatcher watcher(kernel, refusing);
    std::ostringstream out;
    try {
        watcher.Run(out, out);
        FAIL();
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
        EXPECT_STREQ("following the kernel's changes: Input/output error", error.what());
    }
    out.setstate(std::ios::badbit);
    Watched w;
    EXPECT_THROW(w.watcher.Run(out, out), ToolError);
}
