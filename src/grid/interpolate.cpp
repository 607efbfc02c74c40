// Elevations between cells. What a cell lacks to be used is found out first; the formulas then work on plain
// numbers. Sums and products keep their order: results are compared to the last bit.
#include "grid/interpolate.h"

#include <algorithm>
#include <cmath>

#include "grid/cells_around.h"

namespace
{

// Two numbers at a time: most of the work is divisions. Each rounds as it would alone.
using pair = double __attribute__((vector_size(16)));

struct spot {
    double x, y;
    std::int32_t column, row; // of the cell at or before it
};

// False outside the grid, and where its steps lead to no cell.
bool find_spot(const double* point, const grid* g, spot* out)
{
    if (!point || !g)
        return false;
    const double x = point[0], y = point[1];
    const bool inside =
        x >= g->x0 && x <= g->x0 + g->columns * g->step_x && y >= g->y0 && y <= g->y0 + g->rows * g->step_y;
    if (!inside)
        return false;
    const double column = std::floor((x - g->x0) / g->step_x), row = std::floor((y - g->y0) / g->step_y);
    if (!(column >= 0 && column <= g->columns && row >= 0 && row <= g->rows))
        return false;
    *out = {x, y, static_cast<std::int32_t>(column), static_cast<std::int32_t>(row)};
    return true;
}

grid_cell cell_at(grid* g, std::int32_t column, std::int32_t row)
{
    return g->in_memory ? g->row_table[row][column] : *cells_from(g, grid_index(g, column, row)).first;
}

// By inverse distance, on the last column or row.
double mean_at_edge(const spot& at, grid* g)
{
    double sum = 0, weights = 0;
    bool found = false;
    for (std::int32_t row = at.row; row <= std::min(at.row + 1, g->rows); ++row)
        for (std::int32_t column = at.column; column <= std::min(at.column + 1, g->columns); ++column) {
            const grid_cell cell = cell_at(g, column, row);
            if (cell.state != CELL_VALUE)
                continue;
            const std::int32_t index = grid_index(g, column, row);
            const double dx = at.x - grid_cell_x(g, index), dy = at.y - grid_cell_y(g, index);
            const double distance = std::sqrt(dx * dx + dy * dy);
            if (distance == 0)
                return cell.z;
            sum += cell.z / distance;
            weights += 1 / distance;
            found = true;
        }
    return found ? sum / weights : NO_ELEVATION;
}

// A square of four cells: values by their corners, and how far the sides are.
struct square {
    double south_west, south_east, north_east, north_west;
    double south, north, west, east;
};

// On a side or a corner there is no inverse of the distance. Corners win over sides, later ones over earlier.
double on_side(const square& s, double z_south, double z_north, double z_west, double z_east)
{
    const bool on_south = s.south == 0, on_north = s.north == 0, on_west = s.west == 0, on_east = s.east == 0;
    if (on_north && on_west)
        return s.north_west;
    if (on_north && on_east)
        return s.north_east;
    if (on_south && on_east)
        return s.south_east;
    if (on_south && on_west)
        return s.south_west;
    return on_east ? z_east : on_west ? z_west : on_south ? z_south : z_north;
}

// In exact numbers this is the product of two linear blends: opposite sides, weighted so, give it each. In this
// form it rounds as the grids in use were made.
double blend(const square& s, double step_x, double step_y)
{
    const pair by_x = {step_x, step_x}, by_y = {step_y, step_y};
    const pair west_east =
        pair{s.north_west, s.north_east} * s.south / by_y + pair{s.south_west, s.south_east} * s.north / by_y;
    const pair south_north =
        pair{s.south_east, s.north_east} * s.west / by_x + pair{s.south_west, s.north_west} * s.east / by_x;
    if (s.south == 0 || s.north == 0 || s.west == 0 || s.east == 0)
        return on_side(s, south_north[0], south_north[1], west_east[0], west_east[1]);
    const pair across = {s.west, s.east}, up = {s.south, s.north};
    const pair rows = south_north / up, columns = west_east / across;
    const pair row_weights = 1 / up, column_weights = 1 / across;
    return (rows[0] + rows[1] + columns[1] + columns[0]) /
           (column_weights[0] + column_weights[1] + row_weights[1] + row_weights[0]);
}

double interpolate_at(const spot& at, grid* g)
{
    if (at.column == g->columns || at.row == g->rows)
        return mean_at_edge(at, g);
    const grid_cell sw = cell_at(g, at.column, at.row), se = cell_at(g, at.column + 1, at.row);
    const grid_cell nw = cell_at(g, at.column, at.row + 1), ne = cell_at(g, at.column + 1, at.row + 1);
    if (sw.state != CELL_VALUE || se.state != CELL_VALUE || nw.state != CELL_VALUE || ne.state != CELL_VALUE)
        return NO_ELEVATION;
    const double x_west = at.column * g->step_x + g->x0, x_east = (at.column + 1) * g->step_x + g->x0;
    const double y_south = at.row * g->step_y + g->y0, y_north = (at.row + 1) * g->step_y + g->y0;
    return blend({sw.z, se.z, ne.z, nw.z, at.y - y_south, y_north - at.y, at.x - x_west, x_east - at.x},
                 g->step_x, g->step_y);
}

// The cubic Lagrange forms through -1, -1/3, 1/3 and 1.
void cubic_weights(double t, double* out)
{
    const double t2 = t * t, t3 = t2 * t;
    out[0] = (9 * t + t2 - 9 * t3 - 1) / 16 + ((1 - t) / 2 - (1 - t2) / 2);
    out[1] = (7 * t2 + 27 * t3 - 27 * t - 7) / 16 + (1 - t2);
    out[2] = (27 * t - 27 * t3 - 9 * t2 + 9) / 16;
    out[3] = (t2 + 9 * t3 - 9 * t - 1) / 16 + ((t + 1) / 2 - (1 - t2) / 2);
}

// Where a place lies among four nodes of which it is between the second and the third.
double place_among_four(double place, double second, double step)
{
    return ((place - second) - step / 2) * 0.6666666666666666 / step;
}

// False when one of the sixteen cells has no value.
bool cubic(const spot& at, grid* g, double* z)
{
    double across[4], up[4];
    cubic_weights(place_among_four(at.x, at.column * g->step_x + g->x0, g->step_x), across);
    cubic_weights(place_among_four(at.y, at.row * g->step_y + g->y0, g->step_y), up);
    double sum = 0, weights = 0;
    for (int j = 0; j < 4; ++j) {
        grid_cell copies[4];
        const grid_cell* cells = copies;
        const std::int32_t column = at.column - 1, row = at.row - 1 + j;
        if (g->in_memory)
            cells = g->row_table[row] + column;
        else
            for (int i = 0; i < 4; ++i)
                copies[i] = cell_at(g, column + i, row);
        for (int i = 0; i < 4; ++i) {
            if (cells[i].state != CELL_VALUE)
                return false;
            const double weight = up[j] * across[i];
            sum += weight * cells[i].z;
            weights += weight;
        }
    }
    *z = sum / weights;
    return true;
}

} // namespace

double grid_interpolate(const double* point, grid* g)
{
    spot at;
    return find_spot(point, g, &at) ? interpolate_at(at, g) : NO_ELEVATION;
}

double grid_interpolate_cubic(const double* point, grid* g)
{
    spot at;
    if (!find_spot(point, g, &at))
        return NO_ELEVATION;
    const bool fits = at.column >= 1 && g->columns - at.column >= 2 && at.row >= 1 && g->rows - at.row >= 2;
    double z;
    return fits && cubic(at, g, &z) ? z : interpolate_at(at, g);
}
