#include "eInterfaceTLVParser.hpp"

#include "eAddressFamily.hpp"
#include "eAtmEncapsulationIds.hpp"
#include "eTLVParserMap.hpp"
#include "tlvParserMapTable.hpp"

#include <string>

using namespace TLVIds::InterfaceTable;
namespace Atm = TLVIds::ATMEncapsulation;
namespace ListOp = TLVIds::ListOp;

using EVLANProperties = EVLANIPAddressTableItemProperties;

void TLVParseError()
{
    throw -1;
}

TLVParserMapInitStruct::TLVParserMapInitStruct(void (*initializer)())
{
    GetTLVParserMapTable().push_back(initializer);
}

// The maps are made and registered in this order, which is that of the host's registry.
std::map<char const*, int, StringComparer> TLVProtocolEnumStatMap;

// ---- Values ---------------------------------------------------------------------------------------------------------

static bool ReadFlag(TLVReader& value)
{
    return ReadU32(value) != 0;
}

static unsigned char const* TakeAll(TLVReader& value)
{
    return Take(value, value.remaining);
}

static EComponentId ReadComponentId(TLVReader& value)
{
    if (value.remaining % 4 != 0) TLVParseError();
    EComponentId id;
    while (value.remaining > 0) id += ReadU32(value);
    return id;
}

// ---- VLAN tags ------------------------------------------------------------------------------------------------------

static void ParseVLANEnabledTLV(TLVReader& value, EVLANProperties& vlans)
{
    vlans.SetEnabled(ReadFlag(value));
}

static void ParseVLANTAGTLV(TLVReader& value, EVLANProperties& vlans)
{
    unsigned int const tag = ReadU32(value);
    unsigned int const level = vlans.GetVLANCount();
    vlans.SetVLANCount(level + 1);
    vlans.SetVlanTag(tag, level);
}

// On purpose: id and priority are those of a single VLAN, so that they cut a stack of tags back to one level.
static void ParseVLANIdTLV(TLVReader& value, EVLANProperties& vlans)
{
    vlans.SetVLANCount(1);
    vlans.SetVLANID(static_cast<unsigned short>(ReadU32(value)), 0);
}

static void ParseVLANPriorityTLV(TLVReader& value, EVLANProperties& vlans)
{
    vlans.SetVLANCount(1);
    vlans.SetUserPriority(static_cast<unsigned char>(ReadU32(value)), 0);
}

