#include "eInterfaceTLVBuilder.hpp"

#include "builtMessages.hpp"

#include <initializer_list>
#include <stdexcept>

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

using Protocol::EBytes;
using Protocol::TLVBuilder;

// ---- TLVBuilder -----------------------------------------------------------------------------------------------------

static EBytes BytesFrom(std::string const& text)
{
    return EBytes(text.begin(), text.end());
}
static void Append(EBytes& out, std::string const& bytes)
{
    out.insert(out.end(), bytes.begin(), bytes.end());
}

TEST(TLVBuilder, FillsTheLengthInAndClearsTheFirst4BytesOfTheValueButNothingBehindIt)
{
    struct {
        char const* given;
        char const* sent;
    } const cases[] = {
        {"", "00 00 00 05 00 00 00 00"},
        {"A1", "00 00 00 05 00 00 00 01 00"},
        {"A1 A2", "00 00 00 05 00 00 00 02 00 00"},
        {"A1 A2 A3", "00 00 00 05 00 00 00 03 00 00 00"},
        {"A1 A2 A3 A4", "00 00 00 05 00 00 00 04 00 00 00 00"},
        {"A1 A2 A3 A4 A5", "00 00 00 05 00 00 00 05 00 00 00 00 A5"},
        {"A1 A2 A3 A4 A5 A6", "00 00 00 05 00 00 00 06 00 00 00 00 A5 A6"},
        {"A1 A2 A3 A4 A5 A6 A7", "00 00 00 05 00 00 00 07 00 00 00 00 A5 A6 A7"},
        {"A1 A2 A3 A4 A5 A6 A7 A8", "00 00 00 05 00 00 00 08 00 00 00 00 A5 A6 A7 A8"},
        {"A1 A2 A3 A4 A5 A6 A7 A8 A9", "00 00 00 05 00 00 00 09 00 00 00 00 A5 A6 A7 A8 A9"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.sent);
        EBytes out = BytesFrom("before");
        TLVBuilder tlv(out, IFD_Name);
        Append(out, Bytes(c.given));
        out.shrink_to_fit(); // so that behind the value is behind the memory
        tlv.Done();
        EXPECT_EQ("before" + Bytes(c.sent), Text(out));
    }
}

TEST(TLVBuilder, OpensWithTheIdAndALengthOf0)
{
    EBytes out = BytesFrom("before");
    TLVBuilder tlv(out, DCBX_FeatureTlv_Value);
    EXPECT_EQ("before" + Bytes("00 00 00 99 00 00 00 00"), Text(out));
}

TEST(TLVBuilder, IsClosedOnce)
{
    EBytes out;
    {
        TLVBuilder tlv(out, IFD_Name);
        Append(out, "abcdef");
        tlv.Done();
        std::string const closed = Text(out);
        EXPECT_EQ(Bytes("00 00 00 05 00 00 00 06 00 00 00 00 65 66"), closed);
        Append(out, "ghijklmn");
        tlv.Done();
        EXPECT_EQ(closed + "ghijklmn", Text(out));
        out.assign(out.size(), 'x');
    } // nor does the destructor close it again
    EXPECT_EQ(std::string(22, 'x'), Text(out));
}

TEST(TLVBuilder, IsClosedAtTheEndOfItsScope)
{
    EBytes out;
    {
        TLVBuilder tlv(out, IFD_Name);
        Append(out, "abcdef");
    }
    EXPECT_EQ(Bytes("00 00 00 05 00 00 00 06 00 00 00 00 65 66"), Text(out));
}

TEST(TLVBuilder, IsClosedOnTheWayOfAnException)
{
    EBytes out;
    try {
        TLVBuilder outer(out, IFD_VLAN);
        Protocol::AppendIntTLV(out, VLAN_Enabled, 1);
        TLVBuilder inner(out, IFD_Name);
        Append(out, "abcdef");
        throw std::runtime_error("in the middle");
    } catch (std::runtime_error const&) {
    }
    EXPECT_EQ(Bytes("00 00 00 08 00 00 00 1A"
                    "  00 00 00 00 00 00 00 04 00 00 00 01"
                    "  00 00 00 05 00 00 00 06 00 00 00 00 65 66"),
              Text(out));
}

