// Following chains of a list from place to place.
#include <vector>

#include "polygon/centre_network.h"
#include "polygon/points.h"
#include "polygon/rounding.h"

namespace
{

// The nodes that have a next, in the order of the list and of its chains, found by their places.
struct chain_index {
    struct entry {
        const pg_node* node;
        std::size_t chain;
    };
    std::vector<entry> entries;
    std::vector<bool> used; // by chain
    cl_places places;       // same numbers as entries
    std::vector<std::int32_t> near;

    explicit chain_index(const pg_ring* rings)
    {
        std::size_t chain = 0;
        for (; rings; rings = rings->next, ++chain)
            for (const pg_node* n = rings->nodes; n && n->next; n = n->next)
                entries.push_back({n, chain});
        used.resize(chain);
        cl_places_init(&places, entries.size());
        for (const entry& e : entries)
            cl_places_add(&places, {e.node->x, e.node->y, 0.0});
    }

    // The first node at `place` of a chain that isn't used yet; it is now.
    const pg_node* take(const cl_point& place)
    {
        cl_places_near(places, place, &near);
        for (const std::int32_t i : near) {
            const entry& e = entries[static_cast<std::size_t>(i)];
            if (used[e.chain])
                continue;
            used[e.chain] = true;
            return e.node;
        }
        return nullptr;
    }
};

// The first chain that ends at `point`, taken out of its ring and turned round.
pg_node* take_backwards(pg_ring* rings, chain_index& index, const pg_node& point)
{
    std::size_t chain = 0;
    for (; rings; rings = rings->next, ++chain) {
        if (!rings->nodes || !rings->nodes->next || !pg_same_place(*pg_last(rings->nodes), point))
            continue;
        index.used[chain] = true;
        pg_node* taken = pg_reverse(rings->nodes);
        rings->nodes = nullptr;
        return taken;
    }
    return nullptr;
}

// Joins what follows on behind `last`; false when the heap is exhausted.
bool follow(chain_index& index, pg_node* last)
{
    while (const pg_node* from = index.take({last->x, last->y, 0.0})) {
        pg_node* more = pg_copy(from);
        const bool is_whole = pg_count(more) == pg_count(from);
        pg_join(last, more);
        if (!is_whole)
            return false;
        last = pg_last(last);
    }
    return true;
}

} // namespace

pg_node* pg_follow_chains(pg_ring** rings, const double* point)
{
    chain_index index(*rings);
    pg_node start{};
    start.x = point[0];
    start.y = point[1];
    pg_node* path = nullptr;
    bool is_whole = true;
    if (const pg_node* from = index.take({point[0], point[1], 0.0})) {
        path = pg_copy(from);
        is_whole = pg_count(path) == pg_count(from);
    } else {
        path = take_backwards(*rings, index, start);
    }
    if (path && is_whole)
        is_whole = follow(index, pg_last(path));
    pg_free_rings(rings);
    if (!is_whole) {
        pl_free_nodes(path);
        return nullptr;
    }
    pg_clean(path);
    return path;
}
