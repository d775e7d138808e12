#include "eDiscoveredChangeWriter.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

static void Apply(EDiscoveredTable& table, EBlob const& message)
{
    EArchive archive;
    Load(archive, BytesOf(message));
    ApplyDiscoveredTableMessage(table, archive);
    EXPECT_TRUE(archive.AtEnd());
}

namespace {

/// A table with a writer, and a second one that is equal to it.
struct Pair {
    EDiscoveredTable first;
    boost::shared_ptr<EDiscoveredChangeWriter> writer = boost::make_shared<EDiscoveredChangeWriter>();
    EDiscoveredTable second;

    /// Without infos.
    Pair() { first.hooks = writer; }
    /// Both hold what \p fill puts into them.
    explicit Pair(std::function<void(EDiscoveredTable&)> const& fill) : Pair()
    {
        first.hooks.reset();
        fill(first);
        ReadInto(second, Written(first));
        first.hooks = writer;
    }
    void Pass() { Apply(second, writer->TakeMessage()); }
    bool AreEqual() const { return Written(first) == Written(second); }
};

} // namespace

/// Info 5 with two neighbours, of which the first is the default, and info 7.
static void FillSample(EDiscoveredTable& table)
{
    EDiscoveredInfo info =
        Info(5, {Neighbor("02:00:00:00:00:01", {"10.0.0.1"}), Neighbor("02:00:00:00:00:02", {}, false)});
    info.AddAddress(IP("10.0.0.9"));
    table.AddInfo(info);
    table.AddInfo(Info(7));
}

