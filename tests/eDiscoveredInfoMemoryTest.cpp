#include "eDiscoveredChangeWriter.hpp"
#include "eDiscoveredTable.hpp"

#include "allocations.hpp"
#include "golden.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

// An allocation that fails, at every point of a change: it is done or not done, and the indexes agree.

namespace {

char const* const kOldMac = "02:00:00:00:00:01";
char const* const kOldAddress = "2001:db8:ffff:ffff::1"; // its text is longer than a string keeps without an allocation
char const* const kNewMac = "02:00:00:00:00:02";
char const* const kNewAddress = "2001:db8:ffff:ffff::2";

EDiscoveredNeighbor NeighborOf(char const* mac, char const* address)
{
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress(mac));
    neighbor.AddAddress(EIPAddress(address));
    return neighbor;
}

/// A table with one neighbour, of the old MAC and address.
struct Fixture {
    EDiscoveredTable table;
    EDiscoveredInfo* info;
    unsigned int id;

    Fixture()
    {
        EDiscoveredInfo empty;
        empty.SetLocalId(1);
        table.AddInfo(empty);
        info = table.GetInfo(1);
        id = info->AddNeighbor(NeighborOf(kOldMac, kOldAddress));
    }
    EDiscoveredNeighbor& Neighbor() { return *info->GetNeighbor(id); }
    bool FindsByMac(char const* mac) { return info->FindNeighborByMAC(EMACAddress(mac)) == &Neighbor(); }
    bool FindsByIp(char const* address) { return info->FindNeighborByIP(EIPAddress(address)) == &Neighbor(); }
};

/// Runs \p change on a fresh fixture with each allocation failing in turn until none does, and \p check after each.
void FailEachAllocation(std::function<void(Fixture&)> const& change,
                        std::function<void(Fixture&, bool done)> const& check)
{
    bool done = false;
    for (long granted = 0; !done; ++granted) {
        SCOPED_TRACE(granted);
        ASSERT_LT(granted, 1000);
        Fixture fixture;
        s_allocationsLeft = granted;
        try {
            change(fixture);
            done = true;
        } catch (std::bad_alloc const&) {
        }
        s_allocationsLeft = -1;
        check(fixture, done);
    }
}

void Apply(EDiscoveredTable& table, EBlob const& message)
{
    EDiscoveredTable copy(table);
    EArchive archive;
    archive.SetFromEBlob(message, true);
    archive.SetMode(2);
    ApplyDiscoveredTableMessage(copy, archive);
    EXPECT_TRUE(archive.AtEnd());
}

} // namespace

TEST(EDiscoveredInfoMemory, SetNeighborReplacesTheNeighborInTheIndexesOrLeavesItThere)
{
    EDiscoveredNeighbor const replacement = NeighborOf(kNewMac, kNewAddress);
    FailEachAllocation([&](Fixture& f) { f.info->SetNeighbor(f.id, replacement); },
                       [](Fixture& f, bool done) {
                           EXPECT_TRUE(f.FindsByMac(done ? kNewMac : kOldMac));
                           EXPECT_TRUE(f.FindsByIp(done ? kNewAddress : kOldAddress));
                           EXPECT_FALSE(f.FindsByMac(done ? kOldMac : kNewMac));
                           EXPECT_FALSE(f.FindsByIp(done ? kOldAddress : kNewAddress));
                           EXPECT_EQ(EMACAddress(done ? kNewMac : kOldMac), f.Neighbor().GetMac());
                       });
}

TEST(EDiscoveredInfoMemory, ANeighborIsAddedToTheInfoAndTheIndexesOrToNeither)
{
    EDiscoveredNeighbor const added = NeighborOf(kNewMac, kNewAddress);
    FailEachAllocation([&](Fixture& f) { f.info->AddNeighbor(added); },
                       [](Fixture& f, bool done) {
                           EXPECT_EQ(done ? 2U : 1U, f.info->GetNeighbors().size());
                           EDiscoveredNeighbor const* const stored = f.info->GetNeighbor(f.id + 1);
                           EXPECT_EQ(done, stored != nullptr);
                           EXPECT_EQ(stored, f.info->FindNeighborByMAC(EMACAddress(kNewMac)));
                           EXPECT_EQ(stored, f.info->FindNeighborByIP(EIPAddress(kNewAddress)));
                           EXPECT_TRUE(f.FindsByMac(kOldMac));
                           EXPECT_TRUE(f.FindsByIp(kOldAddress));
                           f.info->RemoveNeighbor(f.id); // the default MAC: the other's, or none
                           EXPECT_EQ(done, f.table.HasDefaultMAC());
                       });
}

