#include <ifcore/ifcore.hpp>

#include "golden.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

// A host's own global objects use the library until the very end of the process.

/// Uses what the library makes on first use, after all that was made after it is gone.
static void UseEverything()
{
    EInterfaceItem item;
    item.SetName("eth0");
    item.SetPTPEnabled(true);
    EDHCPProperties().Empty();
    EDHCPv6Properties().Empty();
    EIPv6AddressItem().Empty();
    EInterfaceTable table(1);
    table.AddInterfaceItem(item);
    EDiscoveredInfo info;
    info.SetInterfaceUp(true);
    info.GetDHCPv6Info().Empty();
    info.SetDCBXInfo(EDCBXDiscoveredInfo());
    EDiscoveredTable discovered;
    discovered.AddInfo(info);
    discovered.Empty();
}

namespace {

struct UsesTheLibraryWhenItGoes {
    ~UsesTheLibraryWhenItGoes() { UseEverything(); }
};

} // namespace

TEST(GlobalObjects, ReachTheLibraryWhileTheProcessEnds)
{
    ChildResult const result = RunInChild([] {
        static UsesTheLibraryWhenItGoes const last; // made before what the library makes, and so destroyed after it
        UseEverything();
        std::exit(0);
    });
    EXPECT_EQ(0, result.exitStatus);
    EXPECT_EQ("", result.output);
}
