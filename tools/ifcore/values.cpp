#include "values.hpp"

#include "toolError.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <set>
#include <stdexcept>

namespace ifcoreTool {

namespace {

ToolError Unusable(Json const& json, std::string const& wanted)
{
    std::string const given = json.is_string() ? json.get<std::string>() : json.dump();
    return BadInput("'" + given + "' is not " + wanted);
}

std::string TextOf(Json const& json, char const* wanted)
{
    if (!json.is_string()) throw Unusable(json, wanted);
    return json.get<std::string>();
}

/// Digits without sign, decimal or hexadecimal with 0x; false when it is none or too large.
bool ParseDigits(std::string const& text, unsigned long& value)
{
    bool const isHexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    char const* first = text.data() + (isHexadecimal ? 2 : 0);
    char const* last = text.data() + text.size();
    auto const [end, error] = std::from_chars(first, last, value, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == last && first != last;
}

/// An address, made from text by its own constructor.
template <class Value> void FromOwnText(Json const& json, Value& value, char const* wanted)
{
    try {
        value = Value(TextOf(json, wanted));
    } catch (std::invalid_argument const&) {
        throw Unusable(json, wanted);
    }
}

std::vector<std::string> Split(std::string const& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (;;) {
        std::size_t const end = text.find(separator, begin);
        parts.push_back(text.substr(begin, end == std::string::npos ? end : end - begin));
        if (end == std::string::npos) return parts;
        begin = end + 1;
    }
}

// The members of values that have several: one description a type, walked for both directions.

template <class Getter> struct GetterTraits;
template <class Class, class Result> struct GetterTraits<Result (Class::*)() const> {
    using Value = std::decay_t<Result>;
};

class MembersToJson {
public:
    Json json = Json::object();
    template <class Object, class Getter, class Setter>
    void Member(Object& object, char const* name, Getter getter, Setter)
    {
        json[name] = ToJson((object.*getter)());
    }
    template <class Object, class Class, class Value> void Member(Object& object, char const* name, Value Class::*field)
    {
        json[name] = ToJson(object.*field);
    }
};

class MembersFromJson {
public:
    explicit MembersFromJson(Json const& json) : m_json(json)
    {
        if (!json.is_object()) throw Unusable(json, "a JSON object");
    }
    template <class Object, class Getter, class Setter>
    void Member(Object& object, char const* name, Getter, Setter setter)
    {
        typename GetterTraits<Getter>::Value value{};
        if (Take(name, value)) (object.*setter)(value);
    }
    template <class Object, class Class, class Value> void Member(Object& object, char const* name, Value Class::*field)
    {
        Take(name, object.*field);
    }
    /// After the last member: one that is unknown is most likely misspelt.
    void RequireNoOther() const
    {
        for (auto const& member : m_json.items())
            if (m_known.count(member.key()) == 0) throw BadInput("'" + member.key() + "' is no member here");
    }

private:
    template <class Value> bool Take(char const* name, Value& value)
    {
        m_known.insert(name);
        auto const found = m_json.find(name);
        if (found == m_json.end()) return false;
        try {
            FromJson(*found, value);
        } catch (ToolError const& error) {
            throw BadInput(std::string(name) + ": " + error.what());
        }
        return true;
    }

    Json const& m_json;
    std::set<std::string> m_known;
};

template <class Members> void Describe(Members& m, EDHCPTLV& v)
{
    m.Member(v, "type", &EDHCPTLV::GetType, &EDHCPTLV::SetType);
    m.Member(v, "value", &EDHCPTLV::GetValue, &EDHCPTLV::SetValue);
}
template <class Members> void Describe(Members& m, ENSRegOption& v)
{
    m.Member(v, "options", &ENSRegOption::GetOptions, &ENSRegOption::SetOptions);
    m.Member(v, "symbolic-port-name", &ENSRegOption::GetRspnIdName, &ENSRegOption::SetRspnIdName);
    m.Member(v, "symbolic-node-name", &ENSRegOption::GetRsnnNnName, &ENSRegOption::SetRsnnNnName);
    m.Member(v, "extra-name", &ENSRegOption::GetExtraName, &ENSRegOption::SetExtraName);
}
template <class Members> void Describe(Members& m, EPLOGIDestination& v)
{
    m.Member(v, "enabled", &EPLOGIDestination::IsEnabled, &EPLOGIDestination::SetEnabled);
    m.Member(v, "mode", &EPLOGIDestination::GetDestMode, &EPLOGIDestination::SetDestMode);
    m.Member(v, "node-id", &EPLOGIDestination::GetDestNodeId, &EPLOGIDestination::SetDestNodeId);
    m.Member(v, "port-name", &EPLOGIDestination::GetWWPN, &EPLOGIDestination::SetWWPN);
}
template <class Members> void Describe(Members& m, EFCNSQuery& v)
{
    m.Member(v, "flag", &EFCNSQuery::GetFlag, &EFCNSQuery::SetFlag);
    m.Member(v, "command", &EFCNSQuery::GetCommand, &EFCNSQuery::SetCommand);
    m.Member(v, "request-object", &EFCNSQuery::GetRequestObject, &EFCNSQuery::SetRequestObject);
    m.Member(v, "value", &EFCNSQuery::GetRequestObjectValue, &EFCNSQuery::SetRequestObjectValue);
}
template <class Members, class Id> void DescribeId(Members& m, Id& v)
{
    m.Member(v, "subtype", &Id::subType);
    m.Member(v, "mac", &Id::mac);
    m.Member(v, "interface-name", &Id::interfaceName);
}
template <class Members> void Describe(Members& m, ELLDPConfig::LLDPChassisId& v)
{
    DescribeId(m, v);
}
template <class Members> void Describe(Members& m, ELLDPConfig::LLDPPortId& v)
{
    DescribeId(m, v);
}
template <class Members> void Describe(Members& m, EDCBXFeatureTlv& v)
{
    using Feature = EDCBXFeatureTlv;
    // The DCBX subtype and the type come first: a change of the type resets the desired configuration.
    m.Member(v, "dcbx-subtype", &Feature::GetDcbxSubType, &Feature::SetDcbxSubType);
    m.Member(v, "type", &Feature::GetType, &Feature::SetType);
    m.Member(v, "subtype", &Feature::GetSubType, &Feature::SetSubType);
    m.Member(v, "enabled", &Feature::IsEnabled, &Feature::SetEnabled);
    m.Member(v, "willing", &Feature::IsWilling, &Feature::SetWilling);
    m.Member(v, "error", &Feature::IsError, &Feature::SetError);
    m.Member(v, "length", &Feature::GetLength, &Feature::SetLength);
    m.Member(v, "oper-version", &Feature::GetOperVersion, &Feature::SetOperVersion);
    m.Member(v, "max-version", &Feature::GetMaxVersion, &Feature::SetMaxVersion);
    m.Member(v, "override-oper-version", &Feature::IsOverrideOperVersion, &Feature::SetOverrideOperVersion);
    m.Member(v, "desired-configuration", &Feature::GetDesiredCfg, &Feature::SetDesiredCfg);
    m.Member(v, "mismatch", &Feature::IsMismatch, &Feature::SetMismatch);
    m.Member(v, "advertise-type", &Feature::GetDcbxAdvertiseType, &Feature::SetDcbxAdvertiseType);
    m.Member(v, "feature-advertised", &Feature::IsFeatureAdvertised, &Feature::SetFeatureAdvertised);
    m.Member(v, "state", &Feature::GetDcbxState, &Feature::SetDcbxState);
}

template <class Value> Json ObjectToJson(Value value) // a copy: descriptions name getters and setters alike
{
    MembersToJson members;
    Describe(members, value);
    return members.json;
}

template <class Value> void ObjectFromJson(Json const& json, Value& value)
{
    MembersFromJson members(json);
    Describe(members, value);
    members.RequireNoOther();
}

/// The archive keeps 8 bits of the subtype; a larger one would be cut without a word.
template <class Id> void IdFromJson(Json const& json, Id& id)
{
    ObjectFromJson(json, id);
    UnsignedFromJson(Json(static_cast<unsigned int>(id.subType)), 255);
}

} // namespace

Json ToJson(bool value)
{
    return Json(value);
}
Json ToJson(std::string const& value)
{
    return Json(value);
}
Json ToJson(long value)
{
    return Json(std::to_string(value));
}
Json ToJson(unsigned long value)
{
    return Json(std::to_string(value));
}
Json ToJson(EBlob const& value)
{
    return Json(value.GetHexString());
}
Json ToJson(EIPAddress const& value)
{
    return Json(value.GetAsString());
}
Json ToJson(EMACAddress const& value)
{
    return Json(value.GetAsString());
}
Json ToJson(EUID const& value)
{
    return Json(value.GetAsString());
}
Json ToJson(EComponentId const& value)
{
    return SequenceToJson(value.GetId());
}
Json ToJson(EVLANIPAddressTableItemProperties const& value)
{
    Json tags = Json::array();
    for (unsigned int level = 0; level < value.GetVLANCount(); ++level)
        tags.push_back({{"id", value.GetVLANID(level)},
                        {"priority", value.GetUserPriority(level)},
                        {"cfi", value.GetCanonicalFormat(level)}});
    return {{"enabled", value.IsEnabled()}, {"tags", tags}};
}
Json ToJson(EDHCPTLV const& value)
{
    return ObjectToJson(value);
}
Json ToJson(ENSRegOption const& value)
{
    return ObjectToJson(value);
}
Json ToJson(EPLOGIDestination const& value)
{
    return ObjectToJson(value);
}
Json ToJson(EFCNSQuery const& value)
{
    return ObjectToJson(value);
}
Json ToJson(ELLDPConfig::LLDPChassisId const& value)
{
    return ObjectToJson(value);
}
Json ToJson(ELLDPConfig::LLDPPortId const& value)
{
    return ObjectToJson(value);
}
Json ToJson(EDCBXFeatureTlv const& value)
{
    Json json = ObjectToJson(value);
    json["instance-key"] = value.GetHeader().GetInstanceKey();
    return json;
}

void FromJson(Json const& json, bool& value)
{
    if (json.is_boolean()) {
        value = json.get<bool>();
        return;
    }
    std::string const text = TextOf(json, "yes or no");
    for (char const* yes : {"yes", "on", "true", "1"})
        if (text == yes) {
            value = true;
            return;
        }
    for (char const* no : {"no", "off", "false", "0"})
        if (text == no) {
            value = false;
            return;
        }
    throw Unusable(json, "yes or no");
}
void FromJson(Json const& json, std::string& value)
{
    value = TextOf(json, "text");
}
void FromJson(Json const& json, EBlob& value)
{
    std::string const text = TextOf(json, "hexadecimal text");
    std::size_t const digits = static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](unsigned char c) { return std::isxdigit(c) != 0; }));
    // Half a byte is accepted by the blob itself and is a mistake of whoever typed it.
    if (digits % 2 != 0 || digits != text.size() || !value.SetHexString(text))
        throw Unusable(json, "hexadecimal text of whole bytes");
}
void FromJson(Json const& json, EIPAddress& value)
{
    FromOwnText(json, value, "an IP address");
}
void FromJson(Json const& json, EMACAddress& value)
{
    FromOwnText(json, value, "a MAC address");
}
void FromJson(Json const& json, EUID& value)
{
    FromOwnText(json, value, "an identifier of 8 bytes joined by \":\"");
}
void FromJson(Json const& json, EComponentId& value)
{
    std::vector<unsigned int> levels;
    if (json.is_string()) {
        std::string const text = json.get<std::string>();
        if (text != "none" && !text.empty())
            for (std::string const& part : Split(text, '/')) {
                unsigned int level = 0;
                FromJson(Json(part), level);
                levels.push_back(level);
            }
    } else {
        FromJson(json, levels);
    }
    value = EComponentId(levels);
}

