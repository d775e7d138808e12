#pragma once

#include "endSignals.hpp"
#include "fileDescriptor.hpp"

#include <cstddef>
#include <string>

#include <sys/types.h>

namespace ifcoreTool {

/// A new content of a file, beside it until it takes its place; goes away when it does not, also when SIGINT, SIGTERM
/// or SIGHUP ends the process. An existing file keeps its permissions; through a symbolic link the file that it names
/// is replaced, or made. Each operation throws ToolError.
class ReplacementFile {
public:
    explicit ReplacementFile(std::string const& path);
    ~ReplacementFile();
    ReplacementFile(ReplacementFile const&) = delete;
    ReplacementFile& operator=(ReplacementFile const&) = delete;

    void Write(void const* bytes, std::size_t count);
    /// Over what was written; what is written next still goes to the end.
    void WriteAt(std::size_t offset, void const* bytes, std::size_t count);
    void Cut(std::size_t size); ///< What was written beyond these bytes is gone.
    void TakePlace();           ///< Once. The file is then on the disk.

private:
    void ThrowWhenEnding() const;

    HeldSignals m_signals; // the first, so that they come when everything else is gone
    std::string m_goal;
    mode_t m_mode;
    std::string m_name;
    FileDescriptor m_descriptor;
    bool m_renamed = false;
};

} // namespace ifcoreTool
