// The costs of a table that its host feels: saving, loading, copying, emptying and swapping it, edits, look-ups.
#include "benchSupport.hpp"
#include "oldArchives.hpp"

#include "eArchive.hpp"
#include "eBlob.hpp"
#include "eIPLookupInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <random>
#include <vector>

namespace {

void Save(benchmark::State& state)
{
    EInterfaceTable const& table = KeptSample(Count(state));
    for (auto _ : state) {
        EArchive archive;
        archive << table;
        benchmark::DoNotOptimize(archive.IsStoring());
    }
    state.counters["bytes"] = static_cast<double>(KeptArchive(Count(state)).GetSize()) / Count(state);
}

/// Times \p make, not the destruction of what it made. One round before it takes the memory from the kernel.
template <class Make> void TimeMaking(benchmark::State& state, Make const& make)
{
    make();
    SettleHeap();
    for (auto _ : state) {
        auto made = make();
        state.PauseTiming();
        Require(made->GetCount() == Count(state), "interfaces are missing");
        made.reset();
        SettleHeap();
        state.ResumeTiming();
    }
}

void Load(benchmark::State& state)
{
    EBlob const& bytes = KeptArchive(Count(state));
    TimeMaking(state, [&bytes] { return Loaded(bytes); });
}

/// What no program that loads a table can avoid: the bytes are copied once, and as many records are allocated,
/// constructed and inserted.
void LoadFloor(benchmark::State& state)
{
    EBlob const& bytes = KeptArchive(Count(state));
    TimeMaking(state, [&] {
        std::unique_ptr<unsigned char[]> const copy(new unsigned char[bytes.GetSize()]);
        std::memcpy(copy.get(), bytes.GetData(), bytes.GetSize());
        benchmark::DoNotOptimize(copy.get());
        auto table = std::make_unique<EInterfaceTable>();
        for (unsigned int id = 1; id <= Count(state); ++id) {
            table->AddItem(id);
            EInterfaceItem& item = *table->GetItem(id);
            item.EnsureEthernet();
            for (unsigned int address = 1; address <= 2; ++address) item.GetIPv6AddressItemList().AddItem(address);
        }
        return table;
    });
}

void LoadOldArchive(benchmark::State& state)
{
    static EBlob const bytes = Version4ArchiveOfUnconnected(Count(state)); // of one size only
    TimeMaking(state, [] { return Loaded(bytes); });
}

/// The table that the old archive makes, from the archive that it has today.
void LoadConverted(benchmark::State& state)
{
    static EBlob const bytes = Written(*Loaded(Version4ArchiveOfUnconnected(Count(state)))); // of one size only
    TimeMaking(state, [] { return Loaded(bytes); });
}

void Copy(benchmark::State& state)
{
    EInterfaceTable const& table = KeptSample(Count(state));
    TimeMaking(state, [&table] { return std::make_unique<EInterfaceTable>(table); });
}

/// With the joining of what is freed: else it would be chance whether the last interface brings it about or the next
/// large allocation.
void Clear(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = std::make_unique<EInterfaceTable>(KeptSample(Count(state)));
        state.ResumeTiming();
        copy->Empty();
        SettleHeap();
        state.PauseTiming();
        Require(copy->GetCount() == 0, "the table is not empty");
        copy.reset();
        state.ResumeTiming();
    }
}

void Swap(benchmark::State& state)
{
    EInterfaceTable& table = KeptSample(Count(state));
    EInterfaceTable other;
    for (auto _ : state) table.Swap(other);
    if (table.GetCount() == 0) table.Swap(other);
}

class CountingHooks : public EIgnoreInterfaceTableHooks {
public:
    void SettingIPv4Gateway(EIPv4AddressItem const&, EIPAddress const&) override { ++m_count; }
    unsigned long GetCount() const { return m_count; }

private:
    unsigned long m_count = 0;
};

