#include "eMultipleInterfaceTableHooks.hpp"

#include "ifcore.hpp"
#include "recorder.hpp"

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using RecorderPtr = boost::shared_ptr<Recorder>;

/// A set and the names of its members in the order in which they were told.
struct NamedSet {
    EMultipleInterfaceTableHooks set;
    std::vector<std::string> told;

    RecorderPtr Add(char const* name, std::string const& label)
    {
        RecorderPtr const member = boost::make_shared<Recorder>();
        member->whenCalled = [this, label] { told.push_back(label); };
        set.AddHooks(name, member);
        return member;
    }
    std::vector<std::string> Told()
    {
        told.clear();
        set.SettingVpiMaskMode(EInterfaceTable(), 0);
        return told;
    }
};

using Labels = std::vector<std::string>;

} // namespace

/// Calls the operation with default values that stay where they are, so that two calls can be compared.
template <class... Argument>
static void CallWithDefaults(EInterfaceTableHooks& hooks, void (EInterfaceTableHooks::*operation)(Argument...))
{
    static std::tuple<std::decay_t<Argument> const...> const values{};
    std::apply([&](auto const&... value) { (hooks.*operation)(value...); }, values);
}

TEST(EMultipleInterfaceTableHooks, ForwardsEveryOperationWithItsArgumentsToEveryMember)
{
    Recorder direct;
    auto const first = boost::make_shared<Recorder>();
    auto const second = boost::make_shared<Recorder>();
    EMultipleInterfaceTableHooks set;
    set.AddHooks("first", first);
    set.AddHooks("second", second);
#define EHOOK(operation, ...)                                                                                          \
    CallWithDefaults(direct, &EInterfaceTableHooks::operation);                                                        \
    CallWithDefaults(set, &EInterfaceTableHooks::operation);
#include "eInterfaceTableHooks.def"

    ASSERT_EQ(160U, direct.calls.size());
    for (RecorderPtr const& member : {first, second}) {
        ASSERT_EQ(direct.calls.size(), member->calls.size());
        for (std::size_t i = 0; i < direct.calls.size(); ++i) {
            SCOPED_TRACE(direct.calls[i].operation);
            EXPECT_EQ(direct.calls[i].operation, member->calls[i].operation);
            EXPECT_EQ(direct.calls[i].record, member->calls[i].record); // the very object, not a copy
            EXPECT_EQ(direct.calls[i].values, member->calls[i].values);
        }
    }
}

TEST(EMultipleInterfaceTableHooks, KeepsTheOrderOfTheArguments)
{
    auto const member = boost::make_shared<Recorder>();
    EMultipleInterfaceTableHooks set;
    set.AddHooks("member", member);
    EIPv4AddressItem const current;
    EIPv4AddressItem const replacement;
    EVLANIPAddressTableItemProperties before(1, true);
    before.SetVlanTag(100, 0);
    EVLANIPAddressTableItemProperties after(1, true);
    after.SetVlanTag(200, 0);
    set.SettingIPv4AddressItem(current, replacement, before, after);

    ASSERT_EQ(1U, member->calls.size());
    EXPECT_EQ(&current, member->calls[0].record);
    EXPECT_EQ("record, on[100], on[200]", member->calls[0].values);
}

TEST(EMultipleInterfaceTableHooks, WithoutMembersTakesEveryCall)
{
    EMultipleInterfaceTableHooks set;
    set.SettingVpiMaskMode(EInterfaceTable(), 1);
    EXPECT_FALSE(set.FindHooks("any"));
    EXPECT_FALSE(set.RemoveHooks("any"));
}

