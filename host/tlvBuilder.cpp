#include "tlvBuilder.hpp"

#include "eComponentId.hpp"

void Protocol::AppendCompIdTLV(EBytes& out, TLVIds::TLVId const& id, EComponentId const& value)
{
    std::vector<unsigned int> words = value.GetId();
    for (unsigned int& word : words) word = htobe32(word);
    TLVAppendBytes(out, id, reinterpret_cast<char const*>(words.data()), sizeof(unsigned int) * words.size());
}
