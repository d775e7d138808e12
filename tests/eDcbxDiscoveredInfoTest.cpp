#include "eDcbxDiscoveredInfo.hpp"

#include "dcbxRecords.hpp"
#include "discoveredRecords.hpp"
#include "eInterfaceItem.hpp"
#include "recordedInterface.hpp"

#include <type_traits>

using DCBX = EDCBXDiscoveredInfo;
using Texts = std::vector<std::string>;

static_assert(!std::is_polymorphic_v<DCBX>);
static_assert(std::is_same_v<unsigned int, std::underlying_type_t<DCBX::eLLDPInfoIndex>>);
static_assert(std::is_same_v<unsigned int, std::underlying_type_t<DCBX::eDCBXInfoIndex>>);

static char const kFile[] = "x86_64/common/ifcore/eDcbxDiscoveredInfo.cpp";

static Texts const kEmptyLLDPRows = {"LLDP-Chassis Id||", "LLDP-Port Id||", "LLDP-Time To Live||"};

/// What a host's own object finds when it is made before main.
static struct BeforeMain {
    std::string names;
    std::size_t lldpRows = 0;
    std::string updated;

    BeforeMain()
    {
        for (unsigned int type = 0; type <= 7; ++type)
            names += DCBX::GetDCBXInfoName(static_cast<unsigned char>(type), 1, 1) + ";";
        DCBX info;
        lldpRows = info.GetLocalAndPeerLLDPInfoList().size();
        info.UpdateOperAndPeerInfoList();
        updated = info.GetLocalAndPeerLLDPInfo(DCBX::LLDP_TIME_TO_LIVE)->name;
    }
} const s_beforeMain;

/// "name|local|peer" for each row.
static Texts LLDPRows(DCBX const& info)
{
    Texts texts;
    for (auto const& row : info.GetLocalAndPeerLLDPInfoList())
        texts.push_back(row.name + "|" + row.local + "|" + row.peer);
    return texts;
}
/// "name|operating|peer|mismatch" for each row.
static Texts DCBXRows(DCBX const& info)
{
    Texts texts;
    for (auto const& row : info.GetOperAndPeerDCBXInfoList())
        texts.push_back(row.name + "|" + row.oper + "|" + row.peer + "|" + TextOf(row.mismatch));
    return texts;
}

static DCBX::LocalAndPeerLLDPInfo LLDPRow(char const* name, char const* local, char const* peer)
{
    DCBX::LocalAndPeerLLDPInfo row;
    row.name = name;
    row.local = local;
    row.peer = peer;
    return row;
}
static DCBX::OperAndPeerDCBXInfo DCBXRow(char const* name, char const* oper, char const* peer, bool mismatch)
{
    DCBX::OperAndPeerDCBXInfo row;
    row.name = name;
    row.oper = oper;
    row.peer = peer;
    row.mismatch = mismatch;
    return row;
}

static EDCBXFeatureTlv Feature(unsigned char type, unsigned char subType, unsigned int key,
                               EDCBXFeatureTlv::eDcbxFeatureState state = EDCBXFeatureTlv::STATE_LINK_UP)
{
    EDCBXFeatureTlv feature(type, subType, 2);
    feature.SetInstanceKey(key);
    feature.SetDcbxState(state);
    return feature;
}
static EDCBXFeatureTlv Mismatching(EDCBXFeatureTlv feature)
{
    feature.SetMismatch(true);
    return feature;
}
static EDCBXConfig Config(std::vector<EDCBXFeatureTlv> const& features, unsigned char subType = 2)
{
    EDCBXConfig config;
    config.SetSubType(subType);
    config.SetFeatureTlvs(features);
    return config;
}
/// The text of a fresh feature that the peer has advertised.
static std::string FeatureText(int type, int subType, std::string const& payload)
{
    return " Feature type = " + std::to_string(type) + ", Sub type = " + std::to_string(subType) +
           "\n Operating Version = 255, Max Version = 255\n Enable = yes, Willing = yes, Error = no\n" + payload;
}
static std::string const kPFC = " PFC Priority Map = 0x08\n TCs supported = 8\n";
static std::string const kFCoE = " Protocol-id = 0x8906\n Priority Map = 0x08\n";
static std::string const kState = " Last Known State = ";

/// A record of these two configurations, with the comparison made.
static DCBX Compared(EDCBXConfig const& oper, EDCBXConfig const& peer)
{
    DCBX info;
    info.SetOperDCBXCfg(oper);
    info.SetPeerDCBXCfg(peer);
    info.UpdateOperAndPeerInfoList();
    return info;
}

