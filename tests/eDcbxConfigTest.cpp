#include "eDcbxConfig.hpp"

#include "dcbxRecords.hpp"
#include "recordCases.hpp"
#include "recordedInterface.hpp"

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

using Feature = EDCBXFeatureTlv;
using Features = std::vector<EDCBXFeatureTlv>;

static char const kFile[] = "x86_64/common/ifcore/eDcbxConfig.cpp";

static Feature MakeFeature(unsigned char type, unsigned char subType, unsigned int key)
{
    Feature feature(type, subType, 2);
    feature.SetInstanceKey(key);
    return feature;
}

/// The keys of the features, in their order.
static std::vector<unsigned int> Keys(EDCBXConfig const& config)
{
    std::vector<unsigned int> keys;
    for (Feature const& feature : config.GetFeatureTlvs()) keys.push_back(feature.GetInstanceKey());
    return keys;
}
using KeyList = std::vector<unsigned int>;

/// What the golden files of the newest version hold.
static EDCBXConfig SampleConfig()
{
    EDCBXConfig config;
    config.SetSubType(1);
    config.AddFeatureTlv(SampleDCBXFeature());
    Feature second(3, 0, 1);
    second.SetInstanceKey(7);
    config.AddFeatureTlv(second);
    config.SetOUI(0xAABBCC);
    config.SetControlTlv(SampleDCBXControl());
    return config;
}

TEST(EDCBXControlTlv, DefaultsToVersions255AndNotValid)
{
    EDCBXControlTlv const control;
    EXPECT_EQ(255, control.GetOperVersion());
    EXPECT_EQ(255, control.GetMaxVersion());
    EXPECT_EQ(0u, control.GetSeqNo());
    EXPECT_EQ(0u, control.GetAckNo());
    EXPECT_EQ(Feature::ADVERTISED, control.GetDcbxAdvertiseType());
    EXPECT_FALSE(control.IsValid());
    EXPECT_EQ(EDCBXControlTlv::STATE_LINK_UP, control.GetControlState());
    EXPECT_FALSE(control.IsOverrideOperVersion());
}

TEST(EDCBXControlTlv, DiffersInEveryField)
{
    struct {
        char const* field;
        void (*change)(EDCBXControlTlv&);
    } const cases[] = {
        {"oper version", [](EDCBXControlTlv& c) { c.SetOperVersion(9); }},
        {"max version", [](EDCBXControlTlv& c) { c.SetMaxVersion(9); }},
        {"sequence number", [](EDCBXControlTlv& c) { c.SetSeqNo(9); }},
        {"ack number", [](EDCBXControlTlv& c) { c.SetAckNo(9); }},
        {"advertise type", [](EDCBXControlTlv& c) { c.SetDcbxAdvertiseType(Feature::PEER_SHUT_DOWN); }},
        {"valid", [](EDCBXControlTlv& c) { c.SetValid(false); }},
        {"state", [](EDCBXControlTlv& c) { c.SetControlState(EDCBXControlTlv::STATE_D_WAIT); }},
        {"override", [](EDCBXControlTlv& c) { c.SetOverrideOperVersion(false); }},
    };
    EDCBXControlTlv const original = SampleDCBXControl();
    for (auto const& c : cases) {
        SCOPED_TRACE(c.field);
        EDCBXControlTlv changed(original);
        EXPECT_FALSE(changed != original);
        c.change(changed);
        EXPECT_TRUE(changed != original);
        EDCBXControlTlv swapped(original);
        swapped.Swap(changed);
        EXPECT_TRUE(swapped != original);
        EXPECT_FALSE(changed != original);
    }
}