static void SetTag(EVLANIPAddressTableItemProperties& stack, unsigned int level, Json const& id, Json const& priority,
                   Json const& cfi)
{
    unsigned long const tag =
        UnsignedFromJson(priority, 7) << 13 | UnsignedFromJson(cfi, 1) << 12 | UnsignedFromJson(id, 4095);
    stack.SetVlanTag(static_cast<unsigned int>(tag), level);
}

static EVLANIPAddressTableItemProperties StackFromText(std::string text)
{
    std::string const disabled = "disabled ";
    bool const isDisabled = text.compare(0, disabled.size(), disabled) == 0;
    if (isDisabled) text.erase(0, disabled.size());
    if (text.empty() || text == "none") return EVLANIPAddressTableItemProperties(0, false);
    std::vector<std::string> const tags = Split(text, ',');
    EVLANIPAddressTableItemProperties stack(static_cast<unsigned int>(tags.size()), !isDisabled);
    for (unsigned int level = 0; level < tags.size(); ++level) {
        std::vector<std::string> parts = Split(tags[level], ':');
        if (parts.size() > 3) throw Unusable(Json(tags[level]), "a VLAN tag ID[:PRIORITY[:CFI]]");
        parts.resize(3, "0");
        SetTag(stack, level, Json(parts[0]), Json(parts[1]), Json(parts[2]));
    }
    return stack;
}

