#include "networkNamespace.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>

using namespace ifcoreTool;

namespace {

std::string OwnNamespace()
{
    return std::filesystem::read_symlink("/proc/thread-self/ns/net");
}

} // namespace

TEST(NetworkNamespace, LastsAsLongAsItsScope)
{
    toolTest::TestNamespace const space;
    std::string const before = OwnNamespace();
    {
        NetworkNamespace const inside(space.GetName());
        EXPECT_NE(before, OwnNamespace());
    }
    EXPECT_EQ(before, OwnNamespace());
}

TEST(NetworkNamespace, RefusesNamesThatAreNone)
{
    std::string const before = OwnNamespace();
    for (char const* name : {"", ".", "..", "a/b", "../../proc/1/ns/net", "ifcore-no-such-namespace"}) {
        SCOPED_TRACE(name);
        try {
            NetworkNamespace const inside{name};
            FAIL();
        } catch (ToolError const& error) {
            EXPECT_EQ(ExitCode::badInput, error.GetCode());
            EXPECT_NE(std::string::npos, std::string(error.what()).find(std::string("'") + name + "'"));
        }
    }
    EXPECT_EQ(before, OwnNamespace());
}

TEST(NetworkNamespace, AFileThatIsNoNamespaceIsTheSystemsRefusal)
{
    toolTest::TestNamespace const space; // /run/netns exists from here on
    std::string const name = space.GetName() + "-plain";
    std::string const path = "/run/netns/" + name;
    toolTest::WriteFile(path, "text");
    try {
        NetworkNamespace const inside(name);
        ADD_FAILURE();
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::systemRefused, error.GetCode());
        EXPECT_EQ("entering the network namespace '" + name + "': Invalid argument", error.what());
    }
    std::filesystem::remove(path);
}
