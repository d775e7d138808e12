#pragma once

#include "toolTestSupport.hpp"

#include <string>
#include <vector>

namespace toolTest {

/// A file that a command of the program saves, with one of two contents.
struct SavedFile {
    std::string kind;
    std::string path;
    struct Content {
        std::vector<std::string> command; ///< Makes the file hold it.
        std::string bytes;
    };
    Content first;
    Content second;
    std::vector<std::string> reading; ///< The command that succeeds when the file is whole.

    bool HoldsEither() const; ///< Exactly one of the two.
};

/// One file of each kind that the program saves, alone in its folder, with the first content.
class SavedFiles {
public:
    /// The size of the tables that are saved.
    explicit SavedFiles(unsigned int interfaces);

    std::vector<SavedFile> const& GetAll() const { return m_files; }
    SavedFile const& GetTable() const { return m_files.front(); } ///< The interface table that `edit` saves.
    std::string const& GetFolder(SavedFile const& file) const;
    /// What is in the folder of the file, but for the file itself.
    std::vector<std::string> GetOthers(SavedFile const& file) const;
    std::string operator/(std::string const& name) const { return m_inputs / name; } ///< What the commands read.

private:
    void Add(std::string const& kind, SavedFile::Content const& first, SavedFile::Content const& second,
             std::vector<std::string> const& reading);

    static constexpr std::size_t kKinds = 4;
    ScratchFolder m_inputs;
    ScratchFolder m_folders[kKinds];
    std::vector<SavedFile> m_files;
};

} // namespace toolTest