void FromJson(Json const& json, EVLANIPAddressTableItemProperties& value)
{
    if (json.is_string()) {
        value = StackFromText(json.get<std::string>());
        return;
    }
    if (!json.is_object() || !json.contains("enabled") || !json.contains("tags"))
        throw Unusable(json, "a VLAN stack with \"enabled\" and \"tags\"");
    bool enabled = false;
    FromJson(json["enabled"], enabled);
    Json const& tags = json["tags"];
    RequireList(tags);
    EVLANIPAddressTableItemProperties stack(static_cast<unsigned int>(tags.size()), enabled);
    for (unsigned int level = 0; level < tags.size(); ++level) {
        Json const& tag = tags[level];
        if (!tag.is_object()) throw Unusable(tag, "a VLAN tag");
        SetTag(stack, level, tag.value("id", Json()), tag.value("priority", Json(0)), tag.value("cfi", Json(0)));
    }
    value = stack;
}
void FromJson(Json const& json, EDHCPTLV& value)
{
    ObjectFromJson(json, value);
}
void FromJson(Json const& json, ENSRegOption& value)
{
    ObjectFromJson(json, value);
}
void FromJson(Json const& json, EPLOGIDestination& value)
{
    ObjectFromJson(json, value);
}
void FromJson(Json const& json, EFCNSQuery& value)
{
    ObjectFromJson(json, value);
}
void FromJson(Json const& json, ELLDPConfig::LLDPChassisId& value)
{
    IdFromJson(json, value);
}
void FromJson(Json const& json, ELLDPConfig::LLDPPortId& value)
{
    IdFromJson(json, value);
}
void FromJson(Json const& json, EDCBXFeatureTlv& value)
{
    if (!json.is_object()) throw Unusable(json, "a JSON object");
    Json members = json;
    EDCBXFeatureTlvHeader header = value.GetHeader();
    if (auto const key = members.find("instance-key"); key != members.end()) {
        unsigned int instanceKey = 0;
        FromJson(*key, instanceKey);
        header.SetInstanceKey(instanceKey);
        value.SetHeader(header);
        members.erase(key);
    }
    ObjectFromJson(members, value);
}

