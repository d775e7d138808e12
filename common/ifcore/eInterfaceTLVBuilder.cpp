#include "eInterfaceTLVBuilder.hpp"

#include "eAtmEncapsulationIds.hpp"
#include "eTLVWire.hpp"

#include <algorithm>
#include <cstring>
#include <endian.h>
#include <iterator>
#include <limits>
#include <new>

using namespace TLVIds::InterfaceTable;
namespace Atm = TLVIds::ATMEncapsulation;
namespace ListOp = TLVIds::ListOp;

using Protocol::EBytes;
using TLVIds::TLVId;

// ---- TLVs -----------------------------------------------------------------------------------------------------------

/// Before a TLV is begun, so that a failing allocation leaves no half of its header behind.
static void MakeRoom(EBytes& out, std::size_t count)
{
    if (out.capacity() - out.size() < count) out.reserve(std::max(2 * out.capacity(), out.size() + count));
}

/// Flat: with the insertion compiled into it, a comparison and the copy are left of it.
[[gnu::flatten]] static void AppendU32(EBytes& out, unsigned int value)
{
    unsigned int const bigEndian = htobe32(value);
    char bytes[sizeof bigEndian];
    std::memcpy(bytes, &bigEndian, sizeof bigEndian);
    out.insert(out.end(), bytes, bytes + sizeof bytes);
}

Protocol::TLVBuilder::TLVBuilder(EBytes& out, TLVId const& id) : m_buffer(out), m_valueStart(0), m_done(false)
{
    // The start of the value is kept in 32 bits.
    if (out.size() > std::numeric_limits<unsigned int>::max() - kTLVHeaderSize) throw std::bad_alloc();
    MakeRoom(out, kTLVHeaderSize);
    TLVAppendId(out, id);
    AppendU32(out, 0); // the length
    m_valueStart = static_cast<unsigned int>(out.size());
}

void Protocol::TLVBuilder::Done()
{
    if (m_done) return;
    if (m_buffer.size() < m_valueStart) m_buffer.resize(m_valueStart);
    m_done = true;
    std::size_t const length = m_buffer.size() - m_valueStart;
    unsigned int const bigEndian = htobe32(static_cast<unsigned int>(length));
    char* const value = m_buffer.data() + m_valueStart;
    std::memcpy(value - sizeof bigEndian, &bigEndian, sizeof bigEndian);
    // On purpose: the length is 8 bytes wide, its second half falls on the value.
    if (length >= 4)
        std::memset(value, 0, 4); // mostly: without a call
    else
        std::memset(value, 0, length);
}

/// A TLV of plain bytes, which stay whole.
[[gnu::flatten]] static void AppendBytesTLV(EBytes& out, TLVId const& id, unsigned char const* bytes, std::size_t count)
{
    if (!bytes) count = 0;
    MakeRoom(out, kTLVHeaderSize + count);
    Protocol::TLVAppendId(out, id);
    AppendU32(out, static_cast<unsigned int>(count));
    if (count > 0) out.insert(out.end(), bytes, bytes + count);
}

/// Any number, enumeration or switch as the 4 bytes of an int.
template <class Value> static void AppendInt(EBytes& out, TLVId const& id, Value value)
{
    Protocol::AppendIntTLV(out, id, static_cast<int>(value));
}

/// The switch of a protocol in a TLV of its own; the settings follow in a second one of the same id.
static void AppendSwitchTLV(EBytes& out, TLVId const& id, TLVId const& switchId, bool enabled)
{
    Protocol::TLVBuilder tlv(out, id);
    AppendInt(out, switchId, enabled);
}

void Protocol::AppendUIDTLV(EBytes& out, TLVId const& id, EUID const& value)
{
    AppendBytesTLV(out, id, value.GetId(), 8); // on purpose in the order of the host's memory, unlike all numbers
}

void Protocol::AppendMACTLV(EBytes& out, TLVId const& id, EMACAddress const& value)
{
    AppendBlobTLV(out, id, value.GetMACAddress());
}

