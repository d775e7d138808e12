#pragma once

class EDiscoveredTable;
class EInterfaceTable;

// What holds of a table whatever has happened to it: each gives the first rule that is broken, null when none is.

/// Every interface and record names its owner as parent, knows the id it is kept under, is found under its id and its
/// path and can be rendered; finding interfaces by their addresses gives the same with the table's observer and by a
/// scan; a copy writes the same bytes.
char const* BrokenRule(EInterfaceTable const& table);

/// Every info, neighbour and record names its owner as parent; infos and neighbours know the id they are kept under and
/// are found under it and their path. Finding by MAC and address is not looked at: it follows changes by rules of its
/// own.
char const* BrokenRule(EDiscoveredTable const& table);
