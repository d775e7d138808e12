#include "eDcbxFeatureTlv.hpp"

#include "dcbxRecords.hpp"

#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using Feature = EDCBXFeatureTlv;
using Header = EDCBXFeatureTlvHeader;

static char const kFile[] = "x86_64/common/ifcore/eDcbxConfig.cpp";

namespace {
/// A header that can be made without arguments.
struct EmptyHeader : Header {
    EmptyHeader() : Header(0, 0) {}
};
} // namespace

static unsigned int KeyDrawnAfterSeed(unsigned int seed)
{
    std::srand(seed);
    unsigned int const first = static_cast<unsigned int>(std::rand());
    unsigned int const second = static_cast<unsigned int>(std::rand());
    return (first << 16) | second;
}

TEST(EDCBXFeatureTlvHeader, DefaultsToEnabledWillingAndVersions255)
{
    Header const header(3, 9);
    EXPECT_EQ(3, header.GetType());
    EXPECT_EQ(0, header.GetLength());
    EXPECT_EQ(255, header.GetOperVersion());
    EXPECT_EQ(255, header.GetMaxVersion());
    EXPECT_TRUE(header.IsEnabled());
    EXPECT_TRUE(header.IsWilling());
    EXPECT_FALSE(header.IsError());
    EXPECT_EQ(9, header.GetSubType());
    EXPECT_FALSE(header.IsOverrideOperVersion());
}

TEST(EDCBXFeatureTlvHeader, InstanceKeyIsTwoDrawsTheFirstOneShiftedBy16)
{
    Header const seeded(2, 0); // the seeding at the first draw is over
    for (unsigned int seed = 1; seed < 50; ++seed) {
        unsigned int const expected = KeyDrawnAfterSeed(seed);
        std::srand(seed);
        EXPECT_EQ(expected, Header(2, 0).GetInstanceKey()); // seeded no second time
    }
}

TEST(EDCBXFeatureTlvHeader, EveryNewHeaderDrawsAKeyAndEveryCopyKeepsIt)
{
    Header const seeded(2, 0);
    std::srand(1);
    Header const a(2, 0);
    Header const b(2, 0);
    EXPECT_NE(a.GetInstanceKey(), b.GetInstanceKey());
    Header copy(a);
    EXPECT_EQ(a.GetInstanceKey(), copy.GetInstanceKey());
    copy = b;
    EXPECT_EQ(b.GetInstanceKey(), copy.GetInstanceKey());

    Feature const feature(2);
    EXPECT_EQ(feature.GetInstanceKey(), Feature(feature).GetInstanceKey());
    Feature assigned;
    assigned = feature;
    EXPECT_EQ(feature.GetInstanceKey(), assigned.GetInstanceKey());
}

TEST(EDCBXFeatureTlvHeaderDeathTest, TheFirstDrawSeedsWithTheTime)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a process of its own, which has drawn nothing yet
    EXPECT_EXIT(
        {
            std::time_t const before = std::time(nullptr);
            unsigned int const key = Header(2, 0).GetInstanceKey();
            std::time_t const after = std::time(nullptr);
            bool found = false;
            for (std::time_t seed = before; seed <= after; ++seed)
                found = found || key == KeyDrawnAfterSeed(static_cast<unsigned int>(seed));
            std::exit(found ? 0 : 3);
        },
        testing::ExitedWithCode(0), "");
}

TEST(EDCBXFeatureTlvHeader, DiffersInEveryField)
{
    struct {
        char const* field;
        void (*change)(Header&);
    } const cases[] = {
        {"type", [](Header& h) { h.SetType(9); }},
        {"length", [](Header& h) { h.SetLength(9); }},
        {"oper version", [](Header& h) { h.SetOperVersion(9); }},
        {"max version", [](Header& h) { h.SetMaxVersion(9); }},
        {"enabled", [](Header& h) { h.SetEnabled(false); }},
        {"willing", [](Header& h) { h.SetWilling(false); }},
        {"error", [](Header& h) { h.SetError(true); }},
        {"subtype", [](Header& h) { h.SetSubType(9); }},
        {"instance key", [](Header& h) { h.SetInstanceKey(h.GetInstanceKey() + 1); }},
        {"override", [](Header& h) { h.SetOverrideOperVersion(true); }},
    };
    Header const original(2, 0);
    for (auto const& c : cases) {
        SCOPED_TRACE(c.field);
        Header changed(original);
        EXPECT_FALSE(changed != original);
        c.change(changed);
        EXPECT_TRUE(changed != original);
    }
}

TEST(EDCBXFeatureTlvHeaderArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    Header const sample = SampleDCBXFeature().GetHeader();
    EXPECT_EQ(Golden("EDCBXFeatureTlvHeader.v0218200B.hex"), Written(sample));
    EXPECT_FALSE(Read<EmptyHeader>("EDCBXFeatureTlvHeader.v0218200B.hex") != sample);

    struct {
        char const* golden;
        bool key;
        bool override;
    } const cases[] = {{"EDCBXFeatureTlvHeader.v02182009.hex", false, false},
                       {"EDCBXFeatureTlvHeader.v0218200A.hex", true, false},
                       {"EDCBXFeatureTlvHeader.v0218200B.hex", true, true}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        Header expected = sample;
        if (!c.key) expected.SetInstanceKey(77);
        if (!c.override) expected.SetOverrideOperVersion(false);
        Header header(1, 1); // what is not read stays
        header.SetInstanceKey(77);
        ReadInto(header, Golden(c.golden));
        EXPECT_FALSE(header != expected);
    }
}

TEST(EDCBXFeatureTlvHeaderArchive, EveryFlagHasItsPlace)
{
    std::size_t const end = Golden("EDCBXFeatureTlvHeader.v0218200B.hex").size();
    struct {
        char const* flag;
        std::size_t position;
        void (*set)(Header&, bool);
    } const cases[] = {
        {"override", 5, [](Header& h, bool on) { h.SetOverrideOperVersion(on); }},
        {"enabled", end - 4, [](Header& h, bool on) { h.SetEnabled(on); }},
        {"willing", end - 3, [](Header& h, bool on) { h.SetWilling(on); }},
        {"error", end - 2, [](Header& h, bool on) { h.SetError(on); }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.flag);
        Header header = SampleDCBXFeature().GetHeader();
        for (auto const& other : cases) other.set(header, false);
        c.set(header, true);
        std::string const bytes = Written(header);
        for (auto const& other : cases) EXPECT_EQ(&other == &c ? 1 : 0, bytes.at(other.position)) << other.flag;
    }
}

TEST(EDCBXFeatureTlvHeaderArchiveDeathTest, RefusesAllOtherVersions)
{
    for (char const* version : {"00", "FB 02 18 20 08", "FB 02 18 20 0C"})
        ExpectArchiveError<EmptyHeader>(version, kFile, 95, "EDCBXFeatureTlvHeader::SerializeIn");
}

TEST(EDCBXFeatureTlv, DefaultsToAdvertisedWithoutMismatch)
{
    Feature const feature(3, 9, 1);
    EXPECT_EQ(3, feature.GetType());
    EXPECT_EQ(9, feature.GetSubType());
    EXPECT_EQ(1, feature.GetDcbxSubType());
    EXPECT_FALSE(feature.IsMismatch());
    EXPECT_EQ(Feature::ADVERTISED, feature.GetDcbxAdvertiseType());
    EXPECT_TRUE(feature.IsFeatureAdvertised());
    EXPECT_EQ(Feature::STATE_LINK_UP, feature.GetDcbxState());
    EXPECT_EQ(255, feature.GetOperVersion());
    EXPECT_EQ(255, feature.GetMaxVersion());
    EXPECT_TRUE(feature.IsEnabled());
    EXPECT_TRUE(feature.IsWilling());
    EXPECT_FALSE(feature.IsError());
    EXPECT_EQ(0, feature.GetLength());
    EXPECT_FALSE(feature.IsOverrideOperVersion());
    EXPECT_EQ("08", Hex(feature.GetDesiredCfg()));
}

