#pragma once

#include "eArchiveOperators.hpp"
#include "eProcessWide.hpp"
#include "eUniqueIDGenerator.hpp"
#include "eUniqueIDMapImplBase.hpp"
#include "ifcoreExport.hpp"

#include <memory>
#include <variant>

// std::auto_ptr is part of the container's interface and stays there; its deprecation is silenced in this header only.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

/// Makes the items of a container, so that one can hold a derived item type (which takes a virtual destructor of Item).
template <class Item> class IFCORE_API EFactory {
public:
    EFactory() = default;
    EFactory(EFactory const&) = default;
    EFactory& operator=(EFactory const&) = default;
    virtual ~EFactory() = default;
    virtual Item* CreateItem() const = 0;            ///< A new default item, owned by the caller.
    virtual Item* CreateItem(Item const&) const = 0; ///< A new copy, owned by the caller.
    virtual EFactory* Clone() const = 0;             ///< A factory of the same kind, owned by the caller.
};

/// Makes items of the very type the container is declared with.
template <class Item> class IFCORE_API EDefaultFactory : public EFactory<Item> {
public:
    Item* CreateItem() const override { return new Item(); }
    Item* CreateItem(Item const& item) const override { return new Item(item); }
    EFactory<Item>* Clone() const override { return new EDefaultFactory; }
    static std::auto_ptr<EFactory<Item>> Create() { return std::auto_ptr<EFactory<Item>>(new EDefaultFactory); }
    /// The one that containers without a factory of their own use: they allocate none.
    static EDefaultFactory const& Shared()
    {
        static EProcessWide<EDefaultFactory> const factory;
        return factory.Get();
    }
};

/// The typed callbacks that the untyped core works with; a null item is answered with null, 0 or nothing. The slot
/// order of the virtual operations is part of the binary interface.
template <class Item, class Parent> class IFCORE_API EUniqueIDMapImpl : public EUniqueIDMapImplBase {
public:
    typedef void (Item::*ParentSetter)(Parent);

    EUniqueIDMapImpl(std::auto_ptr<EFactory<Item>> factory, Parent parent, ParentSetter setParent,
                     bool (Item::*setLocalId)(unsigned int))
        : m_parent(parent), m_factory(factory.release()), m_setParent(setParent), m_setLocalId(setLocalId)
    {
    }
    EUniqueIDMapImpl(std::auto_ptr<EFactory<Item>> factory, Parent parent, ParentSetter setParent,
                     void (Item::*setLocalId)(unsigned int))
        : m_parent(parent), m_factory(factory.release()), m_setParent(setParent), m_setLocalId(setLocalId)
    {
    }
    EUniqueIDMapImpl(std::auto_ptr<EFactory<Item>> factory, Parent parent, ParentSetter setParent,
                     unsigned int (Item::*setLocalId)(unsigned int))
        : m_parent(parent), m_factory(factory.release()), m_setParent(setParent), m_setLocalId(setLocalId)
    {
    }
    EUniqueIDMapImpl(EUniqueIDMapImpl const&) = delete;
    EUniqueIDMapImpl& operator=(EUniqueIDMapImpl const&) = delete;
    ~EUniqueIDMapImpl() override { Empty(); } // here, while the core can still reach DestroyItem

    unsigned int GetLocalId(void const* item) const override
    {
        return item ? static_cast<Item const*>(item)->GetLocalId() : 0;
    }
    void SetLocalId(void* item, unsigned int id) const override
    {
        Item* const typed = static_cast<Item*>(item);
        if (!typed) return;
        std::visit(
            [typed, id](auto setter) {
                if (setter) (typed->*setter)(id);
            },
            m_setLocalId);
    }
    void* CreateNewItem() const override { return Factory().CreateItem(); }
    void* CreateNewItem(void const* item) const override
    {
        return item ? Factory().CreateItem(*static_cast<Item const*>(item)) : nullptr;
    }
    void* CreateAndSerializeIn(EArchive& archive) const override
    {
        std::unique_ptr<Item> item(Factory().CreateItem());
        if (item) ReadNew(archive, *item, 0);
        return item.release();
    }
    void SerializeItemOut(void const* item, EArchive& archive) const override
    {
        if (item) archive << *static_cast<Item const*>(item);
    }
    void DestroyItem(void* item) const override { delete static_cast<Item*>(item); }
    void SetParent(void* item) const override
    {
        if (item) (static_cast<Item*>(item)->*m_setParent)(m_parent);
    }

    EFactory<Item> const& Factory() const
    {
        if (m_factory) return *m_factory;
        return EDefaultFactory<Item>::Shared();
    }
    Parent StoredParent() const { return m_parent; }
    void StoreParent(Parent parent) { m_parent = parent; }

private:
    /// An item of the default factory holds its defaults and is told to nobody: one that empties itself before it is
    /// read need not, when it offers SerializeInNew.
    template <class AnyItem>
    auto ReadNew(EArchive& archive, AnyItem& item, int) const -> decltype(item.SerializeInNew(archive))
    {
        if (m_factory)
            archive >> item;
        else
            item.SerializeInNew(archive);
    }
    template <class AnyItem> void ReadNew(EArchive& archive, AnyItem& item, long) const { archive >> item; }

    Parent m_parent;                                 // not owned, given to every item
    std::unique_ptr<EFactory<Item> const> m_factory; // null: the default one
    ParentSetter m_setParent;
    std::variant<bool (Item::*)(unsigned int), void (Item::*)(unsigned int), unsigned int (Item::*)(unsigned int)>
        m_setLocalId;
};

