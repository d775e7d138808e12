// Which record of a table a component id addresses.
#include "eInterfaceTable.hpp"

#include <iterator>
#include <utility>

static unsigned int const kInterfaceList = 1; // level 1 of a path below the table
static unsigned int const kIPv6List = 1;      // level 3 of a path below an interface

/// Where the records of one class stand: how many levels their path has, the level 3 they share, and which record of
/// the interface it is. Getters of records created on demand answer null instead of creating one.
template <class Record> struct EPlace;

template <unsigned int pathLeaf, std::ptrdiff_t pathDepth = 4> struct ELeafPlace {
    static std::ptrdiff_t const depth = pathDepth;
    static unsigned int const leaf = pathLeaf;
};
template <> struct EPlace<EInterfaceItem> {
    static std::ptrdiff_t const depth = 3;
    static EInterfaceItem const* In(EInterfaceItem const& item, ESubId) { return &item; }
};
template <> struct EPlace<EIPv6AddressItemList> : ELeafPlace<kIPv6List> {
    static EIPv6AddressItemList const* In(EInterfaceItem const& item, ESubId) { return &item.GetIPv6AddressItemList(); }
};
template <> struct EPlace<EIPv6AddressItem> : ELeafPlace<kIPv6List, 5> {
    static EIPv6AddressItem const* In(EInterfaceItem const& item, ESubId path)
    {
        return item.GetIPv6AddressItem(path[4]);
    }
};
template <> struct EPlace<EIPv4AddressItem> : ELeafPlace<6> {
    static EIPv4AddressItem const* In(EInterfaceItem const& item, ESubId) { return &item.GetIPv4AddressItem(); }
};
template <> struct EPlace<EDHCPProperties> : ELeafPlace<24> {
    static EDHCPProperties const* In(EInterfaceItem const& item, ESubId) { return &item.GetDHCPProperties(); }
};
template <> struct EPlace<EDHCPv6Properties> : ELeafPlace<26> {
    static EDHCPv6Properties const* In(EInterfaceItem const& item, ESubId) { return &item.GetDHCPv6Properties(); }
};
template <> struct EPlace<EFCoEConfig> : ELeafPlace<31> {
    static EFCoEConfig const* In(EInterfaceItem const& item, ESubId) { return &item.GetFCoEConfig(); }
};
template <> struct EPlace<ENPIVConfig> : ELeafPlace<32> {
    static ENPIVConfig const* In(EInterfaceItem const& item, ESubId) { return item.GetNPIVConfigReadOnly(); }
};
template <> struct EPlace<EPTPConfig> : ELeafPlace<34> {
    static EPTPConfig const* In(EInterfaceItem const& item, ESubId) { return item.GetPTPConfigReadOnly(); }
};
template <> struct EPlace<EDCBXConfig> : ELeafPlace<36> {
    static EDCBXConfig const* In(EInterfaceItem const& item, ESubId) { return item.GetDCBXConfigReadOnly(); }
};
template <> struct EPlace<ELLDPConfig> : ELeafPlace<38> {
    static ELLDPConfig const* In(EInterfaceItem const& item, ESubId) { return item.GetLLDPConfigReadOnly(); }
};

static bool ReachesDepth(std::ptrdiff_t depth, ESubId first, ESubId last, EComponentId::MatchingTypes matching)
{
    std::ptrdiff_t const size = std::distance(first, last);
    return matching == EComponentId::MATCH_PREFIX ? size >= depth : size == depth;
}

template <class Record> struct EWalk {
    static Record const* From(EInterfaceTable const& table, ESubId first, ESubId last,
                              EComponentId::MatchingTypes matching)
    {
        using Place = EPlace<Record>;
        if (!ReachesDepth(Place::depth, first, last, matching)) return nullptr;
        if (first[0] != table.GetPortId() || first[1] != kInterfaceList) return nullptr;
        if constexpr (Place::depth > 3)
            if (first[3] != Place::leaf) return nullptr;
        EInterfaceItem const* const item = table.GetInterfaceItem(first[2]);
        return item ? Place::In(*item, first) : nullptr;
    }
};
template <> struct EWalk<EInterfaceItemList> {
    static EInterfaceItemList const* From(EInterfaceTable const& table, ESubId first, ESubId last,
                                          EComponentId::MatchingTypes matching)
    {
        if (!ReachesDepth(2, first, last, matching)) return nullptr;
        return first[0] == table.GetPortId() && first[1] == kInterfaceList ? &table.GetInterfaceItemList() : nullptr;
    }
};

