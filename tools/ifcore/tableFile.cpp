#include "tableFile.hpp"

#include "progress.hpp"
#include "toolError.hpp"

#include "eBlob.hpp"

#include <limits>
#include <optional>

namespace ifcoreTool {

static void FillArchive(std::string const& path, Bytes const& bytes, EArchive& archive)
{
    if (bytes.size() > std::numeric_limits<unsigned int>::max()) throw BadInput(path + ": is larger than 4 GiB");
    archive.SetFromEBlob(EBlob(bytes.data(), static_cast<unsigned int>(bytes.size())), true);
    archive.SetMode(2);
}

template <class Table> static void ReadTable(std::string const& path, Bytes const& bytes, Table& table)
{
    EArchive archive;
    FillArchive(path, bytes, archive);
    try {
        archive >> table;
    } catch (EArchiveError const& error) {
        throw BadInput(path + ": " + error.what());
    }
    if (!archive.AtEnd())
        throw BadInput(path + ": archive offset " + std::to_string(archive.GetOffset()) +
                       ": the table ends here, the archive does not");
}

template <class Table> static void WriteTable(std::string const& path, ArchiveKind kind, Table const& table)
{
    EArchive archive;
    archive << table;
    EBlob const blob = archive.GetAsEBlob();
    WriteArchiveFile(path, kind, Bytes(blob.GetData(), blob.GetData() + blob.GetSize()));
}

void LoadTable(std::string const& path, EInterfaceTable& table)
{
    ReadTable(path, ReadArchiveFile(path, ArchiveKind::interfaceTable), table);
}

void LoadTable(std::string const& path, EDiscoveredTable& table)
{
    ReadTable(path, ReadArchiveFile(path, ArchiveKind::discoveredTable), table);
}

ArchiveKind LoadEitherTable(std::string const& path, EInterfaceTable& interfaces, EDiscoveredTable& discovered)
{
    auto const [kind, bytes] = ReadArchiveFile(path, {ArchiveKind::interfaceTable, ArchiveKind::discoveredTable});
    if (kind == ArchiveKind::interfaceTable)
        ReadTable(path, bytes, interfaces);
    else
        ReadTable(path, bytes, discovered);
    return kind;
}

void SaveTable(std::string const& path, EInterfaceTable const& table)
{
    WriteTable(path, ArchiveKind::interfaceTable, table);
}

void SaveTable(std::string const& path, EDiscoveredTable const& table)
{
    WriteTable(path, ArchiveKind::discoveredTable, table);
}

void LoadRawTable(std::string const& path, EInterfaceTable& table)
{
    ReadTable(path, ReadWholeFile(path), table);
}

void ApplyChangeStream(std::string const& path, EDiscoveredTable& table)
{
    EArchive archive;
    FillArchive(path, ReadArchiveFile(path, ArchiveKind::changeStream), archive);
    Progress progress("applying message", std::nullopt);
    try {
        while (!archive.AtEnd()) {
            ApplyDiscoveredTableMessage(table, archive);
            progress.Step();
        }
    } catch (EArchiveError const& error) {
        throw BadInput(path + ": " + error.what());
    }
}

} // namespace ifcoreTool
