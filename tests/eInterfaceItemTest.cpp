#include "eInterfaceItem.hpp"

#include "interfaceSamples.hpp"
#include "recordCases.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

static EInterfaceTypeEnum Type(int type)
{
    return static_cast<EInterfaceTypeEnum>(type);
}
static std::string IdOf(EInterfaceItem const& item)
{
    EComponentId id({9, 9}); // replaced, not added to
    item.GetID(id);
    return TextOf(id);
}

TEST(EInterfaceItem, StartsWithItsDefaults)
{
    EInterfaceItem const item;
    EXPECT_EQ(kFreshSummary, Summary(item));
    EXPECT_EQ(nullptr, item.GetParent());
    EXPECT_EQ(0, CountOnDemand(item));
    for (bool const enabled : {item.IsEnabled(), item.IsDHCPEnabled(), item.IsDHCPv6Enabled(), item.IsFCoEEnabled(),
                               item.IsPTPEnabled(), item.IsDCBXEnabled(), item.IsLLDPEnabled()})
        EXPECT_FALSE(enabled);
    EXPECT_EQ(0U, item.GetVcatCircuitId());
    EXPECT_EQ(EIPAddress::kIPv6, item.GetIPv6Gateway().GetFamily());
    EXPECT_TRUE(item.GetIPv6Gateway().IsZero());
    EXPECT_EQ(0U, item.GetIPv6AddressItemList().GetCount());
    EXPECT_FALSE(item.GetIPv4AddressItem() != EIPv4AddressItem());
    EXPECT_FALSE(item.GetDHCPProperties() != EDHCPProperties());
    EXPECT_FALSE(item.GetDHCPv6Properties() != EDHCPv6Properties());
    EXPECT_FALSE(item.GetFCoEConfig() != EFCoEConfig());
    ExpectHoldsItsRecords(item);
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&item.GetHooks()));
}

TEST(EInterfaceItem, GettersOfAbsentDataAnswerDefaultsAndCreateNothing)
{
    EInterfaceItem const item;
    struct {
        char const* name;
        std::string (*get)(EInterfaceItem const&);
        char const* value;
    } const cases[] = {
        {"MAC address", Shown<&EInterfaceItem::GetMacAddress>, "00:00:00:00:00:00"},
        {"VLANs", Shown<&EInterfaceItem::GetVLANItem>, "off[]"},
        {"MTU", Shown<&EInterfaceItem::GetMTU>, "1500"},
        {"EUID override", Shown<&EInterfaceItem::OverrideAutogenEuid>, "false"},
        {"ATM encapsulation", Shown<&EInterfaceItem::GetEncapsulation>, "0"},
        {"ATM mode", Shown<&EInterfaceItem::GetATMMode>, "0"},
        {"VPI", Shown<&EInterfaceItem::GetVPI>, "0"},
        {"VCI", Shown<&EInterfaceItem::GetVCI>, "0"},
        {"PPP handle", Shown<&EInterfaceItem::GetPPPHandle>, "0"},
        {"PPP session", Shown<&EInterfaceItem::GetPPPSession>, "0"},
        {"GRE source", Shown<&EInterfaceItem::GetGreSourceIp>, ""},
        {"GRE destination", Shown<&EInterfaceItem::GetGreDestIp>, "0.0.0.0"},
        {"GRE checksum", Shown<&EInterfaceItem::GetGreUseChecksum>, "false"},
        {"GRE sequence", Shown<&EInterfaceItem::GetGreUseSequence>, "false"},
        {"GRE key", Shown<&EInterfaceItem::GetGreUseKey>, "false"},
        {"GRE in key", Shown<&EInterfaceItem::GetGreInKey>, "0"},
        {"GRE out key", Shown<&EInterfaceItem::GetGreOutKey>, "0"},
        {"connected via", Shown<&EInterfaceItem::GetConnectedViaId>, ""},
        {"NPIV port WWN", Shown<&EInterfaceItem::GetNPIVSrcPortWWN>, "00:00:00:00:00:00:00:00"},
        {"NPIV node WWN", Shown<&EInterfaceItem::GetNPIVSrcNodeWWN>, "00:00:00:00:00:00:00:00"},
        {"NPIV B2B size", Shown<&EInterfaceItem::GetNPIVB2BRxSize>, "2112"},
        {"NPIV SCR", Shown<&EInterfaceItem::IsNPIVSCREnabled>, "false"},
        {"NPIV NS registration", Shown<&EInterfaceItem::IsNPIVNSRegistrationEnabled>, "false"},
        {"NPIV keep-alive", Shown<&EInterfaceItem::IsNPIVVnPortKeepAliveEnabled>, "true"},
        {"NPIV PLOGI", Shown<&EInterfaceItem::IsNPIVPLOGIEnabled>, "false"},
        {"NPIV destination", Shown<&EInterfaceItem::GetNPIVDestNodeId>, "112233"},
        {"NPIV connected via", Shown<&EInterfaceItem::GetNPIVConnectedViaId>, ""},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.value, c.get(item));
        EXPECT_EQ(0, CountOnDemand(item));
    }
    EXPECT_EQ(EIPAddress::kIPv4, item.GetGreDestIp().GetFamily());
}

TEST(EInterfaceItem, GettersOfAbsentDataAnswerByReferenceToSomethingThatOutlivesTheInterface)
{
    auto fleeting = std::make_unique<EInterfaceItem>();
    EMACAddress const& mac = fleeting->GetMacAddress();
    EVLANIPAddressTableItemProperties const& vlans = fleeting->GetVLANItem();
    EComponentId const& source = fleeting->GetGreSourceIp();
    EIPAddress const& destination = fleeting->GetGreDestIp();
    EComponentId const& via = fleeting->GetConnectedViaId();
    EUID const& wwn = fleeting->GetNPIVSrcPortWWN();
    fleeting.reset();
    EInterfaceItem const other;
    EXPECT_EQ(&mac, &other.GetMacAddress());
    EXPECT_EQ(&vlans, &other.GetVLANItem());
    EXPECT_EQ(&source, &other.GetGreSourceIp());
    EXPECT_EQ(&destination, &other.GetGreDestIp());
    EXPECT_EQ(&via, &other.GetConnectedViaId());
    EXPECT_EQ(&wwn, &other.GetNPIVSrcPortWWN());
}

