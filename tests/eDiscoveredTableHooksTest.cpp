#include "eDiscoveredTableHooks.hpp"

#include "discoveredRecorder.hpp"
#include "slotOrder.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <typeinfo>

static std::vector<ESlottedOperation> const kOperations = {
#define EHOOK(operation, ...) {#operation "(" #__VA_ARGS__ ")", SlotOf(&EDiscoveredTableHooks::operation)},
#include "eDiscoveredTableHooks.def"
};

TEST(EDiscoveredTableHooks, The21OperationsStandInTheirSlotsBehindTheDestructors)
{
    ASSERT_EQ(21U, kOperations.size());
    ExpectSlots(IFCORE_GOLDEN_DIR "/EDiscoveredTableHooks.slots.txt", kOperations);
}

TEST(EDiscoveredTableHooks, TheDoNothingFormKeepsTheSlots)
{
    std::vector<std::size_t> const slots = {
#define EHOOK(operation, ...) SlotOf(&EIgnoreDiscoveredTableHooks::operation),
#include "eDiscoveredTableHooks.def"
    };
    ASSERT_EQ(21U, slots.size());
    ExpectKeepsSlots<EIgnoreDiscoveredTableHooks>(slots);
}

static void CallEveryOperation(EDiscoveredTableHooks& hooks)
{
#define EHOOK(operation, ...) CallWithAny(hooks, &EDiscoveredTableHooks::operation);
#include "eDiscoveredTableHooks.def"
}

TEST(EDiscoveredTableHooks, TheDoNothingFormTakesEveryCallAndDoesNothing)
{
    ExpectIgnoresEveryCall<EIgnoreDiscoveredTableHooks, DiscoveredRecorder>(21U, CallEveryOperation);
}

/// Whether it is the do-nothing observer.
static bool Ignores(EDiscoveredTableHooks& hooks)
{
    return typeid(hooks) == typeid(EIgnoreDiscoveredTableHooks);
}

/// The observers that the records of an info reach, its own first.
static std::vector<EDiscoveredTableHooks*> Reached(EDiscoveredInfo const& info)
{
    std::vector<EDiscoveredTableHooks*> hooks = {
        &info.GetHooks(),
        &info.GetDHCPInfo().GetHooks(),
        &info.GetDHCPv6Info().GetHooks(),
        &info.GetFCoEInfo().GetHooks(),
        &info.GetPTPInfo().GetHooks(),
        &info.GetDCBXInfo().GetHooks(),
    };
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position)
        hooks.push_back(&neighbors.GetItem(position)->GetHooks());
    return hooks;
}

TEST(EDiscoveredTableHooks, EveryRecordReachesTheObserverOfItsTable)
{
    RecordedInfo in;
    in.info.AddNeighbor(Neighbor("02:00:00:00:00:01"));
    EXPECT_EQ(in.recorder.get(), &in.table.GetHooks());
    std::vector<EDiscoveredTableHooks*> const reached = Reached(in.info);
    ASSERT_EQ(7U, reached.size());
    for (EDiscoveredTableHooks* const hooks : reached) EXPECT_EQ(in.recorder.get(), hooks);
}

TEST(EDiscoveredTableHooks, AnObserverIsReachedFromWhenTheOwnerAssignsItUntilHeTakesItAway)
{
    EDiscoveredTable table;
    table.AddInfo(Info(5));
    EDiscoveredInfo& info = *table.GetInfo(5);
    EXPECT_TRUE(Ignores(info.GetHooks()));
    boost::shared_ptr<DiscoveredRecorder> const recorder = boost::make_shared<DiscoveredRecorder>();
    table.hooks = recorder;
    info.SetInterfaceUp(true);
    table.hooks.reset();
    info.SetInterfaceUp(false);
    EXPECT_EQ(std::vector<std::string>{"InterfaceWentUp"}, recorder->Operations());
    EXPECT_EQ(1, recorder.use_count());
}

TEST(EDiscoveredTableHooks, ATableLetsItsObserverGoWithItself)
{
    boost::shared_ptr<DiscoveredRecorder> const recorder = boost::make_shared<DiscoveredRecorder>();
    {
        EDiscoveredTable table;
        table.hooks = recorder;
        table.AddInfo(Info(5, {Neighbor("02:00:00:00:00:01")}));
        recorder->Clear();
        EXPECT_EQ(2, recorder.use_count());
    }
    EXPECT_EQ(1, recorder.use_count());
    EXPECT_TRUE(recorder->calls.empty()); // destruction announces nothing
}

