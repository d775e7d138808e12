#include "tracingHooks.hpp"

#include "editableFields.hpp"
#include "traceLine.hpp"

#include "ifcore/eHookParameters.hpp"

#include <ostream>

namespace ifcoreTool {

namespace {

std::string SubjectOf(RecordRef const& record)
{
    if (auto const* table = std::get_if<EInterfaceTable const*>(&record))
        return "table " + std::to_string((*table)->GetPortId());
    EInterfaceItem const* item = InterfaceOf(record);
    return item ? "interface " + std::to_string(item->GetLocalId()) : "no interface";
}

/// Names as they are typed: with the address id in front of the fields of an IPv6 address.
std::string PrefixOf(RecordRef const& record)
{
    if (auto const* address = std::get_if<EIPv6AddressItem const*>(&record))
        return "ipv6." + std::to_string((*address)->GetLocalId()) + ".";
    return ShapeOf(KindOf(record)).prefix;
}

class TracingHooks : public EInterfaceTableHooks {
public:
    explicit TracingHooks(std::ostream& out) : m_out(out) {}

#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        Trace(#operation, EHOOK_ARGUMENTS(__VA_ARGS__));                                                               \
    }
#include "ifcore/eInterfaceTableHooks.def"

private:
    /// A record that appears, vanishes, or is switched on or off.
    template <class Record> void Trace(char const* operation, Record const& record)
    {
        RecordRef const ref = &record;
        if (StartsWith(operation, "Enabling"))
            Line(operation, ref, PrefixOf(ref) + "enabled: no -> yes");
        else if (StartsWith(operation, "Disabling"))
            Line(operation, ref, PrefixOf(ref) + "enabled: yes -> no");
        else
            Line(operation, ref, std::holds_alternative<EIPv6AddressItem const*>(ref) ? AddressText(ref) : "");
    }
    /// The VLAN stack tells where the address is, not what it becomes.
    void Trace(char const* operation, EIPv4AddressItem const& record, EVLANIPAddressTableItemProperties const&)
    {
        Trace(operation, record);
    }
    template <class Value, class... Context>
    void Trace(char const* operation, EIPv4AddressItem const& record, Value const& value,
               EVLANIPAddressTableItemProperties const&, Context const&...)
    {
        Trace(operation, record, value);
    }
    template <class Record, class Value> void Trace(char const* operation, Record const& record, Value const& value)
    {
        if constexpr (std::is_same_v<Record, Value>)
            Replacement(operation, &record, &value);
        else
            FieldChange(operation, &record, ToJson(value));
    }

    void FieldChange(char const* operation, RecordRef const& record, Json const& value)
    {
        EditableField const* field = FieldOfOperation(operation);
        if (!field) {
            Line(operation, record, DisplayPlain(value));
            return;
        }
        // The virtual port's carrier is announced with the interface.
        bool const isOwner = field->record != KindOf(record);
        RecordRef const owned = isOwner ? OwnedRecord(*InterfaceOf(record), field->record) : record;
        std::string const name = PrefixOf(owned) + field->name + ": ";
        std::string const newText = FieldText(*field, value);
        if (field->announced == Announced::afterTheStore)
            Line(operation, record, name + newText + " (stored already)");
        else
            Line(operation, record, name + FieldText(*field, field->read(owned)) + " -> " + newText);
    }
    void Replacement(char const* operation, RecordRef const& current, RecordRef const& replacement)
    {
        Line(operation, current, "");
        Differences(PrefixOf(current), current, replacement);
        auto const* item = std::get_if<EInterfaceItem const*>(&current);
        auto const* newItem = std::get_if<EInterfaceItem const*>(&replacement);
        if (item && newItem)
            for (RecordKind kind : kOwnedKinds)
                Differences(ShapeOf(kind).prefix, OwnedRecord(**item, kind), OwnedRecord(**newItem, kind));
        auto const* table = std::get_if<EInterfaceTable const*>(&current);
        auto const* newTable = std::get_if<EInterfaceTable const*>(&replacement);
        if (table && newTable)
            Difference("interfaces", Json((*table)->size()).dump(), Json((*newTable)->size()).dump());
    }
    void Differences(std::string const& prefix, RecordRef const& current, RecordRef const& replacement)
    {
        for (EditableField const& field : AllFields())
            if (field.record == KindOf(current) && !IsOwnId(field))
                Difference(prefix + field.name, FieldText(field, field.read(current)),
                           FieldText(field, field.read(replacement)));
    }
    /// A record that is replaced keeps the id under which it is stored, whatever its replacement carries.
    static bool IsOwnId(EditableField const& field)
    {
        return std::string("id") == field.name;
    }
    void Difference(std::string const& name, std::string const& current, std::string const& replacement)
    {
        if (current != replacement) m_out << "    " << Printable(name + ": " + current + " -> " + replacement) << "\n";
    }
    static std::string AddressText(RecordRef const& ref)
    {
        EIPv6AddressItem const& address = *std::get<EIPv6AddressItem const*>(ref);
        return PrefixOf(ref) + "address: " + address.GetAddress().GetAsString() + "/" +
               std::to_string(address.GetMaskLength());
    }
    void Line(char const* operation, RecordRef const& record, std::string const& change)
    {
        WriteTraceLine(m_out, operation, SubjectOf(record), change);
    }

    std::ostream& m_out; // not owned
};

} // namespace

boost::shared_ptr<EInterfaceTableHooks> MakeTracingHooks(std::ostream& out)
{
    return boost::shared_ptr<EInterfaceTableHooks>(new TracingHooks(out));
}

} // namespace ifcoreTool
