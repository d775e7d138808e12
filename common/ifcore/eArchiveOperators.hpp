#pragma once

#include "eArchive.hpp"

/// `archive << record` and `archive >> record` for every record of the library: whatever has SerializeOut and
/// SerializeIn.
template <class Record>
auto operator<<(EArchive& archive, Record const& record) -> decltype(record.SerializeOut(archive), archive)
{
    record.SerializeOut(archive);
    return archive;
}
template <class Record>
auto operator>>(EArchive& archive, Record& record) -> decltype(record.SerializeIn(archive), archive)
{
    record.SerializeIn(archive);
    return archive;
}
