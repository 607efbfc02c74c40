// A barrier p-q runs through a corridor of triangles. T = (p, u, w) is its first, U = (q, u2, w2) its last; in
// both side[1] lies across the corridor. Each pass swaps one edge of the corridor away at p's end or at q's,
// until T and U are neighbours and their common edge can be turned into p-q. What lies beside the corridor is
// not made Delaunay again.
#include "tin/barriers.h"

#include <utility>

#include "hostapi/ads.h"
#include "tin/crossing.h"
#include "tin/inside.h"
#include "tin/triangle.h"
#include "tin/waiting.h"

namespace
{

constexpr int STEP_LIMIT = 100;

// What a step says of the rest of the work.
enum class outcome { go_on, given_up, cannot_be_forced };

struct corridor {
    tin_network* network;
    tin_point *p, *q;
};

// A triangle as (r, e1, e2), with the sides r-e1 and e2-r.
struct seen_from_apex {
    tin_point *r, *e1, *e2;
    tin_triangle *a, *b;
};

bool crosses(const corridor& c, const tin_point* from, const tin_point* to)
{
    return tin_segments_cross(c.network, c.p, c.q, from, to) != 0;
}

// The words of a search for the end of the corridor.
struct search_words {
    const char *too_long, *no_crossing;
};

// Turns around `centre` from a triangle that has it as a corner to the one whose far edge the barrier crosses.
// Null: the end of the work, with a message; or, without, because `goal` is a corner already.
tin_triangle* turn_around(const corridor& c, const tin_point* centre, const tin_point* goal,
                          tin_triangle* start, const search_words& words)
{
    tin_triangle* t = start;
    int i = corner_index(t, centre);
    const tin_point *u = t->corner[(i + 1) % 3], *w = t->corner[(i + 2) % 3];
    tin_triangle* next = t->side[i];
    for (int steps = 1; next != start; ++steps) {
        if (crosses(c, u, w))
            return t;
        if (steps > STEP_LIMIT) {
            acutPrintf("%s", words.too_long);
            return nullptr;
        }
        const int k = next ? corner_index(next, centre) : -1;
        if (k >= 0 && next->side[k] != t) {
            u = next->corner[(k + 1) % 3];
            w = next->corner[(k + 2) % 3];
            t = std::exchange(next, next->side[k]);
        }
        if (corner_index(t, goal) >= 0)
            return nullptr;
    }
    if (crosses(c, u, w))
        return t;
    acutPrintf("%s", words.no_crossing);
    return nullptr;
}

// Turns a triangle in its record so that the point is its first corner.
bool put_first(tin_triangle* t, const tin_point* point)
{
    const int i = corner_index(t, point);
    if (i > 0) {
        set_corners(t, t->corner[i], t->corner[(i + 1) % 3], t->corner[(i + 2) % 3]);
        set_sides(t, t->side[i], t->side[(i + 1) % 3], t->side[(i + 2) % 3]);
    }
    return i >= 0;
}

// A triangle seen from its corner that is neither of two; false with a message when it has none.
bool see_from_apex(const tin_triangle* t, const tin_point* m, const tin_point* n, seen_from_apex* out)
{
    const int i = t ? apex_index(t, m, n) : -1;
    if (i < 0) {
        acutPrintf("\nError: 11 inserting barrier.");
        return false;
    }
    *out = {t->corner[i], t->corner[(i + 1) % 3], t->corner[(i + 2) % 3], t->side[i], t->side[(i + 2) % 3]};
    return true;
}

bool see_across(const tin_triangle* end, seen_from_apex* out)
{
    return see_from_apex(end->side[1], end->corner[1], end->corner[2], out);
}

// Swaps the far edge of the end triangle away: `end`, whose first corner is `centre`, keeps the half through
// which the barrier goes on.
void swap_end(const corridor& c, tin_triangle* end, tin_point* centre, const seen_from_apex& seen)
{
    tin_triangle* n = end->side[1];
    if (crosses(c, seen.r, seen.e1)) {
        tin_triangle* outside = end->side[0];
        set_corners(n, seen.r, centre, seen.e2);
        set_sides(n, end, outside, seen.b);
        end->corner[1] = seen.r;
        end->side[0] = n;
        end->side[1] = seen.a;
        replace_side(outside, end, n);
        replace_side(seen.a, n, end);
        seen.e2->tri = n;
        end->corner[2]->tri = end;
    } else {
        tin_triangle* outside = end->side[2];
        set_corners(n, seen.r, seen.e1, centre);
        set_sides(n, seen.a, outside, end);
        end->corner[2] = seen.r;
        end->side[2] = n;
        end->side[1] = seen.b;
        replace_side(outside, end, n);
        replace_side(seen.b, n, end);
        seen.e1->tri = n;
        end->corner[1]->tri = end;
    }
}

// `n` = (r, e1, e2) and its neighbour `beside` change their common edge for x-e2; `other` is the neighbour that
// `n` keeps. x, y and the sides x-y and z-x are those of `beside`.
void swap_beside(const corridor& c, tin_triangle* u, tin_triangle* n, tin_triangle* beside, tin_triangle* other,
                 const seen_from_apex& seen, const seen_from_apex& x)
{
    const swap_corners before = corners_of(n, beside);
    set_corners(beside, x.r, x.e1, seen.e2);
    set_sides(beside, x.a, u, n);
    set_corners(n, seen.r, x.r, seen.e2);
    set_sides(n, x.b, beside, other);
    replace_side(x.b, beside, n);
    replace_side(u, n, beside);
    seen.r->tri = n;
    x.e1->tri = beside;
    waiting_swapped(c.network, n, beside, before);
    tin_sort_buckets(c.network, n, beside, n, beside);
}

// The quadrilateral at q's end has a re-entrant corner: the triangle across is changed with one of its
// neighbours. The edge between these two may be that of another barrier; it is swapped away all the same, and
// nothing counts it.
outcome repair_across(const corridor& c, tin_triangle* u, const seen_from_apex& seen)
{
    tin_triangle* n = u->side[1];
    seen_from_apex x;
    if (!seen.a)
        return outcome::go_on;
    if (!see_from_apex(seen.a, seen.e1, seen.r, &x))
        return outcome::given_up;
    if (tin_segments_cross(c.network, seen.r, seen.e1, seen.e2, x.r)) {
        swap_beside(c, u, n, seen.a, seen.b, seen, x);
        return outcome::go_on;
    }
    if (!seen.b)
        return outcome::go_on;
    if (!see_from_apex(seen.b, seen.r, seen.e2, &x))
        return outcome::given_up;
    // The test and the new corners are those of the other neighbour. Networks made so far depend on it.
    if (tin_segments_cross(c.network, seen.r, seen.e1, seen.e2, x.r))
        swap_beside(c, u, n, seen.b, seen.a, seen, x);
    return outcome::go_on;
}

// One pass at q's end, where p's gave nothing.
outcome work_at_far_end(const corridor& c, tin_triangle* u, int retry)
{
    seen_from_apex seen;
    if (!see_across(u, &seen))
        return outcome::given_up;
    if (!tin_segments_cross(c.network, c.q, seen.r, seen.e1, seen.e2)) {
        if (repair_across(c, u, seen) == outcome::given_up || !see_across(u, &seen))
            return outcome::given_up;
        if (!tin_segments_cross(c.network, c.q, seen.r, seen.e1, seen.e2)) {
            if (retry == 1)
                return outcome::cannot_be_forced;
            ++c.network->failed_barriers;
            return outcome::given_up;
        }
    }
    tin_triangle* n = u->side[1];
    const swap_corners before = corners_of(n, u);
    swap_end(c, u, c.q, seen);
    waiting_swapped(c.network, n, u, before);
    tin_sort_buckets(c.network, n, u, n, u);
    return outcome::go_on;
}

outcome work_pass(const corridor& c, tin_triangle* t, tin_triangle* u, int retry)
{
    tin_triangle* n = t->side[1];
    if (!n) {
        acutPrintf("\nError 7 connecting barrier.");
        return outcome::given_up;
    }
    seen_from_apex seen;
    if (!see_across(t, &seen))
        return outcome::given_up;
    if (!tin_segments_cross(c.network, seen.r, c.p, seen.e1, seen.e2))
        return work_at_far_end(c, u, retry);
    const swap_corners before = corners_of(t, n);
    swap_end(c, t, c.p, seen);
    waiting_swapped(c.network, t, n, before);
    tin_sort_buckets(c.network, t, n, t, n);
    return outcome::go_on;
}

// The common edge of the two ends becomes the barrier.
void close_corridor(const corridor& c, tin_triangle* t, tin_triangle* u)
{
    tin_point *left = t->corner[1], *right = t->corner[2];
    tin_triangle *t_outside = t->side[0], *u_outside = u->side[0];
    const swap_corners before = corners_of(t, u);
    set_corners(t, c.p, c.q, right);
    set_corners(u, c.q, c.p, left);
    t->side[0] = u;
    u->side[0] = t;
    t->side[1] = u_outside;
    u->side[1] = t_outside;
    replace_side(u_outside, u, t);
    replace_side(t_outside, t, u);
    right->tri = t;
    left->tri = u;
    waiting_swapped(c.network, t, u, before);
    tin_sort_buckets(c.network, t, u, t, u);
}

int give_up(const char* words)
{
    acutPrintf("%s", words);
    return 1;
}

} // namespace

