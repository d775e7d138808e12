#include "eFCoEDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredRecord.hpp"
#include "eFCoEShared.hpp"
#include "eRecord.hpp"

#include <iterator>

void EFCoEDiscoveredInfo::Copy(EFCoEDiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingFCoEDiscoveredInfo, EFCoEDiscoveredInfo(other));
}

void EFCoEDiscoveredInfo::Empty()
{
    m_values = Values(); // on purpose without an announcement
}

EDiscoveredTableHooks& EFCoEDiscoveredInfo::GetHooks() const
{
    return HooksThrough<EFCoEDiscoveredInfo>(m_parent);
}

// ---- Logins ---------------------------------------------------------------------------------------------------------

using PLOGIKey = EFCoEDiscoveredInfo::PLOGIDestinationMap::key_type;

/// The login under exactly this key; a failed one to 0 when there is none.
static EFCoEDiscoveredInfo::PLOGIDestination LoginTo(EFCoEDiscoveredInfo::PLOGIDestinationMap const& logins,
                                                     PLOGIKey const& key)
{
    auto const found = logins.find(key);
    return found == logins.end() ? EFCoEDiscoveredInfo::PLOGIDestination() : found->second;
}

bool EFCoEDiscoveredInfo::IsValidDiscoveredPLOGIDid(EUID const& wwpn) const
{
    return LoginTo(m_values.plogiDestinations, {0, wwpn.GetAsUint64()}).valid;
}

bool EFCoEDiscoveredInfo::IsValidDiscoveredPLOGIDid(unsigned int destinationId) const
{
    return LoginTo(m_values.plogiDestinations, {destinationId, 0}).valid;
}

unsigned int EFCoEDiscoveredInfo::GetDiscoveredPLOGIDid(EUID const& wwpn) const
{
    return LoginTo(m_values.plogiDestinations, {0, wwpn.GetAsUint64()}).destinationId;
}

unsigned int EFCoEDiscoveredInfo::GetDiscoveredPLOGIDid(unsigned int destinationId) const
{
    return LoginTo(m_values.plogiDestinations, {destinationId, 0}).destinationId;
}

// ---- Texts ----------------------------------------------------------------------------------------------------------

/// By the values of eStatus.
static char const* const kStates[] = {
    "Unknown",
    "FLOGI_COMPLETE",
    "FLOGI_FAILED",
    "PLOGI_COMPLETE",
    "PLOGI_FAILED",
    "SCR_COMPLETE",
    "SCR_FAILED",
    "FDISC_COMPLETE",
    "FDISC_FAILED",
    "NS_REGISTRATION_COMPLETE",
    "NS_REGISTRATION_FAILED",
    "DISCOVERY_SOLICITATION_COMPLETE",
    "DISCOVERY_SOLICITATION_FAILED",
    "VLAN_DISCOVERY_COMPLETE",
    "VLAN_DISCOVERY_FAILED",
    "PRLI_COMPLETE",
    "PRLI_FAILED",
    "NS_QUERY_COMPLETE",
    "NS_QUERY_FAILED",
    "PLOGI_REQUEST_SENT",
};

std::string EFCoEDiscoveredInfo::GetStateString(eStatus status)
{
    return kStates[status < std::size(kStates) ? status : STATUS_UNKNOWN];
}

EFCoEDiscoveredInfo::eStatus EFCoEDiscoveredInfo::GetStateEnum(std::string const& text)
{
    auto const found = std::find(std::begin(kStates), std::end(kStates), text);
    return found == std::end(kStates) ? STATUS_UNKNOWN : static_cast<eStatus>(found - std::begin(kStates));
}

std::string EFCoEDiscoveredInfo::GetDiscoveredSourceIdAsString() const
{
    return ThreeBytesAsString(m_values.sourceId);
}

void EFCoEDiscoveredInfo::GetDestinationIdAsString(unsigned int id, std::string& text) const
{
    text = ThreeBytesAsString(id);
}

void EFCoEDiscoveredInfo::GetWwpnAsString(unsigned long wwpn, std::string& text) const
{
    text = EFormatUtils::GetInt64AsFormattedString(wwpn, 8, " ");
}

// ---- Archive --------------------------------------------------------------------------------------------------------

/// The logins: a count, on purpose written as `unsigned long` and read as `int`, and for each its key and its value.
/// Reading replaces them; of two with one key the later wins.
template <class Map> struct ELoginsField {
    Map& logins;
};
template <class Map> static ELoginsField<Map> Logins(Map& logins)
{
    return {logins};
}

/// Calls \p field for each part of a login in the order of the archive.
template <class Number, class Name, class Login, class Field>
static void ForEachOfLogin(Number& destinationId, Name& wwpn, Login& login, Field const& field)
{
    field(destinationId);
    field(wwpn);
    field(login.destinationId);
    field(login.valid);
}

template <class Map> static void WriteField(EArchive& archive, ELoginsField<Map> const& field)
{
    archive << static_cast<unsigned long>(field.logins.size());
    for (auto const& [key, login] : field.logins)
        ForEachOfLogin(key.first, key.second, login, [&archive](auto const& part) { archive << part; });
}

template <class Map> static void ReadField(EArchive& archive, ELoginsField<Map>& field)
{
    field.logins.clear();
    int count = 0;
    archive >> count;
    for (int i = 0; i < count; ++i) {
        PLOGIKey key;
        EFCoEDiscoveredInfo::PLOGIDestination login;
        ForEachOfLogin(key.first, key.second, login, [&archive](auto& part) { archive >> part; });
        field.logins[key] = login;
    }
}

static constexpr unsigned int kNewestVersion = 0x1110143C;
static constexpr unsigned int kVersionOfDBit = 0x1110143B;
static constexpr unsigned int kVersionOfVlanPriority = 0x1110143A;
static constexpr unsigned int kVersionOfLogins = 0x11101439;
static constexpr unsigned int kVersionOfShortList = 0x11101438;
static constexpr unsigned int kVersionOfNames = 0x11101437;
static constexpr unsigned int kFirstVersion = 0x11101436;

static EArchiveSite const kSite = {"x86_64/common/ifcore/eFCoEDiscoveredInfo.cpp", 210,
                                   "EFCoEDiscoveredInfo::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(kNewestVersion, v.fkaPeriod);
    archive.Since(kVersionOfDBit, v.dBit);
    archive.Since(kVersionOfDBit, v.fcfMap);
    archive.Since(kVersionOfVlanPriority, v.vlanPriority);
    archive.Since(kVersionOfLogins, Logins(v.plogiDestinations));
    archive.Since(kVersionOfShortList, AsVector(v.shortList));
    archive.Since(kVersionOfNames, v.secondMac);
    archive.Since(kVersionOfNames, v.firstWwn);
    archive.Since(kVersionOfNames, v.secondWwn);
    archive.Since(kVersionOfNames, v.fcMap);
    archive.Since(kVersionOfNames, v.byteValue);
    archive.Since(kFirstVersion, v.valid);
    archive.Since(kFirstVersion, v.sourceId);
    archive.Since(kFirstVersion, As<unsigned int>(v.status));
    archive.Since(kFirstVersion, v.statusReason);
    archive.Since(kFirstVersion, v.destMac);
}

void EFCoEDiscoveredInfo::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, kNewestVersion), m_values);
}

void EFCoEDiscoveredInfo::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {kFirstVersion, kNewestVersion}, kSite), m_values);
}
