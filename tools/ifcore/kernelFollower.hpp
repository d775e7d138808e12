#pragma once

#include "kernelSnapshot.hpp"
#include "tableImporter.hpp"

#include "ifcore/ifcore.hpp"

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace ifcoreTool {

/// Keeps a discovered table as the kernel tells it, by the smallest changes, so that an observer of the table hears of
/// each. A link is an info, up while the link is operationally up, with the link's addresses in the order of adding.
/// The addresses with one MAC on one link are one neighbour, which is a router while the kernel says so of any of them.
/// Events of links that are not known are passed over.
class KernelFollower {
public:
    /// \p table is empty, lives longer, and is changed by nobody else.
    explicit KernelFollower(EDiscoveredTable& table) : m_table(table) {}

    /// All that there is: what is in the table and not in \p snapshot goes. A link that is new gets the id of its first
    /// row in \p rows, or the next id that no link had yet. A link is the one that had its index before.
    void Read(KernelSnapshot const& snapshot, LinkRows const& rows = LinkRows());
    void Follow(KernelEvent const& event);

    /// The name of the link with this interface id, as last told; also of one that the last call removed. Empty for an
    /// unknown one.
    std::string GetLinkName(unsigned int interfaceId) const;

private:
    /// A link may have one address several times, with other prefixes or other ends.
    using AddressKey = std::tuple<KernelIP, unsigned int, KernelIP>;
    static AddressKey KeyOf(KernelAddress const& address)
    {
        return {address.address, address.prefixLength, address.peer};
    }
    struct Entry {
        KernelMac mac{};
        bool isRouter = false;
    };
    /// What the entries with one MAC have in common.
    struct Neighbor {
        unsigned int id = 0;
        std::size_t addresses = 0;
        std::size_t routers = 0; // of the addresses
    };
    struct Link {
        unsigned int id = 0;
        std::set<AddressKey> addresses;
        std::map<KernelIP, Entry> entries;
        std::map<KernelMac, Neighbor> neighbors;
    };

    void On(KernelLink const& link) { SetLink(link, LinkRows()); }
    void On(KernelLinkGone const& event);
    void On(KernelAddress const& address);
    void On(KernelAddressGone const& event);
    void On(KernelNeighbor const& neighbor);
    void On(KernelNeighborGone const& event);

    Link* Find(int linkIndex);
    void SetLink(KernelLink const& link, LinkRows const& rows);
    void RemoveLinksBut(std::vector<KernelLink> const& links);
    void ReadAddresses(Link& link, std::vector<KernelAddress const*> const& addresses);
    void ReadNeighbors(Link& link, std::vector<KernelNeighbor const*> const& neighbors);
    void AddAddress(Link& link, KernelAddress const& address);
    void RemoveAddress(Link& link, AddressKey const& key);
    void SetEntry(Link& link, KernelIP const& address, Entry const& entry);
    void AddEntry(Link& link, KernelIP const& address, Entry const& entry);
    void RemoveEntry(Link& link, KernelIP const& address);
    void SetIsRouter(Link const& link, Neighbor const& neighbor);
    void ForgetNames();

    EDiscoveredTable& m_table;                             // not owned
    std::map<int, Link> m_links;                           // by index
    std::unordered_map<unsigned int, std::string> m_names; // by interface id
    std::vector<unsigned int> m_gone;                      // interface ids whose names are not needed much longer
    EUniqueIDGenerator m_ids;
};

} // namespace ifcoreTool
