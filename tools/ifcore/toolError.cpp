#include "toolError.hpp"

#include <system_error>

namespace ifcoreTool {

ToolError BadInput(std::string const& message)
{
    return ToolError(ExitCode::badInput, message);
}

ToolError SystemRefused(std::string const& what, int error)
{
    return ToolError(ExitCode::systemRefused, what + ": " + std::generic_category().message(error));
}

} // namespace ifcoreTool
