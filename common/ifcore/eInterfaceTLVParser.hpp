#pragma once

#include "eInterfaceTable.hpp"
#include "ifcoreExport.hpp"
#include "tlvReader.hpp"

/// Reading messages of nested TLVs (tlvBuilder.hpp) into interfaces.
///
/// Ids are matched by the names in TLVReader::external_tlv_table; those that are unknown where they stand are skipped,
/// and so are 1 to 7 bytes at the end of a level. Changes are made by the setters of the records, which announce them.
/// The parse error is the exception `int` -1. It is raised by a TLV that is longer than what remains of its level
/// (after what is there was read), by a number of fewer than 4 bytes, by a tunnel destination of neither 4 nor 16 bytes
/// and by a component id that is no multiple of 4 bytes. What was read before it stays, but VLAN tags, the DHCP switch
/// and the ATM encapsulation are set when their level was read to its end. The same holds for `std::bad_alloc`.
///
/// The reader of a level stays where it is, that of one list operation is left behind its id. Levels are passed over
/// until Protocol::RunTLVParserMapInitializers() has run; from then on, any number of threads may read messages into
/// tables of their own.

/// Raises the parse error.
[[noreturn]] IFCORE_API void TLVParseError();

/// A level of list operations, each on the result of the one before:
/// - Add: an id, then the TLVs of an interface, which is created or, when it is there, emptied first;
/// - Edit: the same without emptying; an unknown id is added too;
/// - Remove: an id, what follows is ignored; an unknown id is no error;
/// - RemoveAll: the value is ignored. Empties the list, not the table: settings and the ids to come stay.
/// Interfaces are added and removed in silence.
IFCORE_API void ParseInterfaceListTLV(TLVReader& message, EInterfaceTable& table);

namespace Protocol {

/// A level of the ids IFD_Name, IFD_Type, IFD_Mac, IFD_VLAN, IFD_DHCP, IFD_Enabled, IFD_IPv4, IFD_IPv6List,
/// IFD_ATMEncapsulation, IFD_Atm_Vpi, IFD_Atm_Vci, IFD_ConnectedViaId and those of a tunnel, which begin with IFD_Gre.
/// What the message leaves out stays as it is.
IFCORE_API void ParseInterfaceTLV(TLVReader& message, EInterfaceItem& interface);

/// \name The value of one list operation: an id, 4 bytes, and the TLVs of the interface
///@{
IFCORE_API void ParseInterfaceListAddTLV(TLVReader& value, EInterfaceItemList& interfaces);
IFCORE_API void ParseInterfaceListEditTLV(TLVReader& value, EInterfaceItemList& interfaces);
///@}

} // namespace Protocol
