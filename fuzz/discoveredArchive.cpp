// The input is an archive of a discovered table.
#include "support/archives.hpp"
#include "support/discoveredChecks.hpp"
#include "support/guarded.hpp"
#include "support/require.hpp"
#include "support/target.hpp"

void TestInput(std::uint8_t const* data, std::size_t size)
{
    EBlob const input(data, static_cast<unsigned int>(size));
    EDiscoveredTable table;
    Ending const ending = RunGuarded([&] { ReadTable(table, input); });
    CheckTable(table); // what was read before a failure is whole
    if (ending == Ending::done) CheckReadTable(table);

    EBlob const written = Written(table);
    EDiscoveredTable again;
    Require(RunGuarded([&] { ReadTable(again, written); }) == Ending::done, "what was written can be read");
    CheckReadTable(again);
    Require(Written(again) == written, "what was read is written again as it was");
}
