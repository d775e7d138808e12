#pragma once

#include "eBlob.hpp"
#include "eDiscoveredTableHooks.hpp"
#include "ifcoreExport.hpp"

#include <memory>

class EArchive;

/// An observer that writes each announced change of a discovered table as an operation of a change stream. A second
/// table that was equal when the observer was installed (read from the first one's archive: a copy lacks the default
/// MAC), and to which every message is applied (ApplyDiscoveredTableMessage), stays equal to the first, the default MAC
/// included.
///
/// Only what is announced is in the stream. These changes are not, and the tables part:
/// - what the owner does with SetDefaultMAC, FindDefaultMAC, FindDefaultMACIncremental, Swap, SetLocalId, SetParent,
///   and with SerializeIn of anything in the table;
/// - the fields of the protocol records, where they are set one by one, and the Empty of the DHCP, FCoE and DCBX
///   records: replace the whole record instead (EDiscoveredInfo::SetDHCPInfo and so on);
/// - Copy and Empty of an info or a neighbour that is in the table, called directly, change its id and index nothing:
///   use EDiscoveredTable::SetInfo and EDiscoveredInfo::SetNeighbor;
/// - SetInfo, RemoveInfo and RemoveNeighbor of one that is not there, which may look for a default MAC;
/// - a change that an exception stops after it was announced.
///
/// Changes that another observer makes from inside a call stand in the stream in the order of their announcements,
/// which is not always that of the changes: make them afterwards.
///
/// What an archive does not carry is not in the stream either:
/// - the second table indexes the neighbours of a whole info anew: it may find another one by a MAC or an address
///   that is or was there more than once, and does not know a MAC from before SetMac;
/// - the rate of PTP statistics may come a millionth nearer to 0 each time, and has the bounds of its form;
/// - features of a DCBX configuration arrive with its subtype as theirs, LLDP ids with the low 8 bits of their types.
///   More than 255 features are written but cannot be read, and the stream is lost from there on.
class IFCORE_API EDiscoveredChangeWriter : public EDiscoveredTableHooks {
public:
    EDiscoveredChangeWriter();
    EDiscoveredChangeWriter(EDiscoveredChangeWriter const&) = delete;
    EDiscoveredChangeWriter& operator=(EDiscoveredChangeWriter const&) = delete;
    ~EDiscoveredChangeWriter() override;

    bool HasChanges() const { return m_changes != 0 || m_failed; } ///< Since the last TakeMessage().
    unsigned long GetChangeCount() const { return m_changes; }     ///< Whole ones, since the last TakeMessage().
    /// The changes since the last call as a whole stream, closing `false` included; without any, an empty stream. When
    /// memory failed for a change or fails now, `std::bad_alloc`, and the stream begins anew: the second table then
    /// needs a copy of the first.
    EBlob TakeMessage();

#define EHOOK(operation, ...) void operation(__VA_ARGS__) override;
#include "eDiscoveredTableHooks.def"

private:
    template <class... Value> void Write(unsigned int code, Value const&... values);

    std::unique_ptr<EArchive> m_stream; // of the operations so far
    unsigned long m_changes = 0;
    bool m_failed = false; // the stream ends in half an operation
};
