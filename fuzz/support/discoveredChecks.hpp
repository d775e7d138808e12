#pragma once

#include <ifcore/ifcore.hpp>

/// Adds the infos 5, with two neighbours of which the first is the default, and 7 without any.
void FillWithTwoInfos(EDiscoveredTable& table);

/// Aborts the process unless every record of the table names its owner as parent, is found under its id and its
/// component id, looking for addresses and for a default MAC gives the same as a scan, and a copy writes the same.
void CheckTable(EDiscoveredTable const& table);

/// The same of a table that was read and not changed since: the look-ups of the neighbours name the last one.
void CheckReadTable(EDiscoveredTable const& table);
