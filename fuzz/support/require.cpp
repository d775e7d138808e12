#include "require.hpp"

#include <cstdio>
#include <cstdlib>

void Require(bool condition, char const* rule)
{
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}
