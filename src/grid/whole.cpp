// The file is mapped where the host can do that: its cells then lie in memory once, and nothing moves. Else
// they are read into memory and written back.
#include "grid/whole.h"

#include "grid/pages.h"
#include "grid/store.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

namespace
{

constexpr std::int32_t MOST_COPIED = 16777216; // cells: 256 million bytes

std::size_t size_of(const grid* g)
{
    return static_cast<std::size_t>(grid_cell_count(g)) * sizeof(grid_cell);
}

grid_cell* read_all(grid* g)
{
    const std::int32_t count = grid_cell_count(g);
    if (count > MOST_COPIED)
        return nullptr;
    auto* const cells = static_cast<grid_cell*>(acad_malloc(size_of(g)));
    if (!cells || temp_read_cells(g, 0, cells, count) == count)
        return cells;
    acad_free(cells);
    return nullptr;
}

} // namespace

whole_way whole_begin(grid* g)
{
    if (!temp_flush(g) || g->file_cells < grid_cell_count(g))
        return whole_way::none;
    g->row_table = static_cast<grid_cell**>(acad_malloc((g->rows + std::size_t{1}) * sizeof(grid_cell*)));
    if (!g->row_table)
        return whole_way::none;
    whole_way way = whole_way::mapped;
    auto* cells = static_cast<grid_cell*>(file_map_temp(g->temp_path, size_of(g)));
    if (!cells) {
        way = whole_way::copied;
        cells = read_all(g);
    }
    if (!cells) {
        acad_free(g->row_table);
        g->row_table = nullptr;
        return whole_way::none;
    }
    for (std::int32_t row = 0; row <= g->rows; ++row)
        g->row_table[row] = cells + static_cast<std::size_t>(row) * (g->columns + std::size_t{1});
    g->in_memory = 1;
    return way;
}

bool whole_end(grid* g, whole_way way)
{
    if (way == whole_way::none)
        return true;
    const std::int32_t count = grid_cell_count(g);
    grid_cell* const cells = g->row_table[0];
    bool done = true;
    if (way == whole_way::mapped) {
        done = file_unmap_temp(cells) == 0;
        g->faults += !done;
    } else {
        done = temp_write_cells(g, 0, cells, count) > 0;
        acad_free(cells);
    }
    pages_forget(g, 0, count);
    g->read_count = -1;
    acad_free(g->row_table);
    g->row_table = nullptr;
    g->in_memory = 0;
    return done;
}
