#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

/// The slot of a virtual operation in the table of its class, from 0 on; 0 and 1 are the destructor's.
/// Itanium C++ ABI, 2.3: a pointer to a virtual member holds 1 + the slot's offset in bytes, and no adjustment.
template <class Pointer> std::size_t SlotOf(Pointer member)
{
    std::size_t words[2];
    static_assert(sizeof words == sizeof member);
    std::memcpy(words, &member, sizeof words);
    if (words[0] % sizeof(void*) != 1 || words[1] != 0) throw std::invalid_argument("not a virtual operation");
    return (words[0] - 1) / sizeof(void*);
}

/// An operation of an observer: "SettingMTU(EInterfaceItem const&, unsigned int)" and its slot.
struct ESlottedOperation {
    std::string signature;
    std::size_t slot;
};

/// They are those of the file, whose lines that start with "#" are comments, and stand in its order behind the two
/// destructors.
inline void ExpectSlots(std::string const& path, std::vector<ESlottedOperation> const& operations)
{
    std::ifstream file(path);
    std::size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, 1, "#") == 0) continue;
        SCOPED_TRACE(line);
        ASSERT_LT(count, operations.size());
        EXPECT_EQ(line, operations[count].signature);
        EXPECT_EQ(2 + count, operations[count].slot);
        ++count;
    }
    EXPECT_EQ(count, operations.size());
}

/// One default value of each type, for arguments.
template <class Type> Type const& AnyValue()
{
    static Type const value{};
    return value;
}

/// Calls an observer's operation with default values.
template <class Hooks, class... Argument> void CallWithAny(Hooks& hooks, void (Hooks::*operation)(Argument...))
{
    (hooks.*operation)(AnyValue<std::decay_t<Argument>>()...);
}

/// The do-nothing form of an observer keeps the slots of its \p slots.size() operations and has no data.
template <class Ignoring> void ExpectKeepsSlots(std::vector<std::size_t> const& slots)
{
    for (std::size_t i = 0; i < slots.size(); ++i) EXPECT_EQ(2 + i, slots[i]);
    EXPECT_EQ(sizeof(void*), sizeof(Ignoring));
}

/// The do-nothing form takes every call and does nothing; \p callEveryOperation calls each of the \p count once.
template <class Ignoring, class Recording, class Hooks>
void ExpectIgnoresEveryCall(std::size_t count, void (*callEveryOperation)(Hooks&))
{
    Recording recorder;
    callEveryOperation(recorder);
    EXPECT_EQ(count, recorder.calls.size()); // every operation was called, each with its own

    Ignoring ignoring;
    std::string before(sizeof ignoring, '\0');
    std::memcpy(before.data(), static_cast<void const*>(&ignoring), sizeof ignoring);
    testing::internal::CaptureStdout();
    callEveryOperation(ignoring);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    EXPECT_EQ(0, std::memcmp(before.data(), static_cast<void const*>(&ignoring), sizeof ignoring));
}
