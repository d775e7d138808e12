#pragma once

#include "eArchiveOperators.hpp"
#include "eUID.hpp"
#include "ifcoreExport.hpp"

#include <string>

/// Which registrations a port makes with the Fibre Channel name server (T11 FC-GS), and with which names.
class IFCORE_API ENSRegOption {
public:
    /// Bits of the option set. The meaning is the host's; any combination is legal to hold.
    enum eRegOptions : unsigned short { REG_OPTIONS_NONE = 0, REG_OPTIONS_DEFAULT = 0x0005 };

    ENSRegOption() = default;
    ENSRegOption(ENSRegOption const&) = default;
    ENSRegOption(ENSRegOption&&) = default;
    ~ENSRegOption() = default;
    ENSRegOption& operator=(ENSRegOption const& other)
    {
        Copy(other);
        return *this;
    }
    ENSRegOption& operator=(ENSRegOption&&) = default;
    void Copy(ENSRegOption const& other);
    void Swap(ENSRegOption& other);
    bool operator!=(ENSRegOption const& other) const;

    unsigned short GetOptions() const { return m_values.options; }
    void SetOptions(unsigned short options) { m_values.options = options; }
    bool IsOptionEnabled(eRegOptions bits) const; ///< Whether any of the bits is set.
    void SetOptionEnabled(eRegOptions bits, bool enabled);
    std::string const& GetRspnIdName() const { return m_values.rspnIdName; }
    void SetRspnIdName(std::string const& name) { m_values.rspnIdName = name; }
    std::string const& GetRsnnNnName() const { return m_values.rsnnNnName; }
    void SetRsnnNnName(std::string const& name) { m_values.rsnnNnName = name; }
    std::string const& GetExtraName() const { return m_values.extraName; }
    void SetExtraName(std::string const& name) { m_values.extraName = name; }

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< An unknown version ends the process.

private:
    struct Values {
        unsigned short options = REG_OPTIONS_DEFAULT; // a set of eRegOptions
        std::string rspnIdName;                       // symbolic port name, registered with RSPN_ID
        std::string rsnnNnName;                       // symbolic node name, registered with RSNN_NN
        std::string extraName;                        // archived only, not sent
    };
    Values m_values;
};

/// One remote port to log in to.
class IFCORE_API EPLOGIDestination {
public:
    EPLOGIDestination() = default;
    EPLOGIDestination(EPLOGIDestination const&) = default;
    ~EPLOGIDestination() = default;
    EPLOGIDestination& operator=(EPLOGIDestination const& other)
    {
        Copy(other);
        return *this;
    }
    void Copy(EPLOGIDestination const& other);
    void Swap(EPLOGIDestination& other);
    bool operator!=(EPLOGIDestination const& other) const;

    bool IsEnabled() const { return m_values.enabled; }
    void SetEnabled(bool enabled) { m_values.enabled = enabled; }
    int GetDestMode() const { return m_values.destMode; }
    void SetDestMode(int mode) { m_values.destMode = mode; }
    unsigned int GetDestNodeId() const { return m_values.destNodeId; }
    void SetDestNodeId(unsigned int id) { m_values.destNodeId = id; }
    EUID const& GetWWPN() const { return m_values.wwpn; }
    void SetWWPN(EUID const& wwpn) { m_values.wwpn = wwpn; }

    std::string GetDestModeAsString() const;   ///< "destid", "wwpn"; empty for an unknown mode.
    std::string GetDestNodeIdAsString() const; ///< 3 bytes, "01.b6.69"
    std::string GetWWPNAsString() const;       ///< 8 bytes, joined by one space

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< An unknown version ends the process.

private:
    struct Values {
        bool enabled = false;
        int destMode = 0;            // 0 addressed by its destination id, 1 by its port name
        unsigned int destNodeId = 0; // 24 significant bits
        EUID wwpn;
    };
    Values m_values;
};

/// One query to the Fibre Channel name server (T11 FC-GS).
class IFCORE_API EFCNSQuery {
public:
    EFCNSQuery() = default;
    EFCNSQuery(EFCNSQuery const&) = default;
    EFCNSQuery(EFCNSQuery&&) = default;
    ~EFCNSQuery() = default;
    EFCNSQuery& operator=(EFCNSQuery const& other)
    {
        Copy(other);
        return *this;
    }
    EFCNSQuery& operator=(EFCNSQuery&&) = default;
    void Copy(EFCNSQuery const& other);
    void Swap(EFCNSQuery& other);
    bool operator!=(EFCNSQuery const& other) const;

    bool GetFlag() const { return m_values.flag; }
    void SetFlag(bool flag) { m_values.flag = flag; }
    int GetCommand() const { return m_values.command; }
    void SetCommand(int command) { m_values.command = command; }
    int GetRequestObject() const { return m_values.requestObject; }
    void SetRequestObject(int object) { m_values.requestObject = object; }
    std::string const& GetRequestObjectValue() const { return m_values.requestObjectValue; }
    void SetRequestObjectValue(std::string const& hexText) { m_values.requestObjectValue = hexText; }

    /// Cuts the value to the last bytes that the request object can hold: 1 a port identifier of 3 bytes, 3 one byte,
    /// 0 nothing, others a name of 8 bytes. A value short enough stays exactly as typed. For the host; nothing here
    /// calls it.
    void ForceValid();

    void SerializeOut(EArchive& archive) const;
    void SerializeIn(EArchive& archive); ///< An unknown version ends the process.

private:
    struct Values {
        bool flag = false;                    // carried for the host, not sent
        int command = 0x0100;                 // GA_NXT
        int requestObject = 1;                // what kind of object the value is
        std::string requestObjectValue = " "; // hexadecimal text; a single space on purpose
    };
    Values m_values;
};
