#pragma once

#include "eArchive.hpp"

#include <string>

namespace eHal {

class MINIMAL_HOST_API EProtocolName {
public:
    explicit EProtocolName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }

private:
    std::string m_name;
};

class MINIMAL_HOST_API ETableName {
public:
    explicit ETableName(std::string const& name) : m_name(name) {}
    std::string const& GetName() const { return m_name; }

private:
    std::string m_name;
};

} // namespace eHal
