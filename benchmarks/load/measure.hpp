#pragma once

#include "eArchive.hpp"
#include "eBlob.hpp"

#include <chrono>
#include <string>

/// What a run promises; otherwise it ends with an exception that says what was broken.
void Require(bool condition, char const* what);

/// Of this process, in KiB, as the kernel counts it.
struct Memory {
    long resident; ///< VmRSS
    long peak;     ///< VmHWM: the most that it has been
};
Memory MemoryNow();
void ForgetPeak(); ///< The peak begins anew with what is resident.

/// Prints a line for each step of a run: what, how many, how long, and the memory at its end and at its highest.
class Steps {
public:
    explicit Steps(std::string const& title);

    template <class Work> void Run(std::string const& step, unsigned long count, Work const& work)
    {
        Begin();
        work();
        End(step, count);
    }
    void Begin();
    void End(std::string const& step, unsigned long count);

private:
    std::chrono::steady_clock::time_point m_begin;
};

/// Watches that the memory of a run that goes on and on stays where it was after the warm-up.
class FlatMemory {
public:
    void EndWarmUp() { m_afterWarmUp = MemoryNow().resident; }
    void Check(); ///< After the warm-up.
    void Print() const;

    static constexpr long kMargin = 4096; // KiB

private:
    long m_afterWarmUp = 0;
    long m_most = 0; // growth
};

template <class Record> EBlob Written(Record const& record)
{
    EArchive archive;
    archive << record;
    return archive.GetAsEBlob();
}

template <class Record> void ReadInto(Record& record, EBlob const& bytes)
{
    EArchive archive;
    archive.SetFromEBlob(bytes, true);
    archive.SetMode(2);
    archive >> record;
    Require(archive.AtEnd(), "an archive is read to its end");
}