void RequireList(Json const& json)
{
    if (!json.is_array()) throw Unusable(json, "a JSON list");
}

long SignedFromJson(Json const& json, long least, long most)
{
    std::string const wanted = "a number from " + std::to_string(least) + " to " + std::to_string(most);
    if (!json.is_string() && !json.is_number_integer()) throw Unusable(json, wanted);
    std::string const text = json.is_string() ? json.get<std::string>() : json.dump();
    bool const negative = !text.empty() && text[0] == '-';
    unsigned long magnitude = 0;
    if (!ParseDigits(negative ? text.substr(1) : text, magnitude)) throw Unusable(json, wanted);
    unsigned long const limit = negative ? 0UL - static_cast<unsigned long>(least) : static_cast<unsigned long>(most);
    if (magnitude > limit) throw Unusable(json, wanted);
    return static_cast<long>(negative ? 0UL - magnitude : magnitude);
}

unsigned long UnsignedFromJson(Json const& json, unsigned long most)
{
    std::string const wanted = "a number from 0 to " + std::to_string(most);
    if (!json.is_string() && !json.is_number_integer()) throw Unusable(json, wanted);
    std::string const text = json.is_string() ? json.get<std::string>() : json.dump();
    unsigned long value = 0;
    if (!ParseDigits(text, value) || value > most) throw Unusable(json, wanted);
    return value;
}

