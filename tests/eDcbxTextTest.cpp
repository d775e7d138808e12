#include "dcbxRecords.hpp"

#include <locale>

using Feature = EDCBXFeatureTlv;

TEST(EDCBXFeatureTlvText, TypeNameGoesByTypeDcbxSubTypeAndSubType)
{
    struct {
        unsigned char type;
        unsigned char subType;
        char const* second;    // DCBX subtype 2
        char const* otherwise; // all others
    } const cases[] = {
        {0, 0, "Customized 0", "Customized 0"},
        {1, 0, "Customized 1", "Customized 1"},
        {2, 0, "Priority Group", "Priority Group"},
        {3, 0, "PFC", "PFC"},
        {4, 0, "FCoE", "Customized 4"},
        {5, 0, "Customized 5", "iSCSI"},
        {6, 0, "Customized 6", "FCoE Logical Link"},
        {6, 1, "Customized 6", "LAN Logical Link"},
        {6, 255, "Customized 6", "LAN Logical Link"},
        {7, 0, "Customized 7", "Customized 7"},
        {255, 0, "Customized 255", "Customized 255"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << +c.type << " " << +c.subType);
        EXPECT_EQ(c.second, Feature(c.type, c.subType, 2).GetTypeName());
        for (int dcbxSubType : {0, 1, 3, 255})
            EXPECT_EQ(c.otherwise, Feature(c.type, c.subType, static_cast<unsigned char>(dcbxSubType)).GetTypeName());
    }
}

TEST(EDCBXFeatureTlvText, StateIsItsName)
{
    char const* const names[] = {"LinkUp",
                                 "SetLocalParameters",
                                 "FWait",
                                 "NoAdvertise",
                                 "PeerNotAdvertiseDCBX",
                                 "PeerNotAdvertiseFeature",
                                 "UpdateOperVersion",
                                 "PeerUpdateOperVersion",
                                 "CfgNotCompatible",
                                 "UseLocalCfg",
                                 "UsePeerCfg",
                                 "FeatureDisabled",
                                 "GetPeerCfg",
                                 "ErrorChange"};
    Feature feature;
    for (unsigned int state = 0; state < 14; ++state) {
        feature.SetDcbxState(static_cast<Feature::eDcbxFeatureState>(state));
        EXPECT_EQ(std::string(" Last Known State = ") + names[state], feature.GetDcbxStateAsString());
    }
    for (unsigned int state : {14u, 15u, 0xFFFFFFFFu}) {
        feature.SetDcbxState(static_cast<Feature::eDcbxFeatureState>(state));
        EXPECT_EQ(" Last Known State = Unknown state", feature.GetDcbxStateAsString());
    }
}

TEST(EDCBXControlTlvText, StateIsItsName)
{
    char const* const names[] = {
        "LinkUp", "DWait", "UpdateDCBXTLV", "PeerNotAdvertiseDCBX", "UpdateOperVersion", "ProcessPeerTLV", "AckPeer"};
    EDCBXControlTlv control;
    for (unsigned int state = 0; state < 7; ++state) {
        control.SetControlState(static_cast<EDCBXControlTlv::eControlState>(state));
        EXPECT_EQ(std::string(" Last Known State = ") + names[state], control.GetControlStateAsString());
    }
    for (unsigned int state : {7u, 8u, 0xFFFFFFFFu}) {
        control.SetControlState(static_cast<EDCBXControlTlv::eControlState>(state));
        EXPECT_EQ(" Last Known State = Unknown state", control.GetControlStateAsString());
    }
}

TEST(EDCBXControlTlvText, IsEmptyWhenNotValidAndGoesByTheAdvertiseTypeOtherwise)
{
    struct {
        unsigned int advertiseType;
        char const* text;
    } const cases[] = {
        {0, " Operating Version = 4, Max Version = 250\n Sequence Number = 16909060\n Ack Number = 4660\n"},
        {1, "Peer has not advertised DCBX."},
        {2, "Waiting for DCBX response."},
        {3, "Peer has shutdown."},
        {4, "Peer has shutdown."},
        {0xFFFFFFFF, "Peer has shutdown."},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.advertiseType);
        EDCBXControlTlv control = SampleDCBXControl();
        control.SetDcbxAdvertiseType(static_cast<Feature::eDcbxAdvertiseType>(c.advertiseType));
        EXPECT_EQ(c.text, control.GetDCBXControlTlvAsString());
        control.SetValid(false);
        EXPECT_EQ("", control.GetDCBXControlTlvAsString());
    }
}

TEST(EDCBXConfigText, OUIIsThreeBytesWithDotsBetween)
{
    EDCBXConfig config;
    EXPECT_EQ("00.1b.21", config.GetOUIAsString());
    config.SetOUI(0xFFAABBCC);
    EXPECT_EQ("aa.bb.cc", config.GetOUIAsString());
}

