// grid.h: where cells lie, and their neighbours.
#include "grid/grid.h"

#include "hostapi/ads.h"

namespace
{

// `columns` is tested for y too: programs know both messages from either coordinate.
double along(const grid* g, double origin, double step, std::int32_t intervals)
{
    if (g->columns == 0) {
        acutPrintf("Grid size error\n");
        return NO_VALUE;
    }
    if (step == 0) {
        acutPrintf("Grid step error\n");
        return NO_VALUE;
    }
    return intervals * step + origin;
}

bool has_cell(const grid* g, std::int32_t index)
{
    return g && index >= 0 && index < grid_cell_count(g);
}

} // namespace

std::int32_t grid_index(const grid* g, std::int32_t column, std::int32_t row)
{
    if (!g)
        return -1;
    return static_cast<std::int32_t>((static_cast<std::int64_t>(g->columns) + 1) * row + column);
}

std::int32_t grid_cell_count(const grid* g)
{
    return g ? (g->columns + 1) * (g->rows + 1) : -1;
}

double grid_cell_x(const grid* g, std::int32_t index)
{
    return g ? along(g, g->x0, g->step_x, index % (g->columns + 1)) : NO_VALUE;
}

double grid_cell_y(const grid* g, std::int32_t index)
{
    return g ? along(g, g->y0, g->step_y, index / (g->columns + 1)) : NO_VALUE;
}

std::int32_t grid_right(const grid* g, std::int32_t index)
{
    return has_cell(g, index) && index % (g->columns + 1) < g->columns ? index + 1 : -1;
}

std::int32_t grid_up(const grid* g, std::int32_t index)
{
    return has_cell(g, index) && index / (g->columns + 1) < g->rows ? index + g->columns + 1 : -1;
}

std::int32_t grid_left(const grid* g, std::int32_t index)
{
    return has_cell(g, index) && index % (g->columns + 1) > 0 ? index - 1 : -1;
}

std::int32_t grid_down(const grid* g, std::int32_t index)
{
    return has_cell(g, index) && index > g->columns ? index - g->columns - 1 : -1;
}
