// rounding_plain.h: a corner rounded step by step, with every distance taken from the whole chain.
#pragma once

#include <cmath>

#include "polygon/arcs.h"
#include "polygon/centre_lines.h"
#include "polygon/crossing.h"
#include "polygon/flatten.h"
#include "polygon/measures.h"
#include "polygon/points.h"
#include "polygon/rounding.h"
#include "polygon/trim.h"
#include "tests/polygon/chains.h"

namespace rounding_plain
{

using spots = std::vector<spot>;

inline double distance(const double* point, const pg_node* chain)
{
    double nearest[3];
    return std::sqrt(pg_closest(point, chain, nullptr, nearest));
}

inline bool across(const pg_node* side, const double* centre, double way, double length, double* out)
{
    const auto line = make_chain(
        {{centre[0], centre[1]}, {centre[0] + length * std::cos(way), centre[1] + length * std::sin(way)}});
    double at = 0;
    int of = 0;
    return pg_first_crossing(side, line.get(), &at, &of, out, 0.0) == 1;
}

// A line of 1.5 radii must cross the side; of several crossings the near one counts.
inline bool tangent(const pg_node* side, const double* centre, double radius, double* out)
{
    double nearest[3] = {};
    const double near = std::sqrt(pg_closest(centre, side, nullptr, nearest)), way = pg_angle(centre, nearest);
    return across(side, centre, way, 1.5 * radius, out) && across(side, centre, way, near + 1e-6, out);
}

// Cuts both sides and joins them by the arc; empty when the circle doesn't reach them.
inline spots cut(const spots& first, const spots& second, const double* centre, double radius)
{
    const auto a = make_chain(first), b = make_chain(second);
    double from[3], to[3];
    if (!tangent(a.get(), centre, radius, from) || !tangent(b.get(), centre, radius, to) ||
        !pg_trim_at_first(a.get(), from) || !pg_trim_at_first(b.get(), to))
        return {};
    spots answer = spots_of(a.get());
    answer.back().bulge = -pg_arc_bulge(from, to, centre);
    const spots rest = spots_of(b.get());
    for (std::size_t i = rest.size(); i-- > 0;) {
        answer.push_back(rest[i]);
        answer.back().bulge = i > 0 ? -rest[i - 1].bulge : 0.0;
    }
    return answer;
}

// Both sides end at the corner (0, 0), and `whole` is the first and then the second backwards; it turns left. A
// join seeks the radius from the whole and tests each circle, a chain from its first side alone and takes it.
inline spots round_off(const spots& whole, const spots& first, const spots& second, double radius, bool by_join)
{
    const auto all = make_chain(whole), chords = make_chain(whole);
    const auto a = make_chain(first), b = make_chain(second);
    const pg_node* sought = by_join ? all.get() : a.get();
    pg_flatten(chords.get(), 0.1);
    const double corner[3] = {};
    pg_ring* rings = pg_centre_lines(chords.get(), 1.0, 0, 1);
    const chain_ptr path(pg_weed(pg_follow_chains(&rings, corner), 0.1));
    for (const pg_node* n = path.get(); n && n->next; n = n->next) {
        const double p[3] = {n->x, n->y, 0}, q[3] = {n->next->x, n->next->y, 0};
        const double z1 = distance(p, all.get());
        double z2 = distance(q, all.get());
        if (!(z1 < radius && z2 > radius) && !(z1 > radius && z2 < radius))
            continue;
        double end[3] = {q[0], q[1], 0};
        const double way = pg_angle(p, q);
        for (int round = 0; round < 10; ++round) {
            const double along = (radius - z1) * pg_dist(p, end) / (z2 - z1);
            end[0] = p[0] + along * std::cos(way);
            end[1] = p[1] + along * std::sin(way);
            z2 = distance(end, sought);
            if (std::fabs(z2 - radius) / radius <= 0.1)
                break;
        }
        pg_centre_refine(end, radius, a.get(), b.get());
        if (!by_join)
            return cut(first, second, end, radius);
        const bool touches = std::fabs(distance(end, a.get()) - radius) <= 0.01 * radius &&
                             std::fabs(distance(end, b.get()) - radius) <= 0.01 * radius;
        const spots answer = touches ? cut(first, second, end, radius) : spots{};
        if (!answer.empty())
            return answer;
    }
    return {};
}

} // namespace rounding_plain
