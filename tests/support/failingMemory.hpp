#pragma once

#include "allocations.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

// Operations with each of their allocations failing in turn. For programs that link test_allocations.

/// What an operation leaves behind when memory fails.
enum class WhenMemoryFails {
    UNCHANGED,  ///< What was there; no observer was told of anything.
    CONSISTENT, ///< Something whole: what was done before stays done.
};

/// An operation on a fixture, which offers
/// - `std::string State()`: all that can be seen of it;
/// - `char const* Broken()`: the first of its rules that does not hold, null when all do;
/// - `long Told()`: how often an observer that never fails was told of something, behind all others.
template <class Fixture> struct MemoryCase {
    char const* name;
    WhenMemoryFails guarantee;
    std::function<void(Fixture&)> run;
};

/// What an operation did while memory failed.
struct MemoryOutcome {
    bool threw = false;
    bool refused = false; ///< Whether an allocation failed at all.
};

/// Runs \p run with so many allocations granted. Any exception but `std::bad_alloc` passes.
template <class Run> MemoryOutcome RunWithMemory(long granted, bool failOn, Run const& run)
{
    MemoryOutcome outcome;
    GrantedAllocations const allocations(granted, failOn);
    try {
        run();
    } catch (std::bad_alloc const&) {
        outcome.threw = true;
    }
    outcome.refused = allocations.Refused() > 0;
    return outcome;
}

/// One operation on a fixture of its own for each of its allocations, which fails, alone or with all behind it. What
/// it leaves behind is as the case says and leaks nothing; an operation that did without is as good as one with memory.
template <class Fixture>
void ExpectEachFailureAnswered(MemoryCase<Fixture> const& c, std::function<Fixture*()> const& make)
{
    SCOPED_TRACE(c.name);
    std::string before;
    std::string after;
    long told = 0;
    {
        std::unique_ptr<Fixture> const fixture(make());
        before = fixture->State();
        ASSERT_STREQ(nullptr, fixture->Broken());
        c.run(*fixture); // with memory; what the process makes once is there from now on
        told = fixture->Told();
        after = fixture->State();
        ASSERT_STREQ(nullptr, fixture->Broken());
    }
    for (bool const failOn : {false, true}) {
        SCOPED_TRACE(failOn ? "all fail from there on" : "one fails");
        bool refused = true;
        for (long granted = 0; refused; ++granted) {
            SCOPED_TRACE(granted);
            long const live = s_liveAllocations;
            {
                std::unique_ptr<Fixture> const fixture(make());
                MemoryOutcome const outcome = RunWithMemory(granted, failOn, [&] { c.run(*fixture); });
                refused = outcome.refused;
                std::string const left = fixture->State();
                ASSERT_STREQ(nullptr, fixture->Broken());
                if (!outcome.threw) {
                    ASSERT_EQ(told, fixture->Told());
                    ASSERT_TRUE(after == left) << "not done, and nothing thrown";
                } else if (c.guarantee == WhenMemoryFails::UNCHANGED) {
                    ASSERT_EQ(0, fixture->Told()) << "told of what was not done";
                    ASSERT_TRUE(before == left) << "changed";
                }
            }
            ASSERT_EQ(live, s_liveAllocations) << "leaked";
            ASSERT_LT(granted, 100000);
        }
    }
}

template <class Fixture>
void ExpectEachFailureAnswered(std::vector<MemoryCase<Fixture>> const& cases, std::function<Fixture*()> const& make)
{
    for (MemoryCase<Fixture> const& c : cases) ExpectEachFailureAnswered(c, make);
}
