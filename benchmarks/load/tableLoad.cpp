#include "commands.hpp"
#include "loads.hpp"

#include "sampleTable.hpp"

#include <cstdio>
#include <memory>
#include <random>
#include <string>

#include <malloc.h>

namespace {

/// Everything that has a text, as the library and the host write it.
void Render(EInterfaceItem const& item, std::string& text)
{
    EIPv4AddressItem const& ipv4 = item.GetIPv4AddressItem();
    text += item.GetName();
    text += ' ';
    text += item.GetLayerName();
    text += ' ';
    text += item.GetMacAddress().GetAsString();
    EVLANIPAddressTableItemProperties const& vlans = item.GetVLANItem();
    for (unsigned int level = 0; level < vlans.GetVLANCount(); ++level)
        text += ' ' + std::to_string(vlans.GetVLANID(level));
    text += ' ' + ipv4.GetAddress().GetAsString();
    text += ' ' + ipv4.GetGateway().GetAsString();
    EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
    for (auto position = list.begin(); position != list.end(); ++position)
        text += ' ' + list.GetItem(position)->GetAddress().GetAsString();
    text += ' ' + item.GetIPv6Gateway().GetAsString();
    text += ' ' + item.GetEUID().GetAsString();
    EFCoEConfig const& fcoe = item.GetFCoEConfig();
    text += ' ' + fcoe.GetAddressModeAsString();
    text += ' ' + fcoe.GetVendorIDAsString();
    text += ' ' + fcoe.GetDestNodeIdAsString();
}

/// What the text of an interface must begin with, made without the library.
std::string ExpectedText(unsigned int id, unsigned int gateway)
{
    auto const byte = [](unsigned int number, unsigned int position) { return number >> (8 * position) & 0xff; };
    char text[160];
    std::snprintf(text, sizeof text, "if %u ps-static 02:00:%02x:%02x:%02x:%02x %u 10.%u.%u.%u 10.%u.%u.%u ", id,
                  byte(id, 3), byte(id, 2), byte(id, 1), byte(id, 0), id % 4094 + 1, byte(id, 2), byte(id, 1),
                  byte(id, 0), byte(gateway, 2), byte(gateway, 1), byte(gateway, 0));
    return text;
}

constexpr unsigned int kLooks = 10000; // at rows by chance
constexpr long kProgram = 8192;        // KiB: what the process takes without a table, and more

template <class Look> void LookAtRows(unsigned int interfaces, Look const& look)
{
    std::mt19937 random(7); // any; the same rows each time
    for (unsigned int i = 0; i < kLooks; ++i) look(static_cast<unsigned int>(random() % interfaces) + 1);
}

} // namespace

void LoadOneTable(unsigned int interfaces)
{
    Steps steps("One table of " + std::to_string(interfaces) +
                " interfaces, each with a MAC address, a VLAN, an IPv4 and two IPv6 addresses");
    auto table = std::make_unique<EInterfaceTable>(1);
    steps.Run("fill by add commands", interfaces, [&] {
        for (unsigned int id = 1; id <= interfaces; ++id)
            Require(Add(*table, InterfaceList(), SampleInterface(id)) == id, "ids ascend from 1");
    });
    EBlob bytes;
    steps.Run("write the archive", interfaces, [&] { bytes = Written(*table); });
    std::printf("%-44s %11u bytes\n", "  its size", bytes.GetSize());

    auto read = std::make_unique<EInterfaceTable>();
    steps.Run("read it into a second table", interfaces, [&] { ReadInto(*read, bytes); });
    Require(read->GetCount() == interfaces && read->GetPortId() == 1, "all interfaces are read");
    LookAtRows(interfaces, [&](unsigned int id) {
        EInterfaceItem const* const item = read->GetInterfaceItem(id);
        Require(item && Written(*item) == Written(*table->GetInterfaceItem(id)), "a row is read as it was written");
        EInterfaceItem added = SampleInterface(id);
        added.SetLocalId(id);
        Require(Written(*item) == Written(added), "a row is what was added");
    });
    steps.Run("write that and compare the bytes", interfaces,
              [&] { Require(Written(*read) == bytes, "what was read is written with the same bytes"); });
    bytes = EBlob();
    steps.Run("destroy the second table", interfaces, [&] { read.reset(); });

    steps.Run("edit the gateway of each by commands", interfaces, [&] {
        for (unsigned int id = 1; id <= interfaces; ++id) Edit(*table, IPv4Path(id), {1}, SampleIPv4(id / 2));
    });
    unsigned long characters = 0;
    steps.Run("write the texts of each", interfaces, [&] {
        std::string text;
        for (auto position = table->begin(); position != table->end(); ++position) {
            text.clear();
            Render(*table->GetItem(position), text);
            characters += text.size();
        }
    });
    Require(characters > 100UL * interfaces, "every interface has its texts");
    LookAtRows(interfaces, [&](unsigned int id) {
        std::string text;
        Render(*table->GetInterfaceItem(id), text);
        Require(text.find(ExpectedText(id, id / 2)) == 0, "the texts say what was set");
    });
    long const full = MemoryNow().resident;
    steps.Run("empty the table", interfaces, [&] { table->Empty(); });
    Require(table->GetCount() == 0 && !table->GetInterfaceItem(1), "the table is empty");
    // Until then the allocator keeps it for the next table.
    steps.Run("give free memory back (malloc_trim)", 1, [] { malloc_trim(0); });
    Require(MemoryNow().resident < full / 10 + kProgram, "an empty table holds no memory");
}
