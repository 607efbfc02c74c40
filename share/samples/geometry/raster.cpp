// raster.cpp: a grid of elevations to a text file and back, its null cells filled, and an elevation between its
// cells.
#include <cstdio>

#include "grid/fill.h"
#include "grid/grid.h"
#include "grid/interpolate.h"

int main()
{
    grid* slope = grid_create(1000, 2000, 5, 5, 8, 6); // 9 by 7 cells
    if (!slope)
        return 1;
    for (int i = 0; i < grid_cell_count(slope); ++i)
        grid_write_cell(slope, i, {grid_cell_x(slope, i) / 10 + grid_cell_y(slope, i) / 20, CELL_VALUE});
    const grid_cell unknown;
    grid_write_cell(slope, grid_index(slope, 4, 3), unknown);
    const int saved = grid_save(slope, "slope.grd");
    grid_free(&slope);
    if (!saved)
        return 1;

    grid* loaded = grid_load("slope.grd");
    if (!loaded)
        return 1;
    std::printf("%d cells, %d of them null\n", grid_cell_count(loaded), grid_null_count);
    grid_fill_quiet = 1;
    grid_fill_nulls(loaded, grid_null_count, 'P');
    const double place[] = {1021, 2016, 0};
    std::printf("elevation at %.0f, %.0f: %.3f\n", place[0], place[1], grid_interpolate(place, loaded));
    grid_free(&loaded);
    return 0;
}
