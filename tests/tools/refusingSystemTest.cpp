// The system refuses something while the program saves.
#include "savedFiles.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>

#include <fcntl.h>
#include <linux/capability.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using toolTest::Background;
using toolTest::FileText;
using toolTest::Result;
using toolTest::RunIfcore;
using toolTest::SavedFile;
using toolTest::SavedFiles;
using toolTest::ScratchFolder;
using toolTest::WriteFile;

namespace {

using Names = std::vector<std::string>;
using Prepare = std::function<void()>;

/// The largest file that the process may write. What ends a process by default, SIGXFSZ, is left as it is.
Prepare LimitFileSize(std::size_t bytes)
{
    return [bytes] {
        rlimit const limit{bytes, bytes};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(126);
    };
}

/// Which calls of the system fail: those of \p number whose argument passes a test of the filter language.
struct RefusedCall {
    unsigned int number;
    unsigned int argument; // from 0
    unsigned short test;   // BPF_JSET: has a bit of; BPF_JGT: is greater than
    unsigned int value;
    unsigned int atLeast = 0; // of argument 2
};

constexpr RefusedCall kCreating = {SYS_openat, 2, BPF_JSET, O_CREAT};
// Not what it says, and not the 16 bytes with which the sanitizers ask whether memory can be read.
constexpr RefusedCall kWriting = {SYS_write, 0, BPF_JGT, STDERR_FILENO, 17};
constexpr RefusedCall kWritingOver = {SYS_pwrite64, 0, BPF_JGT, STDERR_FILENO};
constexpr RefusedCall kSettingMode = {SYS_fchmod, 0, BPF_JGT, STDERR_FILENO};
constexpr RefusedCall kSyncing = {SYS_fsync, 0, BPF_JGT, STDERR_FILENO};
constexpr RefusedCall kRenaming = {SYS_rename, 0, BPF_JSET, ~0u};
constexpr RefusedCall kOpeningFolder = {SYS_openat, 2, BPF_JSET, O_DIRECTORY};

Prepare Refuse(RefusedCall const& call, int error)
{
    return [call, error] {
        auto const place = [](unsigned int argument) { // of its low half: x86-64
            return static_cast<unsigned int>(offsetof(seccomp_data, args) + 8 * argument);
        };
        auto const test = static_cast<unsigned short>(BPF_JMP | call.test | BPF_K);
        sock_filter program[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<unsigned int>(offsetof(seccomp_data, nr))),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, call.number, 0, 5),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place(2)),
            BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, call.atLeast, 0, 3),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, place(call.argument)),
            BPF_JUMP(test, call.value, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned int>(error)),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        sock_fprog const filter{sizeof program / sizeof *program, program};
        if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
            _exit(126);
    };
}

/// Takes the right to write where permissions forbid it from a process of root's; others do not have it.
void ObeyPermissions()
{
    if (geteuid() != 0) return;
    for (unsigned long const right : std::initializer_list<unsigned long>{CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH})
        if (prctl(PR_CAPBSET_DROP, right, 0, 0, 0) != 0) _exit(126);
}

/// A disk of 4 MiB in memory, mounted over a folder for this process alone. Not there where mounting is not allowed.
class SmallDisk {
public:
    explicit SmallDisk(std::string const& folder)
    {
        m_outside = open("/proc/self/ns/mnt", O_RDONLY | O_CLOEXEC);
        if (m_outside < 0 || unshare(CLONE_NEWNS) != 0) return;
        m_isInside = true;
        m_isMounted = mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                      mount("small", folder.c_str(), "tmpfs", 0, "size=4m") == 0;
    }
    ~SmallDisk()
    {
        EXPECT_TRUE(!m_isInside || setns(m_outside, CLONE_NEWNS) == 0);
        if (m_outside >= 0) close(m_outside);
    }
    SmallDisk(SmallDisk const&) = delete;
    SmallDisk& operator=(SmallDisk const&) = delete;

    bool IsMounted() const { return m_isMounted; }

private:
    int m_outside = -1;
    bool m_isInside = false;
    bool m_isMounted = false;
};

