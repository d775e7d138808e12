#pragma once

#include "eBlob.hpp"
#include "ifhostExport.hpp"

/// A message between the host and the hardware-abstraction layer of a port.
class IFHOST_API EGlobalMessage {
public:
    /// The types of the messages that the library makes; the layer knows others.
    enum eMessageType : unsigned int {
        PING_REQUEST = 16,
        ARP_REQUEST = 17,
        ROUTER_SOLICITATION = 18,
        CLEAR_NEIGHBOR_TABLE = 19,
        GET_NEIGHBOR_TABLE = 29,
        NEIGHBOR_SOLICITATION = 45
    };

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
