// Levels of TLVs: which ids are known, how long they are, and where reading ends.
#include "eInterfaceTLVParser.hpp"

#include "recordedInterface.hpp"
#include "tlvMessages.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;
using testing::ElementsAre;
using testing::IsEmpty;

static std::vector<char const*> OwnNames()
{
    return Protocol::TLVBuilder::known_tlv_table();
}
static unsigned int NumberIn(std::vector<char const*> const& names, std::string const& name)
{
    for (unsigned int number = 0; number < names.size(); ++number)
        if (names[number] && name == names[number]) return number;
    ADD_FAILURE() << name;
    return 0;
}
static std::string Zeros(unsigned int count)
{
    return std::string(count, '\0');
}

// ---- Ids ------------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParserLevel, AnIdThatIsUnknownWhereItStandsIsSkipped)
{
    auto const size = static_cast<unsigned int>(TLVReader::external_tlv_table.size());
    std::vector<unsigned int> numbers = {0, size, size + 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    // Known to the host, but not at this level.
    for (TLVIds::TLVId const* id : {&ListOp::Add, &ListOp::RemoveAll, &IFD_LayerName, &IFD_MTU, &IFD_Uid, &IFD_ATMMode,
                                    &IFD_DHCPv6, &IFD_PPPHandle, &IFD_FCoE, &IP4_Enabled, &IP4_MSS, &IP6_IPAddress,
                                    &VLAN_TAG, &DHCP_Enabled, &PTP_Enabled, &LLDP_TxDelay})
        numbers.push_back(id->GetIndex());
    numbers.push_back(TLVIds::TLVId("VMR_IpV4").GetIndex());
    for (unsigned int const number : numbers)
        for (std::string const& value : {std::string(), U32(1), Tlv(IFD_Name, "inside"), Zeros(1000)}) {
            SCOPED_TRACE(testing::Message() << number << " with " << value.size() << " bytes");
            std::string const tlv = RawTlv(number, static_cast<unsigned int>(value.size()), value);
            RecordedInterface in;
            EXPECT_EQ(0, ParsedInto(tlv + Tlv(IFD_Name, "behind") + tlv, in.interface));
            EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceName(behind)"));
        }
}

TEST(EInterfaceTLVParserLevel, IdsAreToldByTheSendersNamesWhateverTheirNumbers)
{
    std::vector<char const*> const own = OwnNames();
    std::vector<char const*> reversed = own;
    std::reverse(reversed.begin(), reversed.end());
    std::vector<char const*> rotated = own; // no id keeps its number, and 0 is one
    std::rotate(rotated.begin(), rotated.begin() + 1, rotated.end());
    std::vector<char const*> spread; // more numbers than this host has, with gaps
    for (char const* name : own) spread.insert(spread.end(), {nullptr, "", name, "not known to any"});
    std::vector<char const*> few = {"VLAN_TAG", "IFD_VLAN", "IFD_Type", "LLC", "IFD_Name", "IFD_ATMEncapsulation"};
    std::vector<std::string> const texts(own.begin(), own.end()); // other pointers to the same names
    std::vector<char const*> copied;
    for (std::string const& text : texts) copied.push_back(text.c_str());

    for (std::vector<char const*> const& names : {own, reversed, rotated, spread, few, copied}) {
        auto const tlv = [&names](char const* name, std::string const& value) {
            return RawTlv(NumberIn(names, name), static_cast<unsigned int>(value.size()), value);
        };
        std::string const message = tlv("IFD_Name", "eth0") + tlv("IFD_VLAN", tlv("VLAN_TAG", U32(9))) +
                                    tlv("IFD_ATMEncapsulation", tlv("LLC", "")) + tlv("IFD_Type", U32(3));
        SenderNames const sender(names);
        RecordedInterface in;
        EXPECT_EQ(0, ParsedInto(message, in.interface));
        EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceName(eth0)", "SettingInterfaceVlan(off[9])",
                                                    "SettingInterfaceATMEncapsulation(13)", "SettingInterfaceType(3)"));
    }
}

TEST(EInterfaceTLVParserLevel, ASenderMayGiveOneNameSeveralNumbers)
{
    SenderNames const sender({"IFD_Name", "IFD_Type", "IFD_Name", nullptr});
    RecordedInterface in;
    EXPECT_EQ(0, ParsedInto(RawTlv(0, 1, "a") + RawTlv(2, 1, "b") + RawTlv(1, 4, U32(1)), in.interface));
    EXPECT_THAT(Told(*in.recorder),
                ElementsAre("SettingInterfaceName(a)", "SettingInterfaceName(b)", "SettingInterfaceType(1)"));
}

