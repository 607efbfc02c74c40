// The fill: passes from the edge of the known cells inward. A pass estimates cells that border on known ones
// and lists them; the next confirms them, in the reverse order, and goes on with their neighbours.
#include "grid/fill.h"

#include <cmath>
#include <utility>

#include "common/user_break.h"
#include "grid/cells_around.h"
#include "grid/estimate.h"
#include "grid/fill_items.h"
#include "hostapi/ads.h"

namespace
{

struct filling {
    grid* g;
    estimate_rules rules;
    fill_items items; // of the next pass
    cells_around around;
    bool failed = false; // a cell could not be kept
};

std::int32_t column_of(const grid* g, std::int32_t index)
{
    return index % (g->columns + 1);
}

std::int32_t row_of(const grid* g, std::int32_t index)
{
    return index / (g->columns + 1);
}

grid_cell cell_of(grid* g, std::int32_t index)
{
    return *cells_from(g, index).first;
}

void set_cell(filling* f, std::int32_t index, const grid_cell& cell)
{
    if (!keep_cell(f->g, index, cell))
        f->failed = true;
}

// Estimates a null cell and lists it.
void reach_cell(filling* f, std::int32_t index)
{
    const std::int32_t column = column_of(f->g, index), row = row_of(f->g, index);
    look_around(f->g, column, row, REACH, &f->around);
    double z;
    if (!estimate(f->g, column, row, f->around, f->rules, &z))
        return;
    grid_cell cell = f->around.at(0, 0);
    if (!f->items.add(z, cell.mark, index))
        return; // no memory: it stays null
    cell.z = z;
    cell.state = CELL_ESTIMATED;
    set_cell(f, index, cell);
}

void reach_if_null(filling* f, std::int32_t index)
{
    if (index >= 0 && cell_of(f->g, index).state == CELL_NULL)
        reach_cell(f, index);
}

void confirm(filling* f, const grid_fill_item& item)
{
    grid_cell cell = cell_of(f->g, item.index);
    cell.z = item.z;
    cell.mark = item.mark;
    cell.state = CELL_VALUE;
    set_cell(f, item.index, cell);
}

// Answers how many cells were null.
long first_pass(filling* f)
{
    long null_cells = 0;
    const std::int32_t count = grid_cell_count(f->g);
    for (std::int32_t index = 0; index < count;) {
        const cell_run run = cells_from(f->g, index);
        std::int32_t k = 0;
        while (k < run.count && run.first[k].state != CELL_NULL)
            ++k;
        index += k;
        if (k < run.count) {
            ++null_cells;
            reach_cell(f, index);
            ++index;
        }
    }
    return null_cells;
}

// Confirms the cells of the last pass. Answers how many they are.
long next_pass(filling* f, bool go_on)
{
    long confirmed = 0;
    for (grid_fill_item* item = f->items.take(); item;) {
        confirm(f, *item);
        ++confirmed;
        if (go_on) {
            reach_if_null(f, grid_right(f->g, item->index));
            reach_if_null(f, grid_left(f->g, item->index));
            reach_if_null(f, grid_up(f->g, item->index));
            reach_if_null(f, grid_down(f->g, item->index));
        }
        f->items.release(std::exchange(item, item->next));
    }
    return confirmed;
}

int run_passes(filling* f)
{
    long pass = 1, left = first_pass(f), previous = 0;
    while (left >= 1 && !f->items.empty()) {
        ++pass;
        if (left == previous)
            break;
        previous = left;
        left -= next_pass(f, true);
        if (user_break()) {
            acutPrintf("\nFunction cancelled at user request.");
            return RTERROR;
        }
        if (!grid_fill_quiet)
            acutPrintf("\rPass> %ld Null Z values left> %ld    ", pass, left);
        if (grid_fill_quiet == 1 && pass == 2)
            break;
    }
    next_pass(f, false);
    return RTNORM;
}

} // namespace

int grid_fill_nulls(grid* g, std::int32_t null_count, char mode)
{
    if (!g)
        return RTNORM;
    if (!grid_fill_quiet)
        acutPrintf("\nPass> 1 Null Z values left> %ld", static_cast<long>(null_count));
    if (grid_fill_plane == 1)
        grid_mean_slope(g);
    const double diagonal = std::sqrt(g->step_x * g->step_x + g->step_y * g->step_y);
    filling f{g, rules_of(mode, g->step_x, g->step_y, diagonal), {}, {}};
    return run_passes(&f);
}

void grid_estimate_cell(grid* g, std::int32_t index, char mode, double step_x, double step_y,
                        double step_diagonal)
{
    if (!g || index < 0 || index >= grid_cell_count(g))
        return;
    const std::int32_t column = column_of(g, index), row = row_of(g, index);
    cells_around around;
    look_around(g, column, row, REACH, &around);
    grid_cell cell = around.at(0, 0);
    if (!estimate(g, column, row, around, rules_of(mode, step_x, step_y, step_diagonal), &cell.z))
        return;
    cell.state = CELL_ESTIMATED;
    grid_write_cell(g, index, cell);
}

void grid_cell_normal(grid* g, std::int32_t index)
{
    if (!g || index < 0 || index >= grid_cell_count(g))
        return;
    cells_around around;
    look_around(g, column_of(g, index), row_of(g, index), 1, &around);
    normal_sums sums{grid_slope[0], grid_slope[1], grid_slope[2], grid_slope_count};
    add_normals(g, column_of(g, index), row_of(g, index), around, &sums);
    grid_slope[0] = sums.x;
    grid_slope[1] = sums.y;
    grid_slope[2] = sums.z;
    grid_slope_count = sums.count;
}

void grid_mean_slope(grid* g)
{
    normal_sums sums;
    cells_around around;
    if (g)
        for (std::int32_t row = 0; row <= g->rows; ++row)
            for (std::int32_t column = 0; column <= g->columns; ++column) {
                look_around(g, column, row, 1, &around);
                add_normals(g, column, row, around, &sums);
            }
    grid_slope[0] = grid_slope[1] = grid_slope[2] = 0;
    if (!(sums.count > 0))
        return;
    const double third = -(sums.z / sums.count);
    grid_slope[0] = (sums.x / sums.count) / third;
    grid_slope[1] = (sums.y / sums.count) / third;
    grid_slope[2] = std::sqrt(grid_slope[0] * grid_slope[0] + grid_slope[1] * grid_slope[1]);
}
