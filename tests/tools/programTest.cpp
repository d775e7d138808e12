#include "editableFields.hpp"
#include "tableFile.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;
using toolTest::FileText;
using toolTest::Result;
using toolTest::RunIfcore;
using toolTest::ScratchFolder;

namespace {

using Words = std::vector<std::string>;

/// A scratch folder with the file port.ifc of a table 0 with two interfaces.
class ProgramTest : public testing::Test {
protected:
    ProgramTest()
    {
        EInterfaceTable table;
        EInterfaceItem lan;
        lan.SetName("lan0");
        table.AddInterfaceItem(lan);
        EInterfaceItem wan;
        wan.SetName("wan0");
        table.AddInterfaceItem(wan);
        SaveTable(file, table);
    }
    /// Runs a command on the file that must succeed without a message; its output.
    std::string Do(char const* command, Words const& words) const
    {
        Words arguments{command, file};
        arguments.insert(arguments.end(), words.begin(), words.end());
        Result const result = RunIfcore(arguments);
        EXPECT_EQ(0, result.status) << testing::PrintToString(arguments) << "\n" << result.err;
        EXPECT_EQ("", result.err);
        return result.out;
    }
    /// Runs a command that must fail, and leave the file as it was; its message without the program's name.
    std::string Fail(int status, Words const& arguments) const
    {
        std::string const before = FileText(file);
        Result const result = RunIfcore(arguments);
        EXPECT_EQ(status, result.status) << testing::PrintToString(arguments) << "\n" << result.err;
        EXPECT_EQ("", result.out);
        EXPECT_EQ(before, FileText(file));
        EXPECT_EQ(0u, result.err.find("ifcore: ")) << result.err;
        return result.err.substr(8);
    }
    Json ShowJson() const { return Json::parse(Do("show", {"--json"})); }

    ScratchFolder const folder;
    std::string const file = folder / "port.ifc";
};

/// The value that `show` prints for a field; empty when it prints none.
std::string ShownValue(std::string const& shown, std::string const& name)
{
    std::istringstream lines(shown);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, name.size() + 1, name + " ") != 0) continue;
        std::string const rest = line.substr(line.find_first_not_of(' ', name.size()));
        return rest.substr(0, rest.find("  "));
    }
    return "";
}

/// A value for a field that is not its default, and how it is shown. Fields that are not named here take one by type.
struct Sample {
    std::string typed;
    std::string shown;
};

