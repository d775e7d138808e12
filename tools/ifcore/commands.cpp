#include "commands.hpp"

#include "discoveredValues.hpp"
#include "discoveredView.hpp"
#include "hostCommands.hpp"
#include "kernelFollower.hpp"
#include "netlinkReader.hpp"
#include "networkNamespace.hpp"
#include "tableFile.hpp"
#include "tableImporter.hpp"
#include "tableView.hpp"
#include "tlvApply.hpp"
#include "tlvBuild.hpp"
#include "tlvDump.hpp"
#include "toolError.hpp"
#include "tracingHooks.hpp"

#include <functional>
#include <iostream>

namespace ifcoreTool {

namespace {

unsigned int ParseId(std::string const& text, char const* what)
{
    unsigned int id = 0;
    try {
        FromJson(Json(text), id);
    } catch (ToolError const& error) {
        throw BadInput(std::string(what) + ": " + error.what());
    }
    return id;
}

EInterfaceItem const& RequireInterface(EInterfaceTable const& table, std::string const& text)
{
    EInterfaceItem const* item = table.GetInterfaceItem(ParseId(text, "interface id"));
    if (!item) throw BadInput("there is no interface " + text);
    return *item;
}

void RequireIPv6Address(EInterfaceItem const& item, unsigned int id)
{
    if (!item.GetIPv6AddressItem(id))
        throw BadInput("interface " + std::to_string(item.GetLocalId()) + " has no IPv6 address " + std::to_string(id));
}

EditableField const& RequireField(RecordKind record, std::string const& name, std::string const& typed)
{
    EditableField const* field = FindField(record, name);
    if (!field) throw BadInput("'" + typed + "' is no field; `ifcore fields` lists them");
    if (field->subId == 0) throw BadInput("'" + typed + "' is shown only and cannot be edited");
    return *field;
}

/// The field of an interface (its id is \p interfaceId) or of a record that it owns, by its full name.
FieldTarget InterfaceField(unsigned int interfaceId, std::string const& name)
{
    if (FindField(RecordKind::interface, name)) // first: "dhcp.enabled" is the interface's own
        return {&RequireField(RecordKind::interface, name, name), interfaceId, 0};
    for (RecordKind kind : kOwnedKinds) {
        std::string const prefix = ShapeOf(kind).prefix;
        if (name.compare(0, prefix.size(), prefix) == 0)
            return {&RequireField(kind, name.substr(prefix.size()), name), interfaceId, 0};
    }
    throw BadInput("'" + name + "' is no field; `ifcore fields` lists them");
}

/// ipv6.ADDRESS-ID.NAME; false when the name does not look like that.
bool IsIPv6Field(std::string const& name, std::string& id, std::string& field)
{
    std::string const prefix = ShapeOf(RecordKind::ipv6).prefix;
    if (name.compare(0, prefix.size(), prefix) != 0) return false;
    std::size_t const dot = name.find('.', prefix.size());
    if (dot == std::string::npos) return false;
    id = name.substr(prefix.size(), dot - prefix.size());
    field = name.substr(dot + 1);
    return true;
}

FieldTarget FindTarget(EInterfaceTable const& table, std::string const& record, std::string const& name)
{
    if (record == "table") return {&RequireField(RecordKind::table, name, "table." + name), 0, 0};
    EInterfaceItem const& item = RequireInterface(table, record);
    std::string id;
    std::string field;
    if (!IsIPv6Field(name, id, field)) return InterfaceField(item.GetLocalId(), name);
    unsigned int const ipv6Id = ParseId(id, "IPv6 address id");
    RequireIPv6Address(item, ipv6Id);
    return {&RequireField(RecordKind::ipv6, field, name), item.GetLocalId(), ipv6Id};
}

/// NAME=VALUE
std::pair<std::string, std::string> Assignment(std::string const& word)
{
    std::size_t const equals = word.find('=');
    if (equals == std::string::npos || equals == 0) throw BadInput("'" + word + "' is not of the form NAME=VALUE");
    return {word.substr(0, equals), word.substr(equals + 1)};
}

void InstallTrace(EInterfaceTable& table)
{
    table.SetHooks("trace", MakeTracingHooks(std::cout));
}

/// Loads, changes and saves. Nothing is saved when the change throws.
void Change(ChangeOptions const& options, std::function<void(EInterfaceTable&)> const& change)
{
    EInterfaceTable table;
    LoadTable(options.file, table);
    if (options.trace) InstallTrace(table);
    change(table);
    SaveTable(options.file, table);
}

EInterfaceItem MakeInterface(std::vector<std::string> const& words)
{
    EInterfaceItem item;
    for (std::string const& word : words) {
        auto const [name, value] = Assignment(word);
        EditableField const& field = *InterfaceField(0, name).field;
        EditFree(item, field, FieldArchive(field, value));
    }
    return item;
}

EIPv6AddressItem MakeIPv6Address(std::vector<std::string> const& words)
{
    EIPv6AddressItem item;
    for (std::string const& word : words) {
        auto const [name, value] = Assignment(word);
        EditableField const& field = RequireField(RecordKind::ipv6, name, name);
        EditFree(item, field, FieldArchive(field, value));
    }
    return item;
}

bool IsIPv6List(std::vector<std::string> const& words)
{
    return words.size() >= 2 && words[1] == "ipv6";
}

TlvIdTable SenderIds(TlvMessageOptions const& options)
{
    return options.ids.empty() ? TlvIdTable() : TlvIdTable(options.ids);
}

void PrintRecord(std::ostream& out, EInterfaceItem const& item)
{
    PrintInterface(out, item);
}
void PrintRecord(std::ostream& out, EDiscoveredInfo const& info)
{
    PrintInfo(out, info);
}

/// \p require: the record of a typed id; \p all: the ids of all records.
template <class Table, class Require>
void ShowTable(ShowOptions const& options, Table const& table, std::vector<unsigned int> const& all, Require require)
{
    std::vector<unsigned int> ids;
    bool settings = false;
    for (std::string const& name : options.names) {
        if (name == "table")
            settings = true;
        else
            ids.push_back(require(name).GetLocalId());
    }
    if (options.json) {
        Json const json = TableJson(table, options.names.empty() ? all : ids);
        std::cout << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
        return;
    }
    if (options.names.empty()) PrintOverview(std::cout, table);
    if (settings) PrintTableSettings(std::cout, table);
    for (unsigned int id : ids) PrintRecord(std::cout, require(std::to_string(id)));
}

void ShowDiscoveredTable(ShowOptions const& options, EDiscoveredTable const& table)
{
    ShowTable(options, table, InfoIds(table), [&](std::string const& id) -> EDiscoveredInfo const& {
        EDiscoveredInfo const* info = table.GetInfo(ParseId(id, "interface id"));
        if (!info) throw BadInput("there is no interface " + id);
        return *info;
    });
}

KernelSnapshot ReadKernel(std::optional<std::string> const& networkNamespace)
{
    std::optional<NetworkNamespace> inside;
    if (networkNamespace) inside.emplace(*networkNamespace);
    KernelNetlinkSource source;
    return ReadKernelSnapshot(source);
}

} // namespace

void Import(ImportOptions const& options)
{
    if (options.file == options.discovered) throw BadInput(options.file + ": is named for both tables");
    KernelSnapshot const snapshot = ReadKernel(options.networkNamespace);
    EInterfaceTable table(options.port);
    if (options.trace) InstallTrace(table);
    LinkRows const rows = ImportSnapshot(snapshot, table);
    SaveTable(options.file, table);
    if (options.discovered.empty()) return;
    EDiscoveredTable discovered;
    KernelFollower(discovered).Read(snapshot, rows);
    SaveTable(options.discovered, discovered);
}

void Show(ShowOptions const& options)
{
    EInterfaceTable interfaces;
    EDiscoveredTable discovered;
    if (LoadEitherTable(options.file, interfaces, discovered) == ArchiveKind::interfaceTable)
        ShowTable(options, interfaces, InterfaceIds(interfaces),
                  [&](std::string const& id) -> EInterfaceItem const& { return RequireInterface(interfaces, id); });
    else
        ShowDiscoveredTable(options, discovered);
}

void ShowDiscovered(ShowOptions const& options)
{
    EDiscoveredTable table;
    LoadTable(options.file, table);
    ShowDiscoveredTable(options, table);
}

void Add(ChangeOptions const& options, std::vector<std::string> const& words)
{
    std::string added;
    Change(options, [&](EInterfaceTable& table) {
        if (IsIPv6List(words)) {
            EInterfaceItem const& item = RequireInterface(table, words[0]);
            EIPv6AddressItem const address = MakeIPv6Address({words.begin() + 2, words.end()});
            unsigned int const id =
                ExecuteAdd(table, AddIPv6AddressCommand(table, item.GetLocalId(), address), "adding an IPv6 address");
            added = "interface " + words[0] + " ipv6 " + std::to_string(id);
        } else {
            unsigned int const id =
                ExecuteAdd(table, AddInterfaceCommand(table, MakeInterface(words)), "adding an interface");
            added = "interface " + std::to_string(id);
        }
    });
    std::cout << added << "\n";
}

void Remove(ChangeOptions const& options, std::vector<std::string> const& words)
{
    Change(options, [&](EInterfaceTable& table) {
        std::vector<unsigned int> ids;
        if (IsIPv6List(words)) {
            EInterfaceItem const& item = RequireInterface(table, words[0]);
            for (std::size_t i = 2; i < words.size(); ++i) {
                ids.push_back(ParseId(words[i], "IPv6 address id"));
                RequireIPv6Address(item, ids.back());
            }
            Execute(table, RemoveCommand(IPv6ListPath(table, item.GetLocalId()), ids), "removing IPv6 addresses");
        } else {
            for (std::string const& word : words) ids.push_back(RequireInterface(table, word).GetLocalId());
            Execute(table, RemoveCommand(InterfaceListPath(table), ids), "removing interfaces");
        }
    });
}

void Enable(ChangeOptions const& options, std::vector<std::string> const& words, bool enable)
{
    Change(options, [&](EInterfaceTable& table) {
        if (words.size() > 2 || (words.size() == 2 && words[1] != "ipv4"))
            throw BadInput("'" + words.back() + "' cannot be switched; an interface ID or ID ipv4 can");
        EComponentId path = InterfacePath(table, RequireInterface(table, words[0]).GetLocalId());
        if (words.size() == 2) path += ShapeOf(RecordKind::ipv4).leaf;
        Execute(table, EnableCommand(path, enable), "switching interface " + words[0]);
    });
}

void Edit(ChangeOptions const& options, FieldEdit const& edit)
{
    Change(options, [&](EInterfaceTable& table) {
        FieldTarget const target = FindTarget(table, edit.record, edit.name);
        Execute(table, EditCommand(table, target, FieldArchive(*target.field, edit.value)), edit.name);
    });
}

void Upgrade(std::string const& raw, std::string const& file)
{
    EInterfaceTable table;
    LoadRawTable(raw, table);
    SaveTable(file, table);
}

void ListFields()
{
    PrintFields(std::cout);
}

void BuildTlvMessage(TlvBuildOptions const& options)
{
    EInterfaceTable table;
    LoadTable(options.file, table);
    std::vector<unsigned int> ids = InterfaceIds(table);
    if (options.interfaceId) ids = {RequireInterface(table, *options.interfaceId).GetLocalId()};
    WriteInterfaceOperations(table, ids, options.edit ? TLVIds::ListOp::Edit : TLVIds::ListOp::Add, options.output);
}

void ApplyTlvMessage(ChangeOptions const& options, TlvMessageOptions const& message, bool keepPartial)
{
    TlvIdTable const ids = SenderIds(message);
    EInterfaceTable table;
    LoadTable(options.file, table);
    if (options.trace) InstallTrace(table);
    TlvMessageInput input(message.message);
    try {
        ApplyTlvMessage(input, ids, table);
    } catch (ToolError const&) {
        if (keepPartial) SaveTable(options.file, table);
        throw;
    }
    SaveTable(options.file, table);
}

void DumpTlvMessage(TlvMessageOptions const& message, bool json)
{
    TlvIdTable const ids = SenderIds(message);
    TlvMessageInput input(message.message);
    if (json)
        PrintTlvMessageJson(std::cout, input, ids);
    else
        PrintTlvMessage(std::cout, input, ids);
}

void ListTlvIds(TlvIdFormat format)
{
    TlvIdTable const ids;
    switch (format) {
    case TlvIdFormat::text: PrintTlvIds(std::cout, ids); break;
    case TlvIdFormat::json: PrintTlvIdsJson(std::cout, ids); break;
    case TlvIdFormat::lua: PrintTlvIdsLua(std::cout, ids); break;
    }
}

} // namespace ifcoreTool
