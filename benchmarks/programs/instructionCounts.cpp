// Runs the paths whose instructions scripts/bench-instructions counts, one after the other, each once to warm it up and
// once under callgrind, which writes a file for each. Without callgrind it checks that the paths run.
#include "oldArchives.hpp"
#include "sampleTable.hpp"

#include "eArchive.hpp"
#include "eIPLookupInterfaceTableHooks.hpp"
#include "eSingleCommand.hpp"
#include "tlvParserMapTable.hpp"

#include <boost/make_shared.hpp>
#include <valgrind/callgrind.h>

#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

unsigned int const kInterfaces = 1000; // in every table
unsigned int const kRounds = 1000;     // of what is done one by one

/// What a path made. It is destroyed when nothing is counted.
using Made = std::shared_ptr<void>;

void Require(bool condition, char const* what)
{
    if (!condition) throw std::runtime_error(what);
}

std::shared_ptr<EInterfaceTable> LoadedWhole(EBlob const& bytes)
{
    std::shared_ptr<EInterfaceTable> const table = Loaded(bytes);
    Require(table->GetCount() == kInterfaces, "interfaces are missing");
    return table;
}

std::vector<ESingleCommand> EditCommands()
{
    std::vector<ESingleCommand> commands;
    for (unsigned int round = 0; round < kRounds; ++round) {
        EArchive data;
        data << SampleIPv4(round);
        EMultiComponentId const ipv4(EComponentId{1, 1, 1 + round % kInterfaces, 6});
        commands.emplace_back(7, ipv4, std::vector<unsigned int>{1}, data.GetAsEBlob());
    }
    return commands;
}

std::vector<ESingleCommand> AddCommands()
{
    std::vector<ESingleCommand> commands;
    for (unsigned int id = 1; id <= kInterfaces; ++id) {
        EArchive data;
        data << SampleInterface(id);
        commands.emplace_back(5, EMultiComponentId(EComponentId{1, 1}), std::vector<unsigned int>(), data.GetAsEBlob());
    }
    return commands;
}

Made Execute(std::shared_ptr<EInterfaceTable> const& table, std::vector<ESingleCommand> const& commands)
{
    EMultiComponentId added;
    for (ESingleCommand const& command : commands)
        Require(table->ExecuteCommand(command, &added), "a command was refused");
    return table;
}

std::shared_ptr<EInterfaceTable> Indexed(std::shared_ptr<EInterfaceTable> table)
{
    auto const lookup = boost::make_shared<EIPLookupInterfaceTableHooks>();
    table->AddInterfaceTableHooks("IP_LOOKUP_HOOKS", lookup);
    lookup->Rebuild(*table);
    return table;
}

/// An interface goes up and down, gets addresses, and so do its neighbours.
EBlob ChangeStream()
{
    EArchive message;
    for (unsigned int id = 1; id <= kRounds; ++id) {
        message << true << 4U << id << true;
        message << true << 5U << id << SampleIPv4(id);
        message << true << 12U << id << 1U << SampleIPv6(id);
    }
    message << false;
    return message.GetAsEBlob();
}

std::shared_ptr<EDiscoveredTable> SampleNeighbors()
{
    auto table = std::make_shared<EDiscoveredTable>();
    for (unsigned int id = 1; id <= kRounds; ++id) {
        EDiscoveredInfo info;
        info.SetLocalId(id);
        info.AddNeighbor(EDiscoveredNeighbor());
        table->AddInfo(info);
    }
    return table;
}

Made Apply(std::shared_ptr<EDiscoveredTable> const& table, EBlob const& stream)
{
    EArchive archive;
    archive.SetFromEBlob(stream, true);
    archive.SetMode(2);
    ApplyDiscoveredTableMessage(*table, archive);
    Require(archive.AtEnd() && table->GetInfo(kRounds)->GetAddressCount() == 1, "not all changes were applied");
    return table;
}

/// Counts the instructions of \p run, which works on what \p prepare made anew.
template <class Prepare, class Run> void Count(char const* path, Prepare const& prepare, Run const& run)
{
    run(prepare()); // symbols are bound, and statics made, at the first call
    auto const prepared = prepare();
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    Made const made = run(prepared);
    CALLGRIND_DUMP_STATS_AT(path);
    CALLGRIND_STOP_INSTRUMENTATION;
    std::cout << path << std::endl;
}

void CountAll()
{
    std::shared_ptr<EInterfaceTable> const sample = SampleTable(kInterfaces);
    EBlob const archive = Written(*sample);
    EBlob const oldArchive = Version4ArchiveOfUnconnected(kInterfaces);
    auto const kept = [&] { return sample; };
    auto const fresh = [] { return std::make_shared<EInterfaceTable>(1); };

    Count("save a table", kept, [](auto const& table) {
        auto written = std::make_shared<EArchive>();
        *written << *table;
        return written;
    });
    Count("load a table", fresh, [&](auto const&) { return LoadedWhole(archive); });
    Count("load a table of version 4", fresh, [&](auto const&) { return LoadedWhole(oldArchive); });
    Count("copy a table", kept, [](auto const& table) { return std::make_shared<EInterfaceTable>(*table); });
    Count(
        "add commands with an index of addresses", [&] { return Indexed(fresh()); },
        [commands = AddCommands()](auto const& table) { return Execute(table, commands); });
    Count("edit commands", kept, [commands = EditCommands()](auto const& table) { return Execute(table, commands); });
    Count(
        "find interfaces by address", [&] { return Indexed(std::make_shared<EInterfaceTable>(*sample)); },
        [](auto const& table) {
            for (unsigned int id = 1; id <= kRounds; ++id)
                Require(table->FindInterfaceByIP(SampleIPv6(id)) != nullptr, "an address was not found");
            return table;
        });

    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, *sample->GetInterfaceItem(1));
    Count("build interface TLVs", kept, [](auto const& table) {
        auto bytes = std::make_shared<Protocol::EBytes>();
        for (unsigned int round = 0; round < kRounds; ++round) {
            bytes->clear();
            Protocol::AppendInterfaceOpTLV(*bytes, TLVIds::ListOp::Edit, *table->GetInterfaceItem(1));
        }
        return bytes;
    });
    Count("parse and apply interface TLVs", fresh, [&](auto const& table) {
        for (unsigned int round = 0; round < kRounds; ++round) {
            TLVReader reader(message.data(), static_cast<int>(message.size()));
            ParseInterfaceListTLV(reader, *table);
        }
        Require(table->GetCount() == 1, "the edit was not applied");
        return table;
    });
    Count("apply a change stream", SampleNeighbors,
          [stream = ChangeStream()](auto const& table) { return Apply(table, stream); });
}

} // namespace

int main()
{
    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    CountAll();
}
