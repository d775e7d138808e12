#include "eFCoECompanions.hpp"

#include "fibreChannelRecords.hpp"

#include <limits>

static char const kFile[] = "x86_64/common/ifcore/eFCoEConfig.cpp";

TEST(ENSRegOption, DefaultsToOptions5AndNoNames)
{
    ENSRegOption option;
    EXPECT_EQ(0x0005, option.GetOptions());
    EXPECT_EQ("", option.GetRspnIdName());
    EXPECT_EQ("", option.GetRsnnNnName());
    EXPECT_EQ("", option.GetExtraName());
}

TEST(ENSRegOption, SetOptionEnabledSetsOrClearsTheGivenBitsOnly)
{
    struct {
        unsigned short given;
        unsigned short bits;
        bool enabled;
        unsigned short stored;
    } const cases[] = {
        {0x0005, 0x0002, true, 0x0007},  {0x0005, 0x0001, true, 0x0005},  {0x0005, 0x0001, false, 0x0004},
        {0x0005, 0x0002, false, 0x0005}, {0x0000, 0x8001, true, 0x8001},  {0xFFFF, 0x8001, false, 0x7FFE},
        {0x0005, 0x0000, true, 0x0005},  {0x0005, 0x0000, false, 0x0005},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.given << " " << c.bits << " " << c.enabled);
        ENSRegOption option;
        option.SetOptions(c.given);
        option.SetOptionEnabled(static_cast<ENSRegOption::eRegOptions>(c.bits), c.enabled);
        EXPECT_EQ(c.stored, option.GetOptions());
    }
}

TEST(ENSRegOption, IsOptionEnabledWhenAnyOfTheBitsIsSet)
{
    struct {
        unsigned short given;
        unsigned short bits;
        bool enabled;
    } const cases[] = {{0x0005, 0x0001, true}, {0x0005, 0x0002, false}, {0x0005, 0x0006, true},
                       {0x8000, 0x8000, true}, {0xFFFF, 0x0000, false}, {0x0000, 0xFFFF, false}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.given << " " << c.bits);
        ENSRegOption option;
        option.SetOptions(c.given);
        EXPECT_EQ(c.enabled, option.IsOptionEnabled(static_cast<ENSRegOption::eRegOptions>(c.bits)));
    }
}

TEST(EPLOGIDestination, DefaultsToDisabledAndZero)
{
    EPLOGIDestination destination;
    EXPECT_FALSE(destination.IsEnabled());
    EXPECT_EQ(0, destination.GetDestMode());
    EXPECT_EQ(0u, destination.GetDestNodeId());
    EXPECT_EQ(EUID(), destination.GetWWPN());
}

TEST(EPLOGIDestination, ShowsItsModeByNameAndAnUnknownModeAsNothing)
{
    struct {
        int mode;
        char const* text;
    } const cases[] = {{0, "destid"},
                       {1, "wwpn"},
                       {2, ""},
                       {-1, ""},
                       {std::numeric_limits<int>::min(), ""},
                       {std::numeric_limits<int>::max(), ""}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.mode);
        EPLOGIDestination destination;
        destination.SetDestMode(c.mode);
        EXPECT_EQ(c.mode, destination.GetDestMode());
        EXPECT_EQ(c.text, destination.GetDestModeAsString());
    }
}

TEST(EPLOGIDestination, ShowsItsNodeIdAsThreeBytesAndItsPortNameAsEight)
{
    EPLOGIDestination destination;
    EXPECT_EQ("00.00.00", destination.GetDestNodeIdAsString());
    EXPECT_EQ("00 00 00 00 00 00 00 00", destination.GetWWPNAsString());
    destination.SetDestNodeId(0xFE01B669); // only 24 bits are shown, all are held
    destination.SetWWPN(EUID(0x50014380AABB0044));
    EXPECT_EQ(0xFE01B669, destination.GetDestNodeId());
    EXPECT_EQ("01.b6.69", destination.GetDestNodeIdAsString());
    EXPECT_EQ("50 01 43 80 aa bb 00 44", destination.GetWWPNAsString());
}

TEST(EFCNSQuery, DefaultsToGetAllNextAndTheValueOfASingleSpace)
{
    EFCNSQuery query;
    EXPECT_FALSE(query.GetFlag());
    EXPECT_EQ(0x0100, query.GetCommand());
    EXPECT_EQ(1, query.GetRequestObject());
    EXPECT_EQ(" ", query.GetRequestObjectValue());
}