TEST(EInterfaceItem, NPIVGettersReadTheRecordWhenThereIsOne)
{
    EInterfaceItem item;
    item.SetNPIVConfig(Read<ENPIVConfig>("ENPIVConfig.v4.hex"));
    EXPECT_EQ("21:00:00:1b:32:00:00:01", TextOf(item.GetNPIVSrcPortWWN()));
    EXPECT_EQ("20:00:00:1b:32:00:00:02", TextOf(item.GetNPIVSrcNodeWWN()));
    EXPECT_EQ(2048U, item.GetNPIVB2BRxSize());
    EXPECT_TRUE(item.IsNPIVSCREnabled());
    EXPECT_TRUE(item.IsNPIVNSRegistrationEnabled());
    EXPECT_FALSE(item.IsNPIVVnPortKeepAliveEnabled());
    EXPECT_TRUE(item.IsNPIVPLOGIEnabled());
    EXPECT_EQ(0xFFFFFCU, item.GetNPIVDestNodeId());
    EXPECT_EQ("7.1.258", TextOf(item.GetNPIVConnectedViaId()));
}

// The setters

static std::vector<SetterCase<EInterfaceItem>> Setters()
{
    return {
        {"EnablingInterfaceItem", "", [](EInterfaceItem& item) { item.SetEnabled(true); },
         Shown<&EInterfaceItem::IsEnabled>, "false", "true"},
        {"SettingInterfaceUid", "00:00:00:00:00:00:01:02", [](EInterfaceItem& item) { item.SetEUID(EUID(0x102UL)); },
         Shown<&EInterfaceItem::GetEUID>, "00:00:00:00:00:00:00:00", "00:00:00:00:00:00:01:02"},
        {"SettingInterfaceName", "eth7", [](EInterfaceItem& item) { item.SetName("eth7"); },
         Shown<&EInterfaceItem::GetName>, "", "eth7"},
        {"SettingInterfaceType", "6", [](EInterfaceItem& item) { item.SetType(INTERFACE_TYPE_NPIV); },
         Shown<&EInterfaceItem::GetType>, "0", "6"},
        {"SettingInterfaceType", "-7", [](EInterfaceItem& item) { item.SetType(Type(-7)); },
         Shown<&EInterfaceItem::GetType>, "0", "-7"},
        {"SettingInterfaceType", "0", [](EInterfaceItem& item) { item.SetType(Type(0)); },
         Shown<&EInterfaceItem::GetType>, "0", "0"},
        {"SettingVcatCircuitId", "9", [](EInterfaceItem& item) { item.SetVcatCircuitId(9); },
         Shown<&EInterfaceItem::GetVcatCircuitId>, "0", "9"},
        {"SettingIPv6Gateway", "fe80::1", [](EInterfaceItem& item) { item.SetIPv6Gateway(EIPAddress("fe80::1")); },
         Shown<&EInterfaceItem::GetIPv6Gateway>, "::", "fe80::1"},
        {"SettingIPv6Gateway", "10.0.0.1", // any family
         [](EInterfaceItem& item) { item.SetIPv6Gateway(EIPAddress("10.0.0.1")); },
         Shown<&EInterfaceItem::GetIPv6Gateway>, "::", "10.0.0.1"},
        {"SettingInterfaceMac", "02:00:00:00:00:01",
         [](EInterfaceItem& item) { item.SetMacAddress(EMACAddress("02:00:00:00:00:01")); },
         Shown<&EInterfaceItem::GetMacAddress>, "00:00:00:00:00:00", "02:00:00:00:00:01"},
        {"SettingInterfaceVlan", "on[45066 100]", [](EInterfaceItem& item) { item.SetVLANItem(SampleVLANs()); },
         Shown<&EInterfaceItem::GetVLANItem>, "off[]", "on[45066 100]"},
        {"SettingInterfaceMTU", "9000", [](EInterfaceItem& item) { item.SetMTU(9000); }, Shown<&EInterfaceItem::GetMTU>,
         "1500", "9000"},
        {"SettingInterfaceATMEncapsulation", "7",
         [](EInterfaceItem& item) { item.SetEncapsulation(ATM_ENCAPSULATION_LLCB_ETH_FCS); },
         Shown<&EInterfaceItem::GetEncapsulation>, "0", "7"},
        {"SettingInterfaceATMMode", "2", [](EInterfaceItem& item) { item.SetATMMode(static_cast<EAtmModeEnum>(2)); },
         Shown<&EInterfaceItem::GetATMMode>, "0", "2"},
        {"SettingInterfaceVPI", "8", [](EInterfaceItem& item) { item.SetVPI(8); }, Shown<&EInterfaceItem::GetVPI>, "0",
         "8"},
        {"SettingInterfaceVCI", "35", [](EInterfaceItem& item) { item.SetVCI(35); }, Shown<&EInterfaceItem::GetVCI>,
         "0", "35"},
        {"SettingInterfacePPPHandle", "21", [](EInterfaceItem& item) { item.SetPPPHandle(21); },
         Shown<&EInterfaceItem::GetPPPHandle>, "0", "21"},
        {"SettingInterfacePPPSession", "22", [](EInterfaceItem& item) { item.SetPPPSession(22); },
         Shown<&EInterfaceItem::GetPPPSession>, "0", "22"},
        {"SettingInterfaceGreSourceIp", "7.1.2",
         [](EInterfaceItem& item) {
             item.SetGreSourceIp({7, 1, 2});
         },
         Shown<&EInterfaceItem::GetGreSourceIp>, "", "7.1.2"},
        {"SettingInterfaceGreDestIp", "192.0.2.9",
         [](EInterfaceItem& item) { item.SetGreDestIp(EIPAddress("192.0.2.9")); }, Shown<&EInterfaceItem::GetGreDestIp>,
         "0.0.0.0", "192.0.2.9"},
        {"SettingInterfaceGreUseChecksum", "true", [](EInterfaceItem& item) { item.SetGreUseChecksum(true); },
         Shown<&EInterfaceItem::GetGreUseChecksum>, "false", "true"},
        {"SettingInterfaceGreUseSequence", "true", [](EInterfaceItem& item) { item.SetGreUseSequence(true); },
         Shown<&EInterfaceItem::GetGreUseSequence>, "false", "true"},
        {"SettingInterfaceGreUseKey", "true", [](EInterfaceItem& item) { item.SetGreUseKey(true); },
         Shown<&EInterfaceItem::GetGreUseKey>, "false", "true"},
        {"SettingInterfaceGreInKey", "1", [](EInterfaceItem& item) { item.SetGreInKey(1); },
         Shown<&EInterfaceItem::GetGreInKey>, "0", "1"},
        {"SettingInterfaceGreOutKey", "2", [](EInterfaceItem& item) { item.SetGreOutKey(2); },
         Shown<&EInterfaceItem::GetGreOutKey>, "0", "2"},
        {"SettingInterfaceConnectedViaId", "7.1.3",
         [](EInterfaceItem& item) {
             item.SetConnectedViaId({7, 1, 3});
         },
         Shown<&EInterfaceItem::GetConnectedViaId>, "", "7.1.3"},
    };
}

