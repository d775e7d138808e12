#include "eIPv6AddressItem.hpp"

#include "eArchiveLayout.hpp"
#include "eInterfaceItem.hpp"
#include "eProcessWide.hpp"
#include "eRecord.hpp"

#include <algorithm>

EIPAddress EIPv6AddressItem::Values::Unspecified()
{
    static EProcessWide<EIPAddress> const address("::");
    return address.Get();
}

template <class Values> static auto Tie(Values& v)
{
    auto& [localId, maskLength, address] = v; // does not compile when a field is left out
    return std::tie(localId, maskLength, address);
}

void EIPv6AddressItem::Copy(EIPv6AddressItem const& other)
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingIPv6AddressItem, EIPv6AddressItem(other));
}

void EIPv6AddressItem::Empty()
{
    NotifyAndSwap(*this, &EInterfaceTableHooks::SettingIPv6AddressItem, EIPv6AddressItem());
}

void EIPv6AddressItem::Swap(EIPv6AddressItem& other)
{
    std::swap(m_values, other.m_values);
}

bool EIPv6AddressItem::operator!=(EIPv6AddressItem const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void EIPv6AddressItem::SetAddress(EIPAddress const& address)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingIPv6Address, m_values.address, address);
}

void EIPv6AddressItem::SetMaskLength(unsigned int bits)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingIPv6MaskLength, m_values.maskLength, std::min(bits, 128u));
}

EInterfaceTableHooks& EIPv6AddressItem::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eIPv6AddressItem.cpp", 58, "EIPv6AddressItem::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(1, v.localId);
    archive.Since(1, v.maskLength);
    archive.Since(1, v.address);
}

void EIPv6AddressItem::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 1), m_values);
}

void EIPv6AddressItem::SerializeIn(EArchive& archive)
{
    Empty();
    SerializeInNew(archive);
}

void EIPv6AddressItem::SerializeInNew(EArchive& archive)
{
    // Fields are read past the setters: no clamp, no announcement.
    ArchiveLayout(EArchiveReader(archive, {1, 1}, kSite), m_values);
}

static EEdit<EIPv6AddressItem> const kEdits[] = {
    {1, ReadAndSet<EIPAddress, &EIPv6AddressItem::SetAddress>},
    {2, ReadAndSet<unsigned int, &EIPv6AddressItem::SetMaskLength>},
};

bool EIPv6AddressItem::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
