#pragma once

#include "eArchiveOperators.hpp"
#include "eDHCPProperties.hpp"
#include "eDHCPv6Properties.hpp"
#include "eDcbxConfig.hpp"
#include "eFCoEConfig.hpp"
#include "eIPAddress.hpp"
#include "eIPv4AddressItem.hpp"
#include "eIPv6AddressItem.hpp"
#include "eInterfaceData.hpp"
#include "eLldpConfig.hpp"
#include "ePTPConfig.hpp"
#include "eSubId.hpp"
#include "eUID.hpp"
#include "eUniqueIDMap.hpp"
#include "ifcoreExport.hpp"

#include <memory>
#include <string>

class EInterfaceTable;
class EInterfaceTableHooks;

/// The kind of an interface. Types up to 3 are connected interfaces and behave alike. Any value is legal to hold.
enum EInterfaceTypeEnum : int {
    INTERFACE_TYPE_ETHERNET = 0,
    INTERFACE_TYPE_ATM = 1,
    INTERFACE_TYPE_PPP = 2,
    INTERFACE_TYPE_POS = 3,
    INTERFACE_TYPE_GRE = 4,
    INTERFACE_TYPE_UNCONNECTED = 5, ///< Reached through the interface that its routed data names.
    INTERFACE_TYPE_NPIV = 6
};

using EIPv6AddressItemList = EUniqueIDMap<EIPv6AddressItem, EInterfaceItem const*>;

/// One interface of a port: a row of EInterfaceTable, or free-standing without a parent.
/// Owns its address and protocol records; those that are created on demand appear with the first setter that needs
/// them. Every setter announces first and then stores, unless it says otherwise; when it throws, the value is the old
/// one, and only a record that an observer was given may have been created.
class IFCORE_API EInterfaceItem {
public:
    EInterfaceItem();
    EInterfaceItem(EInterfaceItem const& other); ///< Deep; the local id too, not the parent.
    ~EInterfaceItem();
    EInterfaceItem& operator=(EInterfaceItem const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EInterfaceItem const& other); ///< Announced once, as a whole; the local id comes along, the parent stays.
    void Empty();                           ///< Announced once, as a whole; local id and parent stay.