// ---- Rows -----------------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfo, StartsWithThreeNamedLLDPRowsAndNoDCBXRows)
{
    DCBX const info;
    EXPECT_EQ(kEmptyLLDPRows, LLDPRows(info));
    EXPECT_EQ(Texts(), DCBXRows(info));
    EXPECT_EQ(nullptr, info.GetParent());
    EXPECT_FALSE(info.GetOperDCBXCfg() != EDCBXConfig());
    EXPECT_FALSE(info.GetPeerDCBXCfg() != EDCBXConfig());
    EXPECT_FALSE(info.GetLocalLLDPCfg() != ELLDPConfig());
    EXPECT_FALSE(info.GetPeerLLDPCfg() != ELLDPConfig());
}

TEST(EDCBXDiscoveredInfo, TheNamesCanBeUsedByAGlobalObjectOfTheHost)
{
    EXPECT_EQ("Custom:0,1;Control;Priority Group;PFC;Custom:4,1;FCoE;LAN Logical Link;Custom:7,1;", s_beforeMain.names);
    EXPECT_EQ(3U, s_beforeMain.lldpRows);
    EXPECT_EQ("LLDP-Time To Live", s_beforeMain.updated);
}

TEST(EDCBXDiscoveredInfo, ALLDPRowIsSetAsAWholeWhereThereIsOne)
{
    DCBX info;
    info.SetLocalAndPeerLLDPInfo(DCBX::LLDP_PORT_ID, LLDPRow("a", "b", "c"));
    EXPECT_EQ((Texts{"LLDP-Chassis Id||", "a|b|c", "LLDP-Time To Live||"}), LLDPRows(info));
    info.SetLocalAndPeerLLDPInfo(DCBX::LLDP_CHASSIS_ID, *info.GetLocalAndPeerLLDPInfo(DCBX::LLDP_PORT_ID));
    info.SetLocalAndPeerLLDPInfo(DCBX::LLDP_TIME_TO_LIVE, LLDPRow("", "", "d"));
    Texts const rows = {"a|b|c", "a|b|c", "||d"};
    for (unsigned int const position : {3U, 4U, 0x80000000U, 0xFFFFFFFFU}) {
        auto const beyond = static_cast<DCBX::eLLDPInfoIndex>(position);
        EXPECT_EQ(nullptr, info.GetLocalAndPeerLLDPInfo(beyond));
        info.SetLocalAndPeerLLDPInfo(beyond, LLDPRow("x", "y", "z"));
        EXPECT_EQ(rows, LLDPRows(info));
    }
    for (unsigned int position = 0; position < 3; ++position)
        EXPECT_EQ(&info.GetLocalAndPeerLLDPInfoList()[position],
                  info.GetLocalAndPeerLLDPInfo(static_cast<DCBX::eLLDPInfoIndex>(position)));
    info.SetLocalAndPeerLLDPInfoList({LLDPRow("e", "f", "g")});
    EXPECT_EQ((Texts{"e|f|g"}), LLDPRows(info));
    EXPECT_EQ(nullptr, info.GetLocalAndPeerLLDPInfo(DCBX::LLDP_PORT_ID));
    EXPECT_EQ(Texts(), DCBXRows(info));
}

TEST(EDCBXDiscoveredInfo, ADCBXRowIsSetAsAWholeWhereThereIsOne)
{
    DCBX info;
    info.SetOperAndPeerDCBXInfo(DCBX::DCBX_CONTROL, DCBXRow("x", "y", "z", true));
    EXPECT_EQ(Texts(), DCBXRows(info));
    EXPECT_EQ(nullptr, info.GetOperAndPeerDCBXInfo(DCBX::DCBX_CONTROL));
    info.SetOperAndPeerDCBXInfoList({DCBXRow("a", "b", "c", true), DCBXRow("d", "e", "f", false)});
    info.SetOperAndPeerDCBXInfo(DCBX::DCBX_PRIORITY_GROUP, *info.GetOperAndPeerDCBXInfo(DCBX::DCBX_CONTROL));
    info.SetOperAndPeerDCBXInfo(DCBX::DCBX_CONTROL, DCBXRow("g", "h", "i", false));
    Texts const rows = {"g|h|i|false", "a|b|c|true"};
    for (unsigned int const position : {2U, 6U, 0x80000000U, 0xFFFFFFFFU}) {
        auto const beyond = static_cast<DCBX::eDCBXInfoIndex>(position);
        EXPECT_EQ(nullptr, info.GetOperAndPeerDCBXInfo(beyond));
        info.SetOperAndPeerDCBXInfo(beyond, DCBXRow("x", "y", "z", true));
        EXPECT_EQ(rows, DCBXRows(info));
    }
    EXPECT_EQ(&info.GetOperAndPeerDCBXInfoList()[1], info.GetOperAndPeerDCBXInfo(DCBX::DCBX_PRIORITY_GROUP));
    EXPECT_EQ(kEmptyLLDPRows, LLDPRows(info));
}

