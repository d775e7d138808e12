#pragma once

#include "ifhostExport.hpp"

#include <memory>
#include <vector>

/// A place in a message that is being read, and how many bytes there are from it on.
class IFHOST_API TLVReader {
public:
    /// Does not copy \p bytes, which must outlive the reader. Null bytes and a negative size are an empty message.
    TLVReader(void const* bytes, int size, void* handedOn = nullptr)
        : remaining(bytes && size > 0 ? size : 0), position(static_cast<unsigned char const*>(bytes)), context(handedOn)
    {
    }
    TLVReader(TLVReader const&) = delete;
    TLVReader& operator=(TLVReader const&) = delete;

    int remaining;                           ///< Bytes, never negative.
    unsigned char const* position;           ///< Of the next unread byte.
    std::unique_ptr<unsigned char[]> buffer; ///< For a message that the reader shall own; null for those inside it.
    void* context;                           ///< The host's own, handed on to the readers of nested TLVs.

    /// The names under which the sender registered its ids, by their numbers. A null entry counts as "", which nothing
    /// is called. Belongs to the process: set before messages are read, not while.
    static std::vector<char const*> external_tlv_table;
};
