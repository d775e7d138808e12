#include "tlvIds.hpp"

#include "tlvBuilder.hpp"

#include <cstring>

std::vector<char const*>& Protocol::TLVBuilder::known_tlv_table()
{
    static std::vector<char const*> names = {""};
    return names;
}

static unsigned int Registered(char const* name)
{
    std::vector<char const*>& names = Protocol::TLVBuilder::known_tlv_table();
    if (!name) return 0;
    for (unsigned int index = 0; index < names.size(); ++index)
        if (names[index] && std::strcmp(names[index], name) == 0) return index;
    names.push_back(name);
    return static_cast<unsigned int>(names.size() - 1);
}

TLVIds::TLVId::TLVId(char const* name) : m_index(Registered(name)) {}

char const* TLVIds::TLVId::GetName() const
{
    return Protocol::TLVBuilder::known_tlv_table()[m_index];
}

#define TLVID(group, name) TLVIds::TLVId const TLVIds::group::name(#name);
#include "tlvIds.def"
