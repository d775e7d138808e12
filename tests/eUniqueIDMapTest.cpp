#include "eUniqueIDMap.hpp"

#include "eDHCPProperties.hpp"
#include "eDHCPv6Properties.hpp"
#include "eFCoEConfig.hpp"
#include "eGreTunnel.hpp"
#include "eIPv4AddressItem.hpp"
#include "eInterfaceTable.hpp"
#include "golden.hpp"
#include "slotOrder.hpp"

#include <gtest/gtest.h>

#include <type_traits>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // std::auto_ptr is part of the container's interface

namespace {

struct Owner {};

int s_alive = 0;

/// An item whose local-id setter answers with \p Result. Copies of every kind take all that it holds.
template <class Result> class Item {
public:
    Item() { ++s_alive; }
    explicit Item(int itsValue) : value(itsValue) { ++s_alive; }
    Item(Item const& other) : value(other.value), m_id(other.m_id), m_parent(other.m_parent) { ++s_alive; }
    Item& operator=(Item const&) = default;
    virtual ~Item() { --s_alive; }

    virtual char const* Kind() const { return ""; }
    unsigned int GetLocalId() const { return m_id; }
    Result SetLocalId(unsigned int id)
    {
        m_id = id;
        return static_cast<Result>(id);
    }
    Owner const* GetParent() const { return m_parent; }
    void SetParent(Owner const* parent) { m_parent = parent; }
    void SerializeOut(EArchive& archive) const
    {
        archive << m_id;
        archive << value;
    }
    void SerializeIn(EArchive& archive)
    {
        archive >> m_id;
        archive >> value;
    }

    int value = 0;

private:
    unsigned int m_id = 0;
    Owner const* m_parent = nullptr;
};

/// An item of a derived type.
template <class Base> class Derived : public Base {
public:
    Derived() = default;
    explicit Derived(Base const& other) : Base(other) {}
    char const* Kind() const override { return "derived "; }
};

template <class Base> class DerivedFactory : public EFactory<Base> {
public:
    explicit DerivedFactory(bool* destroyed = nullptr) : m_destroyed(destroyed) {}
    DerivedFactory(DerivedFactory const&) = delete;
    DerivedFactory& operator=(DerivedFactory const&) = delete;
    ~DerivedFactory() override
    {
        if (m_destroyed) *m_destroyed = true;
    }
    Base* CreateItem() const override { return new Derived<Base>(); }
    Base* CreateItem(Base const& item) const override { return new Derived<Base>(item); }
    EFactory<Base>* Clone() const override { return new DerivedFactory; }
    static std::auto_ptr<EFactory<Base>> Create() { return std::auto_ptr<EFactory<Base>>(new DerivedFactory); }

private:
    bool* m_destroyed;
};

/// A factory that makes nothing.
template <class Base> class EmptyFactory : public EFactory<Base> {
public:
    Base* CreateItem() const override { return nullptr; }
    Base* CreateItem(Base const&) const override { return nullptr; }
    EFactory<Base>* Clone() const override { return new EmptyFactory; }
};

template <class Result> class EUniqueIDMapTest : public testing::Test {
protected:
    using ItemType = Item<Result>;
    using MapType = EUniqueIDMap<ItemType, Owner const*>;
    using ImplType = EUniqueIDMapImpl<ItemType, Owner const*>;

    ~EUniqueIDMapTest() override { EXPECT_EQ(0, s_alive); } // whatever the test made is destroyed

    /// "kind id=value" of each item in order of iteration; a wrong id or parent is marked.
    static std::string Text(MapType const& map)
    {
        std::string text;
        for (typename MapType::const_iterator i = map.begin(); i != map.end(); ++i) {
            ItemType const* const item = map.GetItem(i);
            text += (text.empty() ? "" : " ") + std::string(item->Kind()) + std::to_string(i->first) + "=" +
                    std::to_string(item->value);
            if (item->GetLocalId() != i->first || map.GetID(i) != i->first) text += " wrong id";
            if (item->GetParent() != map.GetParent()) text += " wrong parent";
        }
        return text;
    }
    /// Items 1=10 2=20 3=30.
    static void Fill(MapType& map)
    {
        for (int const value : {10, 20, 30}) map.AddItem(ItemType(value));
    }
    static unsigned int NextId(MapType const& map) { return EUniqueIDGenerator(map.GetIdGenerator()).Next(); }

    Owner const m_owner = {};
    Owner const m_stranger = {};
};

} // namespace

