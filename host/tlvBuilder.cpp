#include "tlvBuilder.hpp"

#include "eComponentId.hpp"
#include "eIPAddress.hpp"

#include <cstring>

static char* PutU32(char* out, unsigned int value)
{
    for (int shift : {24, 16, 8, 0}) *out++ = static_cast<char>(value >> shift & 0xFFU);
    return out;
}

/// One step of growth for id, length and value, so that a TLV is there whole or not at all.
/// Returns where the value goes.
static char* AppendHeader(Protocol::EBytes& out, TLVIds::TLVId const& id, std::size_t length)
{
    std::size_t const start = out.size();
    out.resize(start + 8 + length);
    return PutU32(PutU32(out.data() + start, id.GetIndex()), static_cast<unsigned int>(length));
}

static void AppendBytes(Protocol::EBytes& out, TLVIds::TLVId const& id, void const* bytes, std::size_t count)
{
    char* const value = AppendHeader(out, id, count);
    if (count) std::memcpy(value, bytes, count);
}

void Protocol::TLVAppendId(EBytes& out, TLVIds::TLVId const& id)
{
    std::size_t const start = out.size();
    out.resize(start + 4);
    PutU32(out.data() + start, id.GetIndex());
}

void Protocol::AppendIntTLV(EBytes& out, TLVIds::TLVId const& id, int value)
{
    PutU32(AppendHeader(out, id, 4), static_cast<unsigned int>(value));
}

void Protocol::AppendUnsignedIntTLV(EBytes& out, TLVIds::TLVId const& id, unsigned int value)
{
    PutU32(AppendHeader(out, id, 4), value);
}

void Protocol::AppendStringTLV(EBytes& out, TLVIds::TLVId const& id, std::string const& value)
{
    AppendBytes(out, id, value.data(), value.size());
}

void Protocol::AppendIPTLV(EBytes& out, TLVIds::TLVId const& id, EIPAddress const& value)
{
    AppendBytes(out, id, value.GetBytes(), value.GetFamily() == EIPAddress::kIPv4 ? 4 : 16);
}

void Protocol::AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value)
{
    std::vector<unsigned int> const& levels = value.GetId();
    char* word = AppendHeader(out, id, 4 * levels.size());
    for (unsigned int level : levels) word = PutU32(word, level);
}
