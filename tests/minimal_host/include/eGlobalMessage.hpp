#pragma once

#include "eBlob.hpp"

class MINIMAL_HOST_API EGlobalMessage {
public:
    unsigned int GetMessageType() const { return m_messageType; }
    void SetMessageType(unsigned int type) { m_messageType = type; }
    unsigned int GetObjectType() const { return m_objectType; }
    void SetObjectType(unsigned int type) { m_objectType = type; }
    EBlob const& GetMessage() const { return m_message; }
    void SetMessage(EBlob const& body) { m_message = body; }

private:
    unsigned int m_messageType = 0;
    unsigned int m_objectType = 0;
    EBlob m_message;
};
