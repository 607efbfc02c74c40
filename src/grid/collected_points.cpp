// grid.h: points that lie in the cells of a grid.
#include "grid/collected_points.h"

#include <algorithm>
#include <cmath>

#include "hostapi/ads.h"

namespace
{

using place = double[3];

bool is_power_of_two(std::int32_t n)
{
    return (n & (n - 1)) == 0;
}

place* new_places(std::int32_t count)
{
    return static_cast<place*>(acad_malloc(static_cast<std::size_t>(count) * sizeof(place)));
}

// Room for one more handle.
bool make_room(grid* g)
{
    if (g->point_count < g->point_room)
        return true;
    const std::int32_t room = std::max(16, g->point_room * 2);
    auto* table = static_cast<grid_cell_points**>(
        acad_malloc(static_cast<std::size_t>(room) * sizeof(grid_cell_points*)));
    if (!table)
        return false;
    std::copy_n(g->point_table, g->point_count, table);
    acad_free(g->point_table);
    g->point_table = table;
    g->point_room = room;
    return true;
}

// A new record of `count` places; its handle is then g->point_count.
grid_cell_points* new_record(grid* g, std::int32_t cell, std::int32_t count)
{
    if (!make_room(g))
        return nullptr;
    auto* record = static_cast<grid_cell_points*>(acad_malloc(sizeof(grid_cell_points)));
    std::int32_t room = 1; // as if the places had come one by one
    while (room < count)
        room *= 2;
    place* items = new_places(room);
    if (!record || !items) {
        acad_free(record);
        acad_free(items);
        return nullptr;
    }
    *record = {cell, count, items, g->points};
    g->points = record;
    g->point_table[g->point_count++] = record;
    return record;
}

// The room for items is the power of two that their count wants.
bool make_room(grid_cell_points* record)
{
    if (!is_power_of_two(record->count))
        return true;
    place* items = new_places(record->count * 2);
    if (!items)
        return false;
    std::copy_n(&record->items[0][0], 3 * static_cast<std::size_t>(record->count), &items[0][0]);
    acad_free(record->items);
    record->items = items;
    return true;
}

// The cells of a grid in memory that nobody has written may hold any handle.
grid_cell_points* record_of(const grid* g, std::int32_t index, const grid_cell& cell)
{
    if (cell.points == 0 || cell.points > static_cast<std::uint32_t>(g->point_count))
        return nullptr;
    grid_cell_points* record = g->point_table[cell.points - 1];
    return record->cell == index ? record : nullptr;
}

} // namespace

int grid_add_point(grid* g, const double* point)
{
    if (!g || !point)
        return 0;
    const double column = std::floor((point[0] - g->x0) / g->step_x);
    const double row = std::floor((point[1] - g->y0) / g->step_y);
    if (!(column >= 0 && column < g->columns && row >= 0 && row < g->rows))
        return 0;
    const std::int32_t index = grid_index(g, static_cast<std::int32_t>(column), static_cast<std::int32_t>(row));
    grid_cell cell = grid_read_cell(g, index);
    if (grid_cell_points* record = record_of(g, index, cell)) {
        if (!make_room(record))
            return 0;
        std::copy_n(point, 3, record->items[record->count++]);
        return 1;
    }
    grid_cell_points* record = new_record(g, index, 1);
    if (!record)
        return 0;
    std::copy_n(point, 3, record->items[0]);
    cell.points = static_cast<std::uint32_t>(g->point_count);
    return grid_write_cell(g, index, cell);
}

const grid_cell_points* grid_points(const grid* g, std::int32_t index, const grid_cell& cell)
{
    return g ? record_of(g, index, cell) : nullptr;
}

bool copy_collected_points(const grid* source, grid* target)
{
    for (std::int32_t i = 0; i < source->point_count; ++i) {
        const grid_cell_points* from = source->point_table[i];
        const grid_cell_points* to = new_record(target, from->cell, from->count);
        if (!to)
            return false;
        std::copy_n(&from->items[0][0], 3 * static_cast<std::size_t>(from->count), &to->items[0][0]);
    }
    return true;
}
