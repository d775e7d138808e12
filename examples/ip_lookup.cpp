// Finds interfaces by their addresses. Without an observer of the name "IP_LOOKUP_HOOKS" a table looks at one interface
// after the other; with one it takes the observer's answer, which has an index of its own.
#include <ifcore/ifcore.hpp>

#include <ifhost/eIPLookupInterfaceTableHooks.hpp>
#include <ifhost/eVLAN.hpp>

#include <boost/make_shared.hpp>

#include <iostream>
#include <string>

namespace {

unsigned int Add(EInterfaceTable& table, std::string const& name, std::string const& address, unsigned short vlan)
{
    EVLANIPAddressTableItemProperties vlans(1, true);
    vlans.SetVLANID(vlan, 0);
    EInterfaceItem item;
    item.SetName(name);
    item.SetVLANItem(vlans);
    item.GetIPv4AddressItem().SetAddress(EIPAddress(address));
    return table.AddInterfaceItem(item);
}

unsigned int Print(char const* question, EInterfaceItem const* found)
{
    std::cout << question << ": ";
    if (!found) {
        std::cout << "none\n";
        return 0;
    }
    std::cout << "interface " << found->GetLocalId() << " \"" << found->GetName() << "\"\n";
    return found->GetLocalId();
}

} // namespace

int main()
{
    EInterfaceTable table(1);
    Add(table, "before", "198.51.100.1", 10);

    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup);
    lookup->Rebuild(table); // what the table held before; later changes are told

    // The same address in two VLANs.
    unsigned int const red = Add(table, "red", "192.0.2.1", 100);
    unsigned int const blue = Add(table, "blue", "192.0.2.1", 200);

    EIPAddress const shared("192.0.2.1");
    EVLAN vlan;
    vlan.SetVLANID(200);
    bool good = Print("192.0.2.1", table.FindInterfaceByIP(shared)) == red;
    good &= Print("192.0.2.1 in VLAN 200", table.FindInterfaceByIPAndVlan(shared, &vlan)) == blue;

    table.GetInterfaceItem(red)->GetIPv4AddressItem().SetAddress(EIPAddress("203.0.113.9"));
    good &= Print("192.0.2.1 after red has moved", table.FindInterfaceByIP(shared)) == blue;
    table.RemoveInterfaceItem(blue);
    good &= Print("192.0.2.1 after blue was removed", table.FindInterfaceByIP(shared)) == 0;
    return good ? 0 : 1;
}
