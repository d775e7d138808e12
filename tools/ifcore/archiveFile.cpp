#include "archiveFile.hpp"

#include "fileDescriptor.hpp"
#include "toolError.hpp"

#include <zlib.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

namespace ifcoreTool {

namespace {

constexpr unsigned char kMagic[8] = {'I', 'F', 'C', 'O', 'R', 'E', 0x1a, '\n'};
constexpr unsigned int kFormatVersion = 1;
constexpr std::size_t kVersionOffset = 8;
constexpr std::size_t kKindOffset = 12;
constexpr std::size_t kLengthOffset = 16;
constexpr std::size_t kHeaderSize = 24;
constexpr std::size_t kChecksumSize = 4;

void AppendBigEndian(Bytes& out, unsigned long value, unsigned int size)
{
    for (unsigned int i = size; i-- > 0;) out.push_back(static_cast<unsigned char>(value >> (8 * i)));
}

unsigned long BigEndianAt(Bytes const& bytes, std::size_t offset, unsigned int size)
{
    unsigned long value = 0;
    for (unsigned int i = 0; i < size; ++i) value = value << 8 | bytes[offset + i];
    return value;
}

unsigned long Checksum(Bytes const& bytes, std::size_t size)
{
    return crc32_z(0, bytes.data(), size);
}

char const* KindName(unsigned long kind)
{
    switch (kind) {
    case 1: return "an interface table";
    case 2: return "a discovered table";
    case 3: return "a change stream";
    case 4: return "a command list";
    default: return "something unknown";
    }
}

ToolError BadFile(std::string const& path, std::size_t offset, std::string const& what)
{
    return BadInput(path + ": offset " + std::to_string(offset) + ": " + what);
}

std::string FolderOf(std::string const& path)
{
    std::size_t const slash = path.find_last_of('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// The file behind symbolic links; the path itself when nothing is there yet.
std::string ResolvedPath(std::string const& path)
{
    std::unique_ptr<char, void (*)(void*)> const resolved(realpath(path.c_str(), nullptr), std::free);
    return resolved ? resolved.get() : path;
}

/// Permissions of the file that is replaced, or those that a new file gets here.
mode_t WantedMode(std::string const& path)
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

/// A file beside its goal that goes away unless it takes the goal's place.
class ReplacementFile {
public:
    explicit ReplacementFile(std::string const& goal) : m_goal(goal), m_name(goal + ".XXXXXX")
    {
        m_descriptor = FileDescriptor(mkostemp(m_name.data(), O_CLOEXEC));
        if (!m_descriptor.IsOpen()) throw SystemRefused("writing " + m_goal, errno);
    }
    ~ReplacementFile()
    {
        if (!m_renamed) unlink(m_name.c_str());
    }
    ReplacementFile(ReplacementFile const&) = delete;
    ReplacementFile& operator=(ReplacementFile const&) = delete;

    void Write(Bytes const& bytes)
    {
        std::size_t done = 0;
        while (done < bytes.size()) {
            ssize_t const written = write(m_descriptor.Get(), bytes.data() + done, bytes.size() - done);
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) throw SystemRefused("writing " + m_goal, errno);
            done += static_cast<std::size_t>(written);
        }
    }
    void TakePlace(mode_t mode)
    {
        if (fchmod(m_descriptor.Get(), mode) != 0) throw SystemRefused("writing " + m_goal, errno);
        if (fsync(m_descriptor.Get()) != 0) throw SystemRefused("writing " + m_goal, errno);
        if (rename(m_name.c_str(), m_goal.c_str()) != 0) throw SystemRefused("replacing " + m_goal, errno);
        m_renamed = true;
        std::string const folder = FolderOf(m_goal);
        FileDescriptor const opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!opened.IsOpen() || fsync(opened.Get()) != 0) throw SystemRefused("securing the folder " + folder, errno);
    }

private:
    std::string m_goal;
    std::string m_name;
    FileDescriptor m_descriptor;
    bool m_renamed = false;
};

} // namespace

Bytes ReadWholeFile(std::string const& path)
{
    FileDescriptor const file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) throw SystemRefused("reading " + path, errno);
    Bytes bytes;
    for (;;) {
        unsigned char part[65536];
        ssize_t const count = read(file.Get(), part, sizeof part);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw SystemRefused("reading " + path, errno);
        if (count == 0) return bytes;
        bytes.insert(bytes.end(), part, part + count);
    }
}

Bytes ReadArchiveFile(std::string const& path, ArchiveKind kind)
{
    Bytes const bytes = ReadWholeFile(path);
    std::size_t const compared = bytes.size() < sizeof kMagic ? bytes.size() : sizeof kMagic;
    if (bytes.empty() || std::memcmp(bytes.data(), kMagic, compared) != 0)
        throw BadFile(path, 0, "this is no ifcore file");
    if (bytes.size() < kHeaderSize + kChecksumSize) throw BadFile(path, bytes.size(), "the file ends too early");
    unsigned long const version = BigEndianAt(bytes, kVersionOffset, 4);
    if (version != kFormatVersion)
        throw BadFile(path, kVersionOffset, "format version " + std::to_string(version) + " is not known, only 1 is");
    unsigned long const found = BigEndianAt(bytes, kKindOffset, 4);
    if (found != static_cast<unsigned long>(kind))
        throw BadFile(path, kKindOffset,
                      std::string("the file holds ") + KindName(found) + ", wanted is " +
                          KindName(static_cast<unsigned long>(kind)));
    unsigned long const length = BigEndianAt(bytes, kLengthOffset, 8);
    std::size_t const present = bytes.size() - kHeaderSize - kChecksumSize;
    if (length != present)
        throw BadFile(path, kLengthOffset,
                      "the length says " + std::to_string(length) + " bytes of archive, there are " +
                          std::to_string(present));
    std::size_t const checked = kHeaderSize + present;
    if (BigEndianAt(bytes, checked, 4) != Checksum(bytes, checked))
        throw BadFile(path, checked, "the checksum does not match: the file is damaged");
    return Bytes(bytes.begin() + kHeaderSize, bytes.begin() + static_cast<std::ptrdiff_t>(checked));
}

void WriteArchiveFile(std::string const& path, ArchiveKind kind, Bytes const& archive)
{
    Bytes bytes(kMagic, kMagic + sizeof kMagic);
    AppendBigEndian(bytes, kFormatVersion, 4);
    AppendBigEndian(bytes, static_cast<unsigned long>(kind), 4);
    AppendBigEndian(bytes, archive.size(), 8);
    bytes.insert(bytes.end(), archive.begin(), archive.end());
    AppendBigEndian(bytes, Checksum(bytes, bytes.size()), 4);

    std::string const goal = ResolvedPath(path);
    mode_t const mode = WantedMode(goal);
    ReplacementFile replacement(goal);
    replacement.Write(bytes);
    replacement.TakePlace(mode);
}

} // namespace ifcoreTool
