#include "eDHCPTLV.hpp"

#include "eArchiveLayout.hpp"
#include "eRecord.hpp"

template <class Values> static auto Tie(Values& v)
{
    auto& [type, value] = v;
    return std::tie(type, value);
}

void EDHCPTLV::Copy(EDHCPTLV const& other)
{
    m_values = other.m_values;
}

bool EDHCPTLV::operator!=(EDHCPTLV const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eDHCPTLV.cpp", 93, "EDHCPTLV::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    unsigned int filler = 0; // on purpose: carries nothing, but existing archives have it; dropped on reading
    archive.Since(1, v.type);
    archive.Since(1, filler);
    archive.Since(1, v.value);
}

void EDHCPTLV::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 1), m_values);
}

void EDHCPTLV::SerializeIn(EArchive& archive)
{
    ArchiveLayout(EArchiveReader(archive, {1, 1}, kSite), m_values);
}
