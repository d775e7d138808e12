#pragma once

#include <cstddef>
#include <cstdint>

/// Defined by each fuzz target: does with one input what the target is for. Aborts the process when a rule is broken.
void TestInput(std::uint8_t const* data, std::size_t size);

// What libFuzzer calls, and the replay of files like it.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);
