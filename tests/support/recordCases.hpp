#pragma once

#include "golden.hpp"
#include "recordedInterface.hpp"
#include "recorder.hpp"

#include "eBlob.hpp"
#include "eDHCPTLV.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <string>
#include <vector>

// Tables of cases and rules that every record is tested with. An "InTable" holds a `record` inside a table and the
// `recorder` of that table: RecordInTable, or a structure of the test with a sample of its own.

/// What was heard when this is the one operation, or none ("").
inline std::vector<std::string> Heard(std::string const& operation)
{
    return operation.empty() ? std::vector<std::string>{} : std::vector<std::string>{operation};
}

/// One setter of a record: what it announces and what it changes.
template <class Record> struct SetterCase {
    char const* operation; // of the observer
    std::string announced; // the new value, as the recorder writes it
    std::function<void(Record&)> set;
    std::function<std::string(Record const&)> get;
    std::string before; // in a fresh record
    std::string after;
};

/// Exactly one call, with this record, in which the record still shows the old value; then the new one is stored. The
/// parent stays.
template <class Record> void ExpectAnnouncedThenStored(Recorder& recorder, Record& record, SetterCase<Record> const& c)
{
    SCOPED_TRACE(c.operation);
    EXPECT_EQ(c.before, c.get(record));
    std::string inTheCall;
    auto const* const parent = record.GetParent();
    recorder.Clear();
    recorder.whenCalled = [&] { inTheCall = c.get(record); };
    c.set(record);
    recorder.whenCalled = nullptr;
    ASSERT_EQ(std::vector<std::string>{c.operation}, recorder.Operations());
    EXPECT_EQ(&record, recorder.calls[0].record);
    EXPECT_EQ(c.announced, recorder.calls[0].values);
    EXPECT_EQ(c.before, inTheCall);
    EXPECT_EQ(c.after, c.get(record));
    EXPECT_EQ(parent, record.GetParent());
}
/// The same for each case with a record of its own.
template <class InTable, class Record> void ExpectEachAnnouncedThenStored(std::vector<SetterCase<Record>> const& cases)
{
    for (SetterCase<Record> const& c : cases) {
        InTable in;
        ExpectAnnouncedThenStored(*in.recorder, in.record, c);
    }
}

/// The setter also works, unannounced, on a record without a parent, and makes the record differ.
template <class Record> void ExpectStoredAndCompared(SetterCase<Record> const& c)
{
    SCOPED_TRACE(c.operation);
    Record changed;
    c.set(changed);
    EXPECT_EQ(c.after, c.get(changed));
    EXPECT_TRUE(changed != Record());
    EXPECT_TRUE(Record() != changed);
    Record const copy(changed);
    EXPECT_FALSE(copy != changed);
}

/// What a setter makes of a number that it corrects.
struct Correction {
    unsigned int given;
    unsigned int stored;
};
/// The corrected number is announced and stored, each in a record of its own.
template <class InTable, class Setter, class Getter>
void ExpectCorrected(Setter set, Getter get, std::vector<Correction> const& cases)
{
    for (Correction const& c : cases) {
        SCOPED_TRACE(c.given);
        InTable in;
        (in.record.*set)(c.given);
        EXPECT_EQ(c.stored, (in.record.*get)());
        ASSERT_EQ(1u, in.recorder->calls.size());
        EXPECT_EQ(std::to_string(c.stored), in.recorder->calls[0].values);
    }
}

/// The text of the first of the further arguments, an object of type Value, while the one call of \p change lasts.
template <class Value>
std::string ShownToTheObserver(Recorder& recorder, std::function<void()> const& change,
                               std::function<std::string(Value const&)> const& text)
{
    std::string shown;
    recorder.Clear();
    recorder.whenCalled = [&] { shown = text(recorder.Argument<Value>(0)); };
    change();
    recorder.whenCalled = nullptr;
    EXPECT_EQ(1u, recorder.calls.size());
    return shown;
}

/// Each change alone makes the sample differ, seen from either side.
template <class Record>
void ExpectEachChangeCompared(Record const& sample, std::vector<std::function<void(Record&)>> const& changes)
{
    for (std::size_t i = 0; i < changes.size(); ++i) {
        SCOPED_TRACE(i);
        Record changed(sample);
        EXPECT_FALSE(changed != sample);
        changes[i](changed);
        EXPECT_TRUE(changed != sample);
        EXPECT_TRUE(sample != changed);
    }
}

/// A record inside a table equals one without a parent.
template <class Record> void ExpectParentNotCompared()
{
    RecordInTable<Record> const in;
    EXPECT_EQ(&in.interface, in.record.GetParent());
    EXPECT_FALSE(in.record != Record());
}

/// The record's component id is its leaf under its interface, and the leaf alone without one.
template <class Record> void ExpectLeaf(unsigned int leaf)
{
    RecordInTable<Record> const in;
    EComponentId id{9, 9}; // to be replaced
    in.record.GetID(id);
    EXPECT_EQ((EComponentId{7, 1, 1, leaf}), id);
    Record().GetID(id);
    EXPECT_EQ(EComponentId{leaf}, id);
    EXPECT_EQ(leaf, Record().GetLocalId());
}

