#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <initializer_list>
#include <vector>

/// A path of ids from a table (level 0) down to a record.
class IFHOST_API EComponentId {
public:
    /// How a path is held against the id of a record.
    enum MatchingTypes {
        MATCH_EXACT = 0,  ///< The path is the record's id.
        MATCH_PREFIX = 1, ///< The path starts with the record's id.
    };

    EComponentId() = default;
    EComponentId(std::vector<unsigned int> const& levels) : m_levels(levels) {}
    EComponentId(std::initializer_list<unsigned int> levels) : m_levels(levels) {}

    EComponentId& operator+=(unsigned int level) ///< Appends one level.
    {
        m_levels.push_back(level);
        return *this;
    }
    /// 0 beyond the last level; creates nothing.
    unsigned int operator[](unsigned long level) const { return level < m_levels.size() ? m_levels[level] : 0; }
    unsigned int GetIdSize() const { return static_cast<unsigned int>(m_levels.size()); } ///< In levels.
    std::vector<unsigned int> const& GetId() const { return m_levels; }
    void Empty() { m_levels.clear(); }
    bool operator==(EComponentId const& other) const { return m_levels == other.m_levels; }
    bool operator!=(EComponentId const& other) const { return m_levels != other.m_levels; }
    /// Level by level; a path comes before those that start with it.
    bool operator<(EComponentId const& other) const { return m_levels < other.m_levels; }

private:
    friend IFHOST_API EArchive& operator>>(EArchive& archive, EComponentId& id);

    std::vector<unsigned int> m_levels;
};

/// The number of levels as `unsigned long`, then the levels.
IFHOST_API EArchive& operator<<(EArchive& archive, EComponentId const& id);
/// On an error the id keeps what it held.
IFHOST_API EArchive& operator>>(EArchive& archive, EComponentId& id);
