// Each thread may do everything with tables of its own, first uses of what the library keeps for the process included.
//
// CTest runs each test in a process of its own, so that the library is fresh in each: eight threads begin together with
// one of the lives below, whose first uses meet, and go on with all the others.
#include <ifcore/ifcore.hpp>

#include "atOnce.hpp"
#include "dcbxRecords.hpp"
#include "fibreChannelRecords.hpp"
#include "interfaceSamples.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eMultiComponentId.hpp"
#include "eMultipleInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"
#include "tlvParserMapTable.hpp"

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <string>
#include <vector>

template <class Record> static bool ToldTo(EInterfaceTableHooks& hooks, Record const& record)
{
    return &record.GetHooks() == &hooks;
}

/// What getters answer where there is no record, no parent, no observer, no factory: each from an object that the
/// library makes for the process when it is first asked.
static std::string WhatIsAbsent()
{
    EInterfaceItem const item;
    std::string text = Summary(item) + " " + TextOf(item.GetMacAddress()) + TextOf(item.GetMTU());
    text += TextOf(item.GetVPI()) + TextOf(item.GetPPPHandle()) + TextOf(item.GetGreDestIp()) +
            TextOf(item.GetConnectedViaId()) + TextOf(item.GetNPIVSrcPortWWN()) + TextOf(item.GetIPv6Gateway());
    EInterfaceTable const table;
    EDiscoveredTable const discovered;
    text += table.GetTableName().GetName() + discovered.GetProtocolName().GetName();
    std::unique_ptr<EInterfaceItem> const made(table.GetItemFactory().CreateItem());
    text += Summary(*made);

    EInterfaceTableHooks& ignoring = EIPv4AddressItem().GetHooks();
    text += std::to_string(ToldTo(ignoring, EIPv6AddressItem()) + ToldTo(ignoring, EDHCPProperties()) +
                           ToldTo(ignoring, EDHCPv6Properties()) + ToldTo(ignoring, EFCoEConfig()) +
                           ToldTo(ignoring, ENPIVConfig()) + ToldTo(ignoring, EPTPConfig()) +
                           ToldTo(ignoring, ELLDPConfig()) + ToldTo(ignoring, EDCBXConfig()) +
                           ToldTo(ignoring, EObsoleteGreTunnel()) + ToldTo(ignoring, item) + ToldTo(ignoring, table));
    EDiscoveredInfo const info;
    EDiscoveredTableHooks* const discoveredHooks[] = {&discovered.GetHooks(),
                                                      &info.GetHooks(),
                                                      &EDiscoveredNeighbor().GetHooks(),
                                                      &info.GetDHCPInfo().GetHooks(),
                                                      &info.GetDHCPv6Info().GetHooks(),
                                                      &info.GetFCoEInfo().GetHooks(),
                                                      &info.GetPTPInfo().GetHooks(),
                                                      &info.GetDCBXInfo().GetHooks()};
    for (EDiscoveredTableHooks* const hooks : discoveredHooks) hooks->InterfaceWentUp(info);
    return text + TextOf(EMultiComponentId().GetId());
}

/// A table that is changed by commands, heard by observers, written, read, copied and searched.
static std::string ATable()
{
    unsigned int const port = 7;
    EInterfaceTable table(port);
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
    auto const recorder = boost::make_shared<Recorder>();
    table.AddInterfaceTableHooks("recorder", recorder);
    EInterfaceItem sample;
    FillSample(sample);
    EArchive newInterface;
    newInterface << EInterfaceItem();
    for (unsigned int id = 1; id <= 20; ++id) {
        EComponentId list;
        EXPECT_TRUE(table.ExecuteCommand(
            ESingleCommand(5, EMultiComponentId(EComponentId{port, 1}), {}, newInterface.GetAsEBlob()), &list));
        EIPAddress const address("10.9.0." + std::to_string(id));
        EArchive data;
        data << address;
        EXPECT_TRUE(table.ExecuteCommand(
            ESingleCommand(7, EMultiComponentId(EComponentId{port, 1, id, 6}), {3}, data.GetAsEBlob()), &list));
        EXPECT_EQ(table.GetInterfaceItem(id), table.FindInterfaceByIP(address));
        EXPECT_TRUE(table.SetInterfaceItem(id, sample));
        table.GetInterfaceItem(id)->SetMTU(1400);
        table.GetInterfaceItem(id)->GetPTPConfig().SetPriority1(9);
    }
    EXPECT_TRUE(table.RemoveInterfaceItem(3));
    std::string const image = Written(table);
    EInterfaceTable copy(table);
    copy = EInterfaceTable();
    ReadInto(copy, image);
    EXPECT_EQ(image, Written(copy));
    std::string told;
    for (std::string const& operation : recorder->Operations()) told += operation + " ";
    return image + told;
}

