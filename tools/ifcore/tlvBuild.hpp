#pragma once

#include "recordRef.hpp"

#include <string>
#include <vector>

namespace ifcoreTool {

/// Writes the operations that make these interfaces, one list level, into a file that is replaced whole, or to standard
/// output when \p file is empty. Memory is needed for one of them. Throws ToolError; for a terminal, misuse.
void WriteInterfaceOperations(EInterfaceTable const& table, std::vector<unsigned int> const& interfaceIds,
                              TLVIds::TLVId const& operation, std::string const& file);

} // namespace ifcoreTool
