#include "tlvDump.hpp"

#include "toolError.hpp"

#include <cstring>
#include <iomanip>
#include <ostream>

namespace ifcoreTool {

namespace {

constexpr char const* kReason =
    "the length of the enclosing TLV is stored 8 bytes wide and clears the first 4 bytes of its value";

// ---- Values ---------------------------------------------------------------------------------------------------------

std::string Hexadecimal(TlvNode const& tlv)
{
    static char const kDigits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * tlv.there);
    for (std::size_t i = 0; i < tlv.there; ++i) {
        text += kDigits[tlv.value[i] >> 4];
        text += kDigits[tlv.value[i] & 0xf];
    }
    return text;
}

std::string BytesAsText(TlvNode const& tlv)
{
    return std::string(reinterpret_cast<char const*>(tlv.value), tlv.there);
}

/// Between quotes; all that is not printable ASCII as an escape, so that it says which bytes there are.
std::string Quoted(TlvNode const& tlv)
{
    static char const kDigits[] = "0123456789abcdef";
    std::string text = "\"";
    for (std::size_t i = 0; i < tlv.there; ++i) {
        unsigned char const c = tlv.value[i];
        if (c == '"' || c == '\\') text += '\\';
        if (c >= 0x20 && c < 0x7f) {
            text += static_cast<char>(c);
        } else {
            text += "\\x";
            text += kDigits[c >> 4];
            text += kDigits[c & 0xf];
        }
    }
    return text + "\"";
}

/// The number of a value that holds one at its begin.
unsigned int Number(TlvNode const& tlv)
{
    return TlvU32(tlv.value);
}

EIPAddress Address(TlvNode const& tlv)
{
    EIPAddress address;
    address.SetAddress(tlv.value, static_cast<unsigned int>(tlv.there),
                       tlv.there == 4 ? EIPAddress::kIPv4 : EIPAddress::kIPv6);
    return address;
}

EMACAddress Mac(TlvNode const& tlv)
{
    EMACAddress mac;
    mac.SetMACAddress(EBlob(tlv.value, static_cast<unsigned int>(tlv.there)));
    return mac;
}

EUID Uid(TlvNode const& tlv)
{
    unsigned long id = 0;
    for (std::size_t i = 8; i-- > 0;) id = id << 8 | tlv.value[i];
    return EUID(id);
}

EComponentId Path(TlvNode const& tlv)
{
    EComponentId id;
    for (std::size_t i = 0; i < tlv.there; i += 4) id += TlvU32(tlv.value + i);
    return id;
}

Json VlanTags(TlvNode const& tlv)
{
    EVLANIPAddressTableItemProperties stack(1, true);
    stack.SetVlanTag(Number(tlv), 0);
    return ToJson(stack);
}

/// Whether the value has the form that its kind says. A number may be longer: the library reads its first 4 bytes.
bool HasForm(TlvNode const& tlv, TlvKind kind)
{
    switch (kind) {
    case TlvKind::number:
    case TlvKind::signedNumber:
    case TlvKind::yesNo:
    case TlvKind::vlanTag: return tlv.there >= 4;
    case TlvKind::address:
    case TlvKind::exactAddress: return tlv.there == 4 || tlv.there == 16;
    case TlvKind::mac: return tlv.there == 6;
    case TlvKind::uid: return tlv.there == 8;
    case TlvKind::componentId: return tlv.there % 4 == 0;
    case TlvKind::text: return true;
    default: return false;
    }
}

/// What a value is shown as: its form when it has it, else its bytes. A level has no value but when it is elsewhere.
enum class Shown { value, bytes, nothing };

Shown ShownOf(TlvNode const& tlv)
{
    if (!tlv.rule) return tlv.there == 0 && tlv.isCleared ? Shown::nothing : Shown::bytes;
    TlvKind const kind = tlv.rule->kind;
    if (kind == TlvKind::level && !tlv.isElsewhere) return Shown::nothing;
    if (kind == TlvKind::presence && tlv.there == 0) return Shown::nothing;
    if (kind == TlvKind::operation && tlv.there >= 4 && !tlv.isElsewhere) return Shown::nothing;
    return HasForm(tlv, kind) ? Shown::value : Shown::bytes;
}

Json NumberJson(TlvNode const& tlv)
{
    Json const number =
        tlv.rule->kind == TlvKind::signedNumber ? ToJson(static_cast<int>(Number(tlv))) : ToJson(Number(tlv));
    return tlv.rule->field ? FieldJson(*tlv.rule->field, number) : number;
}

Json ValueJson(TlvNode const& tlv)
{
    switch (ShownOf(tlv)) {
    case Shown::nothing: return Json();
    case Shown::bytes: return Json(Hexadecimal(tlv));
    case Shown::value: break;
    }
    switch (tlv.rule->kind) {
    case TlvKind::yesNo: return ToJson(Number(tlv) != 0);
    case TlvKind::vlanTag: return VlanTags(tlv)["tags"][0];
    case TlvKind::text: return Json(BytesAsText(tlv));
    case TlvKind::address:
    case TlvKind::exactAddress: return ToJson(Address(tlv));
    case TlvKind::mac: return ToJson(Mac(tlv));
    case TlvKind::uid: return ToJson(Uid(tlv));
    case TlvKind::componentId: return ToJson(Path(tlv));
    default: return NumberJson(tlv);
    }
}

std::string ValueText(TlvNode const& tlv)
{
    switch (ShownOf(tlv)) {
    case Shown::nothing: return "";
    case Shown::bytes: return tlv.there == 0 ? "" : "0x" + Hexadecimal(tlv);
    case Shown::value: break;
    }
    switch (tlv.rule->kind) {
    case TlvKind::text: return Quoted(tlv);
    case TlvKind::vlanTag: return DisplayVlans(VlanTags(tlv));
    case TlvKind::componentId: return DisplayPath(ToJson(Path(tlv)));
    default: break;
    }
    Json const json = ValueJson(tlv);
    return tlv.rule->field ? tlv.rule->field->type->display(json) : DisplayPlain(json);
}

char const* KindName(TlvNode const& tlv)
{
    if (ShownOf(tlv) == Shown::bytes) return "bytes";
    if (!tlv.rule) return "none";
    switch (tlv.rule->kind) {
    case TlvKind::number:
    case TlvKind::signedNumber: return "number";
    case TlvKind::yesNo: return "switch";
    case TlvKind::vlanTag: return "vlan-tag";
    case TlvKind::text: return "text";
    case TlvKind::address:
    case TlvKind::exactAddress: return "address";
    case TlvKind::mac: return "mac";
    case TlvKind::uid: return "uid";
    case TlvKind::componentId: return "component-id";
    case TlvKind::operation: return "operation";
    case TlvKind::level: return "level";
    default: return "none";
    }
}

/// The id of the item of an operation; null for all else.
std::optional<unsigned int> ItemOf(TlvNode const& tlv)
{
    bool const isOperation = tlv.rule && tlv.rule->kind == TlvKind::operation && !tlv.isElsewhere && tlv.there >= 4;
    return isOperation ? std::optional<unsigned int>(Number(tlv)) : std::nullopt;
}

bool IsItemCleared(TlvNode const& tlv)
{
    return ItemOf(tlv) == 0u && tlv.rule->building != TlvBuilding::never;
}

// ---- Text -----------------------------------------------------------------------------------------------------------

class TextDump : public TlvVisitor {
public:
    TextDump(std::ostream& out, TlvIdTable const& ids) : m_out(out), m_ids(ids) {}

