#include "hostTestSupport.hpp"

#include "eUniqueIDGenerator.hpp"

TEST(EUniqueIDGenerator, StartsAt1AndAscends)
{
    EUniqueIDGenerator generator;
    for (unsigned int id = 1; id < 5; ++id) EXPECT_EQ(id, generator.Next());
    EUniqueIDGenerator copy(generator);
    EXPECT_EQ(5U, copy.Next());
    EXPECT_EQ(5U, generator.Next());
}

TEST(EUniqueIDGenerator, SkipPastMakesLaterIdsGreaterAndNeverSmaller)
{
    struct {
        unsigned int skipped;
        unsigned int next;
    } const cases[] = {{0, 3}, {1, 3}, {2, 3}, {3, 4}, {4, 5}, {1000, 1001}, {0xFFFFFFFE, 0xFFFFFFFF}, {0xFFFFFFFF, 0}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.skipped);
        EUniqueIDGenerator generator;
        generator.SkipPast(2);
        generator.SkipPast(c.skipped);
        EXPECT_EQ(c.next, generator.Next());
    }
}

TEST(EUniqueIDGenerator, StaysUsedUp)
{
    EUniqueIDGenerator generator;
    generator.SkipPast(0xFFFFFFFE);
    EXPECT_EQ(0xFFFFFFFF, generator.Next());
    EXPECT_EQ(0U, generator.Next());
    EXPECT_EQ(0U, generator.Next());
    generator.SkipPast(5);
    EXPECT_EQ(0U, generator.Next());
    EXPECT_EQ("00", Written(generator));
    EXPECT_EQ(0U, Read<EUniqueIDGenerator>("00").Next());
}

TEST(EUniqueIDGeneratorArchive, IsTheNextId)
{
    EUniqueIDGenerator generator;
    EXPECT_EQ("01", Written(generator));
    generator.SkipPast(0x1233);
    EXPECT_EQ("f91234", Written(generator));
    EXPECT_EQ(0x1234U, Read<EUniqueIDGenerator>("f91234").Next());
    EXPECT_EQ("archive offset 0: wanted unsigned int of at most 4294967295, found 4294967296",
              ReadError("fc0100000000", generator));
    EXPECT_EQ(0x1234U, generator.Next()); // kept
    EArchive smaller = Reading("05");
    smaller >> generator;
    EXPECT_EQ(5U, generator.Next());
    EArchive storing;
    storing >> generator;
    EXPECT_EQ(1U, generator.Next());
}
