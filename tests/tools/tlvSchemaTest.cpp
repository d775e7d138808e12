#include "tlvSchema.hpp"

#include "tlvIdTable.hpp"
#include "tlvMessages.hpp"
#include "tlvWalk.hpp"

#include "ifcore/ifcore.hpp"

#include <gtest/gtest.h>

#include <set>

using namespace ifcoreTool;
using namespace TLVIds;

namespace {

TlvRule const* FindRule(TlvLevel level, std::string const& name)
{
    for (TlvRule const& rule : TlvSchema())
        if (rule.where == level && rule.name == name) return &rule;
    return nullptr;
}

std::string FirstName(TlvLevel level, std::size_t bytes)
{
    TlvRule const* const rule = FirstBuilt(level, bytes);
    return rule ? rule->name : "-";
}

/// What stands in a message without being known there, and where an id was lost.
class Strangers : public TlvVisitor {
public:
    std::vector<std::string> names;
    std::set<std::string> known;
    void Enter(TlvNode const& tlv) override
    {
        if (!tlv.rule || tlv.isElsewhere) names.push_back(TlvName(tlv, ids));
        if (tlv.rule) known.insert(std::to_string(static_cast<int>(tlv.rule->where)) + " " + tlv.rule->name);
    }
    void Leave(TlvNode const&, std::size_t trailing) override { EXPECT_EQ(0u, trailing); }

    TlvIdTable const ids;
};

} // namespace

TEST(TlvSchema, EveryIdOfThisBuildIsInIt)
{
    std::set<std::string> names;
    for (TlvRule const& rule : TlvSchema()) names.insert(rule.name);
    std::set<std::string> registered;
    TlvIdTable const ids;
    for (std::string const& name : ids.GetNames())
        if (!name.empty()) registered.insert(name);
    EXPECT_EQ(registered, names);
}

TEST(TlvSchema, AnIdMeansOneThingInALevel)
{
    std::set<std::pair<TlvLevel, std::string>> seen;
    for (TlvRule const& rule : TlvSchema())
        EXPECT_TRUE(seen.insert({rule.where, rule.name}).second) << static_cast<int>(rule.where) << " " << rule.name;
}

TEST(TlvSchema, LevelsHaveLevelsAndEndSomewhere)
{
    for (TlvRule const& rule : TlvSchema()) {
        SCOPED_TRACE(rule.name);
        if (rule.kind == TlvKind::level) {
            EXPECT_NE(TlvLevel::none, rule.inside);
        } else if (rule.kind != TlvKind::operation) {
            EXPECT_EQ(TlvLevel::none, rule.inside);
        }
        // So that none holds itself.
        if (rule.inside != TlvLevel::none) {
            EXPECT_LT(static_cast<int>(rule.where), static_cast<int>(rule.inside));
        }
    }
}

TEST(TlvSchema, NumbersWithNamesOrAFormHaveTheField)
{
    struct {
        TlvLevel level;
        char const* name;
        char const* field;
    } const cases[] = {{TlvLevel::interface, "IFD_Type", "type"},
                       {TlvLevel::interface, "IFD_ATMMode", "atm.mode"},
                       {TlvLevel::fcoe, "FCoE_AddressMode", "fcoe.address-mode"},
                       {TlvLevel::fcoe, "FCoE_SrcOUI", "fcoe.fc-map"},
                       {TlvLevel::fcoe, "FCoE_DestNodeId", "fcoe.destination-id"},
                       {TlvLevel::npiv, "NPIV_DestNodeId", "fcoe.destination-id"},
                       {TlvLevel::plogiDestination, "FCoE_PLOGIDestination_Id", "fcoe.destination-id"},
                       {TlvLevel::ptp, "PTP_DelayMechanism", "ptp.delay-mechanism"}};
    std::size_t count = 0;
    for (TlvRule const& rule : TlvSchema()) count += rule.field != nullptr;
    EXPECT_EQ(std::size(cases), count);
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        TlvRule const* const rule = FindRule(c.level, c.name);
        ASSERT_TRUE(rule && rule->field);
        EXPECT_EQ(c.field, rule->field->GetFullName());
    }
}

