#include "allocations.hpp"
#include "hostTestSupport.hpp"
#include "slotOrder.hpp"

#include "eUniqueIDMapImplBase.hpp"

#include <map>
#include <new>
#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

struct Item {
    unsigned int id = 0;
    int value = 0;
    void const* parent = nullptr;
};

int s_items = 0; // that exist

class Container : public EUniqueIDMapImplBase {
public:
    explicit Container(void const* parent = nullptr) : m_parent(parent) {}
    ~Container() override { Empty(); }
    Container& operator=(Container const& other) // not the parent
    {
        EUniqueIDMapImplBase::operator=(other);
        return *this;
    }

    Item* Make(int value) const
    {
        Item* item = static_cast<Item*>(CreateNewItem());
        item->value = value;
        return item;
    }
    unsigned int Add(int value) { return AddOwnedItem(Make(value)); }
    unsigned int Add(unsigned int id, int value) { return AddOwnedItem(id, Make(value)); }
    /// "id=value" of each item in order; items with a wrong id or parent are marked.
    std::string Text() const
    {
        std::string text;
        for (const_iterator i = begin(); i != end(); ++i) {
            Item const* item = static_cast<Item const*>(GetItem(i));
            text += (text.empty() ? "" : " ") + std::to_string(i->first) + '=' + std::to_string(item->value);
            if (item->id != i->first) text += " wrong id";
            if (item->parent != m_parent) text += " wrong parent";
        }
        return text;
    }
    unsigned int PeekNextId() const { return EUniqueIDGenerator(GetIdGenerator()).Next(); }

    unsigned int GetLocalId(void const* item) const override { return static_cast<Item const*>(item)->id; }
    void SetLocalId(void* item, unsigned int id) const override { static_cast<Item*>(item)->id = id; }
    void* CreateNewItem() const override
    {
        if (makesNothing) return nullptr;
        Item* item = new Item();
        ++s_items;
        return item;
    }
    void* CreateNewItem(void const* item) const override
    {
        Item* copy = static_cast<Item*>(CreateNewItem());
        if (copy) *copy = *static_cast<Item const*>(item);
        return copy;
    }
    void* CreateAndSerializeIn(EArchive& archive) const override
    {
        Item* item = static_cast<Item*>(CreateNewItem());
        if (!item) return nullptr;
        try {
            archive >> item->id;
            archive >> item->value;
        } catch (...) {
            DestroyItem(item);
            throw;
        }
        return item;
    }
    void SerializeItemOut(void const* item, EArchive& archive) const override
    {
        archive << static_cast<Item const*>(item)->id;
        archive << static_cast<Item const*>(item)->value;
    }
    void DestroyItem(void* item) const override
    {
        --s_items;
        delete static_cast<Item*>(item);
    }
    void SetParent(void* item) const override
    {
        if (failsToSetParent) throw std::runtime_error("no parent");
        static_cast<Item*>(item)->parent = m_parent;
    }

    bool makesNothing = false;
    bool failsToSetParent = false;

private:
    void const* m_parent;
};

} // namespace

class EUniqueIDMapImplBaseTest : public testing::Test {
protected:
    ~EUniqueIDMapImplBaseTest() override { EXPECT_EQ(0, s_items); }
};

TEST(EUniqueIDMapImplBase, CallbacksStandInTheirSlots)
{
    using Core = EUniqueIDMapImplBase;
    EXPECT_EQ(2U, SlotOf(&Core::GetLocalId));
    EXPECT_EQ(3U, SlotOf(&Core::SetLocalId));
    EXPECT_EQ(4U, SlotOf(static_cast<void* (Core::*)() const>(&Core::CreateNewItem)));
    EXPECT_EQ(5U, SlotOf(static_cast<void* (Core::*)(void const*) const>(&Core::CreateNewItem)));
    EXPECT_EQ(6U, SlotOf(&Core::CreateAndSerializeIn));
    EXPECT_EQ(7U, SlotOf(&Core::SerializeItemOut));
    EXPECT_EQ(8U, SlotOf(&Core::DestroyItem));
    EXPECT_EQ(9U, SlotOf(&Core::SetParent));
}

