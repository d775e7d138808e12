#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <string>

namespace eHal {

class MINIMAL_HOST_API EProtocolName {
public:
    explicit EProtocolName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }

private:
    std::string m_name;
};

class MINIMAL_HOST_API ETableName {
public:
    explicit ETableName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }

private:
    std::string m_name;
};

class MINIMAL_HOST_API EOutgoingGlobalMessage {
public:
    unsigned int GetMessageType() const { return m_messageType; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    void SetObjectType(unsigned int type) { m_objectType = type; }
    EBlob const& GetMessage() const { return m_message; }
    void SetMessage(EBlob const& body) { m_message = body; }

private:
    unsigned int m_messageType = 0;
    unsigned int m_objectType = 0;
    EBlob m_message;
};

class MINIMAL_HOST_API EOutgoingProtocolMessage {
public:
    void SetProtocolName(EProtocolName const& name) { m_protocolName = name; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    void SetObjectType(unsigned int type) { m_objectType = type; }
    void SetMessage(EBlob const& body) { m_message = body; }

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EOutgoingProtocolMessage const& message);

    EProtocolName m_protocolName{""};
    unsigned int m_messageType = 0;
    unsigned int m_objectType = 0;
    EBlob m_message;
};

class MINIMAL_HOST_API EOutgoingMessage {
public:
    void SetMessageType(unsigned int type) { m_messageType = type; }
    void SetMessage(EArchive const& archive) { m_message = archive.GetAsEBlob(); }

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EOutgoingMessage const& message);

    unsigned int m_messageType = 0;
    EBlob m_message;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EOutgoingProtocolMessage const& message);
MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EOutgoingMessage const& message);

} // namespace eHal
