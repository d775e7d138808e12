#pragma once

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <gtest/gtest.h>

#include <string>

// Rules that every protocol record of a discovered info is tested with. The records offer no comparison: two are equal
// when they write the same bytes.

/// Copies have no parent; whatever takes new contents leaves the parent as it is. The contents are the other's.
template <class Record> void ExpectContentsMoveWithoutTheParent(Record const& sample)
{
    std::string const defaults = Written(Record());
    std::string const full = Written(sample);
    ASSERT_NE(defaults, full);
    EXPECT_EQ(nullptr, Record().GetParent());

    EDiscoveredInfo const owner;
    Record record;
    record.SetParent(&owner);
    EXPECT_EQ(&owner, record.GetParent());
    record.Copy(sample);
    EXPECT_EQ(full, Written(record));
    EXPECT_EQ(&owner, record.GetParent());

    Record const copy(record);
    EXPECT_EQ(full, Written(copy));
    EXPECT_EQ(nullptr, copy.GetParent());

    Record other;
    record.Swap(other);
    EXPECT_EQ(defaults, Written(record));
    EXPECT_EQ(full, Written(other));
    EXPECT_EQ(&owner, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());

    EXPECT_EQ(&record, &(record = other));
    EXPECT_EQ(full, Written(record));
    EXPECT_EQ(full, Written(other));
    EXPECT_EQ(&owner, record.GetParent());

    Record const& itself = record;
    record = itself;
    record.Copy(itself);
    EXPECT_EQ(full, Written(record));

    record.Empty();
    EXPECT_EQ(defaults, Written(record));
    EXPECT_EQ(&owner, record.GetParent());
}

/// The observer is that of the table which the record is in; without one, an observer that ignores all.
template <class Record> void ExpectObserverOfTheTable(Record& (EDiscoveredInfo::*recordOf)())
{
    RecordedInfo in;
    EDiscoveredInfo alone;
    EXPECT_EQ(in.recorder.get(), &(in.info.*recordOf)().GetHooks());
    EXPECT_NE(in.recorder.get(), &(alone.*recordOf)().GetHooks());
    EXPECT_EQ(&Record().GetHooks(), &Record().GetHooks());
}

/// Reading from an archive announces nothing and leaves the parent.
template <class Record>
void ExpectReadUnheard(Record& (EDiscoveredInfo::*recordOf)(), std::string const& bytes, std::string const& written)
{
    RecordedInfo in;
    Record& record = (in.info.*recordOf)();
    ReadInto(record, bytes);
    EXPECT_EQ(written, Written(record));
    EXPECT_EQ(&in.info, record.GetParent());
    EXPECT_TRUE(in.recorder->calls.empty());
}
/// The same of a golden file of the newest version.
template <class Record> void ExpectReadUnheard(Record& (EDiscoveredInfo::*recordOf)(), char const* goldenName)
{
    ExpectReadUnheard(recordOf, Golden(goldenName), Golden(goldenName));
}

/// A record with a list ends the process when it is written to an archive that is being read.
template <class Record> void ExpectListRefusesToBeWritten()
{
    ChildResult const written = RunInChild([] {
        EArchive archive;
        Load(archive, "");
        archive << Record();
    });
    EXPECT_EQ(1, written.exitStatus);
    EXPECT_EQ(FatalArchiveMessage("common/include/eArchive.hpp", 157, "template<ItemType> SerializeOut(..,vector)"),
              written.output);
}

/// Reading from an archive that is being written ends the process where the list is read.
template <class Read> void ExpectListRefusesToBeRead(Read const& read)
{
    ChildResult const result = RunInChild([&read] {
        EArchive archive;
        read(archive);
    });
    EXPECT_EQ(1, result.exitStatus);
    EXPECT_EQ(FatalArchiveMessage("common/include/eArchive.hpp", 172, "template<ItemType> SerializeIn(..,vector)"),
              result.output);
}
