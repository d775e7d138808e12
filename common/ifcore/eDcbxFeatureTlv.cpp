#include "eDcbxFeatureTlv.hpp"

#include "eArchiveLayout.hpp"
#include "eRecord.hpp"

#include <cstdlib>
#include <ctime>

// The header.

template <class Values> static auto TieHeader(Values& v)
{
    auto& [type, length, operVersion, maxVersion, enabled, willing, error, subType, instanceKey, overrideOperVersion] =
        v; // does not compile when a field is left out
    return std::tie(type, length, operVersion, maxVersion, enabled, willing, error, subType, instanceKey,
                    overrideOperVersion);
}

/// From the C library's generator, which is seeded once a process, at the first draw.
static unsigned int DrawInstanceKey()
{
    static bool const seeded = (std::srand(static_cast<unsigned int>(std::time(nullptr))), true);
    static_cast<void>(seeded);
    unsigned int const first = static_cast<unsigned int>(std::rand());
    unsigned int const second = static_cast<unsigned int>(std::rand());
    return (first << 16) | second; // on purpose: draws of more than 16 bits overlap
}

EDCBXFeatureTlvHeader::EDCBXFeatureTlvHeader(unsigned char type, unsigned char subType)
{
    m_values.type = type;
    m_values.subType = subType;
    m_values.instanceKey = DrawInstanceKey();
}

bool EDCBXFeatureTlvHeader::operator!=(EDCBXFeatureTlvHeader const& other) const
{
    return Differ(TieHeader(m_values), TieHeader(other.m_values));
}

static EArchiveSite const kHeaderSite = {"x86_64/common/ifcore/eDcbxConfig.cpp", 95,
                                         "EDCBXFeatureTlvHeader::SerializeIn"};
template <class Archive, class Values> static void HeaderLayout(Archive archive, Values& v)
{
    archive.Since(0x0218200B, v.overrideOperVersion);
    archive.Since(0x0218200A, v.instanceKey);
    archive.Since(0x02182009, v.type);
    archive.Since(0x02182009, v.length);
    archive.Since(0x02182009, v.operVersion);
    archive.Since(0x02182009, v.maxVersion);
    archive.Since(0x02182009, v.enabled);
    archive.Since(0x02182009, v.willing);
    archive.Since(0x02182009, v.error);
    archive.Since(0x02182009, v.subType);
}

void EDCBXFeatureTlvHeader::SerializeOut(EArchive& archive) const
{
    HeaderLayout(EArchiveWriter(archive, 0x0218200B), m_values);
}

void EDCBXFeatureTlvHeader::SerializeIn(EArchive& archive)
{
    HeaderLayout(EArchiveReader(archive, {0x02182009, 0x0218200B}, kHeaderSite), m_values);
}

// The feature.

template <class Values> static auto TieFeature(Values& v)
{
    auto& [header, desiredCfg, mismatch, advertiseType, featureAdvertised, dcbxSubType, state] =
        v; // does not compile when a field is left out
    return std::tie(header, desiredCfg, mismatch, advertiseType, featureAdvertised, dcbxSubType, state);
}

EDCBXFeatureTlv::EDCBXFeatureTlv(unsigned char type, unsigned char subType, unsigned char dcbxSubType)
    : m_values{EDCBXFeatureTlvHeader(type, subType)}
{
    m_values.dcbxSubType = dcbxSubType;
    ResetDefault();
}

void EDCBXFeatureTlv::Copy(EDCBXFeatureTlv const& other)
{
    EDCBXFeatureTlv replacement(other);
    Swap(replacement);
}

void EDCBXFeatureTlv::Swap(EDCBXFeatureTlv& other)
{
    std::swap(m_values, other.m_values);
}

bool EDCBXFeatureTlv::operator!=(EDCBXFeatureTlv const& other) const
{
    return Differ(TieFeature(m_values), TieFeature(other.m_values));
}

