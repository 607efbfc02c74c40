// The tree is never balanced, and a walk down it passes just those points p for which the new x lies between
// the neighbours by x that p had when it was hung: everything else was hung on the other side of one of them.
// These neighbours are kept with each point, so that a point near by, from a hash table of small cells, is
// known to be on the way or not. The new point's own place is with the later of its two neighbours, which a
// second tree finds, a balanced one (by priorities of chance, always the same ones).
#include "tin/reading_index.h"

#include <bit>
#include <cmath>
#include <cstddef>

#include "hostapi/ads.h"

namespace
{

constexpr double CELLS_PER_UNIT = 250000; // a cell is 4e-6, so a box of 2e-6 reaches into two at most
constexpr int BLOCK_ENTRIES = 256;
constexpr std::uint64_t FIRST_CELLS = 1024;

// The way down the balanced tree reads the first three only.
struct entry {
    double x; // of the point
    entry *left, *right;
    tin_point* point;
    const tin_point *before, *behind; // neighbours by x when it was hung; null: none
    entry* next_in_cell;
    std::uint32_t arrival, priority;
};

struct block {
    entry entries[BLOCK_ENTRIES];
    block* next;
};

std::uint64_t mixed(std::uint64_t v)
{
    v = (v ^ (v >> 30)) * 0xBF58476D1CE4E5B9u;
    v = (v ^ (v >> 27)) * 0x94D049BB133111EBu;
    return v ^ (v >> 31);
}

double cell(double coordinate)
{
    return std::floor(coordinate * CELLS_PER_UNIT) + 0.0; // no negative zero
}

std::uint64_t cell_hash(double cell_x, double cell_y)
{
    return mixed(std::bit_cast<std::uint64_t>(cell_x) + mixed(std::bit_cast<std::uint64_t>(cell_y)));
}

} // namespace

struct tin_reading {
    const tin_point* tree; // for which it was made
    entry* root;
    block* blocks;
    std::uint32_t count;
    entry** cells;
    std::uint64_t cell_count; // a power of two
};

namespace
{

// The two neighbours of a place by x.
struct neighbours {
    entry *before, *behind;
};

neighbours find_neighbours(const tin_reading* index, double x)
{
    neighbours found{nullptr, nullptr};
    for (entry* e = index->root; e;)
        if (x > e->x) {
            found.before = e;
            e = e->right;
        } else {
            found.behind = e;
            e = e->left;
        }
    return found;
}

bool lies_on_the_way(const entry& e, double x)
{
    return (!e.before || x > e.before->x) && (!e.behind || !(x > e.behind->x));
}

const entry* earliest_in_cell(const tin_reading* index, std::uint64_t hash, const double (&box)[4], double x,
                              const entry* best)
{
    for (const entry* e = index->cells[hash & (index->cell_count - 1)]; e; e = e->next_in_cell)
        if (e->x > box[0] && e->x < box[1] && e->point->y > box[2] && e->point->y < box[3] &&
            (!best || e->arrival < best->arrival) && lies_on_the_way(*e, x))
            best = e;
    return best;
}

void put_in_cell(entry** cells, std::uint64_t cell_count, entry* e)
{
    entry*& head = cells[cell_hash(cell(e->x), cell(e->point->y)) & (cell_count - 1)];
    e->next_in_cell = head;
    head = e;
}

entry** cells_new(std::uint64_t count)
{
    auto* cells = static_cast<entry**>(acad_malloc(count * sizeof(entry*)));
    if (cells)
        for (std::uint64_t i = 0; i < count; ++i)
            cells[i] = nullptr;
    return cells;
}

bool grow(tin_reading* index)
{
    const std::uint64_t count = index->cell_count * 2;
    entry** cells = cells_new(count);
    if (!cells)
        return false;
    for (std::uint64_t i = 0; i < index->cell_count; ++i)
        for (entry *e = index->cells[i], *next = nullptr; e; e = next) {
            next = e->next_in_cell;
            put_in_cell(cells, count, e);
        }
    acad_free(index->cells);
    index->cells = cells;
    index->cell_count = count;
    return true;
}

entry* entry_new(tin_reading* index)
{
    const std::uint32_t at = index->count % BLOCK_ENTRIES;
    if (at == 0) {
        auto* fresh = static_cast<block*>(acad_malloc(sizeof(block)));
        if (!fresh)
            return nullptr;
        fresh->next = index->blocks;
        index->blocks = fresh;
    }
    return &index->blocks->entries[at];
}

// Puts an entry where its priority belongs; what stood there becomes its subtrees.
void put_in_tree(tin_reading* index, entry* added)
{
    const double x = added->x;
    entry** link = &index->root;
    while (*link && (*link)->priority >= added->priority)
        link = x > (*link)->x ? &(*link)->right : &(*link)->left;
    entry **left = &added->left, **right = &added->right;
    for (entry* e = *link; e;)
        if (x > e->x) {
            *left = e;
            left = &e->right;
            e = e->right;
        } else {
            *right = e;
            right = &e->left;
            e = e->left;
        }
    *left = nullptr;
    *right = nullptr;
    *link = added;
}

} // namespace

