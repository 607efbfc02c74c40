// positions_plain.h: nearest point, positions along a chain, cuts and chord points written down step by step in
// long doubles, to judge the kernel's own. Nothing is rearranged for speed or for digits; a judge tells where
// rounding may turn the answer.
#pragma once

#include <optional>
#include <utility>

#include "tests/polygon/chains.h"
#include "tests/polygon/primitives_plain.h"

namespace plain
{

constexpr number MOST_OFF_CIRCLE = 0.1L;
constexpr number SAME_WAY = 1e-6L;
constexpr number NEAR_HALF = 1e-8L; // of squared lengths: a half circle's bulge has lost its digits

inline point at(const spot& s)
{
    return {s.x, s.y, s.z};
}

struct segment {
    point p, q;
    number bulge;
    arc circle;
    bool is_clockwise;

    bool is_arc() const { return bulge != 0; }
    number sweep() const
    {
        const number turned = circle.end - circle.start;
        return turned < 0 ? turned + 2 * PI : turned;
    }
    number length() const { return is_arc() ? circle.radius * sweep() : dist(p, q); }
};

inline segment segment_of(const std::vector<spot>& chain, std::size_t i)
{
    segment s{at(chain[i]), at(chain[i + 1]), chain[i].bulge, {}, false};
    if (!s.is_arc())
        return s;
    const number c = dist(s.p, s.q);
    number sagitta = s.bulge * c / 2;
    s.is_clockwise = sagitta < 0;
    const number dir = s.is_clockwise ? 1 : -1;
    sagitta = std::fabs(sagitta);
    const number radius = (sagitta * sagitta + c * c / 4) / (2 * sagitta);
    const point centre = frame_point(s.p, s.q, c / 2, (sagitta - radius) * dir);
    const number to_p = angle(centre, s.p), to_q = angle(centre, s.q);
    s.circle = {centre, radius, s.is_clockwise ? to_q : to_p, s.is_clockwise ? to_p : to_q};
    return s;
}

// ---- the nearest point

struct place_and_distance {
    point place;
    number distance_sq;
};

struct closest {
    number best_sq = NO_RADIUS * NO_RADIUS, foot_sq = NO_RADIUS * NO_RADIUS;
    std::vector<place_and_distance> candidates; // the winner of two equally near ones hangs on rounding

    bool compete(const point& place, number distance_sq)
    {
        candidates.push_back({place, distance_sq});
        if (!(distance_sq < best_sq))
            return false;
        best_sq = distance_sq;
        return true;
    }
};

// Two conditions; one that certainly fails decides.
template <class First, class Second>
bool both(judge& j, const First& first, const Second& second)
{
    judge one, other;
    const bool is_one = first(one), is_other = second(other);
    const bool fails = (one.decided && !is_one) || (other.decided && !is_other);
    j.decided = j.decided && (fails || (one.decided && other.decided));
    return is_one && is_other;
}

// On an upright or level line every foot is on it.
inline bool in_box(judge& j, number v, number a, number b)
{
    return a == b || (!j.below(v, std::min(a, b)) && !j.below(std::max(a, b), v));
}

inline void closest_on_line(judge& j, const segment& s, const point& from, closest* c)
{
    const point v{s.q[0] - s.p[0], s.q[1] - s.p[1], 0};
    const number t = ((from[0] - s.p[0]) * v[0] + (from[1] - s.p[1]) * v[1]) / (v[0] * v[0] + v[1] * v[1]);
    const point foot{s.p[0] + t * v[0], s.p[1] + t * v[1], 0};
    const number d = dist_sq(foot, from);
    const auto is_nearer = [&](judge& k) { return k.below(d, c->best_sq); };
    const auto is_between = [&](judge& k) {
        return both(
            k, [&](judge& l) { return in_box(l, foot[0], s.p[0], s.q[0]); },
            [&](judge& l) { return in_box(l, foot[1], s.p[1], s.q[1]); });
    };
    if (!std::isnan(t) && both(j, is_nearer, is_between)) {
        c->compete(foot, d);
        return;
    }
    c->compete(s.p, dist_sq(s.p, from));
    for (const point& end : {s.p, s.q})
        if (dist_sq(foot, end) < c->foot_sq)
            c->foot_sq = dist_sq(foot, end);
}

inline point on_circle(const arc& a, number direction)
{
    return {a.centre[0] + a.radius * std::cos(direction), a.centre[1] + a.radius * std::sin(direction), 0};
}

inline void closest_on_arc(judge& j, const segment& s, const point& from, closest* c)
{
    number e = NO_RADIUS;
    point foot{};
    const number direction = angle(s.circle.centre, from);
    const point opposite = on_circle(s.circle, direction + PI);
    if (dist(s.p, s.q) == 0) {
        // No circle, and nothing is on it.
    } else if (arc_contains(j, s.circle, from, NO_RADIUS)) {
        e = dist(s.circle.centre, from) - s.circle.radius;
        if (j.below(0, e)) {
            foot = s.circle.centre;
        } else {
            e = -e;
            foot = on_circle(s.circle, direction);
        }
    } else if (arc_contains(j, s.circle, opposite, NO_RADIUS)) {
        e = dist(s.circle.centre, from) + s.circle.radius;
        foot = opposite;
    }
    if (e != NO_RADIUS)
        c->compete(foot, e * e);
    c->compete(s.p, dist_sq(s.p, from));
    c->compete(s.q, dist_sq(s.q, from));
}

inline closest closest_of(judge& j, const std::vector<spot>& chain, const point& from)
{
    closest c;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const segment s = segment_of(chain, i);
        s.is_arc() ? closest_on_arc(j, s, from, &c) : closest_on_line(j, s, from, &c);
    }
    c.compete(at(chain.back()), dist_sq(at(chain.back()), from));
    return c;
}