TEST(EDCBXDiscoveredInfo, ClearingBringsBackTheRowsOfANewRecordAndLeavesTheConfigurations)
{
    DCBX info = Read<DCBX>("EDCBXDiscoveredInfo.v10390129.hex");
    EDCBXConfig const oper = info.GetOperDCBXCfg();
    ELLDPConfig const local = info.GetLocalLLDPCfg();
    info.ClearOperAndPeerInfoList();
    EXPECT_EQ(kEmptyLLDPRows, LLDPRows(info));
    EXPECT_EQ(Texts(), DCBXRows(info));
    EXPECT_FALSE(info.GetOperDCBXCfg() != oper);
    EXPECT_FALSE(info.GetLocalLLDPCfg() != local);
}

// ---- Configurations -------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfo, SettingAConfigurationLeavesTheRowsAndTheOthers)
{
    EDCBXConfig const dcbx = Config({Feature(3, 0, 7)});
    ELLDPConfig lldp;
    lldp.SetTxDelay(5);
    DCBX info;
    info.SetOperDCBXCfg(dcbx);
    EXPECT_FALSE(info.GetOperDCBXCfg() != dcbx);
    EXPECT_FALSE(info.GetPeerDCBXCfg() != EDCBXConfig());
    info.SetLocalLLDPCfg(lldp);
    EXPECT_FALSE(info.GetLocalLLDPCfg() != lldp);
    EXPECT_FALSE(info.GetPeerLLDPCfg() != ELLDPConfig());
    EXPECT_EQ(kEmptyLLDPRows, LLDPRows(info));
    EXPECT_EQ(Texts(), DCBXRows(info));

    DCBX peer;
    peer.SetPeerDCBXCfg(dcbx);
    EXPECT_FALSE(peer.GetPeerDCBXCfg() != dcbx);
    EXPECT_FALSE(peer.GetOperDCBXCfg() != EDCBXConfig());
    peer.SetPeerLLDPCfg(lldp);
    EXPECT_FALSE(peer.GetPeerLLDPCfg() != lldp);
    EXPECT_FALSE(peer.GetLocalLLDPCfg() != ELLDPConfig());
    peer.GetOperDCBXCfg().SetOUI(1);
    peer.GetPeerDCBXCfg().SetOUI(2);
    peer.GetLocalLLDPCfg().SetTxDelay(3);
    peer.GetPeerLLDPCfg().SetTxDelay(4);
    EXPECT_EQ(1U, peer.GetOperDCBXCfg().GetOUI());
    EXPECT_EQ(2U, peer.GetPeerDCBXCfg().GetOUI());
    EXPECT_EQ(3, peer.GetLocalLLDPCfg().GetTxDelay());
    EXPECT_EQ(4, peer.GetPeerLLDPCfg().GetTxDelay());
    EXPECT_EQ(kEmptyLLDPRows, LLDPRows(peer));
}

static void ExpectNoParents(DCBX const& info)
{
    EXPECT_EQ(nullptr, info.GetOperDCBXCfg().GetParent());
    EXPECT_EQ(nullptr, info.GetPeerDCBXCfg().GetParent());
    EXPECT_EQ(nullptr, info.GetLocalLLDPCfg().GetParent());
    EXPECT_EQ(nullptr, info.GetPeerLLDPCfg().GetParent());
}

TEST(EDCBXDiscoveredInfo, TheConfigurationsHaveNoParentWhateverIsAssigned)
{
    RecordedInterface in;
    in.interface.SetDCBXEnabled(true);
    in.interface.SetLLDPEnabled(true);
    EDCBXConfig const& dcbx = *in.interface.GetDCBXConfigReadOnly();
    ELLDPConfig const& lldp = *in.interface.GetLLDPConfigReadOnly();
    ASSERT_EQ(&in.interface, dcbx.GetParent());
    in.recorder->Clear();

    DCBX info;
    ExpectNoParents(info);
    info.SetOperDCBXCfg(dcbx);
    info.SetPeerDCBXCfg(dcbx);
    info.SetLocalLLDPCfg(lldp);
    info.SetPeerLLDPCfg(lldp);
    ExpectNoParents(info);
    DCBX copy(info);
    ExpectNoParents(copy);
    copy.Copy(info);
    copy.Swap(info);
    ReadInto(copy, Golden("EDCBXDiscoveredInfo.v10390129.hex"));
    ExpectNoParents(copy);
    ExpectNoParents(info);
    EXPECT_TRUE(in.recorder->calls.empty());
    EXPECT_EQ(&in.interface, dcbx.GetParent());
}

