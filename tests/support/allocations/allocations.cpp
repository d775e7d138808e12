#include "allocations.hpp"

#include <cstdlib>
#include <malloc.h>
#include <new>

long s_allocationsLeft = -1;
std::size_t s_bytesInUse = 0;

// Not inlined: g++ would take malloc and free for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (s_allocationsLeft >= 0 && s_allocationsLeft-- == 0) throw std::bad_alloc();
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (!memory) throw std::bad_alloc();
    s_bytesInUse += malloc_usable_size(memory);
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    s_bytesInUse -= malloc_usable_size(memory);
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept
{
    s_bytesInUse -= malloc_usable_size(memory);
    std::free(memory);
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
