#pragma once

#include "golden.hpp"
#include "recorder.hpp"

#include "eBlob.hpp"
#include "eDHCPTLV.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <string>
#include <vector>

// Tables of cases that every record is tested with.

/// One setter of a record: what it announces and what it changes.
template <class Record> struct SetterCase {
    char const* operation; // of the observer
    std::string announced; // the new value, as the recorder writes it
    std::function<void(Record&)> set;
    std::function<std::string(Record const&)> get;
    std::string before; // in a fresh record
    std::string after;
};

/// Exactly one call, with this record, in which the record still shows the old value; then the new one is stored.
template <class Record> void ExpectAnnouncedThenStored(Recorder& recorder, Record& record, SetterCase<Record> const& c)
{
    SCOPED_TRACE(c.operation);
    EXPECT_EQ(c.before, c.get(record));
    std::string inTheCall;
    recorder.Clear();
    recorder.whenCalled = [&] { inTheCall = c.get(record); };
    c.set(record);
    recorder.whenCalled = nullptr;
    ASSERT_EQ(std::vector<std::string>{c.operation}, recorder.Operations());
    EXPECT_EQ(&record, recorder.calls[0].record);
    EXPECT_EQ(c.announced, recorder.calls[0].values);
    EXPECT_EQ(c.before, inTheCall);
    EXPECT_EQ(c.after, c.get(record));
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

/// One editable field: the sub-id, the new value in the archive, and what the edit announces and changes.
template <class Record> struct EditCase {
    unsigned int subId;
    char const* hex;
    char const* operation;
    std::string announced;
    std::function<std::string(Record const&)> get;
    std::string after;
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

/// The edit is done through the announcing setter; ids behind the first are ignored.
template <class Record> void ExpectEdited(Recorder& recorder, Record& record, EditCase<Record> const& c)
{
    SCOPED_TRACE(c.subId);
    recorder.Clear();
    EXPECT_TRUE(Edit(record, {c.subId, 99}, Bytes(c.hex)));
    ASSERT_EQ(std::vector<std::string>{c.operation}, recorder.Operations());
    EXPECT_EQ(c.announced, recorder.calls[0].values);
    EXPECT_EQ(c.after, c.get(record));
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
    EXPECT_FALSE(archive.AtEnd());
    EXPECT_FALSE(record != before);
    EXPECT_TRUE(recorder.calls.empty());
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
