#include "eInterfaceTableHooks.hpp"

EInterfaceTableHooks::~EInterfaceTableHooks() = default;

EIgnoreInterfaceTableHooks::~EIgnoreInterfaceTableHooks() = default;

#define EHOOK(operation, ...)                                                                                          \
    void EIgnoreInterfaceTableHooks::operation(__VA_ARGS__) {}
#include "eInterfaceTableHooks.def"
