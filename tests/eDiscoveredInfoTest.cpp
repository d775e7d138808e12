#include "eDiscoveredInfo.hpp"

#include "discoveredRecorder.hpp"
#include "fullDiscoveredInfo.hpp"
#include "golden.hpp"

#include "eComponentId.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

using Calls = std::vector<std::string>;

// ---- The record itself ----------------------------------------------------------------------------------------------

TEST(EDiscoveredInfo, ANewOneIsDownAndEmpty)
{
    EDiscoveredInfo const info;
    EXPECT_EQ("0 down", TextOf(info));
    EXPECT_EQ(kNoProtocols, ProtocolText(info));
    EXPECT_EQ(nullptr, info.GetParent());
    EXPECT_EQ(nullptr, info.GetAddressAt(0));
    EXPECT_EQ(nullptr, info.GetNeighbor(1));
    ExpectAdopted(info);
}

TEST(EDiscoveredInfo, ComponentIdIsTheInterfaceAndUntouchedWithoutATable)
{
    RecordedInfo const in;
    EComponentId id{9, 9};
    in.info.GetComponentId(id);
    EXPECT_EQ(EComponentId{5}, id);
    id = {9, 9};
    Info(5).GetComponentId(id);
    EXPECT_EQ((EComponentId{9, 9}), id);
}

TEST(EDiscoveredInfo, SetInterfaceUpAnnouncesARealChangeOnlyWhileTheOldStateIsThere)
{
    RecordedInfo in;
    struct {
        bool up;
        Calls announced;
    } const steps[] = {
        {false, {}}, {true, {"InterfaceWentUp(5 down)"}}, {true, {}}, {false, {"InterfaceWentDown(5 up)"}}, {false, {}},
    };
    for (auto const& step : steps) {
        in.info.SetInterfaceUp(step.up);
        EXPECT_EQ(step.announced, in.recorder->TakeCalls());
        EXPECT_EQ(step.up, in.info.IsInterfaceUp());
    }
}

TEST(EDiscoveredInfo, AddressesAreKeptOnceInTheOrderOfAdding)
{
    RecordedInfo in;
    in.info.AddAddress(IP("10.0.0.2"));
    in.info.AddAddress(IP("::"));
    in.info.AddAddress(IP("0.0.0.0")); // of another family
    in.info.AddAddress(IP("10.0.0.2"));
    in.info.AddAddress(*in.info.GetAddressAt(1));
    EXPECT_EQ((Calls{"AddingAddress(5 down: 10.0.0.2)", "AddingAddress(5 down 10.0.0.2: ::)",
                     "AddingAddress(5 down 10.0.0.2 ::: 0.0.0.0)"}),
              in.recorder->TakeCalls());
    EXPECT_EQ("5 down 10.0.0.2 :: 0.0.0.0", TextOf(in.info));
    EXPECT_EQ(3U, in.info.GetAddressCount());
    EXPECT_EQ(nullptr, in.info.GetAddressAt(3));
    EXPECT_EQ(nullptr, in.info.GetAddressAt(0xFFFFFFFF));
    EXPECT_TRUE(in.info.HasAddress(IP("::")));
    EXPECT_FALSE(in.info.HasAddress(IP("::1")));
}

TEST(EDiscoveredInfo, RemoveAddressKeepsTheOrderOfTheRest)
{
    RecordedInfo in;
    for (char const* const address : {"10.0.0.3", "10.0.0.1", "10.0.0.2"}) in.info.AddAddress(IP(address));
    in.recorder->Clear();
    in.info.RemoveAddress(IP("10.0.0.1"));
    in.info.RemoveAddress(IP("10.0.0.1")); // no longer there
    EXPECT_EQ(Calls{"RemovingAddress(5 down 10.0.0.3 10.0.0.1 10.0.0.2: 10.0.0.1)"}, in.recorder->TakeCalls());
    EXPECT_EQ("5 down 10.0.0.3 10.0.0.2", TextOf(in.info));
}

TEST(EDiscoveredInfo, AnAddressToRemoveMayBeItsOwn)
{
    RecordedInfo in;
    for (char const* const address : {"10.0.0.1", "10.0.0.2"}) in.info.AddAddress(IP(address));
    std::string told;
    in.recorder->whenCalled = [&] { told = TextOf(in.recorder->Argument<EIPAddress>(0)); };
    in.info.RemoveAddress(*in.info.GetAddressAt(0));
    EXPECT_EQ("10.0.0.1", told);
    EXPECT_EQ("5 down 10.0.0.2", TextOf(in.info));
    in.info.RemoveAddress(*in.info.GetAddressAt(0));
    EXPECT_EQ("10.0.0.2", told);
    EXPECT_EQ("5 down", TextOf(in.info));
}

