#include "toolTestSupport.hpp"

#include "golden.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace toolTest {

ScratchFolder::ScratchFolder()
{
    std::string path = (std::filesystem::temp_directory_path() / "ifcore-test.XXXXXX").string();
    if (!mkdtemp(path.data())) throw std::runtime_error("no scratch folder");
    m_path = path;
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::vector<std::string> ScratchFolder::GetNames() const
{
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(m_path)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

Background::Background(std::vector<std::string> arguments, std::function<void()> const& prepare)
{
    std::string const out = m_folder / "out";
    std::string const err = m_folder / "err";
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    m_child = fork();
    if (m_child < 0) throw std::runtime_error("no child process");
    if (m_child == 0) {
        int const outFile = open(out.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        int const errFile = open(err.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        int const inFile = open("/dev/null", O_RDONLY | O_CLOEXEC);
        dup2(inFile, STDIN_FILENO);
        dup2(outFile, STDOUT_FILENO);
        dup2(errFile, STDERR_FILENO);
        if (prepare) prepare();
        execvp(pointers[0], pointers.data());
        _exit(127);
    }
}

Background::~Background()
{
    if (m_child < 0) return;
    kill(m_child, SIGKILL);
    Wait();
}

/// Nothing when the child has not come so far.
static std::string Written(std::string const& path)
{
    return std::filesystem::exists(path) ? FileText(path) : "";
}

std::string Background::GetOut() const
{
    return Written(m_folder / "out");
}

bool Background::WaitForOut(std::string const& text) const
{
    for (int i = 0; i < 1200; ++i) {
        if (GetOut().find(text) != std::string::npos) return true;
        usleep(50000);
    }
    return false;
}

void Background::Signal(int signal) const
{
    kill(m_child, signal);
}

Result Background::Wait()
{
    int status = 0;
    while (waitpid(m_child, &status, 0) < 0 && errno == EINTR) {}
    m_child = -1;
    Result result;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    result.out = Written(m_folder / "out");
    result.err = Written(m_folder / "err");
    return result;
}

Result Run(std::vector<std::string> arguments)
{
    return Background(std::move(arguments)).Wait();
}

Result RunIfcore(std::vector<std::string> arguments, std::function<void()> const& prepare)
{
    arguments.insert(arguments.begin(), IFCORE_PROGRAM);
    return Background(std::move(arguments), prepare).Wait();
}

static std::vector<std::string> Words(std::string const& line)
{
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

void RunIp(std::vector<std::string> const& lines)
{
    for (std::string const& line : lines) {
        Result const result = Run(Words("ip " + line));
        ASSERT_EQ(0, result.status) << "ip " << line << "\n" << result.err;
    }
}

TestNamespace::TestNamespace()
{
    static std::atomic<unsigned int> count{0};
    m_name = "ifcore-test-" + std::to_string(getpid()) + "-" + std::to_string(++count);
    Result const result = Run({"ip", "netns", "add", m_name});
    if (result.status != 0) throw std::runtime_error("ip netns add: " + result.err);
}

TestNamespace::~TestNamespace()
{
    Run({"ip", "netns", "delete", m_name});
}

void TestNamespace::Ip(std::vector<std::string> const& lines) const
{
    std::vector<std::string> inside;
    for (std::string const& line : lines) inside.push_back("-n " + m_name + " " + line);
    RunIp(inside);
}

bool TestNamespace::Permits(std::string const& line) const
{
    return Run(Words("ip -n " + m_name + " " + line)).status == 0;
}

std::string FileText(std::string const& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + path);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void WriteFile(std::string const& path, std::string const& content)
{
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << content;
    if (!stream.flush()) throw std::runtime_error("cannot write " + path);
}

std::string GoldenText(std::string const& name)
{
    return FileText(std::string(IFCORE_GOLDEN_DIR) + "/" + name);
}

std::vector<unsigned char> GoldenBytes(std::string const& name)
{
    std::string const bytes = Golden(name);
    return {bytes.begin(), bytes.end()};
}

} // namespace toolTest
