#include "eGreTunnel.hpp"

#include "eArchiveLayout.hpp"
#include "eInterfaceTable.hpp"
#include "eRecord.hpp"

template <class Values> static auto Tie(Values& v)
{
    // Does not compile when a field is left out.
    auto& [enabled, name, source, destination, useChecksum, useSequence, useKey, key] = v;
    return std::tie(enabled, source, destination, useChecksum, useSequence, useKey, key, name);
}

void EObsoleteGreTunnel::Copy(EObsoleteGreTunnel const& other)
{
    m_values = other.m_values;
}

void EObsoleteGreTunnel::Empty()
{
    m_values = Values();
}

void EObsoleteGreTunnel::Swap(EObsoleteGreTunnel& other)
{
    std::swap(m_values, other.m_values);
    std::swap(m_localId, other.m_localId);
}

bool EObsoleteGreTunnel::operator!=(EObsoleteGreTunnel const& other) const
{
    return m_localId != other.m_localId || Differ(Tie(m_values), Tie(other.m_values));
}

EInterfaceTableHooks& EObsoleteGreTunnel::GetHooks() const
{
    return m_parent ? m_parent->GetHooks() : IgnoringHooks();
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eGreTunnel.cpp", 92, "EObsoleteGreTunnel::SerializeIn"};
template <class Archive, class LocalId, class Values>
static void ArchiveLayout(Archive archive, LocalId& localId, Values& v)
{
    archive.Since(3, v.name);
    archive.Since(1, v.enabled);
    archive.Since(1, localId);
    archive.Since(2, v.source);
    archive.OnlyIn(1, EIPAddress()); // the source, as an address: it stays empty
    archive.Since(1, v.destination);
    archive.Since(1, v.useChecksum);
    archive.Since(1, v.useSequence);
    archive.Since(1, v.useKey);
    archive.Since(1, v.key);
}

void EObsoleteGreTunnel::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 3), m_localId, m_values);
}

void EObsoleteGreTunnel::SerializeIn(EArchive& archive)
{
    Empty();
    ArchiveLayout(EArchiveReader(archive, {1, 3}, kSite), m_localId, m_values);
}

static EEdit<EObsoleteGreTunnel> const kEdits[] = {
    {1, ReadAndSet<std::string, &EObsoleteGreTunnel::SetName>},
    {2, ReadAndSet<EComponentId, &EObsoleteGreTunnel::SetSourceIp>},
    {3, ReadAndSet<EIPAddress, &EObsoleteGreTunnel::SetDestIp>},
    {4, ReadAndSet<bool, &EObsoleteGreTunnel::SetUseChecksum>},
    {5, ReadAndSet<bool, &EObsoleteGreTunnel::SetUseSequence>},
    {6, ReadAndSet<bool, &EObsoleteGreTunnel::SetUseKey>},
    {7, ReadAndSet<unsigned int, &EObsoleteGreTunnel::SetKey>},
};

bool EObsoleteGreTunnel::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
