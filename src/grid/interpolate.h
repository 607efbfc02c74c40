// interpolate.h: elevations of a grid between its cells.
#pragma once

#include "grid/grid.h"

// Elevation at x, y of `point` (z isn't read). NO_ELEVATION for a null grid or point, outside the grid (its
// edges are inside), and where one of the four cells around has no value. Between four cells it is linear in x
// and in y. On the last column and row: the mean of the two cells there, or of the one that has a value, by
// inverse distance.
double grid_interpolate(const double* point, grid* g);

// The same by cubic polynomials through the four columns and rows around; by grid_interpolate where one of
// these sixteen cells doesn't exist or has no value.
double grid_interpolate_cubic(const double* point, grid* g);