TEST_F(EUniqueIDMapImplBaseTest, HandsOutAscendingIdsAndNeverAFreedOne)
{
    int parent = 0;
    Container container(&parent);
    EXPECT_EQ(1U, container.Add(10));
    EXPECT_EQ(2U, container.Add(20));
    EXPECT_EQ(3U, container.Add(30));
    EXPECT_EQ("1=10 2=20 3=30", container.Text());
    EXPECT_TRUE(container.RemoveItem(container.find(3)));
    EXPECT_EQ(4U, container.Add(40));
    container.Empty();
    EXPECT_EQ(0U, container.size());
    EXPECT_EQ(5U, container.Add(50));
    EXPECT_EQ("5=50", container.Text());
}

TEST_F(EUniqueIDMapImplBaseTest, AnExplicitIdIsTakenAsGivenAndMovesTheGeneratorPastIt)
{
    struct {
        unsigned int id;
        unsigned int next;
    } const cases[] = {{0, 1}, {1, 2}, {5, 6}, {0xFFFFFFFE, 0xFFFFFFFF}, {0xFFFFFFFF, 0}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.id);
        int parent = 0;
        Container container(&parent);
        EXPECT_EQ(c.id, container.Add(c.id, 7));
        EXPECT_EQ(std::to_string(c.id) + "=7", container.Text());
        EXPECT_EQ(c.next, container.PeekNextId());
    }
    Container container;
    container.Add(5, 50);
    container.Add(2, 20); // a smaller one moves nothing
    EXPECT_EQ(6U, container.Add(60));
    EXPECT_EQ("2=20 5=50 6=60", container.Text());
}

TEST_F(EUniqueIDMapImplBaseTest, AnItemUnderAnIdInUseReplacesTheOldOne)
{
    Container container;
    container.Add(1, 10);
    container.Add(2, 20);
    EXPECT_EQ(1U, container.Add(1, 11));
    EXPECT_EQ("1=11 2=20", container.Text());
    EXPECT_EQ(2, s_items);
    EXPECT_EQ(1U, container.AddOwnedItem(1, container.GetItem(container.begin()))); // the one that is there
    EXPECT_EQ("1=11 2=20", container.Text());
    EXPECT_EQ(2, s_items);
}

TEST_F(EUniqueIDMapImplBaseTest, GeneratedIdsPassOverThoseInUse)
{
    Container container;
    container.Add(2, 20);
    container.Add(3, 30);
    container.SetIdGenerator(EUniqueIDGenerator());
    EXPECT_EQ(1U, container.Add(10));
    EXPECT_EQ(4U, container.Add(40));
    EXPECT_EQ("1=10 2=20 3=30 4=40", container.Text());
}

TEST_F(EUniqueIDMapImplBaseTest, FreeingAnIdMovesAReplacedGeneratorPastIt)
{
    Container container;
    for (int value : {10, 20, 30}) container.Add(value);
    container.SetIdGenerator(EUniqueIDGenerator());
    container.RemoveItem(container.find(2));
    EXPECT_EQ(3U, container.PeekNextId());
    container.SetIdGenerator(EUniqueIDGenerator());
    container.Empty();
    EXPECT_EQ(4U, container.PeekNextId());
}

TEST_F(EUniqueIDMapImplBaseTest, WhenTheIdsAreUsedUpTheItemIsDestroyed)
{
    Container container;
    container.Add(0xFFFFFFFE, 1);
    EXPECT_EQ(0xFFFFFFFFU, container.Add(2));
    EXPECT_EQ(0U, container.Add(3));
    EXPECT_EQ(0U, container.Add(4));
    EXPECT_EQ("4294967294=1 4294967295=2", container.Text());
    EXPECT_EQ(2, s_items);
    EXPECT_EQ(7U, container.Add(7, 5)); // explicit ids still are
    EXPECT_EQ(0U, container.Add(6));

    Container last;
    last.Add(0xFFFFFFFF, 1);
    EUniqueIDGenerator generator;
    generator.SkipPast(0xFFFFFFFE);
    last.SetIdGenerator(generator); // its only id is in use
    EXPECT_EQ(0U, last.Add(2));
}

TEST_F(EUniqueIDMapImplBaseTest, ANullItemIsNotStored)
{
    Container container;
    EXPECT_EQ(0U, container.AddOwnedItem(nullptr));
    EXPECT_EQ(0U, container.AddOwnedItem(5, nullptr));
    EXPECT_EQ(0U, container.size());
    EXPECT_EQ(1U, container.PeekNextId());

    Container source;
    source.Add(10);
    container.makesNothing = true;
    container = source;
    EXPECT_EQ(0U, container.size());
    EArchive archive = Reading("0502 0101 0202");
    container.SerializeIn(archive);
    EXPECT_EQ(0U, container.size());
}

