#include "progress.hpp"

#include <gtest/gtest.h>

#include <thread>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

using namespace ifcoreTool;

namespace {

/// Standard error is a terminal, whose other end this holds.
class TerminalForErrors {
public:
    TerminalForErrors()
    {
        int terminal = -1;
        EXPECT_EQ(0, openpty(&m_master, &terminal, nullptr, nullptr, nullptr));
        fcntl(m_master, F_SETFL, O_NONBLOCK);
        m_saved = dup(STDERR_FILENO);
        dup2(terminal, STDERR_FILENO);
        close(terminal);
    }
    ~TerminalForErrors()
    {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
        close(m_master);
    }
    std::string Read() const
    {
        char text[4096];
        ssize_t const count = read(m_master, text, sizeof text);
        return count > 0 ? std::string(text, static_cast<std::size_t>(count)) : "";
    }

private:
    int m_master = -1;
    int m_saved = -1;
};

} // namespace

TEST(Progress, ShowsItselfOnATerminalAfterASecondAndIsWipedOut)
{
    TerminalForErrors const terminal;
    {
        Progress progress("importing link", 3);
        progress.Step();
        EXPECT_EQ("", terminal.Read());
        std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        progress.Step();
        EXPECT_EQ("\r\033[Kimporting link 2 of 3", terminal.Read());
        progress.Step(); // too soon after the last one
        EXPECT_EQ("", terminal.Read());
    }
    EXPECT_EQ("\r\033[K", terminal.Read());
}

TEST(Progress, QuickWorkShowsNothing)
{
    TerminalForErrors const terminal;
    {
        Progress progress("importing link", 2);
        progress.Step();
        progress.Step();
    }
    EXPECT_EQ("", terminal.Read());
}
