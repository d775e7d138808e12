#include "netlinkMessages.hpp"

#include "toolError.hpp"

#include <libmnl/libmnl.h>

#include <algorithm>
#include <cstring>
#include <map>

#include <arpa/inet.h>
#include <linux/if.h>
#include <linux/if_link.h>
#include <linux/if_tunnel.h>
#include <linux/neighbour.h>
#include <linux/rtnetlink.h>

namespace ifcoreTool {

namespace {

/// Attributes of one level by type; the last of a type counts.
using Attributes = std::map<unsigned int, nlattr const*>;

ToolError Contradiction(char const* what)
{
    return ToolError(ExitCode::systemRefused, std::string("the kernel sent a message with a bad ") + what);
}

/// Attributes in the \p size bytes at \p begin.
Attributes CollectAttributes(void const* begin, std::size_t size, char const* what)
{
    Attributes found;
    auto const* bytes = static_cast<char const*>(begin);
    while (size >= sizeof(nlattr)) {
        auto const* attribute = reinterpret_cast<nlattr const*>(bytes);
        if (!mnl_attr_ok(attribute, static_cast<int>(size))) throw Contradiction(what);
        found[mnl_attr_get_type(attribute)] = attribute;
        std::size_t const step = std::min<std::size_t>(MNL_ALIGN(attribute->nla_len), size);
        bytes += step;
        size -= step;
    }
    return found;
}

Attributes CollectNested(nlattr const& parent, char const* what)
{
    return CollectAttributes(mnl_attr_get_payload(&parent), mnl_attr_get_payload_len(&parent), what);
}

nlattr const* Find(Attributes const& attributes, unsigned int type)
{
    auto const found = attributes.find(type);
    return found == attributes.end() ? nullptr : found->second;
}

/// Value of exactly this size, in the byte order in which the kernel keeps it.
template <class Value> Value Read(nlattr const& attribute, char const* what)
{
    if (mnl_attr_get_payload_len(&attribute) != sizeof(Value)) throw Contradiction(what);
    Value value;
    std::memcpy(&value, mnl_attr_get_payload(&attribute), sizeof value);
    return value;
}

std::string ReadText(nlattr const& attribute)
{
    auto const* text = static_cast<char const*>(mnl_attr_get_payload(&attribute));
    return std::string(text, strnlen(text, mnl_attr_get_payload_len(&attribute)));
}

KernelIP ReadIP(nlattr const& attribute, bool isIPv6, char const* what)
{
    KernelIP address;
    address.isIPv6 = isIPv6;
    if (mnl_attr_get_payload_len(&attribute) != address.GetSize()) throw Contradiction(what);
    std::memcpy(address.bytes.data(), mnl_attr_get_payload(&attribute), address.GetSize());
    return address;
}

template <class Header> Header const& PayloadHeader(nlmsghdr const& message, char const* what)
{
    if (mnl_nlmsg_get_payload_len(&message) < sizeof(Header)) throw Contradiction(what);
    return *static_cast<Header const*>(mnl_nlmsg_get_payload(&message));
}

template <class Header> Attributes MessageAttributes(nlmsghdr const& message, char const* what)
{
    std::size_t const header = MNL_ALIGN(sizeof(Header));
    std::size_t const payload = mnl_nlmsg_get_payload_len(&message);
    if (payload <= header) return {};
    return CollectAttributes(static_cast<char const*>(mnl_nlmsg_get_payload(&message)) + header, payload - header,
                             what);
}

KernelVlan ReadVlan(Attributes const& data)
{
    KernelVlan vlan;
    if (nlattr const* id = Find(data, IFLA_VLAN_ID)) vlan.id = Read<unsigned short>(*id, "VLAN id");
    if (nlattr const* protocol = Find(data, IFLA_VLAN_PROTOCOL))
        vlan.protocol = ntohs(Read<unsigned short>(*protocol, "VLAN protocol"));
    return vlan;
}

KernelGre ReadGre(Attributes const& data, bool overIPv6)
{
    KernelGre gre;
    gre.local.isIPv6 = gre.remote.isIPv6 = overIPv6;
    if (nlattr const* local = Find(data, IFLA_GRE_LOCAL)) gre.local = ReadIP(*local, overIPv6, "GRE local address");
    if (nlattr const* remote = Find(data, IFLA_GRE_REMOTE))
        gre.remote = ReadIP(*remote, overIPv6, "GRE remote address");
    if (nlattr const* key = Find(data, IFLA_GRE_IKEY)) gre.inKey = ntohl(Read<unsigned int>(*key, "GRE key"));
    if (nlattr const* key = Find(data, IFLA_GRE_OKEY)) gre.outKey = ntohl(Read<unsigned int>(*key, "GRE key"));
    if (nlattr const* flags = Find(data, IFLA_GRE_IFLAGS))
        gre.inFlags = ntohs(Read<unsigned short>(*flags, "GRE flag word"));
    if (nlattr const* flags = Find(data, IFLA_GRE_OFLAGS))
        gre.outFlags = ntohs(Read<unsigned short>(*flags, "GRE flag word"));
    return gre;
}

void ReadLinkInfo(nlattr const& info, KernelLink& link)
{
    Attributes const attributes = CollectNested(info, "link kind");
    nlattr const* kind = Find(attributes, IFLA_INFO_KIND);
    if (!kind) return;
    link.kind = ReadText(*kind);
    nlattr const* nested = Find(attributes, IFLA_INFO_DATA);
    Attributes const data = nested ? CollectNested(*nested, "link data") : Attributes{};
    if (link.kind == "vlan") link.vlan = ReadVlan(data);
    if (link.kind == "gre" || link.kind == "gretap") link.gre = ReadGre(data, false);
    if (link.kind == "ip6gre" || link.kind == "ip6gretap") link.gre = ReadGre(data, true);
}

/// False for a bridge's messages about its ports, which are no links of their own.
bool IsLinkItself(ifinfomsg const& header)
{
    return header.ifi_family == AF_UNSPEC;
}

std::optional<KernelLink> ReadLink(nlmsghdr const& message)
{
    auto const& header = PayloadHeader<ifinfomsg>(message, "link header");
    if (!IsLinkItself(header)) return std::nullopt;
    Attributes const attributes = MessageAttributes<ifinfomsg>(message, "link attribute");
    KernelLink link;
    link.index = header.ifi_index;
    link.hardwareType = header.ifi_type;
    link.up = (header.ifi_flags & IFF_UP) != 0;
    link.running = link.up && (header.ifi_flags & IFF_RUNNING) != 0;
    nlattr const* name = Find(attributes, IFLA_IFNAME);
    if (!name) throw Contradiction("link: it has no name");
    link.name = ReadText(*name);
    if (nlattr const* address = Find(attributes, IFLA_ADDRESS)) {
        auto const* bytes = static_cast<unsigned char const*>(mnl_attr_get_payload(address));
        link.hardwareAddress.assign(bytes, bytes + mnl_attr_get_payload_len(address));
    }
    if (nlattr const* mtu = Find(attributes, IFLA_MTU)) link.mtu = Read<unsigned int>(*mtu, "MTU");
    nlattr const* lower = Find(attributes, IFLA_LINK);
    // The index of a link in another namespace may be that of an unrelated link in this one.
    if (lower && !Find(attributes, IFLA_LINK_NETNSID)) {
        int const index = Read<int>(*lower, "lower link");
        if (index != 0 && index != link.index) link.lowerIndex = index;
    }
    if (nlattr const* info = Find(attributes, IFLA_LINKINFO)) ReadLinkInfo(*info, link);
    return link;
}

std::optional<KernelAddress> ReadAddress(nlmsghdr const& message)
{
    auto const& header = PayloadHeader<ifaddrmsg>(message, "address header");
    bool const isIPv6 = header.ifa_family == AF_INET6;
    if (!isIPv6 && header.ifa_family != AF_INET) return std::nullopt;
    Attributes const attributes = MessageAttributes<ifaddrmsg>(message, "address attribute");
    // On a point-to-point link IFA_ADDRESS is the other end's address.
    nlattr const* peer = Find(attributes, IFA_ADDRESS);
    nlattr const* own = Find(attributes, IFA_LOCAL);
    if (!own) own = peer;
    if (!own) throw Contradiction("address: it has no value");
    KernelAddress address;
    address.linkIndex = static_cast<int>(header.ifa_index);
    address.prefixLength = header.ifa_prefixlen;
    address.address = ReadIP(*own, isIPv6, "address");
    address.peer = peer ? ReadIP(*peer, isIPv6, "address") : address.address;
    return address;
}

/// The states in which packets are sent to the neighbour's own address. NUD_NOARP, of addresses that are mapped or need
/// none, is not among them: nobody has been heard there.
constexpr unsigned int kUsableStates = NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT;

struct NeighborEntry {
    KernelNeighbor neighbor;
    bool isUsable = false;
};

/// None for bridge entries, for addresses that this machine only answers for, and for entries without an address.
std::optional<NeighborEntry> ReadNeighbor(nlmsghdr const& message)
{
    auto const& header = PayloadHeader<ndmsg>(message, "neighbour header");
    bool const isIPv6 = header.ndm_family == AF_INET6;
    if (!isIPv6 && header.ndm_family != AF_INET) return std::nullopt;
    if ((header.ndm_flags & NTF_PROXY) != 0) return std::nullopt;
    Attributes const attributes = MessageAttributes<ndmsg>(message, "neighbour attribute");
    nlattr const* address = Find(attributes, NDA_DST);
    if (!address) return std::nullopt;
    NeighborEntry entry;
    entry.neighbor.linkIndex = header.ndm_ifindex;
    entry.neighbor.address = ReadIP(*address, isIPv6, "neighbour address");
    entry.neighbor.isRouter = (header.ndm_flags & NTF_ROUTER) != 0;
    nlattr const* mac = Find(attributes, NDA_LLADDR);
    if (!mac || mnl_attr_get_payload_len(mac) != entry.neighbor.mac.size()) return entry;
    std::memcpy(entry.neighbor.mac.data(), mnl_attr_get_payload(mac), entry.neighbor.mac.size());
    entry.isUsable = (header.ndm_state & kUsableStates) != 0;
    return entry;
}

/// Next hop of a route of \p isIPv6; an IPv4 route through an IPv6 neighbour (RTA_VIA) has no gateway of its own kind.
void AddGateway(Attributes const& attributes, int linkIndex, bool isIPv6, unsigned int metric, KernelSnapshot& snapshot)
{
    nlattr const* gateway = Find(attributes, RTA_GATEWAY);
    if (!gateway || linkIndex == 0) return;
    snapshot.gateways.push_back({linkIndex, ReadIP(*gateway, isIPv6, "gateway"), metric});
}

void AddMultipath(nlattr const& hops, bool isIPv6, unsigned int metric, KernelSnapshot& snapshot)
{
    auto const* bytes = static_cast<char const*>(mnl_attr_get_payload(&hops));
    std::size_t size = mnl_attr_get_payload_len(&hops);
    while (size >= sizeof(rtnexthop)) {
        auto const* hop = reinterpret_cast<rtnexthop const*>(bytes);
        if (hop->rtnh_len < sizeof(rtnexthop) || hop->rtnh_len > size) throw Contradiction("next hop");
        Attributes const attributes =
            CollectAttributes(bytes + sizeof(rtnexthop), hop->rtnh_len - sizeof(rtnexthop), "next hop attribute");
        AddGateway(attributes, hop->rtnh_ifindex, isIPv6, metric, snapshot);
        std::size_t const step = std::min<std::size_t>(MNL_ALIGN(hop->rtnh_len), size);
        bytes += step;
        size -= step;
    }
}

void ParseRoute(nlmsghdr const& message, KernelSnapshot& snapshot)
{
    auto const& header = PayloadHeader<rtmsg>(message, "route header");
    bool const isIPv6 = header.rtm_family == AF_INET6;
    if (!isIPv6 && header.rtm_family != AF_INET) return;
    if (header.rtm_dst_len != 0 || header.rtm_type != RTN_UNICAST || (header.rtm_flags & RTM_F_CLONED) != 0) return;
    Attributes const attributes = MessageAttributes<rtmsg>(message, "route attribute");
    unsigned int table = header.rtm_table;
    if (nlattr const* attribute = Find(attributes, RTA_TABLE)) table = Read<unsigned int>(*attribute, "route table");
    if (table != RT_TABLE_MAIN) return;
    unsigned int metric = 0;
    if (nlattr const* attribute = Find(attributes, RTA_PRIORITY)) metric = Read<unsigned int>(*attribute, "metric");
    int linkIndex = 0;
    if (nlattr const* attribute = Find(attributes, RTA_OIF)) linkIndex = Read<int>(*attribute, "route link");
    AddGateway(attributes, linkIndex, isIPv6, metric, snapshot);
    if (nlattr const* hops = Find(attributes, RTA_MULTIPATH)) AddMultipath(*hops, isIPv6, metric, snapshot);
}

} // namespace

template <class Value> static void Append(std::vector<Value>& values, std::optional<Value> value)
{
    if (value) values.push_back(std::move(*value));
}

bool IsWhole(nlmsghdr const* message, int remaining)
{
    return mnl_nlmsg_ok(message, remaining) && message->nlmsg_len <= static_cast<unsigned int>(remaining);
}

void ParseNetlinkMessage(nlmsghdr const& message, KernelSnapshot& snapshot)
{
    switch (message.nlmsg_type) {
    case RTM_NEWLINK: Append(snapshot.links, ReadLink(message)); break;
    case RTM_NEWADDR: Append(snapshot.addresses, ReadAddress(message)); break;
    case RTM_NEWNEIGH:
        if (auto const entry = ReadNeighbor(message); entry && entry->isUsable)
            snapshot.neighbors.push_back(entry->neighbor);
        break;
    case RTM_NEWROUTE: ParseRoute(message, snapshot); break;
    default: break;
    }
}

static std::optional<KernelEvent> LinkGone(nlmsghdr const& message)
{
    auto const& header = PayloadHeader<ifinfomsg>(message, "link header");
    if (!IsLinkItself(header)) return std::nullopt; // a port that left its bridge
    return KernelLinkGone{header.ifi_index};
}

static std::optional<KernelEvent> AddressEvent(nlmsghdr const& message)
{
    std::optional<KernelAddress> const address = ReadAddress(message);
    if (!address) return std::nullopt;
    if (message.nlmsg_type == RTM_DELADDR) return KernelAddressGone{*address};
    return *address;
}

static std::optional<KernelEvent> NeighborEvent(nlmsghdr const& message)
{
    std::optional<NeighborEntry> const entry = ReadNeighbor(message);
    if (!entry) return std::nullopt;
    KernelNeighbor const& neighbor = entry->neighbor;
    if (message.nlmsg_type == RTM_DELNEIGH || !entry->isUsable)
        return KernelNeighborGone{neighbor.linkIndex, neighbor.address};
    return neighbor;
}

std::optional<KernelEvent> ParseNetlinkEvent(nlmsghdr const& message)
{
    switch (message.nlmsg_type) {
    case RTM_NEWLINK: return ReadLink(message);
    case RTM_DELLINK: return LinkGone(message);
    case RTM_NEWADDR:
    case RTM_DELADDR: return AddressEvent(message);
    case RTM_NEWNEIGH:
    case RTM_DELNEIGH: return NeighborEvent(message);
    default: return std::nullopt;
    }
}

} // namespace ifcoreTool
