// Host commands: what they are addressed to, and how they are carried out.
#include "eInterfaceTable.hpp"

#include "eMultiComponentId.hpp"
#include "eRecord.hpp"
#include "eSingleCommand.hpp"

#include <memory>
#include <utility>
#include <vector>

namespace {

enum EAction : unsigned int {
    ACTION_SET = 2,
    ACTION_ENABLE = 3,
    ACTION_DISABLE = 4,
    ACTION_ADD = 5,
    ACTION_REMOVE = 6,
    ACTION_EDIT = 7
};

unsigned int const kListSubId = 1; // of the interfaces under the table and of the IPv6 addresses under an interface

void LoadData(EArchive& archive, ESingleCommand const& command)
{
    archive.SetFromEBlob(command.GetData(), true);
    archive.SetMode(2);
}

/// One record made by the factory and read from the command's data.
template <class Item> std::unique_ptr<Item> ReadItem(ESingleCommand const& command, EFactory<Item> const& factory)
{
    EArchive archive;
    LoadData(archive, command);
    std::unique_ptr<Item> item(factory.CreateItem());
    archive >> *item;
    return item;
}

/// Whether the path is that of the parent's list. Told without making the list's own path, which takes memory.
bool IsListOf(EInterfaceTable const& table, EComponentId const& id)
{
    return id.GetIdSize() == 2 && id[0] == table.GetPortId() && id[1] == kListSubId;
}

bool IsListOf(EInterfaceItem const& item, EComponentId const& id)
{
    return item.GetParent() && id.GetIdSize() == 4 && id[0] == item.GetParent()->GetPortId() && id[1] == kListSubId &&
           id[2] == item.GetLocalId() && id[3] == kListSubId;
}

bool HasItem(EInterfaceTable const& table, unsigned int id)
{
    return table.GetInterfaceItem(id) != nullptr;
}

bool HasItem(EInterfaceItem const& item, unsigned int id)
{
    return item.GetIPv6AddressItem(id) != nullptr;
}

/// Replaces the item of the first leaf; further leaves are ignored on purpose. Nothing is read without a target.
template <class Parent, class Item>
bool DoSet(Parent* parent, ESingleCommand const& command, bool (Parent::*set)(unsigned int, Item const&),
           EFactory<Item> const& factory)
{
    if (!parent || !IsListOf(*parent, command.GetId().GetId())) return false;
    std::vector<unsigned int> const& leaves = command.GetId().GetLeaves();
    if (leaves.empty() || !HasItem(*parent, leaves.front())) return false;
    return (parent->*set)(leaves.front(), *ReadItem(command, factory));
}

/// Adds one item and returns its id; 0 when the list is not the command's target or its ids are used up.
template <class Parent, class Item>
unsigned int DoAdd(Parent* parent, ESingleCommand const& command, unsigned int (Parent::*add)(Item const&),
                   EFactory<Item> const& factory)
{
    if (!parent || !IsListOf(*parent, command.GetId().GetId())) return 0;
    return (parent->*add)(*ReadItem(command, factory));
}

unsigned int AddToItsList(EInterfaceTable& table, ESingleCommand const& command)
{
    unsigned int const id =
        DoAdd(&table, command, &EInterfaceTable::AddInterfaceItem, EDefaultFactory<EInterfaceItem>::Shared());
    if (id != 0) return id;
    return DoAdd(table.GetInterfaceItem(command.GetId().GetId(), EComponentId::MATCH_PREFIX), command,
                 &EInterfaceItem::AddIPv6AddressItem, EDefaultFactory<EIPv6AddressItem>::Shared());
}

/// A record under a fixed leaf of an interface, replaced whole.
template <class Record, bool (EInterfaceItem::*set)(unsigned int, Record const&)>
bool SetLeaf(EInterfaceItem& item, unsigned int leaf, ESingleCommand const& command)
{
    return (item.*set)(leaf, *ReadItem(command, EDefaultFactory<Record>::Shared()));
}

/// The leaf alone decides which class is read: reading the data as another one could end the process.
struct ELeafSetter {
    unsigned int leaf;
    bool (*set)(EInterfaceItem&, unsigned int, ESingleCommand const&);
};
ELeafSetter const kLeafSetters[] = {
    {6, SetLeaf<EIPv4AddressItem, &EInterfaceItem::SetIPv4AddressItem>},
    {24, SetLeaf<EDHCPProperties, &EInterfaceItem::SetDHCPProperties>},
    {26, SetLeaf<EDHCPv6Properties, &EInterfaceItem::SetDHCPv6Properties>},
    {31, SetLeaf<EFCoEConfig, &EInterfaceItem::SetFCoEConfig>},
    {32, SetLeaf<ENPIVConfig, &EInterfaceItem::SetNPIVConfig>},
};

bool DoSetLeaf(EInterfaceItem* item, ESingleCommand const& command)
{
    std::vector<unsigned int> const& leaves = command.GetId().GetLeaves();
    if (!item || leaves.empty()) return false;
    for (ELeafSetter const& setter : kLeafSetters)
        if (setter.leaf == leaves.front()) return setter.set(*item, leaves.front(), command);
    return false;
}

template <class Record> bool OfferEdit(Record* record, std::vector<unsigned int> const& subId, EArchive& archive)
{
    return record && record->ProcessEdit(subId.begin(), subId.end(), archive);
}

} // namespace

