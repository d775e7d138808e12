#include "eInterfaceTLVParser.hpp"

#include "interfaceSamples.hpp"
#include "recordedInterface.hpp"
#include "tlvMessages.hpp"

#include <boost/make_shared.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace TLVIds::InterfaceTable;
using namespace TLVIds::ListOp;
using testing::ElementsAre;
using testing::IsEmpty;

static std::string Zeros(unsigned int count)
{
    return std::string(count, '\0');
}

// ---- What both lists have in common ---------------------------------------------------------------------------------

/// The interfaces of a table, or the IPv6 addresses of its interface 1. An item is told apart by one of its numbers.
struct ListCase {
    char const* name;
    std::string (*level)(std::string const& operations); // in a message to the table
    TLVIds::TLVId const& number;
    void (*add)(EInterfaceTable& table, unsigned int id, unsigned int number);
    std::string (*shown)(EInterfaceTable const& table); // "id:number ...", "-" for the default number
    unsigned int (*addNext)(EInterfaceTable& table);
};

static std::string TextOfItem(unsigned int id, unsigned int number, unsigned int fresh)
{
    return " " + std::to_string(id) + ":" + (number == fresh ? "-" : std::to_string(number));
}

static ListCase const kLists[] = {
    {"interfaces", [](std::string const& operations) { return operations; }, IFD_Type,
     [](EInterfaceTable& table, unsigned int id, unsigned int number) {
         table.AddItem(id);
         table.GetInterfaceItem(id)->SetType(static_cast<EInterfaceTypeEnum>(number));
     },
     [](EInterfaceTable const& table) {
         std::string text;
         for (auto position = table.begin(); position != table.end(); ++position)
             text += TextOfItem(position->first, static_cast<unsigned int>(table.GetItem(position)->GetType()), 0);
         return text;
     },
     [](EInterfaceTable& table) { return table.AddInterfaceItem(EInterfaceItem()); }},
    {"addresses", [](std::string const& operations) { return Tlv(Edit, U32(1) + Tlv(IFD_IPv6List, operations)); },
     IP6_MaskLength,
     [](EInterfaceTable& table, unsigned int id, unsigned int number) {
         EIPv6AddressItemList& list = table.GetInterfaceItem(1)->GetIPv6AddressItemList();
         list.AddItem(id);
         list.GetItem(id)->SetMaskLength(number);
     },
     [](EInterfaceTable const& table) {
         std::string text;
         EIPv6AddressItemList const& list = table.GetInterfaceItem(1)->GetIPv6AddressItemList();
         for (auto position = list.begin(); position != list.end(); ++position)
             text += TextOfItem(position->first, list.GetItem(position)->GetMaskLength(), 64);
         return text;
     },
     [](EInterfaceTable& table) { return table.GetInterfaceItem(1)->AddIPv6AddressItem(EIPv6AddressItem()); }},
};

/// A list of the items 1:10 2:20 3:30, of which nothing has been heard yet.
struct FilledList : RecordedInterface {
    explicit FilledList(ListCase const& list)
    {
        for (unsigned int id : {1U, 2U, 3U}) list.add(table, id, 10 * id);
        recorder = boost::make_shared<Recorder>();
        table.SetHooks("recorder", recorder);
    }
};

/// Nothing is told of items that come or go.
static void ExpectSettersOnly(Recorder const& recorder)
{
    for (std::string const& operation : recorder.Operations()) {
        EXPECT_NE("AddingInterfaceItem", operation);
        EXPECT_NE("RemovingInterfaceItem", operation);
        EXPECT_NE("AddingIPv6AddressItem", operation);
        EXPECT_NE("RemovingIPv6AddressItem", operation);
        EXPECT_NE("SettingInterfaceTable", operation);
        EXPECT_NE("SettingIPv6AddressItem", operation);
    }
}

