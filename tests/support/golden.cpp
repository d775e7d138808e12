#include "golden.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

std::string Bytes(std::string const& hex)
{
    std::string bytes;
    std::string digits;
    bool comment = false;
    for (char const c : hex) {
        if (c == '#') comment = true;
        if (c == '\n') comment = false;
        if (comment || std::isspace(static_cast<unsigned char>(c))) continue;
        if (!std::isxdigit(static_cast<unsigned char>(c))) throw std::invalid_argument(hex);
        digits += c;
        if (digits.size() < 2) continue;
        bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
        digits.clear();
    }
    if (!digits.empty()) throw std::invalid_argument("half a byte: " + hex);
    return bytes;
}

/// The text of a golden file, with the text of each file that a line names after "@" in its place.
static std::string GoldenText(std::string const& fileName)
{
    std::ifstream file(std::string(IFCORE_GOLDEN_DIR "/") + fileName);
    if (!file) throw std::runtime_error("no golden file " + fileName);
    std::string text;
    for (std::string line; std::getline(file, line);) {
        std::string word;
        std::istringstream(line) >> word;
        text += (word[0] == '@' ? GoldenText(word.substr(1)) : line) + "\n";
    }
    return text;
}

std::string Golden(std::string const& fileName)
{
    return Bytes(GoldenText(fileName));
}

ChildResult RunInChild(std::function<void()> const& body)
{
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
    std::fflush(nullptr);
    pid_t const child = fork();
    if (child < 0) throw std::runtime_error("fork");
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        body();
        std::fflush(nullptr);
        _exit(0); // nothing of the parent's is run twice
    }
    close(ends[1]);
    ChildResult result;
    char buffer[512];
    for (ssize_t count = read(ends[0], buffer, sizeof buffer); count > 0; count = read(ends[0], buffer, sizeof buffer))
        result.output.append(buffer, static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
    return result;
}

std::string FatalArchiveMessage(std::string const& file, int line, std::string const& function)
{
    return "*** Exception in FILE " + file + ", LINE " + std::to_string(line) + ":\n" + function +
           " - EArchive::SerializeError()\n";
}