TEST(EInterfaceTLVParserLevel, UnknownAndMissingNamesOfTheSenderAreSkipped)
{
    auto const tlv = [](unsigned int number) { return RawTlv(number, 4, U32(1)); };
    SenderNames const sender({"", "IFD_Typ", "IFD_Type2", "ifd_type", " IFD_Type", nullptr, "IFD_Type", "", nullptr});
    RecordedInterface in;
    std::string all;
    for (unsigned int number = 0; number < 12; ++number) all += tlv(number);
    EXPECT_EQ(0, ParsedInto(all, in.interface));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceType(1)"));
    EXPECT_EQ(-1, ParsedInto(RawTlv(5, 5, U32(1)), in.interface)); // too long all the same
}

TEST(EInterfaceTLVParserLevel, WithoutNamesOfTheSenderAllIsSkipped)
{
    SenderNames const sender({});
    RecordedInterface in;
    EXPECT_EQ(0, ParsedInto(Golden("TLV.levelInterface.hex"), in.interface));
    EXPECT_EQ(0, ParsedInto(Golden("TLV.wholeTable.hex"), in.table));
    EXPECT_THAT(Told(*in.recorder), IsEmpty());
    EXPECT_EQ(1U, in.table.GetCount());
}

// ---- Lengths --------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParserLevel, ATLVLongerThanItsLevelIsReadAsFarAsItIsThereAndThenTheParseError)
{
    struct {
        TLVIds::TLVId const& id;
        unsigned int missing; // bytes of the declared length
        std::string there;
        std::vector<std::string> told;
    } const cases[] = {
        {IFD_Name, 1, "eth", {"SettingInterfaceName(eth)"}},
        {IFD_Name, 7, "", {"SettingInterfaceName()"}},
        {IFD_Mac, 4, "\x02\x04", {"SettingInterfaceMac(02:04:00:00:00:00)"}},
        {IFD_Type, 4, U32(2), {"SettingInterfaceType(2)"}},
        {IFD_Type, 1, Zeros(3), {}}, // a short number by then
        {IFD_Enabled, 9, U32(2), {"EnablingInterfaceItem()"}},
        {IFD_VLAN, 1, "", {"SettingInterfaceVlan(off[])"}},
        {IFD_VLAN, 12, Tlv(VLAN_TAG, U32(5)), {"SettingInterfaceVlan(off[5])"}},
        {IFD_VLAN, 12, Tlv(VLAN_TAG, U32(5)) + Zeros(7), {"SettingInterfaceVlan(off[5])"}},
        {IFD_VLAN, 1, Tlv(VLAN_TAG, U32(5)) + RawTlv(VLAN_TAG.GetIndex(), 5, U32(6)), {}},
        {IFD_DHCP, 12, Tlv(DHCP_Enabled, U32(1)), {"EnablingDhcpItem()"}},
        {IFD_IPv4, 3, Tlv(IP4_MaskLength, U32(9)), {"SettingIPv4MaskLength(9)"}},
        {IFD_IPv4,
         3,
         Tlv(IP4_MaskLength, U32(9)) + RawTlv(IP4_IPAddress.GetIndex(), 4, Zeros(3)),
         {"SettingIPv4MaskLength(9)"}},
        {IFD_IPv6List, 3, Tlv(ListOp::Add, U32(1) + Tlv(IP6_MaskLength, U32(9))), {"SettingIPv6MaskLength(9)"}},
        {IFD_ATMEncapsulation, 8, Tlv(TLVIds::TLVId("LLC")), {"SettingInterfaceATMEncapsulation(13)"}},
        {IFD_GreSourceIp, 4, U32(7), {"SettingInterfaceGreSourceIp(7)"}},
        {IFD_GreSourceIp, 2, U32(7) + Zeros(2), {}},
        {IFD_GreDestIp, 12, U32(0x0A000001), {"SettingInterfaceGreDestIp(10.0.0.1)"}}, // an IPv4 address by then
        {IFD_GreDestIp, 1, Zeros(3), {}},
        {IFD_ConnectedViaId, 8, "", {"SettingInterfaceConnectedViaId()"}},
        {IFD_LayerName, 1, "x", {}},
    };
    for (auto const& c : cases)
        for (bool const longer : {false, true}) {
            SCOPED_TRACE(testing::Message() << &c - cases << " " << c.id.GetName());
            RecordedInterface in;
            auto const length = static_cast<unsigned int>(c.there.size()) + c.missing;
            // The bytes of another message lie behind it when it is the last of a level.
            std::string const level = Tlv(IFD_Atm_Vpi, U32(1)) + RawTlv(c.id.GetIndex(), length, c.there);
            std::string const message = longer ? Tlv(ListOp::Edit, U32(1) + level) + Tlv(IFD_Name, "behind") : level;
            EXPECT_EQ(-1, longer ? ParsedInto(message, in.table) : ParsedInto(message, in.interface));
            std::vector<std::string> told = {"SettingInterfaceVPI(1)"};
            told.insert(told.end(), c.told.begin(), c.told.end());
            EXPECT_EQ(told, Told(*in.recorder));
            ExpectConsistent(in.table);
        }
}

