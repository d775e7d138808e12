#include "ePTPDiscoveredInfo.hpp"

#include "discoveredRecords.hpp"

#include <cmath>
#include <limits>
#include <list>
#include <type_traits>
#include <vector>

using Stats = EPTPClockStats;
using PTP = EPTPDiscoveredInfo;

static_assert(std::is_polymorphic_v<Stats> && std::has_virtual_destructor_v<Stats>);
static_assert(!std::is_polymorphic_v<PTP>);

static char const kFile[] = "x86_64/common/ifcore/ePTPDiscoveredInfo.cpp";

/// The bytes that archive an integer of 64 bits.
static std::string Archived(unsigned long value)
{
    EArchive archive;
    archive << value;
    return BytesOf(archive.GetAsEBlob());
}

/// Statistics, default but for this time stamp and this clock offset.
static std::string StatsBytes(unsigned long timeStamp, long offset)
{
    return Bytes("01 00") + Archived(timeStamp) + Bytes("00 00 00 00 00 00 00 00 00 00") +
           Archived(static_cast<unsigned long>(offset)) + Bytes("00 00");
}
/// A port in this state with such statistics.
static PTP PortOf(unsigned int state, unsigned long timeStamp, long offset)
{
    PTP port;
    ReadInto(port,
             Bytes("01 00") + Archived(state) + StatsBytes(timeStamp, offset) + Bytes("00 00 00 00 00 00 00 00 00"));
    return port;
}
static Stats StatsOf(unsigned long timeStamp, long offset)
{
    Stats stats;
    ReadInto(stats, StatsBytes(timeStamp, offset));
    return stats;
}

// ---- Statistics -----------------------------------------------------------------------------------------------------

TEST(EPTPClockStats, TheTimeStampIsSecondsAndMicrosecondsWithoutLeadingZeros)
{
    struct {
        unsigned long microseconds;
        char const* text;
    } const cases[] = {
        {0, "0:0"},
        {5, "0:5"},
        {999999, "0:999999"},
        {1000000, "1:0"},
        {1000005, "1:5"},
        {1000050, "1:50"},
        {1500000, "1:500000"},
        {2000000, "2:0"},
        {0xFFFFFFFFFFFFFFFF, "18446744073709:551615"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.text, StatsOf(c.microseconds, 0).GetTimeStampAsString());
        EXPECT_EQ(c.text, PortOf(9, c.microseconds, 0).GetTimeStampAsString());
        EXPECT_EQ(c.microseconds, PortOf(9, c.microseconds, 0).GetTimeStamp());
    }
}

TEST(EPTPClockStats, TheClockOffsetIsASignedNumber)
{
    struct {
        long offset;
        char const* text;
    } const cases[] = {
        {0, "0"},
        {7, "7"},
        {-1, "-1"},
        {std::numeric_limits<long>::max(), "9223372036854775807"},
        {std::numeric_limits<long>::min(), "-9223372036854775808"},
    };
    for (auto const& c : cases) {
        EXPECT_EQ(c.text, StatsOf(0, c.offset).GetClockOffsetFromMasterAsString());
        EXPECT_EQ(c.text, PortOf(9, 0, c.offset).GetClockOffsetFromMasterAsString());
        EXPECT_EQ(c.offset, PortOf(9, 0, c.offset).GetClockOffsetFromMaster());
    }
}

TEST(EPTPClockStats, TheIds2To14AreAppended)
{
    std::list<int> ids{99};
    Stats::FillListWithAllIds(ids);
    EXPECT_EQ((std::list<int>{99, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}), ids);
}

/// The values of an archive of statistics, version 2, one behind the other, and for each another one.
static struct {
    char const* value;
    char const* other;
} const kStatsValues[] = {
    {"01", "41"},       // counter 1 of 4
    {"02", "42"},       // counter 2
    {"03", "43"},       // counter 3
    {"04", "44"},       // counter 4
    {"05", "45"},       // 64-bit value 1 of 4
    {"06", "46"},       // 64-bit value 2
    {"07", "47"},       // 64-bit value 3
    {"08", "48"},       // 64-bit value 4
    {"09", "49"},       // second identity
    {"01 0A", "01 4A"}, // text 1 of 3
    {"01 0B", "00"},    // text 2
    {"01 0C", "01 4C"}, // text 3
    {"0D", "4D"},       // clock identity
    {"0E", "4E"},       // time stamp
    {"0F", "4F"},       // counter 1 of 10
    {"10", "50"},       // counter 2
    {"11", "51"},       // counter 3
    {"12", "52"},       // counter 4
    {"13", "53"},       // counter 5
    {"14", "54"},       // counter 6
    {"15", "55"},       // counter 7
    {"16", "56"},       // counter 8
    {"17", "57"},       // counter 9
    {"18", "58"},       // counter 10
    {"19", "59"},       // clock offset from master
    {"1A", "5A"},       // rate
    {"1B", "5B"},       // 64-bit value
};
static constexpr std::size_t kNone = std::size(kStatsValues);

