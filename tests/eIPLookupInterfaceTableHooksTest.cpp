#include "eIPLookupInterfaceTableHooks.hpp"

#include "allocations.hpp"
#include "eComponentId.hpp"
#include "eMultiComponentId.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"
#include "golden.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

static char const* const kLookupName = "IP_LOOKUP_HOOKS";

static EIPAddress Address(char const* text)
{
    return EIPAddress(std::string(text));
}

static EVLAN Vlan(unsigned int id)
{
    EVLAN vlan;
    vlan.SetVLANID(id);
    return vlan;
}

/// Enabled, with these tags from the outermost on.
static EVLANIPAddressTableItemProperties Vlans(std::initializer_list<unsigned int> tags, bool enabled = true)
{
    EVLANIPAddressTableItemProperties vlans(static_cast<unsigned int>(tags.size()), enabled);
    unsigned int level = 0;
    for (unsigned int const tag : tags) vlans.SetVlanTag(tag, level++);
    return vlans;
}

static EIPv6AddressItem IPv6Item(EIPAddress const& address)
{
    EIPv6AddressItem item;
    item.SetAddress(address);
    return item;
}

/// A free-standing interface; an empty text leaves the IPv4 address 0.0.0.0.
static EInterfaceItem Interface(std::string const& ipv4, std::initializer_list<char const*> ipv6 = {})
{
    EInterfaceItem item;
    if (!ipv4.empty()) item.GetIPv4AddressItem().SetAddress(EIPAddress(ipv4));
    for (char const* const address : ipv6) item.AddIPv6AddressItem(IPv6Item(Address(address)));
    return item;
}

static bool Has(EInterfaceItem const& item, EIPAddress const& address)
{
    if (address.GetFamily() == EIPAddress::kIPv4) return item.GetIPv4AddressItem().GetAddress() == address;
    EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
    for (auto position = list.begin(); position != list.end(); ++position)
        if (list.GetItem(position)->GetAddress() == address) return true;
    return false;
}

static bool IsInVlan(EInterfaceItem const& item, unsigned int vlanId)
{
    EVLANIPAddressTableItemProperties const& vlans = item.GetVLANItem();
    return vlanId == (vlans.IsEnabled() ? vlans.GetVLANID(0) : 0U);
}

/// What a walk through the table finds, the answer that the observer must give.
static unsigned int Scan(EInterfaceTable const& table, EIPAddress const& address,
                         std::optional<unsigned int> vlanId = std::nullopt)
{
    for (auto position = table.begin(); position != table.end(); ++position) {
        EInterfaceItem const& item = *table.GetItem(position);
        if (Has(item, address) && (!vlanId || IsInVlan(item, *vlanId))) return position->first;
    }
    return 0;
}

namespace {

/// A table of port 7 with the observer installed alone.
struct Observed {
    EInterfaceTable table{7};
    boost::shared_ptr<EIPLookupInterfaceTableHooks> lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();

    Observed() { table.SetHooks(kLookupName, lookup); }

    unsigned int Add(EInterfaceItem const& item) { return table.AddInterfaceItem(item); }
    EInterfaceItem& Item(unsigned int id) { return *table.GetInterfaceItem(id); }
    unsigned int Find(char const* address) const { return lookup->GetInterfaceId(Address(address)); }
    unsigned int Find(char const* address, unsigned int vlanId) const
    {
        return lookup->GetInterfaceIdFromVlan(Address(address), Vlan(vlanId));
    }
};

} // namespace

TEST(EIPLookupInterfaceTableHooks, AnswersZeroForAnAddressThatNobodyHas)
{
    Observed const observed;
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(0U, observed.Find("2001:db8::1"));
    EXPECT_EQ(0U, observed.Find("10.0.0.1", 0));
    EXPECT_EQ(0U, observed.Find("2001:db8::1", 0));
}

TEST(EIPLookupInterfaceTableHooks, LearnsAnAddedInterfaceAndForgetsARemovedOne)
{
    Observed observed;
    unsigned int const id = observed.Add(Interface("10.0.0.1", {"2001:db8::1", "2001:db8::2"}));
    for (char const* const address : {"10.0.0.1", "2001:db8::1", "2001:db8::2"}) {
        SCOPED_TRACE(address);
        EXPECT_EQ(id, observed.Find(address));
    }
    EXPECT_EQ(0U, observed.Find("0.0.0.0"));
    EXPECT_TRUE(observed.table.RemoveInterfaceItem(id));
    for (char const* const address : {"10.0.0.1", "2001:db8::1", "2001:db8::2"}) {
        SCOPED_TRACE(address);
        EXPECT_EQ(0U, observed.Find(address));
    }
}

