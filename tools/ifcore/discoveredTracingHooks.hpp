#pragma once

#include "discoveredValues.hpp"

#include "ifcore/ifcore.hpp"

#include <boost/shared_ptr.hpp>

#include <functional>
#include <iosfwd>
#include <string>

namespace ifcoreTool {

/// One call of a discovered table's observer.
struct DiscoveredCall {
    char const* operation;
    unsigned int interfaceId = 0; ///< 0: the table, or a record without one.
    unsigned int neighborId = 0;  ///< 0: not about a neighbour.
    NamedChanges changes;         ///< What changes by it.
};

/// An observer that hands every call that it gets to \p told.
boost::shared_ptr<EDiscoveredTableHooks> MakeDiscoveredTracingHooks(std::function<void(DiscoveredCall const&)> told);

/// \p linkName is the name of the interface, or empty. One line:
/// "InterfaceWentUp  interface 3 (left)  up: no -> yes".
void PrintCall(std::ostream& out, DiscoveredCall const& call, std::string const& linkName);
/// The same as a JSON object in one line, of the same members always: operation, interface, link, neighbor, changes (a
/// list of name, old, new). Null stands for what there is not.
void PrintCallJson(std::ostream& out, DiscoveredCall const& call, std::string const& linkName);

} // namespace ifcoreTool
