// Each thread may do everything with tables of its own, first uses of what the library keeps for the process included.
#include <ifcore/ifcore.hpp>

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultiComponentId.hpp"
#include "eSingleCommand.hpp"
#include "golden.hpp"
#include "tlvParserMapTable.hpp"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

static std::string ImageAfterALife(unsigned int port)
{
    EInterfaceTable table(port);
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
    table.AddInterfaceTableHooks("second", boost::make_shared<EIgnoreInterfaceTableHooks>());
    EArchive newInterface;
    newInterface << EInterfaceItem();
    for (unsigned int id = 1; id <= 20; ++id) {
        EComponentId list;
        EXPECT_TRUE(table.ExecuteCommand(
            ESingleCommand(5, EMultiComponentId(EComponentId{port, 1}), {}, newInterface.GetAsEBlob()), &list));
        EIPAddress const address("10.0.0." + std::to_string(id));
        EArchive data;
        data << address;
        EXPECT_TRUE(table.ExecuteCommand(
            ESingleCommand(7, EMultiComponentId(EComponentId{port, 1, id, 6}), {3}, data.GetAsEBlob()), &list));
        EXPECT_EQ(table.GetInterfaceItem(id), table.FindInterfaceByIP(address));
        table.GetInterfaceItem(id)->SetMTU(9000);
        table.GetInterfaceItem(id)->SetPTPEnabled(true);
        table.GetInterfaceItem(id)->SetLLDPEnabled(true);
        table.GetInterfaceItem(id)->SetNPIVConfig(ENPIVConfig());
    }
    std::string const image = Written(table);
    EDCBXFeatureTlv const feature(2, 0, 2); // draws an instance key
    table.GetInterfaceItem(1)->GetDCBXConfig().AddFeatureTlv(feature);
    EInterfaceTable copy(table);
    copy = EInterfaceTable();
    EXPECT_EQ("InterfaceTable", copy.GetTableName().GetName());
    EXPECT_EQ(1500u, EInterfaceItem().GetMTU());
    ReadInto(copy, image);
    EXPECT_EQ(image, Written(copy));
    return image;
}

/// Messages of one table read into another, changes of one discovered table into a second.
static std::string ImageAfterMessages()
{
    EInterfaceItem interface;
    interface.SetName("eth0");
    interface.SetMTU(9000);
    interface.SetPTPEnabled(true);
    std::vector<char> message;
    for (int i = 0; i < 20; ++i) Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    EInterfaceTable table(7);
    ParseInterfaceListTLV(reader, table);
    EXPECT_EQ(1U, table.size());

    EDiscoveredTable first;
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    first.hooks = writer;
    EDiscoveredInfo info;
    info.SetLocalId(1);
    first.AddInfo(info);
    for (int i = 1; i <= 20; ++i) {
        EDiscoveredNeighbor neighbor;
        neighbor.AddAddress(EIPAddress("10.0.0." + std::to_string(i)));
        first.GetInfo(1)->AddNeighbor(neighbor);
    }
    first.GetInfo(1)->SetDCBXInfo(EDCBXDiscoveredInfo());
    EArchive changes;
    changes.SetFromEBlob(writer->TakeMessage(), true);
    changes.SetMode(2);
    EDiscoveredTable second;
    ApplyDiscoveredTableMessage(second, changes);
    EXPECT_EQ(Written(first), Written(second));
    return Written(table) + Written(second);
}

TEST(OwnTables, EightThreadsDoEverythingAtOnce)
{
    Protocol::RunTLVParserMapInitializers(); // once, before any thread reads a message
    Protocol::UseOwnTLVIds();
    std::atomic<bool> start(false);
    std::vector<std::string> images(8);
    std::vector<std::thread> threads;
    for (std::string& image : images)
        threads.emplace_back([&start, &image] {
            while (!start) std::this_thread::yield(); // so that first uses meet
            image = ImageAfterALife(7) + ImageAfterMessages();
        });
    start = true;
    for (std::thread& thread : threads) thread.join();
    for (std::string const& image : images) EXPECT_EQ(images[0], image);
    EXPECT_EQ(ImageAfterALife(7) + ImageAfterMessages(), images[0]);
}