TEST(EIPLookupInterfaceTableHooks, ARecordNeedNotBeEnabled)
{
    Observed observed;
    unsigned int const id = observed.Add(Interface("10.0.0.1"));
    EXPECT_FALSE(observed.Item(id).GetIPv4AddressItem().IsEnabled());
    EXPECT_EQ(id, observed.Find("10.0.0.1"));
    observed.Item(id).GetIPv4AddressItem().SetEnabled(true);
    EXPECT_EQ(id, observed.Find("10.0.0.1"));
    observed.Item(id).GetIPv4AddressItem().SetEnabled(false);
    EXPECT_EQ(id, observed.Find("10.0.0.1"));
}

TEST(EIPLookupInterfaceTableHooks, TheLowestIdAnswersForASharedAddress)
{
    Observed observed;
    for (char const* const address : {"10.0.0.1", "10.0.0.1", "10.0.0.9"})
        observed.Add(Interface(address, {"2001:db8::1"}));
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
    EXPECT_EQ(1U, observed.Find("2001:db8::1"));
    observed.table.RemoveInterfaceItem(1);
    EXPECT_EQ(2U, observed.Find("10.0.0.1"));
    EXPECT_EQ(2U, observed.Find("2001:db8::1"));
    observed.table.RemoveInterfaceItem(2);
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(3U, observed.Find("2001:db8::1"));
    observed.table.RemoveInterfaceItem(3);
    EXPECT_EQ(0U, observed.Find("2001:db8::1"));
}

TEST(EIPLookupInterfaceTableHooks, AnIdThatComesLaterButIsLowerAnswers)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1"));
    observed.Add(Interface("10.0.0.2"));
    observed.Item(1).GetIPv4AddressItem().SetAddress(Address("10.0.0.2"));
    EXPECT_EQ(1U, observed.Find("10.0.0.2"));
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
}

TEST(EIPLookupInterfaceTableHooks, ZeroAddressesAreAddressesOfTheirFamily)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1"));
    observed.Add(Interface(""));
    EXPECT_EQ(2U, observed.Find("0.0.0.0"));
    EXPECT_EQ(0U, observed.Find("::"));
    observed.Item(1).AddIPv6AddressItem(EIPv6AddressItem());
    EXPECT_EQ(1U, observed.Find("::"));
}

TEST(EIPLookupInterfaceTableHooks, IsNotMisledByAnAddressOfTheOtherFamily)
{
    Observed observed;
    observed.Add(Interface("2001:db8::1", {"10.0.0.1"}));
    EXPECT_EQ(0U, observed.Find("2001:db8::1"));
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(0U, observed.Find("0.0.0.0"));
    observed.Item(1).GetIPv4AddressItem().SetAddress(Address("10.0.0.1"));
    observed.Item(1).GetIPv6AddressItem(1)->SetAddress(Address("2001:db8::1"));
    EXPECT_EQ(1U, observed.Find("2001:db8::1"));
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
}

TEST(EIPLookupInterfaceTableHooks, AnAddressTwiceInOneListIsKnownUntilBothAreGone)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1", {"2001:db8::1", "2001:db8::1", "2001:db8::1"}));
    EInterfaceItem& item = observed.Item(1);
    EXPECT_TRUE(item.RemoveIPv6AddressItem(2));
    EXPECT_EQ(1U, observed.Find("2001:db8::1"));
    item.SetVLANItem(Vlans({100}));
    EXPECT_EQ(1U, observed.Find("2001:db8::1", 100));
    EXPECT_EQ(0U, observed.Find("2001:db8::1", 0));
    EXPECT_TRUE(item.RemoveIPv6AddressItem(1));
    EXPECT_EQ(1U, observed.Find("2001:db8::1"));
    EXPECT_TRUE(item.RemoveIPv6AddressItem(3));
    EXPECT_EQ(0U, observed.Find("2001:db8::1"));
    EXPECT_EQ(0U, observed.Find("2001:db8::1", 100));
}

