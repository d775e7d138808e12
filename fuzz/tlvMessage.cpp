// The input is a message of list operations for one table of port 7 that holds the interfaces 1 and 2. What became of
// the table is built into a message again, which is read into another table.
#include "support/guarded.hpp"
#include "support/require.hpp"
#include "support/tableChecks.hpp"
#include "support/target.hpp"

#include "tlvParserMapTable.hpp"

#include <vector>

namespace {

void Apply(void const* bytes, std::size_t size, EInterfaceTable& table)
{
    TLVReader message(bytes, static_cast<int>(size));
    unsigned char const* const position = message.position;
    int const remaining = message.remaining;
    RunGuarded([&] { ParseInterfaceListTLV(message, table); });
    Require(message.position == position && message.remaining == remaining, "the caller's reader stays where it is");
    CheckTable(table);
}

bool ReadyForMessages()
{
    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    return true;
}

} // namespace

void TestInput(std::uint8_t const* data, std::size_t size)
{
    static bool const ready = ReadyForMessages();
    Require(ready, "the parser maps are filled");
    EInterfaceTable table(7);
    FillWithTwoInterfaces(table);
    Apply(data, size, table);

    std::vector<char> message;
    for (auto position = table.begin(); position != table.end(); ++position)
        Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Add, *table.GetItem(position));
    EInterfaceTable other(7);
    Apply(message.data(), message.size(), other);
    // The operations carry no ids, so that each interface replaces the one before.
    Require(other.size() == (table.size() == 0 ? 0U : 1U), "a built message is read without an error");
}
