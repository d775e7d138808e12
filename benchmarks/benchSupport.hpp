#pragma once

#include "sampleTable.hpp"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <stdexcept>

/// How many interfaces a benchmark was asked for.
inline unsigned int Count(benchmark::State const& state)
{
    return static_cast<unsigned int>(state.range(0));
}

/// Ends the program when a benchmark does not do what it claims to measure.
inline void Require(bool condition, char const* what)
{
    if (!condition) throw std::runtime_error(what);
}

/// Joins what was freed to large pieces, as the next large allocation otherwise would, whosever it is: destroying one
/// benchmark's table must not be paid by the next.
inline void SettleHeap()
{
    void* large = std::malloc(1 << 20);
    benchmark::DoNotOptimize(large); // else the compiler leaves both calls out
    std::free(large);
}

/// SampleTable(count), made once and kept. What is changed in it must be changed back.
EInterfaceTable& KeptSample(unsigned int count);

/// The archive of KeptSample(count), made once and kept.
EBlob const& KeptArchive(unsigned int count);