using SetterKinds = testing::Types<bool, void, unsigned int>;
TYPED_TEST_SUITE(EUniqueIDMapTest, SetterKinds, );

TYPED_TEST(EUniqueIDMapTest, HandsOutAscendingIdsFrom1AndNeverAFreedOne)
{
    typename TestFixture::MapType map(&this->m_owner);
    EXPECT_EQ("", this->Text(map));
    EXPECT_EQ(1U, map.AddItem());
    EXPECT_EQ(2U, map.AddItem());
    EXPECT_EQ("1=0 2=0", this->Text(map));
    EXPECT_TRUE(map.RemoveItem(2));
    EXPECT_EQ(3U, map.AddItem());
    map.Empty();
    EXPECT_EQ(0U, map.size());
    EXPECT_EQ(4U, map.AddItem());
    EXPECT_EQ("4=0", this->Text(map));
}

TYPED_TEST(EUniqueIDMapTest, AddsCopiesAndTellsThemTheirIdAndParent)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::MapType map(&this->m_owner);
    Element source(7);
    source.SetLocalId(99);
    source.SetParent(&this->m_stranger);
    EXPECT_EQ(1U, map.AddItem(source));
    EXPECT_EQ(5U, map.AddItem(5, source));
    EXPECT_EQ(4U, map.AddItem(4));
    EXPECT_EQ("1=7 4=0 5=7", this->Text(map));
    EXPECT_EQ(6U, map.AddItem()); // past the explicit ids
    source.value = 8;
    EXPECT_EQ("1=7 4=0 5=7 6=0", this->Text(map));
    EXPECT_EQ(4U, map.size());
    EXPECT_EQ(4U, map.GetCount());
}

TYPED_TEST(EUniqueIDMapTest, AnItemAddedUnderAnIdInUseTakesThePlaceOfTheOldOne)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::MapType map(&this->m_owner);
    this->Fill(map);
    EXPECT_EQ(2U, map.AddItem(2, Element(21)));
    EXPECT_EQ(3U, map.AddItem(3));
    EXPECT_EQ(1U, map.AddItem(1, *map.GetItem(1))); // copied before it is destroyed
    EXPECT_EQ("1=10 2=21 3=0", this->Text(map));
    EXPECT_EQ(3, s_alive);
    EXPECT_EQ(4U, map.AddItem());
}

TYPED_TEST(EUniqueIDMapTest, SetItemKeepsTheSlotsIdAndParent)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::MapType map(&this->m_owner);
    this->Fill(map);
    Element source(5);
    source.SetLocalId(99);
    source.SetParent(&this->m_stranger);
    Element* const stored = map.GetItem(2);
    EXPECT_TRUE(map.SetItem(2, source));
    EXPECT_EQ("1=10 2=5 3=30", this->Text(map));
    EXPECT_EQ(stored, map.GetItem(2)); // assigned, not exchanged
    source.value = 6;
    EXPECT_TRUE(map.SetItem(map.find(3), source));
    EXPECT_TRUE(map.SetItem(1, *map.GetItem(1)));
    EXPECT_EQ("1=10 2=5 3=6", this->Text(map));
}

TYPED_TEST(EUniqueIDMapTest, SetItemKeepsTheItemsOwnLocalId)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::MapType map(&this->m_owner);
    map.AddItem();
    map.GetItem(1)->SetLocalId(42); // behind the container's back
    EXPECT_TRUE(map.SetItem(1, Element(5)));
    EXPECT_EQ(42U, map.GetItem(1)->GetLocalId());
    EXPECT_EQ(42U, map.GetID(map.find(1)));
}

