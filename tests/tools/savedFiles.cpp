#include "savedFiles.hpp"

#include "recordRef.hpp"
#include "tableFile.hpp"
#include "tlvBuild.hpp"

#include "eBlob.hpp"

#include <boost/make_shared.hpp>

#include <algorithm>

using namespace ifcoreTool;

namespace toolTest {

namespace {

/// The first interface has the MTU that is given.
EInterfaceTable Table(unsigned int interfaces, unsigned int mtu)
{
    EInterfaceTable table(7);
    EInterfaceItem item;
    item.EnsureEthernet();
    for (unsigned int i = 0; i < interfaces; ++i) {
        item.SetName("interface " + std::to_string(i));
        item.SetMTU(i == 0 ? mtu : 1500);
        table.AddInterfaceItem(item);
    }
    return table;
}

/// A table of one info with so many neighbours, and in the file \p stream the changes that make it of an empty one.
void MakeStream(std::string const& stream, unsigned int neighbors, bool up, EDiscoveredTable& table)
{
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    table.hooks = writer;
    EDiscoveredInfo info;
    info.SetLocalId(1);
    info.SetInterfaceUp(up);
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress("02:00:00:00:00:01"));
    for (unsigned int i = 0; i < neighbors; ++i) info.AddNeighbor(neighbor);
    table.AddInfo(info);
    EBlob const message = writer->TakeMessage();
    WriteArchiveFile(stream, ArchiveKind::changeStream,
                     Bytes(message.GetData(), message.GetData() + message.GetSize()));
    table.hooks.reset();
}

void SaveRaw(std::string const& path, EInterfaceTable const& table)
{
    EArchive archive;
    archive << table;
    EBlob const blob = archive.GetAsEBlob();
    WriteFile(path, std::string(blob.GetData(), blob.GetData() + blob.GetSize()));
}

} // namespace

bool SavedFile::HoldsEither() const
{
    std::string const bytes = FileText(path);
    return bytes == first.bytes || bytes == second.bytes;
}

SavedFiles::SavedFiles(unsigned int interfaces)
{
    EInterfaceTable const tables[] = {Table(interfaces, 1500), Table(interfaces, 9000)};
    SavedFile::Content contents[kKinds][2];
    for (unsigned int i : {0u, 1u}) {
        std::string const number = std::to_string(i);
        std::string const table = m_inputs / ("table" + number);
        std::string const raw = m_inputs / ("raw" + number);
        std::string const stream = m_inputs / ("stream" + number);
        std::string const discovered = m_inputs / ("discovered" + number);
        std::string const message = m_inputs / ("message" + number);

        SaveTable(table, tables[i]);
        SaveRaw(raw, tables[i]);
        EDiscoveredTable seen;
        MakeStream(stream, interfaces, i == 0, seen);
        SaveTable(discovered, seen);
        WriteInterfaceOperations(tables[i], InterfaceIds(tables[i]), TLVIds::ListOp::Edit, message);

        std::string const goal[kKinds] = {m_folders[0] / "t", m_folders[1] / "t", m_folders[2] / "t",
                                          m_folders[3] / "t"};
        contents[0][i] = {{"edit", goal[0], "1", "mtu", i == 0 ? "1500" : "9000"}, FileText(table)};
        contents[1][i] = {{"upgrade", raw, goal[1]}, FileText(table)};
        contents[2][i] = {{"discovered", "apply", goal[2], stream}, FileText(discovered)};
        contents[3][i] = {{"tlv", "build", table, "--all", "--edit", "-o", goal[3]}, FileText(message)};
    }
    Add("an interface table that is edited", contents[0][0], contents[0][1], {"show"});
    Add("an interface table that is upgraded", contents[1][0], contents[1][1], {"show"});
    Add("a discovered table", contents[2][0], contents[2][1], {"show"});
    Add("a message", contents[3][0], contents[3][1], {"tlv", "dump"});
}

void SavedFiles::Add(std::string const& kind, SavedFile::Content const& first, SavedFile::Content const& second,
                     std::vector<std::string> const& reading)
{
    SavedFile file{kind, m_folders[m_files.size()] / "t", first, second, reading};
    file.reading.push_back(file.path);
    WriteFile(file.path, first.bytes);
    m_files.push_back(file);
}

std::string const& SavedFiles::GetFolder(SavedFile const& file) const
{
    return m_folders[static_cast<std::size_t>(&file - m_files.data())].GetPath();
}

std::vector<std::string> SavedFiles::GetOthers(SavedFile const& file) const
{
    std::vector<std::string> names = m_folders[static_cast<std::size_t>(&file - m_files.data())].GetNames();
    names.erase(std::remove(names.begin(), names.end(), "t"), names.end());
    return names;
}

} // namespace toolTest