TEST(EDCBXControlTlvArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    EDCBXControlTlv const sample = SampleDCBXControl();
    EXPECT_EQ(Golden("EDCBXControlTlv.v0218200D.hex"), Written(sample));
    EXPECT_FALSE(Read<EDCBXControlTlv>("EDCBXControlTlv.v0218200D.hex") != sample);

    struct {
        char const* golden;
        bool override;
        bool state;
        bool valid;
        bool advertiseType;
    } const cases[] = {
        {"EDCBXControlTlv.v02182009.hex", false, false, false, false},
        {"EDCBXControlTlv.v0218200A.hex", false, false, false, true},
        {"EDCBXControlTlv.v0218200B.hex", false, false, true, true},
        {"EDCBXControlTlv.v0218200C.hex", false, true, true, true},
        {"EDCBXControlTlv.v0218200D.hex", true, true, true, true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        EDCBXControlTlv control; // what is not read stays
        control.SetControlState(EDCBXControlTlv::STATE_PROCESS_PEER_TLV);
        control.SetDcbxAdvertiseType(Feature::PEER_SHUT_DOWN);
        EDCBXControlTlv expected = sample;
        if (!c.override) expected.SetOverrideOperVersion(false);
        if (!c.state) expected.SetControlState(EDCBXControlTlv::STATE_PROCESS_PEER_TLV);
        if (!c.valid) expected.SetValid(false);
        if (!c.advertiseType) expected.SetDcbxAdvertiseType(Feature::PEER_SHUT_DOWN);
        ReadInto(control, Golden(c.golden));
        EXPECT_FALSE(control != expected);
    }
}

TEST(EDCBXControlTlvArchive, EveryFlagHasItsPlace)
{
    EDCBXControlTlv control = SampleDCBXControl();
    control.SetValid(false);
    EXPECT_EQ(std::string("\1\6\0", 3), Written(control).substr(5, 3));
    control.SetValid(true);
    control.SetOverrideOperVersion(false);
    EXPECT_EQ(std::string("\0\6\1", 3), Written(control).substr(5, 3));
}

TEST(EDCBXControlTlvArchiveDeathTest, RefusesAllOtherVersions)
{
    for (char const* version : {"00", "FB 02 18 20 08", "FB 02 18 20 0E"})
        ExpectArchiveError<EDCBXControlTlv>(version, kFile, 1230, "EDCBXControlTlv::SerializeIn");
}

TEST(EDCBXConfig, DefaultsToSubType2WithoutFeatures)
{
    EDCBXConfig const config;
    EXPECT_TRUE(config.GetFeatureTlvs().empty());
    EXPECT_EQ(0x001B21u, config.GetOUI());
    EXPECT_FALSE(config.GetControlTlv() != EDCBXControlTlv());
    EXPECT_EQ(255, config.GetControlTlvMaxVersion());
    EXPECT_EQ(255, config.GetControlTlvOperVersion());
    EXPECT_FALSE(config.GetControlTlvOperVersionEnabled());
    EXPECT_EQ(2, config.GetSubType());
    EXPECT_EQ(nullptr, config.GetParent());
    EXPECT_EQ(36u, config.GetLocalId());
}

TEST(EDCBXConfig, DiffersInEveryFieldButTheParent)
{
    struct {
        char const* field;
        void (*change)(EDCBXConfig&);
    } const cases[] = {
        {"a feature's key", [](EDCBXConfig& c) { c.GetFeatureTlv(0u)->SetInstanceKey(1); }},
        {"features", [](EDCBXConfig& c) { c.RemoveFeatureTlv(0u); }},
        {"OUI", [](EDCBXConfig& c) { c.SetOUI(1); }},
        {"control TLV", [](EDCBXConfig& c) { c.SetControlTlv(EDCBXControlTlv()); }},
        {"subtype", [](EDCBXConfig& c) { c.SetSubType(2); }},
    };
    EDCBXConfig const original = SampleConfig();
    EInterfaceItem const interface;
    for (auto const& c : cases) {
        SCOPED_TRACE(c.field);
        EDCBXConfig changed(original);
        changed.SetParent(&interface);
        EXPECT_FALSE(changed != original);
        c.change(changed);
        EXPECT_TRUE(changed != original);
    }
}

TEST(EDCBXConfig, IdIsTheInterfacesPathAndLeaf36)
{
    RecordedInterface recorded;
    EComponentId id;
    recorded.interface.GetDCBXConfig().GetID(id);
    EXPECT_EQ("7.1.1.36", TextOf(id));
    EDCBXConfig().GetID(id);
    EXPECT_EQ("36", TextOf(id));
}

TEST(EDCBXConfig, CopyConstructionTakesTheParentAndSwapLeavesIt)
{
    EInterfaceItem const interface;
    EDCBXConfig config = SampleConfig();
    config.SetParent(&interface);
    EDCBXConfig copy(config);
    EXPECT_EQ(&interface, copy.GetParent());
    EXPECT_FALSE(copy != config);

    EDCBXConfig other;
    other.Swap(config);
    EXPECT_EQ(nullptr, other.GetParent());
    EXPECT_EQ(&interface, config.GetParent());
    EXPECT_FALSE(other != SampleConfig());
    EXPECT_FALSE(config != EDCBXConfig());

    EDCBXConfig assigned;
    assigned = copy;
    EXPECT_EQ(nullptr, assigned.GetParent());
    EXPECT_FALSE(assigned != SampleConfig());
}

static std::string FeatureCount(EDCBXConfig const& config)
{
    return std::to_string(config.GetFeatureTlvs().size());
}

TEST(EDCBXConfig, SettersAnnounceOnceWhileTheOldValueIsStillHeld)
{
    struct {
        char const* operation;
        char const* announced;
        char const* before;
        char const* after;
        void (*set)(EDCBXConfig&);
        std::string (*get)(EDCBXConfig const&);
    } const cases[] = {
        {"SettingDCBXFeatureTlvs", "[1]", "2", "1", [](EDCBXConfig& c) { c.SetFeatureTlvs({MakeFeature(2, 0, 5)}); },
         FeatureCount},
        {"SettingDCBXOUI", "258", "11189196", "258", [](EDCBXConfig& c) { c.SetOUI(258); },
         [](EDCBXConfig const& c) { return std::to_string(c.GetOUI()); }},
        {"SettingDCBXSubType", "2", "1 1 aabbcc", "2 2 00", [](EDCBXConfig& c) { c.SetSubType(2); },
         [](EDCBXConfig const& c) {
             Feature const& feature = c.GetFeatureTlvs()[0];
             return std::to_string(c.GetSubType()) + " " + std::to_string(feature.GetDcbxSubType()) + " " +
                    Hex(feature.GetDesiredCfg());
         }},
        {"SettingDCBXControlTlvMaxVersion", "9", "250", "9", [](EDCBXConfig& c) { c.SetControlTlvMaxVersion(9); },
         [](EDCBXConfig const& c) { return std::to_string(c.GetControlTlvMaxVersion()); }},
        {"SettingDCBXControlTlvOperVersion", "9", "4", "9", [](EDCBXConfig& c) { c.SetControlTlvOperVersion(9); },
         [](EDCBXConfig const& c) { return std::to_string(c.GetControlTlvOperVersion()); }},
        {"SettingDCBXControlTlvOperVersionEnabled", "false", "1", "0",
         [](EDCBXConfig& c) { c.SetControlTlvOperVersionEnabled(false); },
         [](EDCBXConfig const& c) { return std::to_string(c.GetControlTlvOperVersionEnabled()); }},
        {"SettingDCBXConfig", "record", "2", "0", [](EDCBXConfig& c) { c.Copy(EDCBXConfig()); }, FeatureCount},
        {"SettingDCBXConfig", "record", "2", "0", [](EDCBXConfig& c) { c = EDCBXConfig(); }, FeatureCount},
        {"SettingDCBXConfig", "record", "2", "0", [](EDCBXConfig& c) { c.Empty(); }, FeatureCount},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.operation);
        RecordedInterface recorded;
        EDCBXConfig& config = recorded.interface.GetDCBXConfig();
        EDCBXConfig sample = SampleConfig();
        config.Swap(sample);
        recorded.recorder->Clear();
        std::string seen;
        recorded.recorder->whenCalled = [&] { seen = c.get(config); };
        c.set(config);
        ASSERT_EQ(1u, recorded.recorder->calls.size());
        EXPECT_EQ(c.operation, recorded.recorder->calls[0].operation);
        EXPECT_EQ(&config, recorded.recorder->calls[0].record);
        EXPECT_EQ(c.announced, recorded.recorder->calls[0].values);
        EXPECT_EQ(c.before, seen);
        EXPECT_EQ(c.after, c.get(config));
        EXPECT_EQ(&recorded.interface, config.GetParent());
    }
}

