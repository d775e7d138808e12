#pragma once

#include "eIPAddress.hpp"
#include "eVLAN.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"
#include "ifcore/eIPv4AddressItem.hpp"
#include "ifcore/eIPv6AddressItem.hpp"
#include "ifcore/eInterfaceItem.hpp"
#include "ifcore/eInterfaceTable.hpp"
#include "ifcore/eInterfaceTableHooks.hpp"
#include "ifhostExport.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

/// The interfaces of one table by their addresses, in constant time: installed in a table under the name
/// "IP_LOOKUP_HOOKS" it answers EInterfaceTable::FindInterfaceByIP and FindInterfaceByIPAndVlan.
///
/// It keeps an index of its own and learns from what it is told. It finds what a walk through the table would find:
/// an IPv4 address in the IPv4 record of an interface, any other in its IPv6 list; whether record or interface are
/// enabled does not matter; of several interfaces with one address the one with the lowest id.
///
/// One observer serves one table: ids of different tables cannot be told apart, and the replacement of one table would
/// drop what was learned from the others.
///
/// Call Rebuild after changes that the table does not announce, since a table takes the answer for final:
/// - installing the observer in a table that already holds interfaces;
/// - reading an archive into the table, one of its interfaces or one of their address records;
/// - container operations that bypass the interface and the table (AddItem, RemoveItem, Swap, Empty of the lists);
/// - EInterfaceTable::Swap, on both sides, and Swap of an address record.
/// A copy of an interface's Ethernet data announces its changes as the interface's own: change no VLANs in a copy.
///
/// When memory fails while it is told of a change, it refuses nothing: it drops its index and answers by walks through
/// the table, which must still be there then, until it is told of a change or asked to rebuild with memory for an
/// index.
class IFHOST_API EIPLookupInterfaceTableHooks : public EIgnoreInterfaceTableHooks {
public:
    /// The id of the interface that has this address; 0 when none has.
    unsigned int GetInterfaceId(EIPAddress const& address) const
    {
        if (m_unindexed) return Walk(*m_unindexed, address, kAnyVlan);
        return IsIPv4(address) ? m_ipv4.Find(IPv4Key(address)) : m_ipv6.Find(IPv6Key(address));
    }
    /// The same among the interfaces whose outermost VLAN id is that of \p vlan. Its priority does not matter.
    /// An interface without VLANs, or with its VLANs disabled, counts as one with VLAN id 0.
    unsigned int GetInterfaceIdFromVlan(EIPAddress const& address, EVLAN const& vlan) const
    {
        if (m_unindexed) return Walk(*m_unindexed, address, vlan.GetVLANID());
        return IsIPv4(address) ? m_ipv4.Find(IPv4Key(address), vlan.GetVLANID())
                               : m_ipv6.Find(IPv6Key(address), vlan.GetVLANID());
    }
    /// Forgets everything and learns the addresses that the table holds now. Without the memory for that it throws
    /// `std::bad_alloc` and answers as before.
    void Rebuild(EInterfaceTable const& table)
    {
        Index<EIPv4Key> ipv4;
        Index<EIPv6Key> ipv6;
        std::swap(m_ipv4, ipv4);
        std::swap(m_ipv6, ipv6);
        try {
            for (auto position = table.begin(); position != table.end(); ++position)
                if (EInterfaceItem const* const item = table.GetItem(position)) Learn(*item, position->first);
        } catch (...) {
            std::swap(m_ipv4, ipv4);
            std::swap(m_ipv6, ipv6);
            throw;
        }
        m_unindexed = nullptr;
    }

