#include "hostTestSupport.hpp"

#include "eComponentId.hpp"

TEST(EComponentId, IsAPathOfLevels)
{
    EComponentId id;
    EXPECT_EQ(0U, id.GetIdSize());
    EXPECT_EQ(&id, &(id += 7));
    (id += 1) += 0xFFFFFFFF;
    EXPECT_EQ((std::vector<unsigned int>{7, 1, 0xFFFFFFFF}), id.GetId());
    EXPECT_EQ(3U, id.GetIdSize());
    EXPECT_TRUE(id == EComponentId(std::vector<unsigned int>{7, 1, 0xFFFFFFFF}));
    EXPECT_TRUE((id == EComponentId{7, 1, 0xFFFFFFFF}));
    id.Empty();
    EXPECT_TRUE(id == EComponentId());
}

TEST(EComponentId, ALevelBeyondTheLastIs0AndIsNotCreated)
{
    EComponentId const id{7, 8};
    EXPECT_EQ(7U, id[0]);
    EXPECT_EQ(8U, id[1]);
    EXPECT_EQ(0U, id[2]);
    EXPECT_EQ(0U, id[0xFFFFFFFFFFFFFFFF]);
    EXPECT_EQ(2U, id.GetIdSize());
    EXPECT_EQ(0U, EComponentId()[0]);
}

TEST(EComponentId, EqualityAndOrderGoLevelByLevel)
{
    EComponentId const ascending[] = {{}, {0}, {1}, {1, 1}, {1, 1, 5}, {1, 2}, {2}, {10}};
    for (EComponentId const& left : ascending) {
        for (EComponentId const& right : ascending) {
            EXPECT_EQ(&left == &right, left == right);
            EXPECT_EQ(&left != &right, left != right);
            EXPECT_EQ(&left < &right, left < right);
        }
    }
}

TEST(EComponentId, MatchingTypesKeepTheirNumbers)
{
    EXPECT_EQ(0, EComponentId::MATCH_EXACT);
    EXPECT_EQ(1, EComponentId::MATCH_PREFIX);
}

TEST(EComponentIdArchive, IsTheNumberOfLevelsAndTheLevels)
{
    EXPECT_EQ("00", Written(EComponentId()));
    EXPECT_EQ("040701f8fffbffffffff", Written(EComponentId{7, 1, 255, 0xFFFFFFFF}));
    EXPECT_TRUE((EComponentId{7, 1, 255, 0xFFFFFFFF} == Read<EComponentId>("040701f8fffbffffffff")));
    EXPECT_TRUE(EComponentId() == Read<EComponentId>("00"));
    ExpectRefusedWhenTruncated("040701f8fffbffffffff", EComponentId{3});
    EArchive storing;
    EComponentId read{3};
    storing >> read;
    EXPECT_TRUE(EComponentId() == read);
}

TEST(EComponentIdArchive, RefusesMoreLevelsThanBytesAndLevelsOfMoreThan32Bits)
{
    EXPECT_EQ("archive offset 0: wanted a count of at most the 2 bytes that remain, found 18446744073709551615",
              ReadError<EComponentId>("ffffffffffffffffff0101"));
    EXPECT_EQ("archive offset 2: wanted unsigned int of at most 4294967295, found 4294967296",
              ReadError<EComponentId>("0207fc0100000000"));
}
