// offset.cpp: the parallel of a chain, one segment after the other.
//
// The parallel is built backwards, each point in front of those before it, and turned round at the end. So a
// bulge given to `emit` is that of the segment from the new point back to the one before it: the negative of
// the bulge in the direction of travel.
//
// A step handles one segment up to and with the corner at its end. Where the corner is a single point that lies
// on both parallels the next segment starts there, not at its own first node moved aside: the carried point.
#include "polygon/offset.h"

#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "hostapi/ads.h"
#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/loops.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double PI = std::numbers::pi;
constexpr double LEAST_ROUNDED_TURN = 1e-6;                                   // radians
constexpr double LAST_DIGITS = 64.0 * std::numeric_limits<double>::epsilon(); // of a coordinate, relative
constexpr double MITRE_REACH = 100.0; // how far segments are drawn out to meet, in offset distances

using point = std::array<double, 3>;

struct offsetting {
    double distance;
    bool right, mitred;
    const pg_node* head;
    bool closed;
    bool opening = false;   // the first step of a closed chain
    pg_node* out = nullptr; // the last point emitted
    bool exhausted = false;
    point carry{};
    bool have_carry = false;
};

// The parallel of an arc. It runs counter-clockwise from `start` to `end`; `dir` as in pg_arc_from_bulge. The
// radius isn't tested: it is below 0 for an inner parallel beyond the centre.
struct parallel_arc {
    point centre;
    double start, end, radius;
    int dir;

    // The limits where travel enters and leaves the arc.
    double& entry() { return dir == -1 ? start : end; }
    double& exit() { return dir == -1 ? end : start; }
};

point place_of(const pg_node& node)
{
    return {node.x, node.y, node.z};
}

double direction(const point& from, const point& to)
{
    return pg_angle(from.data(), to.data());
}

point polar(const point& from, double angle, double length)
{
    point out;
    acutPolar(from.data(), angle, length, out.data());
    return out;
}

double minus_arc_bulge(const point& a, const point& b, const point& centre)
{
    return pg_arc_piece_bulge(a.data(), b.data(), centre.data());
}

bool inside_limits(const parallel_arc& arc, const point& at)
{
    return pg_arc_contains(arc.centre.data(), at.data(), arc.start, arc.end, PG_NO_VALUE);
}

void emit(offsetting& work, const point& at, double bulge)
{
    pg_node* node = work.exhausted ? nullptr : pg_node_push(at.data(), work.out, bulge);
    if (node)
        work.out = node;
    else
        work.exhausted = true;
}

void set_carry(offsetting& work, const point& at)
{
    work.carry = at;
    work.have_carry = true;
}

// The carried point, which is used up by this, or `otherwise`.
point take_carry(offsetting& work, const point& otherwise)
{
    const point at = work.have_carry ? work.carry : otherwise;
    work.have_carry = false;
    return at;
}

point moved_aside(const offsetting& work, const point& at, double theta)
{
    return polar(at, work.right ? theta - PI / 2.0 : theta + PI / 2.0, work.distance);
}

parallel_arc arc_of(const offsetting& work, const pg_node& from, const pg_node& to)
{
    parallel_arc arc;
    double radius;
    const point a = place_of(from), b = place_of(to);
    pg_arc_from_bulge(a.data(), b.data(), from.bulge, arc.centre.data(), &arc.start, &arc.end, &radius,
                      &arc.dir);
    const bool outside = (arc.dir == -1) == work.right;
    arc.radius = outside ? radius + work.distance : radius - work.distance;
    return arc;
}

// Where travel leaves the arc.
point exit_of(parallel_arc arc)
{
    return polar(arc.centre, arc.exit(), arc.radius);
}

point entry_of(parallel_arc arc)
{
    return polar(arc.centre, arc.entry(), arc.radius);
}

void emit_arc(offsetting& work, const parallel_arc& arc)
{
    const point t1 = polar(arc.centre, arc.start, arc.radius), t2 = polar(arc.centre, arc.end, arc.radius);
    const double bulge = minus_arc_bulge(t1, t2, arc.centre);
    if (arc.dir == -1)
        emit(work, t2, bulge);
    else
        emit(work, t1, -bulge);
}

// ---- corners of two lines: from p to q to r. `s` is the start of the first parallel, `theta` its direction,
// `turn` the counter-clockwise angle at q from the ray to p to the ray to r.