TEST(EInterfaceItem, EverySetterAnnouncesOnceAndThenStores)
{
    for (auto const& c : Setters()) {
        RecordedInterface in;
        ExpectAnnouncedThenStored(*in.recorder, in.interface, c);
        ExpectHoldsItsRecords(in.interface);
    }
}

TEST(EInterfaceItem, WithoutATableEverySetterStoresInSilence)
{
    for (auto const& c : Setters()) {
        SCOPED_TRACE(c.operation);
        EInterfaceItem item;
        c.set(item);
        EXPECT_EQ(c.after, c.get(item));
    }
    EInterfaceItem item;
    FillSample(item);
    EXPECT_EQ(kSampleSummary, Summary(item));
    EInterfaceTable withoutObserver(7);
    FillSample(*withoutObserver.GetInterfaceItem(withoutObserver.AddInterfaceItem(EInterfaceItem())));
}

TEST(EInterfaceItem, LocalIdParentAndEUIDOverrideAreSetInSilence)
{
    RecordedInterface in;
    in.interface.SetOverrideAutogenEuid(true);
    EXPECT_TRUE(in.interface.OverrideAutogenEuid());
    ASSERT_NE(nullptr, in.interface.GetEthernetData());
    EXPECT_FALSE(in.interface.GetEthernetData()->UidFromMac()); // stored as the opposite
    in.interface.SetOverrideAutogenEuid(false);
    EXPECT_FALSE(in.interface.OverrideAutogenEuid());
    EXPECT_TRUE(in.interface.GetEthernetData()->UidFromMac());
    in.interface.SetLocalId(in.interface.GetLocalId());
    in.interface.SetParent(&in.table);
    EXPECT_TRUE(in.recorder->calls.empty());
}

TEST(EInterfaceItem, NothingDerivesAnEUIDFromTheMacAddress)
{
    EInterfaceItem item;
    item.SetEUID(EUID(5UL));
    item.SetMacAddress(EMACAddress("02:00:00:00:00:01"));
    item.SetOverrideAutogenEuid(true);
    item.SetOverrideAutogenEuid(false);
    EXPECT_EQ(5UL, item.GetEUID().GetAsUint64());
}

// The switches

struct SwitchCase {
    char const* enabling;
    char const* disabling;
    void (EInterfaceItem::*set)(bool);
    bool (EInterfaceItem::*get)() const;
    void const* (*record)(EInterfaceItem const&); // that the observer is given
    bool onDemand;
};
static SwitchCase const kSwitches[] = {
    {"EnablingInterfaceItem", "DisablingInterfaceItem", &EInterfaceItem::SetEnabled, &EInterfaceItem::IsEnabled,
     [](EInterfaceItem const& item) -> void const* { return &item; }, false},
    {"EnablingDhcpItem", "DisablingDhcpItem", &EInterfaceItem::SetDHCPEnabled, &EInterfaceItem::IsDHCPEnabled,
     [](EInterfaceItem const& item) -> void const* { return &item.GetDHCPProperties(); }, false},
    {"EnablingDhcpv6Item", "DisablingDhcpv6Item", &EInterfaceItem::SetDHCPv6Enabled, &EInterfaceItem::IsDHCPv6Enabled,
     [](EInterfaceItem const& item) -> void const* { return &item.GetDHCPv6Properties(); }, false},
    {"EnablingFCoEItem", "DisablingFCoEItem", &EInterfaceItem::SetFCoEEnabled, &EInterfaceItem::IsFCoEEnabled,
     [](EInterfaceItem const& item) -> void const* { return &item.GetFCoEConfig(); }, false},
    {"EnablingPTPItem", "DisablingPTPItem", &EInterfaceItem::SetPTPEnabled, &EInterfaceItem::IsPTPEnabled,
     [](EInterfaceItem const& item) -> void const* { return item.GetPTPConfigReadOnly(); }, true},
    {"EnablingDCBXItem", "DisablingDCBXItem", &EInterfaceItem::SetDCBXEnabled, &EInterfaceItem::IsDCBXEnabled,
     [](EInterfaceItem const& item) -> void const* { return item.GetDCBXConfigReadOnly(); }, true},
    {"EnablingLLDPItem", "DisablingLLDPItem", &EInterfaceItem::SetLLDPEnabled, &EInterfaceItem::IsLLDPEnabled,
     [](EInterfaceItem const& item) -> void const* { return item.GetLLDPConfigReadOnly(); }, true},
};

TEST(EInterfaceItem, SwitchesAreAnnouncedOnARealChangeOnlyWithTheirRecord)
{
    for (SwitchCase const& c : kSwitches) {
        SCOPED_TRACE(c.enabling);
        RecordedInterface in;
        EInterfaceItem& item = in.interface;
        (item.*c.set)(false);
        EXPECT_TRUE(in.recorder->calls.empty());
        EXPECT_EQ(0, CountOnDemand(item)); // an unchanged switch creates no record

        bool inTheCall = true;
        void const* recordInTheCall = nullptr;
        in.recorder->whenCalled = [&] {
            inTheCall = (item.*c.get)();
            recordInTheCall = c.record(item);
        };
        (item.*c.set)(true);
        ASSERT_EQ(std::vector<std::string>{c.enabling}, in.recorder->Operations());
        EXPECT_FALSE(inTheCall);
        ASSERT_NE(nullptr, recordInTheCall); // created before the observer is told
        EXPECT_EQ(recordInTheCall, in.recorder->calls[0].record);
        EXPECT_EQ("", in.recorder->calls[0].values);
        EXPECT_TRUE((item.*c.get)());
        EXPECT_EQ(c.onDemand ? 1 : 0, CountOnDemand(item));
        ExpectHoldsItsRecords(item);

        (item.*c.set)(true);
        EXPECT_EQ(1U, in.recorder->calls.size());

        in.recorder->Clear();
        (item.*c.set)(false);
        ASSERT_EQ(std::vector<std::string>{c.disabling}, in.recorder->Operations());
        EXPECT_TRUE(inTheCall);
        EXPECT_EQ(recordInTheCall, in.recorder->calls[0].record);
        EXPECT_FALSE((item.*c.get)());
        EXPECT_EQ(c.onDemand ? 1 : 0, CountOnDemand(item)); // the record stays
        (item.*c.set)(false);
        EXPECT_EQ(1U, in.recorder->calls.size());
    }
}

