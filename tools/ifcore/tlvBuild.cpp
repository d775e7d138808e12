#include "tlvBuild.hpp"

#include "progress.hpp"
#include "replacementFile.hpp"
#include "toolError.hpp"

#include <iostream>
#include <optional>

#include <unistd.h>

namespace ifcoreTool {

namespace {

class Output {
public:
    explicit Output(std::string const& file)
    {
        if (!file.empty())
            m_file.emplace(file);
        else if (isatty(STDOUT_FILENO) == 1)
            throw ToolError(ExitCode::usage, "a message is nothing for a terminal; use -o FILE");
    }
    void Write(Protocol::EBytes const& bytes)
    {
        if (m_file)
            m_file->Write(bytes.data(), bytes.size());
        else if (!std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())))
            throw ToolError(ExitCode::systemRefused, "writing standard output failed");
    }
    void Close()
    {
        if (m_file) m_file->TakePlace();
    }

private:
    std::optional<ReplacementFile> m_file;
};

} // namespace

void WriteInterfaceOperations(EInterfaceTable const& table, std::vector<unsigned int> const& interfaceIds,
                              TLVIds::TLVId const& operation, std::string const& file)
{
    Output output(file);
    Protocol::EBytes bytes;
    Progress progress("building interface", interfaceIds.size());
    for (unsigned int id : interfaceIds) {
        bytes.clear();
        Protocol::AppendInterfaceOpTLV(bytes, operation, *table.GetInterfaceItem(id));
        output.Write(bytes);
        progress.Step();
    }
    output.Close();
}

} // namespace ifcoreTool