/// Statistics with the value at this position replaced by the other one.
static Stats StatsWithOther(std::size_t position)
{
    std::string bytes = Bytes("02");
    for (std::size_t i = 0; i < kNone; ++i)
        bytes += Bytes(i == position ? kStatsValues[i].other : kStatsValues[i].value);
    Stats stats;
    ReadInto(stats, bytes);
    EXPECT_EQ(bytes, Written(stats));
    return stats;
}

TEST(EPTPClockStats, EveryMemberIsCompared)
{
    Stats const stats = StatsWithOther(kNone);
    EXPECT_FALSE(stats != StatsWithOther(kNone));
    for (std::size_t position = 0; position < kNone; ++position) {
        SCOPED_TRACE(position);
        EXPECT_TRUE(stats != StatsWithOther(position));
        EXPECT_TRUE(StatsWithOther(position) != stats);
    }
}

TEST(EPTPClockStats, CopiesSwapsAndEmptiesAll)
{
    Stats const sample = StatsWithOther(kNone);
    Stats copied;
    copied.Copy(sample);
    EXPECT_FALSE(copied != sample);
    Stats assigned;
    EXPECT_EQ(&assigned, &(assigned = sample));
    EXPECT_FALSE(assigned != sample);
    Stats const& itself = assigned;
    assigned = itself;
    assigned.Copy(itself);
    EXPECT_FALSE(assigned != sample);
    Stats swapped(sample);
    Stats other;
    swapped.Swap(other);
    EXPECT_FALSE(other != sample);
    EXPECT_FALSE(swapped != Stats());
    other.Empty();
    EXPECT_FALSE(other != Stats());
    EXPECT_EQ(Golden("EPTPClockStats.defaults.v2.hex"), Written(other));
}

// ---- Rate -----------------------------------------------------------------------------------------------------------

// The rate has no accessor, and what comes from an archive is a whole number of millionths: an explicit instantiation
// may name the private values.
static auto& ValuesOf(Stats& stats);
template <auto values> struct ReachValues {
    friend auto& ValuesOf(Stats& stats) { return stats.*values; }
};
template struct ReachValues<&Stats::m_values>;

/// The archive of statistics, default but for the rate given as what archives it.
static std::string WithRate(std::string const& rate)
{
    return Bytes("02 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00") + rate + Bytes("00");
}

TEST(EPTPClockStatsRate, IsWrittenAsWholeMillionthsWithinTheBoundsOfALong)
{
    double const infinite = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        double rate;
        char const* hex;
    } const cases[] = {
        {0.0, "00"},
        {-0.0, "00"},
        {0.5, "FA 07 A1 20"},
        {-2.5, "FF FF FF FF FF FF D9 DA 60"},
        {0.0000019, "01"}, // truncated towards 0
        {0.0000009, "00"},
        {-0.0000019, "FF FF FF FF FF FF FF FF FF"},
        {-0.0000009, "00"},
        {9223372036854.0, "FF 7F FF FF FF FF F4 28 00"}, // a double this large is a multiple of 1024
        {9223372036855.0, "FF 7F FF FF FF FF FF FF FF"}, // the greatest long from here on
        {1e300, "FF 7F FF FF FF FF FF FF FF"},
        {1e307, "FF 7F FF FF FF FF FF FF FF"}, // infinite as millionths
        {infinite, "FF 7F FF FF FF FF FF FF FF"},
        {-9223372036854.0, "FF 80 00 00 00 00 0B D8 00"},
        {-9223372036855.0, "FF 80 00 00 00 00 00 00 00"}, // the least long from here on
        {-infinite, "FF 80 00 00 00 00 00 00 00"},
        {nan, "00"},
        {-nan, "00"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.rate);
        Stats stats;
        ValuesOf(stats).rate = c.rate;
        EXPECT_EQ(WithRate(Bytes(c.hex)), Written(stats));
    }
}

