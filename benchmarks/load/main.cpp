// Large tables, and small ones for a long time: figures, and a failure when a result or the memory is not as promised.
//
//     ifcore_load [DIVISOR]        all sizes and counts divided by DIVISOR, for a quick look
#include "loads.hpp"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/// In a process of its own, so that the memory of one run is not that of the one before.
static bool RunAlone(std::function<void()> const& load)
{
    std::fflush(stdout);
    pid_t const child = fork();
    if (child < 0) return false;
    if (child == 0) {
        int status = EXIT_SUCCESS;
        try {
            load();
        } catch (std::exception const& error) {
            std::fflush(stdout);
            std::fprintf(stderr, "ifcore_load: %s\n", error.what());
            status = EXIT_FAILURE;
        }
        std::fflush(stdout);
        _exit(status);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

int main(int argc, char** argv)
{
    unsigned int const divisor = argc > 1 ? static_cast<unsigned int>(std::strtoul(argv[1], nullptr, 10)) : 1;
    if (argc > 2 || divisor < 1 || divisor > 1000) {
        std::fprintf(stderr, "usage: ifcore_load [DIVISOR]     from 1 to 1000\n");
        return 2;
    }
    std::function<void()> const loads[] = {
        [divisor] { LoadOneTable(1'000'000 / divisor); },
        [divisor] { LoadCommands(10'000 / divisor, 10'000'000 / divisor); },
        [divisor] { LoadDiscovered(100'000 / divisor, 10'000'000 / divisor); },
    };
    bool passed = true;
    for (auto const& load : loads) passed &= RunAlone(load);
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
