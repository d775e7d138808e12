#include "eInterfaceTableHooks.hpp"

#include "recordedInterface.hpp"
#include "slotOrder.hpp"

#include <gtest/gtest.h>

#include <typeinfo>

static std::vector<ESlottedOperation> const kOperations = {
#define EHOOK(operation, ...) {#operation "(" #__VA_ARGS__ ")", SlotOf(&EInterfaceTableHooks::operation)},
#include "eInterfaceTableHooks.def"
};

TEST(EInterfaceTableHooks, The160OperationsStandInTheirSlotsBehindTheDestructors)
{
    ASSERT_EQ(160U, kOperations.size());
    ExpectSlots(IFCORE_GOLDEN_DIR "/EInterfaceTableHooks.slots.txt", kOperations);
}

TEST(EInterfaceTableHooks, TheDoNothingFormKeepsTheSlots)
{
    std::vector<std::size_t> const slots = {
#define EHOOK(operation, ...) SlotOf(&EIgnoreInterfaceTableHooks::operation),
#include "eInterfaceTableHooks.def"
    };
    ASSERT_EQ(160U, slots.size());
    ExpectKeepsSlots<EIgnoreInterfaceTableHooks>(slots);
}

static void CallEveryOperation(EInterfaceTableHooks& hooks)
{
#define EHOOK(operation, ...) CallWithAny(hooks, &EInterfaceTableHooks::operation);
#include "eInterfaceTableHooks.def"
}

TEST(EInterfaceTableHooks, TheDoNothingFormTakesEveryCallAndDoesNothing)
{
    ExpectIgnoresEveryCall<EIgnoreInterfaceTableHooks, Recorder>(160U, CallEveryOperation);
}

TEST(EInterfaceTableHooks, EveryRecordReachesTheObserverOfItsTable)
{
    RecordedInterface sample;
    EInterfaceTableHooks* const recorder = sample.recorder.get();
    EXPECT_EQ(recorder, &sample.table.GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetIPv4AddressItem().GetHooks());
    unsigned int const id = sample.interface.AddIPv6AddressItem(EIPv6AddressItem());
    EXPECT_EQ(recorder, &sample.interface.GetIPv6AddressItem(id)->GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetDHCPProperties().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetDHCPv6Properties().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetFCoEConfig().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetNPIVConfig().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetPTPConfig().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetDCBXConfig().GetHooks());
    EXPECT_EQ(recorder, &sample.interface.GetLLDPConfig().GetHooks());
}

/// Whether it is the do-nothing observer.
static bool Ignores(EInterfaceTableHooks& hooks)
{
    return typeid(hooks) == typeid(EIgnoreInterfaceTableHooks);
}

TEST(EInterfaceTableHooks, WithoutAnObserverOrATableARecordReachesTheDoNothingForm)
{
    EInterfaceTable one;
    EInterfaceTable const two(7);
    EXPECT_TRUE(Ignores(one.GetHooks()));
    EXPECT_EQ(&one.GetHooks(), &two.GetHooks()); // one for the process
    unsigned int const id = one.AddInterfaceItem(EInterfaceItem());
    EXPECT_EQ(&one.GetHooks(), &one.GetInterfaceItem(id)->GetHooks());
    EXPECT_EQ(&one.GetHooks(), &one.GetInterfaceItem(id)->GetIPv4AddressItem().GetHooks());

    EInterfaceItem freeStanding;
    EXPECT_TRUE(Ignores(freeStanding.GetHooks()));
    EXPECT_EQ(&freeStanding.GetHooks(), &EInterfaceItem().GetHooks());
    EXPECT_TRUE(Ignores(freeStanding.GetIPv4AddressItem().GetHooks()));
    EXPECT_TRUE(Ignores(EIPv4AddressItem().GetHooks()));
    EXPECT_TRUE(Ignores(EIPv6AddressItem().GetHooks()));
    EXPECT_TRUE(Ignores(EDHCPProperties().GetHooks()));
    EXPECT_TRUE(Ignores(EDHCPv6Properties().GetHooks()));
    EXPECT_TRUE(Ignores(EFCoEConfig().GetHooks()));
    EXPECT_TRUE(Ignores(ENPIVConfig().GetHooks()));
    EXPECT_TRUE(Ignores(EPTPConfig().GetHooks()));
    EXPECT_TRUE(Ignores(EDCBXConfig().GetHooks()));
    EXPECT_TRUE(Ignores(ELLDPConfig().GetHooks()));
}

TEST(EInterfaceTableHooks, AChangeIsAnnouncedOnceWhileTheTableStillHoldsTheOldValue)
{
    RecordedInterface sample;
    sample.table.SetFIPVersion(1);
    sample.recorder->Clear();
    short seen = 0;
    sample.recorder->whenCalled = [&] { seen = sample.table.GetFIPVersion(); };
    sample.table.SetFIPVersion(2);
    EXPECT_EQ(std::vector<std::string>{"SettingFIPVersion"}, sample.recorder->Operations());
    EXPECT_EQ("2", sample.recorder->calls[0].values);
    EXPECT_EQ(1, seen);
    EXPECT_EQ(2, sample.table.GetFIPVersion());
}

TEST(EInterfaceTableHooks, AnUnchangedSwitchIsNotAnnounced)
{
    RecordedInterface sample;
    sample.interface.SetEnabled(false);
    EXPECT_TRUE(sample.recorder->calls.empty());
    sample.interface.SetEnabled(true);
    sample.interface.SetEnabled(true);
    sample.interface.SetEnabled(false);
    EXPECT_EQ((std::vector<std::string>{"EnablingInterfaceItem", "DisablingInterfaceItem"}),
              sample.recorder->Operations());
}

TEST(EInterfaceTableHooks, AWholeReplacementIsAnnouncedAsOnePair)
{
    RecordedInterface sample;
    EInterfaceTable replacement(8);
    replacement.AddInterfaceItem(EInterfaceItem());
    sample.table = replacement;
    sample.table.Empty();
    EXPECT_EQ((std::vector<std::string>{"SettingInterfaceTable", "SettingInterfaceTable"}),
              sample.recorder->Operations());
}
