#include "eHalMessages.hpp"

#include "discoveredRecorder.hpp"
#include "golden.hpp"

#include <boost/make_shared.hpp>

#include <climits>
#include <functional>

static EIPAddress const kFirst("10.1.2.3");
static EIPAddress const kSecond("2001:db8::1");
static std::string const kNumberBytes = "FB 01 02 03 04 "; // 0x01020304
static std::string const kFirstBytes = "11 0A 01 02 03 ";
static std::string const kSecondBytes = "12 20 01 0D B8 00 00 00 00 00 00 00 00 00 00 00 01 ";

template <class Message>
static Message MessageOf(unsigned int messageType, unsigned int objectType, std::string const& hex)
{
    Message message;
    message.SetMessageType(messageType);
    message.SetObjectType(objectType);
    message.SetMessage(BlobOf(Bytes(hex)));
    return message;
}
static EGlobalMessage Global(unsigned int messageType, unsigned int objectType, std::string const& hex)
{
    return MessageOf<EGlobalMessage>(messageType, objectType, hex);
}
static eHal::EOutgoingGlobalMessage Outgoing(unsigned int messageType, unsigned int objectType, std::string const& hex)
{
    return MessageOf<eHal::EOutgoingGlobalMessage>(messageType, objectType, hex);
}

/// What an unwrap function puts into its parameters.
struct Unwrapped {
    unsigned int number = 99;
    EIPAddress first{"9.9.9.1"};
    EIPAddress second{"9.9.9.2"};

    std::string Text() const { return std::to_string(number) + " " + first.GetAsString() + " " + second.GetAsString(); }
};
static char const kUntouched[] = "99 9.9.9.1 9.9.9.2";

static bool UnwrapPing(EGlobalMessage const& message, Unwrapped& out)
{
    return eHal::UnwrapPingRequestMessage(message, out.number, out.first, out.second);
}
static bool UnwrapArp(EGlobalMessage const& message, Unwrapped& out)
{
    return eHal::UnwrapArpRequestMessage(message, out.number, out.first);
}
static bool UnwrapReply(eHal::EOutgoingGlobalMessage const& message, Unwrapped& out)
{
    return eHal::UnwrapPingReplyMessage(message, out.first, out.second, out.number);
}

// ---- Creating -------------------------------------------------------------------------------------------------------

TEST(EHalMessages, EachIsMadeWithItsTypesAndItsBodyInPlaceOfTheOld)
{
    std::string const old = "AA BB";
    struct {
        char const* name;
        std::function<void(EGlobalMessage&)> create;
        unsigned int messageType;
        std::string body;
    } const cases[] = {
        {"ping", [](auto& m) { eHal::CreatePingRequestMessage(m, 0x01020304, kFirst, kSecond); }, 16,
         kNumberBytes + kFirstBytes + kSecondBytes},
        {"ARP", [](auto& m) { eHal::CreateArpRequestMessage(m, 0x01020304, kSecond); }, 17,
         kNumberBytes + kSecondBytes},
        {"router solicitation", [](auto& m) { eHal::CreateRtrSolicitationMessage(m, 0xFFFFFFFF); }, 18,
         "FB FF FF FF FF"},
        {"clear neighbours", [](auto& m) { eHal::CreateClearNbrTableMessage(m); }, 19, old}, // on purpose left alone
        {"get neighbours", [](auto& m) { eHal::CreateGetNbrTableMessage(m); }, 29, old},     // the same
        {"neighbour solicitation", [](auto& m) { eHal::CreateNeighborSolicitationMessage(m, 5, kFirst); }, 45,
         "05" + kFirstBytes},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EGlobalMessage message = Global(7, 8, old);
        c.create(message);
        EXPECT_EQ(c.messageType, message.GetMessageType());
        EXPECT_EQ(0U, message.GetObjectType());
        EXPECT_EQ(Bytes(c.body), BytesOf(message.GetMessage()));
    }
    EGlobalMessage fresh;
    eHal::CreateClearNbrTableMessage(fresh);
    EXPECT_EQ(0U, fresh.GetMessage().GetSize());
}

