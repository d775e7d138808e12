#include "editableFields.hpp"

#include "toolError.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>

using namespace ifcoreTool;

namespace {

std::set<std::string> const& Operations()
{
    static std::set<std::string> const kNames = {
#define EHOOK(operation, ...) #operation,
#include "ifcore/eInterfaceTableHooks.def"
    };
    return kNames;
}

std::string Message(EditableField const& field, std::string const& text)
{
    try {
        FieldArchive(field, text);
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        return error.what();
    }
    return "";
}

} // namespace

TEST(EditableFields, EverySubIdOfEveryRecordIsReachedByOneName)
{
    struct {
        RecordKind record;
        std::set<unsigned int> missing;
        unsigned int last;
    } const cases[] = {{RecordKind::table, {0, 1}, 18},
                       {RecordKind::interface, {0, 1, 6, 24, 26, 31, 32, 34, 36, 38}, 38}, // the owned records
                       {RecordKind::ipv4, {0}, 4},
                       {RecordKind::ipv6, {0}, 2},
                       {RecordKind::dhcp, {0}, 8},
                       {RecordKind::dhcpv6, {0}, 6},
                       {RecordKind::fcoe, {0}, 27},
                       {RecordKind::npiv, {0}, 16},
                       {RecordKind::ptp, {0, 12}, 40}, // no edit reaches the delay mechanism
                       {RecordKind::dcbx, {0}, 6},
                       {RecordKind::lldp, {0}, 6}};
    for (auto const& c : cases) {
        SCOPED_TRACE(ShapeOf(c.record).prefix);
        std::multiset<unsigned int> subIds;
        for (EditableField const& field : AllFields())
            if (field.record == c.record && field.subId != 0) subIds.insert(field.subId);
        for (unsigned int subId = 0; subId <= c.last + 1; ++subId) {
            std::size_t const wanted = subId <= c.last && c.missing.count(subId) == 0 ? 1 : 0;
            EXPECT_EQ(wanted, subIds.count(subId)) << subId;
        }
    }
}

TEST(EditableFields, NamesAreUniqueAndBelongToOneField)
{
    std::set<std::string> names;
    for (EditableField const& field : AllFields()) {
        EXPECT_TRUE(names.insert(field.GetFullName()).second) << field.GetFullName();
        EXPECT_EQ(&field, FindField(field.record, field.name));
        EXPECT_EQ(field.subId == 0, field.write == nullptr) << field.GetFullName();
    }
    EXPECT_EQ(nullptr, FindField(RecordKind::ipv4, "mtu"));
}

TEST(EditableFields, EveryAnnouncingOperationBelongsToAFieldOrConcernsAWholeRecord)
{
    std::set<std::string> ofFields;
    for (EditableField const& field : AllFields()) {
        if (!*field.operation) continue;
        EXPECT_EQ(1u, Operations().count(field.operation)) << field.operation;
        EXPECT_TRUE(ofFields.insert(field.operation).second) << field.operation;
        EXPECT_EQ(&field, FieldOfOperation(field.operation));
    }
    std::set<std::string> const wholeRecords = {
        "SettingInterfaceTable", "SettingInterfaceItem",    "SettingIPv4AddressItem", "SettingIPv6AddressItem",
        "SettingDhcpProperties", "SettingDhcpv6Properties", "SettingFCoEConfig",      "SettingNPIVConfig",
        "SettingPTPConfig",      "SettingDCBXConfig",       "SettingLLDPConfig"};
    std::set<std::string> const others = {"SettingIPv4MSS"}; // nothing calls it
    for (std::string const& operation : Operations()) {
        bool const isSetting = operation.compare(0, 7, "Setting") == 0;
        bool const isOfField = isSetting && wholeRecords.count(operation) == 0 && others.count(operation) == 0;
        EXPECT_EQ(isOfField ? 1u : 0u, ofFields.count(operation)) << operation;
    }
}

