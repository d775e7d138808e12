#pragma once

#include "eDiscoveredTableHooks.hpp"
#include "eProcessWide.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

// What the records of a discovered table share.

/// The observer of a record: that of its owner; without one, one that ignores all and is the class's own.
template <class Record, class Owner> EDiscoveredTableHooks& HooksThrough(Owner const* owner)
{
    static EProcessWide<EIgnoreDiscoveredTableHooks> const ignoring;
    return owner ? owner->GetHooks() : ignoring.Get();
}

/// Records know their owners as const. The few things in an owner that a record keeps current, an index and the default
/// MAC, are changed through here and nowhere else.
template <class Owner> Owner& Changeable(Owner const& owner)
{
    return const_cast<Owner&>(owner);
}

/// So that adding one element cannot fail any more once it has been announced.
template <class Element> void MakeRoomForOne(std::vector<Element>& elements)
{
    if (elements.size() == elements.capacity()) elements.reserve(std::max<std::size_t>(4, 2 * elements.size()));
}

/// Null beyond the last.
template <class Element> Element const* ElementAt(std::vector<Element> const& elements, unsigned int position)
{
    return position < elements.size() ? &elements[position] : nullptr;
}

template <class Element> bool Contains(std::vector<Element> const& elements, Element const& element)
{
    return std::find(elements.begin(), elements.end(), element) != elements.end();
}

/// Removes the first that is equal; the others keep their order.
template <class Element> void RemoveFirst(std::vector<Element>& elements, Element const& element)
{
    auto const found = std::find(elements.begin(), elements.end(), element);
    if (found != elements.end()) elements.erase(found);
}
