#include "eGreTunnel.hpp"

#include "recordCases.hpp"

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
    EObsoleteGreTunnel record = Sample();

    SampleInTable() { record.SetParent(&table); }
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
    EXPECT_EQ(kSampleText, Summary(sample.record));
    sample.record.SetEnabled(false);
    sample.record.SetLocalId(6);
    sample.record.SetName("gre2");
    sample.record.SetSourceIp(EComponentId({7, 1, 3}));
    sample.record.SetDestIp(EIPAddress("2001:db8::1"));
    sample.record.SetUseChecksum(false);
    sample.record.SetUseSequence(true);
    sample.record.SetUseKey(false);
    sample.record.SetKey(1);
    EXPECT_EQ("false 6 \"gre2\" [7.1.3] 2001:db8::1 false true false 1", Summary(sample.record));
    sample.record = Sample();
    sample.record.Empty();
    ReadInto(sample.record, Golden("EObsoleteGreTunnel.v3.hex"));
    EXPECT_TRUE(sample.recorder->calls.empty());
}

TEST(EObsoleteGreTunnel, GetHooksIsTheTablesObserverOrOneThatIgnoresAll)
{
    SampleInTable sample;
    EXPECT_EQ(sample.recorder.get(), &sample.record.GetHooks());
    sample.record.SetParent(nullptr);
    EXPECT_NE(nullptr, dynamic_cast<EIgnoreInterfaceTableHooks*>(&sample.record.GetHooks()));
    EXPECT_EQ(&sample.record.GetHooks(), &EObsoleteGreTunnel().GetHooks());
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
            sample.record = other;
        else
            sample.record.Copy(other);
        EXPECT_EQ("false 5 \"other\" [] 0.0.0.0 false false false 3", Summary(sample.record));
        EXPECT_EQ(&sample.table, sample.record.GetParent());
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
    sample.record.Empty();
    EXPECT_EQ("false 5 \"\" [] 0.0.0.0 false false false 0", Summary(sample.record));
    EXPECT_EQ(&sample.table, sample.record.GetParent());
}

TEST(EObsoleteGreTunnel, CopyConstructionTakesTheParentAndSwapLeavesItButTakesTheLocalId)
{
    SampleInTable in;
    ExpectCopyConstructed(*in.recorder, in.record);
    EObsoleteGreTunnel other;
    other.SetLocalId(8);
    ExpectSwapped(*in.recorder, in.record, other);
    EXPECT_EQ("false 8 \"\" [] 0.0.0.0 false false false 0", Summary(in.record));
}

TEST(EObsoleteGreTunnel, DiffersByEveryFieldAndTheLocalIdButNotByTheParent)
{
    ExpectEachChangeCompared(Sample(), {
                                           [](auto& tunnel) { tunnel.SetEnabled(false); },
                                           [](auto& tunnel) { tunnel.SetLocalId(6); },
                                           [](auto& tunnel) {
                                               tunnel.SetSourceIp(EComponentId({7, 1}));
                                           },
                                           [](auto& tunnel) { tunnel.SetDestIp(EIPAddress("192.0.2.2")); },
                                           [](auto& tunnel) { tunnel.SetUseChecksum(false); },
                                           [](auto& tunnel) { tunnel.SetUseSequence(true); },
                                           [](auto& tunnel) { tunnel.SetUseKey(false); },
                                           [](auto& tunnel) { tunnel.SetKey(1); },
                                           [](auto& tunnel) { tunnel.SetName("gre2"); },
                                           [](auto& tunnel) { tunnel.SetName(std::string("gre1\0", 5)); },
                                       });
    EXPECT_FALSE(SampleInTable().record != Sample());
}

TEST(EObsoleteGreTunnelEdit, TheFirstSubIdPicksTheField)
{
    std::vector<EditCase<EObsoleteGreTunnel>> const cases = {
        {1, "02 67 32", "", "", Summary, "true 5 \"g2\" [7.1.2] 192.0.2.1 true false true 3735928559", {}},
        {2, "02 07 01", "", "", Summary, "true 5 \"gre1\" [7.1] 192.0.2.1 true false true 3735928559", {}},
        {3, "11 C0 00 02 09", "", "", Summary, "true 5 \"gre1\" [7.1.2] 192.0.2.9 true false true 3735928559", {}},
        {4, "00", "", "", Summary, "true 5 \"gre1\" [7.1.2] 192.0.2.1 false false true 3735928559", {}},
        {5, "01", "", "", Summary, "true 5 \"gre1\" [7.1.2] 192.0.2.1 true true true 3735928559", {}},
        {6, "00", "", "", Summary, "true 5 \"gre1\" [7.1.2] 192.0.2.1 true false false 3735928559", {}},
        {7, "2A", "", "", Summary, "true 5 \"gre1\" [7.1.2] 192.0.2.1 true false true 42", {1}},
    };
    ExpectEachEdited<SampleInTable>(cases);
}

TEST(EObsoleteGreTunnelEdit, OtherSubIdsAndNoneAreRefusedWithNothingRead)
{
    SampleInTable in;
    ExpectEachRefused(*in.recorder, in.record, {{}, {0}, {8}, {9, 1}, {0xFFFFFFFF}});
    EXPECT_EQ(kSampleText, Summary(in.record));
}

TEST(EObsoleteGreTunnelEdit, ReadsNoWiderNumberThanTheField)
{
    SampleInTable in;
    ExpectEachTooWide(*in.recorder, in.record, {{4, "02"}, {5, "02"}, {6, "02"}, {7, "FC 01 00 00 00 00"}}); // 33 bits
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
    sample.record.SetUseSequence(true);
    ReadInto(sample.record, Golden("EObsoleteGreTunnel.v1.hex"));
    EXPECT_EQ("true 5 \"\" [] 192.0.2.1 true false true 3735928559", Summary(sample.record));
    EXPECT_EQ(&sample.table, sample.record.GetParent());
}

TEST(EObsoleteGreTunnelArchive, RefusesVersions0And4)
{
    for (char const* version : {"00", "04", "FB FF FF FF FF"})
        ExpectArchiveError<EObsoleteGreTunnel>(version, "x86_64/common/ifcore/eGreTunnel.cpp", 92,
                                               "EObsoleteGreTunnel::SerializeIn");
}
