// The input is a change stream, of any number of messages, for a discovered table that holds the infos 5 and 7. What it
// changes is written as a change stream again, which is applied to a second table.
#include "support/archives.hpp"
#include "support/discoveredChecks.hpp"
#include "support/guarded.hpp"
#include "support/require.hpp"
#include "support/target.hpp"

#include <boost/make_shared.hpp>

namespace {

Ending Apply(EDiscoveredTable& table, EBlob const& stream)
{
    return RunGuarded([&] {
        EArchive archive = Reading(stream);
        while (!archive.AtEnd()) ApplyDiscoveredTableMessage(table, archive);
    });
}

} // namespace

void TestInput(std::uint8_t const* data, std::size_t size)
{
    EDiscoveredTable table;
    FillWithTwoInfos(table);
    EDiscoveredTable second;
    ReadTable(second, Written(table));
    auto const writer = boost::make_shared<EDiscoveredChangeWriter>();
    table.hooks = writer;

    Apply(table, EBlob(data, static_cast<unsigned int>(size)));
    CheckTable(table); // what was applied before a failure is whole

    Require(Apply(second, writer->TakeMessage()) == Ending::done, "what was written can be applied");
    CheckTable(second);
    // An operation that is not announced may look for a default MAC.
    second.SetDefaultMAC(table.GetDefaultMACIfId(), table.GetDefaultMACNbrId(), table.GetDefaultMAC());
    Require(Written(second) == Written(table), "the second table follows the first");
}
