#pragma once

#include "eArchiveOperators.hpp"
#include "eComponentId.hpp"
#include "eFCoECompanions.hpp"
#include "eSubId.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <string>
#include <vector>

class EInterfaceItem;
class EInterfaceTableHooks;

/// A virtual N_Port (NPIV) that logs in through another interface's FCoE port. Its interface owns it, created on
/// demand.
class IFCORE_API ENPIVConfig {
public:
    /// The function code of State Change Registration (T11 FC-LS). Any value is legal to hold.
    enum eSCROptions : unsigned int { SCR_OPTION_DEFAULT = 2 };

    ENPIVConfig() = default;
    ENPIVConfig(ENPIVConfig const&) = default; // the parent too
    ~ENPIVConfig() = default;
    ENPIVConfig& operator=(ENPIVConfig const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(ENPIVConfig const& other);             ///< Announced once, as a whole; the parent stays.
    void Empty();                                    ///< The same, with the defaults.
    void Swap(ENPIVConfig& other);                   ///< Announces nothing; the parents stay.
    bool operator!=(ENPIVConfig const& other) const; ///< The parent is not compared.

    EUID const& GetSrcPortWWN() const { return m_values.srcPortWwn; }
    EUID const& GetSrcNodeWWN() const { return m_values.srcNodeWwn; }
    unsigned int GetB2BRxSize() const { return m_values.b2bRxSize; }
    bool IsSCREnabled() const { return m_values.scrEnabled; }
    bool IsNSRegistrationEnabled() const;
    bool IsVnPortKeepAliveEnabled() const;
    bool IsPLOGIEnabled() const { return m_values.plogiEnabled; }
    unsigned int GetDestNodeId() const { return m_values.destNodeId; }
    EComponentId const& GetConnectedViaId() const { return m_values.connectedViaId; }
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
    void SetPLOGIEnabled(bool enabled);
    void SetDestNodeId(unsigned int id); ///< 24 significant bits
    /// Announced with the interface instead of the record, and only when there is one.
    void SetConnectedViaId(EComponentId const& interface);
    void SetNSRegOption(ENSRegOption const& option);
    void SetPLOGIDestinations(std::vector<EPLOGIDestination> const& destinations);
    void SetFCNSQuery(EFCNSQuery const& query);
    void SetPRLIEnable(bool enabled);
    void SetAutoPLOGIEnable(bool enabled);
    void SetNSQueryEnable(bool enabled);
    void SetFCSCROption(eSCROptions option);

    /// \name Packed fields: on purpose stored first and announced afterwards.
    ///@{
    void SetNsRegistrationEnabled(bool enabled);
    void SetVnPortKeepAliveEnabled(bool enabled);
    ///@}

    std::string GetSrcPortWWNAsString() const;
    std::string GetSrcNodeWWNAsString() const;
    std::string GetDestNodeIdAsString() const; ///< 3 bytes, "01.b6.69"

    unsigned int GetLocalId() const { return 32; } ///< The leaf under the interface.
    void GetID(EComponentId& id) const;            ///< The interface's path (empty without one) and the leaf.
    EInterfaceItem const* GetParent() const { return m_parent; }
    void SetParent(EInterfaceItem const* parent) { m_parent = parent; }
    EInterfaceTableHooks& GetHooks() const; ///< Never fails: without a parent, one that ignores all.

    void SerializeOut(EArchive& archive) const;
    /// Fields that the version does not carry keep their values; destinations are appended: read into a fresh record.
    /// An unknown version ends the process.
    void SerializeIn(EArchive& archive);
    /// Sub-ids 1 to 16, see the table in the source. False: nothing was read.
    bool ProcessEdit(ESubId first, ESubId last, EArchive& archive);

private:
    struct Values {
        EUID srcPortWwn;
        EUID srcNodeWwn;
        unsigned int b2bRxSize = 2112; // bytes
        bool scrEnabled = false;
        unsigned int npivWord = 2; // bit 0 NS registration, bit 1 VN_Port keep-alive; other bits are kept
        bool plogiEnabled = false;
        unsigned int destNodeId = 112233; // 0x01B669, decimal on purpose; 24 significant bits
        EComponentId connectedViaId;      // the interface whose FCoE port carries this virtual port
        ENSRegOption nsRegOption;
        std::vector<EPLOGIDestination> plogiDestinations;
        EFCNSQuery fcNsQuery;
        bool autoPlogiEnabled = false;
        bool prliEnabled = false;
        bool nsQueryEnabled = false;
        eSCROptions scrOption = SCR_OPTION_DEFAULT;
    };
    Values m_values;
    EInterfaceItem const* m_parent = nullptr; // not owned, never swapped
};
