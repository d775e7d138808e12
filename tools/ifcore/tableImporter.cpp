#include "tableImporter.hpp"

#include "hostCommands.hpp"
#include "kernelValues.hpp"
#include "progress.hpp"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace ifcoreTool {

namespace {

constexpr int kEthernetType = 0;
constexpr int kGreType = 4;

/// Whether the first bits of two addresses of one family are the same.
bool SameNetwork(KernelIP const& a, KernelIP const& b, unsigned int prefixLength)
{
    unsigned int bits = std::min(prefixLength, a.GetSize() * 8);
    for (std::size_t i = 0; bits > 0; ++i) {
        unsigned int const here = std::min(bits, 8u);
        unsigned int const mask = 0xffu << (8 - here) & 0xffu;
        if (((static_cast<unsigned int>(a.bytes[i]) ^ b.bytes[i]) & mask) != 0) return false;
        bits -= here;
    }
    return true;
}

/// The links of a snapshot by index, with what belongs to each.
class LinkIndex {
public:
    explicit LinkIndex(KernelSnapshot const& snapshot)
    {
        for (KernelLink const& link : snapshot.links) m_links[link.index].link = &link;
        for (KernelAddress const& address : snapshot.addresses) {
            auto const found = m_links.find(address.linkIndex);
            if (found == m_links.end()) continue;
            (address.address.isIPv6 ? found->second.ipv6 : found->second.ipv4).push_back(address);
        }
        for (KernelGateway const& gateway : snapshot.gateways) {
            auto const found = m_links.find(gateway.linkIndex);
            if (found == m_links.end()) continue;
            KernelGateway const*& best = gateway.gateway.isIPv6 ? found->second.ipv6Gateway : found->second.ipv4Gateway;
            if (!best || gateway.metric < best->metric) best = &gateway;
        }
    }

    struct Entry {
        KernelLink const* link = nullptr;
        std::vector<KernelAddress> ipv4;
        std::vector<KernelAddress> ipv6;
        KernelGateway const* ipv4Gateway = nullptr;
        KernelGateway const* ipv6Gateway = nullptr;
    };
    Entry const& Get(KernelLink const& link) const { return m_links.at(link.index); }

    /// The link itself and those below it, as long as they are VLAN links; the last one is not, or is unknown.
    std::vector<KernelLink const*> Below(KernelLink const& link) const
    {
        std::vector<KernelLink const*> way{&link};
        while (way.back()->vlan && way.back()->lowerIndex && way.size() <= m_links.size()) {
            auto const lower = m_links.find(*way.back()->lowerIndex);
            if (lower == m_links.end()) break;
            way.push_back(lower->second.link);
        }
        return way;
    }

private:
    std::unordered_map<int, Entry> m_links;
};

/// Edits of one row. Field names are those that people use.
class RowEditor {
public:
    RowEditor(EInterfaceTable& table, unsigned int id, std::string const& what) : m_table(table), m_id(id), m_what(what)
    {
    }
    void Edit(RecordKind record, char const* name, std::string const& text) const
    {
        EditableField const& field = *FindField(record, name);
        Execute(m_table, EditCommand(m_table, {&field, m_id, 0}, FieldArchive(field, text)), m_what);
    }
    void Edit(char const* name, std::string const& text) const { Edit(RecordKind::interface, name, text); }
    void Edit(char const* name, bool value) const { Edit(name, std::string(value ? "yes" : "no")); }
    void Edit(char const* name, char const* text) const { Edit(name, std::string(text)); }
    void Enable(EComponentId const& record) const { Execute(m_table, EnableCommand(record, true), m_what); }

private:
    EInterfaceTable& m_table;
    unsigned int m_id;
    std::string m_what;
};

class Importer {
public:
    Importer(KernelSnapshot const& snapshot, EInterfaceTable& table)
        : m_snapshot(snapshot), m_table(table), m_links(snapshot)
    {
    }

    LinkRows Run()
    {
        LinkRows rows;
        Progress progress("importing link", m_snapshot.links.size());
        for (KernelLink const& link : m_snapshot.links) {
            rows.first[link.index] = ImportLink(link);
            progress.Step();
        }
        // Only now is it known which row holds the address that a tunnel starts from.
        for (auto const& [id, link] : m_tunnels) EditTunnelSource(id, *link);
        EUniqueIDGenerator ids = m_table.GetIdGenerator();
        rows.next = ids.Next();
        return rows;
    }

private:
    /// The id of its first row.
    unsigned int ImportLink(KernelLink const& link)
    {
        LinkIndex::Entry const& entry = m_links.Get(link);
        unsigned int const first = AddRow(link);
        RowEditor const firstRow(m_table, first, link.name);
        bool gatewayPlaced = false;
        for (std::size_t i = 0; i < entry.ipv4.size(); ++i) {
            unsigned int const id = i == 0 ? first : AddRow(link);
            KernelAddress const& address = entry.ipv4[i];
            EditIPv4Address(id, link, address);
            if (!entry.ipv4Gateway || !SameNetwork(address.address, entry.ipv4Gateway->gateway, address.prefixLength))
                continue;
            EditIPv4Gateway(RowEditor(m_table, id, link.name), *entry.ipv4Gateway);
            gatewayPlaced = true;
        }
        if (entry.ipv4Gateway && !gatewayPlaced) EditIPv4Gateway(firstRow, *entry.ipv4Gateway);
        for (KernelAddress const& address : entry.ipv6) AddIPv6Address(first, link, address);
        if (entry.ipv6Gateway) firstRow.Edit("ipv6.gateway", AsAddress(entry.ipv6Gateway->gateway).GetAsString());
        return first;
    }

