#include "eFCoEConfig.hpp"

#include "eArchiveLayout.hpp"
#include "eFCoEShared.hpp"
#include "eInterfaceItem.hpp"
#include "eRecord.hpp"

// Bits of the FIP word.
static constexpr unsigned int kFIPEnabled = 1u << 0;
static constexpr unsigned int kResetFIPDiscovery = 1u << 1;
static constexpr unsigned int kRetriesShift = 16; // a 16-bit signed number above it
static constexpr unsigned int kBelowRetries = (1u << kRetriesShift) - 1;
// Bits of the keep-alive word.
static constexpr unsigned int kFIPKeepAlive = 1u << 0;
static constexpr unsigned int kVnPortKeepAlive = 1u << 1;

template <class Values> static auto Tie(Values& v)
{
    auto& [srcPortWwn, srcNodeWwn, b2bRxSize, scrEnabled, nsRegistrationEnabled, plogiEnabled, autoPlogiEnabled,
           destNodeId, srcOui, fipWord, vlanDiscoveryEnabled, vlanDiscoveryUntagged, prliEnabled, nsQueryEnabled,
           keepAliveWord, maxFCoESize, addressMode, vendorId, vendorSpecificTlvs, nsRegOption, plogiDestinations,
           fcNsQuery, scrOption, edit24] = v;
    return std::tie(srcPortWwn, srcNodeWwn, b2bRxSize, scrEnabled, nsRegistrationEnabled, plogiEnabled, destNodeId,
                    srcOui, fipWord, vlanDiscoveryEnabled, vlanDiscoveryUntagged, keepAliveWord, maxFCoESize,
                    addressMode, vendorId, vendorSpecificTlvs, nsRegOption, plogiDestinations, fcNsQuery,
                    autoPlogiEnabled, prliEnabled, nsQueryEnabled, scrOption, edit24);
}

void EFCoEConfig::Copy(EFCoEConfig const& other)
{
    if (this == &other) return;
    EFCoEConfig replacement(other); // first: what has been announced cannot fail any more
    GetHooks().SettingFCoEConfig(*this, other);
    if (replacement != other) EFCoEConfig(other).Swap(replacement); // as the observer has left it
    Swap(replacement);
}

void EFCoEConfig::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingFCoEConfig, EFCoEConfig());
}

void EFCoEConfig::Swap(EFCoEConfig& other)
{
    std::swap(m_values, other.m_values);
}

bool EFCoEConfig::operator!=(EFCoEConfig const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

bool EFCoEConfig::IsFIPEnabled() const
{
    return HasBits(m_values.fipWord, kFIPEnabled);
}

bool EFCoEConfig::IsKeepAliveEnabled() const
{
    return HasBits(m_values.keepAliveWord, kFIPKeepAlive);
}

bool EFCoEConfig::IsVnPortKeepAliveEnabled() const
{
    return HasBits(m_values.keepAliveWord, kVnPortKeepAlive);
}

bool EFCoEConfig::IsResetFIPDiscoveryEnabled() const
{
    return HasBits(m_values.fipWord, kResetFIPDiscovery);
}

short EFCoEConfig::GetResetFIPDiscoveryNumberOfRetries() const
{
    return static_cast<short>(m_values.fipWord >> kRetriesShift);
}

void EFCoEConfig::SetSrcPortWWN(EUID const& wwn)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoESrcPortWWN, m_values.srcPortWwn, wwn);
}

void EFCoEConfig::SetSrcNodeWWN(EUID const& wwn)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoESrcNodeWWN, m_values.srcNodeWwn, wwn);
}

void EFCoEConfig::SetB2BRxSize(unsigned int bytes)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEB2BRxSize, m_values.b2bRxSize, bytes);
}

void EFCoEConfig::SetSCREnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoESCREnabled, m_values.scrEnabled, enabled);
}

void EFCoEConfig::SetNsRegistrationEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoENSRegistrationEnabled, m_values.nsRegistrationEnabled,
                   enabled);
}

void EFCoEConfig::SetPLOGIEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEPLOGIEnabled, m_values.plogiEnabled, enabled);
}

void EFCoEConfig::SetDestNodeId(unsigned int id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEDestNodeId, m_values.destNodeId, id);
}

void EFCoEConfig::SetSrcOUI(unsigned int oui)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoESrcOUI, m_values.srcOui, oui);
}

void EFCoEConfig::SetVlanDiscoveryEnabled(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEVlanDiscoveryEnabled, m_values.vlanDiscoveryEnabled,
                   enabled);
}

