#pragma once

#include <cstddef>

// The allocations of this test program, all of which allocations.cpp makes.

extern long s_allocationsLeft;   ///< Still granted before one fails with `std::bad_alloc`; negative: all are.
extern std::size_t s_bytesInUse; ///< As the allocator rounds them up.
