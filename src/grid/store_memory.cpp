#include "grid/store.h"
#include "hostapi/ads.h"

bool memory_make(grid* g)
{
    const std::size_t rows = static_cast<std::size_t>(g->rows) + 1;
    const std::size_t row_size = (static_cast<std::size_t>(g->columns) + 1) * sizeof(grid_cell);
    g->row_table = static_cast<grid_cell**>(acad_malloc(rows * sizeof(grid_cell*)));
    if (!g->row_table)
        return false;
    for (std::size_t r = 0; r < rows; ++r) {
        g->row_table[r] = static_cast<grid_cell*>(acad_malloc(row_size));
        if (g->row_table[r])
            continue;
        while (r > 0)
            acad_free(g->row_table[--r]);
        acad_free(g->row_table);
        g->row_table = nullptr;
        return false;
    }
    return true;
}

void memory_release(grid* g)
{
    if (!g->row_table)
        return;
    for (std::int32_t r = 0; r <= g->rows; ++r)
        acad_free(g->row_table[r]);
    acad_free(g->row_table);
    g->row_table = nullptr;
}
