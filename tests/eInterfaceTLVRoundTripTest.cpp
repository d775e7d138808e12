#include "eInterfaceTLVBuilder.hpp"
#include "eInterfaceTLVParser.hpp"

#include "builtMessages.hpp"

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

using Protocol::EBytes;

// What an interface has lost when its message has been built and read again: docs/tlv-messages.md says the same.

namespace {

std::string Message(TLVIds::TLVId const& operation, EInterfaceItem const& interface)
{
    return Built(Protocol::AppendInterfaceOpTLV, operation, interface);
}

EInterfaceItem Sample() // of id 5, with every record
{
    EInterfaceItem sample;
    FillSample(sample);
    return sample;
}

/// Differs from the sample, and from what a message of it leaves behind, in all that a message could change.
void FillOther(EInterfaceItem& item)
{
    item.SetName("other");
    item.SetType(INTERFACE_TYPE_PPP);
    item.SetEnabled(false);
    item.SetMacAddress(EMACAddress("02:00:5e:10:00:99"));
    EVLANIPAddressTableItemProperties vlans(1, true);
    vlans.SetVlanTag(99, 0);
    item.SetVLANItem(vlans);
    item.SetMTU(99);
    item.SetDHCPEnabled(true);
    item.GetIPv4AddressItem().SetEnabled(true);
    item.GetIPv4AddressItem().SetMSS(99);
    for (unsigned int id : {0U, 8U}) {
        item.GetIPv6AddressItemList().AddItem(id);
        item.GetIPv6AddressItem(id)->SetMaskLength(99 + id);
    }
    item.SetPPPHandle(99);
    item.SetEUID(EUID(99));
    item.SetGreUseSequence(true);
    item.SetEncapsulation(ATM_ENCAPSULATION_VMR_MPLS);
    item.SetATMMode(static_cast<EAtmModeEnum>(99));
    item.SetFCoEEnabled(true);
}

/// What the built bytes say and the parsers have an id for, whatever happens to the ids that were cleared.
void SetWhatArrivesAnyway(EInterfaceItem& item)
{
    EInterfaceItem const sample = Sample();
    item.SetName("eth5");
    item.SetType(INTERFACE_TYPE_GRE);
    item.SetEnabled(true);
    item.SetMacAddress(sample.GetMacAddress());
    item.SetDHCPEnabled(false); // by both levels
    item.GetIPv4AddressItem().SetAddress(EIPAddress("10.0.0.5"));
    item.GetIPv4AddressItem().SetGateway(EIPAddress("10.0.0.1"));
    item.GetIPv4AddressItem().SetMaskLength(16);
    item.SetGreSourceIp({7, 1, 2});
    item.SetGreDestIp(EIPAddress("192.0.2.9"));
    item.SetGreUseChecksum(true);
    item.SetGreUseSequence(false);
    item.SetGreUseKey(true);
    item.SetGreInKey(0xCAFE0001);
    item.SetGreOutKey(256);
    item.SetConnectedViaId({7, 1, 300});
    item.SetVPI(4095);
    item.SetVCI(32769);
}

/// What the message of the sample makes of an interface.
void SetWhatArrives(EInterfaceItem& item)
{
    SetWhatArrivesAnyway(item);
    EVLANIPAddressTableItemProperties vlans = SampleVLANs();
    vlans.SetEnabled(false); // the switch is the first of its level
    item.SetVLANItem(vlans);
    item.SetEncapsulation(ATM_ENCAPSULATION_NONE);
    // No RemoveAll, and both addresses have the id 0: the later takes the place of the earlier.
    item.GetIPv6AddressItemList().AddItem(0, *Sample().GetIPv6AddressItem(9));
}

/// What the same message does with the cleared ids repaired.
void SetWhatArrivesRepaired(EInterfaceItem& item)
{
    SetWhatArrivesAnyway(item);
    item.SetVLANItem(SampleVLANs());
    item.GetIPv4AddressItem().SetEnabled(true);
    item.SetEncapsulation(ATM_ENCAPSULATION_LLCB_ETH_FCS);
    EIPv6AddressItemList& addresses = item.GetIPv6AddressItemList();
    addresses.Empty();
    addresses.AddItem(3, *Sample().GetIPv6AddressItem(3));
    addresses.AddItem(9, *Sample().GetIPv6AddressItem(9));
}

void PutU32(std::string& message, std::size_t offset, unsigned int value)
{
    message.replace(offset, 4, U32(value));
}

/// The message of an interface with its ids, and those of the levels that parsers read, as they were before they were
/// cleared: what a receiver can conclude from the order of the TLVs, and the ids of the items, which it cannot.
std::string Repaired(std::string message, EInterfaceItem const& interface)
{
    BuiltTlv const operation = Level(message).at(0);
    PutU32(message, operation.valueStart, interface.GetLocalId());
    bool dhcpSeen = false;
    for (BuiltTlv const& row : Level(operation.value.substr(4), operation.valueStart + 4)) {
        auto const first = [&](TLVIds::TLVId const& id) { PutU32(message, row.valueStart, id.GetIndex()); };
        if (row.number == IFD_VLAN.GetIndex()) first(VLAN_Enabled);
        if (row.number == IFD_IPv4.GetIndex()) first(IP4_Enabled);
        if (row.number == IFD_DHCP.GetIndex()) {
            first(dhcpSeen ? DHCP_ClientId : DHCP_Enabled);
            dhcpSeen = true;
        }
        if (row.number == IFD_ATMEncapsulation.GetIndex()) {
            TLVIds::TLVId const none("None"); // the others follow it
            PutU32(message, row.valueStart, none.GetIndex() + interface.GetEncapsulation());
        }
        if (row.number == IFD_IPv6List.GetIndex()) {
            first(ListOp::RemoveAll);
            auto position = interface.GetIPv6AddressItemList().begin();
            for (BuiltTlv const& address : Level(row.value, row.valueStart))
                if (address.number == ListOp::Add.GetIndex()) PutU32(message, address.valueStart, (position++)->first);
        }
    }
    return message;
}

/// A table of port 7 with interfaces of these ids, all in another state.
struct OtherTable {
    EInterfaceTable table{7};

