#pragma once

#include "archiveFile.hpp"

#include "ifcore/ifcore.hpp"

namespace ifcoreTool {

/// Reads the table of a file into a fresh one of its kind. Throws ToolError; a version that the library does not know
/// ends the process with the library's own message.
void LoadTable(std::string const& path, EInterfaceTable& table);
void LoadTable(std::string const& path, EDiscoveredTable& table);
void SaveTable(std::string const& path, EInterfaceTable const& table);
void SaveTable(std::string const& path, EDiscoveredTable const& table);

/// The table of a file that may be of either kind, in the one that it is of; the other one is untouched. The kind is
/// interfaceTable or discoveredTable.
ArchiveKind LoadEitherTable(std::string const& path, EInterfaceTable& interfaces, EDiscoveredTable& discovered);

/// Applies the messages of a file with a change stream. What was applied before an error stays. Throws ToolError.
void ApplyChangeStream(std::string const& path, EDiscoveredTable& table);

/// Reads a table archive that stands alone in a file, without header and checksum; in any version that the library
/// reads.
void LoadRawTable(std::string const& path, EInterfaceTable& table);

} // namespace ifcoreTool
