#include "polygon/intersect.h"

#include <algorithm>
#include <cmath>

#include "polygon/arcs.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

// A place in the frame of a segment: along it from its start, and to the left of it.
struct frame_place {
    double along, left;
};

// A segment as its start, its 3D vector over its length in the plane, and that length.
struct framed_segment {
    const double* start;
    double u[3];
    double length;
};

framed_segment frame_of(const double* from, const double* to)
{
    const double length = pg_dist(from, to);
    return {from, {(to[0] - from[0]) / length, (to[1] - from[1]) / length, (to[2] - from[2]) / length}, length};
}

frame_place place_in(const framed_segment& s, const double* p)
{
    const double dx = p[0] - s.start[0], dy = p[1] - s.start[1];
    return {dx * s.u[0] + dy * s.u[1], s.u[0] * dy - s.u[1] * dx};
}

void point_along(const framed_segment& s, double along, double* out)
{
    for (int i = 0; i < 3; ++i)
        out[i] = s.start[i] + s.u[i] * along;
}

void copy_point(const double* from, double* to)
{
    std::copy(from, from + 3, to);
}

// `s1` and `s2` are b's ends along a, `past` is by how much the nearer of them lies behind a's end. It is
// measured from that end, so that segments which share it meet whatever the last bits of a's length are.
int overlap(const framed_segment& a, double s1, double s2, double past, double* out1, double* out2)
{
    double lo = std::min(s1, s2), hi = std::max(s1, s2);
    if (hi < 0.0 || past > 0.0)
        return 0;
    if (lo < PG_LENGTH_TOL)
        lo = 0.0;
    if (hi + PG_LENGTH_TOL > a.length)
        hi = a.length;
    point_along(a, lo, out1);
    if (std::fabs(hi - lo) <= PG_LENGTH_TOL)
        return 1;
    point_along(a, hi, out2);
    return 2;
}

} // namespace

int pg_seg_intersect(const double* a1, const double* a2, const double* b1, const double* b2, double* out1,
                     double* out2)
{
    const double low = std::min(a1[1], a2[1]), high = std::max(a1[1], a2[1]);
    if ((b1[1] < low && b2[1] < low) || (b1[1] > high && b2[1] > high))
        return 0;
    out1[2] = out2[2] = 0.0;
    const framed_segment a = frame_of(a1, a2);
    const frame_place p1 = place_in(a, b1), p2 = place_in(a, b2);
    const double t1 = std::fabs(p1.left), t2 = std::fabs(p2.left);
    if (t1 <= PG_LENGTH_TOL && t2 <= PG_LENGTH_TOL) {
        // In line; but a segment that just touches the tolerance is neither in line nor crossing.
        if (t1 >= PG_LENGTH_TOL || t2 >= PG_LENGTH_TOL)
            return 0;
        const framed_segment beyond{a2, {a.u[0], a.u[1], a.u[2]}, a.length};
        const double past = std::min(place_in(beyond, b1).along, place_in(beyond, b2).along);
        return overlap(a, p1.along, p2.along, past, out1, out2);
    }
    const double share = p1.left / (p1.left - p2.left); // of b, from b1 to the crossing
    const double s = share * (p2.along - p1.along) + p1.along;
    if (!(s >= -PG_LENGTH_TOL && s <= a.length + PG_LENGTH_TOL))
        return 0;
    // The crossing must lie between b1 and b2: with the distances e1, e2 to them and e the length of b,
    // (e1 + e2)^2 - e^2 is below 1e-6. Beyond an end that is 4 share (share - 1) e^2, and 0 between; the
    // difference of squares itself would lose this on long segments.
    if (4.0 * share * (share - 1.0) * pg_dist_sq(b1, b2) >= PG_LENGTH_TOL)
        return 0;
    if (s < PG_LENGTH_TOL)
        copy_point(a1, out1);
    else if (s < a.length - PG_LENGTH_TOL)
        point_along(a, s, out1);
    else
        copy_point(a2, out1);
    return 1;
}

int pg_line_arc_intersect(const double* p0, const double* p1, const double* centre, double radius, double start,
                          double end, double* out1, double* out2)
{
    const framed_segment line = frame_of(p0, p1);
    const frame_place foot = place_in(line, centre);
    const double perp = std::fabs(foot.left);
    if (!(perp - radius <= PG_LENGTH_TOL))
        return 0;
    const auto take = [&](double along, double* out) {
        if (!(along >= -PG_LENGTH_TOL && along <= line.length + PG_LENGTH_TOL))
            return false;
        double place[3];
        pg_frame_point(p0, p1, along, 0.0, place);
        if (!pg_arc_contains(centre, place, start, end, radius))
            return false;
        copy_point(place, out);
        return true;
    };
    if (std::fabs(perp - radius) <= PG_LENGTH_TOL)
        return take(foot.along, out1) ? 1 : 0;
    const double half_chord = std::sqrt((radius - perp) * (radius + perp));
    int count = take(foot.along - half_chord, out1) ? 1 : 0;
    if (take(foot.along + half_chord, count == 0 ? out1 : out2))
        ++count;
    return count;
}

namespace
{

struct arc {
    const double* centre;
    double radius, start, end;
};

bool holds(const arc& a, const double* point)
{
    return pg_arc_contains(a.centre, point, a.start, a.end, a.radius);
}

// The ends of each arc of one circle that lie on the other, at most two.
int shared_ends(const arc& first, const arc& second, double* out1, double* out2)
{
    struct arc_end {
        const arc& of;
        const arc& on;
        double direction;
    };
    const arc_end ends[] = {{first, second, first.start},
                            {first, second, first.end},
                            {second, first, second.start},
                            {second, first, second.end}};
    int count = 0;
    for (const arc_end& e : ends) {
        const double place[3] = {e.of.centre[0] + e.of.radius * std::cos(e.direction),
                                 e.of.centre[1] + e.of.radius * std::sin(e.direction), 0.0};
        if (count == 2 || !holds(e.on, place))
            continue;
        copy_point(place, count == 0 ? out1 : out2);
        ++count;
    }
    return count;
}

} // namespace

int pg_arc_arc_intersect(const double* c1, double r1, double s1, double e1, const double* c2, double r2,
                         double s2, double e2, double* out1, double* out2)
{
    const arc first{c1, r1, s1, e1}, second{c2, r2, s2, e2};
    const double apart = pg_dist(c1, c2);
    if (apart - r1 - r2 > PG_LENGTH_TOL || std::fabs(r1 - r2) - apart > PG_LENGTH_TOL)
        return 0;
    if (apart < PG_LENGTH_TOL)
        return shared_ends(first, second, out1, out2);
    // Distance from c1 to the line through the crossings, (D^2 + r1^2 - r2^2) / 2D with its difference of
    // squares taken apart.
    const double a = apart / 2.0 + (r1 - r2) * (r1 + r2) / (2.0 * apart);
    const bool touching = std::fabs(std::fabs(a) - r1) < PG_LENGTH_TOL;
    if (!touching && std::fabs(a) > r1)
        return 0; // one circle inside the other, a hair's breadth off it
    const double h = touching ? 0.0 : std::sqrt((r1 - a) * (r1 + a));
    int count = 0;
    for (int side = 0; side < (touching ? 1 : 2); ++side) {
        double place[3];
        pg_frame_point(c1, c2, a, side == 0 ? h : -h, place);
        if (!holds(first, place) || !holds(second, place))
            continue;
        copy_point(place, count == 0 ? out1 : out2);
        ++count;
    }
    return count;
}
