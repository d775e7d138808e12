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
