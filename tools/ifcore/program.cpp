#include "program.hpp"

#include "commands.hpp"
#include "toolError.hpp"

#include <CLI/CLI.hpp>

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
};

void AddImport(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("import", "take the kernel's interfaces into a new table");
    ImportOptions& options = line.imported;
    command->add_option("--netns", options.networkNamespace, "of this network namespace, a name under /run/netns");
    command->add_option("--port", options.port, "port id of the table")->capture_default_str();
    command->add_option("-o,--output", options.file, "file to write")->required();
    command->add_flag("--trace", options.trace, "print every observer call with old and new value");
    command->callback([&line] { Import(line.imported); });
}

void AddShow(CLI::App& app, CommandLine& line)
{
    CLI::App* command = app.add_subcommand("show", "show all interfaces in a line each, or all of the named ones");
    command->add_option("FILE", line.shown.file, "interface table file")->required();
    command->add_option("ID", line.shown.names, "interface ids; `table` is the table's own settings");
    command->add_flag("--json", line.shown.json, "as JSON");
    command->callback([&line] { Show(line.shown); });
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
    CLI::App app("Interface tables of a network port: taken from the kernel, shown, changed.", "ifcore");
    app.set_version_flag("--version", "ifcore " IFCORE_VERSION);
    app.require_subcommand(1);
    CommandLine line;
    AddImport(app, line);
    AddShow(app, line);
    AddChanges(app, line);
    AddUpgrade(app, line);
    app.add_subcommand("fields", "list all fields with their types and units")->callback(ListFields);
    try {
        app.parse(ReversedArguments(argc, argv));
        if (!std::cout.flush()) return Fail(ExitCode::systemRefused, "writing standard output failed");
        return static_cast<int>(ExitCode::done);
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