/// SetParent announces nothing; \p change, which the record announces, is then heard by the parent's observer, and by
/// nobody without a parent. Copy construction takes the parent along.
template <class Record>
void ExpectParentSetSilently(Recorder& recorder, EInterfaceItem const& parent,
                             std::function<void(Record&)> const& change)
{
    recorder.Clear();
    Record record;
    record.SetParent(&parent);
    EXPECT_EQ(&parent, record.GetParent());
    EXPECT_EQ(&parent, Record(record).GetParent());
    EXPECT_TRUE(recorder.calls.empty());
    change(record);
    EXPECT_EQ(1u, recorder.calls.size());
    record.SetParent(nullptr);
    change(record);
    EXPECT_EQ(1u, recorder.calls.size());
}

/// A copy of a record inside a table holds the same and has its parent. Nobody is told.
template <class Record> void ExpectCopyConstructed(Recorder& recorder, Record const& record)
{
    recorder.Clear();
    Record const copy(record);
    EXPECT_FALSE(copy != record);
    EXPECT_NE(nullptr, copy.GetParent());
    EXPECT_EQ(record.GetParent(), copy.GetParent());
    EXPECT_TRUE(recorder.calls.empty());
}

/// A record inside a table and one without a parent exchange all but the parents. Nobody is told.
template <class Record> void ExpectSwapped(Recorder& recorder, Record& record, Record other)
{
    Record const recordBefore(record);
    Record const otherBefore(other);
    auto const* const parent = record.GetParent();
    ASSERT_NE(nullptr, parent);
    ASSERT_TRUE(recordBefore != otherBefore);
    recorder.Clear();
    record.Swap(other);
    EXPECT_FALSE(record != otherBefore);
    EXPECT_FALSE(other != recordBefore);
    EXPECT_EQ(parent, record.GetParent());
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_TRUE(recorder.calls.empty());
}

/// What is announced as the replacement when a record is copied.
enum class Replacement { OWN_COPY, SOURCE };

/// The change replaces all but the parent in one call of the operation ("": in none), in which the record still holds
/// what it held \p before and the replacement, which is \p source itself or on purpose not, what it will hold.
template <class Record>
void ExpectOneChange(std::string const& operation, Record const& before, std::function<void(Record&)> const& change,
                     Record const& after, Record const* source = nullptr, Replacement announced = Replacement::OWN_COPY)
{
    ASSERT_TRUE(before != after);
    RecordInTable<Record> in(before);
    Recorder& recorder = *in.recorder;
    recorder.whenCalled = [&] {
        Record const& replacement = recorder.Argument<Record>(0);
        EXPECT_FALSE(in.record != before);
        EXPECT_FALSE(replacement != after);
        EXPECT_EQ(announced == Replacement::SOURCE, &replacement == source);
    };
    change(in.record);
    EXPECT_EQ(Heard(operation), recorder.Operations());
    for (Recorder::Call const& call : recorder.calls) EXPECT_EQ(&in.record, call.record);
    EXPECT_FALSE(in.record != after);
    EXPECT_EQ(&in.interface, in.record.GetParent());
}

template <class Record>
void ExpectCopyIsOneChange(std::string const& operation, Record const& before, Record const& source,
                           Replacement announced = Replacement::OWN_COPY)
{
    {
        SCOPED_TRACE("Copy");
        ExpectOneChange<Record>(
            operation, before, [&](Record& record) { record.Copy(source); }, source, &source, announced);
    }
    {
        SCOPED_TRACE("operator=");
        ExpectOneChange<Record>(
            operation, before, [&](Record& record) { record = source; }, source, &source, announced);
    }
}
template <class Record> void ExpectEmptyIsOneChange(std::string const& operation, Record const& before)
{
    SCOPED_TRACE("Empty");
    ExpectOneChange<Record>(
        operation, before, [](Record& record) { record.Empty(); }, Record());
}

/// Assigning and copying a record to itself changes nothing; each is announced by the operation given ("": not).
template <class Record>
void ExpectCopiedToItself(Record const& sample, std::string const& whenAssigned, std::string const& whenCopied)
{
    RecordInTable<Record> in(sample);
    Record const& itself = in.record;
    in.record = itself;
    EXPECT_EQ(Heard(whenAssigned), in.recorder->Operations());
    EXPECT_FALSE(in.record != sample);
    in.recorder->Clear();
    in.record.Copy(itself);
    EXPECT_EQ(Heard(whenCopied), in.recorder->Operations());
    EXPECT_FALSE(in.record != sample);
    EXPECT_EQ(&in.interface, in.record.GetParent());
}

/// Reading from an archive announces nothing and leaves the parent.
template <class Record> void ExpectReadSilently(Recorder& recorder, Record& record, std::string const& bytes)
{
    auto const* const parent = record.GetParent();
    ASSERT_NE(nullptr, parent);
    recorder.Clear();
    ReadInto(record, bytes);
    EXPECT_TRUE(recorder.calls.empty());
    EXPECT_EQ(parent, record.GetParent());
}