Sample SampleFor(EditableField const& field, std::string const& current)
{
    static std::map<std::string, Sample> const kNamed = {
        {"type", {"gre", "gre"}},
        {"atm.encapsulation", {"14", "LLC_L2TP"}},
        {"ipv4.mss", {"1400", "1400"}},
        {"ipv6.gateway", {"FD00:0::7", "fd00::7"}},
        {"ipv6.address", {"2001:DB8::7", "2001:db8::7"}},
        {"dhcpv6.relay-destination", {"fd00::9", "fd00::9"}},
        {"fcoe.address-mode", {"both", "both"}},
        {"fcoe.fc-map", {"0x0a0b0c", "0x0a0b0c"}},
        {"fcoe.destination-id", {"66051", "0x010203"}},
        {"npiv.destination-id", {"66051", "0x010203"}},
        {"dcbx.subtype", {"1", "1"}}, // goes into every feature
        {"dcbx.oui", {"0x0a0b0c", "0x0a0b0c"}},
        {"table.next-id", {"77", "77"}},
        {"ptp.log-announce-interval", {"-5", "-5"}},
        {"ptp.start-offset", {"-9223372036854775808", "-9223372036854775808"}},
        {"ptp.timestamp-error", {"9223372036854775807", "9223372036854775807"}},
        {"ptp.spare.long-0", {"18446744073709551615", "18446744073709551615"}},
        {"dhcp.options",
         {R"([{"type":12,"value":"0a0b"},{"type":12}])", R"([{"type":12,"value":"0a0b"},{"type":12,"value":""}])"}},
        {"dhcpv6.options", {R"([{"type":255}])", R"([{"type":255,"value":""}])"}},
        {"fcoe.vendor-descriptors", {R"([{"value":"ff"}])", R"([{"type":0,"value":"ff"}])"}},
        {"dcbx.features",
         {R"([{"dcbx-subtype":1,"type":3,"instance-key":5,"desired-configuration":"0108","willing":false}])",
          R"([{"dcbx-subtype":1,"type":3,"subtype":0,"enabled":true,"willing":false,"error":false,"length":0,)"
          R"("oper-version":255,"max-version":255,"override-oper-version":false,"desired-configuration":"0108",)"
          R"("mismatch":false,"advertise-type":0,"feature-advertised":true,"state":0,"instance-key":5}])"}},
        {"lldp.chassis-id",
         {R"({"subtype":7,"interface-name":"x y"})",
          R"({"subtype":7,"mac":"00:00:00:00:00:00","interface-name":"x y"})"}},
        {"lldp.port-id",
         {R"({"subtype":3,"mac":"02:00:00:00:00:01"})",
          R"({"subtype":3,"mac":"02:00:00:00:00:01","interface-name":""})"}}};
    if (auto const named = kNamed.find(field.GetFullName()); named != kNamed.end()) return named->second;
    std::string const name = field.name;
    auto const is = [&](ValueType const& type) { return field.type == &type; };
    if (name == "ns-registration-options")
        return {R"({"options":3,"extra-name":"e"})",
                R"({"options":3,"symbolic-port-name":"","symbolic-node-name":"","extra-name":"e"})"};
    if (name == "ns-query-options")
        return {R"({"flag":true,"command":274,"request-object":3,"value":"0a"})",
                R"({"flag":true,"command":274,"request-object":3,"value":"0a"})"};
    if (name == "plogi-destinations")
        return {R"([{"enabled":true,"mode":1,"node-id":"0x010203","port-name":"10:00:00:00:00:00:00:01"}])",
                R"([{"enabled":true,"mode":1,"node-id":66051,"port-name":"10:00:00:00:00:00:00:01"}])"};
    if (is(ValueTypeOf<bool>::kType)) return current == "yes" ? Sample{"no", "no"} : Sample{"yes", "yes"};
    if (is(ValueTypeOf<std::string>::kType)) return {"some text", "some text"};
    if (is(ValueTypeOf<EIPAddress>::kType)) return {"192.0.2.77", "192.0.2.77"};
    if (is(ValueTypeOf<EMACAddress>::kType)) return {"02-00-00-00-00-0A", "02:00:00:00:00:0a"};
    if (is(ValueTypeOf<EUID>::kType)) return {"10:0:0:0:0:0:0:A7", "10:00:00:00:00:00:00:a7"};
    if (is(ValueTypeOf<EComponentId>::kType)) return {"0/1/2", "0/1/2"};
    if (is(ValueTypeOf<EVLANIPAddressTableItemProperties>::kType)) return {"100:3,200:0:1", "100:3,200:0:1"};
    return {"7", "7"};
}

} // namespace

TEST_F(ProgramTest, EveryFieldIsSetByACommandTracedAndShown)
{
    Do("add", {"1", "ipv6"});
    std::map<std::string, std::string> shown{{"1", Do("show", {"1"})}, {"table", Do("show", {"table"})}};
    for (EditableField const& field : AllFields()) {
        if (field.subId == 0) continue;
        SCOPED_TRACE(field.GetFullName());
        bool const ofTable = field.record == RecordKind::table;
        std::string const record = ofTable ? "table" : "1";
        std::string name = field.GetFullName();
        if (field.record == RecordKind::ipv6) name.insert(5, "1.");
        std::string before = ShownValue(shown[record], name);
        before = before.substr(0, before.find(*field.unit ? std::string(" ") + field.unit : "  "));
        Sample const sample = SampleFor(field, before);
        std::string const typedName = ofTable ? std::string(field.name) : name;
        std::string const trace = Do("edit", {record, typedName, sample.typed, "--trace"});
        std::string const unit = *field.unit ? std::string(" ") + field.unit : "";
        shown[record] = Do("show", {record});
        EXPECT_EQ(sample.shown + unit, ShownValue(shown[record], name));
        EXPECT_NE(sample.shown, before);

        std::string const subject = ofTable ? "  table 0  " : "  interface 1  ";
        if (before.empty()) { // of a record that was missing before the edit: the default
            std::size_t const arrow = trace.find(" -> ");
            std::size_t const value = trace.find(name + ": ") + name.size() + 2;
            if (arrow != std::string::npos) before = trace.substr(value, arrow - value);
        }
        if (field.announced == Announced::beforeTheStore) {
            EXPECT_EQ(field.operation + subject + name + ": " + before + " -> " + sample.shown + "\n", trace);
        } else if (field.announced == Announced::afterTheStore) {
            EXPECT_EQ(field.operation + subject + name + ": " + sample.shown + " (stored already)\n", trace);
        } else if (trace.compare(0, 8, "Enabling") == 0) { // the switches of the protocols
            EXPECT_EQ(subject + name + ": no -> yes\n", trace.substr(trace.find("  ")));
        } else {
            EXPECT_EQ("", trace);
        }
    }
}

