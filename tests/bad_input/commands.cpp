#include "commands.hpp"

#include "reading.hpp"

#include "golden.hpp"
#include "recordedInterface.hpp"
#include "tlvMessages.hpp"

#include "eSingleCommand.hpp"

#include <gtest/gtest.h>

#include <optional>

namespace {

unsigned int const kSet = 2;
unsigned int const kAdd = 5;

/// The table of port 7 with the interface 1, which has the IPv6 address 1 and an NPIV configuration.
struct Target : RecordedInterface {
    std::string before;

    Target()
    {
        interface.GetIPv6AddressItemList().AddItem();
        interface.EnsureNPIV();
        before = Written(table);
        recorder->Clear();
    }
};

class CommandReading {
public:
    CommandReading(unsigned int action, EComponentId const& id, std::vector<unsigned int> const& leaves)
        : m_action(action), m_id(id)
    {
        m_id.SetLeaves(leaves);
    }
    Ending operator()(BadInput const& input)
    {
        if (!m_target) m_target.emplace();
        EInterfaceTable& table = m_target->table;
        EMultiComponentId added;
        bool accepted = false;
        ESingleCommand const command(m_action, m_id, {}, BlobOf(input.bytes));
        Ending const ending = Guarded([&] { accepted = table.ExecuteCommand(command, &added); });
        ExpectConsistent(table);
        EXPECT_EQ(ending == Ending::done, accepted);
        if (accepted) {
            EXPECT_FALSE(m_target->recorder->calls.empty());
            m_target.reset();
        } else {
            EXPECT_TRUE(m_target->recorder->calls.empty());
            EXPECT_EQ(m_target->before, Written(table));
        }
        return ending;
    }

private:
    unsigned int m_action;
    EMultiComponentId m_id;
    std::optional<Target> m_target;
};

void CheckCommand(std::string const& good, unsigned int action, EComponentId const& id,
                  std::vector<unsigned int> const& leaves)
{
    CommandReading reading(action, id, leaves);
    CheckReading(good, Numbers::archive, [&reading](BadInput const& input) { return reading(input); });
}

} // namespace

void CheckTableSet(std::string const& good)
{
    CheckCommand(good, kSet, {7}, {});
}
void CheckInterfaceAdd(std::string const& good)
{
    CheckCommand(good, kAdd, {7, 1}, {});
}
void CheckInterfaceSet(std::string const& good)
{
    CheckCommand(good, kSet, {7, 1}, {1});
}
void CheckIPv6Add(std::string const& good)
{
    CheckCommand(good, kAdd, {7, 1, 1, 1}, {});
}
void CheckIPv6Set(std::string const& good)
{
    CheckCommand(good, kSet, {7, 1, 1, 1}, {1});
}
template <unsigned int leaf> void CheckLeafSet(std::string const& good)
{
    CheckCommand(good, kSet, {7, 1, 1}, {leaf});
}
template void CheckLeafSet<6>(std::string const& good);
template void CheckLeafSet<24>(std::string const& good);
template void CheckLeafSet<26>(std::string const& good);
template void CheckLeafSet<31>(std::string const& good);
template void CheckLeafSet<32>(std::string const& good);