void inner_corner(offsetting& work, const point& q, double theta, double turn)
{
    const double reach = work.distance / std::cos((turn - PI) / 2.0);
    const point corner = polar(q, work.right ? turn / 2.0 + theta - PI : turn / 2.0 + theta, reach);
    emit(work, corner, 0.0);
    set_carry(work, corner);
}

// Bulge in the direction of travel of the arc about q that turns from e to f. It is taken from the angle: a
// bulge from e, f and q has no digits where e and f are nearly one place, and may come out as that of the whole
// circle. Where e and f differ in their last digits alone there is no circle through them to tell, and the
// bulge is 0.
double corner_bulge(const offsetting& work, const point& q, const point& e, const point& f, double turn)
{
    const double size = std::fabs(q[0]) + std::fabs(q[1]) + std::fabs(work.distance);
    if (pg_dist(e.data(), f.data()) <= LAST_DIGITS * size)
        return 0.0;
    return std::tan((turn - PI) / 4.0);
}

void rounded_corner(offsetting& work, const point& q, const point& e, const point& f, double turn)
{
    // On the left the arc is set however small the turn: drawings made so have two nodes at vertices in line.
    const bool has_arc = !work.right || turn - PI > LEAST_ROUNDED_TURN;
    // The arc at a closed chain's head comes at the end of the walk; the parallel begins behind it.
    if (!work.opening || !has_arc)
        emit(work, e, 0.0);
    if (has_arc)
        emit(work, f, -corner_bulge(work, q, e, f, turn));
}

void mitred_corner(offsetting& work, const point& s, const point& p, const point& q, const point& r,
                   double theta, const point& f)
{
    const double reach = MITRE_REACH * work.distance;
    const point e2 = polar(s, theta, reach + pg_dist(p.data(), q.data()));
    const point g = polar(f, direction(r, q), reach);
    point at, second;
    // Segments that overlap in line give two points, and the vertex goes without a corner.
    if (pg_seg_intersect(s.data(), e2.data(), f.data(), g.data(), at.data(), second.data()) != 1)
        return;
    emit(work, at, 0.0);
    set_carry(work, at);
}

void line_to_line(offsetting& work, const point& s, const point& p, const point& q, const point& r)
{
    const double theta = direction(p, q);
    const double turn = pg_turn_angle(p.data(), q.data(), r.data()) * (PI / 180.0);
    if (work.right ? turn <= PI : turn >= PI) {
        inner_corner(work, q, theta, turn);
        return;
    }
    const point f =
        polar(q, work.right ? theta + turn - 3.0 * PI / 2.0 : theta + turn - PI / 2.0, work.distance);
    if (work.mitred)
        mitred_corner(work, s, p, q, r, theta, f);
    else
        rounded_corner(work, q, moved_aside(work, q, theta), f, turn);
}

void line_to_arc(offsetting& work, const point& s, const point& p, const pg_node& q, const pg_node& r)
{
    const double theta = direction(p, place_of(q));
    const point e = moved_aside(work, place_of(q), theta);
    parallel_arc arc = arc_of(work, q, r);
    // The arc begins where the line would touch it and ends where it ends.
    arc.entry() = arc.dir == -1 ? theta - PI / 2.0 : theta + PI / 2.0;
    arc.exit() = direction(arc.centre, place_of(r));
    const point e2 = polar(s, theta, pg_dist(s.data(), e.data()) + arc.radius);
    point at, second;
    if (pg_line_arc_intersect(s.data(), e2.data(), arc.centre.data(), arc.radius, arc.start, arc.end, at.data(),
                              second.data()) == 0) {
        acutPrintf("Did not intersect\n");
        emit(work, e2, 0.0);
        return;
    }
    emit(work, at, 0.0);
    set_carry(work, at);
}

// `r` is the node behind q, null at the chain's end.
void offset_line(offsetting& work, const pg_node& p, const pg_node& q, const pg_node* r)
{
    const point from = place_of(p), to = place_of(q);
    const double theta = direction(from, to);
    const point s = take_carry(work, moved_aside(work, from, theta));
    if (&p == work.head && !work.closed)
        emit(work, s, 0.0);
    if (q.bulge != 0.0) {
        if (r)
            line_to_arc(work, s, from, q, *r);
        return;
    }
    // Only two lines know the way round: an arc at the head is met as its chord, and an arc that ends the chain
    // ends there.
    if (!r && work.closed)
        r = work.head->next;
    if (r)
        line_to_line(work, s, from, to, place_of(*r));
    else
        emit(work, moved_aside(work, to, theta), 0.0);
}