TEST(EDiscoveredInfo, AnObserverMayAddAddressesWhileOneOfTheListIsRemoved)
{
    RecordedInfo in;
    in.info.AddAddress(IP("10.0.0.1"));
    in.info.AddAddress(IP("10.0.0.2"));
    bool isFirst = true;
    in.recorder->whenCalled = [&] {
        if (!std::exchange(isFirst, false)) return;
        for (int i = 0; i < 40; ++i) in.info.AddAddress(IP("10.0.1." + std::to_string(i))); // the list moves
    };
    in.info.RemoveAddress(*in.info.GetAddressAt(0));
    EXPECT_EQ(41U, in.info.GetAddressCount());
    EXPECT_FALSE(in.info.HasAddress(IP("10.0.0.1")));
    EXPECT_EQ("10.0.0.2", in.info.GetAddressAt(0)->GetAsString());
}

TEST(EDiscoveredInfo, WithoutATableEverythingWorksAndNobodyIsTold)
{
    EDiscoveredInfo info = FullInfo();
    EXPECT_EQ(kFullText, TextOf(info));
    info.RemoveAddress(IP("10.0.0.9"));
    info.SetInterfaceUp(false);
    info.SetNeighbor(2, Neighbor(kMacs[2], {"10.0.0.3"}));
    info.RemoveNeighbor(1);
    info.SetDHCPInfo(EDHCPDiscoveredInfo());
    EXPECT_EQ("7 down 2001:db8::9 [2 02:00:00:00:00:03 router 10.0.0.3]", TextOf(info));
    EXPECT_EQ(2U, ByMac(info, kMacs[2]));
    EXPECT_EQ(3U, info.AddNeighbor(Neighbor(kMacs[0])));
    info.Empty();
    EXPECT_EQ("0 down", TextOf(info));
}

// ---- Protocol records -----------------------------------------------------------------------------------------------

/// The setter announces this record with the old and the new content, then takes it; the record keeps its parent.
template <class Record, class Text>
static void ExpectRecordSet(char const* operation, Record& (EDiscoveredInfo::*get)(),
                            void (EDiscoveredInfo::*set)(Record const&), std::function<void(Record&)> const& change,
                            Text const& text)
{
    SCOPED_TRACE(operation);
    RecordedInfo in;
    Record& record = (in.info.*get)();
    std::string const before = text(record);
    Record source;
    change(source);
    std::string const after = text(source);
    ASSERT_NE(before, after);

    DiscoveredRecorder& recorder = *in.recorder;
    recorder.whenCalled = [&] {
        EXPECT_EQ(before, text(record));
        EXPECT_EQ(after, text(recorder.Argument<Record>(0)));
        EXPECT_NE(&source, &recorder.Argument<Record>(0));
    };
    (in.info.*set)(source);
    recorder.whenCalled = nullptr;
    ASSERT_EQ(Calls{operation}, recorder.Operations());
    EXPECT_EQ(&record, recorder.calls[0].record);
    EXPECT_EQ(after, text(record));
    EXPECT_EQ(&in.info, record.GetParent());

    recorder.Clear();
    (in.info.*set)(record); // its own
    EXPECT_EQ(Calls{operation}, recorder.Operations());
    EXPECT_EQ(after, text(record));
    EXPECT_EQ(&in.info, record.GetParent());
}

TEST(EDiscoveredInfo, SettingAProtocolRecordAnnouncesOldAndNewAndKeepsTheParent)
{
    ExpectRecordSet<EDHCPDiscoveredInfo>(
        "SettingDHCPDiscoveredInfo", &EDiscoveredInfo::GetDHCPInfo, &EDiscoveredInfo::SetDHCPInfo,
        [](auto& record) { record.SetLeaseTimer(11); },
        [](auto const& record) { return std::to_string(record.GetLeaseTimer()); });
    ExpectRecordSet<EDHCPv6DiscoveredInfo>(
        "SettingDHCPv6DiscoveredInfo", &EDiscoveredInfo::GetDHCPv6Info, &EDiscoveredInfo::SetDHCPv6Info,
        [](auto& record) { record.SetIARenewTime(12); },
        [](auto const& record) { return std::to_string(record.GetIARenewTime()); });
    ExpectRecordSet<EFCoEDiscoveredInfo>(
        "SettingFCoEDiscoveredInfo", &EDiscoveredInfo::GetFCoEInfo, &EDiscoveredInfo::SetFCoEInfo,
        [](auto& record) { record.SetDiscoveredSourceId(13); },
        [](auto const& record) { return std::to_string(record.GetDiscoveredSourceId()); });
    ExpectRecordSet<EPTPDiscoveredInfo>(
        "SettingPTPDiscoveredInfo", &EDiscoveredInfo::GetPTPInfo, &EDiscoveredInfo::SetPTPInfo,
        [](auto& record) { record.SetDiscoveredState("SLAVE"); },
        [](auto const& record) { return record.GetDiscoveredStateAsString(); });
    ExpectRecordSet<EDCBXDiscoveredInfo>(
        "SettingDCBXDiscoveredInfo", &EDiscoveredInfo::GetDCBXInfo, &EDiscoveredInfo::SetDCBXInfo,
        [](auto& record) { record.SetLocalAndPeerLLDPInfoList({}); },
        [](auto const& record) { return std::to_string(record.GetLocalAndPeerLLDPInfoList().size()); });
}

