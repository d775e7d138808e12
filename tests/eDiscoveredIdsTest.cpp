#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

// The default MAC that tables find, against a walk through their infos and neighbours, after every operation of random
// ones: also those that give records other ids and parents than their owners know.

namespace {

/// "interface.neighbour MAC" of the first neighbour with an address; "0.0 ..." without one.
std::string Text(unsigned int interfaceId, unsigned int neighborId, EMACAddress const& mac)
{
    return std::to_string(interfaceId) + "." + std::to_string(neighborId) + " " + mac.GetAsString();
}
std::string Walked(EDiscoveredTable const& table)
{
    EDiscoveredInfoList const& infos = table.GetInfos();
    for (auto position = infos.begin(); position != infos.end(); ++position) {
        EDiscoveredInfo const& info = *infos.GetItem(position);
        EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
        for (auto item = neighbors.begin(); item != neighbors.end(); ++item) {
            EDiscoveredNeighbor const& neighbor = *neighbors.GetItem(item);
            if (neighbor.AddressBegin() == neighbor.AddressEnd()) continue;
            return Text(info.GetLocalId(), neighbor.GetLocalId(), neighbor.GetMac());
        }
    }
    return Text(0, 0, EMACAddress());
}
std::string DefaultMac(EDiscoveredTable const& table)
{
    return Text(table.GetDefaultMACIfId(), table.GetDefaultMACNbrId(), table.GetDefaultMAC());
}

unsigned int const kIds = 6; // of infos and, mostly, of neighbours

class RandomRun {
public:
    explicit RandomRun(unsigned int seed) : m_random(seed) {}

    void Step()
    {
        EDiscoveredTable& table = Below(2) == 0 ? m_table : m_other;
        EDiscoveredInfo* const info = table.GetInfo(Below(kIds));
        EDiscoveredNeighbor* const neighbor = info ? info->GetNeighbor(1 + Below(kIds)) : nullptr;
        if (neighbor)
            ChangeNeighbor(*info, *neighbor);
        else if (info)
            ChangeInfo(table, *info);
        else
            ChangeTable(table);
    }
    void Compare()
    {
        for (EDiscoveredTable* const table : {&m_table, &m_other}) {
            unsigned int const interfaceId = table->GetDefaultMACIfId();
            unsigned int const neighborId = table->GetDefaultMACNbrId();
            EMACAddress const mac = table->GetDefaultMAC();
            table->FindDefaultMAC();
            ASSERT_EQ(Walked(*table), DefaultMac(*table));
            table->SetDefaultMAC(interfaceId, neighborId, mac);
        }
    }

private:
    unsigned int Below(unsigned int bound) { return static_cast<unsigned int>(m_random() % bound); }
    EDiscoveredNeighbor AnyNeighbor()
    {
        EDiscoveredNeighbor neighbor = Neighbor("02:00:00:00:00:01");
        neighbor.SetMac(MAC("02:00:00:00:00:0" + std::to_string(Below(10))));
        neighbor.SetLocalId(Below(kIds));
        if (Below(3) == 0) neighbor.AddAddress(IP("10.0.0.1"));
        return neighbor;
    }
    EDiscoveredInfo AnyInfo()
    {
        EDiscoveredInfo info = Info(Below(kIds));
        for (unsigned int count = Below(4); count > 0; --count) info.AddNeighbor(AnyNeighbor());
        return info;
    }
    void ChangeNeighbor(EDiscoveredInfo& info, EDiscoveredNeighbor& neighbor)
    {
        unsigned int const id = 1 + Below(kIds);
        switch (Below(14)) {
        case 0:
        case 1: neighbor.AddAddress(IP("10.0.0.1")); break;
        case 2:
        case 3:
        case 4: neighbor.RemoveAddress(IP("10.0.0.1")); break;
        case 5: info.SetNeighbor(id, AnyNeighbor()); break;
        case 6: info.RemoveNeighbor(id); break;
        case 7: neighbor = AnyNeighbor(); break;
        case 8: neighbor.Empty(); break;
        case 9: neighbor.SetLocalId(Below(kIds)); break;
        case 10: neighbor.SetParent(nullptr); break;
        case 11: {
            EDiscoveredInfo* const from = m_other.GetInfo(Below(kIds));
            EDiscoveredNeighbor* const other = from ? from->GetNeighbor(id) : nullptr;
            if (other && other != &neighbor) neighbor.Swap(*other);
            break;
        }
        case 12: ReadInto(neighbor, Written(AnyNeighbor())); break;
        default:
            ASSERT_THROW(ReadInto(neighbor, Written(Neighbor("02:00:00:00:00:01", {"10.0.0.1"})).substr(0, 13)),
                         EArchiveError); // the address is there
            break;
        }
    }
    void ChangeInfo(EDiscoveredTable& table, EDiscoveredInfo& info)
    {
        switch (Below(12)) {
        case 0:
        case 1:
        case 2: info.AddNeighbor(AnyNeighbor()); break;
        case 3: info = AnyInfo(); break;
        case 4: info.Empty(); break;
        case 5: {
            EDiscoveredInfo* const other = m_other.GetInfo(Below(kIds));
            if (other && other != &info) info.Swap(*other);
            break;
        }
        case 6: info.SetLocalId(Below(kIds)); break;
        case 7: ReadInto(info, Written(AnyInfo())); break;
        case 8: {
            std::string const bytes = Written(AnyInfo());
            ASSERT_THROW(ReadInto(info, bytes.substr(0, Below(static_cast<unsigned int>(bytes.size())))),
                         EArchiveError);
            break;
        }
        case 9: table.SetInfo(Below(kIds), AnyInfo()); break;
        case 10: {
            EDiscoveredInfo const& itself = info;
            info = itself;
            break;
        }
        default: table.RemoveInfo(Below(kIds)); break;
        }
    }
    void ChangeTable(EDiscoveredTable& table)
    {
        switch (Below(16)) {
        case 0: m_table.Swap(m_other); break;
        case 1: table = EDiscoveredTable(m_other); break;
        case 2: ReadInto(table, Written(m_other)); break;
        case 3: {
            std::string const bytes = Written(m_other);
            ASSERT_THROW(ReadInto(table, bytes.substr(0, Below(static_cast<unsigned int>(bytes.size())))),
                         EArchiveError);
            break;
        }
        case 4:
            if (Below(4) == 0) table.Empty();
            break;
        default: table.AddInfo(AnyInfo()); break;
        }
    }

    std::mt19937 m_random;
    EDiscoveredTable m_table;
    EDiscoveredTable m_other;
};

} // namespace

TEST(EDiscoveredIds, TheDefaultMACIsTheOneThatAWalkFinds)
{
    for (unsigned int seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRun run(seed);
        for (int step = 0; step < 150 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            run.Step();
            run.Compare();
        }
    }
}
