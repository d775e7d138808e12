#include "eVLANIPAddressTableItemProperties.hpp"

#include <utility>

EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties)
{
    unsigned int const levels = properties.GetVLANCount();
    archive << properties.m_enabled << static_cast<unsigned long>(levels);
    for (unsigned int level = 0; level < levels; ++level) archive << properties.TagOf(level);
    return archive;
}

EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties)
{
    EVLANIPAddressTableItemProperties read;
    archive >> read.m_enabled;
    read.SetVLANCount(static_cast<unsigned int>(archive.ReadCount()));
    for (unsigned int level = 0; level < read.GetVLANCount(); ++level) {
        unsigned short tag = 0;
        archive >> tag;
        read.SetVlanTag(tag, level);
    }
    properties = std::move(read);
    return archive;
}
