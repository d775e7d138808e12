#pragma once

#include "tlvIdTable.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace ifcoreTool {

constexpr std::size_t kTlvHeaderSize = 8; // bytes: id and length

/// One TLV of a message. \p value belongs to the message.
struct TlvNode {
    std::uint64_t offset; ///< Of its id, from the begin of the message.
    unsigned int number;  ///< Of its id.
    unsigned int length;  ///< That it says.
    std::size_t there;    ///< Bytes of its value that its level holds, at most the length.
    unsigned char const* value;
    TlvRule const* rule; ///< What it means here; null when that is not known.
    /// Its id is 0 since it is the first of a level that a builder has made; the rule, if any, is that of the id that
    /// was there.
    bool isCleared;
    bool isElsewhere; ///< This is no level for it, and it is skipped. The rule is that of another level.
    std::size_t depth;

    std::uint64_t GetValueOffset() const { return offset + kTlvHeaderSize; }
};

/// Why a message cannot be read on, and where.
struct TlvProblem {
    std::string path;     ///< Names of the TLVs, outermost first, joined by " > ".
    std::uint64_t offset; ///< In the message, of the value that cannot be read.
    std::string what;

    std::string GetText() const { return path + ", byte " + std::to_string(offset) + ": " + what; }
};

/// Is shown the TLVs of a message in its order.
class TlvVisitor {
public:
    virtual ~TlvVisitor() = default;
    virtual void Enter(TlvNode const& tlv) = 0;
    /// \p trailing: bytes at the end of its level that are too few for a TLV. Not called for those that a problem
    /// leaves open.
    virtual void Leave(TlvNode const& tlv, std::size_t trailing) = 0;
};

enum class TlvView {
    asRead,  ///< What the library reads, and nothing in what it skips.
    asBuilt, ///< Also what is there for others, and what was there before builders cleared it.
};

/// Walks through a level of operations on the interfaces, \p size bytes that are at \p offset of a message, up to the
/// first problem. In the view asRead that is where the library raises its parse error, and there is one if and only if
/// it does. In the view asBuilt, the outermost level may be of any kind.
/// Needs no more memory than the schema is deep, whatever the message holds.
std::optional<TlvProblem> WalkTlvs(unsigned char const* bytes, std::size_t size, std::uint64_t offset,
                                   TlvIdTable const& ids, TlvView view, TlvVisitor* visitor = nullptr);

/// The name of an id for people: its number when the sender has registered none.
std::string TlvName(TlvNode const& tlv, TlvIdTable const& ids);

/// 4 bytes, big-endian.
unsigned int TlvU32(unsigned char const* bytes);

} // namespace ifcoreTool
