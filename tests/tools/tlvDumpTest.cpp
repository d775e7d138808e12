#include "tlvDump.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;
using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;
using toolTest::ScratchFolder;

namespace {

struct Dumped {
    std::string text;
    std::string error; // without the name of the file
};

Dumped Dump(void (*print)(std::ostream&, TlvMessageInput&, TlvIdTable const&), std::string const& message,
            TlvIdTable const& ids = TlvIdTable())
{
    ScratchFolder const folder;
    toolTest::WriteFile(folder / "m", message);
    TlvMessageInput input(folder / "m");
    std::ostringstream out;
    Dumped dumped;
    try {
        print(out, input, ids);
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        dumped.error = std::string(error.what()).substr((folder / "m: ").size());
    }
    dumped.text = out.str();
    return dumped;
}

/// The lines below the heading, without the columns of offset and length.
std::string Tree(std::string const& message)
{
    std::istringstream lines(Dump(PrintTlvMessage, message).text);
    std::string tree;
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ("    OFFSET      LENGTH  TLV", line);
    while (std::getline(lines, line)) tree += (line[0] == '*' ? line : line.substr(24)) + "\n";
    return tree;
}

Json JsonOf(std::string const& message)
{
    return Json::parse(Dump(PrintTlvMessageJson, message).text);
}

std::string FullOperation()
{
    EInterfaceItem item;
    FillSample(item);
    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, ListOp::Add, item, 5);
    return std::string(message.begin(), message.end());
}

/// Offset, length and name of each TLV of a tree in JSON, and how deep it stands.
void AppendLines(Json const& tlvs, std::string const& indent, std::string& lines)
{
    for (Json const& tlv : tlvs) {
        Json const& name = tlv["built-as"].is_null() ? tlv["name"] : tlv["built-as"];
        lines += tlv["offset"].dump() + " " + tlv["length"].dump() + indent +
                 (name.is_null() ? "0" : name.get<std::string>()) + "\n";
        AppendLines(tlv["tlvs"], indent + "  ", lines);
    }
}

/// The same of the text.
std::string LinesOf(std::string const& text)
{
    std::istringstream stream(text);
    std::string lines;
    std::string line;
    std::getline(stream, line);
    while (std::getline(stream, line) && line[0] != '*') {
        std::istringstream numbers(line.substr(0, 24));
        std::string offset;
        std::string length;
        numbers >> offset >> length;
        std::size_t const begin = line.find_first_not_of(' ', 24);
        std::string name = line.substr(begin, 3) == "0* " ? line.substr(begin + 3) : line.substr(begin);
        name = name.substr(0, name.find_first_of(" *"));
        lines += offset + " " + length + std::string(begin - 24, ' ') + name + "\n";
    }
    return lines;
}

std::string const kNote =
    "* 0: the length of the enclosing TLV is stored 8 bytes wide and clears the first 4 bytes of its value\n";

} // namespace

TEST(TlvDump, ShowsAllThatIsBuiltOfAnInterface)
{
    EXPECT_EQ(toolTest::GoldenText("program/tlvDump.txt"), Dump(PrintTlvMessage, FullOperation()).text);
}

TEST(TlvDump, JsonHasTheSameTlvsAsTheText)
{
    std::string const message = FullOperation();
    std::string lines;
    AppendLines(JsonOf(message)["tlvs"], "", lines);
    EXPECT_EQ(LinesOf(Dump(PrintTlvMessage, message).text), lines);
}

