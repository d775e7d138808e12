#pragma once

#include "eArchive.hpp"

class MINIMAL_HOST_API EUniqueIDGenerator {
public:
    unsigned int Next() { return m_next++; }
    void SkipPast(unsigned int id)
    {
        if (id >= m_next) m_next = id + 1;
    }

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator);
    friend MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator);

    unsigned int m_next = 1;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EUniqueIDGenerator const& generator);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EUniqueIDGenerator& generator);