TEST(EDiscoveredChangeWriter, EachAnnouncedChangeIsOneOperationThatMakesTheSecondTableEqual)
{
    struct {
        char const* name;
        std::function<void(EDiscoveredTable&)> change;
        std::string operation; // its bytes behind the continuation flag
    } const cases[] = {
        {"Copy of the table",
         [](auto& table) {
             EDiscoveredTable source;
             ReadInto(source, Golden("EDiscoveredTable.hex"));
             table.Copy(source);
         },
         Bytes("00") + Golden("EDiscoveredTable.hex").replace(Golden("EDiscoveredTable.hex").size() - 6, 6, 6, '\0')},
        {"Empty of the table", [](auto& table) { table.Empty(); },
         Bytes("00") + Golden("EDiscoveredTable.defaults.hex")},
        {"AddInfo", [](auto& table) { table.AddInfo(Read<EDiscoveredInfo>("EDiscoveredInfo.hex")); },
         Bytes("01") + Golden("EDiscoveredInfo.hex")},
        {"RemoveInfo", [](auto& table) { table.RemoveInfo(5); }, Bytes("02 05")},
        {"SetInfo", [](auto& table) { table.SetInfo(7, Read<EDiscoveredInfo>("EDiscoveredInfo.hex")); },
         Bytes("03 07") + Golden("EDiscoveredInfo.hex")},
        {"SetInterfaceUp, up", [](auto& table) { table.GetInfo(5)->SetInterfaceUp(true); }, Bytes("04 05 01")},
        {"AddAddress", [](auto& table) { table.GetInfo(7)->AddAddress(IP("10.0.0.9")); },
         Bytes("05 07 11 0A 00 00 09")},
        {"RemoveAddress", [](auto& table) { table.GetInfo(5)->RemoveAddress(IP("10.0.0.9")); },
         Bytes("06 05 11 0A 00 00 09")},
        {"AddNeighbor",
         [](auto& table) { table.GetInfo(7)->AddNeighbor(Read<EDiscoveredNeighbor>("EDiscoveredNeighbor.hex")); },
         Bytes("07 07 01") + Golden("EDiscoveredNeighbor.hex").substr(1)}, // under its new id
        {"RemoveNeighbor", [](auto& table) { table.GetInfo(5)->RemoveNeighbor(1); }, Bytes("08 05 01")},
        {"SetNeighbor",
         [](auto& table) { table.GetInfo(5)->SetNeighbor(1, Read<EDiscoveredNeighbor>("EDiscoveredNeighbor.hex")); },
         Bytes("09 05 01") + Golden("EDiscoveredNeighbor.hex")},
        {"SetIsRouter, router", [](auto& table) { table.GetInfo(5)->GetNeighbor(2)->SetIsRouter(true); },
         Bytes("0A 05 02 01")},
        {"SetIsRouter, host", [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->SetIsRouter(false); },
         Bytes("0A 05 01 00")},
        {"SetMac", [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->SetMac(MAC("02:00:00:00:00:99")); },
         Bytes("0B 05 01 02 00 00 00 00 99")},
        {"AddAddress of a neighbour", [](auto& table) { table.GetInfo(5)->GetNeighbor(2)->AddAddress(IP("10.0.0.2")); },
         Bytes("0C 05 02 11 0A 00 00 02")},
        {"RemoveAddress of a neighbour",
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->RemoveAddress(IP("10.0.0.1")); },
         Bytes("0D 05 01 11 0A 00 00 01")},
        {"SetDHCPInfo",
         [](auto& table) { table.GetInfo(5)->SetDHCPInfo(Read<EDHCPDiscoveredInfo>("EDHCPDiscoveredInfo.hex")); },
         Bytes("0E 05") + Golden("EDHCPDiscoveredInfo.hex")},
        {"SetDHCPv6Info",
         [](auto& table) { table.GetInfo(5)->SetDHCPv6Info(Read<EDHCPv6DiscoveredInfo>("EDHCPv6DiscoveredInfo.hex")); },
         Bytes("0F 05") + Golden("EDHCPv6DiscoveredInfo.hex")},
        {"Empty of the DHCPv6 record", [](auto& table) { table.GetInfo(5)->GetDHCPv6Info().Empty(); },
         Bytes("0F 05") + Golden("EDHCPv6DiscoveredInfo.defaults.hex")},
        {"SetFCoEInfo",
         [](auto& table) {
             table.GetInfo(5)->SetFCoEInfo(Read<EFCoEDiscoveredInfo>("EFCoEDiscoveredInfo.v1110143C.hex"));
         },
         Bytes("10 05") + Golden("EFCoEDiscoveredInfo.v1110143C.hex")},
        {"SetPTPInfo",
         [](auto& table) { table.GetInfo(5)->SetPTPInfo(Read<EPTPDiscoveredInfo>("EPTPDiscoveredInfo.v1.hex")); },
         Bytes("11 05") + Golden("EPTPDiscoveredInfo.v1.hex")},
        {"Empty of the PTP record", [](auto& table) { table.GetInfo(5)->GetPTPInfo().Empty(); },
         Bytes("11 05") + Golden("EPTPDiscoveredInfo.defaults.v1.hex")},
        {"SetDCBXInfo",
         [](auto& table) {
             table.GetInfo(5)->SetDCBXInfo(Read<EDCBXDiscoveredInfo>("EDCBXDiscoveredInfo.v10390129.hex"));
         },
         Bytes("12 05") + Golden("EDCBXDiscoveredInfo.v10390129.hex")},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Pair pair(FillSample);
        ASSERT_TRUE(pair.AreEqual());
        c.change(pair.first);
        EXPECT_EQ(1U, pair.writer->GetChangeCount());
        EBlob const message = pair.writer->TakeMessage();
        EXPECT_EQ(Bytes("01") + c.operation + Bytes("00"), BytesOf(message));
        Apply(pair.second, message);
        EXPECT_TRUE(pair.AreEqual());
    }
    Pair pair(FillSample);
    pair.first.GetInfo(5)->SetInterfaceUp(true);
    pair.Pass();
    pair.first.GetInfo(5)->SetInterfaceUp(false);
    EXPECT_EQ(Bytes("01 04 05 00 00"), BytesOf(pair.writer->TakeMessage()));
}

TEST(EDiscoveredChangeWriter, TakeMessageGivesTheChangesSinceTheLastOneAsAWholeStream)
{
    Pair pair(FillSample);
    EXPECT_FALSE(pair.writer->HasChanges());
    EXPECT_EQ(0U, pair.writer->GetChangeCount());
    EXPECT_EQ(Bytes("00"), BytesOf(pair.writer->TakeMessage())); // an empty stream

    pair.first.GetInfo(7)->SetInterfaceUp(true);
    pair.first.GetInfo(7)->SetInterfaceUp(false);
    EXPECT_TRUE(pair.writer->HasChanges());
    EXPECT_EQ(2U, pair.writer->GetChangeCount());
    EXPECT_EQ(Bytes("01 04 07 01  01 04 07 00  00"), BytesOf(pair.writer->TakeMessage()));
    EXPECT_FALSE(pair.writer->HasChanges());
    EXPECT_EQ(0U, pair.writer->GetChangeCount());

    pair.first.RemoveInfo(7);
    EXPECT_EQ(1U, pair.writer->GetChangeCount());
    EXPECT_EQ(Bytes("01 02 07  00"), BytesOf(pair.writer->TakeMessage()));
    EXPECT_EQ(Bytes("00"), BytesOf(pair.writer->TakeMessage()));
}

