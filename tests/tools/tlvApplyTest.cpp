#include "tlvApply.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

using namespace ifcoreTool;
using namespace TLVIds::InterfaceTable;
namespace ListOp = TLVIds::ListOp;
using toolTest::ScratchFolder;

namespace {

/// A table with the interfaces 1 and 2.
struct Before {
    EInterfaceTable table{7};
    Before()
    {
        for (char const* name : {"one", "two"}) {
            EInterfaceItem item;
            item.SetName(name);
            table.AddInterfaceItem(item);
        }
    }
};

/// Of the message as a file; the message of the error.
std::string Applied(std::string const& message, EInterfaceTable& table, TlvIdTable const& ids = TlvIdTable())
{
    ScratchFolder const folder;
    toolTest::WriteFile(folder / "m", message);
    TlvMessageInput input(folder / "m");
    try {
        ApplyTlvMessage(input, ids, table);
    } catch (ToolError const& error) {
        EXPECT_EQ(ExitCode::badInput, error.GetCode());
        std::string const text = error.what();
        std::string const name = folder / "m: ";
        EXPECT_EQ(0u, text.find(name)) << text;
        return text.substr(name.size());
    }
    return "";
}

std::string Names(EInterfaceTable const& table)
{
    std::string names;
    for (auto position = table.begin(); position != table.end(); ++position)
        names += std::to_string(position->first) + ":" + table.GetItem(position)->GetName() + " ";
    return names;
}

std::string const kMessage =
    Tlv(ListOp::Edit, U32(2) + Tlv(IFD_Name, "zwei") + Tlv(IFD_Type, U32(4))) + Tlv(ListOp::Remove, U32(1)) +
    Tlv(ListOp::Add,
        U32(9) + Tlv(IFD_Name, "nine") + Tlv(IFD_IPv4, Tlv(IP4_Enabled, U32(1)) + Tlv(IP4_MaskLength, U32(8))));

} // namespace

TEST(TlvApply, OneOperationAfterTheOtherIsWhatTheLibraryMakesOfTheWholeLevel)
{
    for (std::size_t size = 0; size <= kMessage.size(); ++size) {
        SCOPED_TRACE(size);
        std::string const message = kMessage.substr(0, size);
        Before whole;
        Before single;
        int const error = ParsedInto(message, whole.table);
        EXPECT_EQ(error != 0, !Applied(message, single.table).empty());
        EXPECT_EQ(Written(whole.table), Written(single.table));
    }
}

TEST(TlvApply, AppliesAddEditRemoveAndRemoveAll)
{
    Before in;
    EXPECT_EQ("", Applied(kMessage, in.table));
    EXPECT_EQ("2:zwei 9:nine ", Names(in.table));
    EXPECT_EQ(8u, in.table.GetInterfaceItem(9)->GetIPv4AddressItem().GetMaskLength());
    EXPECT_EQ("", Applied(Tlv(ListOp::RemoveAll) + RawTlv(4711, 1, "?"), in.table));
    EXPECT_EQ("", Names(in.table));
}

TEST(TlvApply, AnErrorNamesItsPlaceAndLeavesWhatComesBeforeIt)
{
    Before in;
    EXPECT_EQ("Edit, byte " + std::to_string(kMessage.size() + 8) + ": 4 bytes wanted, 0 there",
              Applied(kMessage + Tlv(ListOp::Edit) + Tlv(ListOp::RemoveAll), in.table));
    EXPECT_EQ("2:zwei 9:nine ", Names(in.table));
}

TEST(TlvApply, IdsAreThoseOfTheSender)
{
    ScratchFolder const folder;
    toolTest::WriteFile(folder / "ids", R"({"ids": [{"number": 500, "name": "Edit"}, {"number": 2, "name": "IFD_Name"},
                                                    {"number": 3, "name": "IFD_GreDestIp"}]})");
    TlvIdTable const ids(folder / "ids");
    std::vector<char const*> const before = TLVReader::external_tlv_table;
    Before in;
    std::string const unknown = RawTlv(1, 0, "");
    EXPECT_EQ("", Applied(RawTlv(500, 16, U32(2) + RawTlv(2, 4, "zwei")) + unknown, in.table, ids));
    EXPECT_EQ("1:one 2:zwei ", Names(in.table));
    EXPECT_EQ("Edit > IFD_GreDestIp, byte 20: 4 or 16 bytes wanted, 2 there",
              Applied(RawTlv(500, 14, U32(2) + RawTlv(3, 2, "xx")), in.table, ids));
    EXPECT_EQ(before, TLVReader::external_tlv_table);
}