TEST(EInterfaceTLVParserList, TheOperationsChangeTheListInTheirOrder)
{
    for (ListCase const& list : kLists) {
        auto const number = [&list](unsigned int value) { return Tlv(list.number, U32(value)); };
        struct {
            std::string operations;
            char const* after;
            unsigned int next; // id that the list gives by itself
        } const cases[] = {
            {"", " 1:10 2:20 3:30", 4},
            {Tlv(Add, U32(7) + number(5)), " 1:10 2:20 3:30 7:5", 8},
            {Tlv(Add, U32(7)), " 1:10 2:20 3:30 7:-", 8}, // 4 bytes: nothing is set
            {Tlv(Add, U32(2) + number(5)), " 1:10 2:5 3:30", 4},
            {Tlv(Add, U32(2)), " 1:10 2:- 3:30", 4},
            {Tlv(Edit, U32(2) + number(5)), " 1:10 2:5 3:30", 4},
            {Tlv(Edit, U32(2)), " 1:10 2:20 3:30", 4},
            {Tlv(Edit, U32(7) + number(5)), " 1:10 2:20 3:30 7:5", 8},
            {Tlv(Edit, U32(7)), " 1:10 2:20 3:30 7:-", 8},
            {Tlv(Remove, U32(2)), " 1:10 3:30", 4},
            {Tlv(Remove, U32(3)), " 1:10 2:20", 4}, // a freed id is not handed out again
            {Tlv(Remove, U32(9)), " 1:10 2:20 3:30", 4},
            {Tlv(Remove, U32(0)), " 1:10 2:20 3:30", 4},
            {Tlv(Remove, U32(0xFFFFFFFF)), " 1:10 2:20 3:30", 4},
            {Tlv(Remove, U32(2) + "x"), " 1:10 3:30", 4},
            {Tlv(Remove, U32(2) + U32(3)), " 1:10 3:30", 4},
            {Tlv(Remove, U32(2) + RawTlv(list.number.GetIndex(), 99, "")), " 1:10 3:30", 4}, // is not read
            {Tlv(Remove, U32(2)) + Tlv(Remove, U32(2)) + Tlv(Remove, U32(3)), " 1:10", 4},
            {Tlv(RemoveAll), "", 4},
            {Tlv(RemoveAll, Zeros(3)), "", 4},
            {Tlv(RemoveAll, RawTlv(0, 99, "")), "", 4},
            {Tlv(RemoveAll) + Tlv(RemoveAll), "", 4},
            {Tlv(RemoveAll) + Tlv(Add, U32(2) + number(5)), " 2:5", 4},
            {Tlv(RemoveAll) + Tlv(Edit, U32(2) + number(5)), " 2:5", 4},
            {Tlv(RemoveAll) + Tlv(Edit, U32(2)), " 2:-", 4},
            {Tlv(Add, U32(7) + number(5)) + Tlv(RemoveAll), "", 8},
            {Tlv(Add, U32(7) + number(5)) + Tlv(Remove, U32(7)), " 1:10 2:20 3:30", 8},
            {Tlv(Remove, U32(2)) + Tlv(Add, U32(2)), " 1:10 2:- 3:30", 4},
            {Tlv(Remove, U32(2)) + Tlv(Edit, U32(2)), " 1:10 2:- 3:30", 4},
            {Tlv(Add, U32(7) + number(5)) + Tlv(Add, U32(7)), " 1:10 2:20 3:30 7:-", 8},
            {Tlv(Add, U32(7) + number(5)) + Tlv(Edit, U32(7)), " 1:10 2:20 3:30 7:5", 8},
            {Tlv(Edit, U32(7) + number(5)) + Tlv(Add, U32(7) + number(6)), " 1:10 2:20 3:30 7:6", 8},
            {Tlv(Add, U32(9)) + Tlv(Add, U32(5)), " 1:10 2:20 3:30 5:- 9:-", 10}, // kept in the order of the ids
            {Tlv(Add, U32(0) + number(5)), " 0:5 1:10 2:20 3:30", 4},
            {Tlv(Edit, U32(0) + number(5)) + Tlv(Edit, U32(0)), " 0:5 1:10 2:20 3:30", 4},
            {Tlv(Add, U32(0) + number(5)) + Tlv(Add, U32(0)), " 0:- 1:10 2:20 3:30", 4},
            {Tlv(Add, U32(0)) + Tlv(Remove, U32(0)), " 1:10 2:20 3:30", 4},
            {Tlv(Add, U32(0xFFFFFFFF) + number(5)), " 1:10 2:20 3:30 4294967295:5", 0}, // the ids are used up
            {Tlv(Edit, U32(0xFFFFFFFF) + number(5)), " 1:10 2:20 3:30 4294967295:5", 0},
            {Tlv(Edit, U32(0xFFFFFFFF)) + Tlv(Remove, U32(0xFFFFFFFF)), " 1:10 2:20 3:30", 0},
            {Tlv(Edit, U32(0x80000000) + number(5)), " 1:10 2:20 3:30 2147483648:5", 0x80000001},
            // Other ids are skipped.
            {number(5) + Tlv(IFD_Name, "x") + Tlv(IFD_IPv6List, Tlv(RemoveAll)), " 1:10 2:20 3:30", 4},
            {RawTlv(0, 4, U32(1)) + Tlv(Remove, U32(1)) + RawTlv(0xFFFFFFFF, 0, ""), " 2:20 3:30", 4},
            {Tlv(Edit, U32(2) + Tlv(RemoveAll) + Tlv(Remove, U32(2))), " 1:10 2:20 3:30", 4},
        };
        for (auto const& c : cases) {
            SCOPED_TRACE(testing::Message() << list.name << " " << &c - cases << c.after);
            FilledList in(list);
            EXPECT_EQ(0, ParsedInto(list.level(c.operations), in.table));
            EXPECT_EQ(c.after, list.shown(in.table));
            ExpectSettersOnly(*in.recorder);
            ExpectConsistent(in.table);
            EXPECT_EQ(c.next, list.addNext(in.table));
        }
    }
}

