#pragma once

#include <ifcore/ifcore.hpp>

#include <memory>

/// A table of port 1 whose interfaces have the ids 1 to \p count, each with a MAC address, a VLAN, an IPv4 address with
/// gateway and one IPv6 address. All addresses are distinct.
std::unique_ptr<EInterfaceTable> SampleTable(unsigned int count);

/// One of them, in no table.
EInterfaceItem SampleInterface(unsigned int id);

/// The addresses of the interface of that id.
EIPAddress SampleIPv4(unsigned int id);
EIPAddress SampleIPv6(unsigned int id);
EMACAddress SampleMac(unsigned int id);
