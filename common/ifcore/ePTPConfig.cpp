#include "ePTPConfig.hpp"

#include "eArchiveLayout.hpp"
#include "eRecord.hpp"

#include <algorithm>
#include <cmath>

template <class Values> static auto Tie(Values& v)
{
    auto& [clockId, portNumber, clockClass, clockAccuracy, priority1, priority2, domainNumber, logAnnounceInterval,
           logSyncInterval, logDelayRequestInterval, announceReceiptTimeout, delayMechanism, clockIsMaster, startOffset,
           percentageBadTimestamp, timestampError, percentageBadCrc, percentageDropFollowUpMessages,
           percentageDropDelayResponseMessages, spare] = v;
    auto& [flag, bytes, words, longWords, id, strings] = spare;
    return std::tie(clockId, portNumber, clockClass, clockAccuracy, priority1, priority2, domainNumber,
                    logAnnounceInterval, logSyncInterval, logDelayRequestInterval, announceReceiptTimeout,
                    delayMechanism, clockIsMaster, startOffset, percentageBadTimestamp, timestampError,
                    percentageBadCrc, percentageDropFollowUpMessages, percentageDropDelayResponseMessages, flag, bytes,
                    words, longWords, id, strings);
}

void EPTPConfig::Copy(EPTPConfig const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingPTPConfig, EPTPConfig(other));
}

void EPTPConfig::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingPTPConfig, EPTPConfig());
}

void EPTPConfig::Swap(EPTPConfig& other)
{
    std::swap(m_values, other.m_values);
}

bool EPTPConfig::operator!=(EPTPConfig const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void EPTPConfig::SetClockId(EUID const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPClockId, m_values.clockId, id);
}

void EPTPConfig::SetPortNumber(unsigned short number)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPortNumber, m_values.portNumber, number);
}

void EPTPConfig::SetClockClass(unsigned char clockClass)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPClockClass, m_values.clockClass, clockClass);
}

void EPTPConfig::SetClockAccuracy(unsigned char accuracy)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPClockAccuracy, m_values.clockAccuracy, accuracy);
}

void EPTPConfig::SetPriority1(unsigned char priority)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPriority1, m_values.priority1, priority);
}

void EPTPConfig::SetPriority2(unsigned char priority)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPriority2, m_values.priority2, priority);
}

void EPTPConfig::SetDomainNumber(unsigned char number)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPDomainNumber, m_values.domainNumber, number);
}

void EPTPConfig::SetLogAnnounceInterval(signed char log2Seconds)
{
    ValidateLogAnnounceInterval(log2Seconds);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPLogAnnounceInterval, m_values.logAnnounceInterval,
                   log2Seconds);
}

void EPTPConfig::SetLogSyncInterval(signed char log2Seconds)
{
    ValidateLogSyncInterval(log2Seconds);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPLogSyncInterval, m_values.logSyncInterval, log2Seconds);
}

void EPTPConfig::SetLogDelayRequestInterval(signed char log2Seconds)
{
    ValidateLogDelayRequestInterval(log2Seconds);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPLogDelayRequestInterval, m_values.logDelayRequestInterval,
                   log2Seconds);
}

void EPTPConfig::SetAnnounceReceiptTimeout(unsigned char intervals)
{
    ValidateAnnounceReceiptTimeout(intervals);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPAnnounceReceiptTimeout, m_values.announceReceiptTimeout,
                   intervals);
}

void EPTPConfig::SetDelayMechanism(unsigned char mechanism)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPDelayMechanism, m_values.delayMechanism, mechanism);
}

void EPTPConfig::SetClockIsMaster(bool master)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPClockIsMaster, m_values.clockIsMaster, master);
}

void EPTPConfig::SetStartOffset(long offset)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPStartOffset, m_values.startOffset, offset);
}

void EPTPConfig::SetPercentageBadTimestamp(unsigned char percentage)
{
    ValidatePercentageBadTimestamp(percentage);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPercentageBadTimestamp, m_values.percentageBadTimestamp,
                   percentage);
}

void EPTPConfig::SetTimestampError(long error)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPTimestampError, m_values.timestampError, error);
}

void EPTPConfig::SetPercentageBadCrc(unsigned char percentage)
{
    ValidatePercentageBadCrc(percentage);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPercentageBadCrc, m_values.percentageBadCrc, percentage);
}

void EPTPConfig::SetPercentageDropFollowUpMessages(unsigned char percentage)
{
    ValidatePercentageDropFollowUpMessages(percentage);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPercentageDropFollowUpMessages,
                   m_values.percentageDropFollowUpMessages, percentage);
}

void EPTPConfig::SetPercentageDropDelayResponseMessages(unsigned char percentage)
{
    ValidatePercentageDropDelayResponseMessages(percentage);
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPTPPercentageDropDelayResponseMessages,
                   m_values.percentageDropDelayResponseMessages, percentage);
}

