#include "discoveredTracingHooks.hpp"

#include "traceLine.hpp"

#include "ifcore/eHookParameters.hpp"

#include <ostream>

namespace ifcoreTool {

namespace {

unsigned int InterfaceOf(EDiscoveredTable const&)
{
    return 0;
}
unsigned int InterfaceOf(EDiscoveredInfo const& info)
{
    return info.GetLocalId();
}
template <class Record> unsigned int InterfaceOf(Record const& record)
{
    return record.GetParent() ? record.GetParent()->GetLocalId() : 0;
}

template <class Record> unsigned int NeighborOf(Record const&)
{
    return 0;
}
unsigned int NeighborOf(EDiscoveredNeighbor const& neighbor)
{
    return neighbor.GetLocalId();
}

class DiscoveredTracingHooks : public EDiscoveredTableHooks {
public:
    explicit DiscoveredTracingHooks(std::function<void(DiscoveredCall const&)> told) : m_told(std::move(told)) {}

#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        Trace(#operation, EHOOK_ARGUMENTS(__VA_ARGS__));                                                               \
    }
#include "ifcore/eDiscoveredTableHooks.def"

private:
    template <class Record> void Tell(char const* operation, Record const& record, NamedChanges changes) const
    {
        m_told({operation, InterfaceOf(record), NeighborOf(record), std::move(changes)});
    }
    /// A record that appears, vanishes, or is switched.
    template <class Record> void Trace(char const* operation, Record const& record) const
    {
        Record const* const none = nullptr;
        if (StartsWith(operation, "Adding"))
            Tell(operation, record, Differences(none, &record));
        else if (StartsWith(operation, "Removing"))
            Tell(operation, record, Differences(&record, none));
        else if (StartsWith(operation, "Neighbor"))
            TellSwitch(operation, record, "router", std::string("NeighborBecameRouter") == operation);
        else
            TellSwitch(operation, record, "up", std::string("InterfaceWentUp") == operation);
    }
    template <class Record>
    void TellSwitch(char const* operation, Record const& record, char const* name, bool value) const
    {
        Tell(operation, record, {{name, !value, value}});
    }
    template <class Record> void Trace(char const* operation, Record const& current, Record const& replacement) const
    {
        Tell(operation, current, Differences(&current, &replacement));
    }
    /// One address of several that appears or vanishes.
    template <class Record> void Trace(char const* operation, Record const& record, EIPAddress const& address) const
    {
        Json const text = ToJson(address);
        bool const isAdded = StartsWith(operation, "Adding");
        Tell(operation, record, {{"address", isAdded ? Json() : text, isAdded ? text : Json()}});
    }
    void Trace(char const* operation, EDiscoveredNeighbor const& neighbor, EMACAddress const& mac) const
    {
        Tell(operation, neighbor, {{"mac", ToJson(neighbor.GetMac()), ToJson(mac)}});
    }

    std::function<void(DiscoveredCall const&)> m_told;
};

Json OrNull(unsigned int id)
{
    return id != 0 ? Json(id) : Json();
}

} // namespace

boost::shared_ptr<EDiscoveredTableHooks> MakeDiscoveredTracingHooks(std::function<void(DiscoveredCall const&)> told)
{
    return boost::shared_ptr<EDiscoveredTableHooks>(new DiscoveredTracingHooks(std::move(told)));
}

void PrintCall(std::ostream& out, DiscoveredCall const& call, std::string const& linkName)
{
    std::string subject = call.interfaceId != 0 ? "interface " + std::to_string(call.interfaceId) : "table";
    if (!linkName.empty()) subject += " (" + Printable(linkName) + ")";
    if (call.neighborId != 0) subject += " neighbor " + std::to_string(call.neighborId);
    std::string changes;
    for (NamedChange const& change : call.changes) changes += (changes.empty() ? "" : ", ") + ChangeText(change);
    WriteTraceLine(out, call.operation, subject, changes);
}

void PrintCallJson(std::ostream& out, DiscoveredCall const& call, std::string const& linkName)
{
    Json changes = Json::array();
    for (NamedChange const& change : call.changes)
        changes.push_back({{"name", change.name}, {"old", change.before}, {"new", change.after}});
    Json const json = {{"operation", call.operation},
                       {"interface", OrNull(call.interfaceId)},
                       {"link", linkName.empty() ? Json() : Json(linkName)},
                       {"neighbor", OrNull(call.neighborId)},
                       {"changes", std::move(changes)}};
    out << json.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
}

} // namespace ifcoreTool
