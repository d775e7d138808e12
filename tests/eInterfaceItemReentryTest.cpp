// An interface that is given its own records, and changed while it announces a change.
#include "eInterfaceItem.hpp"

#include "interfaceSamples.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

TEST(EInterfaceItem, TakesItsOwnFieldsAndRecordsAsArguments)
{
    void (*const changes[])(EInterfaceItem&) = {
        [](EInterfaceItem& i) { i.SetName(i.GetName()); },
        [](EInterfaceItem& i) { i.SetEUID(i.GetEUID()); },
        [](EInterfaceItem& i) { i.SetIPv6Gateway(i.GetIPv6Gateway()); },
        [](EInterfaceItem& i) { i.SetMacAddress(i.GetMacAddress()); },
        [](EInterfaceItem& i) { i.SetVLANItem(i.GetVLANItem()); },
        [](EInterfaceItem& i) { i.SetGreSourceIp(i.GetGreSourceIp()); },
        [](EInterfaceItem& i) { i.SetGreDestIp(i.GetGreDestIp()); },
        [](EInterfaceItem& i) { i.SetConnectedViaId(i.GetConnectedViaId()); },
        [](EInterfaceItem& i) { i.SetIPv4AddressItem(i.GetIPv4AddressItem()); },
        [](EInterfaceItem& i) { i.SetIPv6AddressItem(9, *i.GetIPv6AddressItem(9)); },
        [](EInterfaceItem& i) { i.SetDHCPProperties(i.GetDHCPProperties()); },
        [](EInterfaceItem& i) { i.SetDHCPv6Properties(i.GetDHCPv6Properties()); },
        [](EInterfaceItem& i) { i.SetFCoEConfig(i.GetFCoEConfig()); },
        [](EInterfaceItem& i) { i.SetNPIVConfig(i.GetNPIVConfig()); },
        [](EInterfaceItem& i) { i.SetPTPConfig(i.GetPTPConfig()); },
        [](EInterfaceItem& i) { i.SetDCBXConfig(i.GetDCBXConfig()); },
        [](EInterfaceItem& i) { i.SetLLDPConfig(i.GetLLDPConfig()); },
    };
    RecordedInterface in;
    FillSample(in.interface);
    for (auto const& change : changes) {
        SCOPED_TRACE(&change - changes);
        change(in.interface);
        EXPECT_EQ(Golden("EInterfaceItem.v16.hex"), Written(in.interface));
        ExpectHoldsItsRecords(in.interface);
    }
    EXPECT_EQ(10U, in.interface.AddIPv6AddressItem(*in.interface.GetIPv6AddressItem(9)));
    EXPECT_EQ(in.interface.GetIPv6AddressItem(9)->GetAddress(), in.interface.GetIPv6AddressItem(10)->GetAddress());
    EXPECT_EQ(9U, in.interface.GetIPv6AddressItem(9)->GetLocalId());
}

