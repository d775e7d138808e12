#pragma once

#include "eArchive.hpp"
#include "eUniqueIDGenerator.hpp"

#include <cstddef>
#include <map>

class MINIMAL_HOST_API EUniqueIDMapImplBase {
public:
    typedef std::map<unsigned int, void*>::iterator iterator;
    typedef std::map<unsigned int, void*>::const_iterator const_iterator;

    EUniqueIDMapImplBase() = default;
    EUniqueIDMapImplBase(EUniqueIDMapImplBase const&) = delete;
    virtual ~EUniqueIDMapImplBase();

    virtual unsigned int GetLocalId(void const* item) const = 0;
    virtual void SetLocalId(void* item, unsigned int id) const = 0;
    virtual void* CreateNewItem() const = 0;
    virtual void* CreateNewItem(void const* item) const = 0;
    virtual void* CreateAndSerializeIn(EArchive& archive) const = 0;
    virtual void SerializeItemOut(void const* item, EArchive& archive) const = 0;
    virtual void DestroyItem(void* item) const = 0;
    virtual void SetParent(void* item) const = 0;

    unsigned int AddOwnedItem(void* item);
    unsigned int AddOwnedItem(unsigned int id, void* item);
    void Empty();
    EUniqueIDMapImplBase& operator=(EUniqueIDMapImplBase const& other);
    void Swap(EUniqueIDMapImplBase& other);
    iterator find(unsigned int id) { return m_items.find(id); }
    const_iterator find(unsigned int id) const { return m_items.find(id); }
    iterator begin() { return m_items.begin(); }
    const_iterator begin() const { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator end() const { return m_items.end(); }
    std::size_t size() const { return m_items.size(); }
    bool RemoveItem(iterator const& position);
    void SetItemParents();
    EUniqueIDGenerator const& GetIdGenerator() const { return m_generator; }
    void SetIdGenerator(EUniqueIDGenerator const& generator) { m_generator = generator; }
    void SerializeIn(EArchive& archive);
    void SerializeOut(EArchive& archive) const;

private:
    std::map<unsigned int, void*> m_items; // owned, never null
    EUniqueIDGenerator m_generator;
};
