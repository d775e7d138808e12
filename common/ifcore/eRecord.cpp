#include "eRecord.hpp"

#include "eComponentId.hpp"
#include "eInterfaceItem.hpp"

EInterfaceTableHooks& HooksOf(EInterfaceItem const* owner)
{
    static EIgnoreInterfaceTableHooks ignoring;
    return owner ? owner->GetHooks() : ignoring;
}

void GetLeafID(EInterfaceItem const* owner, unsigned int leaf, EComponentId& id)
{
    if (owner)
        owner->GetID(id);
    else
        id.Empty();
    id += leaf;
}
