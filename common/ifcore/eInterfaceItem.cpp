#include "eInterfaceItem.hpp"

#include "eInterfaceTable.hpp"
#include "eProcessWide.hpp"
#include "eRecord.hpp"

EIPAddress EInterfaceItem::Values::NoIPv6Gateway()
{
    static EProcessWide<EIPAddress> const none(EIPv6AddressItem().GetAddress());
    return none.Get();
}

template <class Record> static std::unique_ptr<Record> Clone(std::unique_ptr<Record> const& record)
{
    return record ? std::make_unique<Record>(*record) : nullptr;
}

/// What getters of absent data answer from.
template <class Record> static Record const& OrDefault(std::unique_ptr<Record> const& record)
{
    static EProcessWide<Record> const absent;
    return record ? *record : absent.Get();
}

template <class Record, class Parent> static void Adopt(std::unique_ptr<Record> const& record, Parent* parent)
{
    if (record) record->SetParent(parent);
}

template <class Record, class Parent> static Record& Ensure(std::unique_ptr<Record>& record, Parent* parent)
{
    if (!record) {
        record = std::make_unique<Record>();
        record->SetParent(parent);
    }
    return *record;
}

// Whether each field of per-type data holds what it starts with.

static bool IsFresh(EInterfaceData_Ethernet const& data)
{
    EInterfaceData_Ethernet const fresh;
    return data.GetMacAddress() == fresh.GetMacAddress() && !(data.GetVLANItem() != fresh.GetVLANItem()) &&
           data.GetMTU() == fresh.GetMTU() && data.UidFromMac() == fresh.UidFromMac();
}

static bool IsFresh(EInterfaceData_Atm const& data)
{
    EInterfaceData_Atm const fresh;
    return data.GetEncapsulation() == fresh.GetEncapsulation() && data.GetATMMode() == fresh.GetATMMode() &&
           data.GetVPI() == fresh.GetVPI() && data.GetVCI() == fresh.GetVCI();
}

static bool IsFresh(EInterfaceData_Ppp const& data)
{
    EInterfaceData_Ppp const fresh;
    return data.GetPPPHandle() == fresh.GetPPPHandle() && data.GetPPPSession() == fresh.GetPPPSession();
}

static bool IsFresh(EInterfaceData_Gre const& data)
{
    EInterfaceData_Gre const fresh;
    return data.GetSourceIp() == fresh.GetSourceIp() && data.GetDestIp() == fresh.GetDestIp() &&
           data.GetUseChecksum() == fresh.GetUseChecksum() && data.GetUseSequence() == fresh.GetUseSequence() &&
           data.GetUseKey() == fresh.GetUseKey() && data.GetInKey() == fresh.GetInKey() &&
           data.GetOutKey() == fresh.GetOutKey();
}

static bool IsFresh(EInterfaceData_Routed const& data)
{
    return data.GetConnectedViaId() == EInterfaceData_Routed().GetConnectedViaId();
}

/// Sets a field of per-type data. Data that was made for it goes again when the setter fails, unless the observer has
/// set something in it meanwhile.
template <class Record, class Parent, class Argument, class Value>
static void SetInRecord(std::unique_ptr<Record>& record, Parent* parent, void (Record::*set)(Argument),
                        Value const& value)
{
    bool const missing = !record;
    try {
        (Ensure(record, parent).*set)(value);
    } catch (...) {
        if (missing && record && IsFresh(*record)) record.reset();
        throw;
    }
}

/// Replaces a record, announced here. One that is missing is made when nothing but the observer can fail any more.
template <class Record, class Parent>
static void MakeAndSet(std::unique_ptr<Record>& record, Parent* parent,
                       void (EInterfaceTableHooks::*setting)(Record const&, Record const&), Record const& contents)
{
    Record replacement(contents);
    NotifyAndSwap(Ensure(record, parent), setting, std::move(replacement));
}

EInterfaceItem::EInterfaceItem() : m_ipv6(this)
{
    AdoptRecords();
}