int connect_barrier_points(tin_network* network, const tin_barrier* barrier, tin_triangle* start,
                           tin_triangle* end, int retry)
{
    const corridor c{network, barrier->from, barrier->to};
    if (corner_index(start, c.p) < 0)
        return give_up("\nError 11 connecting barrier segment.");
    if (corner_index(end, c.q) < 0)
        return give_up("\nError 12 connecting barrier segment.");
    if (corner_index(start, c.q) >= 0 || corner_index(end, c.p) >= 0)
        return 1;
    tin_triangle* t = turn_around(c, c.p, c.q, start,
                                  {"\nWarning: error L1 in connect_barrier_points.", "\nintersection error 1"});
    if (!t)
        return 1;
    tin_triangle* u = turn_around(c, c.q, c.p, end,
                                  {"\nWarning: error L2 in connect_barrier_points.", "\nintersection error 2"});
    if (!u)
        return 1;
    if (!put_first(t, c.p))
        return give_up("\nError 5 connecting barrier.");
    if (!put_first(u, c.q))
        return give_up("\nError 6 connecting barrier.");
    for (int passes = 1; t->side[1] != u && u->side[1] != t; ++passes) {
        if (passes > STEP_LIMIT)
            return give_up("\nWarning: error L3 in connect_barrier_points");
        const outcome now = work_pass(c, t, u, retry);
        if (now != outcome::go_on)
            return now == outcome::cannot_be_forced ? 0 : 1;
    }
    close_corridor(c, t, u);
    return 1;
}