    void Enter(TlvNode const& tlv) override
    {
        Place(tlv.offset, std::to_string(tlv.length), tlv.depth);
        if (tlv.isCleared) m_out << (tlv.rule ? "0* " : "0*");
        if (!tlv.isCleared || tlv.rule) m_out << TlvName(tlv, m_ids);
        if (auto const item = ItemOf(tlv)) m_out << "  item " << *item << (IsItemCleared(tlv) ? "*" : "");
        std::string const value = ValueText(tlv);
        if (!value.empty()) m_out << "  " << value;
        m_out << "\n";
        m_hasCleared = m_hasCleared || tlv.isCleared || IsItemCleared(tlv);
    }
    void Leave(TlvNode const& tlv, std::size_t trailing) override
    {
        if (trailing > 0) Trailing(tlv.GetValueOffset() + tlv.there - trailing, trailing, tlv.depth + 1);
    }
    void Trailing(std::uint64_t offset, std::size_t count, std::size_t depth)
    {
        Place(offset, "-", depth);
        m_out << "(" << count << (count == 1 ? " byte" : " bytes") << ", too few for a TLV)\n";
    }
    void Begin() { m_out << "    OFFSET      LENGTH  TLV\n"; }
    void End()
    {
        if (m_hasCleared) m_out << "* 0: " << kReason << "\n";
    }

private:
    void Place(std::uint64_t offset, std::string const& length, std::size_t depth)
    {
        m_out << std::setw(10) << offset << "  " << std::setw(10) << length << "  " << std::string(2 * depth, ' ');
    }

