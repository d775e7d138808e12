#include "tableView.hpp"

#include "editableFields.hpp"
#include "textTable.hpp"

#include <ostream>

namespace ifcoreTool {

namespace {

/// Groups of an interface's own fields that stand for data which is made when it is first set.
struct OptionalGroup {
    char const* name;
    bool (*isPresent)(EInterfaceItem const&);
};

constexpr OptionalGroup kOptionalGroups[] = {
    {"atm", [](EInterfaceItem const& item) { return item.GetAtmData() != nullptr; }},
    {"ppp", [](EInterfaceItem const& item) { return item.GetPppData() != nullptr; }},
    {"gre", [](EInterfaceItem const& item) { return item.GetGreData() != nullptr; }},
    {"routed", [](EInterfaceItem const& item) { return item.GetRoutedData() != nullptr; }},
};

std::string GroupOf(std::string const& name)
{
    return name.substr(0, name.find('.'));
}

/// False for a field of data that this interface does not have.
bool IsPresent(EInterfaceItem const& item, EditableField const& field)
{
    for (OptionalGroup const& group : kOptionalGroups)
        if (GroupOf(field.name) == group.name) return group.isPresent(item);
    return true;
}

std::string ValueText(EditableField const& field, RecordRef const& record)
{
    return Printable(FieldText(field, field.read(record)));
}

void AddFieldRow(TextTable& text, EditableField const& field, std::string const& name, RecordRef const& record)
{
    text.AddRow({name, ValueText(field, record) + (*field.unit ? " " : "") + field.unit});
}

void AddRecordRows(TextTable& text, RecordKind kind, RecordRef const& record)
{
    for (EditableField const& field : AllFields())
        if (field.record == kind) AddFieldRow(text, field, field.GetFullName(), record);
}

void InsertFields(Json& object, RecordKind kind, RecordRef const& record)
{
    for (EditableField const& field : AllFields())
        if (field.record == kind) InsertMember(object, field.name, FieldJson(field, field.read(record)));
}

std::string GroupName(RecordKind kind)
{
    std::string const prefix = ShapeOf(kind).prefix;
    return prefix.substr(0, prefix.size() - 1);
}

Json InterfaceJson(EInterfaceItem const& item)
{
    Json json = Json::object();
    InsertFields(json, RecordKind::interface, &item);
    for (OptionalGroup const& group : kOptionalGroups) json[group.name]["present"] = group.isPresent(item);
    for (RecordKind kind : kOwnedKinds) {
        Json& group = json[GroupName(kind)];
        if (ShapeOf(kind).isOptional) group["present"] = HasRecord(item, kind);
        InsertFields(group, kind, OwnedRecord(item, kind));
    }
    Json addresses = Json::array();
    for (unsigned int id : IPv6AddressIds(item)) {
        Json address = Json::object();
        InsertFields(address, RecordKind::ipv6, item.GetIPv6AddressItemList().GetItem(id));
        addresses.push_back(std::move(address));
    }
    json["ipv6"]["addresses"] = std::move(addresses);
    return json;
}

std::string IPv4Text(EIPv4AddressItem const& item)
{
    if (!item.IsEnabled()) return "-";
    return item.GetAddress().GetAsString() + "/" + std::to_string(item.GetMaskLength());
}

std::string GatewayText(EIPAddress const& gateway)
{
    return gateway.IsZero() ? "-" : gateway.GetAsString();
}

std::string IPv6Text(EInterfaceItem const& item)
{
    std::string text;
    for (unsigned int id : IPv6AddressIds(item)) {
        EIPv6AddressItem const& address = *item.GetIPv6AddressItemList().GetItem(id);
        text += (text.empty() ? "" : ",") + address.GetAddress().GetAsString() + "/" +
                std::to_string(address.GetMaskLength());
    }
    return text.empty() ? "-" : text;
}

} // namespace

void PrintOverview(std::ostream& out, EInterfaceTable const& table)
{
    TextTable text;
    text.AddRow({"ID", "NAME", "TYPE", "STATE", "MTU", "MAC", "VLAN", "IPV4", "GATEWAY", "IPV6"});
    for (unsigned int id : InterfaceIds(table)) {
        EInterfaceItem const& item = *table.GetInterfaceItem(id);
        auto const own = [&](char const* name) { return ValueText(*FindField(RecordKind::interface, name), &item); };
        text.AddRow({own("id"), own("name"), own("type"), item.IsEnabled() ? "on" : "off", own("mtu"), own("mac"),
                     own("vlan"), IPv4Text(item.GetIPv4AddressItem()),
                     GatewayText(item.GetIPv4AddressItem().GetGateway()), IPv6Text(item)});
    }
    text.Print(out);
}

void PrintInterface(std::ostream& out, EInterfaceItem const& item)
{
    out << "interface " << item.GetLocalId() << "\n";
    TextTable text;
    for (EditableField const& field : AllFields())
        if (field.record == RecordKind::interface && IsPresent(item, field))
            AddFieldRow(text, field, field.name, &item);
    AddRecordRows(text, RecordKind::ipv4, OwnedRecord(item, RecordKind::ipv4));
    for (unsigned int id : IPv6AddressIds(item))
        for (EditableField const& field : AllFields())
            if (field.record == RecordKind::ipv6)
                AddFieldRow(text, field, "ipv6." + std::to_string(id) + "." + field.name,
                            item.GetIPv6AddressItemList().GetItem(id));
    for (RecordKind kind : kOwnedKinds)
        if (kind != RecordKind::ipv4 && HasRecord(item, kind)) AddRecordRows(text, kind, OwnedRecord(item, kind));
    text.Print(out);
}

void PrintTableSettings(std::ostream& out, EInterfaceTable const& table)
{
    out << "table " << table.GetPortId() << "\n";
    TextTable text;
    AddRecordRows(text, RecordKind::table, &table);
    text.Print(out);
}

static std::string ValueDescription(EditableField const& field)
{
    std::string text;
    if (field.valueNames)
        for (ValueName const* entry = field.valueNames; entry->name; ++entry)
            text += (text.empty() ? "" : "|") + std::string(entry->name);
    else
        text = *field.range ? std::string("number, ") + field.range : field.type->description;
    return field.subId != 0 ? text : text + " (shown only)";
}

void PrintFields(std::ostream& out)
{
    TextTable text;
    text.AddRow({"FIELD", "UNIT", "VALUE"});
    for (EditableField const& field : AllFields()) {
        std::string const prefix = field.record == RecordKind::ipv6 ? "ipv6.ADDRESS-ID." : ShapeOf(field.record).prefix;
        text.AddRow({prefix + field.name, field.unit, ValueDescription(field)});
    }
    text.Print(out);
}

Json TableJson(EInterfaceTable const& table, std::vector<unsigned int> const& interfaceIds)
{
    Json json = {{"port-id", table.GetPortId()}, {"table", Json::object()}, {"interfaces", Json::array()}};
    InsertFields(json["table"], RecordKind::table, &table);
    for (unsigned int id : interfaceIds) json["interfaces"].push_back(InterfaceJson(*table.GetInterfaceItem(id)));
    return json;
}

} // namespace ifcoreTool
