#pragma once

#include <ifcore/ifcore.hpp>

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

/// The records of an interface table as plain structs: what a program has that leaves its archives to a library. What
/// is looked up by an id stands in a map and stays where it is, data that only some interfaces have is owned. Every
/// record names its fields once, in Tie().
namespace plain {

struct Address {
    std::uint32_t family = 17;
    std::array<std::uint8_t, 16> bytes = {};
    auto Tie() { return std::tie(family, bytes); }
};

struct Option {
    std::uint8_t type = 0;
    std::vector<std::uint8_t> value;
    auto Tie() { return std::tie(type, value); }
};

struct Ethernet {
    std::array<std::uint8_t, 6> mac = {};
    bool vlansEnabled = false;
    std::vector<std::uint16_t> vlanTags;
    std::uint32_t mtu = 1500;
    bool uidFromMac = true;
    auto Tie() { return std::tie(mac, vlansEnabled, vlanTags, mtu, uidFromMac); }
};

struct IPv4Item {
    bool enabled = false;
    Address address;
    Address gateway;
    std::uint32_t maskLength = 24;
    std::uint32_t mss = 0;
    auto Tie() { return std::tie(enabled, address, gateway, maskLength, mss); }
};

struct IPv6Item {
    std::uint32_t localId = 0;
    std::uint32_t maskLength = 64;
    Address address;
    auto Tie() { return std::tie(localId, maskLength, address); }
};

struct Dhcp {
    std::string clientId;
    Address serverId;
    std::string vendorId;
    std::uint32_t releaseTimer = 0;
    std::vector<Option> options;
    Address relayAgent;
    Address relayDestination;
    std::uint32_t retryCount = 4;
    auto Tie()
    {
        return std::tie(clientId, serverId, vendorId, releaseTimer, options, relayAgent, relayDestination, retryCount);
    }
};

struct Dhcpv6 {
    std::uint32_t iaId = 0;
    std::uint32_t iaType = 0;
    std::uint32_t renewTime = 0;
    std::vector<Option> options;
    Address relayLinkAddress;
    Address relayDestination;
    auto Tie() { return std::tie(iaId, iaType, renewTime, options, relayLinkAddress, relayDestination); }
};

struct NsRegOption {
    std::uint16_t options = 0;
    std::string rspnIdName;
    std::string rsnnNnName;
    std::string extraName;
    auto Tie() { return std::tie(options, rspnIdName, rsnnNnName, extraName); }
};

struct PlogiDestination {
    bool enabled = false;
    std::int32_t mode = 0;
    std::uint32_t nodeId = 0;
    std::uint64_t wwpn = 0;
    auto Tie() { return std::tie(enabled, mode, nodeId, wwpn); }
};

struct NsQuery {
    bool flag = false;
    std::int32_t command = 0;
    std::int32_t requestObject = 0;
    std::string requestObjectValue;
    auto Tie() { return std::tie(flag, command, requestObject, requestObjectValue); }
};

struct FCoE {
    std::uint64_t srcPortWwn = 0;
    std::uint64_t srcNodeWwn = 0;
    std::uint32_t b2bRxSize = 0;
    bool scrEnabled = false;
    bool nsRegistrationEnabled = false;
    bool plogiEnabled = false;
    std::uint32_t destNodeId = 0;
    std::uint32_t srcOui = 0;
    std::uint32_t fipWord = 0;
    bool vlanDiscoveryEnabled = false;
    bool vlanDiscoveryUntagged = false;
    std::uint32_t keepAliveWord = 0;
    std::uint16_t maxFCoESize = 0;
    std::uint32_t addressMode = 0;
    std::uint64_t vendorId = 0;
    std::vector<Option> vendorSpecific;
    NsRegOption nsRegOption;
    std::vector<PlogiDestination> plogiDestinations;
    bool prliEnabled = false;
    bool autoPlogiEnabled = false;
    bool nsQueryEnabled = false;
    NsQuery nsQuery;
    std::uint32_t scrOption = 0;
    std::uint32_t edit24 = 0;
    auto Tie()
    {
        return std::tie(srcPortWwn, srcNodeWwn, b2bRxSize, scrEnabled, nsRegistrationEnabled, plogiEnabled, destNodeId,
                        srcOui, fipWord, vlanDiscoveryEnabled, vlanDiscoveryUntagged, keepAliveWord, maxFCoESize,
                        addressMode, vendorId, vendorSpecific, nsRegOption, plogiDestinations, prliEnabled,
                        autoPlogiEnabled, nsQueryEnabled, nsQuery, scrOption, edit24);
    }
};

struct Interface {
    std::uint32_t localId = 0;
    std::string name;
    std::int32_t type = 0;
    bool enabled = false;
    std::uint64_t euid = 0;
    std::unique_ptr<Ethernet> ethernet;
    IPv4Item ipv4;
    std::uint32_t nextIPv6Id = 1;
    std::map<std::uint32_t, IPv6Item> ipv6;
    bool dhcpEnabled = false;
    Dhcp dhcp;
    bool dhcpv6Enabled = false;
    Dhcpv6 dhcpv6;
    std::uint32_t vcatCircuitId = 0;
    Address ipv6Gateway;
    bool fcoeEnabled = false;
    FCoE fcoe;
    bool ptpEnabled = false;
    bool dcbxEnabled = false;
    bool lldpEnabled = false;
    auto Tie()
    {
        return std::tie(localId, name, type, enabled, euid, ethernet, ipv4, nextIPv6Id, ipv6, dhcpEnabled, dhcp,
                        dhcpv6Enabled, dhcpv6, vcatCircuitId, ipv6Gateway, fcoeEnabled, fcoe, ptpEnabled, dcbxEnabled,
                        lldpEnabled);
    }
};

/// The settings of a port stand in one record, so that reading and writing a table is reading and writing this.
struct Table {
    std::array<std::uint32_t, 10> numbers = {}; // port id, VPI mask mode, rates and counts
    std::int16_t fipVersion = 0;
    std::array<bool, 6> switches = {};
    std::uint32_t nextId = 1;
    std::map<std::uint32_t, Interface> interfaces;
    auto Tie() { return std::tie(numbers, fipVersion, switches, nextId, interfaces); }
};

/// The same values as in the table.
Table PlainTable(EInterfaceTable const& table);

} // namespace plain
