// primitives_plain.h: the kernel's intersections and tests written down step by step in long doubles, to
// judge the kernel's own. Nothing is rearranged for speed or for digits.
//
// A judge keeps count of how near its limits a comparison came: where rounding could turn one, the case
// is undecided and two honest answers may differ.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace plain
{

using number = long double;
using point = std::array<number, 3>;

constexpr number PI = std::numbers::pi_v<number>;
constexpr number TOL = 1e-6L;
constexpr number NO_RADIUS = 98765432.1;

struct judge {
    bool decided = true;
    bool at_seam = false; // a direction beside an arc's end, on the other side of angle 0

    bool below(number a, number b, number noise = 5e-8L)
    {
        decided = decided && std::fabs(a - b) > noise;
        return a < b;
    }
};

inline number dist_sq(const point& a, const point& b)
{
    return (b[0] - a[0]) * (b[0] - a[0]) + (b[1] - a[1]) * (b[1] - a[1]);
}

inline number dist(const point& a, const point& b)
{
    return std::sqrt(dist_sq(a, b));
}

inline number angle(const point& from, const point& to)
{
    const number d = dist(from, to);
    if (d == 0)
        return d;
    const number unsigned_angle = std::acos((to[0] - from[0]) / d);
    return to[1] - from[1] < 0 ? 2 * PI - unsigned_angle : unsigned_angle;
}

inline point frame_point(const point& a, const point& b, number along, number off)
{
    const number d = dist(a, b), ux = (b[0] - a[0]) / d, uy = (b[1] - a[1]) / d;
    return {a[0] + ux * along - uy * off, a[1] + uy * along + ux * off, 0};
}

struct arc {
    point centre;
    number radius, start, end;
};

inline bool arc_contains(judge& j, const arc& a, const point& at, number radius)
{
    const number direction = angle(a.centre, at);
    number start = a.start, end = a.end;
    for (number* limit : {&start, &end}) {
        if (*limit < 0)
            *limit += 2 * PI;
        else if (*limit > 2 * PI)
            *limit -= 2 * PI;
    }
    const bool exact = radius == NO_RADIUS;
    const number slack = exact ? 0 : -TOL / radius;
    const number noise = exact ? 1e-9L : 5e-8L / radius;
    for (const number limit : {start, end}) {
        const number gap = std::fabs(direction - limit);
        j.at_seam = j.at_seam || (gap > PI && 2 * PI - gap < -1.1L * slack + noise);
    }
    if (a.start != a.end)
        j.below(start, end, 1e-12L); // a whole turn or nothing
    const auto above_slack = [&](number gap) { return j.below(slack, gap, noise); };
    if (start <= end) {
        if (!above_slack(direction - start))
            return false;
        return above_slack(end - direction);
    }
    if (above_slack(direction - start))
        return true;
    return above_slack(end - direction);
}

inline bool on_arc(judge& j, const arc& a, const point& at)
{
    return arc_contains(j, a, at, a.radius);
}

inline std::vector<point> segments(judge& j, const point& a1, const point& a2, const point& b1, const point& b2)
{
    const number low = std::min(a1[1], a2[1]), high = std::max(a1[1], a2[1]);
    if ((b1[1] < low && b2[1] < low) || (b1[1] > high && b2[1] > high))
        return {};
    const number length = dist(a1, a2);
    const point u{(a2[0] - a1[0]) / length, (a2[1] - a1[1]) / length, (a2[2] - a1[2]) / length};
    const auto at = [&](number s) { return point{a1[0] + u[0] * s, a1[1] + u[1] * s, a1[2] + u[2] * s}; };
    const auto along = [&](const point& p) { return (p[0] - a1[0]) * u[0] + (p[1] - a1[1]) * u[1]; };
    const auto left = [&](const point& p) { return (p[1] - a1[1]) * u[0] - (p[0] - a1[0]) * u[1]; };
    const number s1 = along(b1), s2 = along(b2), t1 = left(b1), t2 = left(b2);
    const bool far1 = j.below(TOL, std::fabs(t1)), far2 = j.below(TOL, std::fabs(t2));
    if (!far1 && !far2) {
        number lo = std::min(s1, s2), hi = std::max(s1, s2);
        const auto same = [](const point& p, const point& q) { return p[0] == q[0] && p[1] == q[1]; };
        const bool share_an_end = same(b1, a1) || same(b1, a2) || same(b2, a1) || same(b2, a2);
        if (!share_an_end && (j.below(hi, 0) || j.below(length, lo)))
            return {};
        if (j.below(lo, TOL))
            lo = 0;
        if (j.below(length, hi + TOL))
            hi = length;
        if (!j.below(TOL, std::fabs(hi - lo)))
            return {at(lo)};
        return {at(lo), at(hi)};
    }
    // A crossing at a small angle moves far for a little rounding.
    const number size = length + std::fabs(s1) + std::fabs(s2) + std::fabs(t1) + std::fabs(t2);
    const number noise = 5e-8L + 1e-14L * size * size * std::max(number(1), size) / std::fabs(t1 - t2);
    const number s = t1 / (t1 - t2) * (s2 - s1) + s1;
    if (!(!j.below(s, -TOL, noise) && !j.below(length + TOL, s, noise)))
        return {};
    const point crossing = at(s);
    const number d1 = dist_sq(b1, crossing), d2 = dist_sq(b2, crossing), d = dist_sq(b1, b2);
    if (!j.below(2 * std::sqrt(d1 * d2) + d1 + d2 - d, TOL, noise))
        return {};
    if (j.below(s, TOL, noise))
        return {a1};
    if (j.below(s, length - TOL, noise))
        return {crossing};
    return {a2};
}

inline std::vector<point> line_arc(judge& j, const point& p0, const point& p1, const arc& a)
{
    const number length = dist(p0, p1);
    const number ux = (p1[0] - p0[0]) / length, uy = (p1[1] - p0[1]) / length;
    const number dx = a.centre[0] - p0[0], dy = a.centre[1] - p0[1];
    const number along = dx * ux + dy * uy, perp = ux * dy - uy * dx;
    if (j.below(TOL, std::fabs(perp) - a.radius))
        return {};
    const auto counts = [&](number t) {
        return !j.below(t, -TOL) && !j.below(length + TOL, t) && on_arc(j, a, frame_point(p0, p1, t, 0));
    };
    if (!j.below(TOL, std::fabs(std::fabs(perp) - a.radius)))
        return counts(along) ? std::vector{frame_point(p0, p1, along, 0)} : std::vector<point>{};
    const number h = std::sqrt(a.radius * a.radius - perp * perp);
    std::vector<point> found;
    for (const number t : {along - h, along + h})
        if (counts(t))
            found.push_back(frame_point(p0, p1, t, 0));
    return found;
}

inline std::vector<point> arcs(judge& j, const arc& a, const arc& b)
{
    const number apart = dist(a.centre, b.centre);
    if (j.below(TOL, apart - a.radius - b.radius) || j.below(TOL, std::fabs(a.radius - b.radius) - apart))
        return {};
    std::vector<point> found;
    if (j.below(apart, TOL)) {
        const auto end_of = [](const arc& of, number direction) {
            return point{of.centre[0] + of.radius * std::cos(direction),
                         of.centre[1] + of.radius * std::sin(direction), 0};
        };
        const auto take = [&](const point& p, const arc& on) {
            if (found.size() < 2 && on_arc(j, on, p))
                found.push_back(p);
        };
        take(end_of(a, a.start), b);
        take(end_of(a, a.end), b);
        take(end_of(b, b.start), a);
        take(end_of(b, b.end), a);
        return found;
    }
    const number foot = (apart * apart + a.radius * a.radius - b.radius * b.radius) / (2 * apart);
    const number h = std::sqrt(a.radius * a.radius - foot * foot);
    std::vector<number> sides{0};
    // The foot moves far for a little rounding where the centres are near one another.
    if (!j.below(std::fabs(std::fabs(foot) - a.radius), TOL, 5e-8L + 1e-12L / apart))
        sides = {h, -h};
    for (const number side : sides) {
        const point p = frame_point(a.centre, b.centre, foot, side);
        if (!std::isfinite(p[0]) || !std::isfinite(p[1]))
            continue;
        if (on_arc(j, a, p) && on_arc(j, b, p))
            found.push_back(p);
    }
    return found;
}

} // namespace plain
