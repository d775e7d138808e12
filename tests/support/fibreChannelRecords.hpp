#pragma once

#include "eFCoECompanions.hpp"
#include "recordCases.hpp"
#include "recordedInterface.hpp"

#include <functional>
#include <string>
#include <vector>

// What the tests of the FCoE and the NPIV configuration share: the samples that the golden files hold, and one table
// of fields for setters and edits that knows what is announced after the store or with the interface.

inline ENSRegOption SampleNSRegOption()
{
    ENSRegOption option;
    option.SetOptions(0x0102);
    option.SetRspnIdName("pA");
    option.SetRsnnNnName("nodeB");
    option.SetExtraName("x");
    return option;
}

inline EPLOGIDestination SamplePLOGIDestination()
{
    EPLOGIDestination destination;
    destination.SetEnabled(true);
    destination.SetDestMode(-2);
    destination.SetDestNodeId(0x010203);
    destination.SetWWPN(EUID(0x5001438011223344));
    return destination;
}

inline EFCNSQuery SampleFCNSQuery()
{
    EFCNSQuery query;
    query.SetFlag(true);
    query.SetCommand(0x0112);
    query.SetRequestObject(-3);
    query.SetRequestObjectValue("0a 0b");
    return query;
}

/// One field of a record inside a table: how it is set, announced and edited.
template <class Record> struct FieldCase {
    unsigned int subId;
    std::string data; // of the edit that sets the same value, in hexadecimal
    std::function<void(Record&)> set;
    std::function<std::string(Record const&)> shown; // the stored value as text
    std::string before;
    std::string after;
    std::string operation;
    std::string announced;
    enum { OLD_VALUE, NEW_VALUE } seenByObserver = OLD_VALUE;
    enum { RECORD, INTERFACE } givenToObserver = RECORD;
};

/// Makes the change to a fresh record of an interface in a table, twice: each time it is announced exactly once.
template <class Record>
void ExpectAnnounced(FieldCase<Record> const& field, std::function<Record&(EInterfaceItem&)> const& recordOf,
                     std::function<void(Record&)> const& change)
{
    RecordedInterface recorded;
    Record& record = recordOf(recorded.interface);
    recorded.recorder->Clear();
    std::string seen;
    recorded.recorder->whenCalled = [&] { seen = field.shown(record); };
    void const* const given =
        field.givenToObserver == field.INTERFACE ? static_cast<void const*>(&recorded.interface) : &record;

    EXPECT_EQ(field.before, field.shown(record));
    for (std::string const& old : {field.before, field.after}) {
        change(record);
        EXPECT_EQ(field.after, field.shown(record));
        ASSERT_EQ(std::vector<std::string>{field.operation}, recorded.recorder->Operations());
        EXPECT_EQ(field.announced, recorded.recorder->calls[0].values);
        EXPECT_EQ(given, recorded.recorder->calls[0].record);
        EXPECT_EQ(field.seenByObserver == field.NEW_VALUE ? field.after : old, seen);
        recorded.recorder->Clear();
    }
}
