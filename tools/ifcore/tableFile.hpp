#pragma once

#include "archiveFile.hpp"

#include "ifcore/ifcore.hpp"

namespace ifcoreTool {

/// Reads the table of a file into a fresh one. Throws ToolError; a version that the library does not know ends the
/// process with the library's own message.
void LoadTable(std::string const& path, EInterfaceTable& table);
void SaveTable(std::string const& path, EInterfaceTable const& table);

/// Reads a table archive that stands alone in a file, without header and checksum; in any version that the library
/// reads.
void LoadRawTable(std::string const& path, EInterfaceTable& table);

} // namespace ifcoreTool
