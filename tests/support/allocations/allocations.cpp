#include "allocations.hpp"

#include <cstdlib>
#include <dlfcn.h>
#include <malloc.h>
#include <new>

long s_allocationsLeft = -1;
bool s_allocationsFailOn = false;
long s_allocationsRefused = 0;
long s_liveAllocations = 0;
std::size_t s_bytesInUse = 0;
std::size_t s_mostInUse = 0;

/// Whether the next allocation is granted.
static bool Granted()
{
    if (s_allocationsLeft < 0) return true;
    if (s_allocationsLeft > 0) {
        --s_allocationsLeft;
        return true;
    }
    if (!s_allocationsFailOn) s_allocationsLeft = -1;
    ++s_allocationsRefused;
    return false;
}

static void Release(void* memory) noexcept
{
    if (memory) --s_liveAllocations;
    s_bytesInUse -= malloc_usable_size(memory);
    std::free(memory);
}

// Not inlined: g++ would take malloc and free for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (!Granted()) throw std::bad_alloc();
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (!memory) throw std::bad_alloc();
    ++s_liveAllocations;
    s_bytesInUse += malloc_usable_size(memory);
    if (s_bytesInUse > s_mostInUse) s_mostInUse = s_bytesInUse;
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    Release(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    Release(memory);
}

// Those of arrays too: a sanitizer has its own, which do not ask for the ones above.
void* operator new[](std::size_t size)
{
    return operator new(size);
}
void operator delete[](void* memory) noexcept
{
    operator delete(memory);
}
void operator delete[](void* memory, std::size_t size) noexcept
{
    operator delete(memory, size);
}

/// What large archives grow by. Granted like the others, but not counted as live: it is not known what frees it.
extern "C" void* realloc(void* memory, std::size_t size) noexcept
{
    using Reallocation = void* (*)(void*, std::size_t);
    static auto const next = reinterpret_cast<Reallocation>(dlsym(RTLD_NEXT, "realloc"));
    return Granted() ? next(memory, size) : nullptr;
}
