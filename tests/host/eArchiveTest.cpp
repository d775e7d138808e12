#include "allocations.hpp"
#include "hostTestSupport.hpp"

#include "eIPAddress.hpp"

#include <climits>
#include <functional>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <unistd.h>

TEST(EArchive, WritesAndReadsEveryNumberInItsShortestForm)
{
    struct {
        unsigned long value;
        char const* bytes;
    } const cases[] = {{0, "00"},
                       {1, "01"},
                       {0x7F, "7f"},
                       {0xF7, "f7"},
                       {0xF8, "f8f8"},
                       {0xFF, "f8ff"},
                       {0x100, "f90100"},
                       {0xFFFF, "f9ffff"},
                       {0x10000, "fa010000"},
                       {0xFFFFFF, "faffffff"},
                       {0x1000000, "fb01000000"},
                       {0x0218200C, "fb0218200c"},
                       {0xFFFFFFFF, "fbffffffff"},
                       {0x100000000, "fc0100000000"},
                       {0xFFFFFFFFFF, "fcffffffffff"},
                       {0x10000000000, "fd010000000000"},
                       {0xFFFFFFFFFFFF, "fdffffffffffff"},
                       {0x1000000000000, "fe01000000000000"},
                       {0xFFFFFFFFFFFFFF, "feffffffffffffff"},
                       {0x100000000000000, "ff0100000000000000"},
                       {0x0123456789ABCDEF, "ff0123456789abcdef"},
                       {ULONG_MAX, "ffffffffffffffffff"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.bytes);
        EXPECT_EQ(c.bytes, Written(c.value));
        EXPECT_EQ(c.value, Read<unsigned long>(c.bytes));
    }
}

template <class Integer> void ExpectBytes(Integer value, char const* bytes)
{
    SCOPED_TRACE(bytes);
    EXPECT_EQ(bytes, Written(value));
    EXPECT_EQ(value, Read<Integer>(bytes));
}

TEST(EArchive, WritesTheUnsignedPatternOfEachTypesOwnWidth)
{
    ExpectBytes<bool>(false, "00");
    ExpectBytes<bool>(true, "01");
    ExpectBytes<signed char>(127, "7f");
    ExpectBytes<signed char>(-128, "80");
    ExpectBytes<signed char>(-9, "f7");
    ExpectBytes<signed char>(-1, "f8ff");
    ExpectBytes<unsigned char>(255, "f8ff");
    ExpectBytes<short>(32767, "f97fff");
    ExpectBytes<short>(-32768, "f98000");
    ExpectBytes<short>(-1, "f9ffff");
    ExpectBytes<unsigned short>(65535, "f9ffff");
    ExpectBytes<int>(INT_MAX, "fb7fffffff");
    ExpectBytes<int>(INT_MIN, "fb80000000");
    ExpectBytes<int>(-1, "fbffffffff");
    ExpectBytes<unsigned int>(UINT_MAX, "fbffffffff");
    ExpectBytes<unsigned long>(static_cast<unsigned long>(LONG_MIN), "ff8000000000000000");
}

TEST(EArchive, AnyIntegerTypeReadsAPatternThatItsBitsHold)
{
    EXPECT_EQ(200U, Read<unsigned int>(Written(200UL)));
    EXPECT_EQ(200, Read<int>(Written(200UL)));
    EXPECT_EQ(200, Read<unsigned char>(Written(200UL)));
    EXPECT_EQ(-56, Read<signed char>(Written(200UL)));
    EXPECT_EQ(UINT_MAX, Read<unsigned int>(Written(-1)));
    EXPECT_EQ(-1, Read<int>(Written(UINT_MAX)));
    EXPECT_EQ(0xFFFFFFFFUL, Read<unsigned long>(Written(-1)));
    EXPECT_EQ(255, Read<int>(Written(static_cast<signed char>(-1))));
    EXPECT_EQ(-1, Read<short>(Written(static_cast<unsigned short>(65535))));
    EXPECT_TRUE(Read<bool>(Written(1UL)));
    EXPECT_EQ(1UL, Read<unsigned long>(Written(true)));
}

