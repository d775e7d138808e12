#pragma once

#include "eArchiveOperators.hpp"
#include "eComponentId.hpp"
#include "eDHCPTLV.hpp"
#include "eFCoECompanions.hpp"
#include "eNPIVConfig.hpp"
#include "eSubId.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <list>
#include <string>
#include <vector>

class EInterfaceItem;
class EInterfaceTableHooks;

/// The Fibre Channel over Ethernet N_Port of one interface (T11 FC-BB-5), which owns it by value.
class IFCORE_API EFCoEConfig {
public:
    enum eAddressModes : unsigned int {
        ADDRESS_MODE_FABRIC_PROVIDED = 0, ///< FPMA
        ADDRESS_MODE_SERVER_PROVIDED = 1, ///< SPMA
        ADDRESS_MODE_BOTH = 2
    };
    /// The function code of State Change Registration (T11 FC-LS). Any value is legal to hold.
    enum eSCROptions : unsigned int { SCR_OPTION_DEFAULT = 2 };

    EFCoEConfig() = default;
    EFCoEConfig(EFCoEConfig const&) = default; // the parent too
    ~EFCoEConfig() = default;
    EFCoEConfig& operator=(EFCoEConfig const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EFCoEConfig const& other); ///< Nothing with itself; announced once, as a whole; the parent stays.
    void Empty();                        ///< Announced once, as a whole; the parent stays.
    void Swap(EFCoEConfig& other);       ///< Announces nothing; the parents stay.
    bool operator!=(EFCoEConfig const& other) const; ///< The parent is not compared.

    EUID const& GetSrcPortWWN() const { return m_values.srcPortWwn; }
    EUID const& GetSrcNodeWWN() const { return m_values.srcNodeWwn; }
    unsigned int GetB2BRxSize() const { return m_values.b2bRxSize; }
    bool IsSCREnabled() const { return m_values.scrEnabled; }
    bool IsNSRegistrationEnabled() const { return m_values.nsRegistrationEnabled; }
    bool IsPLOGIEnabled() const { return m_values.plogiEnabled; }
    unsigned int GetDestNodeId() const { return m_values.destNodeId; }
    unsigned int GetSrcOUI() const { return m_values.srcOui; }
    bool IsFIPEnabled() const;
    bool IsVlanDiscoveryEnabled() const { return m_values.vlanDiscoveryEnabled; }
    bool IsVlanDiscoveryUntagged() const { return m_values.vlanDiscoveryUntagged; }
    bool IsKeepAliveEnabled() const;
    bool IsVnPortKeepAliveEnabled() const;
    bool IsResetFIPDiscoveryEnabled() const;
    short GetResetFIPDiscoveryNumberOfRetries() const;
    unsigned short GetMaxFCoESize() const { return m_values.maxFCoESize; }
    eAddressModes GetAddressMode() const { return m_values.addressMode; }
    EUID const& GetVendorID() const { return m_values.vendorId; }
    std::list<EDHCPTLV> const& GetVendorSpecificTLVs() const { return m_values.vendorSpecificTlvs; }
    ENSRegOption const& GetNSRegOption() const { return m_values.nsRegOption; }
    std::vector<EPLOGIDestination> const& GetPLOGIDestinations() const { return m_values.plogiDestinations; }
    EFCNSQuery const& GetFCNSQuery() const { return m_values.fcNsQuery; }
    bool IsPRLIEnabled() const { return m_values.prliEnabled; }
    bool IsAutoPLOGIEnabled() const { return m_values.autoPlogiEnabled; }
    bool IsNSQueryEnabled() const { return m_values.nsQueryEnabled; }
    eSCROptions GetFCSCROption() const { return m_values.scrOption; }

    void SetSrcPortWWN(EUID const& wwn);
    void SetSrcNodeWWN(EUID const& wwn);
    void SetB2BRxSize(unsigned int bytes);
    void SetSCREnabled(bool enabled);
    void SetNsRegistrationEnabled(bool enabled);
    void SetPLOGIEnabled(bool enabled);
    void SetDestNodeId(unsigned int id); ///< 24 significant bits
    void SetSrcOUI(unsigned int oui);    ///< 24 significant bits
    void SetVlanDiscoveryEnabled(bool enabled);
    void SetVlanDiscoveryUntagged(bool untagged);
    void SetMaxFCoESize(unsigned short bytes);
    void SetAddressMode(eAddressModes mode);
    void SetVendorID(EUID const& id);
    void SetVendorSpecificTLVs(std::list<EDHCPTLV> const& tlvs);
    void SetNSRegOption(ENSRegOption const& option);
    void SetPLOGIDestinations(std::vector<EPLOGIDestination> const& destinations);
    void SetFCNSQuery(EFCNSQuery const& query);
    void SetPRLIEnable(bool enabled);
    void SetAutoPLOGIEnable(bool enabled);
    void SetNSQueryEnable(bool enabled);
    void SetFCSCROption(eSCROptions option);

    /// \name Packed fields: on purpose stored first and announced afterwards.
    ///@{
    void SetFIPEnabled(bool enabled);
    void SetKeepAliveEnabled(bool enabled);
    void SetVnPortKeepAliveEnabled(bool enabled);
    void SetResetFIPDiscoveryEnabled(bool enabled);
    void SetResetFIPDiscoveryNumberOfRetries(short retries);
    ///@}

    std::string GetAddressModeAsString() const; ///< Empty for an unknown mode.
    std::string GetSrcPortWWNAsString() const;
    std::string GetSrcNodeWWNAsString() const;
    std::string GetVendorIDAsString() const;
    std::string GetDestNodeIdAsString() const; ///< 3 bytes, "01.b6.69"
    std::string GetSrcOUIAsString() const;     ///< 3 bytes, "0e.fc.00"

    unsigned int GetLocalId() const { return 31; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values; TLVs and destinations are appended: read into a fresh
    /// record. An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 to 27, see the table in the source. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        EUID srcPortWwn;
        EUID srcNodeWwn;
        unsigned int b2bRxSize = 2112; // bytes
        bool scrEnabled = false;
        bool nsRegistrationEnabled = false;
        bool plogiEnabled = false;
        bool autoPlogiEnabled = false;
        unsigned int destNodeId = 112233; // 0x01B669, decimal on purpose; 24 significant bits
        unsigned int srcOui = 0x0EFC00;   // FC-MAP
        // bit 0 FIP enabled, bit 1 reset FIP discovery enabled, bits 16 to 31 its number of retries (signed); bits
        // unknown here are kept as they came
        unsigned int fipWord = 0x00030001;
        bool vlanDiscoveryEnabled = false;
        bool vlanDiscoveryUntagged = true;
        bool prliEnabled = false;
        bool nsQueryEnabled = false;
        unsigned int keepAliveWord = 3;    // bit 0 FIP keep-alive, bit 1 VN_Port keep-alive; other bits are kept
        unsigned short maxFCoESize = 2158; // bytes
        eAddressModes addressMode = ADDRESS_MODE_FABRIC_PROVIDED;
        EUID vendorId;
        std::list<EDHCPTLV> vendorSpecificTlvs; // FIP descriptors
        ENSRegOption nsRegOption;
        std::vector<EPLOGIDestination> plogiDestinations;
        EFCNSQuery fcNsQuery;
        eSCROptions scrOption = SCR_OPTION_DEFAULT;
        unsigned int edit24 = 0; // only sub-id 24 sets it, unannounced
    };
    struct Edits; // the row of the edit table that reaches past the setters
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
