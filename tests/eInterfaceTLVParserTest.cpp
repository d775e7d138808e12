#include "eInterfaceTLVParser.hpp"

#include "recordedInterface.hpp"
#include "tlvMessages.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace TLVIds::InterfaceTable;
using testing::ElementsAre;
using testing::IsEmpty;

using TellingWhat = std::vector<std::string>;

static std::string Text(char const* text)
{
    return text;
}
static std::string Zeros(unsigned int count)
{
    return std::string(count, '\0');
}
/// The sixteen ids of encapsulations are told apart by their names alone.
static std::string AtmTlv(char const* name, std::string const& value = std::string())
{
    return Tlv(TLVIds::TLVId(name), value);
}

static std::string IPv4Text(EInterfaceItem const& item)
{
    EIPv4AddressItem const& ipv4 = item.GetIPv4AddressItem();
    return (ipv4.IsEnabled() ? "on " : "off ") + TextOf(ipv4.GetAddress()) + "/" + TextOf(ipv4.GetMaskLength()) +
           " via " + TextOf(ipv4.GetGateway());
}
static std::string IPv6Text(EInterfaceItem const& item)
{
    EIPv6AddressItem const* const address = item.GetIPv6AddressItem(1);
    return address ? TextOf(address->GetAddress()) + "/" + TextOf(address->GetMaskLength()) : "-";
}

// ---- Every id -------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, EveryIdIsReadThroughItsSetterWhichAnnouncesFirstAndThenStores)
{
    using Item = EInterfaceItem;
    struct {
        std::string message;
        char const* told;
        std::string (*get)(EInterfaceItem const&);
        char const* before;
        char const* after;
    } const cases[] = {
        {Tlv(IFD_Name, "eth7"), "SettingInterfaceName(eth7)", Shown<&Item::GetName>, "", "eth7"},
        {Tlv(IFD_Type, U32(6)), "SettingInterfaceType(6)", Shown<&Item::GetType>, "0", "6"},
        {Tlv(IFD_Mac, "\x02\x04\x06\x08\x0A\x0C"), "SettingInterfaceMac(02:04:06:08:0a:0c)",
         Shown<&Item::GetMacAddress>, "00:00:00:00:00:00", "02:04:06:08:0a:0c"},
        {Tlv(IFD_VLAN, Tlv(VLAN_Enabled, U32(1))), "SettingInterfaceVlan(on[])", Shown<&Item::GetVLANItem>, "off[]",
         "on[]"},
        {Tlv(IFD_VLAN, Tlv(VLAN_TAG, U32(0xB00A))), "SettingInterfaceVlan(off[45066])", Shown<&Item::GetVLANItem>,
         "off[]", "off[45066]"},
        {Tlv(IFD_VLAN, Tlv(VLAN_Id, U32(10))), "SettingInterfaceVlan(off[10])", Shown<&Item::GetVLANItem>, "off[]",
         "off[10]"},
        {Tlv(IFD_VLAN, Tlv(VLAN_Priority, U32(5))), "SettingInterfaceVlan(off[40960])", Shown<&Item::GetVLANItem>,
         "off[]", "off[40960]"},
        {Tlv(IFD_DHCP, Tlv(DHCP_Enabled, U32(1))), "EnablingDhcpItem()", Shown<&Item::IsDHCPEnabled>, "false", "true"},
        {Tlv(IFD_Enabled, U32(1)), "EnablingInterfaceItem()", Shown<&Item::IsEnabled>, "false", "true"},
        {Tlv(IFD_IPv4, Tlv(IP4_Enabled, U32(1))), "EnablingIPv4AddressItem(off[])", IPv4Text,
         "off 0.0.0.0/24 via 0.0.0.0", "on 0.0.0.0/24 via 0.0.0.0"},
        {Tlv(IFD_IPv4, Tlv(IP4_IPAddress, "\x0A\x14\x1E\x28")), "SettingIPv4Address(10.20.30.40, off[], 0.0.0)",
         IPv4Text, "off 0.0.0.0/24 via 0.0.0.0", "off 10.20.30.40/24 via 0.0.0.0"},
        {Tlv(IFD_IPv4, Tlv(IP4_Gateway, "\x0A\x14\x1E\x01")), "SettingIPv4Gateway(10.20.30.1)", IPv4Text,
         "off 0.0.0.0/24 via 0.0.0.0", "off 0.0.0.0/24 via 10.20.30.1"},
        {Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(28))), "SettingIPv4MaskLength(28)", IPv4Text,
         "off 0.0.0.0/24 via 0.0.0.0", "off 0.0.0.0/28 via 0.0.0.0"},
        {Tlv(IFD_IPv6List, Tlv(TLVIds::ListOp::Edit, U32(1) + Tlv(IP6_IPAddress, Bytes("20010DB8") + Zeros(12)))),
         "SettingIPv6Address(2001:db8::)", IPv6Text, "::/64", "2001:db8::/64"},
        {Tlv(IFD_IPv6List, Tlv(TLVIds::ListOp::Edit, U32(1) + Tlv(IP6_MaskLength, U32(48)))),
         "SettingIPv6MaskLength(48)", IPv6Text, "::/64", "::/48"},
        {Tlv(IFD_ATMEncapsulation, AtmTlv("LLCB_EthFcs")), "SettingInterfaceATMEncapsulation(7)",
         Shown<&Item::GetEncapsulation>, "0", "7"},
        {Tlv(IFD_GreSourceIp, U32(7) + U32(1) + U32(2)), "SettingInterfaceGreSourceIp(7.1.2)",
         Shown<&Item::GetGreSourceIp>, "", "7.1.2"},
        {Tlv(IFD_GreDestIp, "\x0A\x14\x1E\x28"), "SettingInterfaceGreDestIp(10.20.30.40)", Shown<&Item::GetGreDestIp>,
         "0.0.0.0", "10.20.30.40"},
        {Tlv(IFD_GreUseChecksum, U32(1)), "SettingInterfaceGreUseChecksum(true)", Shown<&Item::GetGreUseChecksum>,
         "false", "true"},
        {Tlv(IFD_GreUseSequence, U32(1)), "SettingInterfaceGreUseSequence(true)", Shown<&Item::GetGreUseSequence>,
         "false", "true"},
        {Tlv(IFD_GreUseKey, U32(1)), "SettingInterfaceGreUseKey(true)", Shown<&Item::GetGreUseKey>, "false", "true"},
        {Tlv(IFD_GreInKey, U32(0x80000001)), "SettingInterfaceGreInKey(2147483649)", Shown<&Item::GetGreInKey>, "0",
         "2147483649"},
        {Tlv(IFD_GreOutKey, U32(0x01020304)), "SettingInterfaceGreOutKey(16909060)", Shown<&Item::GetGreOutKey>, "0",
         "16909060"},
        {Tlv(IFD_ConnectedViaId, U32(7) + U32(1) + U32(3)), "SettingInterfaceConnectedViaId(7.1.3)",
         Shown<&Item::GetConnectedViaId>, "", "7.1.3"},
        {Tlv(IFD_Atm_Vpi, U32(8)), "SettingInterfaceVPI(8)", Shown<&Item::GetVPI>, "0", "8"},
        {Tlv(IFD_Atm_Vci, U32(35)), "SettingInterfaceVCI(35)", Shown<&Item::GetVCI>, "0", "35"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.told);
        RecordedInterface in;
        in.interface.GetIPv6AddressItemList().AddItem(1);
        EXPECT_EQ(c.before, c.get(in.interface));
        std::string inTheCall;
        in.recorder->whenCalled = [&] { inTheCall = c.get(in.interface); };
        EXPECT_EQ(0, ParsedInto(c.message, in.interface));
        EXPECT_THAT(Told(*in.recorder), ElementsAre(c.told));
        EXPECT_EQ(c.before, inTheCall);
        EXPECT_EQ(c.after, c.get(in.interface));
        ExpectConsistent(in.table);

        EInterfaceItem withoutATable;
        withoutATable.GetIPv6AddressItemList().AddItem(1);
        EXPECT_EQ(0, ParsedInto(c.message, withoutATable));
        EXPECT_EQ(c.after, c.get(withoutATable));
    }
}

