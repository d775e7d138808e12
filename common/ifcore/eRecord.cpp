#include "eRecord.hpp"

#include "eComponentId.hpp"
#include "eInterfaceItem.hpp"

EInterfaceTableHooks& IgnoringHooks()
{
    static EIgnoreInterfaceTableHooks hooks;
    return hooks;
}

EInterfaceTableHooks& HooksOf(EInterfaceItem const* owner)
{
    return owner ? owner->GetHooks() : IgnoringHooks();
}

void GetLeafID(EInterfaceItem const* owner, unsigned int leaf, EComponentId& id)
{
    if (owner)
        owner->GetID(id);
    else
        id.Empty();
    id += leaf;
}