TEST(EDCBXConfigText, AFeatureWithoutAnAdvertisingPeerIsOneLine)
{
    struct {
        unsigned int advertiseType;
        bool advertised;
        char const* text;
    } const cases[] = {
        {1, true, "Peer has not advertised DCBX.\n"},
        {1, false, "Peer has not advertised DCBX.\n"},
        {2, true, "Waiting for DCBX response.\n"},
        {3, false, "Peer has shutdown.\n"},
        {4, true, ""},
        {0xFFFFFFFF, false, ""},
        {0, false, "Peer has not advertised feature.\n"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.advertiseType << " " << c.advertised);
        Feature feature(3);
        feature.SetDcbxAdvertiseType(static_cast<Feature::eDcbxAdvertiseType>(c.advertiseType));
        feature.SetFeatureAdvertised(c.advertised);
        EXPECT_EQ(c.text, EDCBXConfig().GetFeatureTlvAsString(feature));
    }
}

TEST(EDCBXConfigText, CommonLinesShowTheHeader)
{
    Feature feature(9, 200, 2);
    EXPECT_EQ(" Feature type = 9, Sub type = 200\n"
              " Operating Version = 255, Max Version = 255\n"
              " Enable = yes, Willing = yes, Error = no\n"
              " Customized Config = 00\n",
              EDCBXConfig().GetFeatureTlvAsString(feature));
    feature.SetOperVersion(1);
    feature.SetMaxVersion(16);
    feature.SetEnabled(false);
    feature.SetError(true);
    EXPECT_EQ(" Feature type = 9, Sub type = 200\n"
              " Operating Version = 1, Max Version = 16\n"
              " Enable = no, Willing = yes, Error = yes\n"
              " Customized Config = 00\n",
              EDCBXConfig().GetFeatureTlvAsString(feature));
    feature.SetWilling(false);
    feature.SetError(false);
    EXPECT_NE(std::string::npos,
              EDCBXConfig().GetFeatureTlvAsString(feature).find("\n Enable = no, Willing = no, Error = no\n"));
}

/// The lines after the three common ones.
static std::string PayloadText(unsigned char subType, Feature const& feature)
{
    EDCBXConfig config;
    config.SetSubType(subType);
    std::string text = config.GetFeatureTlvAsString(feature);
    for (int line = 0; line < 3; ++line) text.erase(0, text.find('\n') + 1);
    return text;
}

TEST(EDCBXConfigText, PayloadLinesGoByTypeAndTheSubTypeOfTheConfiguration)
{
    std::string const groups1_0 = " BWG Percentages = 0 0 0 100 0 0 0 0 \n"
                                  " Priority-0, BWG ID = 0, Strict Priority = 0, BW% = 0\n"
                                  " Priority-1, BWG ID = 1, Strict Priority = 0, BW% = 0\n"
                                  " Priority-2, BWG ID = 2, Strict Priority = 0, BW% = 0\n"
                                  " Priority-3, BWG ID = 3, Strict Priority = 0, BW% = 100\n"
                                  " Priority-4, BWG ID = 4, Strict Priority = 0, BW% = 0\n"
                                  " Priority-5, BWG ID = 5, Strict Priority = 0, BW% = 0\n"
                                  " Priority-6, BWG ID = 6, Strict Priority = 0, BW% = 0\n"
                                  " Priority-7, BWG ID = 7, Strict Priority = 0, BW% = 0\n";
    std::string const zeros = " Customized Config = " + std::string(124, '0') + "\n";
    struct {
        unsigned char type;
        unsigned char subType;
        std::string text;
    } const cases[] = {
        {0, 2, " Customized Config = 00\n"},
        {1, 1, " Customized Config = 00\n"},
        {2, 2, " PGID Map = 0001020304050607\n PG Percentage = 0 0 0 100 0 0 0 0 \n TCs supported = 8\n"},
        {2, 1, groups1_0},
        {3, 2, " PFC Priority Map = 0x08\n TCs supported = 8\n"},
        {3, 1, " PFC Priority Map = 0x08\n"},
        {3, 3, " PFC Priority Map = 0x08\n"},
        {4, 2, " Protocol-id = 0x8906\n Priority Map = 0x08\n"},
        {4, 1, zeros},
        {4, 3, zeros},
        {5, 2, " Protocol-id = 0xcbc\n Priority Map = 0x08\n"},
        {5, 1, " Priority Map = 0x08\n"},
        {5, 3, " Protocol-id = 0x0\n Priority Map = 0x00\n"}, // no accessor answers
        {6, 2, " Customized Config = 00\n"},
        {6, 1, " Logical link status = Up\n"},
        {6, 3, " Customized Config = 01\n"},
        {7, 1, " Customized Config = 00\n"},
        {255, 2, " Customized Config = 00\n"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << +c.type << " " << +c.subType);
        EXPECT_EQ(c.text, PayloadText(c.subType, Feature(c.type, 0, c.subType)));
    }
}

