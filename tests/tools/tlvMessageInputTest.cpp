#include "tlvMessageInput.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include "tlvMessages.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace ifcoreTool;
using toolTest::ScratchFolder;
using toolTest::WriteFile;

namespace {

std::string Taken(TlvMessageInput const& input)
{
    return std::string(input.GetTlv().begin(), input.GetTlv().end());
}

/// Each TLV with its offset; what remains last.
std::vector<std::string> Pieces(TlvMessageInput& input)
{
    std::vector<std::string> pieces;
    bool more = true;
    while (more) {
        more = input.Next();
        pieces.push_back(std::to_string(input.GetOffset()) + " " + Taken(input));
    }
    return pieces;
}

std::string Failure(std::string const& path, std::size_t most)
{
    try {
        TlvMessageInput input(path, most);
        while (input.Next()) {}
    } catch (ToolError const& error) {
        return std::to_string(static_cast<int>(error.GetCode())) + " " + error.what();
    }
    return "";
}

} // namespace

TEST(TlvMessageInput, GivesOneTlvAfterTheOther)
{
    std::string const one = RawTlv(1, 3, "abc");
    std::string const large = RawTlv(2, 200000, std::string(200000, 'x')); // larger than what is read at once
    std::string const empty = RawTlv(3, 0, "");
    std::string const cut = RawTlv(4, 0xffffffff, "rest");
    struct {
        std::string message;
        std::vector<std::string> pieces;
    } const cases[] = {
        {"", {"0 "}},
        {"1234567", {"0 1234567"}},
        {one, {"0 " + one, "11 "}},
        {one + large + empty + "x", {"0 " + one, "11 " + large, "200019 " + empty, "200027 x"}},
        {one + cut, {"0 " + one, "11 " + cut, "23 "}},
    };
    ScratchFolder const folder;
    for (auto const& c : cases) {
        WriteFile(folder / "m", c.message);
        TlvMessageInput input(folder / "m");
        EXPECT_EQ(folder / "m", input.GetName());
        EXPECT_EQ(c.pieces, Pieces(input));
        EXPECT_FALSE(input.Next()); // and stays at the end
        EXPECT_EQ("", Taken(input));
    }
}

TEST(TlvMessageInput, ALargerTlvThanTheLibraryReadsIsBadInput)
{
    ScratchFolder const folder;
    std::string const message = folder / "m";
    WriteFile(message, RawTlv(1, 3, "abc") + RawTlv(2, 4, "abcd"));
    EXPECT_EQ("", Failure(message, 12));
    EXPECT_EQ("3 " + message + ": byte 11: a TLV of 12 bytes is larger than 11 bytes", Failure(message, 11));
    WriteFile(message, RawTlv(1, 0x80000000, "abc")); // a length that is wrong is another matter
    EXPECT_EQ("", Failure(message, 11));
}

TEST(TlvMessageInput, WhatCannotBeReadIsTheSystemsRefusal)
{
    ScratchFolder const folder;
    EXPECT_EQ("4 reading " + folder.GetPath() + "/none: No such file or directory", Failure(folder / "none", 99));
    EXPECT_EQ("4 reading " + folder.GetPath() + ": Is a directory", Failure(folder.GetPath(), 99));
}

TEST(TlvMessageInput, AMessageMayBeLargerThan2GiB)
{
    ScratchFolder const folder;
    constexpr unsigned int kValue = 0x10000000; // the values are a hole in the file
    constexpr unsigned int kCount = 9;
    {
        std::string const message = folder / "m";
        WriteFile(message, "");
        for (unsigned int i = 0; i < kCount; ++i) {
            std::string const header = RawTlv(i, kValue, "");
            FILE* const file = fopen(message.c_str(), "r+");
            ASSERT_TRUE(file);
            ASSERT_EQ(0, fseeko(file, static_cast<off_t>(i) * (kValue + 8), SEEK_SET));
            ASSERT_EQ(8u, fwrite(header.data(), 1, 8, file));
            ASSERT_EQ(0, fclose(file));
        }
        ASSERT_EQ(0, truncate(message.c_str(), static_cast<off_t>(kCount) * (kValue + 8)));
    }
    TlvMessageInput input(folder / "m");
    for (unsigned int i = 0; i < kCount; ++i) {
        ASSERT_TRUE(input.Next());
        EXPECT_EQ(static_cast<std::uint64_t>(i) * (kValue + 8), input.GetOffset());
        EXPECT_EQ(kValue + 8u, input.GetTlv().size());
        EXPECT_EQ(i, static_cast<unsigned int>(input.GetTlv()[3]));
    }
    EXPECT_FALSE(input.Next());
    EXPECT_GT(input.GetOffset(), 0x80000000u);
}
