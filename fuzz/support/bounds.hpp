#pragma once

#include <cstddef>

// What one input may cost. Counted while a Bounded is there, so that the checks of a target do not count.

constexpr double kMostSeconds = 1; ///< Of the thread's processor time: other load of the machine makes nothing slower.
constexpr std::size_t kMostBytes = 256UL << 20; ///< Of the heap at one time,
constexpr std::size_t kBytesPerByte = 512;      ///< and this for each byte of the input.

/// Before an input of \p size bytes.
void BeginInput(std::size_t size);

/// Aborts the process when the input has taken more: of memory at once, of time at the end. Memory is counted where the
/// address sanitizer allocates it.
class Bounded {
public:
    Bounded();
    Bounded(Bounded const&) = delete;
    Bounded& operator=(Bounded const&) = delete;
    ~Bounded();

private:
    double m_start; // seconds
};

/// The most that inputs have taken so far, in one line on standard error.
void PrintMost();