// ---- Whole infos ----------------------------------------------------------------------------------------------------

TEST(EDiscoveredInfo, ACopyHasAllButTheParentAndItsRecordsPointAtIt)
{
    RecordedInfo in;
    in.table.SetInfo(5, FullInfo());
    in.recorder->Clear();
    EDiscoveredInfo copy(in.info);
    EXPECT_EQ(nullptr, copy.GetParent());
    EXPECT_EQ("5" + std::string(kFullText).substr(1), TextOf(copy));
    EXPECT_EQ(kFullProtocols, ProtocolText(copy));
    ExpectAdopted(copy);
    ExpectAdopted(in.info);
    EXPECT_EQ(&in.table, in.info.GetParent());
    // With the indexes; they lead to its own neighbours.
    EXPECT_EQ(copy.GetNeighbor(2), copy.FindNeighborByMAC(MAC(kMacs[1])));
    EXPECT_EQ(copy.GetNeighbor(1), copy.FindNeighborByIP(IP("10.0.0.1")));
    EXPECT_NE(in.info.GetNeighbor(1), copy.GetNeighbor(1));
    copy.GetNeighbor(1)->AddAddress(IP("10.0.0.3"));
    EXPECT_EQ(1U, ByIp(copy, "10.0.0.3"));
    EXPECT_EQ(0U, ByIp(in.info, "10.0.0.3"));
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
}

TEST(EDiscoveredInfo, ACopyTakesTheIndexesAsTheyAre)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0]), Neighbor(kMacs[1])});
    info.GetNeighbor(1)->SetMac(MAC(kMacs[2]));
    EDiscoveredInfo const copy(info);
    EXPECT_EQ(1U, ByMac(copy, kMacs[0])); // the old one
    EXPECT_EQ(0U, ByMac(copy, kMacs[2]));
}

TEST(EDiscoveredInfo, OutlivesTheSourceOfItsCopy)
{
    auto source = std::make_unique<RecordedInfo>();
    source->table.SetInfo(5, FullInfo());
    EDiscoveredInfo constructed(source->info);
    EDiscoveredInfo assigned;
    assigned = source->info;
    EDiscoveredInfo swapped;
    swapped.Swap(source->info);
    source.reset();
    for (EDiscoveredInfo* const info : {&constructed, &assigned, &swapped}) {
        ExpectAdopted(*info);
        info->GetNeighbor(1)->AddAddress(IP("10.0.0.3"));
        info->SetPTPInfo(EPTPDiscoveredInfo());
        info->RemoveNeighbor(2);
        EXPECT_EQ("5 up 10.0.0.9 2001:db8::9 [1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.3]", TextOf(*info));
    }
}

TEST(EDiscoveredInfo, CopyAndEmptyAreAnnouncedOnceWithTheReplacementAndTakeItsIdToo)
{
    EDiscoveredInfo const source = FullInfo();
    struct {
        char const* name;
        std::function<void(EDiscoveredInfo&)> change;
        char const* after;
        char const* protocols;
    } const cases[] = {
        {"Copy", [&](auto& info) { info.Copy(source); }, kFullText, kFullProtocols},
        {"operator=", [&](auto& info) { info = source; }, kFullText, kFullProtocols},
        {"Empty", [](auto& info) { info.Empty(); }, "0 down", kNoProtocols},
        {"itself", [](auto& info) { info.Copy(info); }, "5 down 10.0.0.8 [1 02:00:00:00:00:03 router]", kNoProtocols},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        RecordedInfo in;
        in.info.AddAddress(IP("10.0.0.8"));
        in.info.AddNeighbor(Neighbor(kMacs[2]));
        in.recorder->Clear();
        in.recorder->whenCalled = [&] {
            EDiscoveredInfo const& replacement = in.recorder->Argument<EDiscoveredInfo>(0);
            EXPECT_NE(&source, &replacement);
            EXPECT_EQ(c.protocols, ProtocolText(replacement));
            EXPECT_EQ(nullptr, replacement.GetParent());
            ExpectAdopted(replacement);
        };
        c.change(in.info);
        EXPECT_EQ(Calls{std::string("SettingInfo(5 down 10.0.0.8 [1 02:00:00:00:00:03 router]: ") + c.after + ")"},
                  in.recorder->TakeCalls());
        EXPECT_EQ(c.after, TextOf(in.info));
        EXPECT_EQ(c.protocols, ProtocolText(in.info));
        EXPECT_EQ(&in.table, in.info.GetParent());
        ExpectAdopted(in.info);
        EXPECT_EQ(c.after == kFullText ? 1U : 0U, ByMac(in.info, kMacs[0]));    // the indexes are replaced too
        EXPECT_EQ("02:00:00:00:00:03", in.table.GetDefaultMAC().GetAsString()); // the table's affair
    }
}

