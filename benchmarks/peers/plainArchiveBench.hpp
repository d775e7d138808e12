#pragma once

#include "plainRecords.hpp"
#include "rawBuffer.hpp"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

// Saving and loading plain records with a library: `Library` has Save(std::streambuf&, plain::Table const&) and
// Load(std::streambuf&, plain::Table&).

/// Room for the largest archive of that many interfaces.
inline std::vector<char> Room(unsigned int interfaces)
{
    return std::vector<char>(4096 + std::size_t{2048} * interfaces);
}

template <class Library> void SavePlain(benchmark::State& state)
{
    plain::Table const table = plain::PlainTable(KeptSample(Count(state)));
    std::vector<char> room = Room(Count(state));
    std::size_t size = 0;
    for (auto _ : state) {
        RawBuffer out(room);
        Library::Save(out, table);
        size = out.Written();
        benchmark::DoNotOptimize(room.data());
    }
    state.counters["bytes"] = static_cast<double>(size) / Count(state);
}

template <class Library> void LoadPlain(benchmark::State& state)
{
    std::vector<char> room = Room(Count(state));
    RawBuffer out(room);
    Library::Save(out, plain::PlainTable(KeptSample(Count(state))));
    auto const load = [&room, &out] {
        auto table = std::make_unique<plain::Table>();
        RawBuffer in(room.data(), out.Written());
        Library::Load(in, *table);
        return table;
    };
    load(); // takes the memory from the kernel
    SettleHeap();
    for (auto _ : state) {
        auto table = load();
        state.PauseTiming();
        Require(table->interfaces.size() == Count(state), "interfaces are missing");
        table.reset();
        SettleHeap();
        state.ResumeTiming();
    }
}
