#pragma once

#include "eArchive.hpp"

#include <vector>

class MINIMAL_HOST_API EVLANIPAddressTableItemProperties {
public:
    EVLANIPAddressTableItemProperties() = default;
    EVLANIPAddressTableItemProperties(unsigned int levels, bool enabled) : m_enabled(enabled), m_tags(levels) {}

    void Empty() { *this = EVLANIPAddressTableItemProperties(); }
    bool IsEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }
    unsigned int GetVLANCount() const { return static_cast<unsigned int>(m_tags.size()); }
    void SetVLANCount(unsigned int levels) { m_tags.resize(levels); }
    void SetVlanTag(unsigned int tag, unsigned int level)
    {
        if (level < m_tags.size()) m_tags[level] = tag & 0xFFFFU;
    }
    void SetVLANID(unsigned short id, unsigned int level)
    {
        SetVlanTag((GetVlanTag(level) & 0xF000U) | (id & 0xFFFU), level);
    }
    void SetUserPriority(unsigned char priority, unsigned int level)
    {
        SetVlanTag((GetVlanTag(level) & 0x1FFFU) | (priority & 7U) << 13, level);
    }
    unsigned int GetVlanTag(unsigned int level) const { return level < m_tags.size() ? m_tags[level] : 0; }
    unsigned short GetVLANID(unsigned int level) const
    {
        return static_cast<unsigned short>(GetVlanTag(level) & 0xFFFU);
    }
    unsigned char GetUserPriority(unsigned int level) const
    {
        return static_cast<unsigned char>(GetVlanTag(level) >> 13);
    }
    int GetCanonicalFormat(unsigned int level) const { return static_cast<int>(GetVlanTag(level) >> 12 & 1U); }
    bool operator!=(EVLANIPAddressTableItemProperties const& other) const
    {
        return m_enabled != other.m_enabled || m_tags != other.m_tags;
    }

private:
    friend MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& vlans);
    friend MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& vlans);

    bool m_enabled = false;
    std::vector<unsigned int> m_tags;
};

MINIMAL_HOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& vlans);
MINIMAL_HOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& vlans);