TEST(EDCBXFeatureTlv, HeaderAccessorsReachTheHeader)
{
    Feature const feature = SampleDCBXFeature();
    Header const& header = feature.GetHeader();
    EXPECT_EQ(6, header.GetType());
    EXPECT_EQ(300, header.GetLength());
    EXPECT_EQ(3, header.GetOperVersion());
    EXPECT_EQ(254, header.GetMaxVersion());
    EXPECT_TRUE(header.IsEnabled());
    EXPECT_FALSE(header.IsWilling());
    EXPECT_TRUE(header.IsError());
    EXPECT_EQ(5, header.GetSubType());
    EXPECT_EQ(0xA1B2C3D4u, header.GetInstanceKey());
    EXPECT_TRUE(header.IsOverrideOperVersion());

    Feature other(2);
    std::string const payload = Hex(other.GetDesiredCfg());
    other.SetHeader(header); // a plain accessor: the payload stays, even with another type
    EXPECT_FALSE(other.GetHeader() != header);
    EXPECT_EQ(payload, Hex(other.GetDesiredCfg()));
    other.SetEnabled(false);
    EXPECT_FALSE(other.IsEnabled());
    other.SetSubType(8);
    EXPECT_EQ(8, other.GetHeader().GetSubType());
}

TEST(EDCBXFeatureTlv, DiffersInEveryField)
{
    struct {
        char const* field;
        void (*change)(Feature&);
    } const cases[] = {
        {"header", [](Feature& f) { f.SetInstanceKey(f.GetInstanceKey() + 1); }},
        {"payload", [](Feature& f) { f.SetDesiredCfg(Payload("00")); }},
        {"mismatch", [](Feature& f) { f.SetMismatch(false); }},
        {"advertise type", [](Feature& f) { f.SetDcbxAdvertiseType(static_cast<Feature::eDcbxAdvertiseType>(77)); }},
        {"advertised", [](Feature& f) { f.SetFeatureAdvertised(true); }},
        {"DCBX subtype", [](Feature& f) { f.SetDcbxSubType(2); }},
        {"state", [](Feature& f) { f.SetDcbxState(static_cast<Feature::eDcbxFeatureState>(99)); }},
    };
    Feature const original = SampleDCBXFeature();
    for (auto const& c : cases) {
        SCOPED_TRACE(c.field);
        Feature changed(original);
        EXPECT_FALSE(changed != original);
        c.change(changed);
        EXPECT_TRUE(changed != original);
    }
}

TEST(EDCBXFeatureTlv, CopyAssignmentAndSwapTakeEveryField)
{
    Feature const sample = SampleDCBXFeature();
    Feature const fresh(2);
    Feature a(fresh);
    a.Copy(sample);
    EXPECT_FALSE(a != sample);
    Feature b(fresh);
    b.Swap(a);
    EXPECT_FALSE(b != sample);
    EXPECT_FALSE(a != fresh);
    Feature const& self = b;
    b = self;
    EXPECT_FALSE(b != sample);
}

TEST(EDCBXFeatureTlv, SetTypeResetsThePayloadOnlyWhenTheTypeChanges)
{
    Feature feature(3);
    feature.SetDesiredCfg(Payload("DE AD"));
    feature.SetType(3);
    EXPECT_EQ("dead", Hex(feature.GetDesiredCfg()));
    feature.SetType(4);
    EXPECT_EQ(4, feature.GetType());
    EXPECT_EQ("890600000008", Hex(feature.GetDesiredCfg()));
}

TEST(EDCBXFeatureTlv, SetDcbxSubTypeKeepsThePayload)
{
    Feature feature(3);
    feature.SetDcbxSubType(1);
    EXPECT_EQ("0808", Hex(feature.GetDesiredCfg()));
}