TEST(EDCBXConfig, SettersAnnounceEvenWhenNothingChanges)
{
    RecordedInterface recorded;
    EDCBXConfig& config = recorded.interface.GetDCBXConfig();
    recorded.recorder->Clear();
    config.SetFeatureTlvs({});
    config.SetOUI(config.GetOUI());
    config.SetSubType(config.GetSubType());
    config.SetControlTlvMaxVersion(255);
    config.SetControlTlvOperVersion(255);
    config.SetControlTlvOperVersionEnabled(false);
    EXPECT_EQ((std::vector<std::string>{"SettingDCBXFeatureTlvs", "SettingDCBXOUI", "SettingDCBXSubType",
                                        "SettingDCBXControlTlvMaxVersion", "SettingDCBXControlTlvOperVersion",
                                        "SettingDCBXControlTlvOperVersionEnabled"}),
              recorded.recorder->Operations());
}

TEST(EDCBXConfig, AllOtherOperationsAreSilent)
{
    RecordedInterface recorded;
    EDCBXConfig& config = recorded.interface.GetDCBXConfig();
    recorded.recorder->Clear();
    config.SetControlTlv(SampleDCBXControl());
    config.AddFeatureTlv(MakeFeature(2, 0, 5));
    config.SetFeatureMismatch(true, 2, 0, 5);
    config.RemoveFeatureTlv(2, 0, 5);
    config.AddFeatureTlv(MakeFeature(2, 0, 5));
    config.GetFeatureTlv(0u)->SetType(3);
    config.RemoveFeatureTlv(0u);
    EDCBXConfig other = SampleConfig();
    config.Swap(other);
    ReadInto(config, Golden("EDCBXConfig.v0128200A.hex"));
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_FALSE(other.GetControlTlv() != SampleDCBXControl());
}

