#include "target.hpp"

#include "bounds.hpp"

#include <cstdio>
#include <cstdlib>

int LLVMFuzzerInitialize(int*, char***)
{
    std::atexit(PrintMost);
    // The fatal message goes to standard output; what the fuzzer has to say goes to standard error.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    BeginInput(size);
    TestInput(data, size);
    return 0;
}