// ---- positions

inline bool is_at(judge& j, const point& place, const point& x)
{
    return !j.below(TOL, dist(place, x));
}

inline bool lies_on(judge& j, const segment& s, const point& x)
{
    const number to_x = dist(s.p, x), length = dist(s.p, s.q);
    if (s.is_arc() && length == 0)
        return false;
    if (s.is_arc())
        return both(
            j, [&](judge& k) { return arc_contains(k, s.circle, x, NO_RADIUS); },
            [&](judge& k) {
                return k.below(std::fabs(s.circle.radius - dist(s.circle.centre, x)), MOST_OFF_CIRCLE);
            });
    if (to_x != length && j.below(length, to_x))
        return false;
    const number gap = std::fabs(angle(s.p, s.q) - angle(s.p, x));
    j.at_seam = j.at_seam || gap > 2 * PI - 2 * SAME_WAY;
    // A short way off, rounding turns a direction far.
    return j.below(gap, SAME_WAY, 1e-9L + 1e-9L / to_x);
}

inline number distance_along(judge& j, const std::vector<spot>& chain, const point& x)
{
    if (is_at(j, at(chain.front()), x))
        return 0;
    number sum = 0;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const segment s = segment_of(chain, i);
        if (is_at(j, s.q, x))
            return sum + dist(s.p, s.q);
        if (lies_on(j, s, x)) {
            if (!s.is_arc())
                return sum + dist(s.p, x);
            const number turned = angle(s.circle.centre, x) - s.circle.start;
            return sum + s.circle.radius * (turned < 0 ? turned + 2 * PI : turned);
        }
        sum += s.length();
    }
    return sum;
}

struct position {
    point place;
    number direction;
    bool has_z;
};

inline std::optional<position> point_at(judge& j, const std::vector<spot>& chain, number distance)
{
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const segment s = segment_of(chain, i);
        const number length = s.length();
        j.decided = j.decided && length > 0; // else there is no way to go along it
        if (!s.is_arc() && !j.below(length + TOL, distance, 1e-8L)) {
            const number t = distance / length;
            return position{{s.p[0] + t * (s.q[0] - s.p[0]), s.p[1] + t * (s.q[1] - s.p[1]),
                             s.p[2] + t * (s.q[2] - s.p[2])},
                            angle(s.p, s.q),
                            true};
        }
        if (s.is_arc() && j.below(distance, length, 1e-8L)) {
            const number there = s.circle.start + distance / s.circle.radius;
            return position{on_circle(s.circle, there), there + PI / 2, false};
        }
        distance -= length;
    }
    return std::nullopt;
}