TEST(EDiscoveredInfo, SwapExchangesAllButTheParentsAndTellsNobody)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[2], {"10.0.0.3"}));
    in.recorder->Clear();
    EDiscoveredInfo other = FullInfo();
    in.info.Swap(other);
    EXPECT_EQ(kFullText, TextOf(in.info)); // with the id, on purpose
    EXPECT_EQ(kFullProtocols, ProtocolText(in.info));
    EXPECT_EQ(&in.table, in.info.GetParent());
    EXPECT_EQ(2U, ByMac(in.info, kMacs[1]));
    EXPECT_EQ(0U, ByMac(in.info, kMacs[2]));
    EXPECT_EQ(2U, ByIp(in.info, "10.0.0.2"));
    EXPECT_EQ("5 down [1 02:00:00:00:00:03 router 10.0.0.3]", TextOf(other));
    EXPECT_EQ(kNoProtocols, ProtocolText(other));
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ(1U, ByIp(other, "10.0.0.3"));
    EXPECT_EQ(3U, EDiscoveredInfo(in.info).AddNeighbor(EDiscoveredNeighbor())); // the generators too
    EXPECT_EQ(2U, EDiscoveredInfo(other).AddNeighbor(EDiscoveredNeighbor()));
    ExpectAdopted(in.info);
    ExpectAdopted(other);
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    in.info.Swap(in.info);
    EXPECT_EQ(kFullText, TextOf(in.info));
    ExpectAdopted(in.info);
}

// ---- Neighbours -----------------------------------------------------------------------------------------------------

TEST(EDiscoveredInfo, AddNeighborTellsOfTheStoredCopyBeforeItIsIndexed)
{
    RecordedInfo in;
    EDiscoveredNeighbor source = Neighbor(kMacs[0], {"10.0.0.1"}, false);
    source.SetLocalId(77); // does not matter
    in.recorder->whenCalled = [&] {
        EXPECT_EQ(in.info.GetNeighbor(1), in.recorder->calls.back().record);
        EXPECT_EQ(0U, ByMac(in.info, kMacs[0]));
        EXPECT_EQ(0U, ByIp(in.info, "10.0.0.1"));
        EXPECT_FALSE(in.table.HasDefaultMAC());
    };
    EXPECT_EQ(1U, in.info.AddNeighbor(source));
    EXPECT_EQ(Calls{"AddingNeighbor(1 02:00:00:00:00:01 host 10.0.0.1)"}, in.recorder->TakeCalls());
    EXPECT_EQ(1U, ByMac(in.info, kMacs[0]));
    EXPECT_EQ(1U, ByIp(in.info, "10.0.0.1"));
    EXPECT_TRUE(in.table.HasDefaultMAC());
    ExpectAdopted(in.info);
}

TEST(EDiscoveredInfo, WhenAnObserverThrowsTheNeighborIsNotAdded)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"}));
    in.info.AddNeighbor(Neighbor(kMacs[1])); // without an address, so that the default MAC cannot move to it
    in.recorder->whenCalled = [&] {
        in.table.SetDefaultMAC(5, 3, EMACAddress());
        throw std::runtime_error("refused");
    };
    EXPECT_THROW(in.info.AddNeighbor(Neighbor(kMacs[2], {"10.0.0.3"})), std::runtime_error);
    in.recorder->whenCalled = nullptr;
    EXPECT_EQ("5 down [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:02 router]", TextOf(in.info));
    EXPECT_EQ(0U, ByMac(in.info, kMacs[2]));
    EXPECT_EQ(0U, ByIp(in.info, "10.0.0.3"));
    EXPECT_EQ(1U, in.table.GetDefaultMACNbrId());
    in.info.RemoveNeighbor(1);
    EXPECT_FALSE(in.table.HasDefaultMAC());
    EXPECT_EQ(4U, in.info.AddNeighbor(Neighbor(kMacs[2]))); // ids that were announced are never used again
}

