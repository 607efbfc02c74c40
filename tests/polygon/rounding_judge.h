// rounding_judge.h: what must be true of a rounded corner, judged without the kernel.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "tests/polygon/chains.h"

namespace rounding_judge
{

using spots = std::vector<spot>;

struct circle {
    double x, y, radius;
};

inline double apart(double ax, double ay, double bx, double by)
{
    return std::hypot(bx - ax, by - ay);
}

inline circle circle_of(const spot& a, const spot& b)
{
    const double c = apart(a.x, a.y, b.x, b.y);
    const double to_centre = (1.0 - a.bulge * a.bulge) / (4.0 * a.bulge); // from the chord's middle, in chords
    return {(a.x + b.x) / 2 - (b.y - a.y) * to_centre, (a.y + b.y) / 2 + (b.x - a.x) * to_centre,
            c * (1.0 + a.bulge * a.bulge) / (4.0 * std::fabs(a.bulge))};
}

inline double in_half_turn(double angle)
{
    return std::remainder(angle, 2 * std::numbers::pi);
}

inline double distance_to_segment(const spot& a, const spot& b, double x, double y)
{
    const double ends = std::min(apart(a.x, a.y, x, y), apart(b.x, b.y, x, y));
    if (a.bulge == 0.0) {
        const double dx = b.x - a.x, dy = b.y - a.y, c = dx * dx + dy * dy;
        const double t = ((x - a.x) * dx + (y - a.y) * dy) / c;
        return t > 0 && t < 1 ? std::fabs(dx * (y - a.y) - dy * (x - a.x)) / std::sqrt(c) : ends;
    }
    const circle o = circle_of(a, b);
    const double side = a.bulge > 0 ? 1.0 : -1.0; // the arc's middle lies to the right of a left-hand arc
    const double middle = std::atan2(-(b.x - a.x) * side, (b.y - a.y) * side);
    const double half = 2 * std::atan(std::fabs(a.bulge));
    const bool in_sector = std::fabs(in_half_turn(std::atan2(y - o.y, x - o.x) - middle)) < half;
    return in_sector ? std::fabs(apart(o.x, o.y, x, y) - o.radius) : ends;
}

inline double distance_to(const spots& chain, double x, double y)
{
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i + 1 < chain.size(); ++i)
        least = std::min(least, distance_to_segment(chain[i], chain[i + 1], x, y));
    return least;
}

// Of travel, in radians.
inline double direction_at_start(const spot& a, const spot& b)
{
    return std::atan2(b.y - a.y, b.x - a.x) - 2 * std::atan(a.bulge);
}
inline double direction_at_end(const spot& a, const spot& b)
{
    return std::atan2(b.y - a.y, b.x - a.x) + 2 * std::atan(a.bulge);
}

inline spots turned_round(spots chain)
{
    std::reverse(chain.begin(), chain.end());
    for (std::size_t i = 0; i + 1 < chain.size(); ++i)
        chain[i].bulge = -chain[i + 1].bulge;
    chain.back().bulge = 0.0;
    return chain;
}

inline void expect_near(const spots& got, const spots& expected, double tolerance)
{
    ASSERT_EQ(got.size(), expected.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
        EXPECT_NEAR(got[i].x, expected[i].x, tolerance) << "node " << i;
        EXPECT_NEAR(got[i].y, expected[i].y, tolerance) << "node " << i;
        EXPECT_NEAR(got[i].bulge, expected[i].bulge, tolerance) << "node " << i;
    }
}

// How far a rounded chain is from what it should be.
struct faults {
    double radius = 0.0;    // the arc's against the one asked for
    double to_sides = 0.0;  // the centre's distance from either side against the radius
    double kink = 0.0;      // radians, between the arc and either side
    double off_sides = 0.0; // the farthest node from the sides
    bool turns_left = false;
};

// The arc is segment `arc` of `rounded`; the sides end at the corner.
inline faults faults_of(const spots& rounded, std::size_t arc, const spots& first, const spots& second,
                        double radius)
{
    faults f;
    const spot& from = rounded[arc];
    const spot& to = rounded[arc + 1];
    const circle o = circle_of(from, to);
    f.radius = std::fabs(o.radius - radius);
    f.to_sides = std::max(std::fabs(distance_to(first, o.x, o.y) - radius),
                          std::fabs(distance_to(second, o.x, o.y) - radius));
    f.kink = std::max(
        std::fabs(in_half_turn(direction_at_end(rounded[arc - 1], from) - direction_at_start(from, to))),
        std::fabs(in_half_turn(direction_at_end(from, to) - direction_at_start(to, rounded[arc + 2]))));
    for (const spot& s : rounded)
        f.off_sides =
            std::max(f.off_sides, std::min(distance_to(first, s.x, s.y), distance_to(second, s.x, s.y)));
    f.turns_left = from.bulge > 0;
    return f;
}

} // namespace rounding_judge
