#pragma once

#include "eArchive.hpp"

#include <initializer_list>
#include <vector>

class MINIMAL_HOST_API EComponentId {
public:
    enum MatchingTypes { MATCH_EXACT = 0, MATCH_PREFIX = 1 };

    EComponentId() = default;
    EComponentId(std::vector<unsigned int> const& levels) : m_levels(levels) {}
    EComponentId(std::initializer_list<unsigned int> levels) : m_levels(levels) {}

    EComponentId& operator+=(unsigned int level)
    {
        m_levels.push_back(level);
        return *this;
    }
    unsigned int operator[](unsigned long level) const { return m_levels.at(level); }
    unsigned int GetIdSize() const { return static_cast<unsigned int>(m_levels.size()); }
    std::vector<unsigned int> const& GetId() const { return m_levels; }
    void Empty() { m_levels.clear(); }
    bool operator==(EComponentId const& other) const { return m_levels == other.m_levels; }
    bool operator!=(EComponentId const& other) const { return m_levels != other.m_levels; }
    bool operator<(EComponentId const& other) const { return m_levels < other.m_levels; }

private:
    std::vector<unsigned int> m_levels;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EComponentId const& id);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EComponentId& id);
