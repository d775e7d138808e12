#include "golden.hpp"

#include "eInterfaceTLVBuilder.hpp"
#include "eInterfaceTLVParser.hpp"
#include "eInterfaceTable.hpp"
#include "tlvParserMapTable.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

// What stands ready for messages when the library has started. Nothing here fills the parser maps but in a child
// process, so that each test finds them empty.

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

using Protocol::EBytes;
using TLVIds::TLVId;

static EBytes Number(TLVId const& id, int value)
{
    EBytes tlv;
    Protocol::AppendIntTLV(tlv, id, value);
    return tlv;
}
/// A TLV of TLVs, each with its own id: not as the builders write it.
static EBytes Level(TLVId const& id, EBytes const& value)
{
    EBytes tlv;
    Protocol::AppendBlobTLV(tlv, id, EBlob(value.data(), static_cast<unsigned int>(value.size())));
    return tlv;
}
static EBytes operator+(EBytes left, EBytes const& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
/// The value of a list operation.
static EBytes Item(char id, EBytes const& level)
{
    return EBytes{0, 0, 0, id} + level;
}
/// The number of a name that is no id of the host.
static unsigned int NumberOf(std::string const& name)
{
    std::vector<char const*> const& known = Protocol::TLVBuilder::known_tlv_table();
    for (unsigned int number = 0; number < known.size(); ++number)
        if (name == known[number]) return number;
    return 0;
}

/// One change for each kind of level and target.
static EBytes InterfaceMessage()
{
    EBytes const addresses = Level(ListOp::Add, Item(1, Number(IP6_MaskLength, 48)));
    EBytes const encapsulation = {0, 0, 0, static_cast<char>(NumberOf("VMR_L2TP")), 0, 0, 0, 0};
    return Number(IFD_Enabled, 1) + Level(IFD_VLAN, Number(VLAN_TAG, 100)) + Level(IFD_DHCP, Number(DHCP_Enabled, 1)) +
           Level(IFD_IPv4, Number(IP4_MaskLength, 20)) + Level(IFD_IPv6List, addresses) +
           Level(IFD_ATMEncapsulation, encapsulation);
}
static EBytes TableMessage()
{
    return Level(ListOp::Add, Item(3, InterfaceMessage()));
}
static void ParseInto(EInterfaceTable& table, EBytes const& message)
{
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    ParseInterfaceListTLV(reader, table);
}

/// The kinds of levels that a message reaches.
static std::string Alive()
{
    EBytes const message = InterfaceMessage();
    EInterfaceItem item;
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    Protocol::ParseInterfaceTLV(reader, item);
    EInterfaceTable table(7);
    ParseInto(table, TableMessage());

    std::string kinds;
    if (item.IsEnabled()) kinds += " interface";
    if (table.size() == 1) kinds += " list";
    if (item.GetVLANItem().GetVLANCount() == 1) kinds += " vlans";
    if (item.IsDHCPEnabled()) kinds += " dhcp";
    if (item.GetIPv4AddressItem().GetMaskLength() == 20) kinds += " ipv4";
    if (item.GetIPv6AddressItemList().size() == 1) kinds += " ipv6list";
    EIPv6AddressItem const* const address = item.GetIPv6AddressItem(1);
    if (address && address->GetMaskLength() == 48) kinds += " ipv6";
    if (item.GetEncapsulation() == ATM_ENCAPSULATION_VMR_L2TP) kinds += " atm";
    return kinds;
}

TEST(TLVStart, TheRegistryHoldsTheNineInitializersOfTheLibrary)
{
    std::vector<void (*)()> const& registry = GetTLVParserMapTable();
    ASSERT_EQ(9U, registry.size());
    for (std::size_t i = 0; i < registry.size(); ++i) {
        EXPECT_TRUE(registry[i]);
        for (std::size_t other = 0; other < i; ++other) EXPECT_NE(registry[other], registry[i]);
    }
}

TEST(TLVStart, EachInitializerFillsTheMapOfItsPlace)
{
    // The interfaces come first, since the others are seen through them only; the list of IPv6 addresses before them.
    struct {
        std::size_t place;
        char const* alive;
    } const steps[] = {{7, " interface"},
                       {8, " interface list"},
                       {0, " interface list"}, // the single VLAN, with which no message is read
                       {1, " interface list vlans"},
                       {2, " interface list vlans dhcp"},
                       {3, " interface list vlans dhcp ipv4"},
                       {5, " interface list vlans dhcp ipv4 ipv6list"},
                       {4, " interface list vlans dhcp ipv4 ipv6list ipv6"},
                       {6, " interface list vlans dhcp ipv4 ipv6list ipv6 atm"}};
    ASSERT_EQ(std::size(steps), GetTLVParserMapTable().size());
    std::string expected = "\n";
    for (auto const& step : steps) expected += step.alive + std::string("\n");
    ChildResult const result = RunInChild([&steps] {
        Protocol::UseOwnTLVIds();
        std::printf("%s\n", Alive().c_str());
        for (auto const& step : steps) {
            GetTLVParserMapTable()[step.place]();
            std::printf("%s\n", Alive().c_str());
        }
    });
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ(expected, result.output);
}

TEST(TLVStart, AMessageBeforeTheInitializersRanChangesNothingAndRaisesNothing)
{
    std::vector<char const*> const saved = TLVReader::external_tlv_table;
    EInterfaceTable table(7);
    table.AddInterfaceItem(EInterfaceItem());
    std::string const before = Written(table);
    for (bool const idsAreKnown : {false, true}) {
        SCOPED_TRACE(idsAreKnown);
        if (idsAreKnown) Protocol::UseOwnTLVIds();
        EXPECT_NO_THROW(ParseInto(table, TableMessage()));
        EXPECT_NO_THROW(ParseInto(table, Level(ListOp::RemoveAll, EBytes())));
        EXPECT_EQ(before, Written(table));
        EXPECT_EQ("", Alive());
    }
    TLVReader::external_tlv_table = saved;
}

TEST(TLVStart, TheInitializersMayRunMoreThanOnce)
{
    ChildResult const result = RunInChild([] {
        Protocol::UseOwnTLVIds();
        Protocol::RunTLVParserMapInitializers();
        EInterfaceTable once(7);
        ParseInto(once, TableMessage());
        std::printf("%s\n", Alive().c_str());
        Protocol::RunTLVParserMapInitializers();
        EInterfaceTable twice(7);
        ParseInto(twice, TableMessage());
        std::printf("%s\n", Alive().c_str());
        std::printf("%s, %zu\n", Written(once) == Written(twice) ? "same" : "different", GetTLVParserMapTable().size());
    });
    EXPECT_EQ(0, result.exitStatus);
    std::string const all = " interface list vlans dhcp ipv4 ipv6list ipv6 atm\n";
    EXPECT_EQ(all + all + "same, 9\n", result.output);
}

TEST(TLVStart, TheNamesOfTheAtmEncapsulationsFollowThoseOfTheHostInTheOrderOfTheirValues)
{
    char const* const expected[] = {
        "",
#define TLVID(group, name) #name,
#include "tlvIds.def"
        "None",      "VMR_IpV4",    "Eth_VMBFcs",    "Eth_VMBNoFcs", "VMR_IpV6",  "VMR_Mpls",
        "LLCR_CLIP", "LLCB_EthFcs", "LLCB_EthNoFcs", "LLCR_PPPoA",   "VMR_PPPoA", "LLC_ISIS",
        "VM_ISIS",   "LLC",         "LLC_L2TP",      "VMR_L2TP",
    };
    std::vector<char const*> const& known = Protocol::TLVBuilder::known_tlv_table();
    ASSERT_EQ(std::size(expected), known.size());
    for (std::size_t number = 0; number < known.size(); ++number)
        EXPECT_STREQ(expected[number], known[number]) << number;
}

TEST(TLVStart, NoSenderIsKnown)
{
    EXPECT_TRUE(TLVReader::external_tlv_table.empty());
}
