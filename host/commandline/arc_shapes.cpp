// arc_shapes.cpp: see the header.
#include "host/commandline/arc_shapes.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

double direction(const point3& from, const point3& to)
{
    return std::atan2(to.y - from.y, to.x - from.x);
}

// Into (-pi, pi].
double signed_angle(double a)
{
    a = normal_angle(a);
    return a > PI ? a - 2 * PI : a;
}

// How far the cross product of two sides may be off because the coordinates are rounded: points in line far
// from the origin would make an arc of enormous radius.
double rounding_of_cross(const point3& a, const point3& b, const point3& c)
{
    const double far = std::fmax(std::hypot(a.x, a.y), std::fmax(std::hypot(b.x, b.y), std::hypot(c.x, c.y)));
    const double sides = std::hypot(b.x - a.x, b.y - a.y) + std::hypot(c.x - a.x, c.y - a.y);
    return 2.0 * std::numeric_limits<double>::epsilon() * far * sides;
}

} // namespace

point3 on_circle(const point3& center, double radius, double angle)
{
    return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle), center.z};
}

std::optional<arc_shape> arc_through(const point3& a, const point3& b, const point3& c)
{
    const double bx = b.x - a.x, by = b.y - a.y, cx = c.x - a.x, cy = c.y - a.y;
    const double cross = bx * cy - by * cx;
    const double size = std::hypot(bx, by) * std::hypot(cx, cy);
    if (size == 0.0 || std::abs(cross) < 1e-12 * size + rounding_of_cross(a, b, c))
        return std::nullopt;
    const double b2 = bx * bx + by * by, c2 = cx * cx + cy * cy;
    arc_shape arc;
    arc.center = {a.x + (cy * b2 - by * c2) / (2 * cross), a.y + (bx * c2 - cx * b2) / (2 * cross), a.z};
    arc.radius = std::hypot(a.x - arc.center.x, a.y - arc.center.y);
    const bool left = cross > 0.0;
    arc.start = normal_angle(direction(arc.center, left ? a : c));
    arc.end = normal_angle(direction(arc.center, left ? c : a));
    return arc;
}

double bulge_through(const point3& a, const point3& b, const point3& c)
{
    const std::optional<arc_shape> arc = arc_through(a, b, c);
    if (!arc)
        return 0.0;
    const double bulge = std::tan(normal_angle(arc->end - arc->start) / 4.0);
    const bool left = normal_angle(direction(arc->center, a)) == arc->start;
    return left ? bulge : -bulge;
}

double bulge_of_tangent(const point3& a, const point3& b, double along)
{
    const double off = signed_angle(direction(a, b) - along); // half the included angle
    return std::tan(off / 2.0);
}

std::optional<arc_shape> arc_of_bulge(const point3& a, const point3& b, double bulge)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double chord = std::hypot(dx, dy);
    if (bulge == 0.0 || chord == 0.0)
        return std::nullopt;
    arc_shape arc;
    const double offset = (1.0 / bulge - bulge) / 4.0; // centre from the chord's middle, in chords, to the left
    arc.center = {(a.x + b.x) / 2 - dy * offset, (a.y + b.y) / 2 + dx * offset, a.z};
    arc.radius = chord * (1.0 + bulge * bulge) / (4.0 * std::abs(bulge));
    arc.start = normal_angle(direction(arc.center, bulge > 0 ? a : b));
    arc.end = normal_angle(direction(arc.center, bulge > 0 ? b : a));
    return arc;
}

} // namespace host::commandline