TEST(EDCBXDiscoveredInfo, ContentsMoveWithoutTheParent)
{
    ExpectContentsMoveWithoutTheParent(Read<DCBX>("EDCBXDiscoveredInfo.v10390129.hex"));
}

TEST(EDCBXDiscoveredInfo, TheObserverIsThatOfTheTable)
{
    ExpectObserverOfTheTable<DCBX>(&EDiscoveredInfo::GetDCBXInfo);
}

// ---- Names ----------------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfo, AFeatureIsNamedByTypeSubTypeAndFlavour)
{
    struct {
        unsigned char type;
        unsigned char subType;
        char const* flavour2;
        char const* otherwise;
    } const cases[] = {
        {0, 0, "Custom:0,0", "Custom:0,0"},
        {1, 0, "Control", "Control"},
        {1, 255, "Control", "Control"},
        {2, 0, "Priority Group", "Priority Group"},
        {2, 1, "Priority Group", "Priority Group"},
        {3, 0, "PFC", "PFC"},
        {3, 1, "PFC", "PFC"},
        {4, 0, "FCoE", "Custom:4,0"},
        {4, 7, "FCoE", "Custom:4,7"},
        {5, 0, "iSCSI", "FCoE"},
        {5, 9, "iSCSI", "FCoE"},
        {6, 0, "Custom:6,0", "FCoE Logical Link"},
        {6, 1, "Custom:6,1", "LAN Logical Link"},
        {6, 255, "Custom:6,255", "LAN Logical Link"},
        {9, 1, "Custom:9,1", "Custom:9,1"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << +c.type << " " << +c.subType);
        EXPECT_EQ(c.flavour2, DCBX::GetDCBXInfoName(c.type, c.subType, 2));
        for (int const flavour : {0, 1, 3, 255})
            EXPECT_EQ(c.otherwise, DCBX::GetDCBXInfoName(c.type, c.subType, static_cast<unsigned char>(flavour)));
    }
    for (unsigned int type = 7; type <= 255; ++type)
        EXPECT_EQ("Custom:" + std::to_string(type) + ",254",
                  DCBX::GetDCBXInfoName(static_cast<unsigned char>(type), 254, 2));
}

TEST(EDCBXDiscoveredInfo, RowsOnPurposeNameFeaturesInTheirOwnWay)
{
    struct {
        unsigned char type;
        unsigned char flavour;
        char const* row;
        char const* feature;
    } const cases[] = {{5, 2, "iSCSI", "Customized 5"},
                       {5, 1, "FCoE", "iSCSI"},
                       {6, 2, "Custom:6,0", "Customized 6"},
                       {1, 2, "Control", "Customized 1"}};
    for (auto const& c : cases) {
        EXPECT_EQ(c.row, DCBX::GetDCBXInfoName(c.type, 0, c.flavour));
        EXPECT_EQ(c.feature, EDCBXFeatureTlv(c.type, 0, c.flavour).GetTypeName());
    }
}

// ---- Comparison -----------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfoComparison, LLDPRowsShowBothConfigurations)
{
    struct {
        int localStatus;
        int peerStatus;
        Texts rows;
    } const cases[] = {
        {0,
         0,
         {"LLDP-Chassis Id| Sub type = 4 Value = 02:00:5e:10:00:01| Sub type = 6 Value = eth9",
          "LLDP-Port Id| Sub type = 5 Value = eth0| Sub type = 3 Value = 02:00:5e:10:00:02",
          "LLDP-Time To Live|65535|0"}},
        {0,
         1,
         {"LLDP-Chassis Id| Sub type = 4 Value = 02:00:5e:10:00:01| Waiting for LLDP response.",
          "LLDP-Port Id| Sub type = 5 Value = eth0| Waiting for LLDP response.", "LLDP-Time To Live|65535|0"}},
        {2,
         0,
         {"LLDP-Chassis Id| Peer has shutdown.| Sub type = 6 Value = eth9",
          "LLDP-Port Id| Peer has shutdown.| Sub type = 3 Value = 02:00:5e:10:00:02", "LLDP-Time To Live|65535|0"}},
    };
    for (auto const& c : cases) {
        ELLDPConfig local;
        local.SetChassisIdMac(EMACAddress("02:00:5e:10:00:01"));
        local.SetPortIdInterfaceName("eth0");
        local.SetTimeToLive(65535);
        local.SetPeerStatus(c.localStatus);
        ELLDPConfig peer;
        peer.SetChassisIdInterfaceName("eth9");
        peer.SetChassisIdSubType(ELLDPConfig::CHASSIS_ID_INTERFACE_NAME);
        peer.SetPortIdMac(EMACAddress("02:00:5e:10:00:02"));
        peer.SetPortIdSubType(ELLDPConfig::PORT_ID_MAC_ADDRESS);
        peer.SetTimeToLive(0);
        peer.SetPeerStatus(c.peerStatus);
        DCBX info;
        info.SetLocalLLDPCfg(local);
        info.SetPeerLLDPCfg(peer);
        info.UpdateOperAndPeerInfoList();
        EXPECT_EQ(c.rows, LLDPRows(info));
        EXPECT_EQ(Texts(), DCBXRows(info));
    }
}

