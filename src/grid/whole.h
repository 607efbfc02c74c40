// whole.h: a grid of a temporary file taken into memory as a whole for a while.
#pragma once

#include "grid/grid.h"

enum class whole_way {
    none,   // nothing changed
    mapped, // the rows are the file's own bytes
    copied
};

// From here to whole_end the grid is one in memory. Not where some of its cells were never written, memory or
// the file fail, or it is too large to be copied.
whole_way whole_begin(grid* g);
// Brings what was changed into the file. False when not all of it got there.
bool whole_end(grid* g, whole_way way);
