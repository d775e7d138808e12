#include "eDiscoveredNeighbor.hpp"

#include "discoveredRecorder.hpp"
#include "discoveredRecords.hpp"
#include "golden.hpp"

#include "eComponentId.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

using Calls = std::vector<std::string>;

namespace {

/// A neighbour of id 1 in a table; nothing has been heard of it yet.
struct InTable : RecordedInfo {
    EDiscoveredNeighbor& neighbor;

    explicit InTable(EDiscoveredNeighbor const& contents = Neighbor("02:00:00:00:00:01"))
        : neighbor(*info.GetNeighbor(info.AddNeighbor(contents)))
    {
        recorder->Clear();
    }
    unsigned int FoundBy(char const* address) const
    {
        EDiscoveredNeighbor const* const found = info.FindNeighborByIP(IP(address));
        return found ? found->GetLocalId() : 0;
    }
};

} // namespace

TEST(EDiscoveredNeighbor, ANewOneIsARouterWithNothingElse)
{
    EDiscoveredNeighbor const neighbor;
    EXPECT_EQ("0 00:00:00:00:00:00 router", TextOf(neighbor));
    EXPECT_EQ(nullptr, neighbor.GetParent());
    EXPECT_EQ(0U, neighbor.GetAddressCount());
    EXPECT_EQ(nullptr, neighbor.GetAddressAt(0));
    EXPECT_EQ(neighbor.AddressBegin(), neighbor.AddressEnd());
}

TEST(EDiscoveredNeighbor, ComponentIdIsInterfaceAndNeighbour)
{
    InTable const in;
    EComponentId id{9, 9}; // to be replaced
    in.neighbor.GetComponentId(id);
    EXPECT_EQ((EComponentId{5, 1}), id);
}

TEST(EDiscoveredNeighbor, WithoutAParentTheComponentIdIsLeftUntouched)
{
    EComponentId id{9, 9};
    EDiscoveredNeighbor().GetComponentId(id);
    EXPECT_EQ((EComponentId{9, 9}), id);
    // On purpose: an info without a table leaves it untouched too, and its neighbour appends.
    EDiscoveredInfo const info = Info(5, {Neighbor("02:00:00:00:00:01")});
    info.GetNeighbor(1)->GetComponentId(id);
    EXPECT_EQ((EComponentId{9, 9, 1}), id);
}

TEST(EDiscoveredNeighbor, SetIsRouterAnnouncesARealChangeOnlyWhileTheOldValueIsThere)
{
    struct {
        bool before;
        bool set;
        Calls announced;
    } const cases[] = {
        {true, true, {}},
        {true, false, {"NeighborBecameHost(1 02:00:00:00:00:01 router)"}},
        {false, true, {"NeighborBecameRouter(1 02:00:00:00:00:01 host)"}},
        {false, false, {}},
    };
    for (auto const& c : cases) {
        InTable in(Neighbor("02:00:00:00:00:01", {}, c.before));
        in.neighbor.SetIsRouter(c.set);
        EXPECT_EQ(c.announced, in.recorder->TakeCalls());
        EXPECT_EQ(c.set, in.neighbor.IsRouter());
    }
}

TEST(EDiscoveredNeighbor, SetMacIsAlwaysAnnouncedWithTheOldOneStillThere)
{
    InTable in;
    in.neighbor.SetMac(MAC("02:00:00:00:00:02"));
    in.neighbor.SetMac(MAC("02:00:00:00:00:02"));
    in.neighbor.SetMac(in.neighbor.GetMac());
    EXPECT_EQ((Calls{"NeighborMacChanging(1 02:00:00:00:00:01 router: 02:00:00:00:00:02)",
                     "NeighborMacChanging(1 02:00:00:00:00:02 router: 02:00:00:00:00:02)",
                     "NeighborMacChanging(1 02:00:00:00:00:02 router: 02:00:00:00:00:02)"}),
              in.recorder->TakeCalls());
    EXPECT_EQ("02:00:00:00:00:02", in.neighbor.GetMac().GetAsString());
}

