// fill.h: values for the null cells of a grid, estimated from the cells around them, from the edge of what is
// known inward.
#pragma once

#include "grid/grid.h"

// Set by the caller, 0 at the start.
extern std::int32_t grid_fill_plane; // 1: estimates follow one mean slope of the whole grid
extern std::int32_t grid_fill_quiet; // 1: nothing is printed and the fill ends after its second pass

// What the last estimate worked with.
extern double grid_slope[3];    // rise in x, rise in y (elevation per unit), and a value of work
extern double grid_slope_count; // triangles that went into it

// A cell that was estimated in the pass at hand.
struct grid_fill_item {
    double z;
    char mark;
    bool borders_on_null; // when it was estimated, a cell beside it was null
    std::int32_t index;
    grid_fill_item* next;
};

// Adds to grid_slope and grid_slope_count the normals of the up to four triangles that the cell forms with its
// neighbours. Only cells with a value count. Index -1 adds nothing.
void grid_cell_normal(grid* g, std::int32_t index);

// Sets grid_slope to the mean slope of all such triangles, 0 in both directions when there is none.
void grid_mean_slope(grid* g);

// Gives a null cell an estimate and the state CELL_ESTIMATED, if enough is known around it; else it stays null.
//   mode    'A' mean of the cells around, 'P' along the slope around, any other ("C") the same with less weight
//           on the slope
//   steps   distances to the next cell in x, in y and across; they are also the weights, inversely
void grid_estimate_cell(grid* g, std::int32_t index, char mode, double step_x, double step_y,
                        double step_diagonal);

// Fills the null cells that can be reached from known ones; modes as above. Cells that no memory can be had for
// stay null. RTNORM, or RTERROR when the user breaks: the cells that are then CELL_ESTIMATED were still to be
// confirmed. RTERROR with a message too when the temporary file can't be written.
//   null_count   how many null cells there are, for the message only
int grid_fill_nulls(grid* g, std::int32_t null_count, char mode);
