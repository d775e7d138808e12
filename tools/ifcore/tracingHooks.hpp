#pragma once

#include "ifcore/ifcore.hpp"

#include <boost/shared_ptr.hpp>

#include <iosfwd>

namespace ifcoreTool {

/// An observer that writes one line for every call it gets: the operation, the record, the old and the new value;
/// of a record that is replaced whole, every field that changes. \p out must live as long as the observer.
boost::shared_ptr<EInterfaceTableHooks> MakeTracingHooks(std::ostream& out);

} // namespace ifcoreTool
