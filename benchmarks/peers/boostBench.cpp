// Saving and loading plain records with Boost.Serialization, binary, without object tracking and class versions.
#include "../benchSupport.hpp"
#include "plainArchiveBench.hpp"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array.hpp>
#include <boost/serialization/level.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/tracking.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/vector.hpp>

namespace plain {

// Taken before the library's own, which has the version as a number.
template <class Archive, class Record>
auto serialize(Archive& archive, Record& record, boost::serialization::version_type const& /*version*/)
    -> decltype(record.Tie(), void())
{
    std::apply([&archive](auto&... fields) { (void)(archive & ... & fields); }, record.Tie());
}

} // namespace plain

#define PLAIN_RECORD(record)                                                                                           \
    BOOST_CLASS_IMPLEMENTATION(record, boost::serialization::object_serializable)                                      \
    BOOST_CLASS_TRACKING(record, boost::serialization::track_never)
PLAIN_RECORD(plain::Address)
PLAIN_RECORD(plain::Option)
PLAIN_RECORD(plain::Ethernet)
PLAIN_RECORD(plain::IPv4Item)
PLAIN_RECORD(plain::IPv6Item)
PLAIN_RECORD(plain::Dhcp)
PLAIN_RECORD(plain::Dhcpv6)
PLAIN_RECORD(plain::NsRegOption)
PLAIN_RECORD(plain::PlogiDestination)
PLAIN_RECORD(plain::NsQuery)
PLAIN_RECORD(plain::FCoE)
PLAIN_RECORD(plain::Interface)
PLAIN_RECORD(plain::Table)

namespace {

unsigned int const kPlain = boost::archive::no_header | boost::archive::no_codecvt;

struct Boost {
    static void Save(std::streambuf& out, plain::Table const& table)
    {
        boost::archive::binary_oarchive archive(out, kPlain);
        archive << table;
    }
    static void Load(std::streambuf& in, plain::Table& table)
    {
        boost::archive::binary_iarchive archive(in, kPlain);
        archive >> table;
    }
};

} // namespace

BENCHMARK_TEMPLATE(SavePlain, Boost)->Name("Save/boost")->Arg(100000)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(LoadPlain, Boost)->Name("Load/boost")->Arg(100000)->Unit(benchmark::kMicrosecond);
