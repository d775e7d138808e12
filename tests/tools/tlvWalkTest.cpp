#include "tlvWalk.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

#include <algorithm>

using namespace ifcoreTool;
using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

namespace {

std::optional<TlvProblem> Walk(std::string const& message, TlvIdTable const& ids, TlvView view,
                               TlvVisitor* visitor = nullptr)
{
    std::vector<unsigned char> const bytes(message.begin(), message.end()); // ends where the message ends
    return WalkTlvs(bytes.data(), bytes.size(), 0, ids, view, visitor);
}

/// Where the library stops; empty when it reads the message to its end.
std::string Located(std::string const& message)
{
    static TlvIdTable const ids;
    auto const problem = Walk(message, ids, TlvView::asRead);
    return problem ? problem->GetText() : "";
}

/// The locator names a place if and only if the library raises the parse error.
void ExpectLocated(std::string const& message)
{
    EInterfaceTable table(7);
    EInterfaceItem item;
    item.GetIPv6AddressItemList().AddItem(3);
    table.EInterfaceItemList::AddItem(5, item);
    int const error = ParsedInto(message, table);
    EXPECT_EQ(error != 0, !Located(message).empty()) << error << " " << Located(message);
}

unsigned int NumberOf(std::string const& name)
{
    std::vector<std::string> const names = TlvIdTable().GetNames();
    return static_cast<unsigned int>(std::find(names.begin(), names.end(), name) - names.begin());
}

std::string ByName(std::string const& name, std::string const& value = "")
{
    return RawTlv(NumberOf(name), static_cast<unsigned int>(value.size()), value);
}

/// All that the library reads, in one message of 37 TLVs.
std::string Nested()
{
    std::string const addresses =
        Tlv(ListOp::RemoveAll) +
        Tlv(ListOp::Add, U32(1) + Tlv(IP6_IPAddress, std::string(16, '\x20')) + Tlv(IP6_MaskLength, U32(64))) +
        Tlv(ListOp::Edit, U32(3) + Tlv(IP6_MaskLength, U32(48))) + Tlv(ListOp::Remove, U32(9));
    std::string const interface =
        Tlv(IFD_Name, "lan0") + Tlv(IFD_Type, U32(4)) + Tlv(IFD_LayerName, "x") + Tlv(IFD_Enabled, U32(1)) +
        Tlv(IFD_Mac, "\x02\x01\x01\x01\x01\x05") +
        Tlv(IFD_VLAN,
            Tlv(VLAN_Enabled, U32(1)) + Tlv(VLAN_TAG, U32(100)) + Tlv(VLAN_Id, U32(7)) + Tlv(VLAN_Priority, U32(3))) +
        Tlv(IFD_DHCP, Tlv(DHCP_Enabled, U32(1)) + Tlv(DHCP_ClientId, "me")) +
        Tlv(IFD_IPv4, Tlv(IP4_Enabled, U32(1)) + Tlv(IP4_IPAddress, U32(0xC0000201)) +
                          Tlv(IP4_Gateway, U32(0xC00002FE)) + Tlv(IP4_MaskLength, U32(24))) +
        Tlv(IFD_IPv6List, addresses) + Tlv(IFD_GreSourceIp, U32(7) + U32(1) + U32(2)) +
        Tlv(IFD_GreDestIp, U32(0xC0000209)) + Tlv(IFD_GreUseChecksum, U32(1)) + Tlv(IFD_GreUseSequence, U32(0)) +
        Tlv(IFD_GreUseKey, U32(1)) + Tlv(IFD_GreInKey, U32(5)) + Tlv(IFD_GreOutKey, U32(6)) +
        Tlv(IFD_ConnectedViaId, U32(7)) + Tlv(IFD_ATMEncapsulation, ByName("LLC")) + Tlv(IFD_Atm_Vpi, U32(1)) +
        Tlv(IFD_Atm_Vci, U32(32)) + "end";
    return Tlv(ListOp::Add, U32(5) + interface) + Tlv(ListOp::Edit, U32(6) + Tlv(IFD_Name, "")) +
           Tlv(ListOp::Remove, U32(6)) + Tlv(ListOp::RemoveAll) + RawTlv(77777, 2, "?!") + "rest";
}

/// A TLV in a level that the library reads, with all that is around it.
std::string InLevel(TlvLevel level, std::string const& tlv)
{
    switch (level) {
    case TlvLevel::interfaceList: return tlv;
    case TlvLevel::interface: return Tlv(ListOp::Edit, U32(5) + tlv);
    case TlvLevel::vlans: return InLevel(TlvLevel::interface, Tlv(IFD_VLAN, tlv));
    case TlvLevel::dhcp: return InLevel(TlvLevel::interface, Tlv(IFD_DHCP, tlv));
    case TlvLevel::dhcpv6: return InLevel(TlvLevel::interface, Tlv(IFD_DHCPv6, tlv));
    case TlvLevel::ipv4: return InLevel(TlvLevel::interface, Tlv(IFD_IPv4, tlv));
    case TlvLevel::ipv6List: return InLevel(TlvLevel::interface, Tlv(IFD_IPv6List, tlv));
    case TlvLevel::ipv6: return InLevel(TlvLevel::ipv6List, Tlv(ListOp::Edit, U32(3) + tlv));
    case TlvLevel::atmEncapsulation: return InLevel(TlvLevel::interface, Tlv(IFD_ATMEncapsulation, tlv));
    case TlvLevel::fcoe: return InLevel(TlvLevel::interface, Tlv(IFD_FCoE, tlv));
    default: ADD_FAILURE() << "no such level here"; return "";
    }
}

class Depth : public TlvVisitor {
public:
    std::size_t deepest = 0;
    std::size_t count = 0;
    void Enter(TlvNode const& tlv) override
    {
        deepest = std::max(deepest, tlv.depth);
        ++count;
    }
    void Leave(TlvNode const&, std::size_t) override {}
};

} // namespace

