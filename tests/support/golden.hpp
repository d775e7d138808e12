#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <string>

/// Bytes from hexadecimal text; white space is free and "#" starts a comment that runs to the end of the line.
std::string Bytes(std::string const& hex);

/// The bytes of an annotated file of tests/golden: written by hand from the layout, never from the code under test.
/// A line "@<name>" stands for the text of the golden file of that name, for a record within a record.
std::string Golden(std::string const& fileName);

inline EBlob BlobOf(std::string const& bytes)
{
    return EBlob(bytes.data(), static_cast<unsigned int>(bytes.size()));
}
inline std::string BytesOf(EBlob const& blob)
{
    return std::string(reinterpret_cast<char const*>(blob.GetData()), blob.GetSize());
}
/// Loads bytes and puts the archive into reading mode.
inline void Load(EArchive& archive, std::string const& bytes)
{
    archive.SetFromEBlob(BlobOf(bytes), true);
    archive.SetMode(2);
}

/// What `archive << record` writes.
template <class Record> std::string Written(Record const& record)
{
    EArchive archive;
    archive << record;
    return BytesOf(archive.GetAsEBlob());
}
/// `archive >> record`; all bytes must have been read.
template <class Record> void ReadInto(Record& record, std::string const& bytes)
{
    EArchive archive;
    Load(archive, bytes);
    archive >> record;
    EXPECT_TRUE(archive.AtEnd()) << "bytes are left over";
}
/// A fresh record read from a golden file.
template <class Record> Record Read(char const* goldenName)
{
    Record record;
    ReadInto(record, Golden(goldenName));
    return record;
}

/// What a child process left behind that ran \p body.
struct ChildResult {
    int exitStatus = -1; // -1: it did not exit by itself
    std::string output;  // standard output, whole
};
ChildResult RunInChild(std::function<void()> const& body);

/// The fatal message, to the letter.
std::string FatalArchiveMessage(std::string const& file, int line, std::string const& function);

/// Reading these bytes prints the fatal message and ends the process with status 1.
template <class Record>
void ExpectArchiveError(char const* hex, std::string const& file, int line, char const* function)
{
    ChildResult const result = RunInChild([hex] {
        Record record;
        EArchive archive;
        Load(archive, Bytes(hex));
        archive >> record;
    });
    EXPECT_EQ(1, result.exitStatus) << hex;
    EXPECT_EQ(FatalArchiveMessage(file, line, function), result.output) << hex;
}