TEST(TLVBuilder, NestsAndClearsTheIdOfTheFirstNestedTLVOnly)
{
    EBytes out;
    {
        TLVBuilder outer(out, IFD_IPv4);
        {
            TLVBuilder middle(out, IFD_IPv6List);
            {
                TLVBuilder inner(out, IFD_Name);
                Append(out, "abcde");
            }
            Protocol::AppendIntTLV(out, IFD_Type, -1);
        }
        TLVBuilder last(out, IFD_Mac);
    }
    EXPECT_EQ(Bytes("00 00 00 0B 00 00 00 29"
                    "  00 00 00 00 00 00 00 19"
                    "    00 00 00 00 00 00 00 05 00 00 00 00 65"
                    "    00 00 00 06 00 00 00 04 FF FF FF FF"
                    "  00 00 00 07 00 00 00 00"),
              Text(out));
}

TEST(TLVBuilder, GrowsAMessageThatWasCutMeanwhileUpToItsValue)
{
    for (std::size_t size = 0; size <= 14; ++size) { // 3 bytes before, header up to 11, 3 bytes of value
        SCOPED_TRACE(size);
        EBytes out = BytesFrom("abc");
        {
            TLVBuilder tlv(out, DCBX_FeatureTlv_Value);
            Append(out, "xyz");
            out.resize(size);
            out.shrink_to_fit();
        }
        std::string expected = std::string("abc") + Bytes("00 00 00 99") + std::string(7, '\0');
        for (std::size_t i = size; i < 7; ++i) expected[i] = '\0'; // what was cut off comes back as zeros
        expected.resize(size > 11 ? size : 11);
        if (size > 11) expected[10] = static_cast<char>(size - 11);
        EXPECT_EQ(expected, Text(out));
    }
}

// ---- Plain values ---------------------------------------------------------------------------------------------------

TEST(InterfaceTLVBuilder, AUIDIsSentAsItLiesInMemoryAndStaysWhole)
{
    EXPECT_EQ(Bytes("00 00 00 1E 00 00 00 08 77 66 55 44 33 22 11 00"),
              Built(Protocol::AppendUIDTLV, IFD_Uid, EUID("00:11:22:33:44:55:66:77")));
    EXPECT_EQ(Bytes("00 00 00 1E 00 00 00 08 00 00 00 00 00 00 00 00"), Built(Protocol::AppendUIDTLV, IFD_Uid, EUID()));
}

TEST(InterfaceTLVBuilder, AMACStaysWhole)
{
    EXPECT_EQ(Bytes("00 00 00 07 00 00 00 06 02 00 5E 10 00 05"),
              Built(Protocol::AppendMACTLV, IFD_Mac, EMACAddress("02:00:5e:10:00:05")));
}

TEST(InterfaceTLVBuilder, ABlobStaysWhole)
{
    struct {
        char const* bytes;
        char const* sent;
    } const cases[] = {
        {"", "00 00 00 3C 00 00 00 00"},
        {"A1", "00 00 00 3C 00 00 00 01 A1"},
        {"A1 A2 A3", "00 00 00 3C 00 00 00 03 A1 A2 A3"},
        {"A1 A2 A3 A4 A5", "00 00 00 3C 00 00 00 05 A1 A2 A3 A4 A5"},
    };
    for (auto const& c : cases)
        EXPECT_EQ(Bytes(c.sent), Built(Protocol::AppendBlobTLV, DHCP_CustomTLV_Value, BlobOf(Bytes(c.bytes))));
}

// ---- Parts of an interface ------------------------------------------------------------------------------------------