// ---- cuts

inline number arc_bulge(judge& j, const point& a, const point& b, const point& centre)
{
    const number c = dist(a, b), r = dist(a, centre), m_sq = r * r - c * c / 4;
    j.decided = j.decided && m_sq > NEAR_HALF * r * r;
    const number s = r - std::sqrt(m_sq);
    const number a1 = angle(centre, a);
    number a2 = angle(centre, b);
    if (!(a1 < a2))
        a2 += 2 * PI;
    const number area = ((b[0] - a[0]) * (centre[1] - a[1]) - (b[1] - a[1]) * (centre[0] - a[0])) / 2;
    const number sign = area > 0 ? -1 : 1;
    return a2 - a1 <= PI ? 2 * s * sign / c : -2 * sign * (2 * r - s) / c;
}

using cut_chain = std::optional<std::vector<spot>>;

inline cut_chain ended_at_node(std::vector<spot> chain, std::size_t node)
{
    chain.resize(node + 1);
    chain.back().bulge = 0.0;
    return chain;
}

inline cut_chain cut_within(judge& j, std::vector<spot> chain, std::size_t i, const point& x)
{
    const segment s = segment_of(chain, i);
    chain.resize(i + 1);
    if (s.is_arc())
        chain[i].bulge = static_cast<double>(s.bulge > 0 ? -arc_bulge(j, s.p, x, s.circle.centre)
                                                         : arc_bulge(j, x, s.p, s.circle.centre));
    chain.push_back({static_cast<double>(x[0]), static_cast<double>(x[1]), 0.0, static_cast<double>(x[2])});
    return chain;
}

inline cut_chain trimmed_at_first(judge& j, const std::vector<spot>& chain, point x)
{
    x[2] = 0;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        if (i + 2 < chain.size() && is_at(j, at(chain[i + 1]), x))
            return ended_at_node(chain, i + 1);
        if (lies_on(j, segment_of(chain, i), x))
            return cut_within(j, chain, i, x);
    }
    return std::nullopt;
}

inline cut_chain trimmed_at_last(judge& j, const std::vector<spot>& chain, const point& x)
{
    std::optional<std::size_t> last;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i)
        if ((i + 2 < chain.size() && is_at(j, at(chain[i + 1]), x)) || lies_on(j, segment_of(chain, i), x))
            last = i;
    if (!last)
        return std::nullopt;
    if (is_at(j, at(chain[*last + 1]), x))
        return ended_at_node(chain, *last + 1);
    return cut_within(j, chain, *last, x);
}

// ---- chords

// The points between two nodes.
inline std::vector<point> chord_points(const spot& from, const spot& to)
{
    const point p = at(from), q = at(to);
    const number b = from.bulge, c = dist(p, q), s = std::fabs(c * b / 2);
    number x = std::fabs(c / (2 * std::tan(2 * std::atan(b))));
    if (c / 2 < s)
        x = -x;
    const number radius = s + x, dx = q[0] - p[0];
    number dy = q[1] - p[1];
    if (dy == 0)
        dy = dx <= 0 ? 1e-7L : -1e-7L;
    const number norm = std::sqrt(dx * dx + dy * dy), off = b > 0 ? -x : x;
    const point centre{(p[0] + q[0]) / 2 + off * dy / norm, (p[1] + q[1]) / 2 - off * dx / norm, 0};
    number first = angle(centre, p), second = angle(centre, q);
    if (b < 0)
        std::swap(first, second);
    if (first > second)
        second += 2 * PI;
    const number sweep = second - first, length = sweep * radius, step = length / 291;
    std::vector<point> points;
    for (int i = 1; i < 291; ++i) {
        const number d = i * step;
        const number there = b > 0 ? first + d / length * sweep : second - d / length * sweep;
        points.push_back({centre[0] + radius * std::cos(there), centre[1] + radius * std::sin(there),
                          p[2] + d / length * (q[2] - p[2])});
    }
    return points;
}

} // namespace plain
