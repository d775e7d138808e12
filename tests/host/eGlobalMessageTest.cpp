#include "eGlobalMessage.hpp"

#include "hostTestSupport.hpp"

#include <gtest/gtest.h>

#include <type_traits>

static_assert(std::is_same_v<unsigned int, std::underlying_type_t<EGlobalMessage::eMessageType>>);

TEST(EGlobalMessage, StartsWithoutTypesAndBody)
{
    EGlobalMessage const message;
    EXPECT_EQ(0U, message.GetMessageType());
    EXPECT_EQ(0U, message.GetObjectType());
    EXPECT_EQ(0U, message.GetMessage().GetSize());
}

TEST(EGlobalMessage, KeepsWhatIsSetAndACopyOfTheBody)
{
    EGlobalMessage message;
    EBlob body = BytesOf("01 02");
    message.SetMessageType(0xFFFFFFFF);
    message.SetObjectType(0xFFFFFFFE);
    message.SetMessage(body);
    body = BytesOf("03");
    EGlobalMessage const copy(message);
    message.SetMessageType(EGlobalMessage::ARP_REQUEST);
    message.SetMessage(body);
    EXPECT_EQ(0xFFFFFFFFU, copy.GetMessageType());
    EXPECT_EQ(0xFFFFFFFEU, copy.GetObjectType());
    EXPECT_TRUE(BytesOf("01 02") == copy.GetMessage());
    EXPECT_EQ(17U, message.GetMessageType());
    EXPECT_TRUE(BytesOf("03") == message.GetMessage());
}

TEST(EGlobalMessage, TypesHaveTheNumbersOfTheLayer)
{
    EXPECT_EQ(16, EGlobalMessage::PING_REQUEST);
    EXPECT_EQ(17, EGlobalMessage::ARP_REQUEST);
    EXPECT_EQ(18, EGlobalMessage::ROUTER_SOLICITATION);
    EXPECT_EQ(19, EGlobalMessage::CLEAR_NEIGHBOR_TABLE);
    EXPECT_EQ(29, EGlobalMessage::GET_NEIGHBOR_TABLE);
    EXPECT_EQ(45, EGlobalMessage::NEIGHBOR_SOLICITATION);
}
