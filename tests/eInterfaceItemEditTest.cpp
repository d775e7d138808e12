// The edits of an interface by sub-id.
#include "eInterfaceItem.hpp"

#include "interfaceSamples.hpp"
#include "recordCases.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

#include <set>

/// One field: what the archive holds, what the edit announces and changes, and a value that does not fit the type read.
struct FieldCase {
    unsigned int subId;
    char const* hex;
    char const* operation; // empty: silent
    char const* announced;
    std::string (*get)(EInterfaceItem const&);
    char const* after;
    char const* unfit; // the archive's error
};

// 2^32 fits no 32-bit number, 2 no bool, 3 bytes no MAC address; ids and texts are longer than what remains.
static char const* const kTooWide = "FC 01 00 00 00 00";
static FieldCase const kFields[] = {
    {2, "FB DE AD BE EF", "SettingInterfacePPPHandle", "3735928559", Shown<&EInterfaceItem::GetPPPHandle>, "3735928559",
     kTooWide},
    {3, "FB FF FF FF FF", "SettingInterfacePPPSession", "4294967295", Shown<&EInterfaceItem::GetPPPSession>,
     "4294967295", kTooWide},
    {4, "03 07 01 03", "SettingInterfaceConnectedViaId", "7.1.3", Shown<&EInterfaceItem::GetConnectedViaId>, "7.1.3",
     "03 07 01"},
    {5, "FF 01 02 03 04 05 06 07 08", "SettingInterfaceUid", "01:02:03:04:05:06:07:08", Shown<&EInterfaceItem::GetEUID>,
     "01:02:03:04:05:06:07:08", "FF 01 02"},
    {7, "F8 00 5E 00 53 01", "SettingInterfaceMac", "f8:00:5e:00:53:01", Shown<&EInterfaceItem::GetMacAddress>,
     "f8:00:5e:00:53:01", "F8 00 5E"},
    {8, "01", "", "", Shown<&EInterfaceItem::OverrideAutogenEuid>, "true", "02"},
    {10, "FB FF FF FF FF", "SettingInterfaceVPI", "4294967295", Shown<&EInterfaceItem::GetVPI>, "4294967295", kTooWide},
    {11, "FB FF FF FF FE", "SettingInterfaceVCI", "4294967294", Shown<&EInterfaceItem::GetVCI>, "4294967294", kTooWide},
    {12, "0F", "SettingInterfaceATMEncapsulation", "15", Shown<&EInterfaceItem::GetEncapsulation>, "15", kTooWide},
    {12, "FB FF FF FF FF", "SettingInterfaceATMEncapsulation", "-1", Shown<&EInterfaceItem::GetEncapsulation>,
     "4294967295", kTooWide},
    {13, "F9 01 00", "SettingInterfaceATMMode", "256", Shown<&EInterfaceItem::GetATMMode>, "256", kTooWide},
    {14, "04 65 74 68 37", "SettingInterfaceName", "eth7", Shown<&EInterfaceItem::GetName>, "eth7", "05 65 74 68 37"},
    {14, "00", "SettingInterfaceName", "", Shown<&EInterfaceItem::GetName>, "", "01"},
    {15, "FB FF FF FF FF", "SettingInterfaceMTU", "4294967295", Shown<&EInterfaceItem::GetMTU>, "4294967295", kTooWide},
    {16, "06", "SettingInterfaceType", "6", Shown<&EInterfaceItem::GetType>, "6", kTooWide},
    {16, "FB FF FF FF FE", "SettingInterfaceType", "-2", Shown<&EInterfaceItem::GetType>, "-2", kTooWide},
    {17, "03 07 01 02", "SettingInterfaceGreSourceIp", "7.1.2", Shown<&EInterfaceItem::GetGreSourceIp>, "7.1.2",
     "03 07 01"},
    {18, "11 C0 00 02 09", "SettingInterfaceGreDestIp", "192.0.2.9", Shown<&EInterfaceItem::GetGreDestIp>, "192.0.2.9",
     "13 00 00 00 00"},
    {19, "01", "SettingInterfaceGreUseChecksum", "true", Shown<&EInterfaceItem::GetGreUseChecksum>, "true", "02"},
    {20, "01", "SettingInterfaceGreUseSequence", "true", Shown<&EInterfaceItem::GetGreUseSequence>, "true", "02"},
    {21, "01", "SettingInterfaceGreUseKey", "true", Shown<&EInterfaceItem::GetGreUseKey>, "true", "02"},
    {22, "FB FF FF FF FE", "SettingInterfaceGreInKey", "4294967294", Shown<&EInterfaceItem::GetGreInKey>, "4294967294",
     kTooWide},
    {23, "FB FF FF FF FD", "SettingInterfaceGreOutKey", "4294967293", Shown<&EInterfaceItem::GetGreOutKey>,
     "4294967293", kTooWide},
    {25, "01", "EnablingDhcpItem", "", Shown<&EInterfaceItem::IsDHCPEnabled>, "true", "02"},
    {25, "00", "", "", Shown<&EInterfaceItem::IsDHCPEnabled>, "false", "02"},
    {27, "01", "EnablingDhcpv6Item", "", Shown<&EInterfaceItem::IsDHCPv6Enabled>, "true", "02"},
    {28, "FB FF FF FF FF", "SettingVcatCircuitId", "4294967295", Shown<&EInterfaceItem::GetVcatCircuitId>, "4294967295",
     kTooWide},
    {29, "12 20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01", "SettingIPv6Gateway", "2001:db8::1",
     Shown<&EInterfaceItem::GetIPv6Gateway>, "2001:db8::1", "12 20 01"},
    {30, "01", "EnablingFCoEItem", "", Shown<&EInterfaceItem::IsFCoEEnabled>, "true", "02"},
    {33, "01", "EnablingPTPItem", "", Shown<&EInterfaceItem::IsPTPEnabled>, "true", "02"},
    {33, "00", "", "", Shown<&EInterfaceItem::IsPTPEnabled>, "false", "02"},
    {35, "01", "EnablingDCBXItem", "", Shown<&EInterfaceItem::IsDCBXEnabled>, "true", "02"},
    {37, "01", "EnablingLLDPItem", "", Shown<&EInterfaceItem::IsLLDPEnabled>, "true", "02"},
};