TEST(TlvSchema, TheFirstIdOfALevelIsToldByTheLevelAndItsLength)
{
    struct {
        TlvLevel level;
        std::size_t bytes;
        char const* name;
    } const cases[] = {{TlvLevel::interfaceList, 100, "-"},
                       {TlvLevel::interface, 100, "-"},
                       {TlvLevel::vlans, 12, "VLAN_Enabled"},
                       {TlvLevel::vlans, 24, "VLAN_Enabled"},
                       {TlvLevel::dhcp, 12, "DHCP_Enabled"},
                       {TlvLevel::dhcp, 60, "DHCP_ClientId"},
                       {TlvLevel::dhcpv6, 12, "DHCP_Enabled"},
                       {TlvLevel::dhcpv6, 44, "DHCP_IAId"},
                       {TlvLevel::options, 32, "DHCP_CustomTLV"},
                       {TlvLevel::option, 24, "DHCP_CustomTLV_Type"},
                       {TlvLevel::ipv4, 60, "IP4_Enabled"},
                       {TlvLevel::ipv6List, 8, "RemoveAll"},
                       {TlvLevel::ipv6, 36, "-"},
                       {TlvLevel::atmEncapsulation, 8, "-"}, // one of sixteen
                       {TlvLevel::fcoe, 12, "FCoE_Enabled"},
                       {TlvLevel::fcoe, 325, "FCoE_SrcPortName"},
                       {TlvLevel::npiv, 200, "NPIV_SrcPortName"},
                       {TlvLevel::plogiDestinations, 60, "FCoE_PLOGIDestination"},
                       {TlvLevel::plogiDestination, 52, "FCoE_PLOGIDestination_Enable"},
                       {TlvLevel::nsQuery, 32, "FC_NSQueryCommand"},
                       {TlvLevel::npivNsQuery, 32, "NPIV_NSQueryCommand"},
                       {TlvLevel::ptp, 12, "PTP_Enabled"},
                       {TlvLevel::ptp, 232, "PTP_ClockId"},
                       {TlvLevel::lldp, 100, "LLDP_ChassisId"},
                       {TlvLevel::dcbx, 12, "DCBX_Enabled"},
                       {TlvLevel::dcbx, 8, "DCBX_FeatureTlvList"},
                       {TlvLevel::dcbx, 120, "DCBX_FeatureTlvList"},
                       {TlvLevel::features, 112, "DCBX_FeatureTlv"},
                       {TlvLevel::feature, 104, "DCBX_FeatureTlv_Type"}};
    for (auto const& c : cases)
        EXPECT_EQ(c.name, FirstName(c.level, c.bytes)) << static_cast<int>(c.level) << " " << c.bytes;
}

TEST(TlvSchema, TheLibraryRefusesWhatItCannotRead)
{
    struct {
        TlvKind kind;
        std::string refused; // a digit for each length from 0 to 20: 1 is refused
    } const cases[] = {
        {TlvKind::number, "111100000000000000000"},      {TlvKind::signedNumber, "111100000000000000000"},
        {TlvKind::yesNo, "111100000000000000000"},       {TlvKind::vlanTag, "111100000000000000000"},
        {TlvKind::operation, "111100000000000000000"},   {TlvKind::exactAddress, "111101111111111101111"},
        {TlvKind::componentId, "011101110111011101110"}, {TlvKind::text, "000000000000000000000"},
        {TlvKind::address, "000000000000000000000"},     {TlvKind::mac, "000000000000000000000"},
        {TlvKind::uid, "000000000000000000000"},         {TlvKind::bytes, "000000000000000000000"},
        {TlvKind::presence, "000000000000000000000"},    {TlvKind::level, "000000000000000000000"}};
    for (auto const& c : cases) {
        std::string refused;
        for (std::size_t length = 0; length <= 20; ++length) refused += TlvRefusal(c.kind, length).empty() ? '0' : '1';
        EXPECT_EQ(c.refused, refused) << static_cast<int>(c.kind);
    }
}

TEST(TlvSchema, AllThatIsBuiltIsKnownWhereItStands)
{
    EInterfaceItem item;
    FillSample(item);
    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, ListOp::Add, item, 5);
    Strangers visitor;
    auto const problem = WalkTlvs(reinterpret_cast<unsigned char const*>(message.data()), message.size(), 0,
                                  visitor.ids, TlvView::asBuilt, &visitor);
    EXPECT_FALSE(problem) << problem->GetText();
    EXPECT_EQ(std::vector<std::string>{"0"}, visitor.names); // the ATM encapsulation, which is lost

    // And the other way round: all that the schema says to be built is there.
    for (TlvRule const& rule : TlvSchema()) {
        bool const isBuilt = rule.building != TlvBuilding::never && rule.where != TlvLevel::interfaceList &&
                             rule.where != TlvLevel::atmEncapsulation;
        std::string const place = std::to_string(static_cast<int>(rule.where)) + " " + rule.name;
        if (rule.where != TlvLevel::interfaceList) {
            EXPECT_EQ(isBuilt, visitor.known.count(place) == 1) << place;
        }
    }
}
