#pragma once

#include "tlvMessageInput.hpp"
#include "tlvWalk.hpp"

#include <iosfwd>

namespace ifcoreTool {

/// Shows a message as a tree, a line for each TLV: offset and length in bytes, name, value. An id that the builders
/// cleared is shown as 0*, followed by the id that was there when that is certain. Of a damaged message as much as can
/// be read; then throws ToolError (bad input) with the place.
void PrintTlvMessage(std::ostream& out, TlvMessageInput& message, TlvIdTable const& ids);

/// The same as JSON: {"tlvs": [...], "trailing-bytes", "error"}, where every TLV has the members "offset", "id",
/// "name", "built-as", "reason", "length", "kind", "item", "value", "tlvs" and "trailing-bytes".
void PrintTlvMessageJson(std::ostream& out, TlvMessageInput& message, TlvIdTable const& ids);

} // namespace ifcoreTool
