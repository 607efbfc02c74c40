// arc_shapes.h: arcs from what a user gives for them. Plane geometry; z is not looked at.
#pragma once

#include <optional>

#include "host/commandline/answers.h"

namespace host::commandline
{

// Counter-clockwise from start to end.
struct arc_shape {
    point3 center;
    double radius = 0.0;
    double start = 0.0, end = 0.0; // radians
};

// Nothing when the points are in line, or two are one.
std::optional<arc_shape> arc_through(const point3& a, const point3& b, const point3& c);
// Bulge of the arc from a over b to c; 0 when they are in line.
double bulge_through(const point3& a, const point3& b, const point3& c);
// Bulge of the arc from a to b that leaves a in a direction.
double bulge_of_tangent(const point3& a, const point3& b, double direction);
// The arc of a chord and a bulge; nothing for a bulge of 0 or a chord of none.
std::optional<arc_shape> arc_of_bulge(const point3& a, const point3& b, double bulge);
point3 on_circle(const point3& center, double radius, double angle);

} // namespace host::commandline
