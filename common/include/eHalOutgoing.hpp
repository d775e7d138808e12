#pragma once

#include "ifhostExport.hpp"

#include <string>

namespace eHal {

/// The name of the protocol that a message belongs to, by default "".
class IFHOST_API EProtocolName {
public:
    EProtocolName() = default;
    explicit EProtocolName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }
    bool operator==(EProtocolName const& other) const { return m_name == other.m_name; }
    bool operator!=(EProtocolName const& other) const { return m_name != other.m_name; }

private:
    std::string m_name;
};

/// The name of a table, by default "".
class IFHOST_API ETableName {
public:
    ETableName() = default;
    explicit ETableName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }
    bool operator==(ETableName const& other) const { return m_name == other.m_name; }
    bool operator!=(ETableName const& other) const { return m_name != other.m_name; }

private:
    std::string m_name;
};

} // namespace eHal
