#include "eDcbxConfig.hpp"

#include "eArchiveLayout.hpp"
#include "eRecord.hpp"

#include <algorithm>
#include <bitset>

// The control TLV.

template <class Values> static auto TieControl(Values& v)
{
    auto& [operVersion, maxVersion, seqNo, ackNo, advertiseType, valid, controlState, overrideOperVersion] =
        v; // does not compile when a field is left out
    return std::tie(operVersion, maxVersion, seqNo, ackNo, advertiseType, valid, controlState, overrideOperVersion);
}

void EDCBXControlTlv::Swap(EDCBXControlTlv& other)
{
    std::swap(m_values, other.m_values);
}

bool EDCBXControlTlv::operator!=(EDCBXControlTlv const& other) const
{
    return Differ(TieControl(m_values), TieControl(other.m_values));
}

static EArchiveSite const kControlSite = {"x86_64/common/ifcore/eDcbxConfig.cpp", 1230, "EDCBXControlTlv::SerializeIn"};
template <class Archive, class Values> static void ControlLayout(Archive archive, Values& v)
{
    archive.Since(0x0218200D, v.overrideOperVersion);
    archive.Since(0x0218200C, As<unsigned int>(v.controlState));
    archive.Since(0x0218200B, v.valid);
    archive.Since(0x0218200A, As<unsigned int>(v.advertiseType));
    archive.Since(0x02182009, v.operVersion);
    archive.Since(0x02182009, v.maxVersion);
    archive.Since(0x02182009, v.seqNo);
    archive.Since(0x02182009, v.ackNo);
}

void EDCBXControlTlv::SerializeOut(EArchive& archive) const
{
    ControlLayout(EArchiveWriter(archive, 0x0218200D), m_values);
}

void EDCBXControlTlv::SerializeIn(EArchive& archive)
{
    ControlLayout(EArchiveReader(archive, {0x02182009, 0x0218200D}, kControlSite), m_values);
}

// The configuration.

template <class Values> static auto TieConfig(Values& v)
{
    auto& [featureTlvs, oui, controlTlv, subType] = v; // does not compile when a field is left out
    return std::tie(featureTlvs, oui, controlTlv, subType);
}

void EDCBXConfig::Copy(EDCBXConfig const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDCBXConfig, EDCBXConfig(other));
}

void EDCBXConfig::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingDCBXConfig, EDCBXConfig());
}

void EDCBXConfig::Swap(EDCBXConfig& other)
{
    std::swap(m_values, other.m_values);
}

bool EDCBXConfig::operator!=(EDCBXConfig const& other) const
{
    return Differ(TieConfig(m_values), TieConfig(other.m_values));
}

void EDCBXConfig::StampSubType()
{
    for (EDCBXFeatureTlv& feature : m_values.featureTlvs) feature.SetDcbxSubType(m_values.subType);
}

void EDCBXConfig::SetFeatureTlvs(std::vector<EDCBXFeatureTlv> const& features)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDCBXFeatureTlvs, m_values.featureTlvs, features);
    StampSubType();
}

void EDCBXConfig::SetOUI(unsigned int oui)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDCBXOUI, m_values.oui, oui);
}

void EDCBXConfig::SetSubType(unsigned char subType)
{
    std::vector<EDCBXFeatureTlv> reset(m_values.featureTlvs); // first: what has been announced cannot fail any more
    for (EDCBXFeatureTlv& feature : reset) {
        feature.SetDcbxSubType(subType);
        feature.ResetDefault(); // on purpose: also when the subtype is the same
    }
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingDCBXSubType, m_values.subType, subType);
    StampSubType();
    for (std::size_t i = 0; i < m_values.featureTlvs.size(); ++i) {
        EDCBXFeatureTlv& feature = m_values.featureTlvs[i];
        if (i < reset.size() && reset[i].GetType() == feature.GetType())
            feature.SwapDesiredCfg(reset[i]);
        else
            feature.ResetDefault(); // one that the observer brought
    }
}

void EDCBXConfig::SetControlTlvMaxVersion(unsigned char version)
{
    GetHooks().SettingDCBXControlTlvMaxVersion(*this, version);
    m_values.controlTlv.SetMaxVersion(version);
}

void EDCBXConfig::SetControlTlvOperVersion(unsigned char version)
{
    GetHooks().SettingDCBXControlTlvOperVersion(*this, version);
    m_values.controlTlv.SetOperVersion(version);
}

void EDCBXConfig::SetControlTlvOperVersionEnabled(bool enabled)
{
    GetHooks().SettingDCBXControlTlvOperVersionEnabled(*this, enabled);
    m_values.controlTlv.SetOverrideOperVersion(enabled);
}

void EDCBXConfig::AddFeatureTlv(EDCBXFeatureTlv const& feature)
{
    m_values.featureTlvs.push_back(feature);
    StampSubType();
}