TEST(EInterfaceTLVParserList, AnOperationWithoutAWholeIdIsTheParseErrorAndChangesNothing)
{
    for (ListCase const& list : kLists)
        for (TLVIds::TLVId const* operation : {&Add, &Edit, &Remove})
            for (unsigned int length = 0; length < 4; ++length) {
                SCOPED_TRACE(testing::Message() << list.name << " " << operation->GetName() << " " << length);
                FilledList in(list);
                // What stands before it is done, what stands behind it is not.
                std::string const operations =
                    Tlv(Remove, U32(3)) + Tlv(*operation, U32(1).substr(4 - length)) + Tlv(RemoveAll);
                EXPECT_EQ(-1, ParsedInto(list.level(operations), in.table));
                EXPECT_EQ(" 1:10 2:20", list.shown(in.table));
                EXPECT_THAT(Told(*in.recorder), IsEmpty());
                ExpectConsistent(in.table);
            }
}

TEST(EInterfaceTLVParserList, AnErrorInsideAnItemLeavesTheItemAsFarAsItWasFilled)
{
    for (ListCase const& list : kLists) {
        std::string const number = Tlv(list.number, U32(5));
        struct {
            std::string operation;
            char const* after;
        } const cases[] = {
            {Tlv(Add, U32(7) + Tlv(list.number, Zeros(3))), " 1:10 2:20 3:30 7:-"},
            {Tlv(Add, U32(7) + number + Tlv(list.number, Zeros(3))), " 1:10 2:20 3:30 7:5"},
            {Tlv(Add, U32(7) + number + RawTlv(0, 1, "")), " 1:10 2:20 3:30 7:5"},
            {Tlv(Add, U32(2) + Tlv(list.number, Zeros(3))), " 1:10 2:- 3:30"},
            {Tlv(Add, U32(2) + number + RawTlv(0, 1, "")), " 1:10 2:5 3:30"},
            {Tlv(Edit, U32(7) + Tlv(list.number, Zeros(3))), " 1:10 2:20 3:30 7:-"},
            {Tlv(Edit, U32(2) + Tlv(list.number, Zeros(3))), " 1:10 2:20 3:30"},
            {Tlv(Edit, U32(2) + number + RawTlv(0, 1, "")), " 1:10 2:5 3:30"},
            // An operation longer than its level is done on what is there.
            {RawTlv(Add.GetIndex(), 5, U32(7)), " 1:10 2:20 3:30 7:-"},
            {RawTlv(Add.GetIndex(), 17, U32(2) + number), " 1:10 2:5 3:30"},
            {RawTlv(Edit.GetIndex(), 17, U32(2) + number), " 1:10 2:5 3:30"},
            {RawTlv(Remove.GetIndex(), 5, U32(2)), " 1:10 3:30"},
            {RawTlv(RemoveAll.GetIndex(), 1, ""), ""},
        };
        for (auto const& c : cases) {
            SCOPED_TRACE(testing::Message() << list.name << " " << &c - cases << c.after);
            FilledList in(list);
            EXPECT_EQ(-1, ParsedInto(list.level(c.operation), in.table));
            EXPECT_EQ(c.after, list.shown(in.table));
            ExpectSettersOnly(*in.recorder);
            ExpectConsistent(in.table);
        }
    }
}

