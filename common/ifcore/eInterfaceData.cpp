#include "eInterfaceData.hpp"

#include "eArchiveLayout.hpp"
#include "eInterfaceItem.hpp"
#include "eRecord.hpp"

/// Announces with the interface, which the operation names first, then stores. In silence without an interface.
template <class Data, class Announced, class Field, class Value>
static void NotifyOwnerAndStore(Data& data, void (EInterfaceTableHooks::*operation)(EInterfaceItem const&, Announced),
                                Field& field, Value const& value)
{
    Field next(value);
    if (data.GetParent()) (data.GetHooks().*operation)(*data.GetParent(), static_cast<Announced>(next));
    field = std::move(next);
}

// Ethernet

void EInterfaceData_Ethernet::SetMacAddress(EMACAddress const& mac)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceMac, m_values.macAddress, mac);
}

void EInterfaceData_Ethernet::SetVLANItem(EVLANIPAddressTableItemProperties const& vlans)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceVlan, m_values.vlans, vlans);
}

void EInterfaceData_Ethernet::SetMTU(unsigned int bytes)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceMTU, m_values.mtu, bytes);
}

EInterfaceTableHooks& EInterfaceData_Ethernet::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kEthernetSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 1041,
                                           "EInterfaceData_Ethernet::SerializeIn"};
template <class Archive, class Values> static void EthernetLayout(Archive archive, Values& v)
{
    archive.Since(1, v.macAddress);
    archive.Since(1, v.vlans);
    archive.Since(1, v.mtu);
    archive.Since(1, v.uidFromMac);
}

void EInterfaceData_Ethernet::SerializeOut(EArchive& archive) const
{
    EthernetLayout(EArchiveWriter(archive, 1), m_values);
}

void EInterfaceData_Ethernet::SerializeIn(EArchive& archive)
{
    EthernetLayout(EArchiveReader(archive, {1, 1}, kEthernetSite), m_values);
}

// ATM

void EInterfaceData_Atm::SetEncapsulation(eAtmEncapsulationMode encapsulation)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceATMEncapsulation, m_values.encapsulation,
                        encapsulation);
}

void EInterfaceData_Atm::SetATMMode(EAtmModeEnum mode)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceATMMode, m_values.mode, mode);
}

void EInterfaceData_Atm::SetVPI(unsigned int vpi)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceVPI, m_values.vpi, vpi);
}

void EInterfaceData_Atm::SetVCI(unsigned int vci)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceVCI, m_values.vci, vci);
}

EInterfaceTableHooks& EInterfaceData_Atm::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kAtmSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 1092,
                                      "EInterfaceData_Atm::SerializeIn"};
template <class Archive, class Values> static void AtmLayout(Archive archive, Values& v)
{
    archive.Since(1, As<unsigned int>(v.encapsulation));
    archive.Since(1, As<unsigned int>(v.mode));
    archive.Since(1, v.vpi);
    archive.Since(1, v.vci);
}

void EInterfaceData_Atm::SerializeOut(EArchive& archive) const
{
    AtmLayout(EArchiveWriter(archive, 1), m_values);
}

void EInterfaceData_Atm::SerializeIn(EArchive& archive)
{
    AtmLayout(EArchiveReader(archive, {1, 1}, kAtmSite), m_values);
}

// PPP

void EInterfaceData_Ppp::SetPPPHandle(unsigned int handle)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfacePPPHandle, m_values.handle, handle);
}

void EInterfaceData_Ppp::SetPPPSession(unsigned int session)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfacePPPSession, m_values.session, session);
}

EInterfaceTableHooks& EInterfaceData_Ppp::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kPppSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 1143,
                                      "EInterfaceData_Ppp::SerializeIn"};
template <class Archive, class Values> static void PppLayout(Archive archive, Values& v)
{
    archive.Since(1, v.handle);
    archive.Since(1, v.session);
}

void EInterfaceData_Ppp::SerializeOut(EArchive& archive) const
{
    PppLayout(EArchiveWriter(archive, 1), m_values);
}

void EInterfaceData_Ppp::SerializeIn(EArchive& archive)
{
    PppLayout(EArchiveReader(archive, {1, 1}, kPppSite), m_values);
}

// GRE

void EInterfaceData_Gre::SetSourceIp(EComponentId const& interface)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreSourceIp, m_values.source, interface);
}

void EInterfaceData_Gre::SetDestIp(EIPAddress const& address)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreDestIp, m_values.destination, address);
}

void EInterfaceData_Gre::SetUseChecksum(bool use)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreUseChecksum, m_values.useChecksum, use);
}

void EInterfaceData_Gre::SetUseSequence(bool use)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreUseSequence, m_values.useSequence, use);
}

void EInterfaceData_Gre::SetUseKey(bool use)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreUseKey, m_values.useKey, use);
}

void EInterfaceData_Gre::SetInKey(unsigned int key)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreInKey, m_values.inKey, key);
}

void EInterfaceData_Gre::SetOutKey(unsigned int key)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceGreOutKey, m_values.outKey, key);
}

EInterfaceTableHooks& EInterfaceData_Gre::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kGreSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 1194,
                                      "EInterfaceData_Gre::SerializeIn"};
template <class Archive, class Values> static void GreLayout(Archive archive, Values& v)
{
    archive.Since(1, v.source);
    archive.Since(1, v.destination);
    archive.Since(1, v.useChecksum);
    archive.Since(1, v.useSequence);
    archive.Since(1, v.useKey);
    archive.Since(1, v.inKey);
    archive.Since(1, v.outKey);
}

void EInterfaceData_Gre::SerializeOut(EArchive& archive) const
{
    GreLayout(EArchiveWriter(archive, 1), m_values);
}

void EInterfaceData_Gre::SerializeIn(EArchive& archive)
{
    GreLayout(EArchiveReader(archive, {1, 1}, kGreSite), m_values);
}

// Routed

void EInterfaceData_Routed::SetConnectedViaId(EComponentId const& interface)
{
    NotifyOwnerAndStore(*this, &EInterfaceTableHooks::SettingInterfaceConnectedViaId, m_values.connectedViaId,
                        interface);
}

EInterfaceTableHooks& EInterfaceData_Routed::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kRoutedSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 1245,
                                         "EInterfaceData_Routed::SerializeIn"};
template <class Archive, class Values> static void RoutedLayout(Archive archive, Values& v)
{
    archive.Since(1, v.connectedViaId);
}

void EInterfaceData_Routed::SerializeOut(EArchive& archive) const
{
    RoutedLayout(EArchiveWriter(archive, 1), m_values);
}

void EInterfaceData_Routed::SerializeIn(EArchive& archive)
{
    RoutedLayout(EArchiveReader(archive, {1, 1}, kRoutedSite), m_values);
}
