#include "eInterfaceTLVBuilder.hpp"

#include "builtMessages.hpp"
#include "dcbxRecords.hpp"
#include "fibreChannelRecords.hpp"

#include <limits>

using namespace TLVIds::InterfaceTable;

using Protocol::EBytes;

// The TLVs of the records that an interface holds.

/// What a builder nests in the TLV that it makes of a record.
template <class Record>
static std::function<std::vector<BuiltTlv>(Record const&)> NestedBy(void (*append)(EBytes&, TLVIds::TLVId const&,
                                                                                   Record const&))
{
    return [append](Record const& record) { return Level(Level(Built(append, IFD_Name, record)).at(0).value); };
}
/// The same of a list of one element, in whose entry it stands.
template <class List>
static std::function<std::vector<BuiltTlv>(typename List::value_type const&)>
NestedInTheEntryBy(void (*append)(EBytes&, TLVIds::TLVId const&, List const&))
{
    return [append](typename List::value_type const& element) {
        std::vector<BuiltTlv> const entries = Level(Level(Built(append, IFD_Name, List{element})).at(0).value);
        EXPECT_EQ(1U, entries.size());
        return Level(entries.at(0).value);
    };
}
template <class Record>
static std::function<std::string(Record const&)> MessageBy(void (*append)(EBytes&, TLVIds::TLVId const&, Record const&))
{
    return [append](Record const& record) { return Built(append, IFD_Name, record); };
}

static EDHCPTLV Option(unsigned char type, char const* hex)
{
    return Tlv(type, Bytes(hex));
}

static std::string const kFFFE = U32(0xFFFFFFFE);
static std::string const kOne = Bytes("01 00 00 00 00 00 00 00"); // EUID(1)

// ---- DHCP -----------------------------------------------------------------------------------------------------------

TEST(InterfaceTLVBuilder, DHCPOptionsAreAListOfEntries)
{
    EXPECT_EQ(Golden("TLV.DHCP_CustomTLVList.hex"),
              Built(Protocol::AppendDHCPTLVListTLV, DHCP_CustomTLVList,
                    std::list<EDHCPTLV>{Option(43, "01 02 FF"), Option(0, ""), Option(255, "11 22 33 44 55")}));
    EXPECT_EQ(Bytes("00 00 00 36 00 00 00 00"),
              Built(Protocol::AppendDHCPTLVListTLV, DHCP_CustomTLVList, std::list<EDHCPTLV>()));
}

TEST(InterfaceTLVBuilder, DHCPPropertiesAreSentWithTheReleaseTimerUnderTheRenewId)
{
    EXPECT_EQ(Golden("TLV.IFD_DHCP.hex"),
              Built(Protocol::AppendDHCPTLV, IFD_DHCP, Read<EDHCPProperties>("EDHCPProperties.v3.hex")));
    EXPECT_EQ(Golden("TLV.IFD_DHCP.defaults.hex"), Built(Protocol::AppendDHCPTLV, IFD_DHCP, EDHCPProperties()));
    ExpectEachFieldSentAlone<EDHCPProperties>(
        NestedBy(Protocol::AppendDHCPTLV), EDHCPProperties(),
        {
            {DHCP_ClientId, "c", SETS(SetDHCPClientId("c"))},
            {DHCP_ServerId, U32(0x0A000009), SETS(SetDHCPServerId(EIPAddress("10.0.0.9")))},
            {DHCP_VendorId, "v", SETS(SetDHCPVendorId("v"))},
            {DHCP_RenewTimer, kFFFE, SETS(SetReleaseTimer(0xFFFFFFFE))},
            {DHCP_RetryCount, kFFFE, SETS(SetRetryCount(0xFFFFFFFE))},
            {DHCP_CustomTLVList, {}, SETS(SetDhcpCustomTLVs({Option(9, "09")}))},
        });
    ExpectNotSent<EDHCPProperties>(
        MessageBy(Protocol::AppendDHCPTLV), EDHCPProperties(),
        {SETS(SetDHCPRelayAgentIP(EIPAddress("10.0.0.9"))), SETS(SetDHCPRelayDestination(EIPAddress("10.0.0.9")))});
}