TEST(EDiscoveredInfo, AnIdThatAnObserverWasToldIsNeverUsedAgainWhateverItThrows)
{
    struct {
        char const* name;
        void (*refuse)(EDiscoveredInfo&);
        unsigned int next; // the id of the neighbour that is added then
    } const cases[] = {
        {"an error", [](EDiscoveredInfo&) { throw std::runtime_error("refused"); }, 2},
        {"another type", [](EDiscoveredInfo&) { throw 1; }, 2},
        {"want of memory", [](EDiscoveredInfo&) { throw std::bad_alloc(); }, 2},
        {"want of memory behind an address of its own",
         [](EDiscoveredInfo& info) {
             info.GetNeighbor(1)->AddAddress(IP("10.0.0.9"));
             throw std::bad_alloc();
         },
         2},
        {"want of memory behind another neighbour",
         [](EDiscoveredInfo& info) {
             info.RemoveNeighbor(info.AddNeighbor(Neighbor(kMacs[2])));
             throw std::bad_alloc();
         },
         3},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        RecordedInfo in;
        bool told = false;
        in.recorder->whenCalled = [&] {
            if (!std::exchange(told, true)) c.refuse(in.info);
        };
        EXPECT_ANY_THROW(in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"})));
        EXPECT_EQ("5 down", TextOf(in.info));
        EXPECT_EQ(c.next, in.info.AddNeighbor(Neighbor(kMacs[1])));
        EXPECT_EQ(0U, ByMac(in.info, kMacs[0]));
        EXPECT_EQ(0U, ByIp(in.info, "10.0.0.1"));
        EXPECT_EQ(0U, ByIp(in.info, "10.0.0.9"));
    }
}

TEST(EDiscoveredInfo, NeighborIdsAscendAndAreNeverUsedAgain)
{
    RecordedInfo in;
    EXPECT_EQ(1U, in.info.AddNeighbor(Neighbor(kMacs[0])));
    EXPECT_EQ(2U, in.info.AddNeighbor(Neighbor(kMacs[1])));
    in.info.RemoveNeighbor(2);
    EXPECT_EQ(3U, in.info.AddNeighbor(*in.info.GetNeighbor(1))); // a copy of its own
    EXPECT_EQ("5 down [1 02:00:00:00:00:01 router] [3 02:00:00:00:00:01 router]", TextOf(in.info));
    EXPECT_EQ(3U, ByMac(in.info, kMacs[0]));
}

TEST(EDiscoveredInfo, WhenTheIdsAreUsedUpNoNeighborIsAddedOrAnnounced)
{
    RecordedInfo in;
    std::string bytes = Golden("EDiscoveredInfo.defaults.hex");
    bytes.replace(3, 1, Bytes("00")); // the generator's next id: none
    ReadInto(in.info, bytes);
    EXPECT_EQ(0U, in.info.AddNeighbor(Neighbor(kMacs[0])));
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ(0U, ByMac(in.info, kMacs[0]));
    EXPECT_FALSE(in.table.HasDefaultMAC());
}

TEST(EDiscoveredInfo, WhenTheIdsAreUsedUpANeighborOfId0IsNotTakenForTheAddedOne)
{
    RecordedInfo sample;
    ReadInto(sample.info, Bytes("05 00 00 00 01   00 02 00 00 00 00 03 00 01") + // next id 0, and one that has the id 0
                              Golden("EDiscoveredInfo.recordDefaults.hex"));
    ASSERT_TRUE(sample.info.GetNeighbor(0));
    EXPECT_EQ(0U, sample.info.AddNeighbor(Neighbor("02:00:00:00:00:01", {"10.0.0.1"})));
    EXPECT_TRUE(sample.recorder->TakeCalls().empty());
    EXPECT_EQ(1U, sample.info.GetNeighbors().size());
    EXPECT_FALSE(sample.info.FindNeighborByMAC(MAC("02:00:00:00:00:01")));
    EXPECT_FALSE(sample.table.HasDefaultMAC());
}

TEST(EDiscoveredInfo, SetNeighborIndexesTheNeighborUnderTheIdThatItHadItself)
{
    RecordedInfo sample;
    unsigned int const id = sample.info.AddNeighbor(Neighbor("02:00:00:00:00:01"));
    sample.info.GetNeighbor(id)->Empty(); // its id is 0 now
    sample.info.SetNeighbor(id, Neighbor("02:00:00:00:00:02"));
    EXPECT_EQ(MAC("02:00:00:00:00:02"), sample.info.GetNeighbor(id)->GetMac());
    EXPECT_FALSE(sample.info.FindNeighborByMAC(MAC("02:00:00:00:00:02"))); // there is no neighbour 0
}

TEST(EDiscoveredInfo, SetNeighborTellsWhenTheOldContentIsThereButNotIndexed)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1", "10.0.0.2"}));
    in.recorder->Clear();
    EDiscoveredNeighbor source = Neighbor(kMacs[1], {"10.0.0.2", "10.0.0.3"}, false);
    source.SetLocalId(77);
    EDiscoveredNeighbor const* const stored = in.info.GetNeighbor(1);
    in.recorder->whenCalled = [&] {
        EXPECT_EQ(stored, in.recorder->calls.back().record);
        EXPECT_EQ(0U, ByMac(in.info, kMacs[0]) + ByIp(in.info, "10.0.0.1") + ByIp(in.info, "10.0.0.2"));
        EXPECT_EQ(0U, ByMac(in.info, kMacs[1]) + ByIp(in.info, "10.0.0.3"));
        EXPECT_EQ(kMacs[0], in.table.GetDefaultMAC().GetAsString());
    };
    in.info.SetNeighbor(1, source);
    EXPECT_EQ(Calls{"SettingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.2: "
                    "77 02:00:00:00:00:02 host 10.0.0.2 10.0.0.3)"},
              in.recorder->TakeCalls());
    EXPECT_EQ("5 down [1 02:00:00:00:00:02 host 10.0.0.2 10.0.0.3]", TextOf(in.info)); // under its own id
    EXPECT_EQ(stored, in.info.GetNeighbor(1));
    ExpectAdopted(in.info);
    EXPECT_EQ(0U, ByMac(in.info, kMacs[0]) + ByIp(in.info, "10.0.0.1"));
    EXPECT_EQ(1U, ByMac(in.info, kMacs[1]));
    EXPECT_EQ(1U, ByIp(in.info, "10.0.0.2"));
    EXPECT_EQ(1U, ByIp(in.info, "10.0.0.3"));
    EXPECT_EQ(kMacs[1], in.table.GetDefaultMAC().GetAsString());
}