TEST(TlvWalk, EveryPrefixIsLocatedAsTheLibraryRefusesIt)
{
    std::string const whole = Nested();
    EXPECT_EQ("", Located(whole));
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        SCOPED_TRACE(size);
        ExpectLocated(whole.substr(0, size));
    }
}

TEST(TlvWalk, EveryChangedByteIsLocatedAsTheLibraryRefusesIt)
{
    std::string const whole = Nested();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        SCOPED_TRACE(at);
        auto const byte = static_cast<unsigned char>(whole[at]);
        for (int const value : {0, 1, 2, 4, 5, 8, 16, 0x7f, 0x80, 0xff, byte + 1, byte - 1, byte ^ 0x80}) {
            std::string changed = whole;
            changed[at] = static_cast<char>(value & 0xff);
            ExpectLocated(changed);
        }
    }
}

TEST(TlvWalk, EveryIdOfEveryLengthIsLocatedAsTheLibraryRefusesIt)
{
    TlvIdTable const ids;
    for (TlvLevel const level :
         {TlvLevel::interfaceList, TlvLevel::interface, TlvLevel::vlans, TlvLevel::dhcp, TlvLevel::dhcpv6,
          TlvLevel::ipv4, TlvLevel::ipv6List, TlvLevel::ipv6, TlvLevel::atmEncapsulation, TlvLevel::fcoe})
        for (unsigned int number = 0; number <= ids.GetNames().size(); ++number)
            for (unsigned int length = 0; length <= 17; ++length) {
                SCOPED_TRACE(ids.GetName(number) + " " + std::to_string(length));
                ExpectLocated(InLevel(level, RawTlv(number, length, std::string(length, '\x01'))));
            }
}

