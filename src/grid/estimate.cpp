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
using halves = std::int32_t __attribute__((vector_size(16)));

pair_mask bits(pair x)
{
    return reinterpret_cast<pair_mask>(x);
}

// 0 where the mask says nothing. That changes no sum which began as 0.
pair masked(pair x, pair_mask mask)
{
    return reinterpret_cast<pair>(bits(x) & mask);
}

// The states of two cells, and which of them are `state`.
struct two_states {
    halves both;

    two_states(const grid_cell& a, const grid_cell& b) : both{a.state, a.state, b.state, b.state} {}
    pair_mask are(char state) const
    {
        return reinterpret_cast<pair_mask>(both == halves{state, state, state, state});
    }
};

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

struct two_cells {
    pair z;
    pair_mask known;
};

[[gnu::always_inline]] inline two_cells look_at(const grid_cell& a, const grid_cell& b)
{
    const pair z = {a.z, b.z};
    const pair_mask known = two_states(a, b).are(CELL_VALUE);
    return {z, known};
}

struct even_sums {
    pair xy = {0, 0};
    pair_mask count = {0, 0};

    // One kind of triangle at both cells. Added is it in the order of cells, by add_first and add_second.
    [[gnu::always_inline]] void add_first(pair x, pair y) { xy += __builtin_shuffle(x, y, pair_mask{0, 2}); }
    [[gnu::always_inline]] void add_second(pair x, pair y) { xy += __builtin_shuffle(x, y, pair_mask{1, 3}); }
};

// The triangles of add_cell at two cells, one after the other, without the products that an edge along an axis
// makes 0.
[[gnu::always_inline]] inline void add_two_cells(const cells_around& around, const signed char (*at)[2],
                                                 const even_steps& even, even_sums* sums)
{
    const auto look = [&](int right, int up) {
        return look_at(around.at(at[0][0] + right, at[0][1] + up), around.at(at[1][0] + right, at[1][1] + up));
    };
    const two_cells cell = look(0, 0), left = look(-1, 0), right = look(1, 0), up = look(0, 1),
                    down = look(0, -1);
    const pair dx = {even.x, even.x}, dy = {even.y, even.y};
    const pair_mask with_left = cell.known & left.known, with_right = cell.known & right.known;
    const pair_mask counts[4] = {with_left & down.known, with_left & up.known, with_right & up.known,
                                 with_right & down.known};
    const pair from_left = cell.z - left.z, from_up = cell.z - up.z;
    const pair x[4] = {masked(from_left * dy, counts[0]), masked(from_left * dy, counts[1]),
                       masked((right.z - up.z) * dy - from_up * dy, counts[2]),
                       masked((right.z - cell.z) * dy, counts[3])};
    const pair y[4] = {masked(from_left * dx - (down.z - left.z) * dx, counts[0]),
                       masked((up.z - left.z) * dx - from_left * dx, counts[1]),
                       masked(-(from_up * dx), counts[2]), masked(-((down.z - cell.z) * dx), counts[3])};
    for (int k = 0; k < 4; ++k)
        sums->add_first(x[k], y[k]);
    for (int k = 0; k < 4; ++k)
        sums->add_second(x[k], y[k]);
    sums->count -= counts[0] + counts[1] + counts[2] + counts[3];
}

// The cells whose triangles make the slope: two in each direction.
constexpr signed char SLOPE_CELLS[16][2] = {{1, 0},  {2, 0},  {-1, 0},  {-2, 0}, {0, 1},  {0, 2},
                                            {0, -1}, {0, -2}, {1, 1},   {2, 2},  {1, -1}, {2, -2},
                                            {-1, 1}, {-2, 2}, {-1, -1}, {-2, -2}};

struct triangle_sums {
    double x, y, z, count;
};

triangle_sums triangles_around(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around)
{
    places at;
    find_places(g, column, row, &at);
    pair_sums sums = {};
#pragma GCC unroll 16
    for (int k = 0; k < 16; ++k)
        add_cell(around, at, SLOPE_CELLS[k][0], SLOPE_CELLS[k][1], &sums);
    return {sums.xy[0], sums.xy[1], sums.z_count[0], sums.z_count[1]};
}

