#include "eVLANIPAddressTableItemProperties.hpp"

EArchive& operator<<(EArchive& archive, EVLANIPAddressTableItemProperties const& properties)
{
    archive << properties.m_enabled << static_cast<unsigned long>(properties.m_tags.size());
    for (unsigned short tag : properties.m_tags) archive << tag;
    return archive;
}

EArchive& operator>>(EArchive& archive, EVLANIPAddressTableItemProperties& properties)
{
    EVLANIPAddressTableItemProperties read;
    archive >> read.m_enabled;
    read.m_tags.resize(archive.ReadCount());
    for (unsigned short& tag : read.m_tags) archive >> tag;
    properties = std::move(read);
    return archive;
}
