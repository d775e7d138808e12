#pragma once

#include "eUniqueIDMapImplBase.hpp"

#include <cstddef>
#include <deque>
#include <memory>
#include <optional>

/// Where the items of a large container stand: a row of slots for that range of ids which holds most of them, so that
/// an id is found without a walk through the map. Ids outside of the range are left to the map: its few slots an item
/// bound the memory whatever ids there are. The map remains the truth; a container may lose its index at any time.
class EUniqueIDIndex {
public:
    using Map = EUniqueIDMapImplBase::Map;

    /// Of at least one item.
    explicit EUniqueIDIndex(Map& items);
    /// One for the same range that holds nothing yet; null without \p other and without memory.
    static std::unique_ptr<EUniqueIDIndex> EmptyLike(EUniqueIDIndex const* other) noexcept;

    /// Whether At knows about the id; otherwise the map has to be asked.
    bool Covers(unsigned int id) const { return OffsetOf(id) < m_slots.size(); }
    std::optional<Map::iterator> const& At(unsigned int id) const { return m_slots[OffsetOf(id)]; }
    /// Does nothing when the id is not covered.
    void Put(Map::iterator item)
    {
        if (Covers(item->first)) m_slots[OffsetOf(item->first)] = item;
    }
    /// The same, but covers more ids when it has to; false when the id is too far away to be covered.
    bool Add(Map& items, Map::iterator added);
    void Remove(unsigned int id)
    {
        if (Covers(id)) m_slots[OffsetOf(id)].reset();
    }
    /// Whether most of the items that it was made for have gone.
    bool IsTooLargeFor(std::size_t items) const { return m_slots.size() > 2 * kSlotsPerItem * items; }

private:
    EUniqueIDIndex() = default;

    static constexpr std::size_t kSlotsPerItem = 4; // at most, when slots are added

    /// Ids below the first come out beyond the last.
    std::size_t OffsetOf(unsigned int id) const { return id - m_first; }

    unsigned int m_first = 0;                         // the id of the first slot
    std::deque<std::optional<Map::iterator>> m_slots; // grows without copying, and is given back in small blocks
};