TEST(EInterfaceTLVParserList, AThousandItemsAreAddedEditedAndRemoved)
{
    for (ListCase const& list : kLists) {
        SCOPED_TRACE(list.name);
        std::string operations = Tlv(RemoveAll);
        std::string after;
        for (unsigned int id = 1000; id > 0; --id) operations += Tlv(Add, U32(id));
        for (unsigned int id = 1; id <= 1000; ++id) {
            operations += Tlv(Edit, U32(id) + Tlv(list.number, U32(id % 60 + 1)));
            if (id % 7 != 0) after += " " + std::to_string(id) + ":" + std::to_string(id % 60 + 1);
        }
        for (unsigned int id = 7; id <= 1000; id += 7) operations += Tlv(Remove, U32(id));
        RecordedInterface in;
        // Interface 1, of which the addresses are, is replaced when it is a list of interfaces.
        EXPECT_EQ(0, ParsedInto(list.level(operations), in.table));
        EXPECT_EQ(after, list.shown(in.table));
        ExpectConsistent(in.table);
    }
}

// ---- Interfaces -----------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParserList, AddEmptiesAnInterfaceThatIsThereWhichIsAnnouncedAsEmptyIs)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.interface.SetLocalId(1);
    in.recorder->Clear();
    std::string const before = Contents(in.interface);
    std::string atFirst;
    std::string replacement;
    in.recorder->whenCalled = [&] {
        if (in.recorder->calls.size() > 1) return;
        atFirst = Contents(in.interface);
        replacement = Contents(in.recorder->Argument<EInterfaceItem>(0));
    };
    EXPECT_EQ(0, ParsedInto(Tlv(Add, U32(1) + Tlv(IFD_Name, "new")), in.table));
    EXPECT_THAT(in.recorder->Operations(), ElementsAre("SettingInterfaceItem", "SettingInterfaceName"));
    EXPECT_EQ(&in.interface, in.recorder->calls[0].record);
    EXPECT_EQ(before, atFirst); // announced first

    EInterfaceItem expected;
    expected.SetLocalId(1); // its key and its parent stay
    EXPECT_EQ(Contents(expected), replacement);
    expected.SetName("new");
    EXPECT_EQ(Written(expected), Written(in.interface));
    EXPECT_EQ(&in.interface, in.table.GetInterfaceItem(1));
    EXPECT_EQ(0, CountOnDemand(in.interface));
    ExpectConsistent(in.table);
}