TEST_F(EUniqueIDMapImplBaseTest, FindsIteratesAndAnswersNothingAtTheEnd)
{
    Container container;
    container.Add(3, 30);
    container.Add(1, 10);
    Container const& constant = container;
    EXPECT_EQ(2U, constant.size());
    EXPECT_EQ(1U, container.begin()->first);
    EXPECT_EQ(1U, constant.begin()->first);
    EXPECT_EQ(10, static_cast<Item*>(container.GetItem(container.find(1)))->value);
    EXPECT_EQ(30, static_cast<Item const*>(constant.GetItem(constant.find(3)))->value);
    EXPECT_TRUE(container.find(2) == container.end());
    EXPECT_TRUE(constant.find(2) == constant.end());
    EXPECT_EQ(nullptr, container.GetItem(container.end()));
    EXPECT_EQ(nullptr, constant.GetItem(constant.end()));
}

TEST_F(EUniqueIDMapImplBaseTest, RemoveItemSaysWhetherThereWasOne)
{
    Container container;
    container.Add(10);
    container.Add(20);
    EXPECT_FALSE(container.RemoveItem(container.find(9)));
    EXPECT_FALSE(container.RemoveItem(container.end()));
    EXPECT_EQ(2, s_items);
    EXPECT_TRUE(container.RemoveItem(container.find(1)));
    EXPECT_EQ("2=20", container.Text());
    EXPECT_EQ(1, s_items);
}

TEST_F(EUniqueIDMapImplBaseTest, ACopyHasItsOwnItemsUnderTheSameIdsAndItsOwnParent)
{
    int parents[2] = {};
    Container source(&parents[0]);
    source.Add(5, 50);
    source.Add(9, 90);
    Container target(&parents[1]);
    target.Add(5, 1);
    target.Add(6, 2);
    target = source;
    EXPECT_EQ("5=50 9=90", target.Text());
    EXPECT_EQ("5=50 9=90", source.Text());
    EXPECT_NE(source.GetItem(source.begin()), target.GetItem(target.begin()));
    EXPECT_EQ(4, s_items);
    EXPECT_EQ(10U, target.Add(100));
    EXPECT_EQ("5=50 9=90", source.Text());
    EXPECT_EQ(10U, source.PeekNextId());

    target.Copy(Container());
    EXPECT_EQ(0U, target.size());
    EXPECT_EQ(1U, target.PeekNextId());
}

TEST_F(EUniqueIDMapImplBaseTest, SwapExchangesItemsAndGeneratorAndTellsTheParents)
{
    int parents[2] = {};
    Container one(&parents[0]);
    Container two(&parents[1]);
    one.Add(5, 50);
    two.Add(1, 10);
    two.Add(2, 20);
    void const* const item = one.GetItem(one.begin());
    one.Swap(two);
    EXPECT_EQ("1=10 2=20", one.Text());
    EXPECT_EQ("5=50", two.Text());
    EXPECT_EQ(item, two.GetItem(two.begin()));
    EXPECT_EQ(3U, one.PeekNextId());
    EXPECT_EQ(6U, two.PeekNextId());
}

TEST_F(EUniqueIDMapImplBaseTest, CopyAndSwapWithItselfChangeNothing)
{
    Container container;
    container.Add(10);
    void const* const item = container.GetItem(container.begin());
    Container& same = container;
    container.Copy(same);
    container.Swap(same);
    container = same;
    EXPECT_EQ("1=10", container.Text());
    EXPECT_EQ(item, container.GetItem(container.begin()));
    EXPECT_EQ(2U, container.PeekNextId());
}

TEST_F(EUniqueIDMapImplBaseTest, AnExceptionDestroysTheItemAddedAndNothingElse)
{
    Container container;
    container.Add(1, 10);
    container.failsToSetParent = true;
    EXPECT_THROW(container.Add(20), std::runtime_error);
    EXPECT_THROW(container.Add(1, 11), std::runtime_error);
    EXPECT_THROW(container.Add(7, 70), std::runtime_error);
    container.failsToSetParent = false;
    EXPECT_EQ("1=10", container.Text());
    EXPECT_EQ(1, s_items);
    EXPECT_EQ(3U, container.Add(30)); // 2 was handed out already
}