TYPED_TEST(EUniqueIDMapTest, UnknownIdsAndTheEndAreAnsweredWithNothing)
{
    using Element = typename TestFixture::ItemType;
    using Map = typename TestFixture::MapType;
    Map map(&this->m_owner);
    this->Fill(map);
    Map const& constant = map;
    EXPECT_EQ(nullptr, map.GetItem(9));
    EXPECT_EQ(nullptr, constant.GetItem(9));
    EXPECT_EQ(nullptr, map.GetItem(map.end()));
    EXPECT_EQ(nullptr, constant.GetItem(constant.end()));
    EXPECT_TRUE(map.find(9) == map.end());
    EXPECT_TRUE(constant.find(0) == constant.end());
    EXPECT_EQ(0U, map.GetID(map.end()));
    EXPECT_EQ(0U, constant.GetID(constant.end()));
    EXPECT_FALSE(map.SetItem(9, Element(1)));
    EXPECT_FALSE(map.SetItem(map.end(), Element(1)));
    EXPECT_FALSE(map.RemoveItem(9));
    EXPECT_FALSE(map.RemoveItem(map.end()));
    EXPECT_EQ("1=10 2=20 3=30", this->Text(map));
    EXPECT_EQ(4U, this->NextId(map));
}

TYPED_TEST(EUniqueIDMapTest, FindsRemovesAndIterates)
{
    using Map = typename TestFixture::MapType;
    Map map(&this->m_owner);
    this->Fill(map);
    Map const& constant = map;
    EXPECT_EQ(20, map.GetItem(2)->value);
    EXPECT_EQ(20, constant.GetItem(2)->value);
    EXPECT_EQ(map.GetItem(3), map.GetItem(map.find(3)));
    EXPECT_EQ(3U, map.GetID(map.find(3)));
    EXPECT_EQ(3U, constant.GetID(constant.find(3)));
    EXPECT_EQ(1U, map.begin()->first);
    EXPECT_TRUE(map.RemoveItem(map.find(1)));
    EXPECT_TRUE(map.RemoveItem(3));
    EXPECT_EQ("2=20", this->Text(map));
    EXPECT_EQ(1, s_alive);
}

TYPED_TEST(EUniqueIDMapTest, ACopyHasEqualItemsOfItsOwnUnderTheSameIds)
{
    using Map = typename TestFixture::MapType;
    Map map(&this->m_owner);
    this->Fill(map);
    map.RemoveItem(3);
    Map copies[] = {Map(map), Map(map, &this->m_stranger), Map(&this->m_stranger), Map(&this->m_stranger)};
    copies[2].AddItem(7);
    copies[2].Copy(map);
    copies[3].AddItem(7);
    copies[3] = map;
    for (Map& copy : copies) {
        EXPECT_EQ("1=10 2=20", this->Text(copy));
        EXPECT_NE(map.GetItem(1), copy.GetItem(1));
        EXPECT_EQ(4U, copy.AddItem()); // the generator is copied too
        copy.GetItem(1)->value = 0;
        EXPECT_EQ("1=10 2=20", this->Text(map));
        EXPECT_EQ(4U, this->NextId(map));
    }
    EXPECT_EQ(nullptr, copies[0].GetParent()); // a plain copy has none
    for (Map const* copy : {&copies[1], &copies[2], &copies[3]}) EXPECT_EQ(&this->m_stranger, copy->GetParent());
    map = *&map;
    EXPECT_EQ("1=10 2=20", this->Text(map));
}

TYPED_TEST(EUniqueIDMapTest, SwapExchangesItemsAndGeneratorsButNeitherParentsNorFactories)
{
    using Map = typename TestFixture::MapType;
    Map one(&this->m_owner);
    this->Fill(one);
    Map two(&this->m_stranger, DerivedFactory<typename TestFixture::ItemType>::Create());
    two.AddItem(8);
    one.Swap(two);
    EXPECT_EQ("derived 8=0", this->Text(one));
    EXPECT_EQ("1=10 2=20 3=30", this->Text(two));
    EXPECT_EQ(&this->m_owner, one.GetParent());
    EXPECT_EQ(&this->m_stranger, two.GetParent());
    EXPECT_EQ(9U, one.AddItem());
    EXPECT_EQ(4U, two.AddItem());
    EXPECT_EQ("derived 8=0 9=0", this->Text(one));
    EXPECT_EQ("1=10 2=20 3=30 derived 4=0", this->Text(two));
}

