#include "tlvIdTable.hpp"

#include "archiveFile.hpp"
#include "textTable.hpp"
#include "toolError.hpp"

#include "tlvBuilder.hpp"
#include "tlvReader.hpp"

#include <ostream>
#include <unordered_map>

namespace ifcoreTool {

namespace {

constexpr unsigned long kMostNumber = 999999; // of an id in a file: what is no number of an id takes no memory

using RulesByName = std::unordered_map<std::string, std::vector<TlvRule const*>>;

RulesByName const& Rules()
{
    static RulesByName const kRules = [] {
        RulesByName rules;
        for (TlvRule const& rule : TlvSchema()) rules[rule.name].push_back(&rule);
        return rules;
    }();
    return kRules;
}

Json Member(Json const& json, char const* name)
{
    auto const found = json.is_object() ? json.find(name) : json.end();
    if (!json.is_object() || found == json.end()) throw BadInput(std::string("an id has no member \"") + name + "\"");
    return *found;
}

std::vector<std::string> NamesFromJson(Json const& json)
{
    if (!json.is_object() || !json.contains("ids")) throw BadInput("this is no object with the member \"ids\"");
    RequireList(json["ids"]);
    std::vector<std::string> names;
    std::vector<bool> isTaken;
    for (Json const& id : json["ids"]) {
        std::size_t const number = UnsignedFromJson(Member(id, "number"), kMostNumber);
        std::string name;
        FromJson(Member(id, "name"), name);
        if (name.find('\0') != std::string::npos) throw BadInput("a name has a character 0");
        if (names.size() <= number) {
            names.resize(number + 1);
            isTaken.resize(number + 1);
        }
        if (isTaken[number]) throw BadInput("the number " + std::to_string(number) + " is there twice");
        isTaken[number] = true;
        names[number] = name;
    }
    return names;
}

std::string LuaString(std::string const& text)
{
    std::string quoted = "\"";
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (byte < 0x20 || byte >= 0x7f) {
            std::string const digits = std::to_string(byte);
            quoted += "\\" + std::string(3 - digits.size(), '0') + digits;
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

} // namespace

TlvIdTable::TlvIdTable()
{
    for (char const* name : Protocol::TLVBuilder::known_tlv_table()) m_names.push_back(name ? name : "");
    FindRules();
}

TlvIdTable::TlvIdTable(std::string const& path)
{
    Bytes const text = ReadWholeFile(path);
    try {
        auto const* const begin = reinterpret_cast<char const*>(text.data());
        Json const json = ParsedJson(begin, begin + text.size());
        if (json.is_discarded()) throw BadInput("this is not JSON");
        m_names = NamesFromJson(json);
    } catch (ToolError const& error) {
        throw BadInput(path + ": " + error.what());
    }
    FindRules();
}

void TlvIdTable::FindRules()
{
    m_rules.reserve(m_names.size());
    for (std::string const& name : m_names) {
        auto const found = name.empty() ? Rules().end() : Rules().find(name); // most are, where numbers are large
        m_rules.push_back(found == Rules().end() ? std::vector<TlvRule const*>() : found->second);
    }
}

std::string const& TlvIdTable::GetName(unsigned int number) const
{
    static std::string const kNone;
    return number < m_names.size() ? m_names[number] : kNone;
}

std::vector<TlvRule const*> const& TlvIdTable::GetRules(unsigned int number) const
{
    static std::vector<TlvRule const*> const kNone;
    return number < m_rules.size() ? m_rules[number] : kNone;
}

TlvSender::TlvSender(TlvIdTable const& ids)
{
    for (std::string const& name : ids.GetNames()) m_before.push_back(name.c_str());
    m_before.swap(TLVReader::external_tlv_table);
}

TlvSender::~TlvSender()
{
    m_before.swap(TLVReader::external_tlv_table);
}

void PrintTlvIds(std::ostream& out, TlvIdTable const& ids)
{
    TextTable text;
    text.AddRow({"NUMBER", "NAME"});
    for (std::size_t number = 0; number < ids.GetNames().size(); ++number)
        text.AddRow({std::to_string(number), Printable(DisplayPlain(ids.GetNames()[number]))});
    text.Print(out);
}

void PrintTlvIdsJson(std::ostream& out, TlvIdTable const& ids)
{
    Json list = Json::array();
    for (std::size_t number = 0; number < ids.GetNames().size(); ++number)
        list.push_back({{"number", number}, {"name", ids.GetNames()[number]}});
    Json json = Json::object();
    json["ids"] = std::move(list);
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

void PrintTlvIdsLua(std::ostream& out, TlvIdTable const& ids)
{
    out << "-- Names of TLV ids by their numbers.\nreturn {\n";
    for (std::size_t number = 0; number < ids.GetNames().size(); ++number)
        out << "    [" << number << "] = " << LuaString(ids.GetNames()[number]) << ",\n";
    out << "}\n";
}

} // namespace ifcoreTool
