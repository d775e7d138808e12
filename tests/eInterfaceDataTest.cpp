#include "eInterfaceData.hpp"

#include "golden.hpp"
#include "interfaceSamples.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

static EInterfaceData_Ethernet SampleEthernet()
{
    EInterfaceData_Ethernet data;
    data.SetMacAddress(EMACAddress("02:00:5e:10:00:05"));
    data.SetVLANItem(SampleVLANs());
    data.SetMTU(9000);
    data.SetUidFromMac(false);
    return data;
}
static EInterfaceData_Atm SampleAtm()
{
    EInterfaceData_Atm data;
    data.SetEncapsulation(ATM_ENCAPSULATION_LLCB_ETH_FCS);
    data.SetATMMode(static_cast<EAtmModeEnum>(0xFFFFFFFE));
    data.SetVPI(4095);
    data.SetVCI(32769);
    return data;
}
static EInterfaceData_Ppp SamplePpp()
{
    EInterfaceData_Ppp data;
    data.SetPPPHandle(0xDEADBEEF);
    data.SetPPPSession(4660);
    return data;
}
static EInterfaceData_Gre SampleGre()
{
    EInterfaceData_Gre data;
    data.SetSourceIp({7, 1, 2});
    data.SetDestIp(EIPAddress("192.0.2.9"));
    data.SetUseChecksum(true);
    data.SetUseKey(true);
    data.SetInKey(0xCAFE0001);
    data.SetOutKey(256);
    return data;
}
static EInterfaceData_Routed SampleRouted()
{
    EInterfaceData_Routed data;
    data.SetConnectedViaId({7, 1, 300});
    return data;
}

static std::string Summary(EInterfaceData_Ethernet const& data)
{
    return TextOf(data.GetMacAddress()) + " " + TextOf(data.GetVLANItem()) + " " + TextOf(data.GetMTU()) + " " +
           TextOf(data.UidFromMac());
}
static std::string Summary(EInterfaceData_Atm const& data)
{
    return TextOf(data.GetEncapsulation()) + " " + TextOf(data.GetATMMode()) + " " + TextOf(data.GetVPI()) + " " +
           TextOf(data.GetVCI());
}
static std::string Summary(EInterfaceData_Ppp const& data)
{
    return TextOf(data.GetPPPHandle()) + " " + TextOf(data.GetPPPSession());
}
static std::string Summary(EInterfaceData_Gre const& data)
{
    return TextOf(data.GetSourceIp()) + " " + TextOf(data.GetDestIp()) + " " + TextOf(data.GetUseChecksum()) + " " +
           TextOf(data.GetUseSequence()) + " " + TextOf(data.GetUseKey()) + " " + TextOf(data.GetInKey()) + " " +
           TextOf(data.GetOutKey());
}
static std::string Summary(EInterfaceData_Routed const& data)
{
    return TextOf(data.GetConnectedViaId());
}

TEST(EInterfaceData, StartsWithItsDefaultsAndWithoutAParent)
{
    EXPECT_EQ("00:00:00:00:00:00 off[] 1500 true", Summary(EInterfaceData_Ethernet()));
    EXPECT_EQ("0 0 0 0", Summary(EInterfaceData_Atm()));
    EXPECT_EQ("0 0", Summary(EInterfaceData_Ppp()));
    EXPECT_EQ(" 0.0.0.0 false false false 0 0", Summary(EInterfaceData_Gre()));
    EXPECT_EQ(EIPAddress::kIPv4, EInterfaceData_Gre().GetDestIp().GetFamily());
    EXPECT_EQ("", Summary(EInterfaceData_Routed()));
    EXPECT_EQ(nullptr, EInterfaceData_Ethernet().GetParent());
    EXPECT_EQ(nullptr, EInterfaceData_Atm().GetParent());
    EXPECT_EQ(nullptr, EInterfaceData_Ppp().GetParent());
    EXPECT_EQ(nullptr, EInterfaceData_Gre().GetParent());
    EXPECT_EQ(nullptr, EInterfaceData_Routed().GetParent());
}

/// One setter of a per-type record.
template <class Data> struct DataCase {
    char const* operation; // empty: silent
    char const* announced;
    void (*set)(Data&);
    char const* after;
};

