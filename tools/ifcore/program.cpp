#include "program.hpp"

#include "commands.hpp"
#include "discoveredCommands.hpp"
#include "toolError.hpp"

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace ifcoreTool {

namespace {

/// Options of all commands; filled while the command line is read.
struct CommandLine {
    ImportOptions imported;
    ShowOptions shown;
    ChangeOptions change;
    std::vector<std::string> words;
    FieldEdit edited;
    std::string raw;
    std::string upgraded;
    TlvBuildOptions built;
    TlvMessageOptions message;
    bool all = false;
    bool keepPartial = false;
    bool json = false;
    bool lua = false;
    WatchOptions watched;
    ApplyStreamOptions applied;
    std::string first;
    std::string second;
    ExitCode status = ExitCode::done;
};

void AddImport(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("import", "take the kernel's interfaces into a new table");
    ImportOptions& options = line.imported;
    command->add_option("--netns", options.networkNamespace, "of this network namespace, a name under /run/netns");
    command->add_option("--port", options.port, "port id of the table")->capture_default_str();
    command->add_option("-o,--output", options.file, "file to write")->required();
    command->add_option("--discovered", options.discovered, "file for link states, addresses and neighbours");
    command->add_flag("--trace", options.trace, "print every observer call with old and new value");
    command->callback([&line] { Import(line.imported); });
}

void AddShowOptions(CLI::App& command, CommandLine& line, char const* file)
{
    command.add_option("FILE", line.shown.file, file)->required();
    command.add_option("ID", line.shown.names, "interface ids; `table` is the table's own settings");
    command.add_flag("--json", line.shown.json, "as JSON");
}

void AddShow(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("show", "show all interfaces in a line each, or all of the named ones");
    AddShowOptions(*command, line, "file of an interface table or of a discovered table");
    command->callback([&line] { Show(line.shown); });
}

void AddWatch(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("watch", "follow links, addresses and neighbours, until a signal");
    command->add_option("--netns", line.watched.networkNamespace, "of this network namespace, a name under /run/netns");
    command->add_option("--record", line.watched.recording, "change-stream file to write");
    command->add_flag("--json", line.watched.json, "a JSON object a line");
    command->callback([&line] { Watch(line.watched); });
}

void AddDiscovered(CLI::App& app, CommandLine& line)
{
    CLI::App* discovered = app.add_subcommand("discovered", "tables of link states, addresses and neighbours");
    discovered->require_subcommand(1);

    CLI::App* show = discovered->add_subcommand("show", "show all interfaces in a line each, or all of the named ones");
    AddShowOptions(*show, line, "discovered table file");
    show->callback([&line] { ShowDiscovered(line.shown); });

    CLI::App* apply = discovered->add_subcommand("apply", "apply a recorded change stream");
    apply->add_option("FILE", line.applied.file, "discovered table file, made when it is not there")->required();
    apply->add_option("STREAM", line.applied.stream, "change-stream file")->required();
    apply->add_flag("--trace", line.applied.trace, "print every observer call with old and new value");
    apply->callback([&line] { ApplyDiscoveredStream(line.applied); });

    CLI::App* diff = discovered->add_subcommand("diff", "print what differs; status 5 when something does");
    diff->add_option("A", line.first, "discovered table file")->required();
    diff->add_option("B", line.second, "discovered table file")->required();
    diff->callback([&line] { line.status = DiffDiscovered(line.first, line.second); });
}

/// A command that changes a file.
CLI::App& AddChange(CLI::App& app, CommandLine& line, char const* name, char const* description)
{
    CLI::App* command = app.add_subcommand(name, description);
    command->add_option("FILE", line.change.file, "interface table file")->required();
    command->add_flag("--trace", line.change.trace, "print every observer call with old and new value");
    return *command;
}

CLI::Option* AddWords(CLI::App& command, CommandLine& line, char const* description)
{
    return command.add_option("WORDS", line.words, description);
}

void AddChanges(CLI::App& app, CommandLine& line)
{
    CLI::App& add = AddChange(app, line, "add", "add an interface or an IPv6 address");
    AddWords(add, line, "[NAME=VALUE]... or ID ipv6 [NAME=VALUE]...");
    add.callback([&line] { Add(line.change, line.words); });

    CLI::App& remove = AddChange(app, line, "remove", "remove interfaces or IPv6 addresses");
    AddWords(remove, line, "ID... or ID ipv6 ADDRESS-ID...")->required();
    remove.callback([&line] { Remove(line.change, line.words); });

    CLI::App& enable = AddChange(app, line, "enable", "switch an interface or its IPv4 address on");
    AddWords(enable, line, "ID or ID ipv4")->required()->expected(1, 2);
    enable.callback([&line] { Enable(line.change, line.words, true); });

    CLI::App& disable = AddChange(app, line, "disable", "switch an interface or its IPv4 address off");
    AddWords(disable, line, "ID or ID ipv4")->required()->expected(1, 2);
    disable.callback([&line] { Enable(line.change, line.words, false); });

    CLI::App& edit = AddChange(app, line, "edit", "change one field");
    // Each a word of its own, not a list: CLI11 takes lists in brackets apart, and a value may be one in JSON.
    edit.add_option("RECORD", line.edited.record, "interface id, or `table`")->required();
    edit.add_option("NAME", line.edited.name, "field; `ifcore fields` lists them")->required();
    edit.add_option("VALUE", line.edited.value, "new value")->required();
    edit.callback([&line] { Edit(line.change, line.edited); });
}

void AddUpgrade(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("upgrade", "turn a table archive of any version into a file");
    command->add_option("RAW", line.raw, "table archive without header and checksum")->required();
    command->add_option("FILE", line.upgraded, "file to write")->required();
    command->callback([&line] { Upgrade(line.raw, line.upgraded); });
}

void AddTlvMessage(CLI::App& command, CommandLine& line)
{
    command.add_option("MESSAGE", line.message.message, "file with the message; - is standard input")->required();
    command.add_option("--ids", line.message.ids, "the sender's ids, as `ifcore tlv ids --json` prints them there");
}

void AddTlv(CLI::App& app, CommandLine& line)
{
    CLI::App* tlv = app.add_subcommand("tlv", "messages to and from protocol engines");
    tlv->require_subcommand(1);

    CLI::App* build = tlv->add_subcommand("build", "build the operation that adds an interface, or edits it");
    build->add_option("FILE", line.built.file, "interface table file")->required();
    CLI::Option* id = build->add_option("ID", line.built.interfaceId, "interface id");
    CLI::Option* all = build->add_flag("--all", line.all, "all interfaces, one operation each")->excludes(id);
    build->add_flag("--edit", line.built.edit, "as Edit, not as Add");
    build->add_option("-o,--output", line.built.output, "file to write; without it, standard output");
    build->callback([&line, id, all] {
        if (id->count() + all->count() == 0) throw CLI::RequiredError("ID or --all");
        BuildTlvMessage(line.built);
    });

    CLI::App& apply = AddChange(*tlv, line, "apply", "apply a message of operations to the table");
    AddTlvMessage(apply, line);
    apply.add_flag("--keep-partial", line.keepPartial, "save also what comes before an error in the message");
    apply.callback([&line] { ApplyTlvMessage(line.change, line.message, line.keepPartial); });

    CLI::App* dump = tlv->add_subcommand("dump", "show a message as a tree");
    AddTlvMessage(*dump, line);
    dump->add_flag("--json", line.json, "as JSON");
    dump->callback([&line] { DumpTlvMessage(line.message, line.json); });

    CLI::App* ids = tlv->add_subcommand("ids", "list the ids of this build with their numbers");
    CLI::Option* json = ids->add_flag("--json", line.json, "as JSON");
    ids->add_flag("--lua", line.lua, "as a Lua table")->excludes(json);
    ids->callback([&line] {
        ListTlvIds(line.json ? TlvIdFormat::json : line.lua ? TlvIdFormat::lua : TlvIdFormat::text);
    });
}

/// The arguments, last first, as CLI11 takes them. A negative number would be taken for an option; it can only be the
/// value of an edit, which is the last word, and is put there behind "--".
std::vector<std::string> ReversedArguments(int argc, char const* const* argv)
{
    std::vector<std::string> words;
    std::vector<std::string> negative;
    bool verbatim = false;
    for (int i = 1; i < argc; ++i) {
        std::string const word = argv[i];
        if (word == "--") verbatim = true;
        bool const isNegative = !verbatim && word.size() > 1 && word[0] == '-' && word[1] >= '0' && word[1] <= '9';
        (isNegative ? negative : words).push_back(word);
    }
    if (!negative.empty() && !verbatim) words.push_back("--");
    words.insert(words.end(), negative.begin(), negative.end());
    return {words.rbegin(), words.rend()};
}

int Fail(ExitCode code, std::string const& message)
{
    std::cout.flush(); // what was traced comes first when both go to one place
    std::cerr << "ifcore: " << message << "\n";
    return static_cast<int>(code);
}

} // namespace

int RunProgram(int argc, char const* const* argv)
{
    signal(SIGXFSZ, SIG_IGN); // a file that may not grow is a refusal of the system, not the end of the process
    CLI::App app("Interface tables of a network port: taken from the kernel, shown, changed.", "ifcore");
    app.set_version_flag("--version", "ifcore " IFCORE_VERSION);
    app.require_subcommand(1);
    CommandLine line;
    AddImport(app, line);
    AddShow(app, line);
    AddChanges(app, line);
    AddUpgrade(app, line);
    app.add_subcommand("fields", "list all fields with their types and units")->callback(ListFields);
    AddTlv(app, line);
    AddWatch(app, line);
    AddDiscovered(app, line);
    try {
        app.parse(ReversedArguments(argc, argv));
        if (!std::cout.flush()) return Fail(ExitCode::systemRefused, "writing standard output failed");
        return static_cast<int>(line.status);
    } catch (CLI::ParseError const& error) {
        int const status = app.exit(error);
        return status == 0 ? 0 : static_cast<int>(ExitCode::usage);
    } catch (ToolError const& error) {
        return Fail(error.GetCode(), error.what());
    } catch (std::bad_alloc const&) {
        return Fail(ExitCode::systemRefused, "out of memory");
    } catch (std::exception const& error) {
        return Fail(ExitCode::systemRefused, error.what());
    }
}

} // namespace ifcoreTool
