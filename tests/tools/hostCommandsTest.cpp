#include "hostCommands.hpp"

#include "eMultiComponentId.hpp"
#include "toolError.hpp"

#include <gtest/gtest.h>

using namespace ifcoreTool;

namespace {

using SubId = std::vector<unsigned int>;

EBlob Value()
{
    return EBlob("x", 1);
}

ESingleCommand EditOf(RecordKind record, char const* name)
{
    EInterfaceTable const table(7);
    return EditCommand(table, {FindField(record, name), 5, 2}, Value());
}

} // namespace

TEST(HostCommands, AnEditNamesTheRecordByPathAndTheFieldBySubId)
{
    struct {
        RecordKind record;
        char const* name;
        EComponentId path;
        SubId subId;
    } const cases[] = {{RecordKind::table, "fcoe.retry-count", {7}, {9}},
                       {RecordKind::interface, "mtu", {7, 1, 5}, {15}},
                       {RecordKind::ipv4, "gateway", {7, 1, 5, 6}, {1}},
                       {RecordKind::ipv6, "address", {7, 1, 5, 1, 2}, {1}},
                       {RecordKind::dhcp, "retry-count", {7, 1, 5, 24}, {8}},
                       {RecordKind::dhcpv6, "ia-id", {7, 1, 5, 26}, {1}},
                       {RecordKind::fcoe, "fip", {7, 1, 5, 31}, {9}},
                       // Those that may be missing, through the interface.
                       {RecordKind::npiv, "plogi", {7, 1, 5}, {32, 6}},
                       {RecordKind::ptp, "domain", {7, 1, 5}, {34, 7}},
                       {RecordKind::dcbx, "oui", {7, 1, 5}, {36, 2}},
                       {RecordKind::lldp, "hold-time", {7, 1, 5}, {38, 3}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        ESingleCommand const command = EditOf(c.record, c.name);
        EXPECT_EQ(7u, command.GetAction());
        EXPECT_EQ(c.path, command.GetId().GetId());
        EXPECT_EQ(SubId{}, command.GetId().GetLeaves());
        EXPECT_EQ(c.subId, command.GetEditSubId());
        EXPECT_EQ(Value(), command.GetData());
    }
}

TEST(HostCommands, TheOtherActions)
{
    EInterfaceTable const table(7);
    ESingleCommand const add = AddInterfaceCommand(table, EInterfaceItem());
    EXPECT_EQ(5u, add.GetAction());
    EXPECT_EQ((EComponentId{7, 1}), add.GetId().GetId());
    ESingleCommand const addAddress = AddIPv6AddressCommand(table, 5, EIPv6AddressItem());
    EXPECT_EQ(5u, addAddress.GetAction());
    EXPECT_EQ((EComponentId{7, 1, 5, 1}), addAddress.GetId().GetId());
    ESingleCommand const remove = RemoveCommand(InterfaceListPath(table), {3, 4});
    EXPECT_EQ(6u, remove.GetAction());
    EXPECT_EQ((EComponentId{7, 1}), remove.GetId().GetId());
    EXPECT_EQ((SubId{3, 4}), remove.GetId().GetLeaves());
    EXPECT_EQ(3u, EnableCommand(InterfacePath(table, 5), true).GetAction());
    EXPECT_EQ(4u, EnableCommand(InterfacePath(table, 5), false).GetAction());
    EXPECT_EQ((EComponentId{7, 1, 5}), EnableCommand(InterfacePath(table, 5), true).GetId().GetId());
}

TEST(HostCommands, WhatTheTableRefusesIsBadInput)
{
    EInterfaceTable table(7);
    struct {
        ESingleCommand command;
    } const cases[] = {{EnableCommand(InterfacePath(table, 1), true)},
                       {RemoveCommand(InterfaceListPath(table), {1})},
                       {EditCommand(table, {FindField(RecordKind::interface, "mtu"), 1, 0}, Value())}};
    for (auto const& c : cases) {
        try {
            Execute(table, c.command, "the work");
            ADD_FAILURE();
        } catch (ToolError const& error) {
            EXPECT_EQ(ExitCode::badInput, error.GetCode());
            EXPECT_STREQ("the work: the table refuses", error.what());
        }
    }
    EXPECT_THROW(ExecuteAdd(table, AddIPv6AddressCommand(table, 1, EIPv6AddressItem()), "the work"), ToolError);
    EXPECT_EQ(0u, table.size());
}

TEST(HostCommands, AnAddingCommandAnswersTheNewId)
{
    EInterfaceTable table(7);
    EXPECT_EQ(1u, ExecuteAdd(table, AddInterfaceCommand(table, EInterfaceItem()), ""));
    EXPECT_EQ(2u, ExecuteAdd(table, AddInterfaceCommand(table, EInterfaceItem()), ""));
    EXPECT_EQ(1u, ExecuteAdd(table, AddIPv6AddressCommand(table, 2, EIPv6AddressItem()), ""));
}

TEST(HostCommands, AFreeRecordIsEditedByTheSameFields)
{
    EInterfaceItem item;
    EditableField const& gateway = *FindField(RecordKind::ipv4, "gateway");
    EditFree(item, gateway, FieldArchive(gateway, "192.0.2.1"));
    EXPECT_EQ("192.0.2.1", item.GetIPv4AddressItem().GetGateway().GetAsString());
    EditableField const& domain = *FindField(RecordKind::ptp, "domain");
    EditFree(item, domain, FieldArchive(domain, "9"));
    EXPECT_EQ(9, item.GetPTPConfigReadOnly()->GetDomainNumber());
    EIPv6AddressItem address;
    EditableField const& prefix = *FindField(RecordKind::ipv6, "prefix-length");
    EditFree(address, prefix, FieldArchive(prefix, "48"));
    EXPECT_EQ(48u, address.GetMaskLength());
}
