#pragma once

#include "eComponentId.hpp"
#include "ifhostExport.hpp"

#include <vector>

/// The target of a command: paths, and one list of leaves below them.
class IFHOST_API EMultiComponentId {
public:
    EMultiComponentId() = default;
    explicit EMultiComponentId(EComponentId const& id) : m_ids(1, id) {}

    void AddId(EComponentId const& id) { m_ids.push_back(id); }
    /// Replaces all ids by this one; the leaves stay.
    void SetId(EComponentId const& id);
    /// The first id, without leaves; an empty one when there is none.
    EComponentId const& GetId() const;
    /// False, with \p id left empty, when there is none.
    bool GetId(EComponentId& id) const { return GetId(id, 0); }
    /// The same for the \p index-th, from 0 on.
    bool GetId(EComponentId& id, unsigned int index) const;
    /// The leaves stay.
    void ClearAllIds() { m_ids.clear(); }
    std::vector<unsigned int> const& GetLeaves() const { return m_leaves; }
    void SetLeaves(std::vector<unsigned int> const& leaves) { m_leaves = leaves; }
    bool operator==(EMultiComponentId const& other) const { return m_ids == other.m_ids && m_leaves == other.m_leaves; }
    bool operator!=(EMultiComponentId const& other) const { return !(*this == other); }

private:
    std::vector<EComponentId> m_ids;
    std::vector<unsigned int> m_leaves;
};