TEST(EDiscoveredChangeWriter, WhatChangesNothingAndIsNotAnnouncedIsNoChange)
{
    Pair pair(FillSample);
    pair.first.GetInfo(5)->SetInterfaceUp(false);
    pair.first.GetInfo(5)->AddAddress(IP("10.0.0.9"));
    pair.first.GetInfo(5)->RemoveAddress(IP("10.0.0.8"));
    pair.first.GetInfo(5)->RemoveNeighbor(9);
    pair.first.RemoveInfo(9);
    EXPECT_FALSE(pair.writer->HasChanges());
    EXPECT_TRUE(pair.AreEqual());
}

// ---- Random changes -------------------------------------------------------------------------------------------------

namespace {

/// Changes of any kind that the limits of the writer allow.
class RandomChanges {
public:
    explicit RandomChanges(unsigned int seed) : m_random(seed) {}

    void Fill(EDiscoveredTable& table)
    {
        for (unsigned int count = Below(6); count > 0; --count) table.AddInfo(AnyInfo());
    }
    void Change(EDiscoveredTable& table)
    {
        switch (Below(12)) {
        case 0: table.AddInfo(AnyInfo()); return;
        case 1:
            if (unsigned int const id = Below(4); Below(3) == 0 && MayBeMissed(table, id)) table.RemoveInfo(id);
            return;
        case 2:
            if (unsigned int const id = Below(4); MayBeMissed(table, id)) table.SetInfo(id, AnyInfo());
            return;
        case 3:
            if (Below(4) == 0) ChangeAll(table);
            return;
        default: break;
        }
        if (EDiscoveredInfo* const info = table.GetInfo(Below(4))) ChangeInfo(*info);
    }

private:
    /// One that is not there may be removed and set when there is a default MAC: nobody looks for one then.
    static bool MayBeMissed(EDiscoveredTable const& table, unsigned int id)
    {
        return table.HasDefaultMAC() || table.GetInfo(id);
    }
    void ChangeAll(EDiscoveredTable& table)
    {
        if (Below(8) == 0) {
            table.Empty();
            return;
        }
        EDiscoveredTable other;
        Fill(other);
        if (Below(2) == 0)
            table = other;
        else
            table.Copy(table); // loses the default MAC
    }
    void ChangeInfo(EDiscoveredInfo& info)
    {
        unsigned int const id = 1 + Below(4);
        EDiscoveredNeighbor* const neighbor = info.GetNeighbor(id);
        switch (Below(14)) {
        case 0: info.SetInterfaceUp(Below(2) == 0); break;
        case 1: info.AddAddress(AnyAddress()); break;
        case 2: info.RemoveAddress(AnyAddress()); break;
        case 3:
        case 4: info.AddNeighbor(AnyNeighbor()); break;
        case 5: info.SetNeighbor(id, AnyNeighbor()); break;
        case 6:
            if (neighbor || info.GetLocalId() != 0) info.RemoveNeighbor(id);
            break;
        case 7:
            if (neighbor) neighbor->SetIsRouter(Below(2) == 0);
            break;
        case 8:
            if (neighbor) neighbor->SetMac(AnyMac());
            break;
        case 9:
        case 10:
            if (neighbor) neighbor->AddAddress(AnyAddress());
            break;
        case 11:
            if (neighbor) neighbor->RemoveAddress(AnyAddress());
            break;
        case 12:
            if (neighbor) info.SetNeighbor(id, *neighbor);
            break;
        default: ChangeProtocolRecord(info); break;
        }
    }
    void ChangeProtocolRecord(EDiscoveredInfo& info)
    {
        static EDHCPDiscoveredInfo const dhcp = Read<EDHCPDiscoveredInfo>("EDHCPDiscoveredInfo.hex");
        static EDHCPv6DiscoveredInfo const dhcpv6 = Read<EDHCPv6DiscoveredInfo>("EDHCPv6DiscoveredInfo.hex");
        static EFCoEDiscoveredInfo const fcoe = Read<EFCoEDiscoveredInfo>("EFCoEDiscoveredInfo.v1110143C.hex");
        static EPTPDiscoveredInfo const ptp = Read<EPTPDiscoveredInfo>("EPTPDiscoveredInfo.v1.hex");
        static EDCBXDiscoveredInfo const dcbx = Read<EDCBXDiscoveredInfo>("EDCBXDiscoveredInfo.v10390129.hex");
        bool const isDefault = Below(2) == 0;
        switch (Below(7)) {
        case 0: info.SetDHCPInfo(isDefault ? EDHCPDiscoveredInfo() : dhcp); break;
        case 1: info.SetDHCPv6Info(isDefault ? EDHCPv6DiscoveredInfo() : dhcpv6); break;
        case 2: info.SetFCoEInfo(isDefault ? EFCoEDiscoveredInfo() : fcoe); break;
        case 3: info.SetPTPInfo(isDefault ? EPTPDiscoveredInfo() : ptp); break;
        case 4: info.SetDCBXInfo(isDefault ? EDCBXDiscoveredInfo() : dcbx); break;
        case 5: info.GetDHCPv6Info().Empty(); break;
        default: info.GetPTPInfo().Empty(); break;
        }
    }

    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
    EMACAddress AnyMac() { return MAC("02:00:00:00:00:0" + std::to_string(Below(6))); }
    EIPAddress AnyAddress() { return IP((Below(2) == 0 ? "10.0.0." : "2001:db8::") + std::to_string(Below(4))); }
    EDiscoveredNeighbor AnyNeighbor()
    {
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(AnyMac());
        for (unsigned int count = Below(3); count > 0; --count) neighbor.AddAddress(AnyAddress());
        neighbor.SetIsRouter(Below(2) == 0);
        return neighbor;
    }
    EDiscoveredInfo AnyInfo()
    {
        EDiscoveredInfo info = Info(Below(4));
        for (unsigned int count = Below(4); count > 0; --count) info.AddNeighbor(AnyNeighbor());
        if (Below(2) == 0) info.AddAddress(AnyAddress());
        return info;
    }

