#pragma once

#include "eArchiveOperators.hpp"
#include "eDiscoveredAddressList.hpp"
#include "eDiscoveredIds.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"
#include "ifcoreExport.hpp"

class EComponentId;
class EDiscoveredInfo;
class EDiscoveredTableHooks;

/// A neighbour seen on an interface's link, owned by the interface's discovered info.
class IFCORE_API EDiscoveredNeighbor {
public:
    using Addresses = EDiscoveredAddressList::Addresses;

    EDiscoveredNeighbor() = default;
    EDiscoveredNeighbor(EDiscoveredNeighbor const& other); ///< The id too, not the parent.
    EDiscoveredNeighbor& operator=(EDiscoveredNeighbor const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDiscoveredNeighbor const& other); ///< Announced once, as a whole; the id comes along, the parent stays.
    void Empty();                                ///< The same, with the defaults: the id is 0 afterwards.
    void Swap(EDiscoveredNeighbor& other);       ///< All but the parent; announces nothing.

    unsigned int GetLocalId() const { return m_values.localId; }
    void SetLocalId(unsigned int id) { m_values.localId = id; } ///< For the container: announces nothing.
    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    void GetComponentId(EComponentId& id) const; ///< [interface id, id]. Each without a parent adds nothing.
    EDiscoveredTableHooks& GetHooks() const;     ///< Never fails: without a parent, one that ignores all.

    EMACAddress const& GetMac() const { return m_values.mac; }
    /// Always announced. On purpose the owner goes on finding the neighbour under its old MAC, and the table's default
    /// MAC stays.
    void SetMac(EMACAddress const& mac);
    bool IsRouter() const { return m_values.isRouter; }
    void SetIsRouter(bool isRouter); ///< Announced on a real change only.

    /// \name Addresses, in the order of adding; one may be there twice
    ///@{
    unsigned int GetAddressCount() const { return static_cast<unsigned int>(m_values.addresses.GetCount()); }
    EIPAddress const* GetAddressAt(unsigned int position) const; ///< Null beyond the last.
    bool HasAddress(EIPAddress const& address) const;
    Addresses::const_iterator AddressBegin() const { return m_values.addresses.Get().begin(); }
    Addresses::const_iterator AddressEnd() const { return m_values.addresses.Get().end(); }
    void AddAddress(EIPAddress const& address);
    /// The first that is equal. On purpose the owner no longer finds any neighbour by this address afterwards.
    void RemoveAddress(EIPAddress const& address);
    ///@}

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing; the id becomes that of the archive.

private:
    friend class EDiscoveredInfo; // sets the place

    void TellOfAddresses() noexcept; ///< The info that keeps it whether it has any.

    struct Values {
        unsigned int localId = 0; // the id under which the info keeps it
        EMACAddress mac;
        EDiscoveredAddressList addresses;
        bool isRouter = true; // on purpose, until it is known to be a host
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
    EDiscoveredPlace<EDiscoveredInfo> m_place; // never copied or swapped
};
