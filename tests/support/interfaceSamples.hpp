#pragma once

#include "golden.hpp"
#include "recorder.hpp"

#include "eInterfaceItem.hpp"

#include <gtest/gtest.h>

#include <string>

// An interface that holds every record, and how to look at one.

inline EVLANIPAddressTableItemProperties SampleVLANs() // priority 5, CFI 1, id 10, and within it id 100
{
    EVLANIPAddressTableItemProperties vlans(2, true);
    vlans.SetVlanTag(0xB00A, 0);
    vlans.SetVlanTag(100, 1);
    return vlans;
}

/// A fresh interface becomes what EInterfaceItem.v16.hex holds.
inline void FillSample(EInterfaceItem& item)
{
    // From the last to the first, since the order of creation must not show.
    item.SetConnectedViaId({7, 1, 300});
    item.SetGreSourceIp({7, 1, 2});
    item.SetGreDestIp(EIPAddress("192.0.2.9"));
    item.SetGreUseChecksum(true);
    item.SetGreUseKey(true);
    item.SetGreInKey(0xCAFE0001);
    item.SetGreOutKey(256);
    item.SetPPPHandle(0xDEADBEEF);
    item.SetPPPSession(4660);
    item.SetEncapsulation(ATM_ENCAPSULATION_LLCB_ETH_FCS);
    item.SetATMMode(static_cast<EAtmModeEnum>(0xFFFFFFFE));
    item.SetVPI(4095);
    item.SetVCI(32769);
    item.SetMacAddress(EMACAddress("02:00:5e:10:00:05"));
    item.SetVLANItem(SampleVLANs());
    item.SetMTU(9000);
    item.SetOverrideAutogenEuid(true);

    item.SetEnabled(true);
    item.SetLocalId(5);
    item.SetEUID(EUID("02:00:5e:ff:fe:10:00:05"));
    item.SetName("eth5");
    item.SetType(INTERFACE_TYPE_GRE);
    item.SetVcatCircuitId(700);
    item.SetIPv6Gateway(EIPAddress("2001:db8::1"));
    item.SetIPv4AddressItem(Read<EIPv4AddressItem>("EIPv4AddressItem.v3.hex"));
    EIPv6AddressItem linkLocal;
    linkLocal.SetAddress(EIPAddress("fe80::3"));
    item.GetIPv6AddressItemList().AddItem(3, linkLocal);
    item.GetIPv6AddressItemList().AddItem(9, Read<EIPv6AddressItem>("EIPv6AddressItem.v1.hex"));

    item.SetDHCPEnabled(true);
    item.SetDHCPProperties(Read<EDHCPProperties>("EDHCPProperties.v3.hex"));
    item.SetDHCPv6Enabled(true);
    item.SetDHCPv6Properties(Read<EDHCPv6Properties>("EDHCPv6Properties.v2.hex"));
    item.SetFCoEEnabled(true);
    item.SetFCoEConfig(Read<EFCoEConfig>("EFCoEConfig.v7.hex"));
    item.SetNPIVConfig(Read<ENPIVConfig>("ENPIVConfig.v4.hex"));
    item.SetPTPEnabled(true);
    item.SetPTPConfig(Read<EPTPConfig>("EPTPConfig.v3.hex"));
    item.SetDCBXEnabled(true);
    item.SetDCBXConfig(Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex"));
    item.SetLLDPEnabled(true);
    item.SetLLDPConfig(Read<ELLDPConfig>("ELLDPConfig.v0127200B.hex"));
}

/// What a getter answers, as the recorder writes it.
template <auto getter> std::string Shown(EInterfaceItem const& item)
{
    return TextOf((item.*getter)());
}

/// The fields of an interface but not those of its protocol records; "-" for per-type data that is absent.
inline std::string Summary(EInterfaceItem const& item)
{
    std::string text = (item.IsEnabled() ? "on " : "off ") + std::to_string(item.GetLocalId()) + " \"" +
                       item.GetName() + "\" type " + TextOf(item.GetType()) + " euid " + TextOf(item.GetEUID());
    text += "; ethernet ";
    if (EInterfaceData_Ethernet const* const data = item.GetEthernetData())
        text += TextOf(data->GetMacAddress()) + " " + TextOf(data->GetVLANItem()) + " " + TextOf(data->GetMTU()) +
                (data->UidFromMac() ? "" : " override");
    else
        text += "-";
    text += "; atm ";
    if (EInterfaceData_Atm const* const data = item.GetAtmData())
        text += TextOf(data->GetEncapsulation()) + " " + TextOf(data->GetATMMode()) + " " + TextOf(data->GetVPI()) +
                " " + TextOf(data->GetVCI());
    else
        text += "-";
    text += "; ppp ";
    if (EInterfaceData_Ppp const* const data = item.GetPppData())
        text += TextOf(data->GetPPPHandle()) + " " + TextOf(data->GetPPPSession());
    else
        text += "-";
    text += "; gre ";
    if (EInterfaceData_Gre const* const data = item.GetGreData())
        text += TextOf(data->GetSourceIp()) + " " + TextOf(data->GetDestIp()) + " " + TextOf(data->GetUseChecksum()) +
                " " + TextOf(data->GetUseSequence()) + " " + TextOf(data->GetUseKey()) + " " +
                TextOf(data->GetInKey()) + " " + TextOf(data->GetOutKey());
    else
        text += "-";
    text += "; routed ";
    if (EInterfaceData_Routed const* const data = item.GetRoutedData())
        text += TextOf(data->GetConnectedViaId());
    else
        text += "-";
    return text;
}

inline std::string const kFreshSummary =
    "off 0 \"\" type 0 euid 00:00:00:00:00:00:00:00; ethernet -; atm -; ppp -; gre -; routed -";
inline std::string const kSampleSummary =
    "on 5 \"eth5\" type 4 euid 02:00:5e:ff:fe:10:00:05; ethernet 02:00:5e:10:00:05 on[45066 100] 9000 override; "
    "atm 7 4294967294 4095 32769; ppp 3735928559 4660; gre 7.1.2 192.0.2.9 true false true 3405643777 256; "
    "routed 7.1.300";

/// Every record that the interface holds names it as its parent.
inline void ExpectHoldsItsRecords(EInterfaceItem const& item)
{
    EXPECT_EQ(&item, item.GetIPv4AddressItem().GetParent());
    EXPECT_EQ(&item, item.GetIPv6AddressItemList().GetParent());
    auto const& addresses = item.GetIPv6AddressItemList();
    for (auto position = addresses.begin(); position != addresses.end(); ++position)
        EXPECT_EQ(&item, addresses.GetItem(position)->GetParent());
    EXPECT_EQ(&item, item.GetDHCPProperties().GetParent());
    EXPECT_EQ(&item, item.GetDHCPv6Properties().GetParent());
    EXPECT_EQ(&item, item.GetFCoEConfig().GetParent());
    auto const expectHeld = [&item](auto const* record) {
        if (record) {
            EXPECT_EQ(&item, record->GetParent());
        }
    };
    expectHeld(item.GetEthernetData());
    expectHeld(item.GetAtmData());
    expectHeld(item.GetPppData());
    expectHeld(item.GetGreData());
    expectHeld(item.GetRoutedData());
    expectHeld(item.GetNPIVConfigReadOnly());
    expectHeld(item.GetPTPConfigReadOnly());
    expectHeld(item.GetDCBXConfigReadOnly());
    expectHeld(item.GetLLDPConfigReadOnly());
}

/// How many of the nine records that are created on demand exist.
inline int CountOnDemand(EInterfaceItem const& item)
{
    return (item.GetEthernetData() != nullptr) + (item.GetAtmData() != nullptr) + (item.GetPppData() != nullptr) +
           (item.GetGreData() != nullptr) + (item.GetRoutedData() != nullptr) +
           (item.GetNPIVConfigReadOnly() != nullptr) + (item.GetPTPConfigReadOnly() != nullptr) +
           (item.GetDCBXConfigReadOnly() != nullptr) + (item.GetLLDPConfigReadOnly() != nullptr);
}
