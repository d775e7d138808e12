#include "eVLANIPAddressTableItemProperties.hpp"

#include <algorithm>
#include <array>
#include <vector>

EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties)
{
    unsigned int const levels = properties.GetVLANCount();
    archive << properties.m_enabled << static_cast<unsigned long>(levels);
    for (unsigned int level = 0; level < levels; ++level) archive << properties.TagOf(level);
    return archive;
}

EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties)
{
    bool enabled = false;
    archive >> enabled;
    std::size_t const levels = archive.ReadCount();
    std::array<unsigned short, EVLANIPAddressTableItemProperties::kOuterLevels> outerTags = {};
    std::size_t const outer = std::min(levels, outerTags.size());
    for (std::size_t level = 0; level < outer; ++level) archive >> outerTags[level];
    std::vector<unsigned short> innerTags;
    if (levels > outer) {
        innerTags.resize(levels - outer);
        for (unsigned short& tag : innerTags) archive >> tag;
    }
    properties.m_enabled = enabled;
    properties.m_outerCount = static_cast<unsigned char>(outer);
    properties.m_outerTags = outerTags;
    properties.m_innerTags.swap(innerTags);
    return archive;
}
