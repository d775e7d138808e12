#pragma once

#include <ifcore/ifcore.hpp>

#include "records.pb.h"

/// The fields of the interface that its archive holds.
void FillArchived(records::Interface& message, EInterfaceItem const& item);
void FillArchived(records::Table& message, EInterfaceTable const& table);

/// The fields of the interface that a message of nested TLVs holds.
void FillOperation(records::InterfaceOperation& message, EInterfaceItem const& item);

/// Sets what ParseInterfaceListTLV sets: the interface of the operation's id, made when it is missing.
void ApplyOperation(records::InterfaceOperation const& message, EInterfaceTable& table);
