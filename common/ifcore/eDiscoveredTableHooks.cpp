#include "eDiscoveredTableHooks.hpp"

EDiscoveredTableHooks::~EDiscoveredTableHooks() = default;

EIgnoreDiscoveredTableHooks::~EIgnoreDiscoveredTableHooks() = default;

#define EHOOK(operation, ...)                                                                                          \
    void EIgnoreDiscoveredTableHooks::operation(__VA_ARGS__) {}
#include "eDiscoveredTableHooks.def"