TEST(EPTPClockStatsRate, IsReadAsASignedNumberOfMillionths)
{
    struct {
        char const* hex;
        double rate;
    } const cases[] = {
        {"00", 0.0},
        {"FA 07 A1 20", 0.5},
        {"FF FF FF FF FF FF D9 DA 60", -2.5},
        {"01", 0.000001},
        {"FF FF FF FF FF FF FF FF FF", -0.000001},
        {"FF 7F FF FF FF FF FF FF FF", 9223372036854775808.0 / 1000000.0},
        {"FF 80 00 00 00 00 00 00 00", -9223372036854775808.0 / 1000000.0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.hex);
        Stats stats;
        ReadInto(stats, WithRate(Bytes(c.hex)));
        EXPECT_EQ(c.rate, ValuesOf(stats).rate);
        EXPECT_EQ(WithRate(Bytes(c.hex)), Written(stats));
    }
}

TEST(EPTPClockStatsRate, MayLoseAMillionthOnItsWayThroughAnArchive)
{
    Stats stats;
    ReadInto(stats, WithRate(Archived(249))); // on purpose truncated: 0.000249 times a million is less than 249
    EXPECT_EQ(WithRate(Archived(248)), Written(stats));
    ReadInto(stats, WithRate(Archived(248)));
    EXPECT_EQ(WithRate(Archived(248)), Written(stats));
}

TEST(EPTPClockStatsRate, IsComparedByValue)
{
    Stats zero;
    Stats minusZero;
    ValuesOf(minusZero).rate = -0.0;
    EXPECT_FALSE(zero != minusZero);
    Stats none;
    ValuesOf(none).rate = std::nan("");
    EXPECT_TRUE(none != Stats(none));
}

// ---- Port -----------------------------------------------------------------------------------------------------------

TEST(EPTPDiscoveredInfo, EveryStateHasItsTextAndEveryTextItsState)
{
    char const* const texts[] = {"UNKNOWN",   "INITIALIZING", "FAULTY",  "DISABLED",     "LISTENING",
                                 "PREMASTER", "MASTER",       "PASSIVE", "UNCALIBRATED", "SLAVE"};
    unsigned int state = 0;
    for (char const* text : texts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(text, PortOf(state, 0, 0).GetDiscoveredStateAsString());
        PTP port;
        port.SetDiscoveredState(text);
        EXPECT_EQ(text, port.GetDiscoveredStateAsString());
        EXPECT_EQ(Written(PortOf(state, 0, 0)), Written(port));
        ++state;
    }
    EXPECT_EQ(10U, state);
}

TEST(EPTPDiscoveredInfo, AStateWithoutANameIsKeptAndShownAsUnknown)
{
    for (unsigned int const state : {10U, 11U, 0xFFFFFFFFU}) {
        PTP const port = PortOf(state, 1, 2);
        EXPECT_EQ("UNKNOWN", port.GetDiscoveredStateAsString());
        EXPECT_EQ(Bytes("01 00") + Archived(state), Written(port).substr(0, 2 + Archived(state).size()));
        EXPECT_EQ("0:1", port.GetTimeStampAsString());
    }
}

TEST(EPTPDiscoveredInfo, AnyOtherTextIsState0)
{
    for (char const* text :
         {"", "slave", "Slave", "SLAVE ", " SLAVE", "SLAV", "SLAVES", "9", "unknown", "PRE_MASTER"}) {
        SCOPED_TRACE(text);
        PTP port;
        port.SetDiscoveredState("PASSIVE");
        port.SetDiscoveredState(text);
        EXPECT_EQ(Golden("EPTPDiscoveredInfo.defaults.v1.hex"), Written(port));
    }
}

TEST(EPTPDiscoveredInfo, WhatIsKnownOfTheMasterIsHiddenWhileThisPortIsTheMaster)
{
    for (unsigned int state = 0; state <= 11; ++state) {
        SCOPED_TRACE(state);
        PTP const port = PortOf(state, 1000005, -7);
        bool const isMaster = state == 6;
        EXPECT_EQ(isMaster ? 0UL : 1000005UL, port.GetTimeStamp());
        EXPECT_EQ(isMaster ? 0L : -7L, port.GetClockOffsetFromMaster());
        EXPECT_EQ(isMaster ? "N/A" : "1:5", port.GetTimeStampAsString());
        EXPECT_EQ(isMaster ? "N/A" : "-7", port.GetClockOffsetFromMasterAsString());
    }
    PTP port = PortOf(9, 1000005, -7);
    port.SetDiscoveredState("MASTER");
    EXPECT_EQ("N/A", port.GetTimeStampAsString());
    port.SetDiscoveredState("SLAVE"); // the statistics are still there
    EXPECT_EQ("1:5", port.GetTimeStampAsString());
    EXPECT_EQ(-7, port.GetClockOffsetFromMaster());
}