TEST(InterfaceTLVBuilder, DHCPv6PropertiesAreSent)
{
    EXPECT_EQ(Golden("TLV.IFD_DHCPv6.hex"),
              Built(Protocol::AppendDHCPv6TLV, IFD_DHCPv6, Read<EDHCPv6Properties>("EDHCPv6Properties.v2.hex")));
    EXPECT_EQ(Golden("TLV.IFD_DHCPv6.defaults.hex"), Built(Protocol::AppendDHCPv6TLV, IFD_DHCPv6, EDHCPv6Properties()));
    ExpectEachFieldSentAlone<EDHCPv6Properties>(
        NestedBy(Protocol::AppendDHCPv6TLV), EDHCPv6Properties(),
        {
            {DHCP_IAId, kFFFE, SETS(SetIAId(0xFFFFFFFE))},
            {DHCP_IAType, kFFFE, SETS(SetIAType(static_cast<EDHCPv6Properties::eIAType>(-2)))},
            {DHCPv6_RenewTimer, kFFFE, SETS(SetRenewTime(0xFFFFFFFE))},
            {DHCP_CustomTLVList, {}, SETS(SetDhcpv6CustomTLVs({Option(9, "09")}))},
        });
    ExpectNotSent<EDHCPv6Properties>(MessageBy(Protocol::AppendDHCPv6TLV), EDHCPv6Properties(),
                                     {SETS(SetDHCPv6RelayLinkAddress(EIPAddress("2001:db8::9"))),
                                      SETS(SetDHCPv6RelayDestination(EIPAddress("2001:db8::9")))});
}

// ---- Fibre Channel --------------------------------------------------------------------------------------------------

static ENSRegOption RegOption(unsigned short options, char const* rspnId = "", char const* rsnnNn = "",
                              char const* extra = "")
{
    ENSRegOption option;
    option.SetOptions(options);
    option.SetRspnIdName(rspnId);
    option.SetRsnnNnName(rsnnNn);
    option.SetExtraName(extra);
    return option;
}

TEST(InterfaceTLVBuilder, FCoEIsSent)
{
    EXPECT_EQ(Golden("TLV.IFD_FCoE.hex"),
              Built(Protocol::AppendFCoETLV, IFD_FCoE, Read<EFCoEConfig>("EFCoEConfig.v7.hex")));
    EXPECT_EQ(Golden("TLV.IFD_FCoE.defaults.hex"), Built(Protocol::AppendFCoETLV, IFD_FCoE, EFCoEConfig()));
    ExpectEachFieldSentAlone<EFCoEConfig>(
        NestedBy(Protocol::AppendFCoETLV), EFCoEConfig(),
        {
            {FCoE_SrcPortName, kOne, SETS(SetSrcPortWWN(EUID(1)))},
            {FCoE_SrcNodeName, kOne, SETS(SetSrcNodeWWN(EUID(1)))},
            {FCoE_B2BRxSize, kFFFE, SETS(SetB2BRxSize(0xFFFFFFFE))},
            {FCoE_SCREnabled, U32(1), SETS(SetSCREnabled(true))},
            {FCoE_NSRegEnabled, U32(1), SETS(SetNsRegistrationEnabled(true))},
            {FCoE_PLOGIEnabled, U32(1), SETS(SetPLOGIEnabled(true))},
            {FCoE_DestNodeId, kFFFE, SETS(SetDestNodeId(0xFFFFFFFE))},
            {FCoE_SrcOUI, kFFFE, SETS(SetSrcOUI(0xFFFFFFFE))},
            {FCoE_FIPEnabled, U32(0), SETS(SetFIPEnabled(false))},
            {FCoE_VlanDiscoveryEnabled, U32(1), SETS(SetVlanDiscoveryEnabled(true))},
            {FCoE_VlanDiscoveryUntagged, U32(0), SETS(SetVlanDiscoveryUntagged(false))},
            {FIP_KeepAliveEnabled, U32(0), SETS(SetKeepAliveEnabled(false))},
            {FCoE_MaxSize, U32(0xFFFF), SETS(SetMaxFCoESize(0xFFFF))},
            {FCoE_AddressMode, kFFFE, SETS(SetAddressMode(static_cast<EFCoEConfig::eAddressModes>(0xFFFFFFFE)))},
            {FCoE_VendorID, kOne, SETS(SetVendorID(EUID(1)))},
            {FCoE_VendorSpecificTLVs, {}, SETS(SetVendorSpecificTLVs({Option(9, "09")}))},
            {FCoE_NSRegOption, U32(0xFFFF), SETS(SetNSRegOption(RegOption(0xFFFF)))},
            {FCoE_NSRegOptionRspnIdName, "p", SETS(SetNSRegOption(RegOption(5, "p")))},
            {FCoE_NSRegOptionRsnnNnName, "n", SETS(SetNSRegOption(RegOption(5, "", "n")))},
            {FCoE_PLOGIDestinations, {}, SETS(SetPLOGIDestinations({SamplePLOGIDestination()}))},
            {FC_PRLIEnabled, U32(1), SETS(SetPRLIEnable(true))},
            {FC_AutoPLOGIEnabled, U32(1), SETS(SetAutoPLOGIEnable(true))},
            {FC_NameServeryQueryEnabled, U32(1), SETS(SetNSQueryEnable(true))},
            {FC_NSQuery, {}, SETS(SetFCNSQuery(SampleFCNSQuery()))},
            {FC_SCROption, kFFFE, SETS(SetFCSCROption(static_cast<EFCoEConfig::eSCROptions>(0xFFFFFFFE)))},
        });
    ExpectNotSent<EFCoEConfig>(MessageBy(Protocol::AppendFCoETLV), EFCoEConfig(),
                               {SETS(SetVnPortKeepAliveEnabled(false)), SETS(SetResetFIPDiscoveryEnabled(true)),
                                SETS(SetResetFIPDiscoveryNumberOfRetries(-9)),
                                SETS(SetNSRegOption(RegOption(5, "", "", "x")))});
}

