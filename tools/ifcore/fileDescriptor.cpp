#include "fileDescriptor.hpp"

#include "toolError.hpp"

#include <cerrno>

#include <fcntl.h>

namespace ifcoreTool {

FileDescriptor OpenToRead(std::string const& path)
{
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) throw SystemRefused("reading " + path, errno);
    return file;
}

std::size_t ReadSome(FileDescriptor const& file, unsigned char* bytes, std::size_t most, std::string const& path)
{
    for (;;) {
        ssize_t const count = read(file.Get(), bytes, most);
        if (count >= 0) return static_cast<std::size_t>(count);
        if (errno != EINTR) throw SystemRefused("reading " + path, errno);
    }
}

} // namespace ifcoreTool
