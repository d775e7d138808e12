#include "protobufRecords.hpp"

#include <cstring>
#include <endian.h>

namespace {

template <class Number> Number NumberAt(unsigned char const* bytes)
{
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

void Fill(records::Address& message, EIPAddress const& address)
{
    if (address.GetFamily() == EIPAddress::kIPv4) {
        message.set_ipv4(be32toh(NumberAt<std::uint32_t>(address.GetBytes())));
    } else {
        message.set_ipv6_high(be64toh(NumberAt<std::uint64_t>(address.GetBytes())));
        message.set_ipv6_low(be64toh(NumberAt<std::uint64_t>(address.GetBytes() + 8)));
    }
}

EIPAddress IPv4Of(records::Address const& message)
{
    std::uint32_t const number = htobe32(message.ipv4());
    EIPAddress address;
    address.SetAddress(reinterpret_cast<unsigned char const*>(&number), EIPAddress::kIPv4);
    return address;
}

EIPAddress IPv6Of(records::Address const& message)
{
    std::uint64_t const numbers[] = {htobe64(message.ipv6_high()), htobe64(message.ipv6_low())};
    EIPAddress address;
    address.SetAddress(reinterpret_cast<unsigned char const*>(numbers), EIPAddress::kIPv6);
    return address;
}

void FillMac(records::Ethernet& message, EInterfaceItem const& item)
{
    EBlob const mac = item.GetMacAddress().GetMACAddress();
    std::uint64_t number = 0;
    std::memcpy(&number, mac.GetData(), mac.GetSize());
    message.set_mac(number);
}

void Fill(records::Vlans& message, EVLANIPAddressTableItemProperties const& vlans)
{
    message.set_enabled(vlans.IsEnabled());
    for (unsigned int level = 0; level < vlans.GetVLANCount(); ++level) message.add_tags(vlans.GetVlanTag(level));
}

void Fill(records::IPv4Item& message, EIPv4AddressItem const& item)
{
    message.set_enabled(item.IsEnabled());
    Fill(*message.mutable_address(), item.GetAddress());
    Fill(*message.mutable_gateway(), item.GetGateway());
    message.set_mask_length(item.GetMaskLength());
    message.set_mss(item.GetMSS());
}

void Fill(records::IPv6List& message, EIPv6AddressItemList const& list)
{
    for (auto position = list.begin(); position != list.end(); ++position) {
        EIPv6AddressItem const& item = *list.GetItem(position);
        records::IPv6Item& added = *message.add_items();
        added.set_local_id(item.GetLocalId());
        added.set_mask_length(item.GetMaskLength());
        Fill(*added.mutable_address(), item.GetAddress());
    }
}

template <class Messages, class Options> void FillOptions(Messages& messages, Options const& options)
{
    for (EDHCPTLV const& option : options) {
        auto& added = *messages.Add();
        added.set_type(option.GetType());
        added.set_value(option.GetValue().GetData(), option.GetValue().GetSize());
    }
}

/// What both the archive and the TLVs hold of it.
void FillCommon(records::Dhcp& message, EDHCPProperties const& dhcp)
{
    message.set_client_id(dhcp.GetDHCPClientId());
    Fill(*message.mutable_server_id(), dhcp.GetDHCPServerId());
    message.set_vendor_id(dhcp.GetDHCPVendorId());
    message.set_release_timer(dhcp.GetReleaseTimer());
    message.set_retry_count(dhcp.GetRetryCount());
    FillOptions(*message.mutable_options(), dhcp.GetDHCPCustomTLVs());
}

void FillCommon(records::Dhcpv6& message, EDHCPv6Properties const& dhcp)
{
    message.set_ia_id(dhcp.GetIAId());
    message.set_ia_type(static_cast<std::uint32_t>(dhcp.GetIAType()));
    message.set_renew_time(dhcp.GetRenewTime());
    FillOptions(*message.mutable_options(), dhcp.GetDHCPv6CustomTLVs());
}

void FillCommon(records::FCoE& message, EFCoEConfig const& fcoe)
{
    message.set_src_port_wwn(fcoe.GetSrcPortWWN().GetAsUint64());
    message.set_src_node_wwn(fcoe.GetSrcNodeWWN().GetAsUint64());
    message.set_b2b_rx_size(fcoe.GetB2BRxSize());
    message.set_scr_enabled(fcoe.IsSCREnabled());
    message.set_ns_registration_enabled(fcoe.IsNSRegistrationEnabled());
    message.set_plogi_enabled(fcoe.IsPLOGIEnabled());
    message.set_dest_node_id(fcoe.GetDestNodeId());
    message.set_src_oui(fcoe.GetSrcOUI());
    message.set_fip_word(fcoe.IsFIPEnabled());
    message.set_vlan_discovery_enabled(fcoe.IsVlanDiscoveryEnabled());
    message.set_vlan_discovery_untagged(fcoe.IsVlanDiscoveryUntagged());
    message.set_keep_alive_word(fcoe.IsKeepAliveEnabled());
    message.set_max_fcoe_size(fcoe.GetMaxFCoESize());
    message.set_address_mode(fcoe.GetAddressMode());
    message.set_vendor_id(fcoe.GetVendorID().GetAsUint64());
    FillOptions(*message.mutable_vendor_specific(), fcoe.GetVendorSpecificTLVs());
    records::NsRegOption& names = *message.mutable_ns_reg_option();
    names.set_options(fcoe.GetNSRegOption().GetOptions());
    names.set_rspn_id_name(fcoe.GetNSRegOption().GetRspnIdName());
    names.set_rsnn_nn_name(fcoe.GetNSRegOption().GetRsnnNnName());
    for (EPLOGIDestination const& destination : fcoe.GetPLOGIDestinations()) {
        records::PlogiDestination& added = *message.add_plogi_destinations();
        added.set_enabled(destination.IsEnabled());
        added.set_mode(destination.GetDestMode());
        added.set_node_id(destination.GetDestNodeId());
        added.set_wwpn(destination.GetWWPN().GetAsUint64());
    }
    message.set_prli_enabled(fcoe.IsPRLIEnabled());
    message.set_auto_plogi_enabled(fcoe.IsAutoPLOGIEnabled());
    message.set_ns_query_enabled(fcoe.IsNSQueryEnabled());
    records::NsQuery& query = *message.mutable_ns_query();
    query.set_command(fcoe.GetFCNSQuery().GetCommand());
    query.set_request_object(fcoe.GetFCNSQuery().GetRequestObject());
    query.set_request_object_value(fcoe.GetFCNSQuery().GetRequestObjectValue());
    message.set_scr_option(fcoe.GetFCSCROption());
}

void FillCommon(records::Interface& message, EInterfaceItem const& item)
{
    message.set_name(item.GetName());
    message.set_type(static_cast<std::int32_t>(item.GetType()));
    message.set_enabled(item.IsEnabled());
    message.set_euid(item.GetEUID().GetAsUint64());
    FillMac(*message.mutable_ethernet(), item);
    Fill(*message.mutable_ethernet()->mutable_vlans(), item.GetVLANItem());
    message.mutable_ethernet()->set_mtu(item.GetMTU());
    Fill(*message.mutable_ipv4(), item.GetIPv4AddressItem());
    Fill(*message.mutable_ipv6(), item.GetIPv6AddressItemList());
    message.set_dhcp_enabled(item.IsDHCPEnabled());
    FillCommon(*message.mutable_dhcp(), item.GetDHCPProperties());
    message.set_dhcpv6_enabled(item.IsDHCPv6Enabled());
    FillCommon(*message.mutable_dhcpv6(), item.GetDHCPv6Properties());
    message.set_vcat_circuit_id(item.GetVcatCircuitId());
    message.set_fcoe_enabled(item.IsFCoEEnabled());
    FillCommon(*message.mutable_fcoe(), item.GetFCoEConfig());
    message.set_ptp_enabled(item.IsPTPEnabled());
    message.set_dcbx_enabled(item.IsDCBXEnabled());
}

} // namespace

void FillArchived(records::Interface& message, EInterfaceItem const& item)
{
    FillCommon(message, item);
    message.set_local_id(item.GetLocalId());
    message.mutable_ethernet()->set_uid_from_mac(!item.OverrideAutogenEuid());
    message.mutable_ipv6()->set_next_id(static_cast<std::uint32_t>(item.GetIPv6AddressItemList().GetCount() + 1));
    EDHCPProperties const& dhcp = item.GetDHCPProperties();
    Fill(*message.mutable_dhcp()->mutable_relay_agent(), dhcp.GetDHCPRelayAgentIP());
    Fill(*message.mutable_dhcp()->mutable_relay_destination(), dhcp.GetDHCPRelayDestination());
    EDHCPv6Properties const& dhcpv6 = item.GetDHCPv6Properties();
    Fill(*message.mutable_dhcpv6()->mutable_relay_link_address(), dhcpv6.GetDHCPv6RelayLinkAddress());
    Fill(*message.mutable_dhcpv6()->mutable_relay_destination(), dhcpv6.GetDHCPv6RelayDestination());
    Fill(*message.mutable_ipv6_gateway(), item.GetIPv6Gateway());
    records::FCoE& fcoe = *message.mutable_fcoe();
    fcoe.set_fip_word(0x00030000U | fcoe.fip_word());
    fcoe.set_keep_alive_word(3);
    fcoe.mutable_ns_reg_option()->set_extra_name(item.GetFCoEConfig().GetNSRegOption().GetExtraName());
    fcoe.mutable_ns_query()->set_flag(item.GetFCoEConfig().GetFCNSQuery().GetFlag());
    message.set_lldp_enabled(item.IsLLDPEnabled());
}

void FillArchived(records::Table& message, EInterfaceTable const& table)
{
    message.set_port_id(table.GetPortId());
    message.set_vpi_mask_mode(table.GetVPIMaskMode());
    message.set_dhcpv4_request_rate(table.GetDHCPv4RequestRate());
    message.set_dhcpv6_request_rate(table.GetDHCPv6RequestRate());
    message.set_dhcpv4_max_outstanding_requests(table.GetDHCPv4MaxOutstandingRequests());
    message.set_dhcpv6_max_outstanding_requests(table.GetDHCPv6MaxOutstandingRequests());
    message.set_fcoe_request_rate(table.GetFCoERequestRate());
    message.set_fcoe_retry_count(table.GetFCoERetryCount());
    message.set_fcoe_retry_interval(table.GetFCoERetryInterval());
    message.set_fip_version(table.GetFIPVersion());
    message.set_target_ll_addr_option_enabled(table.IsTargetLLAddrOptionEnabled());
    message.set_fcf_mac_enabled(table.IsFcfMacEnabled());
    message.set_fcf_mac_collection_time(table.GetFcfMacCollectionTime());
    message.set_p_mac_in_fpma_enabled(table.IsPMacInFpmaEnabled());
    message.set_vlan_id_enabled(table.IsVlanIdEnabled());
    message.set_auto_neighbor_discovery_enabled(table.IsAutoNeighborDiscoveryEnabled());
    message.set_auto_arp_enabled(table.IsAutoArpEnabled());
    message.set_next_id(static_cast<std::uint32_t>(table.GetCount() + 1));
    message.mutable_interfaces()->Reserve(static_cast<int>(table.GetCount()));
    for (auto position = table.begin(); position != table.end(); ++position)
        FillArchived(*message.add_interfaces(), *table.GetItem(position));
}

void FillOperation(records::InterfaceOperation& message, EInterfaceItem const& item)
{
    message.set_kind(records::InterfaceOperation::EDIT);
    message.set_interface_id(item.GetLocalId());
    message.set_layer_name(item.GetLayerName());
    FillCommon(*message.mutable_interface(), item);
}

void ApplyOperation(records::InterfaceOperation const& message, EInterfaceTable& table)
{
    EInterfaceItemList& interfaces = table.GetInterfaceItemList();
    auto found = interfaces.find(message.interface_id());
    if (found == interfaces.end()) {
        interfaces.AddItem(message.interface_id());
        found = interfaces.find(message.interface_id());
    }
    EInterfaceItem& item = *interfaces.GetItem(found);
    records::Interface const& interface = message.interface();
    item.SetName(interface.name());
    item.SetType(static_cast<EInterfaceTypeEnum>(interface.type()));
    item.SetEnabled(interface.enabled());

    std::uint64_t const macNumber = interface.ethernet().mac();
    EMACAddress mac;
    mac.SetMACAddress(EBlob(&macNumber, 6));
    item.SetMacAddress(mac);
    EVLANIPAddressTableItemProperties vlans(static_cast<unsigned int>(interface.ethernet().vlans().tags_size()),
                                            interface.ethernet().vlans().enabled());
    for (int level = 0; level < interface.ethernet().vlans().tags_size(); ++level)
        vlans.SetVlanTag(interface.ethernet().vlans().tags(level), static_cast<unsigned int>(level));
    item.SetVLANItem(vlans);
    item.SetDHCPEnabled(interface.dhcp_enabled());

    EIPv4AddressItem& ipv4 = item.GetIPv4AddressItem();
    ipv4.SetEnabled(interface.ipv4().enabled());
    ipv4.SetAddress(IPv4Of(interface.ipv4().address()));
    ipv4.SetGateway(IPv4Of(interface.ipv4().gateway()));
    ipv4.SetMaskLength(interface.ipv4().mask_length());

    EIPv6AddressItemList& list = item.GetIPv6AddressItemList();
    for (records::IPv6Item const& address : interface.ipv6().items()) {
        // As built TLVs are read: each under the id 0, in the place of the one before.
        list.AddItem(0);
        EIPv6AddressItem& added = *list.GetItem(list.find(0));
        added.SetAddress(IPv6Of(address.address()));
        added.SetMaskLength(address.mask_length());
    }
}