TYPED_TEST(EUniqueIDMapTest, SetParentTellsEveryItem)
{
    typename TestFixture::MapType map;
    EXPECT_EQ(nullptr, map.GetParent());
    this->Fill(map);
    EXPECT_EQ("1=10 2=20 3=30", this->Text(map));
    map.SetParent(&this->m_owner);
    EXPECT_EQ(&this->m_owner, map.GetParent());
    EXPECT_EQ(&this->m_owner, map.GetItem(3)->GetParent());
    EXPECT_EQ("1=10 2=20 3=30", this->Text(map));
}

TYPED_TEST(EUniqueIDMapTest, TheGeneratorCanBeReplacedWhole)
{
    typename TestFixture::MapType map(&this->m_owner);
    EUniqueIDGenerator generator;
    generator.SkipPast(99);
    map.SetIdGenerator(generator);
    EXPECT_EQ(100U, this->NextId(map));
    EXPECT_EQ(100U, map.AddItem());
    map.SetIdGenerator(EUniqueIDGenerator());
    EXPECT_EQ(1U, map.AddItem());
    map.AddItem(2);
    map.SetIdGenerator(EUniqueIDGenerator());
    EXPECT_EQ(3U, map.AddItem()); // ids in use are passed over
    EXPECT_EQ("1=0 2=0 3=0 100=0", this->Text(map));
}

TYPED_TEST(EUniqueIDMapTest, AFactoryMakesEveryItem)
{
    using Element = typename TestFixture::ItemType;
    using Map = typename TestFixture::MapType;
    bool destroyed = false;
    {
        Map map(&this->m_owner, std::auto_ptr<EFactory<Element>>(new DerivedFactory<Element>(&destroyed)));
        map.AddItem();
        map.AddItem(Element(20));
        map.AddItem(7);
        map.AddItem(8, Element(80));
        EXPECT_EQ("derived 1=0 derived 2=20 derived 7=0 derived 8=80", this->Text(map));

        Map const plain(map);
        EXPECT_EQ("1=0 2=20 7=0 8=80", this->Text(plain)); // a copy has the default factory ...
        Map const derived(plain, &this->m_owner, DerivedFactory<Element>::Create()); // ... unless it is given one
        EXPECT_EQ("derived 1=0 derived 2=20 derived 7=0 derived 8=80", this->Text(derived));
        map.Copy(plain); // an assignment keeps its own
        EXPECT_EQ("derived 1=0 derived 2=20 derived 7=0 derived 8=80", this->Text(map));

        ReadInto(map, Bytes("04 01 03 1E"));
        EXPECT_EQ("derived 3=30", this->Text(map));

        EFactory<Element> const& factory = map.GetItemFactory();
        std::unique_ptr<EFactory<Element>> const clone(factory.Clone());
        std::unique_ptr<Element> const item(clone->CreateItem());
        EXPECT_STREQ("derived ", item->Kind());
        EXPECT_FALSE(destroyed);
    }
    EXPECT_TRUE(destroyed); // the container owned it
}

TYPED_TEST(EUniqueIDMapTest, ANullFactoryIsTheDefaultOne)
{
    using Element = typename TestFixture::ItemType;
    using Map = typename TestFixture::MapType;
    Map const source;
    Map const maps[] = {Map(), Map(&this->m_owner, std::auto_ptr<EFactory<Element>>()), Map(source),
                        Map(source, &this->m_owner, std::auto_ptr<EFactory<Element>>())};
    for (Map const& map : maps)
        EXPECT_NE(nullptr, dynamic_cast<EDefaultFactory<Element> const*>(&map.GetItemFactory()));
    static_assert(std::is_same_v<EFactory<Element> const&, decltype(maps[0].GetItemFactory())>);
    static_assert(std::is_same_v<EFactory<Element>*, decltype(maps[0].GetItemFactory().Clone())>);
}