TEST(TlvDump, ShowsValuesByTheirKind)
{
    struct {
        std::string tlv;
        char const* text;
        char const* json; // kind and value
    } const cases[] = {{Tlv(IFD_MTU, U32(1500)), "IFD_MTU  1500", R"("number" 1500)"},
                       {Tlv(IFD_MTU, U32(0xffffffff)), "IFD_MTU  4294967295", R"("number" 4294967295)"},
                       {Tlv(PTP_SyncInterval, U32(0xfffffffd)), "PTP_SyncInterval  -3", R"("number" -3)"},
                       {Tlv(IFD_Enabled, U32(256)), "IFD_Enabled  yes", R"("switch" true)"},
                       {Tlv(IFD_Enabled, U32(0)), "IFD_Enabled  no", R"("switch" false)"},
                       {Tlv(IFD_Type, U32(4)), "IFD_Type  gre", R"("number" "gre")"},
                       {Tlv(IFD_Type, U32(77)), "IFD_Type  77", R"("number" "77")"},
                       {Tlv(FCoE_AddressMode, U32(2)), "FCoE_AddressMode  both", R"("number" "both")"},
                       {Tlv(PTP_DelayMechanism, U32(1)), "PTP_DelayMechanism  E2E", R"("number" "E2E")"},
                       {Tlv(FCoE_DestNodeId, U32(0x10203)), "FCoE_DestNodeId  0x010203", R"("number" 66051)"},
                       {Tlv(VLAN_TAG, U32(0xb00a)), "VLAN_TAG  10:5:1", R"("vlan-tag" {"id":10,"priority":5,"cfi":1})"},
                       {Tlv(IFD_Name, ""), "IFD_Name  \"\"", R"("text" "")"},
                       {Tlv(IFD_Name, std::string("a\"\\\n\0\xc3\xa9\x1b", 8)),
                        "IFD_Name  \"a\\\"\\\\\\x0a\\x00\\xc3\\xa9\\x1b\"",
                        "\"text\" \"a\\\"\\\\\\n\\u0000\xc3\xa9\\u001b\""},
                       {Tlv(IFD_Name, "\xff"), "IFD_Name  \"\\xff\"", "\"text\" \"\xef\xbf\xbd\""}, // no UTF-8
                       {Tlv(IP4_Gateway, U32(0xC0000201)), "IP4_Gateway  192.0.2.1", R"("address" "192.0.2.1")"},
                       {Tlv(IFD_GreDestIp, std::string(15, '\0') + "\x01"), "IFD_GreDestIp  ::1", R"("address" "::1")"},
                       {Tlv(IFD_Mac, std::string("\x02\0\0\0\0\x05", 6)), "IFD_Mac  02:00:00:00:00:05",
                        R"("mac" "02:00:00:00:00:05")"},
                       {Tlv(IFD_Uid, "\x08\x07\x06\x05\x04\x03\x02\x01"), "IFD_Uid  01:02:03:04:05:06:07:08",
                        R"("uid" "01:02:03:04:05:06:07:08")"},
                       {Tlv(IFD_ConnectedViaId, ""), "IFD_ConnectedViaId  none", R"("component-id" [])"},
                       {Tlv(IFD_ConnectedViaId, U32(7) + U32(1)), "IFD_ConnectedViaId  7/1", R"("component-id" [7,1])"},
                       {Tlv(DHCP_CustomTLV_Value, "\x01\xfe"), "DHCP_CustomTLV_Value  0x01fe", R"("bytes" "01fe")"},
                       {Tlv(DHCP_CustomTLV_Value, ""), "DHCP_CustomTLV_Value", R"("bytes" "")"},
                       {Tlv(ListOp::RemoveAll), "RemoveAll", R"("none" null)"},
                       {Tlv(ListOp::RemoveAll, "x"), "RemoveAll  0x78", R"("bytes" "78")"},
                       {Tlv(ListOp::Remove, U32(7) + "more"), "Remove  item 7", R"("operation" null)"},
                       {RawTlv(4711, 2, "ab"), "4711  0x6162", R"("bytes" "6162")"},
                       {RawTlv(0, 0, ""), "0", R"("bytes" "")"},
                       // Values of another length than their kind has; a number may be longer.
                       {Tlv(IFD_MTU, U32(1500) + "x"), "IFD_MTU  1500", R"("number" 1500)"},
                       {Tlv(IFD_MTU, "abc"), "IFD_MTU  0x616263", R"("bytes" "616263")"},
                       {Tlv(IFD_Mac, "abc"), "IFD_Mac  0x616263", R"("bytes" "616263")"},
                       {Tlv(IFD_Uid, "abc"), "IFD_Uid  0x616263", R"("bytes" "616263")"},
                       {Tlv(IP4_IPAddress, "abc"), "IP4_IPAddress  0x616263", R"("bytes" "616263")"},
                       {Tlv(NPIV_ConnectedViaId, "abc"), "NPIV_ConnectedViaId  0x616263", R"("bytes" "616263")"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(std::string(c.text) + "\n", Tree(c.tlv));
        Json const json = JsonOf(c.tlv)["tlvs"][0];
        EXPECT_EQ(c.json, json["kind"].dump() + " " + json["value"].dump());
        EXPECT_EQ("", Dump(PrintTlvMessage, c.tlv).error);
    }
}

TEST(TlvDump, ShowsTheTreeWithOffsetsAndLengths)
{
    std::string const message =
        Tlv(ListOp::Edit, U32(9) + Tlv(IFD_ATMEncapsulation) +
                              Tlv(IFD_IPv6List, Tlv(ListOp::Remove, U32(1)) + Tlv(ListOp::Edit, U32(2))) + "xyz") +
        Tlv(IFD_Name, "n") + "x";
    EXPECT_EQ("    OFFSET      LENGTH  TLV\n"
              "         0          47  Edit  item 9\n"
              "        12           0    IFD_ATMEncapsulation\n"
              "        20          24    IFD_IPv6List\n"
              "        28           4      Remove  item 1\n"
              "        40           4      Edit  item 2\n"
              "        52           -    (3 bytes, too few for a TLV)\n"
              "        55           1  IFD_Name  \"n\"\n"
              "        64           -  (1 byte, too few for a TLV)\n",
              Dump(PrintTlvMessage, message).text);
    Json const json = JsonOf(message);
    EXPECT_EQ(1, json["trailing-bytes"]);
    EXPECT_EQ(Json(), json["error"]);
    ASSERT_EQ(2u, json["tlvs"].size());
    Json edit = json["tlvs"][0];
    ASSERT_EQ(2u, edit["tlvs"].size());
    EXPECT_EQ(40, edit["tlvs"][1]["tlvs"][1]["offset"]);
    edit.erase("tlvs");
    EXPECT_EQ(R"({"offset":0,"id":2,"name":"Edit","built-as":null,"reason":null,"length":47,"kind":"operation",)"
              R"("item":9,"value":null,"trailing-bytes":3})",
              edit.dump());
    EXPECT_EQ(R"({"tlvs":[],"trailing-bytes":0,"error":null})", JsonOf("").dump());
    EXPECT_EQ("", Tree(""));
}

TEST(TlvDump, AClearedIdIsTakenForTheOneThatWasThereWhenThatIsCertain)
{
    auto const level = [](TLVIds::TLVId const& id, std::string const& value) {
        return Tlv(ListOp::Edit, U32(1) + Tlv(id, value));
    };
    std::string const number = RawTlv(0, 4, U32(1));
    struct {
        std::string message;
        std::string tree;
    } const cases[] = {
        {level(IFD_DHCP, number), "Edit  item 1\n  IFD_DHCP\n    0* DHCP_Enabled  yes\n" + kNote},
        {level(IFD_DHCPv6, number), "Edit  item 1\n  IFD_DHCPv6\n    0* DHCP_Enabled  yes\n" + kNote},
        {level(IFD_DHCP, number + Tlv(DHCP_RetryCount, U32(2))),
         "Edit  item 1\n  IFD_DHCP\n    0* DHCP_ClientId  \"\\x00\\x00\\x00\\x01\"\n    DHCP_RetryCount  2\n" + kNote},
        {level(IFD_ATMEncapsulation, RawTlv(0, 0, "")), "Edit  item 1\n  IFD_ATMEncapsulation\n    0*\n" + kNote},
        {level(IFD_DCBX, RawTlv(0, 28, RawTlv(0, 20, RawTlv(0, 4, U32(3)) + Tlv(DCBX_FeatureTlv_Value)))),
         "Edit  item 1\n  IFD_DCBX\n    0* DCBX_FeatureTlvList\n      0* DCBX_FeatureTlv\n"
         "        0* DCBX_FeatureTlv_Type  3\n        DCBX_FeatureTlv_Value\n" +
             kNote},
        // No builder puts a 0 there.
        {level(IFD_VLAN, Tlv(VLAN_TAG, U32(1)) + number),
         "Edit  item 1\n  IFD_VLAN\n    VLAN_TAG  1\n    0  0x00000001\n"},
        {Tlv(ListOp::Add, U32(1) + number), "Add  item 1\n  0  0x00000001\n"},
        {number, "0  0x00000001\n"},
        {Tlv(ListOp::Remove, U32(0)), "Remove  item 0\n"},
        {Tlv(ListOp::Add, U32(0)), "Add  item 0*\n" + kNote},
        // A value that does not fit the id that was there.
        {level(IFD_VLAN, RawTlv(0, 2, "ab")), "Edit  item 1\n  IFD_VLAN\n    0* VLAN_Enabled  0x6162\n" + kNote}};
    for (auto const& c : cases) {
        EXPECT_EQ(c.tree, Tree(c.message));
        EXPECT_EQ("", Dump(PrintTlvMessage, c.message).error);
    }
    Json const cleared = JsonOf(cases[0].message)["tlvs"][0]["tlvs"][0]["tlvs"][0];
    EXPECT_EQ(R"({"offset":20,"id":0,"name":null,"built-as":"DHCP_Enabled","reason":"the length of the enclosing TLV )"
              R"(is stored 8 bytes wide and clears the first 4 bytes of its value","length":4,"kind":"switch",)"
              R"("item":null,"value":true,"tlvs":[],"trailing-bytes":0})",
              cleared.dump());
    Json const lost = JsonOf(cases[3].message)["tlvs"][0]["tlvs"][0]["tlvs"][0];
    EXPECT_EQ(Json(), lost["built-as"]);
    EXPECT_EQ("none", lost["kind"]);
    EXPECT_TRUE(lost["reason"].is_string());
}

