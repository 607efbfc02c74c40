// A grid in a temporary file. The newest state of a cell is in the write window, else in the file; the read
// window is a copy of a stretch of the file with the writes of that time laid over it, and later writes go into
// it too. The file is open during a transfer only, so that many grids want no handles.
//
// What a program sees of cells that it has never written, and where the two windows overlap, follows from the
// order of steps here and is relied on: keep it.
#include "grid/store.h"

#include <algorithm>
#include <cstdio>

#include "grid/pages.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"

namespace
{

constexpr std::int32_t READ_BEHIND = 5000;  // cells of the read window before the one that was asked for
constexpr std::int32_t WRITE_BEHIND = 2500; // the same for the write window

bool holds(std::int32_t start, std::int32_t count, std::int32_t index)
{
    return count > 0 && index >= start && index - start < count;
}

bool seek_to(grid* g, std::int32_t index)
{
    return file_seek(g->file, static_cast<long>(sizeof(grid_cell)) * index, SEEK_SET) == 0;
}

int close_file(grid* g)
{
    const int result = file_close(g->file);
    g->file = nullptr;
    return result;
}

void lay_writes_over_read_window(grid* g)
{
    if (g->write_count <= 0 || g->read_count <= 0)
        return;
    const std::int32_t ahead = g->write_start - g->read_start;
    if (holds(g->read_start, g->read_count, g->write_start))
        std::copy_n(g->write_buffer, std::min(g->write_count, g->read_count - ahead), g->read_buffer + ahead);
    // A write window that covers the whole read window isn't laid over it: what is read there stays the file's.
    else if (holds(g->write_start, g->write_count, g->read_start) && g->write_count + ahead < g->read_count)
        std::copy_n(g->write_buffer - ahead, g->write_count + ahead, g->read_buffer);
}

void open_write_window(grid* g, std::int32_t index)
{
    g->write_start = std::max(index - WRITE_BEHIND, 0);
    if (holds(g->read_start, g->read_count, g->write_start) &&
        g->read_count - (g->write_start - g->read_start) >= WRITE_WINDOW) {
        std::copy_n(g->read_buffer + (g->write_start - g->read_start), WRITE_WINDOW, g->write_buffer);
        g->write_count = WRITE_WINDOW;
        return;
    }
    g->write_count = std::max(temp_read_cells(g, g->write_start, g->write_buffer, WRITE_WINDOW), 0);
}

// Sets a cell of the write window; cells between its end and this one become null.
void put(grid* g, std::int32_t place, const grid_cell& cell)
{
    if (place >= g->write_count) {
        std::fill(g->write_buffer + g->write_count, g->write_buffer + place, grid_cell());
        g->write_count = place + 1;
    }
    g->write_buffer[place] = cell;
}

} // namespace

bool temp_make(grid* g)
{
    g->read_start = g->write_start = -1;
    if (file_temp_name(g->temp_path, sizeof g->temp_path) != 0)
        g->temp_path[0] = '\0';
    g->write_buffer = static_cast<grid_cell*>(acad_malloc(WRITE_WINDOW * sizeof(grid_cell)));
    g->read_buffer = static_cast<grid_cell*>(acad_malloc(READ_WINDOW * sizeof(grid_cell)));
    return g->temp_path[0] && g->write_buffer && g->read_buffer;
}

void temp_release(grid* g)
{
    pages_release(g);
    if (g->temp_path[0])
        file_remove_temp(g->temp_path);
    acad_free(g->write_buffer);
    acad_free(g->read_buffer);
}

grid_cell temp_read(grid* g, std::int32_t index)
{
    if (holds(g->read_start, g->read_count, index))
        return g->read_buffer[index - g->read_start];
    if (holds(g->write_start, g->write_count, index))
        return g->write_buffer[index - g->write_start];
    const std::int32_t start = std::max(index - READ_BEHIND, 0);
    const std::int32_t count = temp_read_cells(g, start, g->read_buffer, READ_WINDOW);
    if (count < 0)
        return {};
    g->read_start = start;
    g->read_count = count;
    lay_writes_over_read_window(g);
    return holds(start, count, index) ? g->read_buffer[index - start] : grid_cell();
}

