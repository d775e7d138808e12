#include "eUniqueIDGenerator.hpp"

EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator)
{
    return archive << generator.m_next;
}

EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator)
{
    if (!archive.IsStoring()) return archive >> generator.m_next;
    generator = EUniqueIDGenerator();
    return archive;
}
