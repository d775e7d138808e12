// The program of all benchmarks.
#include <benchmark/benchmark.h>

#include <malloc.h>

int main(int argc, char** argv)
{
    // What was once taken from the kernel stays, for ours and for theirs alike: a fresh page costs as much as several
    // records, and which of two benchmarks gets it would be chance.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    mallopt(M_TOP_PAD, 64 << 20);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
