#pragma once

#include "ifhostExport.hpp"

#include <vector>

/// What fills the parser maps of the libraries in this process. Each library adds its own while it starts.
IFHOST_API std::vector<void (*)()>& GetTLVParserMapTable();

namespace Protocol {

/// Runs all of GetTLVParserMapTable(), in order: before the first message is read, and after every library that
/// registers ids has started. Running them again changes nothing. Not while another thread reads messages.
IFHOST_API void RunTLVParserMapInitializers();

/// Makes the ids that this host has made so far those of the sender (TLVReader::external_tlv_table), for messages built
/// in this process or in one of the same build.
IFHOST_API void UseOwnTLVIds();

} // namespace Protocol