void EDCBXFeatureTlv::SetType(unsigned char type)
{
    if (type == GetType()) return;
    m_values.header.SetType(type);
    ResetDefault();
}

// The payload: where each of its values stands, and what the accessors below do with it.

namespace {

constexpr int kAnyDcbxSubType = -1;
constexpr unsigned int kLastIndex = 7; // of priorities and groups

/// A value of one byte, or one byte for each index.
struct EPayloadField {
    unsigned char type;        // of the features that have it
    int dcbxSubType;           // of the features that have it
    unsigned int offset;       // bytes, of index 0
    unsigned int stride;       // bytes from one index to the next; 0: a single value
    unsigned char missing = 0; // what the getter answers where there is none
};

constexpr EPayloadField kPriorityGroupID = {2, 2, 0, 1, 15};
constexpr EPayloadField kPGPercentage = {2, 2, 8, 1};
constexpr EPayloadField kPGTcsSupported = {2, 2, 16, 0};
constexpr EPayloadField kBWGPercentage = {2, 1, 0, 1};
constexpr EPayloadField kBWGId = {2, 1, 8, 4};
constexpr EPayloadField kBWGStrictPriority = {2, 1, 9, 4}; // byte 10 of each four is not used
constexpr EPayloadField kBWPercentage = {2, 1, 11, 4};
constexpr EPayloadField kPFCPriorityMap = {3, kAnyDcbxSubType, 0, 0};
constexpr EPayloadField kPFCTcsSupported = {3, 2, 1, 0};
constexpr EPayloadField kFCoEProtocolId = {4, 2, 0, 1}; // index 0 is the high byte
constexpr EPayloadField kFCoEPriorityMap = {4, 2, 5, 0};
constexpr EPayloadField kiSCSIProtocolId = {5, 2, 0, 1}; // index 0 is the high byte
constexpr EPayloadField kiSCSIPriorityMap = {5, 2, 5, 0};
constexpr EPayloadField kApplicationPriorityMap = {5, 1, 0, 0};
constexpr EPayloadField kLogicalLinkStatus = {6, kAnyDcbxSubType, 0, 0};

} // namespace

template <class Values> static bool Has(Values const& v, EPayloadField const& field, unsigned int index = 0)
{
    return field.type == v.header.GetType() && index <= kLastIndex &&
           (field.dcbxSubType == kAnyDcbxSubType || field.dcbxSubType == v.dcbxSubType);
}

template <class Values>
static unsigned char GetPayload(Values const& v, EPayloadField const& field, unsigned int index = 0)
{
    if (!Has(v, field, index)) return field.missing;
    unsigned int const position = field.offset + field.stride * index;
    return position < v.desiredCfg.GetSize() ? v.desiredCfg.GetData()[position] : field.missing;
}

template <class Values>
static void SetPayload(Values& v, EPayloadField const& field, unsigned char value, unsigned int index = 0)
{
    if (!Has(v, field, index)) return;
    unsigned int const position = field.offset + field.stride * index;
    if (position >= v.desiredCfg.GetSize()) v.desiredCfg.SetSize(position + 1, true);
    v.desiredCfg.Memset(value, position, 1);
}

template <class Values> static unsigned short GetPayloadWord(Values const& v, EPayloadField const& field)
{
    if (v.desiredCfg.GetSize() < field.offset + 2) return 0; // on purpose: half a number is none
    return static_cast<unsigned short>(GetPayload(v, field, 0) << 8 | GetPayload(v, field, 1));
}

template <class Values> static void SetPayloadWord(Values& v, EPayloadField const& field, unsigned short value)
{
    SetPayload(v, field, static_cast<unsigned char>(value >> 8), 0);
    SetPayload(v, field, static_cast<unsigned char>(value & 0xFF), 1);
}

template <class Values> static bool GetPayloadBit(Values const& v, EPayloadField const& map, unsigned int priority)
{
    return priority <= kLastIndex && (GetPayload(v, map) >> priority & 1) != 0;
}