void Protocol::AppendBlobTLV(EBytes& out, TLVId const& id, EBlob const& value)
{
    AppendBytesTLV(out, id, value.GetData(), value.GetSize());
}

// ---- Interface ------------------------------------------------------------------------------------------------------

void Protocol::AppendInterfaceOpTLV(EBytes& out, TLVId const& id, EInterfaceItem const& interface,
                                    unsigned int interfaceId)
{
    TLVBuilder operation(out, id);
    AppendU32(out, interfaceId);
    AppendStringTLV(out, IFD_Name, interface.GetName());
    AppendInt(out, IFD_Type, interface.GetType());
    AppendStringTLV(out, IFD_LayerName, interface.GetLayerName());
    AppendInt(out, IFD_Enabled, interface.IsEnabled());
    AppendMACTLV(out, IFD_Mac, interface.GetMacAddress());
    AppendVLANTLV(out, IFD_VLAN, interface.GetVLANItem());
    AppendInt(out, IFD_MTU, interface.GetMTU());
    AppendInt(out, IFD_VCAT_CircuitId, interface.GetVcatCircuitId());
    AppendSwitchTLV(out, IFD_DHCP, DHCP_Enabled, interface.IsDHCPEnabled());
    AppendSwitchTLV(out, IFD_DHCPv6, DHCP_Enabled, interface.IsDHCPv6Enabled()); // on purpose the id of DHCP
    AppendDHCPTLV(out, IFD_DHCP, interface.GetDHCPProperties());
    AppendDHCPv6TLV(out, IFD_DHCPv6, interface.GetDHCPv6Properties());
    AppendIPv4ItemTLV(out, IFD_IPv4, interface.GetIPv4AddressItem());
    AppendIPv6ItemListTLV(out, IFD_IPv6List, interface.GetIPv6AddressItemList());
    if (EInterfaceData_Ppp const* const ppp = interface.GetPppData()) {
        AppendUnsignedIntTLV(out, IFD_PPPHandle, ppp->GetPPPHandle());
        AppendUnsignedIntTLV(out, IFD_PPPSession, ppp->GetPPPSession());
    }
    AppendUIDTLV(out, IFD_Uid, interface.GetEUID());
    if (EInterfaceData_Gre const* const gre = interface.GetGreData()) {
        AppendCompIdTLV(out, IFD_GreSourceIp, gre->GetSourceIp());
        AppendIPTLV(out, IFD_GreDestIp, gre->GetDestIp());
        AppendInt(out, IFD_GreUseChecksum, gre->GetUseChecksum());
        AppendInt(out, IFD_GreUseSequence, gre->GetUseSequence());
        AppendInt(out, IFD_GreUseKey, gre->GetUseKey());
        AppendInt(out, IFD_GreInKey, gre->GetInKey());
        AppendInt(out, IFD_GreOutKey, gre->GetOutKey());
    }
    if (EInterfaceData_Routed const* const routed = interface.GetRoutedData())
        AppendCompIdTLV(out, IFD_ConnectedViaId, routed->GetConnectedViaId());
    if (EInterfaceData_Atm const* const atm = interface.GetAtmData()) {
        AppendATMEncapsulationTLV(out, IFD_ATMEncapsulation, static_cast<int>(atm->GetEncapsulation()));
        AppendInt(out, IFD_ATMMode, atm->GetATMMode());
        AppendInt(out, IFD_Atm_Vpi, atm->GetVPI());
        AppendInt(out, IFD_Atm_Vci, atm->GetVCI());
    }
    AppendSwitchTLV(out, IFD_FCoE, FCoE_Enabled, interface.IsFCoEEnabled());
    AppendFCoETLV(out, IFD_FCoE, interface.GetFCoEConfig());
    if (ENPIVConfig const* const npiv = interface.GetNPIVConfigReadOnly()) AppendNPIVTLV(out, IFD_NPIV, *npiv);
    AppendSwitchTLV(out, IFD_PTP, PTP_Enabled, interface.IsPTPEnabled());
    if (EPTPConfig const* const ptp = interface.GetPTPConfigReadOnly()) AppendPTPTLV(out, IFD_PTP, *ptp);
    // On purpose LLDP stands between the switch of DCBX and its settings, and has no switch.
    AppendSwitchTLV(out, IFD_DCBX, DCBX_Enabled, interface.IsDCBXEnabled());
    if (ELLDPConfig const* const lldp = interface.GetLLDPConfigReadOnly()) AppendLLDPTLV(out, IFD_LLDP, *lldp);
    if (EDCBXConfig const* const dcbx = interface.GetDCBXConfigReadOnly()) AppendDCBXTLV(out, IFD_DCBX, *dcbx);
}

