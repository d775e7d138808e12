#include "eRecord.hpp"

#include "eComponentId.hpp"
#include "eInterfaceItem.hpp"
#include "eProcessWide.hpp"

EInterfaceTableHooks& IgnoringHooks()
{
    static EProcessWide<EIgnoreInterfaceTableHooks> const hooks;
    return hooks.Get();
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
