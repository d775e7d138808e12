#include "hostTestSupport.hpp"

#include "eVLANIPAddressTableItemProperties.hpp"

using Properties = EVLANIPAddressTableItemProperties;

static Properties Sample()
{
    Properties properties(2, true);
    properties.SetVlanTag(0xB064, 0); // priority 5, CFI 1, id 100
    properties.SetVlanTag(0x0007, 1);
    return properties;
}

TEST(EVLANIPAddressTableItemProperties, HoldsNoLevelByDefault)
{
    for (Properties const& properties : {Properties(), Properties(0, false)}) {
        EXPECT_FALSE(properties.IsEnabled());
        EXPECT_EQ(0U, properties.GetVLANCount());
    }
    Properties const three(3, true);
    EXPECT_TRUE(three.IsEnabled());
    EXPECT_EQ(3U, three.GetVLANCount());
    for (unsigned int level = 0; level < 3; ++level) EXPECT_EQ(0U, three.GetVlanTag(level));
}

TEST(EVLANIPAddressTableItemProperties, ReadsThePartsOfATag)
{
    struct {
        unsigned int given;
        unsigned int tag;
        unsigned int priority;
        int canonical;
        unsigned int id;
    } const cases[] = {{0, 0, 0, 0, 0},           {0x0FFF, 0x0FFF, 0, 0, 4095},    {0x1000, 0x1000, 0, 1, 0},
                       {0x2000, 0x2000, 1, 0, 0}, {0xB064, 0xB064, 5, 1, 100},     {0xFFFF, 0xFFFF, 7, 1, 4095},
                       {0x10001, 1, 0, 0, 1},     {0xFFFFFFFF, 0xFFFF, 7, 1, 4095}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.given);
        Properties properties(1, true);
        properties.SetVlanTag(c.given, 0);
        EXPECT_EQ(c.tag, properties.GetVlanTag(0));
        EXPECT_EQ(c.priority, properties.GetUserPriority(0));
        EXPECT_EQ(c.canonical, properties.GetCanonicalFormat(0));
        EXPECT_EQ(c.id, properties.GetVLANID(0));
    }
}

TEST(EVLANIPAddressTableItemProperties, SettersKeepTheOtherBitsAndCutToTheirWidth)
{
    struct {
        unsigned int before;
        unsigned short id;
        unsigned char priority;
        unsigned int afterId;
        unsigned int afterPriority;
    } const cases[] = {{0x0000, 4095, 7, 0x0FFF, 0xE000},
                       {0xFFFF, 0, 0, 0xF000, 0x1FFF},
                       {0x0000, 0xF123, 0xF9, 0x0123, 0x2000},
                       {0xB064, 1, 2, 0xB001, 0x5064}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.before);
        Properties properties(1, true);
        properties.SetVlanTag(c.before, 0);
        properties.SetVLANID(c.id, 0);
        EXPECT_EQ(c.afterId, properties.GetVlanTag(0));
        properties.SetVlanTag(c.before, 0);
        properties.SetUserPriority(c.priority, 0);
        EXPECT_EQ(c.afterPriority, properties.GetVlanTag(0));
    }
}

TEST(EVLANIPAddressTableItemProperties, BeyondTheLastLevelGettersAnswer0AndSettersDoNothing)
{
    for (unsigned int level : {2U, 3U, 0xFFFFFFFFU}) {
        Properties properties = Sample();
        properties.SetVlanTag(1, level);
        properties.SetVLANID(1, level);
        properties.SetUserPriority(1, level);
        EXPECT_TRUE(properties == Sample());
        EXPECT_EQ(0U, properties.GetVlanTag(level));
        EXPECT_EQ(0U, properties.GetVLANID(level));
        EXPECT_EQ(0U, properties.GetUserPriority(level));
        EXPECT_EQ(0, properties.GetCanonicalFormat(level));
    }
}