// Records created on demand

TEST(EInterfaceItem, EnsuringCreatesOnceGivesTheParentAndDropsNoOther)
{
    struct {
        void (EInterfaceItem::*ensure)();
        void const* (*get)(EInterfaceItem const&);
    } const cases[] = {
        {&EInterfaceItem::EnsureEthernet, [](EInterfaceItem const& i) -> void const* { return i.GetEthernetData(); }},
        {&EInterfaceItem::EnsureAtm, [](EInterfaceItem const& i) -> void const* { return i.GetAtmData(); }},
        {&EInterfaceItem::EnsurePpp, [](EInterfaceItem const& i) -> void const* { return i.GetPppData(); }},
        {&EInterfaceItem::EnsureGre, [](EInterfaceItem const& i) -> void const* { return i.GetGreData(); }},
        {&EInterfaceItem::EnsureRouted, [](EInterfaceItem const& i) -> void const* { return i.GetRoutedData(); }},
        {&EInterfaceItem::EnsureNPIV, [](EInterfaceItem const& i) -> void const* { return i.GetNPIVConfigReadOnly(); }},
        {&EInterfaceItem::EnsurePTP, [](EInterfaceItem const& i) -> void const* { return i.GetPTPConfigReadOnly(); }},
        {&EInterfaceItem::EnsureDCBX, [](EInterfaceItem const& i) -> void const* { return i.GetDCBXConfigReadOnly(); }},
        {&EInterfaceItem::EnsureLLDP, [](EInterfaceItem const& i) -> void const* { return i.GetLLDPConfigReadOnly(); }},
    };
    RecordedInterface in;
    std::vector<void const*> created;
    for (auto const& c : cases) {
        EXPECT_EQ(nullptr, c.get(in.interface));
        (in.interface.*c.ensure)();
        created.push_back(c.get(in.interface));
        EXPECT_NE(nullptr, created.back());
        EXPECT_EQ(static_cast<int>(created.size()), CountOnDemand(in.interface));
    }
    for (auto const& c : cases) (in.interface.*c.ensure)();
    for (std::size_t i = 0; i < created.size(); ++i) EXPECT_EQ(created[i], cases[i].get(in.interface));
    ExpectHoldsItsRecords(in.interface);
    EXPECT_TRUE(in.recorder->calls.empty());
}

TEST(EInterfaceItem, TheConfigurationGettersCreateTheRecordAndReadOnlyOnesDoNot)
{
    EInterfaceItem item;
    EXPECT_EQ(nullptr, item.GetNPIVConfigReadOnly());
    ENPIVConfig const* const npiv = &item.GetNPIVConfig();
    EXPECT_EQ(npiv, item.GetNPIVConfigReadOnly());
    EXPECT_EQ(nullptr, item.GetPTPConfigReadOnly());
    EPTPConfig const* const ptp = &item.GetPTPConfig();
    EXPECT_EQ(ptp, item.GetPTPConfigReadOnly());
    EXPECT_EQ(nullptr, item.GetDCBXConfigReadOnly());
    EDCBXConfig const* const dcbx = &item.GetDCBXConfig();
    EXPECT_EQ(dcbx, item.GetDCBXConfigReadOnly());
    EXPECT_EQ(nullptr, item.GetLLDPConfigReadOnly());
    ELLDPConfig const* const lldp = &item.GetLLDPConfig();
    EXPECT_EQ(lldp, item.GetLLDPConfigReadOnly());
    EXPECT_EQ(4, CountOnDemand(item));
    ExpectHoldsItsRecords(item);
}

TEST(EInterfaceItem, EachSetterCreatesOnlyItsOwnPerTypeData)
{
    struct {
        void (*set)(EInterfaceItem&);
        bool (*created)(EInterfaceItem const&);
    } const cases[] = {
        {[](EInterfaceItem& i) { i.SetMTU(1500); },
         [](EInterfaceItem const& i) { return i.GetEthernetData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetMacAddress(EMACAddress()); },
         [](EInterfaceItem const& i) { return i.GetEthernetData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetVLANItem(EVLANIPAddressTableItemProperties()); },
         [](EInterfaceItem const& i) { return i.GetEthernetData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetOverrideAutogenEuid(false); },
         [](EInterfaceItem const& i) { return i.GetEthernetData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetVPI(0); }, [](EInterfaceItem const& i) { return i.GetAtmData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetPPPHandle(0); },
         [](EInterfaceItem const& i) { return i.GetPppData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetGreInKey(0); },
         [](EInterfaceItem const& i) { return i.GetGreData() != nullptr; }},
        {[](EInterfaceItem& i) { i.SetConnectedViaId(EComponentId()); },
         [](EInterfaceItem const& i) { return i.GetRoutedData() != nullptr; }},
    };
    for (auto const& c : cases) {
        EInterfaceItem item;
        c.set(item);
        EXPECT_TRUE(c.created(item));
        EXPECT_EQ(1, CountOnDemand(item));
        ExpectHoldsItsRecords(item);
    }
}

// Whole records

/// One whole-record setter, plain or by its fixed leaf.
struct WholeCase {
    char const* operation;
    char const* announced;
    char const* golden;
    unsigned int leaf; // 0: there is no form with a leaf
    void (*set)(EInterfaceItem&);
    bool (*setByLeaf)(EInterfaceItem&, unsigned int leaf);
    void const* (*record)(EInterfaceItem const&);
    std::string (*written)(EInterfaceItem const&); // empty when absent
};

template <class Record> static std::string WrittenOrNone(Record const* record)
{
    return record ? Written(*record) : std::string();
}