TEST(EArchive, RefusesAPatternThatTheTypesBitsDoNotHold)
{
    EXPECT_EQ("archive offset 0: wanted bool of at most 1, found 2", ReadError<bool>("02"));
    EXPECT_EQ("archive offset 0: wanted bool of at most 1, found 247", ReadError<bool>("f7"));
    EXPECT_EQ("archive offset 0: wanted bool of at most 1, found 255", ReadError<bool>("f8ff"));
    EXPECT_EQ("archive offset 0: wanted signed char of at most 255, found 256", ReadError<signed char>("f90100"));
    EXPECT_EQ("archive offset 0: wanted unsigned char of at most 255, found 256", ReadError<unsigned char>("f90100"));
    EXPECT_EQ("archive offset 0: wanted short of at most 65535, found 65536", ReadError<short>("fa010000"));
    EXPECT_EQ("archive offset 0: wanted unsigned short of at most 65535, found 65536",
              ReadError<unsigned short>("fa010000"));
    EXPECT_EQ("archive offset 0: wanted int of at most 4294967295, found 4294967296", ReadError<int>("fc0100000000"));
    EXPECT_EQ("archive offset 0: wanted unsigned int of at most 4294967295, found 18446744073709551615",
              ReadError<unsigned int>("ffffffffffffffffff"));
}

TEST(EArchive, RefusesANumberInALongerFormThanItsShortest)
{
    struct {
        char const* bytes;
        char const* number;
    } const cases[] = {{"f800", "0"},
                       {"f8f7", "247"},
                       {"f90000", "0"},
                       {"f900ff", "255"},
                       {"fa00ffff", "65535"},
                       {"fb00ffffff", "16777215"},
                       {"fc00ffffffff", "4294967295"},
                       {"fd00ffffffffff", "1099511627775"},
                       {"fe00ffffffffffff", "281474976710655"},
                       {"ff00ffffffffffffff", "72057594037927935"},
                       {"ff0000000000000001", "1"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.bytes);
        EXPECT_EQ("archive offset 0: wanted unsigned long, found " + std::string(c.number) +
                      " in a form longer than its shortest",
                  ReadError<unsigned long>(c.bytes));
    }
    // The form is judged before the width.
    EXPECT_EQ("archive offset 0: wanted bool, found 255 in a form longer than its shortest", ReadError<bool>("f900ff"));
}

TEST(EArchive, RefusesANumberThatIsCutOff)
{
    EXPECT_EQ("archive offset 0: wanted unsigned int, found the end", ReadError<unsigned int>(""));
    EXPECT_EQ("archive offset 0: wanted unsigned int, found 0 of the 1 bytes of a number",
              ReadError<unsigned int>("f8"));
    EXPECT_EQ("archive offset 0: wanted bool, found 3 of the 4 bytes of a number", ReadError<bool>("fb010203"));
    ExpectRefusedWhenTruncated<unsigned long>("ff0123456789abcdef", 7);
    ExpectRefusedWhenTruncated<int>("fb80000000", 7);
    ExpectRefusedWhenTruncated<std::string>("0568656c6c6f", "kept");
}

TEST(EArchive, AFailedReadConsumesNothingAndSaysItsOffset)
{
    EArchive archive = Reading("05f90123");
    int first = 0;
    archive >> first;
    unsigned char narrow = 9;
    try {
        archive >> narrow;
        ADD_FAILURE() << "291 was read into a byte";
    } catch (EArchiveError const& error) {
        EXPECT_STREQ("archive offset 1: wanted unsigned char of at most 255, found 291", error.what());
        EXPECT_EQ(1U, error.GetOffset());
    }
    EXPECT_EQ(9, narrow);
    EXPECT_FALSE(archive.AtEnd());
    unsigned short wide = 0;
    archive >> wide;
    EXPECT_EQ(0x123, wide);
    EXPECT_TRUE(archive.AtEnd());
    EXPECT_THROW(archive >> wide, EArchiveError);
}

TEST(EArchive, WritesAStringAsSizeAndBytes)
{
    std::string const zeros("a\0b", 3);
    EXPECT_EQ("00", Written(std::string()));
    EXPECT_EQ("0568656c6c6f", Written(std::string("hello")));
    EXPECT_EQ("03610062", Written(zeros));
    EXPECT_EQ("f8f8", Written(std::string(248, 'x')).substr(0, 4));
    EXPECT_EQ("", Read<std::string>("00"));
    EXPECT_EQ("hello", Read<std::string>("0568656c6c6f"));
    EXPECT_EQ(zeros, Read<std::string>("03610062"));
    EXPECT_EQ(std::string(5000, 'x'), Read<std::string>(Written(std::string(5000, 'x'))));
}

