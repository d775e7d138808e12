#pragma once

#include "eArchiveOperators.hpp"
#include "eBlob.hpp"
#include "ifcoreExport.hpp"

#include <string>
#include <utility>

/// The header of one DCBX feature TLV (DCBX 1.00 and 1.01, forerunners of IEEE 802.1Qaz).
class IFCORE_API EDCBXFeatureTlvHeader {
public:
    /// Draws a new instance key.
    EDCBXFeatureTlvHeader(unsigned char type, unsigned char subType);
    EDCBXFeatureTlvHeader(EDCBXFeatureTlvHeader const&) = default; // the instance key too
    ~EDCBXFeatureTlvHeader() = default;
    EDCBXFeatureTlvHeader& operator=(EDCBXFeatureTlvHeader const&) = default;
    bool operator!=(EDCBXFeatureTlvHeader const& other) const; ///< The instance key is compared too.

    unsigned char GetType() const { return m_values.type; }
    void SetType(unsigned char type) { m_values.type = type; }
    unsigned short GetLength() const { return m_values.length; }
    void SetLength(unsigned short bytes) { m_values.length = bytes; }
    unsigned char GetOperVersion() const { return m_values.operVersion; }
    void SetOperVersion(unsigned char version) { m_values.operVersion = version; }
    unsigned char GetMaxVersion() const { return m_values.maxVersion; }
    void SetMaxVersion(unsigned char version) { m_values.maxVersion = version; }
    bool IsEnabled() const { return m_values.enabled; }
    void SetEnabled(bool enabled) { m_values.enabled = enabled; }
    bool IsWilling() const { return m_values.willing; }
    void SetWilling(bool willing) { m_values.willing = willing; }
    bool IsError() const { return m_values.error; }
    void SetError(bool error) { m_values.error = error; }
    unsigned char GetSubType() const { return m_values.subType; }
    void SetSubType(unsigned char subType) { m_values.subType = subType; }
    unsigned int GetInstanceKey() const { return m_values.instanceKey; }
    void SetInstanceKey(unsigned int key) { m_values.instanceKey = key; }
    bool IsOverrideOperVersion() const { return m_values.overrideOperVersion; }
    void SetOverrideOperVersion(bool override) { m_values.overrideOperVersion = override; }

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values. An unknown version ends the process.
    void SerializeIn(EArchive& archive);

private:
    struct Values {
        unsigned char type = 0;
        unsigned short length = 0; // bytes
        unsigned char operVersion = 255;
        unsigned char maxVersion = 255;
        bool enabled = true;
        bool willing = true;
        bool error = false;
        unsigned char subType = 0;
        unsigned int instanceKey = 0;     // tells features of one type apart; drawn at random
        bool overrideOperVersion = false; // use the operating version given instead of negotiating it
    };
    Values m_values;
};

/// One DCBX feature: its header, its payload (the desired configuration), and what is known of the peer's side of it.
/// The plain accessors announce nothing. The payload accessors know the layouts of the two protocol variants: getters
/// answer a default when type, DCBX subtype or index do not match or the payload is too short; setters then do
/// nothing, and otherwise grow the payload to cover the byte they write.
class IFCORE_API EDCBXFeatureTlv {
public:
    enum eDCBXFeatureTlvTypes : unsigned char {
        FEATURE_PRIORITY_GROUP = 2,
        FEATURE_PFC = 3,
        FEATURE_APPLICATION_FCOE = 4, ///< with DCBX subtype 2
        FEATURE_APPLICATION = 5,      ///< iSCSI
        FEATURE_LOGICAL_LINK = 6      ///< with DCBX subtype 1
    };
    enum eDcbxAdvertiseType : unsigned int {
        ADVERTISED = 0,
        PEER_NOT_ADVERTISED_DCBX = 1,
        WAITING_FOR_DCBX_RESPONSE = 2,
        PEER_SHUT_DOWN = 3
    };
    enum eDcbxFeatureState : unsigned int {
        STATE_LINK_UP = 0,
        STATE_SET_LOCAL_PARAMETERS,
        STATE_F_WAIT,
        STATE_NO_ADVERTISE,
        STATE_PEER_NOT_ADVERTISE_DCBX,
        STATE_PEER_NOT_ADVERTISE_FEATURE,
        STATE_UPDATE_OPER_VERSION,
        STATE_PEER_UPDATE_OPER_VERSION,
        STATE_CFG_NOT_COMPATIBLE,
        STATE_USE_LOCAL_CFG,
        STATE_USE_PEER_CFG,
        STATE_FEATURE_DISABLED,
        STATE_GET_PEER_CFG,
        STATE_ERROR_CHANGE
    };
    enum eStrictPriorities : unsigned char { STRICT_PRIORITY_NONE = 0 };
    enum eLogicalLinkStatus : unsigned char { LOGICAL_LINK_DOWN = 0, LOGICAL_LINK_UP = 1 };

