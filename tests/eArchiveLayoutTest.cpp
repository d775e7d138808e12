#include "eArchiveLayout.hpp"
#include "golden.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <list>
#include <string>

using testing::ElementsAre;

namespace {

enum ESampleMode : unsigned int { SAMPLE_MODE = 5 };

struct Sample {
    bool flag = false;                 // since version 12
    ESampleMode mode = ESampleMode();  // since version 11
    std::list<unsigned short> numbers; // since version 10
    unsigned int dropped = 0;          // version 10 only

    template <class Archive, class Values> static void Layout(Archive archive, Values& v)
    {
        archive.Since(12, v.flag);
        archive.Since(11, As<int, unsigned int>(v.mode));
        archive.OnlyIn(10, v.dropped);
        archive.Since(10, Appended<unsigned long, unsigned char>(v.numbers));
    }
};

EArchiveSite const kSite = {"x86_64/common/ifcore/eSample.cpp", 77, "Sample::SerializeIn"};

void ReadSample(Sample& sample, std::string const& hex)
{
    EArchive archive;
    Load(archive, Bytes(hex));
    Sample::Layout(EArchiveReader(archive, {10, 12}, kSite), sample);
    EXPECT_TRUE(archive.AtEnd());
}

} // namespace

TEST(EArchiveLayout, WritesTheNewestVersionWithoutDroppedFields)
{
    Sample sample;
    sample.flag = true;
    sample.mode = SAMPLE_MODE;
    sample.numbers = {1, 300};
    sample.dropped = 9;
    EArchive archive;
    Sample::Layout(EArchiveWriter(archive, 12), sample);
    EXPECT_EQ(Bytes("0c 01 05 02 01 f9 01 2c"), BytesOf(archive.GetAsEBlob()));
}

TEST(EArchiveLayout, ReadsEachVersionsFieldsAndLeavesTheOthersAlone)
{
    struct {
        char const* bytes;
        bool flag;
        unsigned int mode;
        unsigned int dropped;
    } const cases[] = {
        {"0c 01 05 01 07", true, 5, 3}, // flag, mode
        {"0b 05 01 07", false, 5, 3},   // mode
        {"0a 09 01 07", false, 4, 9},   // what version 10 alone had
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.bytes);
        Sample sample;
        sample.mode = static_cast<ESampleMode>(4);
        sample.dropped = 3;
        ReadSample(sample, c.bytes);
        EXPECT_EQ(c.flag, sample.flag);
        EXPECT_EQ(c.mode, sample.mode);
        EXPECT_EQ(c.dropped, sample.dropped);
        EXPECT_THAT(sample.numbers, ElementsAre(7));
    }
}

TEST(EArchiveLayout, AppendsSequencesAndKeepsWhatWasReadBeforeAFailure)
{
    Sample sample;
    ReadSample(sample, "0b 05 01 07");
    ReadSample(sample, "0b 05 02 08 09");
    EXPECT_THAT(sample.numbers, ElementsAre(7, 8, 9));
    EXPECT_THROW(ReadSample(sample, "0b 05 03 01 02"), EArchiveError);
    EXPECT_THAT(sample.numbers, ElementsAre(7, 8, 9, 1, 2));
}

TEST(EArchiveLayout, ReadsACountInTheTypeItIsDeclaredWith)
{
    Sample sample;
    EXPECT_THROW(ReadSample(sample, "0b 05 f9 01 00"), EArchiveError) << "256 elements do not fit 8 bits";
    EXPECT_TRUE(sample.numbers.empty());
}

TEST(EArchiveLayoutDeathTest, RefusesVersionsOutsideTheRangeWithTheSitesText)
{
    for (char const* version : {"00", "09", "0d", "fb ff ff ff ff"}) {
        ChildResult const result = RunInChild([version] {
            Sample sample;
            ReadSample(sample, version);
        });
        EXPECT_EQ(1, result.exitStatus) << version;
        EXPECT_EQ(FatalArchiveMessage(kSite.file, kSite.line, kSite.function), result.output) << version;
    }
}
