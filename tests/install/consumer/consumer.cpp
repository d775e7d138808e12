#include <ifcore/ifcore.hpp>

#include <ifhost/eArchive.hpp>
#include <ifhost/eBlob.hpp>
#include <ifhost/tlvParserMapTable.hpp>

#include <iostream>

/// Fills a table, archives it and reads it back, and copies its interface by a message, with installed headers and
/// libraries only.
int main()
{
    EInterfaceTable table(7);
    EInterfaceItem item;
    item.SetName("uplink");
    unsigned int const id = table.AddInterfaceItem(item);

    EArchive written;
    written << table;
    EArchive read;
    read.SetFromEBlob(written.GetAsEBlob(), true);
    read.SetMode(2);
    EInterfaceTable restored;
    read >> restored;

    EInterfaceItem const* found = restored.GetInterfaceItem(id);
    if (restored.GetPortId() != 7 || !found || found->GetName() != "uplink" || !read.AtEnd()) {
        std::cerr << "the table that was read is not the one that was written\n";
        return 1;
    }

    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, *found);
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    EInterfaceTable told(7);
    ParseInterfaceListTLV(reader, told);
    EInterfaceItem const* copy = told.GetInterfaceItem(0); // messages are built with the id 0
    if (told.size() != 1 || !copy || copy->GetName() != "uplink") {
        std::cerr << "the interface that was read from a message is not the one that was built into it\n";
        return 1;
    }
    return 0;
}