TYPED_TEST(EUniqueIDMapTest, WhereTheFactoryMakesNothingNothingIsStored)
{
    using Element = typename TestFixture::ItemType;
    using Map = typename TestFixture::MapType;
    Map source(&this->m_owner);
    this->Fill(source);
    Map map(&this->m_owner, std::auto_ptr<EFactory<Element>>(new EmptyFactory<Element>));
    EXPECT_EQ(0U, map.AddItem());
    EXPECT_EQ(0U, map.AddItem(5));
    EXPECT_EQ(0U, map.AddItem(Element(1)));
    EXPECT_EQ(0U, map.AddItem(5, Element(1)));
    map = source;
    EXPECT_EQ(0U, map.size());
}

TYPED_TEST(EUniqueIDMapTest, TheArchiveIsTheGeneratorTheCountAndTheItemsInOrder)
{
    using Element = typename TestFixture::ItemType;
    using Map = typename TestFixture::MapType;
    Map map(&this->m_owner);
    map.AddItem(5, Element(50));
    map.AddItem(2, Element(20));
    std::string const bytes = Bytes("06    # next id\n"
                                    "02    # count\n"
                                    "02 14 # item 2\n"
                                    "05 32 # item 5\n");
    EXPECT_EQ(bytes, Written(map));

    Map other(&this->m_stranger);
    this->Fill(other);
    ReadInto(other, bytes); // replaces what is there
    EXPECT_EQ("2=20 5=50", this->Text(other));
    EXPECT_EQ(6U, this->NextId(other));
    EXPECT_EQ(4, s_alive);

    EXPECT_EQ(Bytes("01 00"), Written(Map()));
    ReadInto(other, Bytes("01 00"));
    EXPECT_EQ("", this->Text(other));
}

TYPED_TEST(EUniqueIDMapTest, ItemsAreStoredUnderTheIdsThatTheyBring)
{
    typename TestFixture::MapType map(&this->m_owner);
    ReadInto(map, Bytes("01 04 09 32 03 14 00 01 09 0A")); // unordered, one of id 0, 9 twice
    EXPECT_EQ("0=1 3=20 9=10", this->Text(map));
    EXPECT_EQ(3, s_alive);
}

TYPED_TEST(EUniqueIDMapTest, AnItemWhoseReadingFailsIsReleasedAndThoseBeforeItStay)
{
    typename TestFixture::MapType map(&this->m_owner);
    EArchive archive;
    Load(archive, Bytes("07 02 01 05 02"));
    EXPECT_THROW(map.SerializeIn(archive), EArchiveError);
    EXPECT_EQ("1=5", this->Text(map));
    EXPECT_EQ(1, s_alive);
}

TYPED_TEST(EUniqueIDMapTest, TheCallbacksAnswerNullItemsWithNothing)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::ImplType const impl(EDefaultFactory<Element>::Create(), &this->m_owner, &Element::SetParent,
                                              &Element::SetLocalId);
    EXPECT_EQ(0U, impl.GetLocalId(nullptr));
    EXPECT_EQ(nullptr, impl.CreateNewItem(nullptr));
    EArchive archive;
    impl.SerializeItemOut(nullptr, archive);
    impl.SetLocalId(nullptr, 5);
    impl.SetParent(nullptr);
    impl.DestroyItem(nullptr);
    EXPECT_EQ(0U, archive.GetAsEBlob().GetSize());
    typename TestFixture::ImplType const empty(std::auto_ptr<EFactory<Element>>(new EmptyFactory<Element>),
                                               &this->m_owner, &Element::SetParent, &Element::SetLocalId);
    EXPECT_EQ(nullptr, empty.CreateAndSerializeIn(archive));
}

TYPED_TEST(EUniqueIDMapTest, TheCallbacksMakeTellArchiveAndDestroyItems)
{
    using Element = typename TestFixture::ItemType;
    typename TestFixture::ImplType const impl(EDefaultFactory<Element>::Create(), &this->m_owner, &Element::SetParent,
                                              &Element::SetLocalId);
    void* const item = impl.CreateNewItem();
    impl.SetLocalId(item, 5);
    impl.SetParent(item);
    static_cast<Element*>(item)->value = 50;
    EXPECT_EQ(5U, impl.GetLocalId(item));
    EXPECT_EQ(&this->m_owner, static_cast<Element*>(item)->GetParent());
    void* const copy = impl.CreateNewItem(item);
    EXPECT_EQ(50, static_cast<Element*>(copy)->value);
    EArchive archive;
    impl.SerializeItemOut(item, archive);
    archive.SetMode(2);
    void* const read = impl.CreateAndSerializeIn(archive);
    EXPECT_EQ(5U, impl.GetLocalId(read));
    EXPECT_EQ(50, static_cast<Element*>(read)->value);
    EXPECT_EQ(3, s_alive);
    for (void* each : {item, copy, read}) impl.DestroyItem(each);
    EXPECT_EQ(0, s_alive);
}