TEST(EDiscoveredInfo, SetNeighborOfAnUnknownIdDoesNothing)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[0]));
    in.table.SetDefaultMAC(5, 9, MAC(kMacs[2])); // even if it is said to be the default
    in.recorder->Clear();
    in.info.SetNeighbor(9, Neighbor(kMacs[1]));
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ("5 down [1 02:00:00:00:00:01 router]", TextOf(in.info));
    EXPECT_EQ(0U, ByMac(in.info, kMacs[1]));
    EXPECT_EQ(kMacs[2], in.table.GetDefaultMAC().GetAsString());
}

TEST(EDiscoveredInfo, ANeighborMayBeSetWithItselfOrAnotherOfItsInfo)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"}));
    in.info.AddNeighbor(Neighbor(kMacs[1], {"10.0.0.2"}));
    in.recorder->Clear();
    in.info.SetNeighbor(1, *in.info.GetNeighbor(1));
    EXPECT_EQ(Calls{"SettingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1: 1 02:00:00:00:00:01 router 10.0.0.1)"},
              in.recorder->TakeCalls());
    EXPECT_EQ(1U, ByMac(in.info, kMacs[0]));
    EXPECT_EQ(1U, ByIp(in.info, "10.0.0.1"));
    in.info.SetNeighbor(2, *in.info.GetNeighbor(1));
    EXPECT_EQ("5 down [1 02:00:00:00:00:01 router 10.0.0.1] [2 02:00:00:00:00:01 router 10.0.0.1]", TextOf(in.info));
    EXPECT_EQ(2U, ByMac(in.info, kMacs[0]));
    ExpectAdopted(in.info);
}

TEST(EDiscoveredInfo, RemoveNeighborTellsWhileItIsStillThereAndIndexed)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"}));
    in.recorder->Clear();
    in.recorder->whenCalled = [&] {
        EXPECT_EQ(in.info.GetNeighbor(1), in.recorder->calls.back().record);
        EXPECT_EQ(1U, ByMac(in.info, kMacs[0]));
        EXPECT_EQ(1U, ByIp(in.info, "10.0.0.1"));
        EXPECT_TRUE(in.table.HasDefaultMAC());
    };
    in.info.RemoveNeighbor(1);
    EXPECT_EQ(Calls{"RemovingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1)"}, in.recorder->TakeCalls());
    EXPECT_EQ("5 down", TextOf(in.info));
    EXPECT_EQ(0U, ByMac(in.info, kMacs[0]) + ByIp(in.info, "10.0.0.1"));
    EXPECT_FALSE(in.table.HasDefaultMAC());
    in.info.RemoveNeighbor(1); // not there
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
}

/// What an observer may do to a neighbour of 10.0.0.1 and 10.0.0.2 of which it is told.
static struct {
    char const* name;
    void (*change)(EDiscoveredNeighbor&);
} const kChangesInside[] = {
    {"none", [](EDiscoveredNeighbor&) {}},
    {"another MAC", [](EDiscoveredNeighbor& n) { n.SetMac(MAC(kMacs[2])); }},
    {"an address less", [](EDiscoveredNeighbor& n) { n.RemoveAddress(IP("10.0.0.2")); }},
    {"an address more", [](EDiscoveredNeighbor& n) { n.AddAddress(IP("10.0.0.3")); }},
    {"another address",
     [](EDiscoveredNeighbor& n) {
         n.RemoveAddress(IP("10.0.0.2"));
         n.AddAddress(IP("10.0.0.3"));
     }},
    {"another order",
     [](EDiscoveredNeighbor& n) {
         n.RemoveAddress(IP("10.0.0.1"));
         n.AddAddress(IP("10.0.0.1"));
     }},
    {"one address twice", [](EDiscoveredNeighbor& n) { n.AddAddress(IP("10.0.0.1")); }},
    {"one address twice for another",
     [](EDiscoveredNeighbor& n) {
         n.RemoveAddress(IP("10.0.0.2"));
         n.AddAddress(IP("10.0.0.1"));
     }},
};
static char const* const kAddresses[] = {"10.0.0.1", "10.0.0.2", "10.0.0.3"};

