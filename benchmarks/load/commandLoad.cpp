#include "commands.hpp"
#include "loads.hpp"

#include "sampleTable.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"

#include <boost/make_shared.hpp>

#include <array>
#include <cstdio>
#include <random>
#include <string>

namespace {

/// Counts every call.
class CountingHooks : public EInterfaceTableHooks {
public:
    enum Operation : std::size_t {
#define EHOOK(operation, ...) k##operation,
#include <ifcore/eInterfaceTableHooks.def>
        kOperations
    };
#define EHOOK(operation, ...)                                                                                          \
    void operation(__VA_ARGS__) override                                                                               \
    {                                                                                                                  \
        ++m_calls[k##operation];                                                                                       \
    }
#include <ifcore/eInterfaceTableHooks.def>

    unsigned long GetCalls(Operation operation) const
    {
        return m_calls[operation];
    }
    unsigned long GetAllCalls() const
    {
        unsigned long sum = 0;
        for (unsigned long calls : m_calls) sum += calls;
        return sum;
    }

private:
    std::array<unsigned long, kOperations> m_calls = {};
};

/// Commands by chance to a table that has as many rows, with two IPv6 addresses each, after each step as before.
class CommandMix {
public:
    explicit CommandMix(unsigned int rows) : m_table(1), m_counter(boost::make_shared<CountingHooks>())
    {
        m_table.AddInterfaceTableHooks("COUNTER", m_counter);
        m_table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
        for (unsigned int i = 0; i < rows; ++i) {
            m_rows.push_back({});
            AddRow(m_rows.back());
        }
    }

    /// One command or two.
    void Step()
    {
        Row& row = m_rows[Random(m_rows.size())];
        unsigned int const chance = Random(100);
        if (chance < 40)
            EditRow(row);
        else if (chance < 60)
            SwitchRow(row);
        else if (chance < 70)
            SetRecord(row);
        else if (chance < 85)
            ReplaceRow(row);
        else
            ReplaceIPv6(row);
    }
    unsigned long GetCommands() const { return m_commands; }

    /// The rows are those that the commands have made, found by the addresses that they have now.
    void Check()
    {
        Require(m_table.GetCount() == m_rows.size(), "the table has the rows that it had");
        for (Row const& row : m_rows) {
            EInterfaceItem const* const item = m_table.GetInterfaceItem(row.id);
            Require(item && item->GetIPv6AddressItemList().size() == row.ipv6.size(), "a row is there, and whole");
            Require(item->GetIPv4AddressItem().GetAddress() == row.ipv4, "a row has the address that it was given");
            Require(m_table.FindInterfaceByIP(row.ipv4) == item, "the observer finds a row by its IPv4 address");
            for (unsigned int ipv6 : row.ipv6) {
                EIPv6AddressItem const* const address = item->GetIPv6AddressItem(ipv6);
                Require(address, "an IPv6 address is there");
                Require(m_table.FindInterfaceByIP(address->GetAddress()) == item,
                        "the observer finds a row by its IPv6 addresses");
            }
        }
        Require(m_counter->GetCalls(CountingHooks::kAddingInterfaceItem) == m_added &&
                    m_counter->GetCalls(CountingHooks::kRemovingInterfaceItem) == m_added - m_rows.size(),
                "the observer is told of every row that comes or goes");
    }
    unsigned long GetObserverCalls() const { return m_counter->GetAllCalls(); }

private:
    struct Row {
        unsigned int id;
        EIPAddress ipv4;
        std::array<unsigned int, 2> ipv6; // ids
    };

    unsigned int Random(std::size_t bound) { return static_cast<unsigned int>(m_random() % bound); }
    /// Of what is new; its addresses are in no row.
    unsigned int NextNumber() { return ++m_number; }

