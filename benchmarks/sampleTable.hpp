#pragma once

#include "eBlob.hpp"

#include <ifcore/ifcore.hpp>

#include <memory>

/// An interface as the benchmarks have it: name, Ethernet data with one VLAN level, IPv4 address, two IPv6 addresses,
/// DHCP, DHCPv6 and FCoE records and switches, nearly all fields other than their defaults; no PTP, LLDP, DCBX and NPIV
/// records. Names, addresses and world wide names follow from the id and are distinct.
EInterfaceItem SampleInterface(unsigned int id);

/// A table of port 1 whose interfaces are SampleInterface(1) to SampleInterface(\p count).
std::unique_ptr<EInterfaceTable> SampleTable(unsigned int count);

/// The MAC, the IPv4 address and the first IPv6 address of the interface of that id.
EMACAddress SampleMac(unsigned int id);
EIPAddress SampleIPv4(unsigned int id);
EIPAddress SampleIPv6(unsigned int id);

/// The archive of a table.
EBlob Written(EInterfaceTable const& table);

/// The table that an archive makes.
std::unique_ptr<EInterfaceTable> Loaded(EBlob const& bytes);