TEST(EHalMessages, ThePingReplyHasItsNumberLast)
{
    eHal::EOutgoingGlobalMessage message = Outgoing(7, 8, "AA BB");
    eHal::CreatePingReplyMessage(message, kFirst, kSecond, 0x01020304);
    EXPECT_EQ(18U, message.GetMessageType());
    EXPECT_EQ(1U, message.GetObjectType());
    EXPECT_EQ(Bytes(kFirstBytes + kSecondBytes + kNumberBytes), BytesOf(message.GetMessage()));
}

// ---- Unwrapping -----------------------------------------------------------------------------------------------------

TEST(EHalMessages, APingRequestIsReadFromAMessageOfAnyType)
{
    struct {
        unsigned int messageType;
        unsigned int objectType;
    } const types[] = {{16, 0}, {16, 1}, {0, 0}, {17, 0}, {18, 1}, {0xFFFFFFFF, 0xFFFFFFFF}};
    for (auto const& c : types) {
        Unwrapped out;
        EXPECT_TRUE(UnwrapPing(Global(c.messageType, c.objectType, kNumberBytes + kFirstBytes + kSecondBytes), out));
        EXPECT_EQ("16909060 10.1.2.3 2001:db8::1", out.Text());
    }
}

TEST(EHalMessages, AnArpRequestIsOneOfMessageType17AndObjectType0)
{
    struct {
        unsigned int messageType;
        unsigned int objectType;
        bool done;
    } const cases[] = {{17, 0, true},  {17, 1, false}, {17, 0xFFFFFFFF, false},
                       {16, 0, false}, {18, 0, false}, {0, 0, false}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.messageType << " " << c.objectType);
        Unwrapped out;
        EXPECT_EQ(c.done, UnwrapArp(Global(c.messageType, c.objectType, kNumberBytes + kSecondBytes), out));
        EXPECT_EQ(c.done ? "16909060 2001:db8::1 9.9.9.2" : kUntouched, out.Text());
    }
}

TEST(EHalMessages, APingReplyIsOneOfMessageType18WhateverTheObjectType)
{
    struct {
        unsigned int messageType;
        unsigned int objectType;
        bool done;
    } const cases[] = {{18, 1, true},  {18, 0, true},  {18, 0xFFFFFFFF, true},
                       {17, 1, false}, {19, 1, false}, {0, 0, false}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.messageType << " " << c.objectType);
        Unwrapped out;
        EXPECT_EQ(c.done,
                  UnwrapReply(Outgoing(c.messageType, c.objectType, kSecondBytes + kFirstBytes + kNumberBytes), out));
        EXPECT_EQ(c.done ? "16909060 2001:db8::1 10.1.2.3" : kUntouched, out.Text());
    }
}

TEST(EHalMessages, WhatFollowsTheBodyIsIgnored)
{
    Unwrapped out;
    EXPECT_TRUE(UnwrapArp(Global(17, 0, "05" + kFirstBytes + "FF FF"), out));
    EXPECT_EQ("5 10.1.2.3 9.9.9.2", out.Text());
}

/// Every shorter beginning of the body is an error of the archive; \p unwrap is given its bytes. The values behind the
/// cut keep what they held.
static void ExpectErrorWhenCut(std::string const& body, std::function<void(EBlob const&, Unwrapped&)> const& unwrap,
                               std::function<bool(Unwrapped const&)> const& lastIsUntouched)
{
    std::string const bytes = Bytes(body);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        Unwrapped out;
        EXPECT_THROW(unwrap(BlobOf(bytes.substr(0, size)), out), EArchiveError);
        EXPECT_TRUE(lastIsUntouched(out)) << out.Text();
    }
}

