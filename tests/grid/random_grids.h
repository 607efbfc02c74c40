// random_grids.h: grids with holes, the same each time, as plain rasters and as grids of the library.
#pragma once

#include <random>

#include "grid/grid.h"
#include "tests/grid/plain_cells.h"

namespace random_grids
{

enum class place { in_memory, in_file };

// Small grids of all kinds: odd steps and elevations, single rows, holes of all sizes.
plain::raster any(std::mt19937& random);
// Rolling ground with `part` of its cells null, scattered and in blotches.
plain::raster ground(unsigned seed, int columns, int rows, double part);

// The same cells. In a file also where they would fit into memory.
grid* made_of(const plain::raster& cells, place where);
// The first cell that differs to the bit (any NaN is like any other), or -1.
int first_difference(grid* g, const plain::raster& cells);
bool same_bits(double a, double b);

double uniform(std::mt19937& random, double low, double high);
int below(std::mt19937& random, int count);

} // namespace random_grids