TEST(EArchive, RefusesACountOfMoreThanWhatRemains)
{
    struct {
        char const* bytes;
        char const* message;
    } const cases[] = {
        {"01", "archive offset 0: wanted a count of at most the 0 bytes that remain, found 1"},
        {"03aabb", "archive offset 0: wanted a count of at most the 2 bytes that remain, found 3"},
        {"ffffffffffffffffffaabb",
         "archive offset 0: wanted a count of at most the 2 bytes that remain, found 18446744073709551615"}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.bytes);
        EXPECT_EQ(c.message, ReadError<std::string>(c.bytes));
        EArchive archive = Reading(c.bytes);
        EXPECT_THROW(archive.ReadCount(), EArchiveError);
        EXPECT_EQ(0U, archive.GetOffset());
    }
    EArchive archive = Reading("0500");
    unsigned char skipped = 0;
    archive >> skipped;
    EXPECT_EQ(0U, archive.ReadCount());
}

template <class Value> void ExpectReadsAs(EArchive& archive, Value before, Value const& expected)
{
    archive >> before;
    EXPECT_EQ(expected, before);
}

TEST(EArchive, AnArchiveThatIsWrittenReadsAsZeroAndEmpty)
{
    EArchive archive;
    archive << 5 << std::string("text");
    std::string const before = archive.GetAsEBlob().GetHexString();
    ExpectReadsAs<bool>(archive, true, false);
    ExpectReadsAs<signed char>(archive, 1, 0);
    ExpectReadsAs<unsigned char>(archive, 1, 0);
    ExpectReadsAs<short>(archive, 1, 0);
    ExpectReadsAs<unsigned short>(archive, 1, 0);
    ExpectReadsAs<int>(archive, 1, 0);
    ExpectReadsAs<unsigned int>(archive, 1, 0);
    ExpectReadsAs<unsigned long>(archive, 1, 0);
    ExpectReadsAs<std::string>(archive, "x", "");
    EXPECT_EQ(0U, archive.ReadCount());
    EXPECT_EQ(nullptr, archive.ReadBytes(1));
    EXPECT_EQ(0U, archive.GetRemaining());
    EXPECT_TRUE(archive.AtEnd());
    EXPECT_EQ(before, archive.GetAsEBlob().GetHexString());
}

TEST(EArchive, AnArchiveThatIsReadIgnoresWriting)
{
    for (std::size_t size : {0U, 3U, 127U, 128U, 136U, 137U, 1000U}) {
        SCOPED_TRACE(size);
        EArchive archive;
        archive.WriteBytes(std::string(size, '\1').data(), size);
        archive.SetMode(2);
        archive << true << 5 << ULONG_MAX << std::string("text");
        archive.WriteBytes("abc", 3);
        EXPECT_EQ(size, archive.GetAsEBlob().GetSize());
        EXPECT_EQ(size, archive.GetRemaining());
    }
}

TEST(EArchive, ReadsNothingBehindItsContentWhateverStoodThereBefore)
{
    for (unsigned int size : {0U, 1U, 5U, 127U, 128U, 129U, 136U, 137U, 138U, 200U}) {
        SCOPED_TRACE(size);
        for (bool endsWide : {false, true}) {
            EArchive archive;
            archive.WriteBytes(std::string(250, '\1').data(), 250);
            archive.SetFromEBlob(BytesOf(std::string(size * 2, '0')), true);
            if (endsWide) archive << ULONG_MAX;
            archive.SetMode(2);
            EArchive copy(archive);
            for (EArchive* reading : {&archive, &copy}) {
                unsigned char zero = 1;
                for (unsigned int i = 0; i < size; ++i) *reading >> zero;
                unsigned long widest = 0;
                if (endsWide) *reading >> widest;
                EXPECT_EQ(endsWide ? ULONG_MAX : 0, widest);
                EXPECT_TRUE(reading->AtEnd());
                bool flag = false;
                EXPECT_THROW(*reading >> flag, EArchiveError);
                EXPECT_THROW(*reading >> zero, EArchiveError);
                EXPECT_THROW(*reading >> widest, EArchiveError);
                reading->SetFromEBlob(BytesOf("07"), false); // is read on
                *reading >> widest;
                EXPECT_EQ(7U, widest);
                EXPECT_TRUE(reading->AtEnd());
            }
        }
    }
}