EInterfaceItem::EInterfaceItem(EInterfaceItem const& other)
    : m_values(other.m_values), m_ipv4(other.m_ipv4), m_ipv6(other.m_ipv6, this), m_ethernet(Clone(other.m_ethernet)),
      m_atm(Clone(other.m_atm)), m_ppp(Clone(other.m_ppp)), m_gre(Clone(other.m_gre)), m_routed(Clone(other.m_routed)),
      m_dhcp(other.m_dhcp), m_dhcpv6(other.m_dhcpv6), m_fcoe(other.m_fcoe), m_npiv(Clone(other.m_npiv)),
      m_ptp(Clone(other.m_ptp)), m_dcbx(Clone(other.m_dcbx)), m_lldp(Clone(other.m_lldp))
{
    AdoptRecords();
}

EInterfaceItem::~EInterfaceItem() = default;

void EInterfaceItem::Copy(EInterfaceItem const& other)
{
    EInterfaceItem replacement(other);
    GetHooks().SettingInterfaceItem(*this, replacement);
    Swap(replacement);
}

void EInterfaceItem::Empty()
{
    EInterfaceItem replacement;
    replacement.SetLocalId(GetLocalId());
    GetHooks().SettingInterfaceItem(*this, replacement);
    Swap(replacement);
}

void EInterfaceItem::Swap(EInterfaceItem& other)
{
    std::swap(m_values, other.m_values);
    m_ipv4.Swap(other.m_ipv4);
    m_ipv6.Swap(other.m_ipv6);
    m_ethernet.swap(other.m_ethernet);
    m_atm.swap(other.m_atm);
    m_ppp.swap(other.m_ppp);
    m_gre.swap(other.m_gre);
    m_routed.swap(other.m_routed);
    m_dhcp.Swap(other.m_dhcp);
    m_dhcpv6.Swap(other.m_dhcpv6);
    m_fcoe.Swap(other.m_fcoe);
    m_npiv.swap(other.m_npiv);
    m_ptp.swap(other.m_ptp);
    m_dcbx.swap(other.m_dcbx);
    m_lldp.swap(other.m_lldp);
    AdoptRecords();
    other.AdoptRecords();
}

void EInterfaceItem::AdoptRecords()
{
    m_ipv4.SetParent(this);
    m_dhcp.SetParent(this);
    m_dhcpv6.SetParent(this);
    m_fcoe.SetParent(this);
    Adopt(m_ethernet, this);
    Adopt(m_atm, this);
    Adopt(m_ppp, this);
    Adopt(m_gre, this);
    Adopt(m_routed, this);
    Adopt(m_npiv, this);
    Adopt(m_ptp, this);
    Adopt(m_dcbx, this);
    Adopt(m_lldp, this);
}

// Identity

void EInterfaceItem::GetID(EComponentId& id) const
{
    if (m_parent)
        m_parent->GetID(id);
    else
        id.Empty();
    id += 1; // the table's interface list
    id += m_values.localId;
}

EInterfaceTableHooks& EInterfaceItem::GetHooks() const
{
    static EProcessWide<EIgnoreInterfaceTableHooks> const ignoring;
    return m_parent ? m_parent->GetHooks() : ignoring.Get();
}

/// Announces a switch with the record it switches, on a real change only, then stores it.
template <class Record>
static void SwitchAndStore(Record const& record, void (EInterfaceTableHooks::*enabling)(Record const&),
                           void (EInterfaceTableHooks::*disabling)(Record const&), bool& field, bool enabled)
{
    if (field == enabled) return;
    (record.GetHooks().*(enabled ? enabling : disabling))(record);
    field = enabled;
}

void EInterfaceItem::SetEnabled(bool enabled)
{
    SwitchAndStore(*this, &EInterfaceTableHooks::EnablingInterfaceItem, &EInterfaceTableHooks::DisablingInterfaceItem,
                   m_values.enabled, enabled);
}

void EInterfaceItem::SetEUID(EUID const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingInterfaceUid, m_values.euid, id);
}

void EInterfaceItem::SetName(std::string const& name)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingInterfaceName, m_values.name, name);
}

void EInterfaceItem::SetType(EInterfaceTypeEnum type)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingInterfaceType, m_values.type, type);
}

EInterfaceTypeEnum EInterfaceItem::GetAbstractType() const
{
    return GetConnected() ? INTERFACE_TYPE_ETHERNET : m_values.type;
}

char const* EInterfaceItem::GetLayerName(EInterfaceTable const* table) const
{
    switch (m_values.type) {
    case INTERFACE_TYPE_UNCONNECTED: return "ps-unc";
    case INTERFACE_TYPE_NPIV: return "ps-npiv";
    case INTERFACE_TYPE_GRE: {
        EInterfaceItem const* const source = table ? table->GetInterfaceItem(GetGreSourceIp()) : nullptr;
        return source && source->GetType() == INTERFACE_TYPE_UNCONNECTED ? "ps-gre-unc" : "ps-gre";
    }
    default: return "ps-static";
    }
}

