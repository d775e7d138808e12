#include "editableFields.hpp"

#include "toolError.hpp"

#include <cstring>
#include <map>

namespace ifcoreTool {

namespace {

constexpr ValueName kInterfaceTypes[] = {{0, "ethernet"}, {1, "atm"},         {2, "ppp"},  {3, "pos"},
                                         {4, "gre"},      {5, "unconnected"}, {6, "npiv"}, {0, nullptr}};
constexpr ValueName kEncapsulations[] = {
    {0, "None"},       {1, "VMR_IpV4"},  {2, "Eth_VMBFcs"},  {3, "Eth_VMBNoFcs"},  {4, "VMR_IpV6"},
    {5, "VMR_Mpls"},   {6, "LLCR_CLIP"}, {7, "LLCB_EthFcs"}, {8, "LLCB_EthNoFcs"}, {9, "LLCR_PPPoA"},
    {10, "VMR_PPPoA"}, {11, "LLC_ISIS"}, {12, "VM_ISIS"},    {13, "LLC"},          {14, "LLC_L2TP"},
    {15, "VMR_L2TP"},  {0, nullptr}};
constexpr ValueName kAddressModes[] = {{0, "fabric-provided"}, {1, "server-provided"}, {2, "both"}, {0, nullptr}};
constexpr ValueName kDelayMechanisms[] = {{1, "E2E"}, {2, "P2P"}, {0, nullptr}};

// Reading. A getter names its record by its class.

template <auto getter> struct GetterOf;
template <class Class, class Result, Result (Class::*getter)() const> struct GetterOf<getter> {
    using Record = Class;
    using Value = std::decay_t<Result>;
};

template <auto getter> Json Get(RecordRef const& record)
{
    return ToJson((std::get<typename GetterOf<getter>::Record const*>(record)->*getter)());
}

// Writing, in the type that the edit reads.

template <class Archived, class Value> void WriteArchived(EArchive& archive, Value const& value)
{
    archive << static_cast<Archived const&>(static_cast<Archived>(value));
}
template <class Count, class Sequence> void WriteSequence(EArchive& archive, Sequence const& values)
{
    if (values.size() > std::numeric_limits<Count>::max())
        throw BadInput("a list of " + std::to_string(values.size()) + " elements is too long");
    archive << static_cast<Count>(values.size());
    for (auto const& value : values) archive << value;
}

template <class Value, class Archived> void Write(Json const& json, EArchive& archive)
{
    Value value{};
    FromJson(json, value);
    WriteArchived<Archived>(archive, value);
}
template <class Sequence, class Count> void WriteList(Json const& json, EArchive& archive)
{
    Sequence values;
    FromJson(json, values);
    WriteSequence<Count>(archive, values);
}

/// The type in which an enumeration is typed and archived; others stay.
template <class Value> using Plain = typename NumberTraits<Value>::Type;

/// Builds the rows of one record.
class Rows {
public:
    Rows(std::vector<EditableField>& fields, RecordKind record) : m_fields(fields), m_record(record) {}

    /// A field with a getter. \p Archived is the type that its edit reads when that is not the getter's.
    template <auto getter, class Archived = Plain<typename GetterOf<getter>::Value>>
    Rows& Field(char const* name, unsigned int subId, char const* operation, char const* unit = "",
                ValueName const* names = nullptr)
    {
        using Value = Plain<typename GetterOf<getter>::Value>;
        return Add<Value>(name, subId, operation, unit, names, Get<getter>, Write<Value, Archived>);
    }
    /// A list with a getter; its edit reads a count of that type and the elements.
    template <auto getter, class Count = unsigned int>
    Rows& List(char const* name, unsigned int subId, char const* operation)
    {
        using Value = typename GetterOf<getter>::Value;
        return Add<Value>(name, subId, operation, "", nullptr, Get<getter>, WriteList<Value, Count>);
    }
    /// A field that no getter gives.
    template <class Value> Rows& Hidden(char const* name, unsigned int subId, Json (*read)(RecordRef const&))
    {
        return Add<Value>(name, subId, "", "", nullptr, read, Write<Value, Value>);
    }
    /// A field that no edit reaches.
    template <auto getter>
    Rows& Shown(char const* name, char const* unit = "", ValueName const* names = nullptr, char const* operation = "")
    {
        using Value = Plain<typename GetterOf<getter>::Value>;
        return Add<Value>(name, 0, operation, unit, names, Get<getter>, nullptr);
    }
    /// Of the field just added.
    Rows& AnnouncedAfter()
    {
        m_fields.back().announced = Announced::afterTheStore;
        return *this;
    }
    Rows& Range(char const* range)
    {
        m_fields.back().range = range;
        return *this;
    }
    Rows& Hexadecimal()
    {
        static constexpr ValueType kType{"number, 32 bits", false, DisplayHexadecimal};
        m_fields.back().type = &kType;
        return *this;
    }

private:
    template <class Value>
    Rows& Add(char const* name, unsigned int subId, char const* operation, char const* unit, ValueName const* names,
              Json (*read)(RecordRef const&), void (*write)(Json const&, EArchive&))
    {
        m_fields.push_back({m_record, name, subId, unit, "", &ValueTypeOf<Value>::kType, names, operation,
                            *operation ? Announced::beforeTheStore : Announced::never, read, write});
        return *this;
    }

