#include "replacementFile.hpp"

#include "toolError.hpp"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

namespace ifcoreTool {

static std::string FolderOf(std::string const& path)
{
    std::size_t const slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The file behind symbolic links, there or not.
static std::string ResolvedPath(std::string const& path)
{
    std::unique_ptr<char, void (*)(void*)> const resolved(realpath(path.c_str(), nullptr), std::free);
    if (resolved) return resolved.get();
    if (errno != ENOENT) throw SystemRefused("writing " + path, errno);
    char target[PATH_MAX];
    ssize_t const size = readlink(path.c_str(), target, sizeof target);
    if (size < 0) return path; // no link
    std::string const next(target, static_cast<std::size_t>(size));
    return ResolvedPath(next[0] == '/' ? next : FolderOf(path) + "/" + next);
}

/// Permissions of the file that is replaced, or those that a new file gets here.
static mode_t WantedMode(std::string const& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) throw BadInput(path + ": is no regular file");
        return status.st_mode & 07777;
    }
    mode_t const mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

ReplacementFile::ReplacementFile(std::string const& path)
    : m_goal(ResolvedPath(path)), m_mode(WantedMode(m_goal)), m_name(m_goal + ".XXXXXX")
{
    m_descriptor = FileDescriptor(mkostemp(m_name.data(), O_CLOEXEC));
    if (!m_descriptor.IsOpen()) throw SystemRefused("writing " + m_goal, errno);
}

ReplacementFile::~ReplacementFile()
{
    if (!m_renamed) unlink(m_name.c_str());
}

void ReplacementFile::Write(void const* bytes, std::size_t count)
{
    ThrowWhenEnding();
    auto const* const first = static_cast<unsigned char const*>(bytes);
    std::size_t done = 0;
    while (done < count) {
        ssize_t const written = write(m_descriptor.Get(), first + done, count - done);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw SystemRefused("writing " + m_goal, errno);
        done += static_cast<std::size_t>(written);
    }
}

void ReplacementFile::WriteAt(std::size_t offset, void const* bytes, std::size_t count)
{
    auto const* const first = static_cast<unsigned char const*>(bytes);
    std::size_t done = 0;
    while (done < count) {
        ssize_t const written =
            pwrite(m_descriptor.Get(), first + done, count - done, static_cast<off_t>(offset + done));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw SystemRefused("writing " + m_goal, errno);
        done += static_cast<std::size_t>(written);
    }
}

void ReplacementFile::Cut(std::size_t size)
{
    if (ftruncate(m_descriptor.Get(), static_cast<off_t>(size)) != 0 ||
        lseek(m_descriptor.Get(), static_cast<off_t>(size), SEEK_SET) < 0)
        throw SystemRefused("writing " + m_goal, errno);
}

void ReplacementFile::TakePlace()
{
    ThrowWhenEnding();
    if (fchmod(m_descriptor.Get(), m_mode) != 0) throw SystemRefused("writing " + m_goal, errno);
    if (fsync(m_descriptor.Get()) != 0) throw SystemRefused("writing " + m_goal, errno);
    ThrowWhenEnding(); // the disk may have taken long
    if (rename(m_name.c_str(), m_goal.c_str()) != 0) throw SystemRefused("replacing " + m_goal, errno);
    m_renamed = true;
    std::string const folder = FolderOf(m_goal);
    FileDescriptor const opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.IsOpen() || fsync(opened.Get()) != 0) throw SystemRefused("securing the folder " + folder, errno);
}

/// Unwinding removes the new content; then the signal ends the process.
void ReplacementFile::ThrowWhenEnding() const
{
    if (m_signals.HasCome()) throw ToolError(ExitCode::systemRefused, "writing " + m_goal + ": ended by a signal");
}

} // namespace ifcoreTool