void Protocol::AppendInterfaceOpTLV(EBytes& out, TLVId const& id, EInterfaceItem const& interface)
{
    AppendInterfaceOpTLV(out, id, interface, interface.GetLocalId());
}

void Protocol::AppendVLANTLV(EBytes& out, TLVId const& id, EVLANIPAddressTableItemProperties const& vlans)
{
    TLVBuilder tlv(out, id);
    AppendInt(out, VLAN_Enabled, vlans.IsEnabled());
    // On purpose whole tags alone, never ids and priorities.
    for (unsigned int level = 0; level < vlans.GetVLANCount(); ++level)
        AppendInt(out, VLAN_TAG, vlans.GetVlanTag(level));
}

void Protocol::AppendIPv4ItemTLV(EBytes& out, TLVId const& id, EIPv4AddressItem const& item)
{
    TLVBuilder tlv(out, id);
    AppendInt(out, IP4_Enabled, item.IsEnabled());
    AppendIPTLV(out, IP4_IPAddress, item.GetAddress());
    AppendIPTLV(out, IP4_Gateway, item.GetGateway());
    AppendInt(out, IP4_MaskLength, item.GetMaskLength());
    AppendUnsignedIntTLV(out, IP4_MSS, item.GetMSS());
}

void Protocol::AppendAddIPv6ItemTLV(EBytes& out, EIPv6AddressItem const& item)
{
    TLVBuilder operation(out, ListOp::Add);
    AppendU32(out, item.GetLocalId());
    AppendIPTLV(out, IP6_IPAddress, item.GetAddress());
    AppendInt(out, IP6_MaskLength, item.GetMaskLength());
}

void Protocol::AppendIPv6ItemListTLV(EBytes& out, TLVId const& id, EIPv6AddressItemList const& items)
{
    TLVBuilder list(out, id);
    AppendBytesTLV(out, ListOp::RemoveAll, nullptr, 0); // not a builder: nothing of what follows is cleared
    for (auto position = items.begin(); position != items.end(); ++position)
        if (EIPv6AddressItem const* const item = items.GetItem(position)) AppendAddIPv6ItemTLV(out, *item);
}

void Protocol::AppendATMEncapsulationTLV(EBytes& out, TLVId const& id, int mode)
{
    static TLVId const* const kIds[] = {
        &Atm::None,      &Atm::VMR_IpV4,    &Atm::Eth_VMBFcs,    &Atm::Eth_VMBNoFcs, &Atm::VMR_IpV6,  &Atm::VMR_Mpls,
        &Atm::LLCR_CLIP, &Atm::LLCB_EthFcs, &Atm::LLCB_EthNoFcs, &Atm::LLCR_PPPoA,   &Atm::VMR_PPPoA, &Atm::LLC_ISIS,
        &Atm::VM_ISIS,   &Atm::LLC,         &Atm::LLC_L2TP,      &Atm::VMR_L2TP,
    };
    TLVBuilder tlv(out, id);
    bool const known = mode > 0 && static_cast<std::size_t>(mode) < std::size(kIds);
    AppendBytesTLV(out, known ? *kIds[mode] : Atm::None, nullptr, 0);
}

// ---- DHCP -----------------------------------------------------------------------------------------------------------

