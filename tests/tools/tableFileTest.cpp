#include "tableFile.hpp"

#include "eBlob.hpp"
#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

using namespace ifcoreTool;
using toolTest::ScratchFolder;

namespace {

Bytes ArchiveOf(EInterfaceTable const& table)
{
    EArchive archive;
    archive << table;
    EBlob const blob = archive.GetAsEBlob();
    return Bytes(blob.GetData(), blob.GetData() + blob.GetSize());
}

EInterfaceTable Sample()
{
    EInterfaceTable table(9);
    EInterfaceItem item;
    item.SetName("lan0");
    item.SetMTU(9000);
    table.AddInterfaceItem(item);
    table.SetFCoERetryCount(3);
    return table;
}

void WriteBytes(std::string const& path, Bytes const& bytes)
{
    toolTest::WriteFile(path, std::string(bytes.begin(), bytes.end()));
}

std::string Failure(std::string const& path)
{
    EInterfaceTable table;
    try {
        LoadRawTable(path, table);
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        return error.what();
    }
    return "";
}

} // namespace

TEST(TableFile, ATableIsTheSameAfterSavingAndLoading)
{
    ScratchFolder const folder;
    SaveTable(folder / "t", Sample());
    EInterfaceTable table;
    LoadTable(folder / "t", table);
    EXPECT_EQ(9u, table.GetPortId());
    EXPECT_EQ(3u, table.GetFCoERetryCount());
    ASSERT_EQ(1u, table.size());
    EXPECT_EQ("lan0", table.GetInterfaceItem(1)->GetName());
    EXPECT_EQ(ArchiveOf(Sample()), ArchiveOf(table));
}

TEST(TableFile, ARawArchiveThatEndsEarlyIsReportedWithTheOffset)
{
    ScratchFolder const folder;
    std::string const path = folder / "raw";
    Bytes const whole = ArchiveOf(Sample());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        WriteBytes(path, Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        EXPECT_EQ(0u, Failure(path).find(path + ": archive offset "));
    }
    WriteBytes(path, whole);
    EXPECT_EQ("", Failure(path));
}

TEST(TableFile, BytesBehindTheTableAreReported)
{
    ScratchFolder const folder;
    std::string const path = folder / "raw";
    Bytes bytes = ArchiveOf(Sample());
    std::size_t const size = bytes.size();
    bytes.push_back(0);
    WriteBytes(path, bytes);
    EXPECT_EQ(path + ": archive offset " + std::to_string(size) + ": the table ends here, the archive does not",
              Failure(path));
}

TEST(TableFile, ATableOfEitherKindIsLoadedAsWhatItIs)
{
    ScratchFolder const folder;
    SaveTable(folder / "i", Sample());
    EDiscoveredTable saved;
    EDiscoveredInfo info;
    info.SetLocalId(4);
    saved.AddInfo(info);
    SaveTable(folder / "d", saved);
    EInterfaceTable interfaces;
    EDiscoveredTable discovered;
    EXPECT_EQ(ArchiveKind::discoveredTable, LoadEitherTable(folder / "d", interfaces, discovered));
    EXPECT_NE(nullptr, discovered.GetInfo(4));
    EXPECT_EQ(0u, interfaces.size());
    EXPECT_EQ(ArchiveKind::interfaceTable, LoadEitherTable(folder / "i", interfaces, discovered));
    EXPECT_EQ(1u, interfaces.size());
}

TEST(TableFile, AChangeStreamIsAppliedMessageByMessageUpToAnError)
{
    ScratchFolder const folder;
    EDiscoveredTable source;
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    source.hooks = writer;
    Bytes stream;
    for (unsigned int id : {1u, 2u}) {
        EDiscoveredInfo info;
        info.SetLocalId(id);
        source.AddInfo(info);
        EBlob const message = writer->TakeMessage();
        stream.insert(stream.end(), message.GetData(), message.GetData() + message.GetSize());
    }
    WriteArchiveFile(folder / "s", ArchiveKind::changeStream, stream);
    EDiscoveredTable table;
    ApplyChangeStream(folder / "s", table);
    EXPECT_EQ(2u, table.GetInfos().size());

    WriteArchiveFile(folder / "s", ArchiveKind::changeStream, {});
    ApplyChangeStream(folder / "s", table);
    EXPECT_EQ(2u, table.GetInfos().size());

    stream.pop_back(); // the end of the second message
    WriteArchiveFile(folder / "s", ArchiveKind::changeStream, stream);
    EDiscoveredTable partial;
    try {
        ApplyChangeStream(folder / "s", partial);
        FAIL();
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        EXPECT_EQ(0u, std::string(error.what()).find((folder / "s") + ": archive offset ")) << error.what();
    }
    EXPECT_EQ(2u, partial.GetInfos().size());
}
