#include "textTable.hpp"

#include <algorithm>
#include <ostream>

namespace ifcoreTool {

/// Columns that a UTF-8 text takes, counted as one a character.
static std::size_t WidthOf(std::string const& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}

void TextTable::Print(std::ostream& out) const
{
    std::vector<std::size_t> widths;
    for (auto const& row : m_rows) {
        if (widths.size() < row.size()) widths.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    for (auto const& row : m_rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) line += std::string(widths[i] - WidthOf(row[i]) + 2, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << "\n";
    }
}

std::string Printable(std::string const& text)
{
    std::string result = text;
    for (char& c : result)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    return result;
}

} // namespace ifcoreTool
