#pragma once

#include "editableFields.hpp"

#include <string>
#include <vector>

namespace ifcoreTool {

/// What the TLVs of a level are about: an id may mean something else in another level. A level holds only such that
/// stand behind it here.
enum class TlvLevel {
    none,
    interfaceList,
    interface,
    vlans,
    dhcp,
    dhcpv6,
    ipv4,
    ipv6List,
    ipv6,
    atmEncapsulation,
    fcoe,
    npiv,
    plogiDestinations,
    plogiDestination,
    nsQuery,
    npivNsQuery,
    ptp,
    lldp,
    dcbx,
    features,
    feature,
    options,
    option, // the last one
};

/// The form of a value.
enum class TlvKind {
    number,       ///< 4 bytes.
    signedNumber, ///< 4 bytes, two's complement.
    yesNo,        ///< 4 bytes, of which any that is not 0 means yes.
    vlanTag,      ///< 4 bytes: the tag control information of IEEE 802.1Q.
    text,         ///< Without a terminator.
    address,      ///< 4 bytes IPv4, 16 bytes IPv6. The library skips one that is too short.
    exactAddress, ///< The same, and the library refuses every other length.
    mac,          ///< 6 bytes.
    uid,          ///< 8 bytes, the least significant first.
    componentId,  ///< 4 bytes a level.
    bytes,
    presence,  ///< The id tells all, whatever the value.
    operation, ///< On an item of a list: its id, 4 bytes, then perhaps a level.
    level,
};

/// Whether the library reads a TLV or skips it.
enum class TlvReading { reads, skips };

/// Where the library's builders put a TLV in its level. They clear the id of the first one.
enum class TlvBuilding {
    first, ///< Of more than one id that may be first, which one it was is lost.
    alone, ///< The only one in a level of 12 bytes: a switch, where the first of the settings would be longer.
    later,
    never,
};

/// What an id means in a level.
struct TlvRule {
    TlvLevel where;
    std::string name; ///< Under which the id is registered.
    TlvKind kind;
    TlvReading reading;
    TlvBuilding building;
    TlvLevel inside;            ///< Of a level or an operation; none: what follows the operation's id is ignored.
    EditableField const* field; ///< Of a number with names or a form of its own: how `show` writes it. Else null.
};

/// All that is known of ids, those of a level one after the other in the order in which they are built.
std::vector<TlvRule> const& TlvSchema();

/// What is wrong with a value of \p length bytes for the library, which reads this TLV; empty when nothing is.
std::string TlvRefusal(TlvKind kind, std::size_t length);

/// The id that the builders of this library put first into a level of that many bytes; null when it could be one or
/// the other.
TlvRule const* FirstBuilt(TlvLevel level, std::size_t bytes);

} // namespace ifcoreTool