TEST(InterfaceTLVBuilder, NPIVIsSentUnderItsOwnIdsAndWithTheConnectedInterface)
{
    EXPECT_EQ(Golden("TLV.IFD_NPIV.hex"),
              Built(Protocol::AppendNPIVTLV, IFD_NPIV, Read<ENPIVConfig>("ENPIVConfig.v4.hex")));
    ExpectEachFieldSentAlone<ENPIVConfig>(
        NestedBy(Protocol::AppendNPIVTLV), ENPIVConfig(),
        {
            {NPIV_SrcPortName, kOne, SETS(SetSrcPortWWN(EUID(1)))},
            {NPIV_SrcNodeName, kOne, SETS(SetSrcNodeWWN(EUID(1)))},
            {NPIV_B2BRxSize, kFFFE, SETS(SetB2BRxSize(0xFFFFFFFE))},
            {NPIV_SCREnabled, U32(1), SETS(SetSCREnabled(true))},
            {NPIV_NSRegEnabled, U32(1), SETS(SetNsRegistrationEnabled(true))},
            {NPIV_PLOGIEnabled, U32(1), SETS(SetPLOGIEnabled(true))},
            {NPIV_DestNodeId, kFFFE, SETS(SetDestNodeId(0xFFFFFFFE))},
            {NPIV_ConnectedViaId, U32(7) + U32(9), SETS(SetConnectedViaId({7, 9}))},
            {NPIV_NSRegOption, U32(0xFFFF), SETS(SetNSRegOption(RegOption(0xFFFF)))},
            {NPIV_NSRegOptionRspnIdName, "p", SETS(SetNSRegOption(RegOption(5, "p")))},
            {NPIV_NSRegOptionRsnnNnName, "n", SETS(SetNSRegOption(RegOption(5, "", "n")))},
            {NPIV_PLOGIDestinations, {}, SETS(SetPLOGIDestinations({SamplePLOGIDestination()}))},
            {NPIV_PRLIEnabled, U32(1), SETS(SetPRLIEnable(true))},
            {NPIV_AutoPLOGIEnabled, U32(1), SETS(SetAutoPLOGIEnable(true))},
            {NPIV_NameServeryQueryEnabled, U32(1), SETS(SetNSQueryEnable(true))},
            {NPIV_NSQuery, {}, SETS(SetFCNSQuery(SampleFCNSQuery()))},
            {NPIV_SCROption, kFFFE, SETS(SetFCSCROption(static_cast<ENPIVConfig::eSCROptions>(0xFFFFFFFE)))},
        });
    ExpectNotSent<ENPIVConfig>(
        MessageBy(Protocol::AppendNPIVTLV), ENPIVConfig(),
        {SETS(SetVnPortKeepAliveEnabled(false)), SETS(SetNSRegOption(RegOption(5, "", "", "x")))});
}