void Protocol::AppendDHCPTLV(EBytes& out, TLVId const& id, EDHCPProperties const& properties)
{
    TLVBuilder tlv(out, id);
    AppendStringTLV(out, DHCP_ClientId, properties.GetDHCPClientId());
    AppendIPTLV(out, DHCP_ServerId, properties.GetDHCPServerId());
    AppendStringTLV(out, DHCP_VendorId, properties.GetDHCPVendorId());
    AppendInt(out, DHCP_RenewTimer, properties.GetReleaseTimer()); // on purpose the release timer under the renew id
    AppendInt(out, DHCP_RetryCount, properties.GetRetryCount());
    AppendDHCPTLVListTLV(out, DHCP_CustomTLVList, properties.GetDHCPCustomTLVs());
}

void Protocol::AppendDHCPv6TLV(EBytes& out, TLVId const& id, EDHCPv6Properties const& properties)
{
    TLVBuilder tlv(out, id);
    AppendInt(out, DHCP_IAId, properties.GetIAId());
    AppendInt(out, DHCP_IAType, properties.GetIAType());
    AppendInt(out, DHCPv6_RenewTimer, properties.GetRenewTime());
    AppendDHCPTLVListTLV(out, DHCP_CustomTLVList, properties.GetDHCPv6CustomTLVs());
}

void Protocol::AppendDHCPTLVListTLV(EBytes& out, TLVId const& id, std::list<EDHCPTLV> const& options)
{
    TLVBuilder list(out, id);
    for (EDHCPTLV const& option : options) {
        TLVBuilder entry(out, DHCP_CustomTLV);
        AppendInt(out, DHCP_CustomTLV_Type, option.GetType());
        AppendBlobTLV(out, DHCP_CustomTLV_Value, option.GetValue());
    }
}

// ---- Fibre Channel --------------------------------------------------------------------------------------------------

void Protocol::AppendFCoETLV(EBytes& out, TLVId const& id, EFCoEConfig const& config)
{
    TLVBuilder tlv(out, id);
    AppendUIDTLV(out, FCoE_SrcPortName, config.GetSrcPortWWN());
    AppendUIDTLV(out, FCoE_SrcNodeName, config.GetSrcNodeWWN());
    AppendInt(out, FCoE_B2BRxSize, config.GetB2BRxSize());
    AppendInt(out, FCoE_SCREnabled, config.IsSCREnabled());
    AppendInt(out, FCoE_NSRegEnabled, config.IsNSRegistrationEnabled());
    AppendInt(out, FCoE_PLOGIEnabled, config.IsPLOGIEnabled());
    AppendInt(out, FCoE_DestNodeId, config.GetDestNodeId());
    AppendInt(out, FCoE_SrcOUI, config.GetSrcOUI());
    AppendInt(out, FCoE_FIPEnabled, config.IsFIPEnabled());
    AppendInt(out, FCoE_VlanDiscoveryEnabled, config.IsVlanDiscoveryEnabled());
    AppendInt(out, FCoE_VlanDiscoveryUntagged, config.IsVlanDiscoveryUntagged());
    AppendInt(out, FIP_KeepAliveEnabled, config.IsKeepAliveEnabled());
    AppendInt(out, FCoE_MaxSize, config.GetMaxFCoESize());
    AppendInt(out, FCoE_AddressMode, config.GetAddressMode());
    AppendUIDTLV(out, FCoE_VendorID, config.GetVendorID());
    AppendDHCPTLVListTLV(out, FCoE_VendorSpecificTLVs, config.GetVendorSpecificTLVs());
    AppendInt(out, FCoE_NSRegOption, config.GetNSRegOption().GetOptions());
    AppendStringTLV(out, FCoE_NSRegOptionRspnIdName, config.GetNSRegOption().GetRspnIdName());
    AppendStringTLV(out, FCoE_NSRegOptionRsnnNnName, config.GetNSRegOption().GetRsnnNnName());
    AppendPLOGIDestinationsTLV(out, FCoE_PLOGIDestinations, config.GetPLOGIDestinations());
    AppendInt(out, FC_PRLIEnabled, config.IsPRLIEnabled());
    AppendInt(out, FC_AutoPLOGIEnabled, config.IsAutoPLOGIEnabled());
    AppendInt(out, FC_NameServeryQueryEnabled, config.IsNSQueryEnabled());
    AppendFCNSQueryTLV(out, FC_NSQuery, config.GetFCNSQuery());
    AppendInt(out, FC_SCROption, config.GetFCSCROption());
}

