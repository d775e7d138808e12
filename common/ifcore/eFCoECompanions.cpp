#include "eFCoECompanions.hpp"

#include "eArchiveLayout.hpp"
#include "eBlob.hpp"
#include "eFCoEShared.hpp"
#include "eFormatUtils.hpp"
#include "eRecord.hpp"

// ENSRegOption

void ENSRegOption::Copy(ENSRegOption const& other)
{
    m_values = other.m_values;
}

void ENSRegOption::Swap(ENSRegOption& other)
{
    std::swap(m_values, other.m_values);
}

template <class Values> static auto TieNSRegOption(Values& v)
{
    auto& [options, rspnIdName, rsnnNnName, extraName] = v;
    return std::tie(options, rspnIdName, rsnnNnName, extraName);
}

bool ENSRegOption::operator!=(ENSRegOption const& other) const
{
    return Differ(TieNSRegOption(m_values), TieNSRegOption(other.m_values));
}

bool ENSRegOption::IsOptionEnabled(eRegOptions bits) const
{
    return HasBits<unsigned short>(m_values.options, bits);
}

void ENSRegOption::SetOptionEnabled(eRegOptions bits, bool enabled)
{
    m_values.options = WithBits<unsigned short>(m_values.options, bits, enabled);
}

// On purpose: the message names the configuration's function, not this record's.
static EArchiveSite const kNSRegOptionSite = {"x86_64/common/ifcore/eFCoEConfig.cpp", 1698, "EFCoEConfig::SerializeIn"};
static EArchiveVersions const kNSRegOptionVersions = {0x12172008, 0x12172009}; // date-like
template <class Archive, class Values> static void NSRegOptionLayout(Archive archive, Values& v)
{
    archive.Since(0x12172009, v.extraName);
    archive.Since(0x12172008, v.options);
    archive.Since(0x12172008, v.rspnIdName);
    archive.Since(0x12172008, v.rsnnNnName);
}

void ENSRegOption::SerializeOut(EArchive& archive) const
{
    NSRegOptionLayout(EArchiveWriter(archive, kNSRegOptionVersions.newest), m_values);
}

void ENSRegOption::SerializeIn(EArchive& archive)
{
    NSRegOptionLayout(EArchiveReader(archive, kNSRegOptionVersions, kNSRegOptionSite), m_values);
}

// EPLOGIDestination

void EPLOGIDestination::Copy(EPLOGIDestination const& other)
{
    m_values = other.m_values;
}

void EPLOGIDestination::Swap(EPLOGIDestination& other)
{
    std::swap(m_values, other.m_values);
}

template <class Values> static auto TiePLOGIDestination(Values& v)
{
    auto& [enabled, destMode, destNodeId, wwpn] = v;
    return std::tie(enabled, destMode, destNodeId, wwpn);
}

bool EPLOGIDestination::operator!=(EPLOGIDestination const& other) const
{
    return Differ(TiePLOGIDestination(m_values), TiePLOGIDestination(other.m_values));
}

std::string EPLOGIDestination::GetDestModeAsString() const
{
    switch (m_values.destMode) {
    case 0: return "destid";
    case 1: return "wwpn";
    default: return "";
    }
}

std::string EPLOGIDestination::GetDestNodeIdAsString() const
{
    return ThreeBytesAsString(m_values.destNodeId);
}

std::string EPLOGIDestination::GetWWPNAsString() const
{
    return EFormatUtils::GetInt64AsFormattedString(m_values.wwpn.GetAsUint64(), 8, " ");
}

static EArchiveSite const kPLOGIDestinationSite = {"x86_64/common/ifcore/eFCoEConfig.cpp", 1812,
                                                   "EPLOGIDestination::SerializeIn"};
static EArchiveVersions const kPLOGIDestinationVersions = {0x12292008, 0x12292008}; // date-like
template <class Archive, class Values> static void PLOGIDestinationLayout(Archive archive, Values& v)
{
    archive.Since(0x12292008, v.enabled);
    archive.Since(0x12292008, v.destMode);
    archive.Since(0x12292008, v.destNodeId);
    archive.Since(0x12292008, v.wwpn);
}

void EPLOGIDestination::SerializeOut(EArchive& archive) const
{
    PLOGIDestinationLayout(EArchiveWriter(archive, kPLOGIDestinationVersions.newest), m_values);
}

void EPLOGIDestination::SerializeIn(EArchive& archive)
{
    PLOGIDestinationLayout(EArchiveReader(archive, kPLOGIDestinationVersions, kPLOGIDestinationSite), m_values);
}

// EFCNSQuery

void EFCNSQuery::Copy(EFCNSQuery const& other)
{
    m_values = other.m_values;
}

void EFCNSQuery::Swap(EFCNSQuery& other)
{
    std::swap(m_values, other.m_values);
}

template <class Values> static auto TieFCNSQuery(Values& v)
{
    auto& [flag, command, requestObject, requestObjectValue] = v;
    return std::tie(flag, command, requestObject, requestObjectValue);
}

bool EFCNSQuery::operator!=(EFCNSQuery const& other) const
{
    return Differ(TieFCNSQuery(m_values), TieFCNSQuery(other.m_values));
}

/// Bytes that a request object holds.
static unsigned int MaxObjectSize(int requestObject)
{
    switch (requestObject) {
    case 0: return 0;
    case 1: return 3; // port identifier
    case 3: return 1;
    default: return 8; // world wide name
    }
}

void EFCNSQuery::ForceValid()
{
    if (m_values.requestObjectValue.empty()) return;
    unsigned int const maxSize = MaxObjectSize(m_values.requestObject);
    EBlob object;
    object.SetHexString(m_values.requestObjectValue);
    if (object.GetSize() <= maxSize) return; // on purpose: exactly as typed, white space included
    object.RemoveLeadingBytes(object.GetSize() - maxSize);

    static char const kWhiteSpace[] = " \t\n\v\f\r"; // a host's hexadecimal text may begin or end with it
    std::string text = object.GetHexString();
    text.erase(text.find_last_not_of(kWhiteSpace) + 1);
    text.erase(0, text.find_first_not_of(kWhiteSpace));
    m_values.requestObjectValue = text;
}

static EArchiveSite const kFCNSQuerySite = {"x86_64/common/ifcore/eFCoEConfig.cpp", 1934, "EFCNSQuery::SerializeIn"};
static EArchiveVersions const kFCNSQueryVersions = {0x12292008, 0x12292008}; // date-like
template <class Archive, class Values> static void FCNSQueryLayout(Archive archive, Values& v)
{
    archive.Since(0x12292008, v.flag);
    archive.Since(0x12292008, v.command);
    archive.Since(0x12292008, v.requestObject);
    archive.Since(0x12292008, v.requestObjectValue);
}

void EFCNSQuery::SerializeOut(EArchive& archive) const
{
    FCNSQueryLayout(EArchiveWriter(archive, kFCNSQueryVersions.newest), m_values);
}

void EFCNSQuery::SerializeIn(EArchive& archive)
{
    FCNSQueryLayout(EArchiveReader(archive, kFCNSQueryVersions, kFCNSQuerySite), m_values);
}
