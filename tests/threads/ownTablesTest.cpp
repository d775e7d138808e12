// Each thread may do everything with tables of its own, first uses of what the library keeps for the process included.
#include "eIPLookupInterfaceTableHooks.hpp"
#include "eInterfaceTable.hpp"
#include "eMultiComponentId.hpp"
#include "eSingleCommand.hpp"
#include "golden.hpp"

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

TEST(OwnTables, EightThreadsDoEverythingAtOnce)
{
    std::atomic<bool> start(false);
    std::vector<std::string> images(8);
    std::vector<std::thread> threads;
    for (std::string& image : images)
        threads.emplace_back([&start, &image] {
            while (!start) std::this_thread::yield(); // so that first uses meet
            image = ImageAfterALife(7);
        });
    start = true;
    for (std::thread& thread : threads) thread.join();
    for (std::string const& image : images) EXPECT_EQ(images[0], image);
    EXPECT_EQ(ImageAfterALife(7), images[0]);
}