TEST(EVLANIPAddressTableItemProperties, SetVLANCountKeepsWhatStaysAndFillsWithZeros)
{
    Properties properties = Sample();
    properties.SetVLANCount(3);
    EXPECT_EQ(3U, properties.GetVLANCount());
    EXPECT_EQ(0xB064U, properties.GetVlanTag(0));
    EXPECT_EQ(7U, properties.GetVlanTag(1));
    EXPECT_EQ(0U, properties.GetVlanTag(2));
    properties.SetVLANCount(1);
    properties.SetVLANCount(2);
    EXPECT_EQ(0xB064U, properties.GetVlanTag(0));
    EXPECT_EQ(0U, properties.GetVlanTag(1));
    EXPECT_TRUE(properties.IsEnabled());
    properties.Empty();
    EXPECT_TRUE(properties == Properties());
}

TEST(EVLANIPAddressTableItemProperties, AStackMayBeOfAnyDepth)
{
    for (unsigned int levels = 0; levels <= 8; ++levels) {
        SCOPED_TRACE(levels);
        Properties properties(levels, true);
        for (unsigned int level = 0; level < 10; ++level) properties.SetVlanTag(0x1001 + level, level);
        EXPECT_EQ(levels, properties.GetVLANCount());
        for (unsigned int level = 0; level < 10; ++level)
            EXPECT_EQ(level < levels ? 0x1001 + level : 0, properties.GetVlanTag(level));
        for (unsigned int fewer = 0; fewer <= levels; ++fewer) {
            SCOPED_TRACE(fewer);
            Properties changed = properties;
            changed.SetVLANCount(fewer);
            EXPECT_EQ(fewer, changed.GetVLANCount());
            EXPECT_EQ(fewer == levels, changed == properties);
            changed.SetVLANCount(levels);
            for (unsigned int level = 0; level < levels; ++level)
                EXPECT_EQ(level < fewer ? 0x1001 + level : 0, changed.GetVlanTag(level));
        }
        if (levels == 0) continue;
        Properties other = properties;
        EXPECT_TRUE(other == properties);
        other.SetVLANID(9, levels - 1);
        EXPECT_TRUE(other != properties);
        other.SetVLANID(static_cast<unsigned short>(levels), levels - 1);
        EXPECT_TRUE(other == properties);
    }
}

TEST(EVLANIPAddressTableItemProperties, EqualityComparesSwitchCountAndTags)
{
    Properties disabled = Sample();
    disabled.SetEnabled(false);
    Properties longer = Sample();
    longer.SetVLANCount(3);
    Properties otherTag = Sample();
    otherTag.SetVLANID(8, 1);
    Properties const all[] = {Sample(), disabled, longer, otherTag, Properties()};
    for (Properties const& left : all) {
        for (Properties const& right : all) {
            EXPECT_EQ(&left == &right, left == right);
            EXPECT_EQ(&left != &right, left != right);
        }
    }
}

TEST(EVLANIPAddressTableItemPropertiesArchive, IsTheSwitchTheCountAndTheTags)
{
    EXPECT_EQ("0000", Written(Properties()));
    EXPECT_EQ("0102f9b06407", Written(Sample()));
    EXPECT_TRUE(Sample() == Read<Properties>("0102f9b06407"));
    EXPECT_TRUE(Properties(3, false) == Read<Properties>("0003000000"));
    ExpectRefusedWhenTruncated("0102f9b06407", Properties(1, true));
    Properties five(5, false);
    for (unsigned int level = 0; level < 5; ++level) five.SetVlanTag(level + 1, level);
    EXPECT_EQ("00050102030405", Written(five));
    EXPECT_TRUE(five == Read<Properties>("00050102030405"));
    ExpectRefusedWhenTruncated("00050102030405", Properties(1, true));
    EArchive storing;
    Properties read = Sample();
    storing >> read;
    EXPECT_TRUE(Properties() == read);
}

TEST(EVLANIPAddressTableItemPropertiesArchive, RefusesWrongValuesAndKeepsWhatWasThere)
{
    struct {
        char const* bytes;
        char const* message;
    } const cases[] = {
        {"0200", "archive offset 0: wanted bool of at most 1, found 2"},
        {"01ffffffffffffffffff0000",
         "archive offset 1: wanted a count of at most the 2 bytes that remain, found 18446744073709551615"},
        {"0101fa010000", "archive offset 2: wanted unsigned short of at most 65535, found 65536"}};
    for (auto const& c : cases) {
        Properties properties = Sample();
        EXPECT_EQ(c.message, ReadError(c.bytes, properties));
        EXPECT_TRUE(properties == Sample());
    }
}
