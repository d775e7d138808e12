#include <ifcore/ifcore.hpp>

#include "tlvBuilder.hpp"
#include "tlvParserMapTable.hpp"
#include "tlvReader.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Messages of nested TLVs with a host that numbers and names its ids in its own way.

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

/// Fills the parser maps, as a host does when all libraries have started.
static void FillParserMaps()
{
    for (auto const initialize : GetTLVParserMapTable()) initialize();
}

static std::string U32(unsigned int value)
{
    std::string bytes;
    for (int const shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}
static std::string Tlv(unsigned int number, std::string const& value)
{
    return U32(number) + U32(static_cast<unsigned int>(value.size())) + value;
}
static std::string Tlv(TLVIds::TLVId const& id, std::string const& value)
{
    return Tlv(id.GetIndex(), value);
}

/// The registered names of the TLVs of one level, in order; "-" for a number without one.
static std::vector<std::string> NamesIn(std::string const& level)
{
    std::vector<char const*> const& known = Protocol::TLVBuilder::known_tlv_table();
    std::vector<std::string> names;
    auto const number = [&level](std::size_t at) {
        unsigned int value = 0;
        for (std::size_t i = at; i < at + 4; ++i) value = value << 8 | static_cast<unsigned char>(level.at(i));
        return value;
    };
    for (std::size_t at = 0; at < level.size(); at += 8 + number(at + 4)) {
        char const* const name = number(at) < known.size() ? known[number(at)] : nullptr;
        names.push_back(name ? name : "-");
    }
    return names;
}

static std::string BytesOf(Protocol::EBytes const& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

TEST(MinimalHostTLV, TheNumbersAreNotThoseOfTheBundledHost)
{
    EXPECT_NE(1U, ListOp::Add.GetIndex());
    EXPECT_GT(ListOp::Add.GetIndex(), IFD_Name.GetIndex());
    EXPECT_STREQ("minimal.Add", Protocol::TLVBuilder::known_tlv_table()[ListOp::Add.GetIndex()]);
}

TEST(MinimalHostTLV, AnInterfaceOperationCarriesTheNumbersOfTheHost)
{
    EInterfaceItem item;
    item.SetName("eth0");
    item.SetEUID(EUID(5));
    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, ListOp::Add, item, 7);

    std::string const bytes = BytesOf(message);
    ASSERT_LT(12U, bytes.size());
    EXPECT_EQ(U32(ListOp::Add.GetIndex()), bytes.substr(0, 4));
    EXPECT_EQ(U32(static_cast<unsigned int>(bytes.size() - 8)), bytes.substr(4, 4));
    EXPECT_EQ(U32(0), bytes.substr(8, 4)); // on purpose not 7: the builder clears the first 4 bytes of the value
    std::string const fields = bytes.substr(12);
    EXPECT_EQ(Tlv(IFD_Name, "eth0"), fields.substr(0, 12));
    EXPECT_NE(std::string::npos, fields.find(Tlv(IFD_Uid, ""))); // this host has no bytes to point at
    std::vector<std::string> const expected = {
        "minimal.IFD_Name", "minimal.IFD_Type",     "minimal.IFD_LayerName", "minimal.IFD_Enabled",
        "minimal.IFD_Mac",  "minimal.IFD_VLAN",     "minimal.IFD_MTU",       "minimal.IFD_VCAT_CircuitId",
        "minimal.IFD_DHCP", "minimal.IFD_DHCPv6",   "minimal.IFD_DHCP",      "minimal.IFD_DHCPv6",
        "minimal.IFD_IPv4", "minimal.IFD_IPv6List", "minimal.IFD_Uid",       "minimal.IFD_FCoE",
        "minimal.IFD_FCoE", "minimal.IFD_PTP",      "minimal.IFD_DCBX"};
    EXPECT_EQ(expected, NamesIn(fields));
}

TEST(MinimalHostTLV, ValuesAreThoseOfTheHostsAppenders)
{
    EIPv4AddressItem item;
    item.SetEnabled(true);
    item.SetAddress(EIPAddress("192.0.2.1"));
    item.SetGateway(EIPAddress("192.0.2.254"));
    item.SetMaskLength(28);
    Protocol::EBytes message;
    Protocol::AppendIPv4ItemTLV(message, IFD_IPv4, item);
    std::string const fields = Tlv(0U, U32(1)) + // on purpose without its id
                               Tlv(IP4_IPAddress, std::string("\xC0\x00\x02\x01", 4)) +
                               Tlv(IP4_Gateway, std::string("\xC0\x00\x02\xFE", 4)) + Tlv(IP4_MaskLength, U32(28)) +
                               Tlv(IP4_MSS, U32(0));
    EXPECT_EQ(Tlv(IFD_IPv4, fields), BytesOf(message));
}

TEST(MinimalHostTLV, AMessageIsReadByTheNamesOfItsSender)
{
    FillParserMaps();
    std::vector<char const*> const& own = Protocol::TLVBuilder::known_tlv_table();
    struct {
        char const* sender;
        std::vector<char const*> names;
    } const cases[] = {{"this host", own},
                       {"one that numbers backwards", std::vector<char const*>(own.rbegin(), own.rend())}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.sender);
        TLVReader::external_tlv_table = c.names;
        auto const tlv = [&c](std::string const& name, std::string const& value) {
            auto const found = std::find_if(c.names.begin(), c.names.end(),
                                            [&name](char const* entry) { return entry && name == entry; });
            EXPECT_NE(c.names.end(), found) << name;
            return Tlv(static_cast<unsigned int>(found - c.names.begin()), value);
        };
        std::string const address("\x20\x01\x0D\xB8\0\0\0\0\0\0\0\0\0\0\0\x01", 16);
        std::string const vlans = tlv("minimal.VLAN_Enabled", U32(1)) + tlv("minimal.VLAN_TAG", U32(0xB00A)) +
                                  tlv("minimal.VLAN_TAG", U32(100));
        std::string const addresses =
            tlv("minimal.RemoveAll", "") +
            tlv("minimal.Add", U32(4) + tlv("minimal.IP6_IPAddress", address) + tlv("minimal.IP6_MaskLength", U32(64)));
        std::string const message =
            tlv("minimal.Add", U32(3) + tlv("minimal.IFD_Name", "eth3") + tlv("minimal.IFD_VLAN", vlans) +
                                   tlv("minimal.IFD_DHCP", tlv("minimal.DHCP_Enabled", U32(1))) +
                                   tlv("minimal.IFD_IPv4", tlv("minimal.IP4_MaskLength", U32(20))) +
                                   tlv("minimal.IFD_IPv6List", addresses) +
                                   tlv("minimal.IFD_ATMEncapsulation", tlv("LLC", "")) +
                                   tlv("minimal.IFD_GreSourceIp", U32(7) + U32(1) + U32(2)));

        EInterfaceTable table(7);
        TLVReader reader(message.data(), static_cast<int>(message.size()));
        ParseInterfaceListTLV(reader, table);
        ASSERT_EQ(1U, table.size());
        EInterfaceItem const* const item = table.GetInterfaceItem(3);
        ASSERT_TRUE(item);
        EXPECT_EQ("eth3", item->GetName());
        EXPECT_TRUE(item->GetVLANItem().IsEnabled());
        ASSERT_EQ(2U, item->GetVLANItem().GetVLANCount());
        EXPECT_EQ(0xB00AU, item->GetVLANItem().GetVlanTag(0));
        EXPECT_EQ(100U, item->GetVLANItem().GetVlanTag(1));
        EXPECT_TRUE(item->IsDHCPEnabled());
        EXPECT_EQ(20U, item->GetIPv4AddressItem().GetMaskLength());
        ASSERT_TRUE(item->GetIPv6AddressItem(4));
        EXPECT_EQ("2001:db8::1", item->GetIPv6AddressItem(4)->GetAddress().GetAsString());
        EXPECT_EQ(64U, item->GetIPv6AddressItem(4)->GetMaskLength());
        EXPECT_EQ(ATM_ENCAPSULATION_LLC, item->GetEncapsulation());
        EXPECT_TRUE(EComponentId({7, 1, 2}) == item->GetGreSourceIp());
    }
}

TEST(MinimalHostTLV, NumbersWithoutANameAreSkipped)
{
    FillParserMaps();
    TLVReader::external_tlv_table = Protocol::TLVBuilder::known_tlv_table();
    std::string const message =
        Tlv(0U, U32(1)) + Tlv(IFD_Name.GetIndex() - 1, "unnamed") + Tlv(0xFFFFFFFFU, "beyond") + Tlv(IFD_Name, "eth0");
    EInterfaceItem item;
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    Protocol::ParseInterfaceTLV(reader, item);
    EXPECT_EQ("eth0", item.GetName());
}
