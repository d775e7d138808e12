#include "loads.hpp"
#include "measure.hpp"

#include "sampleTable.hpp"

#include <boost/make_shared.hpp>

#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr unsigned int kInterfaces = 100;
constexpr unsigned int kChangesPerMessage = 64;
// Of ten parts. The allocator's free pieces settle only when each neighbour has been replaced about a dozen times.
constexpr unsigned long kWarmUpParts = 3;

/// Changes by chance of a table that has as many neighbours after each step as before; a second table follows by the
/// messages of the first one's change writer.
class ChangeMix {
public:
    explicit ChangeMix(unsigned int neighbors) : m_writer(boost::make_shared<EDiscoveredChangeWriter>())
    {
        m_table.hooks = m_writer;
        for (unsigned int id = 1; id <= kInterfaces; ++id) {
            EDiscoveredInfo info;
            info.SetLocalId(id);
            m_table.AddInfo(info);
        }
        for (unsigned int i = 0; i < neighbors; ++i) {
            m_neighbors.push_back({m_table.GetInfo(i % kInterfaces + 1), 0});
            AddNeighbor(m_neighbors.back());
        }
        Send();
        m_changes = 0;
    }

    void Step()
    {
        Place& place = m_neighbors[Random(m_neighbors.size())];
        EDiscoveredInfo& info = *place.info;
        unsigned int const chance = Random(100);
        if (chance < 25) {
            info.RemoveNeighbor(place.id);
            AddNeighbor(place);
            ++m_changes;
        } else if (chance < 40) {
            info.SetNeighbor(place.id, NewNeighbor());
            ++m_changes;
        } else if (chance < 65) {
            EIPAddress const address = SampleIPv6(NextNumber());
            info.GetNeighbor(place.id)->AddAddress(address);
            info.GetNeighbor(place.id)->RemoveAddress(address);
            m_changes += 2;
        } else if (chance < 80) {
            EDiscoveredNeighbor& neighbor = *info.GetNeighbor(place.id);
            neighbor.SetIsRouter(!neighbor.IsRouter());
            ++m_changes;
        } else if (chance < 90) {
            info.SetInterfaceUp(!info.IsInterfaceUp());
            ++m_changes;
        } else {
            EIPAddress const address = SampleIPv4(NextNumber());
            info.AddAddress(address);
            info.RemoveAddress(address);
            m_changes += 2;
        }
        if (m_writer->GetChangeCount() >= kChangesPerMessage) Send();
    }
    void Send()
    {
        EArchive message;
        message.SetFromEBlob(m_writer->TakeMessage(), true);
        message.SetMode(2);
        ApplyDiscoveredTableMessage(m_follower, message);
        Require(message.AtEnd(), "a message is applied whole");
    }
    unsigned long GetChanges() const { return m_changes; }

    void Check()
    {
        Send();
        std::size_t count = 0;
        for (unsigned int id = 1; id <= kInterfaces; ++id) count += m_table.GetInfo(id)->GetNeighbors().size();
        Require(count == m_neighbors.size(), "the table has the neighbours that it had");
        for (EDiscoveredTable const* table : {&m_table, &m_follower}) {
            for (Place const& place : m_neighbors) {
                EDiscoveredInfo const& info = *table->GetInfo(place.info->GetLocalId());
                EDiscoveredNeighbor const* const neighbor = info.GetNeighbor(place.id);
                Require(neighbor && neighbor->GetAddressCount() == 1, "a neighbour is there, and whole");
                Require(info.FindNeighborByMAC(neighbor->GetMac()) == neighbor, "a neighbour is found by its MAC");
                Require(info.FindNeighborByIP(*neighbor->GetAddressAt(0)) == neighbor,
                        "a neighbour is found by its address");
            }
        }
        Require(Written(m_table) == Written(m_follower), "the second table is written with the same bytes");
    }

private:
    struct Place {
        EDiscoveredInfo* info;
        unsigned int id;
    };

    unsigned int Random(std::size_t bound) { return static_cast<unsigned int>(m_random() % bound); }
    unsigned int NextNumber() { return ++m_number; }

    EDiscoveredNeighbor NewNeighbor()
    {
        unsigned int const number = NextNumber();
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(SampleMac(number));
        neighbor.AddAddress(SampleIPv4(number));
        return neighbor;
    }
    void AddNeighbor(Place& place)
    {
        place.id = place.info->AddNeighbor(NewNeighbor());
        ++m_changes;
    }

    EDiscoveredTable m_table;
    EDiscoveredTable m_follower;
    boost::shared_ptr<EDiscoveredChangeWriter> m_writer;
    std::vector<Place> m_neighbors;
    std::mt19937 m_random{20240229}; // any; the same changes each time
    unsigned int m_number = 0;
    unsigned long m_changes = 0;
};

} // namespace

void LoadDiscovered(unsigned int neighbors, unsigned long changes)
{
    Steps steps(std::to_string(changes) + " changes of a discovered table of " + std::to_string(neighbors) +
                " neighbours, and of a second one by the change stream");
    steps.Begin();
    ChangeMix mix(neighbors);
    steps.End("fill", neighbors);
    FlatMemory memory;
    for (unsigned long part = 1; part <= 10; ++part) {
        unsigned long const before = mix.GetChanges();
        steps.Begin();
        while (mix.GetChanges() < changes / 10 * part) mix.Step();
        steps.End(part <= kWarmUpParts ? "warm-up, part " + std::to_string(part)
                                       : "changes, part " + std::to_string(part),
                  mix.GetChanges() - before);
        mix.Check();
        if (part == kWarmUpParts)
            memory.EndWarmUp();
        else if (part > kWarmUpParts)
            memory.Check();
    }
    memory.Print();
}
