#pragma once

#include <functional>

/// Runs \p body and says how it ended. The library ends the process when an archive has an unknown version; here that
/// ends \p body alone.
enum class Ending {
    done,
    archiveError, ///< The host's exception: the bytes did not hold what was asked for.
    fatal         ///< exit() was called.
};
Ending RunGuarded(std::function<void()> const& body);
