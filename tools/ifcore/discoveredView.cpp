#include "discoveredView.hpp"

#include "discoveredValues.hpp"
#include "textTable.hpp"

#include <ostream>

namespace ifcoreTool {

namespace {

/// The library's own texts may have several lines, the last of them ended.
std::vector<std::string> LinesOf(std::string text)
{
    while (!text.empty() && text.back() == '\n') text.pop_back();
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (;;) {
        std::size_t const end = text.find('\n', begin);
        lines.push_back(text.substr(begin, end == std::string::npos ? end : end - begin));
        if (end == std::string::npos) return lines;
        begin = end + 1;
    }
}

bool IsTable(Json const& value)
{
    return value.is_array() && !value.empty() && value.front().is_object() && value.front().contains("name");
}

/// A value in a row of its own; of a text of several lines each line, of the rows of a comparison each member.
void AddValueRows(TextTable& text, std::string const& name, NamedValue const& value)
{
    if (IsTable(value.value)) {
        for (Json const& row : value.value)
            for (auto const& member : row.items())
                if (member.key() != "name")
                    AddValueRows(text, name + "." + Printable(row["name"].get<std::string>()) + "." + member.key(),
                                 {"", member.value()});
        return;
    }
    std::vector<std::string> const lines = LinesOf(ValueText(value.value));
    for (std::size_t i = 0; i < lines.size(); ++i)
        text.AddRow(
            {i == 0 ? name : "",
             Printable(lines[i]) + (*value.unit && i + 1 == lines.size() ? std::string(" ") + value.unit : "")});
}

void AddRows(TextTable& text, std::string const& prefix, NamedValues const& values)
{
    for (NamedValue const& value : values) AddValueRows(text, prefix + value.name, value);
}

Json Members(NamedValues const& values, Json object = Json::object())
{
    for (NamedValue const& value : values) InsertMember(object, value.name, value.value);
    return object;
}

Json InfoJson(EDiscoveredInfo const& info)
{
    Json json = Members(ValuesOf(info), {{"id", info.GetLocalId()}});
    json["neighbors"] = Json::array();
    for (unsigned int id : NeighborIds(info))
        json["neighbors"].push_back(Members(ValuesOf(*info.GetNeighbor(id)), {{"id", id}}));
    ForEachProtocol([&](char const* name, auto get) { json[name] = Members(ValuesOf(get(info))); });
    return json;
}

std::string ProtocolsOf(EDiscoveredInfo const& info)
{
    std::string names;
    ForEachProtocol([&](char const* name, auto get) {
        if (HasLearnt(get(info))) names += (names.empty() ? "" : ",") + std::string(name);
    });
    return names.empty() ? "-" : names;
}

std::string ValueOf(EDiscoveredInfo const& info, std::string const& name)
{
    for (NamedValue const& value : ValuesOf(info))
        if (value.name == name) return ValueText(value.value);
    return "-";
}

} // namespace

void PrintOverview(std::ostream& out, EDiscoveredTable const& table)
{
    TextTable text;
    text.AddRow({"ID", "STATE", "NEIGHBORS", "PROTOCOLS", "ADDRESSES"});
    for (unsigned int id : InfoIds(table)) {
        EDiscoveredInfo const& info = *table.GetInfo(id);
        text.AddRow({std::to_string(id), info.IsInterfaceUp() ? "up" : "down",
                     std::to_string(info.GetNeighbors().size()), ProtocolsOf(info), ValueOf(info, "addresses")});
    }
    text.Print(out);
    if (!table.HasDefaultMAC()) return;
    out << "default MAC " << table.GetDefaultMAC().GetAsString() << " of interface " << table.GetDefaultMACIfId()
        << " neighbor " << table.GetDefaultMACNbrId() << "\n";
}

void PrintInfo(std::ostream& out, EDiscoveredInfo const& info)
{
    out << "interface " << info.GetLocalId() << "\n";
    TextTable text;
    AddRows(text, "", ValuesOf(info));
    for (unsigned int id : NeighborIds(info))
        AddRows(text, "neighbor." + std::to_string(id) + ".", ValuesOf(*info.GetNeighbor(id)));
    ForEachProtocol([&](std::string const& name, auto get) {
        if (HasLearnt(get(info))) AddRows(text, name + ".", ValuesOf(get(info)));
    });
    text.Print(out);
}

void PrintTableSettings(std::ostream& out, EDiscoveredTable const& table)
{
    out << "table\n";
    TextTable text;
    AddRows(text, "", ValuesOf(table));
    text.Print(out);
}

Json TableJson(EDiscoveredTable const& table, std::vector<unsigned int> const& infoIds)
{
    Json json = {{"table", Members(ValuesOf(table))}, {"infos", Json::array()}};
    for (unsigned int id : infoIds) json["infos"].push_back(InfoJson(*table.GetInfo(id)));
    return json;
}

} // namespace ifcoreTool
