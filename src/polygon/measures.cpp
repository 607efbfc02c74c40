#include "polygon/measures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "polygon/arcs.h"
#include "polygon/on_segment.h"
#include "polygon/points.h"
#include "polygon/segment_pairs.h"
#include "polygon/tolerances.h"

namespace
{

constexpr double TURN = 2.0 * std::numbers::pi;
constexpr double OFF_CIRCLE = 0.1;      // a point this far off an arc's circle isn't on it
constexpr double SAME_DIRECTION = 1e-6; // radians

struct nearest {
    const double* from;
    double best_sq, foot_sq;
    double* out;

    bool take_if_nearer(double distance_sq, const double* place)
    {
        if (!(distance_sq < best_sq))
            return false;
        best_sq = distance_sq;
        out[0] = place[0];
        out[1] = place[1];
        return true;
    }
    void take_if_nearer(const double* place) { take_if_nearer(pg_dist_sq(from, place), place); }
    void add_foot(double distance_sq)
    {
        if (distance_sq < foot_sq)
            foot_sq = distance_sq;
    }
};

bool is_within(double v, double one_end, double other_end)
{
    return v >= std::min(one_end, other_end) && v <= std::max(one_end, other_end);
}

void closest_on_line(const pg_segment& s, nearest* n)
{
    const double dx = s.q[0] - s.p[0], dy = s.q[1] - s.p[1];
    // No number for a segment without length, which then has no foot.
    const double share = ((n->from[0] - s.p[0]) * dx + (n->from[1] - s.p[1]) * dy) /
                         (dx * dx + dy * dy); // of the way from p to q
    const double foot[2] = {s.p[0] + share * dx, s.p[1] + share * dy};
    // Within the box of p and q. Rounding of the foot alone, or of the share alone, must not put it outside.
    const bool is_between = (share >= 0.0 && share <= 1.0) ||
                            (is_within(foot[0], s.p[0], s.q[0]) && is_within(foot[1], s.p[1], s.q[1]));
    if (is_between && n->take_if_nearer(pg_dist_sq(foot, n->from), foot))
        return;
    n->take_if_nearer(s.p);
    n->add_foot(pg_dist_sq(foot, s.p));
    n->add_foot(pg_dist_sq(foot, s.q));
}

bool is_in_sector(const pg_segment& arc, const double* point)
{
    return pg_arc_contains(arc.centre, point, arc.start, arc.end, PG_NO_VALUE);
}

void closest_on_arc(const pg_segment& arc, nearest* n)
{
    const double away = pg_dist(arc.centre, n->from), direction = pg_angle(arc.centre, n->from);
    const double across = arc.radius * std::cos(direction), up = arc.radius * std::sin(direction);
    const double near_side[2] = {arc.centre[0] + across, arc.centre[1] + up};
    const double far_side[2] = {arc.centre[0] - across, arc.centre[1] - up};
    const double error = away - arc.radius;
    // For a point beyond the circle the distance is that to the arc, but users of the place count on its
    // being the centre.
    if (is_in_sector(arc, n->from))
        n->take_if_nearer(error * error, error > 0.0 ? arc.centre : near_side);
    else if (is_in_sector(arc, far_side))
        n->take_if_nearer((away + arc.radius) * (away + arc.radius), far_side);
    n->take_if_nearer(arc.p);
    n->take_if_nearer(arc.q);
}

double length_of(const pg_segment& s)
{
    return pg_is_arc(s) ? pg_arc_length(s.p, s.q, s.bulge) : pg_dist(s.p, s.q);
}

} // namespace

double pg_closest(const double* point, const pg_node* chain, double* foot_sq, double* out)
{
    if (!chain)
        return PG_NO_VALUE;
    nearest n{point, PG_NO_VALUE * PG_NO_VALUE, PG_NO_VALUE * PG_NO_VALUE, out};
    for (; chain->next; chain = chain->next) {
        const pg_segment s = pg_segment_at(*chain);
        if (pg_is_arc(s))
            closest_on_arc(s, &n);
        else
            closest_on_line(s, &n);
    }
    const double last[2] = {chain->x, chain->y};
    n.take_if_nearer(last);
    if (foot_sq)
        *foot_sq = n.foot_sq;
    return n.best_sq;
}

double pg_length(const pg_node* chain)
{
    double sum = 0.0;
    for (; chain && chain->next; chain = chain->next)
        sum += length_of(pg_segment_at(*chain));
    return sum;
}

bool pg_is_at(const double* place, const double* point)
{
    return pg_dist(place, point) <= PG_LENGTH_TOL;
}

bool pg_is_on_segment(const pg_segment& s, const double* point)
{
    if (pg_is_arc(s))
        return is_in_sector(s, point) && std::fabs(s.radius - pg_dist(s.centre, point)) < OFF_CIRCLE;
    if (!(pg_dist(s.p, point) <= pg_dist(s.p, s.q)))
        return false;
    const double gap = std::fabs(pg_angle(s.p, s.q) - pg_angle(s.p, point));
    return std::min(gap, TURN - gap) < SAME_DIRECTION;
}

double pg_distance_along(const pg_node* chain, const double* point)
{
    if (!chain)
        return 0.0;
    const double head[2] = {chain->x, chain->y};
    if (pg_is_at(head, point))
        return 0.0;
    double sum = 0.0;
    for (; chain->next; chain = chain->next) {
        const pg_segment s = pg_segment_at(*chain);
        if (pg_is_at(s.q, point))
            return sum + pg_dist(s.p, s.q); // the chord of an arc too
        if (pg_is_on_segment(s, point)) {
            if (!pg_is_arc(s))
                return sum + pg_dist(s.p, point);
            const double turned = pg_angle(s.centre, point) - s.start;
            return sum + s.radius * (turned < 0.0 ? turned + TURN : turned);
        }
        sum += length_of(s);
    }
    return sum;
}

int pg_point_at(const pg_node* chain, double distance, double* out, double* direction)
{
    double sum = 0.0; // as pg_length adds, so that its result is the chain's end to the last digit
    for (; chain && chain->next; chain = chain->next) {
        const pg_segment s = pg_segment_at(*chain);
        const double length = length_of(s), share = length == 0.0 ? 0.0 : (distance - sum) / length;
        if (!pg_is_arc(s) && distance <= sum + length + PG_LENGTH_TOL) {
            for (int i = 0; i < 3; ++i)
                out[i] = s.p[i] + share * (s.q[i] - s.p[i]);
            *direction = pg_angle(s.p, s.q);
            return 1;
        }
        if (pg_is_arc(s) && length > 0.0 && distance < sum + length) {
            const bool is_clockwise = s.dir == 1;
            pg_arc_place(is_clockwise ? s.q : s.p, is_clockwise ? s.p : s.q, std::fabs(s.bulge), share, out);
            *direction = s.start + share * pg_arc_sweep(s.bulge) + std::numbers::pi / 2.0;
            return 1;
        }
        sum += length;
    }
    return 0;
}