/// The MAC that the neighbour number \p i comes with.
static EMACAddress OldMac(unsigned int i)
{
    EMACAddress mac;
    unsigned char const bytes[] = {6, 0, 0, 0, static_cast<unsigned char>(i >> 8), static_cast<unsigned char>(i)};
    mac.SetMACAddress(EBlob(bytes, sizeof bytes));
    return mac;
}

static EDiscoveredNeighbor NeighborOf(EMACAddress const& mac)
{
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(mac);
    return neighbor;
}

TEST(EDiscoveredInfoMemory, EntriesOfOldMacsOfNeighborsThatAreGoneAreBoundedByThoseThatAreThere)
{
    for (unsigned int const there : {0U, 1U, 20U, 1000U}) {
        SCOPED_TRACE(there);
        EDiscoveredInfo info;
        for (unsigned int i = 0; i < there; ++i) info.AddNeighbor(NeighborOf(OldMac(i)));
        long const before = s_liveAllocations;
        long most = before;
        for (unsigned int i = there; i < 20000; ++i) {
            unsigned int const id = info.AddNeighbor(NeighborOf(OldMac(i)));
            info.GetNeighbor(id)->SetMac(EMACAddress(kNewMac));
            info.RemoveNeighbor(id);
            most = std::max(most, s_liveAllocations);
        }
        EXPECT_LE(most - before, 40 + 4 * static_cast<long>(there)); // 20000 if they stayed
        EXPECT_GE(most - before, 30) << "the entries are no allocations any more: this test shows nothing";
        for (unsigned int i = 0; i < 20000; ++i) {
            EDiscoveredNeighbor const* const found = info.FindNeighborByMAC(OldMac(i));
            ASSERT_EQ(i < there ? i + 1 : 0, found ? found->GetLocalId() : 0U) << i;
        }
    }
}

TEST(EDiscoveredInfoMemory, WhenTheIndexIsFullAllNeighborsAreFoundWhetherItGrowsOrNot)
{
    for (unsigned int const gone : {0U, 10U, 30U}) { // entries of neighbours that are gone, of the 32 before it grows
        SCOPED_TRACE(gone);
        std::vector<unsigned int> ids;
        FailEachAllocation(
            [&](Fixture& f) {
                long const left = std::exchange(s_allocationsLeft, -1);
                ids = {f.id};
                for (unsigned int i = 1; i < 32; ++i) {
                    ids.push_back(f.info->AddNeighbor(NeighborOf(OldMac(i))));
                    if (i > gone) continue;
                    f.info->GetNeighbor(ids.back())->SetMac(EMACAddress(kNewMac));
                    f.info->RemoveNeighbor(ids.back());
                }
                s_allocationsLeft = left;
                for (unsigned int i = 32; i < 36; ++i) {
                    ids.push_back(0);
                    ids.back() = f.info->AddNeighbor(NeighborOf(OldMac(i)));
                }
            },
            [&](Fixture& f, bool done) {
                EXPECT_EQ(done, ids.size() == 36 && ids.back() != 0);
                EXPECT_TRUE(f.FindsByMac(kOldMac));
                for (unsigned int i = 1; i < ids.size(); ++i)
                    EXPECT_EQ(f.info->GetNeighbor(ids[i]), f.info->FindNeighborByMAC(OldMac(i)));
            });
    }
}

TEST(EDiscoveredInfoMemory, AnAddressIsAddedToTheNeighborAndTheIndexOrToNeither)
{
    EIPAddress const added(kNewAddress);
    FailEachAllocation([&](Fixture& f) { f.Neighbor().AddAddress(added); },
                       [&](Fixture& f, bool done) {
                           EXPECT_EQ(done, f.Neighbor().HasAddress(added));
                           EXPECT_EQ(done, f.FindsByIp(kNewAddress));
                           EXPECT_TRUE(f.FindsByIp(kOldAddress));
                       });
}

