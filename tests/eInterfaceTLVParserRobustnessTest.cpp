// Damaged messages: reading ends with a value or with the parse error, and leaves a table that holds together.
#include "eInterfaceTLVParser.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace TLVIds::InterfaceTable;
using namespace TLVIds::ListOp;

static std::string const& NestedMessage()
{
    static std::string const message = Golden("TLV.wholeTable.hex");
    return message;
}

static unsigned int U32At(std::string const& message, std::size_t offset)
{
    unsigned int value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(message.at(offset + i));
    return value;
}

/// Collects where the ids and lengths of TLVs stand, at every depth from \p start on. The message must be whole.
static void FindHeaders(std::string const& message, std::size_t start, std::size_t end, std::vector<std::size_t>& found)
{
    while (start < end) {
        unsigned int const number = U32At(message, start);
        std::size_t const valueEnd = start + 8 + U32At(message, start + 4);
        ASSERT_LE(valueEnd, end);
        found.push_back(start);
        bool isItem = false;
        for (TLVIds::TLVId const* id : {&Add, &Edit}) isItem = isItem || number == id->GetIndex();
        bool isLevel = isItem;
        for (TLVIds::TLVId const* id : {&IFD_VLAN, &IFD_DHCP, &IFD_IPv4, &IFD_IPv6List, &IFD_ATMEncapsulation})
            isLevel = isLevel || number == id->GetIndex();
        if (isLevel) FindHeaders(message, start + (isItem ? 12 : 8), valueEnd, found);
        start = valueEnd;
    }
}

/// Reads a message into a table with an interface that the golden message edits.
/// Any exception but the parse error fails the test.
static int ResultOf(std::string const& message)
{
    EInterfaceTable table(7);
    table.AddItem(2);
    table.GetInterfaceItem(2)->GetIPv6AddressItemList().AddItem(3);
    int const error = ParsedInto(message, table);
    ExpectConsistent(table);
    return error;
}

TEST(EInterfaceTLVParserRobustness, APrefixOfAMessageIsReadOrEndsInTheParseErrorWhereATLVIsCut)
{
    std::string const& message = NestedMessage();
    ASSERT_EQ(734U, message.size());
    std::size_t whole = 0; // end of the last outer TLV that is whole
    for (std::size_t size = 0; size <= message.size(); ++size) {
        if (size >= whole + 8 && size == whole + 8 + U32At(message, whole + 4)) whole = size;
        EXPECT_EQ(size - whole < 8 ? 0 : -1, ResultOf(message.substr(0, size)));
        ASSERT_FALSE(HasFailure()) << size;
    }
    EXPECT_EQ(message.size(), whole);
}

TEST(EInterfaceTLVParserRobustness, AChangeOfAnyByteIsReadOrEndsInTheParseError)
{
    std::string const& message = NestedMessage();
    int values = 0;
    int errors = 0;
    for (std::size_t offset = 0; offset < message.size(); ++offset)
        for (unsigned int bits = 1; bits < 256; ++bits) {
            std::string changed = message;
            changed[offset] = static_cast<char>(static_cast<unsigned char>(message[offset]) ^ bits);
            int const result = ResultOf(changed);
            EXPECT_TRUE(result == 0 || result == -1) << result;
            ++(result == 0 ? values : errors);
            ASSERT_FALSE(HasFailure()) << "byte " << offset << " with the bits " << bits;
        }
    EXPECT_GT(values, 100000); // ids and values
    EXPECT_GT(errors, 50000);  // lengths
}

TEST(EInterfaceTLVParserRobustness, ALengthThatLiesAnywhereInTheMessageIsReadOrEndsInTheParseError)
{
    std::string const& message = NestedMessage();
    std::vector<std::size_t> headers;
    FindHeaders(message, 0, message.size(), headers);
    for (std::size_t const header : headers) {
        std::size_t const remaining = message.size() - header - 8;
        for (std::size_t const length : {remaining - 1, remaining, remaining + 1, remaining / 2, std::size_t(0),
                                         std::size_t(0x7FFFFFFF), std::size_t(0x80000000), std::size_t(0xFFFFFFFF)}) {
            std::string changed = message;
            changed.replace(header + 4, 4, U32(static_cast<unsigned int>(length)));
            int const result = ResultOf(changed);
            EXPECT_TRUE(result == 0 || result == -1) << result;
            ASSERT_FALSE(HasFailure()) << "length " << length << " at " << header;
        }
    }
}