static char const* const kGoldenInterface =
    "on 1 \"eth5\" type 4 euid 00:00:00:00:00:00:00:00; ethernet 02:00:5e:10:00:05 on[40970 100] 1500; "
    "atm 15 0 4095 32769; ppp -; gre 7.1.2 192.0.2.9 true false true 3405643777 256; routed 7.1.300; dhcp on; "
    "ipv4 on 192.0.2.1/28 via 192.0.2.254; ipv6 3:2001:db8::3/56 9:fe80::9/64";

TEST(EInterfaceTLVParser, ReadsAnInterfaceWithEveryIdInTheOrderOfTheMessage)
{
    RecordedInterface in;
    EXPECT_EQ(0, ParsedInto(Golden("TLV.levelInterface.hex"), in.interface));
    EXPECT_EQ(kGoldenInterface, Contents(in.interface));
    EXPECT_THAT(Told(*in.recorder), testing::ElementsAreArray({
                                        "SettingInterfaceName(eth5)",
                                        "SettingInterfaceType(4)",
                                        "SettingInterfaceMac(02:00:5e:10:00:05)",
                                        "SettingInterfaceVlan(on[40970 100])",
                                        "EnablingDhcpItem()",
                                        "EnablingInterfaceItem()",
                                        "EnablingIPv4AddressItem(on[40970 100])",
                                        "SettingIPv4Address(192.0.2.1, on[40970 100], 5.0.10)",
                                        "SettingIPv4Gateway(192.0.2.254)",
                                        "SettingIPv4MaskLength(28)",
                                        "SettingIPv6Address(2001:db8::3)",
                                        "SettingIPv6MaskLength(48)",
                                        "SettingIPv6MaskLength(56)",
                                        "SettingIPv6Address(fe80::9)",
                                        "SettingInterfaceATMEncapsulation(15)",
                                        "SettingInterfaceGreSourceIp(7.1.2)",
                                        "SettingInterfaceGreDestIp(192.0.2.9)",
                                        "SettingInterfaceGreUseChecksum(true)",
                                        "SettingInterfaceGreUseSequence(false)",
                                        "SettingInterfaceGreUseKey(true)",
                                        "SettingInterfaceGreInKey(3405643777)",
                                        "SettingInterfaceGreOutKey(256)",
                                        "SettingInterfaceConnectedViaId(7.1.300)",
                                        "SettingInterfaceVPI(4095)",
                                        "SettingInterfaceVCI(32769)",
                                    }));
    ExpectConsistent(in.table);
}