TEST(EDCBXConfig, EveryFeatureCarriesTheSubTypeOfTheConfiguration)
{
    EDCBXConfig config;
    config.SetSubType(1);
    config.SetFeatureTlvs({Feature(2, 0, 2), Feature(3, 0, 7)});
    EXPECT_EQ("0001020304050607000000640000000008", Hex(config.GetFeatureTlvs()[0].GetDesiredCfg())); // not reset
    config.GetFeatureTlv(1u)->SetDcbxSubType(9);
    config.AddFeatureTlv(Feature(4, 0, 2)); // restores that of the others, too
    ASSERT_EQ(3u, config.GetFeatureTlvs().size());
    for (Feature const& feature : config.GetFeatureTlvs()) EXPECT_EQ(1, feature.GetDcbxSubType());
    EXPECT_EQ("890600000008", Hex(config.GetFeatureTlvs()[2].GetDesiredCfg())); // not reset
}

TEST(EDCBXConfig, SetSubTypeAlwaysResetsThePayloads)
{
    EDCBXConfig config;
    config.AddFeatureTlv(Feature(3));
    config.AddFeatureTlv(Feature(6));
    for (unsigned char const subType : std::initializer_list<unsigned char>{2, 2, 1, 1, 3, 0}) {
        SCOPED_TRACE(+subType);
        for (unsigned int i : {0u, 1u}) config.GetFeatureTlv(i)->SetDesiredCfg(Payload("DE AD BE EF"));
        config.SetSubType(subType);
        EXPECT_EQ(subType, config.GetSubType());
        EXPECT_EQ(subType, config.GetFeatureTlvs()[1].GetDcbxSubType());
        EXPECT_EQ(subType == 2 ? "0808" : "08", Hex(config.GetFeatureTlvs()[0].GetDesiredCfg()));
        EXPECT_EQ(subType == 2 ? "00" : "01", Hex(config.GetFeatureTlvs()[1].GetDesiredCfg()));
    }
}

TEST(EDCBXConfig, TakesArgumentsThatReferToItsOwnList)
{
    EDCBXConfig config;
    for (unsigned int key : {1u, 2u, 3u}) config.AddFeatureTlv(MakeFeature(3, 0, key));
    EDCBXConfig const original(config);
    config.SetFeatureTlvs(config.GetFeatureTlvs());
    EXPECT_FALSE(config != original);
    config.Copy(config);
    EXPECT_FALSE(config != original);
    config.SetControlTlv(config.GetControlTlv());
    EXPECT_FALSE(config != original);
    for (int i = 0; i < 20; ++i) config.AddFeatureTlv(config.GetFeatureTlvs().front());
    EXPECT_EQ(23u, config.GetFeatureTlvs().size());
    EXPECT_EQ(1u, config.GetFeatureTlvs().back().GetInstanceKey());
}

