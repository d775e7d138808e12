#pragma once

#include "eFCoECompanions.hpp"
#include "recordCases.hpp"

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

// What shows one field, and what sets it.
#define SHOWS(getter) [](auto const& r) { return TextOf(r.getter()); }
#define SETS(call) [](auto& r) { r.call; }

/// Makes the change to a fresh record of an interface in a table, twice: each time it is announced exactly once.
template <class Record> void ExpectAnnounced(FieldCase<Record> const& field, std::function<void(Record&)> const& change)
{
    SCOPED_TRACE(field.operation);
    RecordInTable<Record> in;
    std::string seen;
    in.recorder->whenCalled = [&] { seen = field.shown(in.record); };
    void const* const given =
        field.givenToObserver == field.INTERFACE ? static_cast<void const*>(&in.interface) : &in.record;

    EXPECT_EQ(field.before, field.shown(in.record));
    for (std::string const& old : {field.before, field.after}) {
        change(in.record);
        EXPECT_EQ(field.after, field.shown(in.record));
        ASSERT_EQ(std::vector<std::string>{field.operation}, in.recorder->Operations());
        EXPECT_EQ(field.announced, in.recorder->calls[0].values);
        EXPECT_EQ(given, in.recorder->calls[0].record);
        EXPECT_EQ(field.seenByObserver == field.NEW_VALUE ? field.after : old, seen);
        in.recorder->Clear();
    }
}

template <class Record> void ExpectSettersAnnounce(std::vector<FieldCase<Record>> const& fields)
{
    for (FieldCase<Record> const& field : fields) ExpectAnnounced<Record>(field, field.set);
}

template <class Record> void ExpectEditsAnnounce(std::vector<FieldCase<Record>> const& fields)
{
    for (FieldCase<Record> const& field : fields)
        ExpectAnnounced<Record>(field, [&field](Record& record) {
            EXPECT_TRUE(Edit(record, {field.subId, 99}, Bytes(field.data))); // the second sub-id does not count
        });
}

template <class Record> void ExpectSettersStoreWithoutAParent(std::vector<FieldCase<Record>> const& fields)
{
    for (FieldCase<Record> const& field : fields) {
        SCOPED_TRACE(field.operation);
        Record record;
        field.set(record);
        EXPECT_EQ(field.after, field.shown(record));
    }
}

template <class Record> void ExpectFieldsCompared(std::vector<FieldCase<Record>> const& fields)
{
    for (FieldCase<Record> const& field : fields) {
        SCOPED_TRACE(field.operation);
        ExpectEachChangeCompared(Record(), {field.set});
    }
}

/// Gives the record what the samples of both configurations have in common.
template <class Record> void SetSampleLogin(Record& record)
{
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetB2BRxSize(2048);
    record.SetNsRegistrationEnabled(true);
    record.SetDestNodeId(0xFFFFFC);
}
template <class Record> void AppendSampleDestinations(Record& record)
{
    std::vector<EPLOGIDestination> destinations = record.GetPLOGIDestinations();
    destinations.push_back(SamplePLOGIDestination());
    destinations.push_back(EPLOGIDestination());
    record.SetPLOGIDestinations(destinations);
}

/// Gives all fields that both configurations have a value unlike the default and unlike the sample's, where a type has
/// a third one.
template <class Record> void SetOtherLogin(Record& record)
{
    record.SetSrcPortWWN(EUID(71));
    record.SetSrcNodeWWN(EUID(72));
    record.SetB2BRxSize(73);
    record.SetSCREnabled(true);
    record.SetNsRegistrationEnabled(true);
    record.SetVnPortKeepAliveEnabled(false);
    record.SetPLOGIEnabled(true);
    record.SetDestNodeId(74);
    ENSRegOption option;
    option.SetOptions(75);
    record.SetNSRegOption(option);
    EPLOGIDestination destination;
    destination.SetDestNodeId(76);
    record.SetPLOGIDestinations({destination});
    EFCNSQuery query;
    query.SetCommand(77);
    record.SetFCNSQuery(query);
    record.SetPRLIEnable(true);
    record.SetAutoPLOGIEnable(true);
    record.SetNSQueryEnable(true);
    record.SetFCSCROption(static_cast<typename Record::eSCROptions>(78));
}

template <class Record> void ExpectDestinationsCompared(Record const& sample)
{
    ExpectEachChangeCompared<Record>(sample,
                                     {SETS(SetPLOGIDestinations({SamplePLOGIDestination(), SamplePLOGIDestination()})),
                                      SETS(SetPLOGIDestinations({EPLOGIDestination(), SamplePLOGIDestination()}))});
    Record same(sample);
    same.SetPLOGIDestinations(std::vector<EPLOGIDestination>(sample.GetPLOGIDestinations()));
    EXPECT_FALSE(same != sample);
}

/// The edit replaces the destinations by those that it reads.
template <class Record> void ExpectDestinationsEdited(Record record, unsigned int subId)
{
    ASSERT_FALSE(record.GetPLOGIDestinations().empty());
    ASSERT_TRUE(
        Edit(record, {subId}, Bytes("01 FB 12 29 20 08 01 FB FF FF FF FE FA 01 02 03 FF 50 01 43 80 11 22 33 44")));
    ASSERT_EQ(1u, record.GetPLOGIDestinations().size());
    EXPECT_FALSE(record.GetPLOGIDestinations()[0] != SamplePLOGIDestination());
    ASSERT_TRUE(Edit(record, {subId}, Bytes("00")));
    EXPECT_TRUE(record.GetPLOGIDestinations().empty());
}

/// World-wide names are shown as eight bytes, the destination's 24-bit address as three.
template <class Record> void ExpectNamesShown()
{
    Record record;
    EXPECT_EQ("00:00:00:00:00:00:00:00", record.GetSrcPortWWNAsString());
    EXPECT_EQ("01.b6.69", record.GetDestNodeIdAsString());
    record.SetSrcPortWWN(EUID(0x2100001B32000001));
    record.SetSrcNodeWWN(EUID(0x2000001B32000002));
    record.SetDestNodeId(0xAAFFFFFC);
    EXPECT_EQ("21:00:00:1b:32:00:00:01", record.GetSrcPortWWNAsString());
    EXPECT_EQ("20:00:00:1b:32:00:00:02", record.GetSrcNodeWWNAsString());
    EXPECT_EQ("ff.ff.fc", record.GetDestNodeIdAsString());
}

/// One version of the golden files, "<name>.v<N>.hex": a fresh record gets the version's fields; one that is \p other
/// keeps what the version does not carry, its lists get the elements appended. \return What \p other became.
template <class Record>
Record ReadVersion(std::string const& name, unsigned int version, Record const& other,
                   void (*applySample)(Record&, unsigned int))
{
    std::string const bytes = Golden(name + ".v" + std::to_string(version) + ".hex");
    Record fresh;
    Record sample;
    ReadInto(fresh, bytes);
    applySample(sample, version);
    EXPECT_FALSE(fresh != sample);

    Record used(other);
    Record expected(other);
    ReadInto(used, bytes);
    applySample(expected, version);
    EXPECT_FALSE(used != expected);
    return used;
}