TEST(EIPLookupInterfaceTableHooks, TheOutermostVlanOfAnEnabledStackCounts)
{
    struct {
        EVLANIPAddressTableItemProperties vlans;
        unsigned int vlanId;
    } const cases[] = {
        {EVLANIPAddressTableItemProperties(), 0}, // none
        {Vlans({100}), 100},
        {Vlans({100}, false), 0}, // disabled
        {Vlans({100, 200}), 100}, // level 0 is the outermost
        {Vlans({0, 200}), 0},
        {Vlans({0xE000 | 100}), 100}, // priority 7
        {Vlans({0x1FFF}), 0xFFF},     // the largest id, CFI set
        {EVLANIPAddressTableItemProperties(0, true), 0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        Observed observed;
        EInterfaceItem item = Interface("10.0.0.1", {"2001:db8::1"});
        item.SetVLANItem(c.vlans);
        unsigned int const id = observed.Add(item);
        for (unsigned int const asked : {0U, 100U, 200U, 0xFFFU})
            for (char const* const address : {"10.0.0.1", "2001:db8::1"}) {
                SCOPED_TRACE(testing::Message() << address << " in " << asked);
                EXPECT_EQ(asked == c.vlanId ? id : 0, observed.Find(address, asked));
                EXPECT_EQ(id, observed.Find(address));
            }
    }
}

TEST(EIPLookupInterfaceTableHooks, ThePriorityOfTheVlanAskedForDoesNotMatter)
{
    Observed observed;
    EInterfaceItem item = Interface("10.0.0.1");
    item.SetVLANItem(Vlans({100}));
    observed.Add(item);
    EVLAN vlan = Vlan(100);
    vlan.SetUserPriority(5);
    vlan.SetCanonicalFormat(1);
    EXPECT_EQ(1U, observed.lookup->GetInterfaceIdFromVlan(Address("10.0.0.1"), vlan));
}

TEST(EIPLookupInterfaceTableHooks, OneAddressInSeveralVlansIsToldApart)
{
    Observed observed;
    for (unsigned int const vlanId : {300U, 100U, 300U, 200U, 100U}) {
        EInterfaceItem item = Interface("10.0.0.1");
        item.SetVLANItem(Vlans({vlanId}));
        observed.Add(item);
    }
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
    EXPECT_EQ(2U, observed.Find("10.0.0.1", 100));
    EXPECT_EQ(4U, observed.Find("10.0.0.1", 200));
    EXPECT_EQ(1U, observed.Find("10.0.0.1", 300));
    EXPECT_EQ(0U, observed.Find("10.0.0.1", 0));
    EXPECT_EQ(0U, observed.Find("10.0.0.1", 250));
    observed.Item(1).SetVLANItem(Vlans({100}));
    EXPECT_EQ(1U, observed.Find("10.0.0.1", 100));
    EXPECT_EQ(3U, observed.Find("10.0.0.1", 300));
    observed.table.RemoveInterfaceItem(1);
    EXPECT_EQ(2U, observed.Find("10.0.0.1", 100));
}

TEST(EIPLookupInterfaceTableHooks, ARecordThatIsNotInTheTableTeachesNothing)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1", {"2001:db8::1"}));
    EInterfaceItem& item = observed.Item(1);

    EIPv4AddressItem ipv4(item.GetIPv4AddressItem()); // copies the parent, so it reaches the observer
    ipv4.SetAddress(Address("10.0.0.2"));
    ipv4.Empty();
    EIPv6AddressItem ipv6(*item.GetIPv6AddressItem(1));
    ipv6.SetAddress(Address("2001:db8::2"));
    ipv6.Empty();
    EInterfaceItem other(item); // the same local id
    other.SetParent(&observed.table);
    other.GetIPv4AddressItem().SetAddress(Address("10.0.0.2"));
    other.AddIPv6AddressItem(IPv6Item(Address("2001:db8::2")));
    other.SetVLANItem(Vlans({100}));
    other.Empty();
    EIPv4AddressItem orphan;
    observed.lookup->SettingIPv4Address(orphan, Address("10.0.0.2"), EVLANIPAddressTableItemProperties(), EVLAN());
    observed.lookup->AddingIPv6AddressItem(IPv6Item(Address("2001:db8::2")));
    observed.lookup->RemovingInterfaceItem(Interface("10.0.0.1", {"2001:db8::1"}));

    EXPECT_EQ(1U, observed.Find("10.0.0.1", 0));
    EXPECT_EQ(1U, observed.Find("2001:db8::1", 0));
    EXPECT_EQ(0U, observed.Find("10.0.0.2"));
    EXPECT_EQ(0U, observed.Find("2001:db8::2"));
    EXPECT_EQ(0U, observed.Find("0.0.0.0"));
}

TEST(EIPLookupInterfaceTableHooks, AReplacedTableIsLearnedUnderItsOwnIds)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1", {"2001:db8::1"}));
    EInterfaceTable other(8);
    other.AddItem(5, Interface("10.0.0.5", {"2001:db8::5"}));
    other.AddItem(9, Interface("10.0.0.5"));
    observed.table = other;
    EXPECT_EQ(5U, observed.Find("10.0.0.5"));
    EXPECT_EQ(5U, observed.Find("2001:db8::5"));
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(0U, observed.Find("2001:db8::1"));
    observed.table.RemoveInterfaceItem(5);
    EXPECT_EQ(9U, observed.Find("10.0.0.5"));
    observed.table.Empty();
    EXPECT_EQ(0U, observed.Find("10.0.0.5"));
}