TEST(EDiscoveredNeighbor, AfterSetMacItIsStillFoundByTheOldOne)
{
    InTable in;
    in.neighbor.SetMac(MAC("02:00:00:00:00:02"));
    EXPECT_EQ(&in.neighbor, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:01")));
    EXPECT_EQ(nullptr, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:02")));
    EXPECT_EQ("02:00:00:00:00:01", in.table.GetDefaultMAC().GetAsString()); // nor is the default looked for again
    in.info.SetNeighbor(1, in.neighbor);                                    // indexed again, under the new MAC
    EXPECT_EQ(&in.neighbor, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:02")));
    // The old text was not cleaned: it is no longer that of the neighbour.
    EXPECT_EQ(&in.neighbor, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:01")));
}

TEST(EDiscoveredNeighbor, AnAddressGivenTwiceIsHeldAndAnnouncedTwice)
{
    InTable in;
    in.neighbor.AddAddress(IP("10.0.0.1"));
    in.neighbor.AddAddress(IP("10.0.0.1"));
    in.neighbor.AddAddress(IP("2001:db8::1"));
    EXPECT_EQ((Calls{"AddingNeighborAddress(1 02:00:00:00:00:01 router: 10.0.0.1)",
                     "AddingNeighborAddress(1 02:00:00:00:00:01 router 10.0.0.1: 10.0.0.1)",
                     "AddingNeighborAddress(1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.1: 2001:db8::1)"}),
              in.recorder->TakeCalls());
    EXPECT_EQ("1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.1 2001:db8::1", TextOf(in.neighbor));
    EXPECT_EQ(1U, in.FoundBy("10.0.0.1"));
    EXPECT_EQ(1U, in.FoundBy("2001:db8::1"));
}

TEST(EDiscoveredNeighbor, RemoveAddressTakesTheFirstEqualOneAndTheIndexEntryOfAll)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2", "10.0.0.1", "10.0.0.3"}));
    in.neighbor.RemoveAddress(IP("10.0.0.1"));
    EXPECT_EQ(
        Calls{"RemovingNeighborAddress(1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.2 10.0.0.1 10.0.0.3: 10.0.0.1)"},
        in.recorder->TakeCalls());
    EXPECT_EQ("1 02:00:00:00:00:01 router 10.0.0.2 10.0.0.1 10.0.0.3", TextOf(in.neighbor));
    EXPECT_EQ(0U, in.FoundBy("10.0.0.1")); // on purpose, though one copy is left
    EXPECT_EQ(1U, in.FoundBy("10.0.0.2"));
}

TEST(EDiscoveredNeighbor, RemovingAnAddressThatItDoesNotHaveDoesNothing)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    unsigned int const other = in.info.AddNeighbor(Neighbor("02:00:00:00:00:02", {"0.0.0.0"}));
    in.recorder->Clear();
    in.neighbor.RemoveAddress(IP("0.0.0.0"));
    in.neighbor.RemoveAddress(IP("::")); // of another family
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ(1U, in.neighbor.GetAddressCount());
    EXPECT_EQ(other, in.FoundBy("0.0.0.0"));
}

TEST(EDiscoveredNeighbor, AnAddressSharedWithAnotherIsFoundAsTheLastOnesAndByNobodyOnceOneOfThemDropsIt)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    unsigned int const other = in.info.AddNeighbor(Neighbor("02:00:00:00:00:02"));
    in.info.GetNeighbor(other)->AddAddress(IP("10.0.0.1"));
    EXPECT_EQ(other, in.FoundBy("10.0.0.1"));
    in.neighbor.RemoveAddress(IP("10.0.0.1"));
    EXPECT_EQ(0U, in.FoundBy("10.0.0.1")); // on purpose, though the other still has it
    EXPECT_TRUE(in.info.GetNeighbor(other)->HasAddress(IP("10.0.0.1")));
}

TEST(EDiscoveredNeighbor, ArgumentsMayBeItsOwnAddresses)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2"}));
    std::string expected = "1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.2";
    for (int i = 0; i < 40; ++i) { // the list moves several times
        in.neighbor.AddAddress(*in.neighbor.GetAddressAt(1));
        expected += " 10.0.0.2";
        ASSERT_EQ(expected, TextOf(in.neighbor));
        EXPECT_EQ("10.0.0.2", in.recorder->calls.back().values);
    }
    in.recorder->Clear();
    in.neighbor.RemoveAddress(*in.neighbor.GetAddressAt(0));
    ASSERT_EQ(1U, in.recorder->calls.size());
    EXPECT_EQ("10.0.0.1", in.recorder->calls[0].values);
    EXPECT_EQ(0U, in.FoundBy("10.0.0.1"));
    EXPECT_EQ(1U, in.FoundBy("10.0.0.2"));
    in.neighbor.RemoveAddress(*in.neighbor.AddressBegin());
    EXPECT_EQ(0U, in.FoundBy("10.0.0.2"));
    EXPECT_EQ(40U, in.neighbor.GetAddressCount());
}

