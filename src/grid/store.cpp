// grid.h: grids come and go, and their cells, wherever they are kept.
#include "grid/store.h"

#include <limits>

#include "hostapi/ads.h"

namespace
{

constexpr std::int64_t FILE_INTERVALS = 360000; // as many and more: a temporary file

// A count of cells that fewer intervals than those never have; only a grid without columns or rows does.
constexpr std::int64_t MEMORY_CELLS = 2 * FILE_INTERVALS;

bool has_size(std::int32_t columns, std::int32_t rows)
{
    return columns >= 0 && rows >= 0 &&
           (static_cast<std::int64_t>(columns) + 1) * (static_cast<std::int64_t>(rows) + 1) <=
               std::numeric_limits<std::int32_t>::max();
}

bool fits_in_memory(const grid* g)
{
    return static_cast<std::int64_t>(g->columns) * g->rows < FILE_INTERVALS &&
           grid_cell_count(g) <= MEMORY_CELLS;
}

} // namespace

grid* grid_create(double x0, double y0, double step_x, double step_y, std::int32_t columns, std::int32_t rows)
{
    if (!has_size(columns, rows)) {
        acutPrintf("\nError: a grid of %d by %d intervals is out of range", columns, rows);
        return nullptr;
    }
    auto* g = static_cast<grid*>(acad_malloc(sizeof(grid)));
    if (!g)
        return nullptr;
    *g = {};
    g->x0 = x0;
    g->y0 = y0;
    g->step_x = step_x;
    g->step_y = step_y;
    g->columns = columns;
    g->rows = rows;
    g->write_start = g->read_start = g->write_count = g->read_count = -1;
    g->in_memory = fits_in_memory(g) && memory_make(g);
    if (!g->in_memory && !temp_make(g))
        grid_free(&g);
    return g;
}

void grid_free(grid** owner)
{
    if (!owner || !*owner)
        return;
    grid* g = *owner;
    *owner = nullptr;
    if (g->in_memory) {
        memory_release(g);
    } else {
        temp_flush(g);
        temp_release(g);
    }
    while (grid_cell_points* points = g->points) {
        g->points = points->next;
        acad_free(points->items);
        acad_free(points);
    }
    acad_free(g->point_table);
    acad_free(g);
}

grid_cell grid_read_cell(grid* g, std::int32_t index)
{
    if (!g || index < 0)
        return {};
    if (!g->in_memory)
        return temp_read(g, index);
    if (const grid_cell* cell = memory_cell(g, index))
        return *cell;
    acutPrintf("Invalid row range: %d\n", index / (g->columns + 1));
    return {};
}

int grid_write_cell(grid* g, std::int32_t index, const grid_cell& cell)
{
    if (!g || index < 0 || index >= grid_cell_count(g))
        return 0;
    if (!g->in_memory)
        return temp_write(g, index, cell);
    *memory_cell(g, index) = cell;
    return 1;
}

int grid_flush(grid* g)
{
    return g && (g->in_memory || temp_flush(g));
}
