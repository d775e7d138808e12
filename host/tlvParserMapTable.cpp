#include "tlvParserMapTable.hpp"

#include "tlvBuilder.hpp"
#include "tlvReader.hpp"

std::vector<void (*)()>& GetTLVParserMapTable()
{
    static std::vector<void (*)()> initializers;
    return initializers;
}

void Protocol::RunTLVParserMapInitializers()
{
    std::vector<void (*)()> const& initializers = GetTLVParserMapTable();
    for (std::size_t i = 0; i < initializers.size(); ++i) // one of them may register another
        if (initializers[i]) initializers[i]();
}

void Protocol::UseOwnTLVIds()
{
    TLVReader::external_tlv_table = TLVBuilder::known_tlv_table();
}
