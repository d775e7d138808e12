#pragma once

#include "eArchiveOperators.hpp"
#include "eDHCPDiscoveredInfo.hpp"
#include "eDcbxDiscoveredInfo.hpp"
#include "eDiscoveredAddressList.hpp"
#include "eDiscoveredIds.hpp"
#include "eDiscoveredIndex.hpp"
#include "eDiscoveredKeys.hpp"
#include "eDiscoveredNeighbor.hpp"
#include "eFCoEDiscoveredInfo.hpp"
#include "eIPAddress.hpp"
#include "ePTPDiscoveredInfo.hpp"
#include "eUniqueIDMap.hpp"
#include "ifcoreExport.hpp"

class EDiscoveredTable;

using EDiscoveredNeighborList = EUniqueIDMap<EDiscoveredNeighbor, EDiscoveredInfo const*>;

/// What the protocol engines have learnt about one interface: a row of EDiscoveredTable under the interface's id, or
/// free-standing without a parent. Owns its neighbours and finds them by MAC and by IP address.
class IFCORE_API EDiscoveredInfo {
public:
    EDiscoveredInfo();
    EDiscoveredInfo(EDiscoveredInfo const& other); ///< Deep; the id too, not the parent.
    EDiscoveredInfo& operator=(EDiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDiscoveredInfo const& other); ///< Announced once, as a whole; the id comes along, the parent stays.
    void Empty();                            ///< The same, with the defaults: the id is 0 afterwards.
    void Swap(EDiscoveredInfo& other);       ///< All but the parent; announces nothing.

    unsigned int GetLocalId() const { return m_localId; }
    void SetLocalId(unsigned int id) { m_localId = id; } ///< For the container: announces nothing.
    EDiscoveredTable const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredTable const* parent) { m_parent = parent; }
    void GetComponentId(EComponentId& id) const; ///< [id]; untouched without a parent.
    EDiscoveredTableHooks& GetHooks() const;     ///< Never fails: without a parent, one that ignores all.

    bool IsInterfaceUp() const { return m_interfaceUp; }
    void SetInterfaceUp(bool up); ///< Announced on a real change only.

    /// \name The interface's own addresses, in the order of adding, each once
    ///@{
    unsigned int GetAddressCount() const { return static_cast<unsigned int>(m_addresses.GetCount()); }
    EIPAddress const* GetAddressAt(unsigned int position) const; ///< Null beyond the last.
    bool HasAddress(EIPAddress const& address) const;
    void AddAddress(EIPAddress const& address);
    void RemoveAddress(EIPAddress const& address);
    ///@}

    /// \name Neighbours
    ///@{
    EDiscoveredNeighborList const& GetNeighbors() const { return m_neighbors; }
    EDiscoveredNeighbor const* GetNeighbor(unsigned int id) const { return m_neighbors.GetItem(id); } ///< Or null.
    EDiscoveredNeighbor* GetNeighbor(unsigned int id) { return m_neighbors.GetItem(id); }
    /// A copy under a fresh id, which is returned. Announced when it is stored. In a table without a default MAC this
    /// neighbour becomes the default, on purpose without asking for an address. 0, with nothing added, when the ids are
    /// used up. When memory fails or an observer throws, the neighbour is not there; its id is used up if an observer
    /// was told of it.
    unsigned int AddNeighbor(EDiscoveredNeighbor const& neighbor);
    /// The neighbour keeps its id, whatever the new content carries. Nothing for an unknown id.
    void SetNeighbor(unsigned int id, EDiscoveredNeighbor const& neighbor);
    void RemoveNeighbor(unsigned int id); ///< Announced while it is still there. The default MAC may move.
    /// \name The neighbour that was the last to get this MAC or address; null without one
    /// Removing one of several neighbours that share a MAC or an address on purpose makes it unknown for all of them.
    ///@{
    EDiscoveredNeighbor const* FindNeighborByMAC(EMACAddress const& mac) const;
    EDiscoveredNeighbor* FindNeighborByMAC(EMACAddress const& mac);
    EDiscoveredNeighbor const* FindNeighborByIP(EIPAddress const& address) const;
    EDiscoveredNeighbor* FindNeighborByIP(EIPAddress const& address);
    ///@}
    ///@}

    /// \name What each protocol has learnt; the setters announce the replacement of the whole record
    ///@{
    EDHCPDiscoveredInfo const& GetDHCPInfo() const { return m_dhcp; }
    EDHCPDiscoveredInfo& GetDHCPInfo() { return m_dhcp; }
    void SetDHCPInfo(EDHCPDiscoveredInfo const& info) { m_dhcp = info; }
    EDHCPv6DiscoveredInfo const& GetDHCPv6Info() const { return m_dhcpv6; }
    EDHCPv6DiscoveredInfo& GetDHCPv6Info() { return m_dhcpv6; }
    void SetDHCPv6Info(EDHCPv6DiscoveredInfo const& info) { m_dhcpv6 = info; }
    EFCoEDiscoveredInfo const& GetFCoEInfo() const { return m_fcoe; }
    EFCoEDiscoveredInfo& GetFCoEInfo() { return m_fcoe; }
    void SetFCoEInfo(EFCoEDiscoveredInfo const& info) { m_fcoe = info; }
    EPTPDiscoveredInfo const& GetPTPInfo() const { return m_ptp; }
    EPTPDiscoveredInfo& GetPTPInfo() { return m_ptp; }
    void SetPTPInfo(EPTPDiscoveredInfo const& info) { m_ptp = info; }
    EDCBXDiscoveredInfo const& GetDCBXInfo() const { return m_dcbx; }
    EDCBXDiscoveredInfo& GetDCBXInfo() { return m_dcbx; }
    void SetDCBXInfo(EDCBXDiscoveredInfo const& info) { m_dcbx = info; }
    ///@}

    void SerializeOut(EArchive& archive) const;
    /// Announces nothing; the id becomes that of the archive. Neighbours are found by what was read. Lists of the
    /// protocol records are appended to, as they do. An unknown version of one ends the process.
    void SerializeIn(EArchive& archive);

