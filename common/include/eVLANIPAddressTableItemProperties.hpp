#pragma once

#include "eArchive.hpp"
#include "ifhostExport.hpp"

#include <algorithm>
#include <array>
#include <vector>

/// The VLAN tags of an interface, level 0 outermost. Each is the 16-bit tag control information of IEEE 802.1Q:
/// 3 bits of priority, 1 bit CFI, 12 bits of VLAN id.
///
/// Getters beyond the last level answer 0, setters there do nothing. Values are cut to their width.
class IFHOST_API EVLANIPAddressTableItemProperties {
public:
    EVLANIPAddressTableItemProperties() = default; ///< No level, disabled.
    EVLANIPAddressTableItemProperties(unsigned int levels, bool enabled) : m_enabled(enabled) { SetVLANCount(levels); }

    void Empty() { *this = EVLANIPAddressTableItemProperties(); }
    bool IsEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }
    unsigned int GetVLANCount() const { return m_outerCount + static_cast<unsigned int>(m_innerTags.size()); }
    /// The levels that stay keep their tags, new ones are 0.
    void SetVLANCount(unsigned int levels)
    {
        unsigned int const outer = std::min(levels, kOuterLevels);
        m_innerTags.resize(levels - outer);
        std::fill(m_outerTags.begin() + outer, m_outerTags.end(), static_cast<unsigned short>(0));
        m_outerCount = static_cast<unsigned char>(outer);
    }

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
        return m_enabled == other.m_enabled && m_outerCount == other.m_outerCount && m_outerTags == other.m_outerTags &&
               m_innerTags == other.m_innerTags;
    }
    bool operator!=(EVLANIPAddressTableItemProperties const& other) const { return !(*this == other); }

private:
    friend IFHOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties);
    friend IFHOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties);

    static constexpr unsigned int kOuterLevels = 3; // kept without an allocation: stacks are seldom deeper

    unsigned short TagOf(unsigned int level) const
    {
        return level < kOuterLevels ? m_outerTags[level] : m_innerTags[level - kOuterLevels];
    }
    unsigned int GetBits(unsigned int level, unsigned int shift, unsigned int mask) const
    {
        return level < GetVLANCount() ? static_cast<unsigned int>(TagOf(level)) >> shift & mask : 0;
    }
    void SetBits(unsigned int level, unsigned int shift, unsigned int mask, unsigned int value)
    {
        if (level >= GetVLANCount()) return;
        unsigned int const others = TagOf(level) & ~(mask << shift);
        unsigned short& tag = level < kOuterLevels ? m_outerTags[level] : m_innerTags[level - kOuterLevels];
        tag = static_cast<unsigned short>(others | (value & mask) << shift);
    }

    bool m_enabled = false;
    unsigned char m_outerCount = 0;                            // of the levels that there are, at most kOuterLevels
    std::array<unsigned short, kOuterLevels> m_outerTags = {}; // outermost first; 0 where there is no level
    std::vector<unsigned short> m_innerTags;                   // of the levels from kOuterLevels on
};

/// Enabled, the number of levels as `unsigned long`, the tags as `unsigned short`.
IFHOST_API EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties);
/// On an error the properties keep what they held.
IFHOST_API EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties);
