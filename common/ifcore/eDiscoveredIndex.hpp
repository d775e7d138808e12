#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <new>
#include <utility>
#include <vector>

/// From a MAC or an address to the id of a neighbour. A hash chooses one of many trees, each of which holds an entry or
/// two. What is seen on a link may be chosen by a stranger: if all his keys come into one tree, finding one among them
/// still takes no more than the logarithm of their number.
template <class Key> class EDiscoveredIndex {
public:
    using Entries = std::map<Key, unsigned int>;

    /// Null without one.
    unsigned int const* Find(Key const& key) const
    {
        Entries const& tree = m_trees.empty() ? m_few : m_trees[PositionOf(key)];
        auto const found = tree.find(key);
        return found == tree.end() ? nullptr : &found->second;
    }
    /// Moves all of them in, which cannot fail. What is there under the same key is overwritten.
    void Put(Entries& entries) noexcept
    {
        while (!entries.empty()) {
            auto put = TreeOf(entries.begin()->first).insert(entries.extract(entries.begin()));
            if (!put.inserted)
                put.position->second = put.node.mapped();
            else if (++m_count > kEntriesATree * (m_trees.empty() ? kFew : m_trees.size()))
                Grow();
        }
    }
    /// The entry, if any, is no longer there.
    typename Entries::node_type Take(Key const& key) noexcept
    {
        auto node = TreeOf(key).extract(key);
        if (node) --m_count;
        return node;
    }
    void Clear() noexcept { *this = EDiscoveredIndex(); }

private:
    static constexpr std::size_t kEntriesATree = 2; // at most, on average
    static constexpr std::size_t kFew = 16;         // so many times two are in one tree

    /// The number of trees is a power of 2.
    std::size_t PositionOf(Key const& key) const { return key.GetHash() >> 32 & (m_trees.size() - 1); }
    Entries& TreeOf(Key const& key) { return m_trees.empty() ? m_few : m_trees[PositionOf(key)]; }

    /// Without memory the trees go on growing.
    void Grow() noexcept
    {
        try {
            std::vector<Entries> old(m_trees.empty() ? 2 * kFew : 2 * m_trees.size());
            m_trees.swap(old);
            Redistribute(m_few);
            for (Entries& tree : old) Redistribute(tree);
        } catch (std::bad_alloc const&) {
            return;
        }
    }
    void Redistribute(Entries& tree) noexcept
    {
        while (!tree.empty()) {
            auto node = tree.extract(tree.begin());
            Entries& target = m_trees[PositionOf(node.key())];
            target.insert(target.end(), std::move(node)); // mostly they come in ascending order
        }
    }

    Entries m_few;                // what there is while there are no trees
    std::vector<Entries> m_trees; // by the hash
    std::size_t m_count = 0;      // of entries in all trees
};
