// Changing one leaf by its path in a data tree of libyang.
#include "../benchSupport.hpp"

#include <libyang/libyang.h>

#include <string>
#include <vector>

namespace {

char const* const kModule = R"(module interfaces {
  namespace "urn:ifcore:bench";
  prefix i;
  container table {
    list interface {
      key "id";
      leaf id { type uint32; }
      leaf name { type string; }
      leaf enabled { type boolean; }
      leaf mtu { type uint32; }
      container ipv4 {
        leaf enabled { type boolean; }
        leaf address { type string; }
        leaf gateway { type string; }
        leaf mask-length { type uint8; }
        leaf mss { type uint16; }
      }
    }
  }
})";

std::string LeafPath(unsigned int id, char const* leaf)
{
    return "/interfaces:table/interface[id='" + std::to_string(id) + "']/" + leaf;
}

/// A tree of as many interfaces as the benchmark was asked for.
class Tree {
public:
    explicit Tree(unsigned int count)
    {
        Require(ly_ctx_new(nullptr, 0, &m_context) == LY_SUCCESS, "no context");
        Require(lys_parse_mem(m_context, kModule, LYS_IN_YANG, nullptr) == LY_SUCCESS, "the module was refused");
        Require(lyd_new_path(nullptr, m_context, "/interfaces:table", nullptr, 0, &m_root) == LY_SUCCESS, "no root");
        for (unsigned int id = 1; id <= count; ++id) {
            Add(id, "name", "if " + std::to_string(id));
            Add(id, "enabled", "true");
            Add(id, "mtu", "9000");
            Add(id, "ipv4/enabled", "true");
            Add(id, "ipv4/address", SampleIPv4(id).GetAsString());
            Add(id, "ipv4/gateway", "10.0.0.0");
            Add(id, "ipv4/mask-length", "16");
            Add(id, "ipv4/mss", "1460");
        }
    }
    Tree(Tree const&) = delete;
    Tree& operator=(Tree const&) = delete;
    ~Tree()
    {
        lyd_free_all(m_root);
        ly_ctx_destroy(m_context);
    }
    void Change(std::string const& path, char const* value)
    {
        lyd_node* leaf = nullptr;
        if (lyd_find_path(m_root, path.c_str(), 0, &leaf) != LY_SUCCESS || lyd_change_term(leaf, value) != LY_SUCCESS)
            Require(false, "the leaf was not changed");
    }

private:
    void Add(unsigned int id, char const* leaf, std::string const& value)
    {
        Require(lyd_new_path(m_root, m_context, LeafPath(id, leaf).c_str(), value.c_str(), 0, nullptr) == LY_SUCCESS,
                "a leaf was refused");
    }

    ly_ctx* m_context = nullptr;
    lyd_node* m_root = nullptr;
};

/// The paths are made beforehand; interface and gateway are others each time.
void Edit(benchmark::State& state)
{
    static Tree tree(Count(state)); // of one size only: making it costs seconds
    static char const* const gateways[] = {"192.0.2.1", "192.0.2.2"};
    static unsigned int round = 0; // goes on, so that no value is what the leaf has already
    std::vector<std::string> paths;
    for (unsigned int i = 0; i < 64; ++i) paths.push_back(LeafPath(1 + i * (Count(state) / 64), "ipv4/gateway"));
    for (auto _ : state) {
        tree.Change(paths[round % 64], gateways[round / 64 % 2]);
        ++round;
    }
}

} // namespace

BENCHMARK(Edit)->Name("Edit/libyang")->Arg(10000);
