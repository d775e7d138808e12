#pragma once

#include <ifcore/ifcore.hpp>

/// Adds the interfaces 1, with all that every interface has, and 2, with each record that is created on demand.
void FillWithTwoInterfaces(EInterfaceTable& table);

/// Aborts the process when a rule of tests/support/tableRules.hpp is broken.
void CheckTable(EInterfaceTable const& table);