template <class Values>
static void SetPayloadBit(Values& v, EPayloadField const& map, bool enabled, unsigned int priority)
{
    if (priority > kLastIndex) return;
    unsigned int const bit = 1u << priority;
    unsigned int const others = GetPayload(v, map) & ~bit;
    SetPayload(v, map, static_cast<unsigned char>(enabled ? others | bit : others));
}

unsigned char EDCBXFeatureTlv::GetPriorityGroupID(unsigned int priority) const
{
    return GetPayload(m_values, kPriorityGroupID, priority);
}

void EDCBXFeatureTlv::SetPriorityGroupID(unsigned char groupId, unsigned int priority)
{
    if (groupId < 16) SetPayload(m_values, kPriorityGroupID, groupId, priority);
}

unsigned char EDCBXFeatureTlv::GetPGPercentage(unsigned int group) const
{
    return GetPayload(m_values, kPGPercentage, group);
}

void EDCBXFeatureTlv::SetPGPercentage(unsigned char percentage, unsigned int group)
{
    SetPayload(m_values, kPGPercentage, percentage, group);
}

unsigned char EDCBXFeatureTlv::GetPGTcsSupported() const
{
    return GetPayload(m_values, kPGTcsSupported);
}

void EDCBXFeatureTlv::SetPGTcsSupported(unsigned char count)
{
    SetPayload(m_values, kPGTcsSupported, count);
}

unsigned char EDCBXFeatureTlv::GetBWGPercentage(unsigned int group) const
{
    return GetPayload(m_values, kBWGPercentage, group);
}

void EDCBXFeatureTlv::SetBWGPercentage(unsigned char percentage, unsigned int group)
{
    SetPayload(m_values, kBWGPercentage, percentage, group);
}

unsigned char EDCBXFeatureTlv::GetBWGId(unsigned int priority) const
{
    return GetPayload(m_values, kBWGId, priority);
}

void EDCBXFeatureTlv::SetBWGId(unsigned char groupId, unsigned int priority)
{
    SetPayload(m_values, kBWGId, groupId, priority);
}

EDCBXFeatureTlv::eStrictPriorities EDCBXFeatureTlv::GetBWGStrictPriority(unsigned int priority) const
{
    return static_cast<eStrictPriorities>(GetPayload(m_values, kBWGStrictPriority, priority));
}

void EDCBXFeatureTlv::SetBWGStrictPriority(eStrictPriorities strict, unsigned int priority)
{
    SetPayload(m_values, kBWGStrictPriority, strict, priority);
}

unsigned char EDCBXFeatureTlv::GetBWPercentage(unsigned int priority) const
{
    return GetPayload(m_values, kBWPercentage, priority);
}

void EDCBXFeatureTlv::SetBWPercentage(unsigned char percentage, unsigned int priority)
{
    SetPayload(m_values, kBWPercentage, percentage, priority);
}

unsigned char EDCBXFeatureTlv::GetPFCPriorityMap() const
{
    return GetPayload(m_values, kPFCPriorityMap);
}

void EDCBXFeatureTlv::SetPFCPriorityMap(unsigned char map)
{
    SetPayload(m_values, kPFCPriorityMap, map);
}

bool EDCBXFeatureTlv::IsPFCPriorityEnabled(unsigned int priority) const
{
    return GetPayloadBit(m_values, kPFCPriorityMap, priority);
}

void EDCBXFeatureTlv::SetPFCPriorityEnabled(bool enabled, unsigned int priority)
{
    SetPayloadBit(m_values, kPFCPriorityMap, enabled, priority);
}

unsigned char EDCBXFeatureTlv::GetPFCTcsSupported() const
{
    return GetPayload(m_values, kPFCTcsSupported);
}

void EDCBXFeatureTlv::SetPFCTcsSupported(unsigned char count)
{
    SetPayload(m_values, kPFCTcsSupported, count);
}

