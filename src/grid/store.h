// store.h: the two places where cells are kept. grid.h's calls choose by `in_memory`.
#pragma once

#include "grid/grid.h"

constexpr std::int32_t WRITE_WINDOW = 5000; // cells
constexpr std::int32_t READ_WINDOW = 10000;

// ---- rows in memory
// Takes the rows; on failure nothing is held.
bool memory_make(grid* g);
void memory_release(grid* g);
// Null when there is no such cell. A row too high is told by the one that reads.
inline grid_cell* memory_cell(const grid* g, std::int32_t index)
{
    const std::int32_t row = index / (g->columns + 1);
    return index >= 0 && row <= g->rows ? &g->row_table[row][index % (g->columns + 1)] : nullptr;
}

// ---- a temporary file, and windows of it
// Takes a name and the windows; on failure what was had is still the grid's.
bool temp_make(grid* g);
void temp_release(grid* g);
grid_cell temp_read(grid* g, std::int32_t index);
// Whether the cell lies in a window or before the file's end; where not, reading it gives a null cell.
bool temp_knows(const grid* g, std::int32_t index);
int temp_write(grid* g, std::int32_t index, const grid_cell& cell);
int temp_flush(grid* g);
// Flushes, and brings null cells in behind the end of the file for those that were never written: they read the
// same, but the file is whole. A grid in which nothing was written stays without one.
bool temp_complete(grid* g);
// One transfer. The number of cells read, or 1 when all were written and 0 when not; -1 when the file can't be
// opened.
std::int32_t temp_read_cells(grid* g, std::int32_t first, grid_cell* out, std::int32_t room);
int temp_write_cells(grid* g, std::int32_t first, const grid_cell* cells, std::int32_t count);
// Whether the file still has all cells that were brought into it.
bool temp_is_whole(grid* g);

// As grid_read_cell, for walks in the order of the index: what was never written isn't looked for behind the
// end of the temporary file, over and over.
inline grid_cell next_cell(grid* g, std::int32_t index)
{
    return g->in_memory || temp_knows(g, index) ? grid_read_cell(g, index) : grid_cell();
}
