#pragma once

#include "eArchiveOperators.hpp"
#include "eIPAddress.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

class EInterfaceItem;
class EInterfaceTableHooks;

/// The IPv4 address of one interface, which owns it by value.
class IFCORE_API EIPv4AddressItem {
public:
    EIPv4AddressItem() = default;
    EIPv4AddressItem(EIPv4AddressItem const&) = default; // the parent too
    ~EIPv4AddressItem() = default;
    EIPv4AddressItem& operator=(EIPv4AddressItem const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EIPv4AddressItem const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                         ///< The same, with the defaults.
    void Swap(EIPv4AddressItem& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(EIPv4AddressItem const& other) const; ///< The parent is not compared.

    bool IsEnabled() const { return m_values.enabled; }
    EIPAddress const& GetAddress() const { return m_values.address; }
    EIPAddress const& GetGateway() const { return m_values.gateway; }
    unsigned int GetMaskLength() const { return m_values.maskLength; }
    unsigned int GetMSS() const { return m_values.mss; }

    void SetEnabled(bool enabled); ///< Announced on a real change only.
    void SetAddress(EIPAddress const& address);
    void SetGateway(EIPAddress const& gateway);
    void SetMaskLength(unsigned int bits); ///< More than 32 is announced and stored as 32.
    bool SetMSS(unsigned int bytes);       ///< Clamps to 28 to 65495 but keeps 0; false when it had to. Not announced.

    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Empties first. An unknown version ends the process.
    /// Sub-ids 1 gateway, 2 mask length, 3 address, 4 MSS. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    friend class EInterfaceItem;
    void SerializeInNew(EArchive& archive); ///< SerializeIn of a record that holds its defaults.

    struct Values {
        bool enabled = false;
        EIPAddress address;           // IPv4 0.0.0.0
        EIPAddress gateway;           // IPv4 0.0.0.0
        unsigned int maskLength = 24; // bits, 0 to 32
        unsigned int mss = 0;         // bytes: 0, or 28 to 65495
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
