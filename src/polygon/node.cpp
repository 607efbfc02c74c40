#include "polygon/node.h"

#include <cmath>

#include "hostapi/ads.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

// The node of least y with the two nodes before it, null where the chain has none.
struct lowest_node {
    const pg_node* at;
    const pg_node* before;
    const pg_node* second_before;
};

lowest_node find_lowest(const pg_node* chain)
{
    lowest_node low{chain, nullptr, nullptr};
    const pg_node* before = nullptr;
    const pg_node* second_before = nullptr;
    for (const pg_node* n = chain; n; n = n->next) {
        if (n->y < low.at->y)
            low = {n, before, second_before};
        second_before = before;
        before = n;
    }
    if (low.at == chain) { // go round to the chain's end
        low.before = before;
        low.second_before = second_before;
    }
    return low;
}

double angle_between(const pg_node& from, const pg_node& to)
{
    const double a[3] = {from.x, from.y, from.z}, b[3] = {to.x, to.y, to.z};
    return pg_angle(a, b);
}

} // namespace

pg_node* pg_node_push(const double* point, pg_node* next, double bulge)
{
    auto* node = static_cast<pg_node*>(acad_malloc(sizeof(pg_node)));
    if (!node)
        return nullptr;
    *node = pg_node{point[0], point[1], point[2], 0, bulge, 0.0, 1, next, nullptr};
    return node;
}

pg_node* pg_node_new(const double* point)
{
    pg_node* node = pg_node_push(point, nullptr, 0.0);
    if (node)
        node->mark = 1;
    return node;
}

pg_node* pg_copy(const pg_node* chain)
{
    pg_node* head = nullptr;
    pg_node** end = &head;
    for (; chain; chain = chain->next) {
        auto* node = static_cast<pg_node*>(acad_malloc(sizeof(pg_node)));
        if (!node)
            continue;
        *node =
            pg_node{chain->x, chain->y, chain->z, chain->mark, chain->bulge, chain->aux, 1, nullptr, nullptr};
        *end = node;
        end = &node->next;
    }
    return head;
}

pg_ring* pg_ring_new()
{
    auto* ring = static_cast<pg_ring*>(acad_malloc(sizeof(pg_ring)));
    if (ring)
        *ring = pg_ring{};
    return ring;
}

pg_node* pg_last(pg_node* chain)
{
    return const_cast<pg_node*>(pg_last(static_cast<const pg_node*>(chain)));
}

const pg_node* pg_last(const pg_node* chain)
{
    while (chain->next)
        chain = chain->next;
    return chain;
}

int pg_count(const pg_node* chain)
{
    int count = 0;
    for (; chain; chain = chain->next)
        ++count;
    return count;
}

const pg_node* pg_next_wrapped(const pg_node* node, const pg_node* head)
{
    if (node->next)
        return node->next;
    return head->next && pg_same_place(*node, *head) ? head->next : head;
}

pg_node* pg_next_wrapped(pg_node* node, pg_node* head)
{
    return const_cast<pg_node*>(
        pg_next_wrapped(static_cast<const pg_node*>(node), static_cast<const pg_node*>(head)));
}

int pg_orientation(const pg_node* chain)
{
    if (!chain || !chain->next)
        return 0;
    const lowest_node low = find_lowest(chain);
    const pg_node* before = low.before;
    if (pg_same_place(*before, *low.at))
        before = low.second_before;
    if (!before || before == low.at)
        return 0;
    const pg_node* after = pg_next_wrapped(low.at, chain);
    if (pg_same_place(*after, *low.at))
        after = pg_next_wrapped(after, chain);
    // Seen from the lowest node both neighbours lie in 0 to pi.
    return angle_between(*low.at, *before) >= angle_between(*low.at, *after) ? -1 : 1;
}

int pg_point_inside(const double* point, const pg_node* chain)
{
    if (!chain)
        return 0;
    const double x = point[0], y = point[1];
    int inside = 0;
    for (const pg_node* from = chain; from; from = from->next) {
        const pg_node* to = from->next ? from->next : chain;
        // The lower end counts, the upper one doesn't.
        if ((from->y <= y) == (to->y <= y))
            continue;
        const double crossing = from->x + (y - from->y) / (to->y - from->y) * (to->x - from->x);
        if (std::fabs(crossing - x) <= PG_LENGTH_TOL)
            return 1;
        if (crossing < x)
            inside = 1 - inside;
    }
    return inside;
}

void pg_set_z(pg_node* chain, double z)
{
    for (; chain; chain = chain->next)
        chain->z = z;
}

pg_node* pg_reverse(pg_node* chain)
{
    if (!chain || !chain->next)
        return chain;
    pg_node* reversed = nullptr;
    double bulge_before = 0.0;
    while (chain) {
        pg_node* next = chain->next;
        const double bulge = chain->bulge;
        chain->bulge = -bulge_before;
        chain->next = reversed;
        reversed = chain;
        bulge_before = bulge;
        chain = next;
    }
    return reversed;
}

pg_node* pg_join(pg_node* a, pg_node* b)
{
    if (!a)
        return b;
    if (!b)
        return a;
    pg_node* last = pg_last(a);
    last->next = b;
    if (pg_same_place(*last, *b)) {
        last->next = b->next;
        if (last->bulge == 0.0)
            last->bulge = b->bulge;
        acad_free(b);
    }
    return a;
}

void pl_free_nodes(pg_node* head)
{
    while (head) {
        pg_node* next = head->next;
        acad_free(head);
        head = next;
    }
}

void pg_free_rings(pg_ring** head)
{
    while (*head) {
        pg_ring* ring = *head;
        *head = ring->next;
        pl_free_nodes(ring->nodes);
        acad_free(ring);
    }
}
