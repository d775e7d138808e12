#include "hostTestSupport.hpp"

#include "eSingleCommand.hpp"

TEST(ESingleCommand, HoldsCopiesOfWhatItWasMadeFrom)
{
    EMultiComponentId id(EComponentId{7, 1});
    id.SetLeaves({5});
    std::vector<unsigned int> subId{4, 2};
    EBlob data = BytesOf("0a0b");
    ESingleCommand const command(7, id, subId, data);
    id.ClearAllIds();
    subId.clear();
    data.SetSize(0, false);
    EXPECT_EQ(7U, command.GetAction());
    EXPECT_TRUE((EComponentId{7, 1} == command.GetId().GetId()));
    EXPECT_EQ(std::vector<unsigned int>{5}, command.GetId().GetLeaves());
    EXPECT_EQ((std::vector<unsigned int>{4, 2}), command.GetEditSubId());
    EXPECT_EQ("0a0b", command.GetData().GetHexString());
}

TEST(ESingleCommand, NeedsNeitherSubIdNorData)
{
    ESingleCommand const command(6, EMultiComponentId());
    EXPECT_EQ(6U, command.GetAction());
    EXPECT_TRUE(command.GetEditSubId().empty());
    EXPECT_EQ(0U, command.GetData().GetSize());
}