TEST(EDCBXConfig, FindsTheFirstFeatureOfTypeSubTypeAndKey)
{
    EDCBXConfig config;
    config.SetFeatureTlvs(
        {MakeFeature(2, 0, 5), MakeFeature(3, 0, 5), MakeFeature(3, 1, 5), MakeFeature(3, 1, 6), MakeFeature(3, 1, 6)});
    struct {
        unsigned char type;
        unsigned char subType;
        unsigned int key;
        int index; // -1: none
    } const cases[] = {{2, 0, 5, 0},  {3, 0, 5, 1},  {3, 1, 5, 2}, {3, 1, 6, 3},
                       {3, 0, 6, -1}, {2, 1, 5, -1}, {4, 1, 6, -1}};
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << +c.type << " " << +c.subType << " " << c.key);
        Feature const* const expected =
            c.index < 0 ? nullptr : &config.GetFeatureTlvs()[static_cast<unsigned>(c.index)];
        EXPECT_EQ(expected, config.GetFeatureTlv(c.type, c.subType, c.key));
        EXPECT_EQ(expected, std::as_const(config).GetFeatureTlvReadOnly(c.type, c.subType, c.key));
        EXPECT_FALSE(config.IsFeatureMismatch(c.type, c.subType, c.key));
        EXPECT_EQ(expected != nullptr, config.SetFeatureMismatch(true, c.type, c.subType, c.key));
        EXPECT_EQ(expected != nullptr, config.IsFeatureMismatch(c.type, c.subType, c.key));
        EXPECT_TRUE(!expected || expected->IsMismatch());
        EXPECT_EQ(expected != nullptr, config.SetFeatureMismatch(false, c.type, c.subType, c.key));
        EXPECT_FALSE(config.IsFeatureMismatch(c.type, c.subType, c.key));
    }
    EXPECT_EQ(&config.GetFeatureTlvs()[4], config.GetFeatureTlv(4u));
    EXPECT_EQ(&config.GetFeatureTlvs()[0], std::as_const(config).GetFeatureTlvReadOnly(0u));
    EXPECT_EQ(nullptr, config.GetFeatureTlv(5u));
    EXPECT_EQ(nullptr, std::as_const(config).GetFeatureTlvReadOnly(0xFFFFFFFFu));
}

TEST(EDCBXConfig, RemovesTheFirstMatchOrAtIndex0Only)
{
    EDCBXConfig config;
    config.SetFeatureTlvs({MakeFeature(2, 0, 1), MakeFeature(3, 0, 2), MakeFeature(4, 0, 3), MakeFeature(3, 0, 2)});
    for (unsigned int index : {1u, 3u, 4u, 0xFFFFFFFFu}) EXPECT_FALSE(config.RemoveFeatureTlv(index));
    EXPECT_EQ((KeyList{1, 2, 3, 2}), Keys(config));
    EXPECT_TRUE(config.RemoveFeatureTlv(0u));
    EXPECT_EQ((KeyList{2, 3, 2}), Keys(config));
    EXPECT_FALSE(config.RemoveFeatureTlv(3, 1, 2));
    EXPECT_FALSE(config.RemoveFeatureTlv(3, 0, 3));
    EXPECT_FALSE(config.RemoveFeatureTlv(2, 0, 2));
    EXPECT_TRUE(config.RemoveFeatureTlv(3, 0, 2));
    EXPECT_EQ((KeyList{3, 2}), Keys(config));
    EXPECT_TRUE(config.RemoveFeatureTlv(3, 0, 2));
    EXPECT_TRUE(config.RemoveFeatureTlv(0u));
    EXPECT_FALSE(config.RemoveFeatureTlv(0u));
    EXPECT_FALSE(config.RemoveFeatureTlv(3, 0, 2));
}

TEST(EDCBXConfig, NextAvailableFeatureTypeIsTheFirstUnusedOf2To127)
{
    struct {
        std::vector<unsigned char> used;
        bool found;
        unsigned char type;
    } cases[] = {{{}, true, 2},   {{2, 3, 4}, true, 5}, {{0, 1, 3, 200}, true, 2}, {{4, 3, 2, 6, 255}, true, 5},
                 {{}, true, 127}, {{}, false, 128}};
    for (unsigned char type = 2; type < 128; ++type) {
        if (type < 127) cases[4].used.push_back(type);
        cases[5].used.push_back(type);
    }
    for (auto const& c : cases) {
        SCOPED_TRACE(+c.type);
        EDCBXConfig config;
        for (unsigned char used : c.used) config.AddFeatureTlv(Feature(used));
        unsigned char type = 99;
        EXPECT_EQ(c.found, config.GetNextAvailableFeatureType(type));
        EXPECT_EQ(c.type, type);
    }
}

