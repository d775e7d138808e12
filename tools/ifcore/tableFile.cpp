#include "tableFile.hpp"

#include "toolError.hpp"

#include "eBlob.hpp"

#include <limits>

namespace ifcoreTool {

static void ReadTable(std::string const& path, Bytes const& bytes, EInterfaceTable& table)
{
    if (bytes.size() > std::numeric_limits<unsigned int>::max()) throw BadInput(path + ": is larger than 4 GiB");
    EArchive archive;
    archive.SetFromEBlob(EBlob(bytes.data(), static_cast<unsigned int>(bytes.size())), true);
    archive.SetMode(2);
    try {
        archive >> table;
    } catch (EArchiveError const& error) {
        throw BadInput(path + ": " + error.what());
    }
    if (!archive.AtEnd())
        throw BadInput(path + ": archive offset " + std::to_string(archive.GetOffset()) +
                       ": the table ends here, the archive does not");
}

void LoadTable(std::string const& path, EInterfaceTable& table)
{
    ReadTable(path, ReadArchiveFile(path, ArchiveKind::interfaceTable), table);
}

void SaveTable(std::string const& path, EInterfaceTable const& table)
{
    EArchive archive;
    archive << table;
    EBlob const blob = archive.GetAsEBlob();
    WriteArchiveFile(path, ArchiveKind::interfaceTable, Bytes(blob.GetData(), blob.GetData() + blob.GetSize()));
}

void LoadRawTable(std::string const& path, EInterfaceTable& table)
{
    ReadTable(path, ReadWholeFile(path), table);
}

} // namespace ifcoreTool