/// What the program says is "ifcore: ", \p beginning and \p reason.
void ExpectRefusal(Result const& result, std::string const& beginning, int reason)
{
    EXPECT_EQ(4, result.status) << result.err;
    EXPECT_EQ("", result.out);
    EXPECT_EQ("ifcore: " + beginning + ": " + std::strerror(reason) + "\n", result.err);
}

void ExpectUntouched(SavedFiles const& files, SavedFile const& file)
{
    EXPECT_TRUE(file.first.bytes == FileText(file.path));
    EXPECT_EQ(Names(), files.GetOthers(file));
}

/// All commands that save something, to \p files and to the new file \p path.
std::vector<std::vector<std::string>> SavingCommands(SavedFiles const& files, std::string const& path)
{
    std::string const table = files.GetTable().path;
    std::vector<std::vector<std::string>> commands = {
        {"add", table, "name=new"},
        {"add", table, "1", "ipv6", "address=2001:db8::1"},
        {"remove", table, "1"},
        {"enable", table, "1"},
        {"disable", table, "1", "ipv4"},
        {"edit", table, "table", "fcoe.retry-count", "1"},
        {"import", "-o", path},
        {"tlv", "apply", table, "/dev/null"},
        {"tlv", "build", table, "--all", "-o", path},
        {"upgrade", files / "raw0", path},
        {"discovered", "apply", path, files / "stream0"},
    };
    for (SavedFile const& file : files.GetAll()) commands.push_back(file.second.command);
    return commands;
}

} // namespace

TEST(RefusingSystem, EveryCallThatASaveMakesIsChecked)
{
    SavedFiles const files(100);
    struct {
        RefusedCall refused;
        int error;
        char const* message; // with the path of the file behind it
    } const cases[] = {
        {kCreating, ENOSPC, "writing "},  {kCreating, EROFS, "writing "},  {kWriting, ENOSPC, "writing "},
        {kWriting, EIO, "writing "},      {kWritingOver, EIO, "writing "}, {kSettingMode, EPERM, "writing "},
        {kSyncing, ENOSPC, "writing "},   {kSyncing, EIO, "writing "},     {kRenaming, ENOENT, "replacing "},
        {kRenaming, EROFS, "replacing "},
    };
    for (SavedFile const& file : files.GetAll()) {
        for (auto const& c : cases) {
            if (file.kind == "a message" && c.refused.number == kWritingOver.number) continue; // it has no header
            SCOPED_TRACE(file.kind + ", call " + std::to_string(c.refused.number) + ": " + std::strerror(c.error));
            ExpectRefusal(RunIfcore(file.second.command, Refuse(c.refused, c.error)), c.message + file.path, c.error);
            ExpectUntouched(files, file);
        }
    }
}

TEST(RefusingSystem, AFolderThatCannotBeSecuredIsToldWithTheNewFileInPlace)
{
    SavedFiles const files(10);
    for (SavedFile const& file : files.GetAll()) {
        SCOPED_TRACE(file.kind);
        ExpectRefusal(RunIfcore(file.second.command, Refuse(kOpeningFolder, EIO)),
                      "securing the folder " + files.GetFolder(file), EIO);
        EXPECT_TRUE(file.second.bytes == FileText(file.path));
        EXPECT_EQ(Names(), files.GetOthers(file));
    }
}

TEST(RefusingSystem, AFileThatGrowsTooLargeIsLeftAsItWas)
{
    SavedFiles const files(100);
    for (SavedFile const& file : files.GetAll()) {
        std::size_t const size = file.second.bytes.size();
        for (std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{23}, std::size_t{24}, std::size_t{25},
                                  size / 2, size - 5, size - 1}) {
            SCOPED_TRACE(file.kind + ", " + std::to_string(limit) + " bytes");
            Result const result = RunIfcore(file.second.command, LimitFileSize(limit));
            EXPECT_EQ(4, result.status); // not 128 and SIGXFSZ
            // What it says goes to a file too.
            std::string const message = "ifcore: writing " + file.path + ": File too large\n";
            EXPECT_EQ(message.substr(0, limit), result.err);
            ExpectUntouched(files, file);
        }
        EXPECT_EQ(0, RunIfcore(file.second.command, LimitFileSize(size)).status);
        EXPECT_TRUE(file.second.bytes == FileText(file.path));
    }
}

