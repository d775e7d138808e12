#include "bounds.hpp"

#include "require.hpp"

#include <algorithm>
#include <cstdio>
#include <ctime>

// Of the sanitizers' runtime, where there is one.
extern "C" [[gnu::weak]] int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(void const volatile*, size_t),
                                                                       void (*freeing)(void const volatile*));
extern "C" [[gnu::weak]] size_t __sanitizer_get_allocated_size(void const volatile* memory);

namespace {

// Of the thread that handles the inputs; the fuzzer has others.
thread_local bool bounded = false;
thread_local std::size_t inputSize = 0;
thread_local long inUse = 0;     // bytes of the heap more than before the input
thread_local double seconds = 0; // that it has taken

double mostSeconds = 0;
long mostBytes = 0;

void Allocated(void const volatile*, size_t size)
{
    inUse += static_cast<long>(size);
    if (!bounded) return;
    mostBytes = std::max(mostBytes, inUse);
    if (inUse <= static_cast<long>(kMostBytes + kBytesPerByte * inputSize)) return;
    bounded = false;
    Require(false, "an input takes no more memory than its bound");
}

void Freeing(void const volatile* memory)
{
    if (memory) inUse -= static_cast<long>(__sanitizer_get_allocated_size(memory));
}

bool InstallCounters()
{
    return __sanitizer_install_malloc_and_free_hooks &&
           __sanitizer_install_malloc_and_free_hooks(Allocated, Freeing) != 0;
}

double ProcessorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

} // namespace

void BeginInput(std::size_t size)
{
    static bool const installed = InstallCounters();
    static_cast<void>(installed);
    inputSize = size;
    inUse = 0;
    seconds = 0;
}

Bounded::Bounded() : m_start(ProcessorSeconds())
{
    bounded = true;
}

Bounded::~Bounded()
{
    bounded = false;
    seconds += ProcessorSeconds() - m_start;
    mostSeconds = std::max(mostSeconds, seconds);
    Require(seconds <= kMostSeconds, "an input takes no more time than its bound");
}

void PrintMost()
{
    std::fprintf(stderr, "most for one input: %.3f s, %.1f KiB\n", mostSeconds, static_cast<double>(mostBytes) / 1024);
}
