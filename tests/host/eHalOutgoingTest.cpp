#include "eHalOutgoing.hpp"

#include <gtest/gtest.h>

template <class Name> void ExpectGivesItsTextBack()
{
    EXPECT_EQ("", Name().GetName());
    EXPECT_EQ("DiscoveredTable", Name("DiscoveredTable").GetName());
    EXPECT_TRUE(Name("a") == Name("a"));
    EXPECT_FALSE(Name("a") != Name("a"));
    EXPECT_TRUE(Name("a") != Name("A"));
    EXPECT_FALSE(Name("a") == Name("A"));
}

TEST(EHalOutgoing, NamesGiveTheirTextBack)
{
    ExpectGivesItsTextBack<eHal::EProtocolName>();
    ExpectGivesItsTextBack<eHal::ETableName>();
}
