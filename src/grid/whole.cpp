#include "grid/whole.h"

#include "grid/pages.h"
#include "grid/store.h"
#include "hostapi/ads.h"

namespace
{

constexpr std::int32_t MOST_CELLS = 16777216; // 256 million bytes

void release(grid* g)
{
    acad_free(g->row_table[0]);
    acad_free(g->row_table);
    g->row_table = nullptr;
    g->in_memory = 0;
}

bool make_rows(grid* g)
{
    const std::size_t count = static_cast<std::size_t>(grid_cell_count(g));
    auto* const cells = static_cast<grid_cell*>(acad_malloc(count * sizeof(grid_cell)));
    g->row_table = static_cast<grid_cell**>(acad_malloc((g->rows + std::size_t{1}) * sizeof(grid_cell*)));
    if (!cells || !g->row_table) {
        acad_free(cells);
        acad_free(g->row_table);
        g->row_table = nullptr;
        return false;
    }
    for (std::int32_t row = 0; row <= g->rows; ++row)
        g->row_table[row] = cells + static_cast<std::size_t>(row) * (g->columns + std::size_t{1});
    return true;
}

} // namespace

bool whole_begin(grid* g)
{
    const std::int32_t count = grid_cell_count(g);
    if (count > MOST_CELLS || !temp_flush(g) || g->file_cells < count || !make_rows(g))
        return false;
    g->in_memory = 1;
    if (temp_read_cells(g, 0, g->row_table[0], count) == count)
        return true;
    release(g);
    return false;
}

bool whole_end(grid* g, bool changed)
{
    bool done = true;
    if (changed) {
        const std::int32_t count = grid_cell_count(g);
        done = temp_write_cells(g, 0, g->row_table[0], count) > 0;
        pages_forget(g, 0, count);
        g->read_count = -1;
    }
    release(g);
    return done;
}