static TLVParserEntry<EVLANProperties> const kVLANParsers[] = {
    {VLAN_Enabled, ParseVLANEnabledTLV},
    {VLAN_Id, ParseVLANIdTLV},
    {VLAN_Priority, ParseVLANPriorityTLV},
};
TLVParserMap<EVLANProperties> VLANTLVParserMap;
static void ParserInit2_VLANTLVParserMap()
{
    VLANTLVParserMap.Fill(kVLANParsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_VLANTLVParserMap(ParserInit2_VLANTLVParserMap);

static TLVParserEntry<EVLANProperties> const kVLANListParsers[] = {
    {VLAN_Enabled, ParseVLANEnabledTLV},
    {VLAN_TAG, ParseVLANTAGTLV},
    {VLAN_Id, ParseVLANIdTLV},
    {VLAN_Priority, ParseVLANPriorityTLV},
};
static TLVParserMap<EVLANProperties> VLANLISTTLVParserMap;
static void ParserInit2_VLANLISTTLVParserMap()
{
    VLANLISTTLVParserMap.Fill(kVLANListParsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_VLANLISTTLVParserMap(ParserInit2_VLANLISTTLVParserMap);

// ---- DHCP -----------------------------------------------------------------------------------------------------------

static void ParseDHCPEnabledTLV(TLVReader& value, bool& enabled)
{
    enabled = ReadFlag(value);
}

static TLVParserEntry<bool> const kDHCPParsers[] = {
    {DHCP_Enabled, ParseDHCPEnabledTLV},
};
static TLVParserMap<bool> DHCPTLVParserMap;
static void ParserInit2_DHCPTLVParserMap()
{
    DHCPTLVParserMap.Fill(kDHCPParsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_DHCPTLVParserMap(ParserInit2_DHCPTLVParserMap);

// ---- IPv4 address ---------------------------------------------------------------------------------------------------

static void ParseIPv4EnabledTLV(TLVReader& value, EIPv4AddressItem& item)
{
    item.SetEnabled(ReadFlag(value));
}

static void ParseIPv4AddressTLV(TLVReader& value, EIPv4AddressItem& item)
{
    unsigned char const* const bytes = Take(value, 4);
    if (!bytes) return; // on purpose: a short address is skipped, a short number is an error
    EIPAddress address;
    address.SetAddress(bytes, kIPv4Family);
    item.SetAddress(address);
}

static void ParseIPv4GatewayTLV(TLVReader& value, EIPv4AddressItem& item)
{
    unsigned char const* const bytes = Take(value, 4);
    if (!bytes) return; // on purpose, as with the address
    EIPAddress gateway;
    gateway.SetAddress(bytes, kIPv4Family);
    item.SetGateway(gateway);
}

static void ParseIPv4MaskLengthTLV(TLVReader& value, EIPv4AddressItem& item)
{
    item.SetMaskLength(ReadU32(value));
}

static TLVParserEntry<EIPv4AddressItem> const kIPv4Parsers[] = {
    {IP4_Enabled, ParseIPv4EnabledTLV},
    {IP4_IPAddress, ParseIPv4AddressTLV},
    {IP4_Gateway, ParseIPv4GatewayTLV},
    {IP4_MaskLength, ParseIPv4MaskLengthTLV},
};
static TLVParserMap<EIPv4AddressItem> IPv4TLVParserMap;
static void ParserInit2_IPv4TLVParserMap()
{
    IPv4TLVParserMap.Fill(kIPv4Parsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_IPv4TLVParserMap(ParserInit2_IPv4TLVParserMap);

// ---- IPv6 addresses -------------------------------------------------------------------------------------------------

static void ParseIPv6AddressTLV(TLVReader& value, EIPv6AddressItem& item)
{
    unsigned char const* const bytes = Take(value, 16);
    if (!bytes) return; // on purpose: a short address is skipped, a short number is an error
    EIPAddress address;
    address.SetAddress(bytes, kIPv6Family);
    item.SetAddress(address);
}

static void ParseIPv6MaskLengthTLV(TLVReader& value, EIPv6AddressItem& item)
{
    item.SetMaskLength(ReadU32(value));
}

static TLVParserEntry<EIPv6AddressItem> const kIPv6Parsers[] = {
    {IP6_IPAddress, ParseIPv6AddressTLV},
    {IP6_MaskLength, ParseIPv6MaskLengthTLV},
};
static TLVParserMap<EIPv6AddressItem> IPv6TLVParserMap;
static void ParserInit2_IPv6TLVParserMap()
{
    IPv6TLVParserMap.Fill(kIPv6Parsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_IPv6TLVParserMap(ParserInit2_IPv6TLVParserMap);

// ---- Operations on lists --------------------------------------------------------------------------------------------

/// Null only when the container's factory makes no item.
template <class Item, class Parent> static Item* Added(EUniqueIDMap<Item, Parent>& list, unsigned int id)
{
    return list.AddItem(id) == id ? list.GetItem(list.find(id)) : nullptr;
}

/// The item of this id; on purpose a new one when there is none: an edit of an unknown id is an add.
template <class Item, class Parent> static Item* FindOrAdd(EUniqueIDMap<Item, Parent>& list, unsigned int id)
{
    auto const found = list.find(id);
    return found == list.end() ? Added(list, id) : list.GetItem(found);
}

template <class Item, class Parent> static void ParseListRemoveTLV(TLVReader& value, EUniqueIDMap<Item, Parent>& list)
{
    auto const found = list.find(ReadU32(value));
    if (found != list.end()) list.RemoveItem(found);
}

/// Empties the container alone: a table that is one keeps its settings, and no observer is told.
template <class Item, class Parent> static void ParseListRemoveAllTLV(TLVReader&, EUniqueIDMap<Item, Parent>& list)
{
    list.EUniqueIDMap<Item, Parent>::Empty();
}

static void ParseIPv6ListAddTLV(TLVReader& value, EIPv6AddressItemList& addresses)
{
    // On purpose without looking for the id, unlike an interface: an item that has it is replaced by a new one.
    EIPv6AddressItem* const item = Added(addresses, ReadU32(value));
    if (item) TLVParser<EIPv6AddressItem>::Parse(value, IPv6TLVParserMap, *item);
}

static void ParseIPv6ListEditTLV(TLVReader& value, EIPv6AddressItemList& addresses)
{
    EIPv6AddressItem* const item = FindOrAdd(addresses, ReadU32(value));
    if (item) TLVParser<EIPv6AddressItem>::Parse(value, IPv6TLVParserMap, *item);
}

static void ParseIPv6ListRemoveTLV(TLVReader& value, EIPv6AddressItemList& addresses)
{
    ParseListRemoveTLV(value, addresses);
}

static void ParseIPv6ListRemoveAllTLV(TLVReader& value, EIPv6AddressItemList& addresses)
{
    ParseListRemoveAllTLV(value, addresses);
}

static TLVParserEntry<EIPv6AddressItemList> const kIPv6ListParsers[] = {
    {ListOp::Add, ParseIPv6ListAddTLV},
    {ListOp::Edit, ParseIPv6ListEditTLV},
    {ListOp::Remove, ParseIPv6ListRemoveTLV},
    {ListOp::RemoveAll, ParseIPv6ListRemoveAllTLV},
};
static TLVParserMap<EIPv6AddressItemList> IPv6ListTLVParserMap;
static void ParserInit2_IPv6ListTLVParserMap()
{
    IPv6ListTLVParserMap.Fill(kIPv6ListParsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_IPv6ListTLVParserMap(ParserInit2_IPv6ListTLVParserMap);

// ---- ATM encapsulation ----------------------------------------------------------------------------------------------

// Made here, between the maps: their numbers follow those that the host registers.
TLVIds::TLVId const Atm::None("None");
TLVIds::TLVId const Atm::VMR_IpV4("VMR_IpV4");
TLVIds::TLVId const Atm::Eth_VMBFcs("Eth_VMBFcs");
TLVIds::TLVId const Atm::Eth_VMBNoFcs("Eth_VMBNoFcs");
TLVIds::TLVId const Atm::VMR_IpV6("VMR_IpV6");
TLVIds::TLVId const Atm::VMR_Mpls("VMR_Mpls");
TLVIds::TLVId const Atm::LLCR_CLIP("LLCR_CLIP");
TLVIds::TLVId const Atm::LLCB_EthFcs("LLCB_EthFcs");
TLVIds::TLVId const Atm::LLCB_EthNoFcs("LLCB_EthNoFcs");
TLVIds::TLVId const Atm::LLCR_PPPoA("LLCR_PPPoA");
TLVIds::TLVId const Atm::VMR_PPPoA("VMR_PPPoA");
TLVIds::TLVId const Atm::LLC_ISIS("LLC_ISIS");
TLVIds::TLVId const Atm::VM_ISIS("VM_ISIS");
TLVIds::TLVId const Atm::LLC("LLC");
TLVIds::TLVId const Atm::LLC_L2TP("LLC_L2TP");
TLVIds::TLVId const Atm::VMR_L2TP("VMR_L2TP");

// Told by the id that is there; the value does not matter.
template <eAtmEncapsulationMode present> static void ParseAtmEncapTLV(TLVReader&, eAtmEncapsulationMode& mode)
{
    mode = present;
}
static constexpr auto ParseAtmEncapNoneTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_NONE>;
static constexpr auto ParseAtmEncapVMR_IpV4TLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VMR_IPV4>;
static constexpr auto ParseAtmEncapEth_VMBFcsTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_ETH_VMB_FCS>;
static constexpr auto ParseAtmEncapEth_VMBNoFcsTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_ETH_VMB_NO_FCS>;
static constexpr auto ParseAtmEncapVMR_IpV6TLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VMR_IPV6>;
static constexpr auto ParseAtmEncapVMR_MplsTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VMR_MPLS>;
static constexpr auto ParseAtmEncapLLCR_CLIPTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLCR_CLIP>;
static constexpr auto ParseAtmEncapLLCB_EthFcsTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLCB_ETH_FCS>;
static constexpr auto ParseAtmEncapLLCB_EthNoFcsTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLCB_ETH_NO_FCS>;
static constexpr auto ParseAtmEncapLLCR_PPPoATLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLCR_PPPOA>;
static constexpr auto ParseAtmEncapVMR_PPPoATLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VMR_PPPOA>;
static constexpr auto ParseAtmEncapLLC_ISISTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLC_ISIS>;
static constexpr auto ParseAtmEncapVM_ISISTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VM_ISIS>;
static constexpr auto ParseAtmEncapLLCTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLC>;
static constexpr auto ParseAtmEncapLLC_L2TPTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_LLC_L2TP>;
static constexpr auto ParseAtmEncapVMR_L2TPTLV = ParseAtmEncapTLV<ATM_ENCAPSULATION_VMR_L2TP>;

static TLVParserEntry<eAtmEncapsulationMode> const kAtmEncapsulationParsers[] = {
    {Atm::None, ParseAtmEncapNoneTLV},
    {Atm::VMR_IpV4, ParseAtmEncapVMR_IpV4TLV},
    {Atm::Eth_VMBFcs, ParseAtmEncapEth_VMBFcsTLV},
    {Atm::Eth_VMBNoFcs, ParseAtmEncapEth_VMBNoFcsTLV},
    {Atm::VMR_IpV6, ParseAtmEncapVMR_IpV6TLV},
    {Atm::VMR_Mpls, ParseAtmEncapVMR_MplsTLV},
    {Atm::LLCR_CLIP, ParseAtmEncapLLCR_CLIPTLV},
    {Atm::LLCB_EthFcs, ParseAtmEncapLLCB_EthFcsTLV},
    {Atm::LLCB_EthNoFcs, ParseAtmEncapLLCB_EthNoFcsTLV},
    {Atm::LLCR_PPPoA, ParseAtmEncapLLCR_PPPoATLV},
    {Atm::VMR_PPPoA, ParseAtmEncapVMR_PPPoATLV},
    {Atm::LLC_ISIS, ParseAtmEncapLLC_ISISTLV},
    {Atm::VM_ISIS, ParseAtmEncapVM_ISISTLV},
    {Atm::LLC, ParseAtmEncapLLCTLV},
    {Atm::LLC_L2TP, ParseAtmEncapLLC_L2TPTLV},
    {Atm::VMR_L2TP, ParseAtmEncapVMR_L2TPTLV},
};
static TLVParserMap<eAtmEncapsulationMode> ATMEncapsulationTLVParserMap;
static void ParserInit2_ATMEncapsulationTLVParserMap()
{
    ATMEncapsulationTLVParserMap.Fill(kAtmEncapsulationParsers);
}
static TLVParserMapInitStruct const
    TLVParserMapInitializer_ATMEncapsulationTLVParserMap(ParserInit2_ATMEncapsulationTLVParserMap);

// ---- Interface ------------------------------------------------------------------------------------------------------

static void ParseInterfaceNameTLV(TLVReader& value, EInterfaceItem& interface)
{
    auto const length = static_cast<std::size_t>(value.remaining);
    interface.SetName(std::string(reinterpret_cast<char const*>(TakeAll(value)), length));
}

static void ParseInterfaceTypeTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetType(static_cast<EInterfaceTypeEnum>(ReadU32(value)));
}

static void ParseInterfaceMacTLV(TLVReader& value, EInterfaceItem& interface)
{
    auto const length = static_cast<unsigned int>(value.remaining);
    EMACAddress mac;
    mac.SetMACAddress(EBlob(TakeAll(value), length));
    interface.SetMacAddress(mac);
}

static void ParseInterfaceMultipleVLANTLV(TLVReader& value, EInterfaceItem& interface)
{
    EVLANProperties vlans(0, false);
    TLVParser<EVLANProperties>::Parse(value, VLANLISTTLVParserMap, vlans);
    interface.SetVLANItem(vlans); // always as a whole, an empty level too
}

static void ParseInterfaceDHCPTLV(TLVReader& value, EInterfaceItem& interface)
{
    bool enabled = false;
    TLVParser<bool>::Parse(value, DHCPTLVParserMap, enabled);
    interface.SetDHCPEnabled(enabled); // on purpose at the end of every level: one of settings alone switches DHCP off
}

static void ParseInterfaceEnabledTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetEnabled(ReadFlag(value));
}

static void ParseInterfaceIPv4TLV(TLVReader& value, EInterfaceItem& interface)
{
    TLVParser<EIPv4AddressItem>::Parse(value, IPv4TLVParserMap, interface.GetIPv4AddressItem());
}

static void ParseInterfaceIPv6ListTLV(TLVReader& value, EInterfaceItem& interface)
{
    TLVParser<EIPv6AddressItemList>::Parse(value, IPv6ListTLVParserMap, interface.GetIPv6AddressItemList());
}

static void ParseInterfaceATMEncapsulationTLV(TLVReader& value, EInterfaceItem& interface)
{
    eAtmEncapsulationMode mode = ATM_ENCAPSULATION_NONE;
    TLVParser<eAtmEncapsulationMode>::Parse(value, ATMEncapsulationTLVParserMap, mode);
    interface.SetEncapsulation(mode);
}

static void ParseInterfaceGreSourceIpTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreSourceIp(ReadComponentId(value));
}

static void ParseInterfaceGreDestIpTLV(TLVReader& value, EInterfaceItem& interface)
{
    int const length = value.remaining;
    if (length != 4 && length != 16) TLVParseError(); // on purpose strict, unlike the addresses of an interface
    EIPAddress address;
    address.SetAddress(TakeAll(value), static_cast<unsigned int>(length), length == 4 ? kIPv4Family : kIPv6Family);
    interface.SetGreDestIp(address);
}

static void ParseInterfaceGreUseChecksumTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreUseChecksum(ReadFlag(value));
}

static void ParseInterfaceGreUseSequenceTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreUseSequence(ReadFlag(value));
}

static void ParseInterfaceGreUseKeyTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreUseKey(ReadFlag(value));
}

static void ParseInterfaceGreInKeyTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreInKey(ReadU32(value));
}

static void ParseInterfaceGreOutKeyTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetGreOutKey(ReadU32(value));
}

static void ParseInterfaceConnectedViaIdTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetConnectedViaId(ReadComponentId(value));
}

static void ParseInterfaceAtmVpiTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetVPI(ReadU32(value));
}

static void ParseInterfaceAtmVciTLV(TLVReader& value, EInterfaceItem& interface)
{
    interface.SetVCI(ReadU32(value));
}

static TLVParserEntry<EInterfaceItem> const kInterfaceParsers[] = {
    {IFD_Name, ParseInterfaceNameTLV},
    {IFD_Type, ParseInterfaceTypeTLV},
    {IFD_Mac, ParseInterfaceMacTLV},
    {IFD_VLAN, ParseInterfaceMultipleVLANTLV},
    {IFD_DHCP, ParseInterfaceDHCPTLV},
    {IFD_Enabled, ParseInterfaceEnabledTLV},
    {IFD_IPv4, ParseInterfaceIPv4TLV},
    {IFD_IPv6List, ParseInterfaceIPv6ListTLV},
    {IFD_ATMEncapsulation, ParseInterfaceATMEncapsulationTLV},
    {IFD_GreSourceIp, ParseInterfaceGreSourceIpTLV},
    {IFD_GreDestIp, ParseInterfaceGreDestIpTLV},
    {IFD_GreUseChecksum, ParseInterfaceGreUseChecksumTLV},
    {IFD_GreUseSequence, ParseInterfaceGreUseSequenceTLV},
    {IFD_GreUseKey, ParseInterfaceGreUseKeyTLV},
    {IFD_GreInKey, ParseInterfaceGreInKeyTLV},
    {IFD_GreOutKey, ParseInterfaceGreOutKeyTLV},
    {IFD_ConnectedViaId, ParseInterfaceConnectedViaIdTLV},
    {IFD_Atm_Vpi, ParseInterfaceAtmVpiTLV},
    {IFD_Atm_Vci, ParseInterfaceAtmVciTLV},
};
static TLVParserMap<EInterfaceItem> InterfaceTLVParserMap;
static void ParserInit2_InterfaceTLVParserMap()
{
    InterfaceTLVParserMap.Fill(kInterfaceParsers);
}
static TLVParserMapInitStruct const TLVParserMapInitializer_InterfaceTLVParserMap(ParserInit2_InterfaceTLVParserMap);

void Protocol::ParseInterfaceTLV(TLVReader& message, EInterfaceItem& interface)
{
    TLVParser<EInterfaceItem>::Parse(message, InterfaceTLVParserMap, interface);
}

// ---- List of interfaces ---------------------------------------------------------------------------------------------

void Protocol::ParseInterfaceListAddTLV(TLVReader& value, EInterfaceItemList& interfaces)
{
    unsigned int const id = ReadU32(value);
    auto const found = interfaces.find(id);
    bool const isThere = found != interfaces.end();
    EInterfaceItem* const item = isThere ? interfaces.GetItem(found) : Added(interfaces, id);
    if (!item) return;
    if (isThere) item->Empty(); // an added interface is what the message says and nothing else
    ParseInterfaceTLV(value, *item);
}

void Protocol::ParseInterfaceListEditTLV(TLVReader& value, EInterfaceItemList& interfaces)
{
    EInterfaceItem* const item = FindOrAdd(interfaces, ReadU32(value));
    if (item) ParseInterfaceTLV(value, *item);
}

static void ParseInterfaceListRemoveTLV(TLVReader& value, EInterfaceItemList& interfaces)
{
    ParseListRemoveTLV(value, interfaces);
}

static void ParseInterfaceListRemoveAllTLV(TLVReader& value, EInterfaceItemList& interfaces)
{
    ParseListRemoveAllTLV(value, interfaces);
}

static TLVParserEntry<EInterfaceItemList> const kInterfaceListParsers[] = {
    {ListOp::Add, Protocol::ParseInterfaceListAddTLV},
    {ListOp::Edit, Protocol::ParseInterfaceListEditTLV},
    {ListOp::Remove, ParseInterfaceListRemoveTLV},
    {ListOp::RemoveAll, ParseInterfaceListRemoveAllTLV},
};
static TLVParserMap<EInterfaceItemList> InterfaceListTLVParserMap;
static void ParserInit2_InterfaceListTLVParserMap()
{
    InterfaceListTLVParserMap.Fill(kInterfaceListParsers);
}
static TLVParserMapInitStruct const
    TLVParserMapInitializer_InterfaceListTLVParserMap(ParserInit2_InterfaceListTLVParserMap);

void ParseInterfaceListTLV(TLVReader& message, EInterfaceTable& table)
{
    TLVParser<EInterfaceItemList>::Parse(message, InterfaceListTLVParserMap, table.GetInterfaceItemList());
}
