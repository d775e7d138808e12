#pragma once

#include "eArchiveOperators.hpp"
#include "eDHCPTLV.hpp"
#include "eIPAddress.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

#include <list>
#include <string>

class EComponentId;
class EInterfaceItem;
class EInterfaceTableHooks;

/// The DHCPv4 client configuration of one interface (RFC 2131, relayed operation RFC 3046), which owns it by value.
class IFCORE_API EDHCPProperties {
public:
    EDHCPProperties() = default;
    EDHCPProperties(EDHCPProperties const&) = default; // the parent too
    ~EDHCPProperties() = default;
    EDHCPProperties& operator=(EDHCPProperties const& other)
    {
        if (this != &other) Copy(other);
        return *this;
    }
    void Copy(EDHCPProperties const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                        ///< The same, with the defaults.
    void Swap(EDHCPProperties& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(EDHCPProperties const& other) const; ///< The parent is not compared.

    std::string const& GetDHCPClientId() const { return m_values.clientId; }
    EIPAddress const& GetDHCPServerId() const { return m_values.serverId; }
    std::string const& GetDHCPVendorId() const { return m_values.vendorId; }
    unsigned int GetReleaseTimer() const { return m_values.releaseTimer; }
    std::list<EDHCPTLV> const& GetDHCPCustomTLVs() const { return m_values.customTlvs; }
    EIPAddress const& GetDHCPRelayAgentIP() const { return m_values.relayAgentIp; }
    EIPAddress const& GetDHCPRelayDestination() const { return m_values.relayDestination; }
    unsigned int GetRetryCount() const { return m_values.retryCount; }

    void SetDHCPClientId(std::string const& id);
    void SetDHCPServerId(EIPAddress const& address);
    void SetDHCPVendorId(std::string const& id);
    void SetReleaseTimer(unsigned int timer);
    void SetDhcpCustomTLVs(std::list<EDHCPTLV> const& tlvs);
    void SetDHCPRelayAgentIP(EIPAddress const& address);
    void SetDHCPRelayDestination(EIPAddress const& address);
    void SetRetryCount(unsigned int count); ///< 0 is announced and stored as 1.

    unsigned int GetLocalId() const { return 24; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values and TLVs are appended: read into a fresh record.
    /// An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 client id, 2 server id, 3 release timer, 4 vendor id, 5 custom TLVs, 6 relay agent, 7 relay
    /// destination, 8 retry count. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        static EIPAddress LimitedBroadcast(); // IPv4 255.255.255.255

        std::string clientId;
        EIPAddress serverId; // IPv4 0.0.0.0
        std::string vendorId;
        unsigned int releaseTimer = 0;
        unsigned int retryCount = 4;    // never 0 through the setter
        std::list<EDHCPTLV> customTlvs; // in the order of sending, duplicates allowed
        EIPAddress relayAgentIp;        // IPv4 0.0.0.0
        EIPAddress relayDestination = LimitedBroadcast();
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
