#include <cmath>
#include <list>

#include "tests/grid/plain_cells.h"

namespace plain
{

namespace
{

void add_triangle(raster& r, int p1, int p2, int p3, triple* sums)
{
    const double x1 = r.x(p1), x2 = r.x(p2), x3 = r.x(p3);
    const double y1 = r.y(p1), y2 = r.y(p2), y3 = r.y(p3);
    const double ax = x2 - x1, ay = y2 - y1, az = r.cells[p2].z - r.cells[p1].z;
    const double bx = x3 - x1, by = y3 - y1, bz = r.cells[p3].z - r.cells[p1].z;
    sums->x += ay * bz - az * by;
    sums->y += az * bx - ax * bz;
    sums->z += ax * by - ay * bx;
}

void add_cell(raster& r, int i, triple* sums, double* count)
{
    if (i == -1)
        return;
    const int right = r.right(i), up = r.up(i), left = r.left(i), down = r.down(i);
    if (r.has(i, '1') && r.has(left, '1') && r.has(down, '1')) {
        *count += 1;
        add_triangle(r, left, i, down, sums);
    }
    if (r.has(i, '1') && r.has(left, '1') && r.has(up, '1')) {
        *count += 1;
        add_triangle(r, left, up, i, sums);
    }
    if (r.has(i, '1') && r.has(up, '1') && r.has(right, '1')) {
        *count += 1;
        add_triangle(r, up, right, i, sums);
    }
    if (r.has(i, '1') && r.has(right, '1') && r.has(down, '1')) {
        *count += 1;
        add_triangle(r, i, right, down, sums);
    }
}

} // namespace

void cell_normal(raster& r, int i)
{
    add_cell(r, i, &r.slope, &r.slope_count);
}

// Without a single triangle the slope is level.
void mean_slope(raster& r)
{
    double n = 0;
    r.slope = {};
    for (int i = 0; i < static_cast<int>(r.cells.size()); ++i)
        add_cell(r, i, &r.slope, &n);
    if (n == 0)
        return;
    const triple s = r.slope;
    const double third = -(s.z / n);
    r.slope.x = (s.x / n) / third;
    r.slope.y = (s.y / n) / third;
    r.slope.z = std::sqrt(r.slope.x * r.slope.x + r.slope.y * r.slope.y);
}

namespace
{

struct estimates {
    double sum = 0, weights = 0;