TEST(EDCBXDiscoveredInfoComparison, WithoutOperatingFeaturesThereAreNoDCBXRowsWhateverThePeerHas)
{
    DCBX info = Compared(Config({}), Config({Feature(3, 0, 7)}));
    EXPECT_EQ("LLDP-Time To Live|120|120", LLDPRows(info)[2]);
    EXPECT_EQ(Texts(), DCBXRows(info));
    info.SetLocalAndPeerLLDPInfoList({});
    info.SetOperAndPeerDCBXInfoList({DCBXRow("a", "b", "c", true)});
    info.UpdateOperAndPeerInfoList(); // from nothing, not into what is there
    EXPECT_EQ(3U, LLDPRows(info).size());
    EXPECT_EQ(Texts(), DCBXRows(info));
}

TEST(EDCBXDiscoveredInfoComparison, TheControlRowShowsTheOperatingStateBehindTheControlTLVAndNotThePeers)
{
    std::string const shown =
        " Operating Version = 4, Max Version = 250\n Sequence Number = 16909060\n Ack Number = 4660\n";
    struct {
        bool valid;
        unsigned int operType;
        unsigned int peerType;
        std::string row;
    } const cases[] = {
        {true, 0, 0, "Control|" + shown + kState + "AckPeer|" + shown + "|false"},
        {true, 0, 1, "Control|" + shown + kState + "AckPeer|Peer has not advertised DCBX.|false"},
        {true, 2, 3, "Control|Waiting for DCBX response. Last Known State = AckPeer|Peer has shutdown.|false"},
        {false, 0, 0, "Control| Last Known State = AckPeer||false"},
    };
    for (auto const& c : cases) {
        EDCBXControlTlv control = SampleDCBXControl();
        control.SetValid(c.valid);
        EDCBXConfig oper = Config({Feature(3, 0, 7)});
        control.SetDcbxAdvertiseType(static_cast<EDCBXFeatureTlv::eDcbxAdvertiseType>(c.operType));
        oper.SetControlTlv(control);
        EDCBXConfig peer;
        control.SetDcbxAdvertiseType(static_cast<EDCBXFeatureTlv::eDcbxAdvertiseType>(c.peerType));
        peer.SetControlTlv(control);
        Texts const rows = DCBXRows(Compared(oper, peer));
        ASSERT_EQ(2U, rows.size());
        EXPECT_EQ(c.row, rows[0]);
    }
}

/// The rows behind that of the control TLV.
static Texts FeatureRows(EDCBXConfig const& oper, EDCBXConfig const& peer)
{
    Texts rows = DCBXRows(Compared(oper, peer));
    EXPECT_FALSE(rows.empty());
    if (!rows.empty()) rows.erase(rows.begin());
    return rows;
}

TEST(EDCBXDiscoveredInfoComparison, AFeatureIsComparedWithThePeersOfItsTypeSubTypeAndKey)
{
    std::string const oper = "PFC|" + FeatureText(3, 1, kPFC) + kState + "FWait|";
    EDCBXFeatureTlv const own = Feature(3, 1, 7, EDCBXFeatureTlv::STATE_F_WAIT);
    struct {
        char const* name;
        std::vector<EDCBXFeatureTlv> peer;
        std::string row;
    } const cases[] = {
        {"no features", {}, oper + "|false"},
        {"another type", {Mismatching(Feature(2, 1, 7))}, oper + "|false"},
        {"another subtype", {Mismatching(Feature(3, 2, 7))}, oper + "|false"},
        {"another key", {Mismatching(Feature(3, 1, 8))}, oper + "|false"},
        {"the same", {Feature(3, 1, 7)}, oper + FeatureText(3, 1, kPFC) + "|false"}, // without the peer's state
        {"a mismatch", {Feature(3, 1, 8), Mismatching(Feature(3, 1, 7))}, oper + FeatureText(3, 1, kPFC) + "|true"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Texts{c.row}, FeatureRows(Config({own}), Config(c.peer)));
        // What the operating side says of a mismatch does not count.
        EXPECT_EQ(Texts{c.row}, FeatureRows(Config({Mismatching(own)}), Config(c.peer)));
    }
}