TEST(EInterfaceTLVParser, WhatTheMessageLeavesOutStays)
{
    EInterfaceItem item;
    FillSample(item);
    EXPECT_EQ(0, ParsedInto(Tlv(IFD_Name, "eth6") + Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(9))), item));
    EInterfaceItem expected;
    FillSample(expected);
    expected.SetName("eth6");
    expected.GetIPv4AddressItem().SetMaskLength(9);
    EXPECT_EQ(Written(expected), Written(item));
}

TEST(EInterfaceTLVParser, TheSameIdTwiceIsReadTwice)
{
    RecordedInterface in;
    EXPECT_EQ(0, ParsedInto(Tlv(IFD_Name, "a") + Tlv(IFD_Type, U32(1)) + Tlv(IFD_Name, "b"), in.interface));
    EXPECT_THAT(Told(*in.recorder),
                ElementsAre("SettingInterfaceName(a)", "SettingInterfaceType(1)", "SettingInterfaceName(b)"));
}

// ---- Values ---------------------------------------------------------------------------------------------------------

/// Every id whose value is a number or a flag, in its level.
static std::vector<std::function<std::string(std::string const&)>> Numbers()
{
    std::vector<std::function<std::string(std::string const&)>> numbers;
    auto const add = [&numbers](TLVIds::TLVId const* level, TLVIds::TLVId const& id) {
        numbers.push_back(
            [level, &id](std::string const& value) { return level ? Tlv(*level, Tlv(id, value)) : Tlv(id, value); });
    };
    for (TLVIds::TLVId const* id : {&IFD_Type, &IFD_Enabled, &IFD_GreUseChecksum, &IFD_GreUseSequence, &IFD_GreUseKey,
                                    &IFD_GreInKey, &IFD_GreOutKey, &IFD_Atm_Vpi, &IFD_Atm_Vci})
        add(nullptr, *id);
    for (TLVIds::TLVId const* id : {&VLAN_Enabled, &VLAN_TAG, &VLAN_Id, &VLAN_Priority}) add(&IFD_VLAN, *id);
    for (TLVIds::TLVId const* id : {&IP4_Enabled, &IP4_MaskLength}) add(&IFD_IPv4, *id);
    add(&IFD_DHCP, DHCP_Enabled);
    numbers.push_back([](std::string const& value) {
        return Tlv(IFD_IPv6List, Tlv(TLVIds::ListOp::Edit, U32(1) + Tlv(IP6_MaskLength, value)));
    });
    return numbers;
}

TEST(EInterfaceTLVParser, ANumberOfFewerThan4BytesIsTheParseErrorAndChangesNothing)
{
    auto const numbers = Numbers();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        for (unsigned int length = 0; length < 4; ++length) {
            SCOPED_TRACE(testing::Message() << i << " of " << length << " bytes");
            RecordedInterface in;
            in.interface.GetIPv6AddressItemList().AddItem(1);
            std::string const before = Contents(in.interface);
            // It does not reach into the TLV behind it, which is not read either.
            std::string const message = numbers[i](std::string(length, '\x01')) + Tlv(IFD_Name, "behind");
            EXPECT_EQ(-1, ParsedInto(message, in.interface));
            EXPECT_EQ(before, Contents(in.interface));
            EXPECT_THAT(Told(*in.recorder), IsEmpty());
        }
}

