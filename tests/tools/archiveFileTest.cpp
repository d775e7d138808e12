#include "archiveFile.hpp"

#include "toolError.hpp"
#include "toolTestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace ifcoreTool;
using toolTest::FileText;
using toolTest::ScratchFolder;
using toolTest::WriteFile;

namespace {

constexpr ArchiveKind kTable = ArchiveKind::interfaceTable;

Bytes AsBytes(std::string const& text)
{
    return Bytes(text.begin(), text.end());
}

/// Code and message of what \p action throws.
std::pair<ExitCode, std::string> Failure(std::function<void()> const& action)
{
    try {
        action();
    } catch (ToolError const& error) {
        return {error.GetCode(), error.what()};
    }
    return {ExitCode::done, ""};
}

mode_t ModeOf(std::string const& path)
{
    struct stat status {};
    EXPECT_EQ(0, stat(path.c_str(), &status));
    return status.st_mode & 07777;
}

/// Bytes of the archive "abc" as a file, from tests/golden.
std::string GoldenFile()
{
    Bytes const bytes = toolTest::GoldenBytes("program/archiveFile.hex");
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

TEST(ArchiveFile, HasTheDocumentedBytes)
{
    ScratchFolder const folder;
    WriteArchiveFile(folder / "t", kTable, AsBytes("abc"));
    EXPECT_EQ(GoldenFile(), FileText(folder / "t"));
    EXPECT_EQ(AsBytes("abc"), ReadArchiveFile(folder / "t", kTable));
}

TEST(ArchiveFile, HoldsAnEmptyAndALargeArchive)
{
    ScratchFolder const folder;
    for (std::size_t size : {std::size_t{0}, std::size_t{200'000}}) {
        WriteArchiveFile(folder / "t", kTable, Bytes(size, 0xa5));
        EXPECT_EQ(Bytes(size, 0xa5), ReadArchiveFile(folder / "t", kTable));
    }
}

TEST(ArchiveFile, EveryDamagedByteIsReportedWithAnOffset)
{
    ScratchFolder const folder;
    std::string const path = folder / "t";
    std::string const whole = GoldenFile();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (unsigned int change : {0x01u, 0x80u, 0xffu}) {
            SCOPED_TRACE(testing::Message() << "offset " << at << " xor " << change);
            std::string damaged = whole;
            damaged[at] = static_cast<char>(static_cast<unsigned char>(damaged[at]) ^ change);
            WriteFile(path, damaged);
            auto const [code, message] = Failure([&] { ReadArchiveFile(path, kTable); });
            EXPECT_EQ(ExitCode::badInput, code);
            std::size_t const reported = at < 8 ? 0 : at < 12 ? 8 : at < 16 ? 12 : at < 24 ? 16 : 27;
            EXPECT_EQ(0u, message.find(path + ": offset " + std::to_string(reported) + ": ")) << message;
        }
    }
}

TEST(ArchiveFile, EveryShortenedAndEveryLengthenedFileIsReported)
{
    ScratchFolder const folder;
    std::string const path = folder / "t";
    std::string const whole = GoldenFile();
    for (std::size_t size = 0; size < whole.size() + 2; ++size) {
        if (size == whole.size()) continue;
        SCOPED_TRACE(size);
        WriteFile(path, (whole + "++").substr(0, size));
        auto const [code, message] = Failure([&] { ReadArchiveFile(path, kTable); });
        EXPECT_EQ(ExitCode::badInput, code);
        std::size_t const reported = size == 0 ? 0 : size < 28 ? size : 16;
        EXPECT_EQ(0u, message.find(path + ": offset " + std::to_string(reported) + ": ")) << message;
    }
}

TEST(ArchiveFile, SaysWhatIsWrong)
{
    ScratchFolder const folder;
    std::string const path = folder / "t";
    std::string const whole = GoldenFile();
    auto const with = [&](std::size_t at, char value) {
        std::string changed = whole;
        changed[at] = value;
        return changed;
    };
    struct {
        std::string content;
        char const* message;
    } const cases[] = {{"", ": offset 0: this is no ifcore file"},
                       {"hello", ": offset 0: this is no ifcore file"},
                       {with(11, 2), ": offset 8: format version 2 is not known, only 1 is"},
                       {with(15, 2), ": offset 12: the file holds a discovered table, wanted is an interface table"},
                       {with(15, 9), ": offset 12: the file holds something unknown, wanted is an interface table"},
                       {with(23, 4), ": offset 16: the length says 4 bytes of archive, there are 3"},
                       {with(24, 'b'), ": offset 27: the checksum does not match: the file is damaged"}};
    for (auto const& c : cases) {
        WriteFile(path, c.content);
        EXPECT_EQ(path + c.message, Failure([&] { ReadArchiveFile(path, kTable); }).second);
    }
}

TEST(ArchiveFile, MissingFilesAndFoldersAreTheSystemsRefusal)
{
    ScratchFolder const folder;
    std::string const missing = folder / "none";
    auto const reading = Failure([&] { ReadArchiveFile(missing, kTable); });
    EXPECT_EQ(ExitCode::systemRefused, reading.first);
    EXPECT_EQ("reading " + missing + ": No such file or directory", reading.second);
    auto const writing = Failure([&] { WriteArchiveFile(missing + "/t", kTable, AsBytes("abc")); });
    EXPECT_EQ(ExitCode::systemRefused, writing.first);
    EXPECT_EQ("writing " + missing + "/t: No such file or directory", writing.second);
    auto const folderItself = Failure([&] { ReadArchiveFile(folder.GetPath(), kTable); });
    EXPECT_EQ(ExitCode::systemRefused, folderItself.first);
    EXPECT_EQ("reading " + folder.GetPath() + ": Is a directory", folderItself.second);
}

TEST(ArchiveFile, AReplacedFileKeepsItsModeAndItsLink)
{
    ScratchFolder const folder;
    std::string const path = folder / "t";
    WriteFile(path, "old");
    ASSERT_EQ(0, chmod(path.c_str(), 0604));
    std::filesystem::create_symlink("t", folder / "link");
    WriteArchiveFile(folder / "link", kTable, AsBytes("abc"));
    EXPECT_EQ(GoldenFile(), FileText(path));
    EXPECT_EQ(static_cast<mode_t>(0604), ModeOf(path));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_EQ((std::vector<std::string>{"link", "t"}), folder.GetNames());
}

TEST(ArchiveFile, ANewFileHasTheModeThatTheMaskLeaves)
{
    ScratchFolder const folder;
    mode_t const before = umask(027);
    WriteArchiveFile(folder / "t", kTable, AsBytes("abc"));
    umask(before);
    EXPECT_EQ(static_cast<mode_t>(0640), ModeOf(folder / "t"));
}

TEST(ArchiveFile, AFailedReplacementLeavesTheOldFileAndNothingElse)
{
    ScratchFolder const folder;
    std::string const path = folder / "t";
    WriteFile(path, "old");
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &before));
    rlimit const small{16, before.rlim_max};
    auto const signalBefore = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &small));
    auto const [code, message] = Failure([&] { WriteArchiveFile(path, kTable, AsBytes("abc")); });
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &before));
    signal(SIGXFSZ, signalBefore);
    EXPECT_EQ(ExitCode::systemRefused, code);
    EXPECT_EQ("writing " + path + ": File too large", message);
    EXPECT_EQ("old", FileText(path));
    EXPECT_EQ((std::vector<std::string>{"t"}), folder.GetNames());
}