TEST(TlvWalk, NamesThePlaceOfEveryKindOfError)
{
    struct {
        std::string message;
        char const* place;
    } const cases[] = {
        {InLevel(TlvLevel::ipv4, RawTlv(IP4_MaskLength.GetIndex(), 4, "abc")),
         "Edit > IFD_IPv4 > IP4_MaskLength, byte 28: 4 bytes wanted, 3 there"},
        {InLevel(TlvLevel::ipv4, Tlv(IP4_Enabled, U32(1)) + Tlv(IP4_MaskLength, "abc")),
         "Edit > IFD_IPv4 > IP4_MaskLength, byte 40: 4 bytes wanted, 3 there"},
        {InLevel(TlvLevel::ipv4, RawTlv(IP4_IPAddress.GetIndex(), 4, "abc")),
         "Edit > IFD_IPv4 > IP4_IPAddress, byte 28: its length says 4 bytes, 3 there"},
        {InLevel(TlvLevel::ipv6, Tlv(IP6_MaskLength, "")),
         "Edit > IFD_IPv6List > Edit > IP6_MaskLength, byte 40: 4 bytes wanted, 0 there"},
        {InLevel(TlvLevel::ipv6List, Tlv(ListOp::Add, "\x01")),
         "Edit > IFD_IPv6List > Add, byte 28: 4 bytes wanted, 1 there"},
        {Tlv(ListOp::RemoveAll) + Tlv(ListOp::Remove, "abc"), "Remove, byte 16: 4 bytes wanted, 3 there"},
        {Tlv(ListOp::Add), "Add, byte 8: 4 bytes wanted, 0 there"},
        {InLevel(TlvLevel::interface, Tlv(IFD_GreDestIp, "12345")),
         "Edit > IFD_GreDestIp, byte 20: 4 or 16 bytes wanted, 5 there"},
        {InLevel(TlvLevel::interface, Tlv(IFD_GreSourceIp, "123456")),
         "Edit > IFD_GreSourceIp, byte 20: a multiple of 4 bytes wanted, 6 there"},
        {InLevel(TlvLevel::interface, Tlv(IFD_ConnectedViaId, "1")),
         "Edit > IFD_ConnectedViaId, byte 20: a multiple of 4 bytes wanted, 1 there"},
        // The length is looked at after the value.
        {InLevel(TlvLevel::interface, RawTlv(IFD_ConnectedViaId.GetIndex(), 16, U32(1) + "1")),
         "Edit > IFD_ConnectedViaId, byte 20: a multiple of 4 bytes wanted, 5 there"},
        {InLevel(TlvLevel::interface, RawTlv(IFD_Name.GetIndex(), 0x80000000, "ab")),
         "Edit > IFD_Name, byte 20: its length says 2147483648 bytes, 2 there"},
        {RawTlv(ListOp::Add.GetIndex(), 30, U32(1) + RawTlv(IFD_IPv4.GetIndex(), 12, Tlv(IP4_Enabled))),
         "Add > IFD_IPv4 > IP4_Enabled, byte 28: 4 bytes wanted, 0 there"},
        {RawTlv(ListOp::Add.GetIndex(), 30, U32(1) + RawTlv(IFD_IPv4.GetIndex(), 12, Tlv(IP4_MSS))),
         "Add > IFD_IPv4, byte 20: its length says 12 bytes, 8 there"},
        {RawTlv(ListOp::Add.GetIndex(), 30, U32(1)), "Add, byte 8: its length says 30 bytes, 4 there"},
        {RawTlv(4711, 1, ""), "4711, byte 8: its length says 1 bytes, 0 there"},
        {RawTlv(0, 1, ""), "0, byte 8: its length says 1 bytes, 0 there"},
        // What the library skips is not looked into.
        {InLevel(TlvLevel::fcoe, RawTlv(FCoE_MaxSize.GetIndex(), 40, "")), ""},
        {InLevel(TlvLevel::interface, Tlv(IFD_MTU, "")), ""},
        {InLevel(TlvLevel::interface, RawTlv(IFD_MTU.GetIndex(), 4, "")),
         "Edit > IFD_MTU, byte 20: its length says 4 bytes, 0 there"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.place);
        EXPECT_EQ(c.place, Located(c.message));
        ExpectLocated(c.message);
    }
}

TEST(TlvWalk, OffsetsCountFromTheBeginOfTheMessage)
{
    TlvIdTable const ids;
    std::string const operation = Tlv(ListOp::Remove, "abc");
    auto const problem = WalkTlvs(reinterpret_cast<unsigned char const*>(operation.data()), operation.size(),
                                  5000000000, ids, TlvView::asRead);
    ASSERT_TRUE(problem);
    EXPECT_EQ(5000000008u, problem->offset);
    EXPECT_EQ("Remove", problem->path);
    EXPECT_EQ("4 bytes wanted, 3 there", problem->what);
}

TEST(TlvWalk, AHostileNestNeedsNoMoreDepthThanTheSchemaHas)
{
    TlvIdTable const ids;
    for (TLVIds::TLVId const* id : {&ListOp::Add, &ListOp::Edit, &IFD_IPv4, &IFD_IPv6List, &IFD_FCoE,
                                    &DHCP_CustomTLVList, &DCBX_FeatureTlv, &FC_NSQuery}) {
        std::string nest; // each TLV in the item id's place of the one around it, and behind it
        for (int i = 0; i < 20000; ++i) nest += RawTlv(id->GetIndex(), 0x7fffffff, i % 2 ? U32(0) : "");
        for (TlvView const view : {TlvView::asRead, TlvView::asBuilt}) {
            Depth depth;
            EXPECT_TRUE(Walk(nest, ids, view, &depth)) << id->GetName();
            EXPECT_LE(depth.deepest, 6u) << id->GetName();
        }
    }
    std::string zeros(80000, '\0');
    Depth depth;
    EXPECT_FALSE(Walk(zeros, ids, TlvView::asBuilt, &depth));
    EXPECT_EQ(0u, depth.deepest);
    EXPECT_EQ(10000u, depth.count);
}
