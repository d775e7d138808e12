#include "benchSupport.hpp"

#include <map>

EInterfaceTable& KeptSample(unsigned int count)
{
    static std::map<unsigned int, std::unique_ptr<EInterfaceTable>> tables;
    auto& table = tables[count];
    if (!table) table = SampleTable(count);
    return *table;
}

EBlob const& KeptArchive(unsigned int count)
{
    static std::map<unsigned int, EBlob> archives;
    EBlob& archive = archives[count];
    if (archive.GetSize() == 0) archive = Written(KeptSample(count));
    return archive;
}
