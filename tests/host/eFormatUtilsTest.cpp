#include "eFormatUtils.hpp"

#include <gtest/gtest.h>

TEST(EFormatUtils, GetEDWORDAsFormattedStringJoinsTheLowBytes)
{
    struct {
        unsigned int value;
        unsigned int bytes;
        char const* separator;
        char const* text;
    } const cases[] = {{0x0102ABCD, 0, ".", ""},
                       {0x0102ABCD, 1, ".", "cd"},
                       {0x0102ABCD, 3, ".", "02.ab.cd"},
                       {0x0102ABCD, 4, "", "0102abcd"},
                       {0x0102ABCD, 4, ", ", "01, 02, ab, cd"},
                       {0x0102ABCD, 9, ":", "01:02:ab:cd"},
                       {0, 3, ".", "00.00.00"},
                       {0xFFFFFFFF, 0xFFFFFFFF, "", "ffffffff"}};
    for (auto const& c : cases)
        EXPECT_EQ(c.text, EFormatUtils::GetEDWORDAsFormattedString(c.value, c.bytes, c.separator));
}

TEST(EFormatUtils, GetInt64AsFormattedStringJoinsTheLowBytes)
{
    struct {
        unsigned long value;
        unsigned int bytes;
        char const* separator;
        char const* text;
    } const cases[] = {{0x0123456789ABCDEF, 0, " ", ""},
                       {0x0123456789ABCDEF, 1, " ", "ef"},
                       {0x0123456789ABCDEF, 5, "-", "67-89-ab-cd-ef"},
                       {0x0123456789ABCDEF, 8, " ", "01 23 45 67 89 ab cd ef"},
                       {0x0123456789ABCDEF, 9, " ", "01 23 45 67 89 ab cd ef"},
                       {0, 8, "", "0000000000000000"}};
    for (auto const& c : cases)
        EXPECT_EQ(c.text, EFormatUtils::GetInt64AsFormattedString(c.value, c.bytes, c.separator));
}
