#include "tlvReader.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

TEST(TLVReader, StandsAtTheStartOfTheBytes)
{
    static_assert(!std::is_copy_constructible_v<TLVReader> && !std::is_copy_assignable_v<TLVReader>,
                  "two readers of one position part at the first byte");
    unsigned char const bytes[] = {1, 2, 3};
    int context = 0;
    TLVReader const reader(bytes, 3, &context);
    EXPECT_EQ(3, reader.remaining);
    EXPECT_EQ(bytes, reader.position);
    EXPECT_EQ(nullptr, reader.buffer);
    EXPECT_EQ(&context, reader.context);
    EXPECT_EQ(nullptr, TLVReader(bytes, 3).context);
}

TEST(TLVReader, HoldsItsMembersInAFixedOrder)
{
    unsigned char const byte = 0;
    TLVReader const reader(&byte, 1);
    void const* const members[] = {&reader.remaining, &reader.position, &reader.buffer, &reader.context};
    EXPECT_EQ(static_cast<void const*>(&reader), members[0]);
    for (std::size_t i = 1; i < std::size(members); ++i) EXPECT_LT(members[i - 1], members[i]) << i;
}

TEST(TLVReader, CountsNoBytesThatAreNotThere)
{
    unsigned char const bytes[] = {1, 2, 3};
    struct {
        void const* bytes;
        int size;
        int remaining;
    } const cases[] = {{bytes, 3, 3},   {bytes, 0, 0},   {bytes, -1, 0},          {bytes, -2147483647 - 1, 0},
                       {nullptr, 0, 0}, {nullptr, 3, 0}, {nullptr, 2147483647, 0}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.size);
        TLVReader const reader(c.bytes, c.size);
        EXPECT_EQ(c.remaining, reader.remaining);
        EXPECT_EQ(c.bytes, reader.position);
    }
}

TEST(TLVReader, FreesTheBufferThatItOwns) // what would leak otherwise is found by the address sanitizer
{
    std::unique_ptr<unsigned char[]> buffer(new unsigned char[4]{9, 8, 7, 6});
    TLVReader reader(buffer.get(), 4);
    reader.buffer = std::move(buffer);
    EXPECT_EQ(reader.buffer.get(), reader.position);
    EXPECT_EQ(9, *reader.position);
}
