#pragma once

#include <streambuf>
#include <vector>

/// A stream over bytes that are there already, for libraries that write to and read from streams: nothing grows, and
/// nothing is copied a second time.
class RawBuffer : public std::streambuf {
public:
    explicit RawBuffer(std::vector<char>& room) { setp(room.data(), room.data() + room.size()); }
    RawBuffer(char* bytes, std::size_t count) { setg(bytes, bytes, bytes + count); }
    std::size_t Written() const { return static_cast<std::size_t>(pptr() - pbase()); }
};