    /// The payload is filled with the defaults of the type; draws a new instance key. Without arguments it makes a
    /// feature that is there to be read into.
    explicit EDCBXFeatureTlv(unsigned char type = 0, unsigned char subType = 0, unsigned char dcbxSubType = 2);
    EDCBXFeatureTlv(EDCBXFeatureTlv const&) = default; // the instance key too
    ~EDCBXFeatureTlv() = default;
    EDCBXFeatureTlv& operator=(EDCBXFeatureTlv const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDCBXFeatureTlv const& other);
    void Swap(EDCBXFeatureTlv& other);
    bool operator!=(EDCBXFeatureTlv const& other) const; ///< Every field, the instance key too.

    EDCBXFeatureTlvHeader const& GetHeader() const { return m_values.header; }
    void SetHeader(EDCBXFeatureTlvHeader const& header) { m_values.header = header; }
    unsigned char GetType() const { return m_values.header.GetType(); }
    void SetType(unsigned char type); ///< A different type resets the payload.
    unsigned short GetLength() const { return m_values.header.GetLength(); }
    void SetLength(unsigned short bytes) { m_values.header.SetLength(bytes); }
    unsigned char GetOperVersion() const { return m_values.header.GetOperVersion(); }
    void SetOperVersion(unsigned char version) { m_values.header.SetOperVersion(version); }
    unsigned char GetMaxVersion() const { return m_values.header.GetMaxVersion(); }
    void SetMaxVersion(unsigned char version) { m_values.header.SetMaxVersion(version); }
    bool IsEnabled() const { return m_values.header.IsEnabled(); }
    void SetEnabled(bool enabled) { m_values.header.SetEnabled(enabled); }
    bool IsWilling() const { return m_values.header.IsWilling(); }
    void SetWilling(bool willing) { m_values.header.SetWilling(willing); }
    bool IsError() const { return m_values.header.IsError(); }
    void SetError(bool error) { m_values.header.SetError(error); }
    unsigned char GetSubType() const { return m_values.header.GetSubType(); }
    void SetSubType(unsigned char subType) { m_values.header.SetSubType(subType); }
    unsigned int GetInstanceKey() const { return m_values.header.GetInstanceKey(); }
    void SetInstanceKey(unsigned int key) { m_values.header.SetInstanceKey(key); }
    bool IsOverrideOperVersion() const { return m_values.header.IsOverrideOperVersion(); }
    void SetOverrideOperVersion(bool override) { m_values.header.SetOverrideOperVersion(override); }
    EBlob const& GetDesiredCfg() const { return m_values.desiredCfg; }
    void SetDesiredCfg(EBlob const& payload) { m_values.desiredCfg = payload; }
    bool IsMismatch() const { return m_values.mismatch; }
    void SetMismatch(bool mismatch) { m_values.mismatch = mismatch; }
    eDcbxAdvertiseType GetDcbxAdvertiseType() const { return m_values.advertiseType; }
    void SetDcbxAdvertiseType(eDcbxAdvertiseType type) { m_values.advertiseType = type; }
    bool IsFeatureAdvertised() const { return m_values.featureAdvertised; }
    void SetFeatureAdvertised(bool advertised) { m_values.featureAdvertised = advertised; }
    unsigned char GetDcbxSubType() const { return m_values.dcbxSubType; }
    void SetDcbxSubType(unsigned char dcbxSubType) { m_values.dcbxSubType = dcbxSubType; } ///< The payload stays.
    eDcbxFeatureState GetDcbxState() const { return m_values.state; }
    void SetDcbxState(eDcbxFeatureState state) { m_values.state = state; }