TEST(EDCBXDiscoveredInfoComparison, OfSeveralFeaturesWithOneKeyTheFirstGivesTheStateAndThePeersSide)
{
    EDCBXFeatureTlv second = Feature(3, 0, 7, EDCBXFeatureTlv::STATE_USE_PEER_CFG);
    second.SetPFCPriorityMap(0x30);
    std::vector<EDCBXFeatureTlv> const oper = {Feature(3, 0, 7, EDCBXFeatureTlv::STATE_F_WAIT), second};
    EDCBXFeatureTlv shutDown = Feature(3, 0, 7);
    shutDown.SetDcbxAdvertiseType(EDCBXFeatureTlv::PEER_SHUT_DOWN);
    EXPECT_EQ((Texts{"PFC|" + FeatureText(3, 0, kPFC) + kState + "FWait|Peer has shutdown.\n|false",
                     "PFC|" + FeatureText(3, 0, " PFC Priority Map = 0x30\n TCs supported = 8\n") + kState +
                         "FWait|Peer has shutdown.\n|false"}),
              FeatureRows(Config(oper), Config({shutDown, Mismatching(Feature(3, 0, 7))})));
    EXPECT_EQ("true", TextOf(Compared(Config(oper), Config({Mismatching(shutDown), Feature(3, 0, 7)}))
                                 .GetOperAndPeerDCBXInfo(DCBX::DCBX_PFC)
                                 ->mismatch));
}

TEST(EDCBXDiscoveredInfoComparison, EachSideIsShownByItsOwnConfigurationAndNamedByTheOperatingOne)
{
    EDCBXConfig const second = Config({Feature(3, 0, 7), Feature(4, 0, 7), Feature(6, 1, 7)}, 2);
    EDCBXConfig const first = Config({Feature(3, 0, 7), Feature(4, 0, 7), Feature(6, 1, 7)}, 1);
    std::string const up = kState + "LinkUp|";
    std::string const pfc2 = FeatureText(3, 0, kPFC);
    std::string const pfc1 = FeatureText(3, 0, " PFC Priority Map = 0x08\n");
    std::string const fcoe2 = FeatureText(4, 0, kFCoE);
    std::string const fcoe1 = FeatureText(4, 0, " Customized Config = 890600000008\n");
    std::string const link2 = FeatureText(6, 1, " Customized Config = 00\n");
    std::string const link1 = FeatureText(6, 1, " Logical link status = Down\n");
    EXPECT_EQ((Texts{"PFC|" + pfc2 + up + pfc1 + "|false", "FCoE|" + fcoe2 + up + fcoe1 + "|false",
                     "Custom:6,1|" + link2 + up + link1 + "|false"}),
              FeatureRows(second, first));
    EXPECT_EQ((Texts{"PFC|" + pfc1 + up + pfc2 + "|false", "Custom:4,0|" + fcoe1 + up + fcoe2 + "|false",
                     "LAN Logical Link|" + link1 + up + link2 + "|false"}),
              FeatureRows(first, second));
}

TEST(EDCBXDiscoveredInfoComparison, AFeatureIsNotNamedByItsOwnDcbxSubType)
{
    DCBX info;
    info.SetOperDCBXCfg(Config({Feature(4, 0, 7)}));
    info.GetOperDCBXCfg().GetFeatureTlv(0U)->SetDcbxSubType(1);
    info.UpdateOperAndPeerInfoList();
    EXPECT_EQ("FCoE", info.GetOperAndPeerDCBXInfoList().back().name);
}

