// As long as nobody changes a table, any number of threads may read it: no `const` operation writes in secret.
#include <ifcore/ifcore.hpp>

#include "atOnce.hpp"
#include "interfaceSamples.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultiComponentId.hpp"
#include "eSingleCommand.hpp"
#include "tlvParserMapTable.hpp"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <utility>
#include <vector>

static void ExpectUndisturbed(std::string (*read)())
{
    std::vector<std::string> const answers = AtOnce(read);
    std::string const alone = read();
    EXPECT_FALSE(alone.empty());
    for (std::string const& answer : answers) EXPECT_TRUE(alone == answer) << "a thread was disturbed";
}

/// Forty interfaces that hold every record, under an observer that finds addresses and a second one.
static EInterfaceTable const& SharedTable()
{
    static EInterfaceTable table(7);
    if (table.size() == 0) {
        table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
        table.AddInterfaceTableHooks("recorder", boost::make_shared<Recorder>());
        EInterfaceItem item;
        FillSample(item);
        for (unsigned int id = 1; id <= 40; ++id) {
            item.GetIPv4AddressItem().SetAddress(EIPAddress("10.0.0." + std::to_string(id)));
            table.AddInterfaceItem(item);
        }
    }
    return table;
}

static std::string ReadAll()
{
    EInterfaceTable const& table = SharedTable();
    std::string text = Written(table);
    for (auto position = table.begin(); position != table.end(); ++position) {
        EInterfaceItem const& item = *table.GetItem(position);
        text +=
            Summary(item) + item.GetLayerName() + Written(item) + item.GetPTPConfigReadOnly()->GetStartOffsetAsString();
        for (EDCBXFeatureTlv const& feature : item.GetDCBXConfigReadOnly()->GetFeatureTlvs())
            text += item.GetDCBXConfigReadOnly()->GetFeatureTlvAsString(feature);
        EComponentId id;
        item.GetID(id);
        id += 6; // its IPv4 record
        text += TextOf(id) + TextOf(table.GetIPv4AddressItem(id)->GetAddress());
        EXPECT_EQ(&item, table.FindInterfaceByIP(item.GetIPv4AddressItem().GetAddress()));
        EXPECT_EQ(&item.GetHooks(), &table.GetHooks());
    }
    EVLAN vlan;
    vlan.SetVLANID(10);
    text += TextOf(table.FindInterfaceByIPAndVlan(EIPAddress("10.0.0.1"), &vlan) != nullptr);
    text += TextOf(table.FindConnectedInterfaceByIP(EIPAddress("10.0.0.1")) != nullptr);
    std::list<EIPAddress> addresses;
    table.GetAllIPs(addresses);
    text += TextOf(addresses) + table.GetHooksName() + TextOf(table.GetHooksPtr().get() != nullptr) +
            TextOf(table.FindInterfaceTableHooks("recorder").get() != nullptr);
    return text;
}

TEST(SharedTable, IsReadAndWrittenIntoArchivesByEightThreads)
{
    SharedTable();
    ExpectUndisturbed(ReadAll);
}

static std::string CopyAndChange()
{
    EInterfaceTable const& shared = SharedTable();
    EInterfaceTable table(shared); // without an observer
    table.RemoveInterfaceItem(3);
    table.GetInterfaceItem(4)->SetMTU(1400);
    EInterfaceItem item(*shared.GetInterfaceItem(5)); // without a parent
    item.SetName("copy");
    item.GetIPv4AddressItem().SetGateway(EIPAddress("10.0.0.254"));
    table.AddInterfaceItem(item);
    return Written(table);
}

TEST(SharedTable, IsCopiedByEightThreadsWhichChangeTheirCopies)
{
    SharedTable();
    ExpectUndisturbed(CopyAndChange);
    EXPECT_EQ(40U, SharedTable().size());
}

static std::string BuildMessages()
{
    Protocol::EBytes message;
    EInterfaceTable const& table = SharedTable();
    for (auto position = table.begin(); position != table.end(); ++position)
        Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, *table.GetItem(position), position->first);
    return std::string(message.begin(), message.end());
}

TEST(SharedTable, IsSentInMessagesByEightThreads)
{
    SharedTable();
    ExpectUndisturbed(BuildMessages);
}

/// What several receivers take from one place: bytes, a command.
TEST(SharedInput, OneMessageArchiveAndCommandReachTheTablesOfEightThreads)
{
    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    std::string const message = BuildMessages();
    std::string const archive = Written(SharedTable());
    EArchive address;
    address << EIPAddress("192.0.2.1");
    EMultiComponentId const ipv4(EComponentId{7, 1, 5, 6});
    ESingleCommand const edit(7, ipv4, {1}, address.GetAsEBlob());
    std::vector<std::string> const tables = AtOnce([&message, &archive, &edit] {
        EInterfaceTable table;
        ReadInto(table, archive);
        EMultiComponentId added;
        EXPECT_TRUE(table.ExecuteCommand(edit, &added));
        TLVReader reader(message.data(), static_cast<int>(message.size()));
        ParseInterfaceListTLV(reader, table);
        return Written(table);
    });
    for (std::string const& table : tables) EXPECT_TRUE(tables[0] == table) << "a thread was disturbed";
}

static EDiscoveredTable const& SharedDiscoveries()
{
    static EDiscoveredTable const table = Read<EDiscoveredTable>("EDiscoveredTable.hex");
    return table;
}

static std::string ReadDiscoveries()
{
    EDiscoveredTable const& table = SharedDiscoveries();
    EDiscoveredTable copy(table);
    copy.FindDefaultMAC();
    std::string text = Written(table) + Written(copy) + TextOf(table.GetDefaultMAC());
    EDiscoveredInfoList const& infos = table.GetInfos();
    for (auto position = infos.begin(); position != infos.end(); ++position) {
        EDiscoveredInfo const& info = *infos.GetItem(position);
        for (unsigned int i = 0; i < info.GetAddressCount(); ++i)
            EXPECT_NE(nullptr, table.FindInfoByIP(*info.GetAddressAt(i)));
        EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
        for (auto neighbor = neighbors.begin(); neighbor != neighbors.end(); ++neighbor) {
            EDiscoveredNeighbor const& item = *neighbors.GetItem(neighbor);
            EComponentId id;
            item.GetComponentId(id);
            EXPECT_EQ(&item, table.GetNeighbor(id));
            text += TextOf(id) + TextOf(info.FindNeighborByMAC(item.GetMac()) != nullptr);
            if (item.GetAddressCount() > 0) text += TextOf(info.FindNeighborByIP(*item.GetAddressAt(0)) != nullptr);
        }
        text += info.GetFCoEInfo().GetStateString() + info.GetPTPInfo().GetDiscoveredStateAsString() +
                info.GetDCBXInfo().GetPeerLLDPConfigAsString();
    }
    return text;
}

TEST(SharedDiscoveredTable, IsReadByEightThreads)
{
    SharedDiscoveries();
    ExpectUndisturbed(ReadDiscoveries);
}
