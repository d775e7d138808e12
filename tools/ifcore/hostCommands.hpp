#pragma once

#include "editableFields.hpp"

#include "eSingleCommand.hpp"

namespace ifcoreTool {

/// Paths of the records of a table.
EComponentId InterfaceListPath(EInterfaceTable const& table);
EComponentId InterfacePath(EInterfaceTable const& table, unsigned int interfaceId);
EComponentId IPv6ListPath(EInterfaceTable const& table, unsigned int interfaceId);

/// One field of one record of a table; the ids count where the record's kind needs them.
struct FieldTarget {
    EditableField const* field;
    unsigned int interfaceId;
    unsigned int ipv6Id;
};

// Host commands. What a table refuses is bad input, and nothing is changed then.

ESingleCommand AddInterfaceCommand(EInterfaceTable const& table, EInterfaceItem const& item);
ESingleCommand AddIPv6AddressCommand(EInterfaceTable const& table, unsigned int interfaceId,
                                     EIPv6AddressItem const& item);
ESingleCommand RemoveCommand(EComponentId const& list, std::vector<unsigned int> const& ids);
ESingleCommand EnableCommand(EComponentId const& record, bool enable);
/// An optional record is edited through its interface, which makes it when it is missing.
ESingleCommand EditCommand(EInterfaceTable const& table, FieldTarget const& target, EBlob const& value);

/// Throws ToolError (bad input) that begins with \p what when the table refuses.
void Execute(EInterfaceTable& table, ESingleCommand const& command, std::string const& what);
/// The same for an adding command; the id of what was added.
unsigned int ExecuteAdd(EInterfaceTable& table, ESingleCommand const& command, std::string const& what);

/// Sets a field of a record that is in no table yet, through the record's own edit.
void EditFree(EInterfaceItem& item, EditableField const& field, EBlob const& value);
void EditFree(EIPv6AddressItem& item, EditableField const& field, EBlob const& value);

} // namespace ifcoreTool
