#pragma once

#include <string>
#include <vector>

namespace ifcoreTool {

/// What the archive in a file holds. The numbers are part of the file format.
enum class ArchiveKind : unsigned int {
    interfaceTable = 1,
    discoveredTable = 2,
    changeStream = 3,
    commandList = 4,
};

using Bytes = std::vector<unsigned char>;

/// The archive of a file of that kind. Nothing of it is given out before magic, format version, kind, length and
/// checksum are found right; otherwise throws ToolError: bad input with the file's name and the offset in it, or the
/// system's refusal.
Bytes ReadArchiveFile(std::string const& path, ArchiveKind kind);

/// Replaces the file whole, or leaves it and its folder as they were and throws ToolError. An existing file keeps its
/// permissions; through a symbolic link the file that it names is replaced.
void WriteArchiveFile(std::string const& path, ArchiveKind kind, Bytes const& archive);

/// All bytes of a file that is no more than bytes. Throws ToolError.
Bytes ReadWholeFile(std::string const& path);

} // namespace ifcoreTool
