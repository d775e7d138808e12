#pragma once

#include "eArchiveOperators.hpp"
#include "eSubId.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <array>
#include <string>

class EComponentId;
class EInterfaceItem;
class EInterfaceTableHooks;

/// The PTP clock of one interface (IEEE 1588-2008) and the faults it shows on purpose.
class IFCORE_API EPTPConfig {
public:
    EPTPConfig() = default;
    EPTPConfig(EPTPConfig const&) = default; // the parent too
    ~EPTPConfig() = default;
    EPTPConfig& operator=(EPTPConfig const& other)
    {
        if (this != &other) Copy(other);
        return *this;
    }
    void Copy(EPTPConfig const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                   ///< The same, with the defaults.
    void Swap(EPTPConfig& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(EPTPConfig const& other) const; ///< The parent is not compared.

    EUID const& GetClockId() const { return m_values.clockId; }
    unsigned short GetPortNumber() const { return m_values.portNumber; }
    unsigned char GetClockClass() const { return m_values.clockClass; }
    unsigned char GetClockAccuracy() const { return m_values.clockAccuracy; }
    unsigned char GetPriority1() const { return m_values.priority1; }
    unsigned char GetPriority2() const { return m_values.priority2; }
    unsigned char GetDomainNumber() const { return m_values.domainNumber; }
    signed char GetLogAnnounceInterval() const { return m_values.logAnnounceInterval; }
    signed char GetLogSyncInterval() const { return m_values.logSyncInterval; }
    signed char GetLogDelayRequestInterval() const { return m_values.logDelayRequestInterval; }
    unsigned char GetAnnounceReceiptTimeout() const { return m_values.announceReceiptTimeout; }
    unsigned char GetDelayMechanism() const { return m_values.delayMechanism; }
    bool GetClockIsMaster() const { return m_values.clockIsMaster; }
    long GetStartOffset() const { return m_values.startOffset; }
    unsigned char GetPercentageBadTimestamp() const { return m_values.percentageBadTimestamp; }
    long GetTimestampError() const { return m_values.timestampError; }
    unsigned char GetPercentageBadCrc() const { return m_values.percentageBadCrc; }
    unsigned char GetPercentageDropFollowUpMessages() const { return m_values.percentageDropFollowUpMessages; }
    unsigned char GetPercentageDropDelayResponseMessages() const
    {
        return m_values.percentageDropDelayResponseMessages;
    }

    /// \name Each validates first, then announces and stores the valid value.
    ///@{
    void SetClockId(EUID const& id);
    void SetPortNumber(unsigned short number);
    void SetClockClass(unsigned char clockClass);
    void SetClockAccuracy(unsigned char accuracy);
    void SetPriority1(unsigned char priority);
    void SetPriority2(unsigned char priority);
    void SetDomainNumber(unsigned char number);
    void SetLogAnnounceInterval(signed char log2Seconds);
    void SetLogSyncInterval(signed char log2Seconds);
    void SetLogDelayRequestInterval(signed char log2Seconds);
    void SetAnnounceReceiptTimeout(unsigned char intervals);
    void SetDelayMechanism(unsigned char mechanism);
    void SetClockIsMaster(bool master);
    void SetStartOffset(long offset);
    void SetPercentageBadTimestamp(unsigned char percentage);
    void SetTimestampError(long error);
    void SetPercentageBadCrc(unsigned char percentage);
    void SetPercentageDropFollowUpMessages(unsigned char percentage);
    void SetPercentageDropDelayResponseMessages(unsigned char percentage);
    ///@}

    /// \name True for an acceptable value; otherwise it is corrected in place.
    ///@{
    static bool ValidateLogAnnounceInterval(signed char& log2Seconds);     ///< -5 to 26
    static bool ValidateLogSyncInterval(signed char& log2Seconds);         ///< -5 to 26
    static bool ValidateLogDelayRequestInterval(signed char& log2Seconds); ///< -5 to 22
    static bool ValidatePercentageBadTimestamp(unsigned char& percentage); ///< at most 100, as the next three
    static bool ValidatePercentageBadCrc(unsigned char& percentage);
    static bool ValidatePercentageDropFollowUpMessages(unsigned char& percentage);
    static bool ValidatePercentageDropDelayResponseMessages(unsigned char& percentage);
    /// intervals * 50 * 2^logAnnounceInterval must not pass 4294967295.
    static bool ValidateAnnounceReceiptTimeout(unsigned char& intervals, signed char logAnnounceInterval);
    bool ValidateAnnounceReceiptTimeout(unsigned char& intervals) const; ///< With this record's own interval.
    ///@}

    /// \name Plain decimal numbers, 8-bit fields too; the delay mechanism is "E2E" or "P2P".
    ///@{
    std::string GetDelayMechanismAsString() const;
    std::string GetPortNumberAsString() const;
    std::string GetClockClassAsString() const;
    std::string GetClockAccuracyAsString() const;
    std::string GetPriority1AsString() const;
    std::string GetPriority2AsString() const;
    std::string GetDomainNumberAsString() const;
    std::string GetLogAnnounceIntervalAsString() const;
    std::string GetLogSyncIntervalAsString() const;
    std::string GetLogDelayRequestIntervalAsString() const;
    std::string GetAnnounceReceiptTimeoutAsString() const;
    std::string GetPercentageBadTimestampAsString() const;
    std::string GetPercentageBadCrcAsString() const;
    std::string GetPercentageDropFollowUpMessagesAsString() const;
    std::string GetPercentageDropDelayResponseMessagesAsString() const;
    std::string GetStartOffsetAsString() const;
    std::string GetTimestampErrorAsString() const;
    ///@}

    unsigned int GetLocalId() const { return 34; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values; nothing is validated.
    /// An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 to 19 are the fields in the order of their setters, 20 to 40 the spare ones; 12, the delay mechanism,
    /// is not editable on purpose. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    /// Carried, archived and compared so that later settings travel without a change of the format; only edits set
    /// them, unannounced.
    struct Spare {
        bool flag = false;
        std::array<unsigned char, 8> bytes{};
        std::array<unsigned int, 4> words{};
        std::array<unsigned long, 4> longWords{};
        EUID id;
        std::array<std::string, 3> strings;
    };
    struct Values {
        EUID clockId;
        unsigned short portNumber = 0;
        unsigned char clockClass = 0;
        unsigned char clockAccuracy = 0x20; // within 25 ns
        unsigned char priority1 = 0;
        unsigned char priority2 = 0;
        unsigned char domainNumber = 0;
        signed char logAnnounceInterval = 0;      // log-2 seconds, -5 to 26
        signed char logSyncInterval = 0;          // log-2 seconds, -5 to 26
        signed char logDelayRequestInterval = 0;  // log-2 seconds, -5 to 22
        unsigned char announceReceiptTimeout = 4; // announce intervals
        unsigned char delayMechanism = 1;         // 1 end-to-end, others peer-to-peer
        bool clockIsMaster = false;
        long startOffset = 0;
        unsigned char percentageBadTimestamp = 0; // 0 to 100, as the other percentages
        long timestampError = 0;
        unsigned char percentageBadCrc = 0;
        unsigned char percentageDropFollowUpMessages = 0;
        unsigned char percentageDropDelayResponseMessages = 0;
        Spare spare;
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