void EInterfaceItem::SetVcatCircuitId(unsigned int id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingVcatCircuitId, m_values.vcatCircuitId, id);
}

void EInterfaceItem::SetIPv6Gateway(EIPAddress const& gateway)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingIPv6Gateway, m_values.ipv6Gateway, gateway);
}

// Addresses

EIPv6AddressItem const* EInterfaceItem::FindIPv6AddressItem(EIPAddress const& address) const
{
    for (auto position = m_ipv6.begin(); position != m_ipv6.end(); ++position) {
        EIPv6AddressItem const* const item = m_ipv6.GetItem(position);
        if (item->GetAddress() == address) return item;
    }
    return nullptr;
}

EIPv6AddressItem* EInterfaceItem::FindIPv6AddressItem(EIPAddress const& address)
{
    return const_cast<EIPv6AddressItem*>(std::as_const(*this).FindIPv6AddressItem(address));
}

unsigned int EInterfaceItem::AddIPv6AddressItem(EIPv6AddressItem const& item)
{
    unsigned int const id = m_ipv6.AddItem(item);
    if (id != 0) GetHooks().AddingIPv6AddressItem(*m_ipv6.GetItem(id));
    return id;
}

bool EInterfaceItem::RemoveIPv6AddressItem(unsigned int id)
{
    EIPv6AddressItem const* const item = m_ipv6.GetItem(id);
    if (!item) return false;
    GetHooks().RemovingIPv6AddressItem(*item);
    return m_ipv6.RemoveItem(id);
}

// The fixed leaves

bool EInterfaceItem::SetIPv4AddressItem(unsigned int leaf, EIPv4AddressItem const& item)
{
    if (leaf != 6) return false;
    SetIPv4AddressItem(item);
    return true;
}

bool EInterfaceItem::SetDHCPProperties(unsigned int leaf, EDHCPProperties const& properties)
{
    if (leaf != m_dhcp.GetLocalId()) return false;
    SetDHCPProperties(properties);
    return true;
}

bool EInterfaceItem::SetDHCPv6Properties(unsigned int leaf, EDHCPv6Properties const& properties)
{
    if (leaf != m_dhcpv6.GetLocalId()) return false;
    SetDHCPv6Properties(properties);
    return true;
}

bool EInterfaceItem::SetFCoEConfig(unsigned int leaf, EFCoEConfig const& config)
{
    if (leaf != m_fcoe.GetLocalId()) return false;
    SetFCoEConfig(config);
    return true;
}

bool EInterfaceItem::SetNPIVConfig(unsigned int leaf, ENPIVConfig const& config)
{
    if (leaf != config.GetLocalId()) return false;
    SetNPIVConfig(config);
    return true;
}

bool EInterfaceItem::SetIPv6AddressItem(unsigned int id, EIPv6AddressItem const& item)
{
    return m_ipv6.SetItem(id, item);
}

// Per-type data

void EInterfaceItem::EnsureEthernet()
{
    Ensure(m_ethernet, this);
}

void EInterfaceItem::EnsureAtm()
{
    Ensure(m_atm, this);
}

void EInterfaceItem::EnsurePpp()
{
    Ensure(m_ppp, this);
}

void EInterfaceItem::EnsureGre()
{
    Ensure(m_gre, this);
}

void EInterfaceItem::EnsureRouted()
{
    Ensure(m_routed, this);
}

EMACAddress const& EInterfaceItem::GetMacAddress() const
{
    return OrDefault(m_ethernet).GetMacAddress();
}

EVLANIPAddressTableItemProperties const& EInterfaceItem::GetVLANItem() const
{
    return OrDefault(m_ethernet).GetVLANItem();
}

unsigned int EInterfaceItem::GetMTU() const
{
    return OrDefault(m_ethernet).GetMTU();
}

bool EInterfaceItem::OverrideAutogenEuid() const
{
    return m_ethernet && !m_ethernet->UidFromMac();
}

void EInterfaceItem::SetMacAddress(EMACAddress const& mac)
{
    SetInRecord(m_ethernet, this, &EInterfaceData_Ethernet::SetMacAddress, mac);
}

