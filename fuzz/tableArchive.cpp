// The input is an archive of an interface table, of any version.
#include "support/fatalArchive.hpp"
#include "support/tableChecks.hpp"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    EBlob const input(data, static_cast<unsigned int>(size));
    EInterfaceTable table(1);
    RunGuarded([&] { ReadTable(table, input); });
    CheckTable(table); // what was read before a failure is whole

    EBlob const written = Written(table);
    EInterfaceTable again;
    Require(RunGuarded([&] { ReadTable(again, written); }) == Ending::done, "what was written can be read");
    Require(Written(again) == written, "what was read is written again as it was");
    return 0;
}
