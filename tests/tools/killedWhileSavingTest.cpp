// The program ended from outside while it saves, and several of it that save one file.
#include "savedFiles.hpp"

#include "toolError.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <functional>
#include <memory>
#include <random>
#include <thread>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

using toolTest::Background;
using toolTest::FileText;
using toolTest::Result;
using toolTest::RunIfcore;
using toolTest::SavedFile;
using toolTest::SavedFiles;
using toolTest::WriteFile;

namespace {

using Clock = std::chrono::steady_clock;
using Duration = Clock::duration;

// Large enough that writing it takes some of the time. The sanitizers make every program slower, a smaller table does;
// the many rounds are for the optimised build.
#ifdef __SANITIZE_ADDRESS__
constexpr unsigned int kInterfaces = 100;
constexpr unsigned int kKills = 50;
#else
constexpr unsigned int kInterfaces = 2000;
constexpr unsigned int kKills = 200;
#endif

/// Sees files appear in a folder.
class FolderWatch {
public:
    explicit FolderWatch(std::string const& folder) : m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        if (inotify_add_watch(m_descriptor, folder.c_str(), IN_CREATE) < 0) throw std::runtime_error("no inotify");
    }
    ~FolderWatch() { close(m_descriptor); }
    FolderWatch(FolderWatch const&) = delete;
    FolderWatch& operator=(FolderWatch const&) = delete;

    /// Of one file at least; false when none appears within a minute.
    bool WaitForAFile()
    {
        pollfd asked{m_descriptor, POLLIN, 0};
        if (poll(&asked, 1, 60000) != 1) return false;
        alignas(inotify_event) char events[4096];
        return read(m_descriptor, events, sizeof events) > 0;
    }

private:
    int m_descriptor;
};

std::unique_ptr<Background> Start(std::vector<std::string> arguments, std::function<void()> const& prepare = {})
{
    arguments.insert(arguments.begin(), IFCORE_PROGRAM);
    return std::make_unique<Background>(arguments, prepare);
}

/// The shortest times that a save took.
struct Times {
    Duration whole = Duration::max();
    Duration writing = Duration::max(); ///< From the appearance of the new file beside the old one.
};

Times Measure(SavedFile const& file, std::string const& folder)
{
    Times times;
    for (unsigned int i = 0; i < 6; ++i) {
        FolderWatch watch(folder);
        auto const begin = Clock::now();
        auto const program = Start((i % 2 == 0 ? file.second : file.first).command);
        EXPECT_TRUE(watch.WaitForAFile());
        auto const beginOfWriting = Clock::now();
        Result const result = program->Wait();
        EXPECT_EQ(0, result.status) << result.err;
        times.whole = std::min(times.whole, Clock::now() - begin);
        times.writing = std::min(times.writing, Clock::now() - beginOfWriting);
    }
    return times;
}

/// Starts programs that save a file, and sends each a signal at a random moment of the save or shortly after it.
class Interruption {
public:
    Interruption(SavedFiles const& files, SavedFile const& file) : m_path(file.path), m_folder(files.GetFolder(file))
    {
        Times const times = Measure(file, m_folder);
        m_longestDelays[0] = times.writing;
        m_longestDelays[1] = times.whole;
    }

    /// Moments of every second round are spread over the writing alone, the others over everything from the start on.
    Result Run(SavedFile::Content const& content, unsigned int round, int signal,
               std::function<void()> const& prepare = {})
    {
        FolderWatch watch(m_folder);
        auto const program = Start(content.command, prepare);
        EXPECT_TRUE(round % 2 != 0 || watch.WaitForAFile());
        Duration& longestDelay = m_longestDelays[round % 2];
        std::this_thread::sleep_for(longestDelay * static_cast<int>(m_random() % 1000) / 1000);
        program->Signal(signal);
        Result const result = program->Wait();
        // The machine is now busy, now idle: two of three signals come before the new file has taken the place, or
        // before the end.
        bool const late = round % 2 == 0 ? FileText(m_path) == content.bytes : result.status == 0;
        longestDelay = longestDelay * (late ? 75 : 115) / 100;
        return result;
    }

private:
    std::string m_path;
    std::string m_folder;
    Duration m_longestDelays[2];
    std::mt19937 m_random{20240229}; // any; the same sequence each time
};

} // namespace

/// \p atLeast: of the kills, those that come between the appearance of the new file and its taking the place.
static void KillWhileSaving(std::size_t kind, unsigned int rounds, unsigned int atLeast)
{
    SavedFiles const files(kInterfaces);
    SavedFile const& file = files.GetAll()[kind];
    Interruption interruption(files, file);
    unsigned int killed = 0;
    for (unsigned int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        WriteFile(file.path, file.first.bytes);
        Result const result = interruption.Run(file.second, round, SIGKILL);
        ASSERT_TRUE(result.status == 0 || result.status == 128 + SIGKILL) << result.status << result.err;
        if (result.status != 0) ++killed;
        ASSERT_TRUE(file.HoldsEither());
        ASSERT_TRUE(result.status != 0 || FileText(file.path) == file.second.bytes);
        Result const read = RunIfcore(file.reading);
        ASSERT_EQ(0, read.status) << read.err;
    }
    // What a kill left behind is no file of the program's before it is whole.
    std::vector<std::string> const left = files.GetOthers(file);
    for (std::string const& name : left) {
        std::string const path = files.GetFolder(file) + "/" + name;
        EXPECT_EQ("t.", name.substr(0, 2));
        if (file.reading[0] == "show" && FileText(path) != file.second.bytes) { // a message has no checksum
            EXPECT_EQ(3, RunIfcore({"show", path}).status);
        }
    }
    std::cout << file.kind << ": " << rounds << " rounds, " << killed << " killed before the end, " << left.size()
              << " of them while the new file was beside the old one\n";
    EXPECT_GE(killed, rounds / 4);
    EXPECT_GE(left.size(), atLeast);
}

