// The input is a list of host commands to one table of port 7 that holds the interfaces 1 and 2. A command is
//
//     action
//     number of levels, the levels            of the component id
//     number of leaves, the leaves
//     number of sub-ids, the sub-ids          of an edit
//     length (two bytes, the high one first), the data
//
// with one byte for all else. What is missing at the end counts as zero.
#include "support/archives.hpp"
#include "support/guarded.hpp"
#include "support/require.hpp"
#include "support/tableChecks.hpp"
#include "support/target.hpp"

#include "eIPLookupInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <vector>

namespace {

unsigned int const kRemove = 6;
unsigned int const kEdit = 7;

class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : m_next(data), m_end(data + size) {}

    bool AtEnd() const { return m_next == m_end; }
    unsigned int Byte() { return AtEnd() ? 0 : *m_next++; }
    std::vector<unsigned int> Numbers()
    {
        std::vector<unsigned int> numbers(Byte());
        for (unsigned int& number : numbers) number = Byte();
        return numbers;
    }
    EBlob Data()
    {
        std::size_t const high = Byte();
        std::size_t const wanted = high << 8 | Byte();
        std::size_t const length = std::min(wanted, static_cast<std::size_t>(m_end - m_next));
        EBlob const data(m_next, static_cast<unsigned int>(length));
        m_next += length;
        return data;
    }

private:
    std::uint8_t const* m_next;
    std::uint8_t const* m_end;
};

ESingleCommand NextCommand(Input& input)
{
    unsigned int const action = input.Byte();
    EMultiComponentId target(EComponentId(input.Numbers()));
    target.SetLeaves(input.Numbers());
    std::vector<unsigned int> const editSubId = input.Numbers();
    return ESingleCommand(action, target, editSubId, input.Data());
}

} // namespace

void TestInput(std::uint8_t const* data, std::size_t size)
{
    EInterfaceTable table(7);
    table.AddInterfaceTableHooks("IP_LOOKUP_HOOKS", boost::make_shared<EIPLookupInterfaceTableHooks>());
    FillWithTwoInterfaces(table);
    CheckTable(table);

    Input input(data, size);
    for (unsigned int count = 0; count < 16 && !input.AtEnd(); ++count) {
        ESingleCommand const command = NextCommand(input);
        EBlob const before = Written(table);
        bool accepted = false;
        EMultiComponentId added;
        Ending const ending = RunGuarded([&] { accepted = table.ExecuteCommand(command, &added); });
        CheckTable(table);
        // An edit of a record that is created on demand creates it before the rest of the sub-id is looked at.
        if (!accepted && command.GetAction() != kEdit)
            Require(Written(table) == before, "a command that was not accepted changed nothing");
        Require(!accepted || ending == Ending::done, "a command that failed is not accepted");
        Require(!accepted || command.GetAction() != kRemove || !command.GetId().GetLeaves().empty(),
                "a removal without leaves removes nothing");
    }
}
