#pragma once

#include "eArchive.hpp"
#include "eUniqueIDGenerator.hpp"
#include "ifhostExport.hpp"

#include <cstddef>
#include <map>
#include <memory>

class EUniqueIDIndex;

/// The untyped core of a container that owns items under 32-bit ids; what depends on the items' type is a callback.
///
/// A null item is never stored. The core cannot destroy items in its own destructor, since the callbacks are gone by
/// then: the typed class calls Empty() in its destructor. An assignment of the typed class must forward to that of the
/// core, and leave its own parent and factory alone.
class IFHOST_API EUniqueIDMapImplBase {
public:
    typedef std::map<unsigned int, void*> Map;
    typedef Map::iterator iterator;
    typedef Map::const_iterator const_iterator;

    EUniqueIDMapImplBase();
    EUniqueIDMapImplBase(EUniqueIDMapImplBase const&) = delete; // copying needs the callbacks: assign instead
    virtual ~EUniqueIDMapImplBase();

    /// \name The callbacks, in slot order behind the two of the destructor.
    ///@{
    virtual unsigned int GetLocalId(void const* item) const = 0;
    virtual void SetLocalId(void* item, unsigned int id) const = 0;
    virtual void* CreateNewItem() const = 0;
    virtual void* CreateNewItem(void const* item) const = 0;
    virtual void* CreateAndSerializeIn(EArchive& archive) const = 0;
    virtual void SerializeItemOut(void const* item, EArchive& archive) const = 0;
    virtual void DestroyItem(void* item) const = 0;
    virtual void SetParent(void* item) const = 0;
    ///@}

    /// Takes \p item over under a new id, and tells it id and parent. Ids in use are passed over.
    /// Returns the id; 0, with the item destroyed, when the ids are used up. An exception destroys the item and leaves
    /// the others as they were; for want of memory no id is used up either.
    unsigned int AddOwnedItem(void* item);
    /// The same under \p id, whatever it is; an item that is there already is destroyed and replaced. New ids will be
    /// greater than \p id.
    unsigned int AddOwnedItem(unsigned int id, void* item);
    /// Destroys all items. The generator stays: a freed id is never handed out again.
    void Empty();
    /// Makes the items copies of the other's, under the same ids and with this container's parent, and copies the
    /// generator. An exception leaves everything as it was.
    void Copy(EUniqueIDMapImplBase const& other);
    EUniqueIDMapImplBase& operator=(EUniqueIDMapImplBase const& other)
    {
        Copy(other);
        return *this;
    }
    /// Exchanges items and generators; all items are told their new parent.
    void Swap(EUniqueIDMapImplBase& other);

    /// In constant time in all but tiny containers, when the ids are not scattered.
    iterator find(unsigned int id) { return m_index ? FindIndexed(id) : m_items.find(id); }
    const_iterator find(unsigned int id) const { return m_index ? FindIndexed(id) : m_items.find(id); }
    iterator begin() { return m_items.begin(); } ///< Ascending ids.
    const_iterator begin() const { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator end() const { return m_items.end(); }
    std::size_t size() const { return m_items.size(); }

    /// Destroys the item; false at the end.
    bool RemoveItem(iterator const& position);
    /// Null at the end.
    void* GetItem(iterator const& position) { return position == m_items.end() ? nullptr : position->second; }
    void const* GetItem(const_iterator const& position) const
    {
        return position == m_items.end() ? nullptr : position->second;
    }
    /// Tells every item its parent.
    void SetItemParents();

    EUniqueIDGenerator const& GetIdGenerator() const { return m_generator; }
    /// Taken as it is; ids in use are passed over all the same, and freeing an id moves the generator past it.
    void SetIdGenerator(EUniqueIDGenerator const& generator) { m_generator = generator; }

    /// Empties, then reads generator, count and items; each item is stored under the id that it brings. After an
    /// EArchiveError the items read before it are there.
    void SerializeIn(EArchive& archive);
    void SerializeOut(EArchive& archive) const;

private:
    class OwnedItem;
    class OwnedItems;
    void Store(unsigned int id, OwnedItem& item);
    bool IsInUse(unsigned int id) const;
    iterator FindIndexed(unsigned int id);
    const_iterator FindIndexed(unsigned int id) const;
    void AddToIndex(iterator added) noexcept;
    void RemakeIndex() noexcept;

    Map m_items; // owned, never null
    EUniqueIDGenerator m_generator;
    unsigned int m_unindexed = 0;            // items added since the index was made that it does not cover
    std::unique_ptr<EUniqueIDIndex> m_index; // null: the map is walked, as in tiny containers
};
