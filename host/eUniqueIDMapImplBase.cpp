#include "eUniqueIDMapImplBase.hpp"

#include "eUniqueIDIndex.hpp"

#include <cstdint>
#include <new>
#include <utility>

static std::size_t const kTiny = 16; // containers of so many items have no index

namespace {

/// Asks for memory ahead of a walk through a large container, which otherwise waits for the memory of every item.
/// Items and the nodes of the map mostly lie equally far apart, in the order of the ids: where the next ones lie can be
/// guessed, and a wrong guess reads nothing.
class MemoryAhead {
public:
    static constexpr std::size_t kBeginning = 256; // bytes: where items mostly know their parent
    static constexpr std::size_t kWhole = 1536;    // bytes: a large item with what was allocated along with it

    /// What is asked for comes into the innermost cache, which takes few lines at a time, or into the next one: better
    /// for a walk that does much with each item, and lets nothing wait behind the items to come.
    enum class Cache { INNERMOST, NEXT };

    /// \param part bytes of every item that the walk needs.
    MemoryAhead(EUniqueIDMapImplBase::Map const& items, std::size_t part, Cache cache = Cache::INNERMOST)
        : m_part(items.size() > kTiny ? part : 0), m_cache(cache)
    {
    }
    /// \p entry is the next of the walk.
    void Reach(EUniqueIDMapImplBase::Map::value_type const& entry)
    {
        if (m_part == 0) return;
        auto const node = reinterpret_cast<std::uintptr_t>(&entry);
        auto const item = reinterpret_cast<std::uintptr_t>(entry.second);
        std::uintptr_t const distance = node - std::exchange(m_lastNode, node);
        Prefetch(node + 4 * distance - 16); // links
        Prefetch(node + 4 * distance);
        for (std::size_t offset = 0; offset < m_part; offset += kCacheLine) Prefetch(item + distance + offset);
    }

private:
    static constexpr std::size_t kCacheLine = 64; // bytes

    void Prefetch(std::uintptr_t address) const
    {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): no pointer may be moved that far
        auto const memory = reinterpret_cast<void const*>(address);
        if (m_cache == Cache::INNERMOST)
            __builtin_prefetch(memory, 0, 3);
        else
            __builtin_prefetch(memory, 0, 2);
    }

    std::size_t m_part; // 0 when there is nothing to be gained
    Cache m_cache;
    std::uintptr_t m_lastNode = 0;
};

} // namespace

/// Destroys the item unless it was released.
class EUniqueIDMapImplBase::OwnedItem {
public:
    OwnedItem(EUniqueIDMapImplBase const& owner, void* item) : m_owner(owner), m_item(item) {}
    OwnedItem(OwnedItem const&) = delete;
    OwnedItem& operator=(OwnedItem const&) = delete;
    ~OwnedItem()
    {
        if (m_item) m_owner.DestroyItem(m_item);
    }
    void* Get() const { return m_item; }
    void* Release() { return std::exchange(m_item, nullptr); }

private:
    EUniqueIDMapImplBase const& m_owner;
    void* m_item;
};

/// Destroys the items that it holds in the end.
class EUniqueIDMapImplBase::OwnedItems {
public:
    explicit OwnedItems(EUniqueIDMapImplBase const& owner) : m_owner(owner) {}
    OwnedItems(OwnedItems const&) = delete;
    OwnedItems& operator=(OwnedItems const&) = delete;
    ~OwnedItems()
    {
        MemoryAhead ahead(items, MemoryAhead::kWhole);
        for (auto const& entry : items) {
            ahead.Reach(entry);
            m_owner.DestroyItem(entry.second);
        }
    }

    Map items;

private:
    EUniqueIDMapImplBase const& m_owner;
};

EUniqueIDMapImplBase::EUniqueIDMapImplBase() = default;

EUniqueIDMapImplBase::~EUniqueIDMapImplBase() = default;

/// On an exception the container is as before and the item still that of \p item.
void EUniqueIDMapImplBase::Store(unsigned int id, OwnedItem& item)
{
    SetParent(item.Get());
    bool const isGreatest = m_items.empty() || id > m_items.rbegin()->first; // as new ids mostly are
    iterator const position =
        isGreatest ? m_items.emplace_hint(m_items.end(), id, nullptr) : m_items.try_emplace(id, nullptr).first;
    AddToIndex(position);
    void*& slot = position->second;
    OwnedItem replaced(*this, std::exchange(slot, item.Release()));
    if (replaced.Get() == slot) replaced.Release(); // it was there already
}

unsigned int EUniqueIDMapImplBase::AddOwnedItem(void* item)
{
    OwnedItem owned(*this, item);
    if (!item) return 0;
    EUniqueIDGenerator const before(m_generator);
    unsigned int id = m_generator.Next();
    while (id != 0 && IsInUse(id)) id = m_generator.Next();
    if (id == 0) return 0;
    SetLocalId(item, id);
    try {
        Store(id, owned);
    } catch (std::bad_alloc const&) {
        m_generator = before; // no id is used up for want of memory
        throw;
    }
    return id;
}