TEST(KilledWhileSaving, LeavesTheOldOrTheNewInterfaceTableWhole)
{
    KillWhileSaving(0, kKills, kKills / 20);
}

TEST(KilledWhileSaving, LeavesTheOldOrTheNewUpgradedTableWhole)
{
    KillWhileSaving(1, 40, 1);
}

TEST(KilledWhileSaving, LeavesTheOldOrTheNewDiscoveredTableWhole)
{
    KillWhileSaving(2, 40, 1);
}

TEST(KilledWhileSaving, LeavesTheOldOrTheNewMessageWhole)
{
    KillWhileSaving(3, 40, 1);
}

TEST(KilledWhileSaving, WhatIsLeftBehindDoesNoHarmAndIsLeftAlone)
{
    SavedFiles const files(10);
    for (SavedFile const& file : files.GetAll()) {
        SCOPED_TRACE(file.kind);
        std::string const folder = files.GetFolder(file);
        std::vector<std::string> names;
        for (unsigned int i = 100; i < 200; ++i) {
            names.push_back("t.kept" + std::to_string(i).substr(1));
            WriteFile(folder + "/" + names.back(), file.second.bytes.substr(0, i - 100));
        }
        ASSERT_EQ(0, RunIfcore(file.second.command).status);
        EXPECT_EQ(file.second.bytes, FileText(file.path));
        EXPECT_EQ(names, files.GetOthers(file));
        for (unsigned int i = 0; i < names.size(); ++i)
            EXPECT_EQ(file.second.bytes.substr(0, i), FileText(folder + "/" + names[i]));
    }
}

TEST(EndedWhileSaving, LeavesTheOldOrTheNewFileWholeAndNothingElse)
{
    SavedFiles const files(kInterfaces);
    SavedFile const& file = files.GetTable();
    Interruption interruption(files, file);
    unsigned int ended = 0;
    for (unsigned int round = 0; round < 60; ++round) {
        int const signal = std::vector<int>{SIGTERM, SIGINT, SIGHUP}[round % 3];
        SCOPED_TRACE(testing::Message() << "round " << round << " signal " << signal);
        WriteFile(file.path, file.first.bytes);
        Result const result = interruption.Run(file.second, round, signal);
        ASSERT_TRUE(result.status == 0 || result.status == 128 + signal) << result.status << result.err;
        if (result.status != 0) ++ended;
        ASSERT_TRUE(file.HoldsEither());
        ASSERT_EQ(std::vector<std::string>(), files.GetOthers(file));
    }
    std::cout << ended << " of 60 ended by their signal\n";
    EXPECT_GE(ended, 15u);
}

TEST(EndedWhileSaving, AnIgnoredSignalDoesNotEndIt)
{
    SavedFiles const files(kInterfaces);
    SavedFile const& file = files.GetTable();
    Interruption interruption(files, file);
    for (unsigned int round = 0; round < 20; ++round) {
        WriteFile(file.path, file.first.bytes);
        auto const ignore = [] { signal(SIGHUP, SIG_IGN); }; // as nohup does
        // Even rounds alone: their signals come when the writing has begun.
        Result const result = interruption.Run(file.second, 2 * round, SIGHUP, ignore);
        ASSERT_EQ(0, result.status) << result.err;
        ASSERT_TRUE(file.second.bytes == FileText(file.path));
    }
    EXPECT_EQ(std::vector<std::string>(), files.GetOthers(file));
}

TEST(SavingAtTheSameTime, LeavesTheFileOfOneOfThePrograms)
{
    SavedFiles const files(kInterfaces / 4);
    for (SavedFile const& file : files.GetAll()) {
        SCOPED_TRACE(file.kind);
        unsigned int const rounds = &file == &files.GetTable() ? 30 : 6;
        for (unsigned int round = 0; round < rounds; ++round) {
            std::unique_ptr<Background> const one = Start(file.first.command);
            std::unique_ptr<Background> const other = Start(file.second.command);
            for (unsigned int i = 0; i < 20; ++i) {
                ASSERT_TRUE(file.HoldsEither()); // whoever reads meanwhile
                usleep(500);
            }
            for (Background* program : {one.get(), other.get()}) {
                Result const result = program->Wait();
                ASSERT_EQ(0, result.status) << result.err;
            }
            ASSERT_TRUE(file.HoldsEither());
            ASSERT_EQ(0, RunIfcore(file.reading).status);
        }
        EXPECT_EQ(std::vector<std::string>(), files.GetOthers(file));
    }
}
