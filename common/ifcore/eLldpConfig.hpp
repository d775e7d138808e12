#pragma once

#include "eArchiveOperators.hpp"
#include "eMACAddress.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

#include <string>

class EComponentId;
class EInterfaceItem;
class EInterfaceTableHooks;

/// The LLDP configuration of one interface (IEEE 802.1AB), or what a peer was heard to say.
class IFCORE_API ELLDPConfig {
public:
    /// IEEE 802.1AB table 8-2. Any value is legal to hold; the archive keeps the low 8 bits.
    enum eChassisIdSubTypes : unsigned int {
        CHASSIS_ID_COMPONENT = 1,
        CHASSIS_ID_INTERFACE_ALIAS = 2,
        CHASSIS_ID_PORT_COMPONENT = 3,
        CHASSIS_ID_MAC_ADDRESS = 4,
        CHASSIS_ID_NETWORK_ADDRESS = 5,
        CHASSIS_ID_INTERFACE_NAME = 6,
        CHASSIS_ID_LOCALLY_ASSIGNED = 7
    };
    /// IEEE 802.1AB table 8-3. Any value is legal to hold; the archive keeps the low 8 bits.
    enum ePortIdSubTypes : unsigned int {
        PORT_ID_INTERFACE_ALIAS = 1,
        PORT_ID_PORT_COMPONENT = 2,
        PORT_ID_MAC_ADDRESS = 3,
        PORT_ID_NETWORK_ADDRESS = 4,
        PORT_ID_INTERFACE_NAME = 5,
        PORT_ID_AGENT_CIRCUIT_ID = 6,
        PORT_ID_LOCALLY_ASSIGNED = 7
    };

    /// The MAC address is the value when the subtype says so, the interface name otherwise.
    /// Archived without a version, the subtype narrowed to 8 bits on purpose.
    struct IFCORE_API LLDPChassisId {
        EMACAddress mac;
        std::string interfaceName;
        eChassisIdSubTypes subType = CHASSIS_ID_MAC_ADDRESS;

        bool operator!=(LLDPChassisId const& other) const;
        void SerializeOut(EArchive& archive) const;
        void SerializeIn(EArchive& archive);
    };
    /// The same for the port.
    struct IFCORE_API LLDPPortId {
        EMACAddress mac;
        std::string interfaceName;
        ePortIdSubTypes subType = PORT_ID_INTERFACE_NAME;

        bool operator!=(LLDPPortId const& other) const;
        void SerializeOut(EArchive& archive) const;
        void SerializeIn(EArchive& archive);
    };

    ELLDPConfig() = default;
    ELLDPConfig(ELLDPConfig const&) = default; // the parent too
    ~ELLDPConfig() = default;
    ELLDPConfig& operator=(ELLDPConfig const& other)
    {
        Copy(other);
        return *this;
    }
    /// Unlike the other records' these announce nothing: the owning interface does. The parent stays.
    void Copy(ELLDPConfig const& other);
    void Empty();
    void Swap(ELLDPConfig& other);
    bool operator!=(ELLDPConfig const& other) const; ///< The parent is not compared.

    LLDPChassisId const& GetChassisId() const { return m_values.chassisId; }
    EMACAddress const& GetChassisIdMac() const { return m_values.chassisId.mac; }
    std::string const& GetChassisIdInterfaceName() const { return m_values.chassisId.interfaceName; }
    eChassisIdSubTypes GetChassisIdSubType() const { return m_values.chassisId.subType; }
    LLDPPortId const& GetPortId() const { return m_values.portId; }
    EMACAddress const& GetPortIdMac() const { return m_values.portId.mac; }
    std::string const& GetPortIdInterfaceName() const { return m_values.portId.interfaceName; }
    ePortIdSubTypes GetPortIdSubType() const { return m_values.portId.subType; }
    unsigned short GetHoldTime() const { return m_values.holdTime; }
    unsigned short GetTxInterval() const { return m_values.txInterval; }
    unsigned short GetTxDelay() const { return m_values.txDelay; }
    bool IsFastInitEnabled() const { return m_values.fastInitEnabled; }
    unsigned short GetTimeToLive() const { return m_values.timeToLive; }
    int GetPeerStatus() const { return m_values.peerStatus; }

    void SetChassisId(LLDPChassisId const& id);
    void SetPortId(LLDPPortId const& id);
    void SetFastInitEnabled(bool enabled);
    void SetHoldTime(unsigned short multiplier); ///< Recomputes the time to live.
    void SetTxInterval(unsigned short seconds);  ///< Recomputes the time to live.
    void SetTxDelay(unsigned short seconds);

    /// \name Not announced; the parts of an id change nothing else.
    ///@{
    void SetChassisIdMac(EMACAddress const& mac) { m_values.chassisId.mac = mac; }
    void SetChassisIdInterfaceName(std::string const& name) { m_values.chassisId.interfaceName = name; }
    void SetChassisIdSubType(eChassisIdSubTypes type) { m_values.chassisId.subType = type; }
    void SetPortIdMac(EMACAddress const& mac) { m_values.portId.mac = mac; }
    void SetPortIdInterfaceName(std::string const& name) { m_values.portId.interfaceName = name; }
    void SetPortIdSubType(ePortIdSubTypes type) { m_values.portId.subType = type; }
    int SetTimeToLive(int seconds); ///< Clamps to 0 to 65535; returns what was stored.
    void SetPeerStatus(int status) { m_values.peerStatus = status; }
    ///@}

    std::string GetChassisIdAsString() const;
    std::string GetPortIdAsString() const;
    std::string GetConfigAsString() const; ///< Both ids and the time to live, on one line.

    unsigned int GetLocalId() const { return 38; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values; the time to live is taken as it stands.
    /// An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 chassis id, 2 port id, 3 hold time, 4 tx interval, 5 tx delay, 6 fast init. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        LLDPChassisId chassisId;
        LLDPPortId portId;
        unsigned short holdTime = 4;    // multiplier of the tx interval
        unsigned short txInterval = 30; // seconds
        unsigned short txDelay = 2;     // seconds
        bool fastInitEnabled = true;
        unsigned short timeToLive = 120; // seconds: hold time times tx interval, at most 65535
        int peerStatus = 0;              // 0 normal, 1 waiting for a response, others: the peer has shut down
    };
    void RecomputeTimeToLive();

    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
