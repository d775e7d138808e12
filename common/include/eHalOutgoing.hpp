#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "ifhostExport.hpp"

#include <string>

namespace eHal {

/// The name of the protocol that a message belongs to, by default "".
class IFHOST_API EProtocolName {
public:
    EProtocolName() = default;
    explicit EProtocolName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }
    bool operator==(EProtocolName const& other) const { return m_name == other.m_name; }
    bool operator!=(EProtocolName const& other) const { return m_name != other.m_name; }

private:
    std::string m_name;
};

/// The name of a table, by default "".
class IFHOST_API ETableName {
public:
    ETableName() = default;
    explicit ETableName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }
    bool operator==(ETableName const& other) const { return m_name == other.m_name; }
    bool operator!=(ETableName const& other) const { return m_name != other.m_name; }

private:
    std::string m_name;
};

/// A message of the hardware-abstraction layer to all ports.
class IFHOST_API EOutgoingGlobalMessage {
public:
    /// The types of the messages that the library makes; numbered apart from EGlobalMessage.
    enum eMessageType : unsigned int { PING_REPLY = 18 };

    unsigned int GetMessageType() const { return m_messageType; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    unsigned int GetObjectType() const { return m_objectType; }
    void SetObjectType(unsigned int type) { m_objectType = type; }
    EBlob const& GetMessage() const { return m_message; } ///< The body, an archive.
    void SetMessage(EBlob const& body) { m_message = body; }

private:
    unsigned int m_messageType = 0;
    unsigned int m_objectType = 0;
    EBlob m_message;
};

/// A message about one protocol.
class IFHOST_API EOutgoingProtocolMessage {
public:
    EProtocolName const& GetProtocolName() const { return m_protocolName; }
    void SetProtocolName(EProtocolName const& name) { m_protocolName = name; }
    unsigned int GetMessageType() const { return m_messageType; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    unsigned int GetObjectType() const { return m_objectType; }
    void SetObjectType(unsigned int type) { m_objectType = type; }
    EBlob const& GetMessage() const { return m_message; }
    void SetMessage(EBlob const& body) { m_message = body; }

private:
    EProtocolName m_protocolName;
    unsigned int m_messageType = 0;
    unsigned int m_objectType = 0;
    EBlob m_message;
};

/// An envelope around another message.
class IFHOST_API EOutgoingMessage {
public:
    unsigned int GetMessageType() const { return m_messageType; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    EBlob const& GetMessage() const { return m_message; }
    void SetMessage(EArchive const& archive) { m_message = archive.GetAsEBlob(); } ///< Keeps a copy of its bytes.

private:
    unsigned int m_messageType = 0;
    EBlob m_message;
};

/// \name The numbers, the name where there is one, the body. On an error the message keeps what it held.
///@{
IFHOST_API EArchive& operator<<(EArchive& archive, EOutgoingGlobalMessage const& message);
IFHOST_API EArchive& operator>>(EArchive& archive, EOutgoingGlobalMessage& message);
IFHOST_API EArchive& operator<<(EArchive& archive, EOutgoingProtocolMessage const& message);
IFHOST_API EArchive& operator>>(EArchive& archive, EOutgoingProtocolMessage& message);
IFHOST_API EArchive& operator<<(EArchive& archive, EOutgoingMessage const& message);
IFHOST_API EArchive& operator>>(EArchive& archive, EOutgoingMessage& message);
///@}

/// The MAC address as the low 48 bits of the number, its first byte the most significant of them.
IFHOST_API EUID MacToUid64(EMACAddress const& mac);
/// The low 48 bits of the number; the others are dropped.
IFHOST_API EMACAddress Uid64ToMac(EUID const& uid);

} // namespace eHal