bool temp_knows(const grid* g, std::int32_t index)
{
    return index < g->file_cells || holds(g->read_start, g->read_count, index) ||
           holds(g->write_start, g->write_count, index);
}

int temp_write(grid* g, std::int32_t index, const grid_cell& cell)
{
    if (holds(g->read_start, g->read_count, index))
        g->read_buffer[index - g->read_start] = cell;
    if (g->write_count > 0 && index >= g->write_start && index - g->write_start < WRITE_WINDOW) {
        put(g, index - g->write_start, cell);
        return 1;
    }
    const std::int32_t faults = g->faults;
    temp_flush(g);
    if (g->write_count > 0)
        return 0; // the window could not be brought away: it keeps its cells, and this one has no place
    open_write_window(g, index);
    put(g, index - g->write_start, cell);
    return g->faults == faults;
}

std::int32_t temp_read_cells(grid* g, std::int32_t first, grid_cell* out, std::int32_t room)
{
    room = std::clamp(grid_cell_count(g) - first, 0, room); // whatever somebody made of the file
    const std::int32_t expected = std::clamp(g->file_cells - first, 0, room);
    g->file = file_open_temp(g->temp_path, "rb");
    if (!g->file) {
        g->faults += g->file_cells > 0;
        return -1;
    }
    std::size_t got = 0;
    if (seek_to(g, first))
        got = file_read(out, static_cast<std::size_t>(room) * sizeof(grid_cell), g->file) / sizeof(grid_cell);
    close_file(g);
    g->faults += static_cast<std::int32_t>(got) < expected;
    return static_cast<std::int32_t>(got);
}

int temp_write_cells(grid* g, std::int32_t first, const grid_cell* cells, std::int32_t count)
{
    g->file = file_open_temp(g->temp_path, "r+b");
    const bool is_new = !g->file;
    if (is_new)
        g->file = file_open_temp(g->temp_path, "w+b");
    if (!g->file) {
        ++g->faults;
        return -1;
    }
    bool done = !is_new || g->file_cells == 0; // else it is gone, with all that was in it
    if (is_new)
        g->file_cells = 0;
    const std::size_t size = static_cast<std::size_t>(count) * sizeof(grid_cell);
    done = seek_to(g, first) && file_write(cells, size, g->file) == size && done;
    done = close_file(g) == 0 && done;
    g->file_cells = std::max(g->file_cells, first + count);
    g->faults += !done;
    return done;
}

int temp_flush(grid* g)
{
    if (g->write_count <= 0)
        return 1;
    const int done = temp_write_cells(g, g->write_start, g->write_buffer, g->write_count);
    if (done < 0)
        return 0;
    if (done)
        pages_forget(g, g->write_start, g->write_count);
    else
        pages_forget(g, 0, grid_cell_count(g)); // the file may be a new one
    g->write_count = -1;
    return done;
}

bool temp_complete(grid* g)
{
    if (!temp_flush(g))
        return false;
    const std::int32_t end = g->file_cells, count = end > 0 ? grid_cell_count(g) : 0;
    std::fill_n(g->write_buffer, WRITE_WINDOW, grid_cell());
    for (std::int32_t first = end; first < count;) {
        const std::int32_t more = std::min(WRITE_WINDOW, count - first);
        if (temp_write_cells(g, first, g->write_buffer, more) <= 0) {
            g->file_cells = end; // nothing is lost: what can't be read there is null
            return false;
        }
        first += more;
    }
    return true;
}

bool temp_is_whole(grid* g)
{
    if (g->file_cells == 0)
        return true;
    g->file = file_open_temp(g->temp_path, "rb");
    if (!g->file)
        return false;
    const bool whole = file_seek(g->file, 0, SEEK_END) == 0 &&
                       file_tell(g->file) / static_cast<long>(sizeof(grid_cell)) >= g->file_cells;
    close_file(g);
    return whole;
}
