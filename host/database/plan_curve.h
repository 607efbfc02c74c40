// plan_curve.h: a drawing object as one curve seen from above: a row of straight pieces and arcs, with places
// on it. What cutting, extending and breaking of objects work on.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "host/database/geometry.h"
#include "host/database/shapes.h"

namespace host::db
{

// A place on a curve: a piece, and how far along it, 0 at its start and 1 at its end. Endless pieces have
// parts beyond these.
struct curve_place {
    std::size_t piece = 0;
    double part = 0;
};

// A piece in world coordinates; its x and y are what is seen. An arc seen from above is one of an ellipse.
struct curve_piece {
    bool is_arc = false;
    bool is_circle = false;   // an arc that is round as seen from above
    bool is_whole = false;    // an arc that comes back to its start
    bool is_flat = false;     // an arc seen from its edge: the straight piece that it covers
    vec from{}, to{};         // of a straight piece, at the parts 0 and 1
    arc_piece arc{};          // in the object's own parameter
    double low = 0, high = 1; // the parts that there are; infinite where the piece doesn't end
    double size = 0;          // length, of an arc that of its turn on the larger half axis; above 0
    double before = 0;        // sizes of the pieces in front
    std::size_t segment = 0;  // of a polyline: which of its segments, those without a length counted

    vec at(double part) const;
    double angle(double part) const { return arc.start + part * (arc.end - arc.start); }
    // Part of an arc at an angle, give or take turns: the one on the arc, or the nearest beyond its ends.
    double part_of_angle(double angle) const;
    // The angle at which a point in the plane of view lies on the arc's whole ellipse.
    double angle_of(double x, double y) const;
    // How far a point is from the arc's whole ellipse, exact to the first order near it.
    double distance_from_ellipse(double x, double y) const;
    box bounds(double from_part, double to_part) const; // as seen: without heights
    bool is_endless() const;
};

struct plan_curve {
    object_id id = 0;
    std::vector<curve_piece> pieces; // those that show as a point are left out
    bool is_closed = false;

    double size() const; // of all pieces; infinite for lines without an end
    double along(const curve_place& at) const
    {
        return pieces[at.piece].before + at.part * pieces[at.piece].size;
    }
    curve_place place_at(double along) const;
    double first() const { return pieces.front().before + pieces.front().low * pieces.front().size; }
    double last() const { return pieces.back().before + pieces.back().high * pieces.back().size; }
    vec point(const curve_place& at) const { return pieces[at.piece].at(at.part); }
    // The nearest place to a point, as seen from above.
    curve_place nearest(double x, double y) const;
    // Of the part between two distances along the curve.
    box bounds(double from, double to) const;
};

// LINE, ARC, CIRCLE, ELLIPSE, LWPOLYLINE, POLYLINE (no meshes; curves by the vertices that are drawn), SPLINE
// (by short straight pieces), RAY, XLINE. Nothing for other objects, for those that show as a point, and for
// those with a number that is not finite.
std::optional<plan_curve> plan_curve_of(const database& db, object_id id);
bool is_plan_curve(const database& db, object_id id); // by its kind alone
// The curve with its ends drawn out: straight ends without an end, arcs to whole ones. Closed curves and
// splines stay.
plan_curve drawn_out(const database& db, plan_curve curve);
// Two places on a curve that are this close are one: a billionth of its size, and what coordinates far from the
// origin are rounded by.
double place_tolerance(const plan_curve& curve);

} // namespace host::db
