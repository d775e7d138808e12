#pragma once

#include "values.hpp"

#include <iosfwd>
#include <vector>

namespace ifcoreTool {

/// One line an info, and the default MAC.
void PrintOverview(std::ostream& out, EDiscoveredTable const& table);

/// Everything of one info; a protocol that has learnt nothing is left out.
void PrintInfo(std::ostream& out, EDiscoveredInfo const& info);

/// What the table itself holds.
void PrintTableSettings(std::ostream& out, EDiscoveredTable const& table);

/// The same members always: {"table": {...}, "infos": [{..., "neighbors": [{...}], "dhcp": {...}, ...}]}. Values are
/// nested by the parts of their names.
Json TableJson(EDiscoveredTable const& table, std::vector<unsigned int> const& infoIds);

} // namespace ifcoreTool