/// Runs \p operation with the first, the second ... allocation failing until it succeeds; after each failure the
/// container must read \p before.
template <class Operation>
static void ExpectUnchangedByEachFailure(Container const& container, std::string const& before, Operation operation)
{
    int const items = s_items;
    unsigned int const next = container.PeekNextId();
    for (long granted = 0;; ++granted) {
        SCOPED_TRACE(granted);
        bool failed = false;
        s_allocationsLeft = granted;
        try {
            operation();
        } catch (std::bad_alloc const&) {
            failed = true;
        }
        s_allocationsLeft = -1;
        if (!failed) {
            EXPECT_GT(granted, 0); // otherwise nothing was tried
            return;
        }
        EXPECT_EQ(before, container.Text());
        EXPECT_EQ(items, s_items);
        EXPECT_EQ(next, container.PeekNextId());
    }
}

TEST_F(EUniqueIDMapImplBaseTest, AFailedAllocationLeavesTheContainerAsItWas)
{
    Container source;
    for (int value = 0; value < 5; ++value) source.Add(value);
    Container container;
    container.Add(10);
    ExpectUnchangedByEachFailure(container, "1=10", [&] { container.Add(20); });
    container.RemoveItem(container.find(container.PeekNextId() - 1));
    ExpectUnchangedByEachFailure(container, "1=10", [&] { container.Add(7, 70); });
    EXPECT_EQ("1=10 7=70", container.Text());
    unsigned int const next = container.PeekNextId();
    ExpectUnchangedByEachFailure(container, "1=10 7=70", [&] {
        EXPECT_EQ(next, container.PeekNextId());
        container.Copy(source);
    });
    EXPECT_EQ("1=0 2=1 3=2 4=3 5=4", container.Text());
    EXPECT_EQ(6U, container.PeekNextId());
}

/// What a container must hold: the value of each id.
using Model = std::map<unsigned int, int>;

static int const* ValueOf(Container const& container, unsigned int id)
{
    Item const* const item = static_cast<Item const*>(container.GetItem(container.find(id)));
    return item ? &item->value : nullptr;
}

/// Asks both for every id that the model has, for its neighbours and for a few that are nowhere near.
static void ExpectHolds(Container& container, Model const& model)
{
    ASSERT_EQ(model.size(), container.size());
    Container const& constant = container;
    auto const expectSame = [&](unsigned int id) {
        auto const expected = model.find(id);
        ASSERT_EQ(expected != model.end(), container.find(id) != container.end()) << id;
        ASSERT_EQ(expected != model.end(), constant.find(id) != constant.end()) << id;
        if (expected == model.end()) return;
        ASSERT_EQ(id, container.find(id)->first);
        ASSERT_NE(nullptr, ValueOf(container, id)) << id;
        ASSERT_EQ(expected->second, *ValueOf(container, id)) << id;
    };
    for (unsigned int id : {0U, 1U, 0x7FFFFFFFU, 0xFFFFFFFFU}) ASSERT_NO_FATAL_FAILURE(expectSame(id));
    for (auto const& entry : model)
        for (unsigned int id : {entry.first - 1, entry.first, entry.first + 1}) ASSERT_NO_FATAL_FAILURE(expectSame(id));
}