#define WHOLE(Record, golden, setter, pointer)                                                                         \
    [](EInterfaceItem& item) { item.setter(Read<Record>(golden)); },                                                   \
        [](EInterfaceItem& item, unsigned int leaf) { return item.setter(leaf, Read<Record>(golden)); },               \
        [](EInterfaceItem const& item) -> void const* { return pointer; },                                             \
        [](EInterfaceItem const& item) { return WrittenOrNone(pointer); }
#define WHOLE_WITHOUT_LEAF(Record, golden, setter, pointer)                                                            \
    [](EInterfaceItem& item) { item.setter(Read<Record>(golden)); }, nullptr,                                          \
        [](EInterfaceItem const& item) -> void const* { return pointer; },                                             \
        [](EInterfaceItem const& item) { return WrittenOrNone(pointer); }

static WholeCase const kWholeRecords[] = {
    {"SettingIPv4AddressItem", "record, on[45066 100], on[45066 100]", "EIPv4AddressItem.v3.hex", 6,
     WHOLE(EIPv4AddressItem, "EIPv4AddressItem.v3.hex", SetIPv4AddressItem, &item.GetIPv4AddressItem())},
    {"SettingDhcpProperties", "record", "EDHCPProperties.v3.hex", 24,
     WHOLE(EDHCPProperties, "EDHCPProperties.v3.hex", SetDHCPProperties, &item.GetDHCPProperties())},
    {"SettingDhcpv6Properties", "record", "EDHCPv6Properties.v2.hex", 26,
     WHOLE(EDHCPv6Properties, "EDHCPv6Properties.v2.hex", SetDHCPv6Properties, &item.GetDHCPv6Properties())},
    {"SettingFCoEConfig", "record", "EFCoEConfig.v7.hex", 31,
     WHOLE(EFCoEConfig, "EFCoEConfig.v7.hex", SetFCoEConfig, &item.GetFCoEConfig())},
    {"SettingNPIVConfig", "record", "ENPIVConfig.v4.hex", 32,
     WHOLE(ENPIVConfig, "ENPIVConfig.v4.hex", SetNPIVConfig, item.GetNPIVConfigReadOnly())},
    {"SettingPTPConfig", "record", "EPTPConfig.v3.hex", 0,
     WHOLE_WITHOUT_LEAF(EPTPConfig, "EPTPConfig.v3.hex", SetPTPConfig, item.GetPTPConfigReadOnly())},
    {"SettingDCBXConfig", "record", "EDCBXConfig.v0128200A.hex", 0,
     WHOLE_WITHOUT_LEAF(EDCBXConfig, "EDCBXConfig.v0128200A.hex", SetDCBXConfig, item.GetDCBXConfigReadOnly())},
    {"SettingLLDPConfig", "record", "ELLDPConfig.v0127200B.hex", 0,
     WHOLE_WITHOUT_LEAF(ELLDPConfig, "ELLDPConfig.v0127200B.hex", SetLLDPConfig, item.GetLLDPConfigReadOnly())},
};

TEST(EInterfaceItem, AWholeRecordIsAnnouncedOnceWhileTheOldContentsStand)
{
    for (WholeCase const& c : kWholeRecords) {
        SCOPED_TRACE(c.operation);
        RecordedInterface in;
        in.interface.SetVLANItem(SampleVLANs());
        in.recorder->Clear();
        std::string inTheCall;
        void const* recordInTheCall = nullptr;
        in.recorder->whenCalled = [&] {
            recordInTheCall = c.record(in.interface);
            inTheCall = c.written(in.interface);
        };
        c.set(in.interface);
        ASSERT_EQ(std::vector<std::string>{c.operation}, in.recorder->Operations());
        EXPECT_EQ(c.announced, in.recorder->calls[0].values);
        ASSERT_NE(nullptr, recordInTheCall); // created before the observer is told
        EXPECT_EQ(recordInTheCall, in.recorder->calls[0].record);
        EXPECT_NE(Golden(c.golden), inTheCall);
        EXPECT_EQ(Golden(c.golden), c.written(in.interface));
        EXPECT_EQ(recordInTheCall, c.record(in.interface)); // where it was
        ExpectHoldsItsRecords(in.interface);

        c.set(in.interface);
        EXPECT_EQ(2U, in.recorder->calls.size()); // also when nothing changes
        EXPECT_EQ(Golden(c.golden), c.written(in.interface));

        EInterfaceItem alone;
        c.set(alone);
        EXPECT_EQ(Golden(c.golden), c.written(alone));
        ExpectHoldsItsRecords(alone);
    }
}

TEST(EInterfaceItem, TheSettersByLeafActForTheirOwnLeafOnly)
{
    for (WholeCase const& c : kWholeRecords) {
        if (c.leaf == 0) continue;
        SCOPED_TRACE(c.operation);
        RecordedInterface in;
        std::string const before = Written(in.interface);
        for (unsigned int const leaf : {0U, 1U, 6U, 7U, 24U, 25U, 26U, 31U, 32U, 34U, 36U, 38U, 0xFFFFFFFFU}) {
            if (leaf == c.leaf) continue;
            EXPECT_FALSE(c.setByLeaf(in.interface, leaf)) << leaf;
        }
        EXPECT_TRUE(in.recorder->calls.empty());
        EXPECT_EQ(before, Written(in.interface)); // nothing created either
        EXPECT_TRUE(c.setByLeaf(in.interface, c.leaf));
        EXPECT_EQ(std::vector<std::string>{c.operation}, in.recorder->Operations());
        EXPECT_EQ(Golden(c.golden), c.written(in.interface));
        ExpectHoldsItsRecords(in.interface);
    }
}

namespace {

/// Keeps what the observer was given as the record that will replace the current one, and looks at the parents.
struct ReplacementReader : EIgnoreInterfaceTableHooks {
    std::string current;
    std::string replacement;
    EInterfaceTable const* parentOfReplacement = nullptr;

    void SettingInterfaceItem(EInterfaceItem const& now, EInterfaceItem const& next) override
    {
        current = Written(now);
        replacement = Written(next);
        parentOfReplacement = next.GetParent();
        ExpectHoldsItsRecords(now);
        ExpectHoldsItsRecords(next);
    }
    void SettingLLDPConfig(ELLDPConfig const& now, ELLDPConfig const& next) override
    {
        current = Written(now);
        replacement = Written(next);
    }
};

} // namespace

