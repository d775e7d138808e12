#pragma once

#include "ifhostExport.hpp"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <endian.h>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

class EBlob;

/// What reading throws when the bytes do not hold what was asked for. The primitive value that failed was not consumed,
/// those before it in the same record were.
class IFHOST_API EArchiveError : public std::runtime_error {
public:
    /// \param offset of the byte, from the start of the archive, at which the value was looked for.
    EArchiveError(std::size_t offset, std::string const& wanted, std::string const& found);
    ~EArchiveError() override;
    EArchiveError(EArchiveError const&) = default;
    EArchiveError& operator=(EArchiveError const&) = default;
    std::size_t GetOffset() const { return m_offset; }

private:
    std::size_t m_offset; // bytes
};

/// A stream of values that is either written or read; `docs/archive-encoding.md` gives the bytes.
///
/// A fresh archive writes. Writing to an archive that is being read does nothing; reading from one that is being
/// written yields zero or empty. Copies and moves take content, mode and position; a moved-from archive is as fresh.
class IFHOST_API EArchive {
public:
    EArchive() = default;
    EArchive(EArchive const& other);
    EArchive(EArchive&& other) noexcept;
    EArchive& operator=(EArchive const& other);
    EArchive& operator=(EArchive&& other) noexcept;
    ~EArchive()
    {
        if (m_begin != m_local) ReleaseHeap();
    }

    /// Copies the blob's bytes in. With \p replace they become the whole content and the archive stands at its start;
    /// without, they are appended and the position stays. The mode is left as it is.
    void SetFromEBlob(EBlob const& blob, bool replace);
    /// 1 writes behind what is there, 2 reads from the start; any other mode throws std::invalid_argument.
    void SetMode(int mode);
    /// A copy of the whole content, whatever the mode and position. 4 GiB and more throw std::length_error.
    EBlob GetAsEBlob() const;
    bool IsStoring() const { return m_storing; }
    /// Whether everything was read; an archive that is being written always stands at its end.
    bool AtEnd() const { return m_read == m_readEnd; }

    EArchive& operator<<(bool value) { return WriteInteger(value); }
    EArchive& operator<<(signed char value) { return WriteInteger(value); }
    EArchive& operator<<(unsigned char value) { return WriteInteger(value); }
    EArchive& operator<<(short value) { return WriteInteger(value); }
    EArchive& operator<<(unsigned short value) { return WriteInteger(value); }
    EArchive& operator<<(int value) { return WriteInteger(value); }
    EArchive& operator<<(unsigned int value) { return WriteInteger(value); }
    EArchive& operator<<(unsigned long value) { return WriteInteger(value); }
    EArchive& operator<<(std::string const& value)
    {
        WriteInteger(static_cast<unsigned long>(value.size()));
        return WriteBytes(value.data(), value.size());
    }
    EArchive& operator<<(char value) = delete;                           // would be promoted to int
    template <class Any> EArchive& operator<<(Any const* text) = delete; // would become a bool

    EArchive& operator>>(bool& value) { return ReadInteger(value, "bool"); }
    EArchive& operator>>(signed char& value) { return ReadInteger(value, "signed char"); }
    EArchive& operator>>(unsigned char& value) { return ReadInteger(value, "unsigned char"); }
    EArchive& operator>>(short& value) { return ReadInteger(value, "short"); }
    EArchive& operator>>(unsigned short& value) { return ReadInteger(value, "unsigned short"); }
    EArchive& operator>>(int& value) { return ReadInteger(value, "int"); }
    EArchive& operator>>(unsigned int& value) { return ReadInteger(value, "unsigned int"); }
    EArchive& operator>>(unsigned long& value) { return ReadInteger(value, "unsigned long"); }
    EArchive& operator>>(std::string& value)
    {
        std::size_t const size = ReadCount();
        auto const text = reinterpret_cast<char const*>(m_read);
        if (size > value.capacity()) {
            value.assign(text, size); // without the memory for it the old text stays
        } else {
            value.clear();
            if (size > 0) value.append(text, size); // quicker than assign
        }
        m_read += size; // which ReadCount found to be there
        return *this;
    }

