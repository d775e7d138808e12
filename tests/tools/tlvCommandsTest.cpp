#include "tableFile.hpp"
#include "toolTestSupport.hpp"
#include "values.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

#include <pty.h>
#include <unistd.h>

using namespace ifcoreTool;
using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;
using toolTest::FileText;
using toolTest::Result;
using toolTest::RunIfcore;
using toolTest::ScratchFolder;
using toolTest::WriteFile;

namespace {

using Words = std::vector<std::string>;

/// A scratch folder with the file port.ifc of a table 7 with the interfaces 5, that has everything, and 8.
class TlvCommandsTest : public testing::Test {
protected:
    TlvCommandsTest()
    {
        EInterfaceTable table(7);
        EInterfaceItem item;
        FillSample(item);
        table.EInterfaceItemList::AddItem(5, item);
        EInterfaceItem lan;
        lan.SetName("lan0");
        table.EInterfaceItemList::AddItem(8, lan);
        SaveTable(file, table);
    }
    /// A command that must succeed without a message; its output.
    static std::string Do(Words words)
    {
        words.insert(words.begin(), "tlv");
        Result const result = RunIfcore(words);
        EXPECT_EQ(0, result.status) << testing::PrintToString(words) << "\n" << result.err;
        EXPECT_EQ("", result.err);
        return result.out;
    }
    /// A command that must fail; its message without the program's name.
    static std::string Fail(int status, Words words)
    {
        words.insert(words.begin(), "tlv");
        Result const result = RunIfcore(words);
        EXPECT_EQ(status, result.status) << testing::PrintToString(words) << "\n" << result.err;
        EXPECT_EQ(0u, result.err.find("ifcore: ")) << result.err;
        return result.err.substr(std::min<std::size_t>(8, result.err.size()));
    }
    /// The program by the shell, which redirects.
    static Result Shell(std::string const& line) { return toolTest::Run({"sh", "-c", IFCORE_PROGRAM " tlv " + line}); }

    EInterfaceTable Table() const
    {
        EInterfaceTable table;
        LoadTable(file, table);
        return table;
    }
    std::string Name(unsigned int id) const
    {
        EInterfaceTable const table = Table();
        EInterfaceItem const* const item = table.GetInterfaceItem(id);
        return item ? item->GetName() : "-";
    }
    std::string Built(TLVIds::TLVId const& operation, unsigned int id) const
    {
        Protocol::EBytes bytes;
        Protocol::AppendInterfaceOpTLV(bytes, operation, *Table().GetInterfaceItem(id));
        return std::string(bytes.begin(), bytes.end());
    }

    ScratchFolder const folder;
    std::string const file = folder / "port.ifc";
    std::string const message = folder / "message";
};

} // namespace

TEST_F(TlvCommandsTest, BuildWritesOneInterfaceOrAllToAFileOrStandardOutput)
{
    struct {
        Words words;
        std::string message;
    } const cases[] = {{{"5"}, Built(ListOp::Add, 5)},
                       {{"8", "--edit"}, Built(ListOp::Edit, 8)},
                       {{"--all"}, Built(ListOp::Add, 5) + Built(ListOp::Add, 8)},
                       {{"--all", "--edit"}, Built(ListOp::Edit, 5) + Built(ListOp::Edit, 8)}};
    std::string const before = FileText(file);
    for (auto const& c : cases) {
        Words words{"build", file};
        words.insert(words.end(), c.words.begin(), c.words.end());
        EXPECT_EQ(c.message, Do(words));
        words.insert(words.end(), {"-o", message});
        EXPECT_EQ("", Do(words));
        EXPECT_EQ(c.message, FileText(message));
    }
    EXPECT_EQ(before, FileText(file));
    EXPECT_EQ((Words{"message", "port.ifc"}), folder.GetNames());
}

TEST_F(TlvCommandsTest, BuildWritesNothingToATerminal)
{
    int master = -1;
    int terminal = -1;
    char name[64];
    ASSERT_EQ(0, openpty(&master, &terminal, name, nullptr, nullptr));
    Result const result = Shell("build " + file + " 5 >" + name);
    EXPECT_EQ(2, result.status);
    EXPECT_EQ("ifcore: a message is nothing for a terminal; use -o FILE\n", result.err);
    EXPECT_EQ("", Do({"build", file, "5", "-o", message}));
    close(terminal);
    char byte = 0;
    EXPECT_GT(1, read(master, &byte, 1)); // nothing has been written
    close(master);
}