    explicit OtherTable(std::initializer_list<unsigned int> ids)
    {
        for (unsigned int id : ids) {
            table.GetInterfaceItemList().AddItem(id);
            FillOther(Interface(id));
        }
    }
    EInterfaceItem& Interface(unsigned int id) { return *table.GetInterfaceItemList().GetItem(id); }
};

/// The table holds these interfaces and no other, down to the last field of their archives.
void ExpectHolds(EInterfaceTable& table, std::vector<EInterfaceItem> const& expected)
{
    ExpectConsistent(table);
    ASSERT_EQ(expected.size(), table.GetInterfaceItemList().GetCount());
    for (EInterfaceItem const& interface : expected) {
        EInterfaceItem const* const held = table.GetInterfaceItemList().GetItem(interface.GetLocalId());
        ASSERT_NE(nullptr, held) << interface.GetLocalId();
        EXPECT_EQ(Contents(interface), Contents(*held));
        EXPECT_EQ(Written(interface), Written(*held));
    }
}

EInterfaceItem Made(unsigned int id, std::initializer_list<void (*)(EInterfaceItem&)> steps)
{
    EInterfaceItem interface;
    for (auto const step : steps) step(interface);
    interface.SetLocalId(id);
    return interface;
}

} // namespace

TEST(InterfaceTLVRoundTrip, IntoAnEmptyTableComesOneInterfaceOfId0WithWhatIsNotFirstOfItsLevel)
{
    for (TLVIds::TLVId const* operation : {&ListOp::Add, &ListOp::Edit}) {
        EInterfaceTable table(7);
        EXPECT_EQ(0, ParsedInto(Message(*operation, Sample()), table));
        ExpectHolds(table, {Made(0, {SetWhatArrives})});
        EXPECT_EQ("on 0 \"eth5\" type 4 euid 00:00:00:00:00:00:00:00; "
                  "ethernet 02:00:5e:10:00:05 off[45066 100] 1500; atm 0 0 4095 32769; ppp -; "
                  "gre 7.1.2 192.0.2.9 true false true 3405643777 256; routed 7.1.300; dhcp off; "
                  "ipv4 off 10.0.0.5/16 via 10.0.0.1; ipv6 0:2001:db8::5/112",
                  Contents(*table.GetInterfaceItemList().GetItem(0)));
    }
}

