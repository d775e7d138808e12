#include "recorder.hpp"

std::string TextOf(EComponentId const& id)
{
    std::string text;
    for (unsigned int const level : id.GetId()) text += (text.empty() ? "" : ".") + std::to_string(level);
    return text;
}

std::string TextOf(EVLAN const& vlan)
{
    return std::to_string(vlan.GetUserPriority()) + "." + std::to_string(vlan.GetCanonicalFormat()) + "." +
           std::to_string(vlan.GetVLANID());
}

std::string TextOf(EVLANIPAddressTableItemProperties const& vlans)
{
    std::string text = vlans.IsEnabled() ? "on[" : "off[";
    for (unsigned int level = 0; level < vlans.GetVLANCount(); ++level)
        text += (level ? " " : "") + std::to_string(vlans.GetVlanTag(level));
    return text + "]";
}

std::vector<std::string> CallLog::Operations() const
{
    std::vector<std::string> operations;
    for (Call const& call : calls) operations.push_back(call.operation);
    return operations;
}
