#include "tlvSchema.hpp"

#include "tlvIds.hpp"

namespace ifcoreTool {

namespace {

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

using L = TlvLevel;
using K = TlvKind;
constexpr auto reads = TlvReading::reads;
constexpr auto skips = TlvReading::skips;
constexpr auto first = TlvBuilding::first;
constexpr auto alone = TlvBuilding::alone;
constexpr auto later = TlvBuilding::later;
constexpr auto never = TlvBuilding::never;

struct Row {
    TlvLevel where;
    TLVIds::TLVId const& id;
    TlvKind kind;
    TlvReading reading;
    TlvBuilding building;
    TlvLevel inside = TlvLevel::none;
    char const* field = nullptr; ///< Full name of the field that is written alike.
};

constexpr char const* kEncapsulationField = "atm.encapsulation";
constexpr char const* kFibreChannelIdField = "fcoe.destination-id";

Row const kRows[] = {
    {L::interfaceList, ListOp::Add, K::operation, reads, later, L::interface},
    {L::interfaceList, ListOp::Edit, K::operation, reads, later, L::interface},
    {L::interfaceList, ListOp::Remove, K::operation, reads, never},
    {L::interfaceList, ListOp::RemoveAll, K::presence, reads, never},

    {L::interface, IFD_Name, K::text, reads, later},
    {L::interface, IFD_Type, K::number, reads, later, L::none, "type"},
    {L::interface, IFD_LayerName, K::text, skips, later},
    {L::interface, IFD_Enabled, K::yesNo, reads, later},
    {L::interface, IFD_Mac, K::mac, reads, later},
    {L::interface, IFD_VLAN, K::level, reads, later, L::vlans},
    {L::interface, IFD_MTU, K::number, skips, later},
    {L::interface, IFD_VCAT_CircuitId, K::number, skips, later},
    {L::interface, IFD_DHCP, K::level, reads, later, L::dhcp},
    {L::interface, IFD_DHCPv6, K::level, skips, later, L::dhcpv6},
    {L::interface, IFD_IPv4, K::level, reads, later, L::ipv4},
    {L::interface, IFD_IPv6List, K::level, reads, later, L::ipv6List},
    {L::interface, IFD_PPPHandle, K::number, skips, later},
    {L::interface, IFD_PPPSession, K::number, skips, later},
    {L::interface, IFD_Uid, K::uid, skips, later},
    {L::interface, IFD_GreSourceIp, K::componentId, reads, later},
    {L::interface, IFD_GreDestIp, K::exactAddress, reads, later},
    {L::interface, IFD_GreUseChecksum, K::yesNo, reads, later},
    {L::interface, IFD_GreUseSequence, K::yesNo, reads, later},
    {L::interface, IFD_GreUseKey, K::yesNo, reads, later},
    {L::interface, IFD_GreInKey, K::number, reads, later},
    {L::interface, IFD_GreOutKey, K::number, reads, later},
    {L::interface, IFD_ConnectedViaId, K::componentId, reads, later},
    {L::interface, IFD_ATMEncapsulation, K::level, reads, later, L::atmEncapsulation},
    {L::interface, IFD_ATMMode, K::number, skips, later, L::none, "atm.mode"},
    {L::interface, IFD_Atm_Vpi, K::number, reads, later},
    {L::interface, IFD_Atm_Vci, K::number, reads, later},
    {L::interface, IFD_FCoE, K::level, skips, later, L::fcoe},
    {L::interface, IFD_NPIV, K::level, skips, later, L::npiv},
    {L::interface, IFD_PTP, K::level, skips, later, L::ptp},
    {L::interface, IFD_LLDP, K::level, skips, later, L::lldp},
    {L::interface, IFD_DCBX, K::level, skips, later, L::dcbx},

    {L::vlans, VLAN_Enabled, K::yesNo, reads, first},
    {L::vlans, VLAN_TAG, K::vlanTag, reads, later},
    {L::vlans, VLAN_Id, K::number, reads, never},
    {L::vlans, VLAN_Priority, K::number, reads, never},

    {L::dhcp, DHCP_Enabled, K::yesNo, reads, alone},
    {L::dhcp, DHCP_ClientId, K::text, skips, first},
    {L::dhcp, DHCP_ServerId, K::address, skips, later},
    {L::dhcp, DHCP_VendorId, K::text, skips, later},
    {L::dhcp, DHCP_RenewTimer, K::number, skips, later},
    {L::dhcp, DHCP_RetryCount, K::number, skips, later},
    {L::dhcp, DHCP_CustomTLVList, K::level, skips, later, L::options},

    {L::dhcpv6, DHCP_Enabled, K::yesNo, skips, alone}, // on purpose the id of DHCP
    {L::dhcpv6, DHCP_IAId, K::number, skips, first},
    {L::dhcpv6, DHCP_IAType, K::signedNumber, skips, later},
    {L::dhcpv6, DHCPv6_RenewTimer, K::number, skips, later},
    {L::dhcpv6, DHCP_CustomTLVList, K::level, skips, later, L::options},

    {L::options, DHCP_CustomTLV, K::level, skips, first, L::option},
    {L::option, DHCP_CustomTLV_Type, K::number, skips, first},
    {L::option, DHCP_CustomTLV_Value, K::bytes, skips, later},

    {L::ipv4, IP4_Enabled, K::yesNo, reads, first},
    {L::ipv4, IP4_IPAddress, K::address, reads, later},
    {L::ipv4, IP4_Gateway, K::address, reads, later},
    {L::ipv4, IP4_MaskLength, K::number, reads, later},
    {L::ipv4, IP4_MSS, K::number, skips, later},

    {L::ipv6List, ListOp::RemoveAll, K::presence, reads, first},
    {L::ipv6List, ListOp::Add, K::operation, reads, later, L::ipv6},
    {L::ipv6List, ListOp::Edit, K::operation, reads, never, L::ipv6},
    {L::ipv6List, ListOp::Remove, K::operation, reads, never},
    {L::ipv6, IP6_IPAddress, K::address, reads, later},
    {L::ipv6, IP6_MaskLength, K::number, reads, later},

    {L::fcoe, FCoE_Enabled, K::yesNo, skips, alone},
    {L::fcoe, FCoE_SrcPortName, K::uid, skips, first},
    {L::fcoe, FCoE_SrcNodeName, K::uid, skips, later},
    {L::fcoe, FCoE_B2BRxSize, K::number, skips, later},
    {L::fcoe, FCoE_SCREnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_NSRegEnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_PLOGIEnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_DestNodeId, K::number, skips, later, L::none, kFibreChannelIdField},
    {L::fcoe, FCoE_SrcOUI, K::number, skips, later, L::none, "fcoe.fc-map"},
    {L::fcoe, FCoE_FIPEnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_VlanDiscoveryEnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_VlanDiscoveryUntagged, K::yesNo, skips, later},
    {L::fcoe, FIP_KeepAliveEnabled, K::yesNo, skips, later},
    {L::fcoe, FCoE_MaxSize, K::number, skips, later},
    {L::fcoe, FCoE_AddressMode, K::number, skips, later, L::none, "fcoe.address-mode"},
    {L::fcoe, FCoE_VendorID, K::uid, skips, later},
    {L::fcoe, FCoE_VendorSpecificTLVs, K::level, skips, later, L::options},
    {L::fcoe, FCoE_NSRegOption, K::number, skips, later},
    {L::fcoe, FCoE_NSRegOptionRspnIdName, K::text, skips, later},
    {L::fcoe, FCoE_NSRegOptionRsnnNnName, K::text, skips, later},
    {L::fcoe, FCoE_PLOGIDestinations, K::level, skips, later, L::plogiDestinations},
    {L::fcoe, FC_PRLIEnabled, K::yesNo, skips, later},
    {L::fcoe, FC_AutoPLOGIEnabled, K::yesNo, skips, later},
    {L::fcoe, FC_NameServeryQueryEnabled, K::yesNo, skips, later},
    {L::fcoe, FC_NSQuery, K::level, skips, later, L::nsQuery},
    {L::fcoe, FC_SCROption, K::number, skips, later},

    {L::npiv, NPIV_SrcPortName, K::uid, skips, first},
    {L::npiv, NPIV_SrcNodeName, K::uid, skips, later},
    {L::npiv, NPIV_B2BRxSize, K::number, skips, later},
    {L::npiv, NPIV_SCREnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_NSRegEnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_PLOGIEnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_DestNodeId, K::number, skips, later, L::none, kFibreChannelIdField},
    {L::npiv, NPIV_ConnectedViaId, K::componentId, skips, later},
    {L::npiv, NPIV_NSRegOption, K::number, skips, later},
    {L::npiv, NPIV_NSRegOptionRspnIdName, K::text, skips, later},
    {L::npiv, NPIV_NSRegOptionRsnnNnName, K::text, skips, later},
    {L::npiv, NPIV_PLOGIDestinations, K::level, skips, later, L::plogiDestinations},
    {L::npiv, NPIV_PRLIEnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_AutoPLOGIEnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_NameServeryQueryEnabled, K::yesNo, skips, later},
    {L::npiv, NPIV_NSQuery, K::level, skips, later, L::npivNsQuery},
    {L::npiv, NPIV_SCROption, K::number, skips, later},

    {L::plogiDestinations, FCoE_PLOGIDestination, K::level, skips, first, L::plogiDestination},
    {L::plogiDestination, FCoE_PLOGIDestination_Enable, K::yesNo, skips, first},
    {L::plogiDestination, FCoE_PLOGIDestination_Mode, K::signedNumber, skips, later},
    {L::plogiDestination, FCoE_PLOGIDestination_Id, K::number, skips, later, L::none, kFibreChannelIdField},
    {L::plogiDestination, FCoE_PLOGIDestination_WWPN, K::uid, skips, later},

    {L::nsQuery, FC_NSQueryCommand, K::number, skips, first},
    {L::nsQuery, FC_NSQueryRequestObject, K::signedNumber, skips, later},
    {L::nsQuery, FC_NSQueryRequestObjectValue, K::text, skips, later},
    {L::npivNsQuery, NPIV_NSQueryCommand, K::number, skips, first},
    {L::npivNsQuery, NPIV_NSQueryRequestObject, K::signedNumber, skips, later},
    {L::npivNsQuery, NPIV_NSQueryRequestObjectValue, K::text, skips, later},

    {L::ptp, PTP_Enabled, K::yesNo, skips, alone},
    {L::ptp, PTP_ClockId, K::uid, skips, first},
    {L::ptp, PTP_PortNumber, K::number, skips, later},
    {L::ptp, PTP_ClockClass, K::number, skips, later},
    {L::ptp, PTP_ClockAccuracy, K::number, skips, later},
    {L::ptp, PTP_Priority1, K::number, skips, later},
    {L::ptp, PTP_Priority2, K::number, skips, later},
    {L::ptp, PTP_DomainNumber, K::number, skips, later},
    {L::ptp, PTP_AnnounceInterval, K::signedNumber, skips, later},
    {L::ptp, PTP_SyncInterval, K::signedNumber, skips, later},
    {L::ptp, PTP_DelayRequestInterval, K::signedNumber, skips, later},
    {L::ptp, PTP_DelayMechanism, K::number, skips, later, L::none, "ptp.delay-mechanism"},
    {L::ptp, PTP_AnnounceReceiptTimeout, K::number, skips, later},
    {L::ptp, PTP_MasterSlaveFlag, K::yesNo, skips, later},
    {L::ptp, PTP_StartOffset, K::signedNumber, skips, later}, // the low half of 64 bits
    {L::ptp, PTP_PercentageBadTimestamp, K::number, skips, later},
    {L::ptp, PTP_TimestampError, K::signedNumber, skips, later}, // the low half of 64 bits
    {L::ptp, PTP_PercentageBadCrc, K::number, skips, later},
    {L::ptp, PTP_PercentageDropFollowUpMessages, K::number, skips, later},
    {L::ptp, PTP_PercentageDropDelayResponseMessages, K::number, skips, later},

    {L::lldp, LLDP_ChassisId, K::mac, skips, first},
    {L::lldp, LLDP_PortIdMac, K::mac, skips, later},
    {L::lldp, LLDP_PortIdInterfaceName, K::text, skips, later},
    {L::lldp, LLDP_PortIdSubType, K::number, skips, later},
    {L::lldp, LLDP_HoldTime, K::number, skips, later},
    {L::lldp, LLDP_TxInterval, K::number, skips, later},
    {L::lldp, LLDP_TxDelay, K::number, skips, later},

    {L::dcbx, DCBX_Enabled, K::yesNo, skips, alone},
    {L::dcbx, DCBX_FeatureTlvList, K::level, skips, first, L::features},
    {L::features, DCBX_FeatureTlv, K::level, skips, first, L::feature},
    {L::feature, DCBX_FeatureTlv_Type, K::number, skips, first},
    {L::feature, DCBX_FeatureTlv_Length, K::number, skips, later},
    {L::feature, DCBX_FeatureTlv_OperVersion, K::number, skips, later},
    {L::feature, DCBX_FeatureTlv_MaxVersion, K::number, skips, later},
    {L::feature, DCBX_FeatureTlv_Enable, K::yesNo, skips, later},
    {L::feature, DCBX_FeatureTlv_Willing, K::yesNo, skips, later},
    {L::feature, DCBX_FeatureTlv_SubType, K::number, skips, later},
    {L::feature, DCBX_FeatureTlv_OperVersionEnabled, K::yesNo, skips, later},
    {L::feature, DCBX_FeatureTlv_Value, K::bytes, skips, later},
};

EditableField const* FieldOf(char const* fullName)
{
    if (!fullName) return nullptr;
    for (EditableField const& field : AllFields())
        if (field.GetFullName() == fullName) return &field;
    return nullptr;
}

std::vector<TlvRule> MakeSchema()
{
    std::vector<TlvRule> rules;
    for (Row const& row : kRows)
        rules.push_back(
            {row.where, row.id.GetName(), row.kind, row.reading, row.building, row.inside, FieldOf(row.field)});
    // The library registers these ids under the names that `show` has for the encapsulations.
    for (ValueName const* entry = FieldOf(kEncapsulationField)->valueNames; entry->name; ++entry)
        rules.push_back({L::atmEncapsulation, entry->name, K::presence, reads, first, L::none, nullptr});
    return rules;
}

constexpr std::size_t kSwitchSize = 12; // bytes of a level that is one number

/// What may be first in a level; null for none, or for more than one.
struct FirstIds {
    TlvRule const* alone = nullptr;
    TlvRule const* first = nullptr;
    unsigned int count = 0; // of those that are not alone
};

std::vector<FirstIds> MakeFirstIds() // by level
{
    std::vector<FirstIds> levels(static_cast<std::size_t>(TlvLevel::option) + 1);
    for (TlvRule const& rule : TlvSchema()) {
        FirstIds& ids = levels[static_cast<std::size_t>(rule.where)];
        if (rule.building == TlvBuilding::alone) ids.alone = &rule;
        if (rule.building == TlvBuilding::first) ids.first = ++ids.count == 1 ? &rule : nullptr;
    }
    return levels;
}

} // namespace

std::vector<TlvRule> const& TlvSchema()
{
    static std::vector<TlvRule> const kSchema = MakeSchema();
    return kSchema;
}

std::string TlvRefusal(TlvKind kind, std::size_t length)
{
    switch (kind) {
    case TlvKind::number:
    case TlvKind::signedNumber:
    case TlvKind::yesNo:
    case TlvKind::vlanTag:
    case TlvKind::operation: return length < 4 ? "4 bytes wanted" : "";
    case TlvKind::exactAddress: return length != 4 && length != 16 ? "4 or 16 bytes wanted" : "";
    case TlvKind::componentId: return length % 4 != 0 ? "a multiple of 4 bytes wanted" : "";
    default: return "";
    }
}

TlvRule const* FirstBuilt(TlvLevel level, std::size_t bytes)
{
    static std::vector<FirstIds> const kFirst = MakeFirstIds();
    FirstIds const& ids = kFirst[static_cast<std::size_t>(level)];
    return ids.alone && bytes == kSwitchSize ? ids.alone : ids.first;
}

} // namespace ifcoreTool