    /// \name Type 2, DCBX subtype 2: priority groups. Priorities and groups are 0 to 7.
    ///@{
    unsigned char GetPriorityGroupID(unsigned int priority) const;         ///< 15 without one
    void SetPriorityGroupID(unsigned char groupId, unsigned int priority); ///< Ids below 16 only.
    unsigned char GetPGPercentage(unsigned int group) const;
    void SetPGPercentage(unsigned char percentage, unsigned int group);
    unsigned char GetPGTcsSupported() const;
    void SetPGTcsSupported(unsigned char count);
    ///@}
    /// \name Type 2, DCBX subtype 1: bandwidth groups. Groups and priorities are 0 to 7.
    ///@{
    unsigned char GetBWGPercentage(unsigned int group) const;
    void SetBWGPercentage(unsigned char percentage, unsigned int group);
    unsigned char GetBWGId(unsigned int priority) const;
    void SetBWGId(unsigned char groupId, unsigned int priority);
    eStrictPriorities GetBWGStrictPriority(unsigned int priority) const;
    void SetBWGStrictPriority(eStrictPriorities strict, unsigned int priority);
    unsigned char GetBWPercentage(unsigned int priority) const;
    void SetBWPercentage(unsigned char percentage, unsigned int priority);
    ///@}
    /// \name Type 3: priority flow control; bit p of a map is priority p.
    ///@{
    unsigned char GetPFCPriorityMap() const;
    void SetPFCPriorityMap(unsigned char map);
    bool IsPFCPriorityEnabled(unsigned int priority) const;
    void SetPFCPriorityEnabled(bool enabled, unsigned int priority);
    unsigned char GetPFCTcsSupported() const; ///< DCBX subtype 2 only
    void SetPFCTcsSupported(unsigned char count);
    ///@}
    /// \name Type 4, DCBX subtype 2: FCoE. The map is also that of type 5 with DCBX subtype 1, on purpose.
    ///@{
    unsigned short GetFCoEProtocolId() const;
    void SetFCoEProtocolId(unsigned short etherType);
    unsigned char GetFCoEPriorityMap() const;
    void SetFCoEPriorityMap(unsigned char map);
    bool IsFCoEPriorityEnabled(unsigned int priority) const;
    void SetFCoEPriorityEnabled(bool enabled, unsigned int priority);
    ///@}
    /// \name Type 5, DCBX subtype 2: iSCSI.
    ///@{
    unsigned short GetiSCSIProtocolId() const;
    void SetiSCSIProtocolId(unsigned short port);
    unsigned char GetiSCSIPriorityMap() const;
    void SetiSCSIPriorityMap(unsigned char map);
    bool IsiSCSIPriorityEnabled(unsigned int priority) const;
    void SetiSCSIPriorityEnabled(bool enabled, unsigned int priority);
    ///@}
    /// \name Type 6: logical link.
    ///@{
    eLogicalLinkStatus GetLogicalLinkStatus() const;
    void SetLogicalLinkStatus(eLogicalLinkStatus status);
    ///@}

    void ResetDefault(); ///< Fills the payload with the defaults of type and DCBX subtype.
    void ResetPriorityGroupToDefault();
    void ResetPFCToDefault();
    void ResetApplicationToDefault();    ///< The form of the DCBX subtype, one of the next two.
    void ResetApplication1_0ToDefault(); ///< The layout of DCBX subtypes other than 2.
    void ResetApplication1_1ToDefault(); ///< The layout of DCBX subtype 2.
    void ResetLogicalLinkToDefault();

    std::string GetTypeName() const;
    std::string GetDcbxStateAsString() const; ///< " Last Known State = " and the name.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values. An unknown version ends the process.
    void SerializeIn(EArchive& archive);

private:
    friend class EDCBXConfig; // makes payloads before it installs them

    void SwapDesiredCfg(EDCBXFeatureTlv& other) { std::swap(m_values.desiredCfg, other.m_values.desiredCfg); }

    struct Values {
        EDCBXFeatureTlvHeader header;
        EBlob desiredCfg = {}; // the payload
        bool mismatch = false; // the local and the peer's configuration differ
        eDcbxAdvertiseType advertiseType = ADVERTISED;
        bool featureAdvertised = true; // by the peer
        unsigned char dcbxSubType = 2; // protocol variant, decides the payload's layout
        eDcbxFeatureState state = STATE_LINK_UP;
    };
    Values m_values;
};
