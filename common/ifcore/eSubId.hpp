#pragma once

#include <vector>

/// A position in the edit sub-id of a command. Every ProcessEdit takes a range of two: the first element picks the
/// field, what follows is the rest of the way into a contained record.
using ESubId = std::vector<unsigned int>::const_iterator;