    /// \name What it listens to
    ///@{
    void SettingInterfaceTable(EInterfaceTable const& table, EInterfaceTable const& replacement) override
    {
        OrUnindexed(&table, [&] { Rebuild(replacement); });
    }
    void AddingInterfaceItem(EInterfaceItem const& item) override // told after the store
    {
        FollowStored(item.GetParent(), [&] { Learn(item, item.GetLocalId()); });
    }
    void RemovingInterfaceItem(EInterfaceItem const& item) override
    {
        Follow(item.GetParent(), [&] { Forget(item, IdInTable(item)); });
    }
    void SettingInterfaceItem(EInterfaceItem const& item, EInterfaceItem const& replacement) override
    {
        Follow(item.GetParent(), [&] {
            unsigned int const id = IdInTable(item);
            Forget(item, id);
            Learn(replacement, id);
        });
    }
    void SettingInterfaceVlan(EInterfaceItem const& item, EVLANIPAddressTableItemProperties const& vlans) override
    {
        Follow(item.GetParent(), [&] {
            unsigned int const id = IdInTable(item);
            Forget(item, id);
            Learn(item, id, VlanOf(vlans));
        });
    }
    void SettingIPv4AddressItem(EIPv4AddressItem const& item, EIPv4AddressItem const& replacement,
                                EVLANIPAddressTableItemProperties const&,
                                EVLANIPAddressTableItemProperties const&) override
    {
        FollowIPv4(item, replacement.GetAddress());
    }
    void SettingIPv4Address(EIPv4AddressItem const& item, EIPAddress const& address,
                            EVLANIPAddressTableItemProperties const&, EVLAN const&) override
    {
        FollowIPv4(item, address);
    }
    void AddingIPv6AddressItem(EIPv6AddressItem const& item) override // told after the store
    {
        FollowStored(TableOf(item), [&] { ChangeIPv6(item, nullptr, &item.GetAddress()); });
    }
    void RemovingIPv6AddressItem(EIPv6AddressItem const& item) override
    {
        FollowIPv6(item, &item.GetAddress(), nullptr);
    }
    void SettingIPv6AddressItem(EIPv6AddressItem const& item, EIPv6AddressItem const& replacement) override
    {
        FollowIPv6(item, &item.GetAddress(), &replacement.GetAddress());
    }
    void SettingIPv6Address(EIPv6AddressItem const& item, EIPAddress const& address) override
    {
        FollowIPv6(item, &item.GetAddress(), &address);
    }
    ///@}

private:
    static constexpr unsigned int kAnyVlan = 0x1000; // beyond every VLAN id

    /// The interfaces that share one address, each under its VLAN and under kAnyVlan. One bit an id, 64 ids a block and
    /// only the blocks that are in use: a million interfaces with the address 0.0.0.0 take few allocations, and no
    /// operation walks them.
    class Sharers {
    public:
        void Add(unsigned int id, unsigned int vlan)
        {
            if (!SetBit(KeyOf(id, kAnyVlan))) {
                ++m_repeated[id];
                return;
            }
            SetBit(KeyOf(id, vlan));
        }
        void Remove(unsigned int id, unsigned int vlan)
        {
            auto const repeated = m_repeated.find(id);
            if (repeated != m_repeated.end()) {
                if (--repeated->second == 0) m_repeated.erase(repeated);
                return;
            }
            ClearBit(KeyOf(id, kAnyVlan));
            ClearBit(KeyOf(id, vlan));
        }
        unsigned int Lowest(unsigned int vlan) const ///< 0: none
        {
            auto const block = m_ids.lower_bound(KeyOf(0, vlan) / kBlockSize);
            if (block == m_ids.end()) return 0;
            auto const lowestBit = static_cast<unsigned int>(__builtin_ctzll(block->second));
            std::uint64_t const key = block->first * kBlockSize + lowestBit;
            return key >> 32 == vlan ? static_cast<unsigned int>(key) : 0;
        }
        unsigned int Lowest() const { return Lowest(kAnyVlan); } ///< 0: none

    private:
        static constexpr std::uint64_t kBlockSize = 64;

        static std::uint64_t KeyOf(unsigned int id, unsigned int vlan) { return std::uint64_t(vlan) << 32 | id; }
        bool SetBit(std::uint64_t key) ///< False: it was set.
        {
            std::uint64_t& bits = m_ids[key / kBlockSize];
            std::uint64_t const before = bits;
            bits |= std::uint64_t(1) << key % kBlockSize;
            return bits != before;
        }
        void ClearBit(std::uint64_t key)
        {
            auto const block = m_ids.find(key / kBlockSize);
            if (block == m_ids.end()) return;
            block->second &= ~(std::uint64_t(1) << key % kBlockSize);
            if (block->second == 0) m_ids.erase(block);
        }

        std::map<std::uint64_t, std::uint64_t> m_ids;    // block of VLAN id and interface id: its bits, never 0
        std::map<unsigned int, unsigned int> m_repeated; // id: in how many more items the interface has the address
    };

