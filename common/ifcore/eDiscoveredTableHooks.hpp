#pragma once

#include "ifcoreExport.hpp"

#include "eHookParameters.hpp"

class EDCBXDiscoveredInfo;
class EDHCPDiscoveredInfo;
class EDHCPv6DiscoveredInfo;
class EDiscoveredInfo;
class EDiscoveredNeighbor;
class EDiscoveredTable;
class EFCoEDiscoveredInfo;
class EIPAddress;
class EMACAddress;
class EPTPDiscoveredInfo;

/// Told of the changes to a discovered table, its infos and their neighbours, before they are made: the first argument
/// still holds the old value. Infos and neighbours are announced as added when they are stored already. Not told of
/// single fields of the protocol records, of the default MAC, of ids, and of what is swapped or read from an archive.
/// From inside a call an observer may change the table, but must not remove, replace or empty what it is told of, nor
/// what owns that, add the very address that is being added, nor exchange the table's observer.
/// The operations stand in eDiscoveredTableHooks.def; their slot order is part of the binary interface.
class IFCORE_API EDiscoveredTableHooks {
public:
    EDiscoveredTableHooks() = default;
    EDiscoveredTableHooks(EDiscoveredTableHooks const&) = default;
    EDiscoveredTableHooks& operator=(EDiscoveredTableHooks const&) = default;
    virtual ~EDiscoveredTableHooks();
#define EHOOK(operation, ...) virtual void operation(__VA_ARGS__) = 0;
#include "eDiscoveredTableHooks.def"
};

/// The observer of records that are in no table or whose table has none. A host's observer derives from it to override
/// only what it wants to hear.
class IFCORE_API EIgnoreDiscoveredTableHooks : public EDiscoveredTableHooks {
public:
    ~EIgnoreDiscoveredTableHooks() override;
#define EHOOK(operation, ...) void operation(__VA_ARGS__) override;
#include "eDiscoveredTableHooks.def"
};
