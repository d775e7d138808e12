// The costs of one interface as a message of nested TLVs: building it, and reading it as an edit.
#include "sampleTable.hpp"

#include "tlvParserMapTable.hpp"

#include <benchmark/benchmark.h>

#include <stdexcept>
#include <vector>

namespace {

std::vector<char> EditOf(EInterfaceItem const& interface)
{
    std::vector<char> message;
    Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
    return message;
}

void BuildInterfaceOperation(benchmark::State& state)
{
    auto const table = SampleTable(1);
    EInterfaceItem const& interface = *table->GetInterfaceItem(1);
    std::vector<char> message;
    for (auto _ : state) {
        message.clear(); // as a sender does that builds one after the other
        Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
        benchmark::DoNotOptimize(message.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(message.size()));
}

void ReadInterfaceEdit(benchmark::State& state)
{
    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    auto const table = SampleTable(1);
    std::vector<char> const message = EditOf(*table->GetInterfaceItem(1));
    for (auto _ : state) {
        TLVReader reader(message.data(), static_cast<int>(message.size()));
        ParseInterfaceListTLV(reader, *table);
    }
    // Built operations carry no id: the edit goes to a second interface, of id 0.
    if (table->GetCount() != 2) throw std::runtime_error("the edit was not applied");
    state.SetBytesProcessed(state.iterations() * static_cast<long>(message.size()));
}

} // namespace

BENCHMARK(BuildInterfaceOperation);
BENCHMARK(ReadInterfaceEdit);
