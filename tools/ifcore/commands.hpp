#pragma once

#include <optional>
#include <string>
#include <vector>

/// What the program's commands do. Each throws ToolError and then has changed nothing.
namespace ifcoreTool {

struct ImportOptions {
    std::optional<std::string> networkNamespace;
    unsigned int port = 0;
    std::string file;
    std::string discovered; ///< File for the discovered table; empty: none.
    bool trace = false;
};
void Import(ImportOptions const& options);

/// Of an interface table or of a discovered one.
struct ShowOptions {
    std::string file;
    std::vector<std::string> names; ///< Ids of interfaces, or "table"; none: an overview.
    bool json = false;
};
void Show(ShowOptions const& options);
void ShowDiscovered(ShowOptions const& options); ///< A discovered table alone.

/// A change of a file.
struct ChangeOptions {
    std::string file;
    bool trace = false;
};
/// [NAME=VALUE]... or ID ipv6 [NAME=VALUE]...
void Add(ChangeOptions const& options, std::vector<std::string> const& words);
/// ID... or ID ipv6 ADDRESS-ID...
void Remove(ChangeOptions const& options, std::vector<std::string> const& words);
/// ID or ID ipv4
void Enable(ChangeOptions const& options, std::vector<std::string> const& words, bool enable);

struct FieldEdit {
    std::string record; ///< Id of an interface, or "table".
    std::string name;   ///< Without "table." for one of the table's own.
    std::string value;
};
void Edit(ChangeOptions const& options, FieldEdit const& edit);

/// Reads a table archive that stands alone, of any version, and writes it as a file in the newest one.
void Upgrade(std::string const& raw, std::string const& file);

void ListFields();

struct TlvBuildOptions {
    std::string file;
    std::optional<std::string> interfaceId; ///< None: all interfaces.
    bool edit = false;                      ///< Each as an Edit, not as an Add.
    std::string output;                     ///< Empty: standard output.
};
void BuildTlvMessage(TlvBuildOptions const& options);

/// A message of another build, or of another host.
struct TlvMessageOptions {
    std::string message; ///< File, or "-" for standard input.
    std::string ids;     ///< File with the sender's ids; empty: this build's own.
};
/// With \p keepPartial the file is also replaced when the message cannot be read to its end.
void ApplyTlvMessage(ChangeOptions const& options, TlvMessageOptions const& message, bool keepPartial);
void DumpTlvMessage(TlvMessageOptions const& message, bool json);

enum class TlvIdFormat { text, json, lua };
void ListTlvIds(TlvIdFormat format);

} // namespace ifcoreTool