TEST(EInterfaceItem, AnObserverMayChangeItFromInsideACallAndTheOuterValueIsStoredLast)
{
    struct {
        std::function<void(EInterfaceItem&)> inside;
        std::function<void(EInterfaceItem&)> outside;
        std::function<std::string(EInterfaceItem const&)> get;
        std::string after;
    } const cases[] = {
        {[](EInterfaceItem& i) { i.SetName("inside"); }, [](EInterfaceItem& i) { i.SetName("outside"); },
         Shown<&EInterfaceItem::GetName>, "outside"},
        {[](EInterfaceItem& i) { i.SetMTU(68); }, [](EInterfaceItem& i) { i.SetMTU(9001); },
         Shown<&EInterfaceItem::GetMTU>, "9001"},
        {[](EInterfaceItem& i) { i.SetName("inside"); }, [](EInterfaceItem& i) { i.SetMTU(9001); },
         Shown<&EInterfaceItem::GetName>, "inside"},
        {[](EInterfaceItem& i) { i.SetName("inside"); }, [](EInterfaceItem& i) { i.Empty(); },
         Shown<&EInterfaceItem::GetName>, ""},
        {[](EInterfaceItem& i) { i.GetLLDPConfig().SetHoldTime(7); },
         [](EInterfaceItem& i) { i.SetLLDPConfig(i.GetLLDPConfig()); },
         [](EInterfaceItem const& i) { return TextOf(i.GetLLDPConfigReadOnly()->GetHoldTime()); }, "10"},
        {[](EInterfaceItem& i) { i.RemoveIPv6AddressItem(3); }, [](EInterfaceItem& i) { i.RemoveIPv6AddressItem(9); },
         [](EInterfaceItem const& i) { return TextOf(i.GetIPv6AddressItemList().GetCount()); }, "0"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        RecordedInterface in;
        FillSample(in.interface);
        bool inside = false;
        in.recorder->whenCalled = [&] {
            if (!std::exchange(inside, true)) c.inside(in.interface);
        };
        c.outside(in.interface);
        EXPECT_TRUE(inside);
        EXPECT_EQ(c.after, c.get(in.interface));
        EXPECT_EQ(&in.table, in.interface.GetParent());
        ExpectHoldsItsRecords(in.interface);
    }
}

TEST(EInterfaceItem, ASetterThatAnObserverRefusesMakesNoPerTypeData)
{
    void (*const changes[])(EInterfaceItem&) = {
        [](EInterfaceItem& i) { i.SetMacAddress(EMACAddress("02:00:00:00:00:01")); },
        [](EInterfaceItem& i) { i.SetVLANItem(SampleVLANs()); },
        [](EInterfaceItem& i) { i.SetMTU(9000); },
        [](EInterfaceItem& i) { i.SetEncapsulation(ATM_ENCAPSULATION_LLC); },
        [](EInterfaceItem& i) { i.SetATMMode(static_cast<EAtmModeEnum>(2)); },
        [](EInterfaceItem& i) { i.SetVPI(8); },
        [](EInterfaceItem& i) { i.SetVCI(35); },
        [](EInterfaceItem& i) { i.SetPPPHandle(21); },
        [](EInterfaceItem& i) { i.SetPPPSession(22); },
        [](EInterfaceItem& i) {
            i.SetGreSourceIp({7, 1, 2});
        },
        [](EInterfaceItem& i) { i.SetGreDestIp(EIPAddress("192.0.2.9")); },
        [](EInterfaceItem& i) { i.SetGreUseChecksum(true); },
        [](EInterfaceItem& i) { i.SetGreUseSequence(true); },
        [](EInterfaceItem& i) { i.SetGreUseKey(true); },
        [](EInterfaceItem& i) { i.SetGreInKey(1); },
        [](EInterfaceItem& i) { i.SetGreOutKey(2); },
        [](EInterfaceItem& i) {
            i.SetConnectedViaId({7, 1, 3});
        },
    };
    for (auto const& change : changes) {
        SCOPED_TRACE(&change - changes);
        RecordedInterface in;
        std::string const before = Written(in.interface);
        in.recorder->whenCalled = [] { throw std::runtime_error("refused"); };
        EXPECT_THROW(change(in.interface), std::runtime_error);
        EXPECT_EQ(1U, in.recorder->calls.size());
        EXPECT_EQ(before, Written(in.interface));
    }
}

TEST(EInterfaceItem, WhatAnObserverSetsBeforeItRefusesAnotherChangeStays)
{
    struct {
        void (*inside)(EInterfaceItem&);
        void (*outside)(EInterfaceItem&);
    } const cases[] = {
        {[](EInterfaceItem& i) { i.SetMacAddress(EMACAddress("02:00:00:00:00:01")); },
         [](EInterfaceItem& i) { i.SetMTU(9000); }},
        {[](EInterfaceItem& i) { i.SetVLANItem(SampleVLANs()); }, [](EInterfaceItem& i) { i.SetMTU(9000); }},
        {[](EInterfaceItem& i) { i.SetMTU(9000); }, [](EInterfaceItem& i) { i.SetVLANItem(SampleVLANs()); }},
        {[](EInterfaceItem& i) { i.SetOverrideAutogenEuid(true); }, [](EInterfaceItem& i) { i.SetMTU(9000); }},
        {[](EInterfaceItem& i) { i.SetEncapsulation(ATM_ENCAPSULATION_LLC); }, [](EInterfaceItem& i) { i.SetVPI(8); }},
        {[](EInterfaceItem& i) { i.SetATMMode(static_cast<EAtmModeEnum>(2)); }, [](EInterfaceItem& i) { i.SetVPI(8); }},
        {[](EInterfaceItem& i) { i.SetVPI(8); }, [](EInterfaceItem& i) { i.SetVCI(35); }},
        {[](EInterfaceItem& i) { i.SetVCI(35); }, [](EInterfaceItem& i) { i.SetVPI(8); }},
        {[](EInterfaceItem& i) { i.SetPPPHandle(21); }, [](EInterfaceItem& i) { i.SetPPPSession(22); }},
        {[](EInterfaceItem& i) { i.SetPPPSession(22); }, [](EInterfaceItem& i) { i.SetPPPHandle(21); }},
        {[](EInterfaceItem& i) {
             i.SetGreSourceIp({7, 1, 2});
         },
         [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreDestIp(EIPAddress("192.0.2.9")); },
         [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreUseChecksum(true); }, [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreUseSequence(true); }, [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreUseKey(true); }, [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreInKey(1); }, [](EInterfaceItem& i) { i.SetGreOutKey(2); }},
        {[](EInterfaceItem& i) { i.SetGreOutKey(2); },
         [](EInterfaceItem& i) {
             i.SetGreSourceIp({7, 1, 2});
         }},
        {[](EInterfaceItem& i) {
             i.SetConnectedViaId({7, 1, 3});
         },
         [](EInterfaceItem& i) {
             i.SetConnectedViaId({7, 1, 4});
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(&c - cases);
        EInterfaceItem expected;
        expected.SetLocalId(1);
        c.inside(expected);
        RecordedInterface in;
        bool inside = false;
        in.recorder->whenCalled = [&] {
            if (std::exchange(inside, true)) return;
            c.inside(in.interface);
            throw std::runtime_error("refused");
        };
        EXPECT_THROW(c.outside(in.interface), std::runtime_error);
        EXPECT_EQ(Written(expected), Written(in.interface));
        ExpectHoldsItsRecords(in.interface);
    }
}