TEST(EHalMessages, ABodyThatEndsTooEarlyIsAnErrorOfTheArchive)
{
    EGlobalMessage global = Global(17, 0, "");
    eHal::EOutgoingGlobalMessage outgoing = Outgoing(18, 1, "");
    ExpectErrorWhenCut(
        kNumberBytes + kFirstBytes + kSecondBytes,
        [&](EBlob const& body, Unwrapped& out) {
            global.SetMessage(body);
            UnwrapPing(global, out);
        },
        [](Unwrapped const& out) { return out.second == EIPAddress("9.9.9.2"); });
    ExpectErrorWhenCut(
        kNumberBytes + kFirstBytes,
        [&](EBlob const& body, Unwrapped& out) {
            global.SetMessage(body);
            UnwrapArp(global, out);
        },
        [](Unwrapped const& out) { return out.first == EIPAddress("9.9.9.1"); });
    ExpectErrorWhenCut(
        kFirstBytes + kSecondBytes + kNumberBytes,
        [&](EBlob const& body, Unwrapped& out) {
            outgoing.SetMessage(body);
            UnwrapReply(outgoing, out);
        },
        [](Unwrapped const& out) { return out.number == 99; });
}

TEST(EHalMessages, ABodyMayBeUnwrappedAgainAndStaysAsItIs)
{
    EGlobalMessage message;
    eHal::CreateArpRequestMessage(message, 5, kFirst);
    EBlob const body = message.GetMessage();
    for (int i = 0; i < 2; ++i) {
        Unwrapped out;
        EXPECT_TRUE(UnwrapArp(message, out));
        EXPECT_EQ("5 10.1.2.3 9.9.9.2", out.Text());
        EXPECT_TRUE(body == message.GetMessage());
    }
}

// ---- Networks -------------------------------------------------------------------------------------------------------

TEST(EHalMessages, AddressesAreOnOneNetworkWhenTheirPrefixesAgree)
{
    struct {
        char const* a;
        char const* b;
        int prefix;
        bool same;
    } const cases[] = {
        {"10.1.2.3", "10.1.9.9", 16, true},
        {"10.1.2.3", "10.1.9.9", 24, false},
        {"10.1.2.3", "10.1.2.99", 24, true},
        {"10.1.2.3", "200.7.8.9", 0, true},
        {"10.1.2.3", "138.1.2.3", 1, false},
        {"10.1.2.3", "75.1.2.3", 1, true},
        {"10.1.2.2", "10.1.2.3", 31, true},
        {"10.1.2.2", "10.1.2.3", 32, false},
        {"10.1.2.3", "10.1.2.3", 32, true},
        {"10.1.2.2", "10.1.2.3", 33, false}, // longer than the address: all of it
        {"10.1.2.3", "10.1.2.3", 33, true},
        {"10.1.2.2", "10.1.2.3", 128, false},
        {"10.1.2.2", "10.1.2.3", INT_MAX, false},
        {"10.1.2.3", "10.1.2.3", -1, true}, // below 0: all of it, too
        {"10.1.2.2", "10.1.2.3", -1, false},
        {"10.1.2.2", "10.1.2.3", INT_MIN, false},
        {"2001:db8::1", "fe80::1", 0, true},
        {"2001:db8::1", "2001:db8:ffff::1", 32, true},
        {"2001:db8::1", "2001:db8:8000::1", 33, false}, // not limited by the family that the mask began with
        {"2001:db8::1", "2001:db8:4000::1", 33, true},
        {"2001:db8:1:2::1", "2001:db8:1:2::9", 64, true},
        {"2001:db8:1:2::1", "2001:db8:1:3::1", 64, false},
        {"2001:db8::2", "2001:db8::3", 127, true},
        {"2001:db8::2", "2001:db8::3", 128, false},
        {"2001:db8::2", "2001:db8::3", 129, false},
        {"2001:db8::2", "2001:db8::2", 128, true},
        {"2001:db8::2", "2001:db8::3", -1, false},
        {"2001:db8::2", "2001:db8::2", -1, true},
        {"10.1.2.3", "2001:db8::1", 0, false}, // of different families: never
        {"0.0.0.0", "::", 0, false},
        {"0.0.0.0", "::", 32, false},
        {"10.1.2.3", "a01:203::", 32, false}, // the same four bytes
        {"10.1.2.3", "a01:203::", -1, false},
        {"10.1.2.3", "::ffff:10.1.2.3", 0, false},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.a << " " << c.b << " /" << c.prefix);
        EXPECT_EQ(c.same, eHal::OnSameNetwork(EIPAddress(c.a), EIPAddress(c.b), c.prefix));
        EXPECT_EQ(c.same, eHal::OnSameNetwork(EIPAddress(c.b), EIPAddress(c.a), c.prefix));
    }
}

