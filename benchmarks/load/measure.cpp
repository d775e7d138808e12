#include "measure.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

void Require(bool condition, char const* what)
{
    if (!condition) throw std::runtime_error(std::string("broken: ") + what);
}

Memory MemoryNow()
{
    Memory memory{-1, -1};
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, "VmRSS:") == 0) memory.resident = std::stol(line.substr(6));
        if (line.compare(0, 6, "VmHWM:") == 0) memory.peak = std::stol(line.substr(6));
    }
    Require(memory.resident > 0 && memory.peak > 0, "the kernel tells the memory of a process");
    return memory;
}

void ForgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5\n";
}

Steps::Steps(std::string const& title)
{
    std::printf("\n%s\n%-44s %11s %9s %12s %10s %10s\n", title.c_str(), "", "count", "s", "per second", "RSS MiB",
                "peak MiB");
}

void Steps::Begin()
{
    ForgetPeak();
    m_begin = std::chrono::steady_clock::now();
}

void Steps::End(std::string const& step, unsigned long count)
{
    std::chrono::duration<double> const time = std::chrono::steady_clock::now() - m_begin;
    Memory const memory = MemoryNow();
    std::printf("%-44s %11lu %9.2f %12.0f %10.1f %10.1f\n", step.c_str(), count, time.count(),
                static_cast<double>(count) / time.count(), static_cast<double>(memory.resident) / 1024,
                static_cast<double>(memory.peak) / 1024);
    std::fflush(stdout);
}

void FlatMemory::Check()
{
    long const growth = MemoryNow().resident - m_afterWarmUp;
    m_most = std::max(m_most, growth);
    if (growth <= kMargin) return;
    throw std::runtime_error("broken: resident memory stays flat: " + std::to_string(growth) + " KiB more than the " +
                             std::to_string(m_afterWarmUp) + " KiB after the warm-up, allowed are " +
                             std::to_string(kMargin));
}

void FlatMemory::Print() const
{
    std::printf("Resident memory grew by %ld KiB at most after the warm-up; %ld KiB are allowed.\n", m_most, kMargin);
}
