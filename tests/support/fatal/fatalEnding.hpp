#pragma once

#include <functional>
#include <string>

/// How a call into the library ended.
enum class Ending {
    done,
    archiveError, ///< The host's exception: the bytes did not hold what was asked for.
    parseError,   ///< The exception `int` -1 of messages.
    fatal         ///< The process would have ended with status 1.
};

/// Runs \p body. What the library does to end the process ends \p body alone: the programs that link this link the
/// library statically, and `exit` is wrapped. Any other exception passes through. \p printed receives what went to
/// standard output meanwhile.
Ending RunGuarded(std::function<void()> const& body, std::string& printed);