TEST(EInterfaceTLVParser, ANumberIsTheFirst4BytesBigEndianWhateverFollows)
{
    auto const numbers = Numbers();
    for (std::size_t i = 0; i < numbers.size(); ++i)
        for (char const* more : {"FF", "00 00 00 02", "00 00 00 05 00 00 00 01 78"}) {
            SCOPED_TRACE(testing::Message() << i << " and " << more);
            RecordedInterface plain;
            RecordedInterface longer;
            plain.interface.GetIPv6AddressItemList().AddItem(1);
            longer.interface.GetIPv6AddressItemList().AddItem(1);
            EXPECT_EQ(0, ParsedInto(numbers[i](U32(3)), plain.interface));
            EXPECT_EQ(0, ParsedInto(numbers[i](U32(3) + Bytes(more)), longer.interface));
            EXPECT_EQ(1U, plain.recorder->calls.size());
            EXPECT_EQ(Told(*plain.recorder), Told(*longer.recorder));
            EXPECT_EQ(Contents(plain.interface), Contents(longer.interface));
        }
}

TEST(EInterfaceTLVParser, AFlagIsSetByAnyNumberButZero)
{
    struct {
        TLVIds::TLVId const* level;
        TLVIds::TLVId const* id;
        bool (*get)(EInterfaceItem const&);
    } const flags[] = {
        {nullptr, &IFD_Enabled, [](EInterfaceItem const& item) { return item.IsEnabled(); }},
        {nullptr, &IFD_GreUseChecksum, [](EInterfaceItem const& item) { return item.GetGreUseChecksum(); }},
        {nullptr, &IFD_GreUseSequence, [](EInterfaceItem const& item) { return item.GetGreUseSequence(); }},
        {nullptr, &IFD_GreUseKey, [](EInterfaceItem const& item) { return item.GetGreUseKey(); }},
        {&IFD_VLAN, &VLAN_Enabled, [](EInterfaceItem const& item) { return item.GetVLANItem().IsEnabled(); }},
        {&IFD_DHCP, &DHCP_Enabled, [](EInterfaceItem const& item) { return item.IsDHCPEnabled(); }},
        {&IFD_IPv4, &IP4_Enabled, [](EInterfaceItem const& item) { return item.GetIPv4AddressItem().IsEnabled(); }},
    };
    for (auto const& flag : flags) {
        SCOPED_TRACE(flag.id->GetName());
        EInterfaceItem item;
        for (unsigned int value : {1U, 0U, 2U, 0U, 0x100U, 0U, 0x10000U, 0U, 0x80000000U, 0U, 0xFFFFFFFFU, 0U}) {
            std::string const tlv = Tlv(*flag.id, U32(value));
            EXPECT_EQ(0, ParsedInto(flag.level ? Tlv(*flag.level, tlv) : tlv, item));
            EXPECT_EQ(value != 0, flag.get(item)) << value;
        }
    }
}

TEST(EInterfaceTLVParser, ANameIsTheWholeValueOfAnyLengthAndContent)
{
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte) everyByte += static_cast<char>(byte);
    for (std::string const& name : {std::string(), Text("e"), Text("eth0"), Zeros(1), Zeros(8),
                                    Text("a") + Zeros(2) + "b", everyByte, std::string(100000, 'n')}) {
        SCOPED_TRACE(name.size());
        RecordedInterface in;
        in.interface.SetName("old");
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_Name, name) + Tlv(IFD_Type, U32(2)), in.interface));
        EXPECT_EQ(name, in.interface.GetName());
        EXPECT_EQ(INTERFACE_TYPE_PPP, in.interface.GetType());
        EXPECT_THAT(in.recorder->Operations(), ElementsAre("SettingInterfaceName", "SettingInterfaceType"));
    }
}

TEST(EInterfaceTLVParser, AMacAddressTakesAValueOfAnyLength)
{
    struct {
        char const* hex;
        char const* mac;
    } const cases[] = {
        {"", "00:00:00:00:00:00"},
        {"02", "02:00:00:00:00:00"},
        {"02 00 5E 10 01", "02:00:5e:10:01:00"},
        {"02 00 5E 10 01 05", "02:00:5e:10:01:05"},
        {"02 00 5E 10 01 05 07", "02:00:5e:10:01:05"},
        {"02 00 5E FF FE 10 01 05", "02:00:5e:ff:fe:10"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.hex);
        RecordedInterface in;
        in.interface.SetMacAddress(EMACAddress("01:02:03:04:05:06"));
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_Mac, Bytes(c.hex)), in.interface));
        EXPECT_EQ(c.mac, TextOf(in.interface.GetMacAddress()));
        EXPECT_THAT(Told(*in.recorder), ElementsAre(Text("SettingInterfaceMac(") + c.mac + ")"));
    }
}

TEST(EInterfaceTLVParser, ATypeIsAny32Bits)
{
    struct {
        unsigned int sent;
        char const* type;
    } const cases[] = {{0, "0"},
                       {6, "6"},
                       {7, "7"},
                       {0x7FFFFFFF, "2147483647"},
                       {0x80000000, "-2147483648"},
                       {0x80000004, "-2147483644"},
                       {0xFFFFFFFF, "-1"}};
    for (auto const& c : cases) {
        RecordedInterface in;
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_Type, U32(c.sent)), in.interface));
        EXPECT_EQ(c.type, TextOf(in.interface.GetType()));
        EXPECT_THAT(Told(*in.recorder), ElementsAre(Text("SettingInterfaceType(") + c.type + ")"));
    }
}

