#pragma once

#include "replacementFile.hpp"

#include <cstddef>
#include <string>
#include <utility>
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

/// The same for a file of one of several kinds, with the kind that it is of.
std::pair<ArchiveKind, Bytes> ReadArchiveFile(std::string const& path, std::vector<ArchiveKind> const& wanted);

/// Replaces the file whole, or leaves it and its folder as they were and throws ToolError. An existing file keeps its
/// permissions; through a symbolic link the file that it names is replaced.
void WriteArchiveFile(std::string const& path, ArchiveKind kind, Bytes const& archive);

/// The same for an archive that is written piece by piece and never held as a whole.
class ArchiveFileWriter {
public:
    ArchiveFileWriter(std::string const& path, ArchiveKind kind);

    std::size_t GetLength() const { return m_length; } ///< Bytes of archive so far.
    /// All of the piece, or nothing of it when it throws.
    void Append(void const* bytes, std::size_t count);
    void TakePlace(); ///< Once, as the last. Without it the old file stays.

private:
    ReplacementFile m_file;
    ArchiveKind m_kind;
    std::size_t m_length = 0;     // bytes of the archive
    unsigned long m_checksum = 0; // of the archive alone
};

/// All bytes of a file that is no more than bytes. Throws ToolError.
Bytes ReadWholeFile(std::string const& path);

} // namespace ifcoreTool