TEST_F(ProgramTest, TheRoadOfOneEdit)
{
    EXPECT_EQ("SettingIPv4Gateway  interface 2  ipv4.gateway: 0.0.0.0 -> 10.0.0.1\n",
              Do("edit", {"2", "ipv4.gateway", "10.0.0.1", "--trace"}));
    EXPECT_EQ("10.0.0.1", ShownValue(Do("show", {"2"}), "ipv4.gateway"));
    EXPECT_EQ("0.0.0.0", ShownValue(Do("show", {"1"}), "ipv4.gateway"));
}

TEST_F(ProgramTest, AddingTellsTheNewIdAndTakesFields)
{
    EXPECT_EQ("interface 3\n", Do("add", {}));
    EXPECT_EQ("interface 4\n", Do("add", {"name=lan1", "mtu=9000", "ipv4.address=10.0.0.4", "ptp.domain=9"}));
    EXPECT_EQ("AddingInterfaceItem  interface 5\ninterface 5\n", Do("add", {"--trace"}));
    std::string const shown = Do("show", {"4"});
    EXPECT_EQ("lan1", ShownValue(shown, "name"));
    EXPECT_EQ("9000 bytes", ShownValue(shown, "mtu"));
    EXPECT_EQ("10.0.0.4", ShownValue(shown, "ipv4.address"));
    EXPECT_EQ("9", ShownValue(shown, "ptp.domain"));
    EXPECT_EQ("interface 4 ipv6 1\n", Do("add", {"4", "ipv6", "address=2001:db8::4", "prefix-length=48"}));
    EXPECT_EQ("interface 4 ipv6 2\n", Do("add", {"4", "ipv6"}));
    EXPECT_EQ("48 bits", ShownValue(Do("show", {"4"}), "ipv6.1.prefix-length"));
}

TEST_F(ProgramTest, RemovingTakesSeveralAndAllOrNothing)
{
    Do("add", {"1", "ipv6"});
    Do("add", {"1", "ipv6"});
    Do("add", {"1", "ipv6"});
    EXPECT_EQ("there is no interface 9\n", Fail(3, {"remove", file, "1", "9"}));
    EXPECT_EQ("interface 1 has no IPv6 address 9\n", Fail(3, {"remove", file, "1", "ipv6", "1", "9"}));
    EXPECT_EQ("RemovingIPv6AddressItem  interface 1  ipv6.1.address: ::/64\n"
              "RemovingIPv6AddressItem  interface 1  ipv6.3.address: ::/64\n",
              Do("remove", {"1", "ipv6", "1", "3", "--trace"}));
    EXPECT_EQ(1u, ShowJson()["interfaces"][0]["ipv6"]["addresses"].size());
    Do("remove", {"1", "2"});
    EXPECT_EQ(0u, ShowJson()["interfaces"].size());
}

TEST_F(ProgramTest, SwitchingInterfacesAndTheirIPv4Addresses)
{
    Do("enable", {"1"});
    Do("enable", {"2", "ipv4"});
    Json json = ShowJson();
    EXPECT_EQ(true, json["interfaces"][0]["enabled"]);
    EXPECT_EQ(false, json["interfaces"][0]["ipv4"]["enabled"]);
    EXPECT_EQ(false, json["interfaces"][1]["enabled"]);
    EXPECT_EQ(true, json["interfaces"][1]["ipv4"]["enabled"]);
    EXPECT_EQ("DisablingInterfaceItem  interface 1  enabled: yes -> no\n", Do("disable", {"1", "--trace"}));
    EXPECT_EQ("DisablingIPv4AddressItem  interface 2  ipv4.enabled: yes -> no\n",
              Do("disable", {"2", "ipv4", "--trace"}));
    EXPECT_EQ("", Do("disable", {"2", "ipv4", "--trace"})); // no change, no call
}