TEST(EInterfaceTLVParserList, EditKeepsWhatTheMessageLeavesOut)
{
    RecordedInterface in;
    FillSample(in.interface);
    in.interface.SetLocalId(1);
    EInterfaceItem expected(in.interface);
    in.recorder->Clear();
    EXPECT_EQ(0, ParsedInto(Tlv(Edit, U32(1) + Tlv(IFD_Name, "new")), in.table));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceName(new)"));
    expected.SetName("new");
    EXPECT_EQ(Written(expected), Written(in.interface));
    EXPECT_EQ(&in.interface, in.table.GetInterfaceItem(1));
    ExpectConsistent(in.table);
}

TEST(EInterfaceTLVParserList, ANewInterfaceStartsFromTheDefaultsAndOnlyItsSettersAreHeard)
{
    for (TLVIds::TLVId const* operation : {&Add, &Edit}) {
        RecordedInterface in;
        EXPECT_EQ(0, ParsedInto(Tlv(*operation, U32(6) + Tlv(IFD_Name, "new") + Tlv(IFD_Enabled, U32(1))), in.table));
        EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingInterfaceName(new)", "EnablingInterfaceItem()"));
        EInterfaceItem expected;
        expected.SetLocalId(6);
        expected.SetName("new");
        expected.SetEnabled(true);
        ASSERT_NE(nullptr, in.table.GetInterfaceItem(6));
        EXPECT_EQ(Written(expected), Written(*in.table.GetInterfaceItem(6)));
        EXPECT_EQ(in.table.GetInterfaceItem(6), in.recorder->calls[0].record);
        EComponentId id;
        in.table.GetInterfaceItem(6)->GetID(id);
        EXPECT_EQ((EComponentId{7, 1, 6}), id);
    }
}

TEST(EInterfaceTLVParserList, RemoveAllEmptiesTheListAndNotTheTable)
{
    RecordedInterface in;
    in.table.SetFCoERetryCount(17);
    in.table.SetFIPVersion(0);
    in.table.SetVlanIdEnabled(true);
    in.table.SetAutoArpEnabled(true);
    EXPECT_EQ(2U, in.table.AddInterfaceItem(EInterfaceItem()));
    EXPECT_TRUE(in.table.RemoveInterfaceItem(2));
    EInterfaceTable expected(in.table);
    expected.RemoveInterfaceItem(1);
    in.recorder->Clear();
    EXPECT_EQ(0, ParsedInto(Tlv(RemoveAll), in.table));
    EXPECT_THAT(Told(*in.recorder), IsEmpty());
    EXPECT_EQ(0U, in.table.GetCount());
    EXPECT_EQ(Written(expected), Written(in.table));
    EXPECT_EQ(7U, in.table.GetPortId());
    EXPECT_EQ("recorder", in.table.GetHooksName());
    EXPECT_EQ(in.recorder, in.table.GetHooksPtr());
    EXPECT_EQ(3U, in.table.AddInterfaceItem(EInterfaceItem())); // an id that was never used
    EXPECT_THAT(in.recorder->Operations(), ElementsAre("AddingInterfaceItem"));
}

TEST(EInterfaceTLVParserList, AddAndEditAreAlsoCalledWithTheValueOfOneOperation)
{
    struct {
        void (*parse)(TLVReader&, EInterfaceItemList&);
        unsigned int type; // of interface 1 afterwards
    } const cases[] = {{Protocol::ParseInterfaceListAddTLV, 0}, {Protocol::ParseInterfaceListEditTLV, 4}};
    for (auto const& c : cases)
        for (unsigned int const id : {1U, 8U}) {
            SCOPED_TRACE(testing::Message() << c.type << " " << id);
            RecordedInterface in;
            in.interface.SetType(INTERFACE_TYPE_GRE);
            std::string const value = U32(id) + Tlv(IFD_Name, "new") + "rest";
            std::vector<char> const bytes(value.begin(), value.end());
            TLVReader reader(bytes.data(), static_cast<int>(bytes.size()), &in);
            c.parse(reader, in.table.GetInterfaceItemList());
            EXPECT_EQ(static_cast<int>(bytes.size()) - 4, reader.remaining); // behind the id
            EXPECT_EQ(static_cast<void const*>(bytes.data() + 4), reader.position);
            EXPECT_EQ(&in, reader.context);
            ASSERT_NE(nullptr, in.table.GetInterfaceItem(id));
            EXPECT_EQ("new", in.table.GetInterfaceItem(id)->GetName());
            EXPECT_EQ(id == 1 ? c.type : 4U, static_cast<unsigned int>(in.interface.GetType()));
            ExpectConsistent(in.table);

            for (int length = 0; length < 4; ++length) {
                TLVReader shorter(bytes.data(), length);
                EXPECT_THROW(c.parse(shorter, in.table.GetInterfaceItemList()), int);
                EXPECT_EQ(length, shorter.remaining);
            }
        }
}

