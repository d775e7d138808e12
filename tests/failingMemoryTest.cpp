// The interface table while memory fails: every operation that allocates, with every allocation of it failing in turn.
#include "eInterfaceTable.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultiComponentId.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"

#include "builtMessages.hpp"
#include "failingMemory.hpp"
#include "hostActions.hpp"
#include "interfaceSamples.hpp"
#include "tableRules.hpp"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {

char const* const kLongText = "a text that no string keeps without an allocation";
char const* const kOwnIPv4 = "192.0.2.1"; // of the interfaces 2 and 3
char const* const kNewIPv4 = "192.0.2.2";
char const* const kOwnIPv6 = "2001:db8::1"; // of the interfaces 2 and 3
char const* const kNewIPv6 = "2001:db8::2";

/// Hears all and allocates nothing.
class CountingHooks : public EInterfaceTableHooks {
public:
#define EHOOK(operation, ...)                                                                                          \
    void operation(__VA_ARGS__) override                                                                               \
    {                                                                                                                  \
        ++told;                                                                                                        \
    }
#include "eInterfaceTableHooks.def"

    long told = 0;
};

EVLANIPAddressTableItemProperties Vlans(unsigned short outermost, unsigned int levels = 1)
{
    EVLANIPAddressTableItemProperties vlans(levels, true);
    vlans.SetVLANID(outermost, 0);
    return vlans;
}

EIPv6AddressItem IPv6(char const* address)
{
    EIPv6AddressItem item;
    item.SetAddress(EIPAddress(address));
    return item;
}

/// With addresses and nothing that is created on demand but the Ethernet data.
EInterfaceItem Plain(char const* ipv4, char const* ipv6, unsigned short vlan)
{
    EInterfaceItem item;
    item.SetName(kLongText);
    item.GetIPv4AddressItem().SetAddress(EIPAddress(ipv4));
    item.AddIPv6AddressItem(IPv6(ipv6));
    item.SetVLANItem(Vlans(vlan));
    return item;
}

EInterfaceItem Full()
{
    EInterfaceItem item;
    FillSample(item);
    return item;
}

/// The interfaces 1, with every record, and 2 and 3, which share their addresses in two VLANs.
EInterfaceTable const& SmallTable()
{
    static EInterfaceTable const* const table = [] {
        auto* const made = new EInterfaceTable(7);
        made->AddInterfaceItem(Full());
        made->AddInterfaceItem(Plain(kOwnIPv4, kOwnIPv6, 10));
        made->AddInterfaceItem(Plain(kOwnIPv4, kOwnIPv6, 20));
        return made;
    }();
    return *table;
}

/// So many empty interfaces that the next one brings an index.
EInterfaceTable const& ManyInterfaces()
{
    static EInterfaceTable const* const table = [] {
        auto* const made = new EInterfaceTable(7);
        for (int i = 0; i < 21; ++i) made->AddInterfaceItem(EInterfaceItem());
        return made;
    }();
    return *table;
}

/// A table with an observer that looks addresses up and, behind it, one that counts.
struct TableFixture {
    EInterfaceTable table{7};
    boost::shared_ptr<CountingHooks> counter = boost::make_shared<CountingHooks>();
    boost::shared_ptr<EIPLookupInterfaceTableHooks> lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    EMultiComponentId added{EComponentId{99}}; // of commands
    EComponentId addedList{99};                // of the same in their other form
    EInterfaceTable other{SmallTable()};       // to swap with and to read into
    bool announced = true;                     // whether the lookup is told of the changes

    explicit TableFixture(EInterfaceTable const& contents)
    {
        table = contents;
        table.AddInterfaceTableHooks("counter", counter);
        table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup); // told first
        lookup->Rebuild(table);
    }
    long Told() const { return counter->told; }
    std::string State() const
    {
        std::string state = Written(table) + Written(other) + table.GetHooksName();
        state += TextOf(added.GetId()) + TextOf(addedList);
        for (unsigned int const leaf : added.GetLeaves()) state += "+" + std::to_string(leaf);
        return state;
    }
    char const* Broken()
    {
        EIPLookupInterfaceTableHooks fresh;
        fresh.Rebuild(table);
        if (!announced) lookup->Rebuild(table);
        for (char const* const text : {"0.0.0.0", "::", kOwnIPv4, kNewIPv4, kOwnIPv6, kNewIPv6, "10.0.0.1", "fe80::3"})
            if (!AnswersAlike(fresh, EIPAddress(text))) return "the lookup knows the table";
        char const* const broken = BrokenRule(table);
        return broken ? broken : BrokenRule(other);
    }

