// The costs of a discovered table that grows: finding a neighbour, the operations of a change stream, whole contents.
#include "sampleTable.hpp"

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace {

unsigned int const kInterface = 1; // the one with the neighbours
unsigned int const kOther = 2;     // one without
unsigned int const kBatch = 1000;  // operations of one message

unsigned int Count(benchmark::State const& state)
{
    return static_cast<unsigned int>(state.range(0));
}

/// All numbers from 1 to \p count, each once, far from the one before.
unsigned int Scattered(unsigned int i, unsigned int count)
{
    return 1 + static_cast<unsigned int>(i * 7919UL % count); // a prime that divides none of the counts
}

void Require(bool condition, char const* what)
{
    if (!condition) throw std::runtime_error(what);
}

EDiscoveredInfo EmptyInfo(unsigned int id)
{
    EDiscoveredInfo info;
    info.SetLocalId(id);
    return info;
}

/// Two interfaces; the first has \p count neighbours, of the ids 1 to \p count, each with a MAC and, if \p addressed,
/// an IPv4 address.
std::unique_ptr<EDiscoveredTable> SampleNeighbors(unsigned int count, bool addressed = true)
{
    auto table = std::make_unique<EDiscoveredTable>();
    for (unsigned int const id : {kInterface, kOther}) table->AddInfo(EmptyInfo(id));
    EDiscoveredInfo& info = *table->GetInfo(kInterface);
    for (unsigned int id = 1; id <= count; ++id) {
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(SampleMac(id));
        if (addressed) neighbor.AddAddress(SampleIPv4(id));
        info.AddNeighbor(neighbor);
    }
    return table;
}

template <class Value> using Find = EDiscoveredNeighbor const* (EDiscoveredInfo::*)(Value const&) const;

/// Asks for all neighbours in a scattered order.
template <class Value> void FindNeighbor(benchmark::State& state, Value (*sample)(unsigned int), Find<Value> find)
{
    unsigned int const count = Count(state);
    auto const table = SampleNeighbors(count);
    EDiscoveredInfo const& info = *table->GetInfo(kInterface);
    std::vector<Value> asked;
    for (unsigned int i = 0; i < count; ++i) asked.push_back(sample(Scattered(i, count)));
    std::size_t next = 0;
    for (auto _ : state) {
        EDiscoveredNeighbor const* const found = (info.*find)(asked[next]);
        if (!found) Require(false, "a neighbour was not found");
        benchmark::DoNotOptimize(found);
        if (++next == asked.size()) next = 0;
    }
    state.SetItemsProcessed(state.iterations());
}
void FindByMac(benchmark::State& state)
{
    FindNeighbor<EMACAddress>(state, SampleMac, &EDiscoveredInfo::FindNeighborByMAC);
}
void FindByIp(benchmark::State& state)
{
    FindNeighbor<EIPAddress>(state, SampleIPv4, &EDiscoveredInfo::FindNeighborByIP);
}

/// Applies \p message, which \p undo takes back outside of the measured time, again and again.
template <class Undo>
void ApplyAgainAndAgain(benchmark::State& state, EDiscoveredTable& table, EArchive const& message, Undo undo)
{
    EBlob const bytes = message.GetAsEBlob();
    for (auto _ : state) {
        state.PauseTiming();
        EArchive archive;
        archive.SetFromEBlob(bytes, true);
        archive.SetMode(2);
        state.ResumeTiming();
        ApplyDiscoveredTableMessage(table, archive);
        state.PauseTiming();
        undo();
        state.ResumeTiming();
    }
}

/// Code 4.
void SetInterfaceUp(benchmark::State& state)
{
    auto const table = SampleNeighbors(Count(state));
    EArchive message;
    for (unsigned int i = 0; i < kBatch; ++i) message << true << 4U << kInterface << (i % 2 == 0);
    message << false;
    ApplyAgainAndAgain(state, *table, message, [] {});
    state.SetItemsProcessed(state.iterations() * kBatch);
}

/// Code 5, as many addresses as said: they are all the interface has.
void AddAddress(benchmark::State& state)
{
    unsigned int const count = Count(state);
    auto const table = SampleNeighbors(1);
    EArchive message;
    for (unsigned int i = 0; i < count; ++i) message << true << 5U << kOther << SampleIPv4(Scattered(i, count));
    message << false;
    ApplyAgainAndAgain(state, *table, message, [&] {
        Require(table->GetInfo(kOther)->GetAddressCount() == count, "not all addresses were added");
        table->AddInfo(EmptyInfo(kOther)); // replaces it
    });
    state.SetItemsProcessed(state.iterations() * count);
}

/// Code 6, of all addresses, the last first.
void RemoveAddress(benchmark::State& state)
{
    unsigned int const count = Count(state);
    auto const table = SampleNeighbors(1);
    EDiscoveredInfo full = EmptyInfo(kOther);
    for (unsigned int i = 1; i <= count; ++i) full.AddAddress(SampleIPv4(i));
    table->SetInfo(kOther, full);
    EArchive message;
    for (unsigned int i = count; i >= 1; --i) message << true << 6U << kOther << SampleIPv4(i);
    message << false;
    ApplyAgainAndAgain(state, *table, message, [&] {
        Require(table->GetInfo(kOther)->GetAddressCount() == 0, "not all addresses were removed");
        table->SetInfo(kOther, full);
    });
    state.SetItemsProcessed(state.iterations() * count);
}

/// Code 12, to neighbours far from each other: a second address each.
void AddNeighborAddress(benchmark::State& state)
{
    unsigned int const count = Count(state);
    auto const table = SampleNeighbors(count);
    unsigned int const batch = kBatch;
    EArchive message;
    for (unsigned int i = 0; i < batch; ++i) {
        unsigned int const id = Scattered(i, count);
        message << true << 12U << kInterface << id << SampleIPv6(id);
    }
    message << false;
    EDiscoveredInfo& info = *table->GetInfo(kInterface);
    ApplyAgainAndAgain(state, *table, message, [&] {
        for (unsigned int i = 0; i < batch; ++i) {
            unsigned int const id = Scattered(i, count);
            Require(info.FindNeighborByIP(SampleIPv6(id)) == info.GetNeighbor(id), "an address was not indexed");
            info.GetNeighbor(id)->RemoveAddress(SampleIPv6(id));
        }
    });
    state.SetItemsProcessed(state.iterations() * batch);
}

/// Code 13, of all addresses of one neighbour, the last first.
void RemoveNeighborAddress(benchmark::State& state)
{
    unsigned int const count = Count(state);
    auto const table = SampleNeighbors(1, false);
    EDiscoveredNeighbor full;
    for (unsigned int i = 1; i <= count; ++i) full.AddAddress(SampleIPv4(i));
    EDiscoveredInfo& info = *table->GetInfo(kInterface);
    info.SetNeighbor(1, full);
    EArchive message;
    for (unsigned int i = count; i >= 1; --i) message << true << 13U << kInterface << 1U << SampleIPv4(i);
    message << false;
    ApplyAgainAndAgain(state, *table, message, [&] {
        Require(info.GetNeighbor(1)->GetAddressCount() == 0, "not all addresses were removed");
        info.SetNeighbor(1, full);
    });
    state.SetItemsProcessed(state.iterations() * count);
}

/// Code 2 with the id 0, which looks for a default MAC among neighbours that have no address.
void LookForDefaultMAC(benchmark::State& state)
{
    auto const table = SampleNeighbors(Count(state), false);
    table->FindDefaultMAC(); // of those just added the first was taken without an address
    Require(!table->HasDefaultMAC(), "there is a default MAC");
    unsigned int const batch = 10;
    EArchive message;
    for (unsigned int i = 0; i < batch; ++i) message << true << 2U << 0U;
    message << false;
    ApplyAgainAndAgain(state, *table, message, [] {});
    state.SetItemsProcessed(state.iterations() * batch);
}

void CopyTable(benchmark::State& state)
{
    auto const table = SampleNeighbors(Count(state));
    for (auto _ : state) {
        auto copy = std::make_unique<EDiscoveredTable>(*table);
        benchmark::DoNotOptimize(copy.get());
        state.PauseTiming();
        copy.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void EmptyTable(benchmark::State& state)
{
    auto const table = SampleNeighbors(Count(state));
    for (auto _ : state) {
        state.PauseTiming();
        auto copy = std::make_unique<EDiscoveredTable>(*table);
        state.ResumeTiming();
        copy->Empty();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SwapInfos(benchmark::State& state)
{
    auto const table = SampleNeighbors(Count(state));
    EDiscoveredInfo other;
    for (auto _ : state) table->GetInfo(kInterface)->Swap(other);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(FindByMac)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(FindByIp)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(SetInterfaceUp)->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(AddAddress)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(RemoveAddress)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(AddNeighborAddress)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(RemoveNeighborAddress)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond);
BENCHMARK(LookForDefaultMAC)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyTable)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(EmptyTable)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(SwapInfos)->RangeMultiplier(10)->Range(1000, 1000000)->Unit(benchmark::kMillisecond);
