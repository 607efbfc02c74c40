#include <utility>

#include "tests/tin/plain_network.h"

namespace
{

using plain::network;
using plain::point;
using plain::triangle;

int index_of(const triangle* t, const point* p)
{
    if (t != nullptr)
        for (int i = 0; i < 3; ++i)
            if (t->corner[i] == p)
                return i;
    return -1;
}

bool has(const triangle* t, const point* p)
{
    return index_of(t, p) >= 0;
}

bool cross(const point* a, const point* b, const point* c, const point* d)
{
    return plain::segments_cross(*a, *b, *c, *d) == 1;
}

enum class found { yes, no, joined };

// The triangle around `hub` whose far edge the barrier from-to crosses.
found turn_around(network& n, point* from, point* to, point* hub, triangle* start, int end_number,
                  triangle** out)
{
    point* const aim = hub == from ? to : from;
    triangle* t = start;
    const int i = index_of(t, hub);
    point* u = t->corner[(i + 1) % 3];
    point* w = t->corner[(i + 2) % 3];
    triangle* next = t->side[i];
    int steps = 0;
    bool stopped = false;
    while (next != start) {
        if (cross(from, to, u, w)) {
            stopped = true;
            break;
        }
        steps += 1;
        if (steps == 101) {
            n.said += "\nWarning: error L" + std::to_string(end_number) + " in connect_barrier_points.";
            return found::no;
        }
        const int k = index_of(next, hub);
        if (k >= 0 && next->side[k] != t) {
            u = next->corner[(k + 1) % 3];
            w = next->corner[(k + 2) % 3];
            t = next;
            next = t->side[k];
        }
        if (has(t, aim))
            return found::joined;
    }
    *out = t;
    if (!stopped && !cross(from, to, u, w)) {
        n.said += "\nintersection error " + std::to_string(end_number);
        return found::no;
    }
    return found::yes;
}

void turn_to_head(triangle* t, const point* p)
{
    for (int turns = 0; turns < 2 && t->corner[0] != p; ++turns) {
        point* const c = t->corner[0];
        triangle* const s = t->side[0];
        t->corner[0] = t->corner[1];
        t->side[0] = t->side[1];
        t->corner[1] = t->corner[2];
        t->side[1] = t->side[2];
        t->corner[2] = c;
        t->side[2] = s;
    }
}

// A triangle beyond the edge u-w, named from its corner off that edge.
struct beyond {
    triangle* t = nullptr;
    point *r = nullptr, *e1 = nullptr, *e2 = nullptr;
    triangle *sa = nullptr, *sb = nullptr;
};

bool look_beyond(triangle* t, const point* u, const point* w, beyond* out)
{
    if (t == nullptr)
        return false;
    for (int i = 0; i < 3; ++i)
        if (t->corner[i] != u && t->corner[i] != w) {
            *out = {t,          t->corner[i],        t->corner[(i + 1) % 3], t->corner[(i + 2) % 3],
                    t->side[i], t->side[(i + 2) % 3]};
            return true;
        }
    return false;
}

bool look_from(triangle* u, beyond* out)
{
    return look_beyond(u->side[1], u->corner[1], u->corner[2], out);
}

// Flips the far edge of `t`, which has `hub` at its head; `first_form`: the barrier leaves through r-e1.
void flip(triangle* t, point* hub, const beyond& b, bool first_form)
{
    triangle* const n = b.t;
    if (first_form) {
        triangle* const outside = t->side[0];
        n->corner[0] = b.r, n->corner[1] = hub, n->corner[2] = b.e2;
        n->side[0] = t, n->side[1] = outside, n->side[2] = b.sb;
        t->corner[1] = b.r;
        t->side[0] = n;
        t->side[1] = b.sa;
        plain::replace_side(outside, t, n);
        plain::replace_side(b.sa, n, t);
        b.e2->tri = n;
        t->corner[2]->tri = t;
    } else {
        triangle* const outside = t->side[2];
        n->corner[0] = b.r, n->corner[1] = b.e1, n->corner[2] = hub;
        n->side[0] = b.sa, n->side[1] = outside, n->side[2] = t;
        t->corner[2] = b.r;
        t->side[2] = n;
        t->side[1] = b.sb;
        plain::replace_side(outside, t, n);
        plain::replace_side(b.sb, n, t);
        b.e1->tri = n;
        t->corner[1]->tri = t;
    }
}

// Swaps the edge between b.t and its neighbour `s`, of which `x` is the corner off that edge; `third` is the
// side that b.t keeps. Of the two neighbours only the one across r-e1 gives a sound network; the other is
// treated in the same way all the same.
void repair(network& n, triangle* u, const beyond& b, triangle* s, int x_index, triangle* third)
{
    triangle* const n2 = b.t;
    n.swapped_away += plain::is_barrier(b.r, s == b.sa ? b.e1 : b.e2);
    point* const x = s->corner[x_index];
    point* const y = s->corner[(x_index + 1) % 3];
    triangle* const sx = s->side[x_index];
    triangle* const sy = s->side[(x_index + 2) % 3];
    s->corner[0] = x, s->corner[1] = y, s->corner[2] = b.e2;
    s->side[0] = sx, s->side[1] = u, s->side[2] = n2;
    n2->corner[0] = b.r, n2->corner[1] = x, n2->corner[2] = b.e2;
    n2->side[0] = sy, n2->side[1] = s, n2->side[2] = third;
    plain::replace_side(sy, s, n2);
    plain::replace_side(u, n2, s);
    b.r->tri = n2;
    y->tri = s;
    plain::sort_buckets(n, n2, s, n2);
}

int corner_off(const triangle* t, const point* p, const point* q)
{
    for (int i = 0; i < 3; ++i)
        if (t->corner[i] != p && t->corner[i] != q)
            return i;
    return -1;
}

enum class work { done, give_up, lost };

// One flip at q's end, if need be after a repair beyond it.
work work_at_far_end(network& n, point* p, point* q, triangle* u)
{
    beyond b;
    if (!look_from(u, &b))
        return work::lost;
    if (!cross(q, b.r, b.e1, b.e2)) {
        if (b.sa != nullptr) {
            const int x = corner_off(b.sa, b.e1, b.r);
            if (x < 0)
                return work::lost;
            if (cross(b.r, b.e1, b.e2, b.sa->corner[x])) {
                repair(n, u, b, b.sa, x, b.sb);
            } else if (b.sb != nullptr) {
                const int x2 = corner_off(b.sb, b.r, b.e2);
                if (x2 < 0)
                    return work::lost;
                if (cross(b.r, b.e1, b.e2, b.sb->corner[x2]))
                    repair(n, u, b, b.sb, x2, b.sa);
            }
        }
        if (!look_from(u, &b))
            return work::lost;
        if (!cross(q, b.r, b.e1, b.e2))
            return work::give_up;
    }
    flip(u, q, b, cross(p, q, b.r, b.e1));
    plain::sort_buckets(n, b.t, u, b.t);
    return work::done;
}

void last_flip(network& n, point* p, point* q, triangle* t, triangle* u)
{
    point* const left = t->corner[1];
    point* const right = t->corner[2];
    triangle* const t_outside = t->side[0];
    triangle* const u_outside = u->side[0];
    t->corner[0] = p, t->corner[1] = q, t->corner[2] = right;
    u->corner[0] = q, u->corner[1] = p, u->corner[2] = left;
    t->side[0] = u;
    u->side[0] = t;
    t->side[1] = u_outside;
    u->side[1] = t_outside;
    plain::replace_side(u_outside, u, t);
    plain::replace_side(t_outside, t, u);
    right->tri = t;
    left->tri = u;
    plain::sort_buckets(n, t, u, t);
}

} // namespace