TEST(EDiscoveredNeighbor, AnObserverMayAddAddressesWhileOneOfTheListIsRemovedOrAddedAgain)
{
    struct {
        char const* name;
        std::function<void(EDiscoveredNeighbor&)> change;
        unsigned int count;
        unsigned int foundByFirst;
    } const cases[] = {
        {"removed", [](auto& neighbor) { neighbor.RemoveAddress(*neighbor.GetAddressAt(0)); }, 41, 0},
        {"added again", [](auto& neighbor) { neighbor.AddAddress(*neighbor.GetAddressAt(0)); }, 43, 1},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2"}));
        bool isFirst = true;
        in.recorder->whenCalled = [&] {
            if (!std::exchange(isFirst, false)) return;
            for (int i = 0; i < 40; ++i) in.neighbor.AddAddress(IP("10.0.1." + std::to_string(i))); // the list moves
        };
        c.change(in.neighbor);
        EXPECT_EQ(c.count, in.neighbor.GetAddressCount());
        EXPECT_EQ(c.foundByFirst, in.FoundBy("10.0.0.1"));
        EXPECT_EQ(1U, in.FoundBy("10.0.0.2"));
        EXPECT_EQ(1U, in.FoundBy("10.0.1.39"));
    }
}

TEST(EDiscoveredNeighbor, AddressesStandInTheOrderOfAdding)
{
    EDiscoveredNeighbor const neighbor = Neighbor("02:00:00:00:00:01", {"10.0.0.2", "10.0.0.1"});
    ASSERT_EQ(2U, neighbor.GetAddressCount());
    EXPECT_EQ("10.0.0.2", neighbor.GetAddressAt(0)->GetAsString());
    EXPECT_EQ("10.0.0.1", neighbor.GetAddressAt(1)->GetAsString());
    EXPECT_EQ(nullptr, neighbor.GetAddressAt(2));
    EXPECT_EQ(nullptr, neighbor.GetAddressAt(0xFFFFFFFF));
    EXPECT_EQ(2, neighbor.AddressEnd() - neighbor.AddressBegin());
    EXPECT_EQ(neighbor.GetAddressAt(0), &*neighbor.AddressBegin());
    EXPECT_TRUE(neighbor.HasAddress(IP("10.0.0.1")));
    EXPECT_FALSE(neighbor.HasAddress(IP("10.0.0.3")));
}

TEST(EDiscoveredNeighbor, WithoutAParentItTellsNobodyAndKeepsItsAddresses)
{
    EDiscoveredNeighbor neighbor = Neighbor("02:00:00:00:00:01", {"10.0.0.1"});
    neighbor.AddAddress(IP("10.0.0.2"));
    neighbor.RemoveAddress(IP("10.0.0.1"));
    neighbor.SetIsRouter(false);
    neighbor.Copy(EDiscoveredNeighbor(neighbor));
    EXPECT_EQ("0 02:00:00:00:00:01 host 10.0.0.2", TextOf(neighbor));
}

TEST(EDiscoveredNeighbor, ACopyHasTheIdButNotTheParentAndTellsNobody)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}, false));
    EDiscoveredNeighbor copy(in.neighbor);
    EXPECT_EQ("1 02:00:00:00:00:01 host 10.0.0.1", TextOf(copy));
    EXPECT_EQ(nullptr, copy.GetParent());
    EXPECT_EQ(&in.info, in.neighbor.GetParent());
    copy.RemoveAddress(IP("10.0.0.1"));
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ(1U, in.FoundBy("10.0.0.1"));
}