TEST(InterfaceTLVBuilder, VLANTagsAreSentWholeFromTheOutermostOn)
{
    struct {
        char const* golden;
        bool enabled;
        std::vector<unsigned int> tags;
    } const cases[] = {
        {"TLV.IFD_VLAN.levels0.hex", false, {}},
        {"TLV.IFD_VLAN.levels1.hex", true, {0x6007}},
        {"TLV.IFD_VLAN.levels3.hex", true, {0xB00A, 100, 0xFFFF}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        EVLANIPAddressTableItemProperties vlans(static_cast<unsigned int>(c.tags.size()), c.enabled);
        for (unsigned int level = 0; level < c.tags.size(); ++level) vlans.SetVlanTag(c.tags[level], level);
        EXPECT_EQ(Golden(c.golden), Built(Protocol::AppendVLANTLV, IFD_VLAN, vlans));
    }
}

TEST(InterfaceTLVBuilder, AnIPv4AddressIsSentWithItsSwitchAndMSS)
{
    EXPECT_EQ(Golden("TLV.IFD_IPv4.hex"),
              Built(Protocol::AppendIPv4ItemTLV, IFD_IPv4, Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex")));
    EXPECT_EQ(Golden("TLV.IFD_IPv4.defaults.hex"), Built(Protocol::AppendIPv4ItemTLV, IFD_IPv4, EIPv4AddressItem()));
}

TEST(InterfaceTLVBuilder, EachFieldOfAnIPv4AddressIsSentAlone)
{
    ExpectEachFieldSentAlone<EIPv4AddressItem>(
        [](EIPv4AddressItem const& item) {
            return Level(Level(Built(Protocol::AppendIPv4ItemTLV, IFD_IPv4, item)).at(0).value);
        },
        EIPv4AddressItem(),
        {
            {IP4_Enabled, U32(1), [](auto& r) { r.SetEnabled(true); }},
            {IP4_IPAddress, Bytes("0A 00 00 05"), [](auto& r) { r.SetAddress(EIPAddress("10.0.0.5")); }},
            {IP4_Gateway, Bytes("20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01"), // by its own family
             [](auto& r) { r.SetGateway(EIPAddress("2001:db8::1")); }},
            {IP4_MaskLength, U32(31), [](auto& r) { r.SetMaskLength(31); }},
            {IP4_MSS, U32(1460), [](auto& r) { r.SetMSS(1460); }},
        });
}

static EIPv6AddressItem SampleIPv6() // its local id is 9
{
    return Read<EIPv6AddressItem>("EIPv6AddressItem.v1.hex");
}

TEST(InterfaceTLVBuilder, AnIPv6AddressIsAnAddWhoseIdIsCleared)
{
    for (unsigned int id : {9U, 5U, 0xFFFFFFFFU}) {
        EIPv6AddressItem item = SampleIPv6();
        item.SetLocalId(id);
        EXPECT_EQ(Golden("TLV.Add.ipv6.hex"), Built([&](EBytes& out) { Protocol::AppendAddIPv6ItemTLV(out, item); }));
    }
}

TEST(InterfaceTLVBuilder, AListOfIPv6AddressesIsAReplacementInTheOrderOfTheIds)
{
    EIPv6AddressItemList items;
    EXPECT_EQ(Golden("TLV.IFD_IPv6List.items0.hex"), Built(Protocol::AppendIPv6ItemListTLV, IFD_IPv6List, items));
    items.AddItem(9, SampleIPv6());
    EXPECT_EQ(Golden("TLV.IFD_IPv6List.items1.hex"), Built(Protocol::AppendIPv6ItemListTLV, IFD_IPv6List, items));
    EIPv6AddressItem linkLocal;
    linkLocal.SetAddress(EIPAddress("fe80::3"));
    items.AddItem(3, linkLocal);
    EXPECT_EQ(Golden("TLV.IFD_IPv6List.items2.hex"), Built(Protocol::AppendIPv6ItemListTLV, IFD_IPv6List, items));
}

// The id of the mode is the first of its level, hence cleared: one message for all of them.
TEST(InterfaceTLVBuilder, AnATMEncapsulationIsOneEmptyTLVWhateverTheMode)
{
    for (int mode : {-0x7FFFFFFF - 1, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 0x7FFFFFFF})
        EXPECT_EQ(Bytes("00 00 00 0D 00 00 00 08 00 00 00 00 00 00 00 00"),
                  Built([mode](EBytes& out) { Protocol::AppendATMEncapsulationTLV(out, IFD_ATMEncapsulation, mode); }))
            << mode;
}

// ---- Interface ------------------------------------------------------------------------------------------------------

static std::string Operation(TLVIds::TLVId const& id, EInterfaceItem const& interface, unsigned int interfaceId)
{
    return Built([&](EBytes& out) { Protocol::AppendInterfaceOpTLV(out, id, interface, interfaceId); });
}

/// The nested TLVs of an operation, which come behind the interface id.
static std::vector<BuiltTlv> Rows(EInterfaceItem const& interface)
{
    std::string const value = Level(Operation(ListOp::Edit, interface, 7)).at(0).value;
    EXPECT_EQ(U32(0), value.substr(0, 4));
    return Level(value.substr(4));
}

TEST(InterfaceTLVBuilder, AnInterfaceIsSentWithAllThatItHas)
{
    EInterfaceItem interface;
    FillSample(interface);
    EXPECT_EQ(Golden("TLV.Add.interface.hex"), Operation(ListOp::Add, interface, 5));
}

TEST(InterfaceTLVBuilder, WhatAnInterfaceDoesNotHaveIsNotSent)
{
    struct {
        char const* name;
        std::function<void(EInterfaceItem&)> make;
    } const cases[] = {
        {"ethernet", [](EInterfaceItem&) {}},
        {"ethernet", [](EInterfaceItem& interface) { interface.EnsureEthernet(); }},
        {"ppp",
         [](EInterfaceItem& interface) {
             interface.SetPPPHandle(0x80000001);
             interface.SetPPPSession(17);
         }},
        {"gre",
         [](EInterfaceItem& interface) {
             interface.SetGreDestIp(EIPAddress("2001:db8::21"));
             interface.SetGreUseSequence(true);
             interface.SetGreInKey(18);
             interface.SetGreOutKey(19);
         }},
        {"routed",
         [](EInterfaceItem& interface) {
             interface.SetConnectedViaId({1, 2});
         }},
        {"atm",
         [](EInterfaceItem& interface) {
             interface.SetEncapsulation(ATM_ENCAPSULATION_VM_ISIS);
             interface.SetATMMode(static_cast<EAtmModeEnum>(20));
             interface.SetVPI(21);
             interface.SetVCI(22);
         }},
        {"npiv", [](EInterfaceItem& interface) { interface.SetNPIVConfig(Read<ENPIVConfig>("ENPIVConfig.v4.hex")); }},
        {"ptp", [](EInterfaceItem& interface) { interface.SetPTPConfig(Read<EPTPConfig>("EPTPConfig.v3.hex")); }},
        {"lldp",
         [](EInterfaceItem& interface) { interface.SetLLDPConfig(Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex")); }},
        {"dcbx",
         [](EInterfaceItem& interface) { interface.SetDCBXConfig(Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex")); }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EInterfaceItem interface;
        c.make(interface);
        EXPECT_EQ(Golden("TLV.Edit.interface." + std::string(c.name) + ".hex"), Operation(ListOp::Edit, interface, 7));
    }
}

TEST(InterfaceTLVBuilder, TheInterfaceIdIsClearedWhicheverItIsAndTheLocalIdIsTheDefault)
{
    EInterfaceItem interface;
    FillSample(interface);
    std::string const expected = Golden("TLV.Add.interface.hex");
    for (unsigned int id : {0U, 1U, 7U, 0xFFFFFFFFU}) EXPECT_EQ(expected, Operation(ListOp::Add, interface, id));
    EXPECT_EQ(5U, interface.GetLocalId());
    EXPECT_EQ(expected, Built(Protocol::AppendInterfaceOpTLV, ListOp::Add, interface));
}

TEST(InterfaceTLVBuilder, TheLayerNameIsThatOfTheTypeAndOfTheTunnelsSource)
{
    EInterfaceTable table(7);
    unsigned int const source = table.AddInterfaceItem(EInterfaceItem());
    EInterfaceItem& interface = *table.GetInterfaceItem(table.AddInterfaceItem(EInterfaceItem()));
    interface.SetGreSourceIp({7, 1, source});
    struct {
        int type;
        int sourceType;
        char const* name;
    } const cases[] = {{0, 0, "ps-static"}, {3, 0, "ps-static"}, {4, 0, "ps-gre"},   {4, 5, "ps-gre-unc"},
                       {5, 0, "ps-unc"},    {6, 0, "ps-npiv"},   {7, 0, "ps-static"}};
    for (auto const& c : cases) {
        table.GetInterfaceItem(source)->SetType(static_cast<EInterfaceTypeEnum>(c.sourceType));
        interface.SetType(static_cast<EInterfaceTypeEnum>(c.type));
        std::vector<BuiltTlv> const rows = Rows(interface);
        EXPECT_EQ(IFD_LayerName.GetIndex(), rows.at(2).number);
        EXPECT_EQ(c.name, rows.at(2).value);
    }
}

/// A switch in a TLV of its own, as it is sent.
static std::string Switch(bool on)
{
    return RawTlv(0, 4, U32(on));
}

TEST(InterfaceTLVBuilder, EachFieldOfAnInterfaceIsSentAlone)
{
    EInterfaceItem fresh;
    fresh.EnsureEthernet();
    fresh.EnsureAtm();
    fresh.EnsurePpp();
    fresh.EnsureGre();
    fresh.EnsureRouted();
    fresh.EnsureNPIV();
    fresh.EnsurePTP();
    fresh.EnsureDCBX();
    fresh.EnsureLLDP();
    ExpectEachFieldSentAlone<EInterfaceItem>(
        Rows, fresh,
        {
            {IFD_Name, "n", [](auto& r) { r.SetName("n"); }},
            {IFD_Type, U32(2), [](auto& r) { r.SetType(INTERFACE_TYPE_PPP); }},
            {IFD_LayerName, {}, {}}, // by the type
            {IFD_Enabled, U32(1), [](auto& r) { r.SetEnabled(true); }},
            {IFD_Mac, Bytes("02 00 00 00 00 01"), [](auto& r) { r.SetMacAddress(EMACAddress("2:0:0:0:0:1")); }},
            {IFD_VLAN, {}, [](auto& r) { r.SetVLANItem(SampleVLANs()); }},
            {IFD_MTU, U32(0xFFFFFFFF), [](auto& r) { r.SetMTU(0xFFFFFFFF); }},
            {IFD_VCAT_CircuitId, U32(9), [](auto& r) { r.SetVcatCircuitId(9); }},
            {IFD_DHCP, Switch(true), [](auto& r) { r.SetDHCPEnabled(true); }},
            {IFD_DHCPv6, Switch(true), [](auto& r) { r.SetDHCPv6Enabled(true); }},
            {IFD_DHCP, {}, [](auto& r) { r.GetDHCPProperties().SetRetryCount(9); }},
            {IFD_DHCPv6, {}, [](auto& r) { r.GetDHCPv6Properties().SetIAId(9); }},
            {IFD_IPv4, {}, [](auto& r) { r.GetIPv4AddressItem().SetEnabled(true); }},
            {IFD_IPv6List, {}, [](auto& r) { r.GetIPv6AddressItemList().AddItem(); }},
            {IFD_PPPHandle, U32(9), [](auto& r) { r.SetPPPHandle(9); }},
            {IFD_PPPSession, U32(9), [](auto& r) { r.SetPPPSession(9); }},
            {IFD_Uid, Bytes("09 00 00 00 00 00 00 00"), [](auto& r) { r.SetEUID(EUID(9)); }},
            {IFD_GreSourceIp, U32(1) + U32(9),
             [](auto& r) {
                 r.SetGreSourceIp({1, 9});
             }},
            {IFD_GreDestIp, Bytes("0A 00 00 09"), [](auto& r) { r.SetGreDestIp(EIPAddress("10.0.0.9")); }},
            {IFD_GreUseChecksum, U32(1), [](auto& r) { r.SetGreUseChecksum(true); }},
            {IFD_GreUseSequence, U32(1), [](auto& r) { r.SetGreUseSequence(true); }},
            {IFD_GreUseKey, U32(1), [](auto& r) { r.SetGreUseKey(true); }},
            {IFD_GreInKey, U32(0xFFFFFFFE), [](auto& r) { r.SetGreInKey(0xFFFFFFFE); }},
            {IFD_GreOutKey, U32(9), [](auto& r) { r.SetGreOutKey(9); }},
            {IFD_ConnectedViaId, U32(1) + U32(2) + U32(9),
             [](auto& r) {
                 r.SetConnectedViaId({1, 2, 9});
             }},
            {IFD_ATMEncapsulation, {}, {}}, // cleared
            {IFD_ATMMode, U32(9), [](auto& r) { r.SetATMMode(static_cast<EAtmModeEnum>(9)); }},
            {IFD_Atm_Vpi, U32(9), [](auto& r) { r.SetVPI(9); }},
            {IFD_Atm_Vci, U32(9), [](auto& r) { r.SetVCI(9); }},
            {IFD_FCoE, Switch(true), [](auto& r) { r.SetFCoEEnabled(true); }},
            {IFD_FCoE, {}, [](auto& r) { r.GetFCoEConfig().SetB2BRxSize(9); }},
            {IFD_NPIV, {}, [](auto& r) { r.GetNPIVConfig().SetB2BRxSize(9); }},
            {IFD_PTP, Switch(true), [](auto& r) { r.SetPTPEnabled(true); }},
            {IFD_PTP, {}, [](auto& r) { r.GetPTPConfig().SetPriority1(9); }},
            {IFD_DCBX, Switch(true), [](auto& r) { r.SetDCBXEnabled(true); }},
            {IFD_LLDP, {}, [](auto& r) { r.GetLLDPConfig().SetHoldTime(9); }},
            {IFD_DCBX, {}, [](auto& r) { r.GetDCBXConfig().AddFeatureTlv(EDCBXFeatureTlv()); }},
        },
        false);
}

TEST(InterfaceTLVBuilder, GatewayLLDPSwitchAndEUIDOverrideOfAnInterfaceAreNotSent)
{
    EInterfaceItem fresh;
    FillSample(fresh);
    ExpectNotSent<EInterfaceItem>([](EInterfaceItem const& interface) { return Operation(ListOp::Add, interface, 5); },
                                  fresh,
                                  {
                                      [](auto& r) { r.SetIPv6Gateway(EIPAddress("2001:db8::77")); },
                                      [](auto& r) { r.SetLLDPEnabled(false); },
                                      [](auto& r) { r.SetOverrideAutogenEuid(false); },
                                      [](auto& r) { r.SetLocalId(77); },
                                  });
}
