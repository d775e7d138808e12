#include "eGreTunnel.hpp"

#include "recordCases.hpp"
#include "recordedInterface.hpp"

static EObsoleteGreTunnel Sample()
{
    EObsoleteGreTunnel tunnel;
    tunnel.SetEnabled(true);
    tunnel.SetLocalId(5);
    tunnel.SetName("gre1");
    tunnel.SetSourceIp(EComponentId({7, 1, 2}));
    tunnel.SetDestIp(EIPAddress("192.0.2.1"));
    tunnel.SetUseChecksum(true);
    tunnel.SetUseKey(true);
    tunnel.SetKey(0xDEADBEEF);
    return tunnel;
}

/// "enabled local-id "name" [source] destination checksum sequence key-used key"
static std::string Summary(EObsoleteGreTunnel const& tunnel)
{
    return TextOf(tunnel.IsEnabled()) + " " + TextOf(tunnel.GetLocalId()) + " \"" + tunnel.GetName() + "\" [" +
           TextOf(tunnel.GetSourceIp()) + "] " + tunnel.GetDestIp().GetAsString() + " " +
           TextOf(tunnel.GetUseChecksum()) + " " + TextOf(tunnel.GetUseSequence()) + " " + TextOf(tunnel.GetUseKey()) +
           " " + TextOf(tunnel.GetKey());
}
static char const kSampleText[] = "true 5 \"gre1\" [7.1.2] 192.0.2.1 true false true 3735928559";

namespace {

/// The sample as a child of a table that has an observer.
struct SampleInTable : RecordedInterface {
    EObsoleteGreTunnel tunnel = Sample();

    SampleInTable() { tunnel.SetParent(&table); }
};

} // namespace

TEST(EObsoleteGreTunnel, StartsEmptyAndDisabled)
{
    EObsoleteGreTunnel const tunnel;
    EXPECT_EQ("false 0 \"\" [] 0.0.0.0 false false false 0", Summary(tunnel));
    EXPECT_EQ(17U, tunnel.GetDestIp().GetFamily());
    EXPECT_EQ(nullptr, tunnel.GetParent());
}

TEST(EObsoleteGreTunnel, SettersStoreAndAnnounceNothing)
{
    SampleInTable sample;
    EXPECT_EQ(kSampleText, Summary(sample.tunnel));
    sample.tunnel.SetEnabled(false);
    sample.tunnel.SetLocalId(6);
    sample.tunnel.SetName("gre2");
    sample.tunnel.SetSourceIp(EComponentId({7, 1, 3}));
    sample.tunnel.SetDestIp(EIPAddress("2001:db8::1"));
    sample.tunnel.SetUseChecksum(false);
    sample.tunnel.SetUseSequence(true);
    sample.tunnel.SetUseKey(false);
    sample.tunnel.SetKey(1);
    EXPECT_EQ("false 6 \"gre2\" [7.1.3] 2001:db8::1 false true false 1", Summary(sample.tunnel));
    sample.tunnel = Sample();
    sample.tunnel.Empty();
    ReadInto(sample.tunnel, Golden("EObsoleteGreTunnel.v3.hex"));
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EObsoleteGreTunnel, GetHooksIsTheTablesObserverOrOneThatIgnoresAll)
{
    SampleInTable sample;
    EXPECT_EQ(sample.recorder.get(), &sample.tunnel.GetHooks());
    sample.tunnel.SetParent(nullptr);
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&sample.tunnel.GetHooks()));
    EXPECT_EQ(&sample.tunnel.GetHooks(), &EObsoleteGreTunnel().GetHooks());
}

TEST(EObsoleteGreTunnel, CopyKeepsTheLocalIdAndTheParent)
{
    for (bool const byOperator : {false, true}) {
        SampleInTable sample;
        EObsoleteGreTunnel other;
        other.SetLocalId(8);
        other.SetName("other");
        other.SetKey(3);
        if (byOperator)
            sample.tunnel = other;
        else
            sample.tunnel.Copy(other);
        EXPECT_EQ("false 5 \"other\" [] 0.0.0.0 false false false 3", Summary(sample.tunnel));
        EXPECT_EQ(&sample.table, sample.tunnel.GetParent());
        EXPECT_EQ(8U, other.GetLocalId());

        EObsoleteGreTunnel target;
        target.SetLocalId(8);
        target = Sample();
        EXPECT_EQ("true 8 \"gre1\" [7.1.2] 192.0.2.1 true false true 3735928559", Summary(target));
    }
    EObsoleteGreTunnel itself = Sample();
    itself.Copy(itself);
    EXPECT_EQ(kSampleText, Summary(itself));
}

TEST(EObsoleteGreTunnel, EmptyKeepsTheLocalIdAndTheParentAndResetsTheRest)
{
    SampleInTable sample;
    sample.tunnel.Empty();
    EXPECT_EQ("false 5 \"\" [] 0.0.0.0 false false false 0", Summary(sample.tunnel));
    EXPECT_EQ(&sample.table, sample.tunnel.GetParent());
}

TEST(EObsoleteGreTunnel, CopyConstructionTakesTheParentAndSwapLeavesItButTakesTheLocalId)
{
    SampleInTable sample;
    EObsoleteGreTunnel copy(sample.tunnel);
    EXPECT_EQ(kSampleText, Summary(copy));
    EXPECT_EQ(&sample.table, copy.GetParent());

    EObsoleteGreTunnel other;
    other.SetLocalId(8);
    other.Swap(sample.tunnel);
    EXPECT_EQ(kSampleText, Summary(other));
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ("false 8 \"\" [] 0.0.0.0 false false false 0", Summary(sample.tunnel));
    EXPECT_EQ(&sample.table, sample.tunnel.GetParent());
}

