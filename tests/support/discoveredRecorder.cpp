#include "discoveredRecorder.hpp"

#include "eIPAddress.hpp"
#include "eMACAddress.hpp"

std::string TextOf(EDiscoveredNeighbor const& neighbor)
{
    std::string text = std::to_string(neighbor.GetLocalId()) + " " + neighbor.GetMac().GetAsString();
    text += neighbor.IsRouter() ? " router" : " host";
    for (auto address = neighbor.AddressBegin(); address != neighbor.AddressEnd(); ++address)
        text += " " + address->GetAsString();
    return text;
}

std::string TextOf(EDiscoveredInfo const& info)
{
    std::string text = std::to_string(info.GetLocalId()) + (info.IsInterfaceUp() ? " up" : " down");
    for (unsigned int i = 0; i < info.GetAddressCount(); ++i) text += " " + info.GetAddressAt(i)->GetAsString();
    EDiscoveredNeighborList const& neighbors = info.GetNeighbors();
    for (auto position = neighbors.begin(); position != neighbors.end(); ++position)
        text += " [" + TextOf(*neighbors.GetItem(position)) + "]";
    return text;
}

std::string TextOf(EDiscoveredTable const& table)
{
    std::string text;
    EDiscoveredInfoList const& infos = table.GetInfos();
    for (auto position = infos.begin(); position != infos.end(); ++position)
        text += "(" + TextOf(*infos.GetItem(position)) + ") ";
    return text + "default " + std::to_string(table.GetDefaultMACIfId()) + "." +
           std::to_string(table.GetDefaultMACNbrId()) + " " + table.GetDefaultMAC().GetAsString();
}

std::vector<std::string> DiscoveredRecorder::TakeCalls()
{
    std::vector<std::string> taken;
    for (Call const& call : calls)
        taken.push_back(call.operation + "(" + call.before + (call.values.empty() ? "" : ": ") + call.values + ")");
    Clear();
    return taken;
}

EDiscoveredNeighbor Neighbor(char const* mac, std::vector<char const*> const& addresses, bool isRouter)
{
    EDiscoveredNeighbor neighbor;
    neighbor.SetMac(EMACAddress(std::string(mac)));
    for (char const* const address : addresses) neighbor.AddAddress(EIPAddress(std::string(address)));
    neighbor.SetIsRouter(isRouter);
    return neighbor;
}

EDiscoveredInfo Info(unsigned int id, std::vector<EDiscoveredNeighbor> const& neighbors)
{
    EDiscoveredInfo info;
    info.SetLocalId(id);
    for (EDiscoveredNeighbor const& neighbor : neighbors) info.AddNeighbor(neighbor);
    return info;
}
