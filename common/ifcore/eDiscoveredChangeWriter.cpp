#include "eDiscoveredChangeWriter.hpp"

#include "eArchive.hpp"
#include "eDiscoveredTable.hpp"

EDiscoveredChangeWriter::EDiscoveredChangeWriter() : m_stream(std::make_unique<EArchive>()) {}

EDiscoveredChangeWriter::~EDiscoveredChangeWriter() = default;

EBlob EDiscoveredChangeWriter::TakeMessage()
{
    auto next = std::make_unique<EArchive>();
    *m_stream << false;
    EBlob const message = m_stream->GetAsEBlob();
    m_stream = std::move(next);
    m_changes = 0;
    return message;
}

template <class... Value> void EDiscoveredChangeWriter::Write(unsigned int code, Value const&... values)
{
    *m_stream << true << code;
    static_cast<void>((*m_stream << ... << values));
    ++m_changes;
}

/// The interface of a record: the first id of its locator.
template <class Record> static unsigned int InterfaceOf(Record const& record)
{
    return record.GetParent() ? record.GetParent()->GetLocalId() : 0;
}

// The codes are those of the operations in eDiscoveredTable.cpp.

void EDiscoveredChangeWriter::SettingDiscoveredTable(EDiscoveredTable const&, EDiscoveredTable const& replacement)
{
    Write(0, replacement);
}

void EDiscoveredChangeWriter::AddingInfo(EDiscoveredInfo const& info)
{
    Write(1, info);
}

void EDiscoveredChangeWriter::RemovingInfo(EDiscoveredInfo const& info)
{
    Write(2, info.GetLocalId());
}

void EDiscoveredChangeWriter::SettingInfo(EDiscoveredInfo const& info, EDiscoveredInfo const& replacement)
{
    Write(3, info.GetLocalId(), replacement);
}

void EDiscoveredChangeWriter::InterfaceWentUp(EDiscoveredInfo const& info)
{
    Write(4, info.GetLocalId(), true);
}

void EDiscoveredChangeWriter::InterfaceWentDown(EDiscoveredInfo const& info)
{
    Write(4, info.GetLocalId(), false);
}

void EDiscoveredChangeWriter::AddingAddress(EDiscoveredInfo const& info, EIPAddress const& address)
{
    Write(5, info.GetLocalId(), address);
}

void EDiscoveredChangeWriter::RemovingAddress(EDiscoveredInfo const& info, EIPAddress const& address)
{
    Write(6, info.GetLocalId(), address);
}

void EDiscoveredChangeWriter::AddingNeighbor(EDiscoveredNeighbor const& neighbor)
{
    Write(7, InterfaceOf(neighbor), neighbor);
}

void EDiscoveredChangeWriter::RemovingNeighbor(EDiscoveredNeighbor const& neighbor)
{
    Write(8, InterfaceOf(neighbor), neighbor.GetLocalId());
}

void EDiscoveredChangeWriter::SettingNeighbor(EDiscoveredNeighbor const& neighbor,
                                              EDiscoveredNeighbor const& replacement)
{
    Write(9, InterfaceOf(neighbor), neighbor.GetLocalId(), replacement);
}

void EDiscoveredChangeWriter::NeighborBecameRouter(EDiscoveredNeighbor const& neighbor)
{
    Write(10, InterfaceOf(neighbor), neighbor.GetLocalId(), true);
}

void EDiscoveredChangeWriter::NeighborBecameHost(EDiscoveredNeighbor const& neighbor)
{
    Write(10, InterfaceOf(neighbor), neighbor.GetLocalId(), false);
}

void EDiscoveredChangeWriter::NeighborMacChanging(EDiscoveredNeighbor const& neighbor, EMACAddress const& mac)
{
    Write(11, InterfaceOf(neighbor), neighbor.GetLocalId(), mac);
}

void EDiscoveredChangeWriter::AddingNeighborAddress(EDiscoveredNeighbor const& neighbor, EIPAddress const& address)
{
    Write(12, InterfaceOf(neighbor), neighbor.GetLocalId(), address);
}

void EDiscoveredChangeWriter::RemovingNeighborAddress(EDiscoveredNeighbor const& neighbor, EIPAddress const& address)
{
    Write(13, InterfaceOf(neighbor), neighbor.GetLocalId(), address);
}

void EDiscoveredChangeWriter::SettingDHCPDiscoveredInfo(EDHCPDiscoveredInfo const& info,
                                                        EDHCPDiscoveredInfo const& replacement)
{
    Write(14, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingDHCPv6DiscoveredInfo(EDHCPv6DiscoveredInfo const& info,
                                                          EDHCPv6DiscoveredInfo const& replacement)
{
    Write(15, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingFCoEDiscoveredInfo(EFCoEDiscoveredInfo const& info,
                                                        EFCoEDiscoveredInfo const& replacement)
{
    Write(16, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingPTPDiscoveredInfo(EPTPDiscoveredInfo const& info,
                                                       EPTPDiscoveredInfo const& replacement)
{
    Write(17, InterfaceOf(info), replacement);
}

void EDiscoveredChangeWriter::SettingDCBXDiscoveredInfo(EDCBXDiscoveredInfo const& info,
                                                        EDCBXDiscoveredInfo const& replacement)
{
    Write(18, InterfaceOf(info), replacement);
}