bool EDCBXConfig::RemoveFeatureTlv(unsigned char type, unsigned char subType, unsigned int key)
{
    EDCBXFeatureTlv const* const feature = GetFeatureTlvReadOnly(type, subType, key);
    if (!feature) return false;
    m_values.featureTlvs.erase(m_values.featureTlvs.begin() + (feature - m_values.featureTlvs.data()));
    return true;
}

bool EDCBXConfig::RemoveFeatureTlv(unsigned int index)
{
    if (index != 0 || m_values.featureTlvs.empty()) return false; // on purpose: only the first can be removed so
    m_values.featureTlvs.erase(m_values.featureTlvs.begin());
    return true;
}

EDCBXFeatureTlv* EDCBXConfig::GetFeatureTlv(unsigned char type, unsigned char subType, unsigned int key)
{
    return const_cast<EDCBXFeatureTlv*>(GetFeatureTlvReadOnly(type, subType, key));
}

EDCBXFeatureTlv const* EDCBXConfig::GetFeatureTlvReadOnly(unsigned char type, unsigned char subType,
                                                          unsigned int key) const
{
    auto const end = m_values.featureTlvs.end();
    auto const found = std::find_if(m_values.featureTlvs.begin(), end, [=](EDCBXFeatureTlv const& feature) {
        return feature.GetType() == type && feature.GetSubType() == subType && feature.GetInstanceKey() == key;
    });
    return found != end ? &*found : nullptr;
}

EDCBXFeatureTlv* EDCBXConfig::GetFeatureTlv(unsigned int index)
{
    return const_cast<EDCBXFeatureTlv*>(GetFeatureTlvReadOnly(index));
}

EDCBXFeatureTlv const* EDCBXConfig::GetFeatureTlvReadOnly(unsigned int index) const
{
    return index < m_values.featureTlvs.size() ? &m_values.featureTlvs[index] : nullptr;
}

bool EDCBXConfig::SetFeatureMismatch(bool mismatch, unsigned char type, unsigned char subType, unsigned int key)
{
    EDCBXFeatureTlv* const feature = GetFeatureTlv(type, subType, key);
    if (feature) feature->SetMismatch(mismatch);
    return feature != nullptr;
}

bool EDCBXConfig::IsFeatureMismatch(unsigned char type, unsigned char subType, unsigned int key) const
{
    EDCBXFeatureTlv const* const feature = GetFeatureTlvReadOnly(type, subType, key);
    return feature && feature->IsMismatch();
}

bool EDCBXConfig::GetNextAvailableFeatureType(unsigned char& type) const
{
    std::bitset<256> used;
    for (EDCBXFeatureTlv const& feature : m_values.featureTlvs) used.set(feature.GetType());
    for (type = 2; type < 128; ++type)
        if (!used.test(type)) return true;
    return false;
}

void EDCBXConfig::GetID(EComponentId& id) const
{
    GetLeafID(m_parent, GetLocalId(), id);
}

EInterfaceTableHooks& EDCBXConfig::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kConfigSite = {"x86_64/common/ifcore/eDcbxConfig.cpp", 1517, "EDCBXConfig::SerializeIn"};
template <class Archive, class Values> static void ConfigLayout(Archive archive, Values& v)
{
    archive.Since(0x0128200A, v.subType);
    // On purpose: the count is written with 64 bits and read with 8: no more than 255 features can be read back.
    archive.Since(0x01282009, Appended<unsigned long, unsigned char>(v.featureTlvs));
    archive.Since(0x01282009, v.oui);
    archive.Since(0x01282009, v.controlTlv);
}

void EDCBXConfig::SerializeOut(EArchive& archive) const
{
    ConfigLayout(EArchiveWriter(archive, 0x0128200A), m_values);
}

void EDCBXConfig::SerializeIn(EArchive& archive)
{
    ConfigLayout(EArchiveReader(archive, {0x01282009, 0x0128200A}, kConfigSite), m_values);
    StampSubType(); // payloads stay as they were read
}

static EEdit<EDCBXConfig> const kEdits[] = {
    {1, ReadListAndSet<std::vector<EDCBXFeatureTlv>, &EDCBXConfig::SetFeatureTlvs, unsigned char>},
    {2, ReadAndSet<unsigned int, &EDCBXConfig::SetOUI>},
    {3, ReadAndSet<unsigned int, &EDCBXConfig::SetSubType>}, // on purpose: the low byte of a 32-bit number
    {4, ReadAndSet<unsigned char, &EDCBXConfig::SetControlTlvMaxVersion>},
    {5, ReadAndSet<unsigned char, &EDCBXConfig::SetControlTlvOperVersion>},
    {6, ReadAndSet<bool, &EDCBXConfig::SetControlTlvOperVersionEnabled>},
};

bool EDCBXConfig::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
