#pragma once

#include "eArchive.hpp"

#include <vector>

class MINIMAL_HOST_API TLVReader {
public:
    TLVReader(void const* bytes, int size, void* handedOn = nullptr)
        : remaining(size), position(static_cast<unsigned char const*>(bytes)), context(handedOn)
    {
    }
    TLVReader(TLVReader const&) = delete;
    TLVReader& operator=(TLVReader const&) = delete;

    int remaining;
    unsigned char const* position;
    void* context;

    static std::vector<char const*> external_tlv_table;
};
