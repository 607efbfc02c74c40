// The fill: passes from the edge of the known cells inward. A pass estimates cells that border on known ones
// and lists them; the next confirms them, in the reverse order, and goes on with their neighbours.
#include "grid/fill.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "common/user_break.h"
#include "grid/cells_around.h"
#include "grid/estimate.h"
#include "grid/fill_items.h"
#include "grid/pages.h"
#include "grid/store.h"
#include "grid/texts.h"
#include "grid/whole.h"
#include "hostapi/ads.h"

namespace
{

struct filling {
    grid* g;
    estimate_rules rules;
    fill_items items; // of the next pass
    cells_around around;
    bool in_pages = false; // else a file's cells go through its windows
    bool failed = false;   // a cell could not be kept
};

struct spot {
    std::int32_t index, column, row;
};

spot spot_of(const grid* g, std::int32_t index)
{
    return {index, index % (g->columns + 1), index / (g->columns + 1)};
}

grid_cell cell_of(filling* f, const spot& at)
{
    if (f->g->in_memory)
        return f->g->row_table[at.row][at.column];
    return f->in_pages ? *pages_run(f->g, at.index).first : *cells_from(f->g, at.index).first;
}

void set_cell(filling* f, const spot& at, const grid_cell& cell)
{
    if (f->g->in_memory)
        f->g->row_table[at.row][at.column] = cell;
    else if (f->in_pages)
        pages_set(f->g, at.index, cell);
    else
        f->failed |= !grid_write_cell(f->g, at.index, cell);
}

// Cells only ever cease to be null, so that one with no null neighbour now has none when it is confirmed.
bool borders_on_null(const cells_around& around)
{
    return around.at(1, 0).state == CELL_NULL || around.at(-1, 0).state == CELL_NULL ||
           around.at(0, 1).state == CELL_NULL || around.at(0, -1).state == CELL_NULL;
}

// Estimates a null cell and lists it.
void reach_cell(filling* f, const spot& at)
{
    look_around(f->g, at.column, at.row, REACH, &f->around);
    double z;
    if (!estimate(f->g, at.column, at.row, f->around, f->rules, &z))
        return;
    grid_cell cell = f->around.at(0, 0);
    if (!f->items.add(z, cell.mark, at.index, borders_on_null(f->around)))
        return; // no memory: it stays null
    cell.z = z;
    cell.state = CELL_ESTIMATED;
    set_cell(f, at, cell);
}

void reach_if_null(filling* f, const spot& at)
{
    if (cell_of(f, at).state == CELL_NULL)
        reach_cell(f, at);
}

void reach_neighbours(filling* f, const spot& at)
{
    const std::int32_t width = f->g->columns + 1;
    if (at.column < f->g->columns)
        reach_if_null(f, {at.index + 1, at.column + 1, at.row});
    if (at.column > 0)
        reach_if_null(f, {at.index - 1, at.column - 1, at.row});
    if (at.row < f->g->rows)
        reach_if_null(f, {at.index + width, at.column, at.row + 1});
    if (at.row > 0)
        reach_if_null(f, {at.index - width, at.column, at.row - 1});
}

void confirm(filling* f, const spot& at, const grid_fill_item& item)
{
    grid_cell cell = cell_of(f, at);
    cell.z = item.z;
    cell.mark = item.mark;
    cell.state = CELL_VALUE;
    set_cell(f, at, cell);
}

// The first pass through one row in memory. Null cells lie here and there: without the farthest row's being
// called for, a stretch ahead of them, most estimates would wait for it.
long first_pass_of_row(filling* f, std::int32_t row)
{
    constexpr std::int32_t STRETCH = 64, LINE = 64 / sizeof(grid_cell);
    long null_cells = 0;
    const grid_cell* const cells = f->g->row_table[row];
    const grid_cell* const farthest = f->g->row_table[std::min(row + REACH, f->g->rows)];
    for (std::int32_t column = 0; column <= f->g->columns;) {
        const std::int32_t end = std::min(column + STRETCH, f->g->columns + 1);
        for (std::int32_t k = column; k < end; k += LINE)
            __builtin_prefetch(farthest + k);
        for (; column < end; ++column)
            if (cells[column].state == CELL_NULL) {
                ++null_cells;
                reach_cell(f, {grid_index(f->g, column, row), column, row});
            }
    }
    return null_cells;
}

// Answers how many cells were null.
long first_pass(filling* f)
{
    long null_cells = 0;
    if (f->g->in_memory) {
        for (std::int32_t row = 0; row <= f->g->rows; ++row)
            null_cells += first_pass_of_row(f, row);
        return null_cells;
    }
    const std::int32_t count = grid_cell_count(f->g);
    for (std::int32_t index = 0; index < count;) {
        const cell_run run = cells_from(f->g, index);
        std::int32_t k = 0;
        while (k < run.count && run.first[k].state != CELL_NULL)
            ++k;
        index += k;
        if (k < run.count) {
            ++null_cells;
            reach_cell(f, spot_of(f->g, index));
            ++index;
        }
    }
    return null_cells;
}

// In a large grid each of its rows is somewhere else: they are called for while the items before are at work.
void call_for(const filling* f, const grid_fill_item* item)
{
    if (!item || !f->g->in_memory)
        return;
    const spot at = spot_of(f->g, item->index);
    if (!item->borders_on_null) {
        __builtin_prefetch(f->g->row_table[at.row] + at.column, 1);
        return;
    }
    for (std::int32_t row = std::max(at.row - REACH, 0); row <= std::min(at.row + REACH, f->g->rows); ++row)
        __builtin_prefetch(f->g->row_table[row] + at.column);
}

// Confirms the cells of the last pass. Answers how many they are.
long next_pass(filling* f, bool go_on)
{
    constexpr int AHEAD = 8; // items
    long confirmed = 0;
    grid_fill_item* item = f->items.take();
    const grid_fill_item* ahead = item;
    for (int k = 0; k < AHEAD && ahead; ++k)
        ahead = ahead->next;
    while (item) {
        call_for(f, ahead);
        ahead = ahead ? ahead->next : nullptr;
        const spot at = spot_of(f->g, item->index);
        confirm(f, at, *item);
        ++confirmed;
        if (go_on && item->borders_on_null)
            reach_neighbours(f, at);
        f->items.release(std::exchange(item, item->next));
    }
    return confirmed;
}

bool has_failed(const filling* f)
{
    return f->failed || (f->in_pages && pages_failed(f->g));
}

int run_passes(filling* f)
{
    long pass = 1, left = first_pass(f), previous = 0;
    while (left >= 1 && !f->items.empty() && !has_failed(f)) {
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
    if (!g->in_memory && !temp_complete(g)) {
        acutPrintf(CELLS_NOT_KEPT);
        return RTERROR;
    }
    const double diagonal = std::sqrt(g->step_x * g->step_x + g->step_y * g->step_y);
    filling f{g, rules_of(mode, g->step_x, g->step_y, diagonal), {}, {}};
    even_steps even;
    if (find_even_steps(g, &even))
        f.rules.even = &even;
    const whole_way whole = g->in_memory ? whole_way::none : whole_begin(g);
    f.in_pages = !g->in_memory && pages_begin(g);
    if (grid_fill_plane == 1)
        grid_mean_slope(g);
    const int result = run_passes(&f);
    f.failed |= !whole_end(g, whole);
    if (f.in_pages)
        f.failed |= !pages_end(g);
    if (!f.failed)
        return result;
    acutPrintf(CELLS_NOT_KEPT);
    return RTERROR;
}

void grid_estimate_cell(grid* g, std::int32_t index, char mode, double step_x, double step_y,
                        double step_diagonal)
{
    if (!g || index < 0 || index >= grid_cell_count(g))
        return;
    const spot at = spot_of(g, index);
    cells_around around;
    look_around(g, at.column, at.row, REACH, &around);
    grid_cell cell = around.at(0, 0);
    if (!estimate(g, at.column, at.row, around, rules_of(mode, step_x, step_y, step_diagonal), &cell.z))
        return;
    cell.state = CELL_ESTIMATED;
    grid_write_cell(g, index, cell);
}

void grid_cell_normal(grid* g, std::int32_t index)
{
    if (!g || index < 0 || index >= grid_cell_count(g))
        return;
    const spot at = spot_of(g, index);
    cells_around around;
    look_around(g, at.column, at.row, 1, &around);
    normal_sums sums{grid_slope[0], grid_slope[1], grid_slope[2], grid_slope_count};
    add_normals(g, at.column, at.row, around, &sums);
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