void Protocol::AppendNPIVTLV(EBytes& out, TLVId const& id, ENPIVConfig const& config)
{
    TLVBuilder tlv(out, id);
    AppendUIDTLV(out, NPIV_SrcPortName, config.GetSrcPortWWN());
    AppendUIDTLV(out, NPIV_SrcNodeName, config.GetSrcNodeWWN());
    AppendInt(out, NPIV_B2BRxSize, config.GetB2BRxSize());
    AppendInt(out, NPIV_SCREnabled, config.IsSCREnabled());
    AppendInt(out, NPIV_NSRegEnabled, config.IsNSRegistrationEnabled());
    AppendInt(out, NPIV_PLOGIEnabled, config.IsPLOGIEnabled());
    AppendInt(out, NPIV_DestNodeId, config.GetDestNodeId());
    AppendCompIdTLV(out, NPIV_ConnectedViaId, config.GetConnectedViaId());
    AppendInt(out, NPIV_NSRegOption, config.GetNSRegOption().GetOptions());
    AppendStringTLV(out, NPIV_NSRegOptionRspnIdName, config.GetNSRegOption().GetRspnIdName());
    AppendStringTLV(out, NPIV_NSRegOptionRsnnNnName, config.GetNSRegOption().GetRsnnNnName());
    AppendPLOGIDestinationsTLV(out, NPIV_PLOGIDestinations, config.GetPLOGIDestinations());
    AppendInt(out, NPIV_PRLIEnabled, config.IsPRLIEnabled());
    AppendInt(out, NPIV_AutoPLOGIEnabled, config.IsAutoPLOGIEnabled());
    AppendInt(out, NPIV_NameServeryQueryEnabled, config.IsNSQueryEnabled());
    AppendNPIVNSQueryTLV(out, NPIV_NSQuery, config.GetFCNSQuery());
    AppendInt(out, NPIV_SCROption, config.GetFCSCROption());
}

/// The ids of the elements are those of FCoE, on purpose for virtual ports too.
void Protocol::AppendPLOGIDestinationsTLV(EBytes& out, TLVId const& id,
                                          std::vector<EPLOGIDestination> const& destinations)
{
    TLVBuilder list(out, id);
    for (EPLOGIDestination const& destination : destinations) {
        TLVBuilder entry(out, FCoE_PLOGIDestination);
        AppendInt(out, FCoE_PLOGIDestination_Enable, destination.IsEnabled());
        AppendInt(out, FCoE_PLOGIDestination_Mode, destination.GetDestMode());
        AppendInt(out, FCoE_PLOGIDestination_Id, destination.GetDestNodeId());
        AppendUIDTLV(out, FCoE_PLOGIDestination_WWPN, destination.GetWWPN());
    }
}

void Protocol::AppendFCNSQueryTLV(EBytes& out, TLVId const& id, EFCNSQuery const& query)
{
    TLVBuilder tlv(out, id);
    AppendInt(out, FC_NSQueryCommand, query.GetCommand());
    AppendInt(out, FC_NSQueryRequestObject, query.GetRequestObject());
    AppendStringTLV(out, FC_NSQueryRequestObjectValue, query.GetRequestObjectValue());
}

void Protocol::AppendNPIVNSQueryTLV(EBytes& out, TLVId const& id, EFCNSQuery const& query)
{
    TLVBuilder tlv(out, id);
    AppendInt(out, NPIV_NSQueryCommand, query.GetCommand());
    AppendInt(out, NPIV_NSQueryRequestObject, query.GetRequestObject());
    AppendStringTLV(out, NPIV_NSQueryRequestObjectValue, query.GetRequestObjectValue());
}

// ---- PTP, LLDP, DCBX ------------------------------------------------------------------------------------------------

