#pragma once

#include <ifcore/ifcore.hpp>

#include "eMultiComponentId.hpp"
#include "eSingleCommand.hpp"
#include "measure.hpp"

#include <vector>

// Host commands to a table of port 1. Each must be accepted.

enum Action : unsigned int { kSet = 2, kEnable = 3, kDisable = 4, kAdd = 5, kRemove = 6, kEdit = 7 };

using Path = EComponentId;
using Ids = std::vector<unsigned int>;

inline void Execute(EInterfaceTable& table, ESingleCommand const& command)
{
    Require(table.ExecuteCommand(command, static_cast<EMultiComponentId*>(nullptr)), "a command is accepted");
}

/// The id of what was added.
template <class Record> unsigned int Add(EInterfaceTable& table, Path const& list, Record const& record)
{
    EMultiComponentId added;
    ESingleCommand const command(kAdd, EMultiComponentId(list), {}, Written(record));
    Require(table.ExecuteCommand(command, &added) && added.GetLeaves().size() == 1, "an add is accepted");
    return added.GetLeaves().front();
}

inline EMultiComponentId Leaf(Path const& path, unsigned int leaf)
{
    EMultiComponentId target(path);
    target.SetLeaves({leaf});
    return target;
}

inline void Remove(EInterfaceTable& table, Path const& list, unsigned int id)
{
    Execute(table, ESingleCommand(kRemove, Leaf(list, id)));
}

template <class Record> void Set(EInterfaceTable& table, Path const& path, unsigned int leaf, Record const& record)
{
    Execute(table, ESingleCommand(kSet, Leaf(path, leaf), {}, Written(record)));
}

inline void Switch(EInterfaceTable& table, Path const& path, bool on)
{
    Execute(table, ESingleCommand(on ? kEnable : kDisable, EMultiComponentId(path)));
}

template <class Value> void Edit(EInterfaceTable& table, Path const& path, Ids const& subId, Value const& value)
{
    Execute(table, ESingleCommand(kEdit, EMultiComponentId(path), subId, Written(value)));
}

inline Path InterfaceList()
{
    return {1, 1};
}
inline Path InterfacePath(unsigned int id)
{
    return {1, 1, id};
}
inline Path IPv4Path(unsigned int id)
{
    return {1, 1, id, 6};
}
inline Path IPv6List(unsigned int id)
{
    return {1, 1, id, 1};
}
inline Path IPv6Path(unsigned int id, unsigned int addressId)
{
    return {1, 1, id, 1, addressId};
}
