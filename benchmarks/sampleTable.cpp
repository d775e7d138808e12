#include "sampleTable.hpp"

#include "eBlob.hpp"

#include <array>
#include <string>

static unsigned int const kIPv4Family = 17;
static unsigned int const kIPv6Family = 18;

/// The id as the last four of \p size bytes, most significant first.
template <std::size_t size> static void PutId(std::array<unsigned char, size>& bytes, unsigned int id)
{
    for (std::size_t i = 1; i <= 4; ++i, id >>= 8) bytes[size - i] = static_cast<unsigned char>(id);
}

EIPAddress SampleIPv4(unsigned int id)
{
    std::array<unsigned char, 4> bytes = {};
    PutId(bytes, 0x0A000000 + id); // 10.0.0.0/8
    EIPAddress address;
    address.SetAddress(bytes.data(), kIPv4Family);
    return address;
}

EIPAddress SampleIPv6(unsigned int id)
{
    std::array<unsigned char, 16> bytes = {0x20, 0x01, 0x0D, 0xB8}; // 2001:db8::/32
    PutId(bytes, id);
    EIPAddress address;
    address.SetAddress(bytes.data(), kIPv6Family);
    return address;
}

EMACAddress SampleMac(unsigned int id)
{
    std::array<unsigned char, 6> bytes = {0x02}; // locally administered
    PutId(bytes, id);
    EMACAddress mac;
    mac.SetMACAddress(EBlob(bytes.data(), bytes.size()));
    return mac;
}

EInterfaceItem SampleInterface(unsigned int id)
{
    EVLANIPAddressTableItemProperties vlans(1, true);
    vlans.SetVLANID(static_cast<unsigned short>(id % 4094 + 1), 0);
    EIPv6AddressItem ipv6;
    ipv6.SetAddress(SampleIPv6(id));
    ipv6.SetMaskLength(64);

    EInterfaceItem item;
    item.SetName("interface " + std::to_string(id));
    item.SetEnabled(true);
    item.SetMacAddress(SampleMac(id));
    item.SetVLANItem(vlans);
    item.GetIPv4AddressItem().SetAddress(SampleIPv4(id));
    item.GetIPv4AddressItem().SetGateway(SampleIPv4(0));
    item.GetIPv4AddressItem().SetEnabled(true);
    item.AddIPv6AddressItem(ipv6);
    return item;
}

std::unique_ptr<EInterfaceTable> SampleTable(unsigned int count)
{
    auto table = std::make_unique<EInterfaceTable>(1);
    for (unsigned int id = 1; id <= count; ++id) table->AddInterfaceItem(SampleInterface(id));
    return table;
}
