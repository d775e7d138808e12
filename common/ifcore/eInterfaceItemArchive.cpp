// The archive of an interface.
#include "eArchiveLayout.hpp"
#include "eInterfaceItem.hpp"

static EArchiveSite const kVersionSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 518,
                                          "EInterfaceItem::SerializeIn"};
static EArchiveSite const kTagSite = {"x86_64/common/ifcore/eInterfaceItem.cpp", 409, "EInterfaceItem::SerializeIn"};

template <class Value> static Value Next(EArchive& archive)
{
    Value value{};
    archive >> value;
    return value;
}

struct EInterfaceItem::Layout {
    template <class Archive, class Item> static void Fields(Archive archive, Item& item)
    {
        auto& v = item.m_values;
        archive.Since(16, v.lldpEnabled);
        archive.Since(16, Tagged(item, 9, &EInterfaceItem::m_lldp, &EInterfaceItem::EnsureLLDP));
        archive.Since(15, v.dcbxEnabled);
        archive.Since(15, Tagged(item, 8, &EInterfaceItem::m_dcbx, &EInterfaceItem::EnsureDCBX));
        archive.Since(14, v.ptpEnabled);
        archive.Since(14, Tagged(item, 7, &EInterfaceItem::m_ptp, &EInterfaceItem::EnsurePTP));
        archive.Since(13, Tagged(item, 6, &EInterfaceItem::m_npiv, &EInterfaceItem::EnsureNPIV, Closing::ALWAYS));
        archive.Since(12, v.fcoeEnabled);
        archive.Since(12, item.m_fcoe);
        archive.Since(11, v.ipv6Gateway);
        archive.Since(10, v.vcatCircuitId);
        archive.Since(9, v.dhcpv6Enabled);
        archive.Since(9, item.m_dhcpv6);
        archive.Since(8, v.dhcpEnabled);
        archive.Since(8, item.m_dhcp);
        archive.Since(7, PerTypeData<Item>{item});
        archive.Since(7, v.enabled);
        archive.Since(7, v.localId);
        archive.Since(7, IPv4Record<Item>{item});
        archive.Since(7, item.m_ipv6);
        archive.Since(7, v.euid);
        archive.Since(7, v.name);
        archive.Since(7, As<int>(v.type));
    }

    /// Versions 1 to 6: a flat list without per-type records; only read. What now lives in per-type records goes
    /// through the setters, which announce, and only where it differs, so that no data appears that nobody had.
    static void ReadFlat(EArchive& archive, unsigned int version, EInterfaceItem& item)
    {
        if (version >= 6) {
            unsigned int const mtu = Next<unsigned int>(archive);
            if (mtu != item.GetMTU()) item.SetMTU(mtu);
        }
        if (version >= 5) Next<bool>(archive);
        if (version >= 4)
            for (int discarded = 0; discarded < 6; ++discarded) Next<unsigned int>(archive);
        if (version >= 3) ReadFlatAtm(archive, item);
        if (version >= 2) archive >> item.m_values.name;
        archive >> item.m_values.enabled;
        archive >> item.m_values.localId;
        item.SetMacAddress(Next<EMACAddress>(archive));
        archive >> item.m_values.euid;
        archive >> item.m_ipv4;
        archive >> item.m_ipv6;
        if (version >= 5)
            Next<EComponentId>(archive);
        else
            Next<unsigned int>(archive);
        ReadFlatPpp(archive, item);
        bool const overrideEuid = Next<bool>(archive);
        if (overrideEuid != item.OverrideAutogenEuid()) item.SetOverrideAutogenEuid(overrideEuid);
        archive >> item.m_values.name; // again on purpose: the second one holds
        auto const vlans = Next<EVLANIPAddressTableItemProperties>(archive);
        if (vlans != item.GetVLANItem()) item.SetVLANItem(vlans);
    }

private:
    enum class Closing { WHEN_ABSENT, ALWAYS };

