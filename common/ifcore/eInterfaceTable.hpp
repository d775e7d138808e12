#pragma once

#include "eComponentId.hpp"
#include "eHalOutgoing.hpp"
#include "eInterfaceItem.hpp"
#include "eInterfaceTableHooks.hpp"
#include "eSubId.hpp"
#include "eUniqueIDMap.hpp"
#include "ifcoreExport.hpp"

#include <boost/shared_ptr.hpp>

#include <list>
#include <string>
#include <vector>

class EMultiComponentId;
class ESingleCommand;
class EVLAN;

using EInterfaceItemList = EUniqueIDMap<EInterfaceItem, EInterfaceTable const*>;

/// The interfaces of one port and the port's protocol settings: the root of the component-id tree, the holder of the
/// observer, and the receiver of host commands. Threads may read one that nobody changes; the host serialises the rest.
///
/// A change that throws, `std::bad_alloc` for want of memory or what an observer throws, was not made, unless the
/// operation says otherwise: what can fail is done before the change is announced, and nothing fails behind that.
class IFCORE_API EInterfaceTable : public EInterfaceItemList {
public:
    /// The ATM VPI mask mode of a port. The values are the host's; any is legal to hold.
    enum eVPIMaskMode : unsigned int { VPI_MASK_MODE_DEFAULT = 0 };

    EInterfaceTable() : EInterfaceTable(0) {}
    explicit EInterfaceTable(unsigned int portId);
    EInterfaceTable(EInterfaceTable const& other); ///< Items and settings; starts without an observer.
    ~EInterfaceTable() override;
    EInterfaceTable& operator=(EInterfaceTable const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EInterfaceTable const& other); ///< Announced once, as a whole. Port id too; the observer stays.
    void Empty() override;                   ///< Announced once, as a whole. Port id and observer stay.
    void Swap(EInterfaceTable& other); ///< Items and settings, port id too, never the observers; announces nothing.
    using EInterfaceItemList::Copy;    // the items alone
    using EInterfaceItemList::Swap;

    static eHal::ETableName const& StaticGetTableName(); ///< "InterfaceTable"
    eHal::ETableName const& GetTableName() const { return StaticGetTableName(); }

    /// \name Settings of the port
    ///@{
    unsigned int GetPortId() const { return m_values.portId; }
    eVPIMaskMode GetVPIMaskMode() const { return m_values.vpiMaskMode; }
    unsigned int GetDHCPv4RequestRate() const { return m_values.dhcpv4RequestRate; }
    unsigned int GetDHCPv6RequestRate() const { return m_values.dhcpv6RequestRate; }
    unsigned int GetDHCPv4MaxOutstandingRequests() const { return m_values.dhcpv4MaxOutstandingRequests; }
    unsigned int GetDHCPv6MaxOutstandingRequests() const { return m_values.dhcpv6MaxOutstandingRequests; }
    unsigned int GetFCoERequestRate() const { return m_values.fcoeRequestRate; }
    unsigned int GetFCoERetryCount() const { return m_values.fcoeRetryCount; }
    unsigned int GetFCoERetryInterval() const { return m_values.fcoeRetryInterval; }
    short GetFIPVersion() const { return m_values.fipVersion; }
    bool IsTargetLLAddrOptionEnabled() const { return m_values.targetLLAddrOptionEnabled; }
    bool IsFcfMacEnabled() const { return m_values.fcfMacEnabled; }
    unsigned int GetFcfMacCollectionTime() const { return m_values.fcfMacCollectionTime; }
    bool IsPMacInFpmaEnabled() const { return m_values.pMacInFpmaEnabled; }
    bool IsVlanIdEnabled() const { return m_values.vlanIdEnabled; }
    bool IsAutoNeighborDiscoveryEnabled() const { return m_values.autoNeighborDiscoveryEnabled; }
    bool IsAutoArpEnabled() const { return m_values.autoArpEnabled; }