TEST(EDCBXDiscoveredInfoComparison, IsMadeAnewEachTimeAndLeavesTheConfigurations)
{
    EDCBXConfig const oper = Config({Feature(3, 0, 7), Feature(2, 0, 8)});
    EDCBXConfig const peer = Config({Feature(2, 0, 8)});
    DCBX info = Compared(oper, peer);
    Texts const rows = DCBXRows(info);
    ASSERT_EQ(3U, rows.size());
    info.UpdateOperAndPeerInfoList();
    EXPECT_EQ(rows, DCBXRows(info));
    EXPECT_EQ(3U, LLDPRows(info).size());
    EXPECT_FALSE(info.GetOperDCBXCfg() != oper);
    EXPECT_FALSE(info.GetPeerDCBXCfg() != peer);
    info.SetOperDCBXCfg(Config({}));
    EXPECT_EQ(rows, DCBXRows(info)); // until it is made again
    info.UpdateOperAndPeerInfoList();
    EXPECT_EQ(Texts(), DCBXRows(info));
}

// ---- Texts ----------------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfo, ConfigurationsAreShownFeatureByFeatureOrAsNone)
{
    DCBX info;
    EXPECT_EQ("None\n", info.GetOperatingDCBXConfigAsString());
    EXPECT_EQ("None\n", info.GetPeerDCBXConfigAsString());
    EXPECT_EQ("None\n", info.GetDCBXFeatureTlvAsString(EDCBXConfig()));
    info.SetOperDCBXCfg(Config({Feature(3, 0, 7), Feature(4, 0, 7)}));
    EXPECT_EQ(FeatureText(3, 0, kPFC) + FeatureText(4, 0, kFCoE), info.GetOperatingDCBXConfigAsString());
    EXPECT_EQ("None\n", info.GetPeerDCBXConfigAsString());
    EDCBXFeatureTlv shutDown = Feature(3, 0, 7);
    shutDown.SetDcbxAdvertiseType(EDCBXFeatureTlv::PEER_SHUT_DOWN);
    info.SetPeerDCBXCfg(Config({shutDown}));
    EXPECT_EQ("Peer has shutdown.\n", info.GetPeerDCBXConfigAsString());
    EXPECT_EQ(FeatureText(3, 0, " PFC Priority Map = 0x08\n"),
              info.GetDCBXFeatureTlvAsString(Config({Feature(3, 0, 7)}, 1)));
}

TEST(EDCBXDiscoveredInfo, ThePeersLLDPIsShownInItsOwnForm)
{
    DCBX info;
    info.GetLocalLLDPCfg().SetTimeToLive(7);
    info.GetPeerLLDPCfg().SetPortIdInterfaceName("eth9");
    EXPECT_EQ("Chassis ID TLV:  Sub type = 4 Value = 00:00:00:00:00:00 Port ID TLV:  Sub type = 5 Value = eth9"
              " TTL TLV: 120",
              info.GetPeerLLDPConfigAsString());
}

TEST(EDCBXDiscoveredInfo, ThePeersMismatchingFeaturesAreListedByTheirTypeNames)
{
    EDCBXFeatureTlv const pfc = Feature(3, 0, 7);
    EDCBXFeatureTlv const iscsi = Feature(5, 0, 7);
    struct {
        std::vector<EDCBXFeatureTlv> peer;
        unsigned char subType;
        char const* text;
    } const cases[] = {
        {{}, 2, ""},
        {{pfc, iscsi}, 2, ""},
        {{Mismatching(pfc)}, 2, "PFC;"},
        {{Mismatching(iscsi), pfc, Mismatching(pfc), Mismatching(pfc)}, 2, "Customized 5;PFC;PFC;"},
        {{Mismatching(iscsi), Mismatching(Feature(6, 0, 7))}, 1, "iSCSI;FCoE Logical Link;"},
    };
    for (auto const& c : cases) {
        DCBX info;
        info.SetOperDCBXCfg(Config({Mismatching(Feature(2, 0, 7))}));
        info.SetPeerDCBXCfg(Config(c.peer, c.subType));
        EXPECT_EQ(c.text, info.GetMismatchFeaturesAsString());
    }
}

// ---- Archive --------------------------------------------------------------------------------------------------------