TEST(EditableFields, ABadValueIsReportedWithTheFieldAndWhatIsWanted)
{
    struct {
        RecordKind record;
        char const* name;
        char const* value;
        char const* message;
    } const cases[] = {
        {RecordKind::interface, "mtu", "x", "mtu: 'x' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "mtu", "-1", "mtu: '-1' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "mtu", "4294967296", "mtu: '4294967296' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "mtu", "", "mtu: '' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "mtu", "0x", "mtu: '0x' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "mtu", "1 ", "mtu: '1 ' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "type", "tunnel", "type: 'tunnel' is not a number from -2147483648 to 2147483647"},
        {RecordKind::interface, "mac", "02:00", "mac: '02:00' is not a MAC address"},
        {RecordKind::interface, "euid", "1", "euid: '1' is not an identifier of 8 bytes joined by \":\""},
        {RecordKind::interface, "vlan", "4096", "vlan: '4096' is not a number from 0 to 4095"},
        {RecordKind::interface, "vlan", "1:8", "vlan: '8' is not a number from 0 to 7"},
        {RecordKind::interface, "vlan", "1:2:3:4", "vlan: '1:2:3:4' is not a VLAN tag ID[:PRIORITY[:CFI]]"},
        {RecordKind::interface, "gre.source", "1/x", "gre.source: 'x' is not a number from 0 to 4294967295"},
        {RecordKind::interface, "dhcp.enabled", "maybe", "dhcp.enabled: 'maybe' is not yes or no"},
        {RecordKind::ipv4, "address", "10.0.0", "ipv4.address: '10.0.0' is not an IP address"},
        {RecordKind::ptp, "log-sync-interval", "128", "ptp.log-sync-interval: '128' is not a number from -128 to 127"},
        {RecordKind::ptp, "start-offset", "9223372036854775808",
         "ptp.start-offset: '9223372036854775808' is not a number from -9223372036854775808 to 9223372036854775807"},
        {RecordKind::dcbx, "subtype", "256", "dcbx.subtype: '256' is not a number from 0 to 255"},
        {RecordKind::dhcp, "options", "{", "dhcp.options: '{' is not JSON"},
        {RecordKind::dhcp, "options", "{}", "dhcp.options: '{}' is not a JSON list"},
        {RecordKind::dhcp, "options", "[1]", "dhcp.options: '1' is not a JSON object"},
        {RecordKind::dhcp, "options", "[{\"typo\":1}]", "dhcp.options: 'typo' is no member here"},
        {RecordKind::dhcp, "options", "[{\"type\":256}]", "dhcp.options: type: '256' is not a number from 0 to 255"},
        {RecordKind::dhcp, "options", "[{\"type\":1.5}]", "dhcp.options: type: '1.5' is not a number from 0 to 255"},
        {RecordKind::dhcp, "options", "[{\"value\":\"abc\"}]",
         "dhcp.options: value: 'abc' is not hexadecimal text of whole bytes"},
        {RecordKind::lldp, "port-id", "{\"subtype\":256}", "lldp.port-id: '256' is not a number from 0 to 255"}};
    for (auto const& c : cases) {
        EditableField const* field = FindField(c.record, c.name);
        ASSERT_NE(nullptr, field) << c.name;
        EXPECT_EQ(c.message, Message(*field, c.value));
    }
    EXPECT_EQ("dhcp.options: it is nested more than 64 deep",
              Message(*FindField(RecordKind::dhcp, "options"), std::string(100000, '[') + std::string(100000, ']')));
}

TEST(EditableFields, ValuesAreTypedInSeveralForms)
{
    struct {
        RecordKind record;
        char const* name;
        char const* one;
        char const* other;
    } const cases[] = {{RecordKind::interface, "mtu", "9000", "0x2328"},
                       {RecordKind::interface, "type", "gre", "4"},
                       {RecordKind::interface, "gre.in-key", "4294967295", "0xffffffff"},
                       {RecordKind::interface, "gre.source", "none", ""},
                       {RecordKind::interface, "vlan", "100:0:0", "100"},
                       {RecordKind::interface, "vlan", "none", ""},
                       {RecordKind::interface, "mac", "02:00:00:00:00:0a", "2-0-0-0-0-A"},
                       {RecordKind::ptp, "log-sync-interval", "-3", "-0x3"},
                       {RecordKind::fcoe, "address-mode", "both", "2"}};
    for (auto const& c : cases) {
        EditableField const& field = *FindField(c.record, c.name);
        EXPECT_EQ(FieldArchive(field, c.one), FieldArchive(field, c.other)) << c.name;
    }
    for (char const* yes : {"yes", "on", "true", "1"})
        EXPECT_EQ("01", FieldArchive(*FindField(RecordKind::ptp, "clock-is-master"), yes).GetHexString());
    for (char const* no : {"no", "off", "false", "0"})
        EXPECT_EQ("00", FieldArchive(*FindField(RecordKind::ptp, "clock-is-master"), no).GetHexString());
}

TEST(EditableFields, ATooLongListIsRefused)
{
    std::string features = "[{}";
    for (int i = 0; i < 255; ++i) features += ",{}";
    EXPECT_EQ("dcbx.features: a list of 256 elements is too long",
              Message(*FindField(RecordKind::dcbx, "features"), features + "]"));
}

TEST(EditableFields, AValueWithoutANameIsShownAsNumber)
{
    EditableField const& type = *FindField(RecordKind::interface, "type");
    EXPECT_EQ("gre", FieldText(type, Json(4)));
    EXPECT_EQ("-7", FieldText(type, Json(-7)));
    EXPECT_EQ(Json("gre"), FieldJson(type, Json(4)));
    EXPECT_EQ(Json("-7"), FieldJson(type, Json(-7)));
}
