#pragma once

#include <cstddef>
#include <cstring>
#include <stdexcept>

/// The slot of a virtual operation in the table of its class, from 0 on; 0 and 1 are the destructor's.
/// Itanium C++ ABI, 2.3: a pointer to a virtual member holds 1 + the slot's offset in bytes, and no adjustment.
template <class Pointer> std::size_t SlotOf(Pointer member)
{
    std::size_t words[2];
    static_assert(sizeof words == sizeof member);
    std::memcpy(words, &member, sizeof words);
    if (words[0] % sizeof(void*) != 1 || words[1] != 0) throw std::invalid_argument("not a virtual operation");
    return (words[0] - 1) / sizeof(void*);
}