    std::ostream& m_out;
    TlvIdTable const& m_ids;
    bool m_hasCleared = false;
};

// ---- JSON -----------------------------------------------------------------------------------------------------------

/// Written as it is read, a line for each TLV, since the tree of a large message is larger than memory.
class JsonDump : public TlvVisitor {
public:
    JsonDump(std::ostream& out, TlvIdTable const& ids) : m_out(out), m_ids(ids) {}

    void Enter(TlvNode const& tlv) override
    {
        std::string const& name = m_ids.GetName(tlv.number);
        std::optional<unsigned int> const item = ItemOf(tlv);
        m_out << (m_isListEmpty ? "\n" : ",\n") << std::string(2 * m_open + 2, ' ');
        Json json = Json::object();
        json["offset"] = tlv.offset;
        json["id"] = tlv.number;
        json["name"] = name.empty() ? Json() : Json(name);
        json["built-as"] = tlv.isCleared && tlv.rule ? Json(tlv.rule->name) : Json();
        json["reason"] = tlv.isCleared || IsItemCleared(tlv) ? Json(kReason) : Json();
        json["length"] = tlv.length;
        json["kind"] = KindName(tlv);
        json["item"] = item ? Json(*item) : Json();
        json["value"] = ValueJson(tlv);
        std::string const members = json.dump(-1, ' ', false, Json::error_handler_t::replace);
        m_out << members.substr(0, members.size() - 1) << ",\"tlvs\":[";
        m_isListEmpty = true;
        ++m_open;
    }
    void Leave(TlvNode const&, std::size_t trailing) override { Close(trailing); }
    void Begin() { m_out << "{\"tlvs\":["; }
    void End(std::size_t trailing, std::optional<TlvProblem> const& problem)
    {
        while (m_open > 0) Close(0); // what a problem has left open
        Json error;
        if (problem) error = {{"path", problem->path}, {"byte", problem->offset}, {"problem", problem->what}};
        m_out << (m_isListEmpty ? "" : "\n") << "],\"trailing-bytes\":" << trailing
              << ",\"error\":" << error.dump(-1, ' ', false, Json::error_handler_t::replace) << "}\n";
    }

private:
    void Close(std::size_t trailing)
    {
        if (!m_isListEmpty) m_out << "\n" << std::string(2 * m_open, ' ');
        m_out << "],\"trailing-bytes\":" << trailing << "}";
        m_isListEmpty = false;
        --m_open;
    }

    std::ostream& m_out;
    TlvIdTable const& m_ids;
    std::size_t m_open = 0; // TLVs whose list of TLVs is not closed
    bool m_isListEmpty = true;
};

/// Up to the first problem.
std::optional<TlvProblem> Walk(TlvMessageInput& message, TlvIdTable const& ids, TlvVisitor& visitor)
{
    while (message.Next())
        if (auto problem = WalkTlvs(message.GetTlv().data(), message.GetTlv().size(), message.GetOffset(), ids,
                                    TlvView::asBuilt, &visitor))
            return problem;
    return std::nullopt;
}

void Raise(TlvMessageInput const& message, std::optional<TlvProblem> const& problem)
{
    if (problem) throw BadInput(message.GetName() + ": " + problem->GetText());
}

} // namespace

void PrintTlvMessage(std::ostream& out, TlvMessageInput& message, TlvIdTable const& ids)
{
    TextDump dump(out, ids);
    dump.Begin();
    std::optional<TlvProblem> const problem = Walk(message, ids, dump);
    if (!problem && !message.GetTlv().empty()) dump.Trailing(message.GetOffset(), message.GetTlv().size(), 0);
    dump.End();
    Raise(message, problem);
}

void PrintTlvMessageJson(std::ostream& out, TlvMessageInput& message, TlvIdTable const& ids)
{
    JsonDump dump(out, ids);
    dump.Begin();
    std::optional<TlvProblem> const problem = Walk(message, ids, dump);
    dump.End(problem ? 0 : message.GetTlv().size(), problem);
    Raise(message, problem);
}

} // namespace ifcoreTool