TEST(EDCBXConfigText, PayloadLinesShowTheValues)
{
    Feature groups(2);
    groups.SetDesiredCfg(Payload("0F 0E 0D 0C 0B 0A 09 08 00 01 02 0A 14 64 C8 FF 10"));
    EXPECT_EQ(" PGID Map = 0f0e0d0c0b0a0908\n PG Percentage = 0 1 2 10 20 100 200 255 \n TCs supported = 16\n",
              PayloadText(2, groups));

    Feature bandwidth(2, 0, 1);
    bandwidth.SetBWGPercentage(255, 7);
    bandwidth.SetBWGId(11, 7);
    bandwidth.SetBWGStrictPriority(static_cast<Feature::eStrictPriorities>(2), 7);
    bandwidth.SetBWPercentage(12, 7);
    std::string const text = PayloadText(1, bandwidth);
    EXPECT_EQ(0u, text.find(" BWG Percentages = 0 0 0 100 0 0 0 255 \n"));
    EXPECT_NE(std::string::npos, text.find("\n Priority-7, BWG ID = 11, Strict Priority = 2, BW% = 12\n"));

    Feature pfc(3);
    pfc.SetPFCPriorityMap(0xAB);
    pfc.SetPFCTcsSupported(255);
    EXPECT_EQ(" PFC Priority Map = 0xab\n TCs supported = 255\n", PayloadText(2, pfc));

    Feature link(6, 0, 1);
    link.SetLogicalLinkStatus(Feature::LOGICAL_LINK_DOWN);
    EXPECT_EQ(" Logical link status = Down\n", PayloadText(1, link));
    link.SetLogicalLinkStatus(static_cast<Feature::eLogicalLinkStatus>(2));
    EXPECT_EQ(" Logical link status = Up\n", PayloadText(1, link));
}

TEST(EDCBXConfigText, AShortPayloadShowsZerosOrFewerBytes)
{
    struct {
        unsigned char type;
        unsigned char subType;
        char const* payload;
        char const* text;
    } const cases[] = {
        {2, 2, "", " PGID Map = \n PG Percentage = 0 0 0 0 0 0 0 0 \n TCs supported = 0\n"},
        {2, 2, "01 02", " PGID Map = 0102\n PG Percentage = 0 0 0 0 0 0 0 0 \n TCs supported = 0\n"},
        {2, 2, "01 02 03 04 05 06 07 08 09 0A",
         " PGID Map = 0102030405060708\n PG Percentage = 9 10 0 0 0 0 0 0 \n TCs supported = 0\n"},
        {3, 2, "", " PFC Priority Map = 0x00\n TCs supported = 0\n"},
        {3, 2, "FF", " PFC Priority Map = 0xff\n TCs supported = 0\n"},
        {4, 2, "89", " Protocol-id = 0x0\n Priority Map = 0x00\n"},
        {5, 2, "0C BC", " Protocol-id = 0xcbc\n Priority Map = 0x00\n"},
        {5, 1, "", " Priority Map = 0x00\n"},
        {6, 1, "", " Logical link status = Down\n"},
        {6, 2, "", " Customized Config = \n"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << +c.type << " " << +c.subType << " " << c.payload);
        Feature feature(c.type, 0, c.subType);
        feature.SetDesiredCfg(Payload(c.payload));
        EXPECT_EQ(c.text, PayloadText(c.subType, feature));
    }

    Feature empty(2, 0, 1);
    empty.SetDesiredCfg(EBlob());
    std::string const text = PayloadText(1, empty);
    EXPECT_EQ(
        0u, text.find(" BWG Percentages = 0 0 0 0 0 0 0 0 \n Priority-0, BWG ID = 0, Strict Priority = 0, BW% = 0\n"));
}

TEST(EDCBXConfigText, TheConfigurationsSubTypeDecidesNotTheFeaturesOwn)
{
    // The payload of the other variant: its bytes show, its accessors answer their defaults.
    Feature const first(2, 0, 1);
    EXPECT_EQ(" PGID Map = 0000006400000000\n PG Percentage = 0 0 0 0 1 0 0 0 \n TCs supported = 0\n",
              PayloadText(2, first));
    EXPECT_EQ(" Customized Config = 890600000008\n", PayloadText(1, Feature(4)));
    EXPECT_EQ(" Priority Map = 0x00\n", PayloadText(1, Feature(5)));
    EXPECT_EQ(" Logical link status = Down\n", PayloadText(1, Feature(6)));
}

TEST(EDCBXConfigText, UsesNoGroupingOfDigits)
{
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    std::string const feature = PayloadText(2, Feature(4));
    EDCBXControlTlv control = SampleDCBXControl();
    control.SetDcbxAdvertiseType(Feature::ADVERTISED);
    std::string const numbers = control.GetDCBXControlTlvAsString();
    std::locale::global(before);
    EXPECT_EQ(" Protocol-id = 0x8906\n Priority Map = 0x08\n", feature);
    EXPECT_NE(std::string::npos, numbers.find("= 16909060\n"));
}
