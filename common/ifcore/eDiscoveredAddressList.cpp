#include "eDiscoveredAddressList.hpp"

#include "eDiscoveredRecord.hpp"

#include <algorithm>
#include <new>

static std::size_t const kShort = 32; // lists of so many addresses are searched faster than an index

static bool IsRemoved(std::uint64_t number)
{
    return (number & 1) != 0;
}

EDiscoveredAddressList::Index::Entries::const_iterator
EDiscoveredAddressList::Index::FindFirst(EIPAddress const& address) const
{
    EDiscoveredIpKey const key(address);
    auto const found = byAddress.lower_bound({key, 0});
    return found == byAddress.end() || key < found->first ? byAddress.end() : found;
}

void EDiscoveredAddressList::Index::Add(EIPAddress const& address)
{
    byAddress.insert({EDiscoveredIpKey(address), next});
    numbers.push_back(next);
    next += 2;
}

bool EDiscoveredAddressList::Has(EIPAddress const& address) const
{
    if (m_index) return m_index->FindFirst(address) != m_index->byAddress.end();
    return Contains(m_addresses, address);
}

void EDiscoveredAddressList::MakeRoomForOne()
{
    IndexIfLong();
    ::MakeRoomForOne(m_addresses);
}

void EDiscoveredAddressList::Add(EIPAddress const& address)
{
    m_addresses.push_back(address);
    if (!m_index) return;
    try {
        m_index->Add(address);
    } catch (std::bad_alloc const&) {
        m_addresses.pop_back(); // the index knows the others
        DropIndex();
        m_addresses.push_back(address); // there is room
    }
}

void EDiscoveredAddressList::RemoveFirst(EIPAddress const& address)
{
    IndexIfLong();
    if (!m_index) {
        ::RemoveFirst(m_addresses, address);
        return;
    }
    auto const found = m_index->FindFirst(address);
    if (found == m_index->byAddress.end()) return;
    ++*std::lower_bound(m_index->numbers.begin(), m_index->numbers.end(), found->second);
    m_index->byAddress.erase(found);
    ++m_index->removed;
    if (2 * m_index->removed > m_addresses.size()) LeaveOutRemoved();
}

EDiscoveredAddressList::Addresses& EDiscoveredAddressList::GetForReading()
{
    DropIndex();
    return m_addresses;
}

void EDiscoveredAddressList::LeaveOutRemoved() const noexcept
{
    std::size_t kept = 0;
    for (std::size_t position = 0; position < m_addresses.size(); ++position) {
        if (IsRemoved(m_index->numbers[position])) continue;
        if (kept != position) {
            m_addresses[kept] = std::move(m_addresses[position]);
            m_index->numbers[kept] = m_index->numbers[position];
        }
        ++kept;
    }
    m_addresses.erase(m_addresses.begin() + static_cast<std::ptrdiff_t>(kept), m_addresses.end());
    m_index->numbers.resize(kept);
    m_index->removed = 0;
}

/// Without memory there is none.
void EDiscoveredAddressList::IndexIfLong() noexcept
{
    if (m_index || m_addresses.size() <= kShort) return;
    try {
        auto index = std::make_unique<Index>();
        for (EIPAddress const& address : m_addresses) index->Add(address);
        m_index = std::move(index);
    } catch (std::bad_alloc const&) {
        // the list is searched
    }
}

void EDiscoveredAddressList::DropIndex() noexcept
{
    if (!m_index) return;
    if (m_index->removed != 0) LeaveOutRemoved();
    m_index.reset();
}
