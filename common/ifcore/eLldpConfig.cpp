#include "eLldpConfig.hpp"

#include "eArchiveLayout.hpp"
#include "eRecord.hpp"

#include <algorithm>
#include <limits>

static constexpr unsigned short kLargestTimeToLive = std::numeric_limits<unsigned short>::max(); // seconds

template <class Id> static auto TieId(Id& id)
{
    auto& [mac, interfaceName, subType] = id;
    return std::tie(mac, interfaceName, subType);
}

/// Of a chassis or a port id, which has no version of its own.
template <class Archive, class Id> static void IdLayout(Archive archive, Id& id)
{
    archive.Each(id.mac);
    archive.Each(id.interfaceName);
    archive.Each(As<unsigned char>(id.subType)); // on purpose narrowed: the low 8 bits
}

bool ELLDPConfig::LLDPChassisId::operator!=(LLDPChassisId const& other) const
{
    return Differ(TieId(*this), TieId(other));
}

void ELLDPConfig::LLDPChassisId::SerializeOut(EArchive& archive) const
{
    IdLayout(EUnversionedWriter(archive), *this);
}

void ELLDPConfig::LLDPChassisId::SerializeIn(EArchive& archive)
{
    IdLayout(EUnversionedReader(archive), *this);
}

bool ELLDPConfig::LLDPPortId::operator!=(LLDPPortId const& other) const
{
    return Differ(TieId(*this), TieId(other));
}

void ELLDPConfig::LLDPPortId::SerializeOut(EArchive& archive) const
{
    IdLayout(EUnversionedWriter(archive), *this);
}

void ELLDPConfig::LLDPPortId::SerializeIn(EArchive& archive)
{
    IdLayout(EUnversionedReader(archive), *this);
}

template <class Values> static auto Tie(Values& v)
{
    auto& [chassisId, portId, holdTime, txInterval, txDelay, fastInitEnabled, timeToLive, peerStatus] = v;
    return std::tie(chassisId, portId, holdTime, txInterval, txDelay, fastInitEnabled, timeToLive, peerStatus);
}

void ELLDPConfig::Copy(ELLDPConfig const& other)
{
    ELLDPConfig replacement(other);
    Swap(replacement); // on purpose without an announcement: the owning interface makes it
}

void ELLDPConfig::Empty()
{
    ELLDPConfig replacement;
    Swap(replacement); // on purpose without an announcement, as above
}

void ELLDPConfig::Swap(ELLDPConfig& other)
{
    std::swap(m_values, other.m_values);
}

bool ELLDPConfig::operator!=(ELLDPConfig const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void ELLDPConfig::SetChassisId(LLDPChassisId const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPChassisId, m_values.chassisId, id);
}

void ELLDPConfig::SetPortId(LLDPPortId const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPPortId, m_values.portId, id);
}

void ELLDPConfig::SetFastInitEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPFastInitEnabled, m_values.fastInitEnabled, enabled);
}

void ELLDPConfig::SetHoldTime(unsigned short multiplier)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPHoldTime, m_values.holdTime, multiplier);
    RecomputeTimeToLive();
}

void ELLDPConfig::SetTxInterval(unsigned short seconds)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPTxInterval, m_values.txInterval, seconds);
    RecomputeTimeToLive();
}

void ELLDPConfig::SetTxDelay(unsigned short seconds)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingLLDPTxDelay, m_values.txDelay, seconds);
}

int ELLDPConfig::SetTimeToLive(int seconds)
{
    m_values.timeToLive = static_cast<unsigned short>(std::clamp<int>(seconds, 0, kLargestTimeToLive));
    return m_values.timeToLive;
}

void ELLDPConfig::RecomputeTimeToLive()
{
    unsigned long const seconds = 1UL * m_values.holdTime * m_values.txInterval; // int would overflow
    m_values.timeToLive = static_cast<unsigned short>(std::min<unsigned long>(seconds, kLargestTimeToLive));
}

/// The text of an id that was heard with this peer status.
template <class Id> static std::string TextOfId(Id const& id, bool isMac, int peerStatus)
{
    if (peerStatus == 1) return " Waiting for LLDP response.";
    if (peerStatus != 0) return " Peer has shutdown.";
    return " Sub type = " + std::to_string(static_cast<unsigned int>(id.subType)) +
           " Value = " + (isMac ? id.mac.GetAsString() : id.interfaceName);
}

std::string ELLDPConfig::GetChassisIdAsString() const
{
    return TextOfId(m_values.chassisId, m_values.chassisId.subType == CHASSIS_ID_MAC_ADDRESS, m_values.peerStatus);
}

std::string ELLDPConfig::GetPortIdAsString() const
{
    return TextOfId(m_values.portId, m_values.portId.subType == PORT_ID_MAC_ADDRESS, m_values.peerStatus);
}

std::string ELLDPConfig::GetConfigAsString() const
{
    return "Chassis ID TLV: " + GetChassisIdAsString() + " Port ID TLV: " + GetPortIdAsString() +
           " TTL TLV: " + std::to_string(m_values.timeToLive);
}

void ELLDPConfig::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& ELLDPConfig::GetHooks() const
{
    return HooksOf(m_parent);
}

static constexpr unsigned int kVersionOfPeerStatus = 0x0127200B;
static constexpr unsigned int kVersionOfTimeToLive = 0x0127200A;
static constexpr unsigned int kFirstVersion = 0x01272009;

static EArchiveSite const kSite = {"x86_64/common/ifcore/eLldpConfig.cpp", 166, "ELLDPConfig::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(kVersionOfPeerStatus, v.peerStatus);
    archive.Since(kVersionOfTimeToLive, v.timeToLive);
    archive.Since(kFirstVersion, v.chassisId);
    archive.Since(kFirstVersion, v.portId);
    archive.Since(kFirstVersion, v.holdTime);
    archive.Since(kFirstVersion, v.txInterval);
    archive.Since(kFirstVersion, v.txDelay);
    archive.Since(kFirstVersion, v.fastInitEnabled);
}

void ELLDPConfig::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, kVersionOfPeerStatus), m_values);
}

void ELLDPConfig::SerializeIn(EArchive& archive)
{
    // On purpose not emptied first; the time to live is taken as it stands and may contradict the other two.
    ArchiveLayout(EArchiveReader(archive, {kFirstVersion, kVersionOfPeerStatus}, kSite), m_values);
}

static EEdit<ELLDPConfig> const kEdits[] = {
    {1, ReadAndSet<ELLDPConfig::LLDPChassisId, &ELLDPConfig::SetChassisId>},
    {2, ReadAndSet<ELLDPConfig::LLDPPortId, &ELLDPConfig::SetPortId>},
    {3, ReadAndSet<unsigned short, &ELLDPConfig::SetHoldTime>},
    {4, ReadAndSet<unsigned short, &ELLDPConfig::SetTxInterval>},
    {5, ReadAndSet<unsigned short, &ELLDPConfig::SetTxDelay>},
    {6, ReadAndSet<bool, &ELLDPConfig::SetFastInitEnabled>},
};

bool ELLDPConfig::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