TEST(EIPLookupInterfaceTableHooks, RebuildLearnsWhatWasNotAnnounced)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1"));
    observed.table.AddItem(7, Interface("10.0.0.7", {"2001:db8::7"}));
    observed.table.RemoveItem(1);
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
    EXPECT_EQ(0U, observed.Find("10.0.0.7"));
    observed.lookup->Rebuild(observed.table);
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(7U, observed.Find("10.0.0.7"));
    EXPECT_EQ(7U, observed.Find("2001:db8::7"));
}

TEST(EIPLookupInterfaceTableHooks, ATableThatIsReadNeedsRebuild)
{
    EInterfaceTable saved(7);
    saved.AddInterfaceItem(Interface("10.0.0.1"));
    Observed observed;
    observed.Add(Interface("10.0.0.9"));
    ReadInto(observed.table, Written(saved));
    EXPECT_EQ(0U, observed.Find("10.0.0.9")); // the emptying before the reading is announced
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(nullptr, observed.table.FindInterfaceByIP(Address("10.0.0.1")));
    observed.lookup->Rebuild(observed.table);
    EXPECT_EQ(&observed.Item(1), observed.table.FindInterfaceByIP(Address("10.0.0.1")));
}

TEST(EIPLookupInterfaceTableHooks, AnnouncementsAboutWhatItMissedDoNoHarm)
{
    Observed observed;
    observed.table.AddItem(1, Interface("10.0.0.1", {"2001:db8::1", "2001:db8::1"}));
    observed.table.AddItem(2, Interface("10.0.0.1", {"2001:db8::1"}));
    observed.lookup->AddingInterfaceItem(observed.Item(2));
    observed.Item(1).GetIPv4AddressItem().SetAddress(Address("10.0.0.3"));
    EXPECT_EQ(2U, observed.Find("10.0.0.1"));
    EXPECT_EQ(1U, observed.Find("10.0.0.3"));
    observed.table.RemoveInterfaceItem(1);
    EXPECT_EQ(2U, observed.Find("2001:db8::1"));
    observed.table.RemoveItem(2);
    EXPECT_EQ(2U, observed.Find("10.0.0.1")); // nobody told it
    observed.table.AddItem(2, Interface("10.0.0.9"));
    observed.table.RemoveInterfaceItem(2);
    EXPECT_EQ(2U, observed.Find("10.0.0.1"));
    observed.lookup->Rebuild(observed.table);
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
}

TEST(EIPLookupInterfaceTableHooks, AnAssignmentPastTheTableLeavesTheIdOfThePlace)
{
    Observed observed;
    observed.Add(Interface("10.0.0.1"));
    observed.Add(Interface("10.0.0.2", {"2001:db8::2"}));
    observed.Item(1) = observed.Item(2); // brings the local id 2 along
    EXPECT_EQ(2U, observed.Item(1).GetLocalId());
    EXPECT_EQ(1U, observed.Find("10.0.0.2"));
    observed.Item(1).GetIPv4AddressItem().SetAddress(Address("10.0.0.3"));
    EXPECT_EQ(1U, observed.Find("10.0.0.3"));
    EXPECT_EQ(2U, observed.Find("10.0.0.2"));
    observed.table.RemoveInterfaceItem(1);
    EXPECT_EQ(0U, observed.Find("10.0.0.3"));
    EXPECT_EQ(2U, observed.Find("2001:db8::2"));
}

// Through the table

TEST(EIPLookupInterfaceTableHooks, AnswersForTheTableAloneAndInASet)
{
    for (bool const inSet : {false, true}) {
        SCOPED_TRACE(inSet);
        EInterfaceTable table(7);
        table.AddInterfaceTableHooks(kLookupName, boost::make_shared<EIPLookupInterfaceTableHooks>());
        if (inSet) table.AddInterfaceTableHooks("other", boost::make_shared<EIgnoreInterfaceTableHooks>());
        ASSERT_EQ(inSet, dynamic_cast<EMultipleInterfaceTableHooks*>(&table.GetHooks()) != nullptr);
        EInterfaceItem tagged = Interface("10.0.0.1");
        tagged.SetVLANItem(Vlans({100}));
        table.AddInterfaceItem(Interface("10.0.0.1", {"2001:db8::1"}));
        table.AddInterfaceItem(tagged);
        EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1")));
        EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("2001:db8::1")));
        EXPECT_EQ(nullptr, table.FindInterfaceByIP(Address("10.0.0.2")));
        EVLAN const vlan100 = Vlan(100); // a scan would not consult it
        EXPECT_EQ(table.GetInterfaceItem(2), table.FindInterfaceByIPAndVlan(Address("10.0.0.1"), &vlan100));
        EXPECT_EQ(nullptr, table.FindInterfaceByIPAndVlan(Address("2001:db8::1"), &vlan100));
    }
}