void reading_index_begin(tin_network* network)
{
    reading_index_free(network);
    auto* index = static_cast<tin_reading*>(acad_malloc(sizeof(tin_reading)));
    if (!index)
        return;
    *index = tin_reading{network->points, nullptr, nullptr, 0, cells_new(FIRST_CELLS), FIRST_CELLS};
    network->reading = index;
    if (!index->cells)
        reading_index_free(network);
    else
        reading_index_add(network, network->points);
}

bool reading_index_stands(const tin_network* network)
{
    return network->reading && network->reading->tree == network->points;
}

tin_point* reading_index_find(const tin_network* network, const tin_point* point, tin_point*** place)
{
    const tin_reading* index = network->reading;
    const double(&box)[4] = network->box;
    const entry* earliest = nullptr;
    if (box[0] < box[1] && box[2] < box[3]) { // far out the box has no width
        const double xs[2] = {cell(box[0]), cell(box[1])}, ys[2] = {cell(box[2]), cell(box[3])};
        for (int i = 0; i < (xs[0] == xs[1] ? 1 : 2); ++i)
            for (int k = 0; k < (ys[0] == ys[1] ? 1 : 2); ++k)
                earliest = earliest_in_cell(index, cell_hash(xs[i], ys[k]), box, point->x, earliest);
    }
    if (earliest)
        return earliest->point;
    const neighbours at = find_neighbours(index, point->x);
    const bool hangs_before = at.before && (!at.behind || at.before->arrival > at.behind->arrival);
    *place = hangs_before ? &at.before->point->greater : &at.behind->point->less;
    return nullptr;
}

void reading_index_add(tin_network* network, tin_point* point)
{
    tin_reading* index = network->reading;
    const bool has_order = point->x == point->x; // what is no number is neither before nor behind anything
    entry* added = has_order ? entry_new(index) : nullptr;
    if (!added || (index->count >= index->cell_count && !grow(index))) {
        reading_index_free(network);
        return;
    }
    const neighbours at = find_neighbours(index, point->x);
    *added = entry{};
    added->x = point->x;
    added->point = point;
    added->before = at.before ? at.before->point : nullptr;
    added->behind = at.behind ? at.behind->point : nullptr;
    added->arrival = index->count++;
    added->priority = static_cast<std::uint32_t>(mixed(added->arrival + 1));
    put_in_cell(index->cells, index->cell_count, added);
    put_in_tree(index, added);
}

void reading_index_free(tin_network* network)
{
    tin_reading* index = network->reading;
    if (!index)
        return;
    while (block* first = index->blocks) {
        index->blocks = first->next;
        acad_free(first);
    }
    acad_free(index->cells);
    acad_free(index);
    network->reading = nullptr;
}
