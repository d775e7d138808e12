// Saving and loading tables and interface operations with Protocol Buffers, on arenas.
#include "../benchSupport.hpp"
#include "protobufRecords.hpp"

#include <google/protobuf/arena.h>

#include <memory>
#include <vector>

using google::protobuf::Arena;

namespace {

google::protobuf::ArenaOptions LargeBlocks()
{
    google::protobuf::ArenaOptions options;
    options.start_block_size = 64U << 10;
    options.max_block_size = 1U << 20;
    return options;
}

/// As a program does that does not know the size beforehand: it is computed, and the bytes go into a buffer of that
/// size, which is not cleared first.
std::size_t Saved(records::Table const& table)
{
    std::size_t const size = table.ByteSizeLong();
    std::unique_ptr<std::uint8_t[]> const bytes(new std::uint8_t[size]);
    table.SerializeWithCachedSizesToArray(bytes.get());
    benchmark::DoNotOptimize(bytes.get());
    return size;
}

void Save(benchmark::State& state)
{
    Arena arena(LargeBlocks());
    auto& table = *Arena::CreateMessage<records::Table>(&arena);
    FillArchived(table, KeptSample(Count(state)));
    std::size_t size = Saved(table);
    for (auto _ : state) size = Saved(table);
    state.counters["bytes"] = static_cast<double>(size) / Count(state);
}

std::vector<std::uint8_t> Archive(unsigned int count)
{
    Arena arena(LargeBlocks());
    auto& table = *Arena::CreateMessage<records::Table>(&arena);
    FillArchived(table, KeptSample(count));
    std::vector<std::uint8_t> bytes(table.ByteSizeLong());
    table.SerializeWithCachedSizesToArray(bytes.data());
    return bytes;
}

/// Into messages and no further: no table, no look-up by id.
void Load(benchmark::State& state)
{
    std::vector<std::uint8_t> const bytes = Archive(Count(state));
    auto const load = [&](Arena& arena) {
        auto& table = *Arena::CreateMessage<records::Table>(&arena);
        Require(table.ParseFromArray(bytes.data(), static_cast<int>(bytes.size())), "not parsed");
        return table.interfaces_size();
    };
    {
        Arena arena(LargeBlocks());
        load(arena); // takes the memory from the kernel
    }
    for (auto _ : state) {
        state.PauseTiming();
        auto arena = std::make_unique<Arena>(LargeBlocks());
        state.ResumeTiming();
        int const interfaces = load(*arena);
        state.PauseTiming();
        Require(interfaces == state.range(0), "interfaces are missing");
        arena.reset();
        SettleHeap();
        state.ResumeTiming();
    }
}

/// One message is filled and serialised again and again, which is cheaper than a fresh one on a fresh arena.
void Build(benchmark::State& state)
{
    EInterfaceItem const& interface = *KeptSample(1).GetInterfaceItem(1);
    Arena arena(LargeBlocks());
    auto& message = *Arena::CreateMessage<records::InterfaceOperation>(&arena);
    std::vector<std::uint8_t> room(4096);
    std::size_t size = 0;
    for (auto _ : state) {
        message.Clear();
        FillOperation(message, interface);
        size = message.ByteSizeLong();
        message.SerializeWithCachedSizesToArray(room.data());
        benchmark::DoNotOptimize(room.data());
    }
    state.counters["bytes"] = static_cast<double>(size);
}

void Apply(benchmark::State& state)
{
    auto const table = SampleTable(1);
    Arena arena(LargeBlocks());
    auto& message = *Arena::CreateMessage<records::InterfaceOperation>(&arena);
    FillOperation(message, *table->GetInterfaceItem(1));
    message.set_interface_id(0); // as in built TLVs
    std::string const bytes = message.SerializeAsString();
    for (auto _ : state) {
        Require(message.ParseFromArray(bytes.data(), static_cast<int>(bytes.size())), "not parsed");
        ApplyOperation(message, *table);
    }
    EInterfaceItem const* const read = table->GetInterfaceItem(0);
    Require(read && read->GetName() == table->GetInterfaceItem(1)->GetName(), "the operation was not applied");
}

} // namespace

BENCHMARK(Save)->Name("Save/protobuf")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load)->Name("Load/protobuf")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Build)->Name("TLVBuild/protobuf");
BENCHMARK(Apply)->Name("TLVApply/protobuf");
