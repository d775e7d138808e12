#include "eDcbxDiscoveredInfo.hpp"

#include "eArchiveLayout.hpp"
#include "eDiscoveredInfo.hpp"
#include "eDiscoveredRecord.hpp"
#include "eRecord.hpp"

/// By eLLDPInfoIndex.
static constexpr char const* kLLDPRowNames[] = {"LLDP-Chassis Id", "LLDP-Port Id", "LLDP-Time To Live"};

/// By eDCBXInfoIndex. On purpose not the names that the features themselves go by.
static constexpr char const* kDCBXRowNames[] = {"Control",           "Priority Group",   "PFC",  "FCoE",
                                                "FCoE Logical Link", "LAN Logical Link", "iSCSI"};

EDCBXDiscoveredInfo::EDCBXDiscoveredInfo()
{
    ClearOperAndPeerInfoList();
}

EDCBXDiscoveredInfo::EDCBXDiscoveredInfo(EDCBXDiscoveredInfo const& other) : m_values(other.m_values)
{
    m_values.operDcbx.SetParent(nullptr); // copies take their parent along
    m_values.peerDcbx.SetParent(nullptr);
    m_values.localLldp.SetParent(nullptr);
    m_values.peerLldp.SetParent(nullptr);
}

void EDCBXDiscoveredInfo::Copy(EDCBXDiscoveredInfo const& other)
{
    NotifyAndSwap(*this, &EDiscoveredTableHooks::SettingDCBXDiscoveredInfo, EDCBXDiscoveredInfo(other));
}

void EDCBXDiscoveredInfo::Empty()
{
    EDCBXDiscoveredInfo replacement;
    Swap(replacement); // on purpose without an announcement
}

void EDCBXDiscoveredInfo::Swap(EDCBXDiscoveredInfo& other)
{
    std::swap(m_values.flag, other.m_values.flag);
    m_values.operDcbx.Swap(other.m_values.operDcbx);
    m_values.peerDcbx.Swap(other.m_values.peerDcbx);
    m_values.localLldp.Swap(other.m_values.localLldp);
    m_values.peerLldp.Swap(other.m_values.peerLldp);
    m_values.lldpRows.swap(other.m_values.lldpRows);
    m_values.dcbxRows.swap(other.m_values.dcbxRows);
}

EDiscoveredTableHooks& EDCBXDiscoveredInfo::GetHooks() const
{
    return HooksThrough<EDCBXDiscoveredInfo>(m_parent);
}

// ---- Comparison -----------------------------------------------------------------------------------------------------

EDCBXDiscoveredInfo::LocalAndPeerLLDPInfo const*
EDCBXDiscoveredInfo::GetLocalAndPeerLLDPInfo(eLLDPInfoIndex position) const
{
    return ElementAt(m_values.lldpRows, position);
}

void EDCBXDiscoveredInfo::SetLocalAndPeerLLDPInfo(eLLDPInfoIndex position, LocalAndPeerLLDPInfo row)
{
    if (position < m_values.lldpRows.size()) m_values.lldpRows[position] = std::move(row);
}

EDCBXDiscoveredInfo::OperAndPeerDCBXInfo const*
EDCBXDiscoveredInfo::GetOperAndPeerDCBXInfo(eDCBXInfoIndex position) const
{
    return ElementAt(m_values.dcbxRows, position);
}

void EDCBXDiscoveredInfo::SetOperAndPeerDCBXInfo(eDCBXInfoIndex position, OperAndPeerDCBXInfo row)
{
    if (position < m_values.dcbxRows.size()) m_values.dcbxRows[position] = std::move(row);
}

void EDCBXDiscoveredInfo::ClearOperAndPeerInfoList()
{
    m_values.lldpRows.clear();
    for (char const* name : kLLDPRowNames) m_values.lldpRows.push_back({name, "", ""});
    m_values.dcbxRows.clear();
}

void EDCBXDiscoveredInfo::UpdateOperAndPeerInfoList()
{
    ClearOperAndPeerInfoList();

    ELLDPConfig const& local = m_values.localLldp;
    ELLDPConfig const& peer = m_values.peerLldp;
    std::vector<LocalAndPeerLLDPInfo>& rows = m_values.lldpRows;
    rows[LLDP_CHASSIS_ID].local = local.GetChassisIdAsString();
    rows[LLDP_CHASSIS_ID].peer = peer.GetChassisIdAsString();
    rows[LLDP_PORT_ID].local = local.GetPortIdAsString();
    rows[LLDP_PORT_ID].peer = peer.GetPortIdAsString();
    rows[LLDP_TIME_TO_LIVE].local = std::to_string(local.GetTimeToLive());
    rows[LLDP_TIME_TO_LIVE].peer = std::to_string(peer.GetTimeToLive());

    EDCBXConfig const& oper = m_values.operDcbx;
    EDCBXConfig const& peerDcbx = m_values.peerDcbx;
    if (oper.GetFeatureTlvs().empty()) return; // on purpose without a row for the control TLV
    EDCBXControlTlv const& control = oper.GetControlTlv();
    // On purpose the control state of this side alone.
    m_values.dcbxRows.push_back({GetDCBXInfoName(1, 0, 0),
                                 control.GetDCBXControlTlvAsString() + control.GetControlStateAsString(),
                                 peerDcbx.GetControlTlv().GetDCBXControlTlvAsString(), false});
    for (EDCBXFeatureTlv const& feature : oper.GetFeatureTlvs()) {
        unsigned char const type = feature.GetType();
        unsigned char const subType = feature.GetSubType();
        unsigned int const key = feature.GetInstanceKey();
        OperAndPeerDCBXInfo row;
        row.name = GetDCBXInfoName(type, subType, oper.GetSubType());
        row.oper = oper.GetFeatureTlvAsString(feature);
        // The first of this key, which may be another one.
        if (EDCBXFeatureTlv const* const found = oper.GetFeatureTlvReadOnly(type, subType, key))
            row.oper += found->GetDcbxStateAsString();
        if (EDCBXFeatureTlv const* const found = peerDcbx.GetFeatureTlvReadOnly(type, subType, key)) {
            row.peer = peerDcbx.GetFeatureTlvAsString(*found);
            row.mismatch = peerDcbx.IsFeatureMismatch(type, subType, key);
        }
        m_values.dcbxRows.push_back(std::move(row));
    }
}

