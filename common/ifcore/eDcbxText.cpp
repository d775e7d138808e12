#include "eDcbxConfig.hpp"
#include "eDcbxFeatureTlv.hpp"
#include "eFormatUtils.hpp"

#include <iomanip>
#include <locale>
#include <sstream>

// Texts for display of the DCBX records.

static char const kPeerNotAdvertisedDCBX[] = "Peer has not advertised DCBX.";
static char const kWaitingForResponse[] = "Waiting for DCBX response.";
static char const kPeerShutdown[] = "Peer has shutdown.";

template <unsigned int count> static std::string StateText(char const* const (&names)[count], unsigned int state)
{
    return std::string(" Last Known State = ") + (state < count ? names[state] : "Unknown state");
}

static char const* const kFeatureStateNames[] = {
    "LinkUp",
    "SetLocalParameters",
    "FWait",
    "NoAdvertise",
    "PeerNotAdvertiseDCBX",
    "PeerNotAdvertiseFeature",
    "UpdateOperVersion",
    "PeerUpdateOperVersion",
    "CfgNotCompatible",
    "UseLocalCfg",
    "UsePeerCfg",
    "FeatureDisabled",
    "GetPeerCfg",
    "ErrorChange",
};

std::string EDCBXFeatureTlv::GetDcbxStateAsString() const
{
    return StateText(kFeatureStateNames, m_values.state);
}

std::string EDCBXFeatureTlv::GetTypeName() const
{
    bool const second = m_values.dcbxSubType == 2;
    switch (GetType()) {
    case FEATURE_PRIORITY_GROUP: return "Priority Group";
    case FEATURE_PFC: return "PFC";
    case FEATURE_APPLICATION_FCOE:
        if (second) return "FCoE";
        break;
    case FEATURE_APPLICATION:
        if (!second) return "iSCSI"; // on purpose: not with DCBX subtype 2, whose payload is that of iSCSI
        break;
    case FEATURE_LOGICAL_LINK:
        if (!second) return GetSubType() != 0 ? "LAN Logical Link" : "FCoE Logical Link";
        break;
    default: break;
    }
    return "Customized " + std::to_string(GetType());
}

static char const* const kControlStateNames[] = {
    "LinkUp", "DWait", "UpdateDCBXTLV", "PeerNotAdvertiseDCBX", "UpdateOperVersion", "ProcessPeerTLV", "AckPeer",
};

std::string EDCBXControlTlv::GetControlStateAsString() const
{
    return StateText(kControlStateNames, m_values.controlState);
}

std::string EDCBXControlTlv::GetDCBXControlTlvAsString() const
{
    if (!m_values.valid) return "";
    switch (m_values.advertiseType) {
    case EDCBXFeatureTlv::ADVERTISED: break;
    case EDCBXFeatureTlv::PEER_NOT_ADVERTISED_DCBX: return kPeerNotAdvertisedDCBX;
    case EDCBXFeatureTlv::WAITING_FOR_DCBX_RESPONSE: return kWaitingForResponse;
    case EDCBXFeatureTlv::PEER_SHUT_DOWN:
    default: return kPeerShutdown; // on purpose: also for numbers without a meaning
    }
    return " Operating Version = " + std::to_string(m_values.operVersion) +
           ", Max Version = " + std::to_string(m_values.maxVersion) + "\n" +
           " Sequence Number = " + std::to_string(m_values.seqNo) + "\n" +
           " Ack Number = " + std::to_string(m_values.ackNo) + "\n";
}

std::string EDCBXConfig::GetOUIAsString() const
{
    return EFormatUtils::GetEDWORDAsFormattedString(m_values.oui, 3, ".");
}

static char const* YesNo(bool flag)
{
    return flag ? "yes" : "no";
}

/// "0x" and hexadecimal digits, at least \p digits of them.
static void WriteHex(std::ostream& text, unsigned int value, int digits = 1)
{
    text << "0x" << std::hex << std::setfill('0') << std::setw(digits) << value << std::dec;
}

static void WritePriorityMap(std::ostream& text, char const* label, unsigned char map)
{
    text << label;
    WriteHex(text, map, 2);
    text << '\n';
}

static void WriteProtocolId(std::ostream& text, unsigned short id)
{
    text << " Protocol-id = ";
    WriteHex(text, id);
    text << '\n';
}

static void WriteTcsSupported(std::ostream& text, unsigned int count)
{
    text << " TCs supported = " << count << '\n';
}