    std::vector<EditableField>& m_fields;
    RecordKind m_record;
};

// The fields without accessors are read from the record's own archive, in which they stand in the newest group.

EArchive ReadingArchive(EArchive& written)
{
    EArchive archive;
    archive.SetFromEBlob(written.GetAsEBlob(), true);
    archive.SetMode(2);
    return archive;
}

template <class Value> Value ReadValue(EArchive& archive)
{
    Value value{};
    archive >> value;
    return value;
}

/// Spare fields by edit sub-id, 20 to 40.
template <unsigned int subId> Json PtpSpare(RecordRef const& record)
{
    EArchive written;
    written << *std::get<EPTPConfig const*>(record);
    EArchive archive = ReadingArchive(written);
    ReadValue<unsigned int>(archive); // version
    Json value;
    for (unsigned int at = 20; at <= subId; ++at) {
        if (at == 20)
            value = ToJson(ReadValue<bool>(archive));
        else if (at <= 28)
            value = ToJson(ReadValue<unsigned char>(archive));
        else if (at <= 32)
            value = ToJson(ReadValue<unsigned int>(archive));
        else if (at <= 36)
            value = ToJson(ReadValue<unsigned long>(archive));
        else if (at == 37)
            value = ToJson(ReadValue<EUID>(archive));
        else
            value = ToJson(ReadValue<std::string>(archive));
    }
    return value;
}

Json FcoeHostValue(RecordRef const& record)
{
    EArchive written;
    written << *std::get<EFCoEConfig const*>(record);
    EArchive archive = ReadingArchive(written);
    ReadValue<unsigned int>(archive); // version
    ReadValue<bool>(archive);         // PRLI
    ReadValue<bool>(archive);         // auto PLOGI
    ReadValue<EFCNSQuery>(archive);
    ReadValue<bool>(archive);         // name-server query
    ReadValue<unsigned int>(archive); // SCR option
    return ToJson(ReadValue<unsigned int>(archive));
}

/// The id that the next interface gets; 0 when all are used up.
Json NextId(RecordRef const& record)
{
    EArchive written;
    written << std::get<EInterfaceTable const*>(record)->GetIdGenerator();
    EArchive archive = ReadingArchive(written);
    return ToJson(ReadValue<unsigned int>(archive));
}

void AddTable(std::vector<EditableField>& fields)
{
    using T = EInterfaceTable;
    Rows(fields, RecordKind::table)
        .Shown<&T::GetPortId>("port-id")
        .Hidden<unsigned int>("next-id", 3, NextId)
        .Field<&T::GetVPIMaskMode, unsigned int>("vpi-mask-mode", 2, "SettingVpiMaskMode")
        .Field<&T::GetDHCPv4RequestRate>("dhcpv4.request-rate", 4, "SettingDHCPv4RequestRate")
        .Field<&T::GetDHCPv6RequestRate>("dhcpv6.request-rate", 5, "SettingDHCPv6RequestRate")
        .Field<&T::GetDHCPv4MaxOutstandingRequests>("dhcpv4.max-outstanding", 6, "SettingDHCPv4MaxOutstandingRequests")
        .Field<&T::GetDHCPv6MaxOutstandingRequests>("dhcpv6.max-outstanding", 7, "SettingDHCPv6MaxOutstandingRequests")
        .Field<&T::GetFCoERequestRate>("fcoe.request-rate", 8, "SettingFCoERequestRate")
        .Field<&T::GetFCoERetryCount>("fcoe.retry-count", 9, "SettingFCoERetryCount")
        .Field<&T::GetFCoERetryInterval>("fcoe.retry-interval", 10, "SettingFCoERetryInterval")
        .Field<&T::GetFIPVersion>("fip-version", 11, "SettingFIPVersion")
        .Field<&T::IsTargetLLAddrOptionEnabled>("target-ll-address-option", 12, "SettingTargetLLAddrOptionEnabled")
        .Field<&T::IsFcfMacEnabled>("fcoe.collect-fcf-macs", 13, "SettingFCoECollectFcfMacListEnabled")
        .Field<&T::GetFcfMacCollectionTime>("fcoe.fcf-mac-collection-time", 14, "SettingFCoECollectFcfMacListTimer")
        .Range("1 to 90000")
        .AnnouncedAfter()
        .Field<&T::IsPMacInFpmaEnabled>("fcoe.proposed-mac-in-fpma", 15, "SettingFCoEProposedMacInFpmaEnabled")
        .Field<&T::IsVlanIdEnabled>("fcoe.vlan-id-in-vlan-request", 16, "SettingFCoEVlanNameIdInVlanRequest")
        .Field<&T::IsAutoNeighborDiscoveryEnabled>("auto-neighbor-discovery", 17, "")
        .Field<&T::IsAutoArpEnabled>("auto-arp", 18, "");
}

void AddInterface(std::vector<EditableField>& fields)
{
    using I = EInterfaceItem;
    Rows(fields, RecordKind::interface)
        .Shown<&I::GetLocalId>("id")
        .Shown<&I::IsEnabled>("enabled")
        .Field<&I::GetName>("name", 14, "SettingInterfaceName")
        .Field<&I::GetType, int>("type", 16, "SettingInterfaceType", "", kInterfaceTypes)
        .Field<&I::GetEUID>("euid", 5, "SettingInterfaceUid")
        .Field<&I::OverrideAutogenEuid>("override-euid", 8, "")
        .Field<&I::GetMacAddress>("mac", 7, "SettingInterfaceMac")
        .Field<&I::GetVLANItem>("vlan", 9, "SettingInterfaceVlan")
        .Field<&I::GetMTU>("mtu", 15, "SettingInterfaceMTU", "bytes")
        .Field<&I::GetVcatCircuitId>("vcat-circuit-id", 28, "SettingVcatCircuitId")
        .Field<&I::GetEncapsulation, unsigned int>("atm.encapsulation", 12, "SettingInterfaceATMEncapsulation", "",
                                                   kEncapsulations)
        .Field<&I::GetATMMode, unsigned int>("atm.mode", 13, "SettingInterfaceATMMode")
        .Field<&I::GetVPI>("atm.vpi", 10, "SettingInterfaceVPI")
        .Field<&I::GetVCI>("atm.vci", 11, "SettingInterfaceVCI")
        .Field<&I::GetPPPHandle>("ppp.handle", 2, "SettingInterfacePPPHandle")
        .Field<&I::GetPPPSession>("ppp.session", 3, "SettingInterfacePPPSession")
        .Field<&I::GetGreSourceIp>("gre.source", 17, "SettingInterfaceGreSourceIp")
        .Field<&I::GetGreDestIp>("gre.destination", 18, "SettingInterfaceGreDestIp")
        .Field<&I::GetGreUseChecksum>("gre.use-checksum", 19, "SettingInterfaceGreUseChecksum")
        .Field<&I::GetGreUseSequence>("gre.use-sequence", 20, "SettingInterfaceGreUseSequence")
        .Field<&I::GetGreUseKey>("gre.use-key", 21, "SettingInterfaceGreUseKey")
        .Field<&I::GetGreInKey, int>("gre.in-key", 22, "SettingInterfaceGreInKey")
        .Field<&I::GetGreOutKey, int>("gre.out-key", 23, "SettingInterfaceGreOutKey")
        .Field<&I::GetConnectedViaId>("routed.connected-via", 4, "SettingInterfaceConnectedViaId")
        .Field<&I::GetIPv6Gateway>("ipv6.gateway", 29, "SettingIPv6Gateway")
        .Field<&I::IsDHCPEnabled>("dhcp.enabled", 25, "")
        .Field<&I::IsDHCPv6Enabled>("dhcpv6.enabled", 27, "")
        .Field<&I::IsFCoEEnabled>("fcoe.enabled", 30, "")
        .Field<&I::IsPTPEnabled>("ptp.enabled", 33, "")
        .Field<&I::IsDCBXEnabled>("dcbx.enabled", 35, "")
        .Field<&I::IsLLDPEnabled>("lldp.enabled", 37, "");
}

void AddAddresses(std::vector<EditableField>& fields)
{
    using V4 = EIPv4AddressItem;
    Rows(fields, RecordKind::ipv4)
        .Shown<&V4::IsEnabled>("enabled")
        .Field<&V4::GetAddress>("address", 3, "SettingIPv4Address")
        .Field<&V4::GetMaskLength>("prefix-length", 2, "SettingIPv4MaskLength", "bits")
        .Range("0 to 32")
        .Field<&V4::GetGateway>("gateway", 1, "SettingIPv4Gateway")
        .Field<&V4::GetMSS>("mss", 4, "", "bytes")
        .Range("0, 28 to 65495");
    using V6 = EIPv6AddressItem;
    Rows(fields, RecordKind::ipv6)
        .Shown<&V6::GetLocalId>("id")
        .Field<&V6::GetAddress>("address", 1, "SettingIPv6Address")
        .Field<&V6::GetMaskLength>("prefix-length", 2, "SettingIPv6MaskLength", "bits")
        .Range("0 to 128");
}

void AddDhcp(std::vector<EditableField>& fields)
{
    using D = EDHCPProperties;
    Rows(fields, RecordKind::dhcp)
        .Field<&D::GetDHCPClientId>("client-id", 1, "SettingDhcpClientId")
        .Field<&D::GetDHCPServerId>("server-id", 2, "SettingDhcpServerId")
        .Field<&D::GetDHCPVendorId>("vendor-class-id", 4, "SettingDhcpVendorClassId")
        .Field<&D::GetReleaseTimer>("release-timer", 3, "SettingDhcpReleaseTimer")
        .Field<&D::GetRetryCount>("retry-count", 8, "SettingDhcpRetryCount")
        .Range("at least 1")
        .Field<&D::GetDHCPRelayAgentIP>("relay-agent", 6, "SettingDhcpRelayAgentIP")
        .Field<&D::GetDHCPRelayDestination>("relay-destination", 7, "SettingDhcpRelayDestination")
        .List<&D::GetDHCPCustomTLVs>("options", 5, "SettingDhcpTLVs");
    using D6 = EDHCPv6Properties;
    Rows(fields, RecordKind::dhcpv6)
        .Field<&D6::GetIAId>("ia-id", 1, "SettingDhcpv6IAId")
        .Field<&D6::GetIAType, int>("ia-type", 2, "SettingDhcpv6IAType")
        .Field<&D6::GetRenewTime>("renew-time", 3, "SettingDhcpv6RenewTime")
        .Field<&D6::GetDHCPv6RelayLinkAddress>("relay-link-address", 5, "SettingDhcpv6RelayLinkAddress")
        .Field<&D6::GetDHCPv6RelayDestination>("relay-destination", 6, "SettingDhcpv6RelayDestination")
        .List<&D6::GetDHCPv6CustomTLVs>("options", 4, "SettingDhcpv6TLVs");
}

void AddFcoe(std::vector<EditableField>& fields)
{
    using F = EFCoEConfig;
    Rows(fields, RecordKind::fcoe)
        .Field<&F::GetSrcPortWWN>("source-port-name", 1, "SettingFCoESrcPortWWN")
        .Field<&F::GetSrcNodeWWN>("source-node-name", 2, "SettingFCoESrcNodeWWN")
        .Field<&F::GetB2BRxSize>("b2b-rx-size", 3, "SettingFCoEB2BRxSize", "bytes")
        .Field<&F::GetMaxFCoESize>("max-frame-size", 13, "SettingFCoEMaxSize", "bytes")
        .Field<&F::GetSrcOUI>("fc-map", 8, "SettingFCoESrcOUI")
        .Hexadecimal()
        .Field<&F::GetAddressMode, unsigned int>("address-mode", 14, "SettingFCoEAddressMode", "", kAddressModes)
        .Field<&F::IsFIPEnabled>("fip", 9, "SettingFCoEFIPEnabled")
        .AnnouncedAfter()
        .Field<&F::IsResetFIPDiscoveryEnabled>("reset-fip-discovery", 26, "SettingResetFIPDiscoveryEnabled")
        .AnnouncedAfter()
        .Field<&F::GetResetFIPDiscoveryNumberOfRetries>("reset-fip-discovery-retries", 27,
                                                        "SettingResetFIPDiscoveryNumberOfRetries")
        .AnnouncedAfter()
        .Field<&F::IsVlanDiscoveryEnabled>("vlan-discovery", 10, "SettingFCoEVlanDiscoveryEnabled")
        .Field<&F::IsVlanDiscoveryUntagged>("vlan-discovery-untagged", 11, "SettingFCoEVlanDiscoveryUntagged")
        .Field<&F::IsKeepAliveEnabled>("keep-alive", 12, "SettingFIPKeepAliveEnabled")
        .AnnouncedAfter()
        .Field<&F::IsVnPortKeepAliveEnabled>("vn-port-keep-alive", 25, "SettingVnPortKeepAliveEnabled")
        .AnnouncedAfter()
        .Field<&F::GetVendorID>("vendor-id", 15, "SettingFCoEVendorID")
        .List<&F::GetVendorSpecificTLVs>("vendor-descriptors", 16, "SettingFCoEVendorSpecificTLVs")
        .Field<&F::IsPLOGIEnabled>("plogi", 6, "SettingFCoEPLOGIEnabled")
        .Field<&F::IsAutoPLOGIEnabled>("auto-plogi", 20, "SettingAutoPLOGIEnabled")
        .Field<&F::GetDestNodeId>("destination-id", 7, "SettingFCoEDestNodeId")
        .Hexadecimal()
        .List<&F::GetPLOGIDestinations>("plogi-destinations", 18, "SettingFCoEPLOGIDestinations")
        .Field<&F::IsPRLIEnabled>("prli", 19, "SettingPRLIEnabled")
        .Field<&F::IsNSRegistrationEnabled>("ns-registration", 5, "SettingFCoENSRegistrationEnabled")
        .Field<&F::GetNSRegOption>("ns-registration-options", 17, "SettingFCoENSRegOption")
        .Field<&F::IsNSQueryEnabled>("ns-query", 22, "SettingNSQueryEnabled")
        .Field<&F::GetFCNSQuery>("ns-query-options", 21, "SettingFCNSQueryOption")
        .Field<&F::IsSCREnabled>("scr", 4, "SettingFCoESCREnabled")
        .Field<&F::GetFCSCROption, unsigned int>("scr-option", 23, "SettingFCSCROption")
        .Hidden<unsigned int>("host-value", 24, FcoeHostValue);
    using N = ENPIVConfig;
    Rows(fields, RecordKind::npiv)
        .Field<&N::GetSrcPortWWN>("source-port-name", 1, "SettingNPIVSrcPortWWN")
        .Field<&N::GetSrcNodeWWN>("source-node-name", 2, "SettingNPIVSrcNodeWWN")
        .Field<&N::GetConnectedViaId>("connected-via", 8, "SettingNPIVConnectedViaId")
        .Field<&N::GetB2BRxSize>("b2b-rx-size", 3, "SettingNPIVB2BRxSize", "bytes")
        .Field<&N::IsVnPortKeepAliveEnabled>("vn-port-keep-alive", 16, "SettingNpIVVnPortKeepAliveEnabled")
        .AnnouncedAfter()
        .Field<&N::IsPLOGIEnabled>("plogi", 6, "SettingNPIVPLOGIEnabled")
        .Field<&N::IsAutoPLOGIEnabled>("auto-plogi", 12, "SettingNPIVAutoPLOGIEnabled")
        .Field<&N::GetDestNodeId>("destination-id", 7, "SettingNPIVDestNodeId")
        .Hexadecimal()
        .List<&N::GetPLOGIDestinations>("plogi-destinations", 10, "SettingNPIVPLOGIDestinations")
        .Field<&N::IsPRLIEnabled>("prli", 11, "SettingNPIVPRLIEnabled")
        .Field<&N::IsNSRegistrationEnabled>("ns-registration", 5, "SettingNPIVNSRegistrationEnabled")
        .AnnouncedAfter()
        .Field<&N::GetNSRegOption>("ns-registration-options", 9, "SettingNPIVNSRegOption")
        .Field<&N::IsNSQueryEnabled>("ns-query", 14, "SettingNPIVNSQueryEnabled")
        .Field<&N::GetFCNSQuery>("ns-query-options", 13, "SettingNPIVNSQueryOption")
        .Field<&N::IsSCREnabled>("scr", 4, "SettingNPIVSCREnabled")
        .Field<&N::GetFCSCROption, unsigned int>("scr-option", 15, "SettingNPIVSCROption");
}

void AddPtp(std::vector<EditableField>& fields)
{
    using P = EPTPConfig;
    Rows(fields, RecordKind::ptp)
        .Field<&P::GetClockId>("clock-id", 1, "SettingPTPClockId")
        .Field<&P::GetPortNumber>("port-number", 2, "SettingPTPPortNumber")
        .Field<&P::GetClockClass>("clock-class", 3, "SettingPTPClockClass")
        .Field<&P::GetClockAccuracy>("clock-accuracy", 4, "SettingPTPClockAccuracy")
        .Field<&P::GetPriority1>("priority-1", 5, "SettingPTPPriority1")
        .Field<&P::GetPriority2>("priority-2", 6, "SettingPTPPriority2")
        .Field<&P::GetDomainNumber>("domain", 7, "SettingPTPDomainNumber")
        .Field<&P::GetLogAnnounceInterval>("log-announce-interval", 8, "SettingPTPLogAnnounceInterval", "log2 s")
        .Range("-5 to 26")
        .Field<&P::GetLogSyncInterval>("log-sync-interval", 9, "SettingPTPLogSyncInterval", "log2 s")
        .Range("-5 to 26")
        .Field<&P::GetLogDelayRequestInterval>("log-delay-request-interval", 10, "SettingPTPLogDelayRequestInterval",
                                               "log2 s")
        .Range("-5 to 22")
        .Field<&P::GetAnnounceReceiptTimeout>("announce-receipt-timeout", 11, "SettingPTPAnnounceReceiptTimeout",
                                              "announce intervals")
        .Shown<&P::GetDelayMechanism>("delay-mechanism", "", kDelayMechanisms, "SettingPTPDelayMechanism")
        .Field<&P::GetClockIsMaster>("clock-is-master", 13, "SettingPTPClockIsMaster")
        .Field<&P::GetStartOffset, unsigned long>("start-offset", 14, "SettingPTPStartOffset")
        .Field<&P::GetPercentageBadTimestamp>("bad-timestamps", 15, "SettingPTPPercentageBadTimestamp", "%")
        .Range("0 to 100")
        .Field<&P::GetTimestampError, unsigned long>("timestamp-error", 16, "SettingPTPTimestampError")
        .Field<&P::GetPercentageBadCrc>("bad-crcs", 17, "SettingPTPPercentageBadCrc", "%")
        .Range("0 to 100")
        .Field<&P::GetPercentageDropFollowUpMessages>("dropped-follow-ups", 18,
                                                      "SettingPTPPercentageDropFollowUpMessages", "%")
        .Range("0 to 100")
        .Field<&P::GetPercentageDropDelayResponseMessages>("dropped-delay-responses", 19,
                                                           "SettingPTPPercentageDropDelayResponseMessages", "%")
        .Range("0 to 100")
        .Hidden<bool>("spare.flag", 20, PtpSpare<20>)
        .Hidden<unsigned char>("spare.byte-0", 21, PtpSpare<21>)
        .Hidden<unsigned char>("spare.byte-1", 22, PtpSpare<22>)
        .Hidden<unsigned char>("spare.byte-2", 23, PtpSpare<23>)
        .Hidden<unsigned char>("spare.byte-3", 24, PtpSpare<24>)
        .Hidden<unsigned char>("spare.byte-4", 25, PtpSpare<25>)
        .Hidden<unsigned char>("spare.byte-5", 26, PtpSpare<26>)
        .Hidden<unsigned char>("spare.byte-6", 27, PtpSpare<27>)
        .Hidden<unsigned char>("spare.byte-7", 28, PtpSpare<28>)
        .Hidden<unsigned int>("spare.word-0", 29, PtpSpare<29>)
        .Hidden<unsigned int>("spare.word-1", 30, PtpSpare<30>)
        .Hidden<unsigned int>("spare.word-2", 31, PtpSpare<31>)
        .Hidden<unsigned int>("spare.word-3", 32, PtpSpare<32>)
        .Hidden<unsigned long>("spare.long-0", 33, PtpSpare<33>)
        .Hidden<unsigned long>("spare.long-1", 34, PtpSpare<34>)
        .Hidden<unsigned long>("spare.long-2", 35, PtpSpare<35>)
        .Hidden<unsigned long>("spare.long-3", 36, PtpSpare<36>)
        .Hidden<EUID>("spare.id", 37, PtpSpare<37>)
        .Hidden<std::string>("spare.text-0", 38, PtpSpare<38>)
        .Hidden<std::string>("spare.text-1", 39, PtpSpare<39>)
        .Hidden<std::string>("spare.text-2", 40, PtpSpare<40>);
}

void AddBridging(std::vector<EditableField>& fields)
{
    using B = EDCBXConfig;
    Rows(fields, RecordKind::dcbx)
        .Field<&B::GetOUI>("oui", 2, "SettingDCBXOUI")
        .Hexadecimal()
        .Field<&B::GetSubType, unsigned int>("subtype", 3, "SettingDCBXSubType")
        .Field<&B::GetControlTlvMaxVersion>("control.max-version", 4, "SettingDCBXControlTlvMaxVersion")
        .Field<&B::GetControlTlvOperVersion>("control.oper-version", 5, "SettingDCBXControlTlvOperVersion")
        .Field<&B::GetControlTlvOperVersionEnabled>("control.override-oper-version", 6,
                                                    "SettingDCBXControlTlvOperVersionEnabled")
        .List<&B::GetFeatureTlvs, unsigned char>("features", 1, "SettingDCBXFeatureTlvs");
    using L = ELLDPConfig;
    Rows(fields, RecordKind::lldp)
        .Field<&L::GetChassisId>("chassis-id", 1, "SettingLLDPChassisId")
        .Field<&L::GetPortId>("port-id", 2, "SettingLLDPPortId")
        .Field<&L::GetHoldTime>("hold-time", 3, "SettingLLDPHoldTime", "tx intervals")
        .Field<&L::GetTxInterval>("tx-interval", 4, "SettingLLDPTxInterval", "s")
        .Field<&L::GetTxDelay>("tx-delay", 5, "SettingLLDPTxDelay", "s")
        .Field<&L::IsFastInitEnabled>("fast-init", 6, "SettingLLDPFastInitEnabled")
        .Shown<&L::GetTimeToLive>("time-to-live", "s");
}

std::vector<EditableField> MakeFields()
{
    std::vector<EditableField> fields;
    AddTable(fields);
    AddInterface(fields);
    AddAddresses(fields);
    AddDhcp(fields);
    AddFcoe(fields);
    AddPtp(fields);
    AddBridging(fields);
    return fields;
}

/// The value that a name stands for; other text stays as it is.
Json ValueOfName(EditableField const& field, Json const& json)
{
    if (!field.valueNames || !json.is_string()) return json;
    std::string const text = json.get<std::string>();
    for (ValueName const* entry = field.valueNames; entry->name; ++entry)
        if (text == entry->name) return Json(entry->value);
    return json;
}

} // namespace

std::vector<EditableField> const& AllFields()
{
    static std::vector<EditableField> const kFields = MakeFields();
    return kFields;
}

EditableField const* FindField(RecordKind record, std::string const& name)
{
    for (EditableField const& field : AllFields())
        if (field.record == record && name == field.name) return &field;
    return nullptr;
}

EditableField const* FieldOfOperation(std::string const& operation)
{
    static std::map<std::string, EditableField const*> const kFields = [] {
        std::map<std::string, EditableField const*> fields;
        for (EditableField const& field : AllFields())
            if (*field.operation) fields[field.operation] = &field;
        return fields;
    }();
    auto const found = kFields.find(operation);
    return found == kFields.end() ? nullptr : found->second;
}

Json FieldJson(EditableField const& field, Json const& value)
{
    if (!field.valueNames) return value;
    for (ValueName const* entry = field.valueNames; entry->name; ++entry)
        if (value == entry->value) return Json(entry->name);
    return Json(value.dump());
}

std::string FieldText(EditableField const& field, Json const& value)
{
    return field.type->display(FieldJson(field, value));
}

EBlob FieldArchive(EditableField const& field, std::string const& text)
{
    EArchive archive;
    try {
        field.write(ValueOfName(field, JsonOfText(text, field.type->isComposite)), archive);
    } catch (ToolError const& error) {
        throw BadInput(field.GetFullName() + ": " + error.what());
    }
    return archive.GetAsEBlob();
}

} // namespace ifcoreTool
