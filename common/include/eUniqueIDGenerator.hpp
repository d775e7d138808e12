#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

/// Hands out the ids 1, 2, ... 4294967295, each once.
class IFHOST_API EUniqueIDGenerator {
public:
    /// 0, from then on always, when all ids are used up.
    unsigned int Next() { return m_next == 0 ? 0 : m_next++; }
    /// All later ids are greater than \p id.
    void SkipPast(unsigned int id)
    {
        if (m_next != 0 && id >= m_next) m_next = id + 1;
    }

private:
    friend IFHOST_API EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator);
    friend IFHOST_API EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator);

    unsigned int m_next = 1; // 0: used up
};

/// The next id as `unsigned int`; 0 when they are used up.
IFHOST_API EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator);
/// Replaces the generator. On an error it stays as it was; from an archive that is being written it becomes a fresh
/// one.
IFHOST_API EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator);
