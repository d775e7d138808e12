#pragma once

namespace ifcoreTool {

/// The whole program: reads the command line, does the command, and returns the status to end with.
int RunProgram(int argc, char const* const* argv);

} // namespace ifcoreTool