void EFCoEConfig::SetVlanDiscoveryUntagged(bool untagged)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEVlanDiscoveryUntagged, m_values.vlanDiscoveryUntagged,
                   untagged);
}

void EFCoEConfig::SetMaxFCoESize(unsigned short bytes)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEMaxSize, m_values.maxFCoESize, bytes);
}

void EFCoEConfig::SetAddressMode(eAddressModes mode)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEAddressMode, m_values.addressMode, mode);
}

void EFCoEConfig::SetVendorID(EUID const& id)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEVendorID, m_values.vendorId, id);
}

void EFCoEConfig::SetVendorSpecificTLVs(std::list<EDHCPTLV> const& tlvs)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEVendorSpecificTLVs, m_values.vendorSpecificTlvs, tlvs);
}

void EFCoEConfig::SetNSRegOption(ENSRegOption const& option)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoENSRegOption, m_values.nsRegOption, option);
}

void EFCoEConfig::SetPLOGIDestinations(std::vector<EPLOGIDestination> const& destinations)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCoEPLOGIDestinations, m_values.plogiDestinations,
                   destinations);
}

void EFCoEConfig::SetFCNSQuery(EFCNSQuery const& query)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCNSQueryOption, m_values.fcNsQuery, query);
}

void EFCoEConfig::SetPRLIEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingPRLIEnabled, m_values.prliEnabled, enabled);
}

void EFCoEConfig::SetAutoPLOGIEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingAutoPLOGIEnabled, m_values.autoPlogiEnabled, enabled);
}

void EFCoEConfig::SetNSQueryEnable(bool enabled)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingNSQueryEnabled, m_values.nsQueryEnabled, enabled);
}

void EFCoEConfig::SetFCSCROption(eSCROptions option)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingFCSCROption, m_values.scrOption, option);
}

void EFCoEConfig::SetFIPEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingFCoEFIPEnabled, m_values.fipWord,
                   WithBits(m_values.fipWord, kFIPEnabled, enabled), enabled);
}

void EFCoEConfig::SetKeepAliveEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingFIPKeepAliveEnabled, m_values.keepAliveWord,
                   WithBits(m_values.keepAliveWord, kFIPKeepAlive, enabled), enabled);
}

void EFCoEConfig::SetVnPortKeepAliveEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingVnPortKeepAliveEnabled, m_values.keepAliveWord,
                   WithBits(m_values.keepAliveWord, kVnPortKeepAlive, enabled), enabled);
}

void EFCoEConfig::SetResetFIPDiscoveryEnabled(bool enabled)
{
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingResetFIPDiscoveryEnabled, m_values.fipWord,
                   WithBits(m_values.fipWord, kResetFIPDiscovery, enabled), enabled);
}

void EFCoEConfig::SetResetFIPDiscoveryNumberOfRetries(short retries)
{
    unsigned int const upper = static_cast<unsigned int>(static_cast<unsigned short>(retries)) << kRetriesShift;
    StoreAndNotify(*this, &EInterfaceTableHooks::SettingResetFIPDiscoveryNumberOfRetries, m_values.fipWord,
                   (m_values.fipWord & kBelowRetries) | upper, retries);
}

std::string EFCoEConfig::GetAddressModeAsString() const
{
    switch (m_values.addressMode) {
    case ADDRESS_MODE_FABRIC_PROVIDED: return "fabric-provided";
    case ADDRESS_MODE_SERVER_PROVIDED: return "server-provided";
    case ADDRESS_MODE_BOTH: return "both";
    default: return "";
    }
}

std::string EFCoEConfig::GetSrcPortWWNAsString() const
{
    return m_values.srcPortWwn.GetAsString();
}

std::string EFCoEConfig::GetSrcNodeWWNAsString() const
{
    return m_values.srcNodeWwn.GetAsString();
}

std::string EFCoEConfig::GetVendorIDAsString() const
{
    return m_values.vendorId.GetAsString();
}

std::string EFCoEConfig::GetDestNodeIdAsString() const
{
    return ThreeBytesAsString(m_values.destNodeId);
}

std::string EFCoEConfig::GetSrcOUIAsString() const
{
    return ThreeBytesAsString(m_values.srcOui);
}

