#pragma once

/// Aborts the process unless the rule holds, so that the fuzzer keeps the input.
void Require(bool condition, char const* rule);