    /// Addresses of one family: a hash table whose entries stand one behind the other in the order of their coming and
    /// are chained by their numbers. Filling it writes memory in order and allocates only to double; a lookup touches
    /// one head and mostly one entry. What several interfaces share stands apart.
    template <class Key> class Index {
    public:
        unsigned int Find(Key const& key) const
        {
            std::uint32_t const number = NumberOf(key);
            return number == kNone ? 0 : m_entries[number].id;
        }
        unsigned int Find(Key const& key, unsigned int vlan) const
        {
            std::uint32_t const number = NumberOf(key);
            if (number == kNone) return 0;
            Entry const& entry = m_entries[number];
            if (entry.vlan == kAnyVlan) return m_sharers.at(number).Lowest(vlan);
            return entry.vlan == vlan ? entry.id : 0;
        }
        void Add(Key const& key, unsigned int id, unsigned int vlan)
        {
            std::size_t const hash = Hash(key);
            std::uint32_t const number = NumberOf(key, hash);
            if (number == kNone) {
                Insert({key, id, vlan, kNone}, hash);
                return;
            }
            Entry& entry = m_entries[number];
            Sharers& sharers = m_sharers[number];
            if (entry.vlan != kAnyVlan) {
                sharers.Add(entry.id, entry.vlan);
                entry.vlan = kAnyVlan;
            }
            sharers.Add(id, vlan);
            if (id < entry.id) entry.id = id;
        }
        /// Does nothing when the interface is not known under this address.
        void Remove(Key const& key, unsigned int id, unsigned int vlan)
        {
            std::uint32_t const number = NumberOf(key);
            if (number == kNone) return;
            Entry& entry = m_entries[number];
            if (entry.vlan == kAnyVlan) {
                // Sharers that have become one stay: the next interface would bring them back.
                Sharers& sharers = m_sharers.at(number);
                sharers.Remove(id, vlan);
                entry.id = sharers.Lowest();
                if (entry.id != 0) return;
                m_sharers.erase(number);
                Erase(number);
            } else if (entry.id == id) {
                Erase(number);
            }
        }
        void Clear() { *this = Index(); }

    private:
        static constexpr std::uint32_t kNone = 0xFFFFFFFF; // the end of a chain

        struct Entry {
            Key key;
            unsigned int id;    // the lowest of those that have the address; 0: the entry is free
            unsigned int vlan;  // of that interface; kAnyVlan: see m_sharers
            std::uint32_t next; // in the chain of the hash value, or of the free entries
        };

        std::uint32_t& HeadOf(std::size_t hash) { return m_heads[hash & (m_heads.size() - 1)]; }
        std::uint32_t NumberOf(Key const& key) const { return NumberOf(key, Hash(key)); }
        std::uint32_t NumberOf(Key const& key, std::size_t hash) const ///< kNone when the address is not known.
        {
            if (m_heads.empty()) return kNone;
            std::uint32_t number = m_heads[hash & (m_heads.size() - 1)];
            while (number != kNone && Differ(m_entries[number].key, key)) number = m_entries[number].next;
            return number;
        }
        void Insert(Entry const& entry, std::size_t hash)
        {
            std::uint32_t number = m_free;
            if (number == kNone) {
                if (m_entries.size() == m_heads.size()) Grow();
                number = static_cast<std::uint32_t>(m_entries.size());
                m_entries.push_back(entry);
            } else {
                m_free = m_entries[number].next;
                m_entries[number] = entry;
            }
            m_entries[number].next = std::exchange(HeadOf(hash), number);
        }
        void Erase(std::uint32_t number)
        {
            Entry& entry = m_entries[number];
            std::uint32_t* link = &HeadOf(Hash(entry.key));
            while (*link != number) link = &m_entries[*link].next;
            *link = entry.next;
            entry.id = 0;
            entry.next = std::exchange(m_free, number);
        }
        /// Doubles the chains. Called only while no entry is free.
        void Grow()
        {
            m_heads.assign(m_heads.empty() ? 16 : m_heads.size() * 2, kNone); // a power of two
            for (std::uint32_t number = 0; number < m_entries.size(); ++number)
                m_entries[number].next = std::exchange(HeadOf(Hash(m_entries[number].key)), number);
        }

        std::vector<std::uint32_t> m_heads;                   // the first entry of each hash value
        std::vector<Entry> m_entries;                         // at most one a head
        std::uint32_t m_free = kNone;                         // the first free entry
        std::unordered_map<std::uint32_t, Sharers> m_sharers; // by the number of the entry
    };

    using EIPv4Key = std::uint32_t;
    using EIPv6Key = std::array<std::uint32_t, 4>; // the most significant word first

