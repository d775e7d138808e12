#pragma once

#include "values.hpp"

#include <iosfwd>
#include <vector>

namespace ifcoreTool {

/// One line an interface.
void PrintOverview(std::ostream& out, EInterfaceTable const& table);

/// Every field of one interface, those of absent optional records left out.
void PrintInterface(std::ostream& out, EInterfaceItem const& item);

/// Every field of the table itself.
void PrintTableSettings(std::ostream& out, EInterfaceTable const& table);

/// All fields that can be edited or shown, with type and unit.
void PrintFields(std::ostream& out);

/// The same members always: {"port-id", "table": {...}, "interfaces": [{...}]}. Fields are nested by the parts of
/// their names; `present` tells whether an interface has the record, or shows its defaults.
Json TableJson(EInterfaceTable const& table, std::vector<unsigned int> const& interfaceIds);

} // namespace ifcoreTool
