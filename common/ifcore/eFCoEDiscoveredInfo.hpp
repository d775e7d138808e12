#pragma once

#include "eArchiveOperators.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <map>
#include <string>
#include <utility>
#include <vector>

class EDiscoveredInfo;
class EDiscoveredTableHooks;

/// What the FCoE engine of an interface learnt from the fabric (T11 FC-BB-6, FC-LS-3), owned by the interface's
/// discovered info. Only the replacement of the whole record is announced.
class IFCORE_API EFCoEDiscoveredInfo {
public:
    /// The last step of login and discovery. Any value is legal to hold; those without a name are shown as "Unknown".
    enum eStatus : unsigned int {
        STATUS_UNKNOWN = 0,
        FLOGI_COMPLETE = 1,
        FLOGI_FAILED = 2,
        PLOGI_COMPLETE = 3,
        PLOGI_FAILED = 4,
        SCR_COMPLETE = 5,
        SCR_FAILED = 6,
        FDISC_COMPLETE = 7,
        FDISC_FAILED = 8,
        NS_REGISTRATION_COMPLETE = 9,
        NS_REGISTRATION_FAILED = 10,
        DISCOVERY_SOLICITATION_COMPLETE = 11,
        DISCOVERY_SOLICITATION_FAILED = 12,
        VLAN_DISCOVERY_COMPLETE = 13,
        VLAN_DISCOVERY_FAILED = 14,
        PRLI_COMPLETE = 15,
        PRLI_FAILED = 16,
        NS_QUERY_COMPLETE = 17,
        NS_QUERY_FAILED = 18,
        PLOGI_REQUEST_SENT = 19
    };
    /// The login to one destination.
    struct PLOGIDestination {
        bool valid = false; ///< It succeeded.
        unsigned int destinationId = 0;
    };
    /// By destination id and WWPN. The look-ups use (id, 0) and (0, WWPN); any pair may be kept.
    typedef std::map<std::pair<unsigned int, unsigned long>, PLOGIDestination> PLOGIDestinationMap;

    EFCoEDiscoveredInfo() = default;
    EFCoEDiscoveredInfo(EFCoEDiscoveredInfo const& other) : m_values(other.m_values) {} ///< Not the parent.
    EFCoEDiscoveredInfo& operator=(EFCoEDiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EFCoEDiscoveredInfo const& other); ///< Announced once, as a whole; the parent stays.
    void Empty();                                ///< On purpose announces nothing.
    void Swap(EFCoEDiscoveredInfo& other) { std::swap(m_values, other.m_values); } ///< Announces nothing.

    unsigned int GetDiscoveredSourceId() const { return m_values.sourceId; }
    void SetDiscoveredSourceId(unsigned int id) { m_values.sourceId = id; }
    eStatus GetDiscoveredStatus() const { return m_values.status; }
    void SetDiscoveredStatus(eStatus status) { m_values.status = status; }
    void SetDiscoveredStatus(std::string const& text) { m_values.status = GetStateEnum(text); }
    bool IsValid() const { return m_values.valid; }
    void SetValid(bool valid) { m_values.valid = valid; }
    std::string const& GetDiscoveredStatusReason() const { return m_values.statusReason; }
    std::string GetDiscoveredStatusReason() { return m_values.statusReason; } ///< On purpose a copy.
    void SetDiscoveredStatusReason(std::string const& reason) { m_values.statusReason = reason; }
    EMACAddress const& GetDiscoveredDestMAC() const { return m_values.destMac; }
    void SetDiscoveredDestMAC(EMACAddress const& mac) { m_values.destMac = mac; }
    void SetPLOGIDestinationMap(PLOGIDestinationMap const& destinations) { m_values.plogiDestinations = destinations; }
    unsigned int GetDiscoveredVlanPriority() const { return m_values.vlanPriority; }
    void SetDiscoveredVlanPriority(unsigned int priority) { m_values.vlanPriority = priority; }
    unsigned int GetDiscoveredDBit() const { return m_values.dBit; }
    void SetDiscoveredDBit(unsigned int bit) { m_values.dBit = bit; }
    std::string const& GetDiscoveredFcfMap() const { return m_values.fcfMap; }
    void SetDiscoveredFcfMap(std::string const& map) { m_values.fcfMap = map; }
    unsigned int GetDiscoveredFKAPeriod() const { return m_values.fkaPeriod; }
    void SetDiscoveredFKAPeriod(unsigned int period) { m_values.fkaPeriod = period; }

    /// \name The login to one destination: false and 0 without an entry; none is made
    ///@{
    bool IsValidDiscoveredPLOGIDid(EUID const& wwpn) const;
    bool IsValidDiscoveredPLOGIDid(unsigned int destinationId) const;
    unsigned int GetDiscoveredPLOGIDid(EUID const& wwpn) const;
    unsigned int GetDiscoveredPLOGIDid(unsigned int destinationId) const;
    ///@}

    static std::string GetStateString(eStatus status); ///< "FLOGI_COMPLETE"; "Unknown" for 0 and above 19.
    std::string GetStateString() const { return GetStateString(m_values.status); }
    static eStatus GetStateEnum(std::string const& text);                    ///< Exact; 0 for any other text.
    std::string GetDiscoveredSourceIdAsString() const;                       ///< 3 bytes, "01.b6.69"
    void GetDestinationIdAsString(unsigned int id, std::string& text) const; ///< The same form.
    void GetWwpnAsString(unsigned long wwpn, std::string& text) const;       ///< 8 bytes, joined by one space

    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    /// Not emptied first: what the version does not carry stays. Announces nothing. An unknown version ends the
    /// process.
    void SerializeIn(EArchive& archive);

private:
    struct Values {
        unsigned int sourceId = 0; // the low 24 bits
        eStatus status = STATUS_UNKNOWN;
        bool valid = false;
        std::string statusReason;
        EMACAddress destMac;
        EMACAddress secondMac; // this and the next five are only carried
        EUID firstWwn;
        EUID secondWwn;
        unsigned int fcMap = 0x0EFC00; // FC-MAP, 24 bits; the default of FC-BB-6
        unsigned char byteValue = 128;
        std::vector<unsigned short> shortList;
        PLOGIDestinationMap plogiDestinations;
        unsigned int vlanPriority = 0;
        unsigned int dBit = 0;
        std::string fcfMap;
        unsigned int fkaPeriod = 0; // between two FIP keep-alives
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
};
