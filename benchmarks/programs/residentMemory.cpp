// Prints how much memory a table takes for each interface: that of the whole process, before and after it is loaded,
// with the allocator as every program has it.
//
//     ifcore_residentMemory COUNT
#include "sampleTable.hpp"

#include "eArchive.hpp"

#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

static long ResidentBytes()
{
    long pages = 0;
    long residentPages = 0;
    std::ifstream("/proc/self/statm") >> pages >> residentPages;
    return residentPages * sysconf(_SC_PAGESIZE);
}

int main(int argc, char** argv)
{
    long const count = argc == 2 ? std::atol(argv[1]) : 0;
    if (count <= 0) {
        std::cerr << "usage: ifcore_residentMemory COUNT\n";
        return 2;
    }
    EArchive archive;
    archive.SetFromEBlob(Written(*SampleTable(static_cast<unsigned int>(count))), true);
    archive.SetMode(2);
    malloc_trim(0); // what making the archive took
    long const before = ResidentBytes();
    EInterfaceTable table;
    archive >> table;
    std::cout << (ResidentBytes() - before) / count << "\n";
    return table.GetCount() == static_cast<std::size_t>(count) ? 0 : 1;
}
