#include "plainRecords.hpp"

#include <cstring>

namespace plain {

static Address Of(EIPAddress const& address)
{
    Address plain;
    plain.family = address.GetFamily();
    std::memcpy(plain.bytes.data(), address.GetBytes(), plain.bytes.size());
    return plain;
}

template <class Options> static std::vector<Option> OptionsOf(Options const& options)
{
    std::vector<Option> plain;
    for (EDHCPTLV const& option : options) {
        unsigned char const* const bytes = option.GetValue().GetData();
        plain.push_back({option.GetType(), {bytes, bytes + option.GetValue().GetSize()}});
    }
    return plain;
}

static Ethernet EthernetOf(EInterfaceItem const& item)
{
    Ethernet plain;
    EBlob const mac = item.GetMacAddress().GetMACAddress();
    std::memcpy(plain.mac.data(), mac.GetData(), plain.mac.size());
    EVLANIPAddressTableItemProperties const& vlans = item.GetVLANItem();
    plain.vlansEnabled = vlans.IsEnabled();
    for (unsigned int level = 0; level < vlans.GetVLANCount(); ++level)
        plain.vlanTags.push_back(static_cast<std::uint16_t>(vlans.GetVlanTag(level)));
    plain.mtu = item.GetMTU();
    plain.uidFromMac = !item.OverrideAutogenEuid();
    return plain;
}

static IPv4Item Of(EIPv4AddressItem const& item)
{
    return {item.IsEnabled(), Of(item.GetAddress()), Of(item.GetGateway()), item.GetMaskLength(), item.GetMSS()};
}

static Dhcp Of(EDHCPProperties const& dhcp)
{
    return {dhcp.GetDHCPClientId(),
            Of(dhcp.GetDHCPServerId()),
            dhcp.GetDHCPVendorId(),
            dhcp.GetReleaseTimer(),
            OptionsOf(dhcp.GetDHCPCustomTLVs()),
            Of(dhcp.GetDHCPRelayAgentIP()),
            Of(dhcp.GetDHCPRelayDestination()),
            dhcp.GetRetryCount()};
}

static Dhcpv6 Of(EDHCPv6Properties const& dhcp)
{
    return {dhcp.GetIAId(),
            static_cast<std::uint32_t>(dhcp.GetIAType()),
            dhcp.GetRenewTime(),
            OptionsOf(dhcp.GetDHCPv6CustomTLVs()),
            Of(dhcp.GetDHCPv6RelayLinkAddress()),
            Of(dhcp.GetDHCPv6RelayDestination())};
}

static FCoE Of(EFCoEConfig const& fcoe)
{
    FCoE plain;
    plain.srcPortWwn = fcoe.GetSrcPortWWN().GetAsUint64();
    plain.srcNodeWwn = fcoe.GetSrcNodeWWN().GetAsUint64();
    plain.b2bRxSize = fcoe.GetB2BRxSize();
    plain.scrEnabled = fcoe.IsSCREnabled();
    plain.nsRegistrationEnabled = fcoe.IsNSRegistrationEnabled();
    plain.plogiEnabled = fcoe.IsPLOGIEnabled();
    plain.destNodeId = fcoe.GetDestNodeId();
    plain.srcOui = fcoe.GetSrcOUI();
    plain.fipWord = 0x00030000U | static_cast<unsigned int>(fcoe.IsFIPEnabled());
    plain.vlanDiscoveryEnabled = fcoe.IsVlanDiscoveryEnabled();
    plain.vlanDiscoveryUntagged = fcoe.IsVlanDiscoveryUntagged();
    plain.keepAliveWord = 3;
    plain.maxFCoESize = fcoe.GetMaxFCoESize();
    plain.addressMode = fcoe.GetAddressMode();
    plain.vendorId = fcoe.GetVendorID().GetAsUint64();
    plain.vendorSpecific = OptionsOf(fcoe.GetVendorSpecificTLVs());
    ENSRegOption const& names = fcoe.GetNSRegOption();
    plain.nsRegOption = {names.GetOptions(), names.GetRspnIdName(), names.GetRsnnNnName(), names.GetExtraName()};
    for (EPLOGIDestination const& to : fcoe.GetPLOGIDestinations())
        plain.plogiDestinations.push_back(
            {to.IsEnabled(), to.GetDestMode(), to.GetDestNodeId(), to.GetWWPN().GetAsUint64()});
    plain.prliEnabled = fcoe.IsPRLIEnabled();
    plain.autoPlogiEnabled = fcoe.IsAutoPLOGIEnabled();
    plain.nsQueryEnabled = fcoe.IsNSQueryEnabled();
    EFCNSQuery const& query = fcoe.GetFCNSQuery();
    plain.nsQuery = {query.GetFlag(), query.GetCommand(), query.GetRequestObject(), query.GetRequestObjectValue()};
    plain.scrOption = fcoe.GetFCSCROption();
    return plain;
}

static Interface Of(EInterfaceItem const& item)
{
    Interface plain;
    plain.localId = item.GetLocalId();
    plain.name = item.GetName();
    plain.type = static_cast<std::int32_t>(item.GetType());
    plain.enabled = item.IsEnabled();
    plain.euid = item.GetEUID().GetAsUint64();
    plain.ethernet = std::make_unique<Ethernet>(EthernetOf(item));
    plain.ipv4 = Of(item.GetIPv4AddressItem());
    EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
    for (auto position = list.begin(); position != list.end(); ++position) {
        EIPv6AddressItem const& ipv6 = *list.GetItem(position);
        plain.ipv6[ipv6.GetLocalId()] = {ipv6.GetLocalId(), ipv6.GetMaskLength(), Of(ipv6.GetAddress())};
        plain.nextIPv6Id = ipv6.GetLocalId() + 1;
    }
    plain.dhcpEnabled = item.IsDHCPEnabled();
    plain.dhcp = Of(item.GetDHCPProperties());
    plain.dhcpv6Enabled = item.IsDHCPv6Enabled();
    plain.dhcpv6 = Of(item.GetDHCPv6Properties());
    plain.vcatCircuitId = item.GetVcatCircuitId();
    plain.ipv6Gateway = Of(item.GetIPv6Gateway());
    plain.fcoeEnabled = item.IsFCoEEnabled();
    plain.fcoe = Of(item.GetFCoEConfig());
    plain.ptpEnabled = item.IsPTPEnabled();
    plain.dcbxEnabled = item.IsDCBXEnabled();
    plain.lldpEnabled = item.IsLLDPEnabled();
    return plain;
}

Table PlainTable(EInterfaceTable const& table)
{
    Table plain;
    plain.numbers = {table.GetPortId(),
                     table.GetVPIMaskMode(),
                     table.GetDHCPv4RequestRate(),
                     table.GetDHCPv6RequestRate(),
                     table.GetDHCPv4MaxOutstandingRequests(),
                     table.GetDHCPv6MaxOutstandingRequests(),
                     table.GetFCoERequestRate(),
                     table.GetFCoERetryCount(),
                     table.GetFCoERetryInterval(),
                     table.GetFcfMacCollectionTime()};
    plain.fipVersion = table.GetFIPVersion();
    plain.switches = {table.IsTargetLLAddrOptionEnabled(),
                      table.IsFcfMacEnabled(),
                      table.IsPMacInFpmaEnabled(),
                      table.IsVlanIdEnabled(),
                      table.IsAutoNeighborDiscoveryEnabled(),
                      table.IsAutoArpEnabled()};
    for (auto position = table.begin(); position != table.end(); ++position) {
        plain.interfaces.emplace(position->first, Of(*table.GetItem(position)));
        plain.nextId = position->first + 1;
    }
    return plain;
}

} // namespace plain
