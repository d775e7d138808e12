#include "hostTestSupport.hpp"

#include <stdexcept>

TEST(EBlob, CopiesTheBytesGivenAndIsZeroWithout)
{
    unsigned char bytes[] = {1, 2, 3};
    EBlob const blob(bytes, 3);
    bytes[0] = 9;
    EXPECT_EQ("010203", blob.GetHexString());
    EXPECT_EQ(3U, blob.GetSize());
    EXPECT_EQ(2, blob.GetData()[1]);
    EXPECT_EQ("0000", EBlob(nullptr, 2).GetHexString());
    EXPECT_EQ(0U, EBlob(nullptr, 0).GetSize());
    EXPECT_EQ(EBlob(), EBlob(bytes, 0));
}

TEST(EBlob, EqualityComparesSizeAndBytes)
{
    EXPECT_TRUE(BytesOf("0102") == BytesOf("0102"));
    EXPECT_FALSE(BytesOf("0102") != BytesOf("0102"));
    for (char const* other : {"", "01", "0103", "010200"}) {
        SCOPED_TRACE(other);
        EXPECT_TRUE(BytesOf("0102") != BytesOf(other));
        EXPECT_FALSE(BytesOf("0102") == BytesOf(other));
    }
}

TEST(EBlob, SetSizeFillsWhatIsNewWithZeros)
{
    struct {
        unsigned int size;
        bool keep;
        char const* result;
    } const cases[] = {{0, true, ""},  {2, true, "0102"},  {3, true, "010203"},  {5, true, "0102030000"},
                       {0, false, ""}, {2, false, "0000"}, {3, false, "000000"}, {5, false, "0000000000"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.size << c.keep);
        EBlob blob = BytesOf("010203");
        blob.SetSize(c.size, c.keep);
        EXPECT_EQ(c.result, blob.GetHexString());
    }
}

TEST(EBlob, RangesAreClampedToWhatExists)
{
    struct {
        unsigned int offset;
        unsigned int count;
        char const* set;
        char const* got;
    } const cases[] = {{0, 0, "01020304", ""},
                       {0, 2, "aaaa0304", "0102"},
                       {1, 2, "01aaaa04", "0203"},
                       {3, 1, "010203aa", "04"},
                       {3, 2, "010203aa", "04"},
                       {2, 0xFFFFFFFF, "0102aaaa", "0304"},
                       {4, 1, "01020304", ""},
                       {5, 1, "01020304", ""},
                       {0xFFFFFFFF, 0xFFFFFFFF, "01020304", ""},
                       {0, 0xFFFFFFFF, "aaaaaaaa", "01020304"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.offset << " " << c.count);
        EBlob blob = BytesOf("01020304");
        EBlob out = BytesOf("ffffffffffff");
        blob.GetAt(out, c.offset, c.count);
        EXPECT_EQ(c.got, out.GetHexString());
        blob.Memset(0xAA, c.offset, c.count);
        EXPECT_EQ(c.set, blob.GetHexString());
    }
}

TEST(EBlob, GetAtMayNameTheBlobItself)
{
    EBlob blob = BytesOf("01020304");
    blob.GetAt(blob, 1, 2);
    EXPECT_EQ("0203", blob.GetHexString());
}

TEST(EBlob, RemoveLeadingBytesRemovesAtMostAll)
{
    struct {
        unsigned int count;
        char const* rest;
    } const cases[] = {{0, "010203"}, {1, "0203"}, {3, ""}, {4, ""}, {0xFFFFFFFF, ""}};
    for (auto const& c : cases) {
        EBlob blob = BytesOf("010203");
        blob.RemoveLeadingBytes(c.count);
        EXPECT_EQ(c.rest, blob.GetHexString()) << c.count;
    }
}

