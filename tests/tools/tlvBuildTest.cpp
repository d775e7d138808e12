#include "tlvBuild.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

using namespace ifcoreTool;
namespace ListOp = TLVIds::ListOp;
using toolTest::FileText;
using toolTest::ScratchFolder;

namespace {

EInterfaceTable Sample()
{
    EInterfaceTable table(7);
    EInterfaceItem item;
    FillSample(item);
    table.EInterfaceItemList::AddItem(5, item);
    table.EInterfaceItemList::AddItem(8);
    return table;
}

/// What the library builds.
std::string Built(EInterfaceTable const& table, TLVIds::TLVId const& operation, unsigned int id)
{
    Protocol::EBytes bytes;
    Protocol::AppendInterfaceOpTLV(bytes, operation, *table.GetInterfaceItem(id));
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

TEST(TlvBuild, WritesTheOperationOfEachInterfaceOneBehindTheOther)
{
    EInterfaceTable const table = Sample();
    ScratchFolder const folder;
    std::string const file = folder / "m";
    WriteInterfaceOperations(table, {5}, ListOp::Edit, file);
    EXPECT_EQ(Built(table, ListOp::Edit, 5), FileText(file));
    WriteInterfaceOperations(table, {5, 8}, ListOp::Add, file);
    EXPECT_EQ(Built(table, ListOp::Add, 5) + Built(table, ListOp::Add, 8), FileText(file));
    WriteInterfaceOperations(table, {}, ListOp::Add, file);
    EXPECT_EQ("", FileText(file));
}

TEST(TlvBuild, ReplacesTheFileWholeOrNotAtAll)
{
    ScratchFolder const folder;
    toolTest::WriteFile(folder / "old", "old");
    ASSERT_EQ(0, symlink((folder / "old").c_str(), (folder / "link").c_str()));
    WriteInterfaceOperations(Sample(), {8}, ListOp::Add, folder / "link");
    EXPECT_EQ(Built(Sample(), ListOp::Add, 8), FileText(folder / "old"));
    EXPECT_EQ((std::vector<std::string>{"link", "old"}), folder.GetNames());
    EXPECT_THROW(WriteInterfaceOperations(Sample(), {8}, ListOp::Add, folder.GetPath()), ToolError);
    EXPECT_THROW(WriteInterfaceOperations(Sample(), {8}, ListOp::Add, folder / "none/m"), ToolError);
    EXPECT_EQ((std::vector<std::string>{"link", "old"}), folder.GetNames());
}