TEST(InterfaceTLVBuilder, PLOGIDestinationsAreSentWithTheIdsOfFCoE)
{
    EXPECT_EQ(Bytes("00 00 00 51 00 00 00 3C"
                    "  00 00 00 00 00 00 00 34"
                    "    00 00 00 00 00 00 00 04 00 00 00 01"
                    "    00 00 00 59 00 00 00 04 FF FF FF FE"
                    "    00 00 00 5A 00 00 00 04 00 01 02 03"
                    "    00 00 00 5B 00 00 00 08 44 33 22 11 80 43 01 50"),
              Built(Protocol::AppendPLOGIDestinationsTLV, FCoE_PLOGIDestinations,
                    std::vector<EPLOGIDestination>{SamplePLOGIDestination()}));
    EXPECT_EQ(Bytes("00 00 00 6A 00 00 00 00"),
              Built(Protocol::AppendPLOGIDestinationsTLV, NPIV_PLOGIDestinations, std::vector<EPLOGIDestination>()));
    ExpectEachFieldSentAlone<EPLOGIDestination>(NestedInTheEntryBy(Protocol::AppendPLOGIDestinationsTLV),
                                                EPLOGIDestination(),
                                                {
                                                    {FCoE_PLOGIDestination_Enable, U32(1), SETS(SetEnabled(true))},
                                                    {FCoE_PLOGIDestination_Mode, kFFFE, SETS(SetDestMode(-2))},
                                                    {FCoE_PLOGIDestination_Id, U32(1), SETS(SetDestNodeId(1))},
                                                    {FCoE_PLOGIDestination_WWPN, kOne, SETS(SetWWPN(EUID(1)))},
                                                });
}

TEST(InterfaceTLVBuilder, ANameServerQueryIsSentUnderTheIdsOfFCOrOfNPIV)
{
    EXPECT_EQ(Bytes("00 00 00 55 00 00 00 25"
                    "  00 00 00 00 00 00 00 04 00 00 01 12"
                    "  00 00 00 5D 00 00 00 04 FF FF FF FD"
                    "  00 00 00 5E 00 00 00 05 30 61 20 30 62"),
              Built(Protocol::AppendFCNSQueryTLV, FC_NSQuery, SampleFCNSQuery()));
    EXPECT_EQ(Bytes("00 00 00 6E 00 00 00 25"
                    "  00 00 00 00 00 00 00 04 00 00 01 12"
                    "  00 00 00 71 00 00 00 04 FF FF FF FD"
                    "  00 00 00 72 00 00 00 05 30 61 20 30 62"),
              Built(Protocol::AppendNPIVNSQueryTLV, NPIV_NSQuery, SampleFCNSQuery()));
    ExpectNotSent<EFCNSQuery>(MessageBy(Protocol::AppendFCNSQueryTLV), EFCNSQuery(), {SETS(SetFlag(true))});
    ExpectNotSent<EFCNSQuery>(MessageBy(Protocol::AppendNPIVNSQueryTLV), EFCNSQuery(), {SETS(SetFlag(true))});
}

// ---- PTP, LLDP, DCBX ------------------------------------------------------------------------------------------------

