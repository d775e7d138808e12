// The input is a byte that says how the program reads what follows it, and that: a file (docs/file-format.md).
//
//     0  interface table          4  interface table without an envelope
//     1  discovered table         5  table of TLV ids
//     2  either of these          6  message of TLVs, with this build's ids
//     3  change stream            7  length (two bytes, the high one first) and table of TLV ids, message with those
//
// With 0x80 in that byte, length and checksum of the envelope are put right before the file is read.
#include "support/archives.hpp"
#include "support/discoveredChecks.hpp"
#include "support/guarded.hpp"
#include "support/memoryFile.hpp"
#include "support/require.hpp"
#include "support/tableChecks.hpp"
#include "support/target.hpp"

#include "discoveredValues.hpp"
#include "discoveredView.hpp"
#include "recordRef.hpp"
#include "tableFile.hpp"
#include "tableView.hpp"
#include "tlvApply.hpp"
#include "tlvDump.hpp"
#include "tlvWalk.hpp"
#include "toolError.hpp"

#include "tlvParserMapTable.hpp"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <sstream>

using namespace ifcoreTool;

namespace {

constexpr std::size_t kLengthOffset = 16;
constexpr std::size_t kHeaderSize = 24;
constexpr std::size_t kChecksumSize = 4;

// ---- Envelope -------------------------------------------------------------------------------------------------------

Bytes BigEndian(unsigned long value, unsigned int size)
{
    Bytes bytes;
    for (unsigned int i = size; i-- > 0;) bytes.push_back(static_cast<unsigned char>(value >> (8 * i)));
    return bytes;
}

Bytes Length(Bytes const& file)
{
    return BigEndian(file.size() - kHeaderSize - kChecksumSize, 8);
}

Bytes Checksum(Bytes const& file)
{
    return BigEndian(crc32_z(0, file.data(), file.size() - kChecksumSize), kChecksumSize);
}

void Repair(Bytes& file)
{
    if (file.size() < kHeaderSize + kChecksumSize) return;
    Bytes const length = Length(file);
    std::copy(length.begin(), length.end(), file.begin() + kLengthOffset);
    Bytes const checksum = Checksum(file);
    std::copy(checksum.begin(), checksum.end(), file.end() - kChecksumSize);
}

Bytes Header(ArchiveKind kind)
{
    Bytes header{'I', 'F', 'C', 'O', 'R', 'E', 0x1a, '\n', 0, 0, 0, 1};
    Bytes const number = BigEndian(static_cast<unsigned long>(kind), 4);
    header.insert(header.end(), number.begin(), number.end());
    return header;
}

Bytes Enveloped(ArchiveKind kind, EBlob const& archive)
{
    Bytes file = Header(kind);
    file.resize(kHeaderSize);
    file.insert(file.end(), archive.GetData(), archive.GetData() + archive.GetSize());
    file.resize(file.size() + kChecksumSize);
    Repair(file);
    return file;
}

bool IsWhole(Bytes const& file, ArchiveKind kind)
{
    if (file.size() < kHeaderSize + kChecksumSize) return false;
    Bytes const header = Header(kind);
    Bytes const length = Length(file);
    Bytes const checksum = Checksum(file);
    return std::equal(header.begin(), header.end(), file.begin()) &&
           std::equal(length.begin(), length.end(), file.begin() + kLengthOffset) &&
           std::equal(checksum.begin(), checksum.end(), file.end() - kChecksumSize);
}

// ---- Reading --------------------------------------------------------------------------------------------------------

/// True when the reader says that the file is bad, as a message with its name.
template <class Body> bool IsRefused(MemoryFile const& file, Body const& body)
{
    bool refused = false;
    Ending const ending = RunGuarded([&] {
        try {
            body();
        } catch (ToolError const& error) {
            refused = true;
            Require(error.GetCode() == ExitCode::badInput, "what is wrong with a file is bad input");
            Require(std::string(error.what()).compare(0, file.GetPath().size() + 2, file.GetPath() + ": ") == 0,
                    "the message about a file begins with its name");
        }
    });
    Require(ending != Ending::archiveError, "an error of an archive is told with the name of its file");
    return refused || ending == Ending::fatal;
}

/// The envelope is taken if and only if all of it is right, and then gives the archive.
void CheckEnvelope(Bytes const& bytes, ArchiveKind kind)
{
    MemoryFile const file(bytes);
    Bytes archive;
    bool const refused = IsRefused(file, [&] { archive = ReadArchiveFile(file.GetPath(), kind); });
    Require(refused != IsWhole(bytes, kind), "an envelope is refused when something is wrong with it");
    if (refused) return;
    Require(std::equal(archive.begin(), archive.end(), bytes.begin() + kHeaderSize, bytes.end() - kChecksumSize),
            "the archive is what stands in the envelope");
}

constexpr std::size_t kMostShown = 64; // since text takes far more than the file it is made of

void PrintRecord(std::ostream& out, EInterfaceTable const& table, unsigned int id)
{
    PrintInterface(out, *table.GetInterfaceItem(id));
}

void PrintRecord(std::ostream& out, EDiscoveredTable const& table, unsigned int id)
{
    PrintInfo(out, *table.GetInfo(id));
}

template <class Table> void Show(Table const& table, std::vector<unsigned int> ids)
{
    std::ostringstream out;
    PrintOverview(out, table);
    PrintTableSettings(out, table);
    if (ids.size() > kMostShown) ids.resize(kMostShown);
    for (unsigned int id : ids) PrintRecord(out, table, id);
    out << TableJson(table, ids).dump(2, ' ', false, Json::error_handler_t::replace);
}

void Show(EInterfaceTable const& table)
{
    Show(table, InterfaceIds(table));
}

void Show(EDiscoveredTable const& table)
{
    Show(table, InfoIds(table));
}

/// What was read, of a file that was refused too.
template <class Table> void CheckLoaded(ArchiveKind kind, Table const& table)
{
    CheckTable(table);
    Show(table);
    MemoryFile const file(Enveloped(kind, Written(table)));
    Table again;
    Require(!IsRefused(file, [&] { LoadTable(file.GetPath(), again); }), "what is written to a file can be read");
    Require(Written(again) == Written(table), "what is read of a file is what was written to it");
}

template <class Table> void ReadTableFile(ArchiveKind kind, Bytes const& bytes)
{
    CheckEnvelope(bytes, kind);
    MemoryFile const file(bytes);
    Table table;
    IsRefused(file, [&] { LoadTable(file.GetPath(), table); });
    CheckLoaded(kind, table);
}

void ReadInterfaceTable(Bytes const& bytes)
{
    ReadTableFile<EInterfaceTable>(ArchiveKind::interfaceTable, bytes);
}

void ReadDiscoveredTable(Bytes const& bytes)
{
    ReadTableFile<EDiscoveredTable>(ArchiveKind::discoveredTable, bytes);
}

void ReadEitherTable(Bytes const& bytes)
{
    MemoryFile const file(bytes);
    EInterfaceTable interfaces;
    EDiscoveredTable discovered;
    ArchiveKind kind = ArchiveKind::commandList;
    bool const refused = IsRefused(file, [&] { kind = LoadEitherTable(file.GetPath(), interfaces, discovered); });
    Require(refused || IsWhole(bytes, kind), "a table is of the kind that its file says");
    if (!refused && kind == ArchiveKind::interfaceTable) CheckLoaded(kind, interfaces);
    if (!refused && kind == ArchiveKind::discoveredTable) CheckLoaded(kind, discovered);
}

void ReadChangeStream(Bytes const& bytes)
{
    CheckEnvelope(bytes, ArchiveKind::changeStream);
    MemoryFile const file(bytes);
    EDiscoveredTable table;
    FillWithTwoInfos(table);
    IsRefused(file, [&] { ApplyChangeStream(file.GetPath(), table); });
    CheckLoaded(ArchiveKind::discoveredTable, table);
}

void ReadRawTable(Bytes const& bytes)
{
    MemoryFile const file(bytes);
    EInterfaceTable table;
    IsRefused(file, [&] { LoadRawTable(file.GetPath(), table); });
    CheckLoaded(ArchiveKind::interfaceTable, table);
}

// ---- TLVs -----------------------------------------------------------------------------------------------------------

constexpr std::size_t kMostPrinted = 4096; // a file of a few bytes may have a number near a million

/// This build's own when the file is no table of ids.
TlvIdTable ReadTlvIdFile(Bytes const& bytes)
{
    MemoryFile const file(bytes);
    TlvIdTable ids;
    IsRefused(file, [&] { ids = TlvIdTable(file.GetPath()); });
    return ids;
}

void ReadTlvIds(Bytes const& bytes)
{
    TlvIdTable const ids = ReadTlvIdFile(bytes);
    if (ids.GetNames().size() > kMostPrinted) return;
    std::ostringstream text;
    PrintTlvIds(text, ids);
    PrintTlvIdsLua(text, ids);
    std::ostringstream json;
    PrintTlvIdsJson(json, ids);
    std::string const printed = json.str();
    TlvIdTable const again = ReadTlvIdFile(Bytes(printed.begin(), printed.end()));
    Require(again.GetNames() == ids.GetNames(), "ids are read as they are printed");
}

/// What the library makes of the whole message; false when it raises its parse error.
bool ApplyWhole(Bytes const& bytes, TlvIdTable const& ids, EInterfaceTable& table)
{
    bool isRead = true;
    RunGuarded([&] {
        TlvSender const sender(ids);
        TLVReader message(bytes.data(), static_cast<int>(bytes.size()));
        try {
            ParseInterfaceListTLV(message, table);
        } catch (int) {
            isRead = false;
        }
    });
    return isRead;
}

void CheckApplied(Bytes const& bytes, TlvIdTable const& ids)
{
    MemoryFile const file(bytes);
    EInterfaceTable table(7);
    FillWithTwoInterfaces(table);
    EInterfaceTable expected(table);
    bool const refused = IsRefused(file, [&] {
        TlvMessageInput message(file.GetPath());
        ApplyTlvMessage(message, ids, table);
    });
    CheckTable(table);
    Require(refused != ApplyWhole(bytes, ids, expected), "the program refuses the messages that the library refuses");
    Require(WalkTlvs(bytes.data(), bytes.size(), 0, ids, TlvView::asRead).has_value() == refused,
            "what is wrong with a message is found if and only if it is refused");
    Require(Written(table) == Written(expected), "the program makes of a message what the library makes of it");
}

void ReadTlvMessage(Bytes const& bytes, TlvIdTable const& ids)
{
    MemoryFile const file(bytes);
    std::ostringstream text;
    bool const isText = !IsRefused(file, [&] {
        TlvMessageInput message(file.GetPath());
        PrintTlvMessage(text, message, ids);
    });
    std::ostringstream json;
    bool const isJson = !IsRefused(file, [&] {
        TlvMessageInput message(file.GetPath());
        PrintTlvMessageJson(json, message, ids);
    });
    Require(isText == isJson, "both forms of a dump refuse the same messages");
    Json const parsed = Json::parse(json.str(), nullptr, false);
    Require(!parsed.is_discarded() && parsed["error"].is_null() == isJson, "a dump in JSON is whole and tells its end");
    CheckApplied(bytes, ids);
}

void ReadOwnTlvMessage(Bytes const& bytes)
{
    ReadTlvMessage(bytes, TlvIdTable());
}

void ReadSendersTlvMessage(Bytes const& bytes)
{
    if (bytes.size() < 2) return;
    auto const begin = bytes.begin() + 2;
    std::size_t const high = bytes[0];
    std::size_t const length = std::min(high << 8 | bytes[1], bytes.size() - 2);
    auto const middle = begin + static_cast<std::ptrdiff_t>(length);
    ReadTlvMessage(Bytes(middle, bytes.end()), ReadTlvIdFile(Bytes(begin, middle)));
}

void (*const kReadings[])(Bytes const&) = {ReadInterfaceTable, ReadDiscoveredTable,  ReadEitherTable,
                                           ReadChangeStream,   ReadRawTable,         ReadTlvIds,
                                           ReadOwnTlvMessage,  ReadSendersTlvMessage};

bool ReadyForMessages()
{
    Protocol::RunTLVParserMapInitializers();
    return true;
}

} // namespace

void TestInput(std::uint8_t const* data, std::size_t size)
{
    static bool const ready = ReadyForMessages();
    Require(ready, "the parser maps are filled");
    if (size == 0) return;
    Bytes file(data + 1, data + size);
    if (data[0] & 0x80) Repair(file);
    kReadings[data[0] % std::size(kReadings)](file);
}
