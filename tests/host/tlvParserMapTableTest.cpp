#include "tlvParserMapTable.hpp"

#include "tlvBuilder.hpp"
#include "tlvReader.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// The registry of the process is empty while it lives, and then as before.
class EmptyRegistry {
public:
    EmptyRegistry() { m_saved.swap(GetTLVParserMapTable()); }
    EmptyRegistry(EmptyRegistry const&) = delete;
    EmptyRegistry& operator=(EmptyRegistry const&) = delete;
    ~EmptyRegistry() { m_saved.swap(GetTLVParserMapTable()); }

private:
    std::vector<void (*)()> m_saved;
};

std::string s_ran;

} // namespace

template <char name> static void Note()
{
    s_ran += name;
}

TEST(TLVParserMapTable, RunsEveryInitializerInOrderAsOftenAsAsked)
{
    EmptyRegistry const registry;
    s_ran.clear();
    Protocol::RunTLVParserMapInitializers();
    EXPECT_EQ("", s_ran);
    GetTLVParserMapTable() = {Note<'a'>, Note<'b'>, nullptr, Note<'c'>}; // an empty entry is passed over
    Protocol::RunTLVParserMapInitializers();
    EXPECT_EQ("abc", s_ran);
    GetTLVParserMapTable().push_back(Note<'d'>); // by a library that was loaded meanwhile
    Protocol::RunTLVParserMapInitializers();
    EXPECT_EQ("abcabcd", s_ran);
}

TEST(TLVParserMapTable, RunsWhatAnInitializerRegistersToo)
{
    EmptyRegistry const registry;
    s_ran.clear();
    void (*const loader)() = [] {
        s_ran += 'l';
        if (GetTLVParserMapTable().size() < 100) GetTLVParserMapTable().resize(100, Note<'x'>); // which moves them all
    };
    GetTLVParserMapTable() = {loader};
    GetTLVParserMapTable().shrink_to_fit();
    Protocol::RunTLVParserMapInitializers();
    EXPECT_EQ("l" + std::string(99, 'x'), s_ran);
}

TEST(TLVParserMapTable, TheOwnIdsBecomeThoseOfTheSender)
{
    std::vector<char const*> const saved = TLVReader::external_tlv_table;
    TLVReader::external_tlv_table = {"", "another", nullptr};
    Protocol::UseOwnTLVIds();
    EXPECT_EQ(Protocol::TLVBuilder::known_tlv_table(), TLVReader::external_tlv_table);
    EXPECT_STREQ("IFD_Name", TLVReader::external_tlv_table[TLVIds::InterfaceTable::IFD_Name.GetIndex()]);

    // A copy: ids that are registered later are those of the sender only after another call.
    std::size_t const count = TLVReader::external_tlv_table.size();
    TLVIds::TLVId const late("tlvParserMapTableTest.late");
    EXPECT_EQ(count, TLVReader::external_tlv_table.size());
    Protocol::UseOwnTLVIds();
    ASSERT_LT(late.GetIndex(), TLVReader::external_tlv_table.size());
    EXPECT_STREQ("tlvParserMapTableTest.late", TLVReader::external_tlv_table[late.GetIndex()]);
    TLVReader::external_tlv_table = saved;
}