TEST(InterfaceTLVBuilder, PTPIsSentWithTheDelayMechanismBeforeTheReceiptTimeout)
{
    EXPECT_EQ(Golden("TLV.IFD_PTP.hex"), Built(Protocol::AppendPTPTLV, IFD_PTP, Read<EPTPConfig>("EPTPConfig.v3.hex")));
    ExpectEachFieldSentAlone<EPTPConfig>(
        NestedBy(Protocol::AppendPTPTLV), EPTPConfig(),
        {
            {PTP_ClockId, kOne, SETS(SetClockId(EUID(1)))},
            {PTP_PortNumber, U32(0xFFFE), SETS(SetPortNumber(0xFFFE))},
            {PTP_ClockClass, U32(0xFE), SETS(SetClockClass(0xFE))},
            {PTP_ClockAccuracy, U32(0xFE), SETS(SetClockAccuracy(0xFE))},
            {PTP_Priority1, U32(0xFE), SETS(SetPriority1(0xFE))},
            {PTP_Priority2, U32(0xFE), SETS(SetPriority2(0xFE))},
            {PTP_DomainNumber, U32(0xFE), SETS(SetDomainNumber(0xFE))},
            {PTP_AnnounceInterval, kFFFE, SETS(SetLogAnnounceInterval(-2))},
            {PTP_SyncInterval, kFFFE, SETS(SetLogSyncInterval(-2))},
            {PTP_DelayRequestInterval, kFFFE, SETS(SetLogDelayRequestInterval(-2))},
            {PTP_DelayMechanism, U32(0xFE), SETS(SetDelayMechanism(0xFE))},
            {PTP_AnnounceReceiptTimeout, U32(0xFE), SETS(SetAnnounceReceiptTimeout(0xFE))},
            {PTP_MasterSlaveFlag, U32(1), SETS(SetClockIsMaster(true))},
            {PTP_StartOffset, kFFFE, SETS(SetStartOffset(-2))},
            {PTP_PercentageBadTimestamp, U32(99), SETS(SetPercentageBadTimestamp(99))},
            {PTP_TimestampError, kFFFE, SETS(SetTimestampError(-2))},
            {PTP_PercentageBadCrc, U32(99), SETS(SetPercentageBadCrc(99))},
            {PTP_PercentageDropFollowUpMessages, U32(99), SETS(SetPercentageDropFollowUpMessages(99))},
            {PTP_PercentageDropDelayResponseMessages, U32(99), SETS(SetPercentageDropDelayResponseMessages(99))},
        });
}

TEST(InterfaceTLVBuilder, Of64BitPTPOffsetsTheLow32BitsAreSent)
{
    struct {
        long offset;
        unsigned int sent;
    } const cases[] = {
        {0x123456789ABCDEF0, 0x9ABCDEF0},
        {0x100000000, 0},
        {0xFFFFFFFF, 0xFFFFFFFF},
        {-0x100000001, 0xFFFFFFFF},
        {std::numeric_limits<long>::min(), 0},
        {std::numeric_limits<long>::max(), 0xFFFFFFFF},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.offset);
        EPTPConfig config;
        config.SetStartOffset(c.offset);
        config.SetTimestampError(c.offset);
        std::vector<BuiltTlv> const nested = NestedBy(Protocol::AppendPTPTLV)(config);
        EXPECT_EQ(U32(c.sent), nested.at(13).value);
        EXPECT_EQ(U32(c.sent), nested.at(15).value);
    }
}