void arc_to_line(offsetting& work, parallel_arc arc, const pg_node& q, const pg_node& r)
{
    const point corner = place_of(q), far_end = place_of(r);
    const double theta = direction(corner, far_end);
    const point g = moved_aside(work, far_end, theta);
    const point h = polar(g, theta - PI, pg_dist(corner.data(), far_end.data()) + arc.radius);
    arc.exit() = arc.dir == -1 ? theta - PI / 2.0 : theta + PI / 2.0;
    point at, second;
    if (pg_line_arc_intersect(g.data(), h.data(), arc.centre.data(), arc.radius, arc.start, arc.end, at.data(),
                              second.data()) > 0) {
        set_carry(work, at);
        arc.exit() = direction(arc.centre, at);
    }
    emit_arc(work, arc);
}

// Two parallels that don't meet: an arc about the vertex joins them.
void join_about(offsetting& work, parallel_arc first, parallel_arc second, const point& q)
{
    first.exit() = direction(first.centre, q);
    emit_arc(work, first);
    second.entry() = direction(second.centre, q);
    const point u = entry_of(second), t = exit_of(first);
    if (pg_tri_area(t[0], t[1], u[0], u[1], q[0], q[1]) >= 0.0)
        emit(work, u, minus_arc_bulge(t, u, q));
    else
        emit(work, u, -minus_arc_bulge(u, t, q));
}

void arc_to_arc(offsetting& work, parallel_arc first, const pg_node& q, const pg_node& r)
{
    const point corner = place_of(q);
    parallel_arc second = arc_of(work, q, r);
    // Each is drawn out to where the other begins.
    const point begin = entry_of(second);
    if (!inside_limits(first, begin))
        first.exit() = direction(first.centre, begin);
    const point finish = exit_of(first);
    if (!inside_limits(second, finish))
        second.entry() = direction(second.centre, finish);
    point at, other;
    const int count =
        pg_arc_arc_intersect(first.centre.data(), first.radius, first.start, first.end, second.centre.data(),
                             second.radius, second.start, second.end, at.data(), other.data());
    if (count == 0) {
        join_about(work, first, second, corner);
        return;
    }
    const bool takes_other =
        count == 2 && pg_dist(other.data(), corner.data()) <= pg_dist(at.data(), corner.data());
    set_carry(work, takes_other ? other : at);
    // The first arc ends at the first point even where the second arc begins at the other one. Results of
    // before have that gap, and must come out again.
    first.exit() = direction(first.centre, at);
    emit_arc(work, first);
}

void offset_arc(offsetting& work, const pg_node& p, const pg_node& q, const pg_node* r)
{
    const point s = take_carry(work, place_of(p));
    parallel_arc arc = arc_of(work, p, q);
    arc.entry() = direction(arc.centre, s);
    if (&p == work.head) // of a closed chain too, which so has its first point twice
        emit(work, entry_of(arc), 0.0);
    if (!r)
        emit_arc(work, arc);
    else if (q.bulge == 0.0)
        arc_to_line(work, arc, q, *r);
    else
        arc_to_arc(work, arc, q, *r);
}

void offset_segment(offsetting& work, const pg_node& p, const pg_node& q, const pg_node* r)
{
    if (p.bulge == 0.0)
        offset_line(work, p, q, r);
    else
        offset_arc(work, p, q, r);
}

} // namespace

pg_node* pg_offset(pg_node* chain, double distance, int side, int corner_mode, int remove_loops)
{
    pg_clean(chain);
    if (!chain || !chain->next)
        return nullptr;
    const pg_node *last = chain->next, *second_last = chain;
    for (; last->next; last = last->next)
        second_last = last;
    offsetting work{distance, side == 1, corner_mode != 0, chain, pg_same_place(*last, *chain)};
    // The first step of a closed chain makes the corner at its head and carries it to the first segment.
    if (work.closed) {
        work.opening = true;
        offset_segment(work, *second_last, *chain, chain->next);
        work.opening = false;
    }
    for (const pg_node* p = chain; p->next && !work.exhausted; p = p->next)
        offset_segment(work, *p, *p->next, p->next->next);
    // Loops are looked for backwards, from the parallel's end. An offset of one node, which a last node with a
    // bulge can leave, has none; one of two or more keeps at least two.
    if (!work.exhausted && remove_loops != 0)
        work.exhausted = !pg_cut_loops(work.out);
    if (work.exhausted) {
        pl_free_nodes(work.out);
        return nullptr;
    }
    return pg_reverse(work.out);
}
