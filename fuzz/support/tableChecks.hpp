#pragma once

#include <ifcore/ifcore.hpp>

/// Adds the interfaces 1, with all that every interface has, and 2, with each record that is created on demand.
void FillWithTwoInterfaces(EInterfaceTable& table);

/// Aborts the process unless every record of the table names its owner as parent, is found under its path, can be
/// rendered, and finding interfaces by their addresses gives the same with the table's observer and by a scan.
void CheckTable(EInterfaceTable const& table);
