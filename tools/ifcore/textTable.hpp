#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace ifcoreTool {

/// Rows of text in columns that are as wide as their widest cell, two spaces apart.
class TextTable {
public:
    void AddRow(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }
    /// The last cell of a row is not padded, so that no line ends with spaces.
    void Print(std::ostream& out) const;

private:
    std::vector<std::vector<std::string>> m_rows;
};

/// Text from elsewhere (a name, an option) made fit for a terminal: control characters become "?".
std::string Printable(std::string const& text);

} // namespace ifcoreTool
