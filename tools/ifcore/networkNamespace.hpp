#pragma once

#include "fileDescriptor.hpp"

#include <string>

namespace ifcoreTool {

/// The calling thread is in the network namespace of that name (a file under /run/netns) as long as this lives.
/// Sockets opened meanwhile stay in it.
class NetworkNamespace {
public:
    /// Throws ToolError: bad input for a name that cannot be one or that is unknown, else the system's refusal.
    explicit NetworkNamespace(std::string const& name);
    ~NetworkNamespace(); ///< Ends the process when the way back is barred: nothing may go on in the wrong one.
    NetworkNamespace(NetworkNamespace const&) = delete;
    NetworkNamespace& operator=(NetworkNamespace const&) = delete;

private:
    FileDescriptor m_previous;
};

} // namespace ifcoreTool
