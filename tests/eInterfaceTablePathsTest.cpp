#include "eInterfaceTable.hpp"
#include "recordedInterface.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

/// Table 7 with the interfaces 1 and 2; interface 2 has an IPv6 address of id 1 and every record created on demand.
struct EPathTable : RecordedInterface {
    EInterfaceItem& full = *table.GetInterfaceItem(table.AddInterfaceItem(EInterfaceItem()));

    EPathTable()
    {
        full.AddIPv6AddressItem(EIPv6AddressItem());
        full.EnsureNPIV();
        full.EnsurePTP();
        full.EnsureDCBX();
        full.EnsureLLDP();
        recorder->Clear();
    }
};

/// Which of the table's records a getter answers for a path, as text; "" for null.
template <class Record, class Expected> void ExpectFound(Record const* found, Expected const* expected, bool hit)
{
    EXPECT_EQ(hit ? static_cast<void const*>(expected) : nullptr, static_cast<void const*>(found));
}

/// All forms of one getter, for one path.
template <class Getter, class Expected>
void ExpectAllForms(EInterfaceTable& table, EComponentId const& id, Getter const& get, Expected const* expected,
                    bool hit)
{
    EInterfaceTable const& constTable = table;
    std::vector<unsigned int> const& path = id.GetId();
    ExpectFound(get(constTable, id), expected, hit);
    ExpectFound(get(table, id), expected, hit);
    ExpectFound(get(constTable, path.begin(), path.end()), expected, hit);
    ExpectFound(get(table, path.begin(), path.end()), expected, hit);
}

} // namespace

#define FORMS(Getter) [](auto& table, auto const&... where) { return table.Getter(where...); }

