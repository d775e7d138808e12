// Saving and loading plain records with cereal, binary.
#include "../benchSupport.hpp"
#include "plainArchiveBench.hpp"

#include <cereal/archives/binary.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include <istream>
#include <ostream>

namespace plain {

template <class Archive, class Record>
auto serialize(Archive& archive, Record& record) -> decltype(record.Tie(), void())
{
    std::apply([&archive](auto&... fields) { archive(fields...); }, record.Tie());
}

} // namespace plain

namespace {

struct Cereal {
    static void Save(std::streambuf& out, plain::Table const& table)
    {
        std::ostream stream(&out);
        cereal::BinaryOutputArchive archive(stream);
        archive(table);
    }
    static void Load(std::streambuf& in, plain::Table& table)
    {
        std::istream stream(&in);
        cereal::BinaryInputArchive archive(stream);
        archive(table);
    }
};

} // namespace

BENCHMARK_TEMPLATE(SavePlain, Cereal)->Name("Save/cereal")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(LoadPlain, Cereal)->Name("Load/cereal")->Arg(100000)->Unit(benchmark::kMicrosecond);