bool EInterfaceTable::ExecuteCommand(ESingleCommand const& command, EComponentId* added)
{
    // Only the path of the list, on purpose: the new id is in the other form's leaf.
    if (added && command.GetAction() == ACTION_ADD) return DoAddCommand(command, *added);
    return ExecuteCommand(command, static_cast<EMultiComponentId*>(nullptr));
}

bool EInterfaceTable::ExecuteCommand(ESingleCommand const& command, EMultiComponentId* added)
{
    EComponentId const& target = command.GetId().GetId();
    if (target.GetIdSize() == 1) { // else it cannot be the table itself, and nothing has to be built to compare it
        EComponentId own;
        GetID(own);
        EMultiComponentId itself;
        itself.AddId(own);
        if (itself == command.GetId() && ExecuteTopLevelCommand(command)) return true;
    }
    switch (command.GetAction()) {
    case ACTION_SET: return DoSetCommand(command);
    case ACTION_ENABLE:
    case ACTION_DISABLE: return DoEnableCommand(command);
    case ACTION_ADD: return added ? DoAddCommand(command, *added) : AddToItsList(*this, command) != 0;
    case ACTION_REMOVE: return DoRemoveCommand(command);
    case ACTION_EDIT: return DoEditCommand(command);
    default: return false;
    }
}

bool EInterfaceTable::ExecuteTopLevelCommand(ESingleCommand const& command)
{
    EArchive archive;
    switch (command.GetAction()) {
    case ACTION_SET: {
        LoadData(archive, command);
        EInterfaceTable replacement(m_values.portId);
        archive >> replacement; // whole, before anything of this table is touched
        NotifyAndSwap(*this, &EInterfaceTableHooks::SettingInterfaceTable, std::move(replacement));
        return true;
    }
    case ACTION_EDIT: {
        LoadData(archive, command);
        std::vector<unsigned int> const& subId = command.GetEditSubId();
        return ProcessEdit(subId.begin(), subId.end(), archive);
    }
    default: return false;
    }
}

bool EInterfaceTable::DoSetCommand(ESingleCommand const& command)
{
    EComponentId const& id = command.GetId().GetId();
    if (DoSet<EInterfaceTable, EInterfaceItem>(this, command, &EInterfaceTable::SetInterfaceItem,
                                               EDefaultFactory<EInterfaceItem>::Shared()))
        return true;
    if (DoSet<EInterfaceItem, EIPv6AddressItem>(GetInterfaceItem(id, EComponentId::MATCH_PREFIX), command,
                                                &EInterfaceItem::SetIPv6AddressItem,
                                                EDefaultFactory<EIPv6AddressItem>::Shared()))
        return true;
    // On purpose below the interface too: the leaf alone names the record.
    return DoSetLeaf(GetInterfaceItem(id, EComponentId::MATCH_PREFIX), command);
}

bool EInterfaceTable::DoEnableCommand(ESingleCommand const& command)
{
    EComponentId const& id = command.GetId().GetId();
    bool const enable = command.GetAction() == ACTION_ENABLE;
    if (EInterfaceItem* const item = GetInterfaceItem(id)) {
        item->SetEnabled(enable);
        return true;
    }
    if (EIPv4AddressItem* const item = GetIPv4AddressItem(id)) {
        item->SetEnabled(enable);
        return true;
    }
    return false;
}

bool EInterfaceTable::DoAddCommand(ESingleCommand const& command, EComponentId& added)
{
    EComponentId list(command.GetId().GetId()); // before the item is stored: what comes behind cannot fail
    if (AddToItsList(*this, command) == 0) return false;
    added = std::move(list);
    return true;
}

