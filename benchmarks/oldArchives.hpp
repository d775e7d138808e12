#pragma once

#include "eBlob.hpp"

/// An archive of table version 4 with \p count interfaces of version 6, each of which has the address of the next one
/// as its gateway: reading it makes every one an unconnected interface.
EBlob Version4ArchiveOfUnconnected(unsigned int count);
