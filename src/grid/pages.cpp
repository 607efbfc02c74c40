// A table tells where each page of the file is. One that is wanted and not there takes the place of the one
// unused for longest, which is written first if it was changed. A page that could not be read is never written.
#include "grid/pages.h"

#include <algorithm>

#include "grid/store.h"
#include "hostapi/ads.h"

namespace
{

constexpr std::int32_t PAGE_CELLS = 4096;
constexpr std::int32_t LEAST_PAGES = 16; // seven rows around a cell, each across the end of a page, and room
constexpr std::int32_t MOST_PAGES = 512; // 32 million bytes; they stay
constexpr std::int32_t BUSY_PAGES =
    4096; // while cells are changed: passes go over the whole grid again and again
constexpr std::int32_t NONE = -1;

struct page {
    grid_cell* cells;
    std::int32_t number;
    std::int64_t last_use;
    bool changed, broken;
};

} // namespace

struct grid_pages {
    page* all;
    std::int32_t* places; // in `all`, of each page of the file; NONE
    std::int32_t count, room, most;
    std::int32_t touched;    // pages of `all` that ever had something in them; the first ones
    std::int32_t cell_count; // of the grid
    std::int64_t uses;
    bool failed;
};

namespace
{

std::int32_t page_of(std::int32_t index)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(index) / PAGE_CELLS);
}

std::int32_t place_of(std::int32_t index)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(index) % PAGE_CELLS);
}

// Cells of the grid in the page.
std::int32_t cells_of(const grid* g, std::int32_t number)
{
    return std::min(PAGE_CELLS, g->pages->cell_count - number * PAGE_CELLS);
}

bool write_page(grid* g, page* one)
{
    if (!one->changed)
        return true;
    one->changed = false;
    const bool done =
        !one->broken && temp_write_cells(g, one->number * PAGE_CELLS, one->cells, cells_of(g, one->number)) > 0;
    g->pages->failed |= !done;
    return done;
}

void read_page(grid* g, page* one, std::int32_t number)
{
    const std::int32_t wanted = cells_of(g, number),
                       there = std::clamp(g->file_cells - number * PAGE_CELLS, 0, wanted);
    const std::int32_t got = std::max(temp_read_cells(g, number * PAGE_CELLS, one->cells, wanted), 0);
    std::fill(one->cells + got, one->cells + wanted, grid_cell());
    one->number = number;
    one->changed = false;
    one->broken = got < there;
    g->pages->failed |= one->broken;
}

// A page more, with nothing in it.
bool add_page(grid_pages* p)
{
    if (p->count == std::min(p->most, p->room))
        return false;
    auto* cells = static_cast<grid_cell*>(acad_malloc(PAGE_CELLS * sizeof(grid_cell)));
    if (!cells)
        return false;
    p->all[p->count++] = {cells, NONE, 0, false, false};
    return true;
}

// A page with nothing in it: a new one or, with no memory for that, the one unused for longest.
std::int32_t empty_page(grid* g)
{
    grid_pages* const p = g->pages;
    if (p->touched < p->count || add_page(p))
        return p->touched++;
    std::int32_t oldest = 0;
    for (std::int32_t k = 1; k < p->count; ++k)
        if (p->all[k].last_use < p->all[oldest].last_use)
            oldest = k;
    page& one = p->all[oldest];
    if (one.number != NONE) {
        write_page(g, &one);
        p->places[one.number] = NONE;
    }
    return oldest;
}

page* find_page(grid* g, std::int32_t number)
{
    grid_pages* const p = g->pages;
    std::int32_t k = p->places[number];
    if (k == NONE) {
        k = empty_page(g);
        read_page(g, &p->all[k], number);
        p->places[number] = k;
    }
    p->all[k].last_use = ++p->uses;
    return &p->all[k];
}

bool make_pages(grid* g)
{
    const std::int32_t in_file = (grid_cell_count(g) - 1) / PAGE_CELLS + 1;
    auto* const p = static_cast<grid_pages*>(acad_malloc(sizeof(grid_pages)));
    if (!p)
        return false;
    *p = {};
    g->pages = p;
    p->cell_count = grid_cell_count(g);
    p->most = MOST_PAGES;
    p->room = std::clamp(in_file, LEAST_PAGES, BUSY_PAGES);
    p->all = static_cast<page*>(acad_malloc(static_cast<std::size_t>(p->room) * sizeof(page)));
    p->places =
        static_cast<std::int32_t*>(acad_malloc(static_cast<std::size_t>(in_file) * sizeof(std::int32_t)));
    bool made = p->all && p->places;
    while (made && p->count < LEAST_PAGES)
        made = add_page(p);
    if (made)
        std::fill_n(p->places, in_file, NONE);
    else
        pages_release(g);
    return made;
}

// Of all that is in the file and in the write window.
bool is_whole(const grid* g)
{
    const std::int32_t count = grid_cell_count(g);
    return g->file_cells >= count ||
           (g->write_count > 0 && g->write_start <= g->file_cells && g->write_count >= count - g->write_start);
}

// What was read into the page counts no longer.
void drop(grid_pages* p, page* one)
{
    if (one->number != NONE)
        p->places[one->number] = NONE;
    one->number = NONE;
    one->last_use = 0;
}

} // namespace

bool pages_ready(grid* g)
{
    return is_whole(g) && (g->pages || make_pages(g));
}

cell_run pages_run(grid* g, std::int32_t index)
{
    const std::int32_t number = page_of(index), place = place_of(index);
    return {find_page(g, number)->cells + place, cells_of(g, number) - place};
}

bool pages_begin(grid* g)
{
    if (!pages_ready(g) || !temp_flush(g) || g->file_cells < grid_cell_count(g))
        return false;
    g->read_count = -1;
    g->pages->failed = false;
    g->pages->most = BUSY_PAGES;
    return true;
}

void pages_set(grid* g, std::int32_t index, const grid_cell& cell)
{
    page* const one = find_page(g, page_of(index));
    one->cells[place_of(index)] = cell;
    one->changed = true;
}

bool pages_failed(const grid* g)
{
    return g->pages->failed;
}

bool pages_end(grid* g)
{
    grid_pages* const p = g->pages;
    for (std::int32_t k = 0; k < p->count; ++k)
        if (!write_page(g, &p->all[k]) || p->all[k].broken)
            drop(p, &p->all[k]);
    p->most = MOST_PAGES;
    while (p->count > p->most) {
        drop(p, &p->all[--p->count]);
        acad_free(p->all[p->count].cells);
    }
    p->touched = std::min(p->touched, p->count);
    return !p->failed;
}

void pages_forget(grid* g, std::int32_t first, std::int32_t count)
{
    grid_pages* const p = g->pages;
    if (!p || count <= 0)
        return;
    for (std::int32_t number = first / PAGE_CELLS; number <= (first + count - 1) / PAGE_CELLS; ++number)
        if (p->places[number] != NONE)
            drop(p, &p->all[p->places[number]]);
}

void pages_release(grid* g)
{
    if (!g->pages)
        return;
    for (std::int32_t k = 0; k < g->pages->count; ++k)
        acad_free(g->pages->all[k].cells);
    acad_free(g->pages->all);
    acad_free(g->pages->places);
    acad_free(g->pages);
    g->pages = nullptr;
}
