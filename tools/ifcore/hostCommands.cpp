#include "hostCommands.hpp"

#include "toolError.hpp"

#include "eMultiComponentId.hpp"

namespace ifcoreTool {

namespace {

constexpr unsigned int kListNumber = 1; // of a table's interfaces and of an interface's IPv6 addresses

enum Action : unsigned int { kEnable = 3, kDisable = 4, kAdd = 5, kRemove = 6, kEdit = 7 };

EComponentId TablePath(EInterfaceTable const& table)
{
    EComponentId path;
    table.GetID(path);
    return path;
}

template <class Record> EBlob ArchiveOf(Record const& record)
{
    EArchive archive;
    archive << record;
    return archive.GetAsEBlob();
}

template <class Record>
void EditFreeRecord(Record& record, std::vector<unsigned int> const& subId, EditableField const& field,
                    EBlob const& value)
{
    EArchive archive;
    archive.SetFromEBlob(value, true);
    archive.SetMode(2);
    if (!record.ProcessEdit(subId.begin(), subId.end(), archive)) throw BadInput(field.GetFullName() + ": refused");
}

/// The way to a field from its interface.
std::vector<unsigned int> SubIdFromInterface(EditableField const& field)
{
    if (field.record == RecordKind::interface) return {field.subId};
    return {ShapeOf(field.record).leaf, field.subId};
}

} // namespace

EComponentId InterfaceListPath(EInterfaceTable const& table)
{
    return TablePath(table) += kListNumber;
}

EComponentId InterfacePath(EInterfaceTable const& table, unsigned int interfaceId)
{
    return InterfaceListPath(table) += interfaceId;
}

EComponentId IPv6ListPath(EInterfaceTable const& table, unsigned int interfaceId)
{
    return InterfacePath(table, interfaceId) += kListNumber;
}

ESingleCommand AddInterfaceCommand(EInterfaceTable const& table, EInterfaceItem const& item)
{
    return ESingleCommand(kAdd, EMultiComponentId(InterfaceListPath(table)), {}, ArchiveOf(item));
}

ESingleCommand AddIPv6AddressCommand(EInterfaceTable const& table, unsigned int interfaceId,
                                     EIPv6AddressItem const& item)
{
    return ESingleCommand(kAdd, EMultiComponentId(IPv6ListPath(table, interfaceId)), {}, ArchiveOf(item));
}

ESingleCommand RemoveCommand(EComponentId const& list, std::vector<unsigned int> const& ids)
{
    EMultiComponentId target(list);
    target.SetLeaves(ids);
    return ESingleCommand(kRemove, target);
}

ESingleCommand EnableCommand(EComponentId const& record, bool enable)
{
    return ESingleCommand(enable ? kEnable : kDisable, EMultiComponentId(record));
}

ESingleCommand EditCommand(EInterfaceTable const& table, FieldTarget const& target, EBlob const& value)
{
    EditableField const& field = *target.field;
    RecordShape const& shape = ShapeOf(field.record);
    std::vector<unsigned int> subId{field.subId};
    EComponentId path = TablePath(table);
    if (field.record != RecordKind::table) path = InterfacePath(table, target.interfaceId);
    if (shape.isOptional)
        subId = SubIdFromInterface(field);
    else if (shape.leaf != 0)
        path += shape.leaf;
    if (field.record == RecordKind::ipv6) path += target.ipv6Id;
    return ESingleCommand(kEdit, EMultiComponentId(path), subId, value);
}

void Execute(EInterfaceTable& table, ESingleCommand const& command, std::string const& what)
{
    if (!table.ExecuteCommand(command, static_cast<EComponentId*>(nullptr)))
        throw BadInput(what + ": the table refuses");
}

unsigned int ExecuteAdd(EInterfaceTable& table, ESingleCommand const& command, std::string const& what)
{
    EMultiComponentId added;
    if (!table.ExecuteCommand(command, &added) || added.GetLeaves().empty())
        throw BadInput(what + ": the table refuses");
    return added.GetLeaves().front();
}

void EditFree(EInterfaceItem& item, EditableField const& field, EBlob const& value)
{
    EditFreeRecord(item, SubIdFromInterface(field), field, value);
}

void EditFree(EIPv6AddressItem& item, EditableField const& field, EBlob const& value)
{
    EditFreeRecord(item, {field.subId}, field, value);
}

} // namespace ifcoreTool