    std::mt19937 m_random;
};

} // namespace

TEST(EDiscoveredChangeWriter, ASecondTableIsEqualAfterEveryOperation)
{
    unsigned long changes = 0;
    for (unsigned int seed = 1; seed <= 200; ++seed) {
        RandomChanges random(seed);
        Pair pair([&](EDiscoveredTable& table) { random.Fill(table); });
        for (int step = 0; step < 40; ++step) {
            random.Change(pair.first);
            changes += pair.writer->GetChangeCount();
            pair.Pass();
            ASSERT_TRUE(pair.AreEqual()) << "seed " << seed << ", step " << step << "\n"
                                         << TextOf(pair.first) << "\n"
                                         << TextOf(pair.second);
        }
    }
    EXPECT_LT(2500U, changes); // enough of them do something
}

TEST(EDiscoveredChangeWriter, ATableThatIsFedLaterInOneMessageIsEqualAndFeedsAThirdOne)
{
    for (unsigned int seed = 1001; seed <= 1050; ++seed) {
        SCOPED_TRACE(seed);
        Pair pair;
        Pair next;
        RandomChanges random(seed);
        for (int step = 0; step < 100; ++step) random.Change(pair.first);
        Apply(next.first, pair.writer->TakeMessage());
        next.Pass();
        ASSERT_EQ(Written(pair.first), Written(next.first));
        ASSERT_TRUE(next.AreEqual());
    }
}

// ---- Limits ---------------------------------------------------------------------------------------------------------

namespace {

struct LimitCase {
    char const* name;
    std::function<void(EDiscoveredTable&)> change;
};

} // namespace

/// An info with something in every protocol record.
static void FillProtocols(EDiscoveredTable& table)
{
    FillSample(table);
    EDiscoveredInfo& info = *table.GetInfo(5);
    info.GetDHCPInfo().SetLeaseTimer(1);
    info.GetFCoEInfo().SetDiscoveredSourceId(1);
    info.GetDCBXInfo().SetLocalAndPeerLLDPInfoList({});
}

