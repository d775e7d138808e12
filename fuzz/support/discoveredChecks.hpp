#pragma once

#include <ifcore/ifcore.hpp>

/// Adds the infos 5, with two neighbours of which the first is the default, and 7 without any.
void FillWithTwoInfos(EDiscoveredTable& table);

/// Aborts the process when a rule of tests/support/tableRules.hpp is broken, when looking for addresses or for a
/// default MAC does not give what a scan gives, or when a copy writes other bytes.
void CheckTable(EDiscoveredTable const& table);

/// The same of a table that was read and not changed since: the look-ups of the neighbours name the last one.
void CheckReadTable(EDiscoveredTable const& table);
