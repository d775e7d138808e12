#pragma once

#include "eInterfaceItem.hpp"
#include "ifcoreExport.hpp"
#include "tlvBuilder.hpp"

#include <list>
#include <vector>

class EBlob;
class EMACAddress;

/// Messages of nested TLVs (tlvBuilder.hpp) made of interfaces and their records.
///
/// Each function appends one TLV to \p out; all but AppendAddIPv6ItemTLV give it the id they are told. Numbers have 4
/// bytes: switches are 0 or 1, narrower fields are widened without sign unless said otherwise, wider ones lose their
/// high bits. A message has less than 2 GiB.
///
/// Every TLV with a value made of TLVs is closed by TLVBuilder::Done(), which clears the first 4 bytes of that value:
/// the id of its first nested TLV is 0, and so are the ids of interfaces and addresses with which their operations
/// begin. Plain values stay whole.
///
/// When memory fails, `std::bad_alloc` leaves a message whose TLVs are closed, but may end early. The same is thrown
/// when \p out holds nearly 4 GiB already.
namespace Protocol {

/// \name Plain values
///@{
/// The 8 bytes as they lie in memory: here the least significant first. Empty when the host's GetId() is null.
IFCORE_API void AppendUIDTLV(EBytes& out, TLVIds::TLVId const& id, EUID const& value);
IFCORE_API void AppendMACTLV(EBytes& out, TLVIds::TLVId const& id, EMACAddress const& value);
IFCORE_API void AppendBlobTLV(EBytes& out, TLVIds::TLVId const& id, EBlob const& value);
///@}

/// \name Interfaces
///@{
/// The value begins with the id of the interface, as \p id is an operation of TLVIds::ListOp.
IFCORE_API void AppendInterfaceOpTLV(EBytes& out, TLVIds::TLVId const& id, EInterfaceItem const& interface,
                                     unsigned int interfaceId);
/// The same with the interface's local id.
IFCORE_API void AppendInterfaceOpTLV(EBytes& out, TLVIds::TLVId const& id, EInterfaceItem const& interface);
IFCORE_API void AppendVLANTLV(EBytes& out, TLVIds::TLVId const& id, EVLANIPAddressTableItemProperties const& vlans);
IFCORE_API void AppendIPv4ItemTLV(EBytes& out, TLVIds::TLVId const& id, EIPv4AddressItem const& item);
IFCORE_API void AppendAddIPv6ItemTLV(EBytes& out, EIPv6AddressItem const& item); ///< Its id is TLVIds::ListOp::Add.
/// Meant as a whole replacement: it begins with TLVIds::ListOp::RemoveAll, whose id is cleared as every first one is.
IFCORE_API void AppendIPv6ItemListTLV(EBytes& out, TLVIds::TLVId const& id, EIPv6AddressItemList const& items);
/// \p mode: 0 to 15 as eAtmEncapsulationMode; any other is sent as 0.
IFCORE_API void AppendATMEncapsulationTLV(EBytes& out, TLVIds::TLVId const& id, int mode);
///@}

/// \name Protocol records
///@{
IFCORE_API void AppendDHCPTLV(EBytes& out, TLVIds::TLVId const& id, EDHCPProperties const& properties);
IFCORE_API void AppendDHCPv6TLV(EBytes& out, TLVIds::TLVId const& id, EDHCPv6Properties const& properties);
IFCORE_API void AppendDHCPTLVListTLV(EBytes& out, TLVIds::TLVId const& id, std::list<EDHCPTLV> const& options);
IFCORE_API void AppendFCoETLV(EBytes& out, TLVIds::TLVId const& id, EFCoEConfig const& config);
IFCORE_API void AppendNPIVTLV(EBytes& out, TLVIds::TLVId const& id, ENPIVConfig const& config);
IFCORE_API void AppendPLOGIDestinationsTLV(EBytes& out, TLVIds::TLVId const& id,
                                           std::vector<EPLOGIDestination> const& destinations);
IFCORE_API void AppendFCNSQueryTLV(EBytes& out, TLVIds::TLVId const& id, EFCNSQuery const& query);
IFCORE_API void AppendNPIVNSQueryTLV(EBytes& out, TLVIds::TLVId const& id, EFCNSQuery const& query);
/// The three log-2 intervals keep their sign. Of the 64-bit offsets the low 32 bits are sent.
IFCORE_API void AppendPTPTLV(EBytes& out, TLVIds::TLVId const& id, EPTPConfig const& config);
IFCORE_API void AppendLLDPTLV(EBytes& out, TLVIds::TLVId const& id, ELLDPConfig const& config);
IFCORE_API void AppendDCBXTLV(EBytes& out, TLVIds::TLVId const& id, EDCBXConfig const& config); ///< The features alone.
IFCORE_API void AppendDCBXFeatureTlvListTLV(EBytes& out, TLVIds::TLVId const& id,
                                            std::vector<EDCBXFeatureTlv> const& features);
///@}

} // namespace Protocol
