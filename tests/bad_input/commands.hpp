#pragma once

#include <string>

// Host commands that carry a whole record: one that ends in an error or by the fatal message leaves the table as it
// was, byte for byte, and has told its observer nothing. The archive is that of the record of a golden file.

void CheckTableSet(std::string const& good);
void CheckInterfaceAdd(std::string const& good);
void CheckInterfaceSet(std::string const& good);
void CheckIPv6Add(std::string const& good);
void CheckIPv6Set(std::string const& good);
/// A record of every interface: 6 IPv4, 24 DHCP, 26 DHCPv6, 31 FCoE, 32 NPIV.
template <unsigned int leaf> void CheckLeafSet(std::string const& good);