/// Moves the value to the nearest bound; true when it lay within them.
template <class Number> static bool Limit(Number& value, Number lowest, Number highest)
{
    Number const given = value;
    value = std::clamp(given, lowest, highest);
    return value == given;
}

static constexpr signed char kShortestInterval = -5;            // log-2 seconds
static constexpr signed char kLongestInterval = 26;             // log-2 seconds
static constexpr signed char kLongestDelayRequestInterval = 22; // log-2 seconds
static constexpr unsigned char kLeastPercentage = 0;
static constexpr unsigned char kLargestPercentage = 100;

bool EPTPConfig::ValidateLogAnnounceInterval(signed char& log2Seconds)
{
    return Limit(log2Seconds, kShortestInterval, kLongestInterval);
}

bool EPTPConfig::ValidateLogSyncInterval(signed char& log2Seconds)
{
    return Limit(log2Seconds, kShortestInterval, kLongestInterval);
}

bool EPTPConfig::ValidateLogDelayRequestInterval(signed char& log2Seconds)
{
    return Limit(log2Seconds, kShortestInterval, kLongestDelayRequestInterval);
}

bool EPTPConfig::ValidatePercentageBadTimestamp(unsigned char& percentage)
{
    return Limit(percentage, kLeastPercentage, kLargestPercentage);
}

bool EPTPConfig::ValidatePercentageBadCrc(unsigned char& percentage)
{
    return Limit(percentage, kLeastPercentage, kLargestPercentage);
}

bool EPTPConfig::ValidatePercentageDropFollowUpMessages(unsigned char& percentage)
{
    return Limit(percentage, kLeastPercentage, kLargestPercentage);
}

bool EPTPConfig::ValidatePercentageDropDelayResponseMessages(unsigned char& percentage)
{
    return Limit(percentage, kLeastPercentage, kLargestPercentage);
}

bool EPTPConfig::ValidateAnnounceReceiptTimeout(unsigned char& intervals, signed char logAnnounceInterval)
{
    // In floating point, since an archive may hold any interval from -128 to 127. All products are exact.
    double const limit = 4294967295.0;
    double const perInterval = std::ldexp(50.0, logAnnounceInterval);
    if (intervals * perInterval <= limit) return true;
    intervals = static_cast<unsigned char>(std::min(limit / perInterval, 255.0));
    return false;
}

bool EPTPConfig::ValidateAnnounceReceiptTimeout(unsigned char& intervals) const
{
    return ValidateAnnounceReceiptTimeout(intervals, m_values.logAnnounceInterval);
}

std::string EPTPConfig::GetDelayMechanismAsString() const
{
    return m_values.delayMechanism == 1 ? "E2E" : "P2P";
}

std::string EPTPConfig::GetPortNumberAsString() const
{
    return std::to_string(m_values.portNumber);
}

std::string EPTPConfig::GetClockClassAsString() const
{
    return std::to_string(m_values.clockClass);
}

std::string EPTPConfig::GetClockAccuracyAsString() const
{
    return std::to_string(m_values.clockAccuracy);
}

std::string EPTPConfig::GetPriority1AsString() const
{
    return std::to_string(m_values.priority1);
}

std::string EPTPConfig::GetPriority2AsString() const
{
    return std::to_string(m_values.priority2);
}

std::string EPTPConfig::GetDomainNumberAsString() const
{
    return std::to_string(m_values.domainNumber);
}

std::string EPTPConfig::GetLogAnnounceIntervalAsString() const
{
    return std::to_string(m_values.logAnnounceInterval);
}

std::string EPTPConfig::GetLogSyncIntervalAsString() const
{
    return std::to_string(m_values.logSyncInterval);
}

std::string EPTPConfig::GetLogDelayRequestIntervalAsString() const
{
    return std::to_string(m_values.logDelayRequestInterval);
}

std::string EPTPConfig::GetAnnounceReceiptTimeoutAsString() const
{
    return std::to_string(m_values.announceReceiptTimeout);
}

std::string EPTPConfig::GetPercentageBadTimestampAsString() const
{
    return std::to_string(m_values.percentageBadTimestamp);
}

std::string EPTPConfig::GetPercentageBadCrcAsString() const
{
    return std::to_string(m_values.percentageBadCrc);
}

std::string EPTPConfig::GetPercentageDropFollowUpMessagesAsString() const
{
    return std::to_string(m_values.percentageDropFollowUpMessages);
}

std::string EPTPConfig::GetPercentageDropDelayResponseMessagesAsString() const
{
    return std::to_string(m_values.percentageDropDelayResponseMessages);
}

std::string EPTPConfig::GetStartOffsetAsString() const
{
    return std::to_string(m_values.startOffset);
}

std::string EPTPConfig::GetTimestampErrorAsString() const
{
    return std::to_string(m_values.timestampError);
}

