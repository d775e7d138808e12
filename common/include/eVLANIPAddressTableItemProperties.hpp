#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <vector>

/// The VLAN tags of an interface, level 0 outermost. Each is the 16-bit tag control information of IEEE 802.1Q:
/// 3 bits of priority, 1 bit CFI, 12 bits of VLAN id.
///
/// Getters beyond the last level answer 0, setters there do nothing. Values are cut to their width.
class IFHOST_API EVLANIPAddressTableItemProperties {
public:
    EVLANIPAddressTableItemProperties() = default; ///< No level, disabled.
    EVLANIPAddressTableItemProperties(unsigned int levels, bool enabled) : m_enabled(enabled), m_tags(levels) {}

    void Empty() { *this = EVLANIPAddressTableItemProperties(); }
    bool IsEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }
    unsigned int GetVLANCount() const { return static_cast<unsigned int>(m_tags.size()); }
    /// The levels that stay keep their tags, new ones are 0.
    void SetVLANCount(unsigned int levels) { m_tags.resize(levels); }

    void SetVlanTag(unsigned int tag, unsigned int level) { SetBits(level, 0, 0xFFFFU, tag); }
    void SetVLANID(unsigned short id, unsigned int level) { SetBits(level, 0, 0xFFFU, id); }
    void SetUserPriority(unsigned char priority, unsigned int level) { SetBits(level, 13, 7U, priority); }
    unsigned int GetVlanTag(unsigned int level) const { return GetBits(level, 0, 0xFFFFU); }
    unsigned short GetVLANID(unsigned int level) const
    {
        return static_cast<unsigned short>(GetBits(level, 0, 0xFFFU));
    }
    unsigned char GetUserPriority(unsigned int level) const
    {
        return static_cast<unsigned char>(GetBits(level, 13, 7U));
    }
    int GetCanonicalFormat(unsigned int level) const { return static_cast<int>(GetBits(level, 12, 1U)); }

    bool operator==(EVLANIPAddressTableItemProperties const& other) const
    {
        return m_enabled == other.m_enabled && m_tags == other.m_tags;
    }
    bool operator!=(EVLANIPAddressTableItemProperties const& other) const { return !(*this == other); }

private:
    friend IFHOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties);
    friend IFHOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties);

    unsigned int GetBits(unsigned int level, unsigned int shift, unsigned int mask) const
    {
        return level < m_tags.size() ? static_cast<unsigned int>(m_tags[level]) >> shift & mask : 0;
    }
    void SetBits(unsigned int level, unsigned int shift, unsigned int mask, unsigned int value)
    {
        if (level >= m_tags.size()) return;
        unsigned int const others = m_tags[level] & ~(mask << shift);
        m_tags[level] = static_cast<unsigned short>(others | (value & mask) << shift);
    }

    bool m_enabled = false;
    std::vector<unsigned short> m_tags; // outermost first
};

/// Enabled, the number of levels as `unsigned long`, the tags as `unsigned short`.
IFHOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties);
/// On an error the properties keep what they held.
IFHOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties);