void EInterfaceItem::SetVLANItem(EVLANIPAddressTableItemProperties const& vlans)
{
    SetInRecord(m_ethernet, this, &EInterfaceData_Ethernet::SetVLANItem, vlans);
}

void EInterfaceItem::SetMTU(unsigned int bytes)
{
    SetInRecord(m_ethernet, this, &EInterfaceData_Ethernet::SetMTU, bytes);
}

void EInterfaceItem::SetOverrideAutogenEuid(bool override)
{
    Ensure(m_ethernet, this).SetUidFromMac(!override);
}

eAtmEncapsulationMode EInterfaceItem::GetEncapsulation() const
{
    return OrDefault(m_atm).GetEncapsulation();
}

EAtmModeEnum EInterfaceItem::GetATMMode() const
{
    return OrDefault(m_atm).GetATMMode();
}

unsigned int EInterfaceItem::GetVPI() const
{
    return OrDefault(m_atm).GetVPI();
}

unsigned int EInterfaceItem::GetVCI() const
{
    return OrDefault(m_atm).GetVCI();
}

void EInterfaceItem::SetEncapsulation(eAtmEncapsulationMode encapsulation)
{
    SetInRecord(m_atm, this, &EInterfaceData_Atm::SetEncapsulation, encapsulation);
}

void EInterfaceItem::SetATMMode(EAtmModeEnum mode)
{
    SetInRecord(m_atm, this, &EInterfaceData_Atm::SetATMMode, mode);
}

void EInterfaceItem::SetVPI(unsigned int vpi)
{
    SetInRecord(m_atm, this, &EInterfaceData_Atm::SetVPI, vpi);
}

void EInterfaceItem::SetVCI(unsigned int vci)
{
    SetInRecord(m_atm, this, &EInterfaceData_Atm::SetVCI, vci);
}

unsigned int EInterfaceItem::GetPPPHandle() const
{
    return OrDefault(m_ppp).GetPPPHandle();
}

unsigned int EInterfaceItem::GetPPPSession() const
{
    return OrDefault(m_ppp).GetPPPSession();
}

void EInterfaceItem::SetPPPHandle(unsigned int handle)
{
    SetInRecord(m_ppp, this, &EInterfaceData_Ppp::SetPPPHandle, handle);
}

void EInterfaceItem::SetPPPSession(unsigned int session)
{
    SetInRecord(m_ppp, this, &EInterfaceData_Ppp::SetPPPSession, session);
}

EComponentId const& EInterfaceItem::GetGreSourceIp() const
{
    return OrDefault(m_gre).GetSourceIp();
}

EIPAddress const& EInterfaceItem::GetGreDestIp() const
{
    return OrDefault(m_gre).GetDestIp();
}

bool EInterfaceItem::GetGreUseChecksum() const
{
    return OrDefault(m_gre).GetUseChecksum();
}

bool EInterfaceItem::GetGreUseSequence() const
{
    return OrDefault(m_gre).GetUseSequence();
}

bool EInterfaceItem::GetGreUseKey() const
{
    return OrDefault(m_gre).GetUseKey();
}

unsigned int EInterfaceItem::GetGreInKey() const
{
    return OrDefault(m_gre).GetInKey();
}

unsigned int EInterfaceItem::GetGreOutKey() const
{
    return OrDefault(m_gre).GetOutKey();
}

void EInterfaceItem::SetGreSourceIp(EComponentId const& interface)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetSourceIp, interface);
}

void EInterfaceItem::SetGreDestIp(EIPAddress const& address)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetDestIp, address);
}

void EInterfaceItem::SetGreUseChecksum(bool use)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetUseChecksum, use);
}

void EInterfaceItem::SetGreUseSequence(bool use)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetUseSequence, use);
}

void EInterfaceItem::SetGreUseKey(bool use)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetUseKey, use);
}

void EInterfaceItem::SetGreInKey(unsigned int key)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetInKey, key);
}

void EInterfaceItem::SetGreOutKey(unsigned int key)
{
    SetInRecord(m_gre, this, &EInterfaceData_Gre::SetOutKey, key);
}

EComponentId const& EInterfaceItem::GetConnectedViaId() const
{
    return OrDefault(m_routed).GetConnectedViaId();
}

