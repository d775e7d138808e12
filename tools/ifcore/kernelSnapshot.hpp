#pragma once

#include <array>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace ifcoreTool {

/// An address as the kernel sends it, in network byte order; the first 4 bytes for IPv4, the rest zero.
struct KernelIP {
    bool isIPv6 = false;
    std::array<unsigned char, 16> bytes{};

    bool IsZero() const { return bytes == std::array<unsigned char, 16>{}; }
    unsigned int GetSize() const { return isIPv6 ? 16 : 4; }
    bool operator==(KernelIP const& other) const { return isIPv6 == other.isIPv6 && bytes == other.bytes; }
    bool operator<(KernelIP const& other) const { return isIPv6 != other.isIPv6 ? !isIPv6 : bytes < other.bytes; }
};

/// The tag that a VLAN link adds to what leaves through its lower link.
struct KernelVlan {
    unsigned short id = 0;            ///< 0 to 4095.
    unsigned short protocol = 0x8100; ///< Ethertype of the tag: 0x8100 IEEE 802.1Q, 0x88a8 IEEE 802.1ad.
};

/// Settings of the link kinds gre, gretap, ip6gre and ip6gretap.
struct KernelGre {
    static constexpr unsigned short kChecksum = 0x8000; ///< RFC 2784, bit 0.
    static constexpr unsigned short kKey = 0x2000;      ///< RFC 2890, bit 2.
    static constexpr unsigned short kSequence = 0x1000; ///< RFC 2890, bit 3.

    KernelIP local;
    KernelIP remote;
    unsigned int inKey = 0;
    unsigned int outKey = 0;
    unsigned short inFlags = 0;
    unsigned short outFlags = 0;

    /// The kernel has a switch a direction, a table row has one for both: on when either is.
    bool Uses(unsigned short flag) const { return ((inFlags | outFlags) & flag) != 0; }
};

struct KernelLink {
    int index = 0;
    std::string name;
    std::string kind;                           ///< "vlan", "gre", "veth" ...; empty for hardware and the loopback.
    unsigned short hardwareType = 0;            ///< ARPHRD_...
    std::vector<unsigned char> hardwareAddress; ///< 6 bytes for Ethernet, other sizes for other hardware.
    unsigned int mtu = 0;                       ///< Bytes.
    bool up = false;                            ///< IFF_UP: switched on, whether or not there is a carrier.
    bool running = false;                       ///< IFF_RUNNING: operationally up (RFC 2863), able to pass packets.
    std::optional<int> lowerIndex;              ///< Link below (of a veth: its peer); empty in another namespace.
    std::optional<KernelVlan> vlan;
    std::optional<KernelGre> gre;
};

struct KernelAddress {
    int linkIndex = 0;
    KernelIP address;
    unsigned int prefixLength = 0; ///< Bits.
    KernelIP peer{};               ///< The other end's on a point-to-point link, else the address itself.
};

using KernelMac = std::array<unsigned char, 6>;

/// What the kernel keeps for one address of a link's neighbours, in a state in which packets are sent to it.
struct KernelNeighbor {
    int linkIndex = 0;
    KernelIP address;
    KernelMac mac{};
    bool isRouter = false; ///< NTF_ROUTER: it advertises itself as a router (RFC 4861); known for IPv6 alone.
};

/// One next hop of a default route of the main routing table.
struct KernelGateway {
    int linkIndex = 0;
    KernelIP gateway;
    unsigned int metric = 0; ///< The lowest one counts.
};

/// What the kernel said about one network namespace, in the order in which it said it.
struct KernelSnapshot {
    std::vector<KernelLink> links;
    std::vector<KernelAddress> addresses;
    std::vector<KernelGateway> gateways;
    std::vector<KernelNeighbor> neighbors; ///< Of an address that is there twice the later one counts.
};

struct KernelLinkGone {
    int linkIndex = 0;
};
struct KernelAddressGone {
    KernelAddress address;
};
/// Also a neighbour to which no packets are sent for now.
struct KernelNeighborGone {
    int linkIndex = 0;
    KernelIP address;
};

/// One change, as the kernel tells it: what is now, new or not, or what is no more.
using KernelEvent =
    std::variant<KernelLink, KernelLinkGone, KernelAddress, KernelAddressGone, KernelNeighbor, KernelNeighborGone>;

} // namespace ifcoreTool
