#pragma once

#include "eArchive.hpp"

#include <array>
#include <cstddef>
#include <utility>

// An archive layout is one function that names every field of a record, newest first, with the version that brought it:
//
//     template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
//     {
//         archive.Since(2, v.enabled);
//         archive.Since(1, As<int, unsigned int>(v.mode));       // written as int, read as unsigned int
//         archive.Since(1, Appended<unsigned int>(v.customTlvs)); // count and elements; reading appends
//         archive.OnlyIn(1, EIPAddress());                        // dropped since: read and thrown away
//     }
//
// EArchiveWriter writes them all; EArchiveReader reads those that the archive's version has and leaves the others.

/// Where a bad version is reported: fixed text of the format, not where the code stands.
struct EArchiveSite {
    char const* file;
    int line;
    char const* function;
};

/// Refuses the archive: prints the message of the site and ends the process.
[[noreturn]] inline void FailArchive(EArchiveSite const& site)
{
    EArchiveFatal(site.file, site.line, site.function);
}

/// A field that travels as another type than it is held in.
template <class Written, class Read, class Field> struct EConvertedField {
    Field& field;
};
template <class Written, class Read = Written, class Field> EConvertedField<Written, Read, Field> As(Field& field)
{
    return {field};
}

/// A sequence: its count and its elements. What is read is appended, on purpose: a record read twice holds them twice.
template <class WrittenCount, class ReadCount, class Sequence> struct ESequenceField {
    Sequence& sequence;
};
template <class WrittenCount, class ReadCount = WrittenCount, class Sequence>
ESequenceField<WrittenCount, ReadCount, Sequence> Appended(Sequence& sequence)
{
    return {sequence};
}

/// A vector as the host's templates archive it: its count and its elements. What is read replaces the contents; an
/// archive of the wrong direction ends the process.
template <class Vector> struct EVectorField {
    Vector& vector;
};
template <class Vector> EVectorField<Vector> AsVector(Vector& vector)
{
    return {vector};
}

template <class Field> void WriteField(EArchive& archive, Field const& field)
{
    archive << field;
}
template <class Element, std::size_t count> void WriteField(EArchive& archive, std::array<Element, count> const& fields)
{
    for (Element const& field : fields) archive << field;
}
template <class Vector> void WriteField(EArchive& archive, EVectorField<Vector> const& field)
{
    SerializeOut(archive, field.vector);
}
template <class Written, class Read, class Field>
void WriteField(EArchive& archive, EConvertedField<Written, Read, Field> const& converted)
{
    archive << static_cast<Written>(converted.field);
}
template <class WrittenCount, class ReadCount, class Sequence>
void WriteField(EArchive& archive, ESequenceField<WrittenCount, ReadCount, Sequence> const& list)
{
    archive << static_cast<WrittenCount>(list.sequence.size());
    for (auto const& element : list.sequence) archive << element;
}

template <class Field> void ReadField(EArchive& archive, Field& field)
{
    archive >> field;
}
template <class Element, std::size_t count> void ReadField(EArchive& archive, std::array<Element, count>& fields)
{
    for (Element& field : fields) archive >> field;
}
template <class Vector> void ReadField(EArchive& archive, EVectorField<Vector>& field)
{
    SerializeIn(archive, field.vector);
}
template <class Written, class Read, class Field>
void ReadField(EArchive& archive, EConvertedField<Written, Read, Field>& converted)
{
    Read value{};
    archive >> value;
    converted.field = static_cast<Field>(value);
}
template <class Sequence> void ReadElements(EArchive& archive, unsigned long count, Sequence& sequence)
{
    for (; count > 0; --count) {
        typename Sequence::value_type element;
        archive >> element;
        sequence.push_back(std::move(element)); // what was read before a failure stays
    }
}
template <class WrittenCount, class ReadCount, class Sequence>
void ReadField(EArchive& archive, ESequenceField<WrittenCount, ReadCount, Sequence>& list)
{
    ReadCount count{};
    archive >> count;
    if (count > 0) ReadElements(archive, static_cast<unsigned long>(count), list.sequence); // mostly there are none
}

/// Writes a record's version, then every field of its layout.
class EArchiveWriter {
public:
    EArchiveWriter(EArchive& archive, unsigned int version) : m_archive(archive)
    {
        m_archive << static_cast<int>(version);
    }
    template <class Field> void Since(unsigned int /*version*/, Field const& field) { WriteField(m_archive, field); }
    template <class Field> void OnlyIn(unsigned int /*version*/, Field const& /*dropped*/) {}

private:
    EArchive& m_archive;
};

/// The versions a record can be read from.
struct EArchiveVersions {
    unsigned int oldest;
    unsigned int newest;
};

/// Reads a record's version, refuses one outside the range, then reads the fields which that version has.
class EArchiveReader {
public:
    EArchiveReader(EArchive& archive, EArchiveVersions const& versions, EArchiveSite const& site) : m_archive(archive)
    {
        m_archive >> m_version;
        if (m_version < versions.oldest || m_version > versions.newest) FailArchive(site);
    }
    template <class Field> void Since(unsigned int version, Field&& field)
    {
        if (m_version >= version) ReadField(m_archive, field);
    }
    /// A field that one old version had; it is never written.
    template <class Field> void OnlyIn(unsigned int version, Field&& dropped)
    {
        if (m_version == version) ReadField(m_archive, dropped);
    }
    unsigned int Version() const { return m_version; }

private:
    EArchive& m_archive;
    unsigned int m_version = 0;
};

/// Writes a record that has no version: every field of its layout.
class EUnversionedWriter {
public:
    explicit EUnversionedWriter(EArchive& archive) : m_archive(archive) {}
    template <class Field> void Each(Field const& field) { WriteField(m_archive, field); }

private:
    EArchive& m_archive;
};

/// Reads a record that has no version: every field of its layout.
class EUnversionedReader {
public:
    explicit EUnversionedReader(EArchive& archive) : m_archive(archive) {}
    template <class Field> void Each(Field&& field) { ReadField(m_archive, field); }

private:
    EArchive& m_archive;
};
