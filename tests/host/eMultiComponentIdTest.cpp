#include "eMultiComponentId.hpp"

#include <gtest/gtest.h>

TEST(EMultiComponentId, GivesTheFirstAndTheNthIdWithoutLeaves)
{
    EMultiComponentId id(EComponentId{1, 1});
    id.AddId(EComponentId{1, 2});
    id.SetLeaves({5, 6});
    EXPECT_TRUE((EComponentId{1, 1} == id.GetId()));
    EComponentId out;
    EXPECT_TRUE(id.GetId(out));
    EXPECT_TRUE((EComponentId{1, 1} == out));
    EXPECT_TRUE(id.GetId(out, 0));
    EXPECT_TRUE((EComponentId{1, 1} == out));
    EXPECT_TRUE(id.GetId(out, 1));
    EXPECT_TRUE((EComponentId{1, 2} == out));
    EXPECT_FALSE(id.GetId(out, 2));
    EXPECT_TRUE(EComponentId() == out);
    EXPECT_EQ((std::vector<unsigned int>{5, 6}), id.GetLeaves());
}

TEST(EMultiComponentId, WithoutIdsGivesAnEmptyOne)
{
    EMultiComponentId const id;
    EXPECT_TRUE(EComponentId() == id.GetId());
    EXPECT_EQ(&id.GetId(), &EMultiComponentId().GetId());
    EComponentId out{9};
    EXPECT_FALSE(id.GetId(out));
    EXPECT_TRUE(EComponentId() == out);
    out = EComponentId{9};
    EXPECT_FALSE(id.GetId(out, 0xFFFFFFFF));
    EXPECT_TRUE(EComponentId() == out);
    EXPECT_TRUE(id.GetLeaves().empty());
}

TEST(EMultiComponentId, SetIdReplacesAllIdsAndKeepsTheLeaves)
{
    EMultiComponentId id(EComponentId{1});
    id.AddId(EComponentId{2});
    id.SetLeaves({5});
    id.SetId(id.GetId()); // its own
    EXPECT_TRUE(EComponentId{1} == id.GetId());
    EComponentId out;
    EXPECT_FALSE(id.GetId(out, 1));
    id.SetId(EComponentId{3});
    EXPECT_TRUE(EComponentId{3} == id.GetId());
    EXPECT_EQ((std::vector<unsigned int>{5}), id.GetLeaves());
    id.ClearAllIds();
    EXPECT_FALSE(id.GetId(out));
    EXPECT_EQ((std::vector<unsigned int>{5}), id.GetLeaves());
}

TEST(EMultiComponentId, EqualityComparesIdsAndLeaves)
{
    EMultiComponentId const id(EComponentId{1});
    EMultiComponentId withLeaf(EComponentId{1});
    withLeaf.SetLeaves({1});
    EMultiComponentId two(EComponentId{1});
    two.AddId(EComponentId{1});
    EXPECT_TRUE(id == EMultiComponentId(EComponentId{1}));
    EXPECT_FALSE(id != EMultiComponentId(EComponentId{1}));
    for (EMultiComponentId const& other : {withLeaf, two, EMultiComponentId(), EMultiComponentId(EComponentId{2})}) {
        EXPECT_FALSE(id == other);
        EXPECT_TRUE(id != other);
    }
}