TEST(TlvDump, AnIdInALevelThatHasNoneIsNamedButNotLookedInto)
{
    EXPECT_EQ("Edit  item 1\n  IFD_VLAN\n    IP4_MaskLength  24\n    IFD_FCoE  0x0000004b000000040000000000\n"
              "    Add  0x00000007\n",
              Tree(Tlv(ListOp::Edit, U32(1) + Tlv(IFD_VLAN, Tlv(IP4_MaskLength, U32(24)) +
                                                                Tlv(IFD_FCoE, RawTlv(75, 4, U32(0)) + '\0') +
                                                                Tlv(ListOp::Add, U32(7))))));
    // The outermost level may be of any kind: a record's own message.
    EXPECT_EQ("IFD_IPv4\n  0* IP4_Enabled  yes\n  IP4_MaskLength  24\n" + kNote,
              Tree(Tlv(IFD_IPv4, RawTlv(0, 4, U32(1)) + Tlv(IP4_MaskLength, U32(24)))));
}

TEST(TlvDump, ADamagedMessageIsShownAsFarAsItGoes)
{
    struct {
        std::string message;
        char const* tree;
        char const* error;
    } const cases[] = {
        {Tlv(ListOp::Edit, U32(1) + Tlv(IFD_IPv4, Tlv(IP4_MaskLength, "abc"))) + Tlv(ListOp::RemoveAll),
         "Edit  item 1\n  IFD_IPv4\n    IP4_MaskLength  0x616263\n",
         "Edit > IFD_IPv4 > IP4_MaskLength, byte 28: 4 bytes wanted, 3 there"},
        {Tlv(ListOp::Edit, U32(1) + RawTlv(IFD_Name.GetIndex(), 9, "abc")) + Tlv(ListOp::RemoveAll),
         "Edit  item 1\n  IFD_Name  \"abc\"\n", "Edit > IFD_Name, byte 20: its length says 9 bytes, 3 there"},
        // What the library skips is not its affair, but a length that is wrong is one of the message.
        {Tlv(ListOp::Edit, U32(1) + Tlv(IFD_FCoE, RawTlv(FCoE_MaxSize.GetIndex(), 9, "abcd"))),
         "Edit  item 1\n  IFD_FCoE\n    FCoE_MaxSize  1633837924\n",
         "Edit > IFD_FCoE > FCoE_MaxSize, byte 28: its length says 9 bytes, 4 there"},
        {Tlv(ListOp::Add, "abc"), "Add  0x616263\n", "Add, byte 8: 4 bytes wanted, 3 there"},
        {RawTlv(9999, 0xffffffff, ""), "9999\n", "9999, byte 8: its length says 4294967295 bytes, 0 there"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.error);
        EXPECT_EQ(c.tree, Tree(c.message));
        EXPECT_EQ(c.error, Dump(PrintTlvMessage, c.message).error);
        Dumped const json = Dump(PrintTlvMessageJson, c.message);
        EXPECT_EQ(c.error, json.error);
        Json const error = Json::parse(json.text)["error"];
        EXPECT_EQ(c.error, error["path"].get<std::string>() + ", byte " + error["byte"].dump() + ": " +
                               error["problem"].get<std::string>());
    }
}

