#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"
#include "eComponentId.hpp"
#include "eIPAddress.hpp"
#include "eMACAddress.hpp"
#include "eUID.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"

#include "ifcore/ifcore.hpp"

#include <nlohmann/json.hpp>

#include <limits>
#include <list>
#include <string>
#include <type_traits>
#include <vector>

/// Values of the table as JSON and back. Text typed by people is a JSON string, or JSON for values of several members.
/// 64-bit numbers are JSON strings, since many readers of JSON keep no more than 53 bits.
namespace ifcoreTool {

using Json = nlohmann::ordered_json;

Json ToJson(bool value);
Json ToJson(std::string const& value);
Json ToJson(long value);
Json ToJson(unsigned long value);
Json ToJson(EBlob const& value); ///< Hexadecimal text.
Json ToJson(EIPAddress const& value);
Json ToJson(EMACAddress const& value);
Json ToJson(EUID const& value);
Json ToJson(EComponentId const& value); ///< A list of levels.
Json ToJson(EVLANIPAddressTableItemProperties const& value);
Json ToJson(EDHCPTLV const& value);
Json ToJson(ENSRegOption const& value);
Json ToJson(EPLOGIDestination const& value);
Json ToJson(EFCNSQuery const& value);
Json ToJson(ELLDPConfig::LLDPChassisId const& value);
Json ToJson(ELLDPConfig::LLDPPortId const& value);
Json ToJson(EDCBXFeatureTlv const& value);

// Each throws ToolError (bad input) that says what was wanted. Members that are left out keep their values.
void FromJson(Json const& json, bool& value); ///< Also "yes", "no", "on", "off", "true", "false", "1", "0".
void FromJson(Json const& json, std::string& value);
void FromJson(Json const& json, EBlob& value);
void FromJson(Json const& json, EIPAddress& value);
void FromJson(Json const& json, EMACAddress& value);
void FromJson(Json const& json, EUID& value);
void FromJson(Json const& json, EComponentId& value); ///< Also "0/1/5"; "none" is the empty path.
/// Also "100", "100:3", "100:3:1" (id, priority, CFI) with "," between tags, outermost first; "none"; with "disabled "
/// in front, tags that are not used.
void FromJson(Json const& json, EVLANIPAddressTableItemProperties& value);
void FromJson(Json const& json, EDHCPTLV& value);
void FromJson(Json const& json, ENSRegOption& value);
void FromJson(Json const& json, EPLOGIDestination& value);
void FromJson(Json const& json, EFCNSQuery& value);
void FromJson(Json const& json, ELLDPConfig::LLDPChassisId& value);
void FromJson(Json const& json, ELLDPConfig::LLDPPortId& value);
void FromJson(Json const& json, EDCBXFeatureTlv& value);

/// A number from \p least to \p most as JSON number or as text, decimal or hexadecimal with 0x.
long SignedFromJson(Json const& json, long least, long most);
unsigned long UnsignedFromJson(Json const& json, unsigned long most);

/// "yes" and "no", numbers in decimal, texts as they are ("-" when empty), everything else as JSON in one line.
std::string DisplayPlain(Json const& json);
std::string DisplayHexadecimal(Json const& json); ///< Numbers of 24 bits: "0x0efc00".
std::string DisplayPath(Json const& json);        ///< Levels joined by "/".
std::string DisplayVlans(Json const& json);       ///< In the short form that FromJson takes.

// The forms over all numbers, enumerations and sequences.

template <class Number>
constexpr bool kIsNumber = (std::is_integral_v<Number> && !std::is_same_v<Number, bool>) || std::is_enum_v<Number>;

template <class Number, bool isEnumeration = std::is_enum_v<Number>> struct NumberTraits {
    using Type = Number;
};
template <class Number> struct NumberTraits<Number, true> {
    using Type = std::underlying_type_t<Number>;
};

template <class Number> std::enable_if_t<kIsNumber<Number> && sizeof(Number) <= 4, Json> ToJson(Number value)
{
    using Type = typename NumberTraits<Number>::Type;
    if constexpr (std::is_signed_v<Type>)
        return Json(static_cast<int>(value));
    else
        return Json(static_cast<unsigned int>(value));
}

template <class Number> std::enable_if_t<kIsNumber<Number>> FromJson(Json const& json, Number& value)
{
    using Type = typename NumberTraits<Number>::Type;
    using Limits = std::numeric_limits<Type>;
    if constexpr (std::is_signed_v<Type>)
        value = static_cast<Number>(SignedFromJson(json, Limits::min(), Limits::max()));
    else
        value = static_cast<Number>(UnsignedFromJson(json, Limits::max()));
}

template <class Sequence> Json SequenceToJson(Sequence const& values)
{
    Json list = Json::array();
    for (auto const& value : values) list.push_back(ToJson(value));
    return list;
}
template <class Value> Json ToJson(std::list<Value> const& values)
{
    return SequenceToJson(values);
}
template <class Value> Json ToJson(std::vector<Value> const& values)
{
    return SequenceToJson(values);
}

void RequireList(Json const& json); ///< Throws ToolError when it is none.

template <class Sequence> void SequenceFromJson(Json const& json, Sequence& values)
{
    RequireList(json);
    values.clear();
    for (Json const& element : json) {
        typename Sequence::value_type value{};
        FromJson(element, value);
        values.push_back(std::move(value));
    }
}
template <class Value> void FromJson(Json const& json, std::list<Value>& values)
{
    SequenceFromJson(json, values);
}
template <class Value> void FromJson(Json const& json, std::vector<Value>& values)
{
    SequenceFromJson(json, values);
}

/// Sets the member of this name in an object; the parts of a name with dots are the objects on the way.
void InsertMember(Json& object, std::string const& name, Json const& value);

constexpr int kMostNested = 64; // lists and objects in one another; the values here need 3
/// Discarded when it is no JSON. Throws ToolError when it is nested deeper: to copy or to print it would take a call
/// for each level.
Json ParsedJson(char const* begin, char const* end);

/// JSON that stands for text typed by people: JSON itself when \p isComposite, else the text as it is.
Json JsonOfText(std::string const& text, bool isComposite);

/// What kind of text a value of this type is made from, for people; whether that is JSON.
struct ValueType {
    char const* description;
    bool isComposite;
    std::string (*display)(Json const&);
};

template <class Value> struct ValueTypeOf;
#define IFCORE_VALUE_TYPE(Type, description, isComposite, display)                                                     \
    template <> struct ValueTypeOf<Type> {                                                                             \
        static constexpr ValueType kType{description, isComposite, display};                                           \
    };
IFCORE_VALUE_TYPE(bool, "yes or no", false, DisplayPlain)
IFCORE_VALUE_TYPE(signed char, "number, -128 to 127", false, DisplayPlain)
IFCORE_VALUE_TYPE(unsigned char, "number, 0 to 255", false, DisplayPlain)
IFCORE_VALUE_TYPE(short, "number, 16 bits with sign", false, DisplayPlain)
IFCORE_VALUE_TYPE(unsigned short, "number, 16 bits", false, DisplayPlain)
IFCORE_VALUE_TYPE(int, "number, 32 bits with sign", false, DisplayPlain)
IFCORE_VALUE_TYPE(unsigned int, "number, 32 bits", false, DisplayPlain)
IFCORE_VALUE_TYPE(long, "number, 64 bits with sign", false, DisplayPlain)
IFCORE_VALUE_TYPE(unsigned long, "number, 64 bits", false, DisplayPlain)
IFCORE_VALUE_TYPE(std::string, "text", false, DisplayPlain)
IFCORE_VALUE_TYPE(EIPAddress, "IP address", false, DisplayPlain)
IFCORE_VALUE_TYPE(EMACAddress, "MAC address", false, DisplayPlain)
IFCORE_VALUE_TYPE(EUID, "8 bytes joined by \":\"", false, DisplayPlain)
IFCORE_VALUE_TYPE(EComponentId, "path, levels joined by \"/\"", false, DisplayPath)
IFCORE_VALUE_TYPE(EVLANIPAddressTableItemProperties, "ID[:PRIORITY[:CFI]],... or none", false, DisplayVlans)
IFCORE_VALUE_TYPE(ENSRegOption, "JSON object: options, symbolic-port-name, symbolic-node-name, extra-name", true,
                  DisplayPlain)
IFCORE_VALUE_TYPE(EFCNSQuery, "JSON object: flag, command, request-object, value", true, DisplayPlain)
IFCORE_VALUE_TYPE(ELLDPConfig::LLDPChassisId, "JSON object: subtype, mac, interface-name", true, DisplayPlain)
IFCORE_VALUE_TYPE(ELLDPConfig::LLDPPortId, "JSON object: subtype, mac, interface-name", true, DisplayPlain)
IFCORE_VALUE_TYPE(std::list<EDHCPTLV>, "JSON list of: type, value (hexadecimal)", true, DisplayPlain)
IFCORE_VALUE_TYPE(std::vector<EPLOGIDestination>, "JSON list of: enabled, mode, node-id, port-name", true, DisplayPlain)
IFCORE_VALUE_TYPE(std::vector<EDCBXFeatureTlv>,
                  "JSON list of: dcbx-subtype, type, subtype, enabled, willing, error, ...; `show` has all", true,
                  DisplayPlain)
#undef IFCORE_VALUE_TYPE

} // namespace ifcoreTool