/// 100,000 bytes and then 300,000 more, for which there must be new memory.
static std::vector<unsigned char> const kFirst(100000, 0xAA);
static std::vector<unsigned char> const kSecond(300000, 0xBB);

TEST(EArchive, ALargeOneGrowsByLessWhereMemoryIsScarce)
{
    EArchive archive;
    archive.WriteBytes(kFirst.data(), kFirst.size());
    GrantedAllocations const allButOne(0);
    archive.WriteBytes(kSecond.data(), kSecond.size());
    EXPECT_EQ(1, allButOne.Refused());
    EBlob const bytes = archive.GetAsEBlob();
    ASSERT_EQ(kFirst.size() + kSecond.size(), bytes.GetSize());
    EXPECT_EQ(0, std::memcmp(bytes.GetData(), kFirst.data(), kFirst.size()));
    EXPECT_EQ(0, std::memcmp(bytes.GetData() + kFirst.size(), kSecond.data(), kSecond.size()));
}

TEST(EArchive, WhenALargeOneCannotGrowItsContentStaysAndMoreCanBeWrittenLater)
{
    EArchive archive;
    archive.WriteBytes(kFirst.data(), kFirst.size());
    EBlob const before = archive.GetAsEBlob();
    {
        GrantedAllocations const none(0, true);
        EXPECT_THROW(archive.WriteBytes(kSecond.data(), kSecond.size()), std::bad_alloc);
        EXPECT_LT(0, none.Refused());
    }
    EXPECT_EQ(before, archive.GetAsEBlob());
    archive.WriteBytes(kSecond.data(), kSecond.size());
    EXPECT_EQ(kFirst.size() + kSecond.size(), archive.GetAsEBlob().GetSize());
}

TEST(EArchive, ATextStaysWhenThereIsNoMemoryForTheOneThatIsRead)
{
    EArchive archive;
    archive << std::string(100, 'x');
    archive.SetMode(2);
    std::string text = "old";
    {
        GrantedAllocations const none(0);
        EXPECT_THROW(archive >> text, std::bad_alloc);
    }
    EXPECT_EQ("old", text);
}

TEST(EArchive, RawBytesAreWrittenAndReadAsTheyAre)
{
    EArchive archive;
    archive.WriteBytes(nullptr, 0).WriteBytes("\xF8\x00\xFF", 3);
    EXPECT_EQ("f800ff", archive.GetAsEBlob().GetHexString());
    archive.SetMode(2);
    EXPECT_EQ(EBlob("\xF8\x00", 2), EBlob(archive.ReadBytes(2), 2));
    try {
        archive.ReadBytes(2);
        ADD_FAILURE() << "two bytes were read where one is left";
    } catch (EArchiveError const& error) {
        EXPECT_STREQ("archive offset 2: wanted 2 bytes, found 1", error.what());
    }
    EXPECT_EQ(EBlob("\xFF", 1), EBlob(archive.ReadBytes(1), 1));
    EXPECT_NE(nullptr, archive.ReadBytes(0));
}

TEST(EArchive, Mode2ReadsFromTheStartAndMode1Appends)
{
    EArchive archive;
    EXPECT_TRUE(archive.IsStoring());
    archive << 1 << 2;
    for (int round = 0; round < 2; ++round) {
        archive.SetMode(2);
        EXPECT_FALSE(archive.IsStoring());
        EXPECT_EQ(2U, archive.GetRemaining());
        ExpectReadsAs(archive, 0, 1);
        ExpectReadsAs(archive, 0, 2);
        EXPECT_TRUE(archive.AtEnd());
    }
    archive.SetMode(1);
    EXPECT_TRUE(archive.IsStoring());
    archive << 3;
    EXPECT_EQ("010203", archive.GetAsEBlob().GetHexString());
    for (int mode : {0, 3, -1}) EXPECT_THROW(archive.SetMode(mode), std::invalid_argument);
    EXPECT_TRUE(archive.IsStoring());
}

