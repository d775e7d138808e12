#include "reading.hpp"

#include "allocations.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include <regex.h>

static bool IsFatalMessage(std::string const& printed)
{
    static regex_t s_message;
    static bool const s_ready =
        regcomp(
            &s_message,
            "^\\*\\*\\* Exception in FILE (x86_64/common/ifcore/e[A-Za-z0-9]+\\.cpp|common/include/eArchive\\.hpp), "
            "LINE [1-9][0-9]*:\n"
            "([A-Za-z0-9_]+::SerializeIn|template<ItemType> SerializeIn\\(\\.\\.,vector\\)) - "
            "EArchive::SerializeError\\(\\)\n$",
            REG_EXTENDED | REG_NOSUB) == 0;
    return s_ready && regexec(&s_message, printed.c_str(), 0, nullptr, 0) == 0;
}

Ending Guarded(std::function<void()> const& body)
{
    std::string printed;
    Ending const ending = RunGuarded(body, printed);
    if (ending == Ending::fatal)
        EXPECT_TRUE(IsFatalMessage(printed)) << printed;
    else
        EXPECT_EQ("", printed);
    return ending;
}

void CheckReading(std::string const& good, Numbers numbers, Reading const& read)
{
    ASSERT_FALSE(good.empty());
    std::map<Ending, int> endings;
    std::size_t largest = 0; // bytes for each byte, beyond the base
    std::size_t const calls = ForEachBadInput(good, numbers, [&](BadInput const& input) {
        std::size_t const before = s_bytesInUse;
        s_mostInUse = before;
        ++endings[read(input)];
        std::size_t const used = s_mostInUse - before;
        EXPECT_LE(used, kBaseBytes + kBytesPerByte * input.bytes.size());
        largest = std::max(largest, used);
    });
    auto const record = [](char const* key, std::size_t more) { // of all inputs of the test
        static std::map<std::string, std::size_t> s_sums;
        testing::Test::RecordProperty(key, std::to_string(s_sums[key] += more));
    };
    record("inputs", calls);
    record("values", static_cast<std::size_t>(endings[Ending::done]));
    record("archiveErrors", static_cast<std::size_t>(endings[Ending::archiveError]));
    record("parseErrors", static_cast<std::size_t>(endings[Ending::parseError]));
    record("fatalMessages", static_cast<std::size_t>(endings[Ending::fatal]));
    testing::Test::RecordProperty("largest", std::to_string(largest) + " of " + std::to_string(good.size()));
}