TEST(EIPLookupInterfaceTableHooks, TheTableTakesTheAnswerForFinal)
{
    Observed observed;
    for (int i = 0; i < 3; ++i) observed.Add(Interface("10.0.0.1"));
    observed.table.RemoveItem(1); // not announced: the answer names a missing id
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
    EXPECT_EQ(nullptr, observed.table.FindInterfaceByIP(Address("10.0.0.1")));
    observed.lookup->Rebuild(observed.table);
    EXPECT_EQ(&observed.Item(2), observed.table.FindInterfaceByIP(Address("10.0.0.1")));

    EIPv4AddressItem other;
    observed.Item(2).GetIPv4AddressItem().Swap(other); // the answer names an interface without the address
    EXPECT_EQ(2U, observed.Find("10.0.0.1"));
    EXPECT_EQ(nullptr, observed.table.FindInterfaceByIP(Address("10.0.0.1")));
    observed.lookup->Rebuild(observed.table);
    EXPECT_EQ(&observed.Item(3), observed.table.FindInterfaceByIP(Address("10.0.0.1")));
}

TEST(EIPLookupInterfaceTableHooks, ItsNameAloneMakesNoLookup)
{
    EInterfaceTable table(7);
    table.SetHooks(kLookupName, boost::make_shared<EIgnoreInterfaceTableHooks>());
    table.AddInterfaceItem(Interface("10.0.0.1"));
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1")));

    table.SetHooks("another name", boost::make_shared<EIPLookupInterfaceTableHooks>());
    EXPECT_EQ(table.GetInterfaceItem(1), table.FindInterfaceByIP(Address("10.0.0.1"))); // a scan: it knows nothing
}

template <class Value>
static ESingleCommand Command(unsigned int action, std::initializer_list<unsigned int> path,
                              std::vector<unsigned int> const& leaves, std::vector<unsigned int> const& subId,
                              Value const& value)
{
    EMultiComponentId id{EComponentId(path)};
    id.SetLeaves(leaves);
    return ESingleCommand(action, id, subId, BlobOf(Written(value)));
}

TEST(EIPLookupInterfaceTableHooks, FollowsHostCommands)
{
    Observed observed;
    EInterfaceTable& table = observed.table;
    EComponentId* const nowhere = nullptr;
    EXPECT_TRUE(table.ExecuteCommand(Command(5, {7, 1}, {}, {}, Interface("10.0.0.1", {"2001:db8::1"})), nowhere));
    EXPECT_EQ(1U, observed.Find("10.0.0.1"));
    EXPECT_EQ(1U, observed.Find("2001:db8::1"));
    EXPECT_TRUE(table.ExecuteCommand(Command(5, {7, 1, 1, 1}, {}, {}, IPv6Item(Address("2001:db8::2"))), nowhere));
    EXPECT_EQ(1U, observed.Find("2001:db8::2"));
    EXPECT_TRUE(table.ExecuteCommand(Command(7, {7, 1, 1}, {}, {6, 3}, Address("10.0.0.2")), nowhere));
    EXPECT_EQ(0U, observed.Find("10.0.0.1"));
    EXPECT_EQ(1U, observed.Find("10.0.0.2"));
    EXPECT_TRUE(table.ExecuteCommand(Command(7, {7, 1, 1}, {}, {9}, Vlans({100})), nowhere));
    EXPECT_EQ(1U, observed.Find("10.0.0.2", 100));
    EXPECT_TRUE(table.ExecuteCommand(Command(2, {7, 1}, {1}, {}, Interface("10.0.0.3")), nowhere));
    EXPECT_EQ(1U, observed.Find("10.0.0.3", 0));
    EXPECT_EQ(0U, observed.Find("10.0.0.2"));
    EXPECT_EQ(0U, observed.Find("2001:db8::2"));
    EXPECT_TRUE(table.ExecuteCommand(ESingleCommand(6, Command(6, {7, 1}, {1}, {}, 0).GetId()), nowhere));
    EXPECT_EQ(0U, observed.Find("10.0.0.3"));

    EInterfaceTable whole(7);
    whole.AddItem(4, Interface("10.0.0.4"));
    EXPECT_TRUE(table.ExecuteCommand(Command(2, {7}, {}, {}, whole), nowhere));
    EXPECT_EQ(4U, observed.Find("10.0.0.4"));
}

// Long sequences, always the same

namespace {

/// Announced changes at random to a table of a few interfaces, whose addresses are from a small stock.
class RandomChanges {
public:
    explicit RandomChanges(unsigned int seed) : m_random(seed)
    {
        for (char const* const text :
             {"0.0.0.0", "10.0.0.1", "10.0.0.2", "10.0.1.1", "255.255.255.255", "::", "::1", "2001:db8::1",
              "2001:db8::2", "2001:db8:0:1::1", "a00:1::"}) // the last has the bytes of 10.0.0.1
            addresses.push_back(Address(text));
        m_vlans = {EVLANIPAddressTableItemProperties(), Vlans({100}), Vlans({100}, false), Vlans({200, 100}),
                   Vlans({0, 100})};
    }

