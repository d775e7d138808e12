#include "eDiscoveredChangeWriter.hpp"

#include "eArchive.hpp"
#include "eDiscoveredOperation.hpp"
#include "eDiscoveredTable.hpp"

#include <new>
#include <utility>

EDiscoveredChangeWriter::EDiscoveredChangeWriter() : m_stream(std::make_unique<EArchive>()) {}

EDiscoveredChangeWriter::~EDiscoveredChangeWriter() = default;

EBlob EDiscoveredChangeWriter::TakeMessage()
{
    auto taken = std::make_unique<EArchive>();
    m_stream.swap(taken); // the next stream begins, whatever becomes of this one
    m_changes = 0;
    if (std::exchange(m_failed, false)) throw std::bad_alloc(); // it ends in half an operation
    *taken << false;
    return taken->GetAsEBlob();
}

template <class... Value> void EDiscoveredChangeWriter::Write(unsigned int code, Value const&... values)
{
    bool const failed = std::exchange(m_failed, true); // unless all of it is written
    *m_stream << true << code;
    static_cast<void>((*m_stream << ... << values));
    ++m_changes;
    m_failed = failed;
}

/// The interface of a record: the first id of its locator.
template <class Record> static unsigned int InterfaceOf(Record const& record)
{
    return record.GetParent() ? record.GetParent()->GetLocalId() : 0;
}

void EDiscoveredChangeWriter::SettingDiscoveredTable(EDiscoveredTable const&, EDiscoveredTable const& replacement)
{
    Write(REPLACE_TABLE, replacement);
}

void EDiscoveredChangeWriter::AddingInfo(EDiscoveredInfo const& info)
{
    Write(ADD_INFO, info);
}

void EDiscoveredChangeWriter::RemovingInfo(EDiscoveredInfo const& info)
{
    Write(REMOVE_INFO, info.GetLocalId());
}

void EDiscoveredChangeWriter::SettingInfo(EDiscoveredInfo const& info, EDiscoveredInfo const& replacement)
{
    Write(SET_INFO, info.GetLocalId(), replacement);
}

void EDiscoveredChangeWriter::InterfaceWentUp(EDiscoveredInfo const& info)
{
    Write(SET_INTERFACE_UP, info.GetLocalId(), true);
}

void EDiscoveredChangeWriter::InterfaceWentDown(EDiscoveredInfo const& info)
{
    Write(SET_INTERFACE_UP, info.GetLocalId(), false);
}

void EDiscoveredChangeWriter::AddingAddress(EDiscoveredInfo const& info, EIPAddress const& address)
{
    Write(ADD_ADDRESS, info.GetLocalId(), address);
}

void EDiscoveredChangeWriter::RemovingAddress(EDiscoveredInfo const& info, EIPAddress const& address)
{
    Write(REMOVE_ADDRESS, info.GetLocalId(), address);
}

void EDiscoveredChangeWriter::AddingNeighbor(EDiscoveredNeighbor const& neighbor)
{
    Write(ADD_NEIGHBOR, InterfaceOf(neighbor), neighbor);
}

void EDiscoveredChangeWriter::RemovingNeighbor(EDiscoveredNeighbor const& neighbor)
{
    Write(REMOVE_NEIGHBOR, InterfaceOf(neighbor), neighbor.GetLocalId());
}

void EDiscoveredChangeWriter::SettingNeighbor(EDiscoveredNeighbor const& neighbor,
                                              EDiscoveredNeighbor const& replacement)
{
    Write(SET_NEIGHBOR, InterfaceOf(neighbor), neighbor.GetLocalId(), replacement);
}

void EDiscoveredChangeWriter::NeighborBecameRouter(EDiscoveredNeighbor const& neighbor)
{
    Write(SET_NEIGHBOR_IS_ROUTER, InterfaceOf(neighbor), neighbor.GetLocalId(), true);
}

void EDiscoveredChangeWriter::NeighborBecameHost(EDiscoveredNeighbor const& neighbor)
{
    Write(SET_NEIGHBOR_IS_ROUTER, InterfaceOf(neighbor), neighbor.GetLocalId(), false);
}

void EDiscoveredChangeWriter::NeighborMacChanging(EDiscoveredNeighbor const& neighbor, EMACAddress const& mac)
{
    Write(SET_NEIGHBOR_MAC, InterfaceOf(neighbor), neighbor.GetLocalId(), mac);
}

void EDiscoveredChangeWriter::AddingNeighborAddress(EDiscoveredNeighbor const& neighbor, EIPAddress const& address)
{
    Write(ADD_NEIGHBOR_ADDRESS, InterfaceOf(neighbor), neighbor.GetLocalId(), address);
}

void EDiscoveredChangeWriter::RemovingNeighborAddress(EDiscoveredNeighbor const& neighbor, EIPAddress const& address)
{
    Write(REMOVE_NEIGHBOR_ADDRESS, InterfaceOf(neighbor), neighbor.GetLocalId(), address);
}

void EDiscoveredChangeWriter::SettingDHCPDiscoveredInfo(EDHCPDiscoveredInfo const& info,
                                                        EDHCPDiscoveredInfo const& replacement)
{
    Write(SET_DHCP_INFO, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingDHCPv6DiscoveredInfo(EDHCPv6DiscoveredInfo const& info,
                                                          EDHCPv6DiscoveredInfo const& replacement)
{
    Write(SET_DHCPV6_INFO, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingFCoEDiscoveredInfo(EFCoEDiscoveredInfo const& info,
                                                        EFCoEDiscoveredInfo const& replacement)
{
    Write(SET_FCOE_INFO, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingPTPDiscoveredInfo(EPTPDiscoveredInfo const& info,
                                                       EPTPDiscoveredInfo const& replacement)
{
    Write(SET_PTP_INFO, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingDCBXDiscoveredInfo(EDCBXDiscoveredInfo const& info,
                                                        EDCBXDiscoveredInfo const& replacement)
{
    Write(SET_DCBX_INFO, InterfaceOf(info), replacement);
}
