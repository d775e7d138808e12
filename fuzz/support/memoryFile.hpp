#pragma once

#include <string>
#include <vector>

/// A file of these bytes that is in no folder, as long as this lives.
class MemoryFile {
public:
    explicit MemoryFile(std::vector<unsigned char> const& bytes);
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    ~MemoryFile();

    std::string const& GetPath() const { return m_path; }

private:
    int m_descriptor;
    std::string m_path;
};