TEST(InterfaceTLVRoundTrip, AnAddReplacesTheInterfaceOfId0AndNotThatOfItsOwnId)
{
    OtherTable in({0, 5});
    EXPECT_EQ(0, ParsedInto(Message(ListOp::Add, Sample()), in.table));
    ExpectHolds(in.table, {Made(0, {SetWhatArrives}), Made(5, {FillOther})});
}

TEST(InterfaceTLVRoundTrip, AnEditChangesTheInterfaceOfId0AndKeepsWhatHasNoIdOfTheParsers)
{
    OtherTable in({0, 5});
    EXPECT_EQ(0, ParsedInto(Message(ListOp::Edit, Sample()), in.table));
    ExpectHolds(in.table, {Made(0, {FillOther, SetWhatArrives}), Made(5, {FillOther})});
    EInterfaceItem const& edited = in.Interface(0);
    EXPECT_FALSE(edited.IsDHCPEnabled());                           // was on, and is on in the sample
    EXPECT_TRUE(edited.GetIPv4AddressItem().IsEnabled());           // stays
    EXPECT_EQ(ATM_ENCAPSULATION_NONE, edited.GetEncapsulation());   // neither the old nor the sent one
    EXPECT_EQ(107U, edited.GetIPv6AddressItem(8)->GetMaskLength()); // nothing was removed
    EXPECT_EQ(99U, edited.GetMTU());                                // no id of the parsers
    EXPECT_EQ(99U, edited.GetIPv4AddressItem().GetMSS());           // no id of the parsers
    EXPECT_EQ(nullptr, edited.GetNPIVConfigReadOnly());             // no id of the parsers
}

TEST(InterfaceTLVRoundTrip, WithItsIdsRepairedAllArrivesThatTheParsersHaveIdsForButDHCP)
{
    std::string const add = Repaired(Message(ListOp::Add, Sample()), Sample());
    EInterfaceTable empty(7);
    EXPECT_EQ(0, ParsedInto(add, empty));
    ExpectHolds(empty, {Made(5, {SetWhatArrivesRepaired})});
    EXPECT_EQ("on 5 \"eth5\" type 4 euid 00:00:00:00:00:00:00:00; "
              "ethernet 02:00:5e:10:00:05 on[45066 100] 1500; atm 7 0 4095 32769; ppp -; "
              "gre 7.1.2 192.0.2.9 true false true 3405643777 256; routed 7.1.300; dhcp off; "
              "ipv4 on 10.0.0.5/16 via 10.0.0.1; ipv6 3:fe80::3/64 9:2001:db8::5/112",
              Contents(*empty.GetInterfaceItemList().GetItem(5)));

    OtherTable added({0, 5});
    EXPECT_EQ(0, ParsedInto(add, added.table));
    ExpectHolds(added.table, {Made(0, {FillOther}), Made(5, {SetWhatArrivesRepaired})});

    OtherTable edited({0, 5});
    EXPECT_EQ(0, ParsedInto(Repaired(Message(ListOp::Edit, Sample()), Sample()), edited.table));
    ExpectHolds(edited.table, {Made(0, {FillOther}), Made(5, {FillOther, SetWhatArrivesRepaired})});
}

// The settings come in a second TLV of the same id, and every level ends in switching.
TEST(InterfaceTLVRoundTrip, DHCPArrivesWhenTheSettingsAreTakenOutOfTheRepairedMessage)
{
    std::string message = Repaired(Message(ListOp::Add, Sample()), Sample());
    BuiltTlv const operation = Level(message).at(0);
    std::size_t settingsStart = 0;
    std::size_t settingsSize = 0;
    for (BuiltTlv const& row : Level(operation.value.substr(4), operation.valueStart + 4)) {
        if (row.number != IFD_DHCP.GetIndex()) continue;
        settingsStart = row.valueStart - 8; // of the last one
        settingsSize = row.value.size() + 8;
    }
    message.erase(settingsStart, settingsSize);
    PutU32(message, 4, static_cast<unsigned int>(operation.value.size() - settingsSize));
    EInterfaceTable table(7);
    EXPECT_EQ(0, ParsedInto(message, table));
    EXPECT_TRUE(table.GetInterfaceItemList().GetItem(5)->IsDHCPEnabled());
}