TEST(EArchive, SetFromEBlobReplacesOrAppendsAndKeepsTheMode)
{
    EArchive archive;
    archive << 1;
    archive.SetFromEBlob(BytesOf("0a0b"), true);
    EXPECT_TRUE(archive.IsStoring());
    archive << 12;
    EXPECT_EQ("0a0b0c", archive.GetAsEBlob().GetHexString());
    archive.SetFromEBlob(BytesOf("0d"), false);
    EXPECT_EQ("0a0b0c0d", archive.GetAsEBlob().GetHexString());

    archive.SetMode(2);
    ExpectReadsAs(archive, 0, 10);
    archive.SetFromEBlob(BytesOf("0e"), false); // the position stays
    EXPECT_FALSE(archive.IsStoring());
    EXPECT_EQ(4U, archive.GetRemaining());
    ExpectReadsAs(archive, 0, 11);
    archive.SetFromEBlob(BytesOf("0102"), true); // and starts again
    EXPECT_FALSE(archive.IsStoring());
    ExpectReadsAs(archive, 0, 1);
    archive.SetFromEBlob(EBlob(), true);
    EXPECT_TRUE(archive.AtEnd());
}

TEST(EArchive, CopiesTheBytesOfTheBlob)
{
    EBlob blob = BytesOf("0a0b");
    EArchive archive;
    archive.SetFromEBlob(blob, true);
    blob.Memset(0xFF, 0, 2);
    EXPECT_EQ("0a0b", archive.GetAsEBlob().GetHexString());
}

TEST(EArchive, GrowsPastEverySizeOfItsOwnRoom)
{
    for (std::size_t size = 0; size < 600; ++size) {
        EArchive archive;
        for (std::size_t i = 0; i < size; ++i) archive << static_cast<unsigned char>(i % 0xF7);
        archive << ULONG_MAX;
        ASSERT_EQ(size + 9, archive.GetAsEBlob().GetSize());
        archive.SetMode(2);
        for (std::size_t i = 0; i < size; ++i) {
            unsigned char value = 0;
            archive >> value;
            ASSERT_EQ(i % 0xF7, value);
        }
        unsigned long last = 0;
        archive >> last;
        ASSERT_EQ(ULONG_MAX, last);
        ASSERT_TRUE(archive.AtEnd());
    }
}

static bool IsInside(EArchive& archive)
{
    archive.SetMode(2);
    std::less<void const*> const before;
    void const* const bytes = archive.ReadBytes(0);
    return !before(bytes, &archive) && before(bytes, &archive + 1);
}

TEST(EArchive, ContentsOfUpTo128BytesLiveInsideTheObject)
{
    EArchive written;
    for (int i = 0; i < 128; ++i) written << 1;
    EXPECT_TRUE(IsInside(written));
    EArchive larger;
    for (int i = 0; i < 129; ++i) larger << 1;
    EXPECT_FALSE(IsInside(larger));
    EArchive loaded;
    loaded.SetFromEBlob(written.GetAsEBlob(), true);
    EXPECT_TRUE(IsInside(loaded));
}

static EArchive Sample(int size)
{
    EArchive archive;
    for (int i = 0; i < size; ++i) archive << i % 100;
    archive.SetMode(2);
    int first = 0;
    if (size > 0) archive >> first;
    return archive;
}

TEST(EArchive, CopiesAndMovesTakeContentModeAndPosition)
{
    for (int size : {0, 1, 5, 128, 136, 137, 500}) {
        for (int otherSize : {0, 5, 500}) {
            SCOPED_TRACE(std::to_string(otherSize) + " to " + std::to_string(size));
            EArchive const original = Sample(size);
            EBlob const content = original.GetAsEBlob();
            std::size_t const remaining = original.GetRemaining();

            EArchive copy(original);
            EArchive assigned = Sample(otherSize);
            assigned = original;
            EArchive source(original);
            EArchive moved(std::move(source));
            EArchive secondSource(original);
            EArchive moveAssigned = Sample(otherSize);
            moveAssigned = std::move(secondSource);
            for (EArchive* archive : {&copy, &assigned, &moved, &moveAssigned}) {
                EXPECT_EQ(content, archive->GetAsEBlob());
                EXPECT_EQ(remaining, archive->GetRemaining());
                EXPECT_FALSE(archive->IsStoring());
            }
            for (EArchive* archive : {&source, &secondSource}) {
                EXPECT_TRUE(archive->IsStoring());
                EXPECT_EQ(0U, archive->GetAsEBlob().GetSize());
                *archive << 5;
                EXPECT_EQ("05", archive->GetAsEBlob().GetHexString());
            }
            copy.SetMode(1);
            copy << 1;
            EXPECT_EQ(content, original.GetAsEBlob());
        }
    }
}

