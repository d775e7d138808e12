// The costs of a table that its host feels: saving, reading, copying and emptying it, one edit, one lookup.
#include "sampleTable.hpp"

#include "eArchive.hpp"
#include "eBlob.hpp"
#include "eIPLookupInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"

#include <benchmark/benchmark.h>

#include <boost/make_shared.hpp>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

unsigned int Count(benchmark::State const& state)
{
    return static_cast<unsigned int>(state.range(0));
}

/// Interfaces per second, and bytes per second of what was written or read.
void Report(benchmark::State& state, unsigned int bytesEach = 0)
{
    state.SetItemsProcessed(state.iterations() * state.range(0));
    if (bytesEach != 0) state.SetBytesProcessed(state.iterations() * bytesEach);
}

EBlob Written(EInterfaceTable const& table)
{
    EArchive archive;
    archive << table;
    return archive.GetAsEBlob();
}

void Require(bool condition, char const* what)
{
    if (!condition) throw std::runtime_error(what);
}

void TableWrite(benchmark::State& state)
{
    auto const table = SampleTable(Count(state));
    unsigned int const size = Written(*table).GetSize();
    for (auto _ : state) {
        EArchive archive;
        archive << *table;
        benchmark::DoNotOptimize(archive.IsStoring());
    }
    Report(state, size);
}

void TableRead(benchmark::State& state)
{
    EBlob const bytes = Written(*SampleTable(Count(state)));
    for (auto _ : state) {
        state.PauseTiming(); // what the last round read is destroyed here
        auto table = std::make_unique<EInterfaceTable>();
        EArchive archive;
        archive.SetFromEBlob(bytes, true);
        archive.SetMode(2);
        state.ResumeTiming();
        archive >> *table;
        state.PauseTiming();
        Require(table->GetCount() == Count(state), "not all interfaces were read");
        table.reset();
        state.ResumeTiming();
    }
    Report(state, bytes.GetSize());
}

void TableCopy(benchmark::State& state)
{
    auto const table = SampleTable(Count(state));
    for (auto _ : state) {
        auto copy = std::make_unique<EInterfaceTable>(*table);
        benchmark::DoNotOptimize(copy->GetPortId());
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
    Report(state);
}

void TableEmpty(benchmark::State& state)
{
    auto const table = SampleTable(Count(state));
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = std::make_unique<EInterfaceTable>(*table);
        state.ResumeTiming();
        copy->Empty();
        state.PauseTiming();
        Require(copy->GetCount() == 0, "the table is not empty");
        copy.reset();
        state.ResumeTiming();
    }
    Report(state);
}

/// One host command that edits the gateway of the interface in the middle of the table.
void EditCommand(benchmark::State& state)
{
    auto const table = SampleTable(Count(state));
    EArchive data;
    data << EIPAddress("192.0.2.1");
    std::vector<unsigned int> const field = {1};
    EMultiComponentId const target(EComponentId{1, 1, Count(state) / 2, 6});
    ESingleCommand const command(7, target, field, data.GetAsEBlob());
    for (auto _ : state)
        Require(table->ExecuteCommand(command, static_cast<EMultiComponentId*>(nullptr)), "the edit was refused");
    state.SetItemsProcessed(state.iterations());
}

/// Asks for the addresses of all parts of the table, which is what a scan's mean cost takes.
void Lookup(benchmark::State& state, EInterfaceTable const& table, EIPAddress (*address)(unsigned int))
{
    unsigned int const count = Count(state);
    std::vector<EIPAddress> asked;
    for (unsigned int i = 0; i < 64; ++i) asked.push_back(address(1 + (i * 7919U) % count));
    std::size_t next = 0;
    for (auto _ : state) {
        EInterfaceItem const* const found = table.FindInterfaceByIP(asked[next]);
        if (!found) Require(false, "an address was not found");
        benchmark::DoNotOptimize(found);
        next = (next + 1) % asked.size();
    }
    state.SetItemsProcessed(state.iterations());
}

void FindByScan(benchmark::State& state, EIPAddress (*address)(unsigned int))
{
    Lookup(state, *SampleTable(Count(state)), address);
}

void FindByObserver(benchmark::State& state, EIPAddress (*address)(unsigned int))
{
    auto const table = SampleTable(Count(state));
    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    table->AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup);
    lookup->Rebuild(*table);
    Lookup(state, *table, address);
}

} // namespace

BENCHMARK(TableWrite)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TableRead)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TableCopy)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(TableEmpty)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(EditCommand)->Arg(10000);
BENCHMARK_CAPTURE(FindByScan, ipv4, SampleIPv4)->Arg(10000);
BENCHMARK_CAPTURE(FindByScan, ipv6, SampleIPv6)->Arg(10000);
BENCHMARK_CAPTURE(FindByObserver, ipv4, SampleIPv4)->Arg(10000);
BENCHMARK_CAPTURE(FindByObserver, ipv6, SampleIPv6)->Arg(10000);
