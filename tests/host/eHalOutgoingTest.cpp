#include "eHalOutgoing.hpp"

#include "hostTestSupport.hpp"

#include <gtest/gtest.h>

template <class Name> void ExpectGivesItsTextBack()
{
    EXPECT_EQ("", Name().GetName());
    EXPECT_EQ("DiscoveredTable", Name("DiscoveredTable").GetName());
    EXPECT_TRUE(Name("a") == Name("a"));
    EXPECT_FALSE(Name("a") != Name("a"));
    EXPECT_TRUE(Name("a") != Name("A"));
    EXPECT_FALSE(Name("a") == Name("A"));
}

TEST(EHalOutgoing, NamesGiveTheirTextBack)
{
    ExpectGivesItsTextBack<eHal::EProtocolName>();
    ExpectGivesItsTextBack<eHal::ETableName>();
}

// ---- Messages -------------------------------------------------------------------------------------------------------

/// "message type object type [body]", with the protocol's name in front where there is one.
static std::string Text(eHal::EOutgoingGlobalMessage const& message)
{
    return std::to_string(message.GetMessageType()) + " " + std::to_string(message.GetObjectType()) + " [" +
           message.GetMessage().GetHexString() + "]";
}
static std::string Text(eHal::EOutgoingProtocolMessage const& message)
{
    return message.GetProtocolName().GetName() + " " + std::to_string(message.GetMessageType()) + " " +
           std::to_string(message.GetObjectType()) + " [" + message.GetMessage().GetHexString() + "]";
}
static std::string Text(eHal::EOutgoingMessage const& message)
{
    return std::to_string(message.GetMessageType()) + " [" + message.GetMessage().GetHexString() + "]";
}

static eHal::EOutgoingGlobalMessage GlobalMessage()
{
    eHal::EOutgoingGlobalMessage message;
    message.SetMessageType(eHal::EOutgoingGlobalMessage::PING_REPLY);
    message.SetObjectType(0xFFFFFFFF);
    message.SetMessage(BytesOf("01 02"));
    return message;
}
static eHal::EOutgoingProtocolMessage ProtocolMessage()
{
    eHal::EOutgoingProtocolMessage message;
    message.SetProtocolName(eHal::EProtocolName("ab"));
    message.SetMessageType(5);
    message.SetObjectType(256);
    message.SetMessage(BytesOf("03"));
    return message;
}
static eHal::EOutgoingMessage Envelope()
{
    EArchive archive;
    archive << 7U << std::string("x");
    eHal::EOutgoingMessage message;
    message.SetMessageType(2);
    message.SetMessage(archive);
    return message;
}

/// The message is these bytes; every shorter beginning of them is refused and leaves what was held.
template <class Message> static void ExpectArchived(Message const& message, std::string const& hex)
{
    EXPECT_EQ(BytesOf(hex).GetHexString(), Written(message));
    EXPECT_EQ(Text(message), Text(Read<Message>(hex)));
    for (unsigned int size = 0; size < BytesOf(hex).GetSize(); ++size) {
        SCOPED_TRACE(size);
        Message held = message;
        held.SetMessageType(99);
        std::string const before = Text(held);
        EXPECT_EQ(0U, ReadError(BytesOf(hex).GetHexString().substr(0, 2 * size), held).find("archive offset "));
        EXPECT_EQ(before, Text(held));
    }
}

TEST(EHalOutgoing, MessagesStartEmpty)
{
    EXPECT_EQ("0 0 []", Text(eHal::EOutgoingGlobalMessage()));
    EXPECT_EQ(" 0 0 []", Text(eHal::EOutgoingProtocolMessage()));
    EXPECT_EQ("0 []", Text(eHal::EOutgoingMessage()));
}

TEST(EHalOutgoing, MessagesKeepWhatIsSet)
{
    EXPECT_EQ("18 4294967295 [0102]", Text(GlobalMessage()));
    EXPECT_EQ("ab 5 256 [03]", Text(ProtocolMessage()));
    EXPECT_EQ("2 [070178]", Text(Envelope()));
}

TEST(EHalOutgoing, MessagesAreArchivedByNameNumbersAndBody)
{
    ExpectArchived(GlobalMessage(), "12 fb ff ff ff ff 02 01 02");
    ExpectArchived(ProtocolMessage(), "02 61 62 05 f9 01 00 01 03");
    ExpectArchived(Envelope(), "02 03 07 01 78");
    ExpectArchived(eHal::EOutgoingGlobalMessage(), "00 00 00");
    ExpectArchived(eHal::EOutgoingProtocolMessage(), "00 00 00 00");
    ExpectArchived(eHal::EOutgoingMessage(), "00 00");
}

TEST(EHalOutgoing, AnEnvelopeKeepsACopyOfAllBytesOfItsArchiveWhateverWasRead)
{
    EArchive archive = Reading("07 08");
    unsigned int first = 0;
    archive >> first;
    eHal::EOutgoingMessage message;
    message.SetMessage(archive);
    archive.SetMode(1);
    archive << 9U;
    EXPECT_EQ("0 [0708]", Text(message));
}

TEST(EHalOutgoing, ABodyLongerThanWhatRemainsIsRefused)
{
    eHal::EOutgoingMessage message = Envelope();
    EXPECT_EQ("archive offset 1: wanted a count of at most the 1 bytes that remain, found 4294967295",
              ReadError("02 fb ff ff ff ff 00", message));
    EXPECT_EQ("2 [070178]", Text(message));
}

// ---- Numbers of MAC addresses ---------------------------------------------------------------------------------------

TEST(EHalOutgoing, AMacAddressIsTheLow48BitsOfANumber)
{
    struct {
        char const* mac;
        unsigned long number;
    } const cases[] = {
        {"00:00:00:00:00:00", 0},
        {"00:00:00:00:00:01", 1},
        {"01:00:00:00:00:00", 0x010000000000},
        {"02:00:5e:10:ab:cd", 0x02005E10ABCD},
        {"ff:ff:ff:ff:ff:ff", 0xFFFFFFFFFFFF},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.mac);
        EXPECT_EQ(c.number, eHal::MacToUid64(EMACAddress(c.mac)).GetAsUint64());
        EXPECT_EQ(c.mac, eHal::Uid64ToMac(EUID(c.number)).GetAsString());
        EXPECT_EQ(c.mac, eHal::Uid64ToMac(EUID(c.number | 0xABCD000000000000)).GetAsString()); // the rest is dropped
    }
}
