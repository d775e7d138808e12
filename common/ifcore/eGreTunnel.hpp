#pragma once

#include "eArchiveOperators.hpp"
#include "eComponentId.hpp"
#include "eIPAddress.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

#include <string>

class EInterfaceTable;
class EInterfaceTableHooks;

/// A GRE tunnel of an earlier table layout, which kept tunnels in a list of their own; the GRE settings now live in
/// the interface (EInterfaceData_Gre). Kept so that archives which hold such a list can be read. Announces nothing.
class IFCORE_API EObsoleteGreTunnel {
public:
    EObsoleteGreTunnel() = default;
    EObsoleteGreTunnel(EObsoleteGreTunnel const&) = default; // local id and parent too
    ~EObsoleteGreTunnel() = default;
    EObsoleteGreTunnel& operator=(EObsoleteGreTunnel const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EObsoleteGreTunnel const& other);             ///< All but the local id and the parent, on purpose.
    void Empty();                                           ///< The same, with the defaults.
    void Swap(EObsoleteGreTunnel& other);                   ///< Every field, the local id too; the parents stay.
    bool operator!=(EObsoleteGreTunnel const& other) const; ///< The local id is compared, the parent is not.

    bool IsEnabled() const { return m_values.enabled; }
    void SetEnabled(bool enabled) { m_values.enabled = enabled; }
    unsigned int GetLocalId() const { return m_localId; }
    void SetLocalId(unsigned int id) { m_localId = id; }
    EInterfaceTable const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceTable const* parent) { m_parent = parent; }
    std::string const& GetName() const { return m_values.name; }
    void SetName(std::string const& name) { m_values.name = name; }
    EComponentId const& GetSourceIp() const { return m_values.source; }
    void SetSourceIp(EComponentId const& interface) { m_values.source = interface; }
    EIPAddress const& GetDestIp() const { return m_values.destination; }
    void SetDestIp(EIPAddress const& address) { m_values.destination = address; }
    bool GetUseChecksum() const { return m_values.useChecksum; }
    void SetUseChecksum(bool const& use) { m_values.useChecksum = use; }
    bool GetUseSequence() const { return m_values.useSequence; }
    void SetUseSequence(bool const& use) { m_values.useSequence = use; }
    bool GetUseKey() const { return m_values.useKey; }
    void SetUseKey(bool const& use) { m_values.useKey = use; }
    unsigned int GetKey() const { return m_values.key; }
    void SetKey(unsigned int const& key) { m_values.key = key; }

    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Empties first. An unknown version ends the process.
    /// Sub-ids 1 name, 2 source, 3 destination, 4 use checksum, 5 use sequence, 6 use key, 7 key.
    /// False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        bool enabled = false;
        std::string name;
        EComponentId source;      // the interface whose address is the near end
        EIPAddress destination;   // IPv4 0.0.0.0; the far end
        bool useChecksum = false; // RFC 2784
        bool useSequence = false; // RFC 2890
        bool useKey = false;      // RFC 2890
        unsigned int key = 0;
    };
    Values m_values;
    unsigned int m_localId = 0;                // within the owning list
    EInterfaceTable const* m_parent = nullptr; // not owned
};
