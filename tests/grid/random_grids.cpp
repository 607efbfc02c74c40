#include "tests/grid/random_grids.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "tests/polygon/heap.h"

namespace random_grids
{

double uniform(std::mt19937& random, double low, double high)
{
    return low + (high - low) * (static_cast<double>(random()) / 4294967296.0);
}

int below(std::mt19937& random, int count)
{
    return static_cast<int>(random() % static_cast<unsigned>(count));
}

bool same_bits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

namespace
{

double any_step(std::mt19937& random)
{
    constexpr double steps[] = {1, 1, 1, 0.1, 2.5, 10, 1.0 / 3, 1e-5, -1, -7.3, 0, 1e200, 1e-200};
    return steps[below(random, std::size(steps))];
}

double any_elevation(std::mt19937& random, int kind, double x, double y)
{
    switch (kind) {
    case 0:
        return 100 + 0.25 * x - 0.5 * y;
    case 1:
        return uniform(random, -1000, 1000);
    case 2:
        return 7;
    case 3:
        return std::sin(x / 3) * 20 + std::cos(y / 5) * 11;
    default:
        constexpr double odd[] = {0,
                                  -0.0,
                                  1e308,
                                  -1e308,
                                  98765432.1,
                                  -98765432.1,
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::infinity(),
                                  1e-310,
                                  12.5,
                                  -3,
                                  4,
                                  5,
                                  6,
                                  7,
                                  8};
        return odd[below(random, std::size(odd))];
    }
}

void blotch(std::mt19937& random, plain::raster* r, int radius)
{
    const int c = below(random, r->columns + 1), w = below(random, r->rows + 1);
    for (int dr = -radius; dr <= radius; ++dr)
        for (int dc = -radius; dc <= radius; ++dc)
            if (r->is_cell(c + dc, w + dr) && dc * dc + dr * dr <= radius * radius)
                r->cells[r->index(c + dc, w + dr)].state = '0';
}

void clear_nulls(plain::raster* r)
{
    for (plain::cell& cell : r->cells)
        if (cell.state == '0')
            cell.z = 0;
}

} // namespace

plain::raster any(std::mt19937& random)
{
    constexpr double parts[] = {0, 0.05, 0.1, 0.3, 0.6, 0.9, 0.98, 1};
    const double origin = below(random, 3) ? 0 : 640000.37;
    plain::raster r = plain::make(origin, 8 * origin, any_step(random), any_step(random), below(random, 14),
                                  below(random, 14));
    if (below(random, 2))
        r.step_y = r.step_x;
    const double part = parts[below(random, std::size(parts))];
    const int kind = below(random, 9);
    for (int i = 0; i < static_cast<int>(r.cells.size()); ++i) {
        plain::cell& cell = r.cells[i];
        cell.z = any_elevation(random, kind > 4 ? kind - 5 : kind, r.column(i), r.row(i));
        cell.state = uniform(random, 0, 1) < part ? '0' : below(random, 50) ? '1' : '5';
        cell.mark = below(random, 5) ? '0' : '1';
        cell.points = below(random, 7) ? 0 : static_cast<unsigned>(random());
    }
    for (int k = below(random, 3); k > 0; --k)
        blotch(random, &r, 1 + below(random, 4));
    clear_nulls(&r);
    return r;
}

plain::raster ground(unsigned seed, int columns, int rows, double part)
{
    std::mt19937 random(seed);
    plain::raster r = plain::make(1000, 2000, 2, 2.5, columns, rows);
    for (int i = 0; i < static_cast<int>(r.cells.size()); ++i) {
        r.cells[i].z =
            std::sin(r.column(i) / 9.0) * 20 + std::cos(r.row(i) / 15.0) * 11 + uniform(random, 0, 0.5);
        r.cells[i].state = uniform(random, 0, 1) < part / 2 ? '0' : '1';
    }
    for (double left = part / 2 * columns * rows; left > 0;) {
        const int radius = 1 + below(random, 12);
        blotch(random, &r, radius);
        left -= 3.14 * radius * radius;
    }
    clear_nulls(&r);
    return r;
}

grid* made_of(const plain::raster& r, place where)
{
    if (where == place::in_file && r.columns * r.rows < 360000)
        test_heap::fail_at(2); // no memory for the rows
    grid* g = grid_create(r.x0, r.y0, r.step_x, r.step_y, r.columns, r.rows);
    test_heap::fail_at(0);
    if (!g || g->in_memory != (where == place::in_memory)) {
        grid_free(&g);
        return nullptr;
    }
    for (int i = 0; i < static_cast<int>(r.cells.size()); ++i) {
        grid_cell cell;
        cell.z = r.cells[i].z;
        cell.state = r.cells[i].state;
        cell.mark = r.cells[i].mark;
        cell.points = r.cells[i].points;
        grid_write_cell(g, i, cell);
    }
    return g;
}

int first_difference(grid* g, const plain::raster& r)
{
    if (grid_cell_count(g) != static_cast<int>(r.cells.size()))
        return 0;
    for (int i = 0; i < grid_cell_count(g); ++i) {
        const grid_cell cell = grid_read_cell(g, i);
        const plain::cell& want = r.cells[i];
        if (!same_bits(cell.z, want.z) || cell.state != want.state || cell.mark != want.mark ||
            cell.points != want.points)
            return i;
    }
    return -1;
}

} // namespace random_grids
