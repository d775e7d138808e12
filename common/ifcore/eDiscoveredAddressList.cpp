#include "eDiscoveredAddressList.hpp"

#include "eDiscoveredRecord.hpp"

#include <algorithm>
#include <new>

static std::size_t const kShort = 32; // lists of so many addresses are searched faster than an index

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
    ++next;
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
        m_index.reset();
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
    auto const number = std::lower_bound(m_index->numbers.begin(), m_index->numbers.end(), found->second);
    m_addresses.erase(m_addresses.begin() + (number - m_index->numbers.begin()));
    m_index->numbers.erase(number);
    m_index->byAddress.erase(found);
}

EDiscoveredAddressList::Addresses& EDiscoveredAddressList::GetForReading()
{
    m_index.reset();
    return m_addresses;
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