TEST(EDiscoveredInfo, AnAddedNeighborIsIndexedAsTheObserverHasLeftIt)
{
    for (auto const& c : kChangesInside) {
        SCOPED_TRACE(c.name);
        RecordedInfo in;
        bool changed = false;
        in.recorder->whenCalled = [&] {
            if (!std::exchange(changed, true)) c.change(*in.info.GetNeighbor(1));
        };
        in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1", "10.0.0.2"}));
        EXPECT_TRUE(changed);
        EDiscoveredNeighbor const& added = *in.info.GetNeighbor(1);
        for (char const* mac : kMacs) EXPECT_EQ(added.GetMac() == MAC(mac) ? 1U : 0U, ByMac(in.info, mac)) << mac;
        for (char const* address : kAddresses)
            EXPECT_EQ(added.HasAddress(IP(address)) ? 1U : 0U, ByIp(in.info, address)) << address;
    }
}

TEST(EDiscoveredInfo, OfARemovedNeighborNothingIsForgottenThatTheObserverHasGivenToAnother)
{
    for (auto const& c : kChangesInside) {
        SCOPED_TRACE(c.name);
        RecordedInfo in;
        in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1", "10.0.0.2"}));
        in.info.AddNeighbor(Neighbor(kMacs[1]));
        EDiscoveredNeighbor& other = *in.info.GetNeighbor(2);
        bool changed = false;
        in.recorder->whenCalled = [&] {
            if (std::exchange(changed, true)) return;
            EDiscoveredNeighbor& removed = *in.info.GetNeighbor(1);
            c.change(removed);
            for (char const* address : kAddresses)
                if (!removed.HasAddress(IP(address))) other.AddAddress(IP(address));
        };
        in.info.RemoveNeighbor(1);
        EXPECT_TRUE(changed);
        for (char const* mac : kMacs) EXPECT_EQ(other.GetMac() == MAC(mac) ? 2U : 0U, ByMac(in.info, mac)) << mac;
        for (char const* address : kAddresses)
            EXPECT_EQ(other.HasAddress(IP(address)) ? 2U : 0U, ByIp(in.info, address)) << address;
    }
}

TEST(EDiscoveredInfo, OfNeighborsThatShareAMacOrAddressTheLastIndexedIsFound)
{
    RecordedInfo in;
    for (int i = 0; i < 3; ++i) in.info.AddNeighbor(Neighbor(kMacs[0], {"10.0.0.1"}));
    EXPECT_EQ(3U, ByMac(in.info, kMacs[0]));
    EXPECT_EQ(3U, ByIp(in.info, "10.0.0.1"));
    in.info.SetNeighbor(2, Neighbor(kMacs[0], {"10.0.0.1"})); // indexed again
    EXPECT_EQ(2U, ByMac(in.info, kMacs[0]));
    EXPECT_EQ(2U, ByIp(in.info, "10.0.0.1"));
}

TEST(EDiscoveredInfo, CleaningByTextDropsTheEntryOfOthersThatShareIt)
{
    struct {
        char const* name;
        std::function<void(EDiscoveredInfo&)> change;
    } const cases[] = {
        {"removing the last", [](EDiscoveredInfo& info) { info.RemoveNeighbor(2); }},
        {"removing another", [](EDiscoveredInfo& info) { info.RemoveNeighbor(1); }},
        {"setting the last", [](EDiscoveredInfo& info) { info.SetNeighbor(2, Neighbor(kMacs[1])); }},
        {"setting another", [](EDiscoveredInfo& info) { info.SetNeighbor(1, Neighbor(kMacs[1])); }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0], {"10.0.0.1"}), Neighbor(kMacs[0], {"10.0.0.1"})});
        c.change(info);
        EXPECT_EQ(0U, ByMac(info, kMacs[0])); // on purpose, though one of them still has it
        EXPECT_EQ(0U, ByIp(info, "10.0.0.1"));
    }
}