TEST(EInterfaceItem, TheObserverIsShownTheCurrentAndTheReplacingRecord)
{
    RecordedInterface in;
    auto const reader = boost::make_shared<ReplacementReader>();
    in.table.SetHooks("reader", reader);
    in.interface.SetLLDPConfig(Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex"));
    EXPECT_EQ(Golden("ELLDPConfig.defaults.v0127200B.hex"), reader->current);
    EXPECT_EQ(Golden("ELLDPConfig.v0127200B.hex"), reader->replacement);

    std::string const before = Written(in.interface);
    EInterfaceItem sample;
    FillSample(sample);
    in.interface = sample;
    EXPECT_EQ(before, reader->current);
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), reader->replacement);
    EXPECT_EQ(nullptr, reader->parentOfReplacement);

    in.interface.Empty();
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), reader->current);
    EInterfaceItem emptied;
    emptied.SetLocalId(5);
    EXPECT_EQ(Written(emptied), reader->replacement);
    EXPECT_EQ(nullptr, reader->parentOfReplacement);
}

// Copying and emptying

TEST(EInterfaceItem, CopyConstructionIsDeepAndTakesTheLocalIdButNotTheParent)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.recorder->Clear();
    EInterfaceItem copy(in.interface);
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(copy));
    EXPECT_EQ(5U, copy.GetLocalId());
    EXPECT_EQ(nullptr, copy.GetParent());
    EXPECT_EQ(9, CountOnDemand(copy));
    ExpectHoldsItsRecords(copy);
    ExpectHoldsItsRecords(in.interface);

    EXPECT_NE(in.interface.GetEthernetData(), copy.GetEthernetData());
    EXPECT_NE(in.interface.GetAtmData(), copy.GetAtmData());
    EXPECT_NE(in.interface.GetPppData(), copy.GetPppData());
    EXPECT_NE(in.interface.GetGreData(), copy.GetGreData());
    EXPECT_NE(in.interface.GetRoutedData(), copy.GetRoutedData());
    EXPECT_NE(in.interface.GetNPIVConfigReadOnly(), copy.GetNPIVConfigReadOnly());
    EXPECT_NE(in.interface.GetPTPConfigReadOnly(), copy.GetPTPConfigReadOnly());
    EXPECT_NE(in.interface.GetDCBXConfigReadOnly(), copy.GetDCBXConfigReadOnly());
    EXPECT_NE(in.interface.GetLLDPConfigReadOnly(), copy.GetLLDPConfigReadOnly());
    EXPECT_NE(in.interface.GetIPv6AddressItem(3), copy.GetIPv6AddressItem(3));

    // Changes of the copy reach neither the original nor its observer.
    copy.SetMTU(68);
    copy.SetVPI(1);
    copy.SetPPPHandle(1);
    copy.SetGreInKey(1);
    copy.SetConnectedViaId({1});
    copy.GetIPv4AddressItem().SetMaskLength(1);
    copy.GetIPv6AddressItem(3)->SetMaskLength(1);
    copy.RemoveIPv6AddressItem(9);
    copy.GetDHCPProperties().SetRetryCount(1);
    copy.GetDHCPv6Properties().SetRenewTime(1);
    copy.GetFCoEConfig().SetB2BRxSize(1);
    copy.GetNPIVConfig().SetB2BRxSize(1);
    copy.GetPTPConfig().SetPriority1(1);
    copy.GetDCBXConfig().SetOUI(1);
    copy.GetLLDPConfig().SetHoldTime(1);
    EXPECT_TRUE(in.recorder->calls.empty());
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(in.interface));
}

TEST(EInterfaceItem, CopyAndAssignmentAreAnnouncedOnceAndKeepTheParent)
{
    void (*const ways[])(EInterfaceItem&, EInterfaceItem const&) = {
        [](EInterfaceItem& to, EInterfaceItem const& from) { to.Copy(from); },
        [](EInterfaceItem& to, EInterfaceItem const& from) { to = from; },
    };
    for (auto const& way : ways) {
        RecordedInterface from;
        FillSample(from.interface);
        from.recorder->Clear();
        RecordedInterface to;
        to.interface.SetName("old");
        to.interface.EnsureRouted();
        to.recorder->Clear();
        std::string const before = Written(to.interface);
        std::string inTheCall;
        to.recorder->whenCalled = [&] { inTheCall = Written(to.interface); };
        way(to.interface, from.interface);
        ASSERT_EQ(std::vector<std::string>{"SettingInterfaceItem"}, to.recorder->Operations());
        EXPECT_EQ(&to.interface, to.recorder->calls[0].record);
        EXPECT_EQ("record", to.recorder->calls[0].values);
        EXPECT_EQ(before, inTheCall);
        EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(to.interface));
        EXPECT_EQ(5U, to.interface.GetLocalId()); // on purpose comes along: who keeps it in a list sets it again
        EXPECT_EQ(&to.table, to.interface.GetParent());
        ExpectHoldsItsRecords(to.interface);

        EXPECT_TRUE(from.recorder->calls.empty());
        EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(from.interface));
        EXPECT_EQ(&from.table, from.interface.GetParent());
        ExpectHoldsItsRecords(from.interface);

        // The records that were moved in report to this table.
        to.recorder->Clear();
        to.recorder->whenCalled = nullptr;
        to.interface.SetMTU(68);
        to.interface.GetIPv4AddressItem().SetMaskLength(1);
        to.interface.GetIPv6AddressItem(9)->SetMaskLength(1);
        to.interface.GetPTPConfig().SetPriority1(1);
        EXPECT_EQ((std::vector<std::string>{"SettingInterfaceMTU", "SettingIPv4MaskLength", "SettingIPv6MaskLength",
                                            "SettingPTPPriority1"}),
                  to.recorder->Operations());
    }
}

TEST(EInterfaceItem, AssignmentToItselfIsAnnouncedAndChangesNothing)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.recorder->Clear();
    EInterfaceItem const& itself = in.interface;
    in.interface = itself;
    EXPECT_EQ(std::vector<std::string>{"SettingInterfaceItem"}, in.recorder->Operations());
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(in.interface));
    EXPECT_EQ(&in.table, in.interface.GetParent());
    ExpectHoldsItsRecords(in.interface);
}