private:
    bool AnswersAlike(EIPLookupInterfaceTableHooks const& fresh, EIPAddress const& address) const
    {
        if (fresh.GetInterfaceId(address) != lookup->GetInterfaceId(address)) return false;
        for (unsigned short const id : std::initializer_list<unsigned short>{0, 10, 20, 30}) {
            EVLAN vlan;
            vlan.SetVLANID(id);
            if (fresh.GetInterfaceIdFromVlan(address, vlan) != lookup->GetInterfaceIdFromVlan(address, vlan))
                return false;
        }
        return true;
    }
};

using Case = MemoryCase<TableFixture>;
using Path = std::initializer_list<unsigned int>;
auto const UNCHANGED = WhenMemoryFails::UNCHANGED;
auto const CONSISTENT = WhenMemoryFails::CONSISTENT;

void ExpectAnswered(std::vector<Case> const& cases, EInterfaceTable const& contents = SmallTable())
{
    ExpectEachFailureAnswered<TableFixture>(cases, [&contents] { return new TableFixture(contents); });
}

template <class... Value> EBlob Data(Value const&... value)
{
    EArchive archive;
    ((void)(archive << value), ...);
    return archive.GetAsEBlob();
}

/// A list as the edits read it.
template <class Count, class Element> EBlob ListData(std::vector<Element> const& elements)
{
    EArchive archive;
    archive << static_cast<Count>(elements.size());
    for (Element const& element : elements) archive << element;
    return archive.GetAsEBlob();
}

Case Command(char const* name, WhenMemoryFails guarantee, unsigned int action, Path path,
             std::vector<unsigned int> const& leaves, EBlob const& data,
             std::vector<unsigned int> const& subId = std::vector<unsigned int>())
{
    EMultiComponentId target{EComponentId(path)};
    target.SetLeaves(leaves);
    ESingleCommand const command(action, target, subId, data);
    return {name, guarantee, [command](TableFixture& f) { EXPECT_TRUE(f.table.ExecuteCommand(command, &f.added)); }};
}

Case Edit(char const* name, Path path, std::vector<unsigned int> const& subId, EBlob const& data,
          WhenMemoryFails guarantee = UNCHANGED)
{
    return Command(name, guarantee, EDIT, path, {}, data, subId);
}

/// The same command, whose result is asked for in the form without leaves.
Case WithListResult(char const* name, unsigned int action, Path path, EBlob const& data)
{
    ESingleCommand const command(action, EMultiComponentId{EComponentId(path)}, {}, data);
    return {name, UNCHANGED,
            [command](TableFixture& f) { EXPECT_TRUE(f.table.ExecuteCommand(command, &f.addedList)); }};
}

Case Change(char const* name, WhenMemoryFails guarantee, std::function<void(EInterfaceTable&)> const& change)
{
    return {name, guarantee, [change](TableFixture& f) { change(f.table); }};
}

/// A change that no observer hears of, but for those that a message makes in what is there.
Case Unannounced(char const* name, WhenMemoryFails guarantee, std::function<void(TableFixture&)> const& change)
{
    return {name, guarantee, [change](TableFixture& f) {
                f.announced = false;
                change(f);
            }};
}

std::vector<EDCBXFeatureTlv> Features()
{
    return {EDCBXFeatureTlv(2, 0, 2), EDCBXFeatureTlv(3, 0, 2), EDCBXFeatureTlv(5, 0, 2)};
}

ELLDPConfig::LLDPChassisId ChassisId()
{
    ELLDPConfig::LLDPChassisId id;
    id.interfaceName = kLongText;
    return id;
}

/// The message of one operation on the list of interfaces, with the id put back that its builder clears.
std::string Message(TLVIds::TLVId const& operation, unsigned int id, EInterfaceItem const& item)
{
    Protocol::EBytes bytes;
    Protocol::AppendInterfaceOpTLV(bytes, operation, item);
    return Text(bytes).replace(8, 4, U32(id));
}

