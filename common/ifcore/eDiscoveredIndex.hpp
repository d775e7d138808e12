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
    /// Moves all of them in, which cannot fail. What is there under the same key is overwritten. When the trees are
    /// full, entries of neighbours that are gone for good, as \p isGone(id) tells, are forgotten; there come more trees
    /// only when more than half of the entries are left. So the others bound the memory, and each entry pays for a few.
    template <class IsGone> void Put(Entries& entries, IsGone const& isGone) noexcept
    {
        while (!entries.empty()) {
            auto put = TreeOf(entries.begin()->first).insert(entries.extract(entries.begin()));
            if (!put.inserted) {
                put.position->second = put.node.mapped();
            } else if (++m_count > GetRoom()) {
                if (m_count == GetRoom() + 1) Forget(isGone); // not for each entry while there is no memory to grow
                if (m_count > GetRoom() / 2) Grow();
            }
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

    /// So many entries are there before it grows.
    std::size_t GetRoom() const { return kEntriesATree * (m_trees.empty() ? kFew : m_trees.size()); }
    /// The number of trees is a power of 2.
    std::size_t PositionOf(Key const& key) const { return key.GetHash() >> 32 & (m_trees.size() - 1); }
    Entries& TreeOf(Key const& key) { return m_trees.empty() ? m_few : m_trees[PositionOf(key)]; }

    template <class IsGone> void Forget(IsGone const& isGone) noexcept
    {
        auto const forgetIn = [&](Entries& tree) {
            for (auto entry = tree.begin(); entry != tree.end();) {
                auto const here = entry++;
                if (!isGone(here->second)) continue;
                tree.erase(here);
                --m_count;
            }
        };
        forgetIn(m_few);
        for (Entries& tree : m_trees) forgetIn(tree);
    }
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