TEST(EDCBXConfigEdit, ReadsAndAppliesTheFieldOfTheFirstSubId)
{
    struct {
        unsigned int subId;
        char const* bytes;
        char const* operation;
        char const* announced;
    } const cases[] = {
        {1, "00", "SettingDCBXFeatureTlvs", "[0]"},
        {2, "FA AA BB CC", "SettingDCBXOUI", "11189196"},
        {3, "01", "SettingDCBXSubType", "1"},
        {3, "FB 12 34 56 02", "SettingDCBXSubType", "2"}, // the low byte
        {4, "F8 FE", "SettingDCBXControlTlvMaxVersion", "254"},
        {5, "03", "SettingDCBXControlTlvOperVersion", "3"},
        {6, "01", "SettingDCBXControlTlvOperVersionEnabled", "true"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.subId << ": " << c.bytes);
        RecordedInterface recorded;
        EDCBXConfig& config = recorded.interface.GetDCBXConfig();
        recorded.recorder->Clear();
        EArchive archive;
        Load(archive, Bytes(c.bytes));
        std::vector<unsigned int> const path = {c.subId, 77}; // what follows the first is ignored
        EXPECT_TRUE(config.ProcessEdit(path.begin(), path.end(), archive));
        EXPECT_TRUE(archive.AtEnd());
        ASSERT_EQ(1u, recorded.recorder->calls.size());
        EXPECT_EQ(c.operation, recorded.recorder->calls[0].operation);
        EXPECT_EQ(c.announced, recorded.recorder->calls[0].values);
    }
}

TEST(EDCBXConfigEdit, ReplacesTheFeaturesByThoseRead)
{
    EDCBXConfig config;
    config.AddFeatureTlv(Feature(3));
    EArchive archive;
    Load(archive, Bytes("02") + Golden("EDCBXFeatureTlv.v0218200C.hex") + Golden("EDCBXFeatureTlv.v02182009.hex"));
    std::vector<unsigned int> const path = {1};
    EXPECT_TRUE(config.ProcessEdit(path.begin(), path.end(), archive));
    EXPECT_TRUE(archive.AtEnd());
    ASSERT_EQ(2u, config.GetFeatureTlvs().size());
    Feature expected = SampleDCBXFeature();
    expected.SetDcbxSubType(2);
    EXPECT_FALSE(config.GetFeatureTlvs()[0] != expected);
    EXPECT_EQ(300, config.GetFeatureTlvs()[1].GetLength());
    EXPECT_EQ("aabbcc", Hex(config.GetFeatureTlvs()[1].GetDesiredCfg()));
}

TEST(EDCBXConfigEdit, ReadsAllFeaturesBeforeItChangesAnything)
{
    RecordedInterface recorded;
    EDCBXConfig& config = recorded.interface.GetDCBXConfig();
    config.AddFeatureTlv(MakeFeature(3, 0, 1));
    recorded.recorder->Clear();
    EArchive archive;
    Load(archive, Bytes("02") + Golden("EDCBXFeatureTlv.v0218200C.hex"));
    std::vector<unsigned int> const path = {1};
    EXPECT_THROW(config.ProcessEdit(path.begin(), path.end(), archive), EArchiveError);
    EXPECT_TRUE(recorded.recorder->calls.empty());
    EXPECT_EQ((KeyList{1}), Keys(config));
}

TEST(EDCBXConfigEdit, AValueThatIsTooWideChangesNothing)
{
    struct {
        unsigned int subId;
        char const* hex;
    } const cases[] = {{2, "FC 01 00 00 00 00"}, {3, "FC 01 00 00 00 02"}, {4, "F9 01 00"}, {5, "F9 01 00"}, {6, "02"}};
    RecordedInterface recorded;
    for (auto const& c : cases) ExpectTooWide(*recorded.recorder, recorded.interface.GetDCBXConfig(), c.subId, c.hex);
}

TEST(EDCBXConfigEdit, TakesUpTo255FeaturesSinceTheCountHas8Bits)
{
    std::string const feature = Golden("EDCBXFeatureTlv.v02182009.hex");
    std::string features;
    for (int i = 0; i < 255; ++i) features += feature;
    EDCBXConfig config;
    EXPECT_TRUE(Edit(config, {1}, Bytes("F8 FF") + features));
    EXPECT_EQ(255u, config.GetFeatureTlvs().size());

    EArchive archive;
    Load(archive, Bytes("F9 01 00") + features + feature); // on purpose refused, though all 256 are there
    EXPECT_THROW(Edit(config, {1}, archive), EArchiveError);
    EXPECT_EQ(255u, config.GetFeatureTlvs().size());
}

