#include "eComponentId.hpp"

EArchive& operator<<(EArchive& archive, EComponentId const& id)
{
    archive << static_cast<unsigned long>(id.GetId().size());
    for (unsigned int level : id.GetId()) archive << level;
    return archive;
}

EArchive& operator>>(EArchive& archive, EComponentId& id)
{
    std::vector<unsigned int> levels(archive.ReadCount());
    for (unsigned int& level : levels) archive >> level;
    id.m_levels = std::move(levels);
    return archive;
}
