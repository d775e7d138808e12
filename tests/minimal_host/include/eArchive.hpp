#pragma once

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#define MINIMAL_HOST_API __attribute__((visibility("default")))

class EBlob;

/// Every integer is 8 bytes, most significant first: the unsigned bit pattern of its own width.
class MINIMAL_HOST_API EArchive {
public:
    EArchive() = default;
    EArchive(EArchive const&) = delete;
    EArchive& operator=(EArchive const&) = delete;
    ~EArchive() = default;

    void SetFromEBlob(EBlob const& blob, bool replace);
    void SetMode(int mode); // 1 writes, 2 reads from the start
    EBlob GetAsEBlob() const;
    bool IsStoring() const { return m_storing; }
    bool AtEnd() const { return m_storing || m_position == m_bytes.size(); }

    EArchive& operator<<(bool value) { return Write(value); }
    EArchive& operator<<(signed char value) { return Write(static_cast<unsigned char>(value)); }
    EArchive& operator<<(unsigned char value) { return Write(value); }
    EArchive& operator<<(short value) { return Write(static_cast<unsigned short>(value)); }
    EArchive& operator<<(unsigned short value) { return Write(value); }
    EArchive& operator<<(int value) { return Write(static_cast<unsigned int>(value)); }
    EArchive& operator<<(unsigned int value) { return Write(value); }
    EArchive& operator<<(unsigned long value) { return Write(value); }
    EArchive& operator<<(std::string const& value);

    EArchive& operator>>(bool& value) { return ReadInto(value); }
    EArchive& operator>>(signed char& value) { return ReadInto(value); }
    EArchive& operator>>(unsigned char& value) { return ReadInto(value); }
    EArchive& operator>>(short& value) { return ReadInto(value); }
    EArchive& operator>>(unsigned short& value) { return ReadInto(value); }
    EArchive& operator>>(int& value) { return ReadInto(value); }
    EArchive& operator>>(unsigned int& value) { return ReadInto(value); }
    EArchive& operator>>(unsigned long& value) { return ReadInto(value); }
    EArchive& operator>>(std::string& value);

private:
    EArchive& Write(unsigned long pattern);
    unsigned long Read(); // past the end it throws std::out_of_range
    template <class Integer> EArchive& ReadInto(Integer& value)
    {
        value = static_cast<Integer>(Read());
        return *this;
    }

    std::string m_bytes;
    std::size_t m_position = 0;
    bool m_storing = true;
};

/// Prints the fatal archive message to standard output and ends the process with status 1.
[[noreturn]] inline void EArchiveFatal(char const* file, int line, char const* function)
{
    std::printf("*** Exception in FILE %s, LINE %d:\n%s - %s\n", file, line, function, "EArchive::SerializeError()");
    std::exit(1);
}

template <class Item> void SerializeOut(EArchive& archive, std::vector<Item> const& items)
{
    if (!archive.IsStoring())
        EArchiveFatal("common/include/eArchive.hpp", 157, "template<ItemType> SerializeOut(..,vector)");
    archive << static_cast<unsigned long>(items.size());
    for (Item const& item : items) archive << item;
}

template <class Item> void SerializeIn(EArchive& archive, std::vector<Item>& items)
{
    items.clear();
    if (archive.IsStoring())
        EArchiveFatal("common/include/eArchive.hpp", 172, "template<ItemType> SerializeIn(..,vector)");
    unsigned int count = 0;
    archive >> count;
    for (unsigned int i = 0; i < count; ++i) {
        Item item{};
        archive >> item;
        items.push_back(item);
    }
}
