// The discovered table while memory fails: every operation of a change stream, archives and copies, with every
// allocation of it failing in turn.
#include "eDiscoveredChangeWriter.hpp"
#include "eDiscoveredTable.hpp"

#include "discoveredRecorder.hpp"
#include "failingMemory.hpp"
#include "golden.hpp"
#include "tableRules.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace {

// Texts longer than a string keeps without an allocation.
char const* const kMac = "02:00:00:00:00:01";
char const* const kAddress = "2001:db8:ffff:ffff::1";
char const* const kNewMac = "02:00:00:00:00:02";
char const* const kNewAddress = "2001:db8:ffff:ffff::2";

/// Hears all and allocates nothing.
class CountingHooks : public EDiscoveredTableHooks {
public:
#define EHOOK(operation, ...)                                                                                          \
    void operation(__VA_ARGS__) override                                                                               \
    {                                                                                                                  \
        ++told;                                                                                                        \
    }
#include "eDiscoveredTableHooks.def"

    long told = 0;
};

/// The info of the golden file, with every protocol record, as info 5, and info 7 with one neighbour.
EDiscoveredTable const& FullTable()
{
    static EDiscoveredTable const* const table = [] {
        auto* const made = new EDiscoveredTable;
        made->AddInfo(Info(7, {Neighbor(kMac, {kAddress})}));
        made->AddInfo(Read<EDiscoveredInfo>("EDiscoveredInfo.hex"));
        return made;
    }();
    return *table;
}

struct DiscoveredFixture {
    EDiscoveredTable table;
    EDiscoveredTable other{FullTable()}; // to read into
    boost::shared_ptr<CountingHooks> counter = boost::make_shared<CountingHooks>();

    DiscoveredFixture()
    {
        table = FullTable();
        table.FindDefaultMAC(); // which no copy brings along
        table.hooks = counter;
    }
    long Told() const { return counter->told; }
    /// The contents, and what is found by what could be known of neighbours.
    std::string State() const
    {
        std::string state = Written(table) + Written(other);
        EDiscoveredInfoList const& infos = table.GetInfos();
        for (auto position = infos.begin(); position != infos.end(); ++position) {
            EDiscoveredInfo const& info = *infos.GetItem(position);
            for (char const* const mac : {kMac, kNewMac, "02:00:00:00:00:03", "02:00:00:00:00:07"})
                state += Found(info.FindNeighborByMAC(MAC(mac)));
            for (char const* const address : {kAddress, kNewAddress, "10.0.0.3", "10.0.0.7", "2001:db8::7"})
                state += Found(info.FindNeighborByIP(IP(address)));
        }
        return state;
    }
    char const* Broken() const
    {
        char const* const broken = BrokenRule(table);
        return broken ? broken : BrokenRule(other);
    }

private:
    static std::string Found(EDiscoveredNeighbor const* neighbor)
    {
        return neighbor ? " " + std::to_string(neighbor->GetLocalId()) : " -";
    }
};

using Case = MemoryCase<DiscoveredFixture>;
using Changer = std::function<void(EDiscoveredTable&)>;
auto const UNCHANGED = WhenMemoryFails::UNCHANGED;
auto const CONSISTENT = WhenMemoryFails::CONSISTENT;

void ExpectAnswered(std::vector<Case> const& cases)
{
    ExpectEachFailureAnswered<DiscoveredFixture>(cases, [] { return new DiscoveredFixture; });
}