// ---- Texts ----------------------------------------------------------------------------------------------------------

std::string EDCBXDiscoveredInfo::GetDCBXInfoName(unsigned char type, unsigned char subType, unsigned char flavour)
{
    bool const isFlavour2 = flavour == 2;
    switch (type) {
    case 1: return kDCBXRowNames[DCBX_CONTROL];
    case 2: return kDCBXRowNames[DCBX_PRIORITY_GROUP];
    case 3: return kDCBXRowNames[DCBX_PFC];
    case 4:
        if (isFlavour2) return kDCBXRowNames[DCBX_FCOE];
        break;
    case 5: return kDCBXRowNames[isFlavour2 ? DCBX_ISCSI : DCBX_FCOE];
    case 6:
        if (!isFlavour2) return kDCBXRowNames[subType != 0 ? DCBX_LAN_LOGICAL_LINK : DCBX_FCOE_LOGICAL_LINK];
        break;
    default: break;
    }
    return "Custom:" + std::to_string(static_cast<unsigned int>(type)) + "," +
           std::to_string(static_cast<unsigned int>(subType));
}

std::string EDCBXDiscoveredInfo::GetPeerLLDPConfigAsString() const
{
    return m_values.peerLldp.GetConfigAsString();
}

std::string EDCBXDiscoveredInfo::GetOperatingDCBXConfigAsString() const
{
    return GetDCBXFeatureTlvAsString(m_values.operDcbx);
}

std::string EDCBXDiscoveredInfo::GetPeerDCBXConfigAsString() const
{
    return GetDCBXFeatureTlvAsString(m_values.peerDcbx);
}

std::string EDCBXDiscoveredInfo::GetDCBXFeatureTlvAsString(EDCBXConfig const& config) const
{
    if (config.GetFeatureTlvs().empty()) return "None\n";
    std::string text;
    for (EDCBXFeatureTlv const& feature : config.GetFeatureTlvs()) text += config.GetFeatureTlvAsString(feature);
    return text;
}

std::string EDCBXDiscoveredInfo::GetMismatchFeaturesAsString() const
{
    std::string text;
    for (EDCBXFeatureTlv const& feature : m_values.peerDcbx.GetFeatureTlvs())
        if (feature.IsMismatch()) text += feature.GetTypeName() + ";";
    return text;
}

// ---- Archive --------------------------------------------------------------------------------------------------------

template <class Archive, class Row> static void LLDPRowLayout(Archive archive, Row& row)
{
    archive.Each(row.name);
    archive.Each(row.local);
    archive.Each(row.peer);
}

void EDCBXDiscoveredInfo::LocalAndPeerLLDPInfo::SerializeOut(EArchive& archive) const
{
    LLDPRowLayout(EUnversionedWriter(archive), *this);
}

void EDCBXDiscoveredInfo::LocalAndPeerLLDPInfo::SerializeIn(EArchive& archive)
{
    LLDPRowLayout(EUnversionedReader(archive), *this);
}

template <class Archive, class Row> static void DCBXRowLayout(Archive archive, Row& row)
{
    archive.Each(row.name);
    archive.Each(row.oper);
    archive.Each(row.peer);
    archive.Each(row.mismatch);
}

void EDCBXDiscoveredInfo::OperAndPeerDCBXInfo::SerializeOut(EArchive& archive) const
{
    DCBXRowLayout(EUnversionedWriter(archive), *this);
}

void EDCBXDiscoveredInfo::OperAndPeerDCBXInfo::SerializeIn(EArchive& archive)
{
    DCBXRowLayout(EUnversionedReader(archive), *this);
}

static constexpr unsigned int kVersion = 0x10390129;

static EArchiveSite const kSite = {"x86_64/common/ifcore/eDcbxDiscoveredInfo.cpp", 132,
                                   "EDCBXDiscoveredInfo::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(kVersion, v.flag);
    archive.Since(kVersion, v.operDcbx);
    archive.Since(kVersion, v.peerDcbx);
    archive.Since(kVersion, v.localLldp);
    archive.Since(kVersion, v.peerLldp);
    archive.Since(kVersion, AsVector(v.lldpRows));
    archive.Since(kVersion, AsVector(v.dcbxRows));
}

void EDCBXDiscoveredInfo::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, kVersion), m_values);
}

void EDCBXDiscoveredInfo::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {kVersion, kVersion}, kSite), m_values);
}