static std::string const kPriorityGroup1_0 = "0000006400000000" // bandwidth groups
                                             "00000000010000000200000003000064"
                                             "04000000050000000600000007000000";

TEST(EDCBXFeatureTlv, ResetDefaultFillsThePayloadByTypeAndDcbxSubType)
{
    struct {
        unsigned char type;
        std::string second;    // DCBX subtype 2
        std::string otherwise; // all others, also those whose payload no accessor knows
    } const cases[] = {
        {0, "00", "00"},
        {1, "00", "00"},
        {2, "0001020304050607000000640000000008", kPriorityGroup1_0},
        {3, "0808", "08"},
        {4, "890600000008", std::string(124, '0')},
        {5, "0cbc00000008", "08"},
        {6, "00", "01"},
        {7, "00", "00"},
        {255, "00", "00"},
    };
    for (auto const& c : cases) {
        for (int dcbxSubType : {0, 1, 2, 3, 255}) {
            SCOPED_TRACE(testing::Message() << +c.type << " " << dcbxSubType);
            Feature feature(c.type, 0, static_cast<unsigned char>(dcbxSubType));
            std::string const& expected = dcbxSubType == 2 ? c.second : c.otherwise;
            EXPECT_EQ(expected, Hex(feature.GetDesiredCfg()));
            feature.SetDesiredCfg(EBlob("0123456789", 10));
            feature.ResetDefault();
            EXPECT_EQ(expected, Hex(feature.GetDesiredCfg()));
        }
    }
}

TEST(EDCBXFeatureTlv, TheResetsOfOneTypeWriteItsLayout)
{
    struct {
        char const* reset;
        unsigned char type;
        unsigned char dcbxSubType;
        void (Feature::*apply)();
        std::string payload;
    } const cases[] = {
        {"priority group", 2, 2, &Feature::ResetPriorityGroupToDefault, "0001020304050607000000640000000008"},
        {"priority group", 2, 1, &Feature::ResetPriorityGroupToDefault, kPriorityGroup1_0},
        {"PFC", 3, 2, &Feature::ResetPFCToDefault, "0808"},
        {"PFC", 3, 1, &Feature::ResetPFCToDefault, "08"},
        {"application", 4, 2, &Feature::ResetApplicationToDefault, "890600000008"},
        {"application", 4, 1, &Feature::ResetApplicationToDefault, std::string(124, '0')},
        {"application", 5, 2, &Feature::ResetApplicationToDefault, "0cbc00000008"},
        {"application", 5, 1, &Feature::ResetApplicationToDefault, "08"},
        {"application 1.0", 4, 2, &Feature::ResetApplication1_0ToDefault, std::string(124, '0')},
        {"application 1.0", 5, 2, &Feature::ResetApplication1_0ToDefault, "08"},
        {"application 1.1", 4, 1, &Feature::ResetApplication1_1ToDefault, "890600000008"},
        {"application 1.1", 5, 1, &Feature::ResetApplication1_1ToDefault, "0cbc00000008"},
        {"logical link", 6, 2, &Feature::ResetLogicalLinkToDefault, "00"},
        {"logical link", 6, 1, &Feature::ResetLogicalLinkToDefault, "01"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.reset << " " << +c.type << " " << +c.dcbxSubType);
        Feature feature(c.type, 0, c.dcbxSubType);
        feature.SetDesiredCfg(EBlob(nullptr, 100));
        (feature.*c.apply)();
        EXPECT_EQ(c.payload, Hex(feature.GetDesiredCfg()));
    }
}

