#pragma once

#include "fatalEnding.hpp"

/// Runs \p body, a part of what is done with an input, and says how it ended. Aborts the process when the bounds of the
/// input (bounds.hpp) are passed, to which all its bodies count.
Ending RunGuarded(std::function<void()> const& body);
