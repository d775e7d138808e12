#pragma once

#include "eArchiveOperators.hpp"
#include "eIPAddress.hpp"
#include "eSubId.hpp"
#include "eUniqueIDMap.hpp"
#include "ifcoreExport.hpp"

class EInterfaceItem;
class EInterfaceTableHooks;

/// One IPv6 address of an interface, kept in the interface's list under its local id.
class IFCORE_API EIPv6AddressItem {
public:
    EIPv6AddressItem() = default;
    EIPv6AddressItem(EIPv6AddressItem const&) = default; // local id and parent too
    ~EIPv6AddressItem() = default;
    EIPv6AddressItem& operator=(EIPv6AddressItem const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EIPv6AddressItem const& other); ///< Announced once, as a whole; the parent stays, the local id does not.
    void Empty();                             ///< The same, with the defaults: the local id becomes 0.
    void Swap(EIPv6AddressItem& other);       ///< The local id too, on purpose; the parents stay. Announces nothing.
    bool operator!=(EIPv6AddressItem const& other) const; ///< The local id is compared, the parent is not.

    unsigned int GetLocalId() const { return m_values.localId; }
    void SetLocalId(unsigned int id) { m_values.localId = id; }
    EIPAddress const& GetAddress() const { return m_values.address; }
    unsigned int GetMaskLength() const { return m_values.maskLength; }

    void SetAddress(EIPAddress const& address);
    void SetMaskLength(unsigned int bits); ///< More than 128 is announced and stored as 128.

    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Empties first. An unknown version ends the process.
    /// Sub-ids 1 address, 2 mask length. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    template <class Item, class Parent> friend class EUniqueIDMapImpl;
    void SerializeInNew(EArchive& archive); ///< SerializeIn of a record that holds its defaults and has no parent.

    struct Values {
        static EIPAddress Unspecified(); // IPv6, all zero

        unsigned int localId = 0;     // within the interface's list
        unsigned int maskLength = 64; // bits, 0 to 128
        EIPAddress address = Unspecified();
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
