#pragma once

#include "reading.hpp"

#include "golden.hpp"

#include "eDiscoveredTable.hpp"
#include "eGreTunnel.hpp"
#include "eInterfaceTable.hpp"
#include "interfaceSamples.hpp"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

// Archives: a bad one is an archive error, the fatal message or a value, a cut one never a value. Whatever it was, the
// record that was read into can be written, copied and emptied; a value is written so that it can be read.

// What else holds for records that others refer to.
template <class Record> void ExpectLinked(Record const& /*record*/) {}
inline void ExpectLinked(EInterfaceItem const& interface)
{
    ExpectHoldsItsRecords(interface);
}
void ExpectLinked(EInterfaceTable const& table);
void ExpectLinked(EDiscoveredInfo const& info);
void ExpectLinked(EDiscoveredTable const& table);

template <class Record, class = void> struct CanBeEmptied : std::false_type {
};
template <class Record>
struct CanBeEmptied<Record, std::void_t<decltype(std::declval<Record&>().Empty())>> : std::true_type {
};

/// What a copy of a record writes that wrote \p written.
template <class Record> std::string WrittenByCopy(Record const& /*record*/, std::string written)
{
    return written;
}
inline std::string WrittenByCopy(EDiscoveredTable const& /*table*/, std::string written)
{
    return written.replace(written.size() - 6, 6, 6, '\0'); // on purpose without the default MAC
}

/// It can be written, and so can a copy of it. Answers the bytes.
template <class Record> std::string ExpectWhole(Record const& record)
{
    ExpectLinked(record);
    std::string const written = Written(record);
    Record const copy(record);
    ExpectLinked(copy);
    EXPECT_EQ(WrittenByCopy(record, written), Written(copy));
    return written;
}

// What stays when a record is emptied.
template <class Record> void ForgetIdentity(Record& /*record*/) {}
inline void ForgetIdentity(EInterfaceItem& interface)
{
    interface.SetLocalId(0);
}
inline void ForgetIdentity(EObsoleteGreTunnel& tunnel)
{
    tunnel.SetLocalId(0);
}
inline void ForgetIdentity(EInterfaceTable& table)
{
    table.SetPortId(0);
}

template <class Record> class ArchiveReading {
public:
    Ending operator()(BadInput const& input)
    {
        EArchive archive;
        Load(archive, input.bytes);
        Ending const ending = Guarded([&] { archive >> m_record; });
        if (input.isCut) {
            EXPECT_EQ(Ending::archiveError, ending);
        }
        std::string const written = ExpectWhole(m_record);
        if (ending == Ending::done) {
            Record again;
            ReadInto(again, written);
            EXPECT_EQ(written, Written(again));
        }
        Empty();
        return ending;
    }

    /// After all, the record can still be read as a whole.
    void ExpectReads(std::string const& good) { ReadInto(m_record, good); }

private:
    void Empty()
    {
        if constexpr (CanBeEmptied<Record>::value) {
            m_record.Empty();
            ExpectLinked(m_record);
            ForgetIdentity(m_record);
            EXPECT_EQ(m_fresh, Written(m_record));
        }
    }

    Record m_record; // one for all: what an input left behind must not show in the next
    std::string m_fresh = Written(m_record);
};

template <class Record> void CheckArchive(std::string const& good)
{
    ArchiveReading<Record> reading;
    CheckReading(good, Numbers::archive, [&reading](BadInput const& input) { return reading(input); });
    reading.ExpectReads(good);
}
