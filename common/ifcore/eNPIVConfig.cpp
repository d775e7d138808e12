#include "eNPIVConfig.hpp"

#include "eArchiveLayout.hpp"
#include "eFCoEShared.hpp"
#include "eInterfaceItem.hpp"
#include "eRecord.hpp"

// Bits of the NPIV word.
static constexpr unsigned int kNSRegistration = 1u << 0;
static constexpr unsigned int kVnPortKeepAlive = 1u << 1;

template <class Values> static auto Tie(Values& v)
{
    auto& [srcPortWwn, srcNodeWwn, b2bRxSize, scrEnabled, npivWord, plogiEnabled, destNodeId, connectedViaId,
           nsRegOption, plogiDestinations, fcNsQuery, autoPlogiEnabled, prliEnabled, nsQueryEnabled, scrOption] = v;
    return std::tie(srcPortWwn, srcNodeWwn, b2bRxSize, scrEnabled, npivWord, plogiEnabled, destNodeId, connectedViaId,
                    nsRegOption, plogiDestinations, fcNsQuery, autoPlogiEnabled, prliEnabled, nsQueryEnabled,
                    scrOption);
}

void ENPIVConfig::Copy(ENPIVConfig const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingNPIVConfig, ENPIVConfig(other));
}

void ENPIVConfig::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingNPIVConfig, ENPIVConfig());
}

void ENPIVConfig::Swap(ENPIVConfig& other)
{
    std::swap(m_values, other.m_values);
}

bool ENPIVConfig::operator!=(ENPIVConfig const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

bool ENPIVConfig::IsNSRegistrationEnabled() const
{
    return HasBits(m_values.npivWord, kNSRegistration);
}

bool ENPIVConfig::IsVnPortKeepAliveEnabled() const
{
    return HasBits(m_values.npivWord, kVnPortKeepAlive);
}

void ENPIVConfig::SetSrcPortWWN(EUID const& wwn)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVSrcPortWWN, m_values.srcPortWwn, wwn);
}

void ENPIVConfig::SetSrcNodeWWN(EUID const& wwn)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVSrcNodeWWN, m_values.srcNodeWwn, wwn);
}

void ENPIVConfig::SetB2BRxSize(unsigned int bytes)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVB2BRxSize, m_values.b2bRxSize, bytes);
}

void ENPIVConfig::SetSCREnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVSCREnabled, m_values.scrEnabled, enabled);
}

void ENPIVConfig::SetPLOGIEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVPLOGIEnabled, m_values.plogiEnabled, enabled);
}

void ENPIVConfig::SetDestNodeId(unsigned int id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVDestNodeId, m_values.destNodeId, id);
}

void ENPIVConfig::SetConnectedViaId(EComponentId const& interface)
{
    EComponentId next(interface);
    // On purpose: the observer is given the interface, not the record.
    if (m_parent) GetHooks().SettingNPIVConnectedViaId(*m_parent, next);
    m_values.connectedViaId = std::move(next);
}

void ENPIVConfig::SetNSRegOption(ENSRegOption const& option)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVNSRegOption, m_values.nsRegOption, option);
}

void ENPIVConfig::SetPLOGIDestinations(std::vector<EPLOGIDestination> const& destinations)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVPLOGIDestinations, m_values.plogiDestinations,
                   destinations);
}

void ENPIVConfig::SetFCNSQuery(EFCNSQuery const& query)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVNSQueryOption, m_values.fcNsQuery, query);
}

void ENPIVConfig::SetPRLIEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVPRLIEnabled, m_values.prliEnabled, enabled);
}

void ENPIVConfig::SetAutoPLOGIEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVAutoPLOGIEnabled, m_values.autoPlogiEnabled, enabled);
}

void ENPIVConfig::SetNSQueryEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVNSQueryEnabled, m_values.nsQueryEnabled, enabled);
}

void ENPIVConfig::SetFCSCROption(eSCROptions option)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNPIVSCROption, m_values.scrOption, option);
}

void ENPIVConfig::SetNsRegistrationEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingNPIVNSRegistrationEnabled, m_values.npivWord,
                   WithBits(m_values.npivWord, kNSRegistration, enabled), enabled);
}

void ENPIVConfig::SetVnPortKeepAliveEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingNpIVVnPortKeepAliveEnabled, m_values.npivWord,
                   WithBits(m_values.npivWord, kVnPortKeepAlive, enabled), enabled);
}

std::string ENPIVConfig::GetSrcPortWWNAsString() const
{
    return m_values.srcPortWwn.GetAsString();
}

std::string ENPIVConfig::GetSrcNodeWWNAsString() const
{
    return m_values.srcNodeWwn.GetAsString();
}

std::string ENPIVConfig::GetDestNodeIdAsString() const
{
    return ThreeBytesAsString(m_values.destNodeId);
}

void ENPIVConfig::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& ENPIVConfig::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eFCoEConfig.cpp", 1217, "ENPIVConfig::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(4, v.prliEnabled);
    archive.Since(4, v.autoPlogiEnabled);
    archive.Since(4, v.fcNsQuery);
    archive.Since(4, v.nsQueryEnabled);
    archive.Since(4, As<unsigned int>(v.scrOption));
    archive.Since(3, v.scrEnabled);
    archive.Since(2, v.nsRegOption);
    archive.Since(2, Appended<unsigned int>(v.plogiDestinations));
    archive.Since(1, v.srcPortWwn);
    archive.Since(1, v.srcNodeWwn);
    archive.Since(1, v.b2bRxSize);
    archive.Since(1, v.npivWord);
    archive.Since(1, v.plogiEnabled);
    archive.Since(1, v.destNodeId);
    archive.Since(1, v.connectedViaId);
}

void ENPIVConfig::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 4), m_values);
}

void ENPIVConfig::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {1, 4}, kSite), m_values);
}

static EEdit<ENPIVConfig> const kEdits[] = {
    {1, ReadAndSet<EUID, &ENPIVConfig::SetSrcPortWWN>},
    {2, ReadAndSet<EUID, &ENPIVConfig::SetSrcNodeWWN>},
    {3, ReadAndSet<unsigned int, &ENPIVConfig::SetB2BRxSize>},
    {4, ReadAndSet<bool, &ENPIVConfig::SetSCREnabled>},
    {5, ReadAndSet<bool, &ENPIVConfig::SetNsRegistrationEnabled>},
    {6, ReadAndSet<bool, &ENPIVConfig::SetPLOGIEnabled>},
    {7, ReadAndSet<unsigned int, &ENPIVConfig::SetDestNodeId>},
    {8, ReadAndSet<EComponentId, &ENPIVConfig::SetConnectedViaId>},
    {9, ReadAndSet<ENSRegOption, &ENPIVConfig::SetNSRegOption>},
    {10, ReadListAndSet<std::vector<EPLOGIDestination>, &ENPIVConfig::SetPLOGIDestinations>},
    {11, ReadAndSet<bool, &ENPIVConfig::SetPRLIEnable>},
    {12, ReadAndSet<bool, &ENPIVConfig::SetAutoPLOGIEnable>},
    {13, ReadAndSet<EFCNSQuery, &ENPIVConfig::SetFCNSQuery>},
    {14, ReadAndSet<bool, &ENPIVConfig::SetNSQueryEnable>},
    {15, ReadAndSet<unsigned int, &ENPIVConfig::SetFCSCROption>},
    {16, ReadAndSet<bool, &ENPIVConfig::SetVnPortKeepAliveEnabled>},
};

bool ENPIVConfig::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