TEST(EDiscoveredChangeWriter, WhatIsNotAnnouncedIsNotWrittenAndTheTablesPart)
{
    LimitCase const cases[] = {
        {"SetDefaultMAC", [](auto& table) { table.SetDefaultMAC(5, 2, EMACAddress()); }},
        {"FindDefaultMAC",
         [](auto& table) {
             table.GetInfo(5)->GetNeighbor(1)->RemoveAddress(IP("10.0.0.1")); // announced, does not look for one
             table.FindDefaultMAC();
         }},
        {"Swap of the table",
         [](auto& table) {
             EDiscoveredTable other;
             table.Swap(other);
         }},
        {"Swap of an info",
         [](auto& table) {
             EDiscoveredInfo other;
             table.GetInfo(5)->Swap(other);
         }},
        {"Swap of a neighbour",
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->Swap(*table.GetInfo(5)->GetNeighbor(2)); }},
        {"Swap of a protocol record",
         [](auto& table) {
             EDHCPDiscoveredInfo other;
             table.GetInfo(5)->GetDHCPInfo().Swap(other);
         }},
        {"SetLocalId", [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->SetLocalId(9); }},
        {"SerializeIn of the table", [](auto& table) { ReadInto(table, Golden("EDiscoveredTable.hex")); }},
        {"SerializeIn of an info", [](auto& table) { ReadInto(*table.GetInfo(7), Golden("EDiscoveredInfo.hex")); }},
        {"SerializeIn of a neighbour",
         [](auto& table) { ReadInto(*table.GetInfo(5)->GetNeighbor(1), Golden("EDiscoveredNeighbor.hex")); }},
        {"SerializeIn of a protocol record",
         [](auto& table) { ReadInto(table.GetInfo(5)->GetPTPInfo(), Golden("EPTPDiscoveredInfo.v1.hex")); }},
        {"a field of the DHCP record", [](auto& table) { table.GetInfo(5)->GetDHCPInfo().SetLeaseTimer(2); }},
        {"a field of the DHCPv6 record", [](auto& table) { table.GetInfo(5)->GetDHCPv6Info().SetValid(true); }},
        {"a field of the FCoE record", [](auto& table) { table.GetInfo(5)->GetFCoEInfo().SetValid(true); }},
        {"a field of the PTP record", [](auto& table) { table.GetInfo(5)->GetPTPInfo().SetDiscoveredState("SLAVE"); }},
        {"a field of the DCBX record",
         [](auto& table) {
             table.GetInfo(5)->GetDCBXInfo().SetLocalAndPeerLLDPInfoList({{"", "", ""}});
         }},
        {"Empty of the DHCP record", [](auto& table) { table.GetInfo(5)->GetDHCPInfo().Empty(); }},
        {"Empty of the FCoE record", [](auto& table) { table.GetInfo(5)->GetFCoEInfo().Empty(); }},
        {"Empty of the DCBX record", [](auto& table) { table.GetInfo(5)->GetDCBXInfo().Empty(); }},
    };
    for (LimitCase const& c : cases) {
        SCOPED_TRACE(c.name);
        Pair pair(FillProtocols);
        ASSERT_TRUE(pair.AreEqual());
        c.change(pair.first);
        EXPECT_EQ(c.name == std::string("FindDefaultMAC") ? 1U : 0U, pair.writer->GetChangeCount());
        pair.Pass();
        EXPECT_FALSE(pair.AreEqual());
    }
}

TEST(EDiscoveredChangeWriter, CopyAndEmptyOfWhatIsInTheTableAreWrittenAsItsSettingAndTheTablesPart)
{
    LimitCase const cases[] = {
        {"Copy of an info", [](auto& table) { table.GetInfo(5)->Copy(Info(8)); }},
        {"Empty of an info", [](auto& table) { table.GetInfo(5)->Empty(); }},
        {"Copy of a neighbour",
         [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->Copy(Neighbor("02:00:00:00:00:09")); }},
        {"Empty of a neighbour", [](auto& table) { table.GetInfo(5)->GetNeighbor(1)->Empty(); }},
    };
    for (LimitCase const& c : cases) {
        SCOPED_TRACE(c.name);
        Pair pair(FillSample);
        c.change(pair.first);
        EXPECT_EQ(1U, pair.writer->GetChangeCount());
        pair.Pass();
        EXPECT_FALSE(pair.AreEqual());
    }
}