TEST_F(ProgramTest, ATextMayBeEmptyAndANumberNegative)
{
    Do("edit", {"1", "name", ""});
    EXPECT_EQ("-", ShownValue(Do("show", {"1"}), "name"));
    Do("edit", {"1", "ptp.log-sync-interval", "-3"});
    EXPECT_EQ("-3 log2 s", ShownValue(Do("show", {"1"}), "ptp.log-sync-interval"));
    Do("edit", {"1", "--trace", "name", "--", "-x"});
    EXPECT_EQ("-x", ShownValue(Do("show", {"1"}), "name"));
}

TEST_F(ProgramTest, BadPathsAndValuesAreBadInputAndChangeNothing)
{
    struct {
        Words words;
        char const* message;
    } const cases[] = {
        {{"edit", file, "9", "mtu", "1"}, "there is no interface 9\n"},
        {{"edit", file, "x", "mtu", "1"}, "interface id: 'x' is not a number from 0 to 4294967295\n"},
        {{"edit", file, "1", "mtx", "1"}, "'mtx' is no field; `ifcore fields` lists them\n"},
        {{"edit", file, "1", "ipv4.mtu", "1"}, "'ipv4.mtu' is no field; `ifcore fields` lists them\n"},
        {{"edit", file, "1", "id", "1"}, "'id' is shown only and cannot be edited\n"},
        {{"edit", file, "1", "ptp.delay-mechanism", "2"}, "'ptp.delay-mechanism' is shown only and cannot be edited\n"},
        {{"edit", file, "1", "mtu", "big"}, "mtu: 'big' is not a number from 0 to 4294967295\n"},
        {{"edit", file, "1", "ipv6.1.address", "::1"}, "interface 1 has no IPv6 address 1\n"},
        {{"edit", file, "1", "ipv6.x.address", "::1"}, "IPv6 address id: 'x' is not a number from 0 to 4294967295\n"},
        {{"edit", file, "table", "mtu", "1"}, "'table.mtu' is no field; `ifcore fields` lists them\n"},
        {{"edit", file, "table", "port-id", "1"}, "'table.port-id' is shown only and cannot be edited\n"},
        {{"add", file, "mtu"}, "'mtu' is not of the form NAME=VALUE\n"},
        {{"add", file, "=1"}, "'=1' is not of the form NAME=VALUE\n"},
        {{"add", file, "mtu=x"}, "mtu: 'x' is not a number from 0 to 4294967295\n"},
        {{"add", file, "enabled=yes"}, "'enabled' is shown only and cannot be edited\n"},
        {{"add", file, "9", "ipv6"}, "there is no interface 9\n"},
        {{"add", file, "1", "ipv6", "mtu=1"}, "'mtu' is no field; `ifcore fields` lists them\n"},
        {{"remove", file, "9"}, "there is no interface 9\n"},
        {{"remove", file, "1", "ipv6"}, "removing IPv6 addresses: the table refuses\n"},
        {{"enable", file, "9"}, "there is no interface 9\n"},
        {{"enable", file, "1", "ipv6"}, "'ipv6' cannot be switched; an interface ID or ID ipv4 can\n"},
        {{"show", file, "9"}, "there is no interface 9\n"},
        {{"show", file, "1", "x", "--json"}, "interface id: 'x' is not a number from 0 to 4294967295\n"}};
    for (auto const& c : cases) EXPECT_EQ(c.message, Fail(3, c.words)) << testing::PrintToString(c.words);
    EXPECT_EQ((Words{"port.ifc"}), folder.GetNames());
}

TEST_F(ProgramTest, MisuseIsStatus2)
{
    Words const cases[] = {{},
                           {"nonsense"},
                           {"show"},
                           {"show", file, "--xml"},
                           {"import"},
                           {"import", "-o", file, "--port", "x"},
                           {"edit", file, "1", "mtu"},
                           {"edit", file, "1", "mtu", "1", "2"},
                           {"remove", file},
                           {"enable", file},
                           {"enable", file, "1", "ipv4", "2"},
                           {"upgrade", file},
                           {"fields", "x"},
                           {"edit", file, "1", "mtu", "1", "--json"}};
    for (Words const& words : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        Result const result = RunIfcore(words);
        EXPECT_EQ(2, result.status);
        EXPECT_EQ("", result.out);
        EXPECT_NE("", result.err);
    }
}