TEST(EInterfaceTLVParserLevel, ALengthOf2GiBOrMoreIsLongerThanWhatRemains)
{
    for (unsigned int const length :
         {0x7FFFFFF7U, 0x7FFFFFF8U, 0x7FFFFFFFU, 0x80000000U, 0x80000001U, 0xFFFFFFF0U, 0xFFFFFFF8U, 0xFFFFFFFFU})
        for (std::string const& there : {std::string(), std::string("eth"), Zeros(8), Tlv(IFD_Type, U32(5))}) {
            SCOPED_TRACE(testing::Message() << length << " of which are there " << there.size());
            RecordedInterface in;
            EXPECT_EQ(-1,
                      ParsedInto(Tlv(IFD_Atm_Vpi, U32(1)) + RawTlv(IFD_Name.GetIndex(), length, there), in.interface));
            EXPECT_THAT(in.recorder->Operations(), ElementsAre("SettingInterfaceVPI", "SettingInterfaceName"));
            EXPECT_EQ(there, in.interface.GetName());
            in.recorder->Clear();
            EXPECT_EQ(-1, ParsedInto(RawTlv(0, length, there), in.interface));
            EXPECT_THAT(Told(*in.recorder), IsEmpty());
            // The operation is done on what is there, here an interface of id 3.
            EXPECT_EQ(-1, ParsedInto(RawTlv(ListOp::Add.GetIndex(), length, U32(3)), in.table));
            EXPECT_NE(nullptr, in.table.GetInterfaceItem(3));
        }
}

TEST(EInterfaceTLVParserLevel, FewerThan8BytesAtTheEndOfALevelAreNoError)
{
    for (unsigned int count = 0; count < 8; ++count)
        for (char const byte : {'\0', '\x05', '\xFF'}) {
            SCOPED_TRACE(count);
            std::string const rest(count, byte);
            RecordedInterface in;
            EXPECT_EQ(0, ParsedInto(rest, in.interface));
            EXPECT_EQ(0, ParsedInto(rest, in.table));
            EXPECT_THAT(Told(*in.recorder), IsEmpty());
            std::string const interface = Tlv(IFD_VLAN, Tlv(VLAN_TAG, U32(5)) + rest) +
                                          Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(8)) + rest) +
                                          Tlv(IFD_IPv6List, Tlv(ListOp::Add, U32(1) + rest) + rest) +
                                          Tlv(IFD_DHCP, Tlv(DHCP_Enabled, U32(1)) + rest) +
                                          Tlv(IFD_ATMEncapsulation, Tlv(TLVIds::TLVId("LLC")) + rest) + rest;
            EXPECT_EQ(0, ParsedInto(Tlv(ListOp::Edit, U32(1) + interface) + rest, in.table));
            EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceVlan(off[5])", "SettingIPv4MaskLength(8)",
                                                        "EnablingDhcpItem()", "SettingInterfaceATMEncapsulation(13)"));
            EXPECT_NE(nullptr, in.interface.GetIPv6AddressItem(1));
        }
}

TEST(EInterfaceTLVParserLevel, WhatWasReadBeforeAnErrorStaysAndTheRestIsNotRead)
{
    RecordedInterface in;
    std::string const message = Tlv(IFD_Name, "first") + Tlv(IFD_IPv4, Tlv(IP4_MaskLength, U32(8))) +
                                Tlv(IFD_GreInKey, Zeros(3)) + Tlv(IFD_Type, U32(2));
    EXPECT_EQ(-1, ParsedInto(message, in.interface));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceName(first)", "SettingIPv4MaskLength(8)"));
    EXPECT_EQ("first", in.interface.GetName());
    EXPECT_EQ(8U, in.interface.GetIPv4AddressItem().GetMaskLength());
    EXPECT_EQ(INTERFACE_TYPE_ETHERNET, in.interface.GetType());
    EXPECT_EQ(nullptr, in.interface.GetGreData());
}