TEST(InterfaceTLVBuilder, LLDPIsSentWithoutTheSubTypeOfTheChassis)
{
    EXPECT_EQ(Golden("TLV.IFD_LLDP.hex"),
              Built(Protocol::AppendLLDPTLV, IFD_LLDP, Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex")));
    ExpectEachFieldSentAlone<ELLDPConfig>(
        NestedBy(Protocol::AppendLLDPTLV), ELLDPConfig(),
        {
            {LLDP_ChassisId, Bytes("02 00 00 00 00 01"), SETS(SetChassisIdMac(EMACAddress("2:0:0:0:0:1")))},
            {LLDP_PortIdMac, Bytes("02 00 00 00 00 01"), SETS(SetPortIdMac(EMACAddress("2:0:0:0:0:1")))},
            {LLDP_PortIdInterfaceName, "i", SETS(SetPortIdInterfaceName("i"))},
            {LLDP_PortIdSubType, kFFFE, SETS(SetPortIdSubType(static_cast<ELLDPConfig::ePortIdSubTypes>(0xFFFFFFFE)))},
            {LLDP_HoldTime, U32(0xFFFE), SETS(SetHoldTime(0xFFFE))},
            {LLDP_TxInterval, U32(0xFFFE), SETS(SetTxInterval(0xFFFE))},
            {LLDP_TxDelay, U32(0xFFFE), SETS(SetTxDelay(0xFFFE))},
        });
    ExpectNotSent<ELLDPConfig>(MessageBy(Protocol::AppendLLDPTLV), ELLDPConfig(),
                               {SETS(SetChassisIdInterfaceName("c")),
                                SETS(SetChassisIdSubType(ELLDPConfig::CHASSIS_ID_COMPONENT)),
                                SETS(SetFastInitEnabled(false)), SETS(SetTimeToLive(9)), SETS(SetPeerStatus(9))});
}

TEST(InterfaceTLVBuilder, OfDCBXTheFeaturesAloneAreSent)
{
    EXPECT_EQ(Golden("TLV.IFD_DCBX.hex"),
              Built(Protocol::AppendDCBXTLV, IFD_DCBX, Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex")));
    EXPECT_EQ(Bytes("00 00 00 23 00 00 00 08 00 00 00 00 00 00 00 00"),
              Built(Protocol::AppendDCBXTLV, IFD_DCBX, EDCBXConfig()));
    ExpectNotSent<EDCBXConfig>(MessageBy(Protocol::AppendDCBXTLV), EDCBXConfig(),
                               {SETS(SetControlTlv(SampleDCBXControl())), SETS(SetOUI(9)), SETS(SetSubType(1))});
}

TEST(InterfaceTLVBuilder, DCBXFeaturesAreAListOfEntries)
{
    EXPECT_EQ(Golden("TLV.IFD_DCBX.hex").substr(8 + 4),
              Built(Protocol::AppendDCBXFeatureTlvListTLV, DCBX_FeatureTlvList,
                    Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex").GetFeatureTlvs())
                  .substr(4)); // inside of IFD_DCBX its id is cleared
    EXPECT_EQ(Bytes("00 00 00 8F 00 00 00 00"),
              Built(Protocol::AppendDCBXFeatureTlvListTLV, DCBX_FeatureTlvList, std::vector<EDCBXFeatureTlv>()));
    ExpectEachFieldSentAlone<EDCBXFeatureTlv>(
        NestedInTheEntryBy(Protocol::AppendDCBXFeatureTlvListTLV), EDCBXFeatureTlv(),
        {
            {DCBX_FeatureTlv_Type, U32(0xFE), SETS(SetType(0xFE))},
            {DCBX_FeatureTlv_Length, U32(0xFFFE), SETS(SetLength(0xFFFE))},
            {DCBX_FeatureTlv_OperVersion, U32(0xFE), SETS(SetOperVersion(0xFE))},
            {DCBX_FeatureTlv_MaxVersion, U32(0xFE), SETS(SetMaxVersion(0xFE))},
            {DCBX_FeatureTlv_Enable, U32(0), SETS(SetEnabled(false))},
            {DCBX_FeatureTlv_Willing, U32(0), SETS(SetWilling(false))},
            {DCBX_FeatureTlv_SubType, U32(0xFE), SETS(SetSubType(0xFE))},
            {DCBX_FeatureTlv_OperVersionEnabled, U32(1), SETS(SetOverrideOperVersion(true))},
            {DCBX_FeatureTlv_Value, Bytes("A1 A2 A3 A4 A5"), SETS(SetDesiredCfg(Payload("A1 A2 A3 A4 A5")))},
        });
    using Features = std::vector<EDCBXFeatureTlv>;
    ExpectNotSent<EDCBXFeatureTlv>(
        [](EDCBXFeatureTlv const& feature) {
            return Built(Protocol::AppendDCBXFeatureTlvListTLV, DCBX_FeatureTlvList, Features{feature});
        },
        EDCBXFeatureTlv(),
        {SETS(SetInstanceKey(9)), SETS(SetError(true)), SETS(SetMismatch(true)),
         SETS(SetDcbxAdvertiseType(EDCBXFeatureTlv::PEER_SHUT_DOWN)), SETS(SetFeatureAdvertised(false)),
         SETS(SetDcbxState(EDCBXFeatureTlv::STATE_F_WAIT))});
}