static std::vector<std::string> Heard(char const* operation)
{
    return *operation ? std::vector<std::string>{operation} : std::vector<std::string>{};
}

TEST(EInterfaceItemEdit, AFieldIsReadAndHandedToItsSetter)
{
    for (FieldCase const& c : kFields) {
        for (std::vector<unsigned int> const& subId :
             std::vector<std::vector<unsigned int>>{{c.subId}, {c.subId, 99}}) {
            SCOPED_TRACE(std::to_string(c.subId) + " " + c.hex);
            RecordedInterface in;
            EXPECT_TRUE(Edit(in.interface, subId, Bytes(c.hex)));
            ASSERT_EQ(Heard(c.operation), in.recorder->Operations());
            if (*c.operation) {
                EXPECT_EQ(c.announced, in.recorder->calls[0].values);
            }
            EXPECT_EQ(c.after, c.get(in.interface));
        }
    }
}

TEST(EInterfaceItemEdit, AValueThatDoesNotFitTheTypeReadIsTheArchivesErrorAndChangesNothing)
{
    for (FieldCase const& c : kFields) {
        SCOPED_TRACE(std::to_string(c.subId) + " " + c.unfit);
        RecordedInterface in;
        std::string const before = Written(in.interface);
        EXPECT_THROW(Edit(in.interface, {c.subId}, Bytes(c.unfit)), EArchiveError);
        EXPECT_TRUE(in.recorder->calls.empty());
        EXPECT_EQ(before, Written(in.interface));
    }
}