    std::vector<EIPAddress> addresses;
    std::vector<unsigned int> const vlanIds = {0, 100, 200};
    std::map<std::string, unsigned int> made; ///< How often each change was made.

    void Change(EInterfaceTable& table)
    {
        if (table.size() < 2 || (table.size() < 12 && Below(8) == 0)) {
            Made("add interface");
            table.AddInterfaceItem(AnyInterface());
            return;
        }
        auto position = table.begin();
        std::advance(position, Below(static_cast<unsigned int>(table.size())));
        unsigned int const id = position->first;
        EInterfaceItem& item = *table.GetItem(position);
        switch (Below(9)) {
        case 0: ChangeTable(table); break;
        case 1:
            Made("remove interface");
            table.RemoveInterfaceItem(id);
            break;
        case 2: ChangeWhole(table, id, item); break;
        case 3:
            Made("VLANs");
            item.SetVLANItem(Any(m_vlans));
            break;
        case 4:
        case 5: ChangeIPv4(item); break;
        default: ChangeIPv6(item); break;
        }
    }

private:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
    template <class Value> Value const& Any(std::vector<Value> const& values)
    {
        return values[Below(static_cast<unsigned int>(values.size()))];
    }
    void Made(char const* change) { ++made[change]; }

    EIPv4AddressItem AnyIPv4()
    {
        EIPv4AddressItem item;
        item.SetAddress(Any(addresses));
        item.SetEnabled(Below(2) == 0);
        return item;
    }
    EInterfaceItem AnyInterface()
    {
        EInterfaceItem item;
        item.SetLocalId(Below(12));
        item.SetIPv4AddressItem(AnyIPv4());
        for (unsigned int count = Below(4); count > 0; --count) item.AddIPv6AddressItem(IPv6Item(Any(addresses)));
        if (Below(2) == 0) item.SetVLANItem(Any(m_vlans));
        return item;
    }
    void ChangeTable(EInterfaceTable& table)
    {
        if (Below(4) != 0) {
            Made("settings of the table");
            table.SetFCoERetryCount(Below(9));
        } else if (Below(4) == 0) {
            Made("empty table");
            table.Empty();
        } else {
            Made("replace table");
            EInterfaceTable other(7);
            for (unsigned int count = Below(12); count > 0; --count) other.AddItem(1 + Below(30), AnyInterface());
            table = other;
        }
    }
    void ChangeWhole(EInterfaceTable& table, unsigned int id, EInterfaceItem& item)
    {
        switch (Below(4)) {
        case 0:
            Made("empty interface");
            item.Empty();
            break;
        case 1:
            Made("assign interface past the table");
            item = AnyInterface();
            break;
        default:
            Made("replace interface");
            EXPECT_TRUE(table.SetInterfaceItem(id, AnyInterface()));
            break;
        }
    }
    void ChangeIPv4(EInterfaceItem& item)
    {
        switch (Below(5)) {
        case 0:
            Made("empty IPv4 record");
            item.GetIPv4AddressItem().Empty();
            break;
        case 1:
            Made("replace IPv4 record");
            item.SetIPv4AddressItem(AnyIPv4());
            break;
        case 2:
            Made("switch IPv4 record");
            item.GetIPv4AddressItem().SetEnabled(Below(2) == 0);
            break;
        default:
            Made("IPv4 address");
            item.GetIPv4AddressItem().SetAddress(Any(addresses));
            break;
        }
    }
    void ChangeIPv6(EInterfaceItem& item)
    {
        EIPv6AddressItemList& list = item.GetIPv6AddressItemList();
        if (list.size() == 0 || (list.size() < 4 && Below(3) == 0)) {
            Made("add IPv6 record");
            item.AddIPv6AddressItem(IPv6Item(Any(addresses)));
            return;
        }
        auto position = list.begin();
        std::advance(position, Below(static_cast<unsigned int>(list.size())));
        unsigned int const id = position->first;
        switch (Below(5)) {
        case 0:
            Made("remove IPv6 record");
            EXPECT_TRUE(item.RemoveIPv6AddressItem(id));
            break;
        case 1:
            Made("replace IPv6 record");
            EXPECT_TRUE(item.SetIPv6AddressItem(id, IPv6Item(Any(addresses))));
            break;
        case 2:
            Made("empty IPv6 record");
            list.GetItem(id)->Empty(); // loses its local id
            break;
        default:
            Made("IPv6 address");
            list.GetItem(id)->SetAddress(Any(addresses));
            break;
        }
    }

