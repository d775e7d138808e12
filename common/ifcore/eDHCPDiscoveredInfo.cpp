#include "eDHCPDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredRecord.hpp"
#include "eRecord.hpp"

// ---- DHCP -----------------------------------------------------------------------------------------------------------

void EDHCPDiscoveredInfo::Copy(EDHCPDiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDHCPDiscoveredInfo, EDHCPDiscoveredInfo(other));
}

void EDHCPDiscoveredInfo::Empty()
{
    m_values = Values(); // on purpose without an announcement
}

EDiscoveredTableHooks& EDHCPDiscoveredInfo::GetHooks() const
{
    return HooksThrough<EDHCPDiscoveredInfo>(m_parent);
}

template <class Archive, class Values> static void DHCPArchiveLayout(Archive archive, Values& v)
{
    archive.Each(v.valid);
    archive.Each(v.ip);
    archive.Each(v.prefixLength);
    archive.Each(v.gatewayIp);
    archive.Each(v.leaseTimer);
    archive.Each(v.interfaceLocalId);
    archive.Each(Appended<unsigned int>(v.customTlvs));
}

void EDHCPDiscoveredInfo::SerializeOut(EArchive& archive) const
{
    DHCPArchiveLayout(EUnversionedWriter(archive), m_values);
}

void EDHCPDiscoveredInfo::SerializeIn(EArchive& archive)
{
    DHCPArchiveLayout(EUnversionedReader(archive), m_values);
}

// ---- DHCPv6 ---------------------------------------------------------------------------------------------------------

void EDHCPv6DiscoveredInfo::Copy(EDHCPv6DiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDHCPv6DiscoveredInfo, EDHCPv6DiscoveredInfo(other));
}

void EDHCPv6DiscoveredInfo::Empty()
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDHCPv6DiscoveredInfo, EDHCPv6DiscoveredInfo());
}

EDiscoveredTableHooks& EDHCPv6DiscoveredInfo::GetHooks() const
{
    return HooksThrough<EDHCPv6DiscoveredInfo>(m_parent);
}

template <class Archive, class Values> static void DHCPv6ArchiveLayout(Archive archive, Values& v)
{
    archive.Each(v.valid);
    archive.Each(v.iaRenewTime);
    archive.Each(v.iaRebindTime);
    archive.Each(Appended<unsigned int>(v.addresses));
    archive.Each(Appended<unsigned int>(v.customTlvs));
}

void EDHCPv6DiscoveredInfo::SerializeOut(EArchive& archive) const
{
    DHCPv6ArchiveLayout(EUnversionedWriter(archive), m_values);
}

void EDHCPv6DiscoveredInfo::SerializeIn(EArchive& archive)
{
    DHCPv6ArchiveLayout(EUnversionedReader(archive), m_values);
}
