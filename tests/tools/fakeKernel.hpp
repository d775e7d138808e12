#pragma once

#include "netlinkEvents.hpp"
#include "netlinkReader.hpp"

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace toolTest {

/// A kernel with links, addresses and neighbours, which answers dumps and tells its changes as datagrams in the
/// kernel's own layout. Texts are addresses as people write them.
class FakeKernel : public ifcoreTool::NetlinkSource, public ifcoreTool::NetlinkEvents {
public:
    // Each changes what a dump tells, and queues the event.
    void SetLink(int index, std::string const& name, bool running);
    void RemoveLink(int index); ///< With all that belongs to it, of which it tells nothing.
    void AddAddress(int link, std::string const& address, unsigned char prefix = 24);
    void RemoveAddress(int link, std::string const& address, unsigned char prefix = 24);
    void SetNeighbor(int link, std::string const& address, std::string const& mac, bool isRouter = false);
    void FailNeighbor(int link, std::string const& address); ///< Still there, but nobody answers.
    void RemoveNeighbor(int link, std::string const& address);

    void LoseFromHereOn() { m_isLosing = true; } ///< Events are lost until the receiver hears of it.
    /// Runs when a dump of links is asked for the next time, before it is answered.
    void AtNextDump(std::function<void()> action) { m_atDump.push_back(std::move(action)); }
    void DropDumpActions() { m_atDump.clear(); }
    /// Runs when all events so far have been received.
    void WhenFollowed(std::function<void()> action) { m_whenFollowed.push_back(std::move(action)); }

    unsigned int restarts = 0;

    int Request(unsigned short type, unsigned char family, unsigned int sequence) override;
    /// The answers to a dump come first; the end is asked for when nothing is left.
    int Receive(std::vector<char>& buffer, std::size_t& size) override;
    void Restart() override;

private:
    using Bytes = std::string;
    struct Link {
        std::string name;
        bool running = false;
        std::set<std::pair<std::string, unsigned char>> addresses;
        std::map<std::string, std::pair<std::string, bool>> neighbors; // by address: MAC, router
    };
    void Tell(Bytes const& message);

    std::map<int, Link> m_links;
    std::deque<Bytes> m_answers;
    std::deque<Bytes> m_events;
    std::deque<std::function<void()>> m_atDump;
    std::deque<std::function<void()>> m_whenFollowed;
    bool m_isLosing = false;
    bool m_hasLost = false;
};

} // namespace toolTest
