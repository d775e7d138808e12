#include "memoryFile.hpp"

#include "require.hpp"

#include <sys/mman.h>
#include <unistd.h>

MemoryFile::MemoryFile(std::vector<unsigned char> const& bytes)
    : m_descriptor(memfd_create("input", MFD_CLOEXEC)), m_path("/proc/self/fd/" + std::to_string(m_descriptor))
{
    // More than 2 GiB would take a second call.
    Require(write(m_descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
            "a file in memory can be made");
}

MemoryFile::~MemoryFile()
{
    close(m_descriptor);
}