TEST_F(ProgramTest, EveryDamagedByteOfAFileIsBadInput)
{
    std::string const whole = FileText(file);
    std::string const damagedFile = folder / "damaged";
    for (std::size_t at = 0; at < whole.size(); at += at < 32 ? 1 : 7) {
        SCOPED_TRACE(at);
        std::string damaged = whole;
        damaged[at] = static_cast<char>(~damaged[at]);
        toolTest::WriteFile(damagedFile, damaged);
        Result const result = RunIfcore({"edit", damagedFile, "1", "mtu", "1"});
        EXPECT_EQ(3, result.status);
        EXPECT_EQ("", result.out);
        EXPECT_EQ(0u, result.err.find("ifcore: " + damagedFile + ": offset ")) << result.err;
        EXPECT_EQ(damaged, FileText(damagedFile));
    }
}

TEST_F(ProgramTest, WhatTheSystemRefusesIsStatus4)
{
    std::string const missing = folder / "none";
    EXPECT_EQ("reading " + missing + ": No such file or directory\n", Fail(4, {"show", missing}));
    EXPECT_EQ("reading " + missing + ": No such file or directory\n", Fail(4, {"edit", missing, "1", "mtu", "1"}));
    EXPECT_EQ("writing " + missing + "/t: No such file or directory\n", Fail(4, {"import", "-o", missing + "/t"}));
    EXPECT_EQ("reading " + folder.GetPath() + ": Is a directory\n", Fail(4, {"show", folder.GetPath()}));
    Result const full = toolTest::Run({"sh", "-c", std::string(IFCORE_PROGRAM) + " show " + file + " > /dev/full"});
    EXPECT_EQ(4, full.status);
    EXPECT_EQ("ifcore: writing standard output failed\n", full.err);
}

TEST_F(ProgramTest, AVersionThatTheLibraryDoesNotKnowIsStatus1)
{
    std::string const raw = folder / "raw";
    toolTest::WriteFile(raw, "\x0f");
    Result const result = RunIfcore({"upgrade", raw, folder / "new"});
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("*** Exception in FILE x86_64/common/ifcore/eInterfaceTable.cpp, LINE 202:\n"
              "EInterfaceTable::SerializeIn - EArchive::SerializeError()\n",
              result.out);
    EXPECT_EQ((Words{"port.ifc", "raw"}), folder.GetNames());
}

TEST_F(ProgramTest, UpgradeReadsAnOldArchive)
{
    std::string const raw = folder / "raw";
    EArchive archive; // version 2: the VPI mask mode and the interfaces
    EInterfaceTable old;
    EInterfaceItem item;
    item.SetName("old0");
    old.AddInterfaceItem(item);
    archive << 2 << 6;
    old.EInterfaceItemList::SerializeOut(archive);
    EBlob const blob = archive.GetAsEBlob();
    toolTest::WriteFile(raw, std::string(reinterpret_cast<char const*>(blob.GetData()), blob.GetSize()));
    Result const result = RunIfcore({"upgrade", raw, file});
    EXPECT_EQ(0, result.status) << result.err;
    Json const json = ShowJson();
    EXPECT_EQ(6, json["table"]["vpi-mask-mode"]);
    ASSERT_EQ(1u, json["interfaces"].size());
    EXPECT_EQ("old0", json["interfaces"][0]["name"]);

    toolTest::WriteFile(raw, FileText(raw) + "x");
    EXPECT_EQ(raw + ": archive offset " + std::to_string(blob.GetSize()) +
                  ": the table ends here, the archive does not\n",
              Fail(3, {"upgrade", raw, file}));
    toolTest::WriteFile(raw, "");
    EXPECT_EQ(0u, Fail(3, {"upgrade", raw, file}).find(raw + ": archive offset 0: "));
}

TEST_F(ProgramTest, TellsItsVersionAndItsFields)
{
    Result const version = RunIfcore({"--version"});
    EXPECT_EQ(0, version.status);
    EXPECT_EQ("ifcore " IFCORE_VERSION "\n", version.out);
    Result const help = RunIfcore({"--help"});
    EXPECT_EQ(0, help.status);
    for (char const* command : {"import", "show", "add", "remove", "enable", "disable", "edit", "upgrade", "fields",
                                "tlv", "watch", "discovered"})
        EXPECT_NE(std::string::npos, help.out.find(std::string("\n  ") + command + " ")) << help.out;
    Result const fields = RunIfcore({"fields"});
    EXPECT_EQ(0, fields.status);
    for (EditableField const& field : AllFields())
        EXPECT_NE(std::string::npos, fields.out.find(field.name)) << field.GetFullName();
    EXPECT_NE(std::string::npos, fields.out.find("\nipv6.ADDRESS-ID.address "));
    EXPECT_NE(std::string::npos, fields.out.find("\ntable.fcoe.retry-count "));
}
