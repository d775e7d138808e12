#pragma once

#include "eArchive.hpp"

#include <vector>

MINIMAL_HOST_API std::vector<void (*)()>& GetTLVParserMapTable();