    /// A record that may be absent: its tag and the record, else the tag 0. One form, kept from when it was a list, is
    /// closed by a tag 0 always. A tag that is not the record's own is taken to mean that there is none.
    template <class Item, class Record> struct TaggedRecord {
        Item& item;
        int tag;
        std::unique_ptr<Record> EInterfaceItem::*record;
        void (EInterfaceItem::*ensure)();
        Closing closing;

        void SerializeOut(EArchive& archive) const
        {
            bool const exists = WriteIfAny(archive, tag, item.*record);
            if (!exists || closing == Closing::ALWAYS) archive << 0;
        }
        void SerializeIn(EArchive& archive)
        {
            if (Next<int>(archive) != tag) return;
            (item.*ensure)();
            archive >> *(item.*record);
            if (closing == Closing::ALWAYS) Next<int>(archive);
        }
    };
    template <class Item, class Record>
    static TaggedRecord<Item, Record> Tagged(Item& item, int tag, std::unique_ptr<Record> EInterfaceItem::*record,
                                             void (EInterfaceItem::*ensure)(), Closing closing = Closing::WHEN_ABSENT)
    {
        return {item, tag, record, ensure, closing};
    }

    template <class Item> struct IPv4Record {
        Item& item;

        void SerializeOut(EArchive& archive) const { archive << item.m_ipv4; }
        /// Emptying it once more would change nothing, and without a table nobody is told of it.
        void SerializeIn(EArchive& archive)
        {
            if (item.m_parent)
                archive >> item.m_ipv4;
            else
                item.m_ipv4.SerializeInNew(archive);
        }
    };

    /// The tag and the record of each that exists, then the closing tag 0.
    template <class Item> struct PerTypeData {
        Item& item;

        void SerializeOut(EArchive& archive) const
        {
            WriteIfAny(archive, 1, item.m_ethernet);
            WriteIfAny(archive, 2, item.m_atm);
            WriteIfAny(archive, 3, item.m_ppp);
            WriteIfAny(archive, 4, item.m_gre);
            WriteIfAny(archive, 5, item.m_routed);
            archive << 0;
        }
        void SerializeIn(EArchive& archive)
        {
            for (int tag = Next<int>(archive); tag != 0; tag = Next<int>(archive)) {
                switch (tag) {
                case 1:
                    item.EnsureEthernet();
                    archive >> *item.m_ethernet;
                    break;
                case 2:
                    item.EnsureAtm();
                    archive >> *item.m_atm;
                    break;
                case 3:
                    item.EnsurePpp();
                    archive >> *item.m_ppp;
                    break;
                case 4:
                    item.EnsureGre();
                    archive >> *item.m_gre;
                    break;
                case 5:
                    item.EnsureRouted();
                    archive >> *item.m_routed;
                    break;
                default: FailArchive(kTagSite);
                }
            }
        }
    };

    template <class Record> static bool WriteIfAny(EArchive& archive, int tag, std::unique_ptr<Record> const& record)
    {
        if (!record) return false;
        archive << tag;
        archive << *record;
        return true;
    }

    static void ReadFlatAtm(EArchive& archive, EInterfaceItem& item)
    {
        auto const encapsulation = static_cast<eAtmEncapsulationMode>(Next<unsigned int>(archive));
        auto const mode = static_cast<EAtmModeEnum>(Next<unsigned int>(archive));
        unsigned int const vpi = Next<unsigned int>(archive);
        unsigned int const vci = Next<unsigned int>(archive);
        if (encapsulation == item.GetEncapsulation() && mode == item.GetATMMode() && vpi == item.GetVPI() &&
            vci == item.GetVCI())
            return;
        item.SetEncapsulation(encapsulation);
        item.SetATMMode(mode);
        item.SetVPI(vpi);
        item.SetVCI(vci);
    }

    static void ReadFlatPpp(EArchive& archive, EInterfaceItem& item)
    {
        unsigned int const handle = Next<unsigned int>(archive);
        unsigned int const session = Next<unsigned int>(archive);
        if (handle == item.GetPPPHandle() && session == item.GetPPPSession()) return;
        item.SetPPPHandle(handle);
        item.SetPPPSession(session);
    }
};

void EInterfaceItem::SerializeOut(EArchive& archive) const
{
    Layout::Fields(EArchiveWriter(archive, 16), *this);
}

void EInterfaceItem::SerializeIn(EArchive& archive)
{
    Empty();
    SerializeInNew(archive);
}

void EInterfaceItem::SerializeInNew(EArchive& archive)
{
    EArchiveReader const reader(archive, {1, 16}, kVersionSite);
    if (reader.Version() >= 7)
        Layout::Fields(reader, *this);
    else
        Layout::ReadFlat(archive, reader.Version(), *this);
}
