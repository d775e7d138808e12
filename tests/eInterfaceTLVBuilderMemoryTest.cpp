#include "allocations.hpp"
#include "builtMessages.hpp"
#include "fibreChannelRecords.hpp"

#include <new>
#include <set>

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

using Protocol::EBytes;

namespace {

struct NamedBuilder {
    char const* name;
    std::function<void(EBytes&)> append;
};

/// Every builder with a record that has all there can be.
class EveryBuilder {
public:
    EveryBuilder() { FillSample(m_interface); }
    std::vector<NamedBuilder> List() const
    {
        EInterfaceItem const& i = m_interface;
        using namespace Protocol;
        return {
            {"TLVBuilder", [](EBytes& out) { TLVBuilder tlv(out, IFD_Name); }},
            {"UID", [&i](EBytes& out) { AppendUIDTLV(out, IFD_Uid, i.GetEUID()); }},
            {"MAC", [&i](EBytes& out) { AppendMACTLV(out, IFD_Mac, i.GetMacAddress()); }},
            {"Blob",
             [&i](EBytes& out) {
                 AppendBlobTLV(out, DHCP_CustomTLV_Value, i.GetDHCPProperties().GetDHCPCustomTLVs().front().GetValue());
             }},
            {"InterfaceOp", [&i](EBytes& out) { AppendInterfaceOpTLV(out, ListOp::Add, i); }},
            {"VLAN", [&i](EBytes& out) { AppendVLANTLV(out, IFD_VLAN, i.GetVLANItem()); }},
            {"IPv4Item", [&i](EBytes& out) { AppendIPv4ItemTLV(out, IFD_IPv4, i.GetIPv4AddressItem()); }},
            {"AddIPv6Item", [&i](EBytes& out) { AppendAddIPv6ItemTLV(out, *i.GetIPv6AddressItem(9)); }},
            {"IPv6ItemList",
             [&i](EBytes& out) { AppendIPv6ItemListTLV(out, IFD_IPv6List, i.GetIPv6AddressItemList()); }},
            {"ATMEncapsulation", [](EBytes& out) { AppendATMEncapsulationTLV(out, IFD_ATMEncapsulation, 7); }},
            {"DHCP", [&i](EBytes& out) { AppendDHCPTLV(out, IFD_DHCP, i.GetDHCPProperties()); }},
            {"DHCPv6", [&i](EBytes& out) { AppendDHCPv6TLV(out, IFD_DHCPv6, i.GetDHCPv6Properties()); }},
            {"DHCPTLVList",
             [&i](EBytes& out) {
                 AppendDHCPTLVListTLV(out, DHCP_CustomTLVList, i.GetDHCPProperties().GetDHCPCustomTLVs());
             }},
            {"FCoE", [&i](EBytes& out) { AppendFCoETLV(out, IFD_FCoE, i.GetFCoEConfig()); }},
            {"NPIV", [&i](EBytes& out) { AppendNPIVTLV(out, IFD_NPIV, *i.GetNPIVConfigReadOnly()); }},
            {"PLOGIDestinations",
             [&i](EBytes& out) {
                 AppendPLOGIDestinationsTLV(out, FCoE_PLOGIDestinations, i.GetFCoEConfig().GetPLOGIDestinations());
             }},
            {"FCNSQuery", [&i](EBytes& out) { AppendFCNSQueryTLV(out, FC_NSQuery, i.GetFCoEConfig().GetFCNSQuery()); }},
            {"NPIVNSQuery",
             [&i](EBytes& out) { AppendNPIVNSQueryTLV(out, NPIV_NSQuery, i.GetFCoEConfig().GetFCNSQuery()); }},
            {"PTP", [&i](EBytes& out) { AppendPTPTLV(out, IFD_PTP, *i.GetPTPConfigReadOnly()); }},
            {"LLDP", [&i](EBytes& out) { AppendLLDPTLV(out, IFD_LLDP, *i.GetLLDPConfigReadOnly()); }},
            {"DCBX", [&i](EBytes& out) { AppendDCBXTLV(out, IFD_DCBX, *i.GetDCBXConfigReadOnly()); }},
            {"DCBXFeatureTlvList",
             [&i](EBytes& out) {
                 AppendDCBXFeatureTlvListTLV(out, DCBX_FeatureTlvList, i.GetDCBXConfigReadOnly()->GetFeatureTlvs());
             }},
        };
    }

private:
    EInterfaceItem m_interface;
};

/// \p cut is \p whole up to some place, but for the lengths of the TLVs around that place, which all end there.
void ExpectClosedWhereItEnds(std::string const& whole, std::string const& cut)
{
    ASSERT_LE(cut.size(), whole.size());
    for (std::size_t i = 0; i < cut.size();) {
        if (cut[i] == whole[i]) {
            ++i;
            continue;
        }
        std::size_t length = i < 3 ? 0 : i - 3; // where the length begins to which the byte belongs
        while (length <= i && (length + 4 > cut.size() || U32At(cut, length) != cut.size() - length - 4 ||
                               U32At(whole, length) <= U32At(cut, length)))
            ++length;
        ASSERT_LE(length, i) << "byte " << i << " of " << cut.size() << " belongs to no TLV that ends here";
        i = length + 4;
    }
    Level(cut);
}

} // namespace

/// With each capacity that the vector can have before, and each allocation from there on that can fail.
TEST(InterfaceTLVBuilderMemory, AFailingAllocationLeavesClosedTLVsBehindWhatWasThere)
{
    EveryBuilder const every;
    std::string const before = Tlv(IFD_Name, "untouched");
    for (NamedBuilder const& builder : every.List()) {
        SCOPED_TRACE(builder.name);
        std::string const whole = Built(builder.append);
        std::set<std::size_t> cuts;
        std::size_t const step = whole.size() > 1000 ? 7 : 1;
        for (std::size_t spare = 0; spare < whole.size(); spare += step) {
            for (long granted = 0;; ++granted) {
                std::string left;
                left.reserve(before.size() + whole.size());
                bool done = false;
                std::size_t const inUse = s_bytesInUse;
                {
                    EBytes out;
                    out.reserve(before.size() + spare);
                    out.insert(out.end(), before.begin(), before.end());
                    s_allocationsLeft = granted;
                    try {
                        builder.append(out);
                        done = true;
                    } catch (std::bad_alloc const&) {
                    }
                    s_allocationsLeft = -1;
                    left.assign(out.begin(), out.end());
                }
                ASSERT_EQ(inUse, s_bytesInUse) << "of spare " << spare << ", granted " << granted;
                ASSERT_EQ(before, left.substr(0, before.size()));
                left.erase(0, before.size());
                if (done) {
                    ASSERT_EQ(whole, left);
                    break;
                }
                cuts.insert(left.size());
                ASSERT_NO_FATAL_FAILURE(ExpectClosedWhereItEnds(whole, left))
                    << "of spare " << spare << ", granted " << granted;
            }
        }
        EXPECT_EQ(1U, cuts.count(0));
        EXPECT_GE(cuts.size(), whole.size() / 50); // between the nested TLVs too
    }
}