TEST(EDCBXFeatureTlv, ANewPriorityGroupFeatureMapsPriorityPToGroupP)
{
    Feature const feature(2);
    for (unsigned char i = 0; i < 8; ++i) {
        EXPECT_EQ(i, feature.GetPriorityGroupID(i));
        EXPECT_EQ(i == 3 ? 100 : 0, feature.GetPGPercentage(i));
    }
    EXPECT_EQ(15, feature.GetPriorityGroupID(8));
    EXPECT_EQ(8, feature.GetPGTcsSupported());

    Feature const first(2, 0, 1);
    for (unsigned char i = 0; i < 8; ++i) {
        EXPECT_EQ(i == 3 ? 100 : 0, first.GetBWGPercentage(i));
        EXPECT_EQ(i, first.GetBWGId(i));
        EXPECT_EQ(Feature::STRICT_PRIORITY_NONE, first.GetBWGStrictPriority(i));
        EXPECT_EQ(i == 3 ? 100 : 0, first.GetBWPercentage(i));
    }
    EXPECT_EQ(Feature::LOGICAL_LINK_UP, Feature(6, 0, 1).GetLogicalLinkStatus());
    EXPECT_EQ(Feature::LOGICAL_LINK_DOWN, Feature(6).GetLogicalLinkStatus());
    EXPECT_EQ(0x8906, Feature(4).GetFCoEProtocolId());
    EXPECT_EQ(3260, Feature(5).GetiSCSIProtocolId());
}

namespace {
/// The place of one value in the payload of one type, and its accessors.
struct Place {
    char const* name;
    int type;
    int dcbxSubType; // -1: any
    unsigned int offset;
    unsigned int stride; // 0: without an index
    unsigned int width;  // bytes
    unsigned int missing;
    std::function<unsigned int(Feature const&, unsigned int)> get;
    std::function<void(Feature&, unsigned int, unsigned int)> set; // value, index
    int otherType; // a second type that the accessors also serve, -1: none
};
} // namespace
#define GET(operation) [](Feature const& f, unsigned int) -> unsigned int { return f.operation(); }
#define GET_AT(operation) [](Feature const& f, unsigned int i) -> unsigned int { return f.operation(i); }
#define SET(operation, Type) [](Feature& f, unsigned int value, unsigned int) { f.operation(static_cast<Type>(value)); }
#define SET_AT(operation, Type)                                                                                        \
    [](Feature& f, unsigned int value, unsigned int i) { f.operation(static_cast<Type>(value), i); }
using Byte = unsigned char;
using Word = unsigned short;
static std::vector<Place> const kPlaces = {
    {"PriorityGroupID", 2, 2, 0, 1, 1, 15, GET_AT(GetPriorityGroupID), SET_AT(SetPriorityGroupID, Byte), -1},
    {"PGPercentage", 2, 2, 8, 1, 1, 0, GET_AT(GetPGPercentage), SET_AT(SetPGPercentage, Byte), -1},
    {"PGTcsSupported", 2, 2, 16, 0, 1, 0, GET(GetPGTcsSupported), SET(SetPGTcsSupported, Byte), -1},
    {"BWGPercentage", 2, 1, 0, 1, 1, 0, GET_AT(GetBWGPercentage), SET_AT(SetBWGPercentage, Byte), -1},
    {"BWGId", 2, 1, 8, 4, 1, 0, GET_AT(GetBWGId), SET_AT(SetBWGId, Byte), -1},
    {"BWGStrictPriority", 2, 1, 9, 4, 1, 0, GET_AT(GetBWGStrictPriority),
     SET_AT(SetBWGStrictPriority, Feature::eStrictPriorities), -1},
    {"BWPercentage", 2, 1, 11, 4, 1, 0, GET_AT(GetBWPercentage), SET_AT(SetBWPercentage, Byte), -1},
    {"PFCPriorityMap", 3, -1, 0, 0, 1, 0, GET(GetPFCPriorityMap), SET(SetPFCPriorityMap, Byte), -1},
    {"PFCTcsSupported", 3, 2, 1, 0, 1, 0, GET(GetPFCTcsSupported), SET(SetPFCTcsSupported, Byte), -1},
    {"FCoEProtocolId", 4, 2, 0, 0, 2, 0, GET(GetFCoEProtocolId), SET(SetFCoEProtocolId, Word), -1},
    {"FCoEPriorityMap", 4, 2, 5, 0, 1, 0, GET(GetFCoEPriorityMap), SET(SetFCoEPriorityMap, Byte), 5},
    {"FCoEPriorityMap of type 5", 5, 1, 0, 0, 1, 0, GET(GetFCoEPriorityMap), SET(SetFCoEPriorityMap, Byte), 4},
    {"iSCSIProtocolId", 5, 2, 0, 0, 2, 0, GET(GetiSCSIProtocolId), SET(SetiSCSIProtocolId, Word), -1},
    {"iSCSIPriorityMap", 5, 2, 5, 0, 1, 0, GET(GetiSCSIPriorityMap), SET(SetiSCSIPriorityMap, Byte), -1},
    {"LogicalLinkStatus", 6, -1, 0, 0, 1, 0, GET(GetLogicalLinkStatus),
     SET(SetLogicalLinkStatus, Feature::eLogicalLinkStatus), -1},
};

