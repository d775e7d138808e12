#include "tlvWalk.hpp"

#include "textTable.hpp"

#include <algorithm>

namespace ifcoreTool {

namespace {

constexpr std::size_t kItemIdSize = 4;

/// A level that is being walked through.
struct OpenLevel {
    TlvLevel level;
    unsigned char const* position;
    std::size_t remaining;
    std::uint64_t offset; // of the position
    TlvNode owner;        // whose value it is; of the outermost level nothing
    bool isAtFirst;       // no TLV yet, and the owner's builder cleared the id of the first
};

class Walk {
public:
    Walk(TlvIdTable const& ids, TlvView view, TlvVisitor* visitor) : m_ids(ids), m_view(view), m_visitor(visitor) {}

    std::optional<TlvProblem> Run(unsigned char const* bytes, std::size_t size, std::uint64_t offset)
    {
        m_open.push_back({TlvLevel::interfaceList, bytes, size, offset, {}, false});
        while (!m_problem) {
            if (m_open.back().remaining >= kTlvHeaderSize) {
                Enter();
                continue;
            }
            if (m_open.size() == 1) break;
            OpenLevel const over = m_open.back();
            m_open.pop_back();
            Leave(over.owner, over.remaining);
        }
        return m_problem;
    }

private:
    bool IsOutermost() const { return m_open.size() == 1; }

    void Enter()
    {
        TlvNode const tlv = NextTlv();
        m_open.back().isAtFirst = false;
        if (m_visitor) m_visitor->Enter(tlv);
        if (tlv.rule && !tlv.isElsewhere && !tlv.isCleared && tlv.rule->reading == TlvReading::reads)
            if (std::string const refusal = TlvRefusal(tlv.rule->kind, tlv.there); !refusal.empty()) {
                Fail(tlv, refusal);
                return;
            }
        if (HasLevel(tlv))
            OpenLevelOf(tlv);
        else
            Leave(tlv, 0);
    }
    /// What the value is made of is looked at before its length is, as the library does.
    void Leave(TlvNode const& tlv, std::size_t trailing)
    {
        if (m_visitor) m_visitor->Leave(tlv, trailing);
        if (tlv.there < tlv.length) {
            Fail(tlv, "its length says " + std::to_string(tlv.length) + " bytes");
            return;
        }
        OpenLevel& level = m_open.back();
        std::size_t const size = kTlvHeaderSize + tlv.there;
        level.position += size;
        level.remaining -= size;
        level.offset += size;
    }
    void Fail(TlvNode const& tlv, std::string const& wanted)
    {
        std::string path;
        for (OpenLevel const& level : m_open)
            if (&level != &m_open.front()) path += TlvName(level.owner, m_ids) + " > ";
        m_problem = {path + TlvName(tlv, m_ids), tlv.GetValueOffset(),
                     wanted + ", " + std::to_string(tlv.there) + " there"};
    }
    TlvNode NextTlv() const
    {
        OpenLevel const& level = m_open.back();
        TlvNode tlv = {};
        tlv.offset = level.offset;
        tlv.number = TlvU32(level.position);
        tlv.length = TlvU32(level.position + 4);
        tlv.there = std::min<std::size_t>(tlv.length, level.remaining - kTlvHeaderSize);
        tlv.value = level.position + kTlvHeaderSize;
        tlv.depth = m_open.size() - 1;
        FindRule(tlv, level);
        return tlv;
    }
    void FindRule(TlvNode& tlv, OpenLevel const& level) const
    {
        std::vector<TlvRule const*> const& rules = m_ids.GetRules(tlv.number);
        for (TlvRule const* rule : rules)
            if (rule->where == level.level) tlv.rule = rule;
        if (m_view == TlvView::asRead || tlv.rule) return;
        tlv.isCleared = tlv.number == 0 && level.isAtFirst;
        if (tlv.isCleared)
            tlv.rule = FirstBuilt(level.level, level.owner.length);
        else if (!rules.empty())
            tlv.rule = rules.front();
        tlv.isElsewhere = tlv.rule && !tlv.isCleared && !IsOutermost();
    }
    bool HasLevel(TlvNode const& tlv) const
    {
        if (!tlv.rule || tlv.rule->inside == TlvLevel::none) return false;
        if (m_view == TlvView::asRead) return tlv.rule->reading == TlvReading::reads;
        if (tlv.rule->kind == TlvKind::operation && tlv.there < kItemIdSize) return false;
        return !tlv.isElsewhere; // which bounds the depth
    }
    void OpenLevelOf(TlvNode const& tlv)
    {
        bool const isOperation = tlv.rule->kind == TlvKind::operation;
        std::size_t const skipped = isOperation ? kItemIdSize : 0;
        m_open.push_back({tlv.rule->inside, tlv.value + skipped, tlv.there - skipped, tlv.GetValueOffset() + skipped,
                          tlv, !isOperation});
    }

    TlvIdTable const& m_ids;
    TlvView m_view;
    TlvVisitor* m_visitor;
    std::vector<OpenLevel> m_open; // outermost first
    std::optional<TlvProblem> m_problem;
};

} // namespace

std::optional<TlvProblem> WalkTlvs(unsigned char const* bytes, std::size_t size, std::uint64_t offset,
                                   TlvIdTable const& ids, TlvView view, TlvVisitor* visitor)
{
    return Walk(ids, view, visitor).Run(bytes, size, offset);
}

std::string TlvName(TlvNode const& tlv, TlvIdTable const& ids)
{
    if (tlv.isCleared) return tlv.rule ? tlv.rule->name : "0";
    std::string const& name = ids.GetName(tlv.number);
    return name.empty() ? std::to_string(tlv.number) : Printable(name);
}

unsigned int TlvU32(unsigned char const* bytes)
{
    unsigned int value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8 | bytes[i];
    return value;
}

} // namespace ifcoreTool
