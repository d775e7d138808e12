#pragma once

#include <string>

// Messages of TLVs: a bad one is read or ends in the parse error, and leaves a table that holds together and can be
// written, copied and emptied. Each golden file holds one level.

void CheckListLevel(std::string const& good);      ///< List operations of a table
void CheckInterfaceLevel(std::string const& good); ///< The ids of an interface
enum class Inside { VLAN, DHCP, IPv4, IPv6List, ATMEncapsulation };
template <Inside level> void CheckInnerLevel(std::string const& good); ///< The ids inside one id of an interface

/// A change stream: what was applied before the bad operation stays, and what the observer was told of is what was
/// changed, so that an EDiscoveredChangeWriter keeps a second table equal.
void CheckChangeStream(std::string const& good);
