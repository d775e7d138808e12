#pragma once

#include "eDHCPTLV.hpp"
#include "eDHCPv6Properties.hpp"
#include "eDcbxConfig.hpp"
#include "eFCoEConfig.hpp"
#include "eLldpConfig.hpp"
#include "ifcoreExport.hpp"

#include "eHookParameters.hpp"

#include <list>
#include <string>
#include <vector>

class EComponentId;
class EDHCPProperties;
class EIPAddress;
class EIPv4AddressItem;
class EIPv6AddressItem;
class EInterfaceItem;
class EInterfaceTable;
class EMACAddress;
class EPTPConfig;
class EUID;
class EVLAN;
class EVLANIPAddressTableItemProperties;

/// Told of every change to an interface table, its interfaces and their records, before the change is made: the first
/// argument still holds the old value. The few operations that are called after the store say so at their setter.
/// From inside a call an observer may change the table, but must not remove, replace or empty what it is told of, nor
/// what owns that. It must outlive the call itself: one that takes itself out of the table keeps a reference until it
/// returns.
/// The operations stand in eInterfaceTableHooks.def; their slot order is part of the binary interface.
class IFCORE_API EInterfaceTableHooks {
public:
    EInterfaceTableHooks() = default;
    EInterfaceTableHooks(EInterfaceTableHooks const&) = default;
    EInterfaceTableHooks& operator=(EInterfaceTableHooks const&) = default;
    virtual ~EInterfaceTableHooks();
#define EHOOK(operation, ...) virtual void operation(__VA_ARGS__) = 0;
#include "eInterfaceTableHooks.def"
};

/// The observer of records that are in no table or whose table has none. A host's observer derives from it to override
/// only what it wants to hear.
class IFCORE_API EIgnoreInterfaceTableHooks : public EInterfaceTableHooks {
public:
    ~EIgnoreInterfaceTableHooks() override;
#define EHOOK(operation, ...) void operation(__VA_ARGS__) override;
#include "eInterfaceTableHooks.def"
};