TEST(RefusingSystem, EveryCommandThatSavesTellsAndLeavesNothing)
{
    SavedFiles const files(1);
    ScratchFolder const folder;
    for (auto const& command : SavingCommands(files, folder / "new")) {
        SCOPED_TRACE(testing::PrintToString(command));
        for (Prepare const& prepare : {LimitFileSize(20), Refuse(kCreating, EROFS), Refuse(kWriting, ENOSPC),
                                       Refuse(kSyncing, EIO), Refuse(kRenaming, EACCES)}) {
            Result const result = RunIfcore(command, prepare);
            EXPECT_EQ(4, result.status) << result.err;
            EXPECT_EQ("", result.out);
            EXPECT_NE("", result.err);
            for (SavedFile const& file : files.GetAll()) ExpectUntouched(files, file);
            EXPECT_EQ(Names(), folder.GetNames());
        }
    }
}

TEST(RefusingSystem, AnImportOfTwoTablesLeavesEachWhole)
{
    ScratchFolder const folder;
    ScratchFolder const full;
    WriteFile(folder / "d", "old");
    ASSERT_EQ(0, chmod(full.GetPath().c_str(), 0555));
    Result const result = RunIfcore({"import", "-o", folder / "t", "--discovered", full / "d"}, ObeyPermissions);
    ExpectRefusal(result, "writing " + (full / "d"), EACCES);
    EXPECT_EQ(0, RunIfcore({"show", folder / "t"}).status); // written before
    EXPECT_EQ((Names{"d", "t"}), folder.GetNames());
    EXPECT_EQ(Names(), full.GetNames());
}

TEST(RefusingSystem, AFullDiskLeavesTheOldFile)
{
    SavedFiles const files(1000);
    for (SavedFile const& file : files.GetAll()) {
        SCOPED_TRACE(file.kind);
        std::string const& folder = files.GetFolder(file);
        SmallDisk const disk(folder);
        std::cout << (disk.IsMounted() ? "a full disk in memory\n" : "no disk can be mounted: a limit of file sizes\n");
        if (disk.IsMounted()) WriteFile(file.path, file.first.bytes);
        std::size_t const size = file.second.bytes.size();
        std::size_t const step = std::max<std::size_t>(size / 4096 / 6, 1) * 4096;
        bool fits = false;
        unsigned int refusals = 0;
        for (std::size_t room = 0; !fits; room += step) {
            SCOPED_TRACE(room);
            ASSERT_LT(room, size + 4 * step + (4u << 20)); // else it never fits
            Prepare prepare;
            if (disk.IsMounted()) {
                // Takes what is free but for the room.
                std::size_t const free = std::filesystem::space(folder).available;
                WriteFile(folder + "/filler", std::string(free > room ? free - room : 0, 'x'));
            } else {
                prepare = LimitFileSize(room);
            }
            Result const result = RunIfcore(file.second.command, prepare);
            fits = result.status == 0;
            std::filesystem::remove(folder + "/filler");
            EXPECT_EQ(Names(), files.GetOthers(file));
            if (fits) break;
            ++refusals;
            EXPECT_EQ(4, result.status);
            if (disk.IsMounted()) ExpectRefusal(result, "writing " + file.path, ENOSPC);
            ExpectUntouched(files, file);
        }
        EXPECT_GE(refusals, 1u);
        EXPECT_TRUE(file.second.bytes == FileText(file.path));
        EXPECT_EQ(0, RunIfcore(file.reading).status);
    }
}

TEST(RefusingSystem, AFolderWithoutPermissionToWriteLeavesTheOldFile)
{
    SavedFiles const files(10);
    for (SavedFile const& file : files.GetAll()) {
        SCOPED_TRACE(file.kind);
        ASSERT_EQ(0, chmod(files.GetFolder(file).c_str(), 0555));
        ExpectRefusal(RunIfcore(file.second.command, ObeyPermissions), "writing " + file.path, EACCES);
        ExpectUntouched(files, file);
        EXPECT_EQ(0, RunIfcore(file.reading, ObeyPermissions).status);
        ASSERT_EQ(0, chmod(files.GetFolder(file).c_str(), 0755));
    }
}

