#pragma once

#include "eArchiveOperators.hpp"
#include "eDHCPTLV.hpp"
#include "eIPAddress.hpp"
#include "ifcoreExport.hpp"

#include <list>
#include <utility>

class EDiscoveredInfo;
class EDiscoveredTableHooks;

/// What the DHCP client of an interface obtained (RFC 2131), owned by the interface's discovered info. Only the
/// replacement of the whole record is announced.
class IFCORE_API EDHCPDiscoveredInfo {
public:
    EDHCPDiscoveredInfo() = default;
    EDHCPDiscoveredInfo(EDHCPDiscoveredInfo const& other) : m_values(other.m_values) {} ///< Not the parent.
    EDHCPDiscoveredInfo& operator=(EDHCPDiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDHCPDiscoveredInfo const& other); ///< Announced once, as a whole; the parent stays.
    void Empty();                                ///< On purpose announces nothing, unlike that of DHCPv6.
    void Swap(EDHCPDiscoveredInfo& other) { std::swap(m_values, other.m_values); } ///< Announces nothing.

    // Both addresses are on purpose taken by changeable reference, and copied.
    EIPAddress const& GetDiscoveredIP() const { return m_values.ip; }
    void SetDiscoveredIP(EIPAddress& address) { m_values.ip = address; }
    unsigned int GetDiscoveredPrefixLength() const { return m_values.prefixLength; }
    void SetDiscoveredPrefixLength(unsigned int bits) { m_values.prefixLength = bits; }
    EIPAddress const& GetDiscoveredGatewayIP() const { return m_values.gatewayIp; }
    void SetDiscoveredGatewayIP(EIPAddress& address) { m_values.gatewayIp = address; }
    unsigned int GetLeaseTimer() const { return m_values.leaseTimer; }
    void SetLeaseTimer(unsigned int seconds) { m_values.leaseTimer = seconds; }
    std::list<EDHCPTLV> const& GetDiscoveredCustomTLVs() const { return m_values.customTlvs; }
    std::list<EDHCPTLV>& GetDiscoveredCustomTLVs() { return m_values.customTlvs; }
    void SetDiscoveredCustomTLVs(std::list<EDHCPTLV> const& options) { m_values.customTlvs = options; }
    unsigned int GetInterfaceLocalId() const { return m_values.interfaceLocalId; }
    void SetInterfaceLocalId(unsigned int id) { m_values.interfaceLocalId = id; }
    bool IsValid() const { return m_values.valid; }
    void SetValid(bool valid) { m_values.valid = valid; }

    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Not emptied first: options are appended. Announces nothing.

private:
    struct Values {
        EIPAddress ip;
        unsigned int prefixLength = 0; // bits
        EIPAddress gatewayIp;
        unsigned int leaseTimer = 0;    // seconds
        std::list<EDHCPTLV> customTlvs; // in the order received
        unsigned int interfaceLocalId = 0;
        bool valid = false;
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
};

/// The same of its DHCPv6 client (RFC 8415).
class IFCORE_API EDHCPv6DiscoveredInfo {
public:
    EDHCPv6DiscoveredInfo() = default;
    EDHCPv6DiscoveredInfo(EDHCPv6DiscoveredInfo const& other) : m_values(other.m_values) {} ///< Not the parent.
    EDHCPv6DiscoveredInfo& operator=(EDHCPv6DiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDHCPv6DiscoveredInfo const& other); ///< Announced once, as a whole; the parent stays.
    void Empty();                                  ///< Announced once, as a whole.
    void Swap(EDHCPv6DiscoveredInfo& other) { std::swap(m_values, other.m_values); } ///< Announces nothing.

    unsigned int GetIARenewTime() const { return m_values.iaRenewTime; }
    void SetIARenewTime(unsigned int seconds) { m_values.iaRenewTime = seconds; }
    unsigned int GetIARebindTime() const { return m_values.iaRebindTime; }
    void SetIARebindTime(unsigned int seconds) { m_values.iaRebindTime = seconds; }
    bool IsValid() const { return m_values.valid; }
    void SetValid(bool valid) { m_values.valid = valid; }
    std::list<EDHCPTLV> const& GetDiscoveredCustomTLVs() const { return m_values.customTlvs; }
    std::list<EDHCPTLV>& GetDiscoveredCustomTLVs() { return m_values.customTlvs; }
    void SetDiscoveredCustomTLVs(std::list<EDHCPTLV> const& options) { m_values.customTlvs = options; }
    std::list<EIPAddress> const& GetDiscoveredAddresses() const { return m_values.addresses; }
    std::list<EIPAddress>& GetDiscoveredAddresses() { return m_values.addresses; }
    void SetDiscoveredAddresses(std::list<EIPAddress> const& addresses) { m_values.addresses = addresses; }

    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Not emptied first: both lists are appended to. Announces nothing.

private:
    struct Values {
        unsigned int iaRenewTime = 0;  // seconds, T1
        unsigned int iaRebindTime = 0; // seconds, T2
        bool valid = false;
        std::list<EDHCPTLV> customTlvs; // in the order received
        std::list<EIPAddress> addresses;
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
};