TEST(EDiscoveredTableHooks, WithoutAnObserverOrATableARecordReachesADoNothingFormOfItsClass)
{
    EDiscoveredTable one;
    EDiscoveredTable const two;
    EXPECT_TRUE(Ignores(one.GetHooks()));
    EXPECT_EQ(&one.GetHooks(), &two.GetHooks()); // one for all tables

    EDiscoveredInfo const freeStanding(Info(5, {Neighbor("02:00:00:00:00:01")}));
    for (EDiscoveredTableHooks* const hooks : Reached(freeStanding)) {
        EXPECT_TRUE(Ignores(*hooks));
        EXPECT_EQ(&freeStanding.GetHooks(), hooks); // through their parent
    }

    EDiscoveredTableHooks* const own[] = {
        &one.GetHooks(),
        &EDiscoveredInfo().GetHooks(),
        &EDiscoveredNeighbor().GetHooks(),
        &EDHCPDiscoveredInfo().GetHooks(),
        &EDHCPv6DiscoveredInfo().GetHooks(),
        &EFCoEDiscoveredInfo().GetHooks(),
        &EPTPDiscoveredInfo().GetHooks(),
        &EDCBXDiscoveredInfo().GetHooks(),
    };
    for (std::size_t i = 0; i < std::size(own); ++i) {
        EXPECT_TRUE(Ignores(*own[i]));
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(own[i], own[j]);
    }
}

namespace {

/// A table of one info with one neighbour; nothing has been heard of it yet.
struct Whole : RecordedInfo {
    EDiscoveredNeighbor& neighbor;

    Whole() : neighbor(*info.GetNeighbor(info.AddNeighbor(Neighbor("02:00:00:00:00:01")))) { recorder->Clear(); }
};

struct ReplacementCase {
    char const* record;
    std::function<void(Whole&)> copy;
    std::function<void(Whole&)> empty;
    std::function<void const*(Whole&)> told; // the record that the observer is told of
    std::string copyAnnounces;
    std::string emptyAnnounces; // "" on purpose: nothing
};

} // namespace

/// A case of a record that \p of finds in the table.
template <class Record, class Of>
static ReplacementCase Case(char const* name, Of of, std::string const& copyAnnounces,
                            std::string const& emptyAnnounces)
{
    return {name,
            [of](Whole& in) {
                Record const source;
                of(in).Copy(source);
                of(in) = source;
            },
            [of](Whole& in) { of(in).Empty(); },
            [of](Whole& in) -> void const* { return &of(in); },
            copyAnnounces,
            emptyAnnounces};
}

TEST(EDiscoveredTableHooks, WhichReplacementsOfAWholeRecordAreAnnounced)
{
    ReplacementCase const cases[] = {
        Case<EDiscoveredTable>(
            "table", [](Whole & in) -> auto& { return in.table; }, "SettingDiscoveredTable", "SettingDiscoveredTable"),
        Case<EDiscoveredInfo>(
            "info", [](Whole & in) -> auto& { return in.info; }, "SettingInfo", "SettingInfo"),
        Case<EDiscoveredNeighbor>(
            "neighbour", [](Whole & in) -> auto& { return in.neighbor; }, "SettingNeighbor", "SettingNeighbor"),
        Case<EDHCPDiscoveredInfo>(
            "DHCP", [](Whole & in) -> auto& { return in.info.GetDHCPInfo(); }, "SettingDHCPDiscoveredInfo", ""),
        Case<EDHCPv6DiscoveredInfo>(
            "DHCPv6", [](Whole & in) -> auto& { return in.info.GetDHCPv6Info(); }, "SettingDHCPv6DiscoveredInfo",
            "SettingDHCPv6DiscoveredInfo"),
        Case<EFCoEDiscoveredInfo>(
            "FCoE", [](Whole & in) -> auto& { return in.info.GetFCoEInfo(); }, "SettingFCoEDiscoveredInfo", ""),
        Case<EPTPDiscoveredInfo>(
            "PTP", [](Whole & in) -> auto& { return in.info.GetPTPInfo(); }, "SettingPTPDiscoveredInfo",
            "SettingPTPDiscoveredInfo"),
        Case<EDCBXDiscoveredInfo>(
            "DCBX", [](Whole & in) -> auto& { return in.info.GetDCBXInfo(); }, "SettingDCBXDiscoveredInfo", ""),
    };
    for (ReplacementCase const& c : cases) {
        SCOPED_TRACE(c.record);
        {
            Whole in;
            void const* const told = c.told(in);
            c.copy(in); // by Copy and by operator=
            EXPECT_EQ((std::vector<std::string>(2, c.copyAnnounces)), in.recorder->Operations());
            for (CallLog::Call const& call : in.recorder->calls) EXPECT_EQ(told, call.record);
        }
        Whole in;
        void const* const told = c.told(in);
        c.empty(in);
        std::vector<std::string> const expected(c.emptyAnnounces.empty() ? 0 : 1, c.emptyAnnounces);
        EXPECT_EQ(expected, in.recorder->Operations());
        for (CallLog::Call const& call : in.recorder->calls) EXPECT_EQ(told, call.record);
    }
}