TEST(TlvDump, EveryPrefixOfAMessageIsJsonWithTheSameMembers)
{
    std::string const whole = FullOperation() + Tlv(ListOp::Remove, U32(1));
    for (std::size_t size = 0; size <= whole.size(); size += size < 64 ? 1 : 41) {
        SCOPED_TRACE(size);
        Dumped const dumped = Dump(PrintTlvMessageJson, whole.substr(0, size));
        Json const json = Json::parse(dumped.text);
        EXPECT_EQ(3u, json.size());
        EXPECT_EQ(dumped.error.empty(), json["error"].is_null());
        std::vector<Json const*> left{&json["tlvs"]};
        while (!left.empty()) {
            Json const& list = *left.back();
            left.pop_back();
            for (Json const& tlv : list) {
                EXPECT_EQ(11u, tlv.size());
                left.push_back(&tlv["tlvs"]);
            }
        }
    }
}

TEST(TlvDump, NamesAreThoseOfTheSender)
{
    ScratchFolder const folder;
    toolTest::WriteFile(folder / "ids", R"({"ids": [{"number": 500, "name": "Edit"}, {"number": 2, "name": "IFD_Name"},
                                                    {"number": 1, "name": "New\u001bOne"}]})");
    EXPECT_EQ("    OFFSET      LENGTH  TLV\n"
              "         0          27  Edit  item 2\n"
              "        12           3    IFD_Name  \"abc\"\n"
              "        23           0    New?One\n"
              "        31           -    (4 bytes, too few for a TLV)\n",
              Dump(PrintTlvMessage, RawTlv(500, 27, U32(2) + RawTlv(2, 3, "abc") + RawTlv(1, 0, "") + "rest"),
                   TlvIdTable(folder / "ids"))
                  .text);
}
