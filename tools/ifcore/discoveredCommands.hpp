#pragma once

#include "toolError.hpp"

#include <optional>
#include <string>

/// The commands of discovered tables but `show`. Each throws ToolError.
namespace ifcoreTool {

struct WatchOptions {
    std::optional<std::string> networkNamespace;
    std::string recording; ///< Change-stream file to write; empty: none.
    bool json = false;
};
/// Until SIGINT, SIGTERM or SIGHUP. The recording is whole also when it throws.
void Watch(WatchOptions const& options);

struct ApplyStreamOptions {
    std::string file; ///< Made when it is not there.
    std::string stream;
    bool trace = false;
};
/// Has changed nothing when it throws.
void ApplyDiscoveredStream(ApplyStreamOptions const& options);

/// Prints the differences; ExitCode::done without any, else ExitCode::different.
ExitCode DiffDiscovered(std::string const& first, std::string const& second);

} // namespace ifcoreTool