static void WritePriorityGroups(std::ostream& text, EDCBXFeatureTlv const& feature)
{
    EBlob const& payload = feature.GetDesiredCfg();
    EBlob groupIds;
    payload.GetAt(groupIds, 0, 8);
    text << " PGID Map = " << groupIds.GetHexString() << "\n PG Percentage = ";
    for (unsigned int position = 8; position < 16; ++position)
        text << (position < payload.GetSize() ? +payload.GetData()[position] : 0) << ' ';
    text << '\n';
    WriteTcsSupported(text, feature.GetPGTcsSupported());
}

static void WriteBandwidthGroups(std::ostream& text, EDCBXFeatureTlv const& feature)
{
    text << " BWG Percentages = ";
    for (unsigned int group = 0; group < 8; ++group) text << +feature.GetBWGPercentage(group) << ' ';
    text << '\n';
    for (unsigned int priority = 0; priority < 8; ++priority)
        text << " Priority-" << priority << ", BWG ID = " << +feature.GetBWGId(priority)
             << ", Strict Priority = " << +feature.GetBWGStrictPriority(priority)
             << ", BW% = " << +feature.GetBWPercentage(priority) << '\n';
}

static void WriteCustomized(std::ostream& text, EDCBXFeatureTlv const& feature)
{
    text << " Customized Config = " << feature.GetDesiredCfg().GetHexString() << '\n';
}

/// The lines of the payload. On purpose by the configuration's subtype, while the accessors go by the feature's own.
static void WritePayload(std::ostream& text, EDCBXFeatureTlv const& feature, unsigned char subType)
{
    switch (feature.GetType()) {
    case EDCBXFeatureTlv::FEATURE_PRIORITY_GROUP:
        if (subType == 2)
            WritePriorityGroups(text, feature);
        else
            WriteBandwidthGroups(text, feature);
        return;
    case EDCBXFeatureTlv::FEATURE_PFC:
        WritePriorityMap(text, " PFC Priority Map = ", feature.GetPFCPriorityMap());
        if (subType == 2) WriteTcsSupported(text, feature.GetPFCTcsSupported());
        return;
    case EDCBXFeatureTlv::FEATURE_APPLICATION_FCOE:
        if (subType != 2) break;
        WriteProtocolId(text, feature.GetFCoEProtocolId());
        WritePriorityMap(text, " Priority Map = ", feature.GetFCoEPriorityMap());
        return;
    case EDCBXFeatureTlv::FEATURE_APPLICATION:
        if (subType == 1) {
            WritePriorityMap(text, " Priority Map = ", feature.GetFCoEPriorityMap());
        } else {
            WriteProtocolId(text, feature.GetiSCSIProtocolId());
            WritePriorityMap(text, " Priority Map = ", feature.GetiSCSIPriorityMap());
        }
        return;
    case EDCBXFeatureTlv::FEATURE_LOGICAL_LINK:
        if (subType != 1) break;
        text << " Logical link status = "
             << (feature.GetLogicalLinkStatus() == EDCBXFeatureTlv::LOGICAL_LINK_DOWN ? "Down" : "Up") << '\n';
        return;
    default: break;
    }
    WriteCustomized(text, feature);
}

std::string EDCBXConfig::GetFeatureTlvAsString(EDCBXFeatureTlv const& feature) const
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    switch (feature.GetDcbxAdvertiseType()) {
    case EDCBXFeatureTlv::ADVERTISED: break;
    case EDCBXFeatureTlv::PEER_NOT_ADVERTISED_DCBX: text << kPeerNotAdvertisedDCBX << '\n'; return text.str();
    case EDCBXFeatureTlv::WAITING_FOR_DCBX_RESPONSE: text << kWaitingForResponse << '\n'; return text.str();
    case EDCBXFeatureTlv::PEER_SHUT_DOWN: text << kPeerShutdown << '\n'; return text.str();
    default: return ""; // on purpose: numbers without a meaning show nothing
    }
    if (!feature.IsFeatureAdvertised()) return "Peer has not advertised feature.\n";

    text << " Feature type = " << +feature.GetType() << ", Sub type = " << +feature.GetSubType() << '\n'
         << " Operating Version = " << +feature.GetOperVersion() << ", Max Version = " << +feature.GetMaxVersion()
         << '\n'
         << " Enable = " << YesNo(feature.IsEnabled()) << ", Willing = " << YesNo(feature.IsWilling())
         << ", Error = " << YesNo(feature.IsError()) << '\n';
    WritePayload(text, feature, m_values.subType);
    return text.str();
}