namespace {

// Interfaces that are not like those of the default factory.
class NamedInterfaces : public EFactory<EInterfaceItem> {
public:
    EInterfaceItem* CreateItem() const override
    {
        auto* const item = new EInterfaceItem;
        item->SetName("from the factory");
        return item;
    }
    EInterfaceItem* CreateItem(EInterfaceItem const& item) const override { return new EInterfaceItem(item); }
    EFactory* Clone() const override { return new NamedInterfaces; }
};

class NoInterfaces : public EFactory<EInterfaceItem> {
public:
    EInterfaceItem* CreateItem() const override { return nullptr; }
    EInterfaceItem* CreateItem(EInterfaceItem const& item) const override { return new EInterfaceItem(item); }
    EFactory* Clone() const override { return new NoInterfaces; }
};

} // namespace

// std::auto_ptr is part of the container's interface.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
static std::auto_ptr<EFactory<EInterfaceItem>> Owned(EFactory<EInterfaceItem>* factory)
{
    return std::auto_ptr<EFactory<EInterfaceItem>>(factory);
}
#pragma GCC diagnostic pop

TEST(EInterfaceTLVParserList, NewInterfacesComeFromTheFactoryOfTheList)
{
    for (auto parse : {Protocol::ParseInterfaceListAddTLV, Protocol::ParseInterfaceListEditTLV}) {
        std::string const value = U32(5) + Tlv(IFD_Type, U32(4));
        EInterfaceTable table(7);
        EInterfaceItemList list(&table, Owned(new NamedInterfaces));
        TLVReader reader(value.data(), static_cast<int>(value.size()));
        parse(reader, list);
        ASSERT_NE(nullptr, list.GetItem(5));
        EXPECT_EQ("from the factory", list.GetItem(5)->GetName());
        EXPECT_EQ(INTERFACE_TYPE_GRE, list.GetItem(5)->GetType());
        EXPECT_EQ(&table, list.GetItem(5)->GetParent());

        EInterfaceItemList none(&table, Owned(new NoInterfaces));
        TLVReader again(value.data(), static_cast<int>(value.size()));
        none.AddItem(0, EInterfaceItem());   // not taken for the one that was not made
        EXPECT_NO_THROW(parse(again, none)); // there is nothing to read into
        EXPECT_EQ(1U, none.GetCount());
        EXPECT_EQ(INTERFACE_TYPE_ETHERNET, none.GetItem(0)->GetType());
    }
}

// ---- IPv6 addresses -------------------------------------------------------------------------------------------------

static std::string ToInterface1(std::string const& operations)
{
    return Tlv(Edit, U32(1) + Tlv(IFD_IPv6List, operations));
}

TEST(EInterfaceTLVParserList, AddOfAnAddressThatIsThereReplacesItInSilence)
{
    RecordedInterface in;
    in.interface.GetIPv6AddressItemList().AddItem(3);
    in.interface.GetIPv6AddressItem(3)->SetAddress(EIPAddress("2001:db8::3"));
    in.interface.GetIPv6AddressItem(3)->SetMaskLength(48);
    in.recorder->Clear();
    // On purpose unlike an interface, which is emptied and says so.
    EXPECT_EQ(0, ParsedInto(ToInterface1(Tlv(Add, U32(3))), in.table));
    EXPECT_THAT(Told(*in.recorder), IsEmpty());
    EIPv6AddressItem expected;
    expected.SetLocalId(3);
    ASSERT_NE(nullptr, in.interface.GetIPv6AddressItem(3));
    EXPECT_FALSE(*in.interface.GetIPv6AddressItem(3) != expected);
    ExpectConsistent(in.table);
}

