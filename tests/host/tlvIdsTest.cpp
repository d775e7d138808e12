#include "tlvIds.hpp"

#include "tlvBuilder.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

using Protocol::TLVBuilder;
using TLVIds::TLVId;

TEST(TLVIds, NumberZeroIsReservedWithoutAName)
{
    ASSERT_FALSE(TLVBuilder::known_tlv_table().empty());
    EXPECT_STREQ("", TLVBuilder::known_tlv_table()[0]);
}

TEST(TLVIds, TheListIsRegisteredInItsOrderFromOneOn)
{
    struct {
        TLVId const& id;
        char const* name;
    } const ids[] = {
#define TLVID(group, name) {TLVIds::group::name, #name},
#include "tlvIds.def"
    };
    std::vector<char const*> const& known = TLVBuilder::known_tlv_table();
    ASSERT_LT(std::size(ids), known.size());
    unsigned int number = 0;
    for (auto const& c : ids) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(++number, c.id.GetIndex());
        EXPECT_STREQ(c.name, c.id.GetName());
        EXPECT_STREQ(c.name, known[number]);
    }
}

/// Messages that were stored keep their meaning: ids are appended to the list, never inserted.
TEST(TLVIds, TheNumbersStayWhatTheyAre)
{
    struct {
        TLVId const& id;
        unsigned int number;
    } const cases[] = {{TLVIds::ListOp::Add, 1},
                       {TLVIds::ListOp::Edit, 2},
                       {TLVIds::ListOp::Remove, 3},
                       {TLVIds::ListOp::RemoveAll, 4},
                       {TLVIds::InterfaceTable::IFD_Name, 5},
                       {TLVIds::InterfaceTable::IFD_LLDP, 36},
                       {TLVIds::InterfaceTable::IP4_Enabled, 37},
                       {TLVIds::InterfaceTable::IP6_IPAddress, 42},
                       {TLVIds::InterfaceTable::VLAN_Enabled, 44},
                       {TLVIds::InterfaceTable::DHCP_Enabled, 48},
                       {TLVIds::InterfaceTable::FCoE_Enabled, 61},
                       {TLVIds::InterfaceTable::NPIV_SrcPortName, 95},
                       {TLVIds::InterfaceTable::PTP_Enabled, 115},
                       {TLVIds::InterfaceTable::LLDP_ChassisId, 135},
                       {TLVIds::InterfaceTable::DCBX_Enabled, 142},
                       {TLVIds::InterfaceTable::DCBX_FeatureTlv_Value, 153}};
    for (auto const& c : cases) EXPECT_EQ(c.number, c.id.GetIndex()) << c.id.GetName();
}

TEST(TLVIds, NoNameIsRegisteredTwice)
{
    std::set<std::string> names;
    for (char const* name : TLVBuilder::known_tlv_table()) {
        ASSERT_TRUE(name);
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

TEST(TLVIds, ANewNameGetsTheNextNumberAndAKnownOneKeepsItsOwn)
{
    std::vector<char const*> const& known = TLVBuilder::known_tlv_table();
    std::size_t const count = known.size();
    TLVId const first("tlvIdsTest.first");
    TLVId const second("tlvIdsTest.second");
    EXPECT_EQ(count, first.GetIndex());
    EXPECT_EQ(count + 1, second.GetIndex());
    EXPECT_EQ(count + 2, known.size());
    EXPECT_STREQ("tlvIdsTest.second", second.GetName());

    std::string const equalText = "tlvIdsTest.first"; // at another address
    EXPECT_EQ(first.GetIndex(), TLVId(equalText.c_str()).GetIndex());
    EXPECT_EQ(TLVIds::InterfaceTable::IFD_MTU.GetIndex(), TLVId("IFD_MTU").GetIndex());
    EXPECT_EQ(count + 2, known.size());
}

TEST(TLVIds, NamesDifferByCaseAndLength)
{
    EXPECT_NE(TLVIds::ListOp::Remove.GetIndex(), TLVId("tlvIdsTest.Remove").GetIndex());
    EXPECT_NE(TLVIds::ListOp::Remove.GetIndex(), TLVIds::ListOp::RemoveAll.GetIndex());
    EXPECT_NE(TLVIds::ListOp::Remove.GetIndex(), TLVId("remove").GetIndex());
}

TEST(TLVIds, NullAndTheEmptyNameAreTheReservedId)
{
    std::size_t const count = TLVBuilder::known_tlv_table().size();
    char const* const names[] = {nullptr, ""};
    for (char const* name : names) {
        TLVId const id(name);
        EXPECT_EQ(0U, id.GetIndex());
        EXPECT_STREQ("", id.GetName());
    }
    EXPECT_EQ(count, TLVBuilder::known_tlv_table().size());
}

/// What reads a TLVId that another compiler or library made.
TEST(TLVIds, TheNumberIsTheFirstMember)
{
    static_assert(std::is_standard_layout_v<TLVId>, "its first member has its address");
    EXPECT_EQ(4U, sizeof(TLVId));
    EXPECT_EQ(5U, *reinterpret_cast<unsigned int const*>(&TLVIds::InterfaceTable::IFD_Name));
}
