#pragma once

#include <functional>

enum class Ending {
    done,
    archiveError, ///< The host's exception: the bytes did not hold what was asked for.
    fatal         ///< exit() was called.
};

/// Runs \p body, a part of what is done with an input, and says how it ended. The library ends the process when an
/// archive has an unknown version; here that ends \p body alone. Aborts the process when the bounds of the input
/// (bounds.hpp) are passed, to which all its bodies count.
Ending RunGuarded(std::function<void()> const& body);