/// An owning list of records addressed by 32-bit ids, in ascending order of the ids. It writes each item's id and
/// parent into the item, hands out new ids itself (from 1 upwards, never one that was in use before) and archives
/// itself: generator, count, items. An item added under an id in use destroys the old one and takes its place.
/// Iterators at the end, unknown ids and empty slots are answered with null, 0, false or nothing.
/// An exception leaves the items as they were, and one for want of memory the generator too; reading alone keeps what
/// was read before. Swap and RemoveItem throw none.
/// The slot order of the virtual operations is part of the binary interface.
template <class Item, class Parent> class IFCORE_API EUniqueIDMap {
public:
    typedef EUniqueIDMapImplBase::iterator iterator;
    typedef EUniqueIDMapImplBase::const_iterator const_iterator;

    EUniqueIDMap() : EUniqueIDMap(Parent()) {}
    explicit EUniqueIDMap(Parent parent) : EUniqueIDMap(parent, std::auto_ptr<EFactory<Item>>()) {}
    /// Takes the factory over; a null one means the default factory.
    EUniqueIDMap(Parent parent, std::auto_ptr<EFactory<Item>> factory)
        : m_impl(factory, parent, &Item::SetParent, &Item::SetLocalId)
    {
    }
    /// Copies have no parent and a default factory unless they are given one.
    EUniqueIDMap(EUniqueIDMap const& other) : EUniqueIDMap(other, Parent()) {}
    EUniqueIDMap(EUniqueIDMap const& other, Parent parent)
        : EUniqueIDMap(other, parent, std::auto_ptr<EFactory<Item>>())
    {
    }
    EUniqueIDMap(EUniqueIDMap const& other, Parent parent, std::auto_ptr<EFactory<Item>> factory)
        : EUniqueIDMap(parent, factory)
    {
        CoreOf(*this) = CoreOf(other);
    }
    virtual ~EUniqueIDMap() = default;

    virtual void Empty() { m_impl.Empty(); } ///< Freed ids are not handed out again.
    /// Deep copies of the other's items under the same ids, and its generator. This container keeps parent and factory.
    virtual void Copy(EUniqueIDMap const& other) { CoreOf(*this) = CoreOf(other); }
    /// Exchanges items and generators, never parents and factories.
    virtual void Swap(EUniqueIDMap& other) { m_impl.Swap(other.m_impl); }
    virtual EUniqueIDMap& operator=(EUniqueIDMap const& other)
    {
        CoreOf(*this) = CoreOf(other);
        return *this;
    }
    virtual iterator find(unsigned int id) { return m_impl.find(id); }
    virtual const_iterator find(unsigned int id) const { return m_impl.find(id); }
    /// Each adding operation returns the id of the item; 0, with nothing added, when the generator is used up.
    virtual unsigned int AddItem() { return m_impl.AddOwnedItem(m_impl.CreateNewItem()); }
    virtual unsigned int AddItem(unsigned int id) { return m_impl.AddOwnedItem(id, m_impl.CreateNewItem()); }
    virtual unsigned int AddItem(Item const& item) { return m_impl.AddOwnedItem(m_impl.CreateNewItem(&item)); }
    virtual unsigned int AddItem(unsigned int id, Item const& item)
    {
        return m_impl.AddOwnedItem(id, m_impl.CreateNewItem(&item));
    }
    virtual iterator begin() { return m_impl.begin(); }
    virtual iterator end() { return m_impl.end(); }
    virtual const_iterator begin() const { return m_impl.begin(); }
    virtual const_iterator end() const { return m_impl.end(); }
    virtual std::size_t size() const { return m_impl.size(); }
    virtual bool RemoveItem(unsigned int id) { return RemoveItem(find(id)); } ///< Whether there was one.
    virtual bool RemoveItem(iterator const& position) { return m_impl.RemoveItem(position); }
    /// Assigns to the stored item, which keeps its id and its parent whatever \p item carries. False without one.
    virtual bool SetItem(unsigned int id, Item const& item) { return SetItem(find(id), item); }
    virtual bool SetItem(iterator const& position, Item const& item)
    {
        Item* const stored = GetItem(position);
        if (!stored) return false;
        unsigned int const id = m_impl.GetLocalId(stored);
        *stored = item;
        m_impl.SetParent(stored);
        m_impl.SetLocalId(stored, id);
        return true;
    }
    virtual Item* GetItem(unsigned int id) { return GetItem(find(id)); }
    virtual Item const* GetItem(unsigned int id) const { return GetItem(find(id)); }
    virtual Item* GetItem(iterator const& position)
    {
        return position == m_impl.end() ? nullptr : static_cast<Item*>(position->second);
    }
    virtual Item const* GetItem(const_iterator const& position) const
    {
        return position == m_impl.end() ? nullptr : static_cast<Item const*>(position->second);
    }
    /// The item's own local id, 0 without an item.
    virtual unsigned int GetID(iterator const& position) { return m_impl.GetLocalId(GetItem(position)); }
    virtual unsigned int GetID(const_iterator const& position) const { return m_impl.GetLocalId(GetItem(position)); }
    virtual void SetParent(Parent parent)
    {
        m_impl.StoreParent(parent);
        m_impl.SetItemParents();
    }
    virtual Parent GetParent() const { return m_impl.StoredParent(); }
    virtual EFactory<Item> const& GetItemFactory() const { return m_impl.Factory(); }
    virtual EUniqueIDGenerator const& GetIdGenerator() const { return m_impl.GetIdGenerator(); }
    virtual void SetIdGenerator(EUniqueIDGenerator const& generator) { m_impl.SetIdGenerator(generator); }
    /// Replaces the contents; items read before a failing one stay.
    virtual void SerializeIn(EArchive& archive) { m_impl.SerializeIn(archive); }
    virtual void SerializeOut(EArchive& archive) const { m_impl.SerializeOut(archive); }

    std::size_t GetCount() const { return size(); }

private:
    static EUniqueIDMapImplBase& CoreOf(EUniqueIDMap& map) { return map.m_impl; }
    static EUniqueIDMapImplBase const& CoreOf(EUniqueIDMap const& map) { return map.m_impl; }

    EUniqueIDMapImpl<Item, Parent> m_impl;
};

#pragma GCC diagnostic pop
