#pragma once

#include "eDiscoveredKeys.hpp"
#include "eIPAddress.hpp"
#include "ifcoreExport.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>
#include <vector>

/// Addresses in the order of adding; one may be there twice. Long lists are indexed as soon as they change, so that
/// adding and asking for an address take logarithmic time; removing one moves what follows it. The index is no more
/// than a help: a list may lose it at any time.
class IFCORE_API EDiscoveredAddressList {
public:
    using Addresses = std::vector<EIPAddress>;

    EDiscoveredAddressList() = default;
    EDiscoveredAddressList(EDiscoveredAddressList const& other)
        : m_addresses(other.m_addresses) {} // indexed when it changes
    EDiscoveredAddressList(EDiscoveredAddressList&&) noexcept = default;
    EDiscoveredAddressList& operator=(EDiscoveredAddressList const& other)
    {
        return *this = EDiscoveredAddressList(other);
    }
    EDiscoveredAddressList& operator=(EDiscoveredAddressList&&) noexcept = default;
    ~EDiscoveredAddressList() = default;

    std::size_t GetCount() const { return m_addresses.size(); }
    Addresses const& Get() const { return m_addresses; }
    bool Has(EIPAddress const& address) const;
    void IndexIfLong() noexcept; ///< Before an operation that asks and then changes.
    void MakeRoomForOne();
    void Add(EIPAddress const& address);         ///< Fails only when no room was made.
    void RemoveFirst(EIPAddress const& address); ///< The first that is equal, if any. Never fails.
    /// The addresses, to be changed in any way before the next call to this list.
    Addresses& GetForReading();

private:
    /// Each address has a number, which never changes; numbers ascend as the addresses do.
    struct Index {
        using Number = std::uint64_t;
        using Entries = std::set<std::pair<EDiscoveredIpKey, Number>>;

        Entries byAddress;
        std::vector<Number> numbers; // by position
        Number next = 0;

        Entries::const_iterator FindFirst(EIPAddress const& address) const;
        void Add(EIPAddress const& address); ///< On an exception nothing but the numbers can be relied on.
    };

    Addresses m_addresses;
    std::unique_ptr<Index> m_index; // null for short lists and for those that did not change yet
};

/// The vector that an archive is written from, and the one that it is read into.
inline EDiscoveredAddressList::Addresses const& InArchive(EDiscoveredAddressList const& list)
{
    return list.Get();
}
inline EDiscoveredAddressList::Addresses& InArchive(EDiscoveredAddressList& list)
{
    return list.GetForReading();
}