unsigned short EDCBXFeatureTlv::GetFCoEProtocolId() const
{
    return GetPayloadWord(m_values, kFCoEProtocolId);
}

void EDCBXFeatureTlv::SetFCoEProtocolId(unsigned short etherType)
{
    SetPayloadWord(m_values, kFCoEProtocolId, etherType);
}

unsigned char EDCBXFeatureTlv::GetFCoEPriorityMap() const
{
    bool const application = Has(m_values, kApplicationPriorityMap); // on purpose: not FCoE's own
    return GetPayload(m_values, application ? kApplicationPriorityMap : kFCoEPriorityMap);
}

void EDCBXFeatureTlv::SetFCoEPriorityMap(unsigned char map)
{
    SetPayload(m_values, kFCoEPriorityMap, map);
    SetPayload(m_values, kApplicationPriorityMap, map); // on purpose; a feature has one of the two at most
}

bool EDCBXFeatureTlv::IsFCoEPriorityEnabled(unsigned int priority) const
{
    return GetPayloadBit(m_values, kFCoEPriorityMap, priority); // on purpose: of FCoE's own map only
}

void EDCBXFeatureTlv::SetFCoEPriorityEnabled(bool enabled, unsigned int priority)
{
    SetPayloadBit(m_values, kFCoEPriorityMap, enabled, priority);
}

unsigned short EDCBXFeatureTlv::GetiSCSIProtocolId() const
{
    return GetPayloadWord(m_values, kiSCSIProtocolId);
}

void EDCBXFeatureTlv::SetiSCSIProtocolId(unsigned short port)
{
    SetPayloadWord(m_values, kiSCSIProtocolId, port);
}

unsigned char EDCBXFeatureTlv::GetiSCSIPriorityMap() const
{
    return GetPayload(m_values, kiSCSIPriorityMap);
}

void EDCBXFeatureTlv::SetiSCSIPriorityMap(unsigned char map)
{
    SetPayload(m_values, kiSCSIPriorityMap, map);
}

bool EDCBXFeatureTlv::IsiSCSIPriorityEnabled(unsigned int priority) const
{
    return GetPayloadBit(m_values, kiSCSIPriorityMap, priority);
}

void EDCBXFeatureTlv::SetiSCSIPriorityEnabled(bool enabled, unsigned int priority)
{
    SetPayloadBit(m_values, kiSCSIPriorityMap, enabled, priority);
}

EDCBXFeatureTlv::eLogicalLinkStatus EDCBXFeatureTlv::GetLogicalLinkStatus() const
{
    return static_cast<eLogicalLinkStatus>(GetPayload(m_values, kLogicalLinkStatus));
}

void EDCBXFeatureTlv::SetLogicalLinkStatus(eLogicalLinkStatus status)
{
    SetPayload(m_values, kLogicalLinkStatus, status);
}

// The default payloads. "1_1" is the layout of DCBX subtype 2, "1_0" that of all others, 1 or not.

static constexpr unsigned char kPriorityGroup1_1[17] = {
    0, 1, 2, 3,   4, 5, 6, 7, // priority p is in group p
    0, 0, 0, 100, 0, 0, 0, 0, // percentages
    8,                        // traffic classes
};
static constexpr unsigned char kPriorityGroup1_0[40] = {
    0, 0, 0, 100, 0, 0, 0, 0,             // percentages of the bandwidth groups
    0, 0, 0, 0,   1, 0, 0, 0, 2, 0, 0, 0, // priority p: group p, not strict, unused,
    3, 0, 0, 100, 4, 0, 0, 0, 5, 0, 0, 0, // percentage of the bandwidth
    6, 0, 0, 0,   7, 0, 0, 0,
};
static constexpr unsigned char kPFC1_1[2] = {0x08, 8}; // priority 3, traffic classes
static constexpr unsigned char kPFC1_0[1] = {0x08};
static constexpr unsigned char kFCoE1_1[6] = {0x89, 0x06, 0, 0, 0, 0x08}; // EtherType of FCoE (T11 FC-BB-5), priority 3
static constexpr unsigned char kFCoE1_0[62] = {};
static constexpr unsigned char kiSCSI1_1[6] = {0x0C, 0xBC, 0, 0, 0, 0x08}; // TCP port 3260 (RFC 7143), priority 3
static constexpr unsigned char kiSCSI1_0[1] = {0x08};
static constexpr unsigned char kLogicalLink1_1[1] = {EDCBXFeatureTlv::LOGICAL_LINK_DOWN};
static constexpr unsigned char kLogicalLink1_0[1] = {EDCBXFeatureTlv::LOGICAL_LINK_UP};
static constexpr unsigned char kCustomized[1] = {0};

