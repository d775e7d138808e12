#pragma once

#include "tlvMessages.hpp"

#include "eInterfaceTLVBuilder.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// Messages as the builders make them, and how to look at one.

inline std::string Text(Protocol::EBytes const& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

/// What a builder appends; it must be the same behind other bytes without spare capacity, which must stay.
inline std::string Built(std::function<void(Protocol::EBytes&)> const& append)
{
    Protocol::EBytes alone;
    append(alone);
    std::string const before = "before";
    Protocol::EBytes behind(before.begin(), before.end());
    behind.shrink_to_fit();
    append(behind);
    EXPECT_EQ(before + Text(alone), Text(behind));
    return Text(alone);
}
template <class Value>
std::string Built(void (*append)(Protocol::EBytes&, TLVIds::TLVId const&, Value const&), TLVIds::TLVId const& id,
                  Value const& value)
{
    return Built([&](Protocol::EBytes& out) { append(out, id, value); });
}

struct BuiltTlv {
    unsigned int number;
    std::string value;
    std::size_t valueStart; // in the message
};

inline unsigned int U32At(std::string const& bytes, std::size_t offset)
{
    unsigned int value = 0;
    for (std::size_t i = offset; i < offset + 4; ++i) value = value << 8 | static_cast<unsigned char>(bytes.at(i));
    return value;
}

/// The TLVs of one level, which must be whole. \p start: where the level stands in its message.
inline std::vector<BuiltTlv> Level(std::string const& bytes, std::size_t start = 0)
{
    std::vector<BuiltTlv> level;
    std::size_t offset = 0;
    while (offset + 8 <= bytes.size()) {
        std::size_t const length = U32At(bytes, offset + 4);
        if (length > bytes.size() - offset - 8) break;
        level.push_back({U32At(bytes, offset), bytes.substr(offset + 8, length), start + offset + 8});
        offset += 8 + length;
    }
    EXPECT_EQ(bytes.size(), offset) << "not a sequence of whole TLVs";
    return level;
}

/// One nested TLV of a message: the setter of the field that it carries, and the value it then has.
template <class Record> struct SentField {
    TLVIds::TLVId const& id;
    std::optional<std::string> value; // none: it is made of TLVs and only has to change
    std::function<void(Record&)> set; // none: it cannot be seen here
};

/// The nested TLVs of what \p build makes of a record are those of the table, in its order, the first with a cleared
/// id. Each setter changes its own and no other.
template <class Record>
void ExpectEachFieldSentAlone(std::function<std::vector<BuiltTlv>(Record const&)> const& build, Record const& fresh,
                              std::vector<SentField<Record>> const& fields, bool firstIdCleared = true)
{
    std::vector<BuiltTlv> const before = build(fresh);
    ASSERT_EQ(fields.size(), before.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        SCOPED_TRACE(fields[i].id.GetName());
        EXPECT_EQ(i == 0 && firstIdCleared ? 0U : fields[i].id.GetIndex(), before[i].number);
        if (!fields[i].set) continue;
        Record changed(fresh);
        fields[i].set(changed);
        std::vector<BuiltTlv> const after = build(changed);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t other = 0; other < after.size(); ++other) {
            EXPECT_EQ(before[other].number, after[other].number);
            if (other == i) continue;
            EXPECT_EQ(before[other].value, after[other].value) << fields[other].id.GetName();
        }
        EXPECT_NE(before[i].value, after[i].value);
        EXPECT_EQ(fields[i].value.value_or(after[i].value), after[i].value);
    }
}

/// None of the changes shows in the message.
template <class Record>
void ExpectNotSent(std::function<std::string(Record const&)> const& build, Record const& fresh,
                   std::vector<std::function<void(Record&)>> const& changes)
{
    for (std::size_t i = 0; i < changes.size(); ++i) {
        SCOPED_TRACE(i);
        Record changed(fresh);
        changes[i](changed);
        EXPECT_EQ(build(fresh), build(changed));
    }
}