TEST(InterfaceTLVRoundTrip, EveryATMEncapsulationArrivesAsNoneUnlessItsIdIsRepaired)
{
    for (unsigned int mode = 0; mode <= 15; ++mode) {
        SCOPED_TRACE(mode);
        EInterfaceItem sent;
        sent.SetLocalId(5);
        sent.SetEncapsulation(static_cast<eAtmEncapsulationMode>(mode));
        std::string const message = Message(ListOp::Add, sent);
        EInterfaceTable table(7);
        EXPECT_EQ(0, ParsedInto(message, table));
        EXPECT_EQ(0, ParsedInto(Repaired(message, sent), table));
        EXPECT_EQ(ATM_ENCAPSULATION_NONE, table.GetInterfaceItemList().GetItem(0)->GetEncapsulation());
        EXPECT_EQ(mode, table.GetInterfaceItemList().GetItem(5)->GetEncapsulation());
    }
}

TEST(InterfaceTLVRoundTrip, OfAListOfInterfacesTheLastOneRemainsUnderTheId0)
{
    std::string message;
    for (unsigned int id : {1U, 2U, 3U}) {
        EInterfaceItem sent;
        sent.SetLocalId(id);
        sent.SetName("interface " + std::to_string(id));
        message += Message(ListOp::Add, sent);
    }
    EInterfaceTable table(7);
    EXPECT_EQ(0, ParsedInto(message, table));
    ASSERT_EQ(1U, table.GetInterfaceItemList().GetCount());
    EXPECT_EQ("interface 3", table.GetInterfaceItemList().GetItem(0)->GetName());
}

TEST(InterfaceTLVRoundTrip, WhatTheParsersHaveNoIdForIsSentAndSkipped)
{
    EInterfaceItem sent; // but for these fields the default, which a message of the default shows
    sent.SetLocalId(5);
    sent.SetMTU(9000);
    sent.SetVcatCircuitId(700);
    sent.SetDHCPv6Enabled(true);
    sent.SetDHCPProperties(Sample().GetDHCPProperties());
    sent.SetDHCPv6Properties(Sample().GetDHCPv6Properties());
    sent.GetIPv4AddressItem().SetMSS(1460);
    sent.SetPPPHandle(1);
    sent.SetPPPSession(2);
    sent.SetEUID(EUID(3));
    sent.SetFCoEEnabled(true);
    sent.SetFCoEConfig(Sample().GetFCoEConfig());
    sent.SetNPIVConfig(*Sample().GetNPIVConfigReadOnly());
    sent.SetPTPEnabled(true);
    sent.SetPTPConfig(*Sample().GetPTPConfigReadOnly());
    sent.SetDCBXEnabled(true);
    sent.SetDCBXConfig(*Sample().GetDCBXConfigReadOnly());
    sent.SetLLDPConfig(*Sample().GetLLDPConfigReadOnly());
    EInterfaceItem plain;
    plain.SetLocalId(5);
    std::string const message = Repaired(Message(ListOp::Add, sent), sent);
    std::string const plainMessage = Repaired(Message(ListOp::Add, plain), plain);
    ASSERT_GT(message.size(), plainMessage.size());

    EInterfaceTable table(7);
    EInterfaceTable plainTable(7);
    EXPECT_EQ(0, ParsedInto(message, table));
    EXPECT_EQ(0, ParsedInto(plainMessage, plainTable));
    EXPECT_EQ(Written(*plainTable.GetInterfaceItemList().GetItem(5)),
              Written(*table.GetInterfaceItemList().GetItem(5)));

    EInterfaceItem expected = Made(5, {}); // the first setters of MAC, VLANs and addresses are those of a default
    expected.SetMacAddress(EMACAddress());
    expected.SetVLANItem(EVLANIPAddressTableItemProperties());
    ExpectHolds(table, {expected});
}
