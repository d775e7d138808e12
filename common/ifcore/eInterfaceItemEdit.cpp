// The edits of an interface by sub-id.
#include "eInterfaceItem.hpp"
#include "eRecord.hpp"

/// One row of the edit table: what the sub-id picks, given the rest of the range behind it.
struct EInterfaceEdit {
    unsigned int subId;
    bool (*apply)(EInterfaceItem&, ESubId rest, ESubId last, EArchive&);
};

/// A field; what follows in the range does not matter.
template <class Read, auto setter> static bool Field(EInterfaceItem& item, ESubId, ESubId, EArchive& archive)
{
    ReadAndSet<Read, setter>(item, archive);
    return true;
}

/// A value that is accepted only as the end of the range.
template <class Read, auto setter>
static bool LastField(EInterfaceItem& item, ESubId rest, ESubId last, EArchive& archive)
{
    return rest == last && Field<Read, setter>(item, rest, last, archive);
}

/// A contained record: replaced whole at the end of the range, otherwise edited by the rest of it. The access creates
/// a record that is created on demand, whether the rest of the range is then accepted or not.
template <class Record, void (EInterfaceItem::*setter)(Record const&), Record& (EInterfaceItem::*access)()>
static bool Contained(EInterfaceItem& item, ESubId rest, ESubId last, EArchive& archive)
{
    if (rest != last) return (item.*access)().ProcessEdit(rest, last, archive);
    ReadAndSet<Record, setter>(item, archive);
    return true;
}

using EItem = EInterfaceItem;

static EInterfaceEdit const kEdits[] = {
    {2, Field<unsigned int, &EItem::SetPPPHandle>},
    {3, Field<unsigned int, &EItem::SetPPPSession>},
    {4, Field<EComponentId, &EItem::SetConnectedViaId>},
    {5, Field<EUID, &EItem::SetEUID>},
    {6, Contained<EIPv4AddressItem, &EItem::SetIPv4AddressItem, &EItem::GetIPv4AddressItem>},
    {7, Field<EMACAddress, &EItem::SetMacAddress>},
    {8, Field<bool, &EItem::SetOverrideAutogenEuid>},
    {9, LastField<EVLANIPAddressTableItemProperties, &EItem::SetVLANItem>},
    {10, Field<unsigned int, &EItem::SetVPI>},
    {11, Field<unsigned int, &EItem::SetVCI>},
    {12, Field<unsigned int, &EItem::SetEncapsulation>},
    {13, Field<unsigned int, &EItem::SetATMMode>},
    {14, Field<std::string, &EItem::SetName>},
    {15, Field<unsigned int, &EItem::SetMTU>},
    {16, Field<int, &EItem::SetType>},
    {17, Field<EComponentId, &EItem::SetGreSourceIp>},
    {18, Field<EIPAddress, &EItem::SetGreDestIp>},
    {19, Field<bool, &EItem::SetGreUseChecksum>},
    {20, Field<bool, &EItem::SetGreUseSequence>},
    {21, Field<bool, &EItem::SetGreUseKey>},
    {22, Field<int, &EItem::SetGreInKey>},
    {23, Field<int, &EItem::SetGreOutKey>},
    {24, Contained<EDHCPProperties, &EItem::SetDHCPProperties, &EItem::GetDHCPProperties>},
    {25, Field<bool, &EItem::SetDHCPEnabled>},
    {26, Contained<EDHCPv6Properties, &EItem::SetDHCPv6Properties, &EItem::GetDHCPv6Properties>},
    {27, Field<bool, &EItem::SetDHCPv6Enabled>},
    {28, Field<unsigned int, &EItem::SetVcatCircuitId>},
    {29, Field<EIPAddress, &EItem::SetIPv6Gateway>},
    {30, Field<bool, &EItem::SetFCoEEnabled>},
    {31, Contained<EFCoEConfig, &EItem::SetFCoEConfig, &EItem::GetFCoEConfig>},
    {32, Contained<ENPIVConfig, &EItem::SetNPIVConfig, &EItem::GetNPIVConfig>},
    {33, Field<bool, &EItem::SetPTPEnabled>},
    {34, Contained<EPTPConfig, &EItem::SetPTPConfig, &EItem::GetPTPConfig>},
    {35, Field<bool, &EItem::SetDCBXEnabled>},
    {36, Contained<EDCBXConfig, &EItem::SetDCBXConfig, &EItem::GetDCBXConfig>},
    {37, Field<bool, &EItem::SetLLDPEnabled>},
    {38, Contained<ELLDPConfig, &EItem::SetLLDPConfig, &EItem::GetLLDPConfig>},
};

bool EInterfaceItem::ProcessEdit(ESubId first, ESubId last, EArchive& archive)
{
    if (first == last) return false;
    for (EInterfaceEdit const& edit : kEdits)
        if (edit.subId == *first) return edit.apply(*this, first + 1, last, archive);
    return false;
}