/// The archives of every version of the largest records.
static std::string Archives()
{
    std::string text;
    for (int version = 1; version <= 14; ++version) {
        EInterfaceTable table;
        ReadInto(table, Golden("EInterfaceTable.v" + std::to_string(version) + ".hex"));
        text += Written(table);
    }
    for (int version = 1; version <= 7; ++version) {
        EFCoEConfig config;
        ReadInto(config, Golden("EFCoEConfig.v" + std::to_string(version) + ".hex"));
        text += Written(config);
    }
    try {
        EInterfaceTable table;
        EArchive cut;
        Load(cut, text.substr(0, 40));
        cut >> table;
        ADD_FAILURE() << "read what is not there";
    } catch (EArchiveError const& error) {
        text += error.what();
    }
    return text;
}

/// Messages built of one interface and read into another table.
static std::string Messages()
{
    EInterfaceItem interface;
    FillSample(interface);
    Protocol::EBytes message;
    for (int i = 0; i < 20; ++i) Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
    EInterfaceTable table(7);
    TLVReader reader(message.data(), static_cast<int>(message.size()));
    ParseInterfaceListTLV(reader, table);
    EXPECT_GE(table.size(), 1U);
    int error = 0;
    try {
        TLVReader cut(message.data(), 300);
        ParseInterfaceListTLV(cut, table);
    } catch (int thrown) {
        error = thrown;
    }
    EXPECT_EQ(-1, error);
    Protocol::AppendFCNSQueryTLV(message, TLVIds::InterfaceTable::IFD_Name, SampleFCNSQuery());
    return std::string(message.begin(), message.end()) + Written(table);
}

/// Changes of one discovered table, written as a stream and applied to a second one.
static std::string Discoveries()
{
    EDiscoveredTable first;
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    first.hooks = writer;
    EDiscoveredInfo info = Read<EDiscoveredInfo>("EDiscoveredInfo.hex");
    info.SetLocalId(1);
    first.AddInfo(info);
    for (int i = 1; i <= 20; ++i) {
        EDiscoveredNeighbor neighbor;
        neighbor.AddAddress(EIPAddress("10.0.0." + std::to_string(i)));
        first.GetInfo(1)->AddNeighbor(neighbor);
    }
    first.GetInfo(1)->SetDCBXInfo(EDCBXDiscoveredInfo());
    first.FindDefaultMAC();
    EBlob const stream = writer->TakeMessage();
    EArchive changes;
    Load(changes, BytesOf(stream));
    EDiscoveredTable second;
    ApplyDiscoveredTableMessage(second, changes);
    EXPECT_EQ(Written(first), Written(second));
    boost::shared_ptr<EBlob> update;
    eHal::CreateNeighborDiscoveryUpdate(update, stream);
    EDiscoveredTable const copy(second);
    return Written(second) + Written(copy) + BytesOf(*update);
}

/// Messages of the hardware-abstraction layer.
static std::string HardwareMessages()
{
    EIPAddress const address("10.1.2.3");
    EGlobalMessage request;
    eHal::CreatePingRequestMessage(request, 5, address, EIPAddress("2001:db8::1"));
    unsigned int number = 0;
    EIPAddress first;
    EIPAddress second;
    EXPECT_TRUE(eHal::UnwrapPingRequestMessage(request, number, first, second));
    eHal::EOutgoingGlobalMessage reply;
    eHal::CreatePingReplyMessage(reply, second, first, number);
    EXPECT_TRUE(eHal::UnwrapPingReplyMessage(reply, first, second, number));
    EGlobalMessage other;
    eHal::CreateArpRequestMessage(other, number, address);
    eHal::CreateNeighborSolicitationMessage(other, number, address);
    eHal::CreateRtrSolicitationMessage(other, number);
    eHal::CreateClearNbrTableMessage(other);
    eHal::CreateGetNbrTableMessage(other);
    return BytesOf(request.GetMessage()) + Written(reply) + BytesOf(other.GetMessage()) +
           (eHal::OnSameNetwork(address, EIPAddress("10.1.2.4"), 24) ? "near" : "far") +
           eHal::MacToUid64(EMACAddress("02:00:00:00:00:01")).GetAsString();
}

