#include "fatalArchive.hpp"

#include "eArchive.hpp"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

namespace {

struct Exited {};

bool guarded = false;

class Guard {
public:
    Guard() { guarded = true; }
    Guard(Guard const&) = delete;
    Guard& operator=(Guard const&) = delete;
    ~Guard() { guarded = false; }
};

using ExitFunction = void (*)(int);

} // namespace

/// The `exit` of the whole program, the library included. Under a name of its own, since that of the C library is
/// declared to throw nothing.
extern "C" [[noreturn, gnu::visibility("default")]] void ExitOrThrow(int status) __asm__("exit");

void ExitOrThrow(int status)
{
    if (guarded) throw Exited();
    reinterpret_cast<ExitFunction>(dlsym(RTLD_NEXT, "exit"))(status);
    std::abort(); // not reached
}

Ending RunGuarded(std::function<void()> const& body)
{
    Guard const guard;
    try {
        body();
        return Ending::done;
    } catch (EArchiveError const&) {
        return Ending::archiveError;
    } catch (Exited const&) {
        return Ending::fatal;
    }
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

int LLVMFuzzerInitialize(int*, char***)
{
    // The fatal message goes to standard output; what the fuzzer has to say goes to standard error.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}