TEST(EDCBXFeatureTlvPayload, SettersWriteTheirBytesAndGrowThePayloadToCoverThem)
{
    for (Place const& place : kPlaces) {
        for (unsigned int index = 0; index < (place.stride ? 8u : 1u); ++index) {
            SCOPED_TRACE(testing::Message() << place.name << " " << index);
            Feature feature(static_cast<Byte>(place.type), 0,
                            static_cast<Byte>(place.dcbxSubType < 0 ? 1 : place.dcbxSubType));
            feature.SetDesiredCfg(EBlob());
            unsigned int const value = place.width == 2 ? 0xABCD : 0x0D;
            std::string const bytes = place.width == 2 ? "abcd" : "0d";
            unsigned int const position = place.offset + place.stride * index;
            place.set(feature, value, index);
            EXPECT_EQ(std::string(2 * position, '0') + bytes, Hex(feature.GetDesiredCfg()));
            EXPECT_EQ(value, place.get(feature, index));

            feature.SetDesiredCfg(Payload(std::string(2 * 64, 'e').c_str())); // long enough: nothing else is touched
            place.set(feature, value, index);
            EXPECT_EQ(std::string(2 * position, 'e') + bytes + std::string(2 * (64 - position - place.width), 'e'),
                      Hex(feature.GetDesiredCfg()));
        }
    }
}

TEST(EDCBXFeatureTlvPayload, GettersAnswerTheDefaultWhenThePayloadIsTooShort)
{
    for (Place const& place : kPlaces) {
        for (unsigned int index = 0; index < (place.stride ? 8u : 1u); ++index) {
            unsigned int const needed = place.offset + place.stride * index + place.width;
            for (unsigned int size = 0; size <= needed; ++size) {
                SCOPED_TRACE(testing::Message() << place.name << " " << index << " " << size);
                Feature feature(static_cast<Byte>(place.type), 0,
                                static_cast<Byte>(place.dcbxSubType < 0 ? 2 : place.dcbxSubType));
                feature.SetDesiredCfg(Payload(std::string(2 * size, '7').c_str()));
                unsigned int const whole = place.width == 2 ? 0x7777 : 0x77;
                EXPECT_EQ(size < needed ? place.missing : whole, place.get(feature, index));
            }
        }
    }
}

TEST(EDCBXFeatureTlvPayload, OtherTypesDcbxSubTypesAndIndicesAreIgnoredAndAnsweredWithTheDefault)
{
    std::string const untouched(2 * 64, '5');
    for (Place const& place : kPlaces) {
        for (int type = 0; type < 9; ++type) {
            for (int dcbxSubType = 0; dcbxSubType < 4; ++dcbxSubType) {
                for (unsigned int index : {0u, 7u, 8u, 0xFFFFFFFFu}) {
                    bool const matches = type == place.type &&
                                         (place.dcbxSubType < 0 || dcbxSubType == place.dcbxSubType) &&
                                         (place.stride == 0 || index < 8);
                    bool const served = type == place.otherType && dcbxSubType == (type == 5 ? 1 : 2);
                    SCOPED_TRACE(testing::Message() << place.name << " " << type << " " << dcbxSubType << " " << index);
                    Feature feature(static_cast<Byte>(type), 0, static_cast<Byte>(dcbxSubType));
                    feature.SetDesiredCfg(Payload(untouched.c_str()));
                    unsigned int const held = place.width == 2 ? 0x5555 : 0x55;
                    EXPECT_EQ(matches || served ? held : place.missing, place.get(feature, index));
                    place.set(feature, 1, index);
                    EXPECT_EQ(matches || served, Hex(feature.GetDesiredCfg()) != untouched);
                    feature.SetDesiredCfg(EBlob());
                    place.set(feature, 1, index);
                    EXPECT_EQ(matches || served, feature.GetDesiredCfg().GetSize() != 0);
                }
            }
        }
    }
}

