#include "grid/cells_around.h"

#include <algorithm>

#include "grid/pages.h"
#include "grid/store.h"

namespace
{

const grid_cell outside[2 * REACH + 1];

void copy_row(grid* g, std::int32_t column, std::int32_t row, int reach, grid_cell* middle)
{
    const std::int32_t low = std::max(column - reach, 0), high = std::min(column + reach, g->columns);
    std::fill(middle - reach, middle + reach + 1, grid_cell());
    std::int32_t index = grid_index(g, low, row);
    for (std::int32_t at = low; at <= high;) {
        const cell_run run = cells_from(g, index);
        const std::int32_t count = std::min(run.count, high - at + 1);
        std::copy_n(run.first, count, middle + (at - column));
        at += count;
        index += count;
    }
}

} // namespace

cell_run cells_from(grid* g, std::int32_t index)
{
    if (g->in_memory) {
        const std::int32_t row = index / (g->columns + 1), column = index % (g->columns + 1);
        return {g->row_table[row] + column, g->columns + 1 - column};
    }
    if (!pages_ready(g)) {
        static grid_cell one;
        one = temp_knows(g, index) ? grid_read_cell(g, index) : grid_cell();
        return {&one, 1};
    }
    if (g->write_count > 0 && index >= g->write_start && index - g->write_start < g->write_count)
        return {g->write_buffer + (index - g->write_start), g->write_start + g->write_count - index};
    cell_run run = pages_run(g, index);
    if (g->write_count > 0 && g->write_start > index)
        run.count = std::min(run.count, g->write_start - index);
    return run;
}

void look_around(grid* g, std::int32_t column, std::int32_t row, int reach, cells_around* out)
{
    const bool fits = column >= reach && g->columns - column >= reach;
    const bool pages = !g->in_memory && pages_ready(g);
    const bool only_pages = pages && g->write_count <= 0;
    for (int line = -reach; line <= reach; ++line) {
        const grid_cell*& to = out->row[REACH + line];
        grid_cell* const middle = &out->copies[REACH + line][REACH];
        if (line < -row || line > g->rows - row) {
            to = outside + REACH;
        } else if (fits && g->in_memory) {
            to = g->row_table[row + line] + column;
        } else {
            const std::int32_t first = grid_index(g, column - reach, row + line);
            cell_run run{nullptr, 0};
            if (fits && pages)
                run = only_pages ? pages_run(g, first) : cells_from(g, first);
            if (run.count > 2 * reach) {
                to = run.first + reach;
                continue;
            }
            copy_row(g, column, row + line, reach, middle);
            to = middle;
        }
    }
}
