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

// Two sums at a time. Each lane rounds as a number of its own would.
using pair = double __attribute__((vector_size(16)));
using pair_mask = std::int64_t __attribute__((vector_size(16)));

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

struct pair_sums {
    pair xy, z_count;
};

// One triangle, of edges a and b from its first corner: the normal is a x b. Added is it only where `counts`,
// by a mask: where values are missing here and there, a branch would be guessed wrongly too often.
[[gnu::always_inline]] inline void add_triangle(double ax, double ay, double az, double bx, double by,
                                                double bz, bool counts, pair_sums* sums)
{
    constexpr pair_mask NOTHING_OR_ALL[2] = {{0, 0}, {-1, -1}};
    constexpr pair_mask SIGN_OR_NOTHING[2] = {{INT64_MIN, INT64_MIN}, {0, 0}};
    const pair_mask mask = NOTHING_OR_ALL[counts], neutral = SIGN_OR_NOTHING[counts]; // -0: changes no sum
    const pair xy = pair{ay, -ax} * pair{bz, bz} - pair{az, az} * pair{by, -bx};
    const pair z_count = {ax * by - ay * bx, 1};
    sums->xy += reinterpret_cast<pair>((reinterpret_cast<pair_mask>(xy) & mask) | neutral);
    sums->z_count += reinterpret_cast<pair>((reinterpret_cast<pair_mask>(z_count) & mask) | neutral);
}

// Of the cell at (column, line) from the middle: left, cell, down; left, up, cell; up, right, cell; cell,
// right, down.
[[gnu::always_inline]] inline void add_cell(const cells_around& around, const places& at, int column, int line,
                                            pair_sums* sums)
{
    const grid_cell& cell = around.at(column, line);
    if (cell.state != CELL_VALUE)
        return;
    const grid_cell &right = around.at(column + 1, line), &left = around.at(column - 1, line);
    const grid_cell &up = around.at(column, line + 1), &down = around.at(column, line - 1);
    const bool has_right = right.state == CELL_VALUE, has_left = left.state == CELL_VALUE;
    const bool has_up = up.state == CELL_VALUE, has_down = down.state == CELL_VALUE;
    const double *x = at.x + REACH + column, *y = at.y + REACH + line;
    const double none_x = x[0] - x[0], none_y = y[0] - y[0]; // 0, or no number
    const double from_left = x[0] - x[-1], to_right = x[1] - x[0], to_up = y[1] - y[0], to_down = y[-1] - y[0];
    add_triangle(from_left, none_y, cell.z - left.z, from_left, to_down, down.z - left.z, has_left & has_down,
                 sums);
    add_triangle(from_left, to_up, up.z - left.z, from_left, none_y, cell.z - left.z, has_left & has_up, sums);
    add_triangle(to_right, -to_up, right.z - up.z, none_x, -to_up, cell.z - up.z, has_up & has_right, sums);
    add_triangle(to_right, none_y, right.z - cell.z, none_x, to_down, down.z - cell.z, has_right & has_down,
                 sums);
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
    pair_sums sums = {};
#pragma GCC unroll 16
    for (int k = 0; k < 16; ++k)
        add_cell(around, at, SLOPE_CELLS[k][0], SLOPE_CELLS[k][1], &sums);
    const double count = sums.z_count[1];
    complain(g, count);
    grid_slope_count = count;
    if (count > 0) {
        grid_slope[2] = -(sums.z_count[0] / count);
        grid_slope[0] = (sums.xy[0] / count) / grid_slope[2];
        grid_slope[1] = (sums.xy[1] / count) / grid_slope[2];
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

// The directions of sight in the order of their sums: right, left, down, up, then the diagonals.
constexpr signed char DIRECTIONS[8][2] = {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, 1}, {-1, 1}, {1, -1}, {-1, -1}};

// What is added to the first cell in each direction to follow the slope to the middle.
struct rises {
    double x[8], y[8];
};

rises rises_of(const estimate_rules& rules)
{
    const double part = rules.mode == 'P' ? 0.9 : 0.6;
    const double x = rules.step_x * grid_slope[0] * part, y = rules.step_y * grid_slope[1] * part;
    // The planar form takes the western diagonals for eastern ones in x: its grids are known with that.
    const double west = rules.mode == 'P' ? -x : x;
    return {{-x, x, 0, 0, -x, west, -x, west}, {0, 0, y, -y, -y, -y, y, y}};
}

} // namespace

void add_normals(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
                 normal_sums* sums)
{
    places at;
    find_places(g, column, row, &at);
    pair_sums pairs = {{sums->x, sums->y}, {sums->z, sums->count}};
    add_cell(around, at, 0, 0, &pairs);
    complain(g, pairs.z_count[1] - sums->count);
    *sums = {pairs.xy[0], pairs.xy[1], pairs.z_count[0], pairs.z_count[1]};
}

bool estimate(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
              const estimate_rules& rules, double* z)
{
    if (grid_fill_plane == 1)
        return estimate_on_plane(around, rules, z);
    const bool average = rules.mode == 'A';
    grid_slope_count = 0;
    if (!average) {
        if (needs_slope(around))
            slope_around(g, column, row, around);
        if (!(grid_slope_count > 0))
            return false;
    }
    const rises rise = rises_of(rules);
    weighted_mean mean;
    bool go = false;
#pragma GCC unroll 8
    for (int k = 0; k < 8; ++k) {
        const int to_x = DIRECTIONS[k][0], to_y = DIRECTIONS[k][1];
        const grid_cell &first = around.at(to_x, to_y), &second = around.at(2 * to_x, 2 * to_y);
        if (!both_known(first, second))
            continue;
        const double distance = to_y == 0 ? rules.step_x : to_x == 0 ? rules.step_y : rules.step_diagonal;
        mean.take(average ? (2 * first.z + second.z) / 3 : first.z + rise.x[k] + rise.y[k], distance);
        // A cell estimated in this pass may add to an estimate but not justify it, nor may a diagonal.
        if ((to_x == 0 || to_y == 0) && first.state != CELL_ESTIMATED)
            go = true;
    }
    return go && mean.finish(z);
}

estimate_rules rules_of(char mode, double step_x, double step_y, double step_diagonal)
{
    return {mode == 'A' || mode == 'P' ? mode : 'C', step_x, step_y, step_diagonal};
}
