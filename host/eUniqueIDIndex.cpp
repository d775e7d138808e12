#include "eUniqueIDIndex.hpp"

#include <iterator>
#include <new>

EUniqueIDIndex::EUniqueIDIndex(Map& items)
{
    std::size_t const width = kSlotsPerItem * items.size();
    // Of all ranges of that width that end at an item, the first one with the most items.
    Map::iterator bestFirst = items.begin();
    Map::iterator bestLast = items.begin();
    std::size_t most = 0;
    std::size_t held = 0;
    Map::iterator first = items.begin();
    for (Map::iterator last = items.begin(); last != items.end(); ++last) {
        ++held;
        for (; last->first - first->first >= width; ++first) --held;
        if (held <= most) continue;
        most = held;
        bestFirst = first;
        bestLast = last;
    }
    m_first = bestFirst->first;
    m_slots.resize(OffsetOf(bestLast->first) + 1);
    Map::iterator const end = std::next(bestLast);
    for (Map::iterator item = bestFirst; item != end; ++item) m_slots[OffsetOf(item->first)] = item;
}

std::unique_ptr<EUniqueIDIndex> EUniqueIDIndex::EmptyLike(EUniqueIDIndex const* other) noexcept
{
    if (!other) return nullptr;
    try {
        std::unique_ptr<EUniqueIDIndex> index(new EUniqueIDIndex);
        index->m_first = other->m_first;
        index->m_slots.resize(other->m_slots.size());
        return index;
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

bool EUniqueIDIndex::Add(Map& items, Map::iterator added)
{
    std::size_t const offset = OffsetOf(added->first);
    std::size_t const covered = m_slots.size();
    if (offset >= covered) {
        if (added->first < m_first || offset >= kSlotsPerItem * items.size()) return false;
        if (offset == covered) { // ids mostly come in ascending order
            m_slots.emplace_back(added);
            return true;
        }
        m_slots.resize(offset + 1);
        // Between them may be items that were too far away when they were added.
        Map::iterator item = items.lower_bound(m_first + static_cast<unsigned int>(covered));
        for (; item != added; ++item) m_slots[OffsetOf(item->first)] = item;
    }
    m_slots[offset] = added;
    return true;
}
