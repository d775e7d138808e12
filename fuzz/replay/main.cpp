// Hands each file of the named folders to a fuzz target, once. A folder that is missing holds none; replaying nothing
// at all is an error.
#include "target.hpp"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

static std::set<fs::path> FilesOf(fs::path const& folder)
{
    std::set<fs::path> files;
    if (!fs::is_directory(folder)) return files;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files.insert(entry.path());
    return files;
}

static void Replay(fs::path const& file)
{
    std::ifstream in(file, std::ios::binary);
    std::string const read{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    std::vector<char> const bytes(read.begin(), read.end()); // no room behind them that could be read unnoticed
    std::fprintf(stderr, "%s, %zu bytes\n", file.c_str(), bytes.size()); // before, so that the last one is the culprit
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
}

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize(&argc, &argv) != 0) return 1;
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i)
        for (fs::path const& file : FilesOf(argv[i])) {
            Replay(file);
            ++count;
        }
    std::fprintf(stderr, "%zu files replayed\n", count);
    return count > 0 ? 0 : 1;
}