TEST(EInterfaceItem, EmptyIsAnnouncedOnceAndKeepsLocalIdAndParent)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.recorder->Clear();
    std::string inTheCall;
    in.recorder->whenCalled = [&] { inTheCall = Written(in.interface); };
    in.interface.Empty();
    ASSERT_EQ(std::vector<std::string>{"SettingInterfaceItem"}, in.recorder->Operations());
    EXPECT_EQ(&in.interface, in.recorder->calls[0].record);
    EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), inTheCall);
    EXPECT_EQ(5U, in.interface.GetLocalId());
    EXPECT_EQ(&in.table, in.interface.GetParent());
    ExpectHoldsItsRecords(in.interface);
    in.interface.SetLocalId(0);
    EXPECT_EQ(Golden("EInterfaceItem.defaults.v16.hex"), Written(in.interface));
}

// IPv6 addresses

static EIPv6AddressItem IPv6(char const* address)
{
    EIPv6AddressItem item;
    item.SetAddress(EIPAddress(address));
    return item;
}

TEST(EInterfaceItem, AddIPv6AddressItemAnnouncesTheStoredItemWithItsIdAndParent)
{
    RecordedInterface in;
    EInterfaceItem elsewhere;
    EIPv6AddressItem item = IPv6("2001:db8::1");
    item.SetLocalId(77);
    item.SetParent(&elsewhere);
    void const* inTheCall = nullptr;
    in.recorder->whenCalled = [&] {
        EIPv6AddressItem const* const stored = in.interface.GetIPv6AddressItem(1);
        ASSERT_NE(nullptr, stored);
        EXPECT_EQ(1U, stored->GetLocalId());
        EXPECT_EQ(&in.interface, stored->GetParent());
        EXPECT_EQ("2001:db8::1", stored->GetAddress().GetAsString());
        inTheCall = stored;
    };
    EXPECT_EQ(1U, in.interface.AddIPv6AddressItem(item));
    ASSERT_EQ(std::vector<std::string>{"AddingIPv6AddressItem"}, in.recorder->Operations());
    EXPECT_NE(nullptr, inTheCall);
    EXPECT_EQ(inTheCall, in.recorder->calls[0].record);
    EXPECT_EQ(&elsewhere, item.GetParent());
    in.recorder->whenCalled = nullptr;
    EXPECT_EQ(2U, in.interface.AddIPv6AddressItem(item));
    EXPECT_EQ(2U, in.interface.GetIPv6AddressItemList().GetCount());
}

TEST(EInterfaceItem, AddIPv6AddressItemAnnouncesNothingWhenTheIdsAreUsedUp)
{
    RecordedInterface in;
    EUniqueIDGenerator usedUp;
    usedUp.SkipPast(0xFFFFFFFF);
    in.interface.GetIPv6AddressItemList().SetIdGenerator(usedUp);
    in.interface.GetIPv6AddressItemList().AddItem(0); // an explicit id may be 0
    EXPECT_EQ(0U, in.interface.AddIPv6AddressItem(IPv6("2001:db8::1")));
    EXPECT_EQ(1U, in.interface.GetIPv6AddressItemList().GetCount());
    EXPECT_TRUE(in.recorder->calls.empty());
}

TEST(EInterfaceItem, RemoveIPv6AddressItemAnnouncesWhileTheItemIsStillThere)
{
    RecordedInterface in;
    unsigned int const id = in.interface.AddIPv6AddressItem(IPv6("2001:db8::1"));
    in.recorder->Clear();
    EXPECT_FALSE(in.interface.RemoveIPv6AddressItem(0));
    EXPECT_FALSE(in.interface.RemoveIPv6AddressItem(id + 1));
    EXPECT_TRUE(in.recorder->calls.empty());

    EIPv6AddressItem const* const item = in.interface.GetIPv6AddressItem(id);
    std::string inTheCall;
    in.recorder->whenCalled = [&] {
        ASSERT_EQ(item, in.interface.GetIPv6AddressItem(id));
        inTheCall = item->GetAddress().GetAsString();
    };
    EXPECT_TRUE(in.interface.RemoveIPv6AddressItem(id));
    ASSERT_EQ(std::vector<std::string>{"RemovingIPv6AddressItem"}, in.recorder->Operations());
    EXPECT_EQ(item, in.recorder->calls[0].record);
    EXPECT_EQ("2001:db8::1", inTheCall);
    EXPECT_EQ(nullptr, in.interface.GetIPv6AddressItem(id));
    in.recorder->whenCalled = nullptr;
    EXPECT_FALSE(in.interface.RemoveIPv6AddressItem(id));
    EXPECT_EQ(1U, in.recorder->calls.size());
    EXPECT_EQ(id + 1, in.interface.AddIPv6AddressItem(IPv6("2001:db8::2"))); // a freed id is not handed out again
}

TEST(EInterfaceItem, SetIPv6AddressItemReplacesTheItemWhichKeepsItsIdAndParent)
{
    RecordedInterface in;
    unsigned int const id = in.interface.AddIPv6AddressItem(IPv6("2001:db8::1"));
    in.recorder->Clear();
    EInterfaceItem elsewhere;
    EIPv6AddressItem replacement = IPv6("2001:db8::2");
    replacement.SetLocalId(77);
    replacement.SetParent(&elsewhere);
    EXPECT_FALSE(in.interface.SetIPv6AddressItem(0, replacement));
    EXPECT_FALSE(in.interface.SetIPv6AddressItem(77, replacement));
    EXPECT_TRUE(in.recorder->calls.empty());

    EIPv6AddressItem const* const item = in.interface.GetIPv6AddressItem(id);
    std::string inTheCall;
    in.recorder->whenCalled = [&] { inTheCall = item->GetAddress().GetAsString(); };
    EXPECT_TRUE(in.interface.SetIPv6AddressItem(id, replacement));
    ASSERT_EQ(std::vector<std::string>{"SettingIPv6AddressItem"}, in.recorder->Operations());
    EXPECT_EQ(item, in.recorder->calls[0].record);
    EXPECT_EQ("2001:db8::1", inTheCall);
    EXPECT_EQ(item, in.interface.GetIPv6AddressItem(id));
    EXPECT_EQ("2001:db8::2", item->GetAddress().GetAsString());
    EXPECT_EQ(id, item->GetLocalId());
    EXPECT_EQ(&in.interface, item->GetParent());
}