    void take(double e, double w)
    {
        sum += e / w;
        weights += 1 / w;
    }
};

bool has_value(const raster& r, int i)
{
    return i >= 0 && r.cells[i].state != '0';
}

} // namespace

void estimate_cell(raster& r, int i, char mode, double sx, double sy, double sd)
{
    const int c = r.column(i), w = r.row(i);
    const int R1 = r.index(c + 1, w), R2 = r.index(c + 2, w);
    const int L1 = r.index(c - 1, w), L2 = r.index(c - 2, w);
    const int U1 = r.index(c, w + 1), U2 = r.index(c, w + 2);
    const int D1 = r.index(c, w - 1), D2 = r.index(c, w - 2);
    const int NE1 = r.index(c + 1, w + 1), NE2 = r.index(c + 2, w + 2);
    const int NW1 = r.index(c - 1, w + 1), NW2 = r.index(c - 2, w + 2);
    const int SE1 = r.index(c + 1, w - 1), SE2 = r.index(c + 2, w - 2);
    const int SW1 = r.index(c - 1, w - 1), SW2 = r.index(c - 2, w - 2);
    const auto z = [&r](int k) { return r.cells[k].z; };
    int go = 0;
    estimates e;

    if (r.fill_plane == 1) {
        const double gx = r.slope.x, gy = r.slope.y;
        go = 1;
        if (r.has(R1, '1'))
            e.take(z(R1) - sx * gx, sx);
        if (r.has(L1, '1'))
            e.take(z(L1) + sx * gx, sx);
        if (r.has(U1, '1'))
            e.take(z(U1) - sy * gy, sy);
        if (r.has(D1, '1'))
            e.take(z(D1) + sy * gy, sy);
    } else {
        r.slope_count = 0;
        if (mode != 'A') {
            bool needed = false;
            const int axis[4][2] = {{R1, R2}, {L1, L2}, {U1, U2}, {D1, D2}};
            for (const auto& pair : axis)
                if (has_value(r, pair[0]) && has_value(r, pair[1]) && r.cells[pair[0]].state != '5')
                    needed = true;
            if (needed) {
                r.slope = {};
                r.slope_count = 0;
                const int around[16] = {R1, R2, L1, L2, U1, U2, D1, D2, NE1, NE2, SE1, SE2, NW1, NW2, SW1, SW2};
                for (int k : around)
                    cell_normal(r, k);
                if (r.slope_count > 0) {
                    const triple s = r.slope;
                    r.slope.z = -(s.z / r.slope_count);
                    r.slope.x = (s.x / r.slope_count) / r.slope.z;
                    r.slope.y = (s.y / r.slope_count) / r.slope.z;
                }
            }
        }
        if (r.slope_count > 0 || mode == 'A') {
            const double gx = r.slope.x, gy = r.slope.y;
            const double f = mode == 'P' ? 0.9 : 0.6;
            const auto mean = [&](int first, int second) { return (2 * z(first) + z(second)) / 3; };
            const auto both = [&r](int first, int second) {
                return has_value(r, first) && has_value(r, second);
            };
            if (both(R1, R2)) {
                e.take(mode == 'A' ? mean(R1, R2) : z(R1) - sx * gx * f, sx);
                if (r.cells[R1].state != '5')
                    go = 1;
            }
            if (both(L1, L2)) {
                e.take(mode == 'A' ? mean(L1, L2) : z(L1) + sx * gx * f, sx);
                if (r.cells[L1].state != '5')
                    go = 1;
            }
            if (both(D1, D2)) {
                e.take(mode == 'A' ? mean(D1, D2) : z(D1) + sy * gy * f, sy);
                if (r.cells[D1].state != '5')
                    go = 1;
            }
            if (both(U1, U2)) {
                e.take(mode == 'A' ? mean(U1, U2) : z(U1) - sy * gy * f, sy);
                if (r.cells[U1].state != '5')
                    go = 1;
            }
            if (both(NE1, NE2))
                e.take(mode == 'A' ? mean(NE1, NE2) : z(NE1) - sx * gx * f - sy * gy * f, sd);
            if (both(NW1, NW2)) {
                if (mode == 'A')
                    e.take(mean(NW1, NW2), sd);
                else if (mode == 'P')
                    e.take(z(NW1) - sx * gx * f - sy * gy * f, sd);
                else
                    e.take(z(NW1) + sx * gx * f - sy * gy * f, sd);
            }
            if (both(SE1, SE2))
                e.take(mode == 'A' ? mean(SE1, SE2) : z(SE1) - sx * gx * f + sy * gy * f, sd);
            if (both(SW1, SW2)) {
                if (mode == 'A')
                    e.take(mean(SW1, SW2), sd);
                else if (mode == 'P')
                    e.take(z(SW1) - sx * gx * f + sy * gy * f, sd);
                else
                    e.take(z(SW1) + sx * gx * f + sy * gy * f, sd);
            }
        }
    }

    if (go == 1 && e.weights > 0) {
        r.cells[i].z = e.sum / e.weights;
        r.cells[i].state = '5';
    }
}

namespace
{

struct item {
    double z;
    char mark;
    int index;
};

void estimate_and_list(raster& r, int i, char mode, double sd, std::list<item>* items)
{
    estimate_cell(r, i, mode, r.step_x, r.step_y, sd);
    if (r.cells[i].state != '0')
        items->push_front({r.cells[i].z, r.cells[i].mark, i});
}

void commit(raster& r, const item& one, long* left)
{
    r.cells[one.index].z = one.z;
    r.cells[one.index].mark = one.mark;
    r.cells[one.index].state = '1';
    --*left;
}

} // namespace

int fill_nulls(raster& r, long null_count, char mode)
{
    if (r.fill_quiet == 0)
        r.print("\nPass> 1 Null Z values left> %ld", null_count);
    const double sd = std::sqrt(r.step_x * r.step_x + r.step_y * r.step_y);
    if (r.fill_plane == 1)
        mean_slope(r);

    long pass = 1, left = 0, previous = 0;
    std::list<item> items;
    for (int i = 0; i < static_cast<int>(r.cells.size()); ++i)
        if (r.cells[i].state == '0') {
            ++left;
            estimate_and_list(r, i, mode, sd, &items);
        }

    while (left >= 1 && !items.empty()) {
        ++pass;
        if (left == previous)
            break;
        previous = left;
        std::list<item> next;
        while (!items.empty()) {
            const item one = items.front();
            commit(r, one, &left);
            for (int neighbour : {r.right(one.index), r.left(one.index), r.up(one.index), r.down(one.index)})
                if (r.has(neighbour, '0'))
                    estimate_and_list(r, neighbour, mode, sd, &next);
            items.pop_front();
        }
        items = next;

        ++r.polls;
        if (r.polls == r.break_at) {
            r.print("\nFunction cancelled at user request.");
            return stopped;
        }
        if (r.fill_quiet == 0)
            r.print("\rPass> %ld Null Z values left> %ld    ", pass, left);
        if (r.fill_quiet == 1 && pass == 2)
            break;
    }
    for (const item& one : items)
        commit(r, one, &left);
    return done;
}

} // namespace plain
