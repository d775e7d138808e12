#include "guarded.hpp"

#include "bounds.hpp"

#include "eArchive.hpp"

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

} // namespace

// What the linker makes of `exit` and its callers: --wrap=exit. The C library declares that `exit` throws nothing, so
// that an exception cannot pass a caller that has something to destroy. EArchiveFatal has nothing; it stays a function
// of its own up to -O1, which the presets with sanitizers do not exceed.
extern "C" [[noreturn]] void __real_exit(int status);
extern "C" [[noreturn]] void __wrap_exit(int status);

void __wrap_exit(int status)
{
    if (guarded) throw Exited();
    __real_exit(status);
}

Ending RunGuarded(std::function<void()> const& body)
{
    Guard const guard;
    Bounded const bounded;
    try {
        body();
        return Ending::done;
    } catch (EArchiveError const&) {
        return Ending::archiveError;
    } catch (Exited const&) {
        return Ending::fatal;
    }
}
