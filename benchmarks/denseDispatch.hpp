#pragma once

#include <ifcore/ifcore.hpp>

/// ParseInterfaceListTLV for a sender that numbers its ids as this process does: each level has an array of handlers
/// with an element for every number, and nothing asks for names. The handlers do the same work.
void ApplyByDenseDispatch(TLVReader& message, EInterfaceTable& table);