TEST(EBlob, SwapAndCopyAreDeep)
{
    EBlob one = BytesOf("01");
    EBlob two = BytesOf("0202");
    one.Swap(two);
    EXPECT_EQ("0202", one.GetHexString());
    EXPECT_EQ("01", two.GetHexString());
    EBlob copy(one);
    copy.Memset(3, 0, 1);
    EXPECT_EQ("0302", copy.GetHexString());
    EXPECT_EQ("0202", one.GetHexString());
}

TEST(EBlob, GetHexStringIsTwoLowerCaseDigitsAByte)
{
    EXPECT_EQ("", EBlob().GetHexString());
    EXPECT_EQ("000f10abff", EBlob("\x00\x0F\x10\xAB\xFF", 5).GetHexString());
}

TEST(EBlob, SetHexStringReadsDigitsUpToTheFirstOtherCharacter)
{
    struct {
        std::string text;
        bool whole;
        char const* bytes;
    } const cases[] = {{"", true, ""},
                       {" \t\r\n\v\f", true, ""},
                       {"01aBFf", true, "01abff"},
                       {"0x01", true, "01"},
                       {"0X01", true, "01"},
                       {"  0x1234", true, "1234"},
                       {"0x", true, ""},
                       {"0", true, "00"},
                       {"f", true, "0f"},
                       {"abc", true, "0abc"},
                       {"01:02.03-04 05", true, "0102030405"},
                       {":.- ", true, ""},
                       {"1:2:3", true, "0123"},
                       {"12 0x34", false, "0120"},
                       {"00x1", false, "00"},
                       {"12g4", false, "12"},
                       {"123,4", false, "0123"},
                       {"g", false, ""},
                       {"0xx1", false, ""},
                       {std::string("12\0"
                                    "34",
                                    5),
                        false, "12"},
                       {"12\xFF", false, "12"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EBlob blob("\xEE\xEE", 2);
        EXPECT_EQ(c.whole, blob.SetHexString(c.text));
        EXPECT_EQ(c.bytes, blob.GetHexString());
    }
}

TEST(EBlobArchive, IsTheSizeAndTheBytes)
{
    EXPECT_EQ("00", Written(EBlob()));
    EXPECT_EQ("03f800ff", Written(BytesOf("f800ff")));
    EXPECT_EQ(BytesOf("f800ff"), Read<EBlob>("03f800ff"));
    EXPECT_EQ(EBlob(), Read<EBlob>("00"));
    EBlob const large(nullptr, 70000);
    EXPECT_EQ("fa011170", Written(large).substr(0, 8));
    EXPECT_EQ(large, Read<EBlob>(Written(large)));
}

TEST(EBlobArchive, RefusesASizeOfMoreThanWhatRemains)
{
    ExpectRefusedWhenTruncated("050102030405", BytesOf("aa"));
    EBlob kept = BytesOf("aa");
    EXPECT_EQ("archive offset 0: wanted a count of at most the 1 bytes that remain, found 18446744073709551615",
              ReadError("ffffffffffffffffff 00", kept));
    EXPECT_EQ(BytesOf("aa"), kept);
    EArchive storing;
    storing >> kept;
    EXPECT_EQ(EBlob(), kept);
}

TEST(EBlobArchive, RefusesOneThatIsLargerThanABlobCanBe)
{
    EArchive archive; // whose bytes are there but never touched
    std::size_t const size = (1UL << 32) + 3;
    archive << 7 << size;
    archive.AppendTo(archive.RoomFor(size) + size);
    EXPECT_THROW(archive.GetAsEBlob(), std::length_error);
    archive.SetMode(2);
    int first = 0;
    archive >> first;
    EBlob kept = BytesOf("aa");
    try {
        archive >> kept;
        ADD_FAILURE() << kept.GetSize() << " bytes were read";
    } catch (EArchiveError const& error) {
        EXPECT_STREQ("archive offset 1: wanted a blob of at most 4294967295 bytes, found 4294967299", error.what());
    }
    EXPECT_EQ(BytesOf("aa"), kept);
    EXPECT_EQ(1U, archive.GetOffset());
}