TEST(EDiscoveredInfo, AnEntryOfAnOldMacStaysAndNamesNobodyOnceItsNeighborIsGone)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0])});
    info.GetNeighbor(1)->SetMac(MAC(kMacs[1]));
    info.RemoveNeighbor(1); // cleans the new text alone
    EXPECT_EQ(nullptr, info.FindNeighborByMAC(MAC(kMacs[0])));
    EXPECT_EQ(nullptr, info.FindNeighborByMAC(MAC(kMacs[1])));
    EXPECT_EQ(2U, info.AddNeighbor(Neighbor(kMacs[2]))); // ids are not used again, so that it cannot name another one
    EXPECT_EQ(0U, ByMac(info, kMacs[0]));
}

/// An info lives through neighbours that come, get another MAC and go: each leaves an entry of its old MAC, and, since
/// it is emptied in its place, one of its address.
static void LetNeighborsComeAndGo(EDiscoveredInfo& info, unsigned int first, unsigned int count)
{
    for (unsigned int i = first; i < first + count; ++i) {
        EMACAddress const mac = MAC("06:00:00:00:" + std::to_string(10 + i / 90) + ":" + std::to_string(10 + i % 90));
        EIPAddress const address = IP("10.6." + std::to_string(i / 250) + "." + std::to_string(i % 250));
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(mac);
        neighbor.AddAddress(address);
        unsigned int const id = info.AddNeighbor(neighbor);
        info.GetNeighbor(id)->SetMac(MAC("04:00:00:00:00:01"));
        info.GetNeighbor(id)->Empty(); // the id too, on purpose
        EXPECT_EQ(info.GetNeighbor(id), info.FindNeighborByMAC(mac));
        EXPECT_EQ(info.GetNeighbor(id), info.FindNeighborByIP(address));
        info.RemoveNeighbor(id);
        EXPECT_EQ(nullptr, info.FindNeighborByMAC(mac));
        EXPECT_EQ(nullptr, info.FindNeighborByIP(address));
    }
}

TEST(EDiscoveredInfo, EntriesOfOldMacsStayAsLongAsTheirNeighbor)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0], {"10.0.0.1"})});
    info.GetNeighbor(1)->SetMac(MAC(kMacs[1]));
    info.SetNeighbor(1, Neighbor(kMacs[2])); // found by two MACs from now on
    LetNeighborsComeAndGo(info, 0, 500);
    EXPECT_EQ(1U, ByMac(info, kMacs[0]));
    EXPECT_EQ(0U, ByMac(info, kMacs[1]));
    EXPECT_EQ(1U, ByMac(info, kMacs[2]));
    info.RemoveNeighbor(1);
    EXPECT_EQ(0U, ByMac(info, kMacs[0]));
}

TEST(EDiscoveredInfo, AnEntryOfAnIdThatIsStillToComeWaitsForIt)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0])});
    info.GetNeighbor(1)->SetLocalId(200);
    info.GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
    EXPECT_EQ(0U, ByIp(info, "10.0.0.1"));
    LetNeighborsComeAndGo(info, 0, 198); // the ids 2 to 199
    EXPECT_EQ(0U, ByIp(info, "10.0.0.1"));
    EXPECT_EQ(200U, info.AddNeighbor(Neighbor(kMacs[1])));
    EXPECT_EQ(200U, ByIp(info, "10.0.0.1"));
}

TEST(EDiscoveredInfo, AnInfoThatWasReadDoesNotTakeIdsForGoneThatWereGoneBefore)
{
    EDiscoveredInfo info = Info(5);
    LetNeighborsComeAndGo(info, 0, 300);
    ReadInto(info, Written(Info(5, {Neighbor(kMacs[0])}))); // new ids begin with 2
    info.GetNeighbor(1)->SetLocalId(200);
    info.GetNeighbor(1)->AddAddress(IP("10.0.0.1"));
    LetNeighborsComeAndGo(info, 0, 198);
    EXPECT_EQ(200U, info.AddNeighbor(Neighbor(kMacs[1])));
    EXPECT_EQ(200U, ByIp(info, "10.0.0.1"));
}

TEST(EDiscoveredInfo, NeighborsAreFoundInBothForms)
{
    EDiscoveredInfo info = Info(5, {Neighbor(kMacs[0], {"10.0.0.1", "2001:db8::1"})});
    EDiscoveredInfo const& constant = info;
    EDiscoveredNeighbor* const neighbor = info.GetNeighbor(1);
    EXPECT_EQ(neighbor, info.FindNeighborByMAC(MAC(kMacs[0])));
    EXPECT_EQ(neighbor, constant.FindNeighborByMAC(MAC(kMacs[0])));
    EXPECT_EQ(neighbor, info.FindNeighborByIP(IP("2001:db8::1")));
    EXPECT_EQ(neighbor, constant.FindNeighborByIP(IP("10.0.0.1")));
    EXPECT_EQ(neighbor, constant.GetNeighbor(1));
    EXPECT_EQ(nullptr, info.FindNeighborByMAC(EMACAddress()));
    EXPECT_EQ(nullptr, constant.FindNeighborByIP(EIPAddress()));
}
