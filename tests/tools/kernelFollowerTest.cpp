#include "kernelFollower.hpp"

#include "discoveredTracingHooks.hpp"
#include "kernelValues.hpp"

#include <gtest/gtest.h>

#include <sstream>

#include <arpa/inet.h>

using namespace ifcoreTool;

namespace {

KernelIP IP(char const* text)
{
    KernelIP address;
    address.isIPv6 = std::string(text).find(':') != std::string::npos;
    EXPECT_EQ(1, inet_pton(address.isIPv6 ? AF_INET6 : AF_INET, text, address.bytes.data())) << text;
    return address;
}

KernelLink Link(int index, char const* name, bool running = true)
{
    KernelLink link;
    link.index = index;
    link.name = name;
    link.up = true;
    link.running = running;
    return link;
}

KernelAddress Address(int link, char const* address, unsigned int prefix = 24, char const* peer = nullptr)
{
    return {link, IP(address), prefix, IP(peer ? peer : address)};
}

/// \p mac is the last byte of 02:00:00:00:00:00.
KernelNeighbor Neighbor(int link, char const* address, unsigned char mac, bool isRouter = false)
{
    return {link, IP(address), {2, 0, 0, 0, 0, mac}, isRouter};
}

/// A table that follows, and what its observer was told since the last question.
class Followed {
public:
    EDiscoveredTable table;
    KernelFollower follower{table};

    Followed()
    {
        table.hooks = MakeDiscoveredTracingHooks(
            [this](DiscoveredCall const& call) { PrintCall(m_out, call, follower.GetLinkName(call.interfaceId)); });
    }
    std::string Take()
    {
        std::string const text = m_out.str();
        m_out.str("");
        return text;
    }
    std::string After(KernelEvent const& event)
    {
        follower.Follow(event);
        return Take();
    }
    std::string After(KernelSnapshot const& snapshot, LinkRows const& rows = {})
    {
        follower.Read(snapshot, rows);
        return Take();
    }
    /// The id of the neighbour with an address on a link; 0 without one.
    unsigned int Found(unsigned int interfaceId, char const* address) const
    {
        EDiscoveredNeighbor const* found = table.GetInfo(interfaceId)->FindNeighborByIP(EIPAddress(address));
        return found ? found->GetLocalId() : 0;
    }

private:
    std::ostringstream m_out;
};

} // namespace

TEST(KernelFollower, ALinkIsAnInfoAsLongAsItIsThere)
{
    Followed f;
    EXPECT_EQ("AddingInfo  interface 1 (lan0)  up: - -> no\n", f.After(Link(7, "lan0", false)));
    EXPECT_EQ("", f.After(Link(7, "lan0", false)));
    EXPECT_EQ("InterfaceWentUp  interface 1 (lan0)  up: no -> yes\n", f.After(Link(7, "lan0")));
    EXPECT_EQ("", f.After(Link(7, "wan0"))); // renamed
    EXPECT_EQ("InterfaceWentDown  interface 1 (wan0)  up: yes -> no\n", f.After(Link(7, "wan0", false)));
    EXPECT_EQ("RemovingInfo  interface 1 (wan0)  up: no -> -\n", f.After(KernelLinkGone{7}));
    EXPECT_EQ("", f.After(KernelLinkGone{7}));
    EXPECT_EQ("", f.follower.GetLinkName(1));
}

TEST(KernelFollower, AnIndexThatIsUsedAgainIsAnotherInterface)
{
    Followed f;
    f.After(Link(7, "lan0"));
    f.After(Address(7, "192.0.2.1"));
    f.After(Neighbor(7, "192.0.2.7", 7));
    f.After(KernelLinkGone{7});
    EXPECT_EQ("AddingInfo  interface 2 (new)  up: - -> yes\n", f.After(Link(7, "new")));
    EXPECT_EQ("", f.After(KernelNeighborGone{7, IP("192.0.2.7")}));
    EXPECT_EQ("", f.After(KernelAddressGone{Address(7, "192.0.2.1")}));
    EXPECT_EQ("AddingNeighbor  interface 2 (new) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> no, "
              "addresses: - -> 192.0.2.7\n",
              f.After(Neighbor(7, "192.0.2.7", 7)));
}

TEST(KernelFollower, AnAddressGoesWithTheLastPrefixAndPeerThatItHas)
{
    Followed f;
    f.After(Link(1, "a"));
    EXPECT_EQ("AddingAddress  interface 1 (a)  address: - -> 192.0.2.1\n", f.After(Address(1, "192.0.2.1", 24)));
    EXPECT_EQ("", f.After(Address(1, "192.0.2.1", 24)));
    EXPECT_EQ("", f.After(Address(1, "192.0.2.1", 25)));
    EXPECT_EQ("", f.After(Address(1, "192.0.2.1", 32, "192.0.2.9")));
    EXPECT_EQ("AddingAddress  interface 1 (a)  address: - -> ::1\n", f.After(Address(1, "::1", 128)));
    EXPECT_EQ("", f.After(KernelAddressGone{Address(1, "192.0.2.1", 24)}));
    EXPECT_EQ("", f.After(KernelAddressGone{Address(1, "192.0.2.1", 24)}));
    EXPECT_EQ("", f.After(KernelAddressGone{Address(1, "192.0.2.1", 32, "192.0.2.9")}));
    EXPECT_EQ("RemovingAddress  interface 1 (a)  address: 192.0.2.1 -> -\n",
              f.After(KernelAddressGone{Address(1, "192.0.2.1", 25)}));
}

