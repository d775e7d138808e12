#include "denseDispatch.hpp"

#include "tlvBuilder.hpp"
#include "tlvIds.hpp"

#include <cstring>
#include <endian.h>
#include <initializer_list>
#include <string>
#include <vector>

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;
using TLVIds::TLVId;

namespace {

struct Bytes {
    unsigned char const* data;
    unsigned int size;
};

unsigned int NumberAt(unsigned char const* bytes)
{
    unsigned int number;
    std::memcpy(&number, bytes, sizeof number);
    return be32toh(number);
}

unsigned int Number(Bytes const& value)
{
    if (value.size < 4) TLVParseError();
    return NumberAt(value.data);
}

template <class Target> class Level {
public:
    using Handler = void (*)(Bytes const& value, Target& target);
    struct Entry {
        TLVId const& id;
        Handler handler;
    };

    Level(std::initializer_list<Entry> entries)
        : m_handlers(Protocol::TLVBuilder::known_tlv_table().size(), [](Bytes const&, Target&) {})
    {
        for (Entry const& entry : entries) m_handlers[entry.id.GetIndex()] = entry.handler;
    }
    void Apply(Bytes level, Target& target) const
    {
        while (level.size >= 8) {
            unsigned int const id = NumberAt(level.data);
            unsigned int const length = NumberAt(level.data + 4);
            level = {level.data + 8, level.size - 8};
            if (length > level.size) TLVParseError();
            if (id < m_handlers.size()) m_handlers[id]({level.data, length}, target);
            level = {level.data + length, level.size - length};
        }
    }

private:
    std::vector<Handler> m_handlers;
};

EIPAddress Address(Bytes const& value, unsigned int family)
{
    EIPAddress address;
    address.SetAddress(value.data, value.size, family);
    return address;
}

void ApplyVlans(Bytes const& value, EInterfaceItem& interface)
{
    using Vlans = EVLANIPAddressTableItemProperties;
    static Level<Vlans> const level = {
        {VLAN_Enabled, [](Bytes const& v, Vlans& vlans) { vlans.SetEnabled(Number(v) != 0); }},
        {VLAN_TAG,
         [](Bytes const& v, Vlans& vlans) {
             unsigned int const top = vlans.GetVLANCount();
             vlans.SetVLANCount(top + 1);
             vlans.SetVlanTag(Number(v), top);
         }},
    };
    Vlans vlans(0, false);
    level.Apply(value, vlans);
    interface.SetVLANItem(vlans);
}

void ApplyDhcp(Bytes const& value, EInterfaceItem& interface)
{
    static Level<bool> const level = {
        {DHCP_Enabled, [](Bytes const& v, bool& enabled) { enabled = Number(v) != 0; }},
    };
    bool enabled = false;
    level.Apply(value, enabled);
    interface.SetDHCPEnabled(enabled);
}

void ApplyIPv4(Bytes const& value, EInterfaceItem& interface)
{
    using Item = EIPv4AddressItem;
    static Level<Item> const level = {
        {IP4_Enabled, [](Bytes const& v, Item& item) { item.SetEnabled(Number(v) != 0); }},
        {IP4_IPAddress, [](Bytes const& v, Item& item) { item.SetAddress(Address(v, EIPAddress::kIPv4)); }},
        {IP4_Gateway, [](Bytes const& v, Item& item) { item.SetGateway(Address(v, EIPAddress::kIPv4)); }},
        {IP4_MaskLength, [](Bytes const& v, Item& item) { item.SetMaskLength(Number(v)); }},
    };
    level.Apply(value, interface.GetIPv4AddressItem());
}

void AddIPv6(Bytes const& value, EIPv6AddressItemList& list)
{
    using Item = EIPv6AddressItem;
    static Level<Item> const level = {
        {IP6_IPAddress, [](Bytes const& v, Item& item) { item.SetAddress(Address(v, EIPAddress::kIPv6)); }},
        {IP6_MaskLength, [](Bytes const& v, Item& item) { item.SetMaskLength(Number(v)); }},
    };
    unsigned int const id = Number(value);
    list.AddItem(id);
    level.Apply({value.data + 4, value.size - 4}, *list.GetItem(list.find(id)));
}

void ApplyIPv6List(Bytes const& value, EInterfaceItem& interface)
{
    using List = EIPv6AddressItemList;
    static Level<List> const level = {
        {ListOp::Add, AddIPv6},
        {ListOp::RemoveAll, [](Bytes const&, List& list) { list.Empty(); }},
    };
    level.Apply(value, interface.GetIPv6AddressItemList());
}

void EditInterface(Bytes const& value, EInterfaceItemList& interfaces)
{
    using Item = EInterfaceItem;
    static Level<Item> const level = {
        {IFD_Name,
         [](Bytes const& v, Item& item) { item.SetName(std::string(reinterpret_cast<char const*>(v.data), v.size)); }},
        {IFD_Type, [](Bytes const& v, Item& item) { item.SetType(static_cast<EInterfaceTypeEnum>(Number(v))); }},
        {IFD_Mac,
         [](Bytes const& v, Item& item) {
             EMACAddress mac;
             mac.SetMACAddress(EBlob(v.data, v.size));
             item.SetMacAddress(mac);
         }},
        {IFD_Enabled, [](Bytes const& v, Item& item) { item.SetEnabled(Number(v) != 0); }},
        {IFD_VLAN, ApplyVlans},
        {IFD_DHCP, ApplyDhcp},
        {IFD_IPv4, ApplyIPv4},
        {IFD_IPv6List, ApplyIPv6List},
    };
    unsigned int const id = Number(value);
    auto found = interfaces.find(id);
    if (found == interfaces.end()) {
        interfaces.AddItem(id);
        found = interfaces.find(id);
    }
    level.Apply({value.data + 4, value.size - 4}, *interfaces.GetItem(found));
}

} // namespace

void ApplyByDenseDispatch(TLVReader& message, EInterfaceTable& table)
{
    static Level<EInterfaceItemList> const level = {{ListOp::Edit, EditInterface}};
    level.Apply({message.position, static_cast<unsigned int>(message.remaining)}, table.GetInterfaceItemList());
}
