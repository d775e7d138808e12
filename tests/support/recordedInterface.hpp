#pragma once

#include "eInterfaceTable.hpp"
#include "recorder.hpp"

#include <boost/make_shared.hpp>

/// The table of port 7 with one interface of id 1, and an observer that has heard nothing yet.
struct RecordedInterface {
    EInterfaceTable table{7};
    boost::shared_ptr<Recorder> recorder = boost::make_shared<Recorder>();
    EInterfaceItem& interface;

    RecordedInterface() : interface(*table.GetInterfaceItem(table.AddInterfaceItem(EInterfaceItem())))
    {
        table.SetHooks("recorder", recorder);
    }
};

/// The record of this type that every interface has.
template <class Record> Record& RecordOf(EInterfaceItem& interface);
template <> inline EIPv4AddressItem& RecordOf(EInterfaceItem& interface)
{
    return interface.GetIPv4AddressItem();
}
template <> inline EDHCPProperties& RecordOf(EInterfaceItem& interface)
{
    return interface.GetDHCPProperties();
}
template <> inline EDHCPv6Properties& RecordOf(EInterfaceItem& interface)
{
    return interface.GetDHCPv6Properties();
}
template <> inline EFCoEConfig& RecordOf(EInterfaceItem& interface)
{
    return interface.GetFCoEConfig();
}
template <> inline ENPIVConfig& RecordOf(EInterfaceItem& interface)
{
    return interface.GetNPIVConfig();
}
template <> inline EPTPConfig& RecordOf(EInterfaceItem& interface)
{
    return interface.GetPTPConfig();
}
template <> inline ELLDPConfig& RecordOf(EInterfaceItem& interface)
{
    return interface.GetLLDPConfig();
}

/// That interface's record, fresh or with the given contents, of which nothing has been heard yet.
template <class Record> struct RecordInTable : RecordedInterface {
    Record& record;

    RecordInTable() : record(RecordOf<Record>(interface)) { recorder->Clear(); }
    explicit RecordInTable(Record const& contents) : RecordInTable()
    {
        record = contents;
        recorder->Clear();
    }
};
