#pragma once

#include "tlvIdTable.hpp"
#include "tlvMessageInput.hpp"

namespace ifcoreTool {

/// Applies a message of operations on the interfaces, one after the other: what the library makes of the whole, but of
/// any size. Throws ToolError that says where the message cannot be read; what comes before that is then in the table.
void ApplyTlvMessage(TlvMessageInput& message, TlvIdTable const& ids, EInterfaceTable& table);

} // namespace ifcoreTool