private:
    friend class EDiscoveredNeighbor; // keeps the IP index of its owner current, and which neighbours have addresses
    friend class EDiscoveredTable;    // sets the place

    using MacIndex = EDiscoveredIndex<EDiscoveredMacKey>;
    using IpIndex = EDiscoveredIndex<EDiscoveredIpKey>;

    struct Layout; // of the archive

    struct Entries; // of both indexes

    /// What is there under the same MAC or address is overwritten: the last neighbour wins.
    template <class Index> void PutIn(Index& index, typename Index::Entries& entries) noexcept
    {
        index.Put(entries, [this](unsigned int id) { return IsGone(id); });
    }
    void PutIn(Entries& entries) noexcept;
    /// Whether there will never be a neighbour of this id again. Without, one of it may still come.
    bool IsGone(unsigned int id) const { return id <= m_removedUpTo && !GetNeighbor(id); }
    Entries TakenOut(EDiscoveredNeighbor const& neighbor);
    void AddNeighborToMap(EDiscoveredNeighbor const* neighbor);
    void Keep(unsigned int id, EDiscoveredNeighbor& neighbor) noexcept; ///< Tells it the place.
    void KeepNeighbors() noexcept;
    void KeepNeighborsAnew() noexcept; ///< And finds out which have addresses.
    void SetHasAddress(unsigned int neighborId, bool hasAddress) noexcept;
    void TellOfAddresses() noexcept;                      ///< The table that keeps it whether a neighbour has any.
    EDiscoveredNeighbor const* LowestWithAddress() const; ///< Of the neighbours; null without one.
    void AdoptRecords();                                  ///< Makes this the parent of every record it holds.

    EDiscoveredTable const* m_parent = nullptr; // not owned, never swapped
    EDiscoveredPlace<EDiscoveredTable> m_place; // never copied or swapped
    unsigned int m_localId = 0;                 // the id under which the table keeps it
    bool m_interfaceUp = false;
    EDiscoveredAddressList m_addresses; // each once
    EDiscoveredNeighborList m_neighbors;
    EDiscoveredIds m_addressed; // the neighbours that have an address
    MacIndex m_neighborsByMac;
    IpIndex m_neighborsByIp;
    unsigned int m_removedUpTo = 0; // the highest id of a neighbour that was removed: new ones get higher ids
    EDHCPDiscoveredInfo m_dhcp;
    EDHCPv6DiscoveredInfo m_dhcpv6;
    EFCoEDiscoveredInfo m_fcoe;
    EPTPDiscoveredInfo m_ptp;
    EDCBXDiscoveredInfo m_dcbx;
};
