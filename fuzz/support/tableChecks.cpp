#include "tableChecks.hpp"

#include "require.hpp"
#include "tableRules.hpp"

void FillWithTwoInterfaces(EInterfaceTable& table)
{
    EInterfaceItem item;
    item.GetIPv4AddressItem().SetAddress(EIPAddress("192.0.2.1"));
    EIPv6AddressItem ipv6;
    ipv6.SetAddress(EIPAddress("2001:db8::1"));
    item.AddIPv6AddressItem(ipv6);
    item.EnsureEthernet();
    table.AddInterfaceItem(item);
    item.EnsureNPIV();
    item.EnsurePTP();
    item.EnsureDCBX();
    item.EnsureLLDP();
    table.AddInterfaceItem(item);
}

void CheckTable(EInterfaceTable const& table)
{
    char const* const broken = BrokenRule(table);
    Require(!broken, broken);
}
