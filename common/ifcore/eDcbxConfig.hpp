#pragma once

#include "eArchiveOperators.hpp"
#include "eDcbxFeatureTlv.hpp"
#include "eSubId.hpp"
#include "ifcoreExport.hpp"

#include <string>
#include <vector>

class EComponentId;
class EInterfaceItem;
class EInterfaceTableHooks;

/// The DCBX control TLV: versions, the exchange's numbers and its state. Nothing here is announced.
class IFCORE_API EDCBXControlTlv {
public:
    enum eControlState : unsigned int {
        STATE_LINK_UP = 0,
        STATE_D_WAIT,
        STATE_UPDATE_DCBX_TLV,
        STATE_PEER_NOT_ADVERTISE_DCBX,
        STATE_UPDATE_OPER_VERSION,
        STATE_PROCESS_PEER_TLV,
        STATE_ACK_PEER
    };

    EDCBXControlTlv() = default;
    EDCBXControlTlv(EDCBXControlTlv const&) = default;
    ~EDCBXControlTlv() = default;
    EDCBXControlTlv& operator=(EDCBXControlTlv const&) = default;
    void Swap(EDCBXControlTlv& other);
    bool operator!=(EDCBXControlTlv const& other) const;

    unsigned char GetOperVersion() const { return m_values.operVersion; }
    void SetOperVersion(unsigned char version) { m_values.operVersion = version; }
    unsigned char GetMaxVersion() const { return m_values.maxVersion; }
    void SetMaxVersion(unsigned char version) { m_values.maxVersion = version; }
    unsigned int GetSeqNo() const { return m_values.seqNo; }
    void SetSeqNo(unsigned int number) { m_values.seqNo = number; }
    unsigned int GetAckNo() const { return m_values.ackNo; }
    void SetAckNo(unsigned int number) { m_values.ackNo = number; }
    EDCBXFeatureTlv::eDcbxAdvertiseType GetDcbxAdvertiseType() const { return m_values.advertiseType; }
    void SetDcbxAdvertiseType(EDCBXFeatureTlv::eDcbxAdvertiseType type) { m_values.advertiseType = type; }
    bool IsValid() const { return m_values.valid; }
    void SetValid(bool valid) { m_values.valid = valid; }
    eControlState GetControlState() const { return m_values.controlState; }
    void SetControlState(eControlState state) { m_values.controlState = state; }
    bool IsOverrideOperVersion() const { return m_values.overrideOperVersion; }
    void SetOverrideOperVersion(bool override) { m_values.overrideOperVersion = override; }

    std::string GetControlStateAsString() const;   ///< " Last Known State = " and the name.
    std::string GetDCBXControlTlvAsString() const; ///< Empty when not valid.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values. An unknown version ends the process.
    void SerializeIn(EArchive& archive);

private:
    struct Values {
        unsigned char operVersion = 255;
        unsigned char maxVersion = 255;
        unsigned int seqNo = 0;
        unsigned int ackNo = 0;
        EDCBXFeatureTlv::eDcbxAdvertiseType advertiseType = EDCBXFeatureTlv::ADVERTISED;
        bool valid = false;
        eControlState controlState = STATE_LINK_UP;
        bool overrideOperVersion = false; // use the operating version given instead of negotiating it
    };
    Values m_values;
};

/// The DCBX configuration of one interface: one control TLV and an ordered list of features. Its interface owns it,
/// created on demand. Every feature in the list carries the configuration's subtype as its DCBX subtype.
class IFCORE_API EDCBXConfig {
public:
    EDCBXConfig() = default;
    EDCBXConfig(EDCBXConfig const&) = default; // the parent and the instance keys too
    ~EDCBXConfig() = default;
    EDCBXConfig& operator=(EDCBXConfig const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDCBXConfig const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                    ///< The same, with the defaults.
    void Swap(EDCBXConfig& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(EDCBXConfig const& other) const; ///< The parent is not compared, instance keys are.

    std::vector<EDCBXFeatureTlv> const& GetFeatureTlvs() const { return m_values.featureTlvs; }
    void SetFeatureTlvs(std::vector<EDCBXFeatureTlv> const& features); ///< Payloads stay as they are given.
    unsigned int GetOUI() const { return m_values.oui; }
    void SetOUI(unsigned int oui); ///< 24 significant bits
    unsigned char GetSubType() const { return m_values.subType; }
    void SetSubType(unsigned char subType); ///< Resets every feature's payload to the defaults of its type.
    void SetControlTlvMaxVersion(unsigned char version);
    void SetControlTlvOperVersion(unsigned char version);
    void SetControlTlvOperVersionEnabled(bool enabled); ///< The control TLV's override flag.

    /// \name Not announced.
    ///@{
    EDCBXControlTlv const& GetControlTlv() const { return m_values.controlTlv; }
    void SetControlTlv(EDCBXControlTlv const& control) { m_values.controlTlv = control; }
    unsigned char GetControlTlvMaxVersion() const { return m_values.controlTlv.GetMaxVersion(); }
    unsigned char GetControlTlvOperVersion() const { return m_values.controlTlv.GetOperVersion(); }
    bool GetControlTlvOperVersionEnabled() const { return m_values.controlTlv.IsOverrideOperVersion(); }
    void AddFeatureTlv(EDCBXFeatureTlv const& feature); ///< Appends a copy.
    /// The first feature of this type, subtype and instance key; false when there is none.
    bool RemoveFeatureTlv(unsigned char type, unsigned char subType, unsigned int key);
    /// Only index 0 removes, on purpose; every other index answers false.
    bool RemoveFeatureTlv(unsigned int index);
    /// The first match, owned by this record and valid until its list changes; null when there is none.
    EDCBXFeatureTlv* GetFeatureTlv(unsigned char type, unsigned char subType, unsigned int key);
    EDCBXFeatureTlv const* GetFeatureTlvReadOnly(unsigned char type, unsigned char subType, unsigned int key) const;
    EDCBXFeatureTlv* GetFeatureTlv(unsigned int index); ///< 0-based; null beyond the end.
    EDCBXFeatureTlv const* GetFeatureTlvReadOnly(unsigned int index) const;
    /// Whether the feature was found.
    bool SetFeatureMismatch(bool mismatch, unsigned char type, unsigned char subType, unsigned int key);
    bool IsFeatureMismatch(unsigned char type, unsigned char subType, unsigned int key) const;
    /// The first type of 2 to 127 that no feature has; false with 128 when all are used.
    bool GetNextAvailableFeatureType(unsigned char& type) const;
    ///@}

    std::string GetOUIAsString() const; ///< 3 bytes, "00.1b.21"
    /// Several lines, each ended by "\n"; by this configuration's subtype. A payload that is too short shows zeros
    /// or fewer bytes.
    std::string GetFeatureTlvAsString(EDCBXFeatureTlv const& feature) const;

    unsigned int GetLocalId() const { return 36; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Features are appended: read into a fresh record. The count is read as 8 bits: more than 255 features cannot be
    /// read back. An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 features, 2 OUI, 3 subtype, 4 control max version, 5 control oper version, 6 control oper version
    /// enabled. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        std::vector<EDCBXFeatureTlv> featureTlvs;
        unsigned int oui = 0x001B21; // 24 significant bits
        EDCBXControlTlv controlTlv;
        unsigned char subType = 2; // protocol variant: 1 or 2
    };
    void StampSubType(); // into every feature

    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
