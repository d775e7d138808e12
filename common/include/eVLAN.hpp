#pragma once

#include "ifhostExport.hpp"

/// The tag control information of one VLAN tag (IEEE 802.1Q), by default all zero. Values are cut to their width.
class IFHOST_API EVLAN {
public:
    void Empty() { *this = EVLAN(); }
    void SetVLANID(unsigned int id) { m_id = id & 0xFFFU; }                 ///< 12 bits
    void SetUserPriority(int priority) { m_priority = priority & 7; }       ///< 3 bits
    void SetCanonicalFormat(int indicator) { m_canonical = indicator & 1; } ///< 1 bit (CFI)
    unsigned int GetVLANID() const { return m_id; }
    int GetUserPriority() const { return m_priority; }
    int GetCanonicalFormat() const { return m_canonical; }
    bool operator==(EVLAN const& other) const
    {
        return m_id == other.m_id && m_priority == other.m_priority && m_canonical == other.m_canonical;
    }
    bool operator!=(EVLAN const& other) const { return !(*this == other); }

private:
    unsigned int m_id = 0; // 0 to 4095
    int m_priority = 0;    // 0 to 7
    int m_canonical = 0;   // 0 or 1
};