    std::mt19937 m_random;
    std::vector<EVLANIPAddressTableItemProperties> m_vlans;
};

} // namespace

TEST(EIPLookupInterfaceTableHooks, AnswersAsAScanAfterEachOfManyChanges)
{
    RandomChanges changes(20);
    Observed observed;
    for (int step = 0; step < 4000 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        changes.Change(observed.table);
        for (EIPAddress const& address : changes.addresses) {
            SCOPED_TRACE(address.GetAsString());
            EXPECT_EQ(Scan(observed.table, address), observed.lookup->GetInterfaceId(address));
            EXPECT_EQ(observed.table.GetInterfaceItem(Scan(observed.table, address)),
                      observed.table.FindInterfaceByIP(address));
            for (unsigned int const vlanId : changes.vlanIds) {
                SCOPED_TRACE(vlanId);
                EXPECT_EQ(Scan(observed.table, address, vlanId),
                          observed.lookup->GetInterfaceIdFromVlan(address, Vlan(vlanId)));
            }
        }
    }
    EXPECT_EQ(18U, changes.made.size()); // every kind of change was made, and more than once
    for (auto const& [change, times] : changes.made) EXPECT_LT(20U, times) << change;

    EIPLookupInterfaceTableHooks fresh;
    fresh.Rebuild(observed.table);
    for (EIPAddress const& address : changes.addresses)
        EXPECT_EQ(Scan(observed.table, address), fresh.GetInterfaceId(address));
}

/// One of many addresses; only the last of \p family's bytes that are needed differ.
static EIPAddress Numbered(unsigned int number, unsigned int family)
{
    unsigned char bytes[16] = {};
    std::size_t const end = family == EIPAddress::kIPv4 ? 4 : 16;
    for (std::size_t i = 0; i < 4; ++i) bytes[end - 1 - i] = static_cast<unsigned char>(number >> 8 * i);
    EIPAddress address;
    address.SetAddress(bytes, family);
    return address;
}

TEST(EIPLookupInterfaceTableHooks, FindsEachOfManyAddressesWhileTheyComeAndGo)
{
    unsigned int const interfaces = 500;
    unsigned int const numbers = 1500;
    Observed observed;
    for (unsigned int i = 0; i < interfaces; ++i) observed.Add(Interface("", {"::"}));
    std::map<unsigned int, std::set<unsigned int>> holders[2]; // by family: number, ids
    for (auto& ofFamily : holders)
        for (unsigned int id = 1; id <= interfaces; ++id) ofFamily[0].insert(id);
    std::vector<unsigned int> held[2] = {std::vector<unsigned int>(interfaces + 1),
                                         std::vector<unsigned int>(interfaces + 1)};

    auto const expect = [&](unsigned int family, unsigned int number) {
        auto const found = holders[family - 17].find(number);
        unsigned int const id = found == holders[family - 17].end() ? 0 : *found->second.begin();
        EXPECT_EQ(id, observed.lookup->GetInterfaceId(Numbered(number, family))) << family << ' ' << number;
    };
    std::mt19937 random(20);
    for (int step = 0; step < 20000 && !HasFailure(); ++step) {
        unsigned int const id = 1 + static_cast<unsigned int>(random() % interfaces);
        unsigned int const family = 17 + static_cast<unsigned int>(random() % 2);
        unsigned int const number = static_cast<unsigned int>(random() % numbers);
        unsigned int& old = held[family - 17][id];
        if (family == EIPAddress::kIPv4)
            observed.Item(id).GetIPv4AddressItem().SetAddress(Numbered(number, family));
        else
            observed.Item(id).GetIPv6AddressItem(1)->SetAddress(Numbered(number, family));
        auto& ofFamily = holders[family - 17];
        ofFamily[old].erase(id);
        if (ofFamily[old].empty()) ofFamily.erase(old);
        ofFamily[number].insert(id);
        unsigned int const left = std::exchange(old, number);
        expect(family, left);
        expect(family, number);
    }
    for (unsigned int const family : {17U, 18U})
        for (unsigned int number = 0; number < numbers; ++number) expect(family, number);
}

TEST(EIPLookupInterfaceTableHooks, ManyInterfacesMayShareTheZeroAddress)
{
    unsigned int const interfaces = 20000;
    Observed observed;
    EInterfaceItem item = Interface("", {"::"});
    for (unsigned int id = 1; id <= interfaces; ++id) {
        item.GetIPv6AddressItem(1)->SetAddress(id % 2 ? Address("::") : Address("::1"));
        item.SetVLANItem(Vlans({id % 4096}));
        ASSERT_EQ(id, observed.Add(item));
    }
    for (unsigned int id = 1; id <= interfaces; ++id) { // each removal uncovers the next
        ASSERT_EQ(id, observed.Find("0.0.0.0"));
        ASSERT_EQ(id, observed.Find("0.0.0.0", id % 4096));
        ASSERT_EQ(id, observed.Find(id % 2 ? "::" : "::1"));
        observed.table.RemoveInterfaceItem(id);
    }
    for (char const* const address : {"0.0.0.0", "::", "::1"}) EXPECT_EQ(0U, observed.Find(address));
}

