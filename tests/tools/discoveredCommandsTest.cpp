#include "discoveredValues.hpp"
#include "eBlob.hpp"
#include "tableFile.hpp"
#include "toolTestSupport.hpp"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

using namespace ifcoreTool;
using toolTest::FileText;
using toolTest::Result;
using toolTest::RunIfcore;

namespace {

/// A discovered table of one interface in a file, and a change stream that adds a neighbour to it and a second
/// interface.
class DiscoveredCommands : public testing::Test {
protected:
    DiscoveredCommands()
    {
        EDiscoveredTable table;
        EDiscoveredInfo info;
        info.SetLocalId(1);
        table.AddInfo(info);
        SaveTable(file, table);
        auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
        table.hooks = writer;
        EDiscoveredNeighbor neighbor;
        neighbor.SetMac(EMACAddress("02:00:00:00:00:07"));
        neighbor.AddAddress(EIPAddress("192.0.2.7"));
        table.GetInfo(1)->AddNeighbor(neighbor);
        info.SetLocalId(2);
        table.AddInfo(info);
        EBlob const message = writer->TakeMessage();
        bytes.assign(message.GetData(), message.GetData() + message.GetSize());
        WriteArchiveFile(stream, ArchiveKind::changeStream, bytes);
        SaveTable(goal, table);
    }

    toolTest::ScratchFolder const folder;
    std::string const file = folder / "d.ifc";
    std::string const goal = folder / "goal.ifc";
    std::string const stream = folder / "s.ifc";
    Bytes bytes;
};

} // namespace

TEST_F(DiscoveredCommands, ApplyChangesTheFileAndTracesEachCall)
{
    Result const result = RunIfcore({"discovered", "apply", file, stream, "--trace"});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("AddingNeighbor  interface 1 neighbor 1  mac: - -> 02:00:00:00:00:07, router: - -> yes, "
              "addresses: - -> 192.0.2.7\n"
              "AddingInfo  interface 2  up: - -> no\n",
              result.out);
    EXPECT_EQ(FileText(goal), FileText(file));
}

TEST_F(DiscoveredCommands, ApplyMakesAFileThatIsNotThere)
{
    EXPECT_EQ(0, RunIfcore({"discovered", "apply", folder / "new.ifc", stream}).status);
    EDiscoveredTable table;
    LoadTable(folder / "new.ifc", table);
    EXPECT_EQ(nullptr, table.GetInfo(1)); // the stream only adds a neighbour to it
    EXPECT_NE(nullptr, table.GetInfo(2));
}

TEST_F(DiscoveredCommands, AStreamThatCannotBeAppliedToItsEndChangesNothing)
{
    std::string const before = FileText(file);
    bytes.pop_back();
    WriteArchiveFile(stream, ArchiveKind::changeStream, bytes);
    Result const cut = RunIfcore({"discovered", "apply", file, stream});
    EXPECT_EQ(3, cut.status);
    EXPECT_EQ(0u, cut.err.find("ifcore: " + stream + ": archive offset ")) << cut.err;
    Result const table = RunIfcore({"discovered", "apply", file, goal});
    EXPECT_EQ(3, table.status);
    EXPECT_EQ("ifcore: " + goal + ": offset 12: the file holds a discovered table, wanted is a change stream\n",
              table.err);
    Result const missing = RunIfcore({"discovered", "apply", file, folder / "none"});
    EXPECT_EQ(4, missing.status);
    EXPECT_EQ(before, FileText(file));
    EXPECT_EQ(3, RunIfcore({"discovered", "apply", folder / "new.ifc", stream}).status);
    EXPECT_EQ((std::vector<std::string>{"d.ifc", "goal.ifc", "s.ifc"}), folder.GetNames());
}

TEST_F(DiscoveredCommands, DiffPrintsTheDifferencesAndIsStatus5WithAny)
{
    Result const equal = RunIfcore({"discovered", "diff", file, file});
    EXPECT_EQ(0, equal.status);
    EXPECT_EQ("", equal.out + equal.err);
    Result const different = RunIfcore({"discovered", "diff", file, goal});
    EXPECT_EQ(5, different.status);
    EXPECT_EQ("default-mac.interface: 0 -> 1\n"
              "default-mac.neighbor: 0 -> 1\n"
              "default-mac.mac: 00:00:00:00:00:00 -> 02:00:00:00:00:07\n"
              "next-id: 2 -> 3\n"
              "interface.1.next-neighbor-id: 1 -> 2\n"
              "interface.1.neighbor.1.present: no -> yes\n"
              "interface.1.neighbor.1.mac: - -> 02:00:00:00:00:07\n"
              "interface.1.neighbor.1.router: - -> yes\n"
              "interface.1.neighbor.1.addresses: - -> 192.0.2.7\n"
              "interface.2.present: no -> yes\n"
              "interface.2.up: - -> no\n",
              different.out);
    EXPECT_EQ("", different.err);
    EXPECT_EQ(4, RunIfcore({"discovered", "diff", file, folder / "none"}).status);
    EXPECT_EQ(3, RunIfcore({"discovered", "diff", file, stream}).status);
}

TEST_F(DiscoveredCommands, ShowKnowsBothKindsOfFiles)
{
    for (std::vector<std::string> const& more :
         {std::vector<std::string>{}, {"1"}, {"table"}, {"table", "2"}, {"--json"}, {"1", "--json"}}) {
        SCOPED_TRACE(testing::PrintToString(more));
        std::vector<std::string> plain{"show", goal};
        std::vector<std::string> discovered{"discovered", "show", goal};
        plain.insert(plain.end(), more.begin(), more.end());
        discovered.insert(discovered.end(), more.begin(), more.end());
        Result const first = RunIfcore(plain);
        Result const second = RunIfcore(discovered);
        EXPECT_EQ(0, first.status) << first.err;
        EXPECT_NE("", first.out);
        EXPECT_EQ(first.out, second.out);
    }
    Result const table = RunIfcore({"show", goal, "table"});
    EXPECT_EQ("table\n"
              "default-mac.interface  1\n"
              "default-mac.neighbor   1\n"
              "default-mac.mac        02:00:00:00:00:07\n"
              "next-id                3\n",
              table.out);
    Result const unknown = RunIfcore({"show", goal, "9"});
    EXPECT_EQ(3, unknown.status);
    EXPECT_EQ("ifcore: there is no interface 9\n", unknown.err);
    EInterfaceTable interfaces;
    SaveTable(folder / "i.ifc", interfaces);
    EXPECT_EQ(0, RunIfcore({"show", folder / "i.ifc"}).status);
    Result const other = RunIfcore({"discovered", "show", folder / "i.ifc"});
    EXPECT_EQ(3, other.status);
    EXPECT_EQ("ifcore: " + (folder / "i.ifc") +
                  ": offset 12: the file holds an interface table, wanted is a discovered table\n",
              other.err);
}

TEST_F(DiscoveredCommands, MisuseIsStatus2)
{
    for (std::vector<std::string> const& words : {std::vector<std::string>{"discovered"},
                                                  {"discovered", "nonsense"},
                                                  {"discovered", "show"},
                                                  {"discovered", "apply", file},
                                                  {"discovered", "diff", file},
                                                  {"watch", "--nonsense"},
                                                  {"watch", "x"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        EXPECT_EQ(2, RunIfcore(words).status);
    }
    Result const same = RunIfcore({"import", "-o", folder / "x", "--discovered", folder / "x"});
    EXPECT_EQ(3, same.status);
    EXPECT_EQ("ifcore: " + (folder / "x") + ": is named for both tables\n", same.err);
}