template <unsigned int size> static EBlob BlobOf(unsigned char const (&bytes)[size])
{
    return EBlob(bytes, size);
}

void EDCBXFeatureTlv::ResetDefault()
{
    switch (GetType()) {
    case FEATURE_PRIORITY_GROUP: ResetPriorityGroupToDefault(); break;
    case FEATURE_PFC: ResetPFCToDefault(); break;
    case FEATURE_APPLICATION_FCOE:
    case FEATURE_APPLICATION: ResetApplicationToDefault(); break;
    case FEATURE_LOGICAL_LINK: ResetLogicalLinkToDefault(); break;
    default: m_values.desiredCfg = BlobOf(kCustomized);
    }
}

void EDCBXFeatureTlv::ResetPriorityGroupToDefault()
{
    m_values.desiredCfg = m_values.dcbxSubType == 2 ? BlobOf(kPriorityGroup1_1) : BlobOf(kPriorityGroup1_0);
}

void EDCBXFeatureTlv::ResetPFCToDefault()
{
    m_values.desiredCfg = m_values.dcbxSubType == 2 ? BlobOf(kPFC1_1) : BlobOf(kPFC1_0);
}

void EDCBXFeatureTlv::ResetApplicationToDefault()
{
    if (m_values.dcbxSubType == 2)
        ResetApplication1_1ToDefault();
    else
        ResetApplication1_0ToDefault();
}

void EDCBXFeatureTlv::ResetApplication1_0ToDefault()
{
    m_values.desiredCfg = GetType() == FEATURE_APPLICATION ? BlobOf(kiSCSI1_0) : BlobOf(kFCoE1_0);
}

void EDCBXFeatureTlv::ResetApplication1_1ToDefault()
{
    m_values.desiredCfg = GetType() == FEATURE_APPLICATION ? BlobOf(kiSCSI1_1) : BlobOf(kFCoE1_1);
}

void EDCBXFeatureTlv::ResetLogicalLinkToDefault()
{
    m_values.desiredCfg = m_values.dcbxSubType == 2 ? BlobOf(kLogicalLink1_1) : BlobOf(kLogicalLink1_0);
}

static EArchiveSite const kFeatureSite = {"x86_64/common/ifcore/eDcbxConfig.cpp", 354, "EDCBXFeatureTlv::SerializeIn"};
template <class Archive, class Values> static void FeatureLayout(Archive archive, Values& v)
{
    archive.Since(0x0218200C, As<unsigned int>(v.state));
    archive.Since(0x0218200B, v.dcbxSubType);
    archive.Since(0x0218200A, As<unsigned int>(v.advertiseType));
    archive.Since(0x0218200A, v.featureAdvertised);
    archive.Since(0x02182009, v.header);
    archive.Since(0x02182009, v.desiredCfg);
    archive.Since(0x02182009, v.mismatch);
}

void EDCBXFeatureTlv::SerializeOut(EArchive& archive) const
{
    FeatureLayout(EArchiveWriter(archive, 0x0218200C), m_values);
}

void EDCBXFeatureTlv::SerializeIn(EArchive& archive)
{
    FeatureLayout(EArchiveReader(archive, {0x02182009, 0x0218200C}, kFeatureSite), m_values);
}