TEST(EMultipleInterfaceTableHooks, TellsTheMembersInTheOrderOfAdding)
{
    NamedSet set;
    set.Add("z", "z");
    set.Add("a", "a");
    set.Add("m", "m");
    EXPECT_EQ((Labels{"z", "a", "m"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, AUsedNameReplacesAndKeepsThePlace)
{
    NamedSet set;
    RecorderPtr const old = set.Add("first", "old");
    set.Add("second", "second");
    RecorderPtr const replacement = set.Add("first", "new");
    EXPECT_EQ(replacement, set.set.FindHooks("first"));
    EXPECT_EQ((Labels{"new", "second"}), set.Told());
    EXPECT_TRUE(old->calls.empty());
}

TEST(EMultipleInterfaceTableHooks, OneObserverUnderTwoNamesIsToldTwice)
{
    NamedSet set;
    RecorderPtr const member = set.Add("one", "x");
    set.set.AddHooks("two", member);
    EXPECT_EQ((Labels{"x", "x"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, RemoveHooksAnswersWhetherThereWasOne)
{
    NamedSet set;
    set.Add("first", "first");
    set.Add("second", "second");
    EXPECT_FALSE(set.set.RemoveHooks("third"));
    EXPECT_TRUE(set.set.RemoveHooks("first"));
    EXPECT_FALSE(set.set.RemoveHooks("first"));
    EXPECT_FALSE(set.set.FindHooks("first"));
    EXPECT_TRUE(set.set.FindHooks("second"));
    EXPECT_EQ((Labels{"second"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, ANullNameIsTheEmptyName)
{
    NamedSet set;
    RecorderPtr const unnamed = set.Add(nullptr, "unnamed");
    EXPECT_EQ(unnamed, set.set.FindHooks(""));
    EXPECT_EQ(unnamed, set.set.FindHooks(nullptr));
    RecorderPtr const replacement = set.Add("", "replacement");
    EXPECT_EQ(replacement, set.set.FindHooks(nullptr));
    EXPECT_EQ((Labels{"replacement"}), set.Told());
    EXPECT_TRUE(set.set.RemoveHooks(nullptr));
    EXPECT_TRUE(set.Told().empty());
}

TEST(EMultipleInterfaceTableHooks, AnEmptyPointerRemovesTheName)
{
    NamedSet set;
    set.Add("first", "first");
    set.Add("second", "second");
    set.set.AddHooks("first", nullptr);
    set.set.AddHooks("third", nullptr);
    EXPECT_FALSE(set.set.FindHooks("first"));
    EXPECT_FALSE(set.set.RemoveHooks("third"));
    EXPECT_EQ((Labels{"second"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, AMemberThatIsAddedWhileToldHearsTheNextAnnouncement)
{
    NamedSet set;
    RecorderPtr const adding = set.Add("adding", "adding");
    adding->whenCalled = [&set] {
        set.told.push_back("adding");
        if (!set.set.FindHooks("late")) set.Add("late", "late");
    };
    set.Add("last", "last");
    EXPECT_EQ((Labels{"adding", "last"}), set.Told());
    EXPECT_EQ((Labels{"adding", "last", "late"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, AMemberThatIsRemovedWhileToldHearsTheAnnouncementToItsEnd)
{
    NamedSet set;
    RecorderPtr const removing = set.Add("removing", "removing");
    boost::weak_ptr<Recorder> const removed = set.Add("removed", "removed");
    removing->whenCalled = [&set] {
        set.told.push_back("removing");
        set.set.RemoveHooks("removed"); // drops the last reference outside of the announcement
        set.set.RemoveHooks("removing");
    };
    EXPECT_EQ((Labels{"removing", "removed"}), set.Told());
    EXPECT_TRUE(removed.expired());
    EXPECT_TRUE(set.Told().empty());
}

TEST(EMultipleInterfaceTableHooks, AMemberMayAnnounceAgainWhileTold)
{
    NamedSet set;
    RecorderPtr const nesting = set.Add("nesting", "outer");
    nesting->whenCalled = [&set, &nesting] {
        set.told.push_back("outer");
        if (nesting->calls.size() == 1) set.set.SettingVpiMaskMode(EInterfaceTable(), 1);
    };
    set.Add("last", "last");
    EXPECT_EQ((Labels{"outer", "outer", "last", "last"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, TheSetMayBeReleasedWhileItsMembersAreTold)
{
    EInterfaceTable table(7);
    auto const releasing = boost::make_shared<Recorder>();
    auto const last = boost::make_shared<Recorder>();
    releasing->whenCalled = [&table] { table.RemoveInterfaceTableHooks("set"); };
    auto set = boost::make_shared<EMultipleInterfaceTableHooks>();
    boost::weak_ptr<EMultipleInterfaceTableHooks> const observed = set;
    set->AddHooks("releasing", releasing);
    set->AddHooks("last", last);
    table.SetHooks("set", set);
    set.reset();

    table.SetFCoERetryCount(9);
    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(1U, last->calls.size());
    EXPECT_EQ(9U, table.GetFCoERetryCount());
    table.SetFCoERetryCount(10);
    EXPECT_EQ(1U, last->calls.size());
}

TEST(EMultipleInterfaceTableHooks, AnExceptionOfAMemberIsPassedOn)
{
    NamedSet set;
    RecorderPtr const throwing = set.Add("throwing", "throwing");
    throwing->whenCalled = [] { throw std::runtime_error("refused"); };
    RecorderPtr const last = set.Add("last", "last");
    EXPECT_THROW(set.Told(), std::runtime_error);
    EXPECT_TRUE(last->calls.empty());
    throwing->whenCalled = nullptr;
    EXPECT_EQ((Labels{"last"}), set.Told());
}

TEST(EMultipleInterfaceTableHooks, InATableEachMemberHearsAChangeOnceAndSeesTheOldValue)
{
    EInterfaceTable table(7);
    auto const first = boost::make_shared<Recorder>();
    auto const second = boost::make_shared<Recorder>();
    table.AddInterfaceTableHooks("first", first);
    table.AddInterfaceTableHooks("second", second);
    ASSERT_TRUE(dynamic_cast<EMultipleInterfaceTableHooks*>(&table.GetHooks()));
    EXPECT_EQ(first, table.FindInterfaceTableHooks("first"));
    EXPECT_EQ(second, table.FindInterfaceTableHooks("second"));

    std::vector<unsigned int> seen;
    for (RecorderPtr const& member : {first, second})
        member->whenCalled = [&] { seen.push_back(table.GetFCoERetryCount()); };
    table.SetFCoERetryCount(9);
    EXPECT_EQ((std::vector<unsigned int>{5, 5}), seen);
    for (RecorderPtr const& member : {first, second}) {
        ASSERT_EQ(1U, member->calls.size());
        EXPECT_EQ("SettingFCoERetryCount", member->calls[0].operation);
        EXPECT_EQ("9", member->calls[0].values);
    }
}
