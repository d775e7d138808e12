#include "eIPv4AddressItem.hpp"

#include "eArchiveLayout.hpp"
#include "eInterfaceItem.hpp"
#include "eRecord.hpp"
#include "eVLAN.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"

#include <algorithm>

template <class Values> static auto Tie(Values& v)
{
    auto& [enabled, address, gateway, maskLength, mss] = v; // does not compile when a field is left out
    return std::tie(enabled, address, gateway, maskLength, mss);
}

/// The VLANs that the observer is told of with an address: a copy of the interface's, none without an interface.
static EVLANIPAddressTableItemProperties VLANContext(EInterfaceItem const* parent)
{
    return parent ? parent->GetVLANItem() : EVLANIPAddressTableItemProperties();
}

void EIPv4AddressItem::Copy(EIPv4AddressItem const& other)
{
    EIPv4AddressItem replacement(other);
    EVLANIPAddressTableItemProperties const vlans = VLANContext(m_parent);
    GetHooks().SettingIPv4AddressItem(*this, replacement, vlans, vlans);
    Swap(replacement);
}

void EIPv4AddressItem::Empty()
{
    EIPv4AddressItem replacement;
    GetHooks().SettingIPv4AddressItem(*this, replacement, VLANContext(m_parent), EVLANIPAddressTableItemProperties());
    Swap(replacement);
}

void EIPv4AddressItem::Swap(EIPv4AddressItem& other)
{
    std::swap(m_values, other.m_values);
}

bool EIPv4AddressItem::operator!=(EIPv4AddressItem const& other) const
{
    return Differ(Tie(m_values), Tie(other.m_values));
}

void EIPv4AddressItem::SetEnabled(bool enabled)
{
    if (enabled == m_values.enabled) return;
    if (enabled)
        GetHooks().EnablingIPv4AddressItem(*this, VLANContext(m_parent));
    else
        GetHooks().DisablingIPv4AddressItem(*this, VLANContext(m_parent));
    m_values.enabled = enabled;
}

void EIPv4AddressItem::SetAddress(EIPAddress const& address)
{
    EVLANIPAddressTableItemProperties const vlans = VLANContext(m_parent);
    EVLAN outermost;
    if (vlans.IsEnabled()) {
        outermost.SetUserPriority(vlans.GetUserPriority(0));
        outermost.SetCanonicalFormat(vlans.GetCanonicalFormat(0));
        outermost.SetVLANID(vlans.GetVLANID(0));
    } else {
        outermost.Empty();
    }
    GetHooks().SettingIPv4Address(*this, address, vlans, outermost);
    m_values.address = address;
}

void EIPv4AddressItem::SetGateway(EIPAddress const& gateway)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingIPv4Gateway, m_values.gateway, gateway);
}

void EIPv4AddressItem::SetMaskLength(unsigned int bits)
{
    NotifyAndStore(*this, &EInterfaceTableHooks::SettingIPv4MaskLength, m_values.maskLength, std::min(bits, 32u));
}

bool EIPv4AddressItem::SetMSS(unsigned int bytes)
{
    // Silent on purpose: SettingIPv4MSS exists and is never called.
    m_values.mss = bytes == 0 ? 0 : std::clamp(bytes, 28u, 65495u);
    return m_values.mss == bytes;
}

EInterfaceTableHooks& EIPv4AddressItem::GetHooks() const
{
    return HooksOf(m_parent);
}

static EArchiveSite const kSite = {"x86_64/common/ifcore/eIPv4AddressItem.cpp", 78, "EIPv4AddressItem::SerializeIn"};
template <class Archive, class Values> static void ArchiveLayout(Archive archive, Values& v)
{
    archive.Since(3, v.mss);
    archive.Since(2, v.enabled);
    archive.Since(1, v.address);
    archive.Since(1, v.gateway);
    archive.Since(1, v.maskLength);
}

void EIPv4AddressItem::SerializeOut(EArchive& archive) const
{
    ArchiveLayout(EArchiveWriter(archive, 3), m_values);
}

void EIPv4AddressItem::SerializeIn(EArchive& archive)
{
    Empty();
    SerializeInNew(archive);
}

void EIPv4AddressItem::SerializeInNew(EArchive& archive)
{
    // Fields are read past the setters: no clamp, no announcement.
    ArchiveLayout(EArchiveReader(archive, {1, 3}, kSite), m_values);
}

static EEdit<EIPv4AddressItem> const kEdits[] = {
    {1, ReadAndSet<EIPAddress, &EIPv4AddressItem::SetGateway>},
    {2, ReadAndSet<unsigned int, &EIPv4AddressItem::SetMaskLength>},
    {3, ReadAndSet<EIPAddress, &EIPv4AddressItem::SetAddress>},
    {4, ReadAndSet<unsigned int, &EIPv4AddressItem::SetMSS>}, // a clamped value counts as done
};

bool EIPv4AddressItem::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