TEST(RefusingSystem, AFileWithoutPermissionToReadIsLeftAsItIs)
{
    SavedFiles const files(10);
    SavedFile const& file = files.GetTable();
    ASSERT_EQ(0, chmod(file.path.c_str(), 0));
    ExpectRefusal(RunIfcore(file.second.command, ObeyPermissions), "reading " + file.path, EACCES);
    ExpectUntouched(files, file);
}

namespace {

/// `tlv apply` has read the table when it opens the message: what happens then is between reading and saving.
class BetweenReadingAndSaving {
public:
    explicit BetweenReadingAndSaving(std::string const& table) : m_message(m_folder / "message")
    {
        if (mkfifo(m_message.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
        m_program.emplace(std::vector<std::string>{IFCORE_PROGRAM, "tlv", "apply", table, m_message});
        m_input = open(m_message.c_str(), O_WRONLY | O_CLOEXEC); // waits until it is opened there
    }
    Result Continue() // with an empty message: the table is saved as it is
    {
        close(m_input);
        return m_program->Wait();
    }

private:
    ScratchFolder m_folder;
    std::string m_message;
    std::optional<Background> m_program;
    int m_input = -1;
};

} // namespace

TEST(RefusingSystem, AFileThatVanishesWhileItIsChangedIsMadeAnew)
{
    SavedFiles const files(10);
    SavedFile const& file = files.GetTable();
    BetweenReadingAndSaving program(file.path);
    std::filesystem::remove(file.path);
    EXPECT_EQ(0, program.Continue().status);
    ExpectUntouched(files, file);
}

TEST(RefusingSystem, AFolderThatVanishesWhileItsFileIsChangedIsNotMadeAnew)
{
    ScratchFolder const outer;
    std::string const folder = outer / "folder";
    SavedFiles const files(10);
    std::filesystem::create_directory(folder);
    WriteFile(folder + "/t", files.GetTable().first.bytes);
    BetweenReadingAndSaving program(folder + "/t");
    std::filesystem::remove_all(folder);
    ExpectRefusal(program.Continue(), "writing " + folder + "/t", ENOENT);
    EXPECT_EQ(Names(), outer.GetNames());
}

TEST(RefusingSystem, AFolderThatTakesThePlaceOfTheFileIsLeftAsItIs)
{
    SavedFiles const files(10);
    SavedFile const& file = files.GetTable();
    BetweenReadingAndSaving program(file.path);
    std::filesystem::remove(file.path);
    std::filesystem::create_directory(file.path);
    Result const result = program.Continue();
    EXPECT_EQ(3, result.status);
    EXPECT_EQ("ifcore: " + file.path + ": is no regular file\n", result.err);
    EXPECT_TRUE(std::filesystem::is_directory(file.path));
    EXPECT_EQ(Names(), files.GetOthers(file));
}

TEST(RefusingSystem, ALinkWhoseFileVanishesStaysALinkToTheFile)
{
    SavedFiles const files(10);
    SavedFile const& file = files.GetTable();
    ScratchFolder const folder;
    std::filesystem::create_symlink(file.path, folder / "absolute");
    std::filesystem::create_symlink("absolute", folder / "relative");
    std::filesystem::create_symlink(folder / "gone/t", folder / "astray");
    std::filesystem::create_symlink("circle", folder / "circle");
    for (char const* link : {"absolute", "relative"}) {
        SCOPED_TRACE(link);
        BetweenReadingAndSaving program(folder / link);
        std::filesystem::remove(file.path);
        EXPECT_EQ(0, program.Continue().status);
        ExpectUntouched(files, file);
        EXPECT_TRUE(std::filesystem::is_symlink(folder / link));
    }
    ExpectRefusal(RunIfcore({"upgrade", files / "raw0", folder / "astray"}), "writing " + (folder / "gone/t"), ENOENT);
    ExpectRefusal(RunIfcore({"upgrade", files / "raw0", folder / "circle"}), "writing " + (folder / "circle"), ELOOP);
    EXPECT_EQ((Names{"absolute", "astray", "circle", "relative"}), folder.GetNames());
    for (char const* link : {"astray", "circle"}) EXPECT_TRUE(std::filesystem::is_symlink(folder / link));
}
