#include "guarded.hpp"

#include "bounds.hpp"

#include <string>

Ending RunGuarded(std::function<void()> const& body)
{
    Bounded const bounded;
    std::string printed;
    return RunGuarded(body, printed);
}