TEST(EInterfaceTLVParserList, EditOfAnAddressKeepsWhatTheMessageLeavesOut)
{
    RecordedInterface in;
    in.interface.GetIPv6AddressItemList().AddItem(3);
    EIPv6AddressItem& item = *in.interface.GetIPv6AddressItem(3);
    item.SetAddress(EIPAddress("2001:db8::3"));
    in.recorder->Clear();
    EXPECT_EQ(0, ParsedInto(ToInterface1(Tlv(Edit, U32(3) + Tlv(IP6_MaskLength, U32(129)))), in.table));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingIPv6MaskLength(128)"));
    EXPECT_EQ(&item, in.recorder->calls[0].record);
    EXPECT_EQ(&item, in.interface.GetIPv6AddressItem(3));
    EXPECT_EQ("2001:db8::3", TextOf(item.GetAddress()));
    EXPECT_EQ(128U, item.GetMaskLength());
}

TEST(EInterfaceTLVParserList, ANewAddressIsThereEvenWhenItsAddressIsTooShortToBeRead)
{
    RecordedInterface in;
    std::string const item =
        U32(3) + Tlv(IP6_IPAddress, Zeros(15)) + Tlv(IP4_IPAddress, Zeros(4)) + Tlv(IP6_MaskLength, U32(9));
    EXPECT_EQ(0, ParsedInto(ToInterface1(Tlv(Add, item)), in.table));
    EXPECT_THAT(Told(*in.recorder), ElementsAre("SettingIPv6MaskLength(9)"));
    EXPECT_EQ("::", TextOf(in.interface.GetIPv6AddressItem(3)->GetAddress()));
}

// ---- A whole table --------------------------------------------------------------------------------------------------

TEST(EInterfaceTLVParserList, ReadsAWholeTable)
{
    RecordedInterface in;
    in.table.AddItem(4);
    in.recorder->Clear();
    EXPECT_EQ(0, ParsedInto(Golden("TLV.wholeTable.hex"), in.table));
    std::vector<std::string> contents;
    for (auto position = in.table.begin(); position != in.table.end(); ++position)
        contents.push_back(Contents(*in.table.GetItem(position)));
    EXPECT_THAT(
        contents,
        ElementsAre(
            "off 2 \"gre2\" type 0 euid 00:00:00:00:00:00:00:00; ethernet -; atm -; ppp -; "
            "gre  2001:db8::9 false false false 0 0; routed -; dhcp off; ipv4 off 0.0.0.0/24 via 0.0.0.0; ipv6",
            "on 5 \"eth5\" type 4 euid 00:00:00:00:00:00:00:00; ethernet 02:00:5e:10:00:05 on[40970 100] 1500; "
            "atm 15 0 4095 32769; ppp -; gre 7.1.2 192.0.2.9 true false true 3405643777 256; routed 7.1.300; dhcp on; "
            "ipv4 on 192.0.2.1/28 via 192.0.2.254; ipv6 3:2001:db8::3/56 9:fe80::9/64",
            "off 9 \"\" type 6 euid 00:00:00:00:00:00:00:00; ethernet -; atm -; ppp -; gre -; routed -; dhcp off; "
            "ipv4 off 0.0.0.0/24 via 0.0.0.0; ipv6"));
    EXPECT_EQ(28U, in.recorder->calls.size()); // 25 of interface 5, 2 of 2, 1 of 9
    ExpectSettersOnly(*in.recorder);
    ExpectConsistent(in.table);
    EXPECT_EQ(10U, in.table.AddInterfaceItem(EInterfaceItem()));
}
