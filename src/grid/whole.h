// whole.h: a grid of a temporary file taken into memory as a whole for a while.
#pragma once

#include "grid/grid.h"

// From here to whole_end the grid is one in memory. False, and nothing changed, where it is too large for that,
// some of its cells were never written, or memory or the file fail.
bool whole_begin(grid* g);
// Writes all cells back if they were `changed`. False when not all of them got into the file.
bool whole_end(grid* g, bool changed);