TEST(EObsoleteGreTunnel, DiffersByEveryFieldAndTheLocalIdButNotByTheParent)
{
    void (*const changes[])(EObsoleteGreTunnel&) = {
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetEnabled(false); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetLocalId(6); },
        [](EObsoleteGreTunnel& tunnel) {
            tunnel.SetSourceIp(EComponentId({7, 1}));
        },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetDestIp(EIPAddress("192.0.2.2")); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetUseChecksum(false); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetUseSequence(true); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetUseKey(false); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetKey(1); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetName("gre2"); },
        [](EObsoleteGreTunnel& tunnel) { tunnel.SetName(std::string("gre1\0", 5)); },
    };
    for (auto const& change : changes) {
        EObsoleteGreTunnel changed = Sample();
        EXPECT_FALSE(changed != Sample());
        change(changed);
        EXPECT_TRUE(changed != Sample());
        EXPECT_TRUE(Sample() != changed);
    }
    SampleInTable inTable;
    EXPECT_FALSE(inTable.tunnel != Sample());
}

TEST(EObsoleteGreTunnelEdit, TheFirstSubIdPicksTheField)
{
    struct {
        std::vector<unsigned int> subId;
        char const* data;
        char const* after;
    } const cases[] = {
        {{1}, "02 67 32", "true 5 \"g2\" [7.1.2] 192.0.2.1 true false true 3735928559"},
        {{2}, "02 07 01", "true 5 \"gre1\" [7.1] 192.0.2.1 true false true 3735928559"},
        {{3}, "11 C0 00 02 09", "true 5 \"gre1\" [7.1.2] 192.0.2.9 true false true 3735928559"},
        {{4}, "00", "true 5 \"gre1\" [7.1.2] 192.0.2.1 false false true 3735928559"},
        {{5}, "01", "true 5 \"gre1\" [7.1.2] 192.0.2.1 true true true 3735928559"},
        {{6}, "00", "true 5 \"gre1\" [7.1.2] 192.0.2.1 true false false 3735928559"},
        {{7, 1}, "2A", "true 5 \"gre1\" [7.1.2] 192.0.2.1 true false true 42"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.after);
        EObsoleteGreTunnel tunnel = Sample();
        EArchive archive;
        Load(archive, Bytes(c.data));
        EXPECT_TRUE(tunnel.ProcessEdit(c.subId.begin(), c.subId.end(), archive));
        EXPECT_TRUE(archive.AtEnd());
        EXPECT_EQ(c.after, Summary(tunnel));
    }
}

TEST(EObsoleteGreTunnelEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    for (std::vector<unsigned int> const& subId :
         std::vector<std::vector<unsigned int>>{{}, {0}, {8}, {9, 1}, {0xFFFFFFFF}}) {
        EObsoleteGreTunnel tunnel = Sample();
        EArchive archive;
        Load(archive, Bytes("01"));
        EXPECT_FALSE(tunnel.ProcessEdit(subId.begin(), subId.end(), archive));
        EXPECT_EQ(0U, archive.GetOffset());
        EXPECT_EQ(kSampleText, Summary(tunnel));
    }
}

TEST(EObsoleteGreTunnelEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable sample;
    for (unsigned int const subId : {4U, 5U, 6U}) ExpectTooWide(*sample.recorder, sample.tunnel, subId, "02");
    ExpectTooWide(*sample.recorder, sample.tunnel, 7, "FC 01 00 00 00 00"); // 33 bits
}

TEST(EObsoleteGreTunnelArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    EXPECT_EQ(Golden("EObsoleteGreTunnel.v3.hex"), Written(Sample()));
    EXPECT_EQ(kSampleText, Summary(Read<EObsoleteGreTunnel>("EObsoleteGreTunnel.v3.hex")));
    EXPECT_EQ("true 5 \"\" [7.1.2] 192.0.2.1 true false true 3735928559",
              Summary(Read<EObsoleteGreTunnel>("EObsoleteGreTunnel.v2.hex")));
    EXPECT_EQ("true 5 \"\" [] 192.0.2.1 true false true 3735928559",
              Summary(Read<EObsoleteGreTunnel>("EObsoleteGreTunnel.v1.hex")));
}

TEST(EObsoleteGreTunnelArchive, ReadingEmptiesFirst)
{
    SampleInTable sample;
    sample.tunnel.SetUseSequence(true);
    ReadInto(sample.tunnel, Golden("EObsoleteGreTunnel.v1.hex"));
    EXPECT_EQ("true 5 \"\" [] 192.0.2.1 true false true 3735928559", Summary(sample.tunnel));
    EXPECT_EQ(&sample.table, sample.tunnel.GetParent());
}

TEST(EObsoleteGreTunnelArchive, RefusesVersions0And4)
{
    for (char const* version : {"00", "04", "FB FF FF FF FF"})
        ExpectArchiveError<EObsoleteGreTunnel>(version, "x86_64/common/ifcore/eGreTunnel.cpp", 92,
                                               "EObsoleteGreTunnel::SerializeIn");
}