TEST(EDCBXFeatureTlvPayload, PriorityGroupIdsAreBelow16)
{
    for (int id = 0; id < 256; ++id) {
        Feature feature(2);
        feature.SetPriorityGroupID(static_cast<Byte>(id), 5);
        EXPECT_EQ(id < 16 ? id : 5, feature.GetPriorityGroupID(5));
    }
    Feature feature(2);
    feature.SetDesiredCfg(EBlob());
    feature.SetPriorityGroupID(16, 0);
    EXPECT_EQ(0u, feature.GetDesiredCfg().GetSize());
}

namespace {
struct PriorityMap {
    char const* name;
    Byte type;
    unsigned int position; // of the map in the payload
    bool (Feature::*isEnabled)(unsigned int) const;
    void (Feature::*setEnabled)(bool, unsigned int);
};
} // namespace
static PriorityMap const kMaps[] = {
    {"PFC", 3, 0, &Feature::IsPFCPriorityEnabled, &Feature::SetPFCPriorityEnabled},
    {"FCoE", 4, 5, &Feature::IsFCoEPriorityEnabled, &Feature::SetFCoEPriorityEnabled},
    {"iSCSI", 5, 5, &Feature::IsiSCSIPriorityEnabled, &Feature::SetiSCSIPriorityEnabled},
};

TEST(EDCBXFeatureTlvPayload, BitPOfAMapIsPriorityP)
{
    for (PriorityMap const& map : kMaps) {
        for (unsigned int priority = 0; priority < 8; ++priority) {
            SCOPED_TRACE(testing::Message() << map.name << " " << priority);
            Feature feature(map.type);
            auto const held = [&] { return feature.GetDesiredCfg().GetData()[map.position]; };
            for (unsigned int p = 0; p < 8; ++p) EXPECT_EQ(p == 3, (feature.*map.isEnabled)(p)) << p;
            (feature.*map.setEnabled)(true, priority);
            EXPECT_EQ(0x08 | 1u << priority, held());
            EXPECT_TRUE((feature.*map.isEnabled)(priority));
            (feature.*map.setEnabled)(false, priority);
            EXPECT_EQ(0x08 & ~(1u << priority), held());
            EXPECT_FALSE((feature.*map.isEnabled)(priority));
            feature.SetDesiredCfg(EBlob());
            EXPECT_FALSE((feature.*map.isEnabled)(priority));
            (feature.*map.setEnabled)(true, priority);
            EXPECT_EQ(map.position + 1, feature.GetDesiredCfg().GetSize());
            EXPECT_EQ(1u << priority, held());
        }
        for (unsigned int priority : {8u, 31u, 32u, 0xFFFFFFFFu}) {
            SCOPED_TRACE(testing::Message() << map.name << " " << priority);
            Feature feature(map.type);
            feature.SetDesiredCfg(Payload("FF FF FF FF FF FF"));
            EXPECT_FALSE((feature.*map.isEnabled)(priority));
            (feature.*map.setEnabled)(false, priority);
            EXPECT_EQ("ffffffffffff", Hex(feature.GetDesiredCfg()));
            feature.SetDesiredCfg(EBlob());
            (feature.*map.setEnabled)(true, priority);
            EXPECT_EQ(0u, feature.GetDesiredCfg().GetSize());
        }
        Feature other(7);
        (other.*map.setEnabled)(true, 0);
        EXPECT_EQ("00", Hex(other.GetDesiredCfg()));
        EXPECT_FALSE((other.*map.isEnabled)(0));
    }
}