void EPTPConfig::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& EPTPConfig::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/ePTPConfig.cpp", 354, "EPTPConfig::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(3, v.spare.flag);
    for (auto& byte : v.spare.bytes) archive.Since(3, byte);
    for (auto& word : v.spare.words) archive.Since(3, word);
    for (auto& longWord : v.spare.longWords) archive.Since(3, longWord);
    archive.Since(3, v.spare.id);
    for (auto& text : v.spare.strings) archive.Since(3, text);
    archive.Since(2, v.clockAccuracy);
    archive.Since(2, v.priority1);
    archive.Since(2, v.priority2);
    archive.Since(2, As<unsigned long>(v.startOffset));
    archive.Since(2, v.percentageBadTimestamp);
    archive.Since(2, As<unsigned long>(v.timestampError));
    archive.Since(2, v.percentageBadCrc);
    archive.Since(2, v.percentageDropFollowUpMessages);
    archive.Since(2, v.percentageDropDelayResponseMessages);
    archive.Since(1, v.clockId);
    archive.Since(1, v.portNumber);
    archive.Since(1, v.clockClass);
    archive.Since(1, v.domainNumber);
    archive.Since(1, v.logAnnounceInterval);
    archive.Since(1, v.logSyncInterval);
    archive.Since(1, v.logDelayRequestInterval);
    archive.Since(1, v.announceReceiptTimeout);
    archive.Since(1, v.delayMechanism);
    archive.Since(1, v.clockIsMaster);
}

void EPTPConfig::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 3), m_values);
}

void EPTPConfig::SerializeIn(EArchive& archive)
{
    // On purpose not emptied first, and past the setters: intervals and percentages are taken as they stand.
    ArchiveLayout(EArchiveReader(archive, {1, 3}, kSite), m_values);
}

static EEdit<EPTPConfig> const kEdits[] = {
    {1, ReadAndSet<EUID, &EPTPConfig::SetClockId>},
    {2, ReadAndSet<unsigned short, &EPTPConfig::SetPortNumber>},
    {3, ReadAndSet<unsigned char, &EPTPConfig::SetClockClass>},
    {4, ReadAndSet<unsigned char, &EPTPConfig::SetClockAccuracy>},
    {5, ReadAndSet<unsigned char, &EPTPConfig::SetPriority1>},
    {6, ReadAndSet<unsigned char, &EPTPConfig::SetPriority2>},
    {7, ReadAndSet<unsigned char, &EPTPConfig::SetDomainNumber>},
    {8, ReadAndSet<signed char, &EPTPConfig::SetLogAnnounceInterval>},
    {9, ReadAndSet<signed char, &EPTPConfig::SetLogSyncInterval>},
    {10, ReadAndSet<signed char, &EPTPConfig::SetLogDelayRequestInterval>},
    {11, ReadAndSet<unsigned char, &EPTPConfig::SetAnnounceReceiptTimeout>},
    // 12, the delay mechanism, is not editable on purpose.
    {13, ReadAndSet<bool, &EPTPConfig::SetClockIsMaster>},
    {14, ReadAndSet<unsigned long, &EPTPConfig::SetStartOffset>},
    {15, ReadAndSet<unsigned char, &EPTPConfig::SetPercentageBadTimestamp>},
    {16, ReadAndSet<unsigned long, &EPTPConfig::SetTimestampError>},
    {17, ReadAndSet<unsigned char, &EPTPConfig::SetPercentageBadCrc>},
    {18, ReadAndSet<unsigned char, &EPTPConfig::SetPercentageDropFollowUpMessages>},
    {19, ReadAndSet<unsigned char, &EPTPConfig::SetPercentageDropDelayResponseMessages>},
};

// The spare fields have no setters: what is read is stored, and nobody is told.
template <auto field, class Spare> static void ReadSpare(Spare& spare, unsigned int /*index*/, EArchive& archive)
{
    archive >> spare.*field;
}
template <auto fields, class Spare> static void ReadSpareAt(Spare& spare, unsigned int index, EArchive& archive)
{
    archive >> (spare.*fields)[index];
}

/// False, with nothing read, when the sub-id is of no spare field.
template <class Spare> static bool EditSpare(Spare& spare, unsigned int subId, EArchive& archive)
{
    struct Row {
        unsigned int firstSubId;
        unsigned int lastSubId;
        void (*read)(Spare& spare, unsigned int index, EArchive& archive);
    };
    static constexpr Row kRows[] = {
        {20, 20, ReadSpare<&Spare::flag>},        // bool
        {21, 28, ReadSpareAt<&Spare::bytes>},     // 8 bits each
        {29, 32, ReadSpareAt<&Spare::words>},     // 32 bits each
        {33, 36, ReadSpareAt<&Spare::longWords>}, // 64 bits each
        {37, 37, ReadSpare<&Spare::id>},          // EUID
        {38, 40, ReadSpareAt<&Spare::strings>},   // text each
    };
    for (Row const& row : kRows) {
        if (subId < row.firstSubId || subId > row.lastSubId) continue;
        row.read(spare, subId - row.firstSubId, archive);
        return true;
    }
    return false;
}

bool EPTPConfig::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    if (EditField(kEdits, *this, first, last, archive)) return true;
    return first != last && EditSpare(m_values.spare, *first, archive);
}