    unsigned int AddRow(KernelLink const& link)
    {
        unsigned int const id = ExecuteAdd(m_table, AddInterfaceCommand(m_table, EInterfaceItem()), link.name);
        RowEditor const row(m_table, id, link.name);
        row.Edit("name", link.name);
        row.Edit("type", std::to_string(link.gre ? kGreType : kEthernetType));
        row.Edit("mtu", std::to_string(link.mtu));
        EditMacAndVlans(row, link);
        if (link.gre) EditTunnel(row, id, link);
        if (link.up) row.Enable(InterfacePath(m_table, id));
        return id;
    }

    void EditMacAndVlans(RowEditor const& row, KernelLink const& link) const
    {
        std::vector<KernelLink const*> const way = m_links.Below(link);
        // A VLAN link whose lower link is not known here has only its own address.
        KernelLink const& bottom = way.back()->vlan ? link : *way.back();
        if (bottom.hardwareAddress.size() == 6) {
            EMACAddress mac;
            mac.SetMACAddress(EBlob(bottom.hardwareAddress.data(), 6));
            row.Edit("mac", mac.GetAsString());
        }
        std::string tags;
        for (auto position = way.rbegin(); position != way.rend(); ++position)
            if ((*position)->vlan) tags += (tags.empty() ? "" : ",") + std::to_string((*position)->vlan->id);
        if (!tags.empty()) row.Edit("vlan", tags);
    }

    void EditTunnel(RowEditor const& row, unsigned int id, KernelLink const& link)
    {
        KernelGre const& gre = *link.gre;
        row.Edit("gre.destination", AsAddress(gre.remote).GetAsString());
        row.Edit("gre.use-checksum", gre.Uses(KernelGre::kChecksum));
        row.Edit("gre.use-sequence", gre.Uses(KernelGre::kSequence));
        row.Edit("gre.use-key", gre.Uses(KernelGre::kKey));
        row.Edit("gre.in-key", std::to_string(gre.inKey));
        row.Edit("gre.out-key", std::to_string(gre.outKey));
        m_tunnels.emplace_back(id, &link);
    }

    void EditTunnelSource(unsigned int id, KernelLink const& link) const
    {
        auto const holder = m_rowOfAddress.find(link.gre->local);
        if (link.gre->local.IsZero() || holder == m_rowOfAddress.end()) return;
        EComponentId const path = InterfacePath(m_table, holder->second);
        RowEditor(m_table, id, link.name).Edit("gre.source", DisplayPath(ToJson(path)));
    }

    void EditIPv4Address(unsigned int id, KernelLink const& link, KernelAddress const& address)
    {
        RowEditor const row(m_table, id, link.name);
        row.Edit(RecordKind::ipv4, "address", AsAddress(address.address).GetAsString());
        row.Edit(RecordKind::ipv4, "prefix-length", std::to_string(address.prefixLength));
        row.Enable(InterfacePath(m_table, id) += ShapeOf(RecordKind::ipv4).leaf);
        m_rowOfAddress.emplace(address.address, id);
    }

    static void EditIPv4Gateway(RowEditor const& row, KernelGateway const& gateway)
    {
        row.Edit(RecordKind::ipv4, "gateway", AsAddress(gateway.gateway).GetAsString());
    }

    void AddIPv6Address(unsigned int id, KernelLink const& link, KernelAddress const& address)
    {
        EIPv6AddressItem item;
        item.SetAddress(AsAddress(address.address));
        item.SetMaskLength(address.prefixLength);
        ExecuteAdd(m_table, AddIPv6AddressCommand(m_table, id, item), link.name);
        m_rowOfAddress.emplace(address.address, id);
    }

    KernelSnapshot const& m_snapshot;
    EInterfaceTable& m_table;
    LinkIndex m_links;
    std::map<KernelIP, unsigned int> m_rowOfAddress; // the first row that got it
    std::vector<std::pair<unsigned int, KernelLink const*>> m_tunnels;
};

} // namespace

LinkRows ImportSnapshot(KernelSnapshot const& snapshot, EInterfaceTable& table)
{
    return Importer(snapshot, table).Run();
}

} // namespace ifcoreTool