void EFCoEConfig::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& EFCoEConfig::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eFCoEConfig.cpp", 367, "EFCoEConfig::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(7, v.prliEnabled);
    archive.Since(7, v.autoPlogiEnabled);
    archive.Since(7, v.fcNsQuery);
    archive.Since(7, v.nsQueryEnabled);
    archive.Since(7, As<unsigned int>(v.scrOption));
    archive.Since(7, v.edit24);
    archive.Since(6, v.vlanDiscoveryUntagged);
    archive.Since(5, v.keepAliveWord);
    archive.Since(5, v.scrEnabled);
    archive.Since(4, v.nsRegOption);
    archive.Since(4, Appended<unsigned int>(v.plogiDestinations));
    archive.Since(3, v.fipWord);
    archive.Since(3, v.vlanDiscoveryEnabled);
    archive.Since(3, v.maxFCoESize);
    archive.Since(3, As<unsigned int>(v.addressMode));
    archive.Since(3, v.vendorId);
    archive.Since(3, Appended<unsigned int>(v.vendorSpecificTlvs));
    archive.Since(2, v.srcOui);
    archive.Since(1, v.srcPortWwn);
    archive.Since(1, v.srcNodeWwn);
    archive.Since(1, v.b2bRxSize);
    archive.Since(1, v.nsRegistrationEnabled);
    archive.Since(1, v.plogiEnabled);
    archive.Since(1, v.destNodeId);
}

void EFCoEConfig::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 7), m_values);
}

void EFCoEConfig::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {1, 7}, kSite), m_values);
}

struct EFCoEConfig::Edits {
    static void ReadEdit24(EFCoEConfig& record, EArchive& archive) { archive >> record.m_values.edit24; }
    static EEdit<EFCoEConfig> const kTable[27];
};

EEdit<EFCoEConfig> const EFCoEConfig::Edits::kTable[27] = {
    {1, ReadAndSet<EUID, &EFCoEConfig::SetSrcPortWWN>},
    {2, ReadAndSet<EUID, &EFCoEConfig::SetSrcNodeWWN>},
    {3, ReadAndSet<unsigned int, &EFCoEConfig::SetB2BRxSize>},
    {4, ReadAndSet<bool, &EFCoEConfig::SetSCREnabled>},
    {5, ReadAndSet<bool, &EFCoEConfig::SetNsRegistrationEnabled>},
    {6, ReadAndSet<bool, &EFCoEConfig::SetPLOGIEnabled>},
    {7, ReadAndSet<unsigned int, &EFCoEConfig::SetDestNodeId>},
    {8, ReadAndSet<unsigned int, &EFCoEConfig::SetSrcOUI>},
    {9, ReadAndSet<bool, &EFCoEConfig::SetFIPEnabled>},
    {10, ReadAndSet<bool, &EFCoEConfig::SetVlanDiscoveryEnabled>},
    {11, ReadAndSet<bool, &EFCoEConfig::SetVlanDiscoveryUntagged>},
    {12, ReadAndSet<bool, &EFCoEConfig::SetKeepAliveEnabled>},
    {13, ReadAndSet<unsigned short, &EFCoEConfig::SetMaxFCoESize>},
    {14, ReadAndSet<unsigned int, &EFCoEConfig::SetAddressMode>},
    {15, ReadAndSet<EUID, &EFCoEConfig::SetVendorID>},
    {16, ReadListAndSet<std::list<EDHCPTLV>, &EFCoEConfig::SetVendorSpecificTLVs>},
    {17, ReadAndSet<ENSRegOption, &EFCoEConfig::SetNSRegOption>},
    {18, ReadListAndSet<std::vector<EPLOGIDestination>, &EFCoEConfig::SetPLOGIDestinations>},
    {19, ReadAndSet<bool, &EFCoEConfig::SetPRLIEnable>},
    {20, ReadAndSet<bool, &EFCoEConfig::SetAutoPLOGIEnable>},
    {21, ReadAndSet<EFCNSQuery, &EFCoEConfig::SetFCNSQuery>},
    {22, ReadAndSet<bool, &EFCoEConfig::SetNSQueryEnable>},
    {23, ReadAndSet<unsigned int, &EFCoEConfig::SetFCSCROption>},
    {24, ReadEdit24}, // on purpose: there is no setter and nobody is told
    {25, ReadAndSet<bool, &EFCoEConfig::SetVnPortKeepAliveEnabled>},
    {26, ReadAndSet<bool, &EFCoEConfig::SetResetFIPDiscoveryEnabled>},
    {27, ReadAndSet<short, &EFCoEConfig::SetResetFIPDiscoveryNumberOfRetries>},
};

bool EFCoEConfig::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(Edits::kTable, *this, first, last, archive);
}
