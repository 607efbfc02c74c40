// cells_around.h: runs of cells, and a cell with those around it, wherever the grid is kept.
#pragma once

#include "grid/grid.h"

constexpr int REACH = 3; // of the farthest cell that an estimate looks at: the neighbour of a second neighbour

// Cells that lie behind each other, to be read before the next call that reads or writes the grid.
struct cell_run {
    const grid_cell* first;
    std::int32_t count; // at least 1
};

// A cell and those around it. Where the grid ends there are null cells.
struct cells_around {
    const grid_cell* row[2 * REACH + 1]; // of each row the cell in the column of the middle
    grid_cell copies[2 * REACH + 1][2 * REACH + 1];

    const grid_cell& at(int column, int line) const { return row[REACH + line][column]; }
};

// Of an index that has a cell.
cell_run cells_from(grid* g, std::int32_t index);
// Up to `reach` columns and rows around; the rest isn't touched.
void look_around(grid* g, std::int32_t column, std::int32_t row, int reach, cells_around* out);
