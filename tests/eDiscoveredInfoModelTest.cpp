#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

// Both indexes of an info against a plain list, after every operation of random ones.

namespace {

/// What was indexed, in that order: of a text the last entry counts, and erasing takes all of them.
class PlainIndex {
public:
    void Add(std::string const& text, unsigned int id) { m_entries.push_back({text, id}); }
    void Erase(std::string const& text)
    {
        m_entries.erase(
            std::remove_if(m_entries.begin(), m_entries.end(), [&](Entry const& entry) { return entry.text == text; }),
            m_entries.end());
    }
    unsigned int Find(std::string const& text) const // 0: none
    {
        for (auto entry = m_entries.rbegin(); entry != m_entries.rend(); ++entry)
            if (entry->text == text) return entry->id;
        return 0;
    }

private:
    struct Entry {
        std::string text;
        unsigned int id;
    };
    std::vector<Entry> m_entries;
};

struct PlainNeighbor {
    unsigned int id;
    std::string mac;
    std::vector<std::string> addresses;
};

/// So many MACs; the first is zero.
std::vector<std::string> SomeMacs(unsigned int count)
{
    std::vector<std::string> macs = {"00:00:00:00:00:00"};
    for (unsigned int i = 1; i < count; ++i)
        macs.push_back(EMACAddress("2:0:0:0:" + std::to_string(i / 10) + ":" + std::to_string(i % 10)).GetAsString());
    return macs;
}
std::vector<std::string> const kAddresses = {"0.0.0.0", "10.0.0.1", "10.0.0.2", "::", "2001:db8::1"};

/// What an info holds and finds, by the rules alone.
class Model {
public:
    unsigned int Add(PlainNeighbor neighbor)
    {
        neighbor.id = m_next++;
        m_neighbors.push_back(neighbor);
        Index(neighbor);
        return neighbor.id;
    }
    void Set(unsigned int id, PlainNeighbor const& content)
    {
        PlainNeighbor* const neighbor = Get(id);
        if (!neighbor) return;
        Clean(*neighbor);
        *neighbor = content;
        neighbor->id = id;
        Index(*neighbor);
    }
    void Remove(unsigned int id)
    {
        PlainNeighbor const* const neighbor = Get(id);
        if (!neighbor) return;
        Clean(*neighbor);
        m_neighbors.erase(m_neighbors.begin() + (neighbor - m_neighbors.data()));
    }
    void AddAddress(PlainNeighbor& neighbor, std::string const& address)
    {
        neighbor.addresses.push_back(address);
        m_byIp.Add(address, neighbor.id);
    }
    void RemoveAddress(PlainNeighbor& neighbor, std::string const& address)
    {
        auto const found = std::find(neighbor.addresses.begin(), neighbor.addresses.end(), address);
        if (found == neighbor.addresses.end()) return;
        neighbor.addresses.erase(found);
        m_byIp.Erase(address);
    }
    void IndexAnew()
    {
        m_byMac = PlainIndex();
        m_byIp = PlainIndex();
        for (PlainNeighbor const& neighbor : m_neighbors) Index(neighbor); // ids ascend
    }

    PlainNeighbor* Get(unsigned int id)
    {
        for (PlainNeighbor& neighbor : m_neighbors)
            if (neighbor.id == id) return &neighbor;
        return nullptr;
    }
    unsigned int Next() const { return m_next; }
    std::size_t Count() const { return m_neighbors.size(); }
    unsigned int ByMac(std::string const& text) { return OfOneThatIsThere(m_byMac.Find(text)); }
    unsigned int ByIp(std::string const& text) { return OfOneThatIsThere(m_byIp.Find(text)); }

private:
    void Index(PlainNeighbor const& neighbor)
    {
        m_byMac.Add(neighbor.mac, neighbor.id);
        for (std::string const& address : neighbor.addresses) m_byIp.Add(address, neighbor.id);
    }
    void Clean(PlainNeighbor const& neighbor)
    {
        m_byMac.Erase(neighbor.mac);
        for (std::string const& address : neighbor.addresses) m_byIp.Erase(address);
    }
    unsigned int OfOneThatIsThere(unsigned int id) { return Get(id) ? id : 0; }

    std::vector<PlainNeighbor> m_neighbors;
    unsigned int m_next = 1;
    PlainIndex m_byMac;
    PlainIndex m_byIp;
};

class RandomRun {
public:
    /// Of a few or many MACs. Replacing the info by what was read from it makes both indexes anew.
    RandomRun(unsigned int seed, unsigned int macs, bool replacing)
        : m_random(seed), m_macTexts(SomeMacs(macs)), m_macs(MadeOf<EMACAddress>(m_macTexts)), m_replacing(replacing)
    {
    }

