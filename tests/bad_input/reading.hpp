#pragma once

#include "badInput.hpp"
#include "fatalEnding.hpp"

#include <functional>
#include <string>

/// What is done with one bad input. It runs what may end in a bad way by Guarded, and answers how that ended.
using Reading = std::function<Ending(BadInput const&)>;

/// Each bad form of a golden input, read. Any exception but the two errors fails the test, and so does an input that
/// needs more than kBaseBytes + kBytesPerByte * its size of memory at a time.
void CheckReading(std::string const& good, Numbers numbers, Reading const& read);

std::size_t const kBaseBytes = 24 * 1024; // the table that a command or message finds, an error's text
std::size_t const kBytesPerByte = 64;

/// Runs \p body: what it prints must be the fatal message, and only when it ends by it.
Ending Guarded(std::function<void()> const& body);