void EInterfaceItem::SetConnectedViaId(EComponentId const& interface)
{
    SetInRecord(m_routed, this, &EInterfaceData_Routed::SetConnectedViaId, interface);
}

// Protocol switches

void EInterfaceItem::SetDHCPEnabled(bool enabled)
{
    SwitchAndStore(m_dhcp, &EInterfaceTableHooks::EnablingDhcpItem, &EInterfaceTableHooks::DisablingDhcpItem,
                   m_values.dhcpEnabled, enabled);
}

void EInterfaceItem::SetDHCPv6Enabled(bool enabled)
{
    SwitchAndStore(m_dhcpv6, &EInterfaceTableHooks::EnablingDhcpv6Item, &EInterfaceTableHooks::DisablingDhcpv6Item,
                   m_values.dhcpv6Enabled, enabled);
}

void EInterfaceItem::SetFCoEEnabled(bool enabled)
{
    SwitchAndStore(m_fcoe, &EInterfaceTableHooks::EnablingFCoEItem, &EInterfaceTableHooks::DisablingFCoEItem,
                   m_values.fcoeEnabled, enabled);
}

void EInterfaceItem::SetPTPEnabled(bool enabled)
{
    if (enabled == m_values.ptpEnabled) return; // an unchanged switch creates no record
    SwitchAndStore(Ensure(m_ptp, this), &EInterfaceTableHooks::EnablingPTPItem, &EInterfaceTableHooks::DisablingPTPItem,
                   m_values.ptpEnabled, enabled);
}

void EInterfaceItem::SetDCBXEnabled(bool enabled)
{
    if (enabled == m_values.dcbxEnabled) return; // an unchanged switch creates no record
    SwitchAndStore(Ensure(m_dcbx, this), &EInterfaceTableHooks::EnablingDCBXItem,
                   &EInterfaceTableHooks::DisablingDCBXItem, m_values.dcbxEnabled, enabled);
}

void EInterfaceItem::SetLLDPEnabled(bool enabled)
{
    if (enabled == m_values.lldpEnabled) return; // an unchanged switch creates no record
    SwitchAndStore(Ensure(m_lldp, this), &EInterfaceTableHooks::EnablingLLDPItem,
                   &EInterfaceTableHooks::DisablingLLDPItem, m_values.lldpEnabled, enabled);
}

// Protocol records created on demand

void EInterfaceItem::EnsureNPIV()
{
    Ensure(m_npiv, this);
}

void EInterfaceItem::EnsurePTP()
{
    Ensure(m_ptp, this);
}

void EInterfaceItem::EnsureDCBX()
{
    Ensure(m_dcbx, this);
}

void EInterfaceItem::EnsureLLDP()
{
    Ensure(m_lldp, this);
}

ENPIVConfig& EInterfaceItem::GetNPIVConfig()
{
    return Ensure(m_npiv, this);
}

EPTPConfig& EInterfaceItem::GetPTPConfig()
{
    return Ensure(m_ptp, this);
}

EDCBXConfig& EInterfaceItem::GetDCBXConfig()
{
    return Ensure(m_dcbx, this);
}

ELLDPConfig& EInterfaceItem::GetLLDPConfig()
{
    return Ensure(m_lldp, this);
}

void EInterfaceItem::SetNPIVConfig(ENPIVConfig const& config)
{
    if (m_npiv)
        *m_npiv = config;
    else
        MakeAndSet(m_npiv, this, &EInterfaceTableHooks::SettingNPIVConfig, config);
}

void EInterfaceItem::SetPTPConfig(EPTPConfig const& config)
{
    if (m_ptp)
        *m_ptp = config;
    else
        MakeAndSet(m_ptp, this, &EInterfaceTableHooks::SettingPTPConfig, config);
}

void EInterfaceItem::SetDCBXConfig(EDCBXConfig const& config)
{
    if (m_dcbx)
        *m_dcbx = config;
    else
        MakeAndSet(m_dcbx, this, &EInterfaceTableHooks::SettingDCBXConfig, config);
}

void EInterfaceItem::SetLLDPConfig(ELLDPConfig const& config)
{
    // Announced here, since this record's own assignment is silent.
    MakeAndSet(m_lldp, this, &EInterfaceTableHooks::SettingLLDPConfig, config);
}

ENPIVConfig const& EInterfaceItem::NPIVOrDefault() const
{
    return OrDefault(m_npiv);
}