    void SetVPIMaskMode(eVPIMaskMode mode);
    void SetDHCPv4RequestRate(unsigned int rate);
    void SetDHCPv6RequestRate(unsigned int rate);
    void SetDHCPv4MaxOutstandingRequests(unsigned int count);
    void SetDHCPv6MaxOutstandingRequests(unsigned int count);
    void SetFCoERequestRate(unsigned int rate);
    void SetFCoERetryCount(unsigned int count);
    void SetFCoERetryInterval(unsigned int interval);
    void SetFIPVersion(short version);
    void SetTargetLLAddrOptionEnabled(bool enabled);
    void SetFcfMacEnabled(bool enabled);
    /// Clamps to 90000, turns 0 into 1000; on purpose stores first and announces the clamped value afterwards.
    void SetFcfMacCollectionTime(unsigned int time);
    void SetPMacInFpmaEnabled(bool enabled);
    void SetVlanIdEnabled(bool enabled);
    /// \name Not announced
    ///@{
    void SetPortId(unsigned int id) { m_values.portId = id; }
    void SetAutoNeighborDiscoveryEnabled(bool enabled) { m_values.autoNeighborDiscoveryEnabled = enabled; }
    void SetAutoArpEnabled(bool enabled) { m_values.autoArpEnabled = enabled; }
    ///@}
    ///@}

    /// \name Interfaces
    ///@{
    EInterfaceItemList const& GetInterfaceItemList() const { return *this; }
    EInterfaceItemList& GetInterfaceItemList() { return *this; }
    EInterfaceItem const* GetInterfaceItem(unsigned int id) const { return GetItem(id); }
    EInterfaceItem* GetInterfaceItem(unsigned int id) { return GetItem(id); }
    /// Stores first and then announces the stored item, which knows its id and parent by then. 0, with nothing added,
    /// when the ids are used up. Nothing is added either, and no id used up, when memory fails; but when an observer
    /// throws, the item stays.
    unsigned int AddInterfaceItem(EInterfaceItem const& item);
    bool SetInterfaceItem(unsigned int id, EInterfaceItem const& item); ///< False without one of that id.
    bool RemoveInterfaceItem(unsigned int id); ///< Announced while it is still there; false when it is not.
    /// Appends, in ascending order of the ids, each enabled IPv4 address and then every IPv6 address of the interface,
    /// on purpose without asking whether the interface is enabled.
    void GetAllIPs(std::list<EIPAddress>& addresses) const;
    /// \name The first enabled interface that has one; null without
    ///@{
    EInterfaceItem const* GetFirstIPv4Interface() const;
    EInterfaceItem const* GetFirstIPv6Interface() const;
    EInterfaceItem const* GetFirstDHCPv4Interface() const;
    EInterfaceItem const* GetFirstDHCPv6Interface() const;
    ///@}
    /// The interface with this address. With an observer of the name "IP_LOOKUP_HOOKS" its answer is final, otherwise
    /// the first in ascending order of the ids. Null without one.
    EInterfaceItem const* FindInterfaceByIP(EIPAddress const& address) const;
    /// The same; the VLAN (may be null) is only told to the observer, a scan does not consult it.
    EInterfaceItem const* FindInterfaceByIPAndVlan(EIPAddress const& address, EVLAN const* vlan) const;
    EInterfaceItem const* FindConnectedInterfaceByIP(EIPAddress const& address) const; ///< Passes GRE interfaces over.
    ///@}

    /// \name Component ids
    /// Level 0 of a path is the port id, level 1 the list number 1, level 2 the interface id, deeper levels as in
    /// GetIdType. Every getter answers null for a path that leads nowhere and creates nothing. MATCH_PREFIX accepts a
    /// path that goes on behind the record's own.
    ///@{
    using EInterfaceItemList::GetID;    // of an item
    void GetID(EComponentId& id) const; ///< [port id]
    /// The kind of record that a path addresses: 4 interface list, 1 interface, 5 IPv6 list, 2 IPv6 address, 3 IPv4
    /// address, 6 DHCP, 7 DHCPv6, 12 FCoE, 16 NPIV; 8 to 26 otherwise; 0 for none. Looks at the path only.
    unsigned int GetIdType(EComponentId const& id) const;

    using MatchingTypes = EComponentId::MatchingTypes;
    static constexpr MatchingTypes kExact = EComponentId::MATCH_EXACT;

    EInterfaceItem const* GetInterfaceItem(EComponentId const& id, MatchingTypes matching = kExact) const;
    EInterfaceItem* GetInterfaceItem(EComponentId const& id, MatchingTypes matching = kExact);
    EInterfaceItem const* GetInterfaceItem(ESubId first, ESubId last) const;
    EInterfaceItem* GetInterfaceItem(ESubId first, ESubId last);