Case ParsedMessage(char const* name, std::string const& message, WhenMemoryFails guarantee = CONSISTENT)
{
    return Unannounced(name, guarantee, [message](TableFixture& f) {
        TLVReader reader(message.data(), static_cast<int>(message.size()));
        ParseInterfaceListTLV(reader, f.table);
    });
}

Case ReadArchive(char const* name, std::string const& bytes)
{
    EBlob const blob = BlobOf(bytes);
    return Unannounced(name, CONSISTENT, [blob](TableFixture& f) {
        EArchive archive;
        archive.SetFromEBlob(blob, true);
        archive.SetMode(2);
        archive >> f.other;
    });
}

} // namespace

TEST(FailingMemory, SetCommandsChangeTheTableOrLeaveItUnchangedAndUntold)
{
    EInterfaceTable replacement(9);
    replacement.AddInterfaceItem(Full());
    replacement.AddInterfaceItem(Plain(kNewIPv4, kNewIPv6, 30));
    replacement.AddInterfaceItem(Plain(kNewIPv4, kOwnIPv6, 10));
    ExpectAnswered({
        Command("the table", UNCHANGED, SET, {7}, {}, Data(replacement)),
        Command("an interface", UNCHANGED, SET, {7, 1}, {2}, Data(Full())),
        Command("an interface of the same addresses", UNCHANGED, SET, {7, 1}, {2}, Data(Plain(kOwnIPv4, kOwnIPv6, 10))),
        Command("an interface of another VLAN", UNCHANGED, SET, {7, 1}, {2}, Data(Plain(kNewIPv4, kOwnIPv6, 30))),
        Command("an IPv6 address", UNCHANGED, SET, {7, 1, 2, 1}, {1}, Data(IPv6(kNewIPv6))),
        Command("IPv4", UNCHANGED, SET, {7, 1, 2}, {6}, Data(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex"))),
        Command("DHCP", UNCHANGED, SET, {7, 1, 2}, {24}, Data(Read<EDHCPProperties>("EDHCPProperties.v3.hex"))),
        Command("DHCPv6", UNCHANGED, SET, {7, 1, 2}, {26}, Data(Read<EDHCPv6Properties>("EDHCPv6Properties.v2.hex"))),
        Command("FCoE", UNCHANGED, SET, {7, 1, 2}, {31}, Data(Read<EFCoEConfig>("EFCoEConfig.v7.hex"))),
        Command("FCoE over another", UNCHANGED, SET, {7, 1, 1}, {31}, Data(EFCoEConfig())),
        Command("NPIV, created", UNCHANGED, SET, {7, 1, 2}, {32}, Data(Read<ENPIVConfig>("ENPIVConfig.v4.hex"))),
        Command("NPIV", UNCHANGED, SET, {7, 1, 1}, {32}, Data(ENPIVConfig())),
    });
}

TEST(FailingMemory, AddCommandsAddAndTellTheIdOrDoNeither)
{
    std::vector<Case> const cases = {
        Command("an interface", UNCHANGED, ADD, {7, 1}, {}, Data(Full())),
        Command("an interface of known addresses", UNCHANGED, ADD, {7, 1}, {}, Data(Plain(kOwnIPv4, kOwnIPv6, 10))),
        Command("an IPv6 address", UNCHANGED, ADD, {7, 1, 2, 1}, {}, Data(IPv6(kNewIPv6))),
        Command("a known IPv6 address", UNCHANGED, ADD, {7, 1, 2, 1}, {}, Data(IPv6(kOwnIPv6))),
        WithListResult("an interface, told the list", ADD, {7, 1}, Data(Plain(kNewIPv4, kNewIPv6, 30))),
        WithListResult("an IPv6 address, told the list", ADD, {7, 1, 2, 1}, Data(IPv6(kNewIPv6))),
        {"an interface, told to nobody", UNCHANGED,
         [command = ESingleCommand(ADD, EMultiComponentId{EComponentId{7, 1}}, {}, Data(Full()))](TableFixture& f) {
             EXPECT_TRUE(f.table.ExecuteCommand(command, static_cast<EMultiComponentId*>(nullptr)));
         }},
        {"DoAddCommand, told the list", UNCHANGED,
         [command = ESingleCommand(ADD, EMultiComponentId{EComponentId{7, 1}}, {}, Data(Full()))](TableFixture& f) {
             EXPECT_TRUE(f.table.DoAddCommand(command, f.addedList));
         }},
    };
    ExpectAnswered(cases);
    ExpectAnswered({cases[0]}, ManyInterfaces());
}

TEST(FailingMemory, SwitchingAndRemovingLeavesTheTableUnchangedOrIsDone)
{
    EBlob const none;
    ExpectAnswered({
        Command("enable an interface", UNCHANGED, ENABLE, {7, 1, 2}, {}, none),
        Command("disable an interface", UNCHANGED, DISABLE, {7, 1, 1}, {}, none),
        Command("enable IPv4", UNCHANGED, ENABLE, {7, 1, 2, 6}, {}, none),
        Command("remove interfaces", UNCHANGED, REMOVE, {7, 1}, {1, 2, 3}, none),
        Command("remove IPv6 addresses", UNCHANGED, REMOVE, {7, 1, 1, 1}, {3, 9}, none),
    });
}

TEST(FailingMemory, EditsOfTheTableAndOfAnInterfaceAreDoneOrLeaveItUnchangedAndUntold)
{
    EUniqueIDGenerator generator;
    generator.SkipPast(1000);
    EDCBXConfig dcbx;
    dcbx.SetFeatureTlvs(Features());
    ELLDPConfig lldp;
    lldp.SetChassisId(ChassisId());
    ExpectAnswered({
        Edit("rate", {7}, {4}, Data(77U)),
        Edit("id generator", {7}, {3}, Data(generator)),
        Edit("PPP handle, created", {7, 1, 2}, {2}, Data(77U)),
        Edit("connected via, created", {7, 1, 2}, {4}, Data(EComponentId{7, 1, 1})),
        Edit("connected via", {7, 1, 1}, {4}, Data(EComponentId{7, 1, 2})),
        Edit("EUID", {7, 1, 2}, {5}, Data(EUID(77))),
        Edit("IPv4, whole", {7, 1, 2}, {6}, Data(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex"))),
        Edit("IPv4, address", {7, 1, 2}, {6, 3}, Data(EIPAddress(kNewIPv4))),
        Edit("MAC", {7, 1, 2}, {7}, Data(EMACAddress("02:00:00:00:00:09"))),
        Edit("EUID of its own", {7, 1, 2}, {8}, Data(true)),
        Edit("VLANs", {7, 1, 2}, {9}, Data(Vlans(30, 7))),
        Edit("VPI, created", {7, 1, 2}, {10}, Data(77U)),
        Edit("name", {7, 1, 1}, {14}, Data(std::string(kLongText))),
        Edit("GRE source, created", {7, 1, 2}, {17}, Data(EComponentId{7, 1, 1})),
        Edit("GRE key, created", {7, 1, 2}, {22}, Data(77)),
        Edit("DHCP, whole", {7, 1, 2}, {24}, Data(Read<EDHCPProperties>("EDHCPProperties.v3.hex"))),
        Edit("DHCPv6, whole", {7, 1, 2}, {26}, Data(Read<EDHCPv6Properties>("EDHCPv6Properties.v2.hex"))),
        Edit("IPv6 gateway", {7, 1, 2}, {29}, Data(EIPAddress(kNewIPv6))),
        Edit("FCoE, whole", {7, 1, 2}, {31}, Data(Read<EFCoEConfig>("EFCoEConfig.v7.hex"))),
        Edit("NPIV, whole, created", {7, 1, 2}, {32}, Data(Read<ENPIVConfig>("ENPIVConfig.v4.hex"))),
        Edit("PTP on, created", {7, 1, 2}, {33}, Data(true)),
        Edit("PTP, whole, created", {7, 1, 2}, {34}, Data(Read<EPTPConfig>("EPTPConfig.v3.hex"))),
        Edit("DCBX on, created", {7, 1, 2}, {35}, Data(true)),
        Edit("DCBX, whole, created", {7, 1, 2}, {36}, Data(dcbx)),
        Edit("DCBX, whole", {7, 1, 1}, {36}, Data(dcbx)),
        Edit("LLDP on, created", {7, 1, 2}, {37}, Data(true)),
        Edit("LLDP, whole, created", {7, 1, 2}, {38}, Data(lldp)),
        Edit("LLDP, whole", {7, 1, 1}, {38}, Data(lldp)),
        // The record is created whatever becomes of the field.
        Edit("NPIV, PLOGI destinations, created", {7, 1, 2}, {32, 10},
             ListData<unsigned int>(std::vector<EPLOGIDestination>(3)), CONSISTENT),
        Edit("PTP, clock id, created", {7, 1, 2}, {34, 1}, Data(EUID(77)), CONSISTENT),
        Edit("DCBX, features, created", {7, 1, 2}, {36, 1}, ListData<unsigned long>(Features()), CONSISTENT),
        Edit("LLDP, chassis id, created", {7, 1, 2}, {38, 1}, Data(ChassisId()), CONSISTENT),
    });
}

TEST(FailingMemory, EditsOfARecordAreDoneOrLeaveItUnchangedAndUntold)
{
    std::list<EDHCPTLV> const options = Read<EDHCPProperties>("EDHCPProperties.v3.hex").GetDHCPCustomTLVs();
    EBlob const optionsData = ListData<unsigned int>(std::vector<EDHCPTLV>(options.begin(), options.end()));
    EBlob const destinations = ListData<unsigned int>(std::vector<EPLOGIDestination>(3));
    EFCoEConfig const fcoe = Read<EFCoEConfig>("EFCoEConfig.v7.hex");
    ExpectAnswered({
        Edit("IPv4, gateway", {7, 1, 2, 6}, {1}, Data(EIPAddress(kNewIPv4))),
        Edit("IPv4, address", {7, 1, 2, 6}, {3}, Data(EIPAddress(kNewIPv4))),
        Edit("IPv4, the address it has", {7, 1, 2, 6}, {3}, Data(EIPAddress(kOwnIPv4))),
        Edit("IPv6, address", {7, 1, 2, 1, 1}, {1}, Data(EIPAddress(kNewIPv6))),
        Edit("IPv6, mask length", {7, 1, 2, 1, 1}, {2}, Data(77U)),
        Edit("DHCP, client id", {7, 1, 1, 24}, {1}, Data(std::string(kLongText))),
        Edit("DHCP, options", {7, 1, 1, 24}, {5}, optionsData),
        Edit("DHCPv6, options", {7, 1, 1, 26}, {4}, optionsData),
        Edit("FCoE, port name", {7, 1, 1, 31}, {1}, Data(EUID(77))),
        Edit("NPIV, connected via", {7, 1, 1, 32}, {8}, Data(EComponentId{7, 1, 2, 1, 9, 9, 9, 9, 9})),
        Edit("NPIV, registration", {7, 1, 1, 32}, {9}, Data(fcoe.GetNSRegOption())),
        Edit("NPIV, PLOGI destinations", {7, 1, 1, 32}, {10}, destinations),
        Edit("NPIV, query", {7, 1, 1, 32}, {13}, Data(fcoe.GetFCNSQuery())),
        Edit("PTP, clock id", {7, 1, 1, 34}, {1}, Data(EUID(77))),
        Edit("DCBX, features", {7, 1, 1, 36}, {1}, ListData<unsigned long>(Features())),
        Edit("DCBX, subtype", {7, 1, 1, 36}, {3}, Data(1U)),
        Edit("LLDP, chassis id", {7, 1, 1, 38}, {1}, Data(ChassisId())),
    });
}

TEST(FailingMemory, DirectChangesOfTheTableAreDoneOrLeaveItUnchangedAndUntold)
{
    static EInterfaceItem const full = Full();
    static EInterfaceItem const plain = Plain(kNewIPv4, kNewIPv6, 30);
    std::vector<Case> const cases = {
        Change("operator=", UNCHANGED, [](EInterfaceTable& table) { table = SmallTable(); }),
        Change("operator= of many", UNCHANGED, [](EInterfaceTable& table) { table = ManyInterfaces(); }),
        Change("Empty", UNCHANGED, [](EInterfaceTable& table) { table.Empty(); }),
        Change("AddInterfaceItem", UNCHANGED, [](EInterfaceTable& table) { table.AddInterfaceItem(plain); }),
        Change("SetInterfaceItem", UNCHANGED, [](EInterfaceTable& table) { table.SetInterfaceItem(2, plain); }),
        Change("Empty of an interface", UNCHANGED, [](EInterfaceTable& table) { table.GetInterfaceItem(2)->Empty(); }),
        Change("SetPTPConfig, created", UNCHANGED,
               [](EInterfaceTable& table) { table.GetInterfaceItem(2)->SetPTPConfig(*full.GetPTPConfigReadOnly()); }),
        Change("SetMTU, created", UNCHANGED, [](EInterfaceTable& table) { table.GetInterfaceItem(2)->SetMTU(77); }),
    };
    ExpectAnswered(cases);
    ExpectAnswered({cases[0], cases[1], cases[2], cases[3], cases[4]}, ManyInterfaces());
}

TEST(FailingMemory, ContainersAreChangedWholeOrNotAtAll)
{
    static EInterfaceItem const full = Full();
    auto const list = [](TableFixture& f) -> EInterfaceItemList& { return f.table.GetInterfaceItemList(); };
    std::vector<Case> const cases = {
        Unannounced("AddItem", UNCHANGED, [=](TableFixture& f) { list(f).AddItem(); }),
        Unannounced("AddItem of an id", UNCHANGED, [=](TableFixture& f) { list(f).AddItem(50); }),
        Unannounced("AddItem over another", UNCHANGED, [=](TableFixture& f) { list(f).AddItem(2); }),
        Unannounced("AddItem of an item", UNCHANGED, [=](TableFixture& f) { list(f).AddItem(full); }),
        Unannounced("AddItem of an id and an item", UNCHANGED, [=](TableFixture& f) { list(f).AddItem(2, full); }),
        Unannounced("Copy", UNCHANGED, [=](TableFixture& f) { list(f).Copy(SmallTable()); }),
        Unannounced("operator=", UNCHANGED, [=](TableFixture& f) { list(f) = ManyInterfaces(); }),
        Unannounced("Swap", UNCHANGED, [=](TableFixture& f) { list(f).Swap(f.other); }),
        Unannounced("Swap of tables", UNCHANGED, [](TableFixture& f) { f.table.Swap(f.other); }),
        Unannounced("a copy", UNCHANGED, [](TableFixture& f) { EInterfaceTable const copy(f.table); }),
        Unannounced("a copy of the items", UNCHANGED, [=](TableFixture& f) { EInterfaceItemList const copy(list(f)); }),
        Unannounced("RemoveItem", UNCHANGED, [=](TableFixture& f) { list(f).RemoveItem(2); }),
    };
    ExpectAnswered(cases);
    ExpectAnswered({cases[0], cases[1], cases[6], cases[10]}, ManyInterfaces());
}

TEST(FailingMemory, ArchivesAreWrittenFromAnUnchangedTableAndReadIntoAConsistentOne)
{
    ExpectAnswered({
        Change("write", UNCHANGED,
               [](EInterfaceTable& table) {
                   EArchive archive;
                   archive << table;
                   archive.GetAsEBlob();
               }),
        ReadArchive("read", Written(SmallTable())),
        ReadArchive("read many", Written(ManyInterfaces())),
        ReadArchive("read version 4, which is converted", Golden("EInterfaceTable.v4.hex")),
        ReadArchive("read version 3, with tunnels", Golden("EInterfaceTable.v3.hex")),
    });
}

TEST(FailingMemory, MessagesOfTLVsLeaveAConsistentTable)
{
    namespace ListOp = TLVIds::ListOp;
    EInterfaceItem const full = Full();
    ExpectAnswered({
        ParsedMessage("add", Message(ListOp::Add, 5, full)),
        ParsedMessage("add over another", Message(ListOp::Add, 2, full)),
        ParsedMessage("edit", Message(ListOp::Edit, 2, full)),
        ParsedMessage("edit of none", Message(ListOp::Edit, 5, full)),
        ParsedMessage("remove", Tlv(ListOp::Remove, U32(2)), UNCHANGED),
        ParsedMessage("remove all", Tlv(ListOp::RemoveAll), UNCHANGED),
    });
}

TEST(FailingMemory, ObserversAreInstalledOrNot)
{
    auto const third = boost::make_shared<CountingHooks>();
    ExpectAnswered({
        Change("add a third", UNCHANGED,
               [=](EInterfaceTable& table) { table.AddInterfaceTableHooks(kLongText, third); }),
        Change("replace all", UNCHANGED,
               [=](EInterfaceTable& table) { table.SetHooks(kLongText, table.GetHooksPtr()); }),
        Change("remove one", UNCHANGED, [](EInterfaceTable& table) { table.RemoveInterfaceTableHooks("counter"); }),
        {"Rebuild of a lookup", UNCHANGED, [](TableFixture& f) { f.lookup->Rebuild(f.table); }},
    });
}