TEST_F(TlvCommandsTest, BuildTellsWhatItCannotDo)
{
    EXPECT_EQ("there is no interface 9\n", Fail(3, {"build", file, "9", "-o", message}));
    EXPECT_EQ("interface id: 'x' is not a number from 0 to 4294967295\n", Fail(3, {"build", file, "x"}));
    EXPECT_EQ("writing " + folder.GetPath() + "/none/m: No such file or directory\n",
              Fail(4, {"build", file, "5", "-o", folder / "none/m"}));
    EXPECT_EQ(folder.GetPath() + ": is no regular file\n", Fail(3, {"build", file, "5", "-o", folder.GetPath()}));
    EXPECT_EQ((Words{"port.ifc"}), folder.GetNames());
    Result const full = Shell("build " + file + " 5 >/dev/full");
    EXPECT_EQ(4, full.status);
    EXPECT_EQ("ifcore: writing standard output failed\n", full.err);
}

TEST_F(TlvCommandsTest, ApplyChangesTheTableAndTracesIt)
{
    WriteFile(message, Tlv(ListOp::Edit, U32(8) + Tlv(IFD_Name, "wan0")) + Tlv(ListOp::Remove, U32(5)));
    EXPECT_EQ("", Do({"apply", file, message}));
    EXPECT_EQ("wan0", Name(8));
    EXPECT_EQ("-", Name(5));
    WriteFile(message, Tlv(ListOp::Edit, U32(8) + Tlv(IFD_IPv4, Tlv(IP4_Gateway, U32(0x0a000001)))));
    EXPECT_EQ("SettingIPv4Gateway  interface 8  ipv4.gateway: 0.0.0.0 -> 10.0.0.1\n",
              Do({"apply", file, message, "--trace"}));
    WriteFile(message, Tlv(ListOp::Edit, U32(8) + Tlv(IFD_Name, "again")));
    Result const piped = Shell("apply " + file + " - --trace <" + message);
    EXPECT_EQ(0, piped.status) << piped.err;
    EXPECT_EQ("SettingInterfaceName  interface 8  name: wan0 -> again\n", piped.out);
    EXPECT_EQ("again", Name(8));
    WriteFile(message, "");
    std::string const before = FileText(file);
    EXPECT_EQ("", Do({"apply", file, message}));
    EXPECT_EQ(before, FileText(file));
}

TEST_F(TlvCommandsTest, ApplySavesADamagedMessageOnlyWhenItShall)
{
    std::string const good = Tlv(ListOp::Edit, U32(8) + Tlv(IFD_Name, "wan0"));
    WriteFile(message, good + Tlv(ListOp::Edit, U32(5) + Tlv(IFD_Name, "half") +
                                                    Tlv(IFD_IPv4, RawTlv(IP4_MaskLength.GetIndex(), 4, "abc"))));
    std::string const place = ": Edit > IFD_IPv4 > IP4_MaskLength, byte 64: 4 bytes wanted, 3 there\n";
    std::string const before = FileText(file);
    EXPECT_EQ(message + place, Fail(3, {"apply", file, message}));
    EXPECT_EQ(before, FileText(file));
    Result const piped = Shell("apply " + file + " - <" + message);
    EXPECT_EQ(3, piped.status);
    EXPECT_EQ("ifcore: standard input" + place, piped.err);
    EXPECT_EQ(before, FileText(file));
    EXPECT_EQ(message + place, Fail(3, {"apply", file, message, "--keep-partial"}));
    EXPECT_EQ("wan0", Name(8));
    EXPECT_EQ("half", Name(5));
    WriteFile(message, good);
    EXPECT_EQ("", Do({"apply", file, message, "--keep-partial"}));
}

TEST_F(TlvCommandsTest, ApplyTellsWhatItCannotRead)
{
    std::string const before = FileText(file);
    EXPECT_EQ("reading " + message + ": No such file or directory\n", Fail(4, {"apply", file, message}));
    EXPECT_EQ("reading " + folder.GetPath() + "/none: No such file or directory\n",
              Fail(4, {"apply", folder / "none", file}));
    EXPECT_EQ("reading " + folder.GetPath() + ": Is a directory\n", Fail(4, {"apply", file, folder.GetPath()}));
    Result const closed = Shell("apply " + file + " - <&-");
    EXPECT_EQ(4, closed.status);
    EXPECT_EQ("ifcore: reading standard input: Bad file descriptor\n", closed.err);
    EXPECT_EQ(before, FileText(file));
}

TEST_F(TlvCommandsTest, WhatIsBuiltArrivesAsFarAsItsIdsDo)
{
    Do({"build", file, "5", "-o", message});
    std::string const other = folder / "other.ifc";
    SaveTable(other, EInterfaceTable(7));
    EXPECT_EQ("", Do({"apply", other, message}));
    EInterfaceTable table;
    LoadTable(other, table);
    ASSERT_EQ(1u, table.size());
    EInterfaceItem const* const item = table.GetInterfaceItem(0); // the id was cleared
    ASSERT_TRUE(item);
    EXPECT_EQ("eth5", item->GetName());
    EXPECT_EQ("10.0.0.5", item->GetIPv4AddressItem().GetAddress().GetAsString());
    EXPECT_FALSE(item->GetIPv4AddressItem().IsEnabled()); // so was that of its switch
}