/// A record of its own that names an interface of a table as its parent, and each of its setters: announced once, with
/// the interface, while the old value stands. The same on a record without a parent: stored in silence.
template <class Data, std::size_t count> static void ExpectSetters(DataCase<Data> const (&cases)[count])
{
    for (auto const& c : cases) {
        SCOPED_TRACE(c.after);
        RecordedInterface in;
        Data data;
        data.SetParent(&in.interface);
        EXPECT_EQ(in.recorder.get(), &data.GetHooks());
        std::string inTheCall;
        in.recorder->whenCalled = [&] { inTheCall = Summary(data); };
        c.set(data);
        EXPECT_EQ(c.after, Summary(data));
        if (*c.operation) {
            ASSERT_EQ(std::vector<std::string>{c.operation}, in.recorder->Operations());
            EXPECT_EQ(&in.interface, in.recorder->calls[0].record);
            EXPECT_EQ(c.announced, in.recorder->calls[0].values);
            EXPECT_EQ(Summary(Data()), inTheCall);
        } else {
            EXPECT_TRUE(in.recorder->calls.empty());
        }

        Data alone;
        EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&alone.GetHooks()));
        c.set(alone);
        EXPECT_EQ(c.after, Summary(alone));

        EInterfaceItem withoutTable;
        Data ofFreeStanding;
        ofFreeStanding.SetParent(&withoutTable);
        EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&ofFreeStanding.GetHooks()));
        c.set(ofFreeStanding);
        EXPECT_EQ(c.after, Summary(ofFreeStanding));
    }
}

TEST(EInterfaceData, SettersAnnounceTheInterfaceOnceAndThenStore)
{
    using Ethernet = EInterfaceData_Ethernet;
    ExpectSetters<Ethernet>({
        {"SettingInterfaceMac", "02:00:00:00:00:01",
         [](Ethernet& data) { data.SetMacAddress(EMACAddress("02:00:00:00:00:01")); },
         "02:00:00:00:00:01 off[] 1500 true"},
        {"SettingInterfaceVlan", "on[45066 100]", [](Ethernet& data) { data.SetVLANItem(SampleVLANs()); },
         "00:00:00:00:00:00 on[45066 100] 1500 true"},
        {"SettingInterfaceMTU", "68", [](Ethernet& data) { data.SetMTU(68); }, "00:00:00:00:00:00 off[] 68 true"},
        {"SettingInterfaceMTU", "1500", [](Ethernet& data) { data.SetMTU(1500); },
         "00:00:00:00:00:00 off[] 1500 true"}, // also when nothing changes
        {"", "", [](Ethernet& data) { data.SetUidFromMac(false); }, "00:00:00:00:00:00 off[] 1500 false"},
    });
    using Atm = EInterfaceData_Atm;
    ExpectSetters<Atm>({
        {"SettingInterfaceATMEncapsulation", "15", [](Atm& data) { data.SetEncapsulation(ATM_ENCAPSULATION_VMR_L2TP); },
         "15 0 0 0"},
        {"SettingInterfaceATMEncapsulation", "-1",
         [](Atm& data) { data.SetEncapsulation(static_cast<eAtmEncapsulationMode>(0xFFFFFFFF)); }, "4294967295 0 0 0"},
        {"SettingInterfaceATMMode", "2", [](Atm& data) { data.SetATMMode(static_cast<EAtmModeEnum>(2)); }, "0 2 0 0"},
        {"SettingInterfaceVPI", "4294967295", [](Atm& data) { data.SetVPI(0xFFFFFFFF); }, "0 0 4294967295 0"},
        {"SettingInterfaceVCI", "35", [](Atm& data) { data.SetVCI(35); }, "0 0 0 35"},
    });
    using Ppp = EInterfaceData_Ppp;
    ExpectSetters<Ppp>({
        {"SettingInterfacePPPHandle", "21", [](Ppp& data) { data.SetPPPHandle(21); }, "21 0"},
        {"SettingInterfacePPPSession", "22", [](Ppp& data) { data.SetPPPSession(22); }, "0 22"},
    });
    using Gre = EInterfaceData_Gre;
    ExpectSetters<Gre>({
        {"SettingInterfaceGreSourceIp", "7.1.2",
         [](Gre& data) {
             data.SetSourceIp({7, 1, 2});
         },
         "7.1.2 0.0.0.0 false false false 0 0"},
        {"SettingInterfaceGreDestIp", "2001:db8::9", [](Gre& data) { data.SetDestIp(EIPAddress("2001:db8::9")); },
         " 2001:db8::9 false false false 0 0"},
        {"SettingInterfaceGreUseChecksum", "true", [](Gre& data) { data.SetUseChecksum(true); },
         " 0.0.0.0 true false false 0 0"},
        {"SettingInterfaceGreUseSequence", "true", [](Gre& data) { data.SetUseSequence(true); },
         " 0.0.0.0 false true false 0 0"},
        {"SettingInterfaceGreUseKey", "true", [](Gre& data) { data.SetUseKey(true); }, " 0.0.0.0 false false true 0 0"},
        {"SettingInterfaceGreInKey", "1", [](Gre& data) { data.SetInKey(1); }, " 0.0.0.0 false false false 1 0"},
        {"SettingInterfaceGreOutKey", "2", [](Gre& data) { data.SetOutKey(2); }, " 0.0.0.0 false false false 0 2"},
    });
    using Routed = EInterfaceData_Routed;
    ExpectSetters<Routed>({
        {"SettingInterfaceConnectedViaId", "7.1.3",
         [](Routed& data) {
             data.SetConnectedViaId({7, 1, 3});
         },
         "7.1.3"},
    });
}

