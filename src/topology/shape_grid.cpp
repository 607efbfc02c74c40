// A grid as shapes: each square between four cells is an open chain through those of its corners that have a
// value.
#include <algorithm>

#include "common/user_break.h"
#include "grid/grid.h"
#include "hostapi/ads.h"
#include "topology/shape_net.h"

namespace
{

// Cut off and brought within what a colour holds.
std::uint8_t color_of(double value)
{
    return value > 0.0 ? static_cast<std::uint8_t>(std::min(value, 255.0)) : 0; // 0 for no number
}

// The node of each cell, 0 for a null cell; null without memory.
std::int32_t* intern_cells(ShapeNet* net, grid* g)
{
    const std::int32_t count = grid_cell_count(g);
    if (count < 1)
        return nullptr;
    auto* ids = static_cast<std::int32_t*>(acad_malloc(static_cast<std::size_t>(count) * sizeof(std::int32_t)));
    for (std::int32_t i = 0; ids && i < count; ++i) {
        const grid_cell cell = grid_read_cell(g, i);
        ids[i] = cell.state == CELL_VALUE ? net->intern_node(grid_cell_x(g, i), grid_cell_y(g, i), cell.z) : 0;
    }
    return ids;
}

// The square's shape: from the cell up, to the right and down again. The side from the right neighbour back to
// the cell belongs to the square below, and in the lowest row to none.
void connect_square(ShapeNet* net, ShapeObj* shape, const std::int32_t (&all)[4])
{
    std::int32_t corner[4] = {};
    const std::int64_t count =
        std::copy_if(all, all + 4, corner, [](std::int32_t id) { return id != 0; }) - corner;
    if (count < 3)
        return;
    net->connect(corner[0], corner[2], 0.0, shape, shape->id);
    if (count == 3) {
        net->connect(corner[2], corner[1], 0.0, shape, shape->id);
        shape->kind = ShapeKind::OPEN_FACE;
        return;
    }
    net->connect(corner[2], corner[3], 0.0, shape, shape->id);
    net->connect(corner[3], corner[1], 0.0, shape, shape->id);
    shape->kind = ShapeKind::CLOSED_FACE;
}

} // namespace

void ShapeNet::add_grid(grid* grid_z, grid* grid_attr, std::uint8_t mark)
{
    std::int32_t* ids = intern_cells(this, grid_z);
    const std::int32_t count = ids ? grid_cell_count(grid_z) : 0;
    for (std::int32_t i = 0; i < count; ++i) {
        if (user_break()) {
            acutPrintf("\nFunction cancelled at user request.");
            break;
        }
        const std::int32_t right = grid_right(grid_z, i), up = grid_up(grid_z, i);
        if (right < 0 || up < 0)
            continue;
        auto* shape = new ShapeObj;
        if (add_shape(shape) == 0) {
            delete shape;
            break;
        }
        shape->color = color_of(grid_read_cell(grid_attr, i).z);
        shape->visible = mark;
        shape->closed = 1;
        connect_square(this, shape, {ids[i], ids[right], ids[up], ids[grid_right(grid_z, up)]});
    }
    acad_free(ids);
}