bool EInterfaceTable::DoAddCommand(ESingleCommand const& command, EMultiComponentId& added)
{
    // Made before the item is stored, with a leaf to be overwritten: what comes behind cannot fail.
    EMultiComponentId list(command.GetId().GetId());
    std::vector<unsigned int> leaf(1);
    list.SetLeaves(leaf);
    leaf[0] = AddToItsList(*this, command);
    if (leaf[0] == 0) return false;
    list.SetLeaves(leaf);
    added = std::move(list);
    return true;
}

bool EInterfaceTable::DoRemoveCommand(ESingleCommand const& command)
{
    EComponentId const& id = command.GetId().GetId();
    bool removed = false;
    if (IsListOf(*this, id)) {
        for (unsigned int const leaf : command.GetId().GetLeaves()) removed |= RemoveInterfaceItem(leaf);
        return removed;
    }
    EInterfaceItem* const item = GetInterfaceItem(id, EComponentId::MATCH_PREFIX);
    if (!item || !IsListOf(*item, id)) return false;
    for (unsigned int const leaf : command.GetId().GetLeaves()) removed |= item->RemoveIPv6AddressItem(leaf);
    return removed;
}

bool EInterfaceTable::DoEditCommand(ESingleCommand const& command)
{
    EComponentId const& id = command.GetId().GetId();
    std::vector<unsigned int> const& subId = command.GetEditSubId();
    EArchive archive;
    LoadData(archive, command);
    bool edited = false; // every kind that the id resolves to is offered the edit, not only the first
    edited |= OfferEdit(GetInterfaceItem(id), subId, archive);
    edited |= OfferEdit(GetIPv4AddressItem(id), subId, archive);
    edited |= OfferEdit(GetDHCPProperties(id), subId, archive);
    edited |= OfferEdit(GetDHCPv6Properties(id), subId, archive);
    edited |= OfferEdit(GetIPv6AddressItem(id), subId, archive);
    edited |= OfferEdit(GetFCoEConfig(id), subId, archive);
    edited |= OfferEdit(GetNPIVConfig(id), subId, archive);
    edited |= OfferEdit(GetPTPConfig(id), subId, archive);
    edited |= OfferEdit(GetDCBXConfig(id), subId, archive);
    edited |= OfferEdit(GetLLDPConfig(id), subId, archive);
    return edited;
}

// Edits of the table itself

/// The host that makes the interfaces and the table agree on the next id.
static void ReadIdGenerator(EInterfaceTable& table, EArchive& archive)
{
    EUniqueIDGenerator generator;
    archive >> generator;
    table.SetIdGenerator(generator);
}

static EEdit<EInterfaceTable> const kEdits[] = {
    {2, ReadAndSet<unsigned int, &EInterfaceTable::SetVPIMaskMode>},
    {3, ReadIdGenerator},
    {4, ReadAndSet<unsigned int, &EInterfaceTable::SetDHCPv4RequestRate>},
    {5, ReadAndSet<unsigned int, &EInterfaceTable::SetDHCPv6RequestRate>},
    {6, ReadAndSet<unsigned int, &EInterfaceTable::SetDHCPv4MaxOutstandingRequests>},
    {7, ReadAndSet<unsigned int, &EInterfaceTable::SetDHCPv6MaxOutstandingRequests>},
    {8, ReadAndSet<unsigned int, &EInterfaceTable::SetFCoERequestRate>},
    {9, ReadAndSet<unsigned int, &EInterfaceTable::SetFCoERetryCount>},
    {10, ReadAndSet<unsigned int, &EInterfaceTable::SetFCoERetryInterval>},
    {11, ReadAndSet<short, &EInterfaceTable::SetFIPVersion>},
    {12, ReadAndSet<bool, &EInterfaceTable::SetTargetLLAddrOptionEnabled>},
    {13, ReadAndSet<bool, &EInterfaceTable::SetFcfMacEnabled>},
    {14, ReadAndSet<unsigned int, &EInterfaceTable::SetFcfMacCollectionTime>},
    {15, ReadAndSet<bool, &EInterfaceTable::SetPMacInFpmaEnabled>},
    {16, ReadAndSet<bool, &EInterfaceTable::SetVlanIdEnabled>},
    {17, ReadAndSet<bool, &EInterfaceTable::SetAutoNeighborDiscoveryEnabled>}, // not announced
    {18, ReadAndSet<bool, &EInterfaceTable::SetAutoArpEnabled>},               // not announced
};

bool EInterfaceTable::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    return EditField(kEdits, *this, first, last, archive);
}
