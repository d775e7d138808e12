#include "tlvIdTable.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "tlvBuilder.hpp"
#include "tlvReader.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;
using toolTest::ScratchFolder;
using toolTest::WriteFile;

namespace {

template <class Print> std::string Printed(Print print, TlvIdTable const& ids)
{
    std::ostringstream out;
    print(out, ids);
    return out.str();
}

TlvIdTable FromText(std::string const& text)
{
    ScratchFolder const folder;
    WriteFile(folder / "ids", text);
    return TlvIdTable(folder / "ids");
}

/// Behind the name of the file.
std::string Failure(std::string const& text)
{
    try {
        FromText(text);
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        std::string const message = error.what();
        return message.substr(message.find("/ids: ") + 6);
    }
    return "";
}

std::string const kThree = R"({"ids": [{"number": 3, "name": "Add"}, {"number": 0, "name": ""}, {"number": "1",
    "name": "A \" \\ \u0007"}]})";

} // namespace

TEST(TlvIdTable, IsThisBuildsOwnWithoutAFile)
{
    TlvIdTable const ids;
    std::vector<char const*> const& known = Protocol::TLVBuilder::known_tlv_table();
    ASSERT_EQ(known.size(), ids.GetNames().size());
    for (std::size_t number = 0; number < known.size(); ++number) EXPECT_EQ(known[number], ids.GetNames()[number]);
    EXPECT_EQ("", ids.GetName(0));
    EXPECT_EQ("Add", ids.GetName(1));
    EXPECT_EQ("", ids.GetName(static_cast<unsigned int>(known.size())));
    EXPECT_EQ("", ids.GetName(0xffffffff));
    EXPECT_EQ(2u, ids.GetRules(1).size()); // in the list of interfaces and in that of addresses
    EXPECT_TRUE(ids.GetRules(0).empty());
    EXPECT_TRUE(ids.GetRules(0xffffffff).empty());
}

TEST(TlvIdTable, OfASenderIsReadFromJson)
{
    TlvIdTable const ids = FromText(kThree);
    EXPECT_EQ((std::vector<std::string>{"", "A \" \\ \a", "", "Add"}), ids.GetNames());
    EXPECT_TRUE(ids.GetRules(1).empty());
    EXPECT_EQ(2u, ids.GetRules(3).size());
}

TEST(TlvIdTable, WhatIsPrintedAsJsonIsRead)
{
    TlvIdTable const own;
    EXPECT_EQ(own.GetNames(), FromText(Printed(PrintTlvIdsJson, own)).GetNames());
}

TEST(TlvIdTable, AFileThatIsNoTableIsBadInput)
{
    struct {
        char const* text;
        char const* message;
    } const cases[] = {
        {"", "this is not JSON"},
        {"[]", "this is no object with the member \"ids\""},
        {"{}", "this is no object with the member \"ids\""},
        {R"({"ids": 1})", "'1' is not a JSON list"},
        {R"({"ids": [1]})", "an id has no member \"number\""},
        {R"({"ids": [{"number": 1}]})", "an id has no member \"name\""},
        {R"({"ids": [{"number": -1, "name": "a"}]})", "'-1' is not a number from 0 to 999999"},
        {R"({"ids": [{"number": 1000000, "name": "a"}]})", "'1000000' is not a number from 0 to 999999"},
        {R"({"ids": [{"number": 1, "name": 2}]})", "'2' is not text"},
        {R"({"ids": [{"number": 1, "name": "a\u0000b"}]})", "a name has a character 0"},
        {R"({"ids": [{"number": 1, "name": "a"}, {"number": 1, "name": "b"}]})", "the number 1 is there twice"}};
    for (auto const& c : cases) EXPECT_EQ(c.message, Failure(c.text)) << c.text;
}

TEST(TlvIdTable, AFileThatIsNestedTooDeeplyIsBadInput)
{
    std::string const deep = std::string(100000, '[') + std::string(100000, ']');
    for (std::string const& text : {deep, std::string(100000, '['), R"({"ids": )" + deep + "}",
                                    R"({"ids": [{"number": )" + deep + R"(, "name": "a"}]})",
                                    R"({"ids": [{"number": 1, "name": )" + deep + "}]}"})
        EXPECT_EQ("it is nested more than 64 deep", Failure(text)) << text.substr(0, 40);
    std::string const deepest = std::string(64, '[') + "1" + std::string(64, ']');
    EXPECT_EQ("this is no object with the member \"ids\"", Failure(deepest));
    EXPECT_EQ("it is nested more than 64 deep", Failure("[" + deepest + "]"));
    std::string const inText = R"({"ids": [{"number": 1, "name": "\" \\)" + deep + R"("}]})";
    EXPECT_EQ("\" \\" + deep, FromText(inText).GetName(1));
}

TEST(TlvIdTable, IsPrintedInThreeForms)
{
    TlvIdTable const ids = FromText(kThree);
    EXPECT_EQ("NUMBER  NAME\n0       -\n1       A \" \\ ?\n2       -\n3       Add\n", Printed(PrintTlvIds, ids));
    EXPECT_EQ("-- Names of TLV ids by their numbers.\nreturn {\n    [0] = \"\",\n    [1] = \"A \\\" \\\\ \\007\",\n"
              "    [2] = \"\",\n    [3] = \"Add\",\n}\n",
              Printed(PrintTlvIdsLua, ids));
    EXPECT_EQ(R"({"ids":[{"number":0,"name":""},{"number":1,"name":"A \" \\ \u0007"},{"number":2,"name":""},)"
              R"({"number":3,"name":"Add"}]})",
              Json::parse(Printed(PrintTlvIdsJson, ids)).dump());
}

TEST(TlvIdTable, TheLibraryReadsWithTheSendersUntilItIsGone)
{
    std::vector<char const*> const before = TLVReader::external_tlv_table;
    {
        TlvIdTable const ids = FromText(kThree);
        TlvSender const sender(ids);
        ASSERT_EQ(4u, TLVReader::external_tlv_table.size());
        EXPECT_STREQ("Add", TLVReader::external_tlv_table[3]);
        EXPECT_STREQ("", TLVReader::external_tlv_table[2]);
    }
    EXPECT_EQ(before, TLVReader::external_tlv_table);
}
