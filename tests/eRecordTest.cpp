#include "eRecord.hpp"
#include "golden.hpp"
#include "recordedInterface.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

// Reaching the observer, and the component id

namespace {

/// Every record of an interface, one after the other.
template <class Visitor> void ForEachRecord(EInterfaceItem& item, Visitor const& visit)
{
    visit(item.GetIPv4AddressItem(), 6u);
    visit(item.GetDHCPProperties(), 24u);
    visit(item.GetDHCPv6Properties(), 26u);
    visit(item.GetFCoEConfig(), 31u);
    visit(item.GetNPIVConfig(), 32u);
    visit(item.GetPTPConfig(), 34u);
    visit(item.GetDCBXConfig(), 36u);
    visit(item.GetLLDPConfig(), 38u);
}

template <class Record>
auto IdOf(Record const& record, int) -> decltype(record.GetID(std::declval<EComponentId&>()), EComponentId())
{
    EComponentId id{99}; // replaced
    record.GetID(id);
    return id;
}
template <class Record> EComponentId IdOf(Record const&, long) // the IPv4 record has no id of its own
{
    return EComponentId();
}

} // namespace

TEST(ERecord, EveryRecordReachesItsTablesObserverAndNamesItsLeaf)
{
    RecordedInterface fixture;
    ForEachRecord(fixture.interface, [&](auto& record, unsigned int leaf) {
        SCOPED_TRACE(leaf);
        EXPECT_EQ(fixture.recorder.get(), &record.GetHooks());
        EComponentId const id = IdOf(record, 0);
        EXPECT_EQ(leaf == 6 ? EComponentId() : EComponentId({7, 1, 1, leaf}), id);
    });
}

TEST(ERecord, WithoutAParentARecordIsHeardByNobodyAndItsIdIsTheLeafAlone)
{
    EInterfaceItem item;
    ForEachRecord(item, [&](auto& record, unsigned int leaf) {
        SCOPED_TRACE(leaf);
        EXPECT_EQ(&item.GetHooks(), &record.GetHooks());
        record.SetParent(nullptr);
        EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&record.GetHooks()));
        EComponentId const id = IdOf(record, 0);
        EXPECT_EQ(leaf == 6 ? EComponentId() : EComponentId{leaf}, id);
    });
}

// Comparing

TEST(ERecord, DifferComparesEachFieldAndSequencesByTheirElements)
{
    using List = std::list<EDHCPTLV>;
    EDHCPTLV one;
    one.SetType(1);
    int const a = 1;
    int const b = 2;
    List const empty;
    List const first{one};
    List const other{EDHCPTLV()};
    List const longer{one, one};
    struct {
        int const& number;
        List const& list;
        bool differs;
    } const cases[] = {{a, first, false}, {b, first, true}, {a, empty, true}, {a, other, true}, {a, longer, true}};
    for (auto const& c : cases) EXPECT_EQ(c.differs, Differ(std::tie(a, first), std::tie(c.number, c.list)));
}

// Announcing

TEST(ERecord, AnArgumentMayBelongToWhatTheObserverChangesMeanwhile)
{
    RecordedInterface fixture;
    fixture.interface.SetName("a name that is too long to be stored inside the string object");
    std::string const expected = fixture.interface.GetName();
    bool nested = false;
    fixture.recorder->whenCalled = [&] {
        if (nested) return;
        nested = true;
        fixture.interface.SetName("short");
    };
    fixture.interface.SetName(fixture.interface.GetName());
    EXPECT_EQ(expected, fixture.interface.GetName()) << "the outer change is stored last";
}

// Editing

namespace {

struct Edited {
    int number = 0;
    std::vector<unsigned short> list;
    void SetNumber(int value) { number = value; }
    bool SetList(std::vector<unsigned short> const& value)
    {
        list = value;
        return false; // the setter's own opinion does not count
    }
};

EEdit<Edited> const kEdits[] = {
    {2, ReadAndSet<unsigned char, &Edited::SetNumber>},
    {5, ReadListAndSet<std::vector<unsigned short>, &Edited::SetList>},
};

bool Edit(Edited& record, std::vector<unsigned int> const& subId, EArchive& archive)
{
    return EditField(kEdits, record, subId.begin(), subId.end(), archive);
}

} // namespace

TEST(ERecord, EditFieldPicksTheRowOfTheFirstSubId)
{
    Edited record;
    EArchive archive;
    Load(archive, Bytes("f8 ff 02 01 f9 01 00"));
    EXPECT_TRUE(Edit(record, {2, 5, 77}, archive));
    EXPECT_EQ(255, record.number);
    EXPECT_TRUE(Edit(record, {5}, archive));
    EXPECT_THAT(record.list, ElementsAre(1, 256));
    EXPECT_TRUE(archive.AtEnd());
}

TEST(ERecord, EditFieldReadsNothingForAnUnknownSubIdAndSetsNothingOnAFailure)
{
    Edited record;
    EArchive archive;
    Load(archive, Bytes("02 01"));
    EXPECT_FALSE(Edit(record, {}, archive));
    EXPECT_FALSE(Edit(record, {3}, archive));
    EXPECT_THROW(Edit(record, {5}, archive), EArchiveError) << "one of two elements";
    EXPECT_EQ(0, record.number);
    EXPECT_THAT(record.list, IsEmpty());
}
