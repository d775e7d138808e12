#include "guarded.hpp"

#include "bounds.hpp"

#include "eArchive.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

/// Reading past the end.
void Read()
{
    EArchive archive;
    archive.SetMode(2);
    unsigned int value = 0;
    archive >> value;
}

/// \p size bytes at once, in two pieces.
void Allocate(std::size_t size)
{
    std::vector<char> const first(size / 2);
    std::vector<char> const second(size / 2);
}

} // namespace

TEST(RunGuarded, SaysHowTheBodyEnded)
{
    BeginInput(0);
    EXPECT_EQ(Ending::done, RunGuarded([] {}));
    EXPECT_EQ(Ending::archiveError, RunGuarded(Read));
    EXPECT_EQ(Ending::fatal, RunGuarded([] { std::exit(1); }));
    EXPECT_EQ(Ending::fatal, RunGuarded([] { EArchiveFatal("file", 1, "function"); }));
    EXPECT_THROW(RunGuarded([] { throw std::logic_error("a mistake"); }), std::logic_error);
}

TEST(RunGuarded, DestroysWhatTheBodyHoldsWhenItExits)
{
    BeginInput(0);
    auto const held = std::make_shared<int>(1);
    EXPECT_EQ(Ending::fatal, RunGuarded([copy = held] {
                  std::shared_ptr<int> const second = copy;
                  EArchiveFatal("file", 1, "function");
              }));
    EXPECT_EQ(1, held.use_count());
}

TEST(RunGuardedDeathTest, ExitEndsTheProcessOutsideOfABody)
{
    EXPECT_EXIT(
        {
            RunGuarded([] {});
            std::exit(3);
        },
        testing::ExitedWithCode(3), "");
}

TEST(RunGuardedDeathTest, AbortsAboveTheBoundOfMemory)
{
    std::size_t const inputSize = 1 << 10;
    std::size_t const most = kMostBytes + kBytesPerByte * inputSize;
    BeginInput(inputSize);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(Ending::done, RunGuarded([] { Allocate(kMostBytes); })); // all is given back
    EXPECT_DEATH(RunGuarded([most] { Allocate(most + 2); }), "broken: an input takes no more memory than its bound");
    EXPECT_DEATH(
        {
            BeginInput(0);
            std::vector<char> const before(kMostBytes / 2); // outside of the body, for the same input
            RunGuarded([] { Allocate(kMostBytes / 2 + 2); });
        },
        "broken: an input takes no more memory than its bound");
    Allocate(kMostBytes + 2); // what the checks of a target take does not count
}

TEST(RunGuardedDeathTest, AbortsAboveTheBoundOfTime)
{
    EXPECT_DEATH(
        {
            BeginInput(0);
            for (;;) RunGuarded([] { Allocate(1 << 20); });
        },
        "broken: an input takes no more time than its bound");
}
