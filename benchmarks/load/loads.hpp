#pragma once

/// Each prints its figures, and throws when something is not as promised.

/// One table with so many interfaces: filled, saved, read, edited, shown, emptied.
void LoadOneTable(unsigned int interfaces);
/// Commands to one table that keeps its size, under observers.
void LoadCommands(unsigned int interfaces, unsigned long commands);
/// Changes of one discovered table that keeps its size, each also sent through a change stream to a second one.
void LoadDiscovered(unsigned int neighbors, unsigned long changes);
