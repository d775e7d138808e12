#pragma once

#include "eArchive.hpp"

class MINIMAL_HOST_API EVLAN {
public:
    void Empty() { *this = EVLAN(); }
    void SetVLANID(unsigned int id) { m_id = id & 0xFFFU; }
    void SetUserPriority(int priority) { m_priority = priority & 7; }
    void SetCanonicalFormat(int indicator) { m_canonical = indicator & 1; }
    unsigned int GetVLANID() const { return m_id; }
    int GetUserPriority() const { return m_priority; }
    int GetCanonicalFormat() const { return m_canonical; }

private:
    unsigned int m_id = 0;
    int m_priority = 0;
    int m_canonical = 0;
};
