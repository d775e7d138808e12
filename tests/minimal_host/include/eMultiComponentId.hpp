#pragma once

#include "eComponentId.hpp"

#include <vector>

class MINIMAL_HOST_API EMultiComponentId {
public:
    EMultiComponentId() = default;
    explicit EMultiComponentId(EComponentId const& id) : m_ids(1, id) {}

    void AddId(EComponentId const& id) { m_ids.push_back(id); }
    void SetId(EComponentId const& id) { m_ids.assign(1, EComponentId(id)); }
    EComponentId GetId() const { return m_ids.empty() ? EComponentId() : m_ids.front(); }
    bool GetId(EComponentId& id) const { return GetId(id, 0); }
    bool GetId(EComponentId& id, unsigned int index) const
    {
        id = index < m_ids.size() ? m_ids[index] : EComponentId();
        return index < m_ids.size();
    }
    void ClearAllIds() { m_ids.clear(); }
    std::vector<unsigned int> const& GetLeaves() const { return m_leaves; }
    void SetLeaves(std::vector<unsigned int> const& leaves) { m_leaves = leaves; }
    bool operator==(EMultiComponentId const& other) const { return m_ids == other.m_ids && m_leaves == other.m_leaves; }

private:
    std::vector<EComponentId> m_ids;
    std::vector<unsigned int> m_leaves;
};
