#include "discoveredCommands.hpp"

#include "discoveredTracingHooks.hpp"
#include "discoveredWatcher.hpp"
#include "interruptibleOutput.hpp"
#include "networkNamespace.hpp"
#include "tableFile.hpp"
#include "textTable.hpp"

#include <filesystem>
#include <iostream>
#include <limits>
#include <memory>
#include <ostream>

#include <unistd.h>

namespace ifcoreTool {

namespace {

/// The sockets of one network namespace. The events come first, so that nothing happens unnoticed between the two.
struct KernelSockets {
    explicit KernelSockets(EndSignals& signals) : events(signals) {}
    KernelNetlinkEvents events;
    KernelNetlinkSource dumps;
};

std::unique_ptr<KernelSockets> OpenSockets(std::optional<std::string> const& networkNamespace, EndSignals& signals)
{
    std::optional<NetworkNamespace> inside;
    if (networkNamespace) inside.emplace(*networkNamespace);
    return std::make_unique<KernelSockets>(signals);
}

/// The messages of a watch in a file. Without a path it keeps nothing.
class Recording {
public:
    explicit Recording(std::string const& path)
    {
        if (!path.empty()) m_file.emplace(path, ArchiveKind::changeStream);
    }
    void Append(EBlob const& message)
    {
        if (!m_file) return;
        // More could not be read as one archive.
        if (m_file->GetLength() + message.GetSize() > std::numeric_limits<unsigned int>::max())
            throw ToolError(ExitCode::systemRefused, "the recording is full: it holds 4 GiB");
        m_file->Append(message.GetData(), message.GetSize());
    }
    /// What a watch leaves behind that never began is no recording.
    void TakePlace()
    {
        if (m_file && m_file->GetLength() != 0) m_file->TakePlace();
    }

private:
    std::optional<ArchiveFileWriter> m_file;
};

} // namespace

void Watch(WatchOptions const& options)
{
    EndSignals signals; // before the recording has begun, which they would leave behind
    Recording recording(options.recording);
    std::unique_ptr<KernelSockets> const sockets = OpenSockets(options.networkNamespace, signals);
    DiscoveredWatcher watcher(sockets->dumps, sockets->events);
    InterruptibleOutput written(STDOUT_FILENO, signals);
    std::ostream out(&written);
    auto const print = options.json ? PrintCallJson : PrintCall;
    watcher.GetTable().hooks = MakeDiscoveredTracingHooks(
        [&](DiscoveredCall const& call) { print(out, call, watcher.GetLinkName(call.interfaceId)); });
    watcher.onMessage = [&](EBlob const& message) { recording.Append(message); };
    try {
        watcher.Run(out, std::cerr);
    } catch (std::exception const&) {
        recording.TakePlace();
        throw;
    }
    recording.TakePlace();
}

void ApplyDiscoveredStream(ApplyStreamOptions const& options)
{
    EDiscoveredTable table;
    if (std::filesystem::exists(options.file)) LoadTable(options.file, table);
    if (options.trace)
        table.hooks = MakeDiscoveredTracingHooks([](DiscoveredCall const& call) { PrintCall(std::cout, call, ""); });
    ApplyChangeStream(options.stream, table);
    SaveTable(options.file, table);
}

ExitCode DiffDiscovered(std::string const& first, std::string const& second)
{
    EDiscoveredTable before;
    LoadTable(first, before);
    EDiscoveredTable after;
    LoadTable(second, after);
    NamedChanges const differences = Differences(&before, &after);
    for (NamedChange const& difference : differences) std::cout << Printable(ChangeText(difference)) << "\n";
    return differences.empty() ? ExitCode::done : ExitCode::different;
}

} // namespace ifcoreTool
