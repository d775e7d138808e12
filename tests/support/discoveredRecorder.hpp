#pragma once

#include "eDiscoveredTable.hpp"
#include "recorder.hpp"

#include <boost/make_shared.hpp>

#include <string>
#include <vector>

// The whole contents of a record, but not those of the protocol records.
std::string TextOf(EDiscoveredNeighbor const& neighbor); // "1 02:00:00:00:00:01 router 10.0.0.1 10.0.0.2"
std::string TextOf(EDiscoveredInfo const& info);         // "5 up 10.0.0.9 [1 02:00:00:00:00:01 router 10.0.0.1]"
std::string TextOf(EDiscoveredTable const& table);       // "(5 up) (7 down) default 5.1 02:00:00:00:00:01"

/// An observer of discovered tables that writes down every call.
class DiscoveredRecorder : public EDiscoveredTableHooks, public CallLog {
public:
    /// "InterfaceWentUp(5 down)", "RemovingAddress(5 up 10.0.0.9: 10.0.0.9)": what the record held and, behind ":",
    /// what was given with it. The calls are forgotten.
    std::vector<std::string> TakeCalls();

#define EHOOK(operation, ...)                                                                                          \
    void operation(EHOOK_PARAMETERS(__VA_ARGS__)) override                                                             \
    {                                                                                                                  \
        Note(#operation, EHOOK_ARGUMENTS(__VA_ARGS__));                                                                \
    }
#include "eDiscoveredTableHooks.def"
};

/// A table with one empty info of id 5, and an observer that has heard nothing yet.
struct RecordedInfo {
    EDiscoveredTable table;
    boost::shared_ptr<DiscoveredRecorder> recorder = boost::make_shared<DiscoveredRecorder>();
    EDiscoveredInfo& info;

    RecordedInfo() : info(AddedInfo(table)) { table.hooks = recorder; }

private:
    static EDiscoveredInfo& AddedInfo(EDiscoveredTable& table)
    {
        EDiscoveredInfo info;
        info.SetLocalId(5);
        table.AddInfo(info);
        return *table.GetInfo(5);
    }
};

inline EIPAddress IP(std::string const& text)
{
    return EIPAddress(text);
}
inline EMACAddress MAC(std::string const& text)
{
    return EMACAddress(text);
}
/// A neighbour without a parent.
EDiscoveredNeighbor Neighbor(char const* mac, std::vector<char const*> const& addresses = {}, bool isRouter = true);

/// An info without a parent.
EDiscoveredInfo Info(unsigned int id, std::vector<EDiscoveredNeighbor> const& neighbors = {});