TEST_F(TlvCommandsTest, DumpShowsAMessageAsTextOrJson)
{
    WriteFile(message, Tlv(ListOp::Edit, U32(8) + Tlv(IFD_Name, "wan0")));
    std::string const tree = "    OFFSET      LENGTH  TLV\n"
                             "         0          16  Edit  item 8\n"
                             "        12           4    IFD_Name  \"wan0\"\n";
    EXPECT_EQ(tree, Do({"dump", message}));
    EXPECT_EQ(tree, Shell("dump - <" + message).out);
    EXPECT_EQ("wan0", Json::parse(Do({"dump", message, "--json"}))["tlvs"][0]["tlvs"][0]["value"]);
    WriteFile(message, Tlv(ListOp::Edit, "abc"));
    for (Words const& words : {Words{"dump", message}, Words{"dump", message, "--json"}}) {
        EXPECT_EQ(message + ": Edit, byte 8: 4 bytes wanted, 3 there\n", Fail(3, words));
        Words all = words;
        all.insert(all.begin(), "tlv");
        EXPECT_NE("", RunIfcore(all).out);
    }
    EXPECT_EQ("reading " + folder.GetPath() + "/none: No such file or directory\n", Fail(4, {"dump", folder / "none"}));
}

TEST_F(TlvCommandsTest, IdsAreListedInThreeForms)
{
    EXPECT_EQ(0u, Do({"ids"}).find("NUMBER  NAME\n0       -\n1       Add\n2       Edit\n"));
    Json const json = Json::parse(Do({"ids", "--json"}));
    std::vector<char const*> const& known = Protocol::TLVBuilder::known_tlv_table();
    ASSERT_EQ(known.size(), json["ids"].size());
    for (std::size_t number = 0; number < known.size(); ++number) {
        EXPECT_EQ(number, json["ids"][number]["number"]);
        EXPECT_EQ(known[number], json["ids"][number]["name"]);
    }
    std::string const lua = Do({"ids", "--lua"});
    EXPECT_NE(std::string::npos, lua.find("\n    [" + std::to_string(known.size() - 1) + "] = \"VMR_L2TP\",\n}\n"));
}

TEST_F(TlvCommandsTest, IdsOfAnotherSenderAreTakenFromAFile)
{
    std::string const ids = folder / "ids";
    WriteFile(ids, R"({"ids": [{"number": 2, "name": "IFD_Name"}, {"number": 5, "name": "Edit"}]})");
    WriteFile(message, RawTlv(5, 16, U32(8) + RawTlv(2, 4, "wan0")) + RawTlv(1, 0, ""));
    EXPECT_EQ("    OFFSET      LENGTH  TLV\n"
              "         0          16  Edit  item 8\n"
              "        12           4    IFD_Name  \"wan0\"\n"
              "        24           0  1\n",
              Do({"dump", message, "--ids", ids}));
    EXPECT_EQ("", Do({"apply", file, message, "--ids", ids}));
    EXPECT_EQ("wan0", Name(8));
    WriteFile(message, Tlv(ListOp::Remove, U32(5)));
    WriteFile(ids, Do({"ids", "--json"}));
    EXPECT_EQ(Do({"dump", message}), Do({"dump", message, "--ids", ids}));
    WriteFile(ids, "?");
    std::string const before = FileText(file);
    EXPECT_EQ(ids + ": this is not JSON\n", Fail(3, {"apply", file, message, "--ids", ids}));
    EXPECT_EQ(ids + ": this is not JSON\n", Fail(3, {"dump", message, "--ids", ids}));
    EXPECT_EQ(before, FileText(file));
}

TEST_F(TlvCommandsTest, MisuseIsStatus2)
{
    Words const cases[] = {{},
                           {"nonsense"},
                           {"build"},
                           {"build", file},
                           {"build", file, "5", "8"},
                           {"build", file, "5", "--all"},
                           {"build", file, "5", "--trace"},
                           {"apply", file},
                           {"apply", file, message, "more"},
                           {"apply", file, message, "--json"},
                           {"dump"},
                           {"dump", message, "--trace"},
                           {"ids", "x"},
                           {"ids", "--json", "--lua"}};
    for (Words words : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        words.insert(words.begin(), "tlv");
        Result const result = RunIfcore(words);
        EXPECT_EQ(2, result.status);
        EXPECT_EQ("", result.out);
        EXPECT_NE("", result.err);
    }
}