// The same to the bit where all steps are alike. False where a product left out was not 0: an elevation isn't
// finite.
bool even_triangles_around(const cells_around& around, const even_steps& even, triangle_sums* out)
{
    even_sums sums;
#pragma GCC unroll 8
    for (int k = 0; k < 16; k += 2)
        add_two_cells(around, SLOPE_CELLS + k, even, &sums);
    const std::int64_t count = sums.count[0] + sums.count[1];
    *out = {sums.xy[0], sums.xy[1], even.z_sums[count], static_cast<double>(count)};
    return out->x - out->x == 0 && out->y - out->y == 0;
}

void slope_around(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
                  const even_steps* even)
{
    triangle_sums sums;
    if (!even || !even_triangles_around(around, *even, &sums))
        sums = triangles_around(g, column, row, around);
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

// The two nearest cells in all directions, two directions at a time.
struct sights {
    pair first[4], second[4];
    pair_mask known[4]; // both cells are
    pair_mask good;     // of the axes: known, and the first not estimated in this pass

    explicit sights(const cells_around& around)
    {
        pair_mask fresh[2];
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) {
            const auto &d = DIRECTIONS[2 * k], &e = DIRECTIONS[2 * k + 1];
            const grid_cell &d1 = around.at(d[0], d[1]), &d2 = around.at(2 * d[0], 2 * d[1]);
            const grid_cell &e1 = around.at(e[0], e[1]), &e2 = around.at(2 * e[0], 2 * e[1]);
            first[k] = pair{d1.z, e1.z};
            second[k] = pair{d2.z, e2.z};
            const two_states nearest(d1, e1);
            known[k] = ~(nearest.are(CELL_NULL) | two_states(d2, e2).are(CELL_NULL));
            if (k < 2)
                fresh[k] = known[k] & ~nearest.are(CELL_ESTIMATED);
        }
        good = fresh[0] | fresh[1];
    }

    // A cell estimated in this pass may add to an estimate but not justify it, nor may a diagonal.
    bool justify() const
    {
        return (good[0] | good[1]) != 0;
    }

    template <class F>
    [[gnu::always_inline]] bool mean_of(F estimate, const estimate_rules& rules, double* z) const
    {
        const double distances[4] = {rules.step_x, rules.step_y, rules.step_diagonal, rules.step_diagonal};
        pair sums = {0, 0}; // of estimates by their distance, and of inverse distances
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) {
            const pair part = masked(estimate(first[k], second[k], 2 * k) / distances[k], known[k]);
            const pair weight = masked(pair{1, 1} / distances[k], known[k]);
            sums += __builtin_shuffle(part, weight, pair_mask{0, 2});
            sums += __builtin_shuffle(part, weight, pair_mask{1, 3});
        }
        *z = sums[0] / sums[1];
        return sums[1] > 0;
    }
};

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
    grid_slope_count = 0;
    const sights seen(around);
    if (!seen.justify())
        return false;
    if (rules.mode == 'A')
        return seen.mean_of([](pair first, pair second, int) { return (2 * first + second) / 3; }, rules, z);
    slope_around(g, column, row, around, rules.even);
    if (!(grid_slope_count > 0))
        return false;
    const rises rise = rises_of(rules);
    return seen.mean_of(
        [&](pair first, pair, int k) {
            return first + pair{rise.x[k], rise.x[k + 1]} + pair{rise.y[k], rise.y[k + 1]};
        },
        rules, z);
}

estimate_rules rules_of(char mode, double step_x, double step_y, double step_diagonal)
{
    return {mode == 'A' || mode == 'P' ? mode : 'C', step_x, step_y, step_diagonal, nullptr};
}

namespace
{

// False where two nodes beside each other have another distance than the first two, or none.
bool is_even(double origin, double step, std::int32_t intervals, double* distance)
{
    *distance = (step + origin) - (0 * step + origin);
    if (intervals < 1 || *distance == 0 || *distance - *distance != 0)
        return false;
    for (std::int32_t k = 1; k <= intervals; ++k)
        if ((k * step + origin) - ((k - 1) * step + origin) != *distance)
            return false;
    return true;
}

} // namespace

bool find_even_steps(const grid* g, even_steps* out)
{
    if (!is_even(g->x0, g->step_x, g->columns, &out->x) || !is_even(g->y0, g->step_y, g->rows, &out->y))
        return false;
    double sum = 0;
    for (double& z : out->z_sums) {
        z = sum;
        sum -= out->x * out->y;
    }
    return sum - sum == 0;
}