TEST(EPTPDiscoveredInfo, ContentsMoveWithoutTheParent)
{
    ExpectContentsMoveWithoutTheParent(Read<PTP>("EPTPDiscoveredInfo.v1.hex"));
}

TEST(EPTPDiscoveredInfo, TheObserverIsThatOfTheTable)
{
    ExpectObserverOfTheTable<PTP>(&EDiscoveredInfo::GetPTPInfo);
}

// ---- Archive --------------------------------------------------------------------------------------------------------

TEST(EPTPDiscoveredInfoArchive, WritesTheNewestVersions)
{
    EXPECT_EQ(Golden("EPTPClockStats.defaults.v2.hex"), Written(Stats()));
    EXPECT_EQ(Golden("EPTPClockStats.v2.hex"), Written(Read<Stats>("EPTPClockStats.v2.hex")));
    EXPECT_EQ(Golden("EPTPDiscoveredInfo.defaults.v1.hex"), Written(PTP()));
    EXPECT_EQ(Golden("EPTPDiscoveredInfo.v1.hex"), Written(Read<PTP>("EPTPDiscoveredInfo.v1.hex")));
}

TEST(EPTPDiscoveredInfoArchive, ReadsEachValueIntoItsMember)
{
    Stats stats = Read<Stats>("EPTPClockStats.v2.hex");
    auto const& values = ValuesOf(stats);
    EXPECT_EQ((std::array<unsigned int, 4>{21, 22, 23, 4294967294}), values.moreCounters);
    EXPECT_EQ((std::array<unsigned long, 4>{31, 32, 33, 0xFFFFFFFFFFFFFFFF}), values.longValues);
    EXPECT_EQ(0x02005EFFFE100002UL, values.secondIdentity.GetAsUint64());
    EXPECT_EQ((std::array<std::string, 3>{"one", "", "three"}), values.texts);
    EXPECT_EQ(0x02005EFFFE100001UL, values.clockIdentity.GetAsUint64());
    EXPECT_EQ((std::array<unsigned int, 10>{1, 2, 3, 4, 5, 6, 7, 8, 9, 4294967295}), values.counters);
    EXPECT_EQ(0.5, values.rate);
    EXPECT_EQ(0x8000000000000001UL, values.longValue);
    PTP const port = Read<PTP>("EPTPDiscoveredInfo.v1.hex");
    EXPECT_EQ("SLAVE", port.GetDiscoveredStateAsString());
    EXPECT_EQ("1:500005", port.GetTimeStampAsString());
    EXPECT_EQ("-2", port.GetClockOffsetFromMasterAsString());
}

TEST(EPTPDiscoveredInfoArchive, StatisticsOfVersion1KeepWhatTheyDoNotCarry)
{
    Stats stats = StatsWithOther(kNone);
    ReadInto(stats, Golden("EPTPClockStats.v1.hex"));
    std::string expected = Bytes("02");
    for (std::size_t i = 0; i < 12; ++i) expected += Bytes(kStatsValues[i].value);
    EXPECT_EQ(expected + Golden("EPTPClockStats.fromClockIdentity.hex"), Written(stats));
}

TEST(EPTPDiscoveredInfoArchive, ReadingReplacesAllAndAnnouncesNothing)
{
    ExpectReadUnheard<PTP>(&EDiscoveredInfo::GetPTPInfo, "EPTPDiscoveredInfo.v1.hex");
    PTP port = Read<PTP>("EPTPDiscoveredInfo.v1.hex");
    ReadInto(port, Golden("EPTPDiscoveredInfo.defaults.v1.hex"));
    EXPECT_EQ(Written(PTP()), Written(port));
}

TEST(EPTPDiscoveredInfoArchive, ReadingAsFarAsItGoesIsAnError)
{
    std::string const bytes = Golden("EPTPDiscoveredInfo.v1.hex");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EArchive archive;
        Load(archive, bytes.substr(0, size));
        PTP port;
        EXPECT_THROW(archive >> port, EArchiveError) << size;
    }
}

TEST(EPTPDiscoveredInfoArchiveDeathTest, RefusesOtherVersions)
{
    for (char const* version : {"00", "03", "FB FF FF FF FF"})
        ExpectArchiveError<Stats>(version, kFile, 469, "EPTPClockStats::SerializeIn");
    for (char const* version : {"00", "02", "FB FF FF FF FF"})
        ExpectArchiveError<PTP>(version, kFile, 158, "EPTPDiscoveredInfo::SerializeIn");
    ExpectArchiveError<PTP>("01 00 00 03", kFile, 469, "EPTPClockStats::SerializeIn"); // of the statistics within
}