    EInterfaceItemList const* GetInterfaceItemList(EComponentId const& id, MatchingTypes matching = kExact) const;
    EInterfaceItemList* GetInterfaceItemList(EComponentId const& id, MatchingTypes matching = kExact);
    EInterfaceItemList const* GetInterfaceItemList(ESubId first, ESubId last) const;
    EInterfaceItemList* GetInterfaceItemList(ESubId first, ESubId last);

    EIPv4AddressItem const* GetIPv4AddressItem(EComponentId const& id, MatchingTypes matching = kExact) const;
    EIPv4AddressItem* GetIPv4AddressItem(EComponentId const& id, MatchingTypes matching = kExact);
    EIPv4AddressItem const* GetIPv4AddressItem(ESubId first, ESubId last) const;
    EIPv4AddressItem* GetIPv4AddressItem(ESubId first, ESubId last);

    EIPv6AddressItem const* GetIPv6AddressItem(EComponentId const& id, MatchingTypes matching = kExact) const;
    EIPv6AddressItem* GetIPv6AddressItem(EComponentId const& id, MatchingTypes matching = kExact);
    EIPv6AddressItem const* GetIPv6AddressItem(ESubId first, ESubId last) const;
    EIPv6AddressItem* GetIPv6AddressItem(ESubId first, ESubId last);

    EIPv6AddressItemList const* GetIPv6AddressItemList(EComponentId const& id, MatchingTypes matching = kExact) const;
    EIPv6AddressItemList* GetIPv6AddressItemList(EComponentId const& id, MatchingTypes matching = kExact);
    EIPv6AddressItemList const* GetIPv6AddressItemList(ESubId first, ESubId last) const;
    EIPv6AddressItemList* GetIPv6AddressItemList(ESubId first, ESubId last);

    EDHCPProperties const* GetDHCPProperties(EComponentId const& id, MatchingTypes matching = kExact) const;
    EDHCPProperties* GetDHCPProperties(EComponentId const& id, MatchingTypes matching = kExact);
    EDHCPProperties const* GetDHCPProperties(ESubId first, ESubId last) const;
    EDHCPProperties* GetDHCPProperties(ESubId first, ESubId last);

    EDHCPv6Properties const* GetDHCPv6Properties(EComponentId const& id, MatchingTypes matching = kExact) const;
    EDHCPv6Properties* GetDHCPv6Properties(EComponentId const& id, MatchingTypes matching = kExact);
    EDHCPv6Properties const* GetDHCPv6Properties(ESubId first, ESubId last) const;
    EDHCPv6Properties* GetDHCPv6Properties(ESubId first, ESubId last);

    EFCoEConfig const* GetFCoEConfig(EComponentId const& id, MatchingTypes matching = kExact) const;
    EFCoEConfig* GetFCoEConfig(EComponentId const& id, MatchingTypes matching = kExact);
    EFCoEConfig const* GetFCoEConfig(ESubId first, ESubId last) const;
    EFCoEConfig* GetFCoEConfig(ESubId first, ESubId last);

    ENPIVConfig const* GetNPIVConfig(EComponentId const& id, MatchingTypes matching = kExact) const;
    ENPIVConfig* GetNPIVConfig(EComponentId const& id, MatchingTypes matching = kExact);
    ENPIVConfig const* GetNPIVConfig(ESubId first, ESubId last) const;
    ENPIVConfig* GetNPIVConfig(ESubId first, ESubId last);

    EPTPConfig const* GetPTPConfig(EComponentId const& id, MatchingTypes matching = kExact) const;
    EPTPConfig* GetPTPConfig(EComponentId const& id, MatchingTypes matching = kExact);
    EPTPConfig const* GetPTPConfig(ESubId first, ESubId last) const;
    EPTPConfig* GetPTPConfig(ESubId first, ESubId last);

    ELLDPConfig const* GetLLDPConfig(EComponentId const& id, MatchingTypes matching = kExact) const;
    ELLDPConfig* GetLLDPConfig(EComponentId const& id, MatchingTypes matching = kExact);
    ELLDPConfig const* GetLLDPConfig(ESubId first, ESubId last) const;
    ELLDPConfig* GetLLDPConfig(ESubId first, ESubId last);

