// pages.h: the temporary file of a grid in pages, for work that goes up and down its rows: a window holds a
// stretch of the file, pages hold as many places of it as are in use. What lies in the write window is newer.
#pragma once

#include "grid/cells_around.h"

struct grid_pages;

// Whether pages may stand for the cells: all were written once, and there is memory. Else the windows must do,
// which know what to make of cells that nobody has written.
bool pages_ready(grid* g);

// Cells of the file from `index` on, to be read before the 8th next call.
cell_run pages_run(grid* g, std::int32_t index);

// ---- while a caller changes cells, nothing may go through the windows
// Empties the windows. False when pages can't be used, or the write window can't be brought away.
bool pages_begin(grid* g);
void pages_set(grid* g, std::int32_t index, const grid_cell& cell);
// Whether a page could not be read or written since pages_begin.
bool pages_failed(const grid* g);
// Brings what was changed into the file. False when not all of it got there.
bool pages_end(grid* g);

// ---- for the store
// Cells of the file have changed.
void pages_forget(grid* g, std::int32_t first, std::int32_t count);
void pages_release(grid* g);