TEST(EInterfaceItemEdit, TheOverrideOfTheEUIDIsStoredAsTheOppositeOfUidFromMac)
{
    EInterfaceItem item;
    EXPECT_TRUE(Edit(item, {8}, Bytes("01")));
    ASSERT_NE(nullptr, item.GetEthernetData());
    EXPECT_FALSE(item.GetEthernetData()->UidFromMac());
    EXPECT_TRUE(Edit(item, {8}, Bytes("00")));
    EXPECT_TRUE(item.GetEthernetData()->UidFromMac());
}

TEST(EInterfaceItemEdit, TheVLANStackIsAcceptedOnlyAtTheEndOfTheRange)
{
    std::string const bytes = Bytes("01 02 F9 B0 0A 64");
    RecordedInterface in;
    EXPECT_TRUE(Edit(in.interface, {9}, bytes));
    ASSERT_EQ(std::vector<std::string>{"SettingInterfaceVlan"}, in.recorder->Operations());
    EXPECT_EQ("on[45066 100]", in.recorder->calls[0].values);
    EXPECT_EQ("on[45066 100]", TextOf(in.interface.GetVLANItem()));

    RecordedInterface refused;
    EArchive archive;
    Load(archive, bytes);
    EXPECT_FALSE(Edit(refused.interface, {9, 1}, archive));
    EXPECT_EQ(0U, archive.GetOffset());
    EXPECT_TRUE(refused.recorder->calls.empty());
    EXPECT_EQ(nullptr, refused.interface.GetEthernetData());
}

/// A contained record, and what its last bytes are compared with.
struct RecordCase {
    unsigned int subId;
    char const* golden;
    char const* operation;
    void const* (*record)(EInterfaceItem const&);
    std::string (*written)(EInterfaceItem const&);
    bool onDemand;
    // an edit deeper down
    unsigned int deeperSubId;
    char const* deeperHex;
    char const* deeperOperation;
    char const* deeperAnnounced;
    unsigned int refusedSubId; // the record has no such field
};

#define BY_VALUE(getter)                                                                                               \
    [](EInterfaceItem const& item) -> void const* { return &item.getter(); },                                          \
        [](EInterfaceItem const& item) { return Written(item.getter()); }, false
#define ON_DEMAND(getter)                                                                                              \
    [](EInterfaceItem const& item) -> void const* { return item.getter(); },                                           \
        [](EInterfaceItem const& item) { return Written(*item.getter()); }, true

static RecordCase const kRecords[] = {
    {6, "EIPv4AddressItem.v3.hex", "SettingIPv4AddressItem", BY_VALUE(GetIPv4AddressItem), 1, "11 0A 00 00 FE",
     "SettingIPv4Gateway", "10.0.0.254", 5},
    {24, "EDHCPProperties.v3.hex", "SettingDhcpProperties", BY_VALUE(GetDHCPProperties), 8, "00",
     "SettingDhcpRetryCount", "1", 9},
    {26, "EDHCPv6Properties.v2.hex", "SettingDhcpv6Properties", BY_VALUE(GetDHCPv6Properties), 3, "21",
     "SettingDhcpv6RenewTime", "33", 7},
    {31, "EFCoEConfig.v7.hex", "SettingFCoEConfig", BY_VALUE(GetFCoEConfig), 3, "F9 08 00", "SettingFCoEB2BRxSize",
     "2048", 28},
    {32, "ENPIVConfig.v4.hex", "SettingNPIVConfig", ON_DEMAND(GetNPIVConfigReadOnly), 3, "F9 08 00",
     "SettingNPIVB2BRxSize", "2048", 17},
    {34, "EPTPConfig.v3.hex", "SettingPTPConfig", ON_DEMAND(GetPTPConfigReadOnly), 5, "80", "SettingPTPPriority1",
     "128", 12},
    {36, "EDCBXConfig.v0128200A.hex", "SettingDCBXConfig", ON_DEMAND(GetDCBXConfigReadOnly), 2, "FA AA BB CC",
     "SettingDCBXOUI", "11189196", 7},
    {38, "ELLDPConfig.v0127200B.hex", "SettingLLDPConfig", ON_DEMAND(GetLLDPConfigReadOnly), 3, "0A",
     "SettingLLDPHoldTime", "10", 7},
};

