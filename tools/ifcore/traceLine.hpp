#pragma once

#include "textTable.hpp"

#include <ostream>
#include <string>

namespace ifcoreTool {

/// The kinds of observer operations are told by the first words of their names.
inline bool StartsWith(std::string const& text, std::string const& start)
{
    return text.compare(0, start.size(), start) == 0;
}

/// One line for one call of an observer: the operation, the record, what changes (may be empty).
inline void WriteTraceLine(std::ostream& out, char const* operation, std::string const& subject,
                           std::string const& change)
{
    out << operation << "  " << subject;
    if (!change.empty()) out << "  " << Printable(change);
    out << "\n";
}

} // namespace ifcoreTool
