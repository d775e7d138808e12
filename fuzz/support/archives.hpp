#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"

/// What `archive << table` writes.
template <class Table> EBlob Written(Table const& table)
{
    EArchive archive;
    archive << table;
    return archive.GetAsEBlob();
}

/// An archive that reads these bytes.
inline EArchive Reading(EBlob const& bytes)
{
    EArchive archive;
    archive.SetFromEBlob(bytes, true);
    archive.SetMode(2);
    return archive;
}

/// Reads a table from bytes as a user does.
template <class Table> void ReadTable(Table& table, EBlob const& bytes)
{
    EArchive archive = Reading(bytes);
    archive >> table;
}