    static std::uint64_t Mix(std::uint64_t value) // every bit of the value reaches every bit of the result
    {
        value = (value ^ value >> 32) * 0xD6E8FEB86659FD93U;
        value = (value ^ value >> 32) * 0xD6E8FEB86659FD93U;
        return value ^ value >> 32;
    }
    // Neighbouring addresses are neighbours in the table too: a port's addresses mostly come in order, and the memory
    // of the last one is still in the cache then. Each run of 64 starts anywhere, so that it meets others by chance
    // only.
    static std::size_t Hash(EIPv4Key key) { return Mix(key / 64) + key % 64; }
    static std::size_t Hash(EIPv6Key const& key)
    {
        std::uint64_t const network = std::uint64_t(key[0]) << 32 | key[1];
        std::uint64_t const host = std::uint64_t(key[2]) << 32 | key[3];
        return Mix(Mix(network) + host / 64) + host % 64;
    }
    static bool Differ(EIPv4Key a, EIPv4Key b) { return a != b; }
    static bool Differ(EIPv6Key const& a, EIPv6Key const& b) // that of the array is a call
    {
        return ((a[0] ^ b[0]) | (a[1] ^ b[1]) | (a[2] ^ b[2]) | (a[3] ^ b[3])) != 0;
    }

    static bool IsIPv4(EIPAddress const& address) { return address.GetFamily() == EIPAddress::kIPv4; }
    static std::uint32_t WordOf(unsigned char const* bytes)
    {
        return std::uint32_t(bytes[0]) << 24 | std::uint32_t(bytes[1]) << 16 | std::uint32_t(bytes[2]) << 8 | bytes[3];
    }
    static EIPv4Key IPv4Key(EIPAddress const& address) { return WordOf(address.GetBytes()); }
    static EIPv6Key IPv6Key(EIPAddress const& address)
    {
        unsigned char const* const bytes = address.GetBytes();
        return {WordOf(bytes), WordOf(bytes + 4), WordOf(bytes + 8), WordOf(bytes + 12)};
    }
    static unsigned int VlanOf(EVLANIPAddressTableItemProperties const& vlans)
    {
        return vlans.IsEnabled() ? vlans.GetVLANID(0) : 0;
    }

    /// The id under which the table holds the interface; 0 when it only names the table as its parent. The local id
    /// says it, except after an assignment to an interface past the table, which brings the other's local id along.
    static unsigned int IdInTable(EInterfaceItem const& item)
    {
        EInterfaceTable const* const table = item.GetParent();
        if (!table) return 0;
        if (table->GetInterfaceItem(item.GetLocalId()) == &item) return item.GetLocalId();
        for (auto position = table->begin(); position != table->end(); ++position)
            if (table->GetItem(position) == &item) return position->first;
        return 0;
    }
    /// Whether the record is in the list of the interface that it names as its parent; a copy of one is not.
    static bool IsInList(EIPv6AddressItem const& item, EInterfaceItem const& interface)
    {
        EIPv6AddressItemList const& list = interface.GetIPv6AddressItemList();
        if (list.GetItem(item.GetLocalId()) == &item) return true;
        for (auto position = list.begin(); position != list.end(); ++position)
            if (list.GetItem(position) == &item) return true; // an emptied record has lost its local id
        return false;
    }

    // An address of the other family in a record is not indexed: nobody looks for it there.
    void AddIPv4(EIPAddress const& address, unsigned int id, unsigned int vlan)
    {
        if (IsIPv4(address)) m_ipv4.Add(IPv4Key(address), id, vlan);
    }
    void RemoveIPv4(EIPAddress const& address, unsigned int id, unsigned int vlan)
    {
        if (IsIPv4(address)) m_ipv4.Remove(IPv4Key(address), id, vlan);
    }
    void AddIPv6(EIPAddress const& address, unsigned int id, unsigned int vlan)
    {
        if (!IsIPv4(address)) m_ipv6.Add(IPv6Key(address), id, vlan);
    }
    void RemoveIPv6(EIPAddress const& address, unsigned int id, unsigned int vlan)
    {
        if (!IsIPv4(address)) m_ipv6.Remove(IPv6Key(address), id, vlan);
    }

