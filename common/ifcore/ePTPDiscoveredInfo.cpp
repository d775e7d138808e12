#include "ePTPDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredRecord.hpp"
#include "eRecord.hpp"

#include <cmath>
#include <iterator>
#include <limits>

// ---- Statistics -----------------------------------------------------------------------------------------------------

EPTPClockStats::~EPTPClockStats() = default;

void EPTPClockStats::Copy(EPTPClockStats const& other)
{
    EPTPClockStats copy(other);
    Swap(copy);
}

template <class Values> static auto TieStats(Values& v)
{
    auto& [clockIdentity, timeStamp, counters, offset, rate, longValue, moreCounters, longValues, secondIdentity,
           texts] = v;
    return std::tie(clockIdentity, timeStamp, counters, offset, rate, longValue, moreCounters, longValues,
                    secondIdentity, texts);
}

bool EPTPClockStats::operator!=(EPTPClockStats const& other) const
{
    return Differ(TieStats(m_values), TieStats(other.m_values));
}

void EPTPClockStats::FillListWithAllIds(std::list<int>& ids)
{
    for (int id = 2; id <= 14; ++id) ids.push_back(id);
}

std::string EPTPClockStats::GetTimeStampAsString() const
{
    unsigned long const microsecondsPerSecond = 1000000;
    return std::to_string(m_values.timeStamp / microsecondsPerSecond) + ":" +
           std::to_string(m_values.timeStamp % microsecondsPerSecond); // on purpose without leading zeros
}

std::string EPTPClockStats::GetClockOffsetFromMasterAsString() const
{
    return std::to_string(m_values.clockOffsetFromMaster);
}

/// A rate, in millionths: written as the bits of a `long`, what does not fit as its nearest bound, no number as 0.
template <class Rate> struct ERateField {
    Rate& rate;
};
template <class Rate> static ERateField<Rate> Millionths(Rate& rate)
{
    return {rate};
}

static double const kMillion = 1000000.0;

static long MillionthsOf(double rate)
{
    double const value = rate * kMillion;
    double const bound = 9223372036854775808.0; // 2^63
    if (std::isnan(value)) return 0;
    if (value >= bound) return std::numeric_limits<long>::max();
    if (value < -bound) return std::numeric_limits<long>::min();
    return static_cast<long>(value);
}

template <class Rate> static void WriteField(EArchive& archive, ERateField<Rate> const& field)
{
    archive << static_cast<unsigned long>(MillionthsOf(field.rate));
}

template <class Rate> static void ReadField(EArchive& archive, ERateField<Rate>& field)
{
    unsigned long bits = 0;
    archive >> bits;
    field.rate = static_cast<double>(static_cast<long>(bits)) / kMillion;
}

static EArchiveSite const kStatsSite = {"x86_64/common/ifcore/ePTPDiscoveredInfo.cpp", 469,
                                        "EPTPClockStats::SerializeIn"};
template <class Archive, class Values> static void StatsArchiveLayout(Archive archive, Values& v)
{
    archive.Since(2, v.moreCounters);
    archive.Since(2, v.longValues);
    archive.Since(2, v.secondIdentity);
    archive.Since(2, v.texts);
    archive.Since(1, v.clockIdentity);
    archive.Since(1, v.timeStamp);
    archive.Since(1, v.counters);
    archive.Since(1, As<unsigned long>(v.clockOffsetFromMaster));
    archive.Since(1, Millionths(v.rate));
    archive.Since(1, v.longValue);
}

void EPTPClockStats::SerializeOut(EArchive& archive) const
{
    StatsArchiveLayout(EArchiveWriter(archive, 2), m_values);
}

void EPTPClockStats::SerializeIn(EArchive& archive)
{
    StatsArchiveLayout(EArchiveReader(archive, {1, 2}, kStatsSite), m_values);
}

// ---- Port -----------------------------------------------------------------------------------------------------------

void EPTPDiscoveredInfo::Copy(EPTPDiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingPTPDiscoveredInfo, EPTPDiscoveredInfo(other));
}

void EPTPDiscoveredInfo::Empty()
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingPTPDiscoveredInfo, EPTPDiscoveredInfo());
}

EDiscoveredTableHooks& EPTPDiscoveredInfo::GetHooks() const
{
    return HooksThrough<EPTPDiscoveredInfo>(m_parent);
}

/// The port states, by their values.
static char const* const kStates[] = {"UNKNOWN",   "INITIALIZING", "FAULTY",  "DISABLED",     "LISTENING",
                                      "PREMASTER", "MASTER",       "PASSIVE", "UNCALIBRATED", "SLAVE"};
static constexpr unsigned int kMaster = 6;

void EPTPDiscoveredInfo::SetDiscoveredState(std::string const& text)
{
    auto const found = std::find(std::begin(kStates), std::end(kStates), text);
    m_values.state = found == std::end(kStates) ? 0 : static_cast<unsigned int>(found - std::begin(kStates));
}

std::string EPTPDiscoveredInfo::GetDiscoveredStateAsString() const
{
    return kStates[m_values.state < std::size(kStates) ? m_values.state : 0];
}

unsigned long EPTPDiscoveredInfo::GetTimeStamp() const
{
    return m_values.state == kMaster ? 0 : m_values.clockStats.m_values.timeStamp;
}

long EPTPDiscoveredInfo::GetClockOffsetFromMaster() const
{
    return m_values.state == kMaster ? 0 : m_values.clockStats.m_values.clockOffsetFromMaster;
}

std::string EPTPDiscoveredInfo::GetTimeStampAsString() const
{
    return m_values.state == kMaster ? "N/A" : m_values.clockStats.GetTimeStampAsString();
}

std::string EPTPDiscoveredInfo::GetClockOffsetFromMasterAsString() const
{
    return m_values.state == kMaster ? "N/A" : m_values.clockStats.GetClockOffsetFromMasterAsString();
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/ePTPDiscoveredInfo.cpp", 158,
                                   "EPTPDiscoveredInfo::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(1, v.flag);
    archive.Since(1, v.state);
    archive.Since(1, v.clockStats);
    archive.Since(1, v.bytes);
    archive.Since(1, v.words);
    archive.Since(1, v.longWords);
    archive.Since(1, v.text);
}

void EPTPDiscoveredInfo::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 1), m_values);
}

void EPTPDiscoveredInfo::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {1, 1}, kSite), m_values);
}
