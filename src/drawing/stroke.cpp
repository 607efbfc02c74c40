#include "drawing/stroke.h"

#include <cmath>
#include <vector>

#include "common/tolerances.h"
#include "hostapi/ads.h"

namespace
{

constexpr int ARC_PIECES = 21; // chords of an arc, whatever its size

// Puts the inner points of the arc from a to its next vertex between the two.
// The points are worked out from the chord and not from the centre, which for a flat arc lies so far off
// that no digits are left: with the signed angle A of the whole arc, the point at share f of it lies from
// a at sin(f A / 2) / sin(A / 2) of the chord, turned by (f - 1) A / 2.
void insert_arc_points(pl_vertex* a)
{
    pl_vertex* b = a->next;
    const double dx = b->x - a->x, dy = b->y - a->y, dz = b->z - a->z;
    const double half_angle = 2.0 * std::atan(a->bulge);
    pl_vertex* last = a;
    for (int i = 1; i < ARC_PIECES; ++i) {
        const double f = static_cast<double>(i) / ARC_PIECES;
        const double stretch = std::sin(f * half_angle) / std::sin(half_angle);
        const double turn = (f - 1.0) * half_angle;
        const double c = stretch * std::cos(turn), s = stretch * std::sin(turn);
        pl_vertex* inner = pl_vertex_new(a->x + c * dx - s * dy, a->y + s * dx + c * dy, a->z + f * dz);
        if (!inner)
            continue;
        inner->next = b;
        last->next = inner;
        last = inner;
    }
}

// b of a -> b -> c lies off the line from a to c by less than the root of `tolerance`.
bool is_in_line(const pl_vertex& a, const pl_vertex& b, const pl_vertex& c, double tolerance)
{
    const double ac[3] = {c.x - a.x, c.y - a.y, c.z - a.z};
    const double ab[3] = {b.x - a.x, b.y - a.y, b.z - a.z};
    const double t =
        (ac[0] * ab[0] + ac[1] * ab[1] + ac[2] * ab[2]) / (ac[0] * ac[0] + ac[1] * ac[1] + ac[2] * ac[2]);
    double off_sq = 0.0;
    for (int i = 0; i < 3; ++i)
        off_sq += (ab[i] - t * ac[i]) * (ab[i] - t * ac[i]);
    return off_sq < tolerance;
}

using places = std::vector<pl_vertex*>;

// One pass over the vertices in `middles`, which are in chain order. A removal passes over the vertex
// behind it. Answers the vertices whose neighbours have changed, again in order: nothing else can go in
// the next pass that stayed in this one.
places thin_once(const places& middles, double tolerance)
{
    places changed;
    const pl_vertex* passed_over = nullptr;
    for (pl_vertex* b : middles) {
        pl_vertex* a = b->prev;
        pl_vertex* c = b->next;
        if (b == passed_over || !a || !c || b->bulge != 0.0 || !is_in_line(*a, *b, *c, tolerance))
            continue;
        a->next = c;
        c->prev = a;
        acad_free(b);
        if (changed.empty() || changed.back() != a)
            changed.push_back(a);
        changed.push_back(c);
        passed_over = c;
    }
    return changed;
}

} // namespace

int chain_stroke_arcs(pl_vertex* head, double tolerance)
{
    bool had_arcs = false;
    for (const pl_vertex* v = head; v && !had_arcs; v = v->next)
        had_arcs = v->bulge != 0.0;
    if (!had_arcs)
        return 0;
    pl_vertex* next = nullptr;
    for (pl_vertex* a = head; a; a = next) {
        pl_vertex* b = a->next;
        next = b;
        if (!b || a->bulge == 0.0)
            continue;
        if (std::hypot(b->x - a->x, b->y - a->y) < LENGTH_TOL) {
            a->next = b->next;
            next = a->next;
            acad_free(b);
        } else {
            insert_arc_points(a);
        }
        a->bulge = 0.0;
    }
    chain_thin(head, tolerance);
    return 1;
}

pl_vertex* chain_thin(pl_vertex* head, double tolerance)
{
    if (!head || !head->next)
        return head;
    places middles;
    head->prev = nullptr;
    for (pl_vertex* v = head; v->next; v = v->next) {
        v->next->prev = v;
        middles.push_back(v->next);
    }
    while (!middles.empty())
        middles = thin_once(middles, tolerance);
    return head;
}
