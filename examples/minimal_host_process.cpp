// The least that a host process does: it makes a table, installs an observer, hands the table commands, and saves and
// restores it.
#include <ifcore/ifcore.hpp>

#include <ifhost/eArchive.hpp>
#include <ifhost/eBlob.hpp>
#include <ifhost/eSingleCommand.hpp>

#include <boost/make_shared.hpp>

#include <iostream>
#include <vector>

namespace {

enum Action : unsigned int { kAdd = 5, kEdit = 7 };
unsigned int const kInterfaceList = 1;
unsigned int const kIPv4Leaf = 6;

/// Hears every change; overrides what it wants to hear.
class PrintingHooks : public EIgnoreInterfaceTableHooks {
public:
    void AddingInterfaceItem(EInterfaceItem const& item) override
    {
        std::cout << "added interface " << item.GetLocalId() << " \"" << item.GetName() << "\"\n";
    }
    void SettingIPv4Gateway(EIPv4AddressItem const& item, EIPAddress const& gateway) override
    {
        // The record still holds the old value.
        std::cout << "gateway of interface " << item.GetParent()->GetLocalId() << ": "
                  << item.GetGateway().GetAsString() << " -> " << gateway.GetAsString() << "\n";
    }
};

/// The data of a command: an archive that holds one value.
template <class Value> EBlob ArchiveOf(Value const& value)
{
    EArchive archive; // a fresh one writes
    archive << value;
    return archive.GetAsEBlob();
}

/// The new interface's id, 0 when the table did not accept it.
unsigned int AddInterface(EInterfaceTable& table, EInterfaceItem const& item)
{
    EMultiComponentId const list(EComponentId{table.GetPortId(), kInterfaceList});
    EMultiComponentId added;
    if (!table.ExecuteCommand(ESingleCommand(kAdd, list, {}, ArchiveOf(item)), &added)) return 0;
    return added.GetLeaves().front();
}

bool EditGateway(EInterfaceTable& table, unsigned int id, EIPAddress const& gateway)
{
    EMultiComponentId const record(EComponentId{table.GetPortId(), kInterfaceList, id, kIPv4Leaf});
    std::vector<unsigned int> const field = {1}; // the gateway
    return table.ExecuteCommand(ESingleCommand(kEdit, record, field, ArchiveOf(gateway)),
                                static_cast<EMultiComponentId*>(nullptr));
}

} // namespace

int main()
{
    EInterfaceTable table(7); // of port 7
    table.AddInterfaceTableHooks("printer", boost::make_shared<PrintingHooks>());

    EInterfaceItem uplink;
    uplink.SetName("uplink");
    uplink.SetMacAddress(EMACAddress("02:00:5e:10:00:01"));
    uplink.GetIPv4AddressItem().SetAddress(EIPAddress("192.0.2.10"));
    unsigned int const id = AddInterface(table, uplink);
    if (id == 0 || !EditGateway(table, id, EIPAddress("192.0.2.1"))) {
        std::cerr << "a command was refused\n";
        return 1;
    }

    EBlob const saved = ArchiveOf(table);
    std::cout << "saved " << saved.GetSize() << " bytes\n";

    EArchive archive;
    archive.SetFromEBlob(saved, true);
    archive.SetMode(2); // reads, from the start
    EInterfaceTable restored;
    try {
        archive >> restored; // a version that the library does not know would end the process
    } catch (EArchiveError const& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }

    EInterfaceItem const* const item = restored.GetInterfaceItem(id);
    if (restored.GetPortId() != 7 || !item) {
        std::cerr << "the table that was read is not the one that was saved\n";
        return 1;
    }
    std::cout << "restored interface " << id << " \"" << item->GetName() << "\" with gateway "
              << item->GetIPv4AddressItem().GetGateway().GetAsString() << "\n";
    return item->GetIPv4AddressItem().GetGateway() == EIPAddress("192.0.2.1") ? 0 : 1;
}
