#include "networkNamespace.hpp"

#include "toolError.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sched.h>

namespace ifcoreTool {

NetworkNamespace::NetworkNamespace(std::string const& name)
{
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
        throw BadInput("'" + name + "' cannot be the name of a network namespace");
    std::string const path = "/run/netns/" + name;
    FileDescriptor const wanted(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!wanted.IsOpen() && errno == ENOENT) throw BadInput("there is no network namespace '" + name + "'");
    if (!wanted.IsOpen()) throw SystemRefused("opening " + path, errno);
    // Of the thread, not of the process: another thread may stand elsewhere.
    m_previous = FileDescriptor(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC));
    if (!m_previous.IsOpen()) throw SystemRefused("opening the own network namespace", errno);
    if (setns(wanted.Get(), CLONE_NEWNET) != 0)
        throw SystemRefused("entering the network namespace '" + name + "'", errno);
}

NetworkNamespace::~NetworkNamespace()
{
    if (setns(m_previous.Get(), CLONE_NEWNET) == 0) return;
    std::perror("returning to the own network namespace");
    std::_Exit(static_cast<int>(ExitCode::systemRefused));
}

} // namespace ifcoreTool