TEST(EInterfaceItem, FindIPv6AddressItemAnswersTheFirstWithTheAddress)
{
    EInterfaceItem item;
    EXPECT_EQ(nullptr, item.FindIPv6AddressItem(EIPAddress("2001:db8::1")));
    item.AddIPv6AddressItem(IPv6("2001:db8::1"));
    item.AddIPv6AddressItem(IPv6("2001:db8::2"));
    item.AddIPv6AddressItem(IPv6("2001:db8::2"));
    item.AddIPv6AddressItem(IPv6("::"));
    EInterfaceItem const& constant = item;
    EXPECT_EQ(item.GetIPv6AddressItem(2), item.FindIPv6AddressItem(EIPAddress("2001:db8::2")));
    EXPECT_EQ(constant.GetIPv6AddressItem(2), constant.FindIPv6AddressItem(EIPAddress("2001:db8::2")));
    EXPECT_EQ(nullptr, item.FindIPv6AddressItem(EIPAddress("2001:db8::3")));
    EXPECT_EQ(item.GetIPv6AddressItem(4), item.FindIPv6AddressItem(EIPAddress("::")));
    EXPECT_EQ(nullptr, item.FindIPv6AddressItem(EIPAddress("0.0.0.0"))); // the family counts
}

// Identity

TEST(EInterfaceItem, ConnectedTypesShareOneAbstractType)
{
    struct {
        int type;
        bool connected;
        int abstractType;
    } const cases[] = {{0, true, 0},
                       {1, true, 0},
                       {2, true, 0},
                       {3, true, 0},
                       {4, false, 4},
                       {5, false, 5},
                       {6, false, 6},
                       {7, false, 7},
                       {-1, true, 0},
                       {-5, true, 0},
                       {1000, false, 1000},
                       {2147483647, false, 2147483647},
                       {-2147483647 - 1, true, 0}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.type);
        EInterfaceItem item;
        item.SetType(Type(c.type));
        EXPECT_EQ(c.connected, item.GetConnected());
        EXPECT_EQ(c.abstractType, item.GetAbstractType());
    }
}

TEST(EInterfaceItem, TheLayerNameFollowsTheType)
{
    struct {
        int type;
        char const* name;
    } const cases[] = {{0, "ps-static"}, {1, "ps-static"}, {2, "ps-static"}, {3, "ps-static"},    {4, "ps-gre"},
                       {5, "ps-unc"},    {6, "ps-npiv"},   {7, "ps-static"}, {1000, "ps-static"}, {-1, "ps-static"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.type);
        EInterfaceItem item;
        item.SetType(Type(c.type));
        EXPECT_STREQ(c.name, item.GetLayerName());
        EXPECT_STREQ(c.name, item.GetLayerName(nullptr));
        EInterfaceTable const table(7);
        EXPECT_STREQ(c.name, item.GetLayerName(&table));
    }
}

TEST(EInterfaceItem, AGreInterfaceOverAnUnconnectedOneHasALayerNameOfItsOwn)
{
    EInterfaceTable table(7);
    EInterfaceItem item;
    item.SetType(INTERFACE_TYPE_UNCONNECTED);
    unsigned int const unconnected = table.AddInterfaceItem(item);
    item.SetType(INTERFACE_TYPE_ETHERNET);
    unsigned int const connected = table.AddInterfaceItem(item);
    item.SetType(INTERFACE_TYPE_GRE);
    EInterfaceItem& gre = *table.GetInterfaceItem(table.AddInterfaceItem(item));
    struct {
        EComponentId source;
        char const* name;
    } const cases[] = {
        {EComponentId(), "ps-gre"},          {{7, 1, connected}, "ps-gre"},
        {{7, 1, unconnected}, "ps-gre-unc"}, {{7, 1, 99}, "ps-gre"},
        {{8, 1, unconnected}, "ps-gre"},    // another table
        {{7, 2, unconnected}, "ps-gre"},    // not its interface list
        {{7, 1, unconnected, 6}, "ps-gre"}, // not an interface
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(TextOf(c.source));
        gre.SetGreSourceIp(c.source);
        EXPECT_STREQ(c.name, gre.GetLayerName());
        EXPECT_STREQ(c.name, gre.GetLayerName(&table));
        EXPECT_STREQ("ps-gre", gre.GetLayerName(nullptr));
        EInterfaceItem const freeStanding(gre);
        EXPECT_STREQ("ps-gre", freeStanding.GetLayerName());
        EXPECT_STREQ(c.name, freeStanding.GetLayerName(&table));
    }
}

TEST(EInterfaceItem, TheIdIsThePathFromTheTable)
{
    RecordedInterface in;
    EXPECT_EQ("7.1.1", IdOf(in.interface));
    in.table.SetPortId(8);
    EXPECT_EQ("8.1.1", IdOf(in.interface));
    EInterfaceItem freeStanding;
    EXPECT_EQ("1.0", IdOf(freeStanding));
    freeStanding.SetLocalId(5);
    EXPECT_EQ("1.5", IdOf(freeStanding));
}

TEST(EInterfaceItem, TheIdsOfItsRecordsAreItsOwnAndTheirLeaf)
{
    RecordedInterface in;
    FillSample(in.interface);
    EInterfaceItem const& item = in.interface;
    EComponentId id;
    std::string text;
    item.GetDHCPProperties().GetID(id), text += TextOf(id) + " ";
    item.GetDHCPv6Properties().GetID(id), text += TextOf(id) + " ";
    item.GetFCoEConfig().GetID(id), text += TextOf(id) + " ";
    item.GetNPIVConfigReadOnly()->GetID(id), text += TextOf(id) + " ";
    item.GetPTPConfigReadOnly()->GetID(id), text += TextOf(id) + " ";
    item.GetDCBXConfigReadOnly()->GetID(id), text += TextOf(id) + " ";
    item.GetLLDPConfigReadOnly()->GetID(id), text += TextOf(id);
    EXPECT_EQ("7.1.5.24 7.1.5.26 7.1.5.31 7.1.5.32 7.1.5.34 7.1.5.36 7.1.5.38", text);
}

TEST(EInterfaceItem, ReachesTheObserverOfItsTable)
{
    RecordedInterface in;
    EXPECT_EQ(in.recorder.get(), &in.interface.GetHooks());
    in.table.SetHooks("", boost::shared_ptr<EInterfaceTableHooks>());
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&in.interface.GetHooks()));
    in.interface.SetParent(nullptr);
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&in.interface.GetHooks()));
}