/// A host command from its beginning: the archive of the new gateway is made, the path walked, the observer told, the
/// value stored. Interface and gateway are others each time.
void EditCommand(benchmark::State& state)
{
    EInterfaceTable& table = KeptSample(Count(state));
    auto const hooks = boost::make_shared<CountingHooks>();
    table.AddInterfaceTableHooks("counter", hooks);
    EIPAddress const gateways[] = {EIPAddress("192.0.2.1"), EIPAddress("192.0.2.2")};
    unsigned int round = 0;
    for (auto _ : state) {
        ++round;
        EArchive data;
        data << gateways[round / 64 % 2];
        EMultiComponentId const ipv4(EComponentId{1, 1, 1 + round % 64 * (Count(state) / 64), 6});
        ESingleCommand const edit(7, ipv4, {1}, data.GetAsEBlob());
        if (!table.ExecuteCommand(edit, static_cast<EMultiComponentId*>(nullptr))) Require(false, "edit refused");
    }
    Require(hooks->GetCount() == round, "the observer was not told of every edit");
    table.RemoveInterfaceTableHooks("counter");
}

std::vector<ESingleCommand> AddCommands(unsigned int count)
{
    std::vector<ESingleCommand> commands;
    EMultiComponentId const list(EComponentId{1, 1});
    for (unsigned int id = 1; id <= count; ++id) {
        EArchive data;
        data << SampleInterface(id);
        commands.emplace_back(5, list, std::vector<unsigned int>(), data.GetAsEBlob());
    }
    return commands;
}

/// Fills a table by host commands, with or without the observer that keeps the index of addresses.
void FillByCommands(benchmark::State& state, bool indexed)
{
    static std::vector<ESingleCommand> const commands = AddCommands(Count(state)); // of one size only
    TimeMaking(state, [indexed] {
        auto table = std::make_unique<EInterfaceTable>(1);
        if (indexed)
            table->AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
        EMultiComponentId added;
        for (ESingleCommand const& command : commands) table->ExecuteCommand(command, &added);
        return table;
    });
}

/// Asks for \p addresses one after the other.
void Lookup(benchmark::State& state, EInterfaceTable const& table, std::vector<EIPAddress> const& addresses)
{
    std::size_t next = 0;
    for (auto _ : state) {
        EInterfaceItem const* const found = table.FindInterfaceByIP(addresses[next]);
        if (!found) Require(false, "an address was not found");
        benchmark::DoNotOptimize(found);
        next = next + 1 == addresses.size() ? 0 : next + 1;
    }
}

/// Addresses of \p count interfaces, taken from all over the table, of both families by turns.
std::vector<EIPAddress> AskedAddresses(unsigned int tableCount, unsigned int count)
{
    std::vector<unsigned int> ids(tableCount);
    std::iota(ids.begin(), ids.end(), 1);
    std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    std::vector<EIPAddress> addresses;
    for (unsigned int i = 0; i < std::min(count, tableCount); ++i)
        addresses.push_back(i % 2 ? SampleIPv4(ids[i]) : SampleIPv6(ids[i]));
    return addresses;
}

/// With the bundled look-up observer. \p working set: of how many interfaces the addresses are.
void FindByObserver(benchmark::State& state, unsigned int workingSet)
{
    EInterfaceTable& table = KeptSample(Count(state));
    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup);
    lookup->Rebuild(table);
    Lookup(state, table, AskedAddresses(Count(state), workingSet));
    table.RemoveInterfaceTableHooks("IP_LOOKUP_HOOKS");
}

void FindByScan(benchmark::State& state)
{
    Lookup(state, KeptSample(Count(state)), AskedAddresses(Count(state), 64));
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(Save)->Name("Save/ifcore")->Apply(Sizes);
BENCHMARK(Load)->Name("Load/ifcore")->Apply(Sizes);
BENCHMARK(LoadFloor)->Name("Load/floor")->Apply(Sizes);
BENCHMARK(LoadOldArchive)->Name("LoadOld/version4")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(LoadConverted)->Name("LoadOld/version14")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Copy)->Name("Copy/ifcore")->Apply(Sizes);
BENCHMARK(Clear)->Name("Clear/ifcore")->Apply(Sizes);
BENCHMARK(Swap)->Name("Swap/ifcore")->Apply(Sizes);
BENCHMARK(EditCommand)->Name("Edit/ifcore")->Arg(1000)->Arg(10000)->Arg(100000)->Arg(1000000);
BENCHMARK_CAPTURE(FillByCommands, plain, false)->Name("Fill/plain")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FillByCommands, indexed, true)->Name("Fill/indexed")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(FindByObserver, some, 64)->Name("Find/observer")->Apply(Sizes)->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(FindByObserver, all, ~0U)->Name("FindAll/observer")->Apply(Sizes)->Unit(benchmark::kNanosecond);
BENCHMARK(FindByScan)->Name("Find/scan")->Arg(10000);