TEST(EDCBXDiscoveredInfoArchive, WritesAndReadsTheBytesOfTheLayout)
{
    EXPECT_EQ(Golden("EDCBXDiscoveredInfo.defaults.v10390129.hex"), Written(DCBX()));
    DCBX const read = Read<DCBX>("EDCBXDiscoveredInfo.v10390129.hex");
    EXPECT_EQ(Golden("EDCBXDiscoveredInfo.v10390129.hex"), Written(read));
    EXPECT_FALSE(read.GetOperDCBXCfg() != Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex"));
    EXPECT_FALSE(read.GetPeerDCBXCfg() != EDCBXConfig());
    EXPECT_FALSE(read.GetLocalLLDPCfg() != Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex"));
    EXPECT_FALSE(read.GetPeerLLDPCfg() != ELLDPConfig());
}

TEST(EDCBXDiscoveredInfoArchive, RowsAreTakenAsTheyWereStored)
{
    DCBX const read = Read<DCBX>("EDCBXDiscoveredInfo.v10390129.hex");
    EXPECT_EQ((Texts{"a||bcd", "|e|"}), LLDPRows(read));
    EXPECT_EQ((Texts{"fg|h||true", "||i|false"}), DCBXRows(read));
}

TEST(EDCBXDiscoveredInfoArchive, ReadingReplacesTheRowsButAppendsToTheFeaturesAndAnnouncesNothing)
{
    ExpectReadUnheard<DCBX>(&EDiscoveredInfo::GetDCBXInfo, "EDCBXDiscoveredInfo.v10390129.hex");
    DCBX info = Read<DCBX>("EDCBXDiscoveredInfo.v10390129.hex");
    ReadInto(info, Golden("EDCBXDiscoveredInfo.v10390129.hex"));
    EXPECT_EQ(2U, LLDPRows(info).size());
    EXPECT_EQ(2U, DCBXRows(info).size());
    EXPECT_EQ(4U, info.GetOperDCBXCfg().GetFeatureTlvs().size());
}

TEST(EDCBXDiscoveredInfoArchive, ARowAloneIsItsTexts)
{
    EXPECT_EQ(Bytes("01 61 01 62 02 63 64"), Written(LLDPRow("a", "b", "cd")));
    EXPECT_EQ(Bytes("01 61 01 62 02 63 64 01"), Written(DCBXRow("a", "b", "cd", true)));
    DCBX::LocalAndPeerLLDPInfo lldp;
    ReadInto(lldp, Bytes("01 61 01 62 02 63 64"));
    EXPECT_EQ("a|b|cd", lldp.name + "|" + lldp.local + "|" + lldp.peer);
    DCBX::OperAndPeerDCBXInfo dcbx;
    EXPECT_FALSE(dcbx.mismatch);
    ReadInto(dcbx, Bytes("01 61 01 62 02 63 64 01"));
    EXPECT_EQ("a|b|cd", dcbx.name + "|" + dcbx.oper + "|" + dcbx.peer);
    EXPECT_TRUE(dcbx.mismatch);
}

TEST(EDCBXDiscoveredInfoArchive, EndingTooEarlyIsAnError)
{
    std::string const bytes = Golden("EDCBXDiscoveredInfo.v10390129.hex");
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EArchive archive;
        Load(archive, bytes.substr(0, size));
        DCBX info;
        EXPECT_THROW(archive >> info, EArchiveError) << size;
    }
}

TEST(EDCBXDiscoveredInfoArchiveDeathTest, RefusesOtherVersions)
{
    for (char const* version : {"00", "FB 10 39 01 28", "FB 10 39 01 2A", "FB FF FF FF FF"})
        ExpectArchiveError<DCBX>(version, kFile, 132, "EDCBXDiscoveredInfo::SerializeIn");
}

TEST(EDCBXDiscoveredInfoArchiveDeathTest, RowsInAnArchiveOfTheWrongDirectionEndTheProcess)
{
    ExpectListRefusesToBeWritten<DCBX>();
    ExpectListRefusesToBeRead([](EArchive& archive) {
        std::vector<DCBX::OperAndPeerDCBXInfo> rows;
        SerializeIn(archive, rows);
    });
    ChildResult const record = RunInChild([] {
        EArchive archive;
        DCBX info;
        archive >> info; // whose version is then 0
    });
    EXPECT_EQ(1, record.exitStatus);
    EXPECT_EQ(FatalArchiveMessage(kFile, 132, "EDCBXDiscoveredInfo::SerializeIn"), record.output);
}

TEST(EDCBXDiscoveredInfo, ACopyDoesNotTakeTheParentsOfItsConfigurationsAlong)
{
    EInterfaceItem const interface;
    EDCBXDiscoveredInfo info;
    info.GetOperDCBXCfg().SetParent(&interface);
    info.GetPeerDCBXCfg().SetParent(&interface);
    info.GetLocalLLDPCfg().SetParent(&interface);
    info.GetPeerLLDPCfg().SetParent(&interface);
    EDCBXDiscoveredInfo const copy(info);
    EXPECT_EQ(nullptr, copy.GetOperDCBXCfg().GetParent());
    EXPECT_EQ(nullptr, copy.GetPeerDCBXCfg().GetParent());
    EXPECT_EQ(nullptr, copy.GetLocalLLDPCfg().GetParent());
    EXPECT_EQ(nullptr, copy.GetPeerLLDPCfg().GetParent());
}
