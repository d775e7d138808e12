#pragma once

#include "ifhostExport.hpp"

/// The ids of TLVs. A message carries an id's number; its name tells what it means, since sender and receiver may have
/// numbered their ids in different orders.
namespace TLVIds {

/// One id: making it registers its name in Protocol::TLVBuilder::known_tlv_table(). Ids are made while the process or
/// one of its libraries starts, before any message is read or built.
class IFHOST_API TLVId {
public:
    /// \p name stays the caller's and must outlive the process's use of ids. A name that is known already keeps its
    /// number. Null and "" are the reserved id 0, which no real id has.
    explicit TLVId(char const* name);
    unsigned int GetIndex() const { return m_index; } ///< The number that messages carry.
    char const* GetName() const;

private:
    unsigned int m_index; // first, as every host has it; in known_tlv_table()
};

/// The operations on a list of interfaces or of addresses.
namespace ListOp {
}
/// An interface and all that it holds.
namespace InterfaceTable {
}

#define TLVID(group, name)                                                                                             \
    namespace group {                                                                                                  \
    extern IFHOST_API TLVId const name;                                                                                \
    }
#include "tlvIds.def"

} // namespace TLVIds