/// A fresh record after the failure to read bytes that end too early.
template <class Record> Record ReadAsFarAsPossible(std::string const& bytes)
{
    EArchive archive;
    Load(archive, bytes);
    Record record;
    EXPECT_THROW(archive >> record, EArchiveError);
    return record;
}

/// One editable field: the sub-id, the new value in the archive, and what the edit announces and changes.
template <class Record> struct EditCase {
    unsigned int subId;
    char const* hex;
    char const* operation; // empty: silent
    std::string announced;
    std::function<std::string(Record const&)> get;
    std::string after;
    std::vector<unsigned int> further = {99}; // ids behind the first, which are ignored
};

template <class Record> bool Edit(Record& record, std::vector<unsigned int> const& subId, EArchive& archive)
{
    return record.ProcessEdit(subId.begin(), subId.end(), archive);
}
template <class Record> bool Edit(Record& record, std::vector<unsigned int> const& subId, std::string const& bytes)
{
    EArchive archive;
    Load(archive, bytes);
    bool const done = Edit(record, subId, archive);
    EXPECT_TRUE(archive.AtEnd()) << "bytes are left over";
    return done;
}

/// The edit is done through the setter, which announces it.
template <class Record> void ExpectEdited(Recorder& recorder, Record& record, EditCase<Record> const& c)
{
    SCOPED_TRACE(c.subId);
    std::vector<unsigned int> subId{c.subId};
    subId.insert(subId.end(), c.further.begin(), c.further.end());
    recorder.Clear();
    EXPECT_TRUE(Edit(record, subId, Bytes(c.hex)));
    ASSERT_EQ(Heard(c.operation), recorder.Operations());
    EXPECT_EQ(c.announced, recorder.calls.empty() ? "" : recorder.calls[0].values);
    EXPECT_EQ(c.after, c.get(record));
}
/// The same for each case with a record of its own.
template <class InTable, class Record> void ExpectEachEdited(std::vector<EditCase<Record>> const& cases)
{
    for (EditCase<Record> const& c : cases) {
        InTable in;
        ExpectEdited(*in.recorder, in.record, c);
    }
}

/// The edit is refused: nothing is read, announced or changed.
template <class Record> void ExpectRefused(Recorder& recorder, Record& record, std::vector<unsigned int> const& subId)
{
    SCOPED_TRACE(subId.empty() ? "empty" : std::to_string(subId[0]));
    Record const before(record);
    recorder.Clear();
    EArchive archive;
    Load(archive, Bytes("05"));
    EXPECT_FALSE(Edit(record, subId, archive));
    EXPECT_EQ(0u, archive.GetOffset());
    EXPECT_FALSE(archive.AtEnd());
    EXPECT_FALSE(record != before);
    EXPECT_TRUE(recorder.calls.empty());
}
template <class Record>
void ExpectEachRefused(Recorder& recorder, Record& record, std::vector<std::vector<unsigned int>> const& subIds)
{
    for (std::vector<unsigned int> const& subId : subIds) ExpectRefused(recorder, record, subId);
}

/// The value does not fit the type that the edit reads: the archive's error, with nothing announced or changed.
template <class Record> void ExpectTooWide(Recorder& recorder, Record& record, unsigned int subId, char const* hex)
{
    SCOPED_TRACE(subId);
    Record const before(record);
    recorder.Clear();
    EXPECT_THROW(Edit(record, {subId}, Bytes(hex)), EArchiveError);
    EXPECT_FALSE(record != before);
    EXPECT_TRUE(recorder.calls.empty());
}

/// An edit as it comes: the sub-id and what the archive holds, in hexadecimal.
struct RawEdit {
    unsigned int subId;
    char const* hex;
};
template <class Record> void ExpectEachTooWide(Recorder& recorder, Record& record, std::vector<RawEdit> const& edits)
{
    for (RawEdit const& edit : edits) ExpectTooWide(recorder, record, edit.subId, edit.hex);
}

/// A list takes 300 elements like \p element by its edit, writes them and reads them back.
template <class Record>
void ExpectHolds300(Record& record, unsigned int subId, char const* element,
                    std::function<std::string(Record const&)> const& shown)
{
    std::string list = Bytes("F9 01 2C");
    for (int i = 0; i < 300; ++i) list += Bytes(element);
    EXPECT_TRUE(Edit(record, {subId}, list));
    EXPECT_EQ("[300]", shown(record));
    EXPECT_NE(std::string::npos, Written(record).find(list));
    Record read;
    ReadInto(read, Written(record));
    EXPECT_FALSE(read != record);
}

inline EDHCPTLV Tlv(unsigned char type, std::string const& value)
{
    EDHCPTLV tlv;
    tlv.SetType(type);
    tlv.SetValue(BlobOf(value));
    return tlv;
}
/// "61=01aa 254=", in the order of the list.
inline std::string TextOfTlvs(std::list<EDHCPTLV> const& tlvs)
{
    std::string text;
    for (EDHCPTLV const& tlv : tlvs)
        text += (text.empty() ? "" : " ") + std::to_string(tlv.GetType()) + "=" + tlv.GetValue().GetHexString();
    return text;
}