namespace {

/// Has no memory while it is told of something.
class StarvingLookup : public EIPLookupInterfaceTableHooks {
public:
#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        GrantedAllocations const granted(starves ? 0 : -1, true);                                                      \
        EIPLookupInterfaceTableHooks::operation(EHOOK_ARGUMENTS(__VA_ARGS__));                                         \
        refused += granted.Refused();                                                                                  \
    }
#include "eInterfaceTableHooks.def"

    bool starves = false;
    long refused = 0;
};

/// What the observer listens to, on a table of the interfaces 1 to 3.
std::vector<void (*)(EInterfaceTable&)> AnnouncedChanges()
{
    return {
        [](EInterfaceTable& t) { t = EInterfaceTable(t); },
        [](EInterfaceTable& t) {
            t.AddInterfaceItem(Interface("10.0.0.1", {"2001:db8::1", "2001:db8::2"}));
        },
        [](EInterfaceTable& t) { t.RemoveInterfaceItem(2); },
        [](EInterfaceTable& t) { t.SetInterfaceItem(3, Interface("10.0.0.2", {"2001:db8::1"})); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(3)->SetVLANItem(Vlans({200})); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->SetIPv4AddressItem(EIPv4AddressItem()); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->GetIPv4AddressItem().SetAddress(Address("10.0.0.3")); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->AddIPv6AddressItem(IPv6Item(Address("2001:db8::3"))); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->RemoveIPv6AddressItem(1); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->SetIPv6AddressItem(1, IPv6Item(Address("2001:db8::3"))); },
        [](EInterfaceTable& t) { t.GetInterfaceItem(1)->GetIPv6AddressItem(1)->SetAddress(Address("2001:db8::2")); },
    };
}

void ExpectAnswersAsAScan(EIPLookupInterfaceTableHooks const& lookup, EInterfaceTable const& table)
{
    for (char const* const text :
         {"0.0.0.0", "10.0.0.1", "10.0.0.2", "10.0.0.3", "2001:db8::1", "2001:db8::2", "2001:db8::3", "2001:db8::4"}) {
        SCOPED_TRACE(text);
        EIPAddress const address = Address(text);
        EXPECT_EQ(Scan(table, address), lookup.GetInterfaceId(address));
        for (unsigned int const vlan : {0U, 100U, 200U})
            EXPECT_EQ(Scan(table, address, vlan), lookup.GetInterfaceIdFromVlan(address, Vlan(vlan)));
    }
}

} // namespace

TEST(EIPLookupInterfaceTableHooks, WithoutMemoryItWalksTheTableUntilItIsToldOfAChangeWithMemory)
{
    auto const changes = AnnouncedChanges();
    long refused = 0;
    for (std::size_t first = 0; first < changes.size(); ++first) {
        for (std::size_t second = 0; second < changes.size(); ++second) {
            SCOPED_TRACE(testing::Message() << "change " << first << " without memory, then " << second);
            EInterfaceTable table(7);
            auto const lookup = boost::make_shared<StarvingLookup>();
            table.SetHooks(kLookupName, lookup);
            EInterfaceItem tagged = Interface("10.0.0.1", {"2001:db8::1"});
            tagged.SetVLANItem(Vlans({100}));
            table.AddInterfaceItem(Interface("10.0.0.1", {"2001:db8::1"}));
            table.AddInterfaceItem(Interface("10.0.0.2", {"2001:db8::2"}));
            table.AddInterfaceItem(tagged);

            lookup->starves = true;
            changes[first](table);
            ExpectAnswersAsAScan(*lookup, table);
            refused += lookup->refused;
            lookup->starves = false;
            if (!table.GetInterfaceItem(1)->GetIPv6AddressItem(1)) continue; // nothing left to change
            changes[second](table);
            ExpectAnswersAsAScan(*lookup, table);

            unsigned int const id = table.AddInterfaceItem(Interface("", {"2001:db8::4"}));
            table.RemoveItem(id); // not announced: only a walk would notice
            EXPECT_EQ(id, lookup->GetInterfaceId(Address("2001:db8::4"))) << "it has an index again";
            lookup->Rebuild(table);
            while (table.size() > 0) {
                table.RemoveInterfaceItem(table.begin()->first);
                ExpectAnswersAsAScan(*lookup, table);
            }
        }
    }
    EXPECT_GT(refused, 0);
}