TEST_F(EUniqueIDMapImplBaseTest, FindsWhatAPlainMapFindsWhateverIsDone)
{
    for (unsigned int seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const below = [&random](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
        unsigned int const base = seed % 3 == 0 ? 0xFFFFF000U : seed % 3 == 1 ? 0U : 1000000U;
        int parents[2] = {};
        Container container(&parents[0]);
        Container other(&parents[1]);
        Model model;
        Model otherModel;
        auto const add = [&](unsigned int id) {
            container.Add(id, static_cast<int>(id % 1000));
            model[id] = static_cast<int>(id % 1000);
        };
        auto const removeAny = [&] {
            if (model.empty()) return;
            auto victim = model.lower_bound(base + below(2000));
            if (victim == model.end()) victim = model.begin();
            ASSERT_TRUE(container.RemoveItem(container.find(victim->first)));
            model.erase(victim);
        };
        for (int step = 0; step < 1200; ++step) {
            unsigned int const action = below(100);
            if (action < 45) {
                unsigned int const id = container.Add(step);
                if (id != 0) model[id] = step;
            } else if (action < 60) {
                add(base + below(2000));
            } else if (action < 63) {
                add(static_cast<unsigned int>(random()));
            } else if (action < 65) { // more than a tiny container, downwards
                for (unsigned int i = 40; i > 0; --i) add(base + 100 + 3 * i);
            } else if (action < 93) {
                ASSERT_NO_FATAL_FAILURE(removeAny());
            } else if (action < 94) {
                for (std::size_t left = 5; model.size() > left;) ASSERT_NO_FATAL_FAILURE(removeAny());
            } else if (action < 96) {
                container.Swap(other);
                model.swap(otherModel);
            } else if (action < 98) {
                other = container;
                otherModel = model;
            } else if (action < 99) {
                EArchive archive;
                container.SerializeOut(archive);
                archive.SetMode(2);
                container.SerializeIn(archive);
            } else if (below(4) == 0) {
                container.Empty();
                model.clear();
            }
            if (step % 20 != 0) continue;
            ASSERT_NO_FATAL_FAILURE(ExpectHolds(container, model)) << step;
            ASSERT_NO_FATAL_FAILURE(ExpectHolds(other, otherModel)) << step;
        }
    }
}

TEST_F(EUniqueIDMapImplBaseTest, AContainerThatShrinksAndGrowsAgainFindsItsItems)
{
    for (int count : {25, 1000}) {
        Container container;
        Model model;
        for (int value = 0; value < count; ++value) model[container.Add(value)] = value;
        ExpectHolds(container, model);
        for (std::size_t left : {500U, 100U, 20U, 17U, 16U, 15U, 8U, 5U, 3U, 0U}) {
            SCOPED_TRACE(testing::Message() << left << " left of " << count);
            unsigned int freed = 1;
            while (model.size() > left) {
                freed = model.begin()->first;
                container.RemoveItem(container.find(freed));
                model.erase(freed);
            }
            for (unsigned int id : {freed, 1U}) { // close to the others and far from them
                container.Add(id, 70);
                model[id] = 70;
                ExpectHolds(container, model);
            }
        }
        for (int value = 0; value < 100; ++value) model[container.Add(value)] = value;
        ExpectHolds(container, model);
    }
}

TEST_F(EUniqueIDMapImplBaseTest, FarIdsTakeNoMoreMemoryThanNearOnes)
{
    for (unsigned int step : {1U, 3U, 5U, 1000U, 4000000U}) {
        SCOPED_TRACE(step);
        Container container;
        Model model;
        std::size_t const before = s_bytesInUse;
        for (unsigned int i = 0; i < 1000; ++i) container.Add(i * step, 1);
        container.Add(0xFFFFFFFF, 1);
        container.Add(0x80000000, 1);
        EXPECT_LT(s_bytesInUse - before, 1000U * 250U); // an item, a node of the map and what helps to find it
        for (unsigned int i = 0; i < 1000; ++i) model[i * step] = 1;
        model[0xFFFFFFFF] = 1;
        model[0x80000000] = 1;
        ExpectHolds(container, model);
    }
}

TEST_F(EUniqueIDMapImplBaseTest, WhatHelpsToFindItemsGoesWithThem)
{
    std::size_t const before = s_bytesInUse;
    Container container;
    for (int value = 0; value < 100000; ++value) container.Add(value);
    for (unsigned int id = 1; id <= 100000 - 20; ++id) container.RemoveItem(container.find(id));
    EXPECT_EQ(20U, container.size());
    EXPECT_LT(s_bytesInUse - before, 20U * 1000U);
    for (unsigned int id = 99990; id <= 100000; ++id) EXPECT_NE(nullptr, ValueOf(container, id));
}

TEST_F(EUniqueIDMapImplBaseTest, SmallIdsAreNotTakenForIdsBehindTheGreatest)
{
    Container container;
    Model model;
    auto const add = [&](unsigned int id) {
        container.Add(id, 1);
        model[id] = 1;
    };
    for (unsigned int id = 0xFFFFFF00; id < 0xFFFFFF40; ++id) add(id);
    for (unsigned int id = 0; id < 12; ++id) add(id);
    ExpectHolds(container, model);
    add(0xFFFFFFFF);
    for (unsigned int id = 12; id < 100; ++id) add(id);
    ExpectHolds(container, model);
}

TEST_F(EUniqueIDMapImplBaseTest, AFailedAllocationLosesNoItemOfALargeContainer)
{
    for (int count : {10, 16, 21, 22, 64, 128, 500}) {
        for (long granted = 0; granted < 6; ++granted) {
            SCOPED_TRACE(testing::Message() << count << " items, " << granted << " allocations");
            Container container;
            Model model;
            for (int value = 0; value < count; ++value) model[container.Add(value)] = value;
            for (int value = 0; value < 40; ++value) { // each of them is refused its allocation number `granted`
                Item* const item = container.Make(value);
                unsigned int const id = container.PeekNextId();
                bool added = true;
                s_allocationsLeft = granted;
                try {
                    container.AddOwnedItem(item);
                } catch (std::bad_alloc const&) {
                    added = false;
                }
                s_allocationsLeft = -1;
                EXPECT_TRUE(added || granted == 0);
                if (added) model[id] = value;
                ASSERT_NO_FATAL_FAILURE(ExpectHolds(container, model));
            }
            Container copy;
            s_allocationsLeft = granted;
            try {
                copy = container;
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(0U, copy.size());
            }
            s_allocationsLeft = -1;
            copy = container;
            ExpectHolds(copy, model);
        }
    }
}

TEST_F(EUniqueIDMapImplBaseTest, TheArchiveIsTheGeneratorTheCountAndTheItemsInOrder)
{
    int parent = 0;
    Container container(&parent);
    EArchive archive;
    container.SerializeOut(archive);
    EXPECT_EQ("0100", archive.GetAsEBlob().GetHexString());

    container.Add(5, 50);
    container.Add(2, 20);
    EArchive two;
    container.SerializeOut(two);
    EXPECT_EQ("0602"
              "0214"
              "0532",
              two.GetAsEBlob().GetHexString());

    container.Add(9, 90);
    two.SetMode(2);
    container.SerializeIn(two);
    EXPECT_EQ("2=20 5=50", container.Text());
    EXPECT_EQ(6U, container.PeekNextId());
    EXPECT_TRUE(two.AtEnd());
}

TEST_F(EUniqueIDMapImplBaseTest, ReadsItemsUnderTheIdsTheyBringAndTheGeneratorAsItIs)
{
    int parent = 0;
    Container container(&parent);
    EArchive archive = Reading("01 04 0932 0314 0001 090a"); // unordered, with id 0 and with 9 twice
    container.SerializeIn(archive);
    EXPECT_EQ("0=1 3=20 9=10", container.Text());
    EXPECT_EQ(3, s_items);
    EXPECT_EQ(1U, container.Add(5));
    EXPECT_EQ(2U, container.Add(5));
    EXPECT_EQ(4U, container.Add(5)); // passes over what is in use
}

TEST_F(EUniqueIDMapImplBaseTest, AfterAnErrorTheItemsReadBeforeItAreThere)
{
    struct {
        char const* bytes;
        char const* message;
        char const* items;
        unsigned int next;
    } const cases[] = {
        {"", "archive offset 0: wanted unsigned int, found the end", "", 2},
        {"fc0100000000", "archive offset 0: wanted unsigned int of at most 4294967295, found 4294967296", "", 2},
        {"07", "archive offset 1: wanted unsigned long, found the end", "", 7},
        {"0703 0101", "archive offset 1: wanted a count of at most the 2 bytes that remain, found 3", "", 7},
        {"07ffffffffffffffffff 0101",
         "archive offset 1: wanted a count of at most the 2 bytes that remain, found 18446744073709551615", "", 7},
        {"0702 01", "archive offset 1: wanted a count of at most the 1 bytes that remain, found 2", "", 7},
        {"0702 0105 02", "archive offset 5: wanted int, found the end", "1=5", 7},
        {"0703 0105 0206", "archive offset 6: wanted unsigned int, found the end", "1=5 2=6", 7}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.bytes);
        int parent = 0;
        Container container(&parent);
        container.Add(99);
        EArchive archive = Reading(c.bytes);
        try {
            container.SerializeIn(archive);
            ADD_FAILURE() << "no error";
        } catch (EArchiveError const& error) {
            EXPECT_STREQ(c.message, error.what());
        }
        EXPECT_EQ(c.items, container.Text());
        EXPECT_EQ(c.next, container.PeekNextId());
    }
}

TEST_F(EUniqueIDMapImplBaseTest, ReadingFromAnArchiveThatIsWrittenEmpties)
{
    Container container;
    container.Add(10);
    EArchive storing;
    container.SerializeIn(storing);
    EXPECT_EQ(0U, container.size());
    EXPECT_EQ(1U, container.PeekNextId());
    EArchive reading = Reading("05");
    container.Add(10);
    container.SerializeOut(reading);
    EXPECT_EQ("05", reading.GetAsEBlob().GetHexString());
}