TEST(EDCBXConfigEdit, RefusesUnknownSubIdsAndReadsNothing)
{
    std::vector<std::vector<unsigned int>> const paths = {{}, {0}, {7}, {8, 1}, {0xFFFFFFFF}};
    for (auto const& path : paths) {
        RecordedInterface recorded;
        EDCBXConfig& config = recorded.interface.GetDCBXConfig();
        recorded.recorder->Clear();
        EArchive archive;
        Load(archive, Bytes("05"));
        EXPECT_FALSE(config.ProcessEdit(path.begin(), path.end(), archive));
        EXPECT_TRUE(recorded.recorder->calls.empty());
        unsigned int next = 0;
        archive >> next;
        EXPECT_EQ(5u, next);
    }
}

TEST(EDCBXConfigArchive, WritesTheNewestVersionAndReadsIt)
{
    EXPECT_EQ(Golden("EDCBXConfig.v0128200A.hex"), Written(SampleConfig()));
    EXPECT_FALSE(Read<EDCBXConfig>("EDCBXConfig.v0128200A.hex") != SampleConfig());
}

TEST(EDCBXConfigArchive, FeaturesGetTheSubTypeThatIsKeptFromBeforeAnOldVersion)
{
    auto const config = Read<EDCBXConfig>("EDCBXConfig.v01282009.hex");
    EXPECT_EQ(2, config.GetSubType());
    EXPECT_EQ(0xAABBCCu, config.GetOUI());
    EDCBXControlTlv control;
    control.SetOperVersion(4);
    control.SetMaxVersion(250);
    control.SetSeqNo(0x01020304);
    control.SetAckNo(0x1234);
    EXPECT_FALSE(config.GetControlTlv() != control);
    ASSERT_EQ(2u, config.GetFeatureTlvs().size());
    for (Feature const& feature : config.GetFeatureTlvs()) {
        EXPECT_EQ(6, feature.GetType());
        EXPECT_EQ(2, feature.GetDcbxSubType());
        EXPECT_EQ("aabbcc", Hex(feature.GetDesiredCfg())); // not reset
        EXPECT_TRUE(feature.IsMismatch());
    }
    EXPECT_EQ(Feature::ADVERTISED, config.GetFeatureTlvs()[0].GetDcbxAdvertiseType());
    EXPECT_EQ(Feature::PEER_SHUT_DOWN, config.GetFeatureTlvs()[1].GetDcbxAdvertiseType());

    EDCBXConfig first;
    first.SetSubType(1);
    ReadInto(first, Golden("EDCBXConfig.v01282009.hex"));
    EXPECT_EQ(1, first.GetSubType());
    EXPECT_EQ(1, first.GetFeatureTlvs()[0].GetDcbxSubType());
}

TEST(EDCBXConfigArchive, AppendsTheFeaturesReadAndStampsAllOfThem)
{
    EDCBXConfig config;
    config.AddFeatureTlv(MakeFeature(3, 0, 1));
    ReadInto(config, Golden("EDCBXConfig.v0128200A.hex"));
    EXPECT_EQ((KeyList{1, 0xA1B2C3D4, 7}), Keys(config));
    for (Feature const& feature : config.GetFeatureTlvs()) EXPECT_EQ(1, feature.GetDcbxSubType());
    EXPECT_EQ("0808", Hex(config.GetFeatureTlvs()[0].GetDesiredCfg())); // not reset
}

TEST(EDCBXConfigArchive, NoMoreThan255FeaturesCanBeReadBack)
{
    EDCBXConfig config;
    config.SetFeatureTlvs(Features(255));
    EDCBXConfig read;
    ReadInto(read, Written(config));
    EXPECT_FALSE(read != config);

    config.AddFeatureTlv(Feature());
    EArchive archive;
    Load(archive, Written(config));
    EXPECT_THROW(archive >> read, EArchiveError);
    EXPECT_EQ(255u, read.GetFeatureTlvs().size());
}

TEST(EDCBXConfigArchiveDeathTest, RefusesAllOtherVersions)
{
    for (char const* version : {"00", "FB 01 28 20 08", "FB 01 28 20 0B"})
        ExpectArchiveError<EDCBXConfig>(version, kFile, 1517, "EDCBXConfig::SerializeIn");
}