TEST(ArchiveFile, WhatIsNoFileIsNotReplaced)
{
    ScratchFolder const folder;
    auto const [code, message] = Failure([&] { WriteArchiveFile(folder.GetPath(), kTable, AsBytes("abc")); });
    EXPECT_EQ(ExitCode::badInput, code);
    EXPECT_EQ(folder.GetPath() + ": is no regular file", message);
}

TEST(ArchiveFile, PiecesMakeTheSameFileAsTheWhole)
{
    ScratchFolder const folder;
    for (std::size_t size : {0u, 1u, 3u, 100000u}) {
        SCOPED_TRACE(size);
        Bytes whole(size);
        for (std::size_t i = 0; i < size; ++i) whole[i] = static_cast<unsigned char>(i * 7);
        WriteArchiveFile(folder / "whole", kTable, whole);
        ArchiveFileWriter writer(folder / "pieces", kTable);
        for (std::size_t at = 0, step = 1; at < size; at += step, step = at)
            writer.Append(whole.data() + at, std::min(step, size - at));
        EXPECT_EQ(size, writer.GetLength());
        writer.TakePlace();
        EXPECT_EQ(FileText(folder / "whole"), FileText(folder / "pieces"));
    }
    ArchiveFileWriter writer(folder / "t", kTable);
    for (char const* piece : {"a", "", "bc"}) writer.Append(piece, std::string(piece).size());
    EXPECT_EQ((std::vector<std::string>{"pieces", "whole"}).size() + 1, folder.GetNames().size()); // and the new one
    writer.TakePlace();
    EXPECT_EQ(GoldenFile(), FileText(folder / "t"));
}

TEST(ArchiveFile, APieceThatCannotBeWrittenIsNotInTheFile)
{
    ScratchFolder const folder;
    ArchiveFileWriter writer(folder / "t", kTable);
    writer.Append("abc", 3);
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &before));
    rlimit const small{30, before.rlim_max};
    auto const signalBefore = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &small));
    auto const [code, message] = Failure([&] { writer.Append("defghijklmnop", 13); });
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &before));
    signal(SIGXFSZ, signalBefore);
    EXPECT_EQ(ExitCode::systemRefused, code);
    EXPECT_EQ(3u, writer.GetLength());
    writer.TakePlace();
    EXPECT_EQ(GoldenFile(), FileText(folder / "t"));
}

TEST(ArchiveFile, AFileOfOneOfSeveralKindsIsReadWithItsKind)
{
    ScratchFolder const folder;
    std::vector<ArchiveKind> const wanted{ArchiveKind::interfaceTable, ArchiveKind::discoveredTable};
    for (ArchiveKind kind : wanted) {
        WriteArchiveFile(folder / "t", kind, AsBytes("abc"));
        EXPECT_EQ(std::make_pair(kind, AsBytes("abc")), ReadArchiveFile(folder / "t", wanted));
    }
    WriteArchiveFile(folder / "t", ArchiveKind::changeStream, AsBytes("abc"));
    EXPECT_EQ((folder / "t") + ": offset 12: the file holds a change stream, wanted is an interface table or a "
                               "discovered table",
              Failure([&] { ReadArchiveFile(folder / "t", wanted); }).second);
}
