#pragma once

#include "tlvSchema.hpp"

#include <iosfwd>
#include <string>
#include <vector>

namespace ifcoreTool {

/// The ids of the sender of messages: their names by their numbers.
class TlvIdTable {
public:
    TlvIdTable(); ///< This build's own.
    /// The form of PrintTlvIdsJson. Numbers that are left out have no name. Throws ToolError.
    explicit TlvIdTable(std::string const& path);

    /// Empty when the sender has not registered the number.
    std::string const& GetName(unsigned int number) const;
    /// What the id means, in one level or several; empty when nothing here knows its name.
    std::vector<TlvRule const*> const& GetRules(unsigned int number) const;
    std::vector<std::string> const& GetNames() const { return m_names; }

private:
    void FindRules();

    std::vector<std::string> m_names;
    std::vector<std::vector<TlvRule const*>> m_rules;
};

/// The library reads messages with this table, as long as both live; afterwards with the one before.
class TlvSender {
public:
    explicit TlvSender(TlvIdTable const& ids);
    ~TlvSender();
    TlvSender(TlvSender const&) = delete;
    TlvSender& operator=(TlvSender const&) = delete;

private:
    std::vector<char const*> m_before;
};

/// A line for each id: number and name.
void PrintTlvIds(std::ostream& out, TlvIdTable const& ids);
/// {"ids": [{"number", "name"}]}, in the order of the numbers.
void PrintTlvIdsJson(std::ostream& out, TlvIdTable const& ids);
/// A chunk that returns a table: the names by their numbers.
void PrintTlvIdsLua(std::ostream& out, TlvIdTable const& ids);

} // namespace ifcoreTool
