// plain_cells.h: a raster as one array, with the operations on it told step by step and slowly. The judge of
// the fast ones; it shares nothing with them.
#pragma once

#include <string>
#include <vector>

namespace plain
{

constexpr double no_place = 98765432.1;
constexpr double no_height = -98765432.1;
constexpr int done = 5100;
constexpr int stopped = -5001;

struct cell {
    double z = 0;
    char state = '0';
    char mark = '0';
    unsigned points = 0;
};

struct triple {
    double x = 0, y = 0, z = 0;
};

struct raster {
    double x0 = 0, y0 = 0, step_x = 1, step_y = 1;
    int columns = 0, rows = 0; // intervals
    std::vector<cell> cells;

    int fill_plane = 0, fill_quiet = 0;
    triple slope;
    double slope_count = 0;

    std::string printed;
    int break_at = 0; // the poll that is answered with yes; 0: none
    int polls = 0;

    void print(const char* format, ...) __attribute__((format(printf, 2, 3)));

    bool is_cell(int column, int row) const;
    int index(int column, int row) const; // -1 where there is none
    int column(int i) const { return i % (columns + 1); }
    int row(int i) const { return i / (columns + 1); }
    int right(int i) const { return i < 0 ? -1 : index(column(i) + 1, row(i)); }
    int up(int i) const { return i < 0 ? -1 : index(column(i), row(i) + 1); }
    int left(int i) const { return i < 0 ? -1 : index(column(i) - 1, row(i)); }
    int down(int i) const { return i < 0 ? -1 : index(column(i), row(i) - 1); }
    double x(int i);
    double y(int i);
    bool has(int i, char state) const { return i >= 0 && cells[i].state == state; }
};

raster make(double x0, double y0, double step_x, double step_y, int columns, int rows);

// A place beyond the cells of rounding, or of a step of 0, has no height.
double interpolate(raster& r, double x, double y);
double interpolate_cubic(raster& r, double x, double y);

void cell_normal(raster& r, int i);
void mean_slope(raster& r);
void estimate_cell(raster& r, int i, char mode, double sx, double sy, double sd);
int fill_nulls(raster& r, long null_count, char mode);

} // namespace plain
