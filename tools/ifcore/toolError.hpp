#pragma once

#include <stdexcept>
#include <string>

namespace ifcoreTool {

/// What the program ends with.
enum class ExitCode : int {
    done = 0,
    fatalArchive = 1, ///< Ended by the library itself, after its own message on standard output.
    usage = 2,
    badInput = 3,
    systemRefused = 4,
    different = 5, ///< Two files were compared and are not equal.
};

/// Carries a message for standard error and the status that the program ends with.
class ToolError : public std::runtime_error {
public:
    ToolError(ExitCode code, std::string const& message) : std::runtime_error(message), m_code(code) {}
    ExitCode GetCode() const { return m_code; }

private:
    ExitCode m_code;
};

/// A file, a path, a field or a value that cannot be used; the message says where.
ToolError BadInput(std::string const& message);

/// A system call that failed with \p error (an errno value) while doing \p what.
ToolError SystemRefused(std::string const& what, int error);

} // namespace ifcoreTool