TEST(EInterfaceItemEdit, AContainedRecordIsReplacedWholeAtTheEndOfTheRange)
{
    for (RecordCase const& c : kRecords) {
        SCOPED_TRACE(c.subId);
        RecordedInterface in;
        EXPECT_TRUE(Edit(in.interface, {c.subId}, Golden(c.golden)));
        ASSERT_EQ(std::vector<std::string>{c.operation}, in.recorder->Operations());
        EXPECT_EQ(c.record(in.interface), in.recorder->calls[0].record);
        EXPECT_EQ(Golden(c.golden), c.written(in.interface));
        ExpectHoldsItsRecords(in.interface);

        // Read into a fresh record: what is appended on reading is not there twice.
        EXPECT_TRUE(Edit(in.interface, {c.subId}, Golden(c.golden)));
        EXPECT_EQ(Golden(c.golden), c.written(in.interface));
    }
}

TEST(EInterfaceItemEdit, AContainedRecordIsEditedByTheRestOfTheRange)
{
    for (RecordCase const& c : kRecords) {
        SCOPED_TRACE(c.subId);
        RecordedInterface in;
        EXPECT_TRUE(Edit(in.interface, {c.subId, c.deeperSubId}, Bytes(c.deeperHex)));
        ASSERT_EQ(std::vector<std::string>{c.deeperOperation}, in.recorder->Operations());
        EXPECT_EQ(c.record(in.interface), in.recorder->calls[0].record);
        EXPECT_EQ(c.deeperAnnounced, in.recorder->calls[0].values);
        EXPECT_EQ(c.onDemand ? 1 : 0, CountOnDemand(in.interface));
        ExpectHoldsItsRecords(in.interface);
    }
}

TEST(EInterfaceItemEdit, ARefusedDeeperEditReadsNothingButLeavesARecordCreatedOnDemand)
{
    for (RecordCase const& c : kRecords) {
        for (unsigned int const deeper : {0U, c.refusedSubId}) {
            SCOPED_TRACE(std::to_string(c.subId) + "." + std::to_string(deeper));
            RecordedInterface in;
            EArchive archive;
            Load(archive, Bytes(c.deeperHex));
            EXPECT_FALSE(Edit(in.interface, {c.subId, deeper}, archive));
            EXPECT_EQ(0U, archive.GetOffset());
            EXPECT_TRUE(in.recorder->calls.empty());
            EXPECT_EQ(c.onDemand ? 1 : 0, CountOnDemand(in.interface)); // on purpose before the record is asked
            EXPECT_EQ(c.onDemand, c.onDemand && c.record(in.interface) != nullptr);
        }
    }
}

TEST(EInterfaceItemEdit, OtherSubIdsAndAnEmptyRangeAreRefusedWithNothingRead)
{
    for (std::vector<unsigned int> const& subId : std::vector<std::vector<unsigned int>>{
             {}, {0}, {0, 2}, {1}, {1, 1}, {39}, {40}, {39, 1}, {100}, {0x80000002}, {0xFFFFFFFF}}) {
        SCOPED_TRACE(subId.empty() ? "empty" : std::to_string(subId[0]));
        RecordedInterface in;
        std::string const before = Written(in.interface);
        EArchive archive;
        Load(archive, Bytes("01"));
        EXPECT_FALSE(Edit(in.interface, subId, archive));
        EXPECT_EQ(0U, archive.GetOffset());
        EXPECT_TRUE(in.recorder->calls.empty());
        EXPECT_EQ(before, Written(in.interface));
    }
}

TEST(EInterfaceItemEdit, TheTablesOfTheseTestsNameEverySubIdFrom2To38)
{
    std::set<unsigned int> tested = {9};
    for (FieldCase const& c : kFields) tested.insert(c.subId);
    for (RecordCase const& c : kRecords) tested.insert(c.subId);
    std::set<unsigned int> all;
    for (unsigned int subId = 2; subId <= 38; ++subId) all.insert(subId);
    EXPECT_EQ(all, tested);
}
