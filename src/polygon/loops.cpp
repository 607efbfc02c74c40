// loops.cpp: cutting the loops out of a chain.
//
// The rule is a walk from the head: each segment is cut at its first crossing with any later one, and goes on
// from there along that later one. What lies between is gone, so of the chain as it came there remain, at each
// step, the segments behind a place in its order: an index of their boxes made once serves the whole walk.
// Among the later segments the nearest crossing wins, and the first of them in order when two are equally near.
#include "polygon/loops.h"

#include <cmath>
#include <new>

#include "hostapi/ads.h"
#include "polygon/arcs.h"
#include "polygon/offset.h"
#include "polygon/points.h"
#include "polygon/segment_boxes.h"
#include "polygon/segment_pairs.h"
#include "polygon/tolerances.h"

namespace
{

struct held_segment {
    pg_node* node; // where it starts
    pg_segment shape;
};

// The segments of the chain as it came, by their order.
struct segments {
    int count = 0;
    held_segment* items = nullptr;
    pg_box_scale scale{};
    pg_box_tree boxes{};

    segments() = default;
    segments(const segments&) = delete;
    segments& operator=(const segments&) = delete;
    ~segments()
    {
        acad_free(boxes.nodes);
        acad_free(items);
    }
};

struct crossing {
    double at[3];
    double distance = PG_NO_VALUE; // along the segment that is cut
    int with = -1;
};

bool is_finite(const double* at)
{
    return std::isfinite(at[0]) && std::isfinite(at[1]);
}

// Without numbers for its place or its circle a segment meets nothing.
bool has_place(const pg_segment& s)
{
    return is_finite(s.p) && is_finite(s.q) && is_finite(s.centre) && std::isfinite(s.radius);
}

// False when the heap is exhausted.
bool gather(segments& all, pg_node* chain)
{
    all.count = pg_count(chain) - 1;
    all.items =
        static_cast<held_segment*>(acad_malloc(static_cast<std::size_t>(all.count) * sizeof(held_segment)));
    if (!all.items)
        return false;
    all.boxes = pg_boxes_new(all.count);
    if (!all.boxes.nodes)
        return false;
    int i = 0;
    for (pg_node* n = chain; n->next; n = n->next, ++i) {
        new (&all.items[i]) held_segment{n, pg_segment_at(*n)};
        if (has_place(all.items[i].shape))
            pg_scale_add(&all.scale, all.items[i].shape);
    }
    for (i = 0; i < all.count; ++i)
        if (has_place(all.items[i].shape))
            pg_boxes_set(&all.boxes, i, pg_segment_box(all.items[i].shape, all.scale));
    return true;
}

// The crossing of `a` nearest to its start with the segments from `from` on; crossings at its ends don't count.
crossing first_crossing(const segments& all, const pg_segment& a, int from)
{
    crossing best;
    if (!has_place(a))
        return best;
    const pg_box box = pg_segment_box(a, all.scale);
    for (int i = pg_boxes_next(all.boxes, box, from); i >= 0; i = pg_boxes_next(all.boxes, box, i + 1)) {
        double points[2][3];
        const int count = pg_segment_points(a, all.items[i].shape, points);
        for (int k = 0; k < count; ++k) {
            const double* x = points[k];
            const double distance = pg_segment_distance(a, x);
            if (distance < best.distance && distance > PG_LENGTH_TOL && pg_dist(a.q, x) > PG_LENGTH_TOL)
                best = {{x[0], x[1], x[2]}, distance, i};
        }
    }
    return best;
}

double part_bulge(const pg_segment& of, const double* from, const double* to)
{
    return of.bulge >= 0.0 ? -pg_arc_piece_bulge(from, to, of.centre) : pg_arc_piece_bulge(to, from, of.centre);
}

// Leads `node`, the start of `a`, to the crossing and on along the segment `b`; what lies between is released.
// False when the heap is exhausted, with nothing changed.
bool cut_out(pg_node* node, const pg_segment& a, const held_segment& b, const double* at)
{
    pg_node* meeting = pg_node_new(at);
    if (!meeting)
        return false;
    if (pg_is_arc(a))
        node->bulge = part_bulge(a, a.p, at);
    if (pg_is_arc(b.shape))
        meeting->bulge = part_bulge(b.shape, at, b.shape.q);
    meeting->next = b.node->next;
    b.node->next = nullptr;
    pl_free_nodes(node->next);
    node->next = meeting;
    return true;
}

} // namespace

bool pg_cut_loops(pg_node* chain)
{
    if (!chain || !chain->next || !chain->next->next)
        return true;
    segments all;
    if (!gather(all, chain))
        return false;
    // `order` is the place of the segment at `node`; behind a cut that is the rest of the one it crossed.
    // A segment that was cut isn't looked at again. So an arc across angle 0, which tells the places behind
    // that angle as far away, may be cut at a later crossing and keep a loop that the earlier one would have
    // taken.
    int order = 0;
    for (pg_node* node = chain; node->next; node = node->next) {
        const pg_segment a = pg_segment_at(*node);
        const crossing found = first_crossing(all, a, order + 1);
        if (found.with < 0) {
            ++order;
            continue;
        }
        if (!cut_out(node, a, all.items[found.with], found.at))
            return false;
        order = found.with;
    }
    return true;
}

pg_node* pg_remove_loops(pg_node* chain)
{
    pg_cut_loops(chain);
    return chain;
}