    void Step()
    {
        unsigned int const id = 1 + Below(m_model.Next()); // mostly one that is there
        EDiscoveredNeighbor* const neighbor = m_info.GetNeighbor(id);
        PlainNeighbor* const plain = m_model.Get(id);
        ASSERT_EQ(plain == nullptr, neighbor == nullptr);
        switch (Below(12)) {
        case 0:
        case 1:
        case 2: {
            PlainNeighbor const content = AnyNeighbor();
            ASSERT_EQ(m_model.Add(content), m_info.AddNeighbor(Real(content)));
            break;
        }
        case 3: {
            PlainNeighbor const content = AnyNeighbor();
            m_model.Set(id, content);
            m_info.SetNeighbor(id, Real(content));
            break;
        }
        case 4:
            if (!neighbor) break;
            m_model.Set(id, PlainNeighbor(*plain));
            m_info.SetNeighbor(id, *neighbor); // itself
            break;
        case 5:
            m_model.Remove(id);
            m_info.RemoveNeighbor(id);
            break;
        case 6: {
            if (!neighbor) break;
            plain->mac = Any(m_macTexts); // on purpose not indexed
            neighbor->SetMac(MAC(plain->mac));
            break;
        }
        case 7:
        case 8: {
            if (!neighbor) break;
            std::string const address = Any(kAddresses);
            m_model.AddAddress(*plain, address);
            neighbor->AddAddress(IP(address));
            break;
        }
        case 9: {
            if (!neighbor) break;
            std::string const address = Any(kAddresses);
            m_model.RemoveAddress(*plain, address);
            neighbor->RemoveAddress(IP(address));
            break;
        }
        case 10: {
            if (!neighbor || plain->addresses.empty()) break;
            unsigned int const position = Below(static_cast<unsigned int>(plain->addresses.size()));
            m_model.RemoveAddress(*plain, std::string(plain->addresses[position]));
            neighbor->RemoveAddress(*neighbor->GetAddressAt(position)); // its own
            break;
        }
        default:
            if (m_replacing) Replace();
            break;
        }
    }

    void Compare()
    {
        ASSERT_EQ(m_model.Count(), m_info.GetNeighbors().size());
        for (std::size_t i = 0; i < m_macs.size(); ++i) ExpectFound(m_model.ByMac(m_macTexts[i]), ByMac(i));
        for (std::size_t i = 0; i < kAddresses.size(); ++i) ExpectFound(m_model.ByIp(kAddresses[i]), ByIp(i));
    }

private:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
    std::string const& Any(std::vector<std::string> const& texts)
    {
        return texts[Below(static_cast<unsigned int>(texts.size()))];
    }
    PlainNeighbor AnyNeighbor()
    {
        PlainNeighbor neighbor = {0, Any(m_macTexts), {}};
        for (unsigned int count = Below(4); count > 0; --count) neighbor.addresses.push_back(Any(kAddresses));
        return neighbor;
    }
    static EDiscoveredNeighbor Real(PlainNeighbor const& neighbor)
    {
        EDiscoveredNeighbor real;
        real.SetMac(MAC(neighbor.mac));
        for (std::string const& address : neighbor.addresses) real.AddAddress(IP(address));
        return real;
    }
    /// The same info by other means.
    void Replace()
    {
        switch (Below(4)) {
        case 0: m_info = EDiscoveredInfo(m_info); break;
        case 1: {
            EDiscoveredInfo other;
            other.Swap(m_info);
            m_info.Swap(other);
            break;
        }
        case 2: {
            EDiscoveredInfo read;
            ReadInto(read, Written(m_info));
            m_info.Swap(read);
            m_model.IndexAnew();
            break;
        }
        default:
            if (Below(4) != 0) break; // rarely
            m_info.Empty();
            m_model = Model();
            break;
        }
    }
    EDiscoveredNeighbor const* ByMac(std::size_t index) const { return m_info.FindNeighborByMAC(m_macs[index]); }
    EDiscoveredNeighbor const* ByIp(std::size_t index) const
    {
        static std::vector<EIPAddress> const addresses(MadeOf<EIPAddress>(kAddresses));
        return m_info.FindNeighborByIP(addresses[index]);
    }
    template <class Value> static std::vector<Value> MadeOf(std::vector<std::string> const& texts)
    {
        std::vector<Value> values;
        for (std::string const& text : texts) values.emplace_back(text);
        return values;
    }
    void ExpectFound(unsigned int id, EDiscoveredNeighbor const* found)
    {
        ASSERT_EQ(id, found ? found->GetLocalId() : 0U);
        if (found) {
            ASSERT_EQ(m_info.GetNeighbor(id), found);
        }
    }

    std::mt19937 m_random;
    std::vector<std::string> m_macTexts;
    std::vector<EMACAddress> m_macs; // of these texts
    bool m_replacing;
    Model m_model;
    EDiscoveredInfo m_info;
};

} // namespace

TEST(EDiscoveredInfoModel, BothIndexesAnswerLikeAPlainListAfterEveryOperation)
{
    for (unsigned int seed = 1; seed <= 1000 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRun run(seed, 4, true);
        for (int step = 0; step < 25 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            run.Step();
            run.Compare();
        }
    }
}

TEST(EDiscoveredInfoModel, TheIndexesAnswerTheSameThroughManyEntriesOfNeighborsThatAreGone)
{
    for (unsigned int seed = 1; seed <= 4 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRun run(seed, 300, false);
        for (int step = 0; step < 1000 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            run.Step();
            if (step % 40 == 0) run.Compare();
        }
    }
}