TEST(EDiscoveredNeighbor, CopyAndEmptyAreAnnouncedOnceWithTheReplacementAndTakeItsIdToo)
{
    EDiscoveredNeighbor source = Neighbor("02:00:00:00:00:07", {"10.0.0.7"}, false);
    source.SetLocalId(7);
    struct {
        char const* name;
        std::function<void(EDiscoveredNeighbor&)> change;
        char const* after;
    } const cases[] = {
        {"Copy", [&](auto& neighbor) { neighbor.Copy(source); }, "7 02:00:00:00:00:07 host 10.0.0.7"},
        {"operator=", [&](auto& neighbor) { neighbor = source; }, "7 02:00:00:00:00:07 host 10.0.0.7"},
        {"Empty", [](auto& neighbor) { neighbor.Empty(); }, "0 00:00:00:00:00:00 router"},
        {"itself", [](auto& neighbor) { neighbor.Copy(neighbor); }, "1 02:00:00:00:00:01 router 10.0.0.1"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
        in.recorder->whenCalled = [&] {
            EDiscoveredNeighbor const& replacement = in.recorder->Argument<EDiscoveredNeighbor>(0);
            EXPECT_NE(&source, &replacement);
            EXPECT_EQ(nullptr, replacement.GetParent());
        };
        c.change(in.neighbor);
        EXPECT_EQ(Calls{std::string("SettingNeighbor(1 02:00:00:00:00:01 router 10.0.0.1: ") + c.after + ")"},
                  in.recorder->TakeCalls());
        EXPECT_EQ(c.after, TextOf(in.neighbor));
        EXPECT_EQ(&in.info, in.neighbor.GetParent());
        // Only EDiscoveredInfo::SetNeighbor cares for the index, and for the default MAC.
        EXPECT_NE(nullptr, in.info.GetNeighbor(1));
        EXPECT_EQ(&in.neighbor, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:01")));
        EXPECT_EQ(nullptr, in.info.FindNeighborByIP(IP("10.0.0.7")));
        EXPECT_EQ("02:00:00:00:00:01", in.table.GetDefaultMAC().GetAsString());
    }
}

TEST(EDiscoveredNeighbor, SwapExchangesAllButTheParentsAndTellsNobody)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    EDiscoveredNeighbor other = Neighbor("02:00:00:00:00:07", {"10.0.0.7", "10.0.0.8"}, false);
    other.SetLocalId(7);
    in.neighbor.Swap(other);
    EXPECT_EQ("7 02:00:00:00:00:07 host 10.0.0.7 10.0.0.8", TextOf(in.neighbor));
    EXPECT_EQ("1 02:00:00:00:00:01 router 10.0.0.1", TextOf(other));
    EXPECT_EQ(&in.info, in.neighbor.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    in.neighbor.Swap(in.neighbor);
    EXPECT_EQ("7 02:00:00:00:00:07 host 10.0.0.7 10.0.0.8", TextOf(in.neighbor));
}

TEST(EDiscoveredNeighbor, OutlivesTheSourceOfItsCopy)
{
    auto source = std::make_unique<InTable>(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    EDiscoveredNeighbor constructed(source->neighbor);
    EDiscoveredNeighbor assigned;
    assigned = source->neighbor;
    source.reset();
    for (EDiscoveredNeighbor* const copy : {&constructed, &assigned}) {
        copy->AddAddress(IP("10.0.0.2"));
        copy->SetMac(MAC("02:00:00:00:00:02"));
        EXPECT_EQ("1 02:00:00:00:00:02 router 10.0.0.1 10.0.0.2", TextOf(*copy));
    }
}

// ---- Archive --------------------------------------------------------------------------------------------------------

TEST(EDiscoveredNeighborArchive, WritesAndReadsTheGoldenBytes)
{
    EDiscoveredNeighbor neighbor = Neighbor("02:00:00:00:00:07", {"10.0.0.7", "2001:db8::7"}, false);
    neighbor.SetLocalId(7);
    EXPECT_EQ(Golden("EDiscoveredNeighbor.hex"), Written(neighbor));
    EXPECT_EQ(TextOf(neighbor), TextOf(Read<EDiscoveredNeighbor>("EDiscoveredNeighbor.hex")));
    EXPECT_EQ(Golden("EDiscoveredNeighbor.defaults.hex"), Written(EDiscoveredNeighbor()));
    EXPECT_EQ(TextOf(EDiscoveredNeighbor()), TextOf(Read<EDiscoveredNeighbor>("EDiscoveredNeighbor.defaults.hex")));
}

TEST(EDiscoveredNeighborArchive, ReadingReplacesEverythingButTheParentAndTellsNobody)
{
    InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
    ReadInto(in.neighbor, Golden("EDiscoveredNeighbor.hex"));
    EXPECT_EQ("7 02:00:00:00:00:07 host 10.0.0.7 2001:db8::7", TextOf(in.neighbor));
    EXPECT_EQ(&in.info, in.neighbor.GetParent());
    EXPECT_EQ(Calls{}, in.recorder->TakeCalls());
    EXPECT_EQ(&in.neighbor, in.info.FindNeighborByMAC(MAC("02:00:00:00:00:01"))); // the index is the info's affair
}

TEST(EDiscoveredNeighborArchive, EveryCutIsAnArchiveErrorAndKeepsWhatWasRead)
{
    std::string const bytes = Golden("EDiscoveredNeighbor.hex");
    struct {
        std::size_t from; // bytes that are there, this many or more
        char const* held;
    } const cases[] = {
        {0, "1 02:00:00:00:00:01 router 10.0.0.1"},  {1, "7 02:00:00:00:00:01 router 10.0.0.1"},
        {7, "7 02:00:00:00:00:07 router"}, // the list is emptied before its count is read
        {13, "7 02:00:00:00:00:07 router 10.0.0.7"}, {30, "7 02:00:00:00:00:07 router 10.0.0.7 2001:db8::7"},
    };
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        InTable in(Neighbor("02:00:00:00:00:01", {"10.0.0.1"}));
        EArchive archive;
        Load(archive, bytes.substr(0, size));
        EXPECT_THROW(archive >> in.neighbor, EArchiveError);
        char const* held = nullptr;
        for (auto const& c : cases)
            if (size >= c.from) held = c.held;
        EXPECT_EQ(held, TextOf(in.neighbor));
    }
}

TEST(EDiscoveredNeighborArchiveDeathTest, TheAddressListRefusesTheWrongDirection)
{
    ExpectListRefusesToBeWritten<EDiscoveredNeighbor>();
    ExpectListRefusesToBeRead([](EArchive& archive) {
        EDiscoveredNeighbor neighbor;
        archive >> neighbor;
    });
}