TYPED_TEST(EUniqueIDMapTest, WithoutALocalIdSetterTheItemKeepsItsId)
{
    using Element = typename TestFixture::ItemType;
    TypeParam (Element::*const none)(unsigned int) = nullptr;
    typename TestFixture::ImplType const impl(EDefaultFactory<Element>::Create(), &this->m_owner, &Element::SetParent,
                                              none);
    Element item;
    item.SetLocalId(3);
    impl.SetLocalId(&item, 5);
    EXPECT_EQ(3U, item.GetLocalId());
}

TYPED_TEST(EUniqueIDMapTest, TheCoreIsEmptiedByTheTypedCallbacks)
{
    using Element = typename TestFixture::ItemType;
    {
        typename TestFixture::ImplType impl(EDefaultFactory<Element>::Create(), &this->m_owner, &Element::SetParent,
                                            &Element::SetLocalId);
        impl.AddOwnedItem(impl.CreateNewItem());
        EXPECT_EQ(1, s_alive);
    }
    EXPECT_EQ(0, s_alive);
}

TEST(EUniqueIDMapSlots, OfTheMap)
{
    using Record = Item<void>;
    using Map = EUniqueIDMap<Record, Owner const*>;
    using I = Map::iterator;
    using C = Map::const_iterator;
    std::size_t const slots[] = {
        SlotOf(&Map::Empty),
        SlotOf(&Map::Copy),
        SlotOf(&Map::Swap),
        SlotOf(static_cast<Map& (Map::*)(Map const&)>(&Map::operator=)),
        SlotOf(static_cast<I (Map::*)(unsigned int)>(&Map::find)),
        SlotOf(static_cast<C (Map::*)(unsigned int) const>(&Map::find)),
        SlotOf(static_cast<unsigned int (Map::*)()>(&Map::AddItem)),
        SlotOf(static_cast<unsigned int (Map::*)(unsigned int)>(&Map::AddItem)),
        SlotOf(static_cast<unsigned int (Map::*)(Record const&)>(&Map::AddItem)),
        SlotOf(static_cast<unsigned int (Map::*)(unsigned int, Record const&)>(&Map::AddItem)),
        SlotOf(static_cast<I (Map::*)()>(&Map::begin)),
        SlotOf(static_cast<I (Map::*)()>(&Map::end)),
        SlotOf(static_cast<C (Map::*)() const>(&Map::begin)),
        SlotOf(static_cast<C (Map::*)() const>(&Map::end)),
        SlotOf(&Map::size),
        SlotOf(static_cast<bool (Map::*)(unsigned int)>(&Map::RemoveItem)),
        SlotOf(static_cast<bool (Map::*)(I const&)>(&Map::RemoveItem)),
        SlotOf(static_cast<bool (Map::*)(unsigned int, Record const&)>(&Map::SetItem)),
        SlotOf(static_cast<bool (Map::*)(I const&, Record const&)>(&Map::SetItem)),
        SlotOf(static_cast<Record* (Map::*)(unsigned int)>(&Map::GetItem)),
        SlotOf(static_cast<Record const* (Map::*)(unsigned int) const>(&Map::GetItem)),
        SlotOf(static_cast<Record* (Map::*)(I const&)>(&Map::GetItem)),
        SlotOf(static_cast<Record const* (Map::*)(C const&) const>(&Map::GetItem)),
        SlotOf(static_cast<unsigned int (Map::*)(I const&)>(&Map::GetID)),
        SlotOf(static_cast<unsigned int (Map::*)(C const&) const>(&Map::GetID)),
        SlotOf(&Map::SetParent),
        SlotOf(&Map::GetParent),
        SlotOf(&Map::GetItemFactory),
        SlotOf(&Map::GetIdGenerator),
        SlotOf(&Map::SetIdGenerator),
        SlotOf(&Map::SerializeIn),
        SlotOf(&Map::SerializeOut),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(2 + i, slots[i]);
    EXPECT_THROW(SlotOf(&Map::GetCount), std::invalid_argument); // not virtual
}

TEST(EUniqueIDMapSlots, OfTheTypedImplementation)
{
    using Impl = EUniqueIDMapImpl<Item<void>, Owner const*>;
    std::size_t const slots[] = {
        SlotOf(&Impl::GetLocalId),
        SlotOf(&Impl::SetLocalId),
        SlotOf(static_cast<void* (Impl::*)() const>(&Impl::CreateNewItem)),
        SlotOf(static_cast<void* (Impl::*)(void const*) const>(&Impl::CreateNewItem)),
        SlotOf(&Impl::CreateAndSerializeIn),
        SlotOf(&Impl::SerializeItemOut),
        SlotOf(&Impl::DestroyItem),
        SlotOf(&Impl::SetParent),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(2 + i, slots[i]);
}

TEST(EUniqueIDMapSlots, OfTheFactory)
{
    using Record = Item<void>;
    using Factory = EFactory<Record>;
    std::size_t const slots[] = {
        SlotOf(static_cast<Record* (Factory::*)() const>(&Factory::CreateItem)),
        SlotOf(static_cast<Record* (Factory::*)(Record const&) const>(&Factory::CreateItem)),
        SlotOf(&Factory::Clone),
    };
    for (std::size_t i = 0; i < std::size(slots); ++i) EXPECT_EQ(2 + i, slots[i]);
}

namespace {

template <class Record> class EDefaultFactoryTest : public testing::Test {
};

} // namespace

using FactoryRecords = testing::Types<EInterfaceItem, EIPv6AddressItem, EObsoleteGreTunnel, EIPv4AddressItem,
                                      EDHCPProperties, EDHCPv6Properties, EFCoEConfig, ENPIVConfig>;
TYPED_TEST_SUITE(EDefaultFactoryTest, FactoryRecords, );

TYPED_TEST(EDefaultFactoryTest, MakesFreshRecordsCopiesAndItsLike)
{
    std::auto_ptr<EFactory<TypeParam>> const factory = EDefaultFactory<TypeParam>::Create();
    std::unique_ptr<EFactory<TypeParam>> const clone(factory->Clone());
    EXPECT_NE(nullptr, dynamic_cast<EDefaultFactory<TypeParam>*>(clone.get()));
    EXPECT_NE(factory.get(), clone.get());
    std::unique_ptr<TypeParam> const fresh(clone->CreateItem());
    std::unique_ptr<TypeParam> const copy(clone->CreateItem(*fresh));
    EXPECT_NE(fresh.get(), copy.get());
    EXPECT_EQ(Written(TypeParam()), Written(*fresh));
    EXPECT_EQ(Written(TypeParam()), Written(*copy));
}

TEST(EUniqueIDMapOfRecords, TellsEachRecordItsIdAndParent)
{
    EInterfaceTable const table(7);
    EUniqueIDMap<EObsoleteGreTunnel, EInterfaceTable const*> tunnels(&table);
    EXPECT_EQ(1U, tunnels.AddItem());
    EXPECT_EQ(1U, tunnels.GetItem(1)->GetLocalId());
    EXPECT_EQ(&table, tunnels.GetItem(1)->GetParent());

    EInterfaceItem const interface;
    EUniqueIDMap<EIPv6AddressItem, EInterfaceItem const*> addresses(&interface);
    EXPECT_EQ(4U, addresses.AddItem(4, EIPv6AddressItem()));
    EXPECT_EQ(4U, addresses.GetItem(4)->GetLocalId());
    EXPECT_EQ(&interface, addresses.GetItem(4)->GetParent());

    EUniqueIDMap<EInterfaceItem, EInterfaceTable const*> interfaces(&table);
    EXPECT_EQ(1U, interfaces.AddItem());
    EXPECT_EQ(1U, interfaces.GetItem(1)->GetLocalId());
    EXPECT_EQ(&table, interfaces.GetItem(1)->GetParent());
}
