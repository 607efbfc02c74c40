// grid.h: rasters of elevations, one cell a node of a regular net in the plane, each with a value or null.
//
// A grid of fewer than 360000 intervals lies in memory, row by row. A larger one lies in a temporary file, and
// a window is held of it for reading and one for writing; to the caller it is the same. Cell (column, row) has
// the index (columns + 1) row + column; column 0 is at x0, row 0 at y0. The count of cells fits in 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/tolerances.h"

struct host_file;
struct grid_pages;

// States of a cell. An estimated one has a value too, by an estimate of the pass at hand.
constexpr char CELL_VALUE = '1';
constexpr char CELL_NULL = '0';
constexpr char CELL_ESTIMATED = '5';

// A cell as it stands in memory and in the temporary file; as it is made here, a null cell.
struct grid_cell {
    double z = 0;
    char state = CELL_NULL;
    char mark = '0';
    std::uint16_t unused = 0;
    std::uint32_t points = 0; // which of the grid's collected points are this cell's (grid_points); 0: none
};
static_assert(sizeof(grid_cell) == 16 && offsetof(grid_cell, z) == 0 && offsetof(grid_cell, state) == 8 &&
              offsetof(grid_cell, mark) == 9 && offsetof(grid_cell, unused) == 10 &&
              offsetof(grid_cell, points) == 12);

// The points that were collected in one cell.
struct grid_cell_points {
    std::int32_t cell; // its index
    std::int32_t count;
    double (*items)[3]; // x, y, z
    grid_cell_points* next;
};

struct grid {
    double x0, y0; // place of cell 0
    double step_x, step_y;
    std::int32_t columns, rows; // intervals: a row has columns + 1 cells, and there are rows + 1 rows
    std::int32_t in_memory;     // 1: rows in memory, 0: temporary file
    char temp_path[16];         // the temporary file's name, as file_open_temp takes it; empty in memory
    grid_cell* write_buffer;    // room for 5000 cells
    grid_cell* read_buffer;     // room for 10000 cells
    grid_cell** row_table;      // rows + 1
    std::int32_t write_start, read_start; // index of the first cell of each buffer; -1: empty
    grid_cell_points* points;             // all that were collected, the newest first
    std::int32_t write_count, read_count; // cells in each buffer; -1: empty
    host_file* file;                      // open during a transfer only

    std::int32_t file_cells;        // how far the temporary file was written
    std::int32_t faults;            // transfers that did not bring all cells over
    grid_pages* pages;              // of the temporary file, for work across its rows; made when first used
    grid_cell_points** point_table; // by handle less one
    std::int32_t point_count, point_room;
};

// ---- making and releasing
// Null when memory is exhausted, when `columns` or `rows` is negative, or when the cells are too many for 32
// bits; the last two with a message. The cells of a grid in memory are not cleared.
grid* grid_create(double x0, double y0, double step_x, double step_y, std::int32_t columns, std::int32_t rows);
// Releases all that belongs to the grid, its temporary file too; the caller's pointer becomes null.
void grid_free(grid** owner);

// ---- cells
// A null cell for a null grid, an index that has no cell, and where the temporary file can't be read. In memory
// a row too high is told.
grid_cell grid_read_cell(grid* g, std::int32_t index);
// 1, or 0 when the cell, or cells written before it, could not be kept: no such cell, or a temporary file that
// can't be written.
int grid_write_cell(grid* g, std::int32_t index, const grid_cell& cell);
// Brings what was written into the temporary file. 1, or 0 when that failed.
int grid_flush(grid* g);

// ---- places. A null grid gives -1, or NO_VALUE for a coordinate.
std::int32_t grid_index(const grid* g, std::int32_t column, std::int32_t row); // not tested against the edges
std::int32_t grid_cell_count(const grid* g);
// NO_VALUE, with a message, without columns (in y too) and with a step of 0.
double grid_cell_x(const grid* g, std::int32_t index);
double grid_cell_y(const grid* g, std::int32_t index);
// The neighbours' indices; -1 past the edge, and for an index that has no cell.
std::int32_t grid_right(const grid* g, std::int32_t index);
std::int32_t grid_up(const grid* g, std::int32_t index);
std::int32_t grid_left(const grid* g, std::int32_t index);
std::int32_t grid_down(const grid* g, std::int32_t index);

// ---- grids of one geometry
// New grids like the given one, all its cells and collected points copied, or each cell `z` without points.
// Null for a null grid, when memory is exhausted or the temporary file can't be written.
grid* grid_copy(grid* source);
grid* grid_constant(const grid* like, double z);
// Copies z and state of every cell; mark and points of the target stay. 1; 0 for a null grid, when origins,
// steps or sizes differ at all, which is told, or when the target can't be written.
int grid_take_values(grid* source, grid* target);
// 1: one geometry, places and steps within 1e-6. 0: a null grid. What differs: -1 x0, -2 y0, -3 step_x,
// -4 step_y, -5 columns or rows.
int grid_match(const grid* a, const grid* b);

// ---- collected points
// Collects a point (x, y, z) in the cell whose interval it lies in. 1; 0 when it lies in none or can't be kept.
int grid_add_point(grid* g, const double* point);
// The points collected in a cell; null when there are none.
const grid_cell_points* grid_points(const grid* g, std::int32_t index, const grid_cell& cell);

// ---- text files
// Null cells in what grid_read_cells read last.
extern std::int32_t grid_null_count;
// The grid of a text file. Null: no path, no such file, no memory; with a message when the file's size or steps
// make no grid, or its cells can't be kept.
grid* grid_load(const char* path);
// The cells of a new grid from a file that stands at the first of them; missing ones are null. Closes the file.
grid* grid_read_cells(host_file* stream, std::int32_t columns, std::int32_t rows, double x0, double y0,
                      double step_x, double step_y);
// Writes the text file, whole or not at all. 1; 0 for a null grid or a path where no file can be made; 0 and a
// message when it can't be written to its end.
int grid_save(grid* g, const char* path);
// Decimals of elevations in text files: the LISP variable grd_places within 2 to 6, 4 when it is no integer.
int grd_places();