    /// \name Identity
    ///@{
    unsigned int GetLocalId() const { return m_values.localId; }
    void SetLocalId(unsigned int id) { m_values.localId = id; } ///< For the container: announces nothing.
    EInterfaceTable const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceTable const* parent) { m_parent = parent; }
    void GetID(EComponentId& id) const;     ///< [port, 1, local id]; free-standing [1, local id].
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    bool IsEnabled() const { return m_values.enabled; }
    void SetEnabled(bool enabled); ///< Announced on a real change only.
    EUID const& GetEUID() const { return m_values.euid; }
    void SetEUID(EUID const& id);
    std::string const& GetName() const { return m_values.name; }
    void SetName(std::string const& name);
    EInterfaceTypeEnum GetType() const { return m_values.type; }
    void SetType(EInterfaceTypeEnum type);
    bool GetConnected() const { return m_values.type <= INTERFACE_TYPE_POS; }
    EInterfaceTypeEnum GetAbstractType() const; ///< 0 for all connected types, the type itself for others.
    /// "ps-static", "ps-gre", "ps-unc", "ps-npiv"; "ps-gre-unc" when the table says that the tunnel's source is
    /// unconnected. \p table may be null.
    char const* GetLayerName(EInterfaceTable const* table) const;
    char const* GetLayerName() const { return GetLayerName(m_parent); }
    unsigned int GetVcatCircuitId() const { return m_values.vcatCircuitId; }
    void SetVcatCircuitId(unsigned int id);
    EIPAddress const& GetIPv6Gateway() const { return m_values.ipv6Gateway; }
    void SetIPv6Gateway(EIPAddress const& gateway);
    ///@}

    /// \name Addresses
    ///@{
    EIPv4AddressItem const& GetIPv4AddressItem() const { return m_ipv4; }
    EIPv4AddressItem& GetIPv4AddressItem() { return m_ipv4; }
    void SetIPv4AddressItem(EIPv4AddressItem const& item) { m_ipv4 = item; } ///< Announced by the record.
    EIPv6AddressItemList const& GetIPv6AddressItemList() const { return m_ipv6; }
    EIPv6AddressItemList& GetIPv6AddressItemList() { return m_ipv6; }
    EIPv6AddressItem const* GetIPv6AddressItem(unsigned int id) const { return m_ipv6.GetItem(id); }
    EIPv6AddressItem* GetIPv6AddressItem(unsigned int id) { return m_ipv6.GetItem(id); }
    EIPv6AddressItem const* FindIPv6AddressItem(EIPAddress const& address) const; ///< Null without one.
    EIPv6AddressItem* FindIPv6AddressItem(EIPAddress const& address);
    /// Stores first and then announces the stored record, which knows its id and parent by then. 0, with nothing added,
    /// when the ids are used up. An exception is answered as by EInterfaceTable::AddInterfaceItem.
    unsigned int AddIPv6AddressItem(EIPv6AddressItem const& item);
    /// Replaces the item, which keeps its id and parent; announced by the record. False without one of that id.
    bool SetIPv6AddressItem(unsigned int id, EIPv6AddressItem const& item);
    bool RemoveIPv6AddressItem(unsigned int id); ///< Announced while it is still there; false when it is not.
    ///@}

    /// \name The fixed leaves: act and answer true only for the record's own leaf
    ///@{
    bool SetIPv4AddressItem(unsigned int leaf, EIPv4AddressItem const& item);         ///< 6
    bool SetDHCPProperties(unsigned int leaf, EDHCPProperties const& properties);     ///< 24
    bool SetDHCPv6Properties(unsigned int leaf, EDHCPv6Properties const& properties); ///< 26
    bool SetFCoEConfig(unsigned int leaf, EFCoEConfig const& config);                 ///< 31
    bool SetNPIVConfig(unsigned int leaf, ENPIVConfig const& config);                 ///< 32
    ///@}

    /// \name Ethernet data; absent: MAC zero, no VLANs, MTU 1500, UID from MAC
    ///@{
    EMACAddress const& GetMacAddress() const;
    EVLANIPAddressTableItemProperties const& GetVLANItem() const;
    unsigned int GetMTU() const;
    bool OverrideAutogenEuid() const; ///< The opposite of the data's UID-from-MAC switch.
    void SetMacAddress(EMACAddress const& mac);
    void SetVLANItem(EVLANIPAddressTableItemProperties const& vlans);
    void SetMTU(unsigned int bytes);
    void SetOverrideAutogenEuid(bool override); ///< Not announced.
    EInterfaceData_Ethernet const* GetEthernetData() const { return m_ethernet.get(); }
    void EnsureEthernet();
    ///@}

    /// \name ATM data; absent: all 0
    ///@{
    eAtmEncapsulationMode GetEncapsulation() const;
    EAtmModeEnum GetATMMode() const;
    unsigned int GetVPI() const;
    unsigned int GetVCI() const;
    void SetEncapsulation(eAtmEncapsulationMode encapsulation);
    void SetATMMode(EAtmModeEnum mode);
    void SetVPI(unsigned int vpi);
    void SetVCI(unsigned int vci);
    EInterfaceData_Atm const* GetAtmData() const { return m_atm.get(); }
    void EnsureAtm();
    ///@}

    /// \name PPP data; absent: all 0
    ///@{
    unsigned int GetPPPHandle() const;
    unsigned int GetPPPSession() const;
    void SetPPPHandle(unsigned int handle);
    void SetPPPSession(unsigned int session);
    EInterfaceData_Ppp const* GetPppData() const { return m_ppp.get(); }
    void EnsurePpp();
    ///@}

    /// \name GRE data (RFC 2784, RFC 2890); absent: source empty, destination IPv4 0.0.0.0, the rest 0
    ///@{
    EComponentId const& GetGreSourceIp() const;
    EIPAddress const& GetGreDestIp() const;
    bool GetGreUseChecksum() const;
    bool GetGreUseSequence() const;
    bool GetGreUseKey() const;
    unsigned int GetGreInKey() const;
    unsigned int GetGreOutKey() const;
    void SetGreSourceIp(EComponentId const& interface);
    void SetGreDestIp(EIPAddress const& address);
    void SetGreUseChecksum(bool use);
    void SetGreUseSequence(bool use);
    void SetGreUseKey(bool use);
    void SetGreInKey(unsigned int key);
    void SetGreOutKey(unsigned int key);
    EInterfaceData_Gre const* GetGreData() const { return m_gre.get(); }
    void EnsureGre();
    ///@}

    /// \name Routed data; absent: empty
    ///@{
    EComponentId const& GetConnectedViaId() const;
    void SetConnectedViaId(EComponentId const& interface);
    EInterfaceData_Routed const* GetRoutedData() const { return m_routed.get(); }
    void EnsureRouted();
    ///@}

    /// \name Protocol switches; announced on a real change only, with the record, which is then created if missing
    ///@{
    bool IsDHCPEnabled() const { return m_values.dhcpEnabled; }
    bool IsDHCPv6Enabled() const { return m_values.dhcpv6Enabled; }
    bool IsFCoEEnabled() const { return m_values.fcoeEnabled; }
    bool IsPTPEnabled() const { return m_values.ptpEnabled; }
    bool IsDCBXEnabled() const { return m_values.dcbxEnabled; }
    bool IsLLDPEnabled() const { return m_values.lldpEnabled; }
    void SetDHCPEnabled(bool enabled);
    void SetDHCPv6Enabled(bool enabled);
    void SetFCoEEnabled(bool enabled);
    void SetPTPEnabled(bool enabled);
    void SetDCBXEnabled(bool enabled);
    void SetLLDPEnabled(bool enabled);
    ///@}

    /// \name Protocol records; whole replacements are announced once
    ///@{
    EDHCPProperties const& GetDHCPProperties() const { return m_dhcp; }
    EDHCPProperties& GetDHCPProperties() { return m_dhcp; }
    void SetDHCPProperties(EDHCPProperties const& properties) { m_dhcp = properties; }
    EDHCPv6Properties const& GetDHCPv6Properties() const { return m_dhcpv6; }
    EDHCPv6Properties& GetDHCPv6Properties() { return m_dhcpv6; }
    void SetDHCPv6Properties(EDHCPv6Properties const& properties) { m_dhcpv6 = properties; }
    EFCoEConfig const& GetFCoEConfig() const { return m_fcoe; }
    EFCoEConfig& GetFCoEConfig() { return m_fcoe; }
    void SetFCoEConfig(EFCoEConfig const& config) { m_fcoe = config; }
    ///@}

    /// \name Protocol records created on demand: ReadOnly answers null without one, the others create it
    ///@{
    ENPIVConfig const* GetNPIVConfigReadOnly() const { return m_npiv.get(); }
    ENPIVConfig& GetNPIVConfig();
    void SetNPIVConfig(ENPIVConfig const& config);
    void EnsureNPIV();
    EPTPConfig const* GetPTPConfigReadOnly() const { return m_ptp.get(); }
    EPTPConfig& GetPTPConfig();
    void SetPTPConfig(EPTPConfig const& config);
    void EnsurePTP();
    EDCBXConfig const* GetDCBXConfigReadOnly() const { return m_dcbx.get(); }
    EDCBXConfig& GetDCBXConfig();
    void SetDCBXConfig(EDCBXConfig const& config);
    void EnsureDCBX();
    ELLDPConfig const* GetLLDPConfigReadOnly() const { return m_lldp.get(); }
    ELLDPConfig& GetLLDPConfig();
    void SetLLDPConfig(ELLDPConfig const& config);
    void EnsureLLDP();
    ///@}

    /// \name NPIV fields, the defaults of ENPIVConfig without a record
    ///@{
    EUID const& GetNPIVSrcPortWWN() const { return NPIVOrDefault().GetSrcPortWWN(); }
    EUID const& GetNPIVSrcNodeWWN() const { return NPIVOrDefault().GetSrcNodeWWN(); }
    unsigned int GetNPIVB2BRxSize() const { return NPIVOrDefault().GetB2BRxSize(); }
    bool IsNPIVSCREnabled() const { return NPIVOrDefault().IsSCREnabled(); }
    bool IsNPIVNSRegistrationEnabled() const { return NPIVOrDefault().IsNSRegistrationEnabled(); }
    bool IsNPIVVnPortKeepAliveEnabled() const { return NPIVOrDefault().IsVnPortKeepAliveEnabled(); }
    bool IsNPIVPLOGIEnabled() const { return NPIVOrDefault().IsPLOGIEnabled(); }
    unsigned int GetNPIVDestNodeId() const { return NPIVOrDefault().GetDestNodeId(); }
    EComponentId const& GetNPIVConnectedViaId() const { return NPIVOrDefault().GetConnectedViaId(); }
    ///@}

    void SerializeOut(EArchive& archive) const;
    /// Empties first; the local id becomes that of the archive, the parent stays. An unknown version and an unknown tag
    /// of per-type data end the process.
    void SerializeIn(EArchive& archive);
    /// One field by the first sub-id, 2 to 38. A contained record (6, 24, 26, 31, 32, 34, 36, 38) is read whole when
    /// the range ends there, and edited with the rest of the range otherwise. False: no such field.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    template <class Item, class Parent> friend class EUniqueIDMapImpl;
    void SerializeInNew(EArchive& archive); ///< SerializeIn of a record that holds its defaults.

    /// In an order without gaps: up to 1,000 bytes an interface is one of the small blocks of the C library's
    /// allocator.
    struct Values {
        static EIPAddress NoIPv6Gateway(); // IPv6, all zero

        unsigned int localId = 0; // the id under which the table keeps it
        EInterfaceTypeEnum type = INTERFACE_TYPE_ETHERNET;
        EUID euid;
        std::string name;
        EIPAddress ipv6Gateway = NoIPv6Gateway();
        unsigned int vcatCircuitId = 0;
        bool enabled = false;
        bool dhcpEnabled = false;
        bool dhcpv6Enabled = false;
        bool fcoeEnabled = false;
        bool ptpEnabled = false;
        bool dcbxEnabled = false;
        bool lldpEnabled = false;
    };
    struct Layout; // of the archive

    void Swap(EInterfaceItem& other); ///< All but the parent; announces nothing, re-parents the records of both.
    void AdoptRecords();              ///< Makes this the parent of every record it holds.
    ENPIVConfig const& NPIVOrDefault() const;

    Values m_values;
    EInterfaceTable const* m_parent = nullptr; // not owned, never swapped
    EIPv4AddressItem m_ipv4;
    EIPv6AddressItemList m_ipv6;
    std::unique_ptr<EInterfaceData_Ethernet> m_ethernet;
    std::unique_ptr<EInterfaceData_Atm> m_atm;
    std::unique_ptr<EInterfaceData_Ppp> m_ppp;
    std::unique_ptr<EInterfaceData_Gre> m_gre;
    std::unique_ptr<EInterfaceData_Routed> m_routed;
    EDHCPProperties m_dhcp;
    EDHCPv6Properties m_dhcpv6;
    EFCoEConfig m_fcoe;
    std::unique_ptr<ENPIVConfig> m_npiv;
    std::unique_ptr<EPTPConfig> m_ptp;
    std::unique_ptr<EDCBXConfig> m_dcbx;
    std::unique_ptr<ELLDPConfig> m_lldp;
};