TEST(KernelFollower, TheAddressesWithOneMacAreOneNeighbor)
{
    Followed f;
    f.After(Link(1, "a"));
    f.After(Link(2, "b"));
    EXPECT_EQ("AddingNeighbor  interface 1 (a) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> no, "
              "addresses: - -> 192.0.2.7\n",
              f.After(Neighbor(1, "192.0.2.7", 7)));
    EXPECT_EQ("", f.After(Neighbor(1, "192.0.2.7", 7)));
    EXPECT_EQ("AddingNeighborAddress  interface 1 (a) neighbor 1  address: - -> fe80::7\n",
              f.After(Neighbor(1, "fe80::7", 7)));
    EXPECT_EQ("AddingNeighbor  interface 2 (b) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> no, "
              "addresses: - -> fe80::7\n",
              f.After(Neighbor(2, "fe80::7", 7))); // another link: another neighbour
    EXPECT_EQ("RemovingNeighborAddress  interface 1 (a) neighbor 1  address: 192.0.2.7 -> -\n",
              f.After(KernelNeighborGone{1, IP("192.0.2.7")}));
    EXPECT_EQ("", f.After(KernelNeighborGone{1, IP("192.0.2.7")}));
    EXPECT_EQ("RemovingNeighbor  interface 1 (a) neighbor 1  mac: 02:00:00:00:00:07 -> -, router: no -> -, "
              "addresses: fe80::7 -> -\n",
              f.After(KernelNeighborGone{1, IP("fe80::7")}));
    EXPECT_EQ(1u, f.Found(2, "fe80::7"));
}

TEST(KernelFollower, ANeighborIsARouterWhileOneOfItsAddressesIs)
{
    Followed f;
    f.After(Link(1, "a"));
    f.After(Neighbor(1, "fe80::7", 7));
    EXPECT_EQ("AddingNeighborAddress  interface 1 (a) neighbor 1  address: - -> fe80::8\n"
              "NeighborBecameRouter  interface 1 (a) neighbor 1  router: no -> yes\n",
              f.After(Neighbor(1, "fe80::8", 7, true)));
    EXPECT_EQ("", f.After(Neighbor(1, "fe80::7", 7, true)));
    EXPECT_EQ("", f.After(Neighbor(1, "fe80::7", 7, false)));
    EXPECT_EQ("RemovingNeighborAddress  interface 1 (a) neighbor 1  address: fe80::8 -> -\n"
              "NeighborBecameHost  interface 1 (a) neighbor 1  router: yes -> no\n",
              f.After(KernelNeighborGone{1, IP("fe80::8")}));
    EXPECT_EQ("NeighborBecameRouter  interface 1 (a) neighbor 1  router: no -> yes\n",
              f.After(Neighbor(1, "fe80::7", 7, true)));
}

TEST(KernelFollower, AnAddressThatMovesToAnotherMacIsFoundThere)
{
    Followed f;
    f.After(Link(1, "a"));
    f.After(Neighbor(1, "192.0.2.7", 7));
    f.After(Neighbor(1, "192.0.2.8", 8));
    EXPECT_EQ("RemovingNeighbor  interface 1 (a) neighbor 1  mac: 02:00:00:00:00:07 -> -, router: no -> -, "
              "addresses: 192.0.2.7 -> -\n"
              "AddingNeighborAddress  interface 1 (a) neighbor 2  address: - -> 192.0.2.7\n",
              f.After(Neighbor(1, "192.0.2.7", 8)));
    EXPECT_EQ(2u, f.Found(1, "192.0.2.7"));
    EXPECT_EQ("RemovingNeighborAddress  interface 1 (a) neighbor 2  address: 192.0.2.7 -> -\n"
              "AddingNeighbor  interface 1 (a) neighbor 3  mac: - -> 02:00:00:00:00:09, router: - -> no, "
              "addresses: - -> 192.0.2.7\n",
              f.After(Neighbor(1, "192.0.2.7", 9)));
    EXPECT_EQ(3u, f.Found(1, "192.0.2.7"));
    EXPECT_EQ(2u, f.Found(1, "192.0.2.8"));
    EXPECT_EQ(2u, f.table.GetDefaultMACNbrId()); // the lowest that is left
}

