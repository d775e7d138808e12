#include "eTLVParserMap.hpp"

#include "eInterfaceTLVParser.hpp"
#include "eVLANIPAddressTableItemProperties.hpp"
#include "tlvMessages.hpp"
#include "tlvParserMapTable.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;

namespace {

/// A part of the process that asks too early: before the library in the same program has made anything.
struct Early {
    std::size_t registered;

    Early()
    {
        Protocol::RunTLVParserMapInitializers();
        Protocol::UseOwnTLVIds();
        registered = GetTLVParserMapTable().size();
    }
};
Early const s_early __attribute__((init_priority(101)));

} // namespace

using Log = std::string;

template <char letter> static void Note(TLVReader&, Log& log)
{
    log += letter;
}

/// A map of two ids, which knows the ids that there are now.
static TLVParserMap<Log> NameAndAddMap()
{
    static TLVParserEntry<Log> const entries[] = {{IFD_Name, Note<'n'>}, {ListOp::Add, Note<'a'>}};
    TLVParserMap<Log> map;
    map.Fill(entries);
    return map;
}

/// What the handler of a number notes; "-" without one.
static Log Found(TLVParserMap<Log> const& map, unsigned int number)
{
    TLVParserMap<Log>::Handler const handler = map.Find(number);
    if (!handler) return "-";
    TLVReader reader(nullptr, 0);
    Log log;
    handler(reader, log);
    return log;
}

static std::vector<char const*> const& Known()
{
    return Protocol::TLVBuilder::known_tlv_table();
}

TEST(TLVParserMaps, StandReadyWhateverStartedFirst)
{
    EXPECT_EQ(0U, s_early.registered);
    EXPECT_EQ(9U, GetTLVParserMapTable().size());
    EXPECT_NE(nullptr, VLANTLVParserMap.Find(VLAN_Id.GetIndex()));
    EInterfaceTable table(7);
    EXPECT_EQ(0, ParsedInto(Tlv(ListOp::Add, U32(3) + Tlv(IFD_Name, "eth3")), table));
    ASSERT_TRUE(table.GetInterfaceItem(3));
    EXPECT_EQ("eth3", table.GetInterfaceItem(3)->GetName());
}

TEST(TLVParserMaps, ThatOfASingleVlanReadsAllButTags)
{
    struct {
        char const* what;
        std::string message;
        bool enabled;
        std::vector<unsigned int> tags;
    } const cases[] = {{"nothing", "", false, {1, 2}},
                       {"enabled", Tlv(VLAN_Enabled, U32(256)), true, {1, 2}},
                       {"disabled", Tlv(VLAN_Enabled, U32(1)) + Tlv(VLAN_Enabled, U32(0)), false, {1, 2}},
                       {"tag", Tlv(VLAN_TAG, U32(100)), false, {1, 2}},
                       {"id", Tlv(VLAN_Id, U32(10)), false, {10}},
                       {"id above 16 bits", Tlv(VLAN_Id, U32(0xFFFF000A)), false, {10}},
                       {"priority", Tlv(VLAN_Priority, U32(5)), false, {0xA001}},
                       {"priority above 8 bits", Tlv(VLAN_Priority, U32(0xFFFFFF05)), false, {0xA001}},
                       {"both", Tlv(VLAN_Priority, U32(7)) + Tlv(VLAN_Id, U32(4095)), false, {0xEFFF}}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.what);
        EVLANIPAddressTableItemProperties vlans(2, false);
        vlans.SetVlanTag(1, 0);
        vlans.SetVlanTag(2, 1);
        TLVReader const reader(c.message.data(), static_cast<int>(c.message.size()));
        TLVParser<EVLANIPAddressTableItemProperties>::Parse(reader, VLANTLVParserMap, vlans);
        EXPECT_EQ(c.enabled, vlans.IsEnabled());
        ASSERT_EQ(c.tags.size(), vlans.GetVLANCount());
        for (unsigned int level = 0; level < c.tags.size(); ++level) EXPECT_EQ(c.tags[level], vlans.GetVlanTag(level));
    }
}

TEST(TLVParserMaps, ThatOfTheStatisticsStaysEmpty)
{
    EXPECT_TRUE(TLVProtocolEnumStatMap.empty());
    Protocol::RunTLVParserMapInitializers();
    EXPECT_TRUE(TLVProtocolEnumStatMap.empty());
    TLVProtocolEnumStatMap["b"] = 2; // it is the host's to fill
    TLVProtocolEnumStatMap["a"] = 1;
    EXPECT_STREQ("a", TLVProtocolEnumStatMap.begin()->first);
    EXPECT_EQ(2, TLVProtocolEnumStatMap[std::string("b").c_str()]);
    TLVProtocolEnumStatMap.clear();
}