/// The record's own path, and the paths beside it that must miss.
#define EXPECT_PATH(Getter, path, expected)                                                                            \
    {                                                                                                                  \
        SCOPED_TRACE(#Getter);                                                                                         \
        EComponentId const own path;                                                                                   \
        ExpectAllForms(fixture.table, own, FORMS(Getter), expected, true);                                             \
        EComponentId deeper(own);                                                                                      \
        deeper += 9;                                                                                                   \
        ExpectAllForms(fixture.table, deeper, FORMS(Getter), expected, false);                                         \
        ExpectFound(fixture.table.Getter(deeper, EComponentId::MATCH_PREFIX), expected, true);                         \
        ExpectFound(fixture.table.Getter(own, EComponentId::MATCH_PREFIX), expected, true);                            \
        std::vector<unsigned int> levels = own.GetId();                                                                \
        for (std::size_t level = 0; level < levels.size(); ++level) {                                                  \
            SCOPED_TRACE(level);                                                                                       \
            std::vector<unsigned int> wrong = levels;                                                                  \
            wrong[level] += 100;                                                                                       \
            ExpectAllForms(fixture.table, EComponentId(wrong), FORMS(Getter), expected, false);                        \
            ExpectFound(fixture.table.Getter(EComponentId(wrong), EComponentId::MATCH_PREFIX), expected, false);       \
            std::vector<unsigned int> const shorter(levels.begin(), levels.begin() + static_cast<long>(level));        \
            ExpectAllForms(fixture.table, EComponentId(shorter), FORMS(Getter), expected, false);                      \
            ExpectFound(fixture.table.Getter(EComponentId(shorter), EComponentId::MATCH_PREFIX), expected, false);     \
        }                                                                                                              \
    }

TEST(EInterfaceTablePaths, EachGetterFindsItsRecordUnderItsWholePathOnly)
{
    EPathTable fixture;
    EInterfaceItem& item = fixture.full;
    EXPECT_PATH(GetInterfaceItemList, ({7, 1}), &fixture.table.GetInterfaceItemList());
    EXPECT_PATH(GetInterfaceItem, ({7, 1, 2}), &item);
    EXPECT_PATH(GetIPv4AddressItem, ({7, 1, 2, 6}), &item.GetIPv4AddressItem());
    EXPECT_PATH(GetIPv6AddressItemList, ({7, 1, 2, 1}), &item.GetIPv6AddressItemList());
    EXPECT_PATH(GetIPv6AddressItem, ({7, 1, 2, 1, 1}), item.GetIPv6AddressItem(1));
    EXPECT_PATH(GetDHCPProperties, ({7, 1, 2, 24}), &item.GetDHCPProperties());
    EXPECT_PATH(GetDHCPv6Properties, ({7, 1, 2, 26}), &item.GetDHCPv6Properties());
    EXPECT_PATH(GetFCoEConfig, ({7, 1, 2, 31}), &item.GetFCoEConfig());
    EXPECT_PATH(GetNPIVConfig, ({7, 1, 2, 32}), item.GetNPIVConfigReadOnly());
    EXPECT_PATH(GetPTPConfig, ({7, 1, 2, 34}), item.GetPTPConfigReadOnly());
    EXPECT_PATH(GetDCBXConfig, ({7, 1, 2, 36}), item.GetDCBXConfigReadOnly());
    EXPECT_PATH(GetLLDPConfig, ({7, 1, 2, 38}), item.GetLLDPConfigReadOnly());
    EXPECT_TRUE(fixture.recorder->calls.empty());
}

TEST(EInterfaceTablePaths, LookupsNeverCreateARecord)
{
    EPathTable fixture;
    EXPECT_EQ(nullptr, fixture.table.GetNPIVConfig(EComponentId{7, 1, 1, 32}));
    EXPECT_EQ(nullptr, fixture.table.GetPTPConfig(EComponentId{7, 1, 1, 34}));
    EXPECT_EQ(nullptr, fixture.table.GetDCBXConfig(EComponentId{7, 1, 1, 36}));
    EXPECT_EQ(nullptr, fixture.table.GetLLDPConfig(EComponentId{7, 1, 1, 38}));
    EXPECT_EQ(nullptr, fixture.interface.GetNPIVConfigReadOnly());
    EXPECT_EQ(nullptr, fixture.interface.GetPTPConfigReadOnly());
    EXPECT_EQ(nullptr, fixture.interface.GetDCBXConfigReadOnly());
    EXPECT_EQ(nullptr, fixture.interface.GetLLDPConfigReadOnly());
    EXPECT_EQ(nullptr, fixture.table.GetInterfaceItem(3));
    EXPECT_EQ(2u, fixture.table.GetCount());
}

TEST(EInterfaceTablePaths, TheRecordsOwnIdsLeadBackToThem)
{
    EPathTable fixture;
    EComponentId id;
    fixture.table.GetID(id);
    EXPECT_EQ(EComponentId({7}), id);
    fixture.full.GetID(id);
    EXPECT_EQ(&fixture.full, fixture.table.GetInterfaceItem(id));
    fixture.full.GetDHCPProperties().GetID(id);
    EXPECT_EQ(&fixture.full.GetDHCPProperties(), fixture.table.GetDHCPProperties(id));
    fixture.full.GetLLDPConfig().GetID(id);
    EXPECT_EQ(&fixture.full.GetLLDPConfig(), fixture.table.GetLLDPConfig(id));
}

TEST(EInterfaceTablePaths, GetIdTypeClassifiesThePathAlone)
{
    struct {
        std::vector<unsigned int> path;
        unsigned int kind;
    } const cases[] = {{{}, 0},
                       {{7}, 0},
                       {{8, 1}, 0},
                       {{7, 1}, 4},
                       {{7, 2}, 0},
                       {{7, 3}, 0},
                       {{7, 18}, 0},
                       {{7, 24}, 0},
                       {{7, 1, 99}, 1},
                       {{8, 1, 99}, 0},
                       {{7, 2, 99}, 0},
                       {{7, 1, 9, 1}, 5},
                       {{7, 1, 9, 1, 3}, 2},
                       {{7, 1, 9, 1, 3, 4}, 0},
                       {{7, 1, 9, 2, 3}, 0},
                       {{7, 1, 9, 0}, 0},
                       {{7, 1, 9, 3}, 0},
                       {{7, 1, 9, 24}, 6},
                       {{7, 1, 9, 26}, 7},
                       {{7, 1, 9, 31}, 12},
                       {{7, 1, 9, 32}, 16},
                       {{7, 1, 9, 18}, 0},
                       {{7, 1, 9, 25}, 0},
                       {{7, 1, 9, 34}, 0}, // PTP, DCBX and LLDP have no kind
                       {{7, 1, 9, 36}, 0},
                       {{7, 1, 9, 38}, 0},
                       {{7, 1, 9, 6, 1}, 0},
                       {{7, 4, 9}, 0}};
    EInterfaceTable const table(7);
    for (auto const& c : cases) {
        EComponentId const id(c.path);
        EXPECT_EQ(c.kind, table.GetIdType(id)) << TextOf(id);
    }
    unsigned int const kinds[] = {8, 9, 10, 11, 13, 14, 15, 20, 21, 22, 23, 24, 25, 26};
    for (unsigned int subId = 4; subId <= 17; ++subId) {
        EXPECT_EQ(kinds[subId - 4], table.GetIdType(EComponentId{7, subId})) << subId;
        unsigned int const expected = subId == 6 ? 3 : kinds[subId - 4]; // 6 under an interface is its IPv4 address
        EXPECT_EQ(expected, table.GetIdType(EComponentId{7, 1, 9, subId})) << subId;
    }
}
