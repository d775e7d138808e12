#include "eMultiComponentId.hpp"

void EMultiComponentId::SetId(EComponentId const& id)
{
    m_ids = std::vector<EComponentId>(1, id); // id may be one of ours
}

EComponentId const& EMultiComponentId::GetId() const
{
    static EComponentId const kNone;
    return m_ids.empty() ? kNone : m_ids.front();
}

bool EMultiComponentId::GetId(EComponentId& id, unsigned int index) const
{
    if (index >= m_ids.size()) {
        id.Empty();
        return false;
    }
    id = m_ids[index];
    return true;
}