template <class Data> static void ExpectCopiesTakeAllAndTheParent(Data data)
{
    EInterfaceItem interface;
    data.SetParent(&interface);
    Data const copy(data);
    EXPECT_EQ(Summary(data), Summary(copy));
    EXPECT_EQ(&interface, copy.GetParent());
}

TEST(EInterfaceData, CopyConstructionTakesTheParentToo)
{
    ExpectCopiesTakeAllAndTheParent(SampleEthernet());
    ExpectCopiesTakeAllAndTheParent(SampleAtm());
    ExpectCopiesTakeAllAndTheParent(SamplePpp());
    ExpectCopiesTakeAllAndTheParent(SampleGre());
    ExpectCopiesTakeAllAndTheParent(SampleRouted());
}

/// Writes what the golden file holds, and reads it into a record in a table, which is told nothing.
template <class Data> static void ExpectGolden(char const* name, Data const& sample)
{
    SCOPED_TRACE(name);
    EXPECT_EQ(Golden(name), Written(sample));
    RecordedInterface in;
    Data data;
    data.SetParent(&in.interface);
    ReadInto(data, Golden(name));
    EXPECT_EQ(Summary(sample), Summary(data));
    EXPECT_EQ(&in.interface, data.GetParent());
    EXPECT_TRUE(in.recorder->calls.empty());
}

TEST(EInterfaceDataArchive, WritesAndReadsVersion1)
{
    ExpectGolden("EInterfaceData_Ethernet.v1.hex", SampleEthernet());
    ExpectGolden("EInterfaceData_Atm.v1.hex", SampleAtm());
    ExpectGolden("EInterfaceData_Ppp.v1.hex", SamplePpp());
    ExpectGolden("EInterfaceData_Gre.v1.hex", SampleGre());
    ExpectGolden("EInterfaceData_Routed.v1.hex", SampleRouted());
}

TEST(EInterfaceDataArchive, RefusesEveryOtherVersionUnderItsOwnName)
{
    std::string const file = "x86_64/common/ifcore/eInterfaceItem.cpp";
    for (char const* version : {"00", "02", "FB FF FF FF FF"}) {
        ExpectArchiveError<EInterfaceData_Ethernet>(version, file, 1041, "EInterfaceData_Ethernet::SerializeIn");
        ExpectArchiveError<EInterfaceData_Atm>(version, file, 1092, "EInterfaceData_Atm::SerializeIn");
        ExpectArchiveError<EInterfaceData_Ppp>(version, file, 1143, "EInterfaceData_Ppp::SerializeIn");
        ExpectArchiveError<EInterfaceData_Gre>(version, file, 1194, "EInterfaceData_Gre::SerializeIn");
        ExpectArchiveError<EInterfaceData_Routed>(version, file, 1245, "EInterfaceData_Routed::SerializeIn");
    }
}