std::string DisplayPlain(Json const& json)
{
    if (json.is_boolean()) return json.get<bool>() ? "yes" : "no";
    // Bytes that are no UTF-8 are shown as replacement characters rather than refused.
    if (!json.is_string()) return json.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::string const text = json.get<std::string>();
    return text.empty() ? "-" : text;
}

std::string DisplayHexadecimal(Json const& json)
{
    if (!json.is_number()) return DisplayPlain(json);
    char text[16];
    std::snprintf(text, sizeof text, "0x%06x", json.get<unsigned int>());
    return text;
}

std::string DisplayPath(Json const& json)
{
    std::string text;
    for (Json const& level : json) text += (text.empty() ? "" : "/") + level.dump();
    return text.empty() ? "none" : text;
}

std::string DisplayVlans(Json const& json)
{
    std::string text;
    for (Json const& tag : json["tags"]) {
        if (!text.empty()) text += ",";
        text += tag["id"].dump();
        if (tag["priority"] != 0 || tag["cfi"] != 0) text += ":" + tag["priority"].dump();
        if (tag["cfi"] != 0) text += ":" + tag["cfi"].dump();
    }
    if (text.empty()) return "none";
    return json["enabled"].get<bool>() ? text : "disabled " + text;
}

void InsertMember(Json& object, std::string const& name, Json const& value)
{
    std::size_t const dot = name.find('.');
    if (dot == std::string::npos)
        object[name] = value;
    else
        InsertMember(object[name.substr(0, dot)], name.substr(dot + 1), value);
}

/// How many lists and objects of JSON stand in one another at most; of other text, any number.
static int Nesting(char const* begin, char const* end)
{
    int depth = 0;
    int deepest = 0;
    bool isInText = false;
    for (char const* next = begin; next < end; ++next) {
        if (*next == '"')
            isInText = !isInText;
        else if (isInText && *next == '\\')
            ++next;
        else if (!isInText && (*next == '[' || *next == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!isInText && (*next == ']' || *next == '}'))
            --depth;
    }
    return deepest;
}

Json ParsedJson(char const* begin, char const* end)
{
    // Not by a callback of the parser: with one, its time grows with the square of the length of a list.
    if (Nesting(begin, end) > kMostNested)
        throw BadInput("it is nested more than " + std::to_string(kMostNested) + " deep");
    return Json::parse(begin, end, nullptr, false);
}

Json JsonOfText(std::string const& text, bool isComposite)
{
    if (!isComposite) return Json(text);
    Json json = ParsedJson(text.data(), text.data() + text.size());
    if (json.is_discarded()) throw BadInput("'" + text + "' is not JSON");
    return json;
}

} // namespace ifcoreTool
