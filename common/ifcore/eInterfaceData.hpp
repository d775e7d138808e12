#pragma once

#include "eArchiveOperators.hpp"
#include "eComponentId.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"
#include "ifcoreExport.hpp"

class EInterfaceItem;
class EInterfaceTableHooks;

/// Encapsulations of an ATM interface (RFC 2684, PPP RFC 2364, classical IP RFC 2225). Any value is legal to hold.
enum eAtmEncapsulationMode : unsigned int {
    ATM_ENCAPSULATION_NONE = 0,
    ATM_ENCAPSULATION_VMR_IPV4 = 1,
    ATM_ENCAPSULATION_ETH_VMB_FCS = 2,
    ATM_ENCAPSULATION_ETH_VMB_NO_FCS = 3,
    ATM_ENCAPSULATION_VMR_IPV6 = 4,
    ATM_ENCAPSULATION_VMR_MPLS = 5,
    ATM_ENCAPSULATION_LLCR_CLIP = 6,
    ATM_ENCAPSULATION_LLCB_ETH_FCS = 7,
    ATM_ENCAPSULATION_LLCB_ETH_NO_FCS = 8,
    ATM_ENCAPSULATION_LLCR_PPPOA = 9,
    ATM_ENCAPSULATION_VMR_PPPOA = 10,
    ATM_ENCAPSULATION_LLC_ISIS = 11,
    ATM_ENCAPSULATION_VM_ISIS = 12,
    ATM_ENCAPSULATION_LLC = 13,
    ATM_ENCAPSULATION_LLC_L2TP = 14,
    ATM_ENCAPSULATION_VMR_L2TP = 15
};

/// The ATM mode of an interface. The values are the host's; any is legal to hold.
enum EAtmModeEnum : unsigned int { ATM_MODE_DEFAULT = 0 };

/// What an Ethernet interface has beside the common data. Created on demand by its interface, which owns it; announces
/// with the interface, hence in silence without one. Copies take the parent too.
class IFCORE_API EInterfaceData_Ethernet {
public:
    EInterfaceData_Ethernet() = default;
    EInterfaceData_Ethernet(EInterfaceData_Ethernet const&) = default;
    EInterfaceData_Ethernet& operator=(EInterfaceData_Ethernet const&) = delete;

    EMACAddress const& GetMacAddress() const { return m_values.macAddress; }
    EVLANIPAddressTableItemProperties const& GetVLANItem() const { return m_values.vlans; }
    unsigned int GetMTU() const { return m_values.mtu; }
    bool UidFromMac() const { return m_values.uidFromMac; }

    void SetMacAddress(EMACAddress const& mac);
    void SetVLANItem(EVLANIPAddressTableItemProperties const& vlans);
    void SetMTU(unsigned int bytes);
    void SetUidFromMac(bool uidFromMac) { m_values.uidFromMac = uidFromMac; } ///< Not announced.

    EInterfaceItem* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        EMACAddress macAddress;
        EVLANIPAddressTableItemProperties vlans;
        unsigned int mtu = 1500; // bytes
        bool uidFromMac = true;  // the EUID follows the MAC address; nothing here derives it
    };
    Values m_values;
    EInterfaceItem* m_parent = nullptr; // not owned
};

/// What an ATM interface has beside the common data. Created on demand by its interface, which owns it; announces
/// with the interface, hence in silence without one. Copies take the parent too.
class IFCORE_API EInterfaceData_Atm {
public:
    EInterfaceData_Atm() = default;
    EInterfaceData_Atm(EInterfaceData_Atm const&) = default;
    EInterfaceData_Atm& operator=(EInterfaceData_Atm const&) = delete;

    eAtmEncapsulationMode GetEncapsulation() const { return m_values.encapsulation; }
    EAtmModeEnum GetATMMode() const { return m_values.mode; }
    unsigned int GetVPI() const { return m_values.vpi; }
    unsigned int GetVCI() const { return m_values.vci; }