    void AddRow(Row& row)
    {
        unsigned int const number = NextNumber();
        row = {Add(m_table, InterfaceList(), SampleInterface(number)), SampleIPv4(number), {}};
        ReadIPv6Ids(row);
        ++m_added;
        ++m_commands;
    }
    void ReadIPv6Ids(Row& row)
    {
        EIPv6AddressItemList const& list = m_table.GetInterfaceItem(row.id)->GetIPv6AddressItemList();
        Require(list.size() == row.ipv6.size(), "a row has two IPv6 addresses");
        std::size_t i = 0;
        for (auto position = list.begin(); position != list.end(); ++position) row.ipv6[i++] = position->first;
    }
    void ReplaceRow(Row& row)
    {
        Remove(m_table, InterfaceList(), row.id);
        ++m_commands;
        AddRow(row);
    }
    void ReplaceIPv6(Row& row)
    {
        unsigned int& id = row.ipv6[Random(row.ipv6.size())];
        EIPv6AddressItem address;
        address.SetAddress(SampleIPv6(NextNumber()));
        Remove(m_table, IPv6List(row.id), id);
        id = Add(m_table, IPv6List(row.id), address);
        m_commands += 2;
    }
    void EditRow(Row& row)
    {
        unsigned int const number = NextNumber();
        switch (Random(6)) {
        case 0: Edit(m_table, InterfacePath(row.id), {15}, number % 9000); break; // MTU
        case 1: Edit(m_table, InterfacePath(row.id), {14}, "renamed " + std::to_string(number)); break;
        case 2: Edit(m_table, InterfacePath(row.id), {6, 1}, SampleIPv4(number)); break; // gateway
        case 3:
            Edit(m_table, IPv4Path(row.id), {3}, SampleIPv4(number));
            row.ipv4 = SampleIPv4(number);
            break;
        case 4: Edit(m_table, IPv6Path(row.id, row.ipv6[0]), {1}, SampleIPv6(number)); break;
        default: Edit(m_table, InterfacePath(row.id), {9}, Vlan(number)); break;
        }
        ++m_commands;
    }
    static EVLANIPAddressTableItemProperties Vlan(unsigned int number)
    {
        EVLANIPAddressTableItemProperties vlans(1, true);
        vlans.SetVLANID(static_cast<unsigned short>(number % 4094 + 1), 0);
        return vlans;
    }
    void SwitchRow(Row const& row)
    {
        Switch(m_table, Random(2) == 0 ? InterfacePath(row.id) : IPv4Path(row.id), Random(2) == 0);
        ++m_commands;
    }
    void SetRecord(Row& row)
    {
        unsigned int const number = NextNumber();
        EInterfaceItem const item = SampleInterface(number);
        switch (Random(3)) {
        case 0:
            Set(m_table, InterfaceList(), row.id, item);
            row.ipv4 = SampleIPv4(number);
            ReadIPv6Ids(row);
            break;
        case 1:
            Set(m_table, InterfacePath(row.id), 6, item.GetIPv4AddressItem());
            row.ipv4 = SampleIPv4(number);
            break;
        default: Set(m_table, IPv6List(row.id), row.ipv6[1], *item.GetIPv6AddressItem(1)); break;
        }
        ++m_commands;
    }

    EInterfaceTable m_table;
    boost::shared_ptr<CountingHooks> m_counter;
    std::vector<Row> m_rows;
    std::mt19937 m_random{20240229}; // any; the same commands each time
    unsigned int m_number = 0;
    unsigned long m_commands = 0;
    unsigned long m_added = 0;
};

} // namespace

void LoadCommands(unsigned int interfaces, unsigned long commands)
{
    Steps steps(std::to_string(commands) + " commands to a table of " + std::to_string(interfaces) +
                " interfaces with a counting observer and the lookup observer");
    steps.Begin();
    CommandMix mix(interfaces);
    steps.End("fill by add commands", interfaces);
    FlatMemory memory;
    for (unsigned long part = 1; part <= 10; ++part) {
        unsigned long const before = mix.GetCommands();
        steps.Begin();
        while (mix.GetCommands() < interfaces + commands / 10 * part) mix.Step();
        steps.End(part == 1 ? "warm-up" : "commands, part " + std::to_string(part), mix.GetCommands() - before);
        mix.Check();
        if (part == 1)
            memory.EndWarmUp();
        else
            memory.Check();
    }
    std::printf("%-44s %11lu\n", "  calls of the observer", mix.GetObserverCalls());
    memory.Print();
}