/// What records show of themselves.
static std::string Texts()
{
    EDCBXConfig const dcbx = Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex");
    std::string text = dcbx.GetOUIAsString() + dcbx.GetControlTlv().GetDCBXControlTlvAsString();
    for (EDCBXFeatureTlv const& feature : dcbx.GetFeatureTlvs())
        text += dcbx.GetFeatureTlvAsString(feature) + feature.GetDcbxStateAsString();
    text += Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex").GetConfigAsString();
    EFCoEConfig const fcoe = Read<EFCoEConfig>("EFCoEConfig.v7.hex");
    text += fcoe.GetAddressModeAsString() + fcoe.GetSrcPortWWNAsString() + fcoe.GetSrcOUIAsString();
    text += SamplePLOGIDestination().GetDestNodeIdAsString() + SamplePLOGIDestination().GetWWPNAsString();
    text += Read<ENPIVConfig>("ENPIVConfig.v4.hex").GetSrcNodeWWNAsString();
    EPTPConfig const ptp = Read<EPTPConfig>("EPTPConfig.v3.hex");
    text += ptp.GetDelayMechanismAsString() + ptp.GetStartOffsetAsString() + ptp.GetPercentageBadCrcAsString();
    EDiscoveredInfo const info = Read<EDiscoveredInfo>("EDiscoveredInfo.hex");
    text += info.GetPTPInfo().GetDiscoveredStateAsString() + info.GetPTPInfo().GetTimeStampAsString();
    text += info.GetFCoEInfo().GetStateString() + info.GetFCoEInfo().GetDiscoveredSourceIdAsString();
    EDCBXDiscoveredInfo const discovered = Read<EDCBXDiscoveredInfo>("EDCBXDiscoveredInfo.v10390129.hex");
    text += discovered.GetPeerLLDPConfigAsString() + discovered.GetPeerDCBXConfigAsString();
    return text + discovered.GetMismatchFeaturesAsString() + Shown<&EInterfaceItem::GetEUID>(EInterfaceItem());
}

/// Features whose instance keys are drawn by the library.
static std::string InstanceKeys()
{
    std::string lengths;
    for (unsigned char type = 2; type < 40; ++type) {
        EDCBXFeatureTlv feature(type, 0, 2);
        unsigned int const drawn = feature.GetInstanceKey();
        EDCBXConfig config;
        config.AddFeatureTlv(feature);
        EXPECT_NE(nullptr, config.GetFeatureTlvReadOnly(type, 0, drawn));
        feature.SetInstanceKey(0);
        lengths += Written(feature);
    }
    return lengths;
}

namespace {

struct Life {
    char const* name;
    std::string (*live)();
};
class OwnTables : public testing::TestWithParam<std::size_t> {};

} // namespace

static Life const kLives[] = {{"WhatIsAbsent", WhatIsAbsent},
                              {"ATable", ATable},
                              {"Archives", Archives},
                              {"Messages", Messages},
                              {"Discoveries", Discoveries},
                              {"HardwareMessages", HardwareMessages},
                              {"Texts", Texts},
                              {"InstanceKeys", InstanceKeys}};
static std::size_t const kLifeCount = std::size(kLives);

static std::string AllLivesFrom(std::size_t first)
{
    std::string answers;
    for (std::size_t i = 0; i < kLifeCount; ++i) answers += kLives[(first + i) % kLifeCount].live();
    return answers;
}

TEST_P(OwnTables, EightThreadsDoEverythingAtOnceBeginningWith)
{
    Protocol::RunTLVParserMapInitializers(); // once, before any thread reads a message
    Protocol::UseOwnTLVIds();
    std::vector<std::string> const answers = AtOnce([] { return AllLivesFrom(GetParam()); });
    std::string const alone = AllLivesFrom(GetParam());
    EXPECT_FALSE(alone.empty());
    for (std::string const& answer : answers) EXPECT_TRUE(alone == answer) << "a thread was disturbed";
}
INSTANTIATE_TEST_SUITE_P(, OwnTables, testing::Range(std::size_t(0), kLifeCount),
                         [](testing::TestParamInfo<std::size_t> const& life) {
                             return std::string(kLives[life.param].name);
                         });