TEST(TLVParserMaps, AreRegisteredByAnObjectThatStarts)
{
    std::vector<void (*)()> const before = GetTLVParserMapTable();
    auto const initializer = [] {};
    TLVParserMapInitStruct const registration(initializer);
    static_cast<void>(registration);
    std::vector<void (*)()> after = GetTLVParserMapTable();
    GetTLVParserMapTable() = before;
    ASSERT_EQ(before.size() + 1, after.size());
    EXPECT_EQ(static_cast<void (*)()>(initializer), after.back());
    after.pop_back();
    EXPECT_EQ(before, after);
}

TEST(StringComparer, OrdersTextByItsUnsignedBytes)
{
    char const* const ordered[] = {"", "A", "Add", "Added", "Adz", "a", "\x80"};
    for (std::size_t left = 0; left < std::size(ordered); ++left) {
        for (std::size_t right = 0; right < std::size(ordered); ++right) {
            SCOPED_TRACE(std::string(ordered[left]) + " " + ordered[right]);
            EXPECT_EQ(left < right, StringComparer()(ordered[left], std::string(ordered[right]).c_str()));
        }
    }
}

TEST(TLVParserMap, FindsWhatTheSenderCallsSo)
{
    TLVParserMap<Log> const map = NameAndAddMap();
    unsigned int const add = ListOp::Add.GetIndex();
    unsigned int const name = IFD_Name.GetIndex();
    std::string const equalText = "IFD_Name"; // at another address
    std::vector<char const*> elsewhere = Known();
    elsewhere[name] = equalText.c_str();
    std::vector<char const*> swapped = Known();
    std::swap(swapped[add], swapped[name]);
    std::vector<char const*> nameless = Known();
    nameless[add] = nullptr;
    nameless[name] = "";
    struct {
        char const* what;
        std::vector<char const*> names;
        unsigned int number;
        char const* found;
    } const cases[] = {
        {"the same numbers", Known(), add, "a"},
        {"the same numbers", Known(), name, "n"},
        {"a name that the map lacks", Known(), IFD_Type.GetIndex(), "-"},
        {"the reserved number", Known(), 0, "-"},
        {"equal text", elsewhere, name, "n"},
        {"other numbers", swapped, add, "n"},
        {"other numbers", swapped, name, "a"},
        {"a null name", nameless, add, "-"},
        {"an empty name", nameless, name, "-"},
        {"beyond the table", {"", "Add"}, 2, "-"},
        {"within a short table", {"", "Add"}, 1, "a"},
        {"the first number", {"IFD_Name"}, 0, "n"},
        {"a name that nobody knows", {"", "Subtract"}, 1, "-"},
        {"a beginning of a name", {"", "IFD_Nam"}, 1, "-"},
        {"a longer name", {"", "IFD_Names"}, 1, "-"},
        {"another case", {"", "add"}, 1, "-"},
        {"no table", {}, add, "-"},
        {"the greatest number", Known(), UINT_MAX, "-"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.what);
        SenderNames const sender(c.names);
        EXPECT_EQ(c.found, Found(map, c.number)) << c.number;
    }
}

TEST(TLVParserMap, FindsNothingUntilItIsFilled)
{
    TLVParserMap<Log> const map;
    for (unsigned int number = 0; number < Known().size() + 2; ++number) EXPECT_EQ("-", Found(map, number)) << number;
}

TEST(TLVParserMap, FindsByNumbersThatThisHostGaveLater)
{
    TLVParserMap<Log> const map = NameAndAddMap();
    std::vector<char const*> names = Known();
    names.push_back("eTLVParserMapTest.late"); // the host's table may grow, as this copy of it does
    names.push_back("Add");
    SenderNames const sender(names);
    auto const count = static_cast<unsigned int>(names.size());
    EXPECT_EQ("-", Found(map, count - 2));
    EXPECT_EQ("a", Found(map, count - 1));
    EXPECT_EQ("a", Found(map, ListOp::Add.GetIndex()));
    EXPECT_EQ("-", Found(map, count));
}

TEST(TLVParserMap, TakesTheIdsThatTheHostKnowsWhenItIsFilled)
{
    static TLVIds::TLVId const late("eTLVParserMapTest.filled");
    static TLVParserEntry<Log> const first[] = {{ListOp::Add, Note<'a'>}};
    static TLVParserEntry<Log> const second[] = {{late, Note<'l'>}, {ListOp::Add, Note<'A'>}};
    TLVParserMap<Log> map;
    SenderNames const sender(Known());
    map.Fill(first);
    EXPECT_EQ("a", Found(map, ListOp::Add.GetIndex()));
    EXPECT_EQ("-", Found(map, late.GetIndex()));
    map.Fill(second); // what is there is overwritten, the rest stays
    EXPECT_EQ("A", Found(map, ListOp::Add.GetIndex()));
    EXPECT_EQ("l", Found(map, late.GetIndex()));
}

TEST(TLVParserMap, HoldsNoHandlerForAnIdWithoutAName)
{
    TLVIds::TLVId const reserved("");
    TLVParserEntry<Log> const entries[] = {{reserved, Note<'r'>}};
    TLVParserMap<Log> map;
    map.Fill(entries);
    for (auto const& names : {Known(), std::vector<char const*>{nullptr}, std::vector<char const*>{""}}) {
        SenderNames const sender(names);
        EXPECT_EQ("-", Found(map, 0));
        EXPECT_EQ("-", Found(map, UINT_MAX));
    }
}