TEST(EInterfaceTLVParserLevel, AnErrorInsideALevelEndsTheWholeMessage)
{
    std::string const bad = RawTlv(0, 1, "");
    for (TLVIds::TLVId const* id : {&IFD_VLAN, &IFD_DHCP, &IFD_IPv4, &IFD_IPv6List, &IFD_ATMEncapsulation}) {
        SCOPED_TRACE(id->GetName());
        RecordedInterface in;
        EXPECT_EQ(
            -1, ParsedInto(Tlv(ListOp::Edit, U32(1) + Tlv(*id, bad) + Tlv(IFD_Name, "behind")) + Tlv(ListOp::RemoveAll),
                           in.table));
        EXPECT_THAT(Told(*in.recorder), IsEmpty());
        EXPECT_EQ(1U, in.table.GetCount());
    }
}

// ---- Readers --------------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParserLevel, AReaderOfNothingReadsNothing)
{
    std::string const bytes = Tlv(ListOp::RemoveAll) + Tlv(IFD_Name, "eth0");
    struct {
        void const* bytes;
        int size;
    } const cases[] = {{nullptr, 0},       {nullptr, 100},     {nullptr, -1},           {bytes.data(), 0},
                       {bytes.data(), -1}, {bytes.data(), -8}, {bytes.data(), INT_MIN}, {bytes.data(), 7}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.size);
        RecordedInterface in;
        TLVReader reader(c.bytes, c.size);
        EXPECT_NO_THROW(Protocol::ParseInterfaceTLV(reader, in.interface));
        EXPECT_NO_THROW(ParseInterfaceListTLV(reader, in.table));
        if (reader.remaining < 4) {
            // There is no id.
            EXPECT_THROW(Protocol::ParseInterfaceListAddTLV(reader, in.table.GetInterfaceItemList()), int);
            EXPECT_THROW(Protocol::ParseInterfaceListEditTLV(reader, in.table.GetInterfaceItemList()), int);
        }
        EXPECT_THAT(Told(*in.recorder), IsEmpty());
        EXPECT_EQ(1U, in.table.GetCount());
    }
    RecordedInterface in;
    TLVReader reader(bytes.data(), static_cast<int>(bytes.size()));
    for (int const remaining : {-1, -8, INT_MIN}) { // a host sets it itself
        reader.remaining = remaining;
        EXPECT_NO_THROW(Protocol::ParseInterfaceTLV(reader, in.interface));
        EXPECT_NO_THROW(ParseInterfaceListTLV(reader, in.table));
        EXPECT_EQ(remaining, reader.remaining);
    }
    EXPECT_THAT(Told(*in.recorder), IsEmpty());
    EXPECT_EQ(1U, in.table.GetCount());
}

TEST(EInterfaceTLVParserLevel, TheReaderMayStandInsideAMessageAndIsNotMovedByReading)
{
    std::string const bytes = Tlv(IFD_Name, "eth0") + Tlv(IFD_Type, U32(2)) + Tlv(IFD_Name, "behind");
    TLVReader reader(bytes.data(), static_cast<int>(bytes.size()));
    reader.position += 12;
    reader.remaining = 12;
    for (int round = 0; round < 2; ++round) {
        RecordedInterface in;
        Protocol::ParseInterfaceTLV(reader, in.interface);
        EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceType(2)"));
        EXPECT_EQ(12, reader.remaining);
        EXPECT_EQ(static_cast<void const*>(bytes.data() + 12), reader.position);
    }
}

TEST(EInterfaceTLVParserLevel, AReaderMayOwnItsMessage)
{
    std::string const bytes = Tlv(IFD_Name, "eth0");
    auto owned = std::make_unique<unsigned char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), owned.get());
    TLVReader reader(owned.get(), static_cast<int>(bytes.size()));
    reader.buffer = std::move(owned);
    EInterfaceItem item;
    Protocol::ParseInterfaceTLV(reader, item);
    EXPECT_EQ("eth0", item.GetName());
    EXPECT_EQ(static_cast<void const*>(reader.buffer.get()), reader.position); // it owns it still
}

TEST(EInterfaceTLVParserLevel, TheParseErrorIsTheNumberMinus1)
{
    try {
        TLVParseError();
    } catch (int error) {
        EXPECT_EQ(-1, error);
    }
    EXPECT_THROW(TLVParseError(), int);
}