unsigned int EUniqueIDMapImplBase::AddOwnedItem(unsigned int id, void* item)
{
    OwnedItem owned(*this, item);
    if (!item) return 0;
    SetLocalId(item, id);
    Store(id, owned);
    m_generator.SkipPast(id);
    return id;
}

void EUniqueIDMapImplBase::Empty()
{
    if (m_items.empty()) return;
    m_generator.SkipPast(m_items.rbegin()->first);
    OwnedItems removed(*this);
    removed.items.swap(m_items);
    RemakeIndex(); // there is nothing to make one of
}

void EUniqueIDMapImplBase::Copy(EUniqueIDMapImplBase const& other)
{
    if (this == &other) return;
    std::unique_ptr<EUniqueIDIndex> index = EUniqueIDIndex::EmptyLike(other.m_index.get());
    OwnedItems copies(*this); // and, in the end, the items that were here before
    MemoryAhead ahead(other.m_items, MemoryAhead::kWhole);
    for (auto const& entry : other.m_items) {
        ahead.Reach(entry);
        auto const [id, item] = entry;
        OwnedItem copy(*this, CreateNewItem(static_cast<void const*>(item)));
        if (!copy.Get()) continue;
        SetLocalId(copy.Get(), id);
        SetParent(copy.Get());
        iterator const position = copies.items.emplace_hint(copies.items.end(), id, copy.Get());
        copy.Release();
        if (index) index->Put(position);
    }
    m_items.swap(copies.items);
    m_index.swap(index);
    m_unindexed = other.m_unindexed;
    m_generator = other.m_generator;
}

void EUniqueIDMapImplBase::Swap(EUniqueIDMapImplBase& other)
{
    if (this == &other) return;
    m_items.swap(other.m_items);
    m_index.swap(other.m_index); // its iterators belong to the items and go with them
    std::swap(m_unindexed, other.m_unindexed);
    std::swap(m_generator, other.m_generator);
    SetItemParents();
    other.SetItemParents();
}

bool EUniqueIDMapImplBase::RemoveItem(iterator const& position)
{
    if (position == m_items.end()) return false;
    OwnedItem const removed(*this, position->second);
    m_generator.SkipPast(position->first);
    if (m_index) m_index->Remove(position->first);
    m_items.erase(position);
    if (m_index && m_index->IsTooLargeFor(m_items.size())) RemakeIndex();
    return true;
}

void EUniqueIDMapImplBase::SetItemParents()
{
    MemoryAhead ahead(m_items, MemoryAhead::kBeginning);
    for (auto const& entry : m_items) {
        ahead.Reach(entry);
        SetParent(entry.second);
    }
}

void EUniqueIDMapImplBase::SerializeIn(EArchive& archive)
{
    Empty();
    archive >> m_generator;
    for (std::size_t count = archive.ReadCount(); count > 0; --count) {
        OwnedItem item(*this, CreateAndSerializeIn(archive));
        if (item.Get()) Store(GetLocalId(item.Get()), item);
    }
}

void EUniqueIDMapImplBase::SerializeOut(EArchive& archive) const
{
    archive << m_generator << static_cast<unsigned long>(m_items.size());
    MemoryAhead ahead(m_items, MemoryAhead::kWhole, MemoryAhead::Cache::NEXT);
    for (auto const& entry : m_items) {
        ahead.Reach(entry);
        SerializeItemOut(entry.second, archive);
    }
}

// The index

bool EUniqueIDMapImplBase::IsInUse(unsigned int id) const
{
    // New ids are mostly greater than all others: nothing has to be looked for.
    return !m_items.empty() && id <= m_items.rbegin()->first && find(id) != m_items.end();
}

EUniqueIDMapImplBase::iterator EUniqueIDMapImplBase::FindIndexed(unsigned int id)
{
    if (!m_index->Covers(id)) return m_items.find(id);
    auto const& position = m_index->At(id);
    return position ? *position : m_items.end();
}

EUniqueIDMapImplBase::const_iterator EUniqueIDMapImplBase::FindIndexed(unsigned int id) const
{
    if (!m_index->Covers(id)) return m_items.find(id);
    auto const& position = m_index->At(id);
    return position ? const_iterator(*position) : m_items.end();
}

/// Makes an index, or a better one, once enough items had to be left to the map: each item pays for a few others.
void EUniqueIDMapImplBase::AddToIndex(iterator added) noexcept
{
    if (!m_index && m_items.size() <= kTiny) return;
    try {
        if (m_index && m_index->Add(m_items, added)) return;
    } catch (std::bad_alloc const&) {
        m_index.reset(); // the map has them all
    }
    if (++m_unindexed > m_items.size() / 4) RemakeIndex();
}

void EUniqueIDMapImplBase::RemakeIndex() noexcept
{
    m_unindexed = 0;
    m_index.reset();
    if (m_items.size() <= kTiny) return;
    try {
        m_index = std::make_unique<EUniqueIDIndex>(m_items);
    } catch (std::bad_alloc const&) {
        // none: the map has them all
    }
}