// ---- Updates --------------------------------------------------------------------------------------------------------

/// An update around these bytes: an outgoing message of type 2 around a protocol message of type 5 and object type 5.
static std::string UpdateAround(std::string const& sizeOfAll, std::string const& payload)
{
    return Bytes("02 " + sizeOfAll +
                 " 0F 44 69 73 63 6F 76 65 72 65 64 54 61 62 6C 65 " // "DiscoveredTable"
                 "05 05 " +
                 payload);
}

TEST(EHalMessages, AnUpdateIsAProtocolMessageInAnEnvelope)
{
    struct {
        std::string payload;
        std::string update;
    } const cases[] = {
        {"", UpdateAround("13", "00")},
        {Bytes("01 02 03"), UpdateAround("16", "03 01 02 03")},
        {std::string(300, 'x'), UpdateAround("F9 01 41", "F9 01 2C") + std::string(300, 'x')},
    };
    for (auto const& c : cases) {
        boost::shared_ptr<EBlob> out;
        eHal::CreateNeighborDiscoveryUpdate(out, BlobOf(c.payload));
        ASSERT_TRUE(out);
        EXPECT_EQ(c.update, BytesOf(*out));
        EXPECT_EQ(1, out.use_count());
    }
}

TEST(EHalMessages, ABlobThatIsThereIsFilledAnewForAllWhoHoldIt)
{
    boost::shared_ptr<EBlob> out = boost::make_shared<EBlob>(BlobOf("old and longer than what comes next, by far"));
    boost::shared_ptr<EBlob> const holder = out;
    eHal::CreateNeighborDiscoveryUpdate(out, BlobOf(Bytes("01 02 03")));
    EXPECT_EQ(holder, out);
    EXPECT_EQ(UpdateAround("16", "03 01 02 03"), BytesOf(*holder));
    eHal::CreateNeighborDiscoveryUpdate(out, BlobOf(Bytes("04")));
    EXPECT_EQ(holder, out);
    EXPECT_EQ(UpdateAround("14", "01 04"), BytesOf(*holder));
    eHal::CreateNeighborDiscoveryUpdate(out, *out); // around itself
    EXPECT_EQ(UpdateAround("29", "16") + UpdateAround("14", "01 04"), BytesOf(*holder));
}

TEST(EHalMessages, AnUpdateBringsAChangeStreamToATable)
{
    boost::shared_ptr<EBlob> update;
    eHal::CreateNeighborDiscoveryUpdate(update, BlobOf(Bytes("01 04 05 01 00"))); // interface 5 is up
    EArchive archive;
    Load(archive, BytesOf(*update));
    eHal::EOutgoingMessage envelope;
    archive >> envelope;
    EXPECT_EQ(2U, envelope.GetMessageType());
    EArchive wrapped;
    Load(wrapped, BytesOf(envelope.GetMessage()));
    eHal::EOutgoingProtocolMessage message;
    wrapped >> message;
    EXPECT_TRUE(EDiscoveredTable::StaticGetProtocolName() == message.GetProtocolName());
    EArchive stream;
    Load(stream, BytesOf(message.GetMessage()));
    RecordedInfo in;
    ApplyDiscoveredTableMessage(in.table, stream);
    EXPECT_TRUE(in.info.IsInterfaceUp());
    EXPECT_EQ(std::vector<std::string>{"InterfaceWentUp"}, in.recorder->Operations());
}