TEST(EInterfaceTLVParser, AShortAddressIsSkippedWhileALongOneIsCut)
{
    std::string const bytes = Bytes("20 01 0D B8 00 00 00 01 00 00 00 02 00 00 00 03 FF FF FF FF");
    struct {
        std::string (*message)(std::string const&);
        unsigned int size; // of an address
        char const* told;
    } const cases[] = {
        {[](std::string const& value) {
             return Tlv(IFD_IPv4, Tlv(IP4_IPAddress, value) + Tlv(IP4_MaskLength, U32(8)));
         },
         4, "SettingIPv4Address(32.1.13.184, off[], 0.0.0)"},
        {[](std::string const& value) { return Tlv(IFD_IPv4, Tlv(IP4_Gateway, value) + Tlv(IP4_MaskLength, U32(8))); },
         4, "SettingIPv4Gateway(32.1.13.184)"},
        {[](std::string const& value) {
             return Tlv(IFD_IPv6List, Tlv(TLVIds::ListOp::Edit, U32(1) + Tlv(IP6_IPAddress, value))) +
                    Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(8)));
         },
         16, "SettingIPv6Address(2001:db8:0:1:0:2:0:3)"},
    };
    for (auto const& c : cases)
        for (unsigned int length = 0; length <= bytes.size(); ++length) {
            SCOPED_TRACE(testing::Message() << c.told << " from " << length << " bytes");
            RecordedInterface in;
            in.interface.GetIPv4AddressItem().SetAddress(EIPAddress("192.0.2.1"));
            in.interface.GetIPv4AddressItem().SetGateway(EIPAddress("192.0.2.254"));
            in.interface.GetIPv6AddressItemList().AddItem(1);
            in.interface.GetIPv6AddressItem(1)->SetAddress(EIPAddress("fe80::1"));
            in.recorder->Clear();
            EXPECT_EQ(0, ParsedInto(c.message(bytes.substr(0, length)), in.interface));
            TellingWhat told = {c.told, "SettingIPv4MaskLength(8)"};
            if (length < c.size) {
                told.erase(told.begin());
                EXPECT_EQ("192.0.2.1", TextOf(in.interface.GetIPv4AddressItem().GetAddress()));
                EXPECT_EQ("192.0.2.254", TextOf(in.interface.GetIPv4AddressItem().GetGateway()));
                EXPECT_EQ("fe80::1/64", IPv6Text(in.interface));
            }
            EXPECT_EQ(told, Told(*in.recorder));
        }
}

TEST(EInterfaceTLVParser, ATunnelDestinationHas4Or16BytesAndAnyOtherLengthIsTheParseError)
{
    std::string const bytes = Bytes("20 01 0D B8 00 00 00 01 00 00 00 02 00 00 00 03 FF FF FF FF");
    for (unsigned int length = 0; length <= bytes.size(); ++length) {
        SCOPED_TRACE(length);
        RecordedInterface in;
        int const error =
            ParsedInto(Tlv(IFD_GreDestIp, bytes.substr(0, length)) + Tlv(IFD_Atm_Vpi, U32(1)), in.interface);
        bool const accepted = length == 4 || length == 16;
        EXPECT_EQ(accepted ? 0 : -1, error);
        EXPECT_EQ(accepted, in.interface.GetGreData() != nullptr);
        EXPECT_EQ(accepted ? 2U : 0U, in.recorder->calls.size());
        EXPECT_EQ(length == 16 ? EIPAddress::kIPv6 : EIPAddress::kIPv4, in.interface.GetGreDestIp().GetFamily());
        EXPECT_EQ(length == 4    ? "32.1.13.184"
                  : length == 16 ? "2001:db8:0:1:0:2:0:3"
                                 : "0.0.0.0",
                  TextOf(in.interface.GetGreDestIp()));
    }
}

