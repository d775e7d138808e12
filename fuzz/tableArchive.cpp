// The input is an archive of an interface table, of any version.
#include "support/archives.hpp"
#include "support/guarded.hpp"
#include "support/require.hpp"
#include "support/tableChecks.hpp"
#include "support/target.hpp"

void TestInput(std::uint8_t const* data, std::size_t size)
{
    EBlob const input(data, static_cast<unsigned int>(size));
    EInterfaceTable table(1);
    RunGuarded([&] { ReadTable(table, input); });
    CheckTable(table); // what was read before a failure is whole

    EBlob const written = Written(table);
    EInterfaceTable again;
    Require(RunGuarded([&] { ReadTable(again, written); }) == Ending::done, "what was written can be read");
    Require(Written(again) == written, "what was read is written again as it was");
}
