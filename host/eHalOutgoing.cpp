#include "eHalOutgoing.hpp"

#include <array>

namespace eHal {

EArchive& operator<<(EArchive& archive, EOutgoingGlobalMessage const& message)
{
    return archive << message.GetMessageType() << message.GetObjectType() << message.GetMessage();
}

EArchive& operator>>(EArchive& archive, EOutgoingGlobalMessage& message)
{
    unsigned int messageType = 0;
    unsigned int objectType = 0;
    EBlob body;
    archive >> messageType >> objectType >> body;
    message.SetMessageType(messageType);
    message.SetObjectType(objectType);
    message.SetMessage(body);
    return archive;
}

EArchive& operator<<(EArchive& archive, EOutgoingProtocolMessage const& message)
{
    return archive << message.GetProtocolName().GetName() << message.GetMessageType() << message.GetObjectType()
                   << message.GetMessage();
}

EArchive& operator>>(EArchive& archive, EOutgoingProtocolMessage& message)
{
    std::string name;
    unsigned int messageType = 0;
    unsigned int objectType = 0;
    EBlob body;
    archive >> name >> messageType >> objectType >> body;
    message.SetProtocolName(EProtocolName(name));
    message.SetMessageType(messageType);
    message.SetObjectType(objectType);
    message.SetMessage(body);
    return archive;
}

EArchive& operator<<(EArchive& archive, EOutgoingMessage const& message)
{
    return archive << message.GetMessageType() << message.GetMessage();
}

EArchive& operator>>(EArchive& archive, EOutgoingMessage& message)
{
    unsigned int messageType = 0;
    EBlob body;
    archive >> messageType >> body;
    EArchive bytes;
    bytes.SetFromEBlob(body, true);
    message.SetMessageType(messageType);
    message.SetMessage(bytes);
    return archive;
}

EUID MacToUid64(EMACAddress const& mac)
{
    EBlob const bytes = mac.GetMACAddress();
    unsigned long number = 0;
    for (unsigned int i = 0; i < bytes.GetSize(); ++i) number = number << 8 | bytes.GetData()[i];
    return EUID(number);
}

EMACAddress Uid64ToMac(EUID const& uid)
{
    std::array<unsigned char, 6> bytes = {};
    unsigned long number = uid.GetAsUint64();
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, number >>= 8)
        *byte = static_cast<unsigned char>(number & 0xFFU);
    EMACAddress mac;
    mac.SetMACAddress(EBlob(bytes.data(), static_cast<unsigned int>(bytes.size())));
    return mac;
}

} // namespace eHal
