#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

// Bad input, made in all ways from good input.

/// How numbers stand in an input.
enum class Numbers {
    archive, ///< As in the archives of the bundled host: 1 to 9 bytes.
    four     ///< 4 bytes, the high one first, as the lengths in messages of TLVs.
};

struct BadInput {
    std::string bytes;
    std::size_t offset; ///< Everything before it is as it was.
    bool isCut;         ///< The input ends there.
};

/// Calls \p check with
/// - every prefix of \p good but itself;
/// - every byte replaced by 00, 7F, 80 and FF, and with each of its bits flipped;
/// - at every offset, since a count may stand at any, the number that begins there replaced by 0, 255, 2^31 - 1,
///   2^32 - 1, 2^64 - 1, and by the number of bytes behind it, one less and one more.
/// What is the same as \p good is left out. Answers how many calls it made; ends early when the test has failed.
std::size_t ForEachBadInput(std::string const& good, Numbers numbers,
                            std::function<void(BadInput const&)> const& check);

/// The names, relative to tests/golden, of the annotated files (.hex) right in \p folder ("" or "program/").
std::vector<std::string> GoldenNames(std::string const& folder);
