#include "hostTestSupport.hpp"

#include "eUID.hpp"

#include <stdexcept>

TEST(EUID, IsA64BitNumber)
{
    EXPECT_EQ(0U, EUID().GetAsUint64());
    EUID const uid(0x0123456789ABCDEF);
    EXPECT_EQ(0x0123456789ABCDEFU, uid.GetAsUint64());
    EXPECT_EQ("efcdab8967452301", EBlob(uid.GetId(), 8).GetHexString()); // as it lies in memory
    EXPECT_EQ(0xFFFFFFFFFFFFFFFFU, EUID(0xFFFFFFFFFFFFFFFF).GetAsUint64());
}

TEST(EUID, TextIs8BytesJoinedByColons)
{
    EXPECT_EQ("00:00:00:00:00:00:00:00", EUID().GetAsString());
    EXPECT_EQ("01:23:45:67:89:ab:cd:ef", EUID(0x0123456789ABCDEF).GetAsString());
    EXPECT_EQ(0x0123456789ABCDEFU, EUID("01:23:45:67:89:AB:cd:ef").GetAsUint64());
    EXPECT_EQ(0x0123456789ABCDEFU, EUID("1-23-45-67-89-ab-cd-ef").GetAsUint64());
    for (char const* text : {"", "1", "01:23:45:67:89:ab:cd", "01:23:45:67:89:ab:cd:ef:01", "0123456789abcdef",
                             "01:23:45-67:89:ab:cd:ef", "01:23:45:67:89:ab:cd:eg"})
        EXPECT_THROW(EUID{std::string(text)}, std::invalid_argument) << text;
}

TEST(EUID, EmptySwapAndEquality)
{
    EUID one(1);
    EUID two(2);
    EXPECT_TRUE(one != two);
    EXPECT_FALSE(one == two);
    one.Swap(two);
    EXPECT_EQ(2U, one.GetAsUint64());
    EXPECT_EQ(1U, two.GetAsUint64());
    one.Empty();
    EXPECT_TRUE(one == EUID());
    EXPECT_FALSE(one != EUID());
}

TEST(EUIDArchive, IsTheNumber)
{
    EXPECT_EQ("00", Written(EUID()));
    EXPECT_EQ("ff0123456789abcdef", Written(EUID(0x0123456789ABCDEF)));
    EXPECT_EQ(0x0123456789ABCDEFU, Read<EUID>("ff0123456789abcdef").GetAsUint64());
    ExpectRefusedWhenTruncated("ff0123456789abcdef", EUID(5));
    EArchive storing;
    EUID read(5);
    storing >> read;
    EXPECT_TRUE(EUID() == read);
}
