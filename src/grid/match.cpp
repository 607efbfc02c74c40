// grid.h: grids of one geometry, compared, copied and filled from each other.
#include <algorithm>
#include <cmath>

#include "grid/collected_points.h"
#include "grid/store.h"
#include "grid/texts.h"
#include "hostapi/ads.h"

namespace
{

grid* like(const grid* g)
{
    return grid_create(g->x0, g->y0, g->step_x, g->step_y, g->columns, g->rows);
}

bool differs(double a, double b)
{
    return std::fabs(a - b) > LENGTH_TOL;
}

// Cell by cell; `made` of the index, from the cells of `source`, if any. False, told, when one can't be had or
// kept.
template <typename F>
bool fill(grid* g, const grid* source, F made)
{
    const std::int32_t count = grid_cell_count(g), faults = source ? source->faults : 0;
    for (std::int32_t i = 0; i < count; ++i) {
        const grid_cell cell = made(i);
        if (source && source->faults != faults) {
            acutPrintf(CELLS_NOT_READ);
            return false;
        }
        if (!grid_write_cell(g, i, cell)) {
            acutPrintf(CELLS_NOT_KEPT);
            return false;
        }
    }
    return true;
}

} // namespace

grid* grid_copy(grid* source)
{
    grid* copy = source ? like(source) : nullptr;
    if (!copy)
        return nullptr;
    bool done = copy_collected_points(source, copy);
    if (done && source->in_memory && copy->in_memory)
        for (std::int32_t r = 0; r <= copy->rows; ++r)
            std::copy_n(source->row_table[r], copy->columns + 1, copy->row_table[r]);
    else
        done = done && fill(copy, source, [&](std::int32_t i) { return next_cell(source, i); });
    if (!done)
        grid_free(&copy);
    return copy;
}

grid* grid_constant(const grid* model, double z)
{
    grid* made = model ? like(model) : nullptr;
    const grid_cell cell{z, CELL_VALUE};
    if (made && !fill(made, nullptr, [&](std::int32_t) { return cell; }))
        grid_free(&made);
    return made;
}

int grid_take_values(grid* source, grid* target)
{
    if (!source || !target)
        return 0;
    if (source->x0 != target->x0 || source->y0 != target->y0) {
        acutPrintf("\nError: grid locations do not match");
        return 0;
    }
    if (source->step_x != target->step_x || source->step_y != target->step_y ||
        source->columns != target->columns || source->rows != target->rows) {
        acutPrintf("\nError: grid resolutions do not match");
        return 0;
    }
    return fill(target, source, [&](std::int32_t i) {
        const grid_cell from = next_cell(source, i);
        grid_cell to = next_cell(target, i);
        to.z = from.z;
        to.state = from.state;
        return to;
    });
}

int grid_match(const grid* a, const grid* b)
{
    if (!a || !b)
        return 0;
    if (differs(a->x0, b->x0))
        return -1;
    if (differs(a->y0, b->y0))
        return -2;
    if (differs(a->step_x, b->step_x))
        return -3;
    if (differs(a->step_y, b->step_y))
        return -4;
    return a->columns == b->columns && a->rows == b->rows ? 1 : -5;
}
