#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include <unistd.h>

namespace ifcoreTool {

/// Owns an open file of the system; closed when it leaves the scope.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        if (m_descriptor >= 0) ::close(m_descriptor);
    }
    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

/// Throws ToolError (the system's refusal) with \p path.
FileDescriptor OpenToRead(std::string const& path);

/// At least one byte and no more than \p most; none only at the end. Throws ToolError (the system's refusal) with
/// \p path.
std::size_t ReadSome(FileDescriptor const& file, unsigned char* bytes, std::size_t most, std::string const& path);

} // namespace ifcoreTool
