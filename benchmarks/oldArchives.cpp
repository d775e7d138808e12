#include "oldArchives.hpp"

#include "sampleTable.hpp"

#include "eArchive.hpp"

/// An interface as version 6 wrote it. The records in it carry versions of their own.
static void WriteVersion6(EArchive& archive, EInterfaceItem const& item)
{
    unsigned int const nothing = 0;
    archive << 6;
    archive << item.GetMTU();
    archive << false;                                                 // no longer read
    for (int dropped = 0; dropped < 6; ++dropped) archive << nothing; // no longer read
    for (int atm = 0; atm < 4; ++atm) archive << nothing;             // encapsulation, mode, VPI, VCI
    archive << item.GetName();
    archive << item.IsEnabled();
    archive << item.GetLocalId();
    archive << item.GetMacAddress();
    archive << item.GetEUID();
    archive << item.GetIPv4AddressItem();
    archive << item.GetIPv6AddressItemList();
    archive << EComponentId(); // no longer read
    archive << nothing;        // PPP handle
    archive << nothing;        // PPP session
    archive << item.OverrideAutogenEuid();
    archive << item.GetName();
    archive << item.GetVLANItem();
}

EBlob Version4ArchiveOfUnconnected(unsigned int count)
{
    EArchive archive;
    archive << 4;
    for (unsigned int setting : {100U, 100U, 10U, 10U}) archive << setting; // DHCP requests and rates
    archive << 0;                                                           // VPI mask mode
    EUniqueIDGenerator generator;
    generator.SkipPast(count);
    archive << generator;
    archive << static_cast<unsigned long>(count);
    for (unsigned int id = 1; id <= count; ++id) {
        EInterfaceItem item = SampleInterface(id);
        item.SetLocalId(id);
        item.GetIPv4AddressItem().SetGateway(SampleIPv4(id % count + 1));
        WriteVersion6(archive, item);
    }
    return archive.GetAsEBlob();
}
