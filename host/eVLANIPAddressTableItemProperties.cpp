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
    if (std::size_t const levels = archive.ReadCount()) {
        read.SetVLANCount(static_cast<unsigned int>(levels));
        for (unsigned int level = 0; level < levels; ++level) archive >> read.TagOf(level);
    }
    properties = std::move(read);
    return archive;
}