/// Each operation of the stream, as a change of the full table.
std::vector<std::pair<char const*, Changer>> const& Operations()
{
    static std::vector<std::pair<char const*, Changer>> const operations = {
        {"0: the table", [](EDiscoveredTable& table) { table = FullTable(); }},
        {"1: AddInfo", [](EDiscoveredTable& table) { table.AddInfo(Info(9, {Neighbor(kNewMac, {kNewAddress})})); }},
        {"1: AddInfo over another",
         [](EDiscoveredTable& table) { table.AddInfo(Info(7, {Neighbor(kNewMac, {kNewAddress})})); }},
        {"2: RemoveInfo", [](EDiscoveredTable& table) { table.RemoveInfo(5); }},
        {"3: SetInfo", [](EDiscoveredTable& table) { table.SetInfo(7, *FullTable().GetInfo(5)); }},
        {"4: SetInterfaceUp", [](EDiscoveredTable& table) { table.GetInfo(7)->SetInterfaceUp(true); }},
        {"5: AddAddress", [](EDiscoveredTable& table) { table.GetInfo(5)->AddAddress(IP(kNewAddress)); }},
        {"6: RemoveAddress", [](EDiscoveredTable& table) { table.GetInfo(5)->RemoveAddress(IP("10.0.0.9")); }},
        {"7: AddNeighbor",
         [](EDiscoveredTable& table) {
             table.GetInfo(7)->AddNeighbor(Neighbor(kNewMac, {kNewAddress, "10.0.0.7"}));
         }},
        {"7: AddNeighbor of a known MAC and address",
         [](EDiscoveredTable& table) {
             table.GetInfo(7)->AddNeighbor(Neighbor(kMac, {kNewAddress, kAddress}));
         }},
        {"8: RemoveNeighbor", [](EDiscoveredTable& table) { table.GetInfo(7)->RemoveNeighbor(1); }},
        {"9: SetNeighbor",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetNeighbor(1, Neighbor(kNewMac, {kNewAddress})); }},
        {"10: SetIsRouter", [](EDiscoveredTable& table) { table.GetInfo(7)->GetNeighbor(1)->SetIsRouter(false); }},
        {"11: SetMac", [](EDiscoveredTable& table) { table.GetInfo(7)->GetNeighbor(1)->SetMac(MAC(kNewMac)); }},
        {"12: AddAddress of a neighbour",
         [](EDiscoveredTable& table) { table.GetInfo(7)->GetNeighbor(1)->AddAddress(IP(kNewAddress)); }},
        {"13: RemoveAddress of a neighbour",
         [](EDiscoveredTable& table) { table.GetInfo(7)->GetNeighbor(1)->RemoveAddress(IP(kAddress)); }},
        {"14: SetDHCPInfo",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetDHCPInfo(FullTable().GetInfo(5)->GetDHCPInfo()); }},
        {"15: SetDHCPv6Info",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetDHCPv6Info(FullTable().GetInfo(5)->GetDHCPv6Info()); }},
        {"16: SetFCoEInfo",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetFCoEInfo(FullTable().GetInfo(5)->GetFCoEInfo()); }},
        {"17: SetPTPInfo",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetPTPInfo(FullTable().GetInfo(5)->GetPTPInfo()); }},
        {"18: SetDCBXInfo",
         [](EDiscoveredTable& table) { table.GetInfo(7)->SetDCBXInfo(FullTable().GetInfo(5)->GetDCBXInfo()); }},
    };
    return operations;
}

/// What the writer sends of a change.
EBlob StreamOf(Changer const& change)
{
    EDiscoveredTable table(FullTable());
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    table.hooks = writer;
    change(table);
    return writer->TakeMessage();
}

void Apply(EDiscoveredTable& table, EBlob const& stream)
{
    EArchive archive;
    archive.SetFromEBlob(stream, true);
    archive.SetMode(2);
    ApplyDiscoveredTableMessage(table, archive);
}

} // namespace

TEST(FailingMemoryDiscovered, EveryOperationOfAStreamIsDoneOrLeavesTheTableUnchangedAndUntold)
{
    std::vector<Case> cases;
    for (auto const& [name, change] : Operations())
        cases.push_back(
            {name, UNCHANGED, [stream = StreamOf(change)](DiscoveredFixture& f) { Apply(f.table, stream); }});
    ExpectAnswered(cases);
}

TEST(FailingMemoryDiscovered, EveryChangeIsDoneOrLeavesTheTableUnchangedAndUntold)
{
    std::vector<Case> cases;
    for (auto const& [name, change] : Operations())
        cases.push_back({name, UNCHANGED, [change = change](DiscoveredFixture& f) { change(f.table); }});
    ExpectAnswered(cases);
}

TEST(FailingMemoryDiscovered, OperationsBeforeTheOneThatFailsStayDone)
{
    EBlob const stream = StreamOf([](EDiscoveredTable& table) {
        // From 18 to 1: the later ones take away what the others need.
        for (auto operation = Operations().rbegin(); operation != std::prev(Operations().rend()); ++operation)
            operation->second(table);
    });
    ExpectAnswered({{"all", CONSISTENT, [stream](DiscoveredFixture& f) { Apply(f.table, stream); }}});
}

TEST(FailingMemoryDiscovered, TablesAreCopiedAndArchivedWholeOrNotAtAllAndReadConsistently)
{
    EBlob const bytes = BlobOf(Written(FullTable()));
    ExpectAnswered({
        {"write", UNCHANGED,
         [](DiscoveredFixture& f) {
             EArchive archive;
             archive << f.table;
             archive.GetAsEBlob();
         }},
        {"a copy", UNCHANGED, [](DiscoveredFixture& f) { EDiscoveredTable const copy(f.table); }},
        {"Swap", UNCHANGED, [](DiscoveredFixture& f) { f.table.Swap(f.other); }},
        {"Empty", UNCHANGED, [](DiscoveredFixture& f) { f.table.Empty(); }},
        {"Empty of an info's record", UNCHANGED,
         [](DiscoveredFixture& f) { f.table.GetInfo(5)->GetPTPInfo().Empty(); }},
        {"read", CONSISTENT,
         [bytes](DiscoveredFixture& f) {
             EArchive archive;
             archive.SetFromEBlob(bytes, true);
             archive.SetMode(2);
             archive >> f.other;
         }},
    });
}
