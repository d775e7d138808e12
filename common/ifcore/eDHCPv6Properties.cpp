#include "eDHCPv6Properties.hpp"

#include "eArchiveLayout.hpp"
#include "eProcessWide.hpp"
#include "eRecord.hpp"

template <class Values> static auto Tie(Values& v)
{
    auto& [iaId, iaType, renewTime, customTlvs, relayLinkAddress, relayDestination] = v;
    return std::tie(iaId, iaType, renewTime, customTlvs, relayLinkAddress, relayDestination);
}

EIPAddress EDHCPv6Properties::Values::AllServers()
{
    static EProcessWide<EIPAddress> const address("ff05::1:3");
    return address.Get();
}

void EDHCPv6Properties::Copy(EDHCPv6Properties const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDhcpv6Properties, EDHCPv6Properties(other));
}

void EDHCPv6Properties::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDhcpv6Properties, EDHCPv6Properties());
}

void EDHCPv6Properties::Swap(EDHCPv6Properties& other)
{
    std::swap(m_values, other.m_values);
}

bool EDHCPv6Properties::operator!=(EDHCPv6Properties const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void EDHCPv6Properties::SetIAId(unsigned int id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6IAId, m_values.iaId, id);
}

void EDHCPv6Properties::SetIAType(eIAType type)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6IAType, m_values.iaType, type);
}

void EDHCPv6Properties::SetRenewTime(unsigned int time)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6RenewTime, m_values.renewTime, time);
}

void EDHCPv6Properties::SetDhcpv6CustomTLVs(std::list<EDHCPTLV> const& tlvs)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6TLVs, m_values.customTlvs, tlvs);
}

void EDHCPv6Properties::SetDHCPv6RelayLinkAddress(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6RelayLinkAddress, m_values.relayLinkAddress, address);
}

void EDHCPv6Properties::SetDHCPv6RelayDestination(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpv6RelayDestination, m_values.relayDestination, address);
}

void EDHCPv6Properties::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& EDHCPv6Properties::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eDHCPv6Properties.cpp", 193, "EDHCPv6Properties::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(2, v.relayLinkAddress);
    archive.Since(2, v.relayDestination);
    archive.Since(1, v.iaId);
    archive.Since(1, As<int>(v.iaType));
    archive.Since(1, v.renewTime);
    archive.Since(1, Appended<unsigned int>(v.customTlvs));
}

void EDHCPv6Properties::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 2), m_values);
}

void EDHCPv6Properties::SerializeIn(EArchive& archive)
{
    // On purpose not emptied first.
    ArchiveLayout(EArchiveReader(archive, {1, 2}, kSite), m_values);
}

static EEdit<EDHCPv6Properties> const kEdits[] = {
    {1, ReadAndSet<unsigned int, &EDHCPv6Properties::SetIAId>},
    {2, ReadAndSet<int, &EDHCPv6Properties::SetIAType>},
    {3, ReadAndSet<unsigned int, &EDHCPv6Properties::SetRenewTime>},
    {4, ReadListAndSet<std::list<EDHCPTLV>, &EDHCPv6Properties::SetDhcpv6CustomTLVs>},
    {5, ReadAndSet<EIPAddress, &EDHCPv6Properties::SetDHCPv6RelayLinkAddress>},
    {6, ReadAndSet<EIPAddress, &EDHCPv6Properties::SetDHCPv6RelayDestination>},
};

bool EDHCPv6Properties::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
