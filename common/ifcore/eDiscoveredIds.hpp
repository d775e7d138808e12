#pragma once

#include "ifcoreExport.hpp"

#include <new>
#include <set>

/// Which items of a container have an address, by the ids under which it keeps them: the lowest is found without a walk
/// through those that have none. When memory fails for an id it says so, and the container has to be walked.
class EDiscoveredIds {
public:
    void Clear() noexcept
    {
        m_ids.clear();
        m_complete = true;
    }
    void Set(unsigned int id, bool hasAddress) noexcept
    {
        try {
            if (hasAddress)
                m_ids.insert(m_ids.end(), id); // ids mostly come in ascending order
            else
                m_ids.erase(id);
        } catch (std::bad_alloc const&) {
            m_complete = false;
        }
    }
    bool IsComplete() const { return m_complete; }
    bool IsEmpty() const { return m_ids.empty(); }
    unsigned int GetLowest() const { return *m_ids.begin(); } ///< Of at least one.

private:
    std::set<unsigned int> m_ids;
    bool m_complete = true;
};

/// Where an item is kept: known to the owner alone and never swapped, while anybody may set an item's parent and id.
template <class Owner> struct EDiscoveredPlace {
    Owner* owner = nullptr; // null: the item is in no container
    unsigned int id = 0;    // the one in the container
};

/// The lowest item that has an address; null without one.
template <class List, class HasAddress>
auto LowestWithAddress(List const& items, EDiscoveredIds const& ids, HasAddress hasAddress)
    -> decltype(items.GetItem(0U))
{
    if (ids.IsComplete()) return ids.IsEmpty() ? nullptr : items.GetItem(ids.GetLowest());
    for (auto position = items.begin(); position != items.end(); ++position)
        if (auto* const item = items.GetItem(position))
            if (hasAddress(*item)) return item;
    return nullptr;
}