    EDCBXConfig const* GetDCBXConfig(EComponentId const& id, MatchingTypes matching = kExact) const;
    EDCBXConfig* GetDCBXConfig(EComponentId const& id, MatchingTypes matching = kExact);
    EDCBXConfig const* GetDCBXConfig(ESubId first, ESubId last) const;
    EDCBXConfig* GetDCBXConfig(ESubId first, ESubId last);
    ///@}

    /// \name Observers
    /// The table holds at most one, with its name; a second one makes it an EMultipleInterfaceTableHooks named "multi"
    /// that holds both. A null name is the empty name.
    ///@{
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without an observer, one that ignores all.
    boost::shared_ptr<EInterfaceTableHooks> GetHooksPtr() const { return m_hooks; }
    std::string const& GetHooksName() const { return m_hooksName; }
    void SetHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks); ///< Replaces what is installed.
    void AddInterfaceTableHooks(char const* name, boost::shared_ptr<EInterfaceTableHooks> hooks);
    void RemoveInterfaceTableHooks(char const* name);
    boost::shared_ptr<EInterfaceTableHooks> FindInterfaceTableHooks(char const* name) const; ///< Empty without one.
    ///@}

    /// \name Host commands
    /// False: the target was not found or did not accept the command, and nothing was changed; but an edit that goes
    /// through an interface into a record created on demand creates it, accepted or not. EArchiveError of the host: the
    /// data end too early or do not fit, and the target is as it was. `std::bad_alloc`, or what an observer throws: the
    /// same, with \p added untouched; but a removal stops at the leaf that an observer refuses, the item that an
    /// observer throws at when it is added stays, and an edit as above may leave the record created.
    ///@{
    /// \p added, when not null, receives the path of the list that the new record went into; untouched by other
    /// actions.
    bool ExecuteCommand(ESingleCommand const& command, EComponentId* added);
    /// \p added, when not null, receives the path of the list and the new id as its leaf.
    bool ExecuteCommand(ESingleCommand const& command, EMultiComponentId* added);
    bool ExecuteTopLevelCommand(ESingleCommand const& command); ///< To the table itself: actions 2 set and 7 edit.
    bool DoSetCommand(ESingleCommand const& command);           ///< Action 2: one whole record, by the first leaf.
    bool DoEnableCommand(ESingleCommand const& command);        ///< Actions 3 on and 4 off.
    bool DoAddCommand(ESingleCommand const& command, EComponentId& added);      ///< Action 5, to a list.
    bool DoAddCommand(ESingleCommand const& command, EMultiComponentId& added); ///< The same.
    bool DoRemoveCommand(ESingleCommand const& command);                        ///< Action 6: every leaf of a list.
    bool DoEditCommand(ESingleCommand const& command); ///< Action 7: one field by the edit sub-id.
    /// Sub-ids 2 to 18, see the table in the source. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);
    ///@}

    void SerializeOut(EArchive& archive) const override;
    /// Empties first; the port id stays when the archive is older than version 13. An unknown version ends the process.
    /// After an exception the table holds what was read before it, whole and with its parents.
    void SerializeIn(EArchive& archive) override;

private:
    struct Values {
        eVPIMaskMode vpiMaskMode = VPI_MASK_MODE_DEFAULT;
        unsigned int dhcpv4RequestRate = 0;
        unsigned int dhcpv6RequestRate = 0;
        unsigned int dhcpv4MaxOutstandingRequests = 100;
        unsigned int dhcpv6MaxOutstandingRequests = 100;
        unsigned int fcoeRequestRate = 500;
        unsigned int fcoeRetryCount = 5;
        unsigned int fcoeRetryInterval = 2000;
        short fipVersion = 1;
        bool targetLLAddrOptionEnabled = false;
        bool fcfMacEnabled = false;
        unsigned int fcfMacCollectionTime = 1000; // 1 to 90000
        bool pMacInFpmaEnabled = false;
        bool vlanIdEnabled = false;
        unsigned int portId = 0;
        bool autoNeighborDiscoveryEnabled = false;
        bool autoArpEnabled = false;
    };

    void ConvertOldStyleUnconnectedConfigs();

    Values m_values;
    boost::shared_ptr<EInterfaceTableHooks> m_hooks; // of the table object, not of its contents
    std::string m_hooksName;
};
