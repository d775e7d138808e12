#include "eHalMessages.hpp"

#include "eArchive.hpp"
#include "eDiscoveredTable.hpp"
#include "eIPMaskedAddress.hpp"

#include <boost/make_shared.hpp>

namespace {

constexpr unsigned int kPingRequest = 16;
constexpr unsigned int kArpRequest = 17;
constexpr unsigned int kRouterSolicitation = 18;
constexpr unsigned int kClearNeighborTable = 19;
constexpr unsigned int kGetNeighborTable = 29;
constexpr unsigned int kNeighborSolicitation = 45;
constexpr unsigned int kPingReply = 18; // of the outgoing messages, which are numbered apart

} // namespace

template <class Message> static void SetTypes(Message& message, unsigned int messageType, unsigned int objectType)
{
    message.SetMessageType(messageType);
    message.SetObjectType(objectType);
}

template <class Message, class... Value>
static void Fill(Message& message, unsigned int messageType, unsigned int objectType, Value const&... values)
{
    EArchive body;
    static_cast<void>((body << ... << values));
    SetTypes(message, messageType, objectType);
    message.SetMessage(body.GetAsEBlob());
}

template <class Message, class... Value> static void ReadBody(Message const& message, Value&... values)
{
    EArchive body;
    body.SetFromEBlob(message.GetMessage(), true);
    body.SetMode(2);
    static_cast<void>((body >> ... >> values));
}

void eHal::CreatePingRequestMessage(EGlobalMessage& message, unsigned int value, EIPAddress const& first,
                                    EIPAddress const& second)
{
    Fill(message, kPingRequest, 0, value, first, second);
}

bool eHal::UnwrapPingRequestMessage(EGlobalMessage const& message, unsigned int& value, EIPAddress& first,
                                    EIPAddress& second)
{
    ReadBody(message, value, first, second);
    return true;
}

void eHal::CreatePingReplyMessage(EOutgoingGlobalMessage& message, EIPAddress const& first, EIPAddress const& second,
                                  unsigned int value)
{
    Fill(message, kPingReply, 1, first, second, value);
}

bool eHal::UnwrapPingReplyMessage(EOutgoingGlobalMessage const& message, EIPAddress& first, EIPAddress& second,
                                  unsigned int& value)
{
    if (message.GetMessageType() != kPingReply) return false;
    ReadBody(message, first, second, value);
    return true;
}

void eHal::CreateArpRequestMessage(EGlobalMessage& message, unsigned int value, EIPAddress const& address)
{
    Fill(message, kArpRequest, 0, value, address);
}

bool eHal::UnwrapArpRequestMessage(EGlobalMessage const& message, unsigned int& value, EIPAddress& address)
{
    if (message.GetMessageType() != kArpRequest || message.GetObjectType() != 0) return false;
    ReadBody(message, value, address);
    return true;
}

void eHal::CreateNeighborSolicitationMessage(EGlobalMessage& message, unsigned int value, EIPAddress const& address)
{
    Fill(message, kNeighborSolicitation, 0, value, address);
}

void eHal::CreateRtrSolicitationMessage(EGlobalMessage& message, unsigned int value)
{
    Fill(message, kRouterSolicitation, 0, value);
}

void eHal::CreateClearNbrTableMessage(EGlobalMessage& message)
{
    SetTypes(message, kClearNeighborTable, 0);
}

void eHal::CreateGetNbrTableMessage(EGlobalMessage& message)
{
    SetTypes(message, kGetNeighborTable, 0);
}

static EIPAddress NetworkOf(EIPAddress const& address, int prefix)
{
    EIPMaskedAddress masked;
    masked.SetMaskPrefixNumber(static_cast<unsigned int>(prefix)); // before the family is known, which limits it
    masked.SetAddress(address.GetBytes(), address.GetFamily());
    return masked.GetNetworkAddress();
}

bool eHal::OnSameNetwork(EIPAddress const& a, EIPAddress const& b, int prefix)
{
    return NetworkOf(a, prefix) == NetworkOf(b, prefix);
}

void eHal::CreateNeighborDiscoveryUpdate(boost::shared_ptr<EBlob>& out, EBlob const& payload)
{
    EOutgoingProtocolMessage update;
    update.SetProtocolName(EDiscoveredTable::StaticGetProtocolName());
    SetTypes(update, 5, 5);
    update.SetMessage(payload);

    EArchive wrapped;
    wrapped.SetMode(1);
    wrapped << update;
    EOutgoingMessage envelope;
    envelope.SetMessage(wrapped);
    envelope.SetMessageType(2);

    EArchive archive;
    archive.SetMode(1);
    archive << envelope;
    if (out)
        *out = archive.GetAsEBlob();
    else
        out = boost::make_shared<EBlob>(archive.GetAsEBlob());
}
