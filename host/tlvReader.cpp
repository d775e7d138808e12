#include "tlvReader.hpp"

std::vector<char const*> TLVReader::external_tlv_table;
