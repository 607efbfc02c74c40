#include <cmath>
#include <cstdarg>

#include "tests/formatted.h"
#include "tests/grid/plain_cells.h"

namespace plain
{

void raster::print(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    printed += formatted(format, arguments);
    va_end(arguments);
}

bool raster::is_cell(int column, int row) const
{
    return column >= 0 && column <= columns && row >= 0 && row <= rows;
}

int raster::index(int column, int row) const
{
    return is_cell(column, row) ? (columns + 1) * row + column : -1;
}

double raster::x(int i)
{
    if (columns == 0) {
        print("Grid size error\n");
        return no_place;
    }
    if (step_x == 0) {
        print("Grid step error\n");
        return no_place;
    }
    return column(i) * step_x + x0;
}

double raster::y(int i)
{
    if (columns == 0) {
        print("Grid size error\n");
        return no_place;
    }
    if (step_y == 0) {
        print("Grid step error\n");
        return no_place;
    }
    return row(i) * step_y + y0;
}

raster make(double x0, double y0, double step_x, double step_y, int columns, int rows)
{
    raster r;
    r.x0 = x0;
    r.y0 = y0;
    r.step_x = step_x;
    r.step_y = step_y;
    r.columns = columns;
    r.rows = rows;
    r.cells.resize(static_cast<std::size_t>(columns + 1) * (rows + 1));
    return r;
}

namespace
{

bool is_inside(const raster& r, double x, double y)
{
    return x >= r.x0 && x <= r.x0 + r.columns * r.step_x && y >= r.y0 && y <= r.y0 + r.rows * r.step_y;
}

// Column and row of the cell at or before the place; false where that is none.
bool find_cell(const raster& r, double px, double py, int* column, int* row)
{
    const double c = std::floor((px - r.x0) / r.step_x);
    const double w = std::floor((py - r.y0) / r.step_y);
    if (!(c >= 0 && c <= r.columns && w >= 0 && w <= r.rows))
        return false;
    *column = static_cast<int>(c);
    *row = static_cast<int>(w);
    return true;
}

double inverse_distance_mean(raster& r, double px, double py, const int* cells)
{
    double sum = 0, weights = 0;
    int contributing = 0;
    for (int k = 0; k < 4; ++k) {
        const int i = cells[k];
        if (!r.has(i, '1'))
            continue;
        const double dx = px - r.x(i);
        const double dy = py - r.y(i);
        const double d = std::sqrt(dx * dx + dy * dy);
        if (d == 0)
            return r.cells[i].z;
        sum += r.cells[i].z / d;
        weights += 1 / d;
        ++contributing;
    }
    return contributing == 0 ? no_height : sum / weights;
}

} // namespace

double interpolate(raster& r, double px, double py)
{
    if (!is_inside(r, px, py))
        return no_height;
    int column, row;
    if (!find_cell(r, px, py, &column, &row))
        return no_height;

    const int a = r.index(column, row);
    const int b = r.right(a);
    const int d = r.up(a);
    const int c = r.right(d);
    const int all[4] = {a, b, c, d};
    if (a < 0 || b < 0 || c < 0 || d < 0)
        return inverse_distance_mean(r, px, py, all);
    for (int i : all)
        if (r.cells[i].state != '1')
            return no_height;

    const double zA = r.cells[a].z, zB = r.cells[b].z, zC = r.cells[c].z, zD = r.cells[d].z;
    const double dS = py - r.y(a);
    const double dN = r.y(c) - py;
    const double dW = px - r.x(a);
    const double dE = r.x(b) - px;
    const double zW = zD * dS / r.step_y + zA * dN / r.step_y;
    const double zE = zC * dS / r.step_y + zB * dN / r.step_y;
    const double zN = zC * dW / r.step_x + zD * dE / r.step_x;
    const double zS = zB * dW / r.step_x + zA * dE / r.step_x;

    if (dS == 0 || dN == 0 || dW == 0 || dE == 0) {
        bool on_cell = false;
        double z = 0;
        for (int i : all)
            if (r.x(i) == px && r.y(i) == py) {
                on_cell = true;
                z = r.cells[i].z;
            }
        if (on_cell)
            return z;
        if (dN == 0)
            z = zN;
        if (dS == 0)
            z = zS;
        if (dW == 0)
            z = zW;
        if (dE == 0)
            z = zE;
        return z;
    }
    return (zS / dS + zN / dN + zE / dE + zW / dW) / (1 / dW + 1 / dE + 1 / dN + 1 / dS);
}

namespace
{

double weight(int which, double t)
{
    const double t2 = t * t;
    const double t3 = t2 * t;
    switch (which) {
    case 0:
        return (9 * t + t2 - 9 * t3 - 1) / 16 + ((1 - t) / 2 - (1 - t2) / 2);
    case 1:
        return (7 * t2 + 27 * t3 - 27 * t - 7) / 16 + (1 - t2);
    case 2:
        return (27 * t - 27 * t3 - 9 * t2 + 9) / 16;
    default:
        return (t2 + 9 * t3 - 9 * t - 1) / 16 + ((t + 1) / 2 - (1 - t2) / 2);
    }
}

} // namespace

double interpolate_cubic(raster& r, double px, double py)
{
    if (!is_inside(r, px, py))
        return no_height;
    int column, row;
    if (!find_cell(r, px, py, &column, &row))
        return no_height;
    const bool fits = r.is_cell(column - 1, row - 1) && r.is_cell(column + 2, row - 1) &&
                      r.is_cell(column - 1, row + 2) && r.is_cell(column + 2, row + 2);
    if (fits) {
        const int at = r.index(column, row);
        const double u = ((px - r.x(at)) - r.step_x / 2) * 0.6666666666666666 / r.step_x;
        const double v = ((py - r.y(at)) - r.step_y / 2) * 0.6666666666666666 / r.step_y;
        double sum = 0, weights = 0;
        int valued = 0;
        for (int j = 0; j < 4; ++j)
            for (int i = 0; i < 4; ++i) {
                const cell& one = r.cells[r.index(column - 1 + i, row - 1 + j)];
                const double w = weight(j, v) * weight(i, u);
                sum += w * one.z;
                weights += w;
                if (one.state == '1')
                    ++valued;
            }
        if (valued == 16)
            return sum / weights;
    }
    return interpolate(r, px, py);
}

} // namespace plain
