#pragma once

#include "eArchiveOperators.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <array>
#include <list>
#include <string>
#include <utility>

class EDiscoveredInfo;
class EDiscoveredTableHooks;

/// The statistics of a PTP clock (IEEE 1588). The engines fill them through the archive.
class IFCORE_API EPTPClockStats {
public:
    EPTPClockStats() = default;
    EPTPClockStats(EPTPClockStats const&) = default;
    EPTPClockStats(EPTPClockStats&&) = default;
    EPTPClockStats& operator=(EPTPClockStats const& other)
    {
        Copy(other);
        return *this;
    }
    EPTPClockStats& operator=(EPTPClockStats&&) = default;
    virtual ~EPTPClockStats();
    void Copy(EPTPClockStats const& other);
    void Empty() { m_values = Values(); }
    void Swap(EPTPClockStats& other) { std::swap(m_values, other.m_values); }
    bool operator!=(EPTPClockStats const& other) const;

    /// Appends the id of each statistic, 2 to 14.
    static void FillListWithAllIds(std::list<int>& ids);
    std::string GetTimeStampAsString() const; ///< Seconds and microseconds, on purpose without leading zeros: "1:5"
    std::string GetClockOffsetFromMasterAsString() const;

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< What the version does not carry stays. An unknown one ends the process.

private:
    friend class EPTPDiscoveredInfo; // which shows time stamp and offset

    struct Values {
        EUID clockIdentity;
        unsigned long timeStamp = 0; // microseconds
        std::array<unsigned int, 10> counters = {};
        long clockOffsetFromMaster = 0;
        double rate = 0;
        unsigned long longValue = 0;
        std::array<unsigned int, 4> moreCounters = {}; // this and the next three since version 2
        std::array<unsigned long, 4> longValues = {};
        EUID secondIdentity;
        std::array<std::string, 3> texts;
    };
    Values m_values;
};

/// What the PTP engine of an interface reached (IEEE 1588), owned by the interface's discovered info. Only the
/// replacement of the whole record is announced.
class IFCORE_API EPTPDiscoveredInfo {
public:
    EPTPDiscoveredInfo() = default;
    EPTPDiscoveredInfo(EPTPDiscoveredInfo const& other) : m_values(other.m_values) {} ///< Not the parent.
    EPTPDiscoveredInfo& operator=(EPTPDiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EPTPDiscoveredInfo const& other); ///< Announced once, as a whole; the parent stays.
    void Empty();                               ///< The same, with the defaults.
    void Swap(EPTPDiscoveredInfo& other) { std::swap(m_values, other.m_values); } ///< Announces nothing.

    void SetDiscoveredState(std::string const& text); ///< A port state of IEEE 1588, "SLAVE"; any other text is 0.
    std::string GetDiscoveredStateAsString() const;   ///< "UNKNOWN" for a state without a name.
    /// \name What is known of the master: 0 and "N/A" while this port is the master
    ///@{
    unsigned long GetTimeStamp() const; ///< Microseconds.
    long GetClockOffsetFromMaster() const;
    std::string GetTimeStampAsString() const;
    std::string GetClockOffsetFromMasterAsString() const;
    ///@}

    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        bool flag = false;      // this and all but state and statistics are only carried
        unsigned int state = 0; // 0 to 9 have names; any value is legal to hold
        EPTPClockStats clockStats;
        std::array<unsigned char, 4> bytes = {};
        std::array<unsigned int, 2> words = {};
        std::array<unsigned long, 2> longWords = {};
        std::string text;
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
};