TEST(EDiscoveredInfoMemory, TheLowestAddressedNeighborIsFoundThoughMemoryFailedForWhatIsKnownOfIt)
{
    FailEachAllocation(
        [](Fixture& f) {
            f.Neighbor().RemoveAddress(EIPAddress(kOldAddress));
            EDiscoveredNeighbor addressed = NeighborOf(kNewMac, kNewAddress);
            f.Neighbor().Swap(addressed);
        },
        [](Fixture& f, bool) {
            f.table.FindDefaultMAC();
            EXPECT_EQ(f.Neighbor().GetAddressCount() != 0, f.table.HasDefaultMAC());
            EDiscoveredTable other;
            other.Swap(f.table);
            other.FindDefaultMAC();
            EXPECT_EQ(other.GetInfo(1)->GetNeighbor(f.id)->GetAddressCount() != 0, other.HasDefaultMAC());
        });
}

TEST(EDiscoveredInfoMemory, AnOwnAddressIsAddedToALongListOrNotAndTheOthersStay)
{
    unsigned int const count = 100; // enough that the list is indexed
    auto const address = [](unsigned int i) { return EIPAddress("10.0.1." + std::to_string(i)); };
    FailEachAllocation(
        [&](Fixture& f) {
            f.info->AddAddress(EIPAddress("10.0.0.1"));
            for (unsigned int i = 1; i <= count; ++i) f.info->AddAddress(address(i));
            for (unsigned int i = 1; i <= count; i += 3) f.info->RemoveAddress(address(i));
            f.info->AddAddress(EIPAddress("10.0.0.2"));
        },
        [&](Fixture& f, bool done) {
            unsigned int const there = f.info->GetAddressCount();
            EXPECT_TRUE(!done || there == count + 2 - 34);
            std::vector<EIPAddress> seen;
            for (unsigned int i = 0; i < there; ++i) {
                seen.push_back(*f.info->GetAddressAt(i));
                EXPECT_TRUE(f.info->HasAddress(seen.back()));
            }
            for (EIPAddress const& one : seen) f.info->RemoveAddress(one);
            EXPECT_EQ(0U, f.info->GetAddressCount());
        });
}

TEST(EDiscoveredChangeWriterMemory, AStreamThatCouldNotBeWrittenIsRefusedOnceAndBeginsAnew)
{
    std::vector<EIPAddress> added; // enough that the stream must grow
    for (int i = 1; i <= 50; ++i) added.emplace_back("2001:db8::" + std::to_string(i));
    boost::shared_ptr<EDiscoveredChangeWriter> writer;
    long refused = 0;
    FailEachAllocation(
        [&](Fixture& f) {
            long const left = std::exchange(s_allocationsLeft, -1);
            writer = boost::make_shared<EDiscoveredChangeWriter>();
            f.table.hooks = writer;
            s_allocationsLeft = left;
            f.info->SetNeighbor(f.id, f.Neighbor());
            for (EIPAddress const& address : added) f.info->AddAddress(address);
        },
        [&](Fixture& f, bool done) {
            bool const hadChanges = writer->HasChanges();
            try {
                Apply(f.table, writer->TakeMessage()); // whole, whatever is in it
            } catch (std::bad_alloc const&) {
                EXPECT_TRUE(hadChanges);
                EXPECT_FALSE(done);
                ++refused;
            }
            EXPECT_FALSE(writer->HasChanges());
            f.info->SetInterfaceUp(!f.info->IsInterfaceUp());
            EXPECT_EQ(1U, writer->GetChangeCount());
            Apply(f.table, writer->TakeMessage());
        });
    EXPECT_GT(refused, 0);
}

TEST(EDiscoveredInfoMemory, SwappingAllocatesNothing)
{
    Fixture fixture;
    EDiscoveredInfo other;
    EPTPDiscoveredInfo ptp;
    // The three texts of the statistics, each longer than a string keeps without an allocation.
    std::string const text = Bytes("1E") + std::string(30, 'x');
    std::string const statistics = Bytes("02") + Bytes("00000000 00000000 00") + text + text + text + Bytes("00 00") +
                                   Bytes("00000000000000000000 00 00 00");
    ReadInto(ptp, Bytes("01 00 00") + statistics + Bytes("00000000 0000 0000 00"));
    other.SetPTPInfo(ptp);
    s_allocationsLeft = 0;
    fixture.info->Swap(other);
    s_allocationsLeft = -1;
    EXPECT_EQ(0U, fixture.info->GetNeighbors().size());
    EXPECT_EQ(1U, other.GetNeighbors().size());
    EXPECT_EQ(Written(ptp), Written(fixture.info->GetPTPInfo()));
}