int plain::connect_barrier_points(network& n, barrier* b, triangle* start, triangle* end, int retry)
{
    const auto fails = [&n](const char* words) {
        n.said += words;
        return 1;
    };
    point* const p = b->from;
    point* const q = b->to;
    if (!has(start, p))
        return fails("\nError 11 connecting barrier segment.");
    if (!has(end, q))
        return fails("\nError 12 connecting barrier segment.");
    if (has(start, q) || has(end, p))
        return 1;
    triangle *t = nullptr, *u = nullptr;
    if (turn_around(n, p, q, p, start, 1, &t) != found::yes)
        return 1;
    if (turn_around(n, p, q, q, end, 2, &u) != found::yes)
        return 1;
    turn_to_head(t, p);
    if (t->corner[0] != p)
        return fails("\nError 5 connecting barrier.");
    turn_to_head(u, q);
    if (u->corner[0] != q)
        return fails("\nError 6 connecting barrier.");
    int passes = 0;
    while (t->side[1] != u && u->side[1] != t) {
        passes += 1;
        if (passes == 101)
            return fails("\nWarning: error L3 in connect_barrier_points");
        if (t->side[1] == nullptr)
            return fails("\nError 7 connecting barrier.");
        beyond near;
        if (!look_from(t, &near))
            return fails("\nError: 11 inserting barrier.");
        if (cross(near.r, p, near.e1, near.e2)) {
            flip(t, p, near, cross(p, q, near.r, near.e1));
            sort_buckets(n, t, near.t, t);
            continue;
        }
        const work w = work_at_far_end(n, p, q, u);
        if (w == work::lost)
            return fails("\nError: 11 inserting barrier.");
        if (w == work::give_up) {
            if (retry == 1)
                return 0;
            n.failed_barriers += 1;
            return 1;
        }
    }
    last_flip(n, p, q, t, u);
    return 1;
}
