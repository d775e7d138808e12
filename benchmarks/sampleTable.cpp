#include "sampleTable.hpp"

#include "eArchive.hpp"

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

/// 2001:db8:\<subnet\>::\<id\>
static EIPAddress DocumentationIPv6(unsigned char subnet, unsigned int id)
{
    std::array<unsigned char, 16> bytes = {0x20, 0x01, 0x0D, 0xB8, 0, subnet};
    PutId(bytes, id);
    EIPAddress address;
    address.SetAddress(bytes.data(), kIPv6Family);
    return address;
}

EIPAddress SampleIPv6(unsigned int id)
{
    return DocumentationIPv6(0, id);
}

EMACAddress SampleMac(unsigned int id)
{
    std::array<unsigned char, 6> bytes = {0x02}; // locally administered
    PutId(bytes, id);
    EMACAddress mac;
    mac.SetMACAddress(EBlob(bytes.data(), bytes.size()));
    return mac;
}

static EIPv6AddressItem IPv6Item(EIPAddress const& address, unsigned int maskLength)
{
    EIPv6AddressItem item;
    item.SetAddress(address);
    item.SetMaskLength(maskLength);
    return item;
}

static void FillDhcp(EInterfaceItem& item, unsigned int id)
{
    EDHCPProperties& dhcp = item.GetDHCPProperties();
    dhcp.SetDHCPClientId("client " + std::to_string(id));
    dhcp.SetDHCPServerId(SampleIPv4(0));
    dhcp.SetDHCPVendorId("ifcore");
    dhcp.SetReleaseTimer(3600);
    dhcp.SetDHCPRelayAgentIP(SampleIPv4(id));
    dhcp.SetRetryCount(6);
    item.SetDHCPEnabled(true);

    EDHCPv6Properties& dhcpv6 = item.GetDHCPv6Properties();
    dhcpv6.SetIAId(id);
    dhcpv6.SetRenewTime(1800);
    dhcpv6.SetDHCPv6RelayLinkAddress(SampleIPv6(id));
    item.SetDHCPv6Enabled(true);
}

static void FillFCoE(EInterfaceItem& item, unsigned int id)
{
    unsigned long const wwn = 0x2000000000000000UL + id;
    EFCoEConfig& fcoe = item.GetFCoEConfig();
    fcoe.SetSrcPortWWN(EUID(wwn));
    fcoe.SetSrcNodeWWN(EUID(wwn + 0x1000000000000000UL));
    fcoe.SetSCREnabled(true);
    fcoe.SetNsRegistrationEnabled(true);
    fcoe.SetPLOGIEnabled(true);
    fcoe.SetVlanDiscoveryEnabled(true);
    fcoe.SetVendorID(EUID(0x0002C9));
    ENSRegOption names;
    names.SetRspnIdName("port " + std::to_string(id));
    names.SetRsnnNnName("node " + std::to_string(id));
    fcoe.SetNSRegOption(names);
    item.SetFCoEEnabled(true);
}

EInterfaceItem SampleInterface(unsigned int id)
{
    EVLANIPAddressTableItemProperties vlans(1, true);
    vlans.SetVLANID(static_cast<unsigned short>(id % 4094 + 1), 0);

    EInterfaceItem item;
    item.SetName("if " + std::to_string(id));
    item.SetEnabled(true);
    item.SetEUID(EUID(0x020000FFFE000000UL + id));
    item.SetMacAddress(SampleMac(id));
    item.SetVLANItem(vlans);
    item.SetMTU(9000);
    item.SetVcatCircuitId(id % 64);
    item.SetIPv6Gateway(SampleIPv6(0));
    EIPv4AddressItem& ipv4 = item.GetIPv4AddressItem();
    ipv4.SetAddress(SampleIPv4(id));
    ipv4.SetGateway(SampleIPv4(0));
    ipv4.SetMaskLength(16);
    ipv4.SetMSS(1460);
    ipv4.SetEnabled(true);
    item.AddIPv6AddressItem(IPv6Item(SampleIPv6(id), 64));
    item.AddIPv6AddressItem(IPv6Item(DocumentationIPv6(1, id), 96));
    FillDhcp(item, id);
    FillFCoE(item, id);
    return item;
}

std::unique_ptr<EInterfaceTable> SampleTable(unsigned int count)
{
    auto table = std::make_unique<EInterfaceTable>(1);
    for (unsigned int id = 1; id <= count; ++id) table->AddInterfaceItem(SampleInterface(id));
    return table;
}

EBlob Written(EInterfaceTable const& table)
{
    EArchive archive;
    archive << table;
    return archive.GetAsEBlob();
}

std::unique_ptr<EInterfaceTable> Loaded(EBlob const& bytes)
{
    auto table = std::make_unique<EInterfaceTable>();
    EArchive archive;
    archive.SetFromEBlob(bytes, true);
    archive.SetMode(2);
    archive >> *table;
    return table;
}
