#pragma once

#include "eArchiveOperators.hpp"
#include "eDHCPTLV.hpp"
#include "eIPAddress.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

#include <list>

class EComponentId;
class EInterfaceItem;
class EInterfaceTableHooks;

/// The DHCPv6 client configuration of one interface (RFC 8415), which owns it by value.
class IFCORE_API EDHCPv6Properties {
public:
    /// The kind of identity association to request. The values are the host's; any is legal to hold.
    enum eIAType : int { IA_TYPE_DEFAULT = 1 };

    EDHCPv6Properties() = default;
    EDHCPv6Properties(EDHCPv6Properties const&) = default; // the parent too
    ~EDHCPv6Properties() = default;
    EDHCPv6Properties& operator=(EDHCPv6Properties const& other)
    {
        if (this != &other) Copy(other);
        return *this;
    }
    void Copy(EDHCPv6Properties const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                          ///< The same, with the defaults.
    void Swap(EDHCPv6Properties& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(EDHCPv6Properties const& other) const; ///< The parent is not compared.

    unsigned int GetIAId() const { return m_values.iaId; }
    eIAType GetIAType() const { return m_values.iaType; }
    unsigned int GetRenewTime() const { return m_values.renewTime; }
    std::list<EDHCPTLV> const& GetDHCPv6CustomTLVs() const { return m_values.customTlvs; }
    EIPAddress const& GetDHCPv6RelayLinkAddress() const { return m_values.relayLinkAddress; }
    EIPAddress const& GetDHCPv6RelayDestination() const { return m_values.relayDestination; }

    void SetIAId(unsigned int id);
    void SetIAType(eIAType type);
    void SetRenewTime(unsigned int time);
    void SetDhcpv6CustomTLVs(std::list<EDHCPTLV> const& tlvs);
    void SetDHCPv6RelayLinkAddress(EIPAddress const& address);
    void SetDHCPv6RelayDestination(EIPAddress const& address);

    unsigned int GetLocalId() const { return 26; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values and TLVs are appended: read into a fresh record.
    /// An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 IA id, 2 IA type, 3 renew time, 4 custom TLVs, 5 relay link address, 6 relay destination.
    /// False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        static EIPAddress AllServers(); // IPv6 ff05::1:3, all DHCP servers of the site (RFC 8415, 7.1)

        unsigned int iaId = 0;
        eIAType iaType = IA_TYPE_DEFAULT;
        unsigned int renewTime = 0;
        std::list<EDHCPTLV> customTlvs; // in the order of sending, duplicates allowed
        EIPAddress relayLinkAddress;    // IPv4 0.0.0.0, on purpose not IPv6
        EIPAddress relayDestination = AllServers();
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