    void Learn(EInterfaceItem const& item, unsigned int id) { Learn(item, id, VlanOf(item.GetVLANItem())); }
    void Learn(EInterfaceItem const& item, unsigned int id, unsigned int vlan)
    {
        if (id == 0) return;
        AddIPv4(item.GetIPv4AddressItem().GetAddress(), id, vlan);
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto position = list.begin(); position != list.end(); ++position)
            AddIPv6(list.GetItem(position)->GetAddress(), id, vlan);
    }
    void Forget(EInterfaceItem const& item, unsigned int id)
    {
        if (id == 0) return;
        unsigned int const vlan = VlanOf(item.GetVLANItem());
        RemoveIPv4(item.GetIPv4AddressItem().GetAddress(), id, vlan);
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto position = list.begin(); position != list.end(); ++position)
            RemoveIPv6(list.GetItem(position)->GetAddress(), id, vlan);
    }
    /// What the index would say, from the table itself. \p vlan may be kAnyVlan.
    static unsigned int Walk(EInterfaceTable const& table, EIPAddress const& address, unsigned int vlan)
    {
        for (auto position = table.begin(); position != table.end(); ++position) {
            EInterfaceItem const& item = *table.GetItem(position);
            if ((vlan == kAnyVlan || vlan == VlanOf(item.GetVLANItem())) && HasAddress(item, address))
                return position->first;
        }
        return 0;
    }
    static bool HasAddress(EInterfaceItem const& item, EIPAddress const& address)
    {
        if (IsIPv4(address)) return item.GetIPv4AddressItem().GetAddress() == address;
        EIPv6AddressItemList const& list = item.GetIPv6AddressItemList();
        for (auto position = list.begin(); position != list.end(); ++position)
            if (list.GetItem(position)->GetAddress() == address) return true;
        return false;
    }
    /// The table of the record's interface; null without one.
    template <class Record> static EInterfaceTable const* TableOf(Record const& item)
    {
        return item.GetParent() ? item.GetParent()->GetParent() : nullptr;
    }

    /// Changes the index; without the memory for that there is none from then on.
    template <class Change> void OrUnindexed(EInterfaceTable const* table, Change const& change)
    {
        try {
            change();
        } catch (std::bad_alloc const&) {
            if (!table) throw; // not told by a table
            m_ipv4.Clear();
            m_ipv6.Clear();
            m_unindexed = table;
        }
    }
    /// Makes the change that the table is about to make.
    template <class Change> void Follow(EInterfaceTable const* table, Change const& change)
    {
        OrUnindexed(table, [&] {
            if (m_unindexed && table) Rebuild(*table);
            change();
        });
    }
    /// Makes a change that the table has made already.
    template <class Change> void FollowStored(EInterfaceTable const* table, Change const& change)
    {
        OrUnindexed(table, [&] {
            if (m_unindexed && table)
                Rebuild(*table);
            else
                change();
        });
    }
    void FollowIPv4(EIPv4AddressItem const& item, EIPAddress const& address)
    {
        Follow(TableOf(item), [&] { ChangeIPv4(item, address); });
    }
    void FollowIPv6(EIPv6AddressItem const& item, EIPAddress const* removed, EIPAddress const* added)
    {
        Follow(TableOf(item), [&] { ChangeIPv6(item, removed, added); });
    }

    void ChangeIPv4(EIPv4AddressItem const& item, EIPAddress const& address)
    {
        EInterfaceItem const* const interface = item.GetParent();
        if (!interface || &interface->GetIPv4AddressItem() != &item) return; // a copy of the record, parent included
        unsigned int const id = IdInTable(*interface);
        if (id == 0) return;
        unsigned int const vlan = VlanOf(interface->GetVLANItem());
        RemoveIPv4(item.GetAddress(), id, vlan);
        AddIPv4(address, id, vlan);
    }
    void ChangeIPv6(EIPv6AddressItem const& item, EIPAddress const* removed, EIPAddress const* added)
    {
        EInterfaceItem const* const interface = item.GetParent();
        if (!interface || !IsInList(item, *interface)) return;
        unsigned int const id = IdInTable(*interface);
        if (id == 0) return;
        unsigned int const vlan = VlanOf(interface->GetVLANItem());
        if (removed) RemoveIPv6(*removed, id, vlan);
        if (added) AddIPv6(*added, id, vlan);
    }

    Index<EIPv4Key> m_ipv4;
    Index<EIPv6Key> m_ipv6;
    EInterfaceTable const* m_unindexed = nullptr; // not owned; the table to walk while there is no index of it
};