TEST(EDCBXFeatureTlvPayload, TheMapOfType5WithDcbxSubType1HasNoPriorityAccessors)
{
    Feature feature(5, 0, 1);
    EXPECT_EQ(0x08, feature.GetFCoEPriorityMap()); // on purpose through the accessors of FCoE
    EXPECT_EQ(0, feature.GetiSCSIPriorityMap());
    EXPECT_FALSE(feature.IsFCoEPriorityEnabled(3));
    EXPECT_FALSE(feature.IsiSCSIPriorityEnabled(3));
    feature.SetFCoEPriorityEnabled(true, 0);
    feature.SetiSCSIPriorityEnabled(true, 0);
    EXPECT_EQ("08", Hex(feature.GetDesiredCfg()));
}

TEST(EDCBXFeatureTlvArchive, WritesTheNewestVersionAndReadsAllOlderOnes)
{
    Feature const sample = SampleDCBXFeature();
    EXPECT_EQ(Golden("EDCBXFeatureTlv.v0218200C.hex"), Written(sample));
    EXPECT_FALSE(Read<Feature>("EDCBXFeatureTlv.v0218200C.hex") != sample);

    struct {
        char const* golden;
        bool state;
        bool dcbxSubType;
        bool advertised; // and advertise type
        bool key;        // by the version of the header
        bool override;   // the same
    } const cases[] = {
        {"EDCBXFeatureTlv.v02182009.hex", false, false, false, false, false},
        {"EDCBXFeatureTlv.v0218200A.hex", false, false, true, false, false},
        {"EDCBXFeatureTlv.v0218200B.hex", false, true, true, true, false},
        {"EDCBXFeatureTlv.v0218200C.hex", true, true, true, true, true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.golden);
        Feature feature(2, 1, 7); // what is not read stays
        feature.SetDcbxState(Feature::STATE_F_WAIT);
        feature.SetDcbxAdvertiseType(Feature::WAITING_FOR_DCBX_RESPONSE);
        feature.SetInstanceKey(77);
        Feature expected = sample;
        if (!c.state) expected.SetDcbxState(Feature::STATE_F_WAIT);
        if (!c.dcbxSubType) expected.SetDcbxSubType(7);
        if (!c.advertised) expected.SetDcbxAdvertiseType(Feature::WAITING_FOR_DCBX_RESPONSE);
        if (!c.advertised) expected.SetFeatureAdvertised(true);
        if (!c.key) expected.SetInstanceKey(77);
        if (!c.override) expected.SetOverrideOperVersion(false);
        ReadInto(feature, Golden(c.golden));
        EXPECT_FALSE(feature != expected);
    }
}

TEST(EDCBXFeatureTlvArchive, KeepsNumbersWithoutAMeaning)
{
    Feature feature = SampleDCBXFeature();
    feature.SetDcbxState(static_cast<Feature::eDcbxFeatureState>(0xFFFFFFFF));
    feature.SetDcbxAdvertiseType(static_cast<Feature::eDcbxAdvertiseType>(0x80000000));
    Feature read;
    ReadInto(read, Written(feature));
    EXPECT_EQ(0xFFFFFFFF, read.GetDcbxState());
    EXPECT_EQ(0x80000000, read.GetDcbxAdvertiseType());
}

TEST(EDCBXFeatureTlvArchiveDeathTest, RefusesAllOtherVersions)
{
    for (char const* version : {"00", "FB 02 18 20 08", "FB 02 18 20 0D"})
        ExpectArchiveError<Feature>(version, kFile, 354, "EDCBXFeatureTlv::SerializeIn");
    ExpectArchiveError<Feature>("FB 02 18 20 09 FB 02 18 20 0C", kFile, 95, "EDCBXFeatureTlvHeader::SerializeIn");
}