    /// \name For the bundled host's own types only; another host need not have these.
    ///@{
    /// Appends \p count raw bytes; \p bytes may be null when \p count is 0.
    EArchive& WriteBytes(void const* bytes, std::size_t count)
    {
        if (unsigned char* const room = count == 0 ? nullptr : RoomFor(count)) {
            std::memcpy(room, bytes, count);
            AppendTo(room + count);
        }
        return *this;
    }
    /// Where up to \p count bytes, at least one, are appended by AppendTo. Null when the archive is being read.
    unsigned char* RoomFor(std::size_t count) { return HasRoom(count) ? m_next : nullptr; }
    /// Appends the bytes that were written from RoomFor to \p end.
    void AppendTo(unsigned char* end) { m_next = end; }
    /// The next \p count bytes, consumed: valid until the archive changes. Null when the archive is being written and
    /// \p count is not 0.
    unsigned char const* ReadBytes(std::size_t count)
    {
        if (__builtin_expect(GetRemaining() < count, false)) return FailBytes(count);
        return std::exchange(m_read, m_read + count);
    }
    /// The next \p count bytes, at least one, of which SkipTo consumes some; null when there are not so many.
    unsigned char const* PeekBytes(std::ptrdiff_t count) const { return m_readEnd - m_read < count ? nullptr : m_read; }
    /// Consumes the bytes from PeekBytes to \p end.
    void SkipTo(unsigned char const* end) { m_read = end; }
    /// Reads an `unsigned long` count of things that take at least one byte each; more than what remains is an error,
    /// so that the count may be used to allocate.
    std::size_t ReadCount()
    {
        unsigned char const* const start = m_read;
        unsigned long count = 0;
        *this >> count;
        if (count != 0 && __builtin_expect(count > GetRemaining(), false)) FailCount(start, count);
        return count;
    }
    std::size_t GetRemaining() const { return static_cast<std::size_t>(m_readEnd - m_read); }
    std::size_t GetOffset() const { return m_storing ? 0 : static_cast<std::size_t>(m_read - m_begin); }
    /// Goes back to \p offset, where a value begins that turned out wrong, and throws the error.
    [[noreturn, gnu::cold]] void Fail(std::size_t offset, std::string const& wanted, std::string const& found);
    ///@}

private:
    static constexpr unsigned int kLargestSingle = 0xF7; // larger patterns follow a byte that tells their width
    static constexpr std::size_t kWidest = 9;            // bytes of the longest form of an integer
    static constexpr unsigned char kNothing = 0xFF;      // behind the content while it is read: no integer of one byte
    static constexpr std::size_t kReserve = kWidest;     // bytes behind the place of a last integer: itself, kNothing
    static constexpr std::size_t kLocalCapacity = 128 + kReserve;
    static_assert(sizeof(unsigned long) == 8, "integers of up to eight bytes are archived");

