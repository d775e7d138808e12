#pragma once

#include <cstddef>

// The allocations of this test program, which allocations.cpp makes: those of operator new, and those of realloc, which
// are granted like them but neither live nor in use as far as it knows.

extern long s_allocationsLeft;    ///< Still granted before one fails with `std::bad_alloc`; negative: all are.
extern bool s_allocationsFailOn;  ///< Whether all behind the first that fails do so too, until more are granted again.
extern long s_allocationsRefused; ///< How many have failed.
extern long s_liveAllocations;    ///< Not released yet.
extern std::size_t s_bytesInUse;  ///< As the allocator rounds them up.
extern std::size_t s_mostInUse;   ///< The largest s_bytesInUse since a test set it.

/// Grants so many allocations, as long as it lives.
class GrantedAllocations {
public:
    explicit GrantedAllocations(long granted, bool failOn = false) : m_refused(s_allocationsRefused)
    {
        s_allocationsFailOn = failOn;
        s_allocationsLeft = granted;
    }
    GrantedAllocations(GrantedAllocations const&) = delete;
    GrantedAllocations& operator=(GrantedAllocations const&) = delete;
    ~GrantedAllocations()
    {
        s_allocationsLeft = -1;
        s_allocationsFailOn = false;
    }
    long Refused() const { return s_allocationsRefused - m_refused; }

private:
    long m_refused; // before
};
