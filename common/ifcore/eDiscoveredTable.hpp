#pragma once

#include "eArchiveOperators.hpp"
#include "eDiscoveredIds.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredTableHooks.hpp"
#include "eHalOutgoing.hpp"
#include "eMACAddress.hpp"
#include "eUniqueIDMap.hpp"
#include "ifcoreExport.hpp"

#include <boost/shared_ptr.hpp>

class EComponentId;
class EIPAddress;

using EDiscoveredInfoList = EUniqueIDMap<EDiscoveredInfo, EDiscoveredTable const*>;

/// What the protocol engines of one port have learnt, an info for each interface, and the port's default MAC: that of
/// one neighbour. Threads may read one that nobody changes; the host serialises the rest.
class IFCORE_API EDiscoveredTable {
public:
    EDiscoveredTable();
    EDiscoveredTable(
        EDiscoveredTable const& other); ///< On purpose without the default MAC itself: its two ids come along.
    EDiscoveredTable& operator=(EDiscoveredTable const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDiscoveredTable const& other); ///< Announced once, as a whole; copies as the constructor does.
    void Empty();                             ///< Announced once, as a whole.
    void Swap(EDiscoveredTable& other);       ///< All but the observers; announces nothing.

    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without an observer, one that ignores all.

    static eHal::EProtocolName const& StaticGetProtocolName(); ///< "DiscoveredTable"
    eHal::EProtocolName const& GetProtocolName() const { return StaticGetProtocolName(); }

    /// \name Infos, by interface id
    ///@{
    EDiscoveredInfoList const& GetInfos() const { return m_infos; }
    EDiscoveredInfo const* GetInfo(unsigned int id) const { return m_infos.GetItem(id); } ///< Null without one.
    EDiscoveredInfo* GetInfo(unsigned int id) { return m_infos.GetItem(id); }
    /// A copy under its own id, replacing what has it. Announced when it is stored.
    void AddInfo(EDiscoveredInfo const& info);
    void RemoveInfo(unsigned int id); ///< Announced while it is still there.
    /// The info keeps its id, whatever the new content carries. Announced by the info. For an unknown id nothing but
    /// that the default MAC is found anew, when there is none or it is said to be of that id.
    void SetInfo(unsigned int id, EDiscoveredInfo const& info);
    /// The first in ascending order of the ids that has this address of its own; null without one.
    EDiscoveredInfo const* FindInfoByIP(EIPAddress const& address) const;
    ///@}

    /// \name By component id: [interface id] and [interface id, neighbour id]; what follows is ignored
    ///@{
    void GetComponentId(EComponentId& id) const; ///< Empty: the table is the root.
    EDiscoveredInfo const* GetInfo(EComponentId const& id) const;
    EDiscoveredInfo* GetInfo(EComponentId const& id);
    EDiscoveredNeighbor const* GetNeighbor(EComponentId const& id) const;
    EDiscoveredNeighbor* GetNeighbor(EComponentId const& id);
    ///@}

    /// \name Default MAC
    /// Kept current when infos and neighbours are added, set and removed; not when a neighbour's addresses or its MAC
    /// change.
    ///@{
    bool HasDefaultMAC() const { return m_defaultMacIfId != 0; }
    EMACAddress const& GetDefaultMAC() const { return m_defaultMac; }
    unsigned int GetDefaultMACIfId() const { return m_defaultMacIfId; }   ///< 0: there is none.
    unsigned int GetDefaultMACNbrId() const { return m_defaultMacNbrId; } ///< Within that interface.
    void SetDefaultMAC(unsigned int interfaceId, unsigned int neighborId, EMACAddress const& mac); ///< Unchecked.
    /// Takes the first neighbour with an address, in ascending order of the interface ids and of the neighbour ids;
    /// without one there is no default MAC. Takes logarithmic time, however many have none.
    void FindDefaultMAC();
    /// The same within one info (may be null). False, with nothing changed, when none of its neighbours has an address.
    bool FindDefaultMACIncremental(EDiscoveredInfo const* info);
    ///@}

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version of a record ends the process.

private:
    friend class EDiscoveredInfo; // keeps current which infos have addressed neighbours

    struct Layout; // of the archive

    void Keep(unsigned int id, EDiscoveredInfo& info) noexcept; ///< Tells it the place.
    void KeepInfos() noexcept;
    void KeepInfosAnew() noexcept; ///< And finds out which have neighbours with addresses.
    void SetHasAddress(unsigned int interfaceId, bool hasAddress) noexcept { m_addressed.Set(interfaceId, hasAddress); }

    EDiscoveredInfoList m_infos; // before the observer, which goes first

public:
    /// The observer, may be null. It belongs to the table object, not to its contents: never copied, never swapped. Not
    /// to be exchanged from inside a call to it.
    boost::shared_ptr<EDiscoveredTableHooks> hooks;

private:
    EDiscoveredIds m_addressed; // the infos that have a neighbour with an address
    unsigned int m_defaultMacIfId = 0;
    unsigned int m_defaultMacNbrId = 0;
    EMACAddress m_defaultMac;
};

/// Applies a change stream: operations, each behind a `true` and its code, up to a `false`. An operation whose target
/// is not there is read and dropped, but that removing or setting it may look for a default MAC as the table's own
/// operations do; an unknown code reads nothing. What was applied before an error of the archive stays. An unknown
/// version of a record ends the process. EDiscoveredChangeWriter writes such streams.
IFCORE_API void ApplyDiscoveredTableMessage(EDiscoveredTable& table, EArchive& archive);
