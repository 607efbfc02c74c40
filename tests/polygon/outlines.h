// outlines.h: outlines for the tests of centre lines, made from seeds, and the distances that judge a place.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "tests/polygon/chains.h"

namespace outlines
{

using spots = std::vector<spot>;

// Counter-clockwise, without the closing spot.
inline spots convex(std::uint32_t seed, int count)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> turn(0.0, 2.0 * std::numbers::pi);
    std::vector<double> angles;
    for (int i = 0; i < count; ++i)
        angles.push_back(turn(random));
    std::sort(angles.begin(), angles.end());
    const double stretch = 1.0 + turn(random) / 6.0;
    spots v;
    for (double a : angles)
        v.push_back({100.0 * std::cos(a), 100.0 * stretch * std::sin(a)});
    return v;
}

// Seen whole from the origin; radii from `least` to 1 of 100.
inline spots star(std::uint32_t seed, int count, double least)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> radius(100.0 * least, 100.0);
    spots v;
    for (int i = 0; i < count; ++i) {
        const double a = 2.0 * std::numbers::pi * i / count, r = radius(random);
        v.push_back({r * std::cos(a), r * std::sin(a)});
    }
    return v;
}

inline double area(const spot& a, const spot& b, const spot& c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// Random places joined to an outline that doesn't cross itself: crossings are undone until there are none.
inline spots tangled(std::uint32_t seed, int count)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> place(0.0, 100.0);
    spots v;
    for (int i = 0; i < count; ++i) {
        const double x = place(random);
        v.push_back({x, place(random)});
    }
    const auto at = [&](int i) -> const spot& { return v[static_cast<std::size_t>(i % count)]; };
    const auto apart = [&](int i, int j, int k) {
        return area(at(i), at(i + 1), at(j)) * area(at(i), at(i + 1), at(k)) < 0.0;
    };
    for (bool changed = true; changed;) {
        changed = false;
        for (int i = 0; i < count; ++i)
            for (int j = i + 2; j < count; ++j)
                if (j - i != count - 1 && apart(i, j, j + 1) && apart(j, i, i + 1)) {
                    std::reverse(v.begin() + i + 1, v.begin() + j + 1);
                    changed = true;
                }
    }
    double twice = 0.0;
    for (int i = 0; i < count; ++i)
        twice += at(i).x * at(i + 1).y - at(i).y * at(i + 1).x;
    if (twice < 0.0)
        std::reverse(v.begin(), v.end());
    return v;
}

inline chain_ptr closed(spots v, double x = 0.0, double y = 0.0)
{
    v.push_back(v.front());
    return make_chain(v, x, y);
}

// std::hypot takes most of the time of a test that measures much.
inline double length_of(double dx, double dy)
{
    return std::sqrt(dx * dx + dy * dy);
}

// By how much the second nearest element of a closed outline is further from a place than the nearest. Sides
// are elements before which the place lies; reflex corners are; of other corners one of the sides is always
// nearer, but for rounding, and they count as the end of their sides.
inline double lead_of_nearest(const spots& v, double x, double y)
{
    const std::size_t n = v.size();
    std::vector<double> found;
    for (std::size_t i = 0; i < n; ++i) {
        const spot &o = v[(i + n - 1) % n], &a = v[i], &b = v[(i + 1) % n], &c = v[(i + 2) % n];
        const double length = length_of(b.x - a.x, b.y - a.y);
        const double along = ((x - a.x) * (b.x - a.x) + (y - a.y) * (b.y - a.y)) / length;
        const bool a_is_reflex = area(o, a, b) <= 0.0, b_is_reflex = area(a, b, c) <= 0.0;
        const double to_a = length_of(x - a.x, y - a.y), to_b = length_of(x - b.x, y - b.y);
        const double slack = 1e-9 * length + 1e-9;
        if (along >= -slack && along <= length + slack)
            found.push_back(std::fabs(area(a, b, {x, y})) / length);
        else if (!(along < 0.0 ? a_is_reflex : b_is_reflex))
            found.push_back(std::min(to_a, to_b));
        if (a_is_reflex)
            found.push_back(to_a);
    }
    std::partial_sort(found.begin(), found.begin() + 2, found.end());
    return found[1] - found[0];
}

} // namespace outlines