TEST(EInterfaceTLVParser, AComponentIdIsAnyNumberOfWholeWords)
{
    struct {
        std::string value;
        char const* id;
    } const cases[] = {
        {"", ""}, // empties it
        {U32(0), "0"},
        {U32(0xFFFFFFFF), "4294967295"},
        {U32(7) + U32(0x01020304), "7.16909060"},
        {U32(7) + U32(1) + U32(5) + U32(3), "7.1.5.3"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.id);
        RecordedInterface in;
        in.interface.SetGreSourceIp({9, 9});
        in.interface.SetConnectedViaId({8, 8});
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_GreSourceIp, c.value) + Tlv(IFD_ConnectedViaId, c.value), in.interface));
        EXPECT_THAT(Told(*in.recorder), ElementsAre(Text("SettingInterfaceGreSourceIp(") + c.id + ")",
                                                    Text("SettingInterfaceConnectedViaId(") + c.id + ")"));
        EXPECT_EQ(c.id, TextOf(in.interface.GetGreSourceIp()));
        EXPECT_EQ(c.id, TextOf(in.interface.GetConnectedViaId()));
    }
    for (TLVIds::TLVId const* id : {&IFD_GreSourceIp, &IFD_ConnectedViaId})
        for (unsigned int length : {1U, 2U, 3U, 5U, 6U, 7U, 4001U}) {
            SCOPED_TRACE(testing::Message() << id->GetName() << " of " << length << " bytes");
            RecordedInterface in;
            EXPECT_EQ(-1, ParsedInto(Tlv(*id, Zeros(length)), in.interface));
            EXPECT_THAT(Told(*in.recorder), IsEmpty());
            EXPECT_EQ(0, CountOnDemand(in.interface));
        }
    EInterfaceItem item;
    EXPECT_EQ(0, ParsedInto(Tlv(IFD_ConnectedViaId, Zeros(4000)), item));
    EXPECT_EQ(1000U, item.GetConnectedViaId().GetIdSize());
}

// ---- VLAN tags ------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, AVLANLevelReplacesAllVLANs)
{
    auto const tag = [](unsigned int value) { return Tlv(VLAN_TAG, U32(value)); };
    auto const vlanId = [](unsigned int value) { return Tlv(VLAN_Id, U32(value)); };
    auto const priority = [](unsigned int value) { return Tlv(VLAN_Priority, U32(value)); };
    auto const enabled = [](unsigned int value) { return Tlv(VLAN_Enabled, U32(value)); };
    struct {
        std::string level;
        char const* vlans;
    } const cases[] = {
        {"", "off[]"},
        {Zeros(7), "off[]"},
        {enabled(1), "on[]"},
        {enabled(1) + enabled(0), "off[]"},
        {tag(100), "off[100]"},
        {enabled(1) + tag(0xB00A) + tag(100), "on[45066 100]"},
        {tag(1) + tag(2) + tag(3) + tag(4) + tag(5) + tag(6), "off[1 2 3 4 5 6]"},
        {tag(0xABCD0005), "off[5]"}, // a tag has 16 bits
        {vlanId(4095), "off[4095]"},
        {vlanId(0xFFFF0007), "off[7]"}, // the low 16 bits, of which an id has 12
        {vlanId(0x1008), "off[8]"},
        {priority(7), "off[57344]"},
        {priority(0xFFFFFF01), "off[8192]"}, // the low 8 bits, of which a priority has 3
        {priority(0x09), "off[8192]"},
        {vlanId(10) + priority(5), "off[40970]"},
        {priority(5) + vlanId(10), "off[40970]"},
        {vlanId(10) + tag(100), "off[10 100]"},
        {vlanId(10) + vlanId(11), "off[11]"},
        // On purpose back to one level, which keeps the rest of its tag.
        {tag(0xB00A) + tag(100) + vlanId(20), "off[45076]"},
        {tag(0xB00A) + tag(100) + priority(1), "off[12298]"},
        {tag(0xB00A) + tag(100) + vlanId(20) + tag(101), "off[45076 101]"},
        {tag(1) + tag(2) + tag(3) + tag(4) + tag(5) + vlanId(6), "off[6]"},
        {tag(1) + Tlv(IFD_VLAN, tag(2)) + Tlv(IFD_Name, "x") + Tlv(DHCP_Enabled, U32(1)) + tag(3), "off[1 3]"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases << " " << c.vlans);
        RecordedInterface in;
        in.interface.SetVLANItem(SampleVLANs());
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_VLAN, c.level), in.interface));
        EXPECT_THAT(Told(*in.recorder), ElementsAre(Text("SettingInterfaceVlan(") + c.vlans + ")"));
        EXPECT_EQ(c.vlans, TextOf(in.interface.GetVLANItem()));
        EXPECT_EQ("", in.interface.GetName());
    }
}

