#include "fatalEnding.hpp"

#include "eArchive.hpp"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

struct Exited {
    int status;
};

/// Standard output goes into memory as long as it lives, and `exit` throws.
class Guard {
public:
    Guard() : m_saved(stdout)
    {
        stdout = Memory();
        s_alive = true;
    }
    Guard(Guard const&) = delete;
    Guard& operator=(Guard const&) = delete;
    ~Guard()
    {
        s_alive = false;
        stdout = m_saved;
    }
    static bool IsAlive() { return s_alive; }
    static std::string TakePrinted()
    {
        long const size = std::ftell(Memory());
        if (size <= 0) return std::string();
        std::fflush(Memory());
        std::rewind(Memory());
        return std::string(s_text, static_cast<std::size_t>(size));
    }

private:
    static std::FILE* Memory()
    {
        static std::FILE* const memory = fmemopen(s_text, sizeof s_text, "w");
        if (!memory) throw std::runtime_error("fmemopen");
        return memory;
    }
    static bool s_alive;
    static char s_text[4096];

    std::FILE* m_saved;
};
bool Guard::s_alive = false;
char Guard::s_text[4096];

} // namespace

// The linker's names for `exit` as the library calls it, and for that of the C library (-Wl,--wrap=exit).
extern "C" [[noreturn]] void __real_exit(int status);
extern "C" [[noreturn]] void __wrap_exit(int status);

void __wrap_exit(int status)
{
    if (Guard::IsAlive()) throw Exited{status};
    __real_exit(status);
}

Ending RunGuarded(std::function<void()> const& body, std::string& printed)
{
    Ending ending = Ending::done;
    Guard const guard;
    try {
        body();
    } catch (EArchiveError const&) {
        ending = Ending::archiveError;
    } catch (Exited const& exited) {
        if (exited.status != 1) throw std::runtime_error("exit status " + std::to_string(exited.status));
        ending = Ending::fatal;
    } catch (int error) {
        if (error != -1) throw;
        ending = Ending::parseError;
    }
    printed = Guard::TakePrinted();
    return ending;
}