TEST(EArchive, AssignmentToItselfKeepsIt)
{
    for (int size : {5, 500}) {
        EArchive archive = Sample(size);
        EBlob const content = archive.GetAsEBlob();
        EArchive& same = archive;
        archive = same;
        EXPECT_EQ(content, archive.GetAsEBlob());
        archive = std::move(same);
        EXPECT_EQ(content, archive.GetAsEBlob());
        EXPECT_FALSE(archive.IsStoring());
    }
}

template <class Value, class = void> struct IsWritable : std::false_type {
};
template <class Value>
struct IsWritable<Value, std::void_t<decltype(std::declval<EArchive&>() << std::declval<Value>())>> : std::true_type {
};

TEST(EArchive, DoesNotTakeTextAndPointersForBooleans)
{
    EXPECT_TRUE(IsWritable<std::string>::value);
    EXPECT_FALSE(IsWritable<char const*>::value);
    EXPECT_FALSE(IsWritable<char const(&)[5]>::value);
    EXPECT_FALSE(IsWritable<int*>::value);
    EXPECT_FALSE(IsWritable<char>::value);
    EXPECT_FALSE(IsWritable<double>::value);
}

TEST(EArchiveVector, WritesTheCountAndTheElementsInOrder)
{
    EArchive archive;
    SerializeOut(archive, std::vector<EIPAddress>{});
    SerializeOut(archive, std::vector<EIPAddress>{EIPAddress("10.0.0.1"), EIPAddress("::2")});
    EXPECT_EQ("00"
              "02"
              "110a000001"
              "1200000000000000000000000000000002",
              archive.GetAsEBlob().GetHexString());

    archive.SetMode(2);
    std::vector<EIPAddress> addresses(3);
    SerializeIn(archive, addresses);
    EXPECT_TRUE(addresses.empty());
    SerializeIn(archive, addresses);
    EXPECT_EQ((std::vector<EIPAddress>{EIPAddress("10.0.0.1"), EIPAddress("::2")}), addresses);
    EXPECT_TRUE(archive.AtEnd());
}

TEST(EArchiveVector, ReadsTheCountAsAnUnsignedInt)
{
    std::vector<unsigned short> numbers;
    EArchive archive = Reading("02 05 f9ffff");
    SerializeIn(archive, numbers);
    EXPECT_EQ((std::vector<unsigned short>{5, 0xFFFF}), numbers);

    EArchive tooMany = Reading("fc0100000000");
    EXPECT_THROW(SerializeIn(tooMany, numbers), EArchiveError);
    EArchive missing = Reading("fbffffffff 0708"); // nothing is allocated by the count
    EXPECT_THROW(SerializeIn(missing, numbers), EArchiveError);
    EXPECT_EQ((std::vector<unsigned short>{7, 8}), numbers);
}

// The message goes to standard output; a death test compares standard error.
static void MergeOutputs()
{
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

TEST(EArchiveFatalDeathTest, PrintsTheMessageAndExitsWithStatus1)
{
    EXPECT_EXIT((MergeOutputs(), EArchiveFatal("folder/file.cpp", 202, "ERecord::SerializeIn")),
                testing::ExitedWithCode(1),
                testing::Eq("*** Exception in FILE folder/file.cpp, LINE 202:\n"
                            "ERecord::SerializeIn - EArchive::SerializeError()\n"));
}

TEST(EArchiveVectorDeathTest, WritingToAnArchiveThatIsReadIsFatal)
{
    EArchive archive = Reading("01");
    EXPECT_EXIT((MergeOutputs(), SerializeOut(archive, std::vector<EIPAddress>())), testing::ExitedWithCode(1),
                testing::Eq("*** Exception in FILE common/include/eArchive.hpp, LINE 157:\n"
                            "template<ItemType> SerializeOut(..,vector) - EArchive::SerializeError()\n"));
}

static std::vector<unsigned short> s_numbers;

TEST(EArchiveVectorDeathTest, ReadingFromAnArchiveThatIsWrittenIsFatalAfterClearing)
{
    EArchive archive;
    auto const read = [&archive] {
        MergeOutputs();
        s_numbers = {1, 2, 3};
        std::atexit([] { std::printf("%zu elements\n", s_numbers.size()); });
        SerializeIn(archive, s_numbers);
    };
    EXPECT_EXIT(read(), testing::ExitedWithCode(1),
                testing::Eq("*** Exception in FILE common/include/eArchive.hpp, LINE 172:\n"
                            "template<ItemType> SerializeIn(..,vector) - EArchive::SerializeError()\n"
                            "0 elements\n"));
}
