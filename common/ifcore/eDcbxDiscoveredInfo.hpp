#pragma once

#include "eArchiveOperators.hpp"
#include "eDcbxConfig.hpp"
#include "eLldpConfig.hpp"
#include "ifcoreExport.hpp"

#include <string>
#include <vector>

class EDiscoveredInfo;
class EDiscoveredTableHooks;

/// What an interface and its peer exchanged by DCBX and LLDP (IEEE 802.1Qaz, 802.1AB), owned by the interface's
/// discovered info. Only the replacement of the whole record is announced; the configurations kept here have no parent.
class IFCORE_API EDCBXDiscoveredInfo {
public:
    /// A row of the LLDP comparison.
    struct IFCORE_API LocalAndPeerLLDPInfo {
        std::string name;
        std::string local;
        std::string peer;

        void SerializeOut(EArchive& archive) const;
        void SerializeIn(EArchive& archive);
    };
    /// A row of the DCBX comparison.
    struct IFCORE_API OperAndPeerDCBXInfo {
        std::string name;
        std::string oper;
        std::string peer;
        bool mismatch = false;

        void SerializeOut(EArchive& archive) const;
        void SerializeIn(EArchive& archive);
    };
    /// The positions of the LLDP rows.
    enum eLLDPInfoIndex : unsigned int { LLDP_CHASSIS_ID = 0, LLDP_PORT_ID = 1, LLDP_TIME_TO_LIVE = 2 };
    /// The names of the DCBX features, in their order. As a position of a row it is just a number: the rows behind
    /// that of the control TLV follow the list of features.
    enum eDCBXInfoIndex : unsigned int {
        DCBX_CONTROL = 0,
        DCBX_PRIORITY_GROUP = 1,
        DCBX_PFC = 2,
        DCBX_FCOE = 3,
        DCBX_FCOE_LOGICAL_LINK = 4,
        DCBX_LAN_LOGICAL_LINK = 5,
        DCBX_ISCSI = 6
    };

    EDCBXDiscoveredInfo();                                 ///< Three LLDP rows with their names alone, no DCBX rows.
    EDCBXDiscoveredInfo(EDCBXDiscoveredInfo const& other); ///< Not the parent.
    EDCBXDiscoveredInfo& operator=(EDCBXDiscoveredInfo const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EDCBXDiscoveredInfo const& other); ///< Announced once, as a whole; the parent stays.
    void Empty();                                ///< On purpose announces nothing.
    void Swap(EDCBXDiscoveredInfo& other);       ///< All but the parent; announces nothing.

    /// \name Configurations; setting one leaves the comparison as it is
    ///@{
    EDCBXConfig const& GetOperDCBXCfg() const { return m_values.operDcbx; }
    EDCBXConfig& GetOperDCBXCfg() { return m_values.operDcbx; }
    void SetOperDCBXCfg(EDCBXConfig const& config) { m_values.operDcbx = config; }
    EDCBXConfig const& GetPeerDCBXCfg() const { return m_values.peerDcbx; }
    EDCBXConfig& GetPeerDCBXCfg() { return m_values.peerDcbx; }
    void SetPeerDCBXCfg(EDCBXConfig const& config) { m_values.peerDcbx = config; }
    ELLDPConfig const& GetLocalLLDPCfg() const { return m_values.localLldp; }
    ELLDPConfig& GetLocalLLDPCfg() { return m_values.localLldp; }
    void SetLocalLLDPCfg(ELLDPConfig const& config) { m_values.localLldp = config; }
    ELLDPConfig const& GetPeerLLDPCfg() const { return m_values.peerLldp; }
    ELLDPConfig& GetPeerLLDPCfg() { return m_values.peerLldp; }
    void SetPeerLLDPCfg(ELLDPConfig const& config) { m_values.peerLldp = config; }
    ///@}

    /// \name Comparison, for display
    /// Single rows are null beyond the last; setting one there does nothing.
    ///@{
    void ClearOperAndPeerInfoList();  ///< Back to the rows of a new record.
    void UpdateOperAndPeerInfoList(); ///< From the four configurations. Called by nobody but the owner.
    std::vector<LocalAndPeerLLDPInfo> const& GetLocalAndPeerLLDPInfoList() const { return m_values.lldpRows; }
    void SetLocalAndPeerLLDPInfoList(std::vector<LocalAndPeerLLDPInfo> const& rows) { m_values.lldpRows = rows; }
    LocalAndPeerLLDPInfo const* GetLocalAndPeerLLDPInfo(eLLDPInfoIndex position) const;
    void SetLocalAndPeerLLDPInfo(eLLDPInfoIndex position, LocalAndPeerLLDPInfo row);
    std::vector<OperAndPeerDCBXInfo> const& GetOperAndPeerDCBXInfoList() const { return m_values.dcbxRows; }
    void SetOperAndPeerDCBXInfoList(std::vector<OperAndPeerDCBXInfo> const& rows) { m_values.dcbxRows = rows; }
    OperAndPeerDCBXInfo const* GetOperAndPeerDCBXInfo(eDCBXInfoIndex position) const;
    void SetOperAndPeerDCBXInfo(eDCBXInfoIndex position, OperAndPeerDCBXInfo row);
    ///@}

    /// The name of a feature by its type and subtype. \p flavour is the configuration's DCBX subtype: 2 has features of
    /// its own. "Custom:9,1" without a name.
    static std::string GetDCBXInfoName(unsigned char type, unsigned char subType, unsigned char flavour);
    std::string GetPeerLLDPConfigAsString() const;
    std::string GetOperatingDCBXConfigAsString() const;
    std::string GetPeerDCBXConfigAsString() const;
    std::string GetDCBXFeatureTlvAsString(EDCBXConfig const& config) const; ///< "None\n" without features.
    std::string GetMismatchFeaturesAsString() const; ///< Each peer feature that does not match: its name and ";"

    EDiscoveredInfo const* GetParent() const { return m_parent; }
    void SetParent(EDiscoveredInfo const* parent) { m_parent = parent; }
    EDiscoveredTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.
    void SerializeOut(EArchive& archive) const;
    /// Not emptied first: features are appended, as the configurations do; both comparisons are replaced by what was
    /// stored. Announces nothing. An unknown version ends the process.
    void SerializeIn(EArchive& archive);

private:
    struct Values {
        bool flag = false; // only carried
        EDCBXConfig operDcbx;
        EDCBXConfig peerDcbx;
        ELLDPConfig localLldp;
        ELLDPConfig peerLldp;
        std::vector<LocalAndPeerLLDPInfo> lldpRows;
        std::vector<OperAndPeerDCBXInfo> dcbxRows;
    };
    Values m_values;
    EDiscoveredInfo const* m_parent = nullptr; // not owned, never swapped
};
