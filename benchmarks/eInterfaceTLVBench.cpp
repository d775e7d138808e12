// The costs of one interface as a message of nested TLVs: building it, and reading it as an edit.
#include "benchSupport.hpp"
#include "denseDispatch.hpp"

#include "tlvParserMapTable.hpp"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

Protocol::EBytes EditOf(EInterfaceItem const& interface)
{
    Protocol::EBytes message;
    Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
    return message;
}

void Build(benchmark::State& state)
{
    EInterfaceItem const& interface = *KeptSample(1).GetInterfaceItem(1);
    Protocol::EBytes message;
    for (auto _ : state) {
        message.clear(); // as a sender does that builds one after the other
        Protocol::AppendInterfaceOpTLV(message, TLVIds::ListOp::Edit, interface);
        benchmark::DoNotOptimize(message.data());
    }
    state.counters["bytes"] = static_cast<double>(message.size());
}

void ReadBy(benchmark::State& state, void (*read)(TLVReader&, EInterfaceTable&))
{
    Protocol::RunTLVParserMapInitializers();
    Protocol::UseOwnTLVIds();
    auto const table = SampleTable(1);
    Protocol::EBytes const message = EditOf(*table->GetInterfaceItem(1));
    for (auto _ : state) {
        TLVReader reader(message.data(), static_cast<int>(message.size()));
        read(reader, *table);
    }
    // Built operations carry no id: the edit goes to a second interface, of id 0.
    EInterfaceItem const* const read0 = table->GetInterfaceItem(0);
    Require(read0 && read0->GetName() == table->GetInterfaceItem(1)->GetName(), "the edit was not applied");
    Require(read0->GetIPv6AddressItemList().GetCount() == 1, "the IPv6 address was not applied");
}

} // namespace

BENCHMARK(Build)->Name("TLVBuild/ifcore");
BENCHMARK_CAPTURE(ReadBy, ifcore, ParseInterfaceListTLV)->Name("TLVApply/ifcore");
BENCHMARK_CAPTURE(ReadBy, dense, ApplyByDenseDispatch)->Name("TLVApply/dense");
