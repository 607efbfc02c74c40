// One estimate. A null cell is looked at from up to eight sides: on each, what the two nearest cells in that
// direction say about it, weighted by the inverse of the distance. The forms along a slope take it from the
// triangles between the cells around. The order of all sums is part of the results.
#include "grid/estimate.h"

#include "grid/fill.h"
#include "hostapi/ads.h"

std::int32_t grid_fill_plane = 0;
std::int32_t grid_fill_quiet = 0;
double grid_slope[3] = {};
double grid_slope_count = 0;

namespace
{

// Coordinates of the columns and rows around; what can't be told is NO_VALUE, as in grid_cell_x.
struct places {
    double x[2 * REACH + 1], y[2 * REACH + 1];
};

void find_places(const grid* g, std::int32_t column, std::int32_t row, places* out)
{
    for (int k = 0; k <= 2 * REACH; ++k) {
        out->x[k] = g->step_x == 0 ? NO_VALUE : (column + (k - REACH)) * g->step_x + g->x0;
        out->y[k] = g->step_y == 0 ? NO_VALUE : (row + (k - REACH)) * g->step_y + g->y0;
    }
}

struct corner {
    double x, y, z;
};

inline void add_triangle(const corner& p, const corner& q, const corner& r, normal_sums* sums)
{
    const double ax = q.x - p.x, ay = q.y - p.y, az = q.z - p.z;
    const double bx = r.x - p.x, by = r.y - p.y, bz = r.z - p.z;
    sums->x += ay * bz - az * by;
    sums->y += az * bx - ax * bz;
    sums->z += ax * by - ay * bx;
    sums->count += 1;
}

// Of the cell at (column, line) from the middle.
inline void add_cell(const cells_around& around, const places& at, int column, int line, normal_sums* sums)
{
    const grid_cell& cell = around.at(column, line);
    if (cell.state != CELL_VALUE)
        return;
    const grid_cell &right = around.at(column + 1, line), &left = around.at(column - 1, line);
    const grid_cell &up = around.at(column, line + 1), &down = around.at(column, line - 1);
    const bool has_right = right.state == CELL_VALUE, has_left = left.state == CELL_VALUE;
    const bool has_up = up.state == CELL_VALUE, has_down = down.state == CELL_VALUE;
    const double *x = at.x + REACH + column, *y = at.y + REACH + line;
    const corner c{x[0], y[0], cell.z}, r{x[1], y[0], right.z}, l{x[-1], y[0], left.z};
    const corner u{x[0], y[1], up.z}, d{x[0], y[-1], down.z};
    if (has_left && has_down)
        add_triangle(l, c, d, sums);
    if (has_left && has_up)
        add_triangle(l, u, c, sums);
    if (has_up && has_right)
        add_triangle(u, r, c, sums);
    if (has_right && has_down)
        add_triangle(c, r, d, sums);
}

// Each triangle asks for six coordinates, and each that can't be told is told.
void complain(const grid* g, double triangles)
{
    const int bad = 3 * ((g->step_x == 0) + (g->step_y == 0));
    if (bad == 0)
        return;
    for (double k = 0; k < bad * triangles; ++k)
        acutPrintf("Grid step error\n");
}

// The cells whose triangles make the slope: two in each direction.
constexpr signed char SLOPE_CELLS[16][2] = {{1, 0},  {2, 0},  {-1, 0},  {-2, 0}, {0, 1},  {0, 2},
                                            {0, -1}, {0, -2}, {1, 1},   {2, 2},  {1, -1}, {2, -2},
                                            {-1, 1}, {-2, 2}, {-1, -1}, {-2, -2}};

void slope_around(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around)
{
    places at;
    find_places(g, column, row, &at);
    normal_sums sums;
    for (const auto& cell : SLOPE_CELLS)
        add_cell(around, at, cell[0], cell[1], &sums);
    complain(g, sums.count);
    grid_slope_count = sums.count;
    if (sums.count > 0) {
        grid_slope[2] = -(sums.z / sums.count);
        grid_slope[0] = (sums.x / sums.count) / grid_slope[2];
        grid_slope[1] = (sums.y / sums.count) / grid_slope[2];
    } else {
        grid_slope[0] = grid_slope[1] = grid_slope[2] = 0;
    }
}

// Whether a direction (first and second cell) is good for an estimate.
bool both_known(const grid_cell& first, const grid_cell& second)
{
    return first.state != CELL_NULL && second.state != CELL_NULL;
}

bool needs_slope(const cells_around& around)
{
    constexpr signed char axes[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (const auto& d : axes) {
        const grid_cell& first = around.at(d[0], d[1]);
        if (both_known(first, around.at(2 * d[0], 2 * d[1])) && first.state != CELL_ESTIMATED)
            return true;
    }
    return false;
}

struct weighted_mean {
    double sum = 0, weights = 0;

    void take(double estimate, double distance)
    {
        sum += estimate / distance;
        weights += 1 / distance;
    }
    bool finish(double* z) const
    {
        *z = sum / weights;
        return weights > 0;
    }
};

bool estimate_on_plane(const cells_around& around, const estimate_rules& rules, double* z)
{
    const double rise_x = rules.step_x * grid_slope[0], rise_y = rules.step_y * grid_slope[1];
    const grid_cell &right = around.at(1, 0), &left = around.at(-1, 0), &up = around.at(0, 1),
                    &down = around.at(0, -1);
    weighted_mean mean;
    if (right.state == CELL_VALUE)
        mean.take(right.z - rise_x, rules.step_x);
    if (left.state == CELL_VALUE)
        mean.take(left.z + rise_x, rules.step_x);
    if (up.state == CELL_VALUE)
        mean.take(up.z - rise_y, rules.step_y);
    if (down.state == CELL_VALUE)
        mean.take(down.z + rise_y, rules.step_y);
    return mean.finish(z);
}

// A direction of sight and, for the forms along the slope, the sign of the rise in x and in y.
struct direction {
    signed char column, line;
    signed char curved_x, planar_x, y; // x differs between the forms
};

// The planar form goes up the slope to the west on both diagonals as it does to the east: its grids are known
// with that.
constexpr direction DIRECTIONS[8] = {{1, 0, -1, -1, 0},  {-1, 0, 1, 1, 0},   {0, -1, 0, 0, 1},
                                     {0, 1, 0, 0, -1},   {1, 1, -1, -1, -1}, {-1, 1, 1, -1, -1},
                                     {1, -1, -1, -1, 1}, {-1, -1, 1, -1, 1}};

double with_sign(double z, double rise, int sign)
{
    return sign > 0 ? z + rise : sign < 0 ? z - rise : z;
}

} // namespace

void add_normals(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
                 normal_sums* sums)
{
    places at;
    find_places(g, column, row, &at);
    const double before = sums->count;
    add_cell(around, at, 0, 0, sums);
    complain(g, sums->count - before);
}

bool estimate(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
              const estimate_rules& rules, double* z)
{
    if (grid_fill_plane == 1)
        return estimate_on_plane(around, rules, z);
    const bool average = rules.mode == 'A', planar = rules.mode == 'P';
    grid_slope_count = 0;
    if (!average) {
        if (needs_slope(around))
            slope_around(g, column, row, around);
        if (!(grid_slope_count > 0))
            return false;
    }
    const double part = planar ? 0.9 : 0.6;
    const double rise_x = rules.step_x * grid_slope[0] * part, rise_y = rules.step_y * grid_slope[1] * part;
    weighted_mean mean;
    bool go = false;
    for (const direction& d : DIRECTIONS) {
        const grid_cell &first = around.at(d.column, d.line), &second = around.at(2 * d.column, 2 * d.line);
        if (!both_known(first, second))
            continue;
        const double distance = d.line == 0 ? rules.step_x : d.column == 0 ? rules.step_y : rules.step_diagonal;
        if (average)
            mean.take((2 * first.z + second.z) / 3, distance);
        else
            mean.take(with_sign(with_sign(first.z, rise_x, planar ? d.planar_x : d.curved_x), rise_y, d.y),
                      distance);
        // A cell estimated in this pass may add to an estimate but not justify it, nor may a diagonal.
        if ((d.column == 0 || d.line == 0) && first.state != CELL_ESTIMATED)
            go = true;
    }
    return go && mean.finish(z);
}

estimate_rules rules_of(char mode, double step_x, double step_y, double step_diagonal)
{
    return {mode == 'A' || mode == 'P' ? mode : 'C', step_x, step_y, step_diagonal};
}
