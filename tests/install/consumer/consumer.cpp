#include <ifcore/ifcore.hpp>

#include <ifhost/eArchive.hpp>
#include <ifhost/eBlob.hpp>

#include <iostream>

/// Fills a table, archives it and reads it back, with installed headers and libraries only.
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
    return 0;
}
