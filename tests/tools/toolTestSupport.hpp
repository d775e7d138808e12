#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

/// What the tests of the program share: bytes from annotated hexadecimal files, folders and network namespaces of
/// their own, and child processes.
namespace toolTest {

/// A folder of its own under the system's temporary one, removed with all that is in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;

    std::string operator/(std::string const& name) const { return m_path + "/" + name; }
    std::string const& GetPath() const { return m_path; }
    std::vector<std::string> GetNames() const; ///< What is in it, sorted.

private:
    std::string m_path;
};

struct Result {
    int status = -1; ///< Exit status; 128 and the number of the signal that ended it.
    std::string out;
    std::string err;
};

/// A program found by PATH while it runs.
class Background {
public:
    /// \p prepare runs in the child process, before the program.
    explicit Background(std::vector<std::string> arguments, std::function<void()> const& prepare = {});
    ~Background(); ///< Ends it.
    Background(Background const&) = delete;
    Background& operator=(Background const&) = delete;

    pid_t GetId() const { return m_child; }
    std::string GetOut() const;                     ///< So far.
    bool WaitForOut(std::string const& text) const; ///< False when it has not been written within a minute.
    void Signal(int signal) const;
    Result Wait(); ///< Once.

private:
    ScratchFolder m_folder; // of what it writes
    pid_t m_child = -1;
};

/// Runs a program found by PATH and waits for it.
Result Run(std::vector<std::string> arguments);

/// The built program with these arguments.
Result RunIfcore(std::vector<std::string> arguments, std::function<void()> const& prepare = {});

/// Each line is one command of `ip`; a test failure when one is refused.
void RunIp(std::vector<std::string> const& lines);

/// A named network namespace that no other test has, removed at the end. Needs root.
class TestNamespace {
public:
    TestNamespace();
    ~TestNamespace();
    TestNamespace(TestNamespace const&) = delete;
    TestNamespace& operator=(TestNamespace const&) = delete;

    std::string const& GetName() const { return m_name; }
    void Ip(std::vector<std::string> const& lines) const; ///< As RunIp, inside of the namespace.
    bool Permits(std::string const& line) const;          ///< Whether `ip` succeeds with it; a failure is no failure.

private:
    std::string m_name;
};

/// Golden() as the numbers that the program works on.
std::vector<unsigned char> GoldenBytes(std::string const& name);

/// Text of tests/golden/\p name.
std::string GoldenText(std::string const& name);

std::string FileText(std::string const& path);
void WriteFile(std::string const& path, std::string const& content);

} // namespace toolTest
