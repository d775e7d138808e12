#pragma once

#include "recordRef.hpp"
#include "values.hpp"

namespace ifcoreTool {

/// Names of the values of a number; the list ends with a null name. Values without a name are written as numbers.
struct ValueName {
    long value;
    char const* name;
};

enum class Announced { never, beforeTheStore, afterTheStore };

/// One field of a record: what people call it, how it is edited and shown, and who hears of a change.
struct EditableField {
    RecordKind record;
    char const* name;   ///< Without the prefix of its record.
    unsigned int subId; ///< Picks the field in an edit of its record; 0: no edit reaches it, it is only shown.
    char const* unit;   ///< Empty when there is none.
    char const* range;  ///< What the record keeps of a number; empty when it keeps all that its type holds.
    ValueType const* type;
    ValueName const* valueNames; ///< Null when the values have none.
    char const* operation;       ///< Of the observer; empty when a change is not announced.
    Announced announced;
    Json (*read)(RecordRef const& record);
    void (*write)(Json const& value, EArchive& archive); ///< Null when no edit reaches it.

    std::string GetFullName() const { return ShapeOf(record).prefix + std::string(name); }
};

/// All fields, those of a record one after the other in the order in which they are shown.
std::vector<EditableField> const& AllFields();

/// Null when there is none of that name.
EditableField const* FindField(RecordKind record, std::string const& name);

/// The field that the observer's operation announces; null for whole records and switches.
EditableField const* FieldOfOperation(std::string const& operation);

/// The value with its name where it has one.
Json FieldJson(EditableField const& field, Json const& value);
std::string FieldText(EditableField const& field, Json const& value);

/// Archive with the value that the text says, as an edit of the field reads it. Throws ToolError (bad input).
EBlob FieldArchive(EditableField const& field, std::string const& text);

} // namespace ifcoreTool
