#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <gtest/gtest.h>

#include <string>

inline EBlob BytesOf(std::string const& hex)
{
    EBlob blob;
    EXPECT_TRUE(blob.SetHexString(hex)) << hex;
    return blob;
}

/// An archive that reads the bytes, given as hexadecimal text.
inline EArchive Reading(std::string const& hex)
{
    EArchive archive;
    archive.SetFromEBlob(BytesOf(hex), true);
    archive.SetMode(2);
    return archive;
}

/// The bytes of the values, one after the other, as hexadecimal text.
template <class... Values> std::string Written(Values const&... values)
{
    EArchive archive;
    static_cast<void>((archive << ... << values));
    return archive.GetAsEBlob().GetHexString();
}

/// The value that the bytes are, down to the last.
template <class Value> Value Read(std::string const& hex)
{
    EArchive archive = Reading(hex);
    Value value{};
    archive >> value;
    EXPECT_TRUE(archive.AtEnd()) << hex;
    return value;
}

/// The text of the EArchiveError with which reading into \p value ends.
template <class Value> std::string ReadError(std::string const& hex, Value& value)
{
    EArchive archive = Reading(hex);
    try {
        archive >> value;
    } catch (EArchiveError const& error) {
        return error.what();
    }
    return "no error";
}
template <class Value> std::string ReadError(std::string const& hex)
{
    Value value{};
    return ReadError(hex, value);
}

/// Every shorter beginning of the bytes is refused, and what was to be read keeps what it held.
template <class Value> void ExpectRefusedWhenTruncated(std::string const& hex, Value const& before)
{
    for (std::size_t size = 0; size < hex.size(); size += 2) {
        SCOPED_TRACE(hex.substr(0, size));
        Value value = before;
        EXPECT_EQ(0U, ReadError(hex.substr(0, size), value).find("archive offset "));
        EXPECT_TRUE(value == before);
    }
}
