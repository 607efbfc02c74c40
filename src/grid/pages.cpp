// The pages hang in a list by last use, and in chains by number. A page that is wanted and not there takes the
// place of the one unused for longest, which is written first if it was changed. A page that could not be read
// is never written.
#include "grid/pages.h"

#include <algorithm>

#include "grid/store.h"
#include "hostapi/ads.h"

namespace
{

constexpr std::int32_t PAGE_CELLS = 4096;
constexpr std::int32_t MOST_PAGES = 512; // 32 million bytes
constexpr std::int32_t LEAST_PAGES = 16; // seven rows around a cell, each across the end of a page, and room
constexpr std::int32_t CHAINS = 1024;
constexpr std::int32_t NONE = -1;

struct page {
    grid_cell* cells;
    std::int32_t number;
    std::int32_t newer, older; // by last use
    std::int32_t next;         // in its chain
    bool changed, broken;
};

} // namespace

struct grid_pages {
    page all[MOST_PAGES];
    std::int32_t chains[CHAINS];
    std::int32_t count;
    std::int32_t newest, oldest;
    bool failed;
};

namespace
{

std::int32_t& chain_of(grid_pages* p, std::int32_t number)
{
    return p->chains[number % CHAINS];
}

void unlink_by_use(grid_pages* p, std::int32_t k)
{
    page& one = p->all[k];
    (one.newer == NONE ? p->newest : p->all[one.newer].older) = one.older;
    (one.older == NONE ? p->oldest : p->all[one.older].newer) = one.newer;
}

void link_newest(grid_pages* p, std::int32_t k)
{
    p->all[k].newer = NONE;
    p->all[k].older = p->newest;
    (p->newest == NONE ? p->oldest : p->all[p->newest].newer) = k;
    p->newest = k;
}

void unlink_from_chain(grid_pages* p, std::int32_t k)
{
    std::int32_t* at = &chain_of(p, p->all[k].number);
    while (*at != k)
        at = &p->all[*at].next;
    *at = p->all[k].next;
}

// Cells of the grid in the page.
std::int32_t cells_of(const grid* g, std::int32_t number)
{
    return std::min(PAGE_CELLS, grid_cell_count(g) - number * PAGE_CELLS);
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

// A page more, with no number yet, at the old end of the list.
bool add_page(grid_pages* p)
{
    if (p->count == MOST_PAGES)
        return false;
    auto* cells = static_cast<grid_cell*>(acad_malloc(PAGE_CELLS * sizeof(grid_cell)));
    if (!cells)
        return false;
    const std::int32_t k = p->count++;
    p->all[k] = {cells, NONE, p->oldest, NONE, NONE, false, false};
    (p->oldest == NONE ? p->newest : p->all[p->oldest].older) = k;
    p->oldest = k;
    return true;
}

page* find_page(grid* g, std::int32_t number)
{
    grid_pages* const p = g->pages;
    if (p->all[p->newest].number == number)
        return &p->all[p->newest];
    std::int32_t k = chain_of(p, number);
    while (k != NONE && p->all[k].number != number)
        k = p->all[k].next;
    const bool is_new = k == NONE;
    if (is_new) {
        if (p->all[p->oldest].number != NONE)
            add_page(p); // with no memory for it the oldest goes
        k = p->oldest;
        if (p->all[k].number != NONE) {
            write_page(g, &p->all[k]);
            unlink_from_chain(p, k);
        }
    }
    unlink_by_use(p, k);
    link_newest(p, k);
    if (is_new) {
        read_page(g, &p->all[k], number);
        p->all[k].next = chain_of(p, number);
        chain_of(p, number) = k;
    }
    return &p->all[k];
}

bool make_pages(grid* g)
{
    g->pages = static_cast<grid_pages*>(acad_malloc(sizeof(grid_pages)));
    if (!g->pages)
        return false;
    g->pages->count = 0;
    g->pages->newest = g->pages->oldest = NONE;
    g->pages->failed = false;
    std::fill_n(g->pages->chains, CHAINS, NONE);
    while (g->pages->count < LEAST_PAGES)
        if (!add_page(g->pages)) {
            pages_release(g);
            return false;
        }
    return true;
}

// Of all that is in the file and in the write window.
bool is_whole(const grid* g)
{
    const std::int32_t count = grid_cell_count(g);
    return g->file_cells >= count ||
           (g->write_count > 0 && g->write_start <= g->file_cells && g->write_count >= count - g->write_start);
}

// The page holds what it was made for no longer.
void drop(grid_pages* p, std::int32_t k)
{
    if (p->all[k].number == NONE)
        return;
    unlink_from_chain(p, k);
    unlink_by_use(p, k);
    page& one = p->all[k];
    one.number = NONE;
    one.newer = p->oldest;
    one.older = NONE;
    (p->oldest == NONE ? p->newest : p->all[p->oldest].older) = k;
    p->oldest = k;
}

} // namespace

bool pages_ready(grid* g)
{
    return is_whole(g) && (g->pages || make_pages(g));
}

cell_run pages_run(grid* g, std::int32_t index)
{
    const std::int32_t number = index / PAGE_CELLS, place = index % PAGE_CELLS;
    return {find_page(g, number)->cells + place, cells_of(g, number) - place};
}

bool pages_begin(grid* g)
{
    if (!pages_ready(g) || !temp_flush(g) || g->file_cells < grid_cell_count(g))
        return false;
    g->read_count = -1;
    g->pages->failed = false;
    return true;
}

void pages_set(grid* g, std::int32_t index, const grid_cell& cell)
{
    page* const one = find_page(g, index / PAGE_CELLS);
    one->cells[index % PAGE_CELLS] = cell;
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
            drop(p, k);
    return !p->failed;
}

void pages_forget(grid* g, std::int32_t first, std::int32_t count)
{
    grid_pages* const p = g->pages;
    if (!p || count <= 0)
        return;
    for (std::int32_t number = first / PAGE_CELLS; number <= (first + count - 1) / PAGE_CELLS; ++number) {
        std::int32_t k = chain_of(p, number);
        while (k != NONE && p->all[k].number != number)
            k = p->all[k].next;
        if (k != NONE)
            drop(p, k);
    }
}

void pages_release(grid* g)
{
    if (!g->pages)
        return;
    for (std::int32_t k = 0; k < g->pages->count; ++k)
        acad_free(g->pages->all[k].cells);
    acad_free(g->pages);
    g->pages = nullptr;
}