TEST(TLVParser, NullFuncDoesNothing)
{
    unsigned char const bytes[] = {0, 0, 0, 1};
    TLVReader reader(bytes, 4);
    EInterfaceItem item;
    std::string const before = Written(item);
    TLVParser<EInterfaceItem>::NullFunc(reader, item);
    EXPECT_EQ(before, Written(item));
    EXPECT_EQ(4, reader.remaining);
    EXPECT_EQ(bytes, reader.position);
}

/// Notes the value, and its reader's context when there is one, then reads past what is noted, whatever the loop
/// expects.
static void NoteValue(TLVReader& value, Log& log)
{
    EXPECT_EQ(nullptr, value.buffer);
    log += "[" + std::string(reinterpret_cast<char const*>(value.position), static_cast<std::size_t>(value.remaining));
    if (value.context) log += "+";
    log += "]";
    value.position = nullptr;
    value.remaining = INT_MAX;
}

TEST(TLVParser, GivesEachHandlerItsOwnValueOfOneLevel)
{
    static TLVParserEntry<Log> const entries[] = {{IFD_Name, NoteValue}};
    TLVParserMap<Log> map;
    map.Fill(entries);
    unsigned int const name = IFD_Name.GetIndex();
    struct {
        char const* what;
        std::string message;
        char const* log;
        int error;
    } const cases[] = {
        {"nothing", "", "", 0},
        {"less than a header", std::string(7, '\xFF'), "", 0},
        {"an empty value", Tlv(IFD_Name), "[+]", 0},
        {"one after the other", Tlv(IFD_Name, "ab") + Tlv(IFD_Type, "skipped") + Tlv(IFD_Name, "c"), "[ab+][c+]", 0},
        {"bytes at the end", Tlv(IFD_Name, "ab") + "1234567", "[ab+]", 0},
        {"a header at the end", Tlv(IFD_Name, "ab") + RawTlv(name, 0, ""), "[ab+][+]", 0},
        {"longer than the message", RawTlv(name, 3, "ab"), "[ab+]", -1},
        {"longer and unknown", RawTlv(0, 3, "ab"), "", -1},
        {"2^31 - 1 bytes", RawTlv(name, 0x7FFFFFFF, "ab"), "[ab+]", -1},
        {"2^31 bytes", RawTlv(name, 0x80000000, "ab"), "[ab+]", -1},
        {"2^32 - 1 bytes", RawTlv(name, 0xFFFFFFFF, "ab"), "[ab+]", -1},
        {"2^32 - 8 bytes, which is a step backwards", RawTlv(name, 0xFFFFFFF8, "ab"), "[ab+]", -1},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.what);
        std::vector<char> const bytes(c.message.begin(), c.message.end()); // ends where the message does
        int context = 0;
        TLVReader const reader(bytes.data(), static_cast<int>(bytes.size()), &context);
        Log log;
        int error = 0;
        try {
            TLVParser<Log>::Parse(reader, map, log);
        } catch (int thrown) {
            error = thrown;
        }
        EXPECT_EQ(c.error, error);
        EXPECT_EQ(c.log, log);
        EXPECT_EQ(static_cast<int>(bytes.size()), reader.remaining);
    }
}

TEST(Take, ConsumesWhatIsThereAndNothingElse)
{
    unsigned char const bytes[] = {1, 2, 3, 4, 5};
    struct {
        int count;
        int offset; // of what is taken; -1: nothing is
        int remaining;
    } const steps[] = {{6, -1, 5}, {-1, -1, 5}, {INT_MIN, -1, 5}, {INT_MAX, -1, 5}, {0, 0, 5},
                       {2, 0, 3},  {4, -1, 3},  {3, 2, 0},        {1, -1, 0},       {0, 5, 0}};
    TLVReader reader(bytes, 5);
    for (auto const& step : steps) {
        SCOPED_TRACE(step.count);
        EXPECT_EQ(step.offset < 0 ? nullptr : bytes + step.offset, Take(reader, step.count));
        EXPECT_EQ(step.remaining, reader.remaining);
        EXPECT_EQ(bytes + 5 - step.remaining, reader.position);
    }
}

TEST(ReadU32, IsBigEndianAndRaisesTheParseErrorWhenShort)
{
    unsigned char const bytes[] = {0x81, 0x02, 0x03, 0x04, 5, 6, 7};
    TLVReader reader(bytes, 7);
    EXPECT_EQ(0x81020304U, ReadU32(reader));
    try {
        ReadU32(reader);
        ADD_FAILURE() << "3 bytes were read as 4";
    } catch (int error) {
        EXPECT_EQ(-1, error);
    }
    EXPECT_EQ(3, reader.remaining);
    EXPECT_EQ(bytes + 4, reader.position);
}
