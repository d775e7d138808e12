#include "eDHCPProperties.hpp"

#include "eArchiveLayout.hpp"
#include "eProcessWide.hpp"
#include "eRecord.hpp"

template <class Values> static auto Tie(Values& v)
{
    auto& [clientId, serverId, vendorId, releaseTimer, retryCount, customTlvs, relayAgentIp, relayDestination] = v;
    return std::tie(clientId, vendorId, serverId, releaseTimer, customTlvs, relayAgentIp, relayDestination, retryCount);
}

EIPAddress EDHCPProperties::Values::LimitedBroadcast()
{
    static EProcessWide<EIPAddress> const address("255.255.255.255");
    return address.Get();
}

void EDHCPProperties::Copy(EDHCPProperties const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDhcpProperties, EDHCPProperties(other));
}

void EDHCPProperties::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDhcpProperties, EDHCPProperties());
}

void EDHCPProperties::Swap(EDHCPProperties& other)
{
    std::swap(m_values, other.m_values);
}

bool EDHCPProperties::operator!=(EDHCPProperties const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void EDHCPProperties::SetDHCPClientId(std::string const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpClientId, m_values.clientId, id);
}

void EDHCPProperties::SetDHCPServerId(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpServerId, m_values.serverId, address);
}

void EDHCPProperties::SetDHCPVendorId(std::string const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpVendorClassId, m_values.vendorId, id);
}

void EDHCPProperties::SetReleaseTimer(unsigned int timer)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpReleaseTimer, m_values.releaseTimer, timer);
}

void EDHCPProperties::SetDhcpCustomTLVs(std::list<EDHCPTLV> const& tlvs)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpTLVs, m_values.customTlvs, tlvs);
}

void EDHCPProperties::SetDHCPRelayAgentIP(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpRelayAgentIP, m_values.relayAgentIp, address);
}

void EDHCPProperties::SetDHCPRelayDestination(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpRelayDestination, m_values.relayDestination, address);
}

void EDHCPProperties::SetRetryCount(unsigned int count)
{
    unsigned int const corrected = count == 0 ? 1 : count; // on purpose before the observer is told
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDhcpRetryCount, m_values.retryCount, corrected);
}

void EDHCPProperties::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& EDHCPProperties::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eDHCPProperties.cpp", 203, "EDHCPProperties::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(3, v.retryCount);
    archive.Since(2, v.relayAgentIp);
    archive.Since(2, v.relayDestination);
    archive.Since(1, v.clientId);
    archive.Since(1, v.serverId);
    archive.Since(1, v.vendorId);
    archive.Since(1, v.releaseTimer);
    archive.Since(1, Appended<unsigned int>(v.customTlvs));
}

void EDHCPProperties::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 3), m_values);
}

void EDHCPProperties::SerializeIn(EArchive& archive)
{
    // On purpose not emptied first.
    ArchiveLayout(EArchiveReader(archive, {1, 3}, kSite), m_values);
}

static EEdit<EDHCPProperties> const kEdits[] = {
    {1, ReadAndSet<std::string, &EDHCPProperties::SetDHCPClientId>},
    {2, ReadAndSet<EIPAddress, &EDHCPProperties::SetDHCPServerId>},
    {3, ReadAndSet<unsigned int, &EDHCPProperties::SetReleaseTimer>},
    {4, ReadAndSet<std::string, &EDHCPProperties::SetDHCPVendorId>},
    {5, ReadListAndSet<std::list<EDHCPTLV>, &EDHCPProperties::SetDhcpCustomTLVs>},
    {6, ReadAndSet<EIPAddress, &EDHCPProperties::SetDHCPRelayAgentIP>},
    {7, ReadAndSet<EIPAddress, &EDHCPProperties::SetDHCPRelayDestination>},
    {8, ReadAndSet<unsigned int, &EDHCPProperties::SetRetryCount>},
};

bool EDHCPProperties::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
