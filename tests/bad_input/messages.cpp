#include "messages.hpp"

#include "archives.hpp"
#include "builtMessages.hpp"
#include "reading.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"
#include "tlvMessages.hpp"

#include "eDiscoveredChangeWriter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>

using namespace TLVIds::InterfaceTable;

/// The bytes of \p message that are whole TLVs of its level.
static std::size_t WholeTlvs(std::string const& message)
{
    std::size_t whole = 0;
    while (whole + 8 <= message.size()) {
        std::size_t const end = whole + 8 + U32At(message, whole + 4);
        if (end > message.size()) break;
        whole = end;
    }
    return whole;
}

template <class Target> static Ending ReadMessage(BadInput const& input, std::string const& message, Target& target)
{
    Ending const ending = Guarded([&] {
        if (int const error = ParsedInto(message, target)) throw error;
    });
    if (input.isCut) { // what is too short for a header is passed over
        std::size_t const rest = input.bytes.size() - WholeTlvs(input.bytes);
        EXPECT_EQ(rest < 8 ? Ending::done : Ending::parseError, ending);
    }
    return ending;
}

void CheckListLevel(std::string const& good)
{
    CheckReading(good, Numbers::four, [](BadInput const& input) {
        EInterfaceTable table(7);
        table.AddItem(2);
        table.GetInterfaceItem(2)->GetIPv6AddressItemList().AddItem(3);
        Ending const ending = ReadMessage(input, input.bytes, table);
        ExpectWhole(table);
        table.Empty();
        EXPECT_EQ(0U, table.size());
        return ending;
    });
}

/// A level of an interface; \p around puts it there.
static void CheckLevel(std::string const& good, std::function<std::string(std::string const&)> const& around)
{
    CheckReading(good, Numbers::four, [&](BadInput const& input) {
        EInterfaceTable table(7);
        table.AddItem(2);
        EInterfaceItem& interface = *table.GetInterfaceItem(2);
        interface.GetIPv6AddressItemList().AddItem(3);
        Ending const ending = ReadMessage(input, around(input.bytes), interface);
        ExpectConsistent(table);
        ExpectWhole(interface);
        interface.Empty();
        ExpectConsistent(table);
        return ending;
    });
}

void CheckInterfaceLevel(std::string const& good)
{
    CheckLevel(good, [](std::string const& message) { return message; });
}

template <Inside level> void CheckInnerLevel(std::string const& good)
{
    static TLVIds::TLVId const* const ids[] = {&IFD_VLAN, &IFD_DHCP, &IFD_IPv4, &IFD_IPv6List, &IFD_ATMEncapsulation};
    TLVIds::TLVId const& id = *ids[static_cast<int>(level)];
    CheckLevel(good, [&id](std::string const& message) { return Tlv(id, message); });
}
template void CheckInnerLevel<Inside::VLAN>(std::string const& good);
template void CheckInnerLevel<Inside::DHCP>(std::string const& good);
template void CheckInnerLevel<Inside::IPv4>(std::string const& good);
template void CheckInnerLevel<Inside::IPv6List>(std::string const& good);
template void CheckInnerLevel<Inside::ATMEncapsulation>(std::string const& good);

// Change streams

namespace {

/// A table with an observer, and one that is kept equal to it.
struct Mirrored {
    EDiscoveredTable table;
    EDiscoveredTable mirror;
    boost::shared_ptr<EDiscoveredChangeWriter> writer = boost::make_shared<EDiscoveredChangeWriter>();

    Mirrored()
    {
        EDiscoveredInfo info =
            Info(5, {Neighbor("02:00:00:00:00:01", {"10.0.0.1"}), Neighbor("02:00:00:00:00:02", {}, false)});
        info.AddAddress(IP("10.0.0.9"));
        table.AddInfo(info);
        table.AddInfo(Info(7));
        ReadInto(mirror, Written(table));
        table.hooks = writer;
    }
};

void Apply(EDiscoveredTable& table, std::string const& message)
{
    EArchive archive;
    Load(archive, message);
    ApplyDiscoveredTableMessage(table, archive);
}

class StreamReading {
public:
    Ending operator()(BadInput const& input)
    {
        Mirrored in;
        Ending const ending = Guarded([&] { Apply(in.table, input.bytes); });
        unsigned long const changes = in.writer->GetChangeCount();
        std::string const told = BytesOf(in.writer->TakeMessage());
        if (input.isCut) { // the first at each offset
            EXPECT_EQ(Ending::archiveError, ending);
            m_toldBefore = told.substr(0, told.size() - 1); // without the closing false
            m_mostChanges = std::max(m_mostChanges, changes);
        }
        EXPECT_EQ(m_toldBefore, told.substr(0, m_toldBefore.size()));
        Apply(in.mirror, told);
        ExpectWhole(in.table);
        EXPECT_EQ(Infos(in.table), Infos(in.mirror));
        in.table.Empty();
        EXPECT_EQ(m_fresh, Written(in.table));
        return ending;
    }
    unsigned long MostChanges() const { return m_mostChanges; }

private:
    /// Without the default MAC, which a bad operation without a target may make the table look for.
    static std::string Infos(EDiscoveredTable const& table)
    {
        EArchive archive;
        archive << table.GetInfos();
        return BytesOf(archive.GetAsEBlob());
    }

    std::string m_toldBefore; // the operations that stand before the bad byte
    unsigned long m_mostChanges = 0;
    std::string m_fresh = Written(EDiscoveredTable());
};

} // namespace

void CheckChangeStream(std::string const& good)
{
    StreamReading reading;
    CheckReading(good, Numbers::archive, [&reading](BadInput const& input) { return reading(input); });
    EXPECT_EQ(19U, reading.MostChanges()) << "the stream has each operation once";
}
