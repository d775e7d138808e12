#include "eDHCPTLV.hpp"

#include "recordCases.hpp"

TEST(EDHCPTLV, IsByDefaultOfType0AndEmpty)
{
    EDHCPTLV const tlv;
    EXPECT_EQ(0, tlv.GetType());
    EXPECT_EQ(0u, tlv.GetValue().GetSize());
}

TEST(EDHCPTLV, KeepsAnyTypeAndAnyValue)
{
    unsigned char const types[] = {0, 1, 127, 128, 255};
    for (unsigned char const type : types) {
        SCOPED_TRACE(std::to_string(type));
        EDHCPTLV const tlv = Tlv(type, Bytes("00 ff 00"));
        EXPECT_EQ(type, tlv.GetType());
        EXPECT_EQ("00ff00", tlv.GetValue().GetHexString());
    }
}

TEST(EDHCPTLV, DiffersInTypeOrValue)
{
    struct {
        unsigned char type;
        char const* value;
        bool differs;
    } const cases[] = {{43, "ab", false}, {44, "ab", true}, {43, "ac", true}, {43, "a", true}, {43, "", true}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_EQ(c.differs, Tlv(43, "ab") != Tlv(c.type, c.value));
        EXPECT_EQ(c.differs, Tlv(c.type, c.value) != Tlv(43, "ab"));
    }
}

TEST(EDHCPTLV, IsCopiedInEveryWay)
{
    EDHCPTLV const original = Tlv(43, "ab");
    EDHCPTLV const constructed(original);
    EDHCPTLV assigned = Tlv(1, "x");
    assigned = original;
    EDHCPTLV copied = Tlv(2, "y");
    copied.Copy(original);
    for (EDHCPTLV const* copy :
         {&constructed, static_cast<EDHCPTLV const*>(&assigned), static_cast<EDHCPTLV const*>(&copied)})
        EXPECT_FALSE(*copy != original);
    EDHCPTLV const& itself = assigned;
    assigned = itself;
    EXPECT_FALSE(assigned != original);
    copied.Copy(copied);
    EXPECT_FALSE(copied != original);
}

TEST(EDHCPTLVArchive, WritesVersion1WithAnEmptyFillerWord)
{
    EXPECT_EQ(Golden("EDHCPTLV.v1.hex"), Written(Tlv(43, Bytes("01 02 ff"))));
    EXPECT_EQ(Bytes("01 00 00 00"), Written(EDHCPTLV()));
}

TEST(EDHCPTLVArchive, ReadsVersion1)
{
    EXPECT_FALSE(Read<EDHCPTLV>("EDHCPTLV.v1.hex") != Tlv(43, Bytes("01 02 ff")));
}

TEST(EDHCPTLVArchive, DropsWhateverTheFillerWordHolds)
{
    EDHCPTLV tlv;
    ReadInto(tlv, Bytes("01 2b fb ff ff ff ff 01 07"));
    EXPECT_FALSE(tlv != Tlv(43, Bytes("07")));
    EXPECT_EQ(Bytes("01 2b 00 01 07"), Written(tlv));
}

TEST(EDHCPTLVArchive, ReplacesTypeAndValue)
{
    EDHCPTLV tlv = Tlv(9, "long before");
    ReadInto(tlv, Golden("EDHCPTLV.v1.hex"));
    EXPECT_FALSE(tlv != Tlv(43, Bytes("01 02 ff")));
}

TEST(EDHCPTLVArchive, RefusesAnyVersionBut1)
{
    for (char const* version : {"00", "02", "fb ff ff ff ff"})
        ExpectArchiveError<EDHCPTLV>(version, "x86_64/common/ifcore/eDHCPTLV.cpp", 93, "EDHCPTLV::SerializeIn");
}