TEST(EInterfaceTLVParser, OfAVLANLevelThatEndsInTheParseErrorNothingIsSet)
{
    std::string const good = Tlv(VLAN_Enabled, U32(1)) + Tlv(VLAN_TAG, U32(5));
    struct {
        std::string message;
        char const* name;
    } const cases[] = {
        {Tlv(IFD_VLAN, good + Tlv(VLAN_TAG, Zeros(3))), "a short number"},
        {Tlv(IFD_VLAN, good + RawTlv(VLAN_TAG.GetIndex(), 5, U32(6))), "an inner TLV longer than the level"},
        {Tlv(IFD_VLAN, good + RawTlv(0, 1, "")), "the same, with an unknown id"},
        {RawTlv(IFD_VLAN.GetIndex(), 36, good + Tlv(VLAN_TAG, U32(6)).substr(0, 11)), "a level cut inside a TLV"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        RecordedInterface in;
        in.interface.SetVLANItem(SampleVLANs());
        in.recorder->Clear();
        EXPECT_EQ(-1, ParsedInto(c.message, in.interface));
        EXPECT_THAT(Told(*in.recorder), IsEmpty());
        EXPECT_EQ(SampleVLANs(), in.interface.GetVLANItem());
    }
}

// ---- DHCP -----------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, EveryDHCPLevelSwitchesDHCPAndIsAnnouncedOnARealChangeOnly)
{
    std::string const on = Tlv(DHCP_Enabled, U32(1));
    std::string const off = Tlv(DHCP_Enabled, U32(0));
    struct {
        bool before;
        std::string message;
        TellingWhat told;
        bool after;
    } const cases[] = {
        {false, Tlv(IFD_DHCP, on), {"EnablingDhcpItem()"}, true},
        {true, Tlv(IFD_DHCP, on), {}, true},
        {true, Tlv(IFD_DHCP, off), {"DisablingDhcpItem()"}, false},
        {false, Tlv(IFD_DHCP, off), {}, false},
        {false, Tlv(IFD_DHCP, on + off), {}, false}, // the last one counts, and it alone is set
        {true, Tlv(IFD_DHCP, off + on), {}, true},
        // On purpose: a level without the flag switches off.
        {true, Tlv(IFD_DHCP), {"DisablingDhcpItem()"}, false},
        {false, Tlv(IFD_DHCP), {}, false},
        {true, Tlv(IFD_DHCP, Tlv(DHCP_ClientId, "me") + Tlv(DHCP_RetryCount, U32(9))), {"DisablingDhcpItem()"}, false},
        {false,
         Tlv(IFD_DHCP, on) + Tlv(IFD_DHCP, Tlv(DHCP_ClientId, "me")),
         {"EnablingDhcpItem()", "DisablingDhcpItem()"},
         false},
        {false, Tlv(IFD_DHCPv6, on), {}, false},
        {true, Tlv(IFD_DHCPv6, off), {}, true},
        {true, Tlv(IFD_DHCP, Tlv(IFD_Enabled, U32(1)) + on + Tlv(VLAN_Enabled, U32(0))), {}, true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        RecordedInterface in;
        in.interface.SetDHCPEnabled(c.before);
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(c.message, in.interface));
        EXPECT_EQ(c.told, Told(*in.recorder));
        EXPECT_EQ(c.after, in.interface.IsDHCPEnabled());
        EXPECT_FALSE(in.interface.IsDHCPv6Enabled());
        EXPECT_FALSE(in.interface.GetDHCPProperties() != EDHCPProperties());
    }
    RecordedInterface in;
    in.interface.SetDHCPEnabled(true);
    EXPECT_EQ(-1, ParsedInto(Tlv(IFD_DHCP, off + Tlv(DHCP_Enabled, Zeros(3))), in.interface));
    EXPECT_TRUE(in.interface.IsDHCPEnabled()); // nothing is set from a level that ends in the error
}

// ---- ATM encapsulation ----------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, AnEncapsulationIsToldByTheIdThatIsThere)
{
    struct {
        char const* id;
        eAtmEncapsulationMode mode;
        char const* number;
    } const cases[] = {
        {"None", ATM_ENCAPSULATION_NONE, "0"},
        {"VMR_IpV4", ATM_ENCAPSULATION_VMR_IPV4, "1"},
        {"Eth_VMBFcs", ATM_ENCAPSULATION_ETH_VMB_FCS, "2"},
        {"Eth_VMBNoFcs", ATM_ENCAPSULATION_ETH_VMB_NO_FCS, "3"},
        {"VMR_IpV6", ATM_ENCAPSULATION_VMR_IPV6, "4"},
        {"VMR_Mpls", ATM_ENCAPSULATION_VMR_MPLS, "5"},
        {"LLCR_CLIP", ATM_ENCAPSULATION_LLCR_CLIP, "6"},
        {"LLCB_EthFcs", ATM_ENCAPSULATION_LLCB_ETH_FCS, "7"},
        {"LLCB_EthNoFcs", ATM_ENCAPSULATION_LLCB_ETH_NO_FCS, "8"},
        {"LLCR_PPPoA", ATM_ENCAPSULATION_LLCR_PPPOA, "9"},
        {"VMR_PPPoA", ATM_ENCAPSULATION_VMR_PPPOA, "10"},
        {"LLC_ISIS", ATM_ENCAPSULATION_LLC_ISIS, "11"},
        {"VM_ISIS", ATM_ENCAPSULATION_VM_ISIS, "12"},
        {"LLC", ATM_ENCAPSULATION_LLC, "13"},
        {"LLC_L2TP", ATM_ENCAPSULATION_LLC_L2TP, "14"},
        {"VMR_L2TP", ATM_ENCAPSULATION_VMR_L2TP, "15"},
    };
    for (auto const& c : cases)
        for (std::string const& value : {Text(""), Text("x"), U32(3), Zeros(9)}) {
            SCOPED_TRACE(testing::Message() << c.id << " with " << value.size() << " bytes");
            RecordedInterface in;
            in.interface.SetEncapsulation(static_cast<eAtmEncapsulationMode>(99));
            in.recorder->Clear();
            EXPECT_EQ(0, ParsedInto(Tlv(IFD_ATMEncapsulation, AtmTlv(c.id, value)), in.interface));
            EXPECT_EQ(c.mode, in.interface.GetEncapsulation());
            EXPECT_THAT(Told(*in.recorder), ElementsAre(Text("SettingInterfaceATMEncapsulation(") + c.number + ")"));
        }
}

TEST(EInterfaceTLVParser, AnEncapsulationLevelStartsFromNoneAndItsLastIdCounts)
{
    struct {
        std::string level;
        int mode;
    } const cases[] = {
        {"", 0},
        {Zeros(7), 0},
        {Tlv(IFD_Name, "x"), 0},
        {AtmTlv("LLC") + AtmTlv("VMR_Mpls"), 5},
        {AtmTlv("VMR_Mpls") + AtmTlv("None"), 0},
        {AtmTlv("VMR_Mpls") + Tlv(IFD_Type, U32(1)), 5},
        {AtmTlv("LLC", AtmTlv("VMR_Mpls")), 13}, // the value is not read
        {Golden("TLV.levelATMEncapsulation.hex"), 15},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        RecordedInterface in;
        in.interface.SetEncapsulation(ATM_ENCAPSULATION_LLC_ISIS);
        in.recorder->Clear();
        EXPECT_EQ(0, ParsedInto(Tlv(IFD_ATMEncapsulation, c.level), in.interface));
        EXPECT_EQ(c.mode, in.interface.GetEncapsulation());
        EXPECT_EQ(1U, in.recorder->calls.size());
    }
    EInterfaceItem item;
    EXPECT_EQ(-1, ParsedInto(Tlv(IFD_ATMEncapsulation, AtmTlv("LLC") + RawTlv(0, 1, "")), item));
    EXPECT_EQ(nullptr, item.GetAtmData()); // nothing is set from a level that ends in the error
}

// ---- IPv4 -----------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, AnIPv4LevelChangesTheInterfacesOwnAddressFieldByField)
{
    RecordedInterface in;
    in.interface.SetIPv4AddressItem(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex"));
    EIPv4AddressItem expected = in.interface.GetIPv4AddressItem();
    in.recorder->Clear();
    std::string const level = Tlv(IP4_MaskLength, U32(33)) + Tlv(IP4_MSS, U32(1400)) + Tlv(IFD_Enabled, U32(1)) +
                              Tlv(IP6_MaskLength, U32(7)) + Tlv(IP4_Gateway, "\x0A\x01\x02\x03");
    EXPECT_EQ(0, ParsedInto(Tlv(IFD_IPv4, level), in.interface));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingIPv4MaskLength(32)", "SettingIPv4Gateway(10.1.2.3)"));
    expected.SetParent(nullptr);
    expected.SetMaskLength(32);
    expected.SetGateway(EIPAddress("10.1.2.3"));
    EXPECT_FALSE(in.interface.GetIPv4AddressItem() != expected);
    EXPECT_FALSE(in.interface.IsEnabled());

    in.recorder->Clear();
    EXPECT_EQ(0, ParsedInto(Tlv(IFD_IPv4), in.interface)); // an empty level changes nothing
    EXPECT_THAT(Told(*in.recorder), IsEmpty());

    // What was read before the error stays.
    EXPECT_EQ(-1, ParsedInto(Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(8)) + Tlv(IP4_MaskLength, "")), in.interface));
    EXPECT_EQ(8U, in.interface.GetIPv4AddressItem().GetMaskLength());
}

// ---- The golden message's parts -------------------------------------------------------------------------------------

TEST(EInterfaceTLVParser, ReadsEachLevelOfTheGoldenMessageAlone)
{
    struct {
        TLVIds::TLVId const& id;
        char const* golden;
        std::string (*get)(EInterfaceItem const&);
        char const* after;
    } const cases[] = {
        {IFD_VLAN, "TLV.levelVLAN.hex", Shown<&EInterfaceItem::GetVLANItem>, "on[40970 100]"},
        {IFD_IPv4, "TLV.levelIPv4.hex", IPv4Text, "on 192.0.2.1/28 via 192.0.2.254"},
        {IFD_ATMEncapsulation, "TLV.levelATMEncapsulation.hex", Shown<&EInterfaceItem::GetEncapsulation>, "15"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        EInterfaceItem item;
        EXPECT_EQ(0, ParsedInto(Tlv(c.id, Golden(c.golden)), item));
        EXPECT_EQ(c.after, c.get(item));
    }
}
