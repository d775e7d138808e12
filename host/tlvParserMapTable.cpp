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
    for (auto initialize : GetTLVParserMapTable())
        if (initialize) initialize();
}

void Protocol::UseOwnTLVIds()
{
    TLVReader::external_tlv_table = TLVBuilder::known_tlv_table();
}