TEST(EDiscoveredChangeWriter, ADefaultMACThatIsLookedForWhenSomethingMissingIsRemovedOrSetIsNotWritten)
{
    LimitCase const cases[] = {
        {"SetInfo", [](auto& table) { table.SetInfo(9, EDiscoveredInfo()); }},
        {"RemoveInfo", [](auto& table) { table.RemoveInfo(0); }},
        {"RemoveNeighbor", [](auto& table) { table.GetInfo(0U)->RemoveNeighbor(0); }},
    };
    for (LimitCase const& c : cases) {
        SCOPED_TRACE(c.name);
        bool const needsInfo0 = c.name == std::string("RemoveNeighbor");
        Pair pair([needsInfo0](EDiscoveredTable& table) {
            table.AddInfo(Info(5, {Neighbor("02:00:00:00:00:01")}));
            if (needsInfo0) table.AddInfo(Info(0));
            table.GetInfo(5)->GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
        });
        ASSERT_FALSE(pair.first.HasDefaultMAC());
        c.change(pair.first);
        EXPECT_FALSE(pair.writer->HasChanges());
        EXPECT_TRUE(pair.first.HasDefaultMAC());
        EXPECT_FALSE(pair.AreEqual());
    }
}

TEST(EDiscoveredChangeWriter, TheSecondTableIndexesTheNeighborsOfAWholeInfoAnew)
{
    EMACAddress const mac = MAC("02:00:00:00:00:01");
    EMACAddress const old = MAC("02:00:00:00:00:03");
    EDiscoveredInfo source =
        Info(5, {Neighbor("02:00:00:00:00:01"), Neighbor("02:00:00:00:00:01"), Neighbor("02:00:00:00:00:03")});
    source.SetNeighbor(1, *source.GetNeighbor(1));
    source.GetNeighbor(3)->SetMac(MAC("02:00:00:00:00:04"));
    Pair pair;
    pair.first.AddInfo(source);
    pair.Pass();
    EXPECT_TRUE(pair.AreEqual());
    EXPECT_EQ(1U, pair.first.GetInfo(5)->FindNeighborByMAC(mac)->GetLocalId());  // indexed last
    EXPECT_EQ(2U, pair.second.GetInfo(5)->FindNeighborByMAC(mac)->GetLocalId()); // the highest id
    EXPECT_NE(nullptr, pair.first.GetInfo(5)->FindNeighborByMAC(old));
    EXPECT_EQ(nullptr, pair.second.GetInfo(5)->FindNeighborByMAC(old));
    // From then on both change alike.
    pair.first.GetInfo(5)->SetNeighbor(1, Neighbor("02:00:00:00:00:05"));
    pair.Pass();
    EXPECT_EQ(nullptr, pair.first.GetInfo(5)->FindNeighborByMAC(mac));
    EXPECT_EQ(nullptr, pair.second.GetInfo(5)->FindNeighborByMAC(mac));
}

TEST(EDiscoveredChangeWriter, ARateOfPTPStatisticsMayBecomeAMillionthLessEachTimeItIsWritten)
{
    std::string const defaults = Golden("EPTPDiscoveredInfo.defaults.v1.hex");
    std::size_t const rate = defaults.size() - 11; // one byte; a 64-bit value and the port's seven fields follow
    struct {
        char const* read; // millionths
        char const* first;
        char const* second;
    } const cases[] = {
        {"C8", "C8", "C8"},                   // 200
        {"F8 FB", "F8 FA", "F8 FA"},          // 251: its double is a little less
        {"F9 0F 4F", "F9 0F 4E", "F9 0F 4D"}, // 3919: and so is that of 3918
        {"F9 0F 4E", "F9 0F 4D", "F9 0F 4D"}, // 3918
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.read);
        auto const withRate = [&](char const* hex) {
            return defaults.substr(0, rate) + Bytes(hex) + defaults.substr(rate + 1);
        };
        EPTPDiscoveredInfo record;
        ReadInto(record, withRate(c.read));
        Pair pair(FillSample);
        pair.first.GetInfo(5)->SetPTPInfo(record);
        pair.Pass();
        EXPECT_EQ(withRate(c.first), Written(pair.first.GetInfo(5)->GetPTPInfo()));
        EXPECT_EQ(withRate(c.second), Written(pair.second.GetInfo(5)->GetPTPInfo()));
    }
}