// The four forms of one getter: the const ones walk, the others forward to them.
#define IFCORE_PATH_GETTER(Record, Getter)                                                                             \
    Record const* EInterfaceTable::Getter(ESubId first, ESubId last) const                                             \
    {                                                                                                                  \
        return EWalk<Record>::From(*this, first, last, kExact);                                                        \
    }                                                                                                                  \
    Record* EInterfaceTable::Getter(ESubId first, ESubId last)                                                         \
    {                                                                                                                  \
        return const_cast<Record*>(std::as_const(*this).Getter(first, last));                                          \
    }                                                                                                                  \
    Record const* EInterfaceTable::Getter(EComponentId const& id, MatchingTypes matching) const                        \
    {                                                                                                                  \
        std::vector<unsigned int> const& path = id.GetId();                                                            \
        return EWalk<Record>::From(*this, path.begin(), path.end(), matching);                                         \
    }                                                                                                                  \
    Record* EInterfaceTable::Getter(EComponentId const& id, MatchingTypes matching)                                    \
    {                                                                                                                  \
        return const_cast<Record*>(std::as_const(*this).Getter(id, matching));                                         \
    }
IFCORE_PATH_GETTER(EInterfaceItem, GetInterfaceItem)
IFCORE_PATH_GETTER(EInterfaceItemList, GetInterfaceItemList)
IFCORE_PATH_GETTER(EIPv4AddressItem, GetIPv4AddressItem)
IFCORE_PATH_GETTER(EIPv6AddressItem, GetIPv6AddressItem)
IFCORE_PATH_GETTER(EIPv6AddressItemList, GetIPv6AddressItemList)
IFCORE_PATH_GETTER(EDHCPProperties, GetDHCPProperties)
IFCORE_PATH_GETTER(EDHCPv6Properties, GetDHCPv6Properties)
IFCORE_PATH_GETTER(EFCoEConfig, GetFCoEConfig)
IFCORE_PATH_GETTER(ENPIVConfig, GetNPIVConfig)
IFCORE_PATH_GETTER(EPTPConfig, GetPTPConfig)
IFCORE_PATH_GETTER(ELLDPConfig, GetLLDPConfig)
IFCORE_PATH_GETTER(EDCBXConfig, GetDCBXConfig)
#undef IFCORE_PATH_GETTER

void EInterfaceTable::GetID(EComponentId& id) const
{
    id.Empty();
    id += m_values.portId;
}

/// The kinds of the sub-ids 4 to 17, in their order.
static unsigned int KindOfSubId(unsigned int subId)
{
    static unsigned int const kKinds[] = {8, 9, 10, 11, 13, 14, 15, 20, 21, 22, 23, 24, 25, 26};
    return subId >= 4 && subId <= 17 ? kKinds[subId - 4] : 0;
}

static unsigned int KindUnderInterface(unsigned int leaf)
{
    switch (leaf) {
    case kIPv6List: return 5;
    case EPlace<EIPv4AddressItem>::leaf: return 3; // not the kind of sub-id 6
    case EPlace<EDHCPProperties>::leaf: return 6;
    case EPlace<EDHCPv6Properties>::leaf: return 7;
    case EPlace<EFCoEConfig>::leaf: return 12;
    case EPlace<ENPIVConfig>::leaf: return 16;
    default: return KindOfSubId(leaf); // PTP, DCBX and LLDP have none, though their getters and edits find them
    }
}

unsigned int EInterfaceTable::GetIdType(EComponentId const& id) const
{
    unsigned int const size = id.GetIdSize();
    if (size < 2 || id[0] != m_values.portId) return 0;
    if (size == 2) return id[1] == kInterfaceList ? 4 : KindOfSubId(id[1]);
    if (id[1] != kInterfaceList) return 0;
    if (size == 3) return 1;
    if (size == 4) return KindUnderInterface(id[3]);
    return size == 5 && id[3] == kIPv6List ? 2 : 0;
}
