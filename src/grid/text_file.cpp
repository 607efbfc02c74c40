// grid.h: grids as text files, one value a line: the two y, the two x, columns, rows, then the cells.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "grid/grid.h"
#include "grid/number_lines.h"
#include "grid/store.h"
#include "grid/texts.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

std::int32_t grid_null_count = 0;

namespace
{

constexpr int HEADER_LINE_SIZE = 122; // longer lines go on as the next line
constexpr int CELL_LINE_SIZE = 128;
constexpr int PLACES = 4;      // of elevations, unless programs say otherwise; of all places
constexpr int SIZE_PLACES = 1; // of columns and rows

// A file of so many cells must have a byte for each: what only claims to be large would fill the disk.
constexpr std::int32_t CELLS_ON_TRUST = 100'000'000;

struct header {
    double y0, x0, y1, x1, columns, rows;
};

bool read_header(host_file* stream, header* out)
{
    char line[HEADER_LINE_SIZE];
    for (double* value : {&out->y0, &out->x0, &out->y1, &out->x1, &out->columns, &out->rows}) {
        if (!file_gets(line, sizeof line, stream))
            return false;
        *value = std::atof(line);
    }
    return true;
}

bool is_size(double intervals)
{
    return intervals >= 1 && intervals <= std::numeric_limits<std::int32_t>::max();
}

bool is_step(double step)
{
    return std::isfinite(step) && step != 0;
}

// A value, or what stands for none.
grid_cell cell_of(const char (&line)[CELL_LINE_SIZE])
{
    if (line[0] == 'N')
        return {};
    const double z = line_number(line, line + sizeof line);
    return {z, z == NO_ELEVATION ? CELL_NULL : CELL_VALUE};
}

bool reaches_as_far(host_file* stream, std::int32_t cells)
{
    const long here = file_tell(stream);
    const bool there = file_seek(stream, 0, SEEK_END) == 0;
    const long size = file_tell(stream) - here;
    return file_seek(stream, here, SEEK_SET) == 0 && there && size >= cells;
}

// False, told, when a cell can't be kept.
bool fill_cells(grid* g, host_file* stream)
{
    const std::int32_t count = grid_cell_count(g);
    if (count > CELLS_ON_TRUST && !reaches_as_far(stream, count)) {
        acutPrintf("\nError: the grid file ends before its %d cells", count);
        return false;
    }
    char line[CELL_LINE_SIZE];
    bool more = true;
    for (std::int32_t i = 0; i < count; ++i) {
        more = more && file_gets(line, sizeof line, stream);
        const grid_cell cell = more ? cell_of(line) : grid_cell();
        grid_null_count += cell.state == CELL_NULL;
        if (!grid_write_cell(g, i, cell)) {
            acutPrintf(CELLS_NOT_KEPT);
            return false;
        }
    }
    return true;
}

// Text on its way to a file.
class text_block
{
public:
    explicit text_block(host_file* stream) : stream_(stream) {}
    void add_number(double value, int places)
    {
        char line[NUMBER_TEXT_SIZE];
        add(line, static_cast<std::size_t>(put_number_line(line, value, places) - line));
    }
    void add(const char* text, std::size_t size)
    {
        if (size_ + size >= sizeof text_)
            flush();
        std::memcpy(text_ + size_, text, size);
        size_ += size;
    }
    // Whether all went well until now.
    bool flush()
    {
        text_[size_] = '\0';
        done_ = done_ && file_puts(text_, stream_) >= 0;
        size_ = 0;
        return done_;
    }
    bool done() const { return done_; }

private:
    host_file* stream_;
    std::size_t size_ = 0;
    bool done_ = true;
    char text_[16384];
};

void put_header(text_block* text, const grid* g)
{
    text->add_number(g->y0, PLACES);
    text->add_number(g->x0, PLACES);
    text->add_number(g->y0 + g->rows * g->step_y, PLACES);
    text->add_number(g->x0 + g->columns * g->step_x, PLACES);
    text->add_number(g->columns, SIZE_PLACES);
    text->add_number(g->rows, SIZE_PLACES);
}

} // namespace

int grd_places()
{
    int places = PLACES;
    resbuf* value = nullptr;
    if (acedGetSym("grd_places", &value) == RTNORM && value) {
        if (value->restype == RTSHORT)
            places = value->resval.rint;
        acutRelRb(value);
    }
    return std::clamp(places, 2, 6);
}

grid* grid_load(const char* path)
{
    host_file* stream = path && *path ? file_open(path, "r") : nullptr;
    if (!stream)
        return nullptr;
    header h{};
    if (read_header(stream, &h) && is_size(h.columns) && is_size(h.rows)) {
        const double step_x = (h.x1 - h.x0) / h.columns, step_y = (h.y1 - h.y0) / h.rows;
        if (is_step(step_x) && is_step(step_y))
            return grid_read_cells(stream, static_cast<std::int32_t>(h.columns),
                                   static_cast<std::int32_t>(h.rows), h.x0, h.y0, step_x, step_y);
    }
    file_close(stream);
    acutPrintf("\nError: the grid file does not begin with two places and a size");
    return nullptr;
}

grid* grid_read_cells(host_file* stream, std::int32_t columns, std::int32_t rows, double x0, double y0,
                      double step_x, double step_y)
{
    grid_null_count = 0;
    if (!stream)
        return nullptr;
    grid* g = grid_create(x0, y0, step_x, step_y, columns, rows);
    if (g && !fill_cells(g, stream))
        grid_free(&g);
    file_close(stream);
    return g;
}

int grid_save(grid* g, const char* path)
{
    if (!g || !path || !*path)
        return 0;
    if (!g->in_memory && !temp_is_whole(g)) {
        acutPrintf(CELLS_NOT_READ);
        return 0;
    }
    host_file* stream = file_open(path, "w");
    if (!stream)
        return 0;
    const std::int32_t count = grid_cell_count(g), faults = g->faults;
    const int places = grd_places();
    text_block text(stream);
    put_header(&text, g);
    for (std::int32_t i = 0; i < count && text.done() && g->faults == faults; ++i) {
        const grid_cell cell = next_cell(g, i);
        if (cell.state == CELL_VALUE && cell.z != NO_ELEVATION)
            text.add_number(cell.z, places);
        else
            text.add("N\n", 2);
    }
    if (g->faults != faults) {
        file_give_up(stream);
        acutPrintf(CELLS_NOT_READ);
        return 0;
    }
    const bool written = text.flush();
    if (file_close(stream) == 0 && written)
        return 1;
    acutPrintf("\nError: the grid file %s can't be written", path);
    return 0;
}