TEST(KernelFollower, EventsOfUnknownLinksArePassedOver)
{
    Followed f;
    EXPECT_EQ("", f.After(Address(9, "192.0.2.1")));
    EXPECT_EQ("", f.After(Neighbor(9, "192.0.2.7", 7)));
    EXPECT_EQ("", f.After(KernelAddressGone{Address(9, "192.0.2.1")}));
    EXPECT_EQ("", f.After(KernelNeighborGone{9, IP("192.0.2.7")}));
    EXPECT_EQ(0u, f.table.GetInfos().size());
}

TEST(KernelFollower, LinksOfAnImportHaveTheIdsOfTheirFirstRows)
{
    KernelSnapshot snapshot;
    snapshot.links = {Link(5, "a"), Link(3, "b"), Link(9, "c")};
    snapshot.addresses = {Address(5, "192.0.2.1"), Address(5, "192.0.2.2"), Address(5, "192.0.2.3"),
                          Address(9, "2001:db8::1")};
    EInterfaceTable imported;
    LinkRows const rows = ImportSnapshot(snapshot, imported);
    Followed f;
    EXPECT_EQ("AddingInfo  interface 1 (a)  up: - -> yes\n"
              "AddingAddress  interface 1 (a)  address: - -> 192.0.2.1\n"
              "AddingAddress  interface 1 (a)  address: - -> 192.0.2.2\n"
              "AddingAddress  interface 1 (a)  address: - -> 192.0.2.3\n"
              "AddingInfo  interface 4 (b)  up: - -> yes\n"
              "AddingInfo  interface 5 (c)  up: - -> yes\n"
              "AddingAddress  interface 5 (c)  address: - -> 2001:db8::1\n",
              f.After(snapshot, rows));
    EXPECT_EQ("AddingInfo  interface 6 (d)  up: - -> yes\n", f.After(Link(11, "d")));
    for (unsigned int id : {1u, 4u, 5u})
        EXPECT_EQ(f.follower.GetLinkName(id), imported.GetInterfaceItem(id)->GetName());
    EXPECT_EQ(nullptr, imported.GetInterfaceItem(6));
}

TEST(KernelFollower, ReadingAgainMakesTheDifferencesAlone)
{
    KernelSnapshot snapshot;
    snapshot.links = {Link(1, "a"), Link(2, "b")};
    snapshot.addresses = {Address(1, "192.0.2.1"), Address(1, "192.0.2.1", 25), Address(1, "192.0.2.2")};
    snapshot.neighbors = {Neighbor(1, "192.0.2.7", 7), Neighbor(1, "192.0.2.8", 7), Neighbor(1, "192.0.2.9", 9)};
    Followed f;
    f.After(snapshot);
    EXPECT_EQ("", f.After(snapshot));
    snapshot.links = {Link(1, "a", false), Link(3, "c")};
    snapshot.addresses = {Address(1, "192.0.2.1", 25), Address(1, "192.0.2.3")};
    snapshot.neighbors = {Neighbor(1, "192.0.2.7", 7), Neighbor(1, "192.0.2.9", 10), Neighbor(3, "192.0.2.7", 7)};
    EXPECT_EQ("RemovingInfo  interface 2 (b)  up: yes -> -\n"
              "InterfaceWentDown  interface 1 (a)  up: yes -> no\n"
              "RemovingAddress  interface 1 (a)  address: 192.0.2.2 -> -\n"
              "AddingAddress  interface 1 (a)  address: - -> 192.0.2.3\n"
              "RemovingNeighborAddress  interface 1 (a) neighbor 1  address: 192.0.2.8 -> -\n"
              "RemovingNeighbor  interface 1 (a) neighbor 2  mac: 02:00:00:00:00:09 -> -, router: no -> -, "
              "addresses: 192.0.2.9 -> -\n"
              "AddingNeighbor  interface 1 (a) neighbor 3  mac: - -> 02:00:00:00:00:0a, router: - -> no, "
              "addresses: - -> 192.0.2.9\n"
              "AddingInfo  interface 3 (c)  up: - -> yes\n"
              "AddingNeighbor  interface 3 (c) neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> no, "
              "addresses: - -> 192.0.2.7\n",
              f.After(snapshot));
}

TEST(KernelFollower, OfANeighborThatIsToldTwiceTheLaterCounts)
{
    KernelSnapshot snapshot;
    snapshot.links = {Link(1, "a")};
    snapshot.neighbors = {Neighbor(1, "192.0.2.7", 7), Neighbor(1, "192.0.2.8", 8), Neighbor(1, "192.0.2.7", 9)};
    Followed f;
    EXPECT_EQ("AddingInfo  interface 1 (a)  up: - -> yes\n"
              "AddingNeighbor  interface 1 (a) neighbor 1  mac: - -> 02:00:00:00:00:09, router: - -> no, "
              "addresses: - -> 192.0.2.7\n"
              "AddingNeighbor  interface 1 (a) neighbor 2  mac: - -> 02:00:00:00:00:08, router: - -> no, "
              "addresses: - -> 192.0.2.8\n",
              f.After(snapshot));
}
