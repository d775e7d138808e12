#include "progress.hpp"

#include <gtest/gtest.h>

#include <poll.h>
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
    /// All that has been written so far: what comes before a mark that is written now.
    std::string Written() const
    {
        EXPECT_EQ(1, write(STDERR_FILENO, "#", 1));
        std::string text;
        pollfd end = {m_master, POLLIN, 0};
        while (text.find('#') == std::string::npos && poll(&end, 1, 10000) == 1) {
            char piece[256];
            ssize_t const count = read(m_master, piece, sizeof piece);
            if (count <= 0) break;
            text.append(piece, static_cast<std::size_t>(count));
        }
        return text.substr(0, text.find('#'));
    }

private:
    int m_master = -1;
    int m_saved = -1;
};

Progress::Clock::time_point theTime;

Progress::Clock::time_point TheTime()
{
    return theTime;
}

} // namespace

TEST(Progress, ShowsItselfOnATerminalAfterASecondAndIsWipedOut)
{
    struct {
        int milliseconds; // since the step before
        char const* written;
    } const steps[] = {{999, ""},
                       {1, "\r\033[Kimporting link 2 of 5"},
                       {99, ""}, // too soon after the last one
                       {1, "\r\033[Kimporting link 4 of 5"},
                       {5000, "\r\033[Kimporting link 5 of 5"}};
    TerminalForErrors const terminal;
    {
        Progress progress("importing link", 5, TheTime);
        for (auto const& step : steps) {
            theTime += std::chrono::milliseconds(step.milliseconds);
            progress.Step();
            EXPECT_EQ(step.written, terminal.Written());
        }
    }
    EXPECT_EQ("\r\033[K", terminal.Written());
}

TEST(Progress, QuickWorkShowsNothing)
{
    TerminalForErrors const terminal;
    {
        Progress progress("importing link", 2);
        progress.Step();
        progress.Step();
    }
    EXPECT_EQ("", terminal.Written());
}

TEST(Progress, WithoutAKnownEndTellsHowManyAreDone)
{
    TerminalForErrors const terminal;
    {
        Progress progress("applying operation", std::nullopt, TheTime);
        progress.Step();
        theTime += std::chrono::milliseconds(1000);
        progress.Step();
        EXPECT_EQ("\r\033[Kapplying operation 2", terminal.Written());
    }
    EXPECT_EQ("\r\033[K", terminal.Written());
}
