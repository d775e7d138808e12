#include "eUniqueIDIndex.hpp"

#include <iterator>

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

bool EUniqueIDIndex::Add(Map& items, Map::iterator added)
{
    std::size_t const offset = OffsetOf(added->first);
    std::size_t const covered = m_slots.size();
    if (offset >= covered) {
        if (added->first < m_first || offset >= kSlotsPerItem * items.size()) return false;
        m_slots.resize(offset + 1);
        // Items that were too far away when they were added
        for (Map::iterator item = added; offset > covered && (--item)->first - m_first >= covered;)
            m_slots[OffsetOf(item->first)] = item;
    }
    m_slots[offset] = added;
    return true;
}