    void SetEncapsulation(eAtmEncapsulationMode encapsulation);
    void SetATMMode(EAtmModeEnum mode);
    void SetVPI(unsigned int vpi);
    void SetVCI(unsigned int vci);

    EInterfaceItem* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        eAtmEncapsulationMode encapsulation = ATM_ENCAPSULATION_NONE;
        EAtmModeEnum mode = ATM_MODE_DEFAULT;
        unsigned int vpi = 0; // 8 bits (UNI) or 12 bits (NNI) on the wire
        unsigned int vci = 0; // 16 bits on the wire
    };
    Values m_values;
    EInterfaceItem* m_parent = nullptr; // not owned
};

/// What a PPP interface has beside the common data. Created on demand by its interface, which owns it; announces
/// with the interface, hence in silence without one. Copies take the parent too.
class IFCORE_API EInterfaceData_Ppp {
public:
    EInterfaceData_Ppp() = default;
    EInterfaceData_Ppp(EInterfaceData_Ppp const&) = default;
    EInterfaceData_Ppp& operator=(EInterfaceData_Ppp const&) = delete;

    unsigned int GetPPPHandle() const { return m_values.handle; }
    unsigned int GetPPPSession() const { return m_values.session; }

    void SetPPPHandle(unsigned int handle);
    void SetPPPSession(unsigned int session);

    EInterfaceItem* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        unsigned int handle = 0;
        unsigned int session = 0;
    };
    Values m_values;
    EInterfaceItem* m_parent = nullptr; // not owned
};

/// What a GRE interface (RFC 2784, RFC 2890) has beside the common data. Created on demand by its interface, which owns
/// it; announces with the interface, hence in silence without one. Copies take the parent too.
class IFCORE_API EInterfaceData_Gre {
public:
    EInterfaceData_Gre() = default;
    EInterfaceData_Gre(EInterfaceData_Gre const&) = default;
    EInterfaceData_Gre& operator=(EInterfaceData_Gre const&) = delete;

    EComponentId const& GetSourceIp() const { return m_values.source; }
    EIPAddress const& GetDestIp() const { return m_values.destination; }
    bool GetUseChecksum() const { return m_values.useChecksum; }
    bool GetUseSequence() const { return m_values.useSequence; }
    bool GetUseKey() const { return m_values.useKey; }
    unsigned int GetInKey() const { return m_values.inKey; }
    unsigned int GetOutKey() const { return m_values.outKey; }

    void SetSourceIp(EComponentId const& interface);
    void SetDestIp(EIPAddress const& address);
    void SetUseChecksum(bool use);
    void SetUseSequence(bool use);
    void SetUseKey(bool use);
    void SetInKey(unsigned int key);
    void SetOutKey(unsigned int key);

    EInterfaceItem* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        EComponentId source;      // the interface whose address is the tunnel's source
        EIPAddress destination;   // IPv4 0.0.0.0; the far end
        bool useChecksum = false; // RFC 2784
        bool useSequence = false; // RFC 2890
        bool useKey = false;      // RFC 2890
        unsigned int inKey = 0;   // expected of the far end
        unsigned int outKey = 0;  // sent
    };
    Values m_values;
    EInterfaceItem* m_parent = nullptr; // not owned
};

/// What an interface that is reached through another one has beside the common data. Created on demand by its
/// interface, which owns it; announces with the interface, hence in silence without one. Copies take the parent too.
class IFCORE_API EInterfaceData_Routed {
public:
    EInterfaceData_Routed() = default;
    EInterfaceData_Routed(EInterfaceData_Routed const&) = default;
    EInterfaceData_Routed& operator=(EInterfaceData_Routed const&) = delete;

    EComponentId const& GetConnectedViaId() const { return m_values.connectedViaId; }
    void SetConnectedViaId(EComponentId const& interface);

    EInterfaceItem* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< Announces nothing. An unknown version ends the process.

private:
    struct Values {
        EComponentId connectedViaId; // the interface through which this unconnected one is reached
    };
    Values m_values;
    EInterfaceItem* m_parent = nullptr; // not owned
};
