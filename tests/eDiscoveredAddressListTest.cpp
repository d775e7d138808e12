#include "eDiscoveredAddressList.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

// The addresses of an info and of a neighbour against plain vectors, over random operations. Short lists are searched,
// long ones indexed: the lists grow and shrink far beyond both.

namespace {

unsigned int const kDistinct = 200;

EIPAddress Any(unsigned int i)
{
    std::string const number = std::to_string(i / 2);
    return IP(i % 2 == 0 ? "10.0.0." + number : "2001:db8::" + number);
}

class RandomRun {
public:
    explicit RandomRun(unsigned int seed) : m_random(seed) {}

    void Step()
    {
        bool const growing = m_step++ % 600 < 350;
        EIPAddress const address = Any(Below(kDistinct));
        switch (Below(40)) {
        case 0: Replace(); break;
        case 1: CompareWhole(); break;
        default:
            if (growing ? Below(4) != 0 : Below(4) == 0)
                Add(address);
            else
                Remove(address);
        }
    }
    /// What does not look at the list as a whole.
    void Compare()
    {
        ASSERT_EQ(m_own.size(), m_info.GetAddressCount());
        ASSERT_EQ(m_theirs.size(), m_neighbor.GetAddressCount());
        EIPAddress const address = Any(Below(kDistinct));
        ASSERT_EQ(Has(m_own, address), m_info.HasAddress(address));
        ASSERT_EQ(Has(m_theirs, address), m_neighbor.HasAddress(address));
    }
    void CompareWhole()
    {
        ASSERT_EQ(m_own.size(), m_info.GetAddressCount());
        for (unsigned int i = 0; i < m_own.size(); ++i) ASSERT_EQ(m_own[i], *m_info.GetAddressAt(i));
        ASSERT_EQ(nullptr, m_info.GetAddressAt(m_info.GetAddressCount()));
        ASSERT_EQ(m_theirs, std::vector<EIPAddress>(m_neighbor.AddressBegin(), m_neighbor.AddressEnd()));
        ASSERT_EQ(nullptr, m_neighbor.GetAddressAt(m_neighbor.GetAddressCount()));
    }

private:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
    static bool Has(std::vector<EIPAddress> const& addresses, EIPAddress const& address)
    {
        return std::find(addresses.begin(), addresses.end(), address) != addresses.end();
    }
    void Add(EIPAddress const& address)
    {
        if (!Has(m_own, address)) m_own.push_back(address);
        m_theirs.push_back(address);
        m_info.AddAddress(address);
        m_neighbor.AddAddress(address);
    }
    void Remove(EIPAddress const& address)
    {
        for (auto* const addresses : {&m_own, &m_theirs}) {
            auto const found = std::find(addresses->begin(), addresses->end(), address);
            if (found != addresses->end()) addresses->erase(found);
        }
        m_info.RemoveAddress(address);
        m_neighbor.RemoveAddress(address);
    }
    /// The same lists by other means.
    void Replace()
    {
        EDiscoveredInfo info;
        EDiscoveredNeighbor neighbor;
        switch (Below(4)) {
        case 0:
            m_info = EDiscoveredInfo(m_info);
            m_neighbor = EDiscoveredNeighbor(m_neighbor);
            break;
        case 1:
            info.Swap(m_info);
            neighbor.Swap(m_neighbor);
            m_info.Swap(info);
            m_neighbor.Swap(neighbor);
            break;
        case 2:
            ReadInto(m_info, Written(m_info)); // over what is there
            ReadInto(m_neighbor, Written(m_neighbor));
            break;
        default: { // a part of what is there
            std::string const bytes = Written(m_neighbor);
            ASSERT_THROW(ReadInto(m_neighbor, bytes.substr(0, bytes.size() / 2)), EArchiveError);
            m_theirs.resize(m_neighbor.GetAddressCount());
        }
        }
    }

    std::mt19937 m_random;
    int m_step = 0;
    std::vector<EIPAddress> m_own;
    std::vector<EIPAddress> m_theirs;
    EDiscoveredInfo m_info;
    EDiscoveredNeighbor m_neighbor;
};

} // namespace

TEST(EDiscoveredAddressList, AnswersLikeAPlainListAfterEveryOperation)
{
    for (unsigned int seed = 1; seed <= 6 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRun run(seed);
        for (int step = 0; step < 1200 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            run.Step();
            run.Compare();
        }
        run.CompareWhole();
    }
}

TEST(EDiscoveredAddressList, OfALongListTheFirstOfTwoEqualAddressesIsRemoved)
{
    EDiscoveredAddressList list;
    for (unsigned int i = 0; i < 100; ++i) {
        list.MakeRoomForOne();
        list.Add(Any(i % 50));
    }
    list.RemoveFirst(Any(7));
    EXPECT_TRUE(list.Has(Any(7)));
    EXPECT_EQ(Any(8), list.Get()[7]);
    EXPECT_EQ(Any(7), list.Get()[56]);
    list.RemoveFirst(Any(7));
    list.RemoveFirst(Any(7));
    EXPECT_FALSE(list.Has(Any(7)));
    EXPECT_EQ(98U, list.GetCount());
    EXPECT_EQ(98U, list.Get().size());
}
