#include "textTable.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace ifcoreTool;

TEST(TextTable, ColumnsAreAsWideAsTheirWidestCellAndLinesEndWithoutSpaces)
{
    TextTable table;
    table.AddRow({"ID", "NAME", "MTU"});
    table.AddRow({"10", "\xc3\xa4nd", ""}); // two bytes, one column
    table.AddRow({"2", "loopback", "65536"});
    table.AddRow({"3"});
    std::ostringstream out;
    table.Print(out);
    EXPECT_EQ("ID  NAME      MTU\n"
              "10  \xc3\xa4nd\n"
              "2   loopback  65536\n"
              "3\n",
              out.str());
}

TEST(TextTable, PrintableTextHasNoControlCharacters)
{
    EXPECT_EQ("a?b?c\xc3\xa4", Printable("a\nb\x7f"
                                         "c\xc3\xa4"));
}
