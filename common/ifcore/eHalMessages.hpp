#pragma once

#include "eBlob.hpp"
#include "eGlobalMessage.hpp"
#include "eHalOutgoing.hpp"
#include "eIPAddress.hpp"
#include "ifcoreExport.hpp"

#include <boost/shared_ptr.hpp>

/// Messages to and from the hardware-abstraction layer of a port. Creating one sets its types and its body; messages
/// without a body leave an old one alone. What the number and the addresses mean is the layer's: they travel as they
/// are. Unwrapping one answers false, with nothing stored, for a message of another type; a body that ends too early is
/// an error of the host's archive.
namespace eHal {

IFCORE_API void CreatePingRequestMessage(EGlobalMessage& message, unsigned int value, EIPAddress const& first,
                                         EIPAddress const& second);
/// On purpose asks for no type: any message is read as one.
IFCORE_API bool UnwrapPingRequestMessage(EGlobalMessage const& message, unsigned int& value, EIPAddress& first,
                                         EIPAddress& second);
/// On purpose the number is the last in the body, unlike in the request.
IFCORE_API void CreatePingReplyMessage(EOutgoingGlobalMessage& message, EIPAddress const& first,
                                       EIPAddress const& second, unsigned int value);
IFCORE_API bool UnwrapPingReplyMessage(EOutgoingGlobalMessage const& message, EIPAddress& first, EIPAddress& second,
                                       unsigned int& value); ///< Whatever the object type.
IFCORE_API void CreateArpRequestMessage(EGlobalMessage& message, unsigned int value, EIPAddress const& address);
IFCORE_API bool UnwrapArpRequestMessage(EGlobalMessage const& message, unsigned int& value, EIPAddress& address);
IFCORE_API void CreateNeighborSolicitationMessage(EGlobalMessage& message, unsigned int value,
                                                  EIPAddress const& address);
IFCORE_API void CreateRtrSolicitationMessage(EGlobalMessage& message, unsigned int value);
IFCORE_API void CreateClearNbrTableMessage(EGlobalMessage& message); ///< No body.
IFCORE_API void CreateGetNbrTableMessage(EGlobalMessage& message);   ///< No body.

/// Whether both are in the same network of that prefix length, in bits. Addresses of different families never are.
IFCORE_API bool OnSameNetwork(EIPAddress const& a, EIPAddress const& b, int prefix);

/// Wraps a change stream of a discovered table (ApplyDiscoveredTableMessage). A blob that \p out already holds is
/// filled anew, for all who share it; without one it gets one.
IFCORE_API void CreateNeighborDiscoveryUpdate(boost::shared_ptr<EBlob>& out, EBlob const& payload);

} // namespace eHal