TEST(EFCNSQuery, ForceValidKeepsTheLastBytesThatTheRequestObjectHolds)
{
    struct {
        int object;
        char const* given;
        char const* stored;
    } const cases[] = {
        {1, "0A 0B 0C 0D", "0b0c0d"},    // 3 bytes
        {1, " 0A:0B-0C ", " 0A:0B-0C "}, // short enough: as typed, white space included
        {1, " ", " "},
        {1, "", ""},
        {3, "0A 0B 0C 0D", "0d"}, // 1 byte
        {3, "\t0D", "\t0D"},
        {0, "0A", ""}, // none
        {0, "A", ""},
        {0, " ", " "},
        {0, "", ""},
        {2, "01 02 03 04 05 06 07 08 09", "0203040506070809"}, // 8 bytes
        {2, "01 02 03 04 05 06 07 08\n", "01 02 03 04 05 06 07 08\n"},
        {-1, "010203040506070809", "0203040506070809"},
        {4, "0102030405060708FF", "02030405060708ff"},
        {1, "no digits", "no digits"}, // parses to no byte
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.object << " \"" << c.given << "\"");
        EFCNSQuery query;
        query.SetRequestObject(c.object);
        query.SetRequestObjectValue(c.given);
        query.ForceValid();
        EXPECT_EQ(c.stored, query.GetRequestObjectValue());
        EXPECT_EQ(c.object, query.GetRequestObject());
    }
}

// Copying, swapping and comparing are the same for the three.
template <class Record> static void ExpectPlainValue(Record const& sample)
{
    Record const copied(sample);
    EXPECT_FALSE(copied != sample);
    EXPECT_TRUE(Record() != sample);

    Record assigned;
    assigned = sample;
    EXPECT_FALSE(assigned != sample);
    Record const& itself = assigned;
    assigned = itself;
    EXPECT_FALSE(assigned != sample);

    Record target;
    target.Copy(sample);
    EXPECT_FALSE(target != sample);

    Record other;
    other.Swap(target);
    EXPECT_FALSE(other != sample);
    EXPECT_FALSE(target != Record());
}

TEST(EFCoECompanions, AreCopiedAndSwappedWithAllTheirFields)
{
    ExpectPlainValue(SampleNSRegOption());
    ExpectPlainValue(SamplePLOGIDestination());
    ExpectPlainValue(SampleFCNSQuery());
}

TEST(EFCoECompanions, AreComparedInAllTheirFields)
{
    ExpectEachChangeCompared(ENSRegOption(), {
                                                 [](auto& option) { option.SetOptions(4); },
                                                 [](auto& option) { option.SetRspnIdName("a"); },
                                                 [](auto& option) { option.SetRsnnNnName("a"); },
                                                 [](auto& option) { option.SetExtraName("a"); },
                                             });
    ExpectEachChangeCompared(EPLOGIDestination(), {
                                                      [](auto& destination) { destination.SetEnabled(true); },
                                                      [](auto& destination) { destination.SetDestMode(1); },
                                                      [](auto& destination) { destination.SetDestNodeId(0x01000000); },
                                                      [](auto& destination) { destination.SetWWPN(EUID(1)); },
                                                  });
    ExpectEachChangeCompared(EFCNSQuery(), {
                                               [](auto& query) { query.SetFlag(true); },
                                               [](auto& query) { query.SetCommand(0x0101); },
                                               [](auto& query) { query.SetRequestObject(2); },
                                               [](auto& query) { query.SetRequestObjectValue(""); },
                                           });
}

TEST(EFCoECompanionsArchive, WritesTheNewestVersion)
{
    EXPECT_EQ(Golden("ENSRegOption.v12172009.hex"), Written(SampleNSRegOption()));
    EXPECT_EQ(Golden("EPLOGIDestination.v12292008.hex"), Written(SamplePLOGIDestination()));
    EXPECT_EQ(Golden("EFCNSQuery.v12292008.hex"), Written(SampleFCNSQuery()));
}

TEST(EFCoECompanionsArchive, ReadsEveryField)
{
    EXPECT_FALSE(Read<ENSRegOption>("ENSRegOption.v12172009.hex") != SampleNSRegOption());
    EXPECT_FALSE(Read<EPLOGIDestination>("EPLOGIDestination.v12292008.hex") != SamplePLOGIDestination());
    EXPECT_FALSE(Read<EFCNSQuery>("EFCNSQuery.v12292008.hex") != SampleFCNSQuery());
}

TEST(EFCoECompanionsArchive, TheOlderOptionsLeaveTheExtraNameAsItWas)
{
    ENSRegOption option;
    option.SetExtraName("kept");
    ReadInto(option, Golden("ENSRegOption.v12172008.hex"));
    EXPECT_EQ("kept", option.GetExtraName());
    EXPECT_EQ(0x0102, option.GetOptions());
    EXPECT_EQ("pA", option.GetRspnIdName());
    EXPECT_EQ("nodeB", option.GetRsnnNnName());
}

TEST(EFCoECompanionsArchiveDeathTest, RefuseOtherVersions)
{
    for (char const* version : {"00", "01", "FB 12 17 20 07", "FB 12 17 20 0A", "FB 12 29 20 08", "FB FF FF FF FF"})
        // on purpose: the configuration's function
        ExpectArchiveError<ENSRegOption>(version, kFile, 1698, "EFCoEConfig::SerializeIn");
    for (char const* version : {"00", "01", "FB 12 29 20 07", "FB 12 29 20 09", "FB 12 17 20 09", "FB FF FF FF FF"}) {
        ExpectArchiveError<EPLOGIDestination>(version, kFile, 1812, "EPLOGIDestination::SerializeIn");
        ExpectArchiveError<EFCNSQuery>(version, kFile, 1934, "EFCNSQuery::SerializeIn");
    }
}