void Protocol::AppendPTPTLV(EBytes& out, TLVId const& id, EPTPConfig const& config)
{
    TLVBuilder tlv(out, id);
    AppendUIDTLV(out, PTP_ClockId, config.GetClockId());
    AppendInt(out, PTP_PortNumber, config.GetPortNumber());
    AppendInt(out, PTP_ClockClass, config.GetClockClass());
    AppendInt(out, PTP_ClockAccuracy, config.GetClockAccuracy());
    AppendInt(out, PTP_Priority1, config.GetPriority1());
    AppendInt(out, PTP_Priority2, config.GetPriority2());
    AppendInt(out, PTP_DomainNumber, config.GetDomainNumber());
    AppendInt(out, PTP_AnnounceInterval, config.GetLogAnnounceInterval());
    AppendInt(out, PTP_SyncInterval, config.GetLogSyncInterval());
    AppendInt(out, PTP_DelayRequestInterval, config.GetLogDelayRequestInterval());
    // These two on purpose the other way round than in the record.
    AppendInt(out, PTP_DelayMechanism, config.GetDelayMechanism());
    AppendInt(out, PTP_AnnounceReceiptTimeout, config.GetAnnounceReceiptTimeout());
    AppendInt(out, PTP_MasterSlaveFlag, config.GetClockIsMaster());
    AppendInt(out, PTP_StartOffset, config.GetStartOffset());
    AppendInt(out, PTP_PercentageBadTimestamp, config.GetPercentageBadTimestamp());
    AppendInt(out, PTP_TimestampError, config.GetTimestampError());
    AppendInt(out, PTP_PercentageBadCrc, config.GetPercentageBadCrc());
    AppendInt(out, PTP_PercentageDropFollowUpMessages, config.GetPercentageDropFollowUpMessages());
    AppendInt(out, PTP_PercentageDropDelayResponseMessages, config.GetPercentageDropDelayResponseMessages());
}

void Protocol::AppendLLDPTLV(EBytes& out, TLVId const& id, ELLDPConfig const& config)
{
    TLVBuilder tlv(out, id);
    AppendMACTLV(out, LLDP_ChassisId, config.GetChassisIdMac());
    AppendMACTLV(out, LLDP_PortIdMac, config.GetPortIdMac());
    AppendStringTLV(out, LLDP_PortIdInterfaceName, config.GetPortIdInterfaceName());
    AppendInt(out, LLDP_PortIdSubType, config.GetPortIdSubType());
    AppendInt(out, LLDP_HoldTime, config.GetHoldTime());
    AppendInt(out, LLDP_TxInterval, config.GetTxInterval());
    AppendInt(out, LLDP_TxDelay, config.GetTxDelay());
}

void Protocol::AppendDCBXTLV(EBytes& out, TLVId const& id, EDCBXConfig const& config)
{
    TLVBuilder tlv(out, id);
    AppendDCBXFeatureTlvListTLV(out, DCBX_FeatureTlvList, config.GetFeatureTlvs()); // on purpose no control TLV
}

void Protocol::AppendDCBXFeatureTlvListTLV(EBytes& out, TLVId const& id, std::vector<EDCBXFeatureTlv> const& features)
{
    TLVBuilder list(out, id);
    for (EDCBXFeatureTlv const& feature : features) {
        TLVBuilder entry(out, DCBX_FeatureTlv);
        AppendInt(out, DCBX_FeatureTlv_Type, feature.GetType());
        AppendInt(out, DCBX_FeatureTlv_Length, feature.GetLength());
        AppendInt(out, DCBX_FeatureTlv_OperVersion, feature.GetOperVersion());
        AppendInt(out, DCBX_FeatureTlv_MaxVersion, feature.GetMaxVersion());
        AppendInt(out, DCBX_FeatureTlv_Enable, feature.IsEnabled());
        AppendInt(out, DCBX_FeatureTlv_Willing, feature.IsWilling());
        AppendInt(out, DCBX_FeatureTlv_SubType, feature.GetSubType());
        AppendInt(out, DCBX_FeatureTlv_OperVersionEnabled, feature.IsOverrideOperVersion());
        AppendBlobTLV(out, DCBX_FeatureTlv_Value, feature.GetDesiredCfg());
    }
}
