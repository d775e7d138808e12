#include "archiveFile.hpp"

#include "fileDescriptor.hpp"
#include "toolError.hpp"

#include <zlib.h>

#include <algorithm>
#include <cstring>

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

Bytes Header(ArchiveKind kind, std::size_t length)
{
    Bytes bytes(kMagic, kMagic + sizeof kMagic);
    AppendBigEndian(bytes, kFormatVersion, 4);
    AppendBigEndian(bytes, static_cast<unsigned long>(kind), 4);
    AppendBigEndian(bytes, length, 8);
    return bytes;
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

std::string KindNames(std::vector<ArchiveKind> const& kinds)
{
    std::string names;
    for (ArchiveKind kind : kinds)
        names += (names.empty() ? "" : " or ") + std::string(KindName(static_cast<unsigned long>(kind)));
    return names;
}

ToolError BadFile(std::string const& path, std::size_t offset, std::string const& what)
{
    return BadInput(path + ": offset " + std::to_string(offset) + ": " + what);
}

} // namespace

Bytes ReadWholeFile(std::string const& path)
{
    FileDescriptor const file = OpenToRead(path);
    Bytes bytes;
    unsigned char part[65536];
    while (std::size_t const count = ReadSome(file, part, sizeof part, path))
        bytes.insert(bytes.end(), part, part + count);
    return bytes;
}

Bytes ReadArchiveFile(std::string const& path, ArchiveKind kind)
{
    return ReadArchiveFile(path, std::vector<ArchiveKind>{kind}).second;
}

std::pair<ArchiveKind, Bytes> ReadArchiveFile(std::string const& path, std::vector<ArchiveKind> const& wanted)
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
    auto const kind = std::find_if(wanted.begin(), wanted.end(),
                                   [found](ArchiveKind one) { return static_cast<unsigned long>(one) == found; });
    if (kind == wanted.end())
        throw BadFile(path, kKindOffset,
                      std::string("the file holds ") + KindName(found) + ", wanted is " + KindNames(wanted));
    unsigned long const length = BigEndianAt(bytes, kLengthOffset, 8);
    std::size_t const present = bytes.size() - kHeaderSize - kChecksumSize;
    if (length != present)
        throw BadFile(path, kLengthOffset,
                      "the length says " + std::to_string(length) + " bytes of archive, there are " +
                          std::to_string(present));
    std::size_t const checked = kHeaderSize + present;
    if (BigEndianAt(bytes, checked, 4) != Checksum(bytes, checked))
        throw BadFile(path, checked, "the checksum does not match: the file is damaged");
    return {*kind, Bytes(bytes.begin() + kHeaderSize, bytes.begin() + static_cast<std::ptrdiff_t>(checked))};
}

void WriteArchiveFile(std::string const& path, ArchiveKind kind, Bytes const& archive)
{
    ArchiveFileWriter writer(path, kind);
    writer.Append(archive.data(), archive.size());
    writer.TakePlace();
}

ArchiveFileWriter::ArchiveFileWriter(std::string const& path, ArchiveKind kind)
    : m_file(path), m_kind(kind), m_checksum(crc32_z(0, nullptr, 0))
{
    Bytes const room(kHeaderSize); // the length is known at the end
    m_file.Write(room.data(), room.size());
}

void ArchiveFileWriter::Append(void const* bytes, std::size_t count)
{
    if (count == 0) return;
    try {
        m_file.Write(bytes, count);
    } catch (ToolError const&) {
        m_file.Cut(kHeaderSize + m_length);
        throw;
    }
    m_checksum = crc32_z(m_checksum, static_cast<unsigned char const*>(bytes), count);
    m_length += count;
}

void ArchiveFileWriter::TakePlace()
{
    Bytes const header = Header(m_kind, m_length);
    m_file.WriteAt(0, header.data(), header.size());
    unsigned long const whole =
        crc32_combine(Checksum(header, header.size()), m_checksum, static_cast<z_off_t>(m_length));
    Bytes checksum;
    AppendBigEndian(checksum, whole, kChecksumSize);
    m_file.Write(checksum.data(), checksum.size());
    m_file.TakePlace();
}

} // namespace ifcoreTool