    template <class Integer> static constexpr unsigned long LargestPattern()
    {
        if constexpr (std::is_same_v<Integer, bool>)
            return 1;
        else
            return std::numeric_limits<std::make_unsigned_t<Integer>>::max();
    }
    template <class Integer> EArchive& WriteInteger(Integer value)
    {
        if constexpr (std::is_same_v<Integer, bool>)
            WritePattern(value);
        else
            WritePattern(static_cast<std::make_unsigned_t<Integer>>(value));
        return *this;
    }
    // Pointers are stored behind the bytes, each of which could be one of theirs as far as the compiler knows: a
    // pointer that was stored before would have to be loaded again for the next value, and waited for.
    void WritePattern(unsigned long pattern)
    {
        if (__builtin_expect(m_next >= m_writeEnd, false) && !MakeRoom(kWidest)) return;
        unsigned char* const next = m_next;
        if (pattern <= kLargestSingle) {
            *next = static_cast<unsigned char>(pattern);
            m_next = next + 1;
            return;
        }
        unsigned int const width = (71U - static_cast<unsigned int>(__builtin_clzl(pattern))) / 8; // bytes, 1 to 8
        unsigned long const bigEndian = htobe64(pattern << (64 - 8 * width));
        *next = static_cast<unsigned char>(kLargestSingle + width);
        std::memcpy(next + 1, &bigEndian, sizeof bigEndian);
        m_next = next + 1 + width;
    }
    template <class Integer> EArchive& ReadInteger(Integer& value, char const* type)
    {
        constexpr unsigned long largest = LargestPattern<Integer>();
        constexpr unsigned long single = largest < kLargestSingle ? largest : kLargestSingle;
        unsigned long pattern = *m_read; // there is always one, if only kNothing
        if (__builtin_expect(pattern <= single, true))
            ++m_read;
        else
            pattern = ReadWidePattern(largest, type);
        value = static_cast<Integer>(pattern);
        return *this;
    }
    [[gnu::always_inline]] unsigned long ReadWidePattern(unsigned long largest, char const* type)
    {
        unsigned char const* const next = m_read;
        if (m_readEnd - next < static_cast<std::ptrdiff_t>(kWidest) || *next <= kLargestSingle)
            return ReadLastPattern(largest, type);
        unsigned int const width = *next - kLargestSingle;
        unsigned long pattern = 0;
        std::memcpy(&pattern, next + 1, sizeof pattern); // one load, whatever the width
        pattern = be64toh(pattern) >> (64 - 8 * width);
        bool const isShortest = next[1] > (width == 1 ? kLargestSingle : 0);
        if (!isShortest || pattern > largest) FailPattern(largest, type, width, pattern);
        m_read = next + 1 + width;
        return pattern;
    }
    [[gnu::cold, gnu::noinline]] unsigned long ReadLastPattern(unsigned long largest, char const* type);
    [[noreturn, gnu::cold, gnu::noinline]] void FailPattern(unsigned long largest, char const* type, unsigned int width,
                                                            unsigned long pattern);
    [[noreturn, gnu::cold, gnu::noinline]] void FailCount(unsigned char const* start, unsigned long count);
    [[gnu::cold, gnu::noinline]] unsigned char const* FailBytes(std::size_t count);
    /// False, with nothing done, when the archive is being read.
    [[gnu::cold, gnu::noinline]] bool MakeRoom(std::size_t count);
    /// Of at least one byte.
    bool HasRoom(std::size_t count)
    {
        return m_writeEnd - m_next >= static_cast<std::ptrdiff_t>(count) || MakeRoom(count); // 0 or less while reading
    }
    /// Gives back what is not m_local.
    void ReleaseHeap() noexcept;
    std::size_t GetSize() const { return static_cast<std::size_t>((m_storing ? m_next : m_readEnd) - m_begin); }
    /// Says where in the present memory content and position are; the position of an archive that is written is the
    /// end.
    void Place(std::size_t size, std::size_t position);
    /// Makes the capacity at least \p capacity and keeps the content.
    void Reserve(std::size_t capacity);

    // One look at the next byte, or one comparison, answers whether the mode is right and whether there is a value or
    // room for one.
    unsigned char* m_begin = m_local;                                // m_local, or owned
    unsigned char* m_next = m_local;                                 // of the next byte to write; m_begin while reading
    unsigned char* m_writeEnd = m_local + kLocalCapacity - kReserve; // of room for the widest; m_begin while reading
    unsigned char const* m_read = &m_nothing;    // of the next byte to read; m_nothing while storing
    unsigned char const* m_readEnd = &m_nothing; // of the content, where kNothing stands; m_nothing while storing
    std::size_t m_capacity = kLocalCapacity;
    bool m_storing = true;
    unsigned char m_nothing = kNothing;
    unsigned char m_local[kLocalCapacity];
};

/// Prints the fatal archive message to standard output and ends the process with status 1.
[[noreturn]] inline void EArchiveFatal(char const* file, int line, char const* function)
{
    std::printf("*** Exception in FILE %s, LINE %d:\n%s - %s\n", file, line, function, "EArchive::SerializeError()");
    std::exit(1);
}

/// Writes the count and then every element; ends the process when \p archive is being read.
template <class Item> void SerializeOut(EArchive& archive, std::vector<Item> const& items)
{
    if (!archive.IsStoring())
        EArchiveFatal("common/include/eArchive.hpp", 157, "template<ItemType> SerializeOut(..,vector)");
    archive << static_cast<unsigned long>(items.size()); // on purpose: read back as unsigned int
    for (Item const& item : items) archive << item;
}

/// Replaces \p items by those read; ends the process, with \p items already empty, when \p archive is being written.
template <class Item> void SerializeIn(EArchive& archive, std::vector<Item>& items)
{
    items.clear();
    if (archive.IsStoring())
        EArchiveFatal("common/include/eArchive.hpp", 172, "template<ItemType> SerializeIn(..,vector)");
    unsigned int count = 0; // on purpose: written as unsigned long
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        Item item{};
        archive >> item;
        items.push_back(std::move(item));
    }
}
