#include "values.hpp"

#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

using ifcoreTool::Json;
using toolTest::Result;
using toolTest::RunIfcore;
using toolTest::ScratchFolder;

namespace {

/// `import` of a namespace as JSON.
Json Imported(toolTest::TestNamespace const& space, std::vector<std::string> const& more = {})
{
    ScratchFolder const folder;
    std::string const file = folder / "port.ifc";
    std::vector<std::string> arguments{"import", "--netns", space.GetName(), "-o", file};
    arguments.insert(arguments.end(), more.begin(), more.end());
    Result const result = RunIfcore(arguments);
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ("", result.err);
    return Json::parse(RunIfcore({"show", file, "--json"}).out);
}

Json Named(Json const& table, std::string const& name)
{
    Json found = Json::array();
    for (Json const& interface : table["interfaces"])
        if (interface["name"] == name) found.push_back(interface);
    return found;
}

} // namespace

TEST(Import, TakesLinksAddressesAndGatewaysOfANamespace)
{
    toolTest::TestNamespace const space;
    space.Ip({"link set lo up", "link add left type veth peer name right", "link set left mtu 1400",
              "link set left address 02:00:00:00:00:11", "link set left up", "link set right up",
              "addr add 192.0.2.1/24 dev left", "addr add 198.51.100.1/25 dev left",
              "addr add 2001:db8::1/64 dev left nodad", "route add default via 192.0.2.254 dev left",
              "-6 route add default via 2001:db8::fe dev left", "link set right address 02:00:00:00:00:12"});
    Json const table = Imported(space, {"--port", "6"});
    EXPECT_EQ(6, table["port-id"]);

    Json const left = Named(table, "left");
    ASSERT_EQ(2u, left.size());
    EXPECT_EQ(true, left[0]["enabled"]);
    EXPECT_EQ("ethernet", left[0]["type"]);
    EXPECT_EQ(1400, left[0]["mtu"]);
    EXPECT_EQ("02:00:00:00:00:11", left[0]["mac"]);
    EXPECT_EQ("192.0.2.1", left[0]["ipv4"]["address"]);
    EXPECT_EQ(24, left[0]["ipv4"]["prefix-length"]);
    EXPECT_EQ("192.0.2.254", left[0]["ipv4"]["gateway"]);
    EXPECT_EQ(true, left[0]["ipv4"]["enabled"]);
    EXPECT_EQ("2001:db8::fe", left[0]["ipv6"]["gateway"]);
    EXPECT_EQ("2001:db8::1", left[0]["ipv6"]["addresses"][0]["address"]);
    EXPECT_EQ("02:00:00:00:00:11", left[1]["mac"]);
    EXPECT_EQ("198.51.100.1", left[1]["ipv4"]["address"]);
    EXPECT_EQ("0.0.0.0", left[1]["ipv4"]["gateway"]);
    EXPECT_EQ(0u, left[1]["ipv6"]["addresses"].size());

    Json const right = Named(table, "right");
    ASSERT_EQ(1u, right.size());
    EXPECT_EQ("02:00:00:00:00:12", right[0]["mac"]);
    EXPECT_EQ(false, right[0]["ipv4"]["enabled"]);
    Json const loopback = Named(table, "lo");
    ASSERT_EQ(1u, loopback.size());
    EXPECT_EQ("127.0.0.1", loopback[0]["ipv4"]["address"]);
    EXPECT_EQ("00:00:00:00:00:00", loopback[0]["mac"]);
}

TEST(Import, ALinkOfAKindThatThisKernelHasBecomesARow)
{
    toolTest::TestNamespace const space;
    space.Ip({"link add left type veth peer name right", "link set left address 02:00:00:00:00:11"});
    bool const vlan = space.Permits("link add link left name left.7 type vlan id 7");
    bool const gre = space.Permits("link add tun type gre local 192.0.2.1 remote 192.0.2.2 key 5");
    Json const table = Imported(space);
    Json const tagged = Named(table, "left.7");
    ASSERT_EQ(vlan ? 1u : 0u, tagged.size());
    if (vlan) {
        EXPECT_EQ(7, tagged[0]["vlan"]["tags"][0]["id"]);
        EXPECT_EQ("02:00:00:00:00:11", tagged[0]["mac"]);
    }
    Json const tunnel = Named(table, "tun");
    ASSERT_EQ(gre ? 1u : 0u, tunnel.size());
    if (gre) {
        EXPECT_EQ("gre", tunnel[0]["type"]);
        EXPECT_EQ("192.0.2.2", tunnel[0]["gre"]["destination"]);
        EXPECT_EQ(5, tunnel[0]["gre"]["in-key"]);
    }
    EXPECT_EQ(3u + tagged.size() + Named(table, "tun").size() + Named(table, "gre0").size() +
                  Named(table, "gretap0").size() + Named(table, "erspan0").size(),
              table["interfaces"].size());
}

TEST(Import, TracesEveryStepAndReplacesTheFileWhole)
{
    toolTest::TestNamespace const space;
    ScratchFolder const folder;
    std::string const file = folder / "port.ifc";
    toolTest::WriteFile(file, "anything");
    Result const result = RunIfcore({"import", "--netns", space.GetName(), "-o", file, "--trace"});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(0u, result.out.find("AddingInterfaceItem  interface 1\n"
                                  "SettingInterfaceName  interface 1  name: - -> lo\n"
                                  "SettingInterfaceType  interface 1  type: ethernet -> ethernet\n"
                                  "SettingInterfaceMTU  interface 1  mtu: 1500 -> 65536\n"))
        << result.out;
    EXPECT_EQ((std::vector<std::string>{"port.ifc"}), folder.GetNames());
    EXPECT_EQ(0, RunIfcore({"show", file}).status);
}

TEST(Import, AnUnknownNamespaceIsBadInputAndWritesNothing)
{
    ScratchFolder const folder;
    Result const result = RunIfcore({"import", "--netns", "ifcore-no-such", "-o", folder / "port.ifc"});
    EXPECT_EQ(3, result.status);
    EXPECT_EQ("ifcore: there is no network namespace 'ifcore-no-such'\n", result.err);
    EXPECT_EQ(std::vector<std::string>{}, folder.GetNames());
}

TEST(Import, ThisMachinesOwnInterfacesAreThere)
{
    ScratchFolder const folder;
    Result const result = RunIfcore({"import", "-o", folder / "port.ifc"});
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(1u, Named(Json::parse(RunIfcore({"show", folder / "port.ifc", "--json"}).out), "lo").size());
}
